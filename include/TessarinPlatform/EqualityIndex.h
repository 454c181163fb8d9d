// Objects with their positions, to be found again by equality without comparing each with each.
#pragma once

#include "TessarinPlatform/Block.h"
#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/Retained.h"

#include <array>
#include <memory>
#include <span>
#include <vector>

namespace tessarin {

class PositionSlots;

// The outcome is that of comparing one by one, in order: values are found by their hashes, any other object
// is compared with every one that came before it, and every one with it.
//
//   EqualityIndex known(base, added);
//   known.append(base);
//   known.appendMissing(added);   // known.objects() are both, without what would be there twice
//
// The arrays that hold the objects must outlast the index. They alone retain the objects as long as no code
// but the platform's runs. Comparing may be the objects' own code, which may change these arrays: before the
// first such comparison the index copies them. Walking an array of an application's class may do so too: then
// the index retains what it appends.
class EqualityIndex {
public:
    // Of two objects that are compared, which is asked isEqual: of the other.
    enum class Asked { searched, appended };

    // The two arrays hold what will be appended and searched for; one that the block below changes is among
    // them.
    TESSARIN_EXPORT EqualityIndex(NSArray holder, NSArray other, Asked asked = Asked::searched);
    TESSARIN_EXPORT ~EqualityIndex();
    EqualityIndex(const EqualityIndex&) = delete;
    EqualityIndex& operator=(const EqualityIndex&) = delete;

    // Makes room for the objects of one array, or two.
    TESSARIN_EXPORT void reserveFor(NSArray array, NSArray other = nil);
    // Adds the objects of an array behind all others.
    TESSARIN_EXPORT void append(NSArray objects);
    // Adds those objects of an array that no other is, or equals, and calls the block with each.
    TESSARIN_EXPORT void appendMissing(NSArray objects, Block<void(NSObject)> added = nil);

    // The position of the first object that is, or equals, the one searched for; NSNotFound when there is
    // none.
    TESSARIN_EXPORT NSUInteger positionOf(NSObject searched);
    bool contains(NSObject searched) { return positionOf(searched) != static_cast<NSUInteger>(NSNotFound); }
    // Calls the block with each object of an array, in order, and its position. What is no value is looked
    // for by `positionOfOther` where that is given.
    TESSARIN_EXPORT void findEach(NSArray searched, Block<void(NSObject, NSUInteger)> found,
                                  Block<NSUInteger(NSObject)> positionOfOther = nil);

    // All that was appended, in order.
    std::span<const NSObject> objects() const { return objects_; }

private:
    // An object as it is looked for: with its hash where it is a value, with 0 where it is none.
    struct Sought {
        NSObject object;
        NSUInteger hash;
    };

    template <class Take>
    void takeEach(NSArray array, Take&& take);
    template <class Take>
    void takeNext(FastEnumerator& walk, Take&& take);
    template <class Take>
    void takeValuesAhead(FastEnumerator& walk, Take&& take);
    bool readsAhead() const;
    void fetchCandidates(std::span<const Sought> values) const;
    Sought sought(NSObject object);
    void append(Sought object);
    bool appendIfMissing(Sought object);
    void holdObjects();
    NSUInteger positionOf(Sought searched) const;
    NSUInteger positionOfValue(Sought value) const;
    bool areEqual(NSObject searched, NSObject appended) const;
    void add(Sought object, bool isFirstOfEqual);
    void makeSlots();

    const Asked asked_;
    std::array<NSArray, 2> holders_;
    const bool areOfThePlatform_; // the holders
    std::array<Retained<NSArray>, 2> heldCopies_;
    std::vector<NSObject> objects_;
    std::vector<Retained<NSObject>> retained_; // the same, where an array is not the platform's
    std::vector<NSUInteger> hashes_;           // of each object; 0 of one that is no value
    std::vector<NSUInteger> others_;           // the positions of those
    std::unique_ptr<PositionSlots> slots_;     // of the first of equal values; none while they are few
};

} // namespace tessarin
