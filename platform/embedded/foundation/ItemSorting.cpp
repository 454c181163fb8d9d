#include "platform/embedded/foundation/ItemSorting.h"

#include "platform/embedded/foundation/PlainStringOrder.h"
#include "platform/embedded/foundation/StableSort.h"

namespace tessarin::embedded {
namespace {

// Sorts items that are all plain strings without a message; answers false otherwise and changes nothing.
bool sortPlainStrings(std::vector<NSObject>& items) {
    PlainStringOrder strings(items.size());
    for (const NSObject item : items)
        if (!strings.add(item)) return false;
    std::vector<NSObject> sorted;
    sorted.reserve(items.size());
    for (const std::size_t position : strings.ascending()) sorted.push_back(items[position]);
    items.swap(sorted);
    return true;
}

} // namespace

void sortItems(std::vector<NSObject>& items, SEL comparison) {
    if (comparison == "compare:"_sel && sortPlainStrings(items)) return;
    if (items.size() > 1) requireSelector(items.front(), comparison);
    // By the sign: a comparison may well answer the difference of two numbers.
    stableSort(items, [&](NSObject left, NSObject right) {
        return send<NSComparisonResult>(left, comparison, right) > NSOrderedSame;
    });
}

} // namespace tessarin::embedded
