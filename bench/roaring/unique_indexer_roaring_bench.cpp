// A unique indexer on compressed bitmaps, of 64-bit and of 32-bit numbers.
#include "UniqueIndexer.h"

#include <roaring/roaring.hh>
#include <roaring/roaring64map.hh>

namespace {

template <class Roaring, class Number>
class RoaringSet {
public:
    explicit RoaringSet(std::int64_t) {}

    bool contains(std::int64_t index) const { return set_.contains(static_cast<Number>(index)); }
    void add(std::int64_t index) { set_.add(static_cast<Number>(index)); }
    void remove(std::int64_t index) { set_.remove(static_cast<Number>(index)); }
    bool isEmpty() const { return set_.isEmpty(); }
    std::int64_t first() const { return static_cast<std::int64_t>(set_.minimum()); }
    std::int64_t last() const { return static_cast<std::int64_t>(set_.maximum()); }

private:
    Roaring set_;
};
using Roaring64 = bench::RivalIndexer<RoaringSet<Roaring64Map, std::uint64_t>>;
using Roaring32 = bench::RivalIndexer<RoaringSet<Roaring, std::uint32_t>>;
UNIQUE_INDEXER_BENCHMARK(Roaring64, "Roaring64");
UNIQUE_INDEXER_BENCHMARK(Roaring32, "Roaring32");

} // namespace
