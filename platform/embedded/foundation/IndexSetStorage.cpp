#include "platform/embedded/foundation/IndexSetStorage.h"

#include <algorithm>

namespace tessarin::embedded {
namespace {

using Node = IndexSetNode;
using Entry = IndexSetNode::Entry;

Index bitOf(Index index) { return index % Node::slotCount; }

// The first number from one on that is no member. Nothing where there is none up to the end of the node;
// nothing, perhaps, where there is none up to `last`.
std::optional<Index> firstAbsent(const Node* node, Index index, Index last) {
    Index slot = node->slotOf(index);
    // Outside of the node, which may span but a part of the slot above it.
    if (slot >= Node::slotCount) return index;
    for (; slot < Node::slotCount && node->firstOf(slot) <= last; ++slot) {
        const Index from = std::max(index, node->firstOf(slot));
        if (node->isSolid(slot)) continue;
        if (!node->isStored(slot)) return from;
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) {
            const std::uint64_t absent = ~entry.word & (Node::allSlots << bitOf(from));
            if (absent != 0) return node->firstOf(slot) + Node::lowest(absent);
        } else {
            if (const auto found = firstAbsent(entry.child, from, last)) return found;
            // The child may end before its slot does.
            const Index childsLast = entry.child->lastOf(Node::slotCount - 1);
            if (childsLast < node->lastOf(slot)) return childsLast + 1;
        }
    }
    return {};
}

// Puts a node that spans an index as well above one that does not.
void branchAbove(Node*& node, Index index) {
    Node* above = Node::makeAround(node->base, index);
    above->insert(above->slotOf(node->base), {.child = node});
    node = above;
}

void destroyIfEmpty(Node*& node) {
    if (node->occupied == 0) Node::destroy(std::exchange(node, nullptr));
}

// Destroys the empty nodes on the way to an index.
void prune(Node*& node, Index index) {
    const Index slot = node->slotOf(index);
    if (!node->isLeaf() && slot < Node::slotCount && node->isStored(slot)) {
        Node*& child = node->entry(slot).child;
        prune(child, index);
        if (!child) Node::clear(node, slot);
    }
    destroyIfEmpty(node);
}

} // namespace

bool IndexSetStorage::containsAnywhere(Index index) const {
    for (const Node* node = root_; node;) {
        const Index slot = node->slotOf(index);
        if (slot >= Node::slotCount) return false;
        if (!node->isStored(slot)) return node->isOccupied(slot);
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) return (entry.word & Node::wordBit(index)) != 0;
        node = entry.child;
    }
    return false;
}

bool IndexSetStorage::contains(IndexRange range) const {
    if (!contains(range.last)) return false;
    const auto absent = firstAbsent(root_, range.first, range.last);
    return !absent || *absent > range.last;
}

Index IndexSetStorage::atOrAfter(Index index) const {
    // On the way down, the nearest occupied slot behind the way.
    const Node* later = nullptr;
    Index laterSlot = 0;
    for (const Node* node = root_; node && node->occupied != 0;) {
        const Index slot = node->slotOf(index);
        if (slot >= Node::slotCount) {
            if (index < node->base) return Node::firstIn(node, Node::lowest(node->occupied));
            break;
        }
        const std::uint64_t from = node->occupied & (Node::allSlots << slot);
        if (const std::uint64_t behind = from & ~Node::bit(slot)) {
            later = node;
            laterSlot = Node::lowest(behind);
        }
        if (node->isSolid(slot)) return index;
        if (!node->isStored(slot)) break;
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) {
            const std::uint64_t members = entry.word & (Node::allSlots << bitOf(index));
            if (members != 0) return node->firstOf(slot) + Node::lowest(members);
            break;
        }
        node = entry.child;
    }
    return later ? Node::firstIn(later, laterSlot) : noIndex;
}

Index IndexSetStorage::atOrBefore(Index index) const {
    const Node* earlier = nullptr;
    Index earlierSlot = 0;
    for (const Node* node = root_; node && node->occupied != 0;) {
        const Index slot = node->slotOf(index);
        if (slot >= Node::slotCount) {
            if (index > node->base) return Node::lastIn(node, Node::highest(node->occupied));
            break;
        }
        if (const std::uint64_t before = node->occupied & (Node::bit(slot) - 1)) {
            earlier = node;
            earlierSlot = Node::highest(before);
        }
        if (node->isSolid(slot)) return index;
        if (!node->isStored(slot)) break;
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) {
            const std::uint64_t members = entry.word & Node::bits(0, bitOf(index));
            if (members != 0) return node->firstOf(slot) + Node::highest(members);
            break;
        }
        node = entry.child;
    }
    return earlier ? Node::lastIn(earlier, earlierSlot) : noIndex;
}

std::optional<IndexRange> IndexSetStorage::runFrom(Index index) const {
    const Index first = atOrAfter(index);
    if (first == noIndex) return {};
    const auto absent = firstAbsent(root_, first, ~Index{0});
    return IndexRange{first, absent ? *absent - 1 : root_->lastOf(Node::slotCount - 1)};
}

bool operator==(const IndexSetStorage& left, const IndexSetStorage& right) {
    if (left.count_ != right.count_) return false;
    for (auto run = left.runFrom(0); run; run = left.runFrom(run->last + 1))
        if (run != right.runFrom(run->first)) return false;
    return true;
}

