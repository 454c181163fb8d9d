// A stable sort that bears any comparison.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace tessarin::embedded {

// Sorts by merging. `follows(a, b)` says whether a belongs behind b; it may throw, which leaves the items in
// some order with none lost, and it may contradict itself, which gives some order: the standard library's
// sorts promise neither.
template <class Item, class Follows>
void stableSort(std::vector<Item>& items, Follows&& follows) {
    std::vector<Item> merged(items);
    for (std::size_t width = 1; width < items.size(); width *= 2) {
        for (std::size_t begin = 0; begin < items.size(); begin += 2 * width) {
            const std::size_t middle = std::min(begin + width, items.size());
            const std::size_t end = std::min(middle + width, items.size());
            std::size_t left = begin;
            std::size_t right = middle;
            for (std::size_t target = begin; target < end; ++target) {
                const bool takesRight = left == middle || (right < end && follows(items[left], items[right]));
                merged[target] = takesRight ? items[right++] : items[left++];
            }
        }
        std::swap(items, merged);
    }
}

} // namespace tessarin::embedded
