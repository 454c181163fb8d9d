// A unique indexer on sets of intervals.
#include "UniqueIndexer.h"

#include <boost/icl/interval_set.hpp>

namespace {

class IntervalSet {
public:
    explicit IntervalSet(std::int64_t) {}

    bool contains(std::int64_t index) const { return boost::icl::contains(set_, index); }
    void add(std::int64_t index) { set_.add(index); }
    void remove(std::int64_t index) { set_.subtract(index); }
    bool isEmpty() const { return set_.empty(); }
    std::int64_t first() const { return boost::icl::first(set_); }
    std::int64_t last() const { return boost::icl::last(set_); }

private:
    boost::icl::interval_set<std::int64_t> set_;
};
UNIQUE_INDEXER_BENCHMARK(bench::RivalIndexer<IntervalSet>, "IntervalSet");

} // namespace
