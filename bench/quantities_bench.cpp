// Sizes and durations as text, against {fmt} and against the standard library by hand.
#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdint>
#include <iterator>
#include <string>

#if defined(BENCH_HAS_FMT)
#    include <fmt/format.h>
#endif

using namespace tessarin;

namespace {

constexpr std::uint64_t fileSize = 123456789;

void sizeString(benchmark::State& state) {
    const Retained<NSNumber> size = retain(NSNumber::numberWithUnsignedLongLong(fileSize));
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
            size, 65535, 2, false, true));
    }
}
BENCHMARK(sizeString)->Name("SizeString/NSString");

void timeString(benchmark::State& state) {
    std::int64_t seconds = 61;
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(seconds);
        benchmark::DoNotOptimize(tessarin_timeStringWithSeconds(seconds));
    }
}
BENCHMARK(timeString)->Name("TimeString/NSString");

// ---- By hand

struct ScaledSize {
    double value;
    char prefix; // 0 for bytes
};

ScaledSize scaled(std::uint64_t size) {
    ScaledSize result{static_cast<double>(size), 0};
    for (const char prefix : {'k', 'M', 'G', 'T', 'P', 'E'}) {
        if (result.value <= 1024) break;
        result = {result.value / 1024, prefix};
    }
    return result;
}

void sizeStringByHand(benchmark::State& state) {
    std::uint64_t size = fileSize;
    for (auto _ : state) {
        benchmark::DoNotOptimize(size);
        const ScaledSize shown = scaled(size);
        char text[64];
        char* end =
            std::to_chars(std::begin(text), std::end(text), shown.value, std::chars_format::fixed, 2).ptr;
        while (end[-1] == '0') --end;
        if (end[-1] == '.') --end;
        *end++ = ' ';
        if (shown.prefix) *end++ = shown.prefix;
        *end++ = 'B';
        const std::string string(text, end);
        benchmark::DoNotOptimize(string.data());
    }
}
BENCHMARK(sizeStringByHand)->Name("SizeString/ToChars");

#if defined(BENCH_HAS_FMT)

// Without dropping zeros.
void sizeStringByFmt(benchmark::State& state) {
    std::uint64_t size = fileSize;
    for (auto _ : state) {
        benchmark::DoNotOptimize(size);
        const ScaledSize shown = scaled(size);
        const std::string string = fmt::format("{:.2f} {}B", shown.value, shown.prefix);
        benchmark::DoNotOptimize(string.data());
    }
}
BENCHMARK(sizeStringByFmt)->Name("SizeString/Fmt");

void timeStringByFmt(benchmark::State& state) {
    std::int64_t seconds = 61;
    for (auto _ : state) {
        benchmark::DoNotOptimize(seconds);
        const std::string string = fmt::format("{} : {:02}", seconds / 60, seconds % 60);
        benchmark::DoNotOptimize(string.data());
    }
}
BENCHMARK(timeStringByFmt)->Name("TimeString/Fmt");

#endif

} // namespace
