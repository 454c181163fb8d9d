// Property lists: written and read, examined, copied.
#include "PropertyListTracks.h"

#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

using namespace tessarin;
using namespace bench;

namespace {

constexpr int fileNodes = 10'000;

void write(benchmark::State& state, NSPropertyListFormat format) {
    const Retained<NSObject> tracks = tracksOfNodes(fileNodes);
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(
            NSPropertyListSerialization::dataWithPropertyList_format_options_error(tracks, format, 0, nullptr)
                .object());
    }
    countNodes(state, fileNodes);
}
BENCHMARK_CAPTURE(write, XML, NSPropertyListXMLFormat_v1_0)->Name("PropertyList/WriteXML");
BENCHMARK_CAPTURE(write, binary, NSPropertyListBinaryFormat_v1_0)->Name("PropertyList/WriteBinary");

void read(benchmark::State& state, NSPropertyListFormat format) {
    const AutoreleasePool outer;
    const NSData document = trackDocument(fileNodes, format);
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(readTracks(document).object());
    }
    countNodes(state, fileNodes);
}
BENCHMARK_CAPTURE(read, XML, NSPropertyListXMLFormat_v1_0)->Name("PropertyList/ReadXML");
BENCHMARK_CAPTURE(read, binary, NSPropertyListBinaryFormat_v1_0)->Name("PropertyList/ReadBinary");

void examine(benchmark::State& state) {
    const auto nodes = static_cast<int>(state.range(0));
    const Retained<NSObject> tracks = tracksOfNodes(nodes);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            NSPropertyListSerialization::propertyList_isValidForFormat(tracks, NSPropertyListXMLFormat_v1_0));
    countNodes(state, nodes);
}
BENCHMARK(examine)->Name("PropertyList/IsValid")->Arg(10'000)->Arg(100'000);

void copy(benchmark::State& state) {
    const auto nodes = static_cast<int>(state.range(0));
    const Retained<NSObject> tracks = tracksOfNodes(nodes);
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(tessarin_propertyListWithMutableContainers_error(tracks, nullptr).object());
    }
    countNodes(state, nodes);
}
BENCHMARK(copy)->Name("PropertyList/Copy")->Arg(100'000)->Arg(1'000'000);

} // namespace
