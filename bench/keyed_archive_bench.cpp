// A keyed archive of 10,000 values, written and read: the time for a value.
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

constexpr int trackCount = 1000;
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

NSArray tracks() {
    const NSMutableArray tracks = NSMutableArray::array();
    for (int number = 0; number < trackCount; ++number) tracks.addObject(track(number));
    return tracks;
}

void countValues(benchmark::State& state) {
    constexpr int values = trackCount * valuesOfTrack;
    state.SetItemsProcessed(state.iterations() * values);
    state.counters["per_value"] = benchmark::Counter(values, benchmark::Counter::kIsIterationInvariantRate
                                                                 | benchmark::Counter::kInvert);
}

void archive(benchmark::State& state) {
    const AutoreleasePool outer;
    const NSArray list = tracks();
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(NSKeyedArchiver::archivedDataWithRootObject(list).object());
    }
    countValues(state);
}
BENCHMARK(archive)->Name("KeyedArchive/Archive");

void unarchive(benchmark::State& state) {
    const AutoreleasePool outer;
    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(tracks());
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(NSKeyedUnarchiver::unarchiveObjectWithData(data).object());
    }
    countValues(state);
}
BENCHMARK(unarchive)->Name("KeyedArchive/Unarchive");

} // namespace
