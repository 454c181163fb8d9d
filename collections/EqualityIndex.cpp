#include "collections/EqualityIndex.h"

#include "TessarinPlatform/ValueComparison.h"

#include <bit>
#include <limits>
#include <utility>

namespace tessarin::collections {
namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

// As many objects are compared sooner than hashed.
constexpr NSUInteger fewObjects = 16;

} // namespace

void EqualityIndex::append(NSObject object) { append(sought(object)); }

bool EqualityIndex::appendIfMissing(NSObject object) {
    const Sought missing = sought(object);
    if (positionOf(missing) != notFound) return false;
    append(missing);
    return true;
}

NSUInteger EqualityIndex::positionOf(NSObject searched) const { return positionOf(sought(searched)); }

EqualityIndex::Sought EqualityIndex::sought(NSObject object) const {
    if (!isIndexed() || !comparesAsValue(object)) return {object};
    return {object, true, object.hash()};
}

NSUInteger EqualityIndex::positionOf(const Sought& searched) const {
    if (searched.isValue) {
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

NSUInteger EqualityIndex::positionOfValue(const Sought& value) const {
    for (NSUInteger slot = firstSlot(value.hash); slots_[slot] != 0;
         slot = (slot + 1) & (slots_.size() - 1)) {
        const NSUInteger position = slots_[slot] - 1;
        if (hashes_[position] == value.hash && areEqual(value.object, objects_[position])) return position;
    }
    return notFound;
}

bool EqualityIndex::areEqual(NSObject searched, NSObject appended) const {
    if (searched == appended) return true;
    return asked_ == Asked::searched ? searched.isEqual(appended) : appended.isEqual(searched);
}

void EqualityIndex::append(const Sought& object) {
    const NSUInteger position = objects_.size();
    objects_.push_back(object.object);
    if (isIndexed()) return index(position, object);
    if (objects_.size() <= fewObjects) return;
    slots_.resize(4 * fewObjects);
    for (NSUInteger earlier = 0; earlier <= position; ++earlier) index(earlier, sought(objects_[earlier]));
}

void EqualityIndex::index(NSUInteger position, const Sought& object) {
    hashes_.push_back(object.hash);
    if (!object.isValue) return others_.push_back(position);
    if (positionOfValue(object) != notFound) return;
    if (2 * ++valueCount_ > slots_.size()) makeRoom();
    occupySlot(position);
}

void EqualityIndex::occupySlot(NSUInteger position) {
    NSUInteger slot = firstSlot(hashes_[position]);
    while (slots_[slot] != 0) slot = (slot + 1) & (slots_.size() - 1);
    slots_[slot] = position + 1;
}

void EqualityIndex::makeRoom() {
    const std::vector<NSUInteger> occupied =
        std::exchange(slots_, std::vector<NSUInteger>(4 * slots_.size()));
    for (const NSUInteger occupant : occupied)
        if (occupant != 0) occupySlot(occupant - 1);
}

// Hashes of small numbers, and of much else, differ in few bits; the multiplication spreads them.
NSUInteger EqualityIndex::firstSlot(NSUInteger hash) const {
    constexpr auto factor = static_cast<NSUInteger>(0x9E3779B97F4A7C15); // 2^64 divided by the golden ratio
    return (hash * factor) >> (std::numeric_limits<NSUInteger>::digits - std::countr_zero(slots_.size()));
}

} // namespace tessarin::collections
