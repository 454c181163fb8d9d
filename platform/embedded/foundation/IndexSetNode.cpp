#include "platform/embedded/foundation/IndexSetNode.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

namespace tessarin::embedded {
namespace {

constexpr unsigned levelBits = 6;

// With more than a few entries there is room for all, so that none need be moved for another one. That takes
// half a kilobyte, which is what a bitmap takes for the span of a leaf.
constexpr unsigned mostCountedEntries = 8;
constexpr unsigned roomierThan(unsigned capacity) {
    return capacity < mostCountedEntries ? 2 * capacity : IndexSetNode::slotCount;
}
constexpr unsigned tighterThan(unsigned capacity) {
    return capacity <= mostCountedEntries ? capacity / 2 : mostCountedEntries;
}
constexpr unsigned roomFor(unsigned entryCount) {
    return entryCount <= mostCountedEntries ? std::bit_ceil(entryCount) : IndexSetNode::slotCount;
}

std::size_t sizeWith(std::size_t capacity) {
    return sizeof(IndexSetNode) + capacity * sizeof(IndexSetNode::Entry);
}

IndexSetNode* allocated(void* memory) {
    if (!memory) throw std::bad_alloc();
    return static_cast<IndexSetNode*>(memory);
}

} // namespace

IndexSetNode* IndexSetNode::make(Index base, unsigned shift) {
    const std::uint8_t capacity = shift == leafShift ? 1 : 2;
    return new (allocated(std::malloc(sizeWith(capacity))))
        IndexSetNode{base, 0, 0, static_cast<std::uint8_t>(shift), capacity, 0, scattered};
}

IndexSetNode* IndexSetNode::makeAround(Index first, Index last) {
    const unsigned highestDifference = 63 - static_cast<unsigned>(std::countl_zero((first ^ last) | 1));
    const unsigned shift = std::max(highestDifference / levelBits * levelBits, leafShift);
    // The topmost node would span more than there are numbers; its mask has wrapped to all ones.
    const Index span = Index{slotCount} << shift;
    return make(first & ~(span - 1), shift);
}

// The recursions below are no deeper than there are levels, which is ten.

IndexSetNode* IndexSetNode::clone(const IndexSetNode* node) {
    if (!node) return nullptr;
    const std::uint64_t stored = node->stored & node->occupied;
    const unsigned capacity = roomFor(static_cast<unsigned>(countBits(stored)));
    auto* copy = new (allocated(std::malloc(sizeWith(capacity)))) IndexSetNode(*node);
    copy->capacity = static_cast<std::uint8_t>(capacity);
    copy->stored = 0;
    copy->entryCount = 0;
    copy->updateOffset();
    try {
        for (std::uint64_t rest = stored; rest != 0; rest &= rest - 1) {
            const auto slot = static_cast<Index>(std::countr_zero(rest));
            const Entry& original = node->entry(slot);
            copy->insert(slot, node->isLeaf() ? original : Entry{.child = clone(original.child)});
        }
    } catch (...) {
        destroy(copy);
        throw;
    }
    return copy;
}

void IndexSetNode::destroy(IndexSetNode* node) {
    if (!node) return;
    if (!node->isLeaf())
        for (std::uint64_t rest = node->stored; rest != 0; rest &= rest - 1)
            destroy(node->entry(static_cast<Index>(std::countr_zero(rest))).child);
    std::free(node);
}

std::uint64_t IndexSetNode::count(const IndexSetNode* node) {
    if (!node) return 0;
    std::uint64_t sum = 0;
    for (std::uint64_t rest = node->occupied; rest != 0; rest &= rest - 1)
        sum += node->countOf(static_cast<Index>(std::countr_zero(rest)));
    return sum;
}

std::uint64_t IndexSetNode::countOf(Index slot) const {
    if (!isOccupied(slot)) return 0;
    if (!isStored(slot)) return bit(shift);
    return isLeaf() ? countBits(entry(slot).word) : count(entry(slot).child);
}

std::size_t IndexSetNode::byteCount(const IndexSetNode* node) {
    if (!node) return 0;
    std::size_t sum = sizeWith(node->capacity);
    if (node->isLeaf()) return sum;
    for (std::uint64_t rest = node->stored; rest != 0; rest &= rest - 1)
        sum += byteCount(node->entry(static_cast<Index>(std::countr_zero(rest))).child);
    return sum;
}

void IndexSetNode::grow(IndexSetNode*& node) {
    const unsigned wanted = roomierThan(node->capacity);
    node = allocated(std::realloc(node, sizeWith(wanted)));
    node->resize(wanted);
}

void IndexSetNode::insert(Index slot, Entry inserted) {
    if (capacity == slotCount) {
        entries()[slot] = inserted;
    } else {
        Entry* const place = entries() + countBits(stored & (bit(slot) - 1));
        Entry* const end = entries() + entryCount;
        // By hand, since there are too few for a call.
        for (Entry* each = place; each != end; ++each) std::swap(*each, inserted);
        *end = inserted;
    }
    stored |= bit(slot);
    occupied |= bit(slot);
    ++entryCount;
    updateOffset();
}

IndexSetNode* IndexSetNode::detach(IndexSetNode*& node, Index slot) {
    Entry* const place = &node->entry(slot);
    Entry detached = *place;
    if (node->capacity < slotCount)
        for (Entry* each = node->entries() + node->entryCount; each != place;) std::swap(*--each, detached);
    node->stored &= ~bit(slot);
    node->occupied &= ~bit(slot);
    --node->entryCount;
    node->updateOffset();

    // A quarter of what the smaller room would hold, so that a set that grows and shrinks around one size
    // keeps its room.
    const unsigned wanted = tighterThan(node->capacity);
    if (wanted < 2 || 4u * node->entryCount > wanted) return detached.child;
    node->resize(wanted);
    // A smaller block that cannot be had leaves the larger one, which does as well.
    if (void* smaller = std::realloc(node, sizeWith(wanted))) node = static_cast<IndexSetNode*>(smaller);
    return detached.child;
}

// All that the slot spans, or nothing.
void IndexSetNode::set(IndexSetNode*& node, Index slot, std::uint64_t word) {
    if (node->isStored(slot)) {
        if (node->isLeaf())
            node->entry(slot).word = word;
        else
            destroy(detach(node, slot));
    }
    node->occupied &= ~bit(slot);
    node->occupied |= word & bit(slot);
}

void IndexSetNode::split(IndexSetNode*& node, Index slot) {
    makeRoom(node);
    Entry full{.word = allSlots};
    if (!node->isLeaf()) {
        full.child = make(node->firstOf(slot), node->shift - levelBits);
        full.child->occupied = allSlots;
    }
    node->insert(slot, full);
}

void IndexSetNode::holdJust(Index index) {
    const Index slot = leafSlotOf(index);
    base = index & ~(slotCount * slotCount - Index{1});
    stored = occupied = bit(slot);
    entryCount = 1;
    updateOffset();
    entry(slot).word = wordBit(index);
}

// Gives the entries the places that they have with so much room.
void IndexSetNode::resize(unsigned wanted) {
    Entry* all = entries();
    if (wanted == slotCount) {
        // From the last on, each to a place at or behind its own.
        Index position = entryCount;
        for (Index slot = slotCount; slot-- > 0;)
            if ((stored & bit(slot)) != 0) all[slot] = all[--position];
    } else if (capacity == slotCount) {
        int position = 0;
        for (Index slot = 0; slot < slotCount; ++slot)
            if ((stored & bit(slot)) != 0) all[position++] = all[slot];
    }
    capacity = static_cast<std::uint8_t>(wanted);
    updateOffset();
}

void IndexSetNode::updateOffset() {
    const bool isRun = stored != 0 && stored == bits(lowest(stored), highest(stored));
    if (capacity == slotCount)
        offset = 0;
    else
        offset = isRun ? static_cast<std::uint8_t>(lowest(stored)) : scattered;
}

} // namespace tessarin::embedded
