// Arrays: merging, removal and filtering into new arrays, safe access, and searches.
#include "TessarinFoundation/NSArray+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/EqualityIndex.h"
#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/NSBundle.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableIndexSet.h"
#include "TessarinPlatform/ValueComparison.h"

#include <algorithm>
#include <span>
#include <vector>

using namespace tessarin;

namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

using Predicate = Block<BOOL(id, NSUInteger, BOOL*)>;

// The items are copied whatever the flag says, which is meant.
id arrayWithArray_copyItems(Class self, SEL, NSArray array, BOOL) {
    return adopt(as<NSArray>(self.alloc()).initWithArray_copyItems(array, true)).autorelease();
}

NSArray immutableCopy(NSArray array) { return adopt(NSArray(array.copy())).autorelease(); }

NSArray arrayOf(std::span<const NSObject> objects) {
    return NSArray::arrayWithObjects_count(objects.data(), objects.size());
}

NSArray arrayByMergingWithArray_receiverFirst(NSArray self, SEL, NSArray array, BOOL receiverFirst) {
    const NSArray base = receiverFirst != NO ? self : array;
    const NSArray added = receiverFirst != NO ? array : self;
    EqualityIndex merged(base, added);
    merged.reserveFor(base, added);
    merged.append(base);
    merged.appendMissing(added);
    return arrayOf(merged.objects());
}

NSArray arrayByRemovingObject(NSArray self, SEL, NSObject object) {
    if (!object || self.indexOfObject(object) == notFound) return self;
    const Retained<NSMutableArray> remaining = adopt(NSMutableArray(self.mutableCopy()));
    remaining.removeObject(object);
    return immutableCopy(remaining);
}

NSArray arrayByRemovingObjectIdenticalTo(NSArray self, SEL, NSObject object) {
    if (!object || self.indexOfObjectIdenticalTo(object) == notFound) return self;
    const Retained<NSMutableArray> remaining = adopt(NSMutableArray(self.mutableCopy()));
    remaining.removeObjectIdenticalTo(object);
    return immutableCopy(remaining);
}

NSArray arrayWithObjectsPassingTest_options(NSArray self, SEL, Predicate predicate,
                                            NSEnumerationOptions options) {
    if (!predicate) return nil;
    return self.objectsAtIndexes(self.indexesOfObjectsWithOptions_passingTest(options, predicate));
}

// Above this number of comparisons it pays to look at all objects of an array first.
constexpr NSUInteger fewComparisons = 32;

bool takesFewComparisons(NSUInteger searches, NSUInteger count) {
    return count == 0 || searches <= fewComparisons / count;
}

NSArray arrayByRemovingObjectsInArray(NSArray self, SEL, NSArray array) {
    if (takesFewComparisons(array.count(), self.count()) || !searchesByEquality(self)) {
        const Retained<NSMutableArray> remaining = adopt(NSMutableArray(self.mutableCopy()));
        remaining.removeObjectsInArray(array);
        return immutableCopy(remaining);
    }
    // Comparing may be the items' own code: what is walked is what nobody can change.
    const Retained<NSArray> items = adopt(NSArray(self.copy()));
    EqualityIndex removed(items, array, EqualityIndex::Asked::appended);
    removed.reserveFor(array);
    removed.append(array);
    std::vector<NSObject> remaining;
    remaining.reserve(items.count());
    removed.findEach(items, [&](NSObject item, NSUInteger position) {
        if (position == notFound) remaining.push_back(item);
    });
    return arrayOf(remaining);
}

id penultimeteObject(NSArray self, SEL) {
    const NSUInteger count = self.count();
    return count < 2 ? id() : self.objectAtIndex(count - 2);
}

id firstObject(NSArray self, SEL) { return self.count() == 0 ? id() : self.objectAtIndex(0); }

BOOL containsObjectIdenticalTo(NSArray self, SEL, NSObject object) {
    return self.indexOfObjectIdenticalTo(object) != notFound ? YES : NO;
}

id objectWithValue_forKeyPath(NSArray self, SEL, NSObject value, NSString keyPath) {
    for (const NSObject item : self) {
        Retained<NSObject> kept = retain(item); // asking and comparing may be code that changes the array
        const NSObject itemValue = item.valueForKeyPath(keyPath);
        if (value && itemValue.isEqual(value)) return kept.autorelease();
    }
    return nil;
}

// The looked-up text is a format, so that its %% is a percent sign.
[[noreturn]] void raiseNotContained(NSArray receiver) {
    const NSString key = "One or more of passed objects is not contained in receiver."_ns;
    const NSString text =
        NSBundle::bundleForClass(receiver.class_()).localizedStringForKey_value_table(key, ""_ns, nil);
    raise(NSInternalInconsistencyException(), NSString::stringWithFormat(text ? text : key));
}

void addRuns(NSMutableIndexSet set, const std::vector<bool>& isMember) {
    const auto end = isMember.end();
    for (auto run = std::find(isMember.begin(), end, true); run != end;) {
        const auto runEnd = std::find(run, end, false);
        const auto first = static_cast<NSUInteger>(run - isMember.begin());
        const auto length = static_cast<NSUInteger>(runEnd - run);
        if (length == 1)
            set.addIndex(first);
        else
            set.addIndexesInRange({first, length});
        run = std::find(runEnd, end, true);
    }
}

