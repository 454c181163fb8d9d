// Merging, removing and mapping to indexes with JUCE, whose strings count their references themselves: by its
// lists, which search one by one, by its sorted set, which moves what is behind a new member, and by its hash
// map. Only the last is worth waiting for beyond 10,000 strings.
#include "Names.h"

#include <juce_core/juce_core.h>

namespace {

using Positions = juce::HashMap<juce::String, int>;

juce::StringArray listOf(const std::vector<std::string>& names) {
    juce::StringArray list;
    for (const std::string& name : names) list.add(juce::String(name));
    return list;
}

void sizesOfQuadraticTime(benchmark::internal::Benchmark* benchmark) {
    for (const int size : {100, 1000, 10'000}) benchmark->Arg(size);
}
void sizesOfLinearTime(benchmark::internal::Benchmark* benchmark) {
    for (const int size : {100, 1000, 10'000, 100'000, 1'000'000}) benchmark->Arg(size);
}

// Measures what an operation makes of two lists.
template <class Operation>
void measure(benchmark::State& state, const std::vector<std::string>& others, Operation&& operation) {
    const juce::StringArray present = listOf(bench::presentNames(state.range(0)));
    const juce::StringArray other = listOf(others);
    for (auto _ : state) benchmark::DoNotOptimize(operation(present, other).size());
    bench::perElement(state);
}
template <class Operation>
void measureHalfEqual(benchmark::State& state, Operation&& operation) {
    measure(state, bench::otherNames(state.range(0)), operation);
}
template <class Operation>
void measureSearched(benchmark::State& state, Operation&& operation) {
    measure(state, bench::searchedNames(state.range(0)), operation);
}

// ---- By its lists

void merge(benchmark::State& state) {
    measureHalfEqual(state, [](juce::StringArray merged, const juce::StringArray& other) {
        merged.mergeArray(other);
        return merged;
    });
}
BENCHMARK(merge)->Name("ArrayMerge/JuceStringArray")->Apply(sizesOfQuadraticTime);

void remove(benchmark::State& state) {
    measureHalfEqual(state, [](const juce::StringArray& present, const juce::StringArray& other) {
        juce::Array<juce::String> remaining = present.strings;
        remaining.removeValuesIn(other.strings);
        return remaining;
    });
}
BENCHMARK(remove)->Name("ArrayRemoval/JuceArray")->Apply(sizesOfQuadraticTime);

void findIndexes(benchmark::State& state) {
    measureSearched(state, [](const juce::StringArray& present, const juce::StringArray& searched) {
        juce::SortedSet<int> indexes;
        for (const juce::String& name : searched) indexes.add(present.indexOf(name));
        return indexes;
    });
}
BENCHMARK(findIndexes)->Name("ArrayIndexes/JuceStringArray")->Apply(sizesOfQuadraticTime);

// ---- By its sorted set

juce::SortedSet<juce::String> setOf(const juce::StringArray& list) {
    juce::SortedSet<juce::String> set;
    set.ensureStorageAllocated(list.size());
    for (const juce::String& name : list) set.add(name);
    return set;
}

void mergeBySet(benchmark::State& state) {
    measureHalfEqual(state, [](juce::StringArray merged, const juce::StringArray& other) {
        juce::SortedSet<juce::String> contained = setOf(merged);
        for (const juce::String& name : other)
            if (contained.add(name)) merged.add(name);
        return merged;
    });
}
BENCHMARK(mergeBySet)->Name("ArrayMerge/JuceSortedSet")->Apply(sizesOfQuadraticTime);

void removeBySet(benchmark::State& state) {
    measureHalfEqual(state, [](const juce::StringArray& present, const juce::StringArray& other) {
        const juce::SortedSet<juce::String> removed = setOf(other);
        juce::StringArray remaining;
        for (const juce::String& name : present)
            if (!removed.contains(name)) remaining.add(name);
        return remaining;
    });
}
BENCHMARK(removeBySet)->Name("ArrayRemoval/JuceSortedSet")->Apply(sizesOfQuadraticTime);

// ---- By its hash map

// The first position of each string.
void addPositions(Positions& positions, const juce::StringArray& list) {
    for (int position = 0; position < list.size(); ++position)
        if (!positions.contains(list[position])) positions.set(list[position], position);
}

void mergeByMap(benchmark::State& state) {
    measureHalfEqual(state, [](juce::StringArray merged, const juce::StringArray& other) {
        Positions contained(merged.size() + other.size());
        addPositions(contained, merged);
        for (const juce::String& name : other) {
            if (contained.contains(name)) continue;
            contained.set(name, merged.size());
            merged.add(name);
        }
        return merged;
    });
}
BENCHMARK(mergeByMap)->Name("ArrayMerge/JuceHashMap")->Apply(sizesOfLinearTime);

void removeByMap(benchmark::State& state) {
    measureHalfEqual(state, [](const juce::StringArray& present, const juce::StringArray& other) {
        Positions removed(other.size());
        addPositions(removed, other);
        juce::StringArray remaining;
        for (const juce::String& name : present)
            if (!removed.contains(name)) remaining.add(name);
        return remaining;
    });
}
BENCHMARK(removeByMap)->Name("ArrayRemoval/JuceHashMap")->Apply(sizesOfLinearTime);

void findIndexesByMap(benchmark::State& state) {
    measureSearched(state, [](const juce::StringArray& present, const juce::StringArray& searched) {
        Positions positions(present.size());
        addPositions(positions, present);
        std::vector<bool> isFound(static_cast<std::size_t>(present.size()));
        for (const juce::String& name : searched) isFound[static_cast<std::size_t>(positions[name])] = true;
        return isFound;
    });
}
BENCHMARK(findIndexesByMap)->Name("ArrayIndexes/JuceHashMap")->Apply(sizesOfLinearTime);

} // namespace
