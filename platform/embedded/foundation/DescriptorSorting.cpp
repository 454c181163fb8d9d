#include "platform/embedded/foundation/DescriptorSorting.h"

#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/DescriptorColumn.h"
#include "platform/embedded/foundation/RankedPlaces.h"
#include "platform/embedded/foundation/StableSort.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace tessarin::embedded {
namespace {

using Columns = std::span<DescriptorColumn>;
using Run = std::span<RankedPlace>;

// Calls a function with each run of two or more places that are the same.
template <class AreSame, class Function>
void forEachRun(Run places, AreSame&& areSame, Function&& function) {
    for (auto begin = places.begin(); begin != places.end();) {
        const auto end = std::find_if(begin + 1, places.end(),
                                      [&](const RankedPlace& place) { return !areSame(*begin, place); });
        if (end - begin > 1) function(Run(begin, end));
        begin = end;
    }
}

bool haveSameRank(const RankedPlace& left, const RankedPlace& right) { return left.rank == right.rank; }

// Sorts a run by the ranks that a column gave the items, and by their values where those say too little.
void sortByColumn(Run run, DescriptorColumn& column, const std::vector<std::uint64_t>& ranks) {
    for (RankedPlace& place : run) place.rank = ranks[place.index];
    sortByRank(run);
    if (column.ranksSayAll()) return;
    forEachRun(run, haveSameRank, [&](Run places) {
        std::ranges::stable_sort(places, [&](const RankedPlace& left, const RankedPlace& right) {
            return column.compare(left.index, right.index) == NSOrderedAscending;
        });
    });
}

// What is the same to the column that runs were sorted by: parts of them, in which the items are in the order
// in which they came.
std::vector<Run> partsOfSame(const std::vector<Run>& runs, DescriptorColumn& column) {
    const auto areSame = [&](const RankedPlace& left, const RankedPlace& right) {
        return haveSameRank(left, right)
               && (column.ranksSayAll() || column.compare(left.index, right.index) == NSOrderedSame);
    };
    std::vector<Run> same;
    for (const Run run : runs) forEachRun(run, areSame, [&](Run places) { same.push_back(places); });
    return same;
}

// The indexes of the items in some runs, ascending.
std::vector<std::size_t> indexesIn(const std::vector<Run>& runs, std::size_t count) {
    std::vector<bool> isIn(count);
    for (const Run run : runs)
        for (const RankedPlace& place : run) isIn[place.index] = true;
    std::vector<std::size_t> indexes;
    for (std::size_t index = 0; index < count; ++index)
        if (isIn[index]) indexes.push_back(index);
    return indexes;
}

// Sorts a run by asking the columns about pairs of items.
void sortByComparing(Run run, Columns columns) {
    std::vector<RankedPlace> places(run.begin(), run.end());
    stableSort(places, [&](const RankedPlace& left, const RankedPlace& right) {
        for (DescriptorColumn& column : columns)
            if (const auto result = column.compare(left.index, right.index); result != NSOrderedSame)
                return result > NSOrderedSame;
        return false;
    });
    std::ranges::copy(places, run.begin());
}

// Columns whose values the platform compares itself are gone through one after the other, since ranks sort
// many times as fast as comparisons. From the first other one on, items are compared by all that are left.
void sortPlaces(Run places, Columns columns) {
    std::vector<Run> runs = {places};
    std::vector<std::size_t> indexes(places.size());
    std::iota(indexes.begin(), indexes.end(), std::size_t{0});
    std::vector<std::uint64_t> ranks(places.size());
    while (!runs.empty()) {
        DescriptorColumn& column = columns.front();
        if (!column.rank(indexes, ranks)) {
            for (const Run run : runs) sortByComparing(run, columns);
            return;
        }
        for (const Run run : runs) sortByColumn(run, column, ranks);
        columns = columns.subspan(1);
        if (columns.empty()) return;
        runs = partsOfSame(runs, column);
        indexes = indexesIn(runs, places.size());
    }
}

} // namespace

void sortItems(std::vector<NSObject>& items, NSArray descriptors) {
    if (items.size() < 2 || descriptors.count() == 0) return;
    const Retained<NSArray> kept = adopt(NSArray(descriptors.copy()));
    // Until the end: nobody else need keep what an application's own array answers.
    const ArrayItems keptItems(kept);
    std::vector<DescriptorColumn> columns;
    for (const NSObject descriptor : keptItems) columns.emplace_back(as<NSSortDescriptor>(descriptor), items);

    std::vector<RankedPlace> places(items.size());
    for (std::size_t index = 0; index < items.size(); ++index) places[index].index = index;
    sortPlaces(places, columns);

    std::vector<NSObject> sorted(items.size());
    for (std::size_t index = 0; index < items.size(); ++index) sorted[index] = items[places[index].index];
    items = std::move(sorted);
}

} // namespace tessarin::embedded
