// Mutable arrays: edits in place.
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/RandomNumbers.h"
#include "collections/EqualityIndex.h"

using namespace tessarin;

namespace {

// The items are copied whatever the flag says, which is meant.
void setArray_copyItems(NSMutableArray self, SEL, NSArray array, BOOL) {
    self.removeAllObjects();
    for (const NSObject item : array) self.addObject(adopt(NSObject(item.copy())));
}

void removeFirstObject(NSMutableArray self, SEL) {
    if (self.count() > 0) self.removeObjectAtIndex(0);
}

void removeLastObject(NSMutableArray self, SEL) {
    if (const NSUInteger count = self.count(); count > 0) self.removeObjectAtIndex(count - 1);
}

void moveObjectFromIndex_toIndex(NSMutableArray self, SEL, NSUInteger from, NSUInteger to) {
    if (from == to) return;
    const NSUInteger count = self.count();
    if (from >= count || to >= count) return;
    // Inserted first, so that the array holds the object throughout.
    self.insertObject_atIndex(self.objectAtIndex(from), from < to ? to + 1 : to);
    self.removeObjectAtIndex(from > to ? from + 1 : from);
}

void mergeWithArray(NSMutableArray self, SEL, NSArray array) {
    // Comparing is the objects' own code: what is compared with must outlast it.
    const Retained<NSArray> present = adopt(NSArray(self.copy()));
    collections::EqualityIndex contained;
    for (const NSObject item : present) contained.append(item);
    for (const NSObject item : array) {
        if (contained.contains(item)) continue;
        self.addObject(item);
        contained.append(item);
    }
}

void shuffle(NSMutableArray self, SEL) {
    const NSUInteger count = self.count();
    for (NSUInteger index = 0; index < count; ++index) {
        // The plain remainder is meant, and so is the exchange of the last object with itself.
        const auto left = static_cast<std::uint32_t>(count - index);
        self.exchangeObjectAtIndex_withObjectAtIndex(index, index + tessarin::arc4random() % left);
    }
}

const ExtensionGroup group{
    "NSMutableArray",
    "TessarinExtensions",
    {instanceMethod("tessarin_setArray:copyItems:", setArray_copyItems),
     instanceMethod("tessarin_removeFirstObject", removeFirstObject),
     instanceMethod("tessarin_removeLastObject", removeLastObject),
     instanceMethod("tessarin_moveObjectFromIndex:toIndex:", moveObjectFromIndex_toIndex),
     instanceMethod("tessarin_mergeWithArray:", mergeWithArray),
     instanceMethod("tessarin_shuffle", shuffle)}};

} // namespace

void tessarin_setArray_copyItems(NSMutableArray receiver, NSArray array, bool copyItems) {
    send<void>(receiver, "tessarin_setArray:copyItems:"_sel, array, static_cast<BOOL>(copyItems));
}

void tessarin_removeFirstObject(NSMutableArray receiver) {
    send<void>(receiver, "tessarin_removeFirstObject"_sel);
}

void tessarin_removeLastObject(NSMutableArray receiver) {
    send<void>(receiver, "tessarin_removeLastObject"_sel);
}

void tessarin_moveObjectFromIndex_toIndex(NSMutableArray receiver, NSUInteger from, NSUInteger to) {
    send<void>(receiver, "tessarin_moveObjectFromIndex:toIndex:"_sel, from, to);
}

void tessarin_mergeWithArray(NSMutableArray receiver, NSArray array) {
    send<void>(receiver, "tessarin_mergeWithArray:"_sel, array);
}

void tessarin_shuffle(NSMutableArray receiver) { send<void>(receiver, "tessarin_shuffle"_sel); }
