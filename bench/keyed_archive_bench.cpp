// Keyed archives of up to 10,000 values, written and read: the time for a value.
#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSKeyedArchiver.h"
#include "TessarinPlatform/NSKeyedUnarchiver.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSNumber.h"

#include <benchmark/benchmark.h>

#include <string>

using namespace tessarin;

namespace {

constexpr int valuesOfTrack = 10; // the dictionary, its five values, the four strings of the last one

NSDictionary track(int number) {
    const NSMutableDictionary track = NSMutableDictionary::dictionary();
    track.setObject_forKey(NSString("Track " + std::to_string(number)), "name"_ns);
    track.setObject_forKey(NSNumber::numberWithInt(number), "channel"_ns);
    track.setObject_forKey(NSNumber::numberWithDouble(number / 7.0), "gain"_ns);
    track.setObject_forKey(NSNumber::numberWithBool(number % 2 == 0), "muted"_ns);
    const NSMutableArray tags = NSMutableArray::array();
    for (const char* const tag : {"vocals", "lead", "dry", "take"})
        tags.addObject(NSString(tag + std::to_string(number)));
    track.setObject_forKey(tags, "tags"_ns);
    return track;
}

// As many as make the benchmark's number of values.
NSArray tracks(const benchmark::State& state) {
    const NSMutableArray tracks = NSMutableArray::array();
    const auto count = static_cast<int>(state.range(0)) / valuesOfTrack;
    for (int number = 0; number < count; ++number) tracks.addObject(track(number));
    return tracks;
}

void countValues(benchmark::State& state) {
    const auto values = static_cast<double>(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["per_value"] = benchmark::Counter(values, benchmark::Counter::kIsIterationInvariantRate
                                                                 | benchmark::Counter::kInvert);
}

void archive(benchmark::State& state) {
    const AutoreleasePool outer;
    const NSArray list = tracks(state);
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(NSKeyedArchiver::archivedDataWithRootObject(list).object());
    }
    countValues(state);
}
BENCHMARK(archive)->Name("KeyedArchive/Archive")->Arg(1000)->Arg(10000);

void unarchive(benchmark::State& state) {
    const AutoreleasePool outer;
    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(tracks(state));
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(NSKeyedUnarchiver::unarchiveObjectWithData(data).object());
    }
    countValues(state);
}
BENCHMARK(unarchive)->Name("KeyedArchive/Unarchive")->Arg(10000);

} // namespace
