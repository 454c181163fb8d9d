#include "TessarinPlatform/EqualityIndex.h"

#include "TessarinPlatform/ValueHash.h"
#include "platform/services/PositionSlots.h"

#include <utility>

namespace tessarin {
namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

// Among as many a hash is found sooner by passing over all of them.
constexpr NSUInteger fewObjects = 32;

// As many are more than the nearest caches hold.
constexpr NSUInteger manyObjects = 4096;

// Whether walking an array, and what its count says, is the platform's matter alone.
bool isOfThePlatform(NSArray array) { return !array || searchesByEquality(array); }

// What an application's own array says of itself need not be true.
NSUInteger trueCount(NSArray array) { return isOfThePlatform(array) ? array.count() : 0; }

} // namespace

EqualityIndex::EqualityIndex(NSArray holder, NSArray other, Asked asked)
    : asked_(asked),
      holders_{holder, other},
      areOfThePlatform_(isOfThePlatform(holder) && isOfThePlatform(other)) {}

EqualityIndex::~EqualityIndex() = default;

void EqualityIndex::reserveFor(NSArray array, NSArray other) {
    const NSUInteger count = objects_.size() + trueCount(array) + trueCount(other);
    objects_.reserve(count);
    hashes_.reserve(count);
}

void EqualityIndex::append(NSArray objects) {
    takeEach(objects, [&](Sought object) { append(object); });
}

void EqualityIndex::appendMissing(NSArray objects, Block<void(NSObject)> added) {
    takeEach(objects, [&](Sought object) {
        if (appendIfMissing(object) && added) added(object.object);
    });
}

void EqualityIndex::findEach(NSArray searched, Block<void(NSObject, NSUInteger)> found,
                             Block<NSUInteger(NSObject)> positionOfOther) {
    takeEach(searched, [&](Sought object) {
        const bool isOther = object.hash == 0 && positionOfOther;
        found(object.object, isOther ? positionOfOther(object.object) : positionOf(object));
    });
}

NSUInteger EqualityIndex::positionOf(NSObject searched) { return positionOf(sought(searched)); }

template <class Take>
void EqualityIndex::takeEach(NSArray array, Take&& take) {
    for (FastEnumerator walk = array.begin(); walk != array.end();)
        if (readsAhead())
            takeValuesAhead(walk, take);
        else
            takeNext(walk, take);
}

template <class Take>
void EqualityIndex::takeNext(FastEnumerator& walk, Take&& take) {
    take(sought(*walk));
    ++walk;
}

// Looking for several values at once, so that the waits for memory pass together. What is no value ends them,
// and is taken before the walk goes on.
template <class Take>
void EqualityIndex::takeValuesAhead(FastEnumerator& walk, Take&& take) {
    constexpr std::size_t most = 64;
    Sought values[most];
    std::size_t count = 0;
    for (; count < most && walk != std::default_sentinel; ++walk) {
        const NSUInteger hash = hashOfValue(*walk);
        if (hash == 0) break;
        slots_->fetchAhead(hash);
        values[count++] = {*walk, hash};
    }
    fetchCandidates({values, count});
    for (const Sought value : std::span(values, count)) take(value);
    if (count < most && walk != std::default_sentinel) takeNext(walk, take);
}

// Whether it pays, and nothing that is done with a value can change the arrays: nothing of an application's
// takes part in comparing it with values and in walking arrays of the platform's.
bool EqualityIndex::readsAhead() const {
    return slots_ && slots_->capacity() >= manyObjects && others_.empty() && areOfThePlatform_;
}

void EqualityIndex::fetchCandidates(std::span<const Sought> values) const {
    for (const Sought value : values) {
        slots_->find(value.hash, [&](NSUInteger position) {
            fetchAhead(objects_[position]);
            return true;
        });
    }
}

void EqualityIndex::append(Sought object) {
    // Where there are no slots yet, they are filled in order.
    const bool isFirstOfEqual = object.hash != 0 && slots_ && positionOfValue(object) == notFound;
    add(object, isFirstOfEqual);
}

bool EqualityIndex::appendIfMissing(Sought object) {
    if (positionOf(object) != notFound) return false;
    add(object, object.hash != 0);
    return true;
}

EqualityIndex::Sought EqualityIndex::sought(NSObject object) {
    const NSUInteger hash = hashOfValue(object);
    if (hash == 0) holdObjects();
    return {object, hash};
}

void EqualityIndex::holdObjects() {
    for (std::size_t index = 0; index < holders_.size(); ++index)
        if (const NSArray holder = std::exchange(holders_[index], nil))
            heldCopies_[index] = adopt(NSArray(holder.copy()));
}

NSUInteger EqualityIndex::positionOf(Sought searched) const {
    if (searched.hash != 0) {
        const NSUInteger position = positionOfValue(searched);
        for (const NSUInteger other : others_) {
            if (other >= position) break;
            if (areEqual(searched.object, objects_[other])) return other;
        }
        return position;
    }
    for (NSUInteger position = 0; position < objects_.size(); ++position)
        if (areEqual(searched.object, objects_[position])) return position;
    return notFound;
}

NSUInteger EqualityIndex::positionOfValue(Sought value) const {
    const auto isSought = [&](NSUInteger position) {
        return areEqualValues(value.object, objects_[position]);
    };
    if (slots_) return slots_->find(value.hash, isSought);
    for (NSUInteger position = 0; position < hashes_.size(); ++position)
        if (hashes_[position] == value.hash && isSought(position)) return position;
    return notFound;
}

bool EqualityIndex::areEqual(NSObject searched, NSObject appended) const {
    if (searched == appended) return true;
    return asked_ == Asked::searched ? searched.isEqual(appended) : appended.isEqual(searched);
}

void EqualityIndex::add(Sought object, bool isFirstOfEqual) {
    const NSUInteger position = objects_.size();
    if (!areOfThePlatform_) retained_.push_back(retain(object.object));
    objects_.push_back(object.object);
    hashes_.push_back(object.hash);
    if (object.hash == 0) others_.push_back(position);
    if (objects_.size() > (slots_ ? slots_->capacity() : fewObjects))
        makeSlots();
    else if (isFirstOfEqual && slots_)
        slots_->add(object.hash, position);
}

void EqualityIndex::makeSlots() {
    slots_ = std::make_unique<PositionSlots>(objects_.capacity());
    for (NSUInteger position = 0; position < objects_.size(); ++position)
        if (hashes_[position] != 0 && positionOfValue({objects_[position], hashes_[position]}) == notFound)
            slots_->add(hashes_[position], position);
}

} // namespace tessarin
