// The property list that the benchmarks work on: a list of tracks, each of ten nodes, as it comes out of a
// file.
#pragma once

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSNumber.h"
#include "TessarinPlatform/NSPropertyListSerialization.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

#include <string>

namespace bench {

constexpr int nodesOfTrack = 10; // the dictionary, its five values, the four strings of the last one

inline tessarin::NSData trackDocument(int nodes, tessarin::NSPropertyListFormat format) {
    using namespace tessarin;
    const NSMutableArray tracks = NSMutableArray::array();
    for (int number = 0; number < nodes / nodesOfTrack; ++number) {
        const NSMutableDictionary track = NSMutableDictionary::dictionary();
        track.setObject_forKey(NSString("Track " + std::to_string(number) + " <left & right>"), "name"_ns);
        track.setObject_forKey(NSNumber::numberWithInt(number), "channel"_ns);
        track.setObject_forKey(NSNumber::numberWithDouble(number / 7.0), "gain"_ns);
        track.setObject_forKey(NSNumber::numberWithBool(number % 2 == 0), "muted"_ns);
        track.setObject_forKey(NSArray::arrayOf("vocals"_ns, "lead"_ns, "dry"_ns, "take 2"_ns), "tags"_ns);
        tracks.addObject(track);
    }
    return NSPropertyListSerialization::dataWithPropertyList_format_options_error(tracks, format, 0, nullptr);
}

inline tessarin::id readTracks(tessarin::NSData document) {
    return tessarin::NSPropertyListSerialization::propertyListWithData_options_format_error(
        document, tessarin::NSPropertyListImmutable, nullptr, nullptr);
}

// Every node is an object of its own, save that strings and numbers may be shared.
inline tessarin::Retained<tessarin::NSObject> tracksOfNodes(int nodes) {
    const tessarin::AutoreleasePool pool;
    return tessarin::retain<tessarin::NSObject>(
        readTracks(trackDocument(nodes, tessarin::NSPropertyListXMLFormat_v1_0)));
}

// The time for a node is shown beside that for the whole.
inline void countNodes(benchmark::State& state, std::int64_t nodes) {
    state.SetItemsProcessed(state.iterations() * nodes);
    state.counters["per_node"] =
        benchmark::Counter(static_cast<double>(nodes),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

} // namespace bench
