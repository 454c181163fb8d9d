#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/services/HashSeed.h"

#include "TessarinPlatform/Exceptions.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <stdexcept>
#include <utility>

namespace tessarin::embedded {
namespace {

bool areEqualKeys(NSObject key, NSObject candidate) {
    const Object* stringClass = "NSString"_class.object();
    if (key.object()->isa == stringClass && candidate.object()->isa == stringClass)
        return equalUnits(storageOf<StringStorage>(key).view(), storageOf<StringStorage>(candidate).view());
    return key.isEqual(candidate);
}

} // namespace

std::size_t DictionaryStorage::nextEntry(std::size_t index) const {
    while (index < entries_.size() && !entries_[index].key) ++index;
    return index < entries_.size() ? index : notFound;
}

// The number of slots is a power of two.
std::size_t DictionaryStorage::slotOf(NSUInteger hash) const {
    return static_cast<std::size_t>(spreadHash(hash) >> (64 - std::countr_zero(slots_.size())));
}

DictionaryStorage::Candidates::Candidates(const DictionaryStorage& storage, NSUInteger hash)
    : hash_(hash), position_(storage.slots_.empty() ? 0 : storage.slotOf(hash)) {}

std::size_t DictionaryStorage::Candidates::next(const DictionaryStorage& storage) {
    const std::vector<DictionaryEntry>& entries = storage.entries_;
    if (storage.slots_.empty()) {
        while (position_ < entries.size()) {
            const std::size_t index = position_++;
            if (entries[index].hash == hash_ && entries[index].key) return index;
        }
        return notFound;
    }
    // A removed entry still holds its slot, so that those behind it are found; the table is never full.
    while (const std::uint32_t slot = storage.slots_[position_]) {
        position_ = (position_ + 1) & (storage.slots_.size() - 1);
        const std::size_t index = slot - 1;
        if (entries[index].hash == hash_ && entries[index].key) return index;
    }
    return notFound;
}

void DictionaryStorage::fillSlots(std::size_t slotCount) {
    slots_.assign(slotCount, 0);
    const std::size_t mask = slotCount - 1;
    for (std::size_t index = 0; index < entries_.size(); ++index) {
        std::size_t slot = slotOf(entries_[index].hash);
        while (slots_[slot] != 0) slot = (slot + 1) & mask;
        slots_[slot] = static_cast<std::uint32_t>(index + 1);
    }
}

void DictionaryStorage::reserve(std::size_t entries) {
    if (entries >= std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("too many dictionary entries");
    if (entries > entries_.capacity()) entries_.reserve(entries);
    // At most two thirds of the slots are taken.
    const std::size_t slotCount = std::bit_ceil(entries + entries / 2);
    if (entries > smallSize && slotCount > slots_.size()) fillSlots(slotCount);
}

void DictionaryStorage::copyFrom(const DictionaryStorage& other) {
    reserve(other.count_);
    for (const DictionaryEntry& entry : other.entries_) {
        if (!entry.key) continue;
        runtime::retain(entry.key.object());
        runtime::retain(entry.object.object());
        append(entry);
    }
}

void DictionaryStorage::makeRoom() {
    const std::size_t size = entries_.size();
    const bool hasRoom = slots_.empty() ? size < smallSize : size + size / 2 < slots_.size();
    if (hasRoom) {
        if (size == entries_.capacity()) entries_.reserve(std::max<std::size_t>(2 * size, 4));
        return;
    }
    // Where a quarter of the places is left by removed entries, closing up is enough.
    if (count_ <= size - size / 4) {
        std::erase_if(entries_, [](const DictionaryEntry& entry) { return !entry.key; });
        if (!slots_.empty()) fillSlots(slots_.size());
    } else {
        reserve(2 * size);
    }
}

void DictionaryStorage::append(const DictionaryEntry& entry) {
    makeRoom();
    if (!slots_.empty()) {
        std::size_t slot = slotOf(entry.hash);
        while (slots_[slot] != 0) slot = (slot + 1) & (slots_.size() - 1);
        slots_[slot] = static_cast<std::uint32_t>(entries_.size() + 1);
    }
    entries_.push_back(entry);
    ++count_;
    ++mutations;
}

NSObject DictionaryStorage::replaceObject(std::size_t index, NSObject object) {
    ++mutations;
    return std::exchange(entries_[index].object, object);
}

DictionaryEntry DictionaryStorage::take(std::size_t index) {
    ++mutations;
    --count_;
    DictionaryEntry& entry = entries_[index];
    return {entry.hash, std::exchange(entry.key, nil), std::exchange(entry.object, nil)};
}

std::vector<DictionaryEntry> DictionaryStorage::takeAll() {
    ++mutations;
    count_ = 0;
    slots_.clear();
    return std::exchange(entries_, {});
}

std::size_t findEntry(NSDictionary dictionary, NSObject key, NSUInteger hash) {
    const DictionaryStorage& storage = storageOf<DictionaryStorage>(dictionary);
    DictionaryStorage::Candidates candidates(storage, hash);
    for (std::size_t index = candidates.next(storage); index != DictionaryStorage::notFound;
         index = candidates.next(storage)) {
        const NSObject candidate = storage.entry(index).key;
        if (candidate == key) return index;
        const NSUInteger mutations = storage.mutations;
        const bool isFound = areEqualKeys(key, candidate);
        if (storage.mutations != mutations) runtime::raiseMutation(dictionary.object());
        if (isFound) return index;
    }
    return DictionaryStorage::notFound;
}

void setEntry(NSDictionary dictionary, NSObject object, NSObject key) {
    DictionaryStorage& storage = storageOf<DictionaryStorage>(dictionary);
    const NSUInteger hash = key.hash();
    const std::size_t index = findEntry(dictionary, key, hash);
    Retained<NSObject> held = retain(object);
    if (index != DictionaryStorage::notFound) {
        const NSObject replaced = storage.replaceObject(index, held.leak());
        runtime::release(replaced.object());
        return;
    }
    const NSUInteger mutations = storage.mutations;
    Retained<NSObject> ownKey = adopt(static_cast<NSObject>(key.copy()));
    if (!ownKey) raise(NSInvalidArgumentException(), "the copy of a dictionary's key cannot be nil"_ns);
    // Copying is the key's own code, which might have changed the dictionary.
    if (storage.mutations != mutations) runtime::raiseMutation(dictionary.object());
    storage.append({hash, ownKey, held});
    static_cast<void>(ownKey.leak());
    static_cast<void>(held.leak());
}

DictionaryEntries::DictionaryEntries(NSDictionary dictionary) {
    if (!dictionary) return;
    if (hasDictionaryStorage(dictionary)) {
        const DictionaryStorage& storage = storageOf<DictionaryStorage>(dictionary);
        entries_.reserve(storage.count());
        for (std::size_t index = storage.nextEntry(0); index != DictionaryStorage::notFound;
             index = storage.nextEntry(index + 1))
            entries_.push_back({retain(storage.entry(index).key), retain(storage.entry(index).object)});
        return;
    }
    const NSObject keys = send<NSObject>(dictionary, "keyEnumerator"_sel);
    while (const NSObject key = send<NSObject>(keys, "nextObject"_sel)) {
        const NSObject object = dictionary.objectForKey(key);
        if (object) entries_.push_back({retain(key), retain(object)});
    }
}

} // namespace tessarin::embedded
