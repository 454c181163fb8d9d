// Objects with their positions, to be found again by equality without comparing each with each.
#pragma once

#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/Retained.h"

#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

namespace tessarin {

// The outcome is that of comparing one by one, in order: values are found by their hashes, any other object
// is compared with every one that came before it, and every one with it.
//
//   EqualityIndex known({base, added});
//   for (const NSObject object : base) known.append(object);
//   for (const NSObject object : added)
//       if (known.appendIfMissing(object)) ...
//
// The objects are not retained: the arrays that hold them must outlast the index. Comparing may be the
// objects' own code, which may change these arrays; before the first such comparison the index copies them.
class EqualityIndex {
public:
    // Of two objects that are compared, which is asked isEqual: of the other.
    enum class Asked { searched, appended };

    // `holders` are the arrays that hold what will be appended and searched for.
    TESSARIN_EXPORT explicit EqualityIndex(std::initializer_list<NSArray> holders,
                                           Asked asked = Asked::searched);

    // Makes room for so many objects.
    TESSARIN_EXPORT void reserve(NSUInteger count);
    // Adds an object behind all others.
    TESSARIN_EXPORT void append(NSObject object);
    // Adds it when no other is, or equals, it; whether it was added.
    TESSARIN_EXPORT bool appendIfMissing(NSObject object);

    // The position of the first object that is, or equals, the one searched for; NSNotFound when there is
    // none.
    TESSARIN_EXPORT NSUInteger positionOf(NSObject searched);
    bool contains(NSObject searched) { return positionOf(searched) != static_cast<NSUInteger>(NSNotFound); }

    // All that was appended, in order.
    std::span<const NSObject> objects() const { return objects_; }

private:
    // An object as it is looked for: with its hash where it is a value, with 0 where it is none.
    struct Sought {
        NSObject object;
        NSUInteger hash;
    };

    Sought sought(NSObject object);
    void holdObjects();
    NSUInteger positionOf(Sought searched) const;
    NSUInteger positionOfValue(Sought value) const;
    bool areEqual(NSObject searched, NSObject appended) const;
    void add(Sought object, bool isFirstOfEqual);
    void makeSlots();
    void occupySlot(NSUInteger position);

    const Asked asked_;
    std::vector<NSArray> holders_;
    std::vector<Retained<NSArray>> heldCopies_;
    std::vector<NSObject> objects_;
    std::vector<NSUInteger> hashes_;   // of each object; 0 of one that is no value
    std::vector<NSUInteger> others_;   // the positions of those
    std::vector<std::uint64_t> slots_; // a hash table of the first of equal values; none while they are few
};

} // namespace tessarin
