// A stream format as an array of nine numbers and back. The rivals are the same program on the native
// platform, where the array and its numbers are GNUstep's, and a QVariantList, in qt/.
#include "StreamFormat.h"

#include "TessarinFoundation/TSSRAudio.h"

#include "TessarinPlatform/AutoreleasePool.h"

#include <benchmark/benchmark.h>

using namespace tessarin;

namespace {

void outAndIn(benchmark::State& state) {
    AudioStreamBasicDescription format = bench::streamFormat;
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(format);
        benchmark::DoNotOptimize(TSSRASBDFromArray(TSSRArrayFromASBD(format)));
    }
}
BENCHMARK(outAndIn)->Name("StreamFormat/Array");

} // namespace
