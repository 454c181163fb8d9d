// The nodes of the tree in which an index set keeps its indexes.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace tessarin::embedded {

using Index = std::uint64_t;

// 64 neighbouring slots of equal span. A slot of a leaf spans 64 indexes, a slot of any other node what a
// whole node of the level below spans. A slot is empty; or solid, when it holds every index it spans; or it
// has an entry: in a leaf a word with a bit for each index, elsewhere a node that lies within the slot, but
// may lie any number of levels below. An entry may well hold all of its span. A node below another one holds
// an index; a word may be without any, left for the next.
//
// The entries follow the node in memory, those of `stored` slots one behind another; with room for all 64
// each stands at its slot's own place instead, so that none has to be counted or moved. Nor is there anything
// to count where the slots lie side by side.
struct IndexSetNode {
    union Entry {
        std::uint64_t word;
        IndexSetNode* child;
    };

    static constexpr unsigned slotCount = 64;
    static constexpr unsigned leafShift = 6;
    static constexpr std::uint8_t scattered = 0xFF;
    static constexpr std::uint64_t allSlots = ~std::uint64_t{0};

    static constexpr std::uint64_t bit(Index slot) { return std::uint64_t{1} << slot; }
    // The bits of the slots from one to another, both included.
    static constexpr std::uint64_t bits(Index first, Index last) {
        return (allSlots << first) & (allSlots >> (slotCount - 1 - last));
    }

    // How many bits are set. By hand, since std::popcount calls a function on processors that may lack the
    // instruction.
    static constexpr std::uint64_t countBits(std::uint64_t word) {
        word -= word >> 1 & 0x5555555555555555;
        word = (word & 0x3333333333333333) + (word >> 2 & 0x3333333333333333);
        word = (word + (word >> 4)) & 0x0F0F0F0F0F0F0F0F;
        return word * 0x0101010101010101 >> 56;
    }

    // The lowest and the highest of slots, or of the bits of a word, of which there is one at least.
    static constexpr Index lowest(std::uint64_t slots) { return static_cast<Index>(std::countr_zero(slots)); }
    static constexpr Index highest(std::uint64_t slots) {
        return slotCount - 1 - static_cast<Index>(std::countl_zero(slots));
    }

    Index base;             // the first index that it spans
    std::uint64_t stored;   // the slots that have an entry
    std::uint64_t occupied; // the slots that hold an index
    std::uint8_t shift;     // a slot spans 2^shift indexes
    std::uint8_t capacity;  // room for entries
    std::uint8_t entryCount;
    std::uint8_t offset; // of an entry's place from its slot's number; scattered where that varies

    bool isLeaf() const { return shift == leafShift; }
    bool isStored(Index slot) const { return (stored & bit(slot)) != 0; }
    bool isOccupied(Index slot) const { return (occupied & bit(slot)) != 0; }
    std::uint64_t solid() const { return occupied & ~stored; }
    bool isSolid(Index slot) const { return (solid() & bit(slot)) != 0; }
    // The slot of an index; slotCount or more for an index outside of the node.
    Index slotOf(Index index) const { return (index ^ base) >> shift; }
    // The same of a leaf, where the slot follows from the index alone: on the way down it is known before the
    // leaf has come from memory.
    bool leafSpans(Index index) const { return (index ^ base) < slotCount * slotCount; }
    static Index leafSlotOf(Index index) { return index / slotCount % slotCount; }
    // The bit of an index in its word.
    static std::uint64_t wordBit(Index index) { return bit(index % slotCount); }
    Index firstOf(Index slot) const { return base + (slot << shift); }
    Index lastOf(Index slot) const { return firstOf(slot) + (bit(shift) - 1); }

    // The entry of a slot where it is found without counting; null where it is not, or there is none.
    Entry* entryAtHand(Index slot) {
        const bool isAtHand = isStored(slot) && offset != scattered;
        return isAtHand ? entries() + (slot - offset) : nullptr;
    }
    // The entry of a stored slot.
    Entry& entry(Index slot) { return entries()[position(slot)]; }
    const Entry& entry(Index slot) const { return const_cast<IndexSetNode*>(this)->entry(slot); }

    // The least and the greatest index of an occupied slot.
    static Index firstIn(const IndexSetNode* node, Index slot);
    static Index lastIn(const IndexSetNode* node, Index slot);

    // A node without indexes, with room for one entry, or for two where it branches. It is given back with
    // `destroy`.
    static IndexSetNode* make(Index base, unsigned shift);
    // The smallest node, without indexes, that spans both.
    static IndexSetNode* makeAround(Index first, Index last);
    static IndexSetNode* clone(const IndexSetNode* node);
    // With all nodes below it; null is allowed.
    static void destroy(IndexSetNode* node);

    // How many indexes a node, or the slot of a node, holds.
    static std::uint64_t count(const IndexSetNode* node);
    std::uint64_t countOf(Index slot) const;
    // The bytes that a node and all below it take.
    static std::size_t byteCount(const IndexSetNode* node);

    // What changes the room for entries may move the node, and changes the pointer to it.

    // Makes sure that one more entry can be inserted without asking for memory.
    static void makeRoom(IndexSetNode*& node) {
        if (node->entryCount == node->capacity) grow(node);
    }
    // An entry, not without indexes, for a slot that has none. There is room for it.
    void insert(Index slot, Entry entry);
    // Takes a child away, which leaves its slot empty. The child is the caller's to destroy.
    [[nodiscard]] static IndexSetNode* detach(IndexSetNode*& node, Index slot);
    // Takes all that a slot spans away, or in.
    static void clear(IndexSetNode*& node, Index slot) { set(node, slot, 0); }
    static void fill(IndexSetNode*& node, Index slot) { set(node, slot, allSlots); }
    // Gives a solid slot an entry that says the same.
    static void split(IndexSetNode*& node, Index slot);
    // Empties a leaf and moves it to where it spans an index, which it holds from then on.
    void holdJust(Index index);

private:
    Entry* entries() { return reinterpret_cast<Entry*>(this + 1); }
    Index position(Index slot) const {
        if (offset != scattered) return slot - offset;
        const std::uint64_t before = stored & (bit(slot) - 1);
        return before == 0 ? 0 : countBits(before);
    }
    // To be called when the stored slots, or the room, have changed.
    void updateOffset();
    static void set(IndexSetNode*& node, Index slot, std::uint64_t word);
    static void grow(IndexSetNode*& node);
    void resize(unsigned wanted);
};

inline Index IndexSetNode::firstIn(const IndexSetNode* node, Index slot) {
    for (;; slot = lowest(node->occupied)) {
        if (!node->isStored(slot)) return node->firstOf(slot);
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) return node->firstOf(slot) + lowest(entry.word);
        node = entry.child;
    }
}

inline Index IndexSetNode::lastIn(const IndexSetNode* node, Index slot) {
    for (;; slot = highest(node->occupied)) {
        if (!node->isStored(slot)) return node->lastOf(slot);
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) return node->firstOf(slot) + highest(entry.word);
        node = entry.child;
    }
}

} // namespace tessarin::embedded
