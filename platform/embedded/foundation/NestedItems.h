// The items of an array and of the arrays in it, walked without recursion.
#pragma once

#include "platform/embedded/foundation/ArrayStorage.h"

#include <cstddef>
#include <unordered_set>
#include <vector>

namespace tessarin::embedded {

// Counts the items of the arrays that are gone through, as often as they are. Raises
// NSInvalidArgumentException where arrays that stand in several places have been entered again for more than
// 2^24 items in all, an array counting as 16: a few inside each other can stand for more than there is time
// and memory for.
class EnteredItems {
public:
    // For the operation of an array that walks.
    EnteredItems(NSArray outermost, SEL selector) : outermost_(outermost), selector_(selector) {}

    void add(NSArray array, std::size_t itemCount);

private:
    const NSArray outermost_;
    const SEL selector_;
    // What was entered is remembered only from where there is so much of it.
    std::size_t itemsEntered_ = 0;
    std::unordered_set<Object*> entered_;
    std::size_t itemsEnteredAgain_ = 0;
};

// The walker decides which items it enters. The arrays are copied, since what is done with the items might
// change them.
class NestedItems {
public:
    // For the operation of an array that walks.
    NestedItems(NSArray outermost, SEL selector)
        : outermost_(outermost), selector_(selector), entered_(outermost, selector) {
        enter(outermost);
    }

    // How many arrays are open, the outermost included.
    std::size_t depth() const { return levels_.size(); }
    // The next item of the innermost, nil at its end.
    NSObject next();
    // Raises NSInvalidArgumentException for an array that is open already: it would never come to an end; and
    // for too many items in all.
    void enter(NSArray array);
    void leave();

private:
    struct Level {
        NSArray array;
        Retained<NSArray> items;
        NSUInteger next = 0;
    };

    const NSArray outermost_;
    const SEL selector_;
    std::vector<Level> levels_;
    std::unordered_set<Object*> open_;
    EnteredItems entered_;
};

} // namespace tessarin::embedded
