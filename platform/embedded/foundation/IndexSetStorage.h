// How the embedded platform's index sets keep their indexes.
#pragma once

#include "TessarinPlatform/NSIndexSet.h"
#include "platform/embedded/foundation/IndexSetNode.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <optional>
#include <utility>

namespace tessarin::embedded {

// What no set holds. Not an optional, whose way through memory costs more than finding the index.
constexpr Index noIndex = static_cast<Index>(NSNotFound);

struct IndexRange {
    Index first;
    Index last; // included

    friend bool operator==(IndexRange, IndexRange) = default;
};

// An ordered set of integers below NSNotFound, as a tree of nodes with 64 slots each that leaves out the
// levels at which nothing branches. An operation on one index visits one node a level, of which there are no
// more than the indexes need and never more than ten, so that it takes the same time in a large set as in a
// small one. Indexes side by side take little more than a bit each; a range takes a few slots, however long.
//
// An entry that becomes full one index at a time is kept, so that to take one index away and put it back
// costs no memory management; a range that is added as one swallows what it covers.
//
// Operations that do not change the set may be called on several threads at once.
class IndexSetStorage {
public:
    IndexSetStorage() = default;
    IndexSetStorage(const IndexSetStorage& other)
        : root_(IndexSetNode::clone(other.root_)), count_(other.count_) {}
    IndexSetStorage(IndexSetStorage&& other) noexcept
        : root_(std::exchange(other.root_, nullptr)), count_(std::exchange(other.count_, 0)) {}
    ~IndexSetStorage() {
        IndexSetNode::destroy(root_);
        IndexSetNode::destroy(spareLeaf_);
    }
    IndexSetStorage& operator=(IndexSetStorage other) noexcept {
        std::swap(root_, other.root_);
        std::swap(spareLeaf_, other.spareLeaf_);
        std::swap(count_, other.count_);
        return *this;
    }

    std::uint64_t count() const { return count_; }
    // What the indexes take in memory.
    std::size_t byteCount() const { return IndexSetNode::byteCount(root_); }
    bool contains(Index index) const;
    bool contains(IndexRange range) const;
    // noIndex where there is none.
    Index first() const;
    Index last() const;
    // The first member at or behind an index, the last at or before it; noIndex where there is none.
    Index atOrAfter(Index index) const;
    Index atOrBefore(Index index) const;
    // The run of members that begins at or behind an index, up to the next number that is no member; one that
    // begins before the index is cut there.
    std::optional<IndexRange> runFrom(Index index) const;
    friend bool operator==(const IndexSetStorage& left, const IndexSetStorage& right);

    // The indexes are below NSNotFound. Whether the set changed.
    bool add(Index index);
    bool remove(Index index);
    void add(IndexRange range);
    void remove(IndexRange range) { removeRange(root_, range); }
    void removeAll() { *this = IndexSetStorage(); }

private:
    void addRange(IndexSetNode*& node, IndexRange range);
    void removeRange(IndexSetNode*& node, IndexRange range);

    IndexSetNode* leafAtHand(Index index) const;
    bool containsAnywhere(Index index) const;
    bool addAnywhere(Index index);
    bool removeAnywhere(Index index);
    IndexSetNode* newLeaf(Index index);
    void removeLeaf(IndexSetNode*& parent, Index index);

    IndexSetNode* root_ = nullptr;
    IndexSetNode* spareLeaf_ = nullptr; // one that has become empty, for the next
    std::uint64_t count_ = 0;
};

inline IndexSetNode* IndexSetStorage::leafAtHand(Index index) const {
    IndexSetNode* node = root_;
    if (!node) return nullptr;
    while (!node->isLeaf()) {
        const Index slot = node->slotOf(index);
        if (slot >= IndexSetNode::slotCount) return nullptr;
        const IndexSetNode::Entry* const entry = node->entryAtHand(slot);
        if (!entry) return nullptr;
        node = entry->child;
    }
    return node->leafSpans(index) ? node : nullptr;
}

inline bool IndexSetStorage::contains(Index index) const {
    if (IndexSetNode* const leaf = leafAtHand(index))
        if (const auto* const entry = leaf->entryAtHand(IndexSetNode::leafSlotOf(index)))
            return (entry->word & IndexSetNode::wordBit(index)) != 0;
    return containsAnywhere(index);
}

inline Index IndexSetStorage::first() const {
    if (count_ == 0) return noIndex;
    return IndexSetNode::firstIn(root_, IndexSetNode::lowest(root_->occupied));
}

inline Index IndexSetStorage::last() const {
    if (count_ == 0) return noIndex;
    return IndexSetNode::lastIn(root_, IndexSetNode::highest(root_->occupied));
}

inline bool IndexSetStorage::add(Index index) {
    if (IndexSetNode* const leaf = leafAtHand(index)) {
        const Index slot = IndexSetNode::leafSlotOf(index);
        if (auto* const entry = leaf->entryAtHand(slot)) {
            const std::uint64_t added = IndexSetNode::wordBit(index);
            if ((entry->word & added) != 0) return false;
            entry->word |= added;
            leaf->occupied |= IndexSetNode::bit(slot);
            ++count_;
            return true;
        }
    }
    return addAnywhere(index);
}

inline bool IndexSetStorage::remove(Index index) {
    if (IndexSetNode* const leaf = leafAtHand(index)) {
        if (auto* const entry = leaf->entryAtHand(IndexSetNode::leafSlotOf(index))) {
            const std::uint64_t removed = IndexSetNode::wordBit(index);
            if ((entry->word & removed) == 0) return false;
            if (entry->word != removed) {
                entry->word ^= removed;
                --count_;
                return true;
            }
        }
    }
    return removeAnywhere(index);
}

inline IndexSetStorage& storageOf(NSIndexSet set) { return embedded::storageOf<IndexSetStorage>(set); }

// The only way in for a caller's index or range: raises NSInvalidArgumentException where it reaches
// NSNotFound or beyond.
void checkRange(NSIndexSet receiver, SEL selector, NSRange range);

std::vector<MethodRow> indexSetCodingMethods();

} // namespace tessarin::embedded
