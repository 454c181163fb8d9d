#include "TessarinPlatform/EqualityIndex.h"

#include "TessarinPlatform/ValueHash.h"
#include "platform/services/HashSeed.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace tessarin {
namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

// Among as many a hash is found sooner by passing over all of them.
constexpr NSUInteger fewObjects = 32;

// A slot holds a position + 1, or 0, and above it as much of the hash as there is room for.
constexpr int positionBits = 40;
constexpr std::uint64_t positionMask = (std::uint64_t{1} << positionBits) - 1;

std::uint64_t tagOf(std::uint64_t spreadHash) { return spreadHash << positionBits; }
bool isTagged(std::uint64_t slot, std::uint64_t tag) { return (slot & ~positionMask) == tag; }
std::size_t firstSlot(std::uint64_t spreadHash, std::size_t slotCount) {
    return static_cast<std::size_t>(spreadHash >> (64 - std::countr_zero(slotCount)));
}

} // namespace

EqualityIndex::EqualityIndex(std::initializer_list<NSArray> holders, Asked asked)
    : asked_(asked), holders_(holders) {}

void EqualityIndex::reserve(NSUInteger count) {
    // What an application's own array says of itself need not be true.
    count = std::min(count, NSUInteger{1} << 20);
    objects_.reserve(count);
    hashes_.reserve(count);
}

void EqualityIndex::append(NSObject object) {
    const Sought added = sought(object);
    // Where there are no slots yet, they are filled in order.
    const bool isFirstOfEqual = added.hash != 0 && !slots_.empty() && positionOfValue(added) == notFound;
    add(added, isFirstOfEqual);
}

bool EqualityIndex::appendIfMissing(NSObject object) {
    const Sought missing = sought(object);
    if (positionOf(missing) != notFound) return false;
    add(missing, missing.hash != 0);
    return true;
}

NSUInteger EqualityIndex::positionOf(NSObject searched) { return positionOf(sought(searched)); }

EqualityIndex::Sought EqualityIndex::sought(NSObject object) {
    const NSUInteger hash = hashOfValue(object);
    if (hash == 0) holdObjects();
    return {object, hash};
}

void EqualityIndex::holdObjects() {
    for (const NSArray holder : std::exchange(holders_, {}))
        heldCopies_.push_back(adopt(NSArray(holder.copy())));
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
    if (slots_.empty()) {
        for (NSUInteger position = 0; position < hashes_.size(); ++position)
            if (hashes_[position] == value.hash && areEqualValues(value.object, objects_[position]))
                return position;
        return notFound;
    }
    const std::uint64_t spread = spreadHash(value.hash);
    for (std::size_t index = firstSlot(spread, slots_.size()); slots_[index] != 0;
         index = (index + 1) & (slots_.size() - 1)) {
        if (!isTagged(slots_[index], tagOf(spread))) continue;
        const auto position = static_cast<NSUInteger>((slots_[index] & positionMask) - 1);
        if (areEqualValues(value.object, objects_[position])) return position;
    }
    return notFound;
}

bool EqualityIndex::areEqual(NSObject searched, NSObject appended) const {
    if (searched == appended) return true;
    return asked_ == Asked::searched ? searched.isEqual(appended) : appended.isEqual(searched);
}

void EqualityIndex::add(Sought object, bool isFirstOfEqual) {
    const NSUInteger position = objects_.size();
    objects_.push_back(object.object);
    hashes_.push_back(object.hash);
    if (object.hash == 0) others_.push_back(position);
    // At most half of the slots are taken.
    if (objects_.size() > fewObjects && 2 * objects_.size() > slots_.size())
        makeSlots();
    else if (isFirstOfEqual && !slots_.empty())
        occupySlot(position);
}

void EqualityIndex::makeSlots() {
    slots_.assign(std::bit_ceil(2 * objects_.capacity()), 0);
    for (NSUInteger position = 0; position < objects_.size(); ++position)
        if (hashes_[position] != 0 && positionOfValue({objects_[position], hashes_[position]}) == notFound)
            occupySlot(position);
}

void EqualityIndex::occupySlot(NSUInteger position) {
    const std::uint64_t spread = spreadHash(hashes_[position]);
    std::size_t index = firstSlot(spread, slots_.size());
    while (slots_[index] != 0) index = (index + 1) & (slots_.size() - 1);
    slots_[index] = tagOf(spread) | (position + 1);
}

} // namespace tessarin
