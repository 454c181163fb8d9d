// NSIndexSet: an immutable set of indexes from 0 to NSNotFound - 1, in their order.
#pragma once

#include "TessarinPlatform/detail/NSString-class.h"

#include <iterator>

namespace tessarin {

class IndexIterator;

class NSIndexSet : public Handle<NSIndexSet, "NSIndexSet", NSObject> {
public:
    using Handle::Handle;

    static NSIndexSet indexSet() { return send<NSIndexSet>(classObject(), "indexSet"_sel); }
    // NSNotFound, anything above it, and a range that reaches it raise NSInvalidArgumentException.
    static NSIndexSet indexSetWithIndex(NSUInteger index) {
        return send<NSIndexSet>(classObject(), "indexSetWithIndex:"_sel, index);
    }
    static NSIndexSet indexSetWithIndexesInRange(NSRange range) {
        return send<NSIndexSet>(classObject(), "indexSetWithIndexesInRange:"_sel, range);
    }

    [[nodiscard]] NSIndexSet init() const { return send<NSIndexSet>(*this, "init"_sel); }
    [[nodiscard]] NSIndexSet initWithIndex(NSUInteger index) const {
        return send<NSIndexSet>(*this, "initWithIndex:"_sel, index);
    }
    [[nodiscard]] NSIndexSet initWithIndexesInRange(NSRange range) const {
        return send<NSIndexSet>(*this, "initWithIndexesInRange:"_sel, range);
    }
    [[nodiscard]] NSIndexSet initWithIndexSet(NSIndexSet other) const {
        return send<NSIndexSet>(*this, "initWithIndexSet:"_sel, other);
    }

    NSUInteger count() const { return send<NSUInteger>(*this, "count"_sel); }
    // NO for NSNotFound and anything above it.
    bool containsIndex(NSUInteger index) const {
        return send<BOOL>(*this, "containsIndex:"_sel, index) != NO;
    }
    // YES for a range of no length; one that reaches NSNotFound raises.
    bool containsIndexesInRange(NSRange range) const {
        return send<BOOL>(*this, "containsIndexesInRange:"_sel, range) != NO;
    }
    bool containsIndexes(NSIndexSet other) const {
        return send<BOOL>(*this, "containsIndexes:"_sel, other) != NO;
    }
    bool isEqualToIndexSet(NSIndexSet other) const {
        return send<BOOL>(*this, "isEqualToIndexSet:"_sel, other) != NO;
    }

    // NSNotFound where there is none.
    NSUInteger firstIndex() const { return send<NSUInteger>(*this, "firstIndex"_sel); }
    NSUInteger lastIndex() const { return send<NSUInteger>(*this, "lastIndex"_sel); }
    NSUInteger indexGreaterThanIndex(NSUInteger index) const {
        return send<NSUInteger>(*this, "indexGreaterThanIndex:"_sel, index);
    }
    NSUInteger indexGreaterThanOrEqualToIndex(NSUInteger index) const {
        return send<NSUInteger>(*this, "indexGreaterThanOrEqualToIndex:"_sel, index);
    }
    NSUInteger indexLessThanIndex(NSUInteger index) const {
        return send<NSUInteger>(*this, "indexLessThanIndex:"_sel, index);
    }
    NSUInteger indexLessThanOrEqualToIndex(NSUInteger index) const {
        return send<NSUInteger>(*this, "indexLessThanOrEqualToIndex:"_sel, index);
    }

    // Walks the indexes in ascending order. A set that is changed meanwhile goes on from where the walk is.
    IndexIterator begin() const;
    IndexIterator end() const;
};

// A place in a walk over an index set.
class IndexIterator {
public:
    using value_type = NSUInteger;
    using difference_type = std::ptrdiff_t;
    using iterator_category = std::input_iterator_tag; // an index is answered, not referred to
    using iterator_concept = std::forward_iterator_tag;

    IndexIterator() = default;
    IndexIterator(NSIndexSet set, NSUInteger index) : set_(set), index_(index) {}

    NSUInteger operator*() const { return index_; }
    IndexIterator& operator++() {
        index_ = set_.indexGreaterThanIndex(index_);
        return *this;
    }
    IndexIterator operator++(int) {
        const IndexIterator before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const IndexIterator& left, const IndexIterator& right) {
        return left.index_ == right.index_;
    }

private:
    NSIndexSet set_;
    NSUInteger index_ = NSNotFound;
};

inline IndexIterator NSIndexSet::begin() const {
    return {*this, *this ? firstIndex() : static_cast<NSUInteger>(NSNotFound)};
}
inline IndexIterator NSIndexSet::end() const { return {*this, NSNotFound}; }

} // namespace tessarin

#include "TessarinPlatform/NSString.h"