void addIndexesOneByOne(NSMutableIndexSet indexes, NSArray receiver, NSArray array) {
    for (const NSObject object : array) {
        const NSUInteger index = receiver.indexOfObject(object);
        if (index == notFound) raiseNotContained(receiver);
        indexes.addIndex(index);
    }
}

void addIndexesByEquality(NSMutableIndexSet indexes, NSArray receiver, NSArray array) {
    EqualityIndex positions(receiver, array);
    positions.reserveFor(receiver);
    positions.append(receiver);
    // Many are gathered first, since the index sets of some platforms take long for indexes that do not
    // ascend.
    const NSUInteger count = positions.objects().size();
    std::vector<bool> isFound(count > fewComparisons ? count : 0);
    const auto add = [&](NSObject, NSUInteger index) {
        if (index == notFound) raiseNotContained(receiver);
        if (index < isFound.size())
            isFound[index] = true;
        else
            indexes.addIndex(index);
    };
    positions.findEach(array, add, [&](NSObject object) { return receiver.indexOfObject(object); });
    addRuns(indexes, isFound);
}

NSIndexSet indexesOfObjectsInArray(NSArray self, SEL, NSArray array) {
    const Retained<NSMutableIndexSet> indexes = adopt(NSMutableIndexSet::alloc().init());
    if (takesFewComparisons(array.count(), self.count()) || !searchesByEquality(self))
        addIndexesOneByOne(indexes, self, array);
    else
        addIndexesByEquality(indexes, self, array);
    return adopt(NSIndexSet(indexes.copy())).autorelease();
}

const ExtensionGroup group{
    "NSArray",
    "TessarinExtensions",
    {classMethod("tessarin_arrayWithArray:copyItems:", arrayWithArray_copyItems),
     instanceMethod("tessarin_arrayByMergingWithArray:receiverFirst:", arrayByMergingWithArray_receiverFirst),
     instanceMethod("tessarin_arrayByRemovingObject:", arrayByRemovingObject),
     instanceMethod("tessarin_arrayByRemovingObjectIdenticalTo:", arrayByRemovingObjectIdenticalTo),
     instanceMethod("tessarin_arrayWithObjectsPassingTest:options:", arrayWithObjectsPassingTest_options),
     instanceMethod("tessarin_arrayByRemovingObjectsInArray:", arrayByRemovingObjectsInArray),
     instanceMethod("tessarin_penultimeteObject", penultimeteObject),
     instanceMethod("tessarin_firstObject", firstObject),
     instanceMethod("tessarin_containsObjectIdenticalTo:", containsObjectIdenticalTo),
     instanceMethod("tessarin_objectWithValue:forKeyPath:", objectWithValue_forKeyPath),
     instanceMethod("tessarin_indexesOfObjectsInArray:", indexesOfObjectsInArray)}};

} // namespace

NSArray tessarin_arrayWithArray_copyItems(NSArray array, bool copyItems) {
    return tessarin_arrayWithArray_copyItems(NSArray::classObject(), array, copyItems);
}

NSArray tessarin_arrayWithArray_copyItems(Class receiver, NSArray array, bool copyItems) {
    return send<NSArray>(receiver, "tessarin_arrayWithArray:copyItems:"_sel, array,
                         static_cast<BOOL>(copyItems));
}

NSArray tessarin_arrayByMergingWithArray_receiverFirst(NSArray receiver, NSArray array, bool receiverFirst) {
    return send<NSArray>(receiver, "tessarin_arrayByMergingWithArray:receiverFirst:"_sel, array,
                         static_cast<BOOL>(receiverFirst));
}

NSArray tessarin_arrayByRemovingObject(NSArray receiver, NSObject object) {
    return send<NSArray>(receiver, "tessarin_arrayByRemovingObject:"_sel, object);
}

NSArray tessarin_arrayByRemovingObjectIdenticalTo(NSArray receiver, NSObject object) {
    return send<NSArray>(receiver, "tessarin_arrayByRemovingObjectIdenticalTo:"_sel, object);
}

NSArray tessarin_arrayWithObjectsPassingTest_options(NSArray receiver, Predicate predicate,
                                                     NSEnumerationOptions options) {
    return send<NSArray>(receiver, "tessarin_arrayWithObjectsPassingTest:options:"_sel, predicate, options);
}

NSArray tessarin_arrayByRemovingObjectsInArray(NSArray receiver, NSArray array) {
    return send<NSArray>(receiver, "tessarin_arrayByRemovingObjectsInArray:"_sel, array);
}

id tessarin_penultimeteObject(NSArray receiver) {
    return send<id>(receiver, "tessarin_penultimeteObject"_sel);
}

id tessarin_firstObject(NSArray receiver) { return send<id>(receiver, "tessarin_firstObject"_sel); }

bool tessarin_containsObjectIdenticalTo(NSArray receiver, NSObject object) {
    return send<BOOL>(receiver, "tessarin_containsObjectIdenticalTo:"_sel, object) != NO;
}

id tessarin_objectWithValue_forKeyPath(NSArray receiver, NSObject value, NSString keyPath) {
    return send<id>(receiver, "tessarin_objectWithValue:forKeyPath:"_sel, value, keyPath);
}

NSIndexSet tessarin_indexesOfObjectsInArray(NSArray receiver, NSArray array) {
    return send<NSIndexSet>(receiver, "tessarin_indexesOfObjectsInArray:"_sel, array);
}