bool IndexSetStorage::addAnywhere(Index index) {
    if (count_ == 0) {
        // What is there is an empty leaf.
        if (root_)
            root_->holdJust(index);
        else
            root_ = newLeaf(index);
        count_ = 1;
        return true;
    }
    Node** link = &root_;
    for (;;) {
        Index slot = (*link)->slotOf(index);
        if (slot >= Node::slotCount) {
            branchAbove(*link, index);
            slot = (*link)->slotOf(index);
        }
        Node* const node = *link;
        if (node->isStored(slot)) {
            Entry& entry = node->entry(slot);
            if (!node->isLeaf()) {
                link = &entry.child;
                continue;
            }
            const std::uint64_t added = Node::wordBit(index);
            if ((entry.word & added) != 0) return false;
            entry.word |= added;
            node->occupied |= Node::bit(slot);
        } else {
            if (node->isOccupied(slot)) return false;
            Node::makeRoom(*link);
            (*link)->insert(slot, (*link)->isLeaf() ? Entry{.word = Node::wordBit(index)}
                                                    : Entry{.child = newLeaf(index)});
        }
        ++count_;
        return true;
    }
}

// A leaf that was left without indexes serves again.
Node* IndexSetStorage::newLeaf(Index index) {
    Node* const leaf = spareLeaf_ ? std::exchange(spareLeaf_, nullptr) : Node::makeAround(index, index);
    leaf->holdJust(index);
    return leaf;
}

bool IndexSetStorage::removeAnywhere(Index index) {
    if (count_ == 0) return false;
    Node** parent = nullptr;
    Node** link = &root_;
    for (;;) {
        const Index slot = (*link)->slotOf(index);
        if (slot >= Node::slotCount || !(*link)->isOccupied(slot)) return false;
        if (!(*link)->isStored(slot)) Node::split(*link, slot);
        Node* const node = *link;
        Entry& entry = node->entry(slot);
        if (!node->isLeaf()) {
            parent = std::exchange(link, &entry.child);
            continue;
        }
        const std::uint64_t removed = Node::wordBit(index);
        if ((entry.word & removed) == 0) return false;
        entry.word ^= removed;
        if (entry.word == 0) node->occupied ^= Node::bit(slot);
        // A last leaf stays for the next index.
        if (node->occupied == 0 && parent) removeLeaf(*parent, index);
        --count_;
        return true;
    }
}

// Removes an empty leaf, and what is empty without it.
void IndexSetStorage::removeLeaf(Node*& parent, Index index) {
    Node* leaf = Node::detach(parent, parent->slotOf(index));
    if (leaf->capacity < Node::slotCount) std::swap(leaf, spareLeaf_);
    if (leaf) Node::destroy(leaf);
    if (parent->occupied == 0) prune(root_, index);
}

void IndexSetStorage::add(IndexRange range) {
    if (count_ > 0) return addRange(root_, range);
    // Apart, so that a set which is left for want of memory is one without indexes.
    IndexSetStorage added;
    added.root_ = Node::makeAround(range.first, range.last);
    added.addRange(added.root_, range);
    *this = std::move(added);
}

void IndexSetStorage::addRange(Node*& node, IndexRange range) {
    for (const Index end : {range.first, range.last})
        if (node->slotOf(end) >= Node::slotCount) branchAbove(node, end);

    for (Index slot = node->slotOf(range.first); slot <= node->slotOf(range.last); ++slot) {
        if (node->isSolid(slot)) continue;
        const bool isStored = node->isStored(slot);
        const IndexRange part{std::max(range.first, node->firstOf(slot)),
                              std::min(range.last, node->lastOf(slot))};
        if (part == IndexRange{node->firstOf(slot), node->lastOf(slot)}) {
            count_ += Node::bit(node->shift) - node->countOf(slot);
            Node::fill(node, slot);
        } else if (node->isLeaf()) {
            if (!isStored) {
                Node::makeRoom(node);
                node->insert(slot, {.word = 0});
            }
            node->occupied |= Node::bit(slot);
            std::uint64_t& word = node->entry(slot).word;
            const std::uint64_t added = Node::bits(bitOf(part.first), bitOf(part.last)) & ~word;
            word |= added;
            count_ += Node::countBits(added);
        } else if (isStored) {
            addRange(node->entry(slot).child, part);
        } else {
            IndexSetStorage added;
            added.add(part);
            Node::makeRoom(node);
            node->insert(slot, {.child = std::exchange(added.root_, nullptr)});
            count_ += added.count_;
        }
    }
}

void IndexSetStorage::removeRange(Node*& node, IndexRange range) {
    if (!node) return;
    range = {std::max(range.first, node->base), std::min(range.last, node->lastOf(Node::slotCount - 1))};
    if (range.first > range.last) return;

    const std::uint64_t slots = Node::bits(node->slotOf(range.first), node->slotOf(range.last));
    for (std::uint64_t rest = node->occupied & slots; rest != 0; rest &= rest - 1) {
        const Index slot = Node::lowest(rest);
        const IndexRange part{std::max(range.first, node->firstOf(slot)),
                              std::min(range.last, node->lastOf(slot))};
        if (part == IndexRange{node->firstOf(slot), node->lastOf(slot)}) {
            count_ -= node->countOf(slot);
            Node::clear(node, slot);
            continue;
        }
        if (node->isSolid(slot)) Node::split(node, slot);
        Entry& entry = node->entry(slot);
        if (node->isLeaf()) {
            const std::uint64_t removed = Node::bits(bitOf(part.first), bitOf(part.last)) & entry.word;
            entry.word &= ~removed;
            count_ -= Node::countBits(removed);
            if (entry.word == 0) Node::clear(node, slot);
        } else {
            removeRange(entry.child, part);
            if (!entry.child) Node::clear(node, slot);
        }
    }
    destroyIfEmpty(node);
}

} // namespace tessarin::embedded
