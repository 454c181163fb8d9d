// A component's identity as one line and back, against the same line in std::string.
#include "TessarinFoundation/TSSRAudio.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

using namespace tessarin;

namespace {

constexpr AudioComponentDescription delay{.componentType = 0x61756678,         // 'aufx'
                                          .componentSubType = 0x64656C79,      // 'dely'
                                          .componentManufacturer = 0x41636D65, // 'Acme'
                                          .componentFlags = 0,
                                          .componentFlagsMask = 0};

void identifierLine(benchmark::State& state) {
    AudioComponentDescription description = delay;
    const NSString acme = "Acme"_ns;
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(description);
        const NSString line =
            TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(description, acme);
        NSString manufacturer;
        benchmark::DoNotOptimize(TSSRAudioComponentDescriptionFromIdentifierString(line, &manufacturer));
        const Retained<NSString> owned = adopt(manufacturer);
    }
}
BENCHMARK(identifierLine)->Name("IdentifierLine/NSString");

// ---- The same in std::string

void appendCode(std::string& line, OSType code) {
    for (int shift = 24; shift >= 0; shift -= 8) line += static_cast<char>(code >> shift & 0xFF);
}

std::string lineFrom(const AudioComponentDescription& description, std::string_view manufacturer) {
    std::string line(manufacturer);
    line += ": ";
    appendCode(line, description.componentType);
    line += "; ";
    appendCode(line, description.componentSubType);
    line += "; ";
    appendCode(line, description.componentManufacturer);
    return line;
}

OSType codeFrom(std::string_view piece) {
    piece.remove_prefix(std::min(piece.find_first_not_of(" \t"), piece.size()));
    if (piece.size() != 4) return 0;
    OSType code = 0;
    for (const char character : piece) code = code << 8 | static_cast<std::uint8_t>(character);
    return code;
}

AudioComponentDescription descriptionFrom(std::string_view line, std::string& manufacturer) {
    AudioComponentDescription description{};
    if (const std::size_t colon = line.find(':'); colon != std::string_view::npos) {
        manufacturer = line.substr(0, colon);
        line.remove_prefix(colon + 1);
    }
    std::array<std::string, 3> pieces;
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        const std::size_t end = line.find(';');
        if ((end == std::string_view::npos) != (index == 2)) return description;
        pieces[index] = line.substr(0, end);
        if (index < 2) line.remove_prefix(end + 1);
    }
    description.componentType = codeFrom(pieces[0]);
    description.componentSubType = codeFrom(pieces[1]);
    description.componentManufacturer = codeFrom(pieces[2]);
    return description;
}

void identifierLineInStandardString(benchmark::State& state) {
    AudioComponentDescription description = delay;
    for (auto _ : state) {
        benchmark::DoNotOptimize(description);
        const std::string line = lineFrom(description, "Acme");
        std::string manufacturer;
        benchmark::DoNotOptimize(descriptionFrom(line, manufacturer));
        benchmark::DoNotOptimize(manufacturer.data());
    }
}
BENCHMARK(identifierLineInStandardString)->Name("IdentifierLine/StandardString");

} // namespace
