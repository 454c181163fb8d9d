// Merging, removing and mapping to indexes by a table of the texts: hashed, compared, and retained into the
// result.
#include "Names.h"

#include <absl/container/flat_hash_map.h>

#include <string_view>

namespace {

using bench::CountedTexts;
using Positions = absl::flat_hash_map<std::string_view, std::size_t>;

// The first position of each text.
Positions positionsOf(const CountedTexts& texts) {
    Positions positions;
    positions.reserve(texts.pointers().size());
    for (std::size_t position = 0; position < texts.pointers().size(); ++position)
        positions.emplace(CountedTexts::text(texts.pointers()[position]), position);
    return positions;
}

void merge(benchmark::State& state) {
    const CountedTexts present(bench::presentNames(state.range(0)));
    const CountedTexts other(bench::otherNames(state.range(0)));
    for (auto _ : state) {
        std::vector<bench::IntrusivePointer> merged;
        merged.reserve(present.pointers().size() + other.pointers().size());
        Positions positions;
        positions.reserve(present.pointers().size() + other.pointers().size());
        for (const auto& pointer : present.pointers()) {
            positions.emplace(CountedTexts::text(pointer), merged.size());
            merged.push_back(pointer);
        }
        for (const auto& pointer : other.pointers())
            if (positions.emplace(CountedTexts::text(pointer), merged.size()).second)
                merged.push_back(pointer);
        benchmark::DoNotOptimize(merged.data());
    }
    bench::perElement(state);
}
BENCHMARK(merge)->Name("ArrayMerge/FlatHashMap")->Apply(bench::sizes);

void remove(benchmark::State& state) {
    const CountedTexts present(bench::presentNames(state.range(0)));
    const CountedTexts other(bench::otherNames(state.range(0)));
    for (auto _ : state) {
        const Positions removed = positionsOf(other);
        std::vector<bench::IntrusivePointer> remaining;
        for (const auto& pointer : present.pointers())
            if (!removed.contains(CountedTexts::text(pointer))) remaining.push_back(pointer);
        benchmark::DoNotOptimize(remaining.data());
    }
    bench::perElement(state);
}
BENCHMARK(remove)->Name("ArrayRemoval/FlatHashMap")->Apply(bench::sizes);

void findIndexes(benchmark::State& state) {
    const CountedTexts present(bench::presentNames(state.range(0)));
    const CountedTexts searched(bench::searchedNames(state.range(0)));
    for (auto _ : state) {
        const Positions positions = positionsOf(present);
        std::vector<bool> isFound(present.pointers().size());
        for (const auto& pointer : searched.pointers())
            isFound[positions.find(CountedTexts::text(pointer))->second] = true;
        benchmark::DoNotOptimize(isFound.size());
    }
    bench::perElement(state);
}
BENCHMARK(findIndexes)->Name("ArrayIndexes/FlatHashMap")->Apply(bench::sizes);

} // namespace
