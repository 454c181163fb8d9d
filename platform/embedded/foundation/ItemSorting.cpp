#include "platform/embedded/foundation/ItemSorting.h"

#include "platform/embedded/foundation/StableSort.h"

#include <algorithm>
#include <cstring>

namespace tessarin::embedded {
namespace {

struct Key {
    std::uint64_t beginning;
    StringView text;
    NSObject item;

    bool operator<(const Key& other) const {
        if (beginning != other.beginning) return beginning < other.beginning;
        return compareUnits(text, other.text) == NSOrderedAscending;
    }
};

// Sorts items that are all plain ASCII strings, which the platform itself compares, without a message;
// answers false otherwise and changes nothing.
bool sortPlainStrings(std::vector<NSObject>& items) {
    const SEL comparison = "compare:"_sel;
    const Implementation platforms = runtime::lookUpInClass("NSString"_class.object(), comparison);
    std::vector<Key> keys;
    keys.reserve(items.size());
    for (const NSObject item : items) {
        if (!kindOf<NSString>(item) || runtime::lookUp(item.object(), comparison) != platforms) return false;
        const StringStorage* const storage = directStorage(as<NSString>(item));
        if (!storage || !isAscii(storage->view())) return false;
        keys.push_back({beginningOf(storage->view()), storage->view(), item});
    }
    std::stable_sort(keys.begin(), keys.end());
    std::transform(keys.begin(), keys.end(), items.begin(), [](const Key& key) { return key.item; });
    return true;
}

} // namespace

std::uint64_t beginningOf(StringView text) {
    std::uint64_t beginning = 0;
    for (std::size_t index = 0; index < sizeof beginning; ++index)
        beginning = beginning << 8 | (index < text.length() ? text.narrow()[index] : 0U);
    return beginning;
}

bool isAscii(StringView text) {
    return !text.isWide() && std::all_of(text.narrow(), text.narrow() + text.length(), [](std::uint8_t unit) {
        return unit < 0x80;
    });
}

void sortItems(std::vector<NSObject>& items, SEL comparison) {
    if (comparison == "compare:"_sel && sortPlainStrings(items)) return;
    stableSort(items, [&](NSObject left, NSObject right) {
        return send<NSComparisonResult>(left, comparison, right) == NSOrderedDescending;
    });
}

} // namespace tessarin::embedded
