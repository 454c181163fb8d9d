#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/runtime/ReferenceCounting.h"
#include "platform/services/HashSeed.h"

#include "TessarinPlatform/Exceptions.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <limits>
#include <new>
#include <span>
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

// What is behind a mutable dictionary stays there when the dictionary outgrows it.
constexpr std::size_t mostInlineEntries = 16;

constexpr std::size_t mostEntries = std::numeric_limits<std::uint32_t>::max() - 1;

// Entries may be moved as bytes, which makes growing a large table cheap.
DictionaryEntry* resized(DictionaryEntry* entries, std::size_t capacity) {
    void* const memory = std::realloc(static_cast<void*>(entries), capacity * sizeof(DictionaryEntry));
    if (!memory) throw std::bad_alloc();
    return static_cast<DictionaryEntry*>(memory);
}

} // namespace

DictionaryStorage::~DictionaryStorage() {
    if (!isInline_) std::free(static_cast<void*>(entries_));
}

std::size_t DictionaryStorage::nextEntry(std::size_t index) const {
    while (index < size_ && !entries_[index].key) ++index;
    return index < size_ ? index : notFound;
}

std::size_t DictionaryStorage::slotOf(NSUInteger hash) const {
    return static_cast<std::size_t>(spreadHash(hash) >> (64 - slotBits_));
}

DictionaryStorage::Candidates::Candidates(const DictionaryStorage& storage, NSUInteger hash)
    : hash_(hash), position_(storage.slots_ ? storage.slotOf(hash) : 0) {}

std::size_t DictionaryStorage::Candidates::next(const DictionaryStorage& storage) {
    const DictionaryEntry* const entries = storage.entries_;
    if (!storage.slots_) {
        while (position_ < storage.size_) {
            const std::size_t index = position_++;
            if (entries[index].hash == hash_ && entries[index].key) return index;
        }
        return notFound;
    }
    // A removed entry still holds its slot, so that those behind it are found; the table is never full.
    while (const std::uint32_t slot = storage.slots_[position_]) {
        position_ = (position_ + 1) & (storage.slotCount() - 1);
        const std::size_t index = slot - 1;
        if (entries[index].hash == hash_ && entries[index].key) return index;
    }
    return notFound;
}

void DictionaryStorage::fillSlots(std::size_t slotCount) {
    slots_ = std::make_unique<std::uint32_t[]>(slotCount);
    slotBits_ = static_cast<std::uint8_t>(std::countr_zero(slotCount));
    const std::size_t mask = slotCount - 1;
    for (std::uint32_t index = 0; index < size_; ++index) {
        std::size_t slot = slotOf(entries_[index].hash);
        while (slots_[slot] != 0) slot = (slot + 1) & mask;
        slots_[slot] = index + 1;
    }
}

// At most two thirds of the slots are taken.
void DictionaryStorage::reserveSlots(std::size_t entries) {
    const std::size_t wanted = std::bit_ceil(entries + entries / 2);
    if (entries > smallSize && wanted > slotCount()) fillSlots(wanted);
}

// Into a buffer of that capacity, which all of them fit into.
void DictionaryStorage::moveEntries(std::size_t capacity) {
    DictionaryEntry* const buffer = resized(isInline_ ? nullptr : entries_, capacity);
    if (isInline_) std::copy_n(entries_, size_, buffer);
    entries_ = buffer;
    capacity_ = static_cast<std::uint32_t>(capacity);
    isInline_ = false;
}

void DictionaryStorage::reserve(std::size_t entries) {
    if (entries > mostEntries) throw std::length_error("too many dictionary entries");
    if (entries > capacity_) moveEntries(entries);
    reserveSlots(entries);
}

void DictionaryStorage::reserveInline(void* space, std::size_t entries) {
    entries_ = static_cast<DictionaryEntry*>(space);
    capacity_ = static_cast<std::uint32_t>(entries);
    isInline_ = true;
    reserveSlots(entries);
}

