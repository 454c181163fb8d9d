// Objects with their positions, to be found again by equality without comparing each with each.
#pragma once

#include "TessarinPlatform/NSArray.h"

#include <unordered_map>
#include <vector>

namespace tessarin::collections {

// The outcome is that of comparing one by one, in order: values are found by their hashes, any other object
// is compared with every one that came before it, and every one with it. The objects are not retained.
class EqualityIndex {
public:
    // Of two objects that are compared, which is asked isEqual: of the other.
    enum class Asked { searched, appended };

    explicit EqualityIndex(Asked asked = Asked::searched) : asked_(asked) {}

    // Adds an object behind all others.
    void append(NSObject object);

    // The position of the first object that is, or equals, the one searched for; NSNotFound when there is
    // none.
    NSUInteger positionOf(NSObject searched) const;
    bool contains(NSObject searched) const {
        return positionOf(searched) != static_cast<NSUInteger>(NSNotFound);
    }

private:
    struct Hash {
        std::size_t operator()(NSObject value) const { return value.hash(); }
    };
    struct Equal {
        bool operator()(NSObject left, NSObject right) const { return left == right || left.isEqual(right); }
    };

    bool areEqual(NSObject searched, NSObject appended) const;
    // The first of the positions that lies before `limit` and holds an equal object, else `limit`.
    NSUInteger firstEqual(NSObject searched, const std::vector<NSUInteger>& positions,
                          NSUInteger limit) const;
    void indexAppended();

    Asked asked_;
    std::vector<NSObject> objects_;
    // Filled once there are so many objects that it pays.
    NSUInteger indexedCount_ = 0;
    std::unordered_map<NSObject, NSUInteger, Hash, Equal> values_; // the first position of each value
    std::vector<NSUInteger> others_;                               // the positions of all other objects
};

} // namespace tessarin::collections
