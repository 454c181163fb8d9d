// Merging arrays, removing what another array holds, and mapping objects to their indexes; the same by the
// plain scan that the operations are defined by.
#include "NameArray.h"

#include "TessarinFoundation/NSArray+TessarinExtensions.h"
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableIndexSet.h"
#include "TessarinPlatform/Retained.h"

#include <string_view>
#include <unordered_set>

using namespace tessarin;

namespace {

// Measures what an operation makes of two arrays.
template <class Operation>
void measure(benchmark::State& state, NSArray present, NSArray other, Operation&& operation) {
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(operation(present, other).object());
    }
    bench::perElement(state);
}

template <class Operation>
void measureHalfEqual(benchmark::State& state, Operation&& operation) {
    const Retained<NSArray> present = bench::arrayOf(bench::presentNames(state.range(0)));
    const Retained<NSArray> other = bench::arrayOf(bench::otherNames(state.range(0)));
    measure(state, present, other, operation);
}

template <class Operation>
void measureSearched(benchmark::State& state, Operation&& operation) {
    const Retained<NSArray> present = bench::arrayOf(bench::presentNames(state.range(0)));
    const Retained<NSArray> searched = bench::arrayOf(bench::searchedNames(state.range(0)));
    measure(state, present, searched, operation);
}

// ---- The operations

void merge(benchmark::State& state) {
    measureHalfEqual(state, [](NSArray present, NSArray other) {
        return tessarin_arrayByMergingWithArray_receiverFirst(present, other, true);
    });
}
BENCHMARK(merge)->Name("ArrayMerge/Array")->Apply(bench::sizes);

void mergeInPlace(benchmark::State& state) {
    measureHalfEqual(state, [](NSArray present, NSArray other) {
        const NSMutableArray merged = adopt(NSMutableArray(present.mutableCopy())).autorelease();
        tessarin_mergeWithArray(merged, other);
        return merged;
    });
}
BENCHMARK(mergeInPlace)->Name("ArrayMerge/MutableArray")->Apply(bench::sizes);

void remove(benchmark::State& state) {
    measureHalfEqual(state, [](NSArray present, NSArray other) {
        return tessarin_arrayByRemovingObjectsInArray(present, other);
    });
}
BENCHMARK(remove)->Name("ArrayRemoval/Array")->Apply(bench::sizes);

void findIndexes(benchmark::State& state) {
    measureSearched(state, [](NSArray present, NSArray searched) {
        return tessarin_indexesOfObjectsInArray(present, searched);
    });
}
BENCHMARK(findIndexes)->Name("ArrayIndexes/Array")->Apply(bench::sizes);

// ---- One by one

void mergeByScan(benchmark::State& state) {
    measureHalfEqual(state, [](NSArray present, NSArray other) {
        const Retained<NSMutableArray> merged = adopt(NSMutableArray(present.mutableCopy()));
        for (const NSObject object : other)
            if (!merged.containsObject(object)) merged.addObject(object);
        return adopt(NSArray(merged.copy())).autorelease();
    });
}
BENCHMARK(mergeByScan)->Name("ArrayMerge/PlainScan")->Arg(10)->Arg(100)->Arg(1000);

void removeByScan(benchmark::State& state) {
    measureHalfEqual(state, [](NSArray present, NSArray other) {
        const Retained<NSMutableArray> remaining = adopt(NSMutableArray(present.mutableCopy()));
        for (const NSObject object : other) remaining.removeObject(object);
        return adopt(NSArray(remaining.copy())).autorelease();
    });
}
BENCHMARK(removeByScan)->Name("ArrayRemoval/PlainScan")->Arg(10)->Arg(100)->Arg(1000);

void findIndexesByScan(benchmark::State& state) {
    measureSearched(state, [](NSArray present, NSArray searched) {
        const Retained<NSMutableIndexSet> indexes = adopt(NSMutableIndexSet::alloc().init());
        for (const NSObject object : searched) indexes.addIndex(present.indexOfObject(object));
        return adopt(NSIndexSet(indexes.copy())).autorelease();
    });
}
BENCHMARK(findIndexesByScan)->Name("ArrayIndexes/PlainScan")->Arg(10)->Arg(100)->Arg(1000);

// ---- The standard library, with pointers that own nothing

void mergeStandard(benchmark::State& state) {
    const std::vector<std::string> present = bench::presentNames(state.range(0));
    const std::vector<std::string> other = bench::otherNames(state.range(0));
    for (auto _ : state) {
        std::vector<const std::string*> merged;
        std::unordered_set<std::string_view> contained;
        for (const std::string& name : present) {
            merged.push_back(&name);
            contained.insert(name);
        }
        for (const std::string& name : other)
            if (contained.insert(name).second) merged.push_back(&name);
        benchmark::DoNotOptimize(merged.data());
    }
    bench::perElement(state);
}
BENCHMARK(mergeStandard)->Name("ArrayMerge/UnorderedSet")->Apply(bench::sizes);

} // namespace
