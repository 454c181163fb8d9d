#include "platform/embedded/foundation/IndexSetNode.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace tessarin::embedded {
namespace {

constexpr unsigned levelBits = 6;

std::size_t sizeWith(std::size_t capacity) {
    return sizeof(IndexSetNode) + capacity * sizeof(IndexSetNode::Entry);
}

IndexSetNode* allocated(void* memory) {
    if (!memory) throw std::bad_alloc();
    return static_cast<IndexSetNode*>(memory);
}

} // namespace

IndexSetNode* IndexSetNode::make(Index base, unsigned shift) {
    return new (allocated(std::malloc(sizeWith(1))))
        IndexSetNode{base, 0, 0, static_cast<std::uint8_t>(shift), 1};
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
    const auto storedCount = static_cast<unsigned>(std::popcount(node->stored));
    const unsigned capacity = std::max(std::bit_ceil(storedCount), 1u);
    auto* copy = new (allocated(std::malloc(sizeWith(capacity)))) IndexSetNode(*node);
    copy->capacity = static_cast<std::uint8_t>(capacity);
    copy->stored = 0;
    try {
        for (std::uint64_t rest = node->stored; rest != 0; rest &= rest - 1) {
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
    for (std::uint64_t rest = node->occupied(); rest != 0; rest &= rest - 1)
        sum += node->countOf(static_cast<Index>(std::countr_zero(rest)));
    return sum;
}

std::uint64_t IndexSetNode::countOf(Index slot) const {
    if ((solid & bit(slot)) != 0) return bit(shift);
    if ((stored & bit(slot)) == 0) return 0;
    return isLeaf() ? static_cast<std::uint64_t>(std::popcount(entry(slot).word)) : count(entry(slot).child);
}

std::size_t IndexSetNode::byteCount(const IndexSetNode* node) {
    if (!node) return 0;
    std::size_t sum = sizeWith(node->capacity);
    if (node->isLeaf()) return sum;
    for (std::uint64_t rest = node->stored; rest != 0; rest &= rest - 1)
        sum += byteCount(node->entry(static_cast<Index>(std::countr_zero(rest))).child);
    return sum;
}

void IndexSetNode::makeRoom(IndexSetNode*& node) {
    if (node->capacity == slotCount || static_cast<unsigned>(std::popcount(node->stored)) < node->capacity)
        return;
    const unsigned wanted = 2u * node->capacity;
    node = allocated(std::realloc(node, sizeWith(wanted)));
    node->resize(wanted);
}

void IndexSetNode::insert(Index slot, Entry inserted) {
    Entry* place = entries() + position(slot);
    if (capacity < slotCount) {
        Entry* end = entries() + std::popcount(stored);
        std::move_backward(place, end, end + 1);
    }
    *place = inserted;
    stored |= bit(slot);
}

void IndexSetNode::erase(IndexSetNode*& node, Index slot) {
    Entry* erased = &node->entry(slot);
    if (!node->isLeaf()) destroy(erased->child);
    if (node->capacity < slotCount)
        std::move(erased + 1, node->entries() + std::popcount(node->stored), erased);
    node->stored &= ~bit(slot);

    // A quarter full, so that a set that grows and shrinks around one size keeps its room.
    const unsigned half = node->capacity / 2u;
    if (half < 2 || 2u * static_cast<unsigned>(std::popcount(node->stored)) > half) return;
    node->resize(half);
    // A smaller block that cannot be had leaves the larger one, which does as well.
    if (void* smaller = std::realloc(node, sizeWith(half))) node = static_cast<IndexSetNode*>(smaller);
}

void IndexSetNode::split(IndexSetNode*& node, Index slot) {
    makeRoom(node);
    Entry full{.word = allSlots};
    if (!node->isLeaf()) {
        full.child = make(node->firstOf(slot), node->shift - levelBits);
        full.child->solid = allSlots;
    }
    node->solid &= ~bit(slot);
    node->insert(slot, full);
}

// Gives the entries the places that they have with so much room.
void IndexSetNode::resize(unsigned wanted) {
    Entry* all = entries();
    if (wanted == slotCount) {
        // From the last on, each to a place at or behind its own.
        int position = std::popcount(stored);
        for (Index slot = slotCount; slot-- > 0;)
            if ((stored & bit(slot)) != 0) all[slot] = all[--position];
    } else if (capacity == slotCount) {
        int position = 0;
        for (Index slot = 0; slot < slotCount; ++slot)
            if ((stored & bit(slot)) != 0) all[position++] = all[slot];
    }
    capacity = static_cast<std::uint8_t>(wanted);
}

} // namespace tessarin::embedded
