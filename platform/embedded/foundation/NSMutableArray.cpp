#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/DescriptorSorting.h"
#include "platform/embedded/foundation/ItemSorting.h"

#include "TessarinPlatform/ArrayEditing.h"
#include "TessarinPlatform/EqualityIndex.h"
#include "TessarinPlatform/NSException.h"
#include "TessarinPlatform/ValueComparison.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace tessarin::embedded {
namespace {

ArrayStorage& storageOf(NSArray array) { return embedded::storageOf<ArrayStorage>(array); }

// ---- The primitive operations. A subclass may take them over; everything below them then goes through them.
// An object is retained before they look at the array, which an object with a retain of its own may edit.

void insertObject_atIndex(NSMutableArray self, SEL selector, NSObject object, NSUInteger index) {
    ArrayStorage& storage = storageOf(self);
    if (!object) raiseFrom(NSInvalidArgumentException(), self, selector, "object cannot be nil");
    Retained<NSObject> owned = retain(object);
    if (index > storage.count) raiseBeyondBounds(self, selector, index, storage.count);
    storage.insert(owned.leak(), index);
}

void append(ArrayStorage& storage, NSObject object) {
    Retained<NSObject> owned = retain(object);
    if (storage.count == storage.capacity) [[unlikely]]
        storage.reserve(storage.count + 1);
    storage.items[storage.count++] = owned.leak();
    ++storage.mutations;
}

// Whether an object is of exactly this class, so that no operation is overridden.
bool isPlain(NSMutableArray array) { return array.object()->isa == NSMutableArray::classObject().object(); }

void addObject(NSMutableArray self, SEL, NSObject object) {
    const SEL insertion = "insertObject:atIndex:"_sel;
    if (!isPlain(self) && !answersWith(self, insertion, insertObject_atIndex))
        return self.insertObject_atIndex(object, self.count());
    // The platform names the insertion in the exception.
    if (!object) [[unlikely]]
        raiseFrom(NSInvalidArgumentException(), self, insertion, "object cannot be nil");
    append(storageOf(self), object);
}

void replaceObjectAtIndex_withObject(NSMutableArray self, SEL selector, NSUInteger index, NSObject object) {
    ArrayStorage& storage = storageOf(self);
    if (!object) raiseFrom(NSInvalidArgumentException(), self, selector, "object cannot be nil");
    Retained<NSObject> owned = retain(object);
    if (index >= storage.count) raiseBeyondBounds(self, selector, index, storage.count);
    const NSObject replaced = std::exchange(storage.items[index], owned.leak());
    ++storage.mutations;
    runtime::release(replaced.object());
}

// Takes a range that is within bounds out of the storage. The items are released when the array is whole
// again, since a release may set off code that looks at it.
void takeOut(ArrayStorage& storage, NSRange range) {
    NSObject* const begin = storage.items + range.location;
    const std::vector<NSObject> removed(begin, begin + range.length);
    std::move(begin + range.length, storage.items + storage.count, begin);
    storage.count -= range.length;
    ++storage.mutations;
    for (const NSObject item : removed) runtime::release(item.object());
}

void removeObjectAtIndex(NSMutableArray self, SEL selector, NSUInteger index) {
    ArrayStorage& storage = storageOf(self);
    if (index >= storage.count) raiseBeyondBounds(self, selector, index, storage.count);
    adopt(storage.take(index)).reset();
}

// Nothing happens to an empty array.
void removeLastObject(NSMutableArray self, SEL) {
    if (const NSUInteger count = self.count()) self.removeObjectAtIndex(count - 1);
}

// Whether the storage may be changed directly.
bool editsStorage(NSMutableArray array) {
    return isPlain(array)
           || (inheritsArrayPrimitives(array)
               && answersWith(array, "insertObject:atIndex:"_sel, insertObject_atIndex)
               && answersWith(array, "addObject:"_sel, addObject)
               && answersWith(array, "replaceObjectAtIndex:withObject:"_sel, replaceObjectAtIndex_withObject)
               && answersWith(array, "removeObjectAtIndex:"_sel, removeObjectAtIndex)
               && answersWith(array, "removeLastObject"_sel, removeLastObject));
}

// ---- Making

// The capacity is a hint, but one that no memory can follow is an error of the caller's.
NSMutableArray initWithCapacity(NSMutableArray self, SEL selector, NSUInteger capacity) {
    constexpr NSUInteger largest = std::numeric_limits<NSUInteger>::max() / (4 * sizeof(NSObject));
    Retained<NSMutableArray> owned = adopt(self.init());
    if (capacity > largest)
        raiseFrom(NSInvalidArgumentException(), self, selector,
                  "capacity (" + std::to_string(capacity) + ") is too large");
    if (editsStorage(owned)) storageOf(owned).reserve(capacity);
    return owned.leak();
}

id arrayWithCapacity(Class self, SEL, NSUInteger capacity) {
    return adopt(as<NSMutableArray>(self.alloc()).initWithCapacity(capacity)).autorelease();
}

NSArray copyWithZone(NSMutableArray self, SEL, void*) {
    const ArrayItems items(self);
    return newArray(items.data(), items.size()).leak();
}

// ---- Adding and replacing

void addObjectsFromArray(NSMutableArray self, SEL, NSArray other) {
    if (!editsStorage(self)) {
        const Retained<NSArray> items = adopt(other.copy());
        for (const NSObject item : ArrayItems(items)) self.addObject(item);
        return;
    }
    ArrayStorage& storage = storageOf(self);
    if (!other || !hasArrayStorage(other)) {
        for (const NSObject item : ArrayItems(other)) append(storage, item);
        return;
    }
    const ArrayStorage& source = storageOf(other);
    const NSUInteger added = source.count;
    storage.reserve(storage.count + added);
    // Where they are is looked up for each: the array may be added to itself, and an item with a retain of
    // its own may edit either.
    for (NSUInteger index = 0; index < added && index < source.count; ++index)
        append(storage, source.items[index]);
}

void exchangeObjectAtIndex_withObjectAtIndex(NSMutableArray self, SEL selector, NSUInteger first,
                                             NSUInteger second) {
    const NSUInteger count = self.count();
    if (std::max(first, second) >= count) raiseBeyondBounds(self, selector, std::max(first, second), count);
    if (editsStorage(self)) {
        ArrayStorage& storage = storageOf(self);
        std::swap(storage.items[first], storage.items[second]);
        ++storage.mutations;
        return;
    }
    const Retained<NSObject> kept = retain(NSObject(self.objectAtIndex(first)));
    self.replaceObjectAtIndex_withObject(first, self.objectAtIndex(second));
    self.replaceObjectAtIndex_withObject(second, kept);
}

void setArray(NSMutableArray self, SEL, NSArray other) {
    if (self == other) return;
    // The new items may be held by the old ones only.
    const Retained<NSArray> items = adopt(other.copy());
    self.removeAllObjects();
    self.addObjectsFromArray(items);
}

// ---- Removing

void removeObjectsInRange(NSMutableArray self, SEL selector, NSRange range) {
    const NSUInteger count = self.count();
    if (!isWithin(range, count)) raiseBeyondBounds(self, selector, range, count);
    if (range.length == 0) return;
    if (editsStorage(self)) return takeOut(storageOf(self), range);
    for (NSUInteger index = range.location + range.length; index-- > range.location;)
        self.removeObjectAtIndex(index);
}

void removeAllObjects(NSMutableArray self, SEL) { self.removeObjectsInRange({0, self.count()}); }

// Removes the items at indexes that ascend.
void removeIndexes(NSMutableArray self, const std::vector<NSUInteger>& indexes) {
    if (indexes.empty()) return;
    if (!editsStorage(self)) {
        for (auto index = indexes.rbegin(); index != indexes.rend(); ++index)
            self.removeObjectAtIndex(*index);
        return;
    }
    ArrayStorage& storage = storageOf(self);
    std::vector<NSObject> removed;
    removed.reserve(indexes.size());
    NSUInteger target = indexes.front();
    for (NSUInteger index = target; index < storage.count; ++index) {
        if (removed.size() < indexes.size() && indexes[removed.size()] == index)
            removed.push_back(storage.items[index]);
        else
            storage.items[target++] = storage.items[index];
    }
    storage.count = target;
    ++storage.mutations;
    for (const NSObject item : removed) runtime::release(item.object());
}

// Removes the items that a test picks. All are picked before the first goes: the test may send messages, and
// what it looks for may be held by the array alone. A test that changes the array is refused.
template <class Test>
void removeItems(NSMutableArray self, Test&& test) {
    const bool isDirect = hasArrayStorage(self);
    const ArrayStorage& storage = storageOf(self);
    const NSUInteger mutations = storage.mutations;
    const NSUInteger count = self.count();
    std::vector<NSUInteger> indexes;
    for (NSUInteger index = 0; index < count; ++index) {
        if (test(isDirect ? storage.items[index] : NSObject(self.objectAtIndex(index))))
            indexes.push_back(index);
        if (storage.mutations != mutations) runtime::raiseMutation(self.object());
    }
    removeIndexes(self, indexes);
}

void removeObject(NSMutableArray self, SEL, NSObject object) {
    if (!object) return;
    removeItems(self, [&](NSObject item) { return item == object || object.isEqual(item); });
}

void removeObjectIdenticalTo(NSMutableArray self, SEL, NSObject object) {
    if (!object) return;
    removeItems(self, [&](NSObject item) { return item == object; });
}

// Above this number of comparisons it pays to look at all objects first.
constexpr NSUInteger fewComparisons = 64;

bool areFew(const ArrayItems& items, const ArrayItems& others) {
    return others.size() == 0 || items.size() <= fewComparisons / others.size();
}

void removeObjectsInArray(NSMutableArray self, SEL, NSArray other) {
    if (!other) return;
    const Retained<NSArray> removed = adopt(other.copy());
    const ArrayItems removedItems(removed);
    const ArrayItems items(self);
    // Values are found by their hashes, with the same outcome as by comparing each with each.
    if (!areFew(items, removedItems) && std::all_of(removedItems.begin(), removedItems.end(), comparesAsValue)
        && std::all_of(items.begin(), items.end(), comparesAsValue)) {
        EqualityIndex values(removed, nil);
        values.reserveFor(removed);
        values.append(removed);
        return removeItems(self, [&](NSObject item) { return values.contains(item); });
    }
    for (const NSObject object : removedItems) self.removeObject(object);
}

// ---- Sorting

// Sorts a list of the items, which are kept meanwhile, and puts them back in its order.
template <class Sort>
void sortItemsOf(NSMutableArray self, Sort&& sort) {
    const ArrayItems unsorted(self);
    const Retained<NSArray> kept = newArray(unsorted.data(), unsorted.size());
    const ArrayItems keptItems(kept);
    std::vector<NSObject> items(keptItems.begin(), keptItems.end());
    const NSUInteger mutations = storageOf(self).mutations;
    sort(items);
    // Comparing is the items' own code, which might have changed the array.
    if (storageOf(self).mutations != mutations) runtime::raiseMutation(self.object());
    if (!editsStorage(self)) {
        for (NSUInteger index = 0; index < items.size(); ++index)
            self.replaceObjectAtIndex_withObject(index, items[index]);
        return;
    }
    ArrayStorage& storage = storageOf(self);
    // The same items in another order: what the array retains does not change.
    std::copy(items.begin(), items.end(), storage.items);
    ++storage.mutations;
}

void sortUsingSelector(NSMutableArray self, SEL, SEL comparison) {
    sortItemsOf(self, [&](std::vector<NSObject>& items) { sortItems(items, comparison); });
}

void sortUsingDescriptors(NSMutableArray self, SEL, NSArray descriptors) {
    sortItemsOf(self, [&](std::vector<NSObject>& items) { sortItems(items, descriptors); });
}

std::span<NSObject> itemsOfPlainArray(NSMutableArray array) {
    if (!array || !editsStorage(array)) return {};
    ArrayStorage& storage = storageOf(array);
    if (storage.count == 0) return {};
    ++storage.mutations;
    return {storage.items, storage.count};
}

} // namespace

