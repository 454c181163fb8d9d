// Arrays sorted by sort descriptors, against structures sorted by the standard library; descriptors as
// configurations.
#include "TessarinFoundation/NSSortDescriptor+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSNumber.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace tessarin;

namespace {

struct Track {
    std::string name;
    int length;
};

// Names that begin alike, in no order, and lengths of which many are the same.
std::vector<Track> tracks(std::int64_t count) {
    std::mt19937 random(1);
    std::vector<Track> tracks;
    for (std::int64_t track = 0; track < count; ++track)
        tracks.push_back(
            {"instrument track " + std::to_string(random() % 1'000'000), static_cast<int>(random() % 1000)});
    return tracks;
}

NSString nameOf(NSObject self, SEL) { return instanceVariableOf<NSString>(self, "name"); }
NSNumber lengthOf(NSObject self, SEL) { return instanceVariableOf<NSNumber>(self, "length"); }

Retained<NSArray> newTracks(std::int64_t count) {
    static const ClassDefinition definition(
        {.name = "BenchmarkTrack",
         .instanceVariables = {instanceVariable<NSString>("name"), instanceVariable<NSNumber>("length")},
         .methods = {instanceMethod("name", nameOf), instanceMethod("length", lengthOf)}});
    const AutoreleasePool pool;
    const NSMutableArray array = NSMutableArray::array();
    for (const Track& track : tracks(count)) {
        const Retained<NSObject> object = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
        // Kept for the length of the program.
        instanceVariableOf<NSString>(object, "name") = retain(NSString(track.name)).leak();
        instanceVariableOf<NSNumber>(object, "length") = retain(NSNumber::numberWithInt(track.length)).leak();
        array.addObject(object);
    }
    return adopt(NSArray(array.copy()));
}

NSSortDescriptor by(NSString key) { return NSSortDescriptor::sortDescriptorWithKey_ascending(key, true); }

void perItem(benchmark::State& state) { state.SetItemsProcessed(state.iterations() * state.range(0)); }
void sizes(benchmark::internal::Benchmark* benchmark) { benchmark->Arg(1000)->Arg(100'000); }

void sortBy(benchmark::State& state, NSArray descriptors) {
    const Retained<NSArray> array = newTracks(state.range(0));
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(array.sortedArrayUsingDescriptors(descriptors).object());
    }
    perItem(state);
}

void sortByName(benchmark::State& state) {
    const AutoreleasePool pool;
    sortBy(state, NSArray::arrayOf(by("name"_ns)));
}
BENCHMARK(sortByName)->Name("SortDescriptors/Name")->Apply(sizes);

void sortByLength(benchmark::State& state) {
    const AutoreleasePool pool;
    sortBy(state, NSArray::arrayOf(by("length"_ns)));
}
BENCHMARK(sortByLength)->Name("SortDescriptors/Length")->Apply(sizes);

void sortByLengthAndName(benchmark::State& state) {
    const AutoreleasePool pool;
    sortBy(state, NSArray::arrayOf(by("length"_ns), by("name"_ns)));
}
BENCHMARK(sortByLengthAndName)->Name("SortDescriptors/LengthAndName")->Apply(sizes);

// The structures are sorted where they are; putting them back into the order of before is not timed.
template <class IsBefore>
void sortStructures(benchmark::State& state, IsBefore&& isBefore) {
    const std::vector<Track> original = tracks(state.range(0));
    std::vector<Track> sorted;
    for (auto _ : state) {
        state.PauseTiming();
        sorted = original;
        state.ResumeTiming();
        std::stable_sort(sorted.begin(), sorted.end(), isBefore);
        benchmark::DoNotOptimize(sorted.data());
    }
    perItem(state);
}

void sortStructuresByName(benchmark::State& state) {
    sortStructures(state, [](const Track& left, const Track& right) { return left.name < right.name; });
}
BENCHMARK(sortStructuresByName)->Name("SortStructures/Name")->Apply(sizes);

void sortStructuresByLength(benchmark::State& state) {
    sortStructures(state, [](const Track& left, const Track& right) { return left.length < right.length; });
}
BENCHMARK(sortStructuresByLength)->Name("SortStructures/Length")->Apply(sizes);

void sortStructuresByLengthAndName(benchmark::State& state) {
    sortStructures(state, [](const Track& left, const Track& right) {
        return left.length != right.length ? left.length < right.length : left.name < right.name;
    });
}
BENCHMARK(sortStructuresByLengthAndName)->Name("SortStructures/LengthAndName")->Apply(sizes);

void configure(benchmark::State& state) {
    const AutoreleasePool outer;
    const NSSortDescriptor byName = by("name"_ns);
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(
            tessarin_sortDescriptorWithConfiguration(tessarin_configuration(byName)).object());
    }
}
BENCHMARK(configure)->Name("SortDescriptorConfiguration/OutAndIn");

} // namespace
