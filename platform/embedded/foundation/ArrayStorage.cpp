#include "platform/embedded/foundation/ArrayStorage.h"

#include "TessarinPlatform/NSException.h"
#include "platform/services/FetchAhead.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>
#include <string>

namespace tessarin::embedded {
namespace {

NSObject* resized(NSObject* buffer, NSUInteger capacity) {
    if (capacity > std::numeric_limits<std::size_t>::max() / sizeof(NSObject)) throw std::bad_alloc();
    // Handles may be moved as bytes, which makes growing a large buffer cheap.
    void* memory = std::realloc(static_cast<void*>(buffer), capacity * sizeof(NSObject));
    if (!memory) throw std::bad_alloc();
    return static_cast<NSObject*>(memory);
}

// What is behind a mutable array stays there when the array outgrows it.
constexpr NSUInteger mostInlineItems = 32;

void copyRetained(const NSObject* items, NSUInteger count, NSObject* target) {
    for (NSUInteger index = 0; index < count; ++index) {
        fetchAheadOf(items, index, count);
        runtime::retain(items[index].object());
        target[index] = items[index];
    }
}

} // namespace

ArrayStorage::~ArrayStorage() {
    if (!isInline) std::free(static_cast<void*>(items));
}

void ArrayStorage::allocate(NSUInteger wanted) {
    if (wanted > capacity) moveItems(wanted);
}

void ArrayStorage::moveItems(NSUInteger newCapacity) {
    NSObject* const buffer = resized(isInline ? nullptr : items, newCapacity);
    if (isInline) std::copy_n(items, count, buffer);
    items = buffer;
    capacity = newCapacity;
    isInline = false;
}

void ArrayStorage::placeInline(void* space, NSUInteger wanted) {
    items = static_cast<NSObject*>(space);
    capacity = wanted;
    isInline = true;
}

void ArrayStorage::fillWithNil(NSUInteger places) {
    std::fill_n(items, places, NSObject());
    count = places;
}

void ArrayStorage::reserve(NSUInteger wanted) {
    if (wanted > capacity) moveItems(std::max({wanted, capacity + capacity / 2, NSUInteger{4}}));
}

void ArrayStorage::insert(NSObject owned, NSUInteger index) {
    reserve(count + 1);
    NSObject* const place = items + index;
    std::move_backward(place, items + count, items + count + 1);
    *place = owned;
    ++count;
    ++mutations;
}

NSObject ArrayStorage::take(NSUInteger index) {
    NSObject* const place = items + index;
    const NSObject taken = *place;
    std::move(place + 1, items + count, place);
    --count;
    ++mutations;
    return taken;
}

ArrayItems::ArrayItems(NSArray array) {
    if (!array) return;
    if (hasArrayStorage(array)) {
        const ArrayStorage& storage = storageOf<ArrayStorage>(array);
        items_ = {storage.items, storage.count};
        return;
    }
    gathered_ = newMutableArray(nullptr, 0);
    ArrayStorage& storage = storageOf<ArrayStorage>(gathered_);
    const NSUInteger count = array.count();
    for (NSUInteger index = 0; index < count; ++index) {
        const NSObject item = array.objectAtIndex(index);
        if (!item) raiseItemIsNil(array, index);
        storage.insert(retain(item).leak(), index);
    }
    items_ = {storage.items, storage.count};
}

Retained<NSArray> newArrayWithRoom(NSUInteger count) {
    if (count > std::numeric_limits<std::size_t>::max() / (2 * sizeof(NSObject))) throw std::bad_alloc();
    const auto [array, storage, space] =
        createInstanceWith<ArrayStorage>("NSArray"_class, count * sizeof(NSObject));
    storage.placeInline(space, count);
    return adopt(NSArray(array));
}

Retained<NSArray> newArray(const NSObject* items, NSUInteger count) {
    Retained<NSArray> array = newArrayWithRoom(count);
    ArrayStorage& storage = storageOf<ArrayStorage>(array);
    copyRetained(items, count, storage.items);
    storage.count = count;
    return array;
}

Retained<NSMutableArray> newMutableArrayWithRoom(NSUInteger count) {
    const bool isInline = count <= mostInlineItems;
    const auto [object, storage, space] =
        createInstanceWith<ArrayStorage>("NSMutableArray"_class, isInline ? count * sizeof(NSObject) : 0);
    Retained<NSMutableArray> array = adopt(NSMutableArray(object));
    if (isInline)
        storage.placeInline(space, count);
    else
        storage.allocate(count);
    return array;
}

Retained<NSMutableArray> newMutableArray(const NSObject* items, NSUInteger count) {
    Retained<NSMutableArray> array = newMutableArrayWithRoom(count);
    ArrayStorage& storage = storageOf<ArrayStorage>(array);
    copyRetained(items, count, storage.items);
    storage.count = count;
    return array;
}

void raiseItemIsNil(NSArray array, NSUInteger index) {
    raiseFrom(NSInvalidArgumentException(), array, "objectAtIndex:"_sel,
              "nil instead of an object at index " + std::to_string(index));
}

std::string boundsText(NSUInteger count) {
    return count == 0 ? "bounds for empty array" : "bounds [0 .. " + std::to_string(count - 1) + "]";
}

void raiseBeyondBounds(NSObject array, SEL selector, NSUInteger index, NSUInteger count) {
    raiseFrom(NSRangeException(), array, selector,
              "index " + std::to_string(index) + " beyond " + boundsText(count));
}

void raiseBeyondBounds(NSObject array, SEL selector, NSRange range, NSUInteger count) {
    raiseFrom(NSRangeException(), array, selector,
              "range {" + std::to_string(range.location) + ", " + std::to_string(range.length)
                  + "} extends beyond " + boundsText(count));
}

} // namespace tessarin::embedded