ClassDescription describeNSMutableArray() {
    return {
        .name = "NSMutableArray",
        .superclass = "NSArray",
        .methods = {classMethod("arrayWithCapacity:", arrayWithCapacity),
                    instanceMethod("initWithCapacity:", initWithCapacity),
                    instanceMethod("copyWithZone:", copyWithZone), instanceMethod("addObject:", addObject),
                    instanceMethod("insertObject:atIndex:", insertObject_atIndex),
                    instanceMethod("replaceObjectAtIndex:withObject:", replaceObjectAtIndex_withObject),
                    instanceMethod("removeObjectAtIndex:", removeObjectAtIndex),
                    instanceMethod("removeLastObject", removeLastObject),
                    instanceMethod("addObjectsFromArray:", addObjectsFromArray),
                    instanceMethod("exchangeObjectAtIndex:withObjectAtIndex:",
                                   exchangeObjectAtIndex_withObjectAtIndex),
                    instanceMethod("setArray:", setArray),
                    instanceMethod("removeObjectsInRange:", removeObjectsInRange),
                    instanceMethod("removeAllObjects", removeAllObjects),
                    instanceMethod("removeObject:", removeObject),
                    instanceMethod("removeObjectIdenticalTo:", removeObjectIdenticalTo),
                    instanceMethod("removeObjectsInArray:", removeObjectsInArray),
                    instanceMethod("sortUsingSelector:", sortUsingSelector),
                    instanceMethod("sortUsingDescriptors:", sortUsingDescriptors)},
    };
}

} // namespace tessarin::embedded

namespace tessarin {

std::span<NSObject> itemsToReorder(NSMutableArray array) { return embedded::itemsOfPlainArray(array); }

} // namespace tessarin
