// NSMutableArray: an array that can be edited.
#pragma once

#include "TessarinPlatform/NSArray.h"

namespace tessarin {

// An index or a range beyond the end raises NSRangeException (an object may be inserted at the count itself),
// a nil object to be put in NSInvalidArgumentException; the array is then as it was. Removing what is not
// there, or nil, does nothing, and nor does removeLastObject to an empty array, where GNUstep raises. A nil
// array as an argument is an empty one. An array that is changed while it is walked raises
// NSGenericException at the walk's next step. For one thread at a time.
class NSMutableArray : public Handle<NSMutableArray, "NSMutableArray", NSArray> {
public:
    using Handle::Handle;

    static NSMutableArray array() { return send<NSMutableArray>(classObject(), "array"_sel); }
    static NSMutableArray arrayWithCapacity(NSUInteger capacity) {
        return send<NSMutableArray>(classObject(), "arrayWithCapacity:"_sel, capacity);
    }
    static NSMutableArray arrayWithArray(NSArray other) {
        return send<NSMutableArray>(classObject(), "arrayWithArray:"_sel, other);
    }

    [[nodiscard]] NSMutableArray init() const { return send<NSMutableArray>(*this, "init"_sel); }
    [[nodiscard]] NSMutableArray initWithCapacity(NSUInteger capacity) const {
        return send<NSMutableArray>(*this, "initWithCapacity:"_sel, capacity);
    }
    [[nodiscard]] NSMutableArray initWithArray(NSArray other) const {
        return send<NSMutableArray>(*this, "initWithArray:"_sel, other);
    }

    void addObject(NSObject object) const { send<void>(*this, "addObject:"_sel, object); }
    void addObjectsFromArray(NSArray other) const { send<void>(*this, "addObjectsFromArray:"_sel, other); }
    void insertObject_atIndex(NSObject object, NSUInteger index) const {
        send<void>(*this, "insertObject:atIndex:"_sel, object, index);
    }
    void replaceObjectAtIndex_withObject(NSUInteger index, NSObject object) const {
        send<void>(*this, "replaceObjectAtIndex:withObject:"_sel, index, object);
    }
    void exchangeObjectAtIndex_withObjectAtIndex(NSUInteger first, NSUInteger second) const {
        send<void>(*this, "exchangeObjectAtIndex:withObjectAtIndex:"_sel, first, second);
    }
    void removeObjectAtIndex(NSUInteger index) const { send<void>(*this, "removeObjectAtIndex:"_sel, index); }
    void removeLastObject() const { send<void>(*this, "removeLastObject"_sel); }
    void removeObject(NSObject object) const { send<void>(*this, "removeObject:"_sel, object); }
    void removeObjectIdenticalTo(NSObject object) const {
        send<void>(*this, "removeObjectIdenticalTo:"_sel, object);
    }
    void removeObjectsInArray(NSArray other) const { send<void>(*this, "removeObjectsInArray:"_sel, other); }
    void removeObjectsInRange(NSRange range) const { send<void>(*this, "removeObjectsInRange:"_sel, range); }
    void removeAllObjects() const { send<void>(*this, "removeAllObjects"_sel); }
    void setArray(NSArray other) const { send<void>(*this, "setArray:"_sel, other); }
    // As sortedArrayUsingSelector: does.
    void sortUsingSelector(SEL comparison) const { send<void>(*this, "sortUsingSelector:"_sel, comparison); }
    void sortUsingDescriptors(NSArray descriptors) const {
        send<void>(*this, "sortUsingDescriptors:"_sel, descriptors);
    }
};

} // namespace tessarin
