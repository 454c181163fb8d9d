// Objects with their positions, to be found again by equality without comparing each with each.
#pragma once

#include "TessarinPlatform/NSArray.h"

#include <vector>

namespace tessarin::collections {

// The outcome is that of comparing one by one, in order: values are found by their hashes, any other object
// is compared with every one that came before it, and every one with it. The objects are not retained; since
// comparing may be the objects' own code, the caller holds them in an array that nobody else can change.
class EqualityIndex {
public:
    // Of two objects that are compared, which is asked isEqual: of the other.
    enum class Asked { searched, appended };

    explicit EqualityIndex(Asked asked = Asked::searched) : asked_(asked) {}

    // Adds an object behind all others.
    void append(NSObject object);
    // Adds it when no other is, or equals, it; whether it was added.
    bool appendIfMissing(NSObject object);

    // The position of the first object that is, or equals, the one searched for; NSNotFound when there is
    // none.
    NSUInteger positionOf(NSObject searched) const;
    bool contains(NSObject searched) const {
        return positionOf(searched) != static_cast<NSUInteger>(NSNotFound);
    }

private:
    // An object as it is looked for: its hash is known where it is a value.
    struct Sought {
        NSObject object;
        bool isValue = false;
        NSUInteger hash = 0;
    };

    bool isIndexed() const { return !slots_.empty(); }
    Sought sought(NSObject object) const;
    NSUInteger positionOf(const Sought& searched) const;
    NSUInteger positionOfValue(const Sought& value) const;
    bool areEqual(NSObject searched, NSObject appended) const;
    void append(const Sought& object);
    void index(NSUInteger position, const Sought& object);
    void occupySlot(NSUInteger position);
    void makeRoom();
    NSUInteger firstSlot(NSUInteger hash) const;

    Asked asked_;
    std::vector<NSObject> objects_;
    // Filled once there are so many objects that it pays.
    std::vector<NSUInteger> slots_;  // position + 1 of the first of equal values, by hash; 0 for none
    std::vector<NSUInteger> hashes_; // of each object; 0 of one that is no value
    std::vector<NSUInteger> others_; // the positions of those
    NSUInteger valueCount_ = 0;
};

} // namespace tessarin::collections
