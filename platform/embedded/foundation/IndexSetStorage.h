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
// levels at which nothing has branched. An operation on one index visits one node a level, of which there are
// no more than the indexes need and never more than ten, so that it takes the same time in a large set as in
// a small one. Indexes side by side take little more than a bit each; a range takes a few slots, however
// long.
//
// An entry that becomes full one index at a time is kept, and so are a word and the last small leaf that
// become empty: to take one index away and put it back costs no memory management. A range that is added as
// one swallows what it covers.
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
    std::size_t byteCount() const {
        return IndexSetNode::byteCount(root_) + IndexSetNode::byteCount(spareLeaf_);
    }
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

    // The word of an index where the way there is straight: no slot without an entry, and none that has to be
    // counted. Null otherwise. Most ways are straight, and what goes along them is small enough to be inline.
    struct Place {
        IndexSetNode* leaf;
        std::uint64_t* word;
    };
    Place straightTo(Index index) const;
    // The same operations along any way.
    bool containsAnywhere(Index index) const;
    bool addAnywhere(Index index);
    bool removeAnywhere(Index index);

    IndexSetNode* newLeaf(Index index);
    void removeLeaf(IndexSetNode*& parent, Index index);

    IndexSetNode* root_ = nullptr;
    IndexSetNode* spareLeaf_ = nullptr; // has become empty, and is kept for the next
    std::uint64_t count_ = 0;
};

inline IndexSetStorage::Place IndexSetStorage::straightTo(Index index) const {
    IndexSetNode* node = root_;
    if (!node) return {};
    while (!node->isLeaf()) {
        const Index slot = node->slotOf(index);
        if (slot >= IndexSetNode::slotCount) return {};
        const auto* const entry = node->entryAtHand(slot);
        if (!entry) return {};
        node = entry->child;
    }
    if (!node->leafSpans(index)) return {};
    auto* const entry = node->entryAtHand(IndexSetNode::leafSlotOf(index));
    return {node, entry ? &entry->word : nullptr};
}

inline bool IndexSetStorage::contains(Index index) const {
    const auto [leaf, word] = straightTo(index);
    return word ? (*word & IndexSetNode::wordBit(index)) != 0 : containsAnywhere(index);
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
    const auto [leaf, word] = straightTo(index);
    if (!word) return addAnywhere(index);
    const std::uint64_t added = IndexSetNode::wordBit(index);
    if ((*word & added) != 0) return false;
    *word |= added;
    leaf->occupied |= IndexSetNode::bit(IndexSetNode::leafSlotOf(index));
    ++count_;
    return true;
}

inline bool IndexSetStorage::remove(Index index) {
    const auto [leaf, word] = straightTo(index);
    const std::uint64_t removed = IndexSetNode::wordBit(index);
    // The last of a word may be the last of its leaf.
    if (!word || *word == removed) return removeAnywhere(index);
    if ((*word & removed) == 0) return false;
    *word ^= removed;
    --count_;
    return true;
}

inline IndexSetStorage& storageOf(NSIndexSet set) { return embedded::storageOf<IndexSetStorage>(set); }

// The only way in for a caller's index or range: raises NSInvalidArgumentException where it reaches
// NSNotFound or beyond.
void checkRange(NSIndexSet receiver, SEL selector, NSRange range);

// The indexes of a caller's set; raises NSInvalidArgumentException for an object that only answers for one.
const IndexSetStorage& indexesOf(NSIndexSet set, NSIndexSet receiver, SEL selector);

std::vector<MethodRow> indexSetCodingMethods();

} // namespace tessarin::embedded
