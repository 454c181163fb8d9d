#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/ContainerDescription.h"
#include "platform/embedded/foundation/ContainerEquality.h"
#include "platform/embedded/foundation/DescriptorSorting.h"
#include "platform/embedded/foundation/Enumerators.h"
#include "platform/embedded/foundation/ItemSorting.h"
#include "platform/embedded/foundation/KeyedCoding.h"
#include "platform/embedded/foundation/NSObject+KeyValueCoding.h"
#include "platform/services/FetchAhead.h"

#include "TessarinPlatform/NSException.h"
#include "TessarinPlatform/NSMutableString.h"

#include <algorithm>
#include <cstdarg>
#include <string>

namespace tessarin::embedded {
namespace {

ArrayStorage& storageOf(NSArray array) { return embedded::storageOf<ArrayStorage>(array); }

id objectAtIndex(NSArray self, SEL selector, NSUInteger index) {
    const ArrayStorage& storage = storageOf(self);
    if (index >= storage.count) [[unlikely]]
        raiseBeyondBounds(self, selector, index, storage.count);
    return storage.items[index];
}

// The items of a list of arguments that ends with nil.
std::vector<NSObject> itemsOfList(NSObject first, std::va_list further) {
    std::vector<NSObject> items;
    for (NSObject item = first; item; item = NSObject(va_arg(further, Object*))) items.push_back(item);
    return items;
}

// ---- Making

// Whether all are there, so that an array can be made without asking an initialiser.
bool noneIsNil(const NSObject* objects, NSUInteger count) {
    return std::all_of(objects, objects + count, [](NSObject object) { return static_cast<bool>(object); });
}

// An autoreleased array of the receiving class. A subclass is asked through its initialiser, as is the class
// itself for what an initialiser refuses.
id makeArrayOf(Class self, const NSObject* objects, NSUInteger count) {
    if (self == NSArray::classObject() && noneIsNil(objects, count))
        return newArray(objects, count).autorelease();
    if (self == NSMutableArray::classObject() && noneIsNil(objects, count))
        return newMutableArray(objects, count).autorelease();
    return adopt(as<NSArray>(self.alloc()).initWithObjects_count(objects, count)).autorelease();
}

id array(Class self, SEL) { return makeArrayOf(self, nullptr, 0); }

id arrayWithObject(Class self, SEL, NSObject object) { return makeArrayOf(self, &object, 1); }

id arrayWithObjects_count(Class self, SEL, const NSObject* objects, NSUInteger count) {
    return makeArrayOf(self, objects, count);
}

id arrayWithObjects(Class self, SEL, NSObject first, ...) {
    std::va_list further;
    va_start(further, first);
    const std::vector<NSObject> items = itemsOfList(first, further);
    va_end(further);
    return makeArrayOf(self, items.data(), items.size());
}

id arrayWithArray(Class self, SEL, NSArray other) {
    const Object* immutable = NSArray::classObject().object();
    // An array that nobody can change is its own copy.
    if (self.object() == immutable && other && runtime::classOf(other.object()) == immutable)
        return retain(other).autorelease();
    const ArrayItems items(other);
    return makeArrayOf(self, items.data(), items.size());
}

NSArray initWithArray_copyItems(NSArray self, SEL, NSArray other, BOOL copyItems) {
    Retained<NSArray> owned = adopt(self);
    if (copyItems == NO) {
        const ArrayItems items(other);
        return NSArray(owned.leak()).initWithObjects_count(items.data(), items.size());
    }
    // Copying is the items' own code, which might change the array.
    const Retained<NSArray> originals = adopt(other.copy());
    std::vector<Retained<NSObject>> copies;
    for (const NSObject item : ArrayItems(originals))
        copies.push_back(adopt(static_cast<NSObject>(item.copy())));
    const std::vector<NSObject> items(copies.begin(), copies.end());
    return NSArray(owned.leak()).initWithObjects_count(items.data(), items.size());
}

NSArray initWithArray(NSArray self, SEL selector, NSArray other) {
    return initWithArray_copyItems(self, selector, other, NO);
}

NSArray initWithObjects(NSArray self, SEL, NSObject first, ...) {
    std::va_list further;
    va_start(further, first);
    const std::vector<NSObject> items = itemsOfList(first, further);
    va_end(further);
    return self.initWithObjects_count(items.data(), items.size());
}

void dealloc(NSArray self, SEL) {
    const ArrayStorage& storage = storageOf(self);
    for (NSUInteger index = 0; index < storage.count; ++index) {
        fetchAheadOf(storage.items, index, storage.count);
        runtime::release(storage.items[index].object());
    }
    sendSuper<void>(self, NSArray::classObject(), "dealloc"_sel);
}

// ---- Copying

// A mutable array answers copyWithZone: itself; every other array cannot change.
NSArray copyWithZone(NSArray self, SEL, void*) { return retain(self).leak(); }

NSMutableArray mutableCopyWithZone(NSArray self, SEL, void*) {
    const ArrayItems items(self);
    return newMutableArray(items.data(), items.size()).leak();
}

// ---- Archiving

Class classForCoder(NSArray self, SEL) {
    const Class mutableClass = NSMutableArray::classObject();
    return self.isKindOfClass(mutableClass) ? mutableClass : NSArray::classObject();
}

void encodeWithCoder(NSArray self, SEL, NSCoder coder) {
    // Encoding is the items' own code, which might change the array.
    const Retained<NSArray> originals = adopt(self.copy());
    const ArrayItems items(originals);
    encodeItems(coder, {items.data(), items.size()}, objectsOfContainer());
}

NSArray initWithCoder(NSArray self, SEL selector, NSCoder coder) {
    Retained<NSArray> owned = adopt(self);
    const std::vector<NSObject> items = decodeItems(coder, objectsOfContainer());
    // An item that refers back to the array might have put something into it.
    if (self.count() > 0)
        raiseFrom(NSInvalidUnarchiveOperationException(), self, selector, "the array was changed meanwhile");
    return NSArray(owned.leak()).initWithObjects_count(items.data(), items.size());
}

// ---- Reading

id firstObject(NSArray self, SEL) { return self.count() > 0 ? self.objectAtIndex(0) : id(); }

id lastObject(NSArray self, SEL) {
    const NSUInteger count = self.count();
    return count > 0 ? self.objectAtIndex(count - 1) : id();
}

void getObjects_range(NSArray self, SEL selector, NSObject* objects, NSRange range) {
    const ArrayItems items(self);
    if (!isWithin(range, items.size())) raiseBeyondBounds(self, selector, range, items.size());
    std::copy_n(items.begin() + range.location, range.length, objects);
}

NSUInteger indexOfObjectIdenticalTo(NSArray self, SEL, NSObject object) {
    const ArrayItems items(self);
    const NSObject* found = object ? std::find(items.begin(), items.end(), object) : items.end();
    return found == items.end() ? static_cast<NSUInteger>(NSNotFound)
                                : static_cast<NSUInteger>(found - items.begin());
}

NSUInteger indexOfObject(NSArray self, SEL, NSObject object) {
    if (!object) return static_cast<NSUInteger>(NSNotFound);
    const bool isDirect = hasArrayStorage(self);
    // The count is read again each time, since isEqual: is the objects' own code, which might change the
    // array.
    for (NSUInteger index = 0; index < (isDirect ? storageOf(self).count : self.count()); ++index) {
        const NSObject item = isDirect ? storageOf(self).items[index] : NSObject(self.objectAtIndex(index));
        // An object that does not equal itself is found all the same.
        if (item == object || object.isEqual(item)) return index;
    }
    return static_cast<NSUInteger>(NSNotFound);
}

BOOL containsObject(NSArray self, SEL, NSObject object) {
    return self.indexOfObject(object) != static_cast<NSUInteger>(NSNotFound) ? YES : NO;
}

BOOL isEqualToArray(NSArray self, SEL selector, NSArray other) { return arrayIsEqual(self, selector, other); }

// All that equal arrays are sure to have in common without asking every item, and what the platform answers.
NSUInteger hash(NSArray self, SEL) { return self.count(); }

// ---- Walking

NSUInteger countByEnumerating(NSArray self, SEL, NSFastEnumerationState* state, NSObject* buffer,
                              NSUInteger capacity) {
    ArrayStorage& storage = storageOf(self);
    state->mutationsPtr = &storage.mutations;
    const NSUInteger position = state->state;
    if (hasArrayStorage(self)) {
        // All in one batch, where they are.
        if (position >= storage.count) return 0;
        state->itemsPtr = storage.items + position;
        state->state = storage.count;
        return storage.count - position;
    }
    // One by one, since only the array knows how long it keeps what it answers, and what goes with a change.
    const NSUInteger count = self.count();
    if (position == 0) state->extra[0] = count;
    if (state->extra[0] != count) runtime::raiseMutation(self.object());
    if (position == count || capacity == 0) return 0;
    buffer[0] = retain(NSObject(self.objectAtIndex(position))).autorelease();
    state->itemsPtr = buffer;
    state->state = position + 1;
    return 1;
}

NSObject objectEnumerator(NSArray self, SEL) { return makeArrayEnumerator(self, false); }
NSObject reverseObjectEnumerator(NSArray self, SEL) { return makeArrayEnumerator(self, true); }

// Over a copy, since the message might change the array.
void makeObjectsPerformSelector(NSArray self, SEL, SEL message) {
    const Retained<NSArray> items = adopt(self.copy());
    for (const NSObject item : ArrayItems(items)) {
        requireSelector(item, message);
        send<id>(item, message);
    }
}
void makeObjectsPerformSelector_withObject(NSArray self, SEL, SEL message, NSObject argument) {
    const Retained<NSArray> items = adopt(self.copy());
    for (const NSObject item : ArrayItems(items)) {
        requireSelector(item, message);
        send<id>(item, message, argument);
    }
}

// ---- Arrays made of arrays

NSArray subarrayWithRange(NSArray self, SEL selector, NSRange range) {
    const ArrayItems items(self);
    if (!isWithin(range, items.size())) raiseBeyondBounds(self, selector, range, items.size());
    return newArray(items.data() + range.location, range.length).autorelease();
}

NSArray joined(const ArrayItems& items, std::span<const NSObject> further) {
    std::vector<NSObject> all;
    all.reserve(items.size() + further.size());
    all.assign(items.begin(), items.end());
    all.insert(all.end(), further.begin(), further.end());
    return makeArray(all);
}

NSArray arrayByAddingObject(NSArray self, SEL selector, NSObject object) {
    if (!object) raiseFrom(NSInvalidArgumentException(), self, selector, "object cannot be nil");
    return joined(ArrayItems(self), {&object, 1});
}

// Gathering the items of an application's array is its own code, which may edit the other array; that one is
// looked at afterwards.
NSArray arrayByAddingObjectsFromArray(NSArray self, SEL, NSArray other) {
    if (hasArrayStorage(self)) {
        const ArrayItems further(other);
        return joined(ArrayItems(self), {further.data(), further.size()});
    }
    const ArrayItems items(self);
    const ArrayItems further(other);
    return joined(items, {further.data(), further.size()});
}

template <class How>
NSArray sortedArray(NSArray array, How how) {
    const Retained<NSArray> kept = adopt(NSArray(array.copy())); // the items compare by code of their own
    const ArrayItems items(kept);
    std::vector<NSObject> sorted(items.begin(), items.end());
    sortItems(sorted, how);
    return makeArray(sorted);
}
NSArray sortedArrayUsingSelector(NSArray self, SEL, SEL comparison) { return sortedArray(self, comparison); }
NSArray sortedArrayUsingDescriptors(NSArray self, SEL, NSArray descriptors) {
    return sortedArray(self, descriptors);
}

NSString componentsJoinedByString(NSArray self, SEL, NSString separator) {
    const Retained<NSArray> items = adopt(self.copy());
    const Retained<NSMutableString> joined = adopt(NSMutableString::alloc().init());
    bool isFirst = true;
    for (const NSObject item : ArrayItems(items)) {
        if (!isFirst && separator) joined.appendString(separator);
        isFirst = false;
        // Every string is its own description.
        if (const NSString text = item.description()) joined.appendString(text);
    }
    return adopt(as<NSString>(joined.copy())).autorelease();
}

} // namespace

NSUInteger countOfArray(NSArray self, SEL) { return storageOf(self).count; }

NSArray initArrayWithObjectsCount(NSArray self, SEL selector, const NSObject* objects, NSUInteger count) {
    Retained<NSArray> owned = adopt(self);
    for (NSUInteger index = 0; index < count; ++index) {
        if (!objects[index]) [[unlikely]]
            raiseFrom(NSInvalidArgumentException(), self, selector,
                      "attempt to insert nil object from objects[" + std::to_string(index) + "]");
    }
    ArrayStorage& storage = storageOf(self);
    storage.allocate(count);
    for (; storage.count < count; ++storage.count) {
        runtime::retain(objects[storage.count].object());
        storage.items[storage.count] = objects[storage.count];
    }
    return owned.leak();
}

bool inheritsArrayPrimitives(NSObject object) {
    return answersWith(object, "count"_sel, countOfArray)
           && answersWith(object, "objectAtIndex:"_sel, objectAtIndex);
}

ClassDescription describeNSArray() {
    ClassDescription description{
        .name = "NSArray",
        .superclass = "NSObject",
        .protocols = {"NSCoding", "NSCopying", "NSMutableCopying", "NSFastEnumeration"},
        .storage = storageLayout<ArrayStorage>(),
        .methods = {classMethod("array", array),
                    classMethod("arrayWithObject:", arrayWithObject),
                    classMethod("arrayWithObjects:", arrayWithObjects),
                    classMethod("arrayWithObjects:count:", arrayWithObjects_count),
                    classMethod("arrayWithArray:", arrayWithArray),
                    instanceMethod("initWithObjects:count:", initArrayWithObjectsCount),
                    instanceMethod("initWithObjects:", initWithObjects),
                    instanceMethod("initWithArray:", initWithArray),
                    instanceMethod("initWithArray:copyItems:", initWithArray_copyItems),
                    instanceMethod("dealloc", dealloc),
                    instanceMethod("copyWithZone:", copyWithZone),
                    instanceMethod("mutableCopyWithZone:", mutableCopyWithZone),
                    instanceMethod("classForCoder", classForCoder),
                    instanceMethod("encodeWithCoder:", encodeWithCoder),
                    instanceMethod("initWithCoder:", initWithCoder),
                    instanceMethod("count", countOfArray),
                    instanceMethod("objectAtIndex:", objectAtIndex),
                    instanceMethod("firstObject", firstObject),
                    instanceMethod("lastObject", lastObject),
                    instanceMethod("getObjects:range:", getObjects_range),
                    instanceMethod("indexOfObjectIdenticalTo:", indexOfObjectIdenticalTo),
                    instanceMethod("indexOfObject:", indexOfObject),
                    instanceMethod("containsObject:", containsObject),
                    instanceMethod("isEqualToArray:", isEqualToArray),
                    instanceMethod("isEqual:", arrayIsEqual),
                    instanceMethod("hash", hash),
                    instanceMethod("description", arrayDescription),
                    instanceMethod("countByEnumeratingWithState:objects:count:", countByEnumerating),
                    instanceMethod("valueForKey:", valueForKeyOfItems),
                    instanceMethod("setValue:forKey:", setValueForKeyOfItems),
                    instanceMethod("objectEnumerator", objectEnumerator),
                    instanceMethod("reverseObjectEnumerator", reverseObjectEnumerator),
                    instanceMethod("makeObjectsPerformSelector:", makeObjectsPerformSelector),
                    instanceMethod("makeObjectsPerformSelector:withObject:",
                                   makeObjectsPerformSelector_withObject),
                    instanceMethod("subarrayWithRange:", subarrayWithRange),
                    instanceMethod("arrayByAddingObject:", arrayByAddingObject),
                    instanceMethod("arrayByAddingObjectsFromArray:", arrayByAddingObjectsFromArray),
                    instanceMethod("sortedArrayUsingSelector:", sortedArrayUsingSelector),
                    instanceMethod("sortedArrayUsingDescriptors:", sortedArrayUsingDescriptors),
                    instanceMethod("componentsJoinedByString:", componentsJoinedByString)},
    };
    for (const MethodRow& row : arrayEnumerationMethods()) description.methods.push_back(row);
    return description;
}

} // namespace tessarin::embedded
