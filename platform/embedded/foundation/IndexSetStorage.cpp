#include "platform/embedded/foundation/IndexSetStorage.h"

#include <algorithm>
#include <array>

namespace tessarin::embedded {
namespace {

using Node = IndexSetNode;
using Entry = IndexSetNode::Entry;

constexpr std::size_t mostLevels = 10;

Index lowest(std::uint64_t slots) { return static_cast<Index>(std::countr_zero(slots)); }
Index highest(std::uint64_t slots) { return 63 - static_cast<Index>(std::countl_zero(slots)); }
Index bitOf(Index index) { return index % Node::slotCount; }

// The least member of an occupied slot.
Index firstIn(const Node* node, Index slot) {
    for (;; slot = lowest(node->occupied())) {
        if ((node->solid & Node::bit(slot)) != 0) return node->firstOf(slot);
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) return node->firstOf(slot) + lowest(entry.word);
        node = entry.child;
    }
}

Index lastIn(const Node* node, Index slot) {
    for (;; slot = highest(node->occupied())) {
        if ((node->solid & Node::bit(slot)) != 0) return node->lastOf(slot);
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) return node->firstOf(slot) + highest(entry.word);
        node = entry.child;
    }
}

// The first number from one on that is no member. Nothing where there is none up to the end of the node;
// nothing, perhaps, where there is none up to `last`.
std::optional<Index> firstAbsent(const Node* node, Index index, Index last) {
    Index slot = node->slotOf(index);
    // Outside of the node, which may span but a part of the slot above it.
    if (slot >= Node::slotCount) return index;
    for (; slot < Node::slotCount && node->firstOf(slot) <= last; ++slot) {
        const Index from = std::max(index, node->firstOf(slot));
        if ((node->solid & Node::bit(slot)) != 0) continue;
        if ((node->stored & Node::bit(slot)) == 0) return from;
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) {
            const std::uint64_t absent = ~entry.word & (Node::allSlots << bitOf(from));
            if (absent != 0) return node->firstOf(slot) + lowest(absent);
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

// Nodes that hold nothing, or do not branch, go.
void tidy(Node*& node) {
    const std::uint64_t stored = node->stored;
    if (node->occupied() == 0) {
        Node::destroy(std::exchange(node, nullptr));
    } else if (!node->isLeaf() && node->solid == 0 && std::has_single_bit(stored)) {
        Node* child = node->entry(lowest(stored)).child;
        node->stored = 0;
        Node::destroy(std::exchange(node, child));
    }
}

} // namespace

bool IndexSetStorage::contains(Index index) const {
    const Node* node = root_;
    while (node) {
        const Index slot = node->slotOf(index);
        if (slot >= Node::slotCount) return false;
        if ((node->solid & Node::bit(slot)) != 0) return true;
        if ((node->stored & Node::bit(slot)) == 0) return false;
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) return (entry.word & Node::bit(bitOf(index))) != 0;
        node = entry.child;
    }
    return false;
}

bool IndexSetStorage::contains(IndexRange range) const {
    if (!contains(range.last)) return false;
    const auto absent = firstAbsent(root_, range.first, range.last);
    return !absent || *absent > range.last;
}

std::optional<Index> IndexSetStorage::atOrAfter(Index index) const {
    // On the way down, the nearest occupied slot behind the way.
    const Node* later = nullptr;
    Index laterSlot = 0;
    for (const Node* node = root_; node && node->occupied() != 0;) {
        const Index slot = node->slotOf(index);
        if (slot >= Node::slotCount) {
            if (index < node->base) return firstIn(node, lowest(node->occupied()));
            break;
        }
        const std::uint64_t from = node->occupied() & (Node::allSlots << slot);
        if (const std::uint64_t behind = from & ~Node::bit(slot)) {
            later = node;
            laterSlot = lowest(behind);
        }
        if ((node->solid & Node::bit(slot)) != 0) return index;
        if ((node->stored & Node::bit(slot)) == 0) break;
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) {
            const std::uint64_t members = entry.word & (Node::allSlots << bitOf(index));
            if (members != 0) return node->firstOf(slot) + lowest(members);
            break;
        }
        node = entry.child;
    }
    if (!later) return {};
    return firstIn(later, laterSlot);
}

std::optional<Index> IndexSetStorage::atOrBefore(Index index) const {
    const Node* earlier = nullptr;
    Index earlierSlot = 0;
    for (const Node* node = root_; node && node->occupied() != 0;) {
        const Index slot = node->slotOf(index);
        if (slot >= Node::slotCount) {
            if (index > node->base) return lastIn(node, highest(node->occupied()));
            break;
        }
        if (const std::uint64_t before = node->occupied() & (Node::bit(slot) - 1)) {
            earlier = node;
            earlierSlot = highest(before);
        }
        if ((node->solid & Node::bit(slot)) != 0) return index;
        if ((node->stored & Node::bit(slot)) == 0) break;
        const Entry& entry = node->entry(slot);
        if (node->isLeaf()) {
            const std::uint64_t members = entry.word & Node::bits(0, bitOf(index));
            if (members != 0) return node->firstOf(slot) + highest(members);
            break;
        }
        node = entry.child;
    }
    if (!earlier) return {};
    return lastIn(earlier, earlierSlot);
}

