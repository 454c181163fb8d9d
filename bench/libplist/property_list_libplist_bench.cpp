// The same property lists with libplist.
#include "PropertyListTracks.h"

#include <plist/plist.h>

#include <cstdlib>

using namespace tessarin;
using namespace bench;

namespace {

constexpr int fileNodes = 10'000;

std::string documentOf(int nodes, NSPropertyListFormat format) {
    const AutoreleasePool pool;
    const NSData document = trackDocument(nodes, format);
    return {static_cast<const char*>(document.bytes()), document.length()};
}

plist_t tracksOfLibplist(int nodes) {
    const std::string document = documentOf(nodes, NSPropertyListXMLFormat_v1_0);
    plist_t tracks = nullptr;
    plist_from_xml(document.data(), static_cast<std::uint32_t>(document.size()), &tracks);
    return tracks;
}

template <auto write>
void writeWithLibplist(benchmark::State& state) {
    const plist_t tracks = tracksOfLibplist(fileNodes);
    for (auto _ : state) {
        char* document = nullptr;
        std::uint32_t length = 0;
        write(tracks, &document, &length);
        benchmark::DoNotOptimize(document);
        std::free(document);
    }
    plist_free(tracks);
    countNodes(state, fileNodes);
}
BENCHMARK(writeWithLibplist<plist_to_xml>)->Name("PropertyList/WriteXMLLibplist");
BENCHMARK(writeWithLibplist<plist_to_bin>)->Name("PropertyList/WriteBinaryLibplist");

template <auto read, NSPropertyListFormat format>
void readWithLibplist(benchmark::State& state) {
    const std::string document = documentOf(fileNodes, format);
    for (auto _ : state) {
        plist_t tracks = nullptr;
        read(document.data(), static_cast<std::uint32_t>(document.size()), &tracks);
        benchmark::DoNotOptimize(tracks);
        plist_free(tracks);
    }
    countNodes(state, fileNodes);
}
BENCHMARK(readWithLibplist<plist_from_xml, NSPropertyListXMLFormat_v1_0>)
    ->Name("PropertyList/ReadXMLLibplist");
BENCHMARK(readWithLibplist<plist_from_bin, NSPropertyListBinaryFormat_v1_0>)
    ->Name("PropertyList/ReadBinaryLibplist");

void copyWithLibplist(benchmark::State& state) {
    const auto nodes = static_cast<int>(state.range(0));
    const plist_t tracks = tracksOfLibplist(nodes);
    for (auto _ : state) {
        const plist_t copied = plist_copy(tracks);
        benchmark::DoNotOptimize(copied);
        plist_free(copied);
    }
    plist_free(tracks);
    countNodes(state, nodes);
}
BENCHMARK(copyWithLibplist)->Name("PropertyList/CopyLibplist")->Arg(100'000)->Arg(1'000'000);

} // namespace
