// Edits of mutable arrays and values in the order of their keys, against the standard library on pointers.
#include "Names.h"

#include "TessarinFoundation/NSDictionary+TessarinExtensions.h"
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace tessarin;

namespace {

using bench::perElement;

// Strings for the numbers from `first` on, each an object of its own.
Retained<NSMutableArray> namesFrom(std::int64_t first, std::int64_t count) {
    const AutoreleasePool pool;
    Retained<NSMutableArray> names = adopt(NSMutableArray::alloc().init());
    for (std::int64_t number = first; number < first + count; ++number)
        names.addObject(NSString(bench::nameOf(number)));
    return names;
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const int size : {10, 1000, 100'000, 1'000'000}) benchmark->Arg(size);
}

// ---- Moving, to and fro over all distances.

template <class Move>
void moveAbout(benchmark::State& state, Move&& move) {
    std::minstd_rand numbers(1);
    const auto count = static_cast<NSUInteger>(state.range(0));
    for (auto _ : state) move(numbers() % count, numbers() % count);
}

void moveObject(benchmark::State& state) {
    const Retained<NSMutableArray> names = namesFrom(0, state.range(0));
    moveAbout(state,
              [&](NSUInteger from, NSUInteger to) { tessarin_moveObjectFromIndex_toIndex(names, from, to); });
}
BENCHMARK(moveObject)->Name("MoveObject/Array")->Apply(sizes);

void moveByRotation(benchmark::State& state) {
    std::vector<const void*> pointers(static_cast<std::size_t>(state.range(0)));
    moveAbout(state, [&](NSUInteger from, NSUInteger to) {
        const auto place = [&](NSUInteger index) {
            return pointers.begin() + static_cast<std::ptrdiff_t>(index);
        };
        if (from < to)
            std::rotate(place(from), place(from + 1), place(to + 1));
        else
            std::rotate(place(to), place(from), place(from + 1));
        benchmark::ClobberMemory();
    });
}
BENCHMARK(moveByRotation)->Name("MoveObject/Rotate")->Apply(sizes);

// ---- Shuffling

void shuffle(benchmark::State& state) {
    const Retained<NSMutableArray> names = namesFrom(0, state.range(0));
    for (auto _ : state) tessarin_shuffle(names);
    perElement(state);
}
BENCHMARK(shuffle)->Name("Shuffle/Array")->Apply(sizes);

void shuffleStandard(benchmark::State& state) {
    std::vector<const void*> pointers(static_cast<std::size_t>(state.range(0)));
    std::minstd_rand numbers(1);
    for (auto _ : state) {
        std::shuffle(pointers.begin(), pointers.end(), numbers);
        benchmark::ClobberMemory();
    }
    perElement(state);
}
BENCHMARK(shuffleStandard)->Name("Shuffle/Standard")->Apply(sizes);

// ---- Values by sorted keys

void valuesByKeys(benchmark::State& state) {
    const Retained<NSMutableDictionary> numbers = adopt(NSMutableDictionary::alloc().init());
    for (std::int64_t number = 0; number < state.range(0); ++number) {
        const AutoreleasePool pool;
        numbers.setObject_forKey("value"_ns, NSString(bench::nameOf(number)));
    }
    for (auto _ : state) {
        const AutoreleasePool pool;
        benchmark::DoNotOptimize(tessarin_allValuesSortedByKeys(numbers).object());
    }
    perElement(state);
}
BENCHMARK(valuesByKeys)->Name("ValuesByKeys/Dictionary")->Arg(10)->Arg(1000)->Arg(100'000);

void sortPointers(benchmark::State& state) {
    std::vector<std::string> names = bench::presentNames(state.range(0));
    std::shuffle(names.begin(), names.end(), std::minstd_rand(1));
    for (auto _ : state) {
        std::vector<const std::string*> pointers;
        for (const std::string& name : names) pointers.push_back(&name);
        std::stable_sort(pointers.begin(), pointers.end(),
                         [](const std::string* left, const std::string* right) { return *left < *right; });
        benchmark::DoNotOptimize(pointers.data());
    }
    perElement(state);
}
BENCHMARK(sortPointers)->Name("ValuesByKeys/SortedPointers")->Arg(10)->Arg(1000)->Arg(100'000);

} // namespace
