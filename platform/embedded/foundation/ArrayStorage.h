// How the embedded platform's arrays keep their items, and what its other classes need of arrays.
#pragma once

#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/foundation/RangeCheck.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <span>
#include <string>
#include <vector>

namespace tessarin::embedded {

// What an array object keeps. The items are retained; the array's dealloc releases them.
struct ArrayStorage {
    ArrayStorage() = default;
    ArrayStorage(const ArrayStorage&) = delete;
    ArrayStorage& operator=(const ArrayStorage&) = delete;
    ~ArrayStorage();

    // Makes room for at least that many items, with room to spare for growing one by one.
    void reserve(NSUInteger wanted);
    // Makes room for exactly that many in an array that has none.
    void allocate(NSUInteger wanted);
    // The same, the room being behind the object.
    void placeInline(void* space, NSUInteger wanted);
    // Puts nil in every place of an array that is empty and has room for as many, to be replaced by the
    // caller before anybody sees the array.
    void fillWithNil(NSUInteger places);
    // Puts an object at an index within bounds, taking over a reference to it.
    void insert(NSObject owned, NSUInteger index);
    // Takes out the object at an index within bounds, handing its reference to the caller.
    NSObject take(NSUInteger index);

    NSObject* items = nullptr;
    NSUInteger count = 0;
    NSUInteger capacity = 0;
    NSUInteger mutations = 0;
    bool isInline = false; // whether the items stand behind the object

private:
    // Into a buffer of that capacity, which all of them fit into.
    void moveItems(NSUInteger newCapacity);
};

// Whether an object is an array that no subclass has taken the primitive operations, count and
// objectAtIndex:, from. Then its storage may be read.
bool inheritsArrayPrimitives(NSObject object);
inline bool hasArrayStorage(NSObject object) {
    const Object* classObject = object.object()->isa;
    return classObject == "NSArray"_class.object() || classObject == "NSMutableArray"_class.object()
           || inheritsArrayPrimitives(object);
}

// The items of any array; nil is empty. Those of an array with storage of its own are looked at where they
// are, valid until the array is changed or goes: no message that may do so is sent while they are in use.
// What any other array answers is gathered and kept, since nobody else may keep it; nil raises.
class ArrayItems {
public:
    explicit ArrayItems(NSArray array);

    const NSObject* data() const { return items_.data(); }
    NSUInteger size() const { return items_.size(); }
    const NSObject* begin() const { return data(); }
    const NSObject* end() const { return data() + size(); }
    NSObject operator[](NSUInteger index) const { return items_[index]; }

private:
    Retained<NSArray> gathered_;
    std::span<const NSObject> items_;
};

// A new array without items, with room behind it for as many as it will ever have.
Retained<NSArray> newArrayWithRoom(NSUInteger count);
// A new mutable array without items that has room for as many, behind it where they are few.
Retained<NSMutableArray> newMutableArrayWithRoom(NSUInteger count);
// New arrays of items that are not nil, retained by the array.
Retained<NSArray> newArray(const NSObject* items, NSUInteger count);
Retained<NSMutableArray> newMutableArray(const NSObject* items, NSUInteger count);
inline NSArray makeArray(std::span<const NSObject> items) {
    return newArray(items.data(), items.size()).autorelease();
}
// A new array of items that are made for it: newItem(index) answers each, owned and not nil.
template <class NewItem>
Retained<NSArray> newArrayOfNew(NSUInteger count, NewItem&& newItem) {
    Retained<NSArray> array = newArrayWithRoom(count);
    ArrayStorage& storage = storageOf<ArrayStorage>(array);
    for (; storage.count < count; ++storage.count)
        storage.items[storage.count] = newItem(storage.count).leak();
    return array;
}

// Raises NSInvalidArgumentException for an array that answers nil for an item, which no array may.
[[noreturn]] void raiseItemIsNil(NSArray array, NSUInteger index);
// How the platform's exceptions name the bounds of an array with `count` items.
std::string boundsText(NSUInteger count);
// Raises NSRangeException, in the platform's wording, for an index or a range of an array with `count` items.
[[noreturn]] void raiseBeyondBounds(NSObject array, SEL selector, NSUInteger index, NSUInteger count);
[[noreturn]] void raiseBeyondBounds(NSObject array, SEL selector, NSRange range, NSUInteger count);

// NSArray's own count and init, and what NSMutableArray shares with it.
NSUInteger countOfArray(NSArray self, SEL);
NSArray initArrayWithObjectsCount(NSArray self, SEL selector, const NSObject* objects, NSUInteger count);

// Rows of NSArray's table: what takes blocks and index sets.
std::vector<MethodRow> arrayEnumerationMethods();

} // namespace tessarin::embedded
