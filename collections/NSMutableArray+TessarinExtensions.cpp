// Mutable arrays: edits in place.
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"

#include "TessarinPlatform/ArrayEditing.h"
#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/EqualityIndex.h"
#include "TessarinPlatform/RandomNumbers.h"

#include <algorithm>
#include <span>

using namespace tessarin;

namespace {

// The items are copied whatever the flag says, which is meant.
void setArray_copyItems(NSMutableArray self, SEL, NSArray array, BOOL) {
    const Retained<NSArray> kept = retain(array); // the receiver may be its only owner
    self.removeAllObjects();
    for (const NSObject item : array) self.addObject(adopt(NSObject(item.copy())));
}

void removeFirstObject(NSMutableArray self, SEL) {
    if (self.count() > 0) self.removeObjectAtIndex(0);
}

void removeLastObject(NSMutableArray self, SEL) {
    if (const NSUInteger count = self.count(); count > 0) self.removeObjectAtIndex(count - 1);
}

// The item at `from` ends at `to`.
void moveItem(std::span<NSObject> items, NSUInteger from, NSUInteger to) {
    const NSObject moved = items[from];
    if (from < to)
        std::copy(&items[from] + 1, &items[to] + 1, &items[from]);
    else
        std::copy_backward(&items[to], &items[from], &items[from] + 1);
    items[to] = moved;
}

void moveObjectFromIndex_toIndex(NSMutableArray self, SEL, NSUInteger from, NSUInteger to) {
    if (from == to) return;
    const NSUInteger count = self.count();
    if (from >= count || to >= count) return;
    if (const std::span items = itemsToReorder(self); !items.empty()) return moveItem(items, from, to);
    // Inserted first, so that the array holds the object throughout.
    self.insertObject_atIndex(self.objectAtIndex(from), from < to ? to + 1 : to);
    self.removeObjectAtIndex(from > to ? from + 1 : from);
}

void mergeWithArray(NSMutableArray self, SEL, NSArray array) {
    EqualityIndex contained(self, array);
    contained.reserveFor(self, array);
    contained.append(self);
    contained.appendMissing(array, [&](NSObject item) { self.addObject(item); });
}

// Exchanges each object in order with one that is not before it. The plain remainder of the draw is meant,
// and so is the exchange of the last object with itself.
template <class Exchange>
void exchangeAtRandom(NSUInteger count, Exchange&& exchange) {
    const RandomDraws draw;
    for (NSUInteger index = 0; index < count; ++index) {
        const auto left = static_cast<std::uint32_t>(count - index); // 0 stands for 2 to the power of 32
        exchange(index, index + (left > 0 ? draw() % left : draw()));
    }
}

void shuffle(NSMutableArray self, SEL) {
    if (const std::span items = itemsToReorder(self); !items.empty())
        return exchangeAtRandom(items.size(), [&](NSUInteger first, NSUInteger second) {
            std::swap(items[first], items[second]);
        });
    exchangeAtRandom(self.count(), [&](NSUInteger first, NSUInteger second) {
        self.exchangeObjectAtIndex_withObjectAtIndex(first, second);
    });
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
