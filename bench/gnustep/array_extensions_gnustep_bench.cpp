// Merging, removing and mapping to indexes with the platform's own sets and dictionaries, without the
// library.
#include "ByHand.h"
#include "Names.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/Retained.h"

using namespace tessarin;

namespace {

Retained<NSArray> arrayOf(const std::vector<std::string>& names) {
    const AutoreleasePool pool;
    const Retained<NSMutableArray> array = adopt(NSMutableArray::alloc().init());
    for (const std::string& name : names) array.addObject(NSString(name));
    return adopt(NSArray(array.copy()));
}

using Operation = void* (*)(void*, void*);

void measure(benchmark::State& state, Operation operation, const std::vector<std::string>& others) {
    const Retained<NSArray> present = arrayOf(bench::presentNames(state.range(0)));
    const Retained<NSArray> other = arrayOf(others);
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
