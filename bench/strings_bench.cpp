// Strings against std::string and std::string_view.
#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSMutableString.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>
#include <vector>

using namespace tessarin;

namespace {

constexpr std::size_t fieldCount = 1000;

// Fields of 4 to 35 characters, so that some fit in a std::string itself and some do not.
std::string lineOfFields() {
    std::string line;
    for (std::size_t index = 0; index < fieldCount; ++index) {
        if (index > 0) line += "; ";
        line.append(4 + index * 7 % 32, static_cast<char>('a' + index % 26));
    }
    return line;
}

void countFields(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(fieldCount));
}

void split(benchmark::State& state) {
    const AutoreleasePool outer;
    const NSString line{lineOfFields()};
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(line.componentsSeparatedByString("; "_ns).object());
    }
    countFields(state);
}
BENCHMARK(split)->Name("String/ComponentsSeparatedByString");

std::vector<std::string> fieldsOf(std::string_view line, std::string_view separator) {
    std::vector<std::string> fields;
    for (;;) {
        const std::size_t end = line.find(separator);
        fields.emplace_back(line.substr(0, end));
        if (end == std::string_view::npos) return fields;
        line.remove_prefix(end + separator.size());
    }
}

void splitStandardString(benchmark::State& state) {
    const std::string line = lineOfFields();
    for (auto _ : state) benchmark::DoNotOptimize(fieldsOf(line, "; ").data());
    countFields(state);
}
BENCHMARK(splitStandardString)->Name("String/SplitStringView");

void append(benchmark::State& state) {
    const NSString part = "component"_ns;
    for (auto _ : state) {
        const Retained<NSMutableString> text = adopt(NSMutableString::alloc().init());
        for (std::size_t index = 0; index < fieldCount; ++index) text.appendString(part);
        benchmark::DoNotOptimize(text.object());
    }
    countFields(state);
}
BENCHMARK(append)->Name("String/AppendString");

void appendToStandardString(benchmark::State& state) {
    const std::string part = "component";
    for (auto _ : state) {
        std::string text;
        for (std::size_t index = 0; index < fieldCount; ++index) {
            text += part;
            benchmark::ClobberMemory();
        }
        benchmark::DoNotOptimize(text.data());
    }
    countFields(state);
}
BENCHMARK(appendToStandardString)->Name("String/StandardStringAppend");

} // namespace
