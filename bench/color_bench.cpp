// Colours as hexadecimal strings and as configurations, out and in.
#include "TessarinFoundation/NSColor+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

using namespace tessarin;

namespace {

NSColor someColor() { return NSColor::colorWithCalibratedRed_green_blue_alpha(0.25, 0.5, 0.75, 1); }

void writeHexadecimal(benchmark::State& state) {
    const AutoreleasePool around;
    const Retained<NSColor> color = retain(someColor());
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(tessarin_hexadecimalRGBStringWithAlpha(color, true));
    }
}
BENCHMARK(writeHexadecimal)->Name("Color/WriteHexadecimal");

void readHexadecimal(benchmark::State& state) {
    const AutoreleasePool around;
    const Retained<NSString> string = retain(tessarin_hexadecimalRGBStringWithAlpha(someColor(), true));
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(tessarin_colorWithHexadecimalRGBAString(string));
    }
}
BENCHMARK(readHexadecimal)->Name("Color/ReadHexadecimal");

void writeConfiguration(benchmark::State& state) {
    const AutoreleasePool around;
    const Retained<NSColor> color = retain(someColor());
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(tessarin_configuration(color));
    }
}
BENCHMARK(writeConfiguration)->Name("Color/WriteConfiguration");

void readConfiguration(benchmark::State& state) {
    const AutoreleasePool around;
    const Retained<NSDictionary> configuration = retain(tessarin_configuration(someColor()));
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(tessarin_colorWithConfiguration(configuration));
    }
}
BENCHMARK(readConfiguration)->Name("Color/ReadConfiguration");

} // namespace
