// How the embedded platform's dictionaries keep their entries: a hash table that remembers the order of
// insertion.
#pragma once

#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tessarin::embedded {

// Key and object are retained. The place of a removed entry keeps its hash and has no key.
struct DictionaryEntry {
    NSUInteger hash;
    NSObject key;
    NSObject object;
};

class DictionaryStorage {
public:
    static constexpr std::size_t notFound = static_cast<std::size_t>(-1);

    DictionaryStorage() = default;
    DictionaryStorage(const DictionaryStorage&) = delete;
    DictionaryStorage& operator=(const DictionaryStorage&) = delete;
    ~DictionaryStorage();

    NSUInteger count() const { return count_; }
    // Every entry has an index below this one; nextEntry passes over the removed ones.
    std::size_t size() const { return size_; }
    const DictionaryEntry& entry(std::size_t index) const { return entries_[index]; }
    // The first entry at or after an index, or notFound.
    std::size_t nextEntry(std::size_t index) const;

    // The entries whose keys may equal a key of that hash, one after the other.
    class Candidates {
    public:
        Candidates() = default;
        Candidates(const DictionaryStorage& storage, NSUInteger hash);
        std::size_t next(const DictionaryStorage& storage); // its index, or notFound

    private:
        NSUInteger hash_ = 0;
        std::size_t position_ = 0; // of an entry in a small table, of a slot in any other
    };

    // The changes to the entries send no message, so that nothing interrupts them.
    void reserve(std::size_t entries);
    // The same for an empty table, whose entries are kept in `space`, behind the object, until there are
    // more.
    void reserveInline(void* space, std::size_t entries);
    // Adds a key that is not there, taking over the caller's references. The entry does not come as a
    // structure: its parts would be written one by one and read at once, for which a processor has to wait.
    void append(NSUInteger hash, NSObject key, NSObject object) {
        if (slots_ || size_ >= capacity_ || size_ >= smallSize) makePlace(hash);
        DictionaryEntry& entry = *std::construct_at(entries_ + size_);
        entry.hash = hash;
        entry.key = key;
        entry.object = object;
        ++size_;
        ++count_;
        ++mutations;
    }
    // Fills a table that is empty and has room with the keys of another one, from which nothing was removed
    // and which no other thread has seen yet. The objects are nil, to be replaced by the caller before
    // anybody sees the dictionary.
    void fillWithKeys(const DictionaryStorage& model);
    // Where the caller replaces them.
    DictionaryEntry* entriesToFill() { return entries_; }
    // Takes an object's place, handing the reference to the old one to the caller.
    NSObject replaceObject(std::size_t index, NSObject object);
    // Takes an entry out, handing its references to the caller.
    DictionaryEntry take(std::size_t index);
    // Exchanges the entries of two tables. They no longer stand behind an object then.
    void swapEntries(DictionaryStorage& other);

    // Makes an empty table a copy of that of a dictionary with storage of its own, with references of its
    // own. What it retains may have a retain of its own; one that changes the dictionary is refused.
    void copyFrom(NSDictionary other);

    NSUInteger mutations = 0;

private:
    // Up to this size a look-up passes over all hashes, which is faster than any table.
    static constexpr std::size_t smallSize = 8;

    std::size_t slotCount() const { return slots_ ? std::size_t{1} << slotBits_ : 0; }
    std::size_t slotOf(NSUInteger hash) const;
    void fillSlots(std::size_t slotCount);
    void reserveSlots(std::size_t entries);
    void moveEntries(std::size_t capacity);
    void makeRoom();
    // Makes room for one more entry, and a slot that says where it will be.
    void makePlace(NSUInteger hash);
    // Notes in the first free slot for the hash that its entry is the one after the last.
    void takeSlot(NSUInteger hash);

    DictionaryEntry* entries_ = nullptr;     // in order of insertion
    std::unique_ptr<std::uint32_t[]> slots_; // index of an entry + 1, or 0; none while the table is small
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;
    std::uint32_t count_ = 0;
    std::uint8_t slotBits_ = 0; // their number is this power of two
    bool isInline_ = false;     // whether the entries stand behind the object
};

// Whether an object is a dictionary that no subclass has taken the primitive operations, count, objectForKey:
// and keyEnumerator, from. Then its storage may be read.
bool inheritsDictionaryPrimitives(NSObject object);
inline bool hasDictionaryStorage(NSObject object) {
    const Object* classObject = object.object()->isa;
    return classObject == "NSDictionary"_class.object() || classObject == "NSMutableDictionary"_class.object()
           || inheritsDictionaryPrimitives(object);
}

// A new dictionary without entries, with room behind it for as many as it will ever have.
Retained<NSDictionary> newDictionaryWithRoom(std::size_t entries);
// A new mutable dictionary without entries that has room for as many, behind it where they are few.
Retained<NSMutableDictionary> newMutableDictionaryWithRoom(std::size_t entries);

// The entry of a key in a dictionary with storage of its own, or notFound. The key is sent hash and isEqual:;
// whatever these raise passes through, and one that changes the dictionary is refused.
std::size_t findEntry(NSDictionary dictionary, NSObject key, NSUInteger hash);
// Puts an object under a key, which is copied when it is new.
void setEntry(NSDictionary dictionary, NSObject object, NSObject key);

// The keys and objects of any dictionary, in its order; nil is empty. They are kept for as long as the
// entries are.
class DictionaryEntries {
public:
    struct Entry {
        Retained<NSObject> key;
        Retained<NSObject> object;
    };

    explicit DictionaryEntries(NSDictionary dictionary);

    std::size_t size() const { return entries_.size(); }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

private:
    std::vector<Entry> entries_;
};

} // namespace tessarin::embedded
