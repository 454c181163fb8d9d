// Objects to be found again by equality, in constant time.
#pragma once

#include "TessarinPlatform/ValueComparison.h"

#include <unordered_set>

namespace tessarin::embedded {

// A set of objects that compare as values, to be asked for such. It does not retain them.
class ValueSet {
public:
    void insert(NSObject value) { values_.insert(value); }
    bool contains(NSObject value) const { return values_.find(value) != values_.end(); }

private:
    struct Hash {
        std::size_t operator()(NSObject value) const { return value.hash(); }
    };
    struct Equal {
        bool operator()(NSObject left, NSObject right) const { return left == right || left.isEqual(right); }
    };
    std::unordered_set<NSObject, Hash, Equal> values_;
};

} // namespace tessarin::embedded
