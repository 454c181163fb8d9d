// Merging, removing and mapping to indexes with the platform's own sets and dictionaries, without the
// library.
#include "ByHand.h"
#include "NameArray.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/Retained.h"

using namespace tessarin;

namespace {

using Operation = void* (*)(void*, void*);

void measure(benchmark::State& state, Operation operation, const std::vector<std::string>& others) {
    const Retained<NSArray> present = bench::arrayOf(bench::presentNames(state.range(0)));
    const Retained<NSArray> other = bench::arrayOf(others);
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(operation(present.object(), other.object()));
    }
    bench::perElement(state);
}

void merge(benchmark::State& state) { measure(state, mergedByHand, bench::otherNames(state.range(0))); }
BENCHMARK(merge)->Name("ArrayMerge/ByHand")->Apply(bench::sizes);

void remove(benchmark::State& state) { measure(state, remainingByHand, bench::otherNames(state.range(0))); }
BENCHMARK(remove)->Name("ArrayRemoval/ByHand")->Apply(bench::sizes);

void findIndexes(benchmark::State& state) {
    measure(state, indexesByHand, bench::searchedNames(state.range(0)));
}
BENCHMARK(findIndexes)->Name("ArrayIndexes/ByHand")->Apply(bench::sizes);

} // namespace
