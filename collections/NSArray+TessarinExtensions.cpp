// Arrays: merging, removal and filtering into new arrays, safe access, and searches.
#include "TessarinFoundation/NSArray+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/NSBundle.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableIndexSet.h"
#include "TessarinPlatform/ValueComparison.h"
#include "collections/EqualityIndex.h"

#include <algorithm>
#include <optional>

using namespace tessarin;
using tessarin::collections::EqualityIndex;

namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

using Predicate = Block<BOOL(id, NSUInteger, BOOL*)>;

// The items are copied whatever the flag says, which is meant.
id arrayWithArray_copyItems(Class self, SEL, NSArray array, BOOL) {
    return adopt(as<NSArray>(self.alloc()).initWithArray_copyItems(array, true)).autorelease();
}

NSArray immutableCopy(NSArray array) { return adopt(NSArray(array.copy())).autorelease(); }

NSArray arrayByMergingWithArray_receiverFirst(NSArray self, SEL, NSArray array, BOOL receiverFirst) {
    const NSArray base = receiverFirst != NO ? self : array;
    const NSArray added = receiverFirst != NO ? array : self;
    const Retained<NSMutableArray> merged = adopt(NSMutableArray::alloc().initWithArray(base));
    const Retained<NSArray> kept = adopt(NSArray(added.copy())); // comparing may be the items' own code
    EqualityIndex contained;
    for (const NSObject item : merged) contained.append(item);
    for (const NSObject item : added)
        if (contained.appendIfMissing(item)) merged.addObject(item);
    return immutableCopy(merged);
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

// It pays to look at all objects first when an array is searched more often, and holds more, than this.
constexpr NSUInteger fewSearches = 16;

NSArray arrayByRemovingObjectsInArray(NSArray self, SEL, NSArray array) {
    const Retained<NSMutableArray> remaining = adopt(NSMutableArray(self.mutableCopy()));
    if (array.count() <= fewSearches || !searchesByEquality(remaining)) {
        remaining.removeObjectsInArray(array);
        return immutableCopy(remaining);
    }
    const Retained<NSArray> removed = adopt(NSArray(array.copy()));
    EqualityIndex index(EqualityIndex::Asked::appended);
    for (const NSObject item : removed) index.append(item);
    std::vector<NSObject> kept;
    for (const NSObject item : remaining)
        if (!index.contains(item)) kept.push_back(item);
    return NSArray::arrayWithObjects_count(kept.data(), kept.size());
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

// Answers what an array's indexOfObject: does.
class ObjectPositions {
public:
    // For about as many searches.
    ObjectPositions(NSArray array, NSUInteger searches) : array_(array) {
        if (searches <= fewSearches || array.count() <= fewSearches || !searchesByEquality(array)) return;
        kept_ = adopt(NSArray(array.copy()));
        index_.emplace();
        for (const NSObject item : kept_) index_->append(item);
    }

    NSUInteger operator()(NSObject object) const {
        return index_ && comparesAsValue(object) ? index_->positionOf(object) : array_.indexOfObject(object);
    }

private:
    NSArray array_;
    Retained<NSArray> kept_;
    std::optional<EqualityIndex> index_;
};

// The looked-up text is a format, so that its %% is a percent sign.
[[noreturn]] void raiseNotContained(NSArray receiver) {
    const NSString key = "One or more of passed objects is not contained in receiver."_ns;
    const NSString text =
        NSBundle::bundleForClass(receiver.class_()).localizedStringForKey_value_table(key, ""_ns, nil);
    raise(NSInternalInconsistencyException(), NSString::stringWithFormat(text ? text : key));
}

NSIndexSet setOf(std::vector<NSUInteger>& indexes) {
    std::sort(indexes.begin(), indexes.end());
    const Retained<NSMutableIndexSet> set = adopt(NSMutableIndexSet::alloc().init());
    for (auto run = indexes.begin(); run != indexes.end();) {
        auto last = run;
        while (last + 1 != indexes.end() && *(last + 1) - *last <= 1) ++last;
        set.addIndexesInRange({*run, *last - *run + 1});
        run = last + 1;
    }
    return adopt(NSIndexSet(set.copy())).autorelease();
}

NSIndexSet indexesOfObjectsInArray(NSArray self, SEL, NSArray array) {
    const ObjectPositions positionOf(self, array.count());
    std::vector<NSUInteger> indexes;
    for (const NSObject item : array) {
        indexes.push_back(positionOf(item));
        if (indexes.back() == notFound) raiseNotContained(self);
    }
    return setOf(indexes);
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
