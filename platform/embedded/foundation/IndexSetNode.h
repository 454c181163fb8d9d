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
// may lie any number of levels below. An entry is never without indexes; it may well hold all of its span.
//
// The entries follow the node in memory, those of `stored` slots one behind another; with room for all 64
// each stands at its slot's own place instead, so that none has to be counted or moved.
struct IndexSetNode {
    union Entry {
        std::uint64_t word;
        IndexSetNode* child;
    };

    static constexpr unsigned slotCount = 64;
    static constexpr unsigned leafShift = 6;
    static constexpr std::uint64_t allSlots = ~std::uint64_t{0};

    static constexpr std::uint64_t bit(Index slot) { return std::uint64_t{1} << slot; }
    // The bits of the slots from one to another, both included.
    static constexpr std::uint64_t bits(Index first, Index last) {
        return (allSlots << first) & (allSlots >> (slotCount - 1 - last));
    }

    Index base;           // the first index that it spans
    std::uint64_t stored; // the slots that have an entry
    std::uint64_t solid;
    std::uint8_t shift;    // a slot spans 2^shift indexes
    std::uint8_t capacity; // room for entries; a power of two

    bool isLeaf() const { return shift == leafShift; }
    std::uint64_t occupied() const { return stored | solid; }
    // The slot of an index; slotCount or more for an index outside of the node.
    Index slotOf(Index index) const { return (index ^ base) >> shift; }
    Index firstOf(Index slot) const { return base + (slot << shift); }
    Index lastOf(Index slot) const { return firstOf(slot) + (bit(shift) - 1); }

    // The entry of a stored slot.
    Entry& entry(Index slot) { return entries()[position(slot)]; }
    const Entry& entry(Index slot) const { return const_cast<IndexSetNode*>(this)->entry(slot); }

    // A node without indexes, with room for one entry. It is given back with `destroy`.
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
    static void makeRoom(IndexSetNode*& node);
    // An entry for a slot that has none and is not solid. There is room for it.
    void insert(Index slot, Entry entry);
    // Drops the entry, a child with all below it, and takes the slot for an empty one.
    static void erase(IndexSetNode*& node, Index slot);
    // Gives a solid slot an entry that says the same.
    static void split(IndexSetNode*& node, Index slot);

private:
    Entry* entries() { return reinterpret_cast<Entry*>(this + 1); }
    Index position(Index slot) const {
        if (capacity == slotCount) return slot;
        return static_cast<Index>(std::popcount(stored & (bit(slot) - 1)));
    }
    void resize(unsigned wanted);
};

} // namespace tessarin::embedded
