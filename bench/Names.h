// The names that arrays are merged, thinned out and searched with, on the library and on its rivals: of two
// lists of equal length, half of each is in the other.
#pragma once

#include "Rivals.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace bench {

inline std::string nameOf(std::int64_t number) {
    return "a name of some length, number " + std::to_string(number);
}

// The names of the numbers from `first` on.
inline std::vector<std::string> namesFrom(std::int64_t first, std::int64_t count) {
    std::vector<std::string> names;
    for (std::int64_t number = first; number < first + count; ++number) names.push_back(nameOf(number));
    return names;
}

inline std::vector<std::string> presentNames(std::int64_t count) { return namesFrom(0, count); }
inline std::vector<std::string> otherNames(std::int64_t count) { return namesFrom(count / 2, count); }
// Half of the names that are present, in no order.
inline std::vector<std::string> searchedNames(std::int64_t count) {
    std::vector<std::string> names;
    for (std::int64_t number = 0; number < count; number += 2) names.push_back(nameOf(number));
    std::shuffle(names.begin(), names.end(), std::minstd_rand(1));
    return names;
}

// From ten names to a million.
inline void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const int size : {10, 100, 1000, 10'000, 100'000, 1'000'000}) benchmark->Arg(size);
}
inline void perElement(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// A text that counts its references, for rivals whose strings are values.
class CountedText : public CountedObject {
public:
    explicit CountedText(std::string text) : text_(std::move(text)) {}
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

// Pointers to texts; copying one retains.
class CountedTexts {
public:
    explicit CountedTexts(const std::vector<std::string>& texts) {
        for (const std::string& text : texts) pointers_.emplace_back(new CountedText(text));
    }
    const std::vector<IntrusivePointer>& pointers() const { return pointers_; }
    static const std::string& text(const IntrusivePointer& pointer) {
        return static_cast<const CountedText*>(pointer.get())->text();
    }

private:
    std::vector<IntrusivePointer> pointers_;
};

} // namespace bench
