// The unique indexer against the same on a bitmap written for the purpose, and on the standard library's set.
#include "UniqueIndexer.h"

#include "TessarinFoundation/TSSRUniqueIndexer.h"
#include "TessarinPlatform/Retained.h"

#include <bit>
#include <set>
#include <vector>

using namespace tessarin;

namespace {

class LibrarysIndexer {
public:
    explicit LibrarysIndexer(std::int64_t) {}

    void registerIndex(std::int64_t index) { indexer_.registerIndex(static_cast<NSInteger>(index)); }
    std::int64_t registerAny() { return indexer_.registerIndex(NSNotFound); }
    bool freeIndex(std::int64_t index) { return indexer_.freeIndex(static_cast<NSInteger>(index)); }

private:
    const Retained<TSSRUniqueIndexer> indexer_ = adopt(TSSRUniqueIndexer::alloc().init());
};
UNIQUE_INDEXER_BENCHMARK(LibrarysIndexer, "Library");

// A bit for each number below a capacity that is known beforehand; above it levels with a bit for each word
// of the level below that is not zero.
class Bitmap {
public:
    explicit Bitmap(std::int64_t capacity) {
        auto words = static_cast<std::size_t>(capacity + 1);
        do {
            words = (words + 63) / 64;
            levels_.emplace_back(words);
        } while (words > 1);
    }

    bool contains(std::int64_t index) const {
        const auto number = static_cast<std::size_t>(index);
        return (levels_[0][number / 64] >> (number % 64) & 1) != 0;
    }
    void add(std::int64_t index) {
        auto number = static_cast<std::size_t>(index);
        for (auto& level : levels_) {
            std::uint64_t& word = level[number / 64];
            const bool wasOccupied = word != 0;
            word |= std::uint64_t{1} << (number % 64);
            if (wasOccupied) return;
            number /= 64;
        }
    }
    void remove(std::int64_t index) {
        auto number = static_cast<std::size_t>(index);
        for (auto& level : levels_) {
            std::uint64_t& word = level[number / 64];
            word &= ~(std::uint64_t{1} << (number % 64));
            if (word != 0) return;
            number /= 64;
        }
    }
    bool isEmpty() const { return levels_.back()[0] == 0; }
    std::int64_t first() const {
        std::size_t number = 0;
        for (auto level = levels_.rbegin(); level != levels_.rend(); ++level)
            number = number * 64 + static_cast<std::size_t>(std::countr_zero((*level)[number]));
        return static_cast<std::int64_t>(number);
    }
    std::int64_t last() const {
        std::size_t number = 0;
        for (auto level = levels_.rbegin(); level != levels_.rend(); ++level)
            number = number * 64 + 63 - static_cast<std::size_t>(std::countl_zero((*level)[number]));
        return static_cast<std::int64_t>(number);
    }

private:
    std::vector<std::vector<std::uint64_t>> levels_;
};
UNIQUE_INDEXER_BENCHMARK(bench::RivalIndexer<Bitmap>, "Bitmap");

class StandardSet {
public:
    explicit StandardSet(std::int64_t) {}

    bool contains(std::int64_t index) const { return set_.contains(index); }
    void add(std::int64_t index) { set_.insert(index); }
    void remove(std::int64_t index) { set_.erase(index); }
    bool isEmpty() const { return set_.empty(); }
    std::int64_t first() const { return *set_.begin(); }
    std::int64_t last() const { return *set_.rbegin(); }

private:
    std::set<std::int64_t> set_;
};
UNIQUE_INDEXER_BENCHMARK(bench::RivalIndexer<StandardSet>, "StandardSet");

} // namespace