void DictionaryStorage::copyFrom(NSDictionary other) {
    const DictionaryStorage& source = storageOf<DictionaryStorage>(other);
    const auto refuseChange = [&, mutations = source.mutations] {
        if (source.mutations != mutations) [[unlikely]]
            runtime::raiseMutation(other.object());
    };
    reserve(source.count_);
    for (std::size_t index = 0; index < source.size_; ++index) {
        const DictionaryEntry entry = source.entries_[index];
        if (!entry.key) continue;
        Retained<NSObject> key = retain(entry.key);
        refuseChange();
        Retained<NSObject> object = retain(entry.object);
        append(entry.hash, key.leak(), object.leak());
    }
    refuseChange();
}

void DictionaryStorage::makeRoom() {
    const std::size_t size = size_;
    const bool hasRoom = slots_ ? size + size / 2 < slotCount() : size < smallSize;
    if (hasRoom) {
        if (size == capacity_) reserve(std::max<std::size_t>(2 * size, 4));
        return;
    }
    // Where a quarter of the places is left by removed entries, closing up is enough.
    if (count_ <= size - size / 4) {
        const auto isRemoved = [](const DictionaryEntry& entry) { return !entry.key; };
        size_ = static_cast<std::uint32_t>(std::remove_if(entries_, entries_ + size, isRemoved) - entries_);
        if (slots_) fillSlots(slotCount());
    } else {
        reserve(2 * size);
    }
}

void DictionaryStorage::makePlace(NSUInteger hash) {
    makeRoom();
    if (slots_) takeSlot(hash);
}

void DictionaryStorage::takeSlot(NSUInteger hash) {
    std::size_t slot = slotOf(hash);
    while (slots_[slot] != 0) slot = (slot + 1) & (slotCount() - 1);
    slots_[slot] = size_ + 1;
}

void DictionaryStorage::fillWithKeys(const DictionaryStorage& model) {
    for (const DictionaryEntry& entry : std::span(model.entries_, model.size_)) {
        addUnsharedReference(entry.key.object());
        if (slots_) takeSlot(entry.hash);
        std::construct_at(entries_ + size_++, DictionaryEntry{entry.hash, entry.key, nil});
    }
    count_ = size_;
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

void DictionaryStorage::swapEntries(DictionaryStorage& other) {
    for (DictionaryStorage* storage : {this, &other})
        if (storage->isInline_) storage->moveEntries(std::max<std::size_t>(storage->size_, 1));
    std::swap(entries_, other.entries_);
    std::swap(slots_, other.slots_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
    std::swap(count_, other.count_);
    std::swap(slotBits_, other.slotBits_);
    ++mutations;
    ++other.mutations;
}

Retained<NSDictionary> newDictionaryWithRoom(std::size_t entries) {
    if (entries > mostEntries) throw std::length_error("too many dictionary entries");
    const auto [object, storage, space] =
        createInstanceWith<DictionaryStorage>("NSDictionary"_class, entries * sizeof(DictionaryEntry));
    Retained<NSDictionary> dictionary = adopt(NSDictionary(object));
    storage.reserveInline(space, entries);
    return dictionary;
}

Retained<NSMutableDictionary> newMutableDictionaryWithRoom(std::size_t entries) {
    const bool isInline = entries <= mostInlineEntries;
    const auto [object, storage, space] = createInstanceWith<DictionaryStorage>(
        "NSMutableDictionary"_class, isInline ? entries * sizeof(DictionaryEntry) : 0);
    Retained<NSMutableDictionary> dictionary = adopt(NSMutableDictionary(object));
    if (isInline)
        storage.reserveInline(space, entries);
    else
        storage.reserve(entries);
    return dictionary;
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
    Retained<NSObject> held = retain(object); // first: this may be the object's own code
    const NSUInteger hash = key.hash();
    const std::size_t index = findEntry(dictionary, key, hash);
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
    storage.append(hash, ownKey, held);
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
    // Each key is kept before its object is asked for, which may make it go.
    while (Retained<NSObject> key = retain(send<NSObject>(keys, "nextObject"_sel))) {
        const NSObject object = dictionary.objectForKey(key);
        if (object) entries_.push_back({std::move(key), retain(object)});
    }
}

} // namespace tessarin::embedded
