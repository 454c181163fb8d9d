// How the embedded platform's index sets keep their indexes.
#pragma once

#include "TessarinPlatform/NSIndexSet.h"
#include "platform/embedded/foundation/IndexSetNode.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <optional>
#include <utility>

namespace tessarin::embedded {

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
    ~IndexSetStorage() { IndexSetNode::destroy(root_); }
    IndexSetStorage& operator=(IndexSetStorage other) noexcept {
        std::swap(root_, other.root_);
        std::swap(count_, other.count_);
        return *this;
    }

    std::uint64_t count() const { return count_; }
    // What the indexes take in memory.
    std::size_t byteCount() const { return IndexSetNode::byteCount(root_); }
    bool contains(Index index) const;
    bool contains(IndexRange range) const;
    std::optional<Index> first() const;
    std::optional<Index> last() const;
    // The first member at or behind an index, the last at or before it.
    std::optional<Index> atOrAfter(Index index) const;
    std::optional<Index> atOrBefore(Index index) const;
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

    IndexSetNode* root_ = nullptr;
    std::uint64_t count_ = 0;
};

inline IndexSetStorage& storageOf(NSIndexSet set) { return embedded::storageOf<IndexSetStorage>(set); }

// The only way in for a caller's index or range: raises NSInvalidArgumentException where it reaches
// NSNotFound or beyond.
void checkRange(NSIndexSet receiver, SEL selector, NSRange range);

// The indexes of a caller's set; raises NSInvalidArgumentException for an object that only answers for one.
const IndexSetStorage& indexesOf(NSIndexSet set, NSIndexSet receiver, SEL selector);

std::vector<MethodRow> indexSetCodingMethods();

} // namespace tessarin::embedded