std::optional<IndexRange> IndexSetStorage::runFrom(Index index) const {
    const auto first = atOrAfter(index);
    if (!first) return {};
    const auto absent = firstAbsent(root_, *first, ~Index{0});
    return IndexRange{*first, absent ? *absent - 1 : root_->lastOf(Node::slotCount - 1)};
}

bool operator==(const IndexSetStorage& left, const IndexSetStorage& right) {
    if (left.count_ != right.count_) return false;
    for (auto run = left.runFrom(0); run; run = left.runFrom(run->last + 1))
        if (run != right.runFrom(run->first)) return false;
    return true;
}

bool IndexSetStorage::add(Index index) {
    if (count_ == 0) {
        // A leaf that was left without indexes serves again.
        if (!root_) root_ = Node::makeAround(index, index);
        root_->base = index & ~(Node::bit(2 * Node::leafShift) - 1);
    }
    for (Node** link = &root_;;) {
        const Index slot = (*link)->slotOf(index);
        if (slot >= Node::slotCount) {
            branchAbove(*link, index);
            continue;
        }
        if (((*link)->solid & Node::bit(slot)) != 0) return false;
        const bool isLeaf = (*link)->isLeaf();
        if (((*link)->stored & Node::bit(slot)) == 0) {
            Node::makeRoom(*link);
            (*link)->insert(slot, isLeaf ? Entry{.word = 0} : Entry{.child = Node::makeAround(index, index)});
        }
        Entry& entry = (*link)->entry(slot);
        if (isLeaf) {
            const std::uint64_t added = Node::bit(bitOf(index));
            if ((entry.word & added) != 0) return false;
            entry.word |= added;
            ++count_;
            return true;
        }
        link = &entry.child;
    }
}

bool IndexSetStorage::remove(Index index) {
    struct Step {
        Node** link;
        Index slot;
    };
    std::array<Step, mostLevels> way;
    std::size_t depth = 0;
    if (count_ == 0) return false;
    for (Node** link = &root_;;) {
        const Index slot = (*link)->slotOf(index);
        if (slot >= Node::slotCount) return false;
        if (((*link)->solid & Node::bit(slot)) != 0)
            Node::split(*link, slot);
        else if (((*link)->stored & Node::bit(slot)) == 0)
            return false;
        way[depth++] = {link, slot};
        Entry& entry = (*link)->entry(slot);
        if ((*link)->isLeaf()) {
            const std::uint64_t removed = Node::bit(bitOf(index));
            if ((entry.word & removed) == 0) return false;
            entry.word &= ~removed;
            --count_;
            if (entry.word != 0) return true;
            break;
        }
        link = &entry.child;
    }
    // Back up, as long as what is left is nothing. A last leaf stays for the next index.
    while (depth-- > 0) {
        const auto [link, slot] = way[depth];
        Node::erase(*link, slot);
        if (depth == 0 && (*link)->isLeaf()) break;
        tidy(*link);
        if (*link) break;
    }
    return true;
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
        if ((node->solid & Node::bit(slot)) != 0) continue;
        const bool isStored = (node->stored & Node::bit(slot)) != 0;
        const IndexRange part{std::max(range.first, node->firstOf(slot)),
                              std::min(range.last, node->lastOf(slot))};
        if (part == IndexRange{node->firstOf(slot), node->lastOf(slot)}) {
            count_ += Node::bit(node->shift) - node->countOf(slot);
            if (isStored) Node::erase(node, slot);
            node->solid |= Node::bit(slot);
        } else if (node->isLeaf()) {
            if (!isStored) {
                Node::makeRoom(node);
                node->insert(slot, {.word = 0});
            }
            std::uint64_t& word = node->entry(slot).word;
            const std::uint64_t added = Node::bits(bitOf(part.first), bitOf(part.last)) & ~word;
            word |= added;
            count_ += static_cast<std::uint64_t>(std::popcount(added));
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
    for (std::uint64_t rest = node->occupied() & slots; rest != 0; rest &= rest - 1) {
        const Index slot = lowest(rest);
        const IndexRange part{std::max(range.first, node->firstOf(slot)),
                              std::min(range.last, node->lastOf(slot))};
        if (part == IndexRange{node->firstOf(slot), node->lastOf(slot)}) {
            count_ -= node->countOf(slot);
            if ((node->stored & Node::bit(slot)) != 0) Node::erase(node, slot);
            node->solid &= ~Node::bit(slot);
            continue;
        }
        if ((node->solid & Node::bit(slot)) != 0) Node::split(node, slot);
        Entry& entry = node->entry(slot);
        if (node->isLeaf()) {
            const std::uint64_t removed = Node::bits(bitOf(part.first), bitOf(part.last)) & entry.word;
            entry.word &= ~removed;
            count_ -= static_cast<std::uint64_t>(std::popcount(removed));
            if (entry.word == 0) Node::erase(node, slot);
        } else {
            removeRange(entry.child, part);
            if (!entry.child) Node::erase(node, slot);
        }
    }
    tidy(node);
}

} // namespace tessarin::embedded
