// A property list of 10,000 nodes to XML and back: the time for a node.
#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSNumber.h"
#include "TessarinPlatform/NSPropertyListSerialization.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

#include <string>

using namespace tessarin;

namespace {

constexpr int trackCount = 1000;
constexpr int nodesOfTrack = 10; // the dictionary, its five values, the four strings of the last one

NSDictionary track(int number) {
    const NSMutableDictionary track = NSMutableDictionary::dictionary();
    track.setObject_forKey(NSString("Track " + std::to_string(number) + " <left & right>"), "name"_ns);
    track.setObject_forKey(NSNumber::numberWithInt(number), "channel"_ns);
    track.setObject_forKey(NSNumber::numberWithDouble(number / 7.0), "gain"_ns);
    track.setObject_forKey(NSNumber::numberWithBool(number % 2 == 0), "muted"_ns);
    track.setObject_forKey(NSArray::arrayOf("vocals"_ns, "lead"_ns, "dry"_ns, "take 2"_ns), "tags"_ns);
    return track;
}

NSArray tracks() {
    const NSMutableArray tracks = NSMutableArray::array();
    for (int number = 0; number < trackCount; ++number) tracks.addObject(track(number));
    return tracks;
}

NSData xmlOf(NSArray tracks) {
    return NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        tracks, NSPropertyListXMLFormat_v1_0, 0, nullptr);
}

void countNodes(benchmark::State& state) {
    constexpr int nodes = trackCount * nodesOfTrack;
    state.SetItemsProcessed(state.iterations() * nodes);
    state.counters["per_node"] = benchmark::Counter(nodes, benchmark::Counter::kIsIterationInvariantRate
                                                               | benchmark::Counter::kInvert);
}

void write(benchmark::State& state) {
    const AutoreleasePool outer;
    const NSArray list = tracks();
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(xmlOf(list).object());
    }
    countNodes(state);
}
BENCHMARK(write)->Name("PropertyList/WriteXML");

void read(benchmark::State& state) {
    const AutoreleasePool outer;
    const NSData data = xmlOf(tracks());
    for (auto _ : state) {
        const AutoreleasePool pool;
        NSPropertyListFormat format{};
        benchmark::DoNotOptimize(NSPropertyListSerialization::propertyListWithData_options_format_error(
                                     data, NSPropertyListImmutable, &format, nullptr)
                                     .object());
    }
    countNodes(state);
}
BENCHMARK(read)->Name("PropertyList/ReadXML");

} // namespace
