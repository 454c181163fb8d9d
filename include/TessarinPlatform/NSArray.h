// NSArray: an immutable ordered list of objects.
#pragma once

#include "TessarinPlatform/Block.h"
#include "TessarinPlatform/FastEnumeration.h"
#include "TessarinPlatform/detail/NSString-class.h"

namespace tessarin {

class NSIndexSet;

// How a collection is walked. On several threads at once, the block is called at the same time for different
// objects.
using NSEnumerationOptions = NSUInteger;
inline constexpr NSEnumerationOptions NSEnumerationConcurrent = 1;
inline constexpr NSEnumerationOptions NSEnumerationReverse = 2;

// An index or a range beyond the end raises NSRangeException, a nil object to be put in
// NSInvalidArgumentException. A nil array as an argument is an empty one. Searches answer NSNotFound for what
// is not there and for nil; firstObject and lastObject of an empty array are nil. Results are autoreleased;
// what alloc and init give is the caller's. An immutable array may be read on any number of threads at once.
class NSArray : public Handle<NSArray, "NSArray", NSObject> {
public:
    using Handle::Handle;

    static NSArray array() { return send<NSArray>(classObject(), "array"_sel); }
    static NSArray arrayWithArray(NSArray other) {
        return send<NSArray>(classObject(), "arrayWithArray:"_sel, other);
    }
    static NSArray arrayWithObject(NSObject object) {
        return send<NSArray>(classObject(), "arrayWithObject:"_sel, object);
    }
    // None of the objects may be nil.
    static NSArray arrayWithObjects_count(const NSObject* objects, NSUInteger count) {
        return send<NSArray>(classObject(), "arrayWithObjects:count:"_sel, objects, count);
    }
    // arrayOf("a"_ns, NSNumber::numberWithInt(1)): any number of objects, none nil.
    template <std::derived_from<NSObject>... Objects>
    static NSArray arrayOf(const Objects&... objects) {
        const NSObject list[sizeof...(objects) + 1] = {objects...};
        return arrayWithObjects_count(list, sizeof...(objects));
    }

    [[nodiscard]] NSArray init() const { return send<NSArray>(*this, "init"_sel); }
    [[nodiscard]] NSArray initWithArray(NSArray other) const {
        return send<NSArray>(*this, "initWithArray:"_sel, other);
    }
    [[nodiscard]] NSArray initWithObjects_count(const NSObject* objects, NSUInteger count) const {
        return send<NSArray>(*this, "initWithObjects:count:"_sel, objects, count);
    }
    [[nodiscard]] NSArray initWithArray_copyItems(NSArray other, bool copyItems) const {
        return send<NSArray>(*this, "initWithArray:copyItems:"_sel, other, static_cast<BOOL>(copyItems));
    }

    NSUInteger count() const { return send<NSUInteger>(*this, "count"_sel); }
    id objectAtIndex(NSUInteger index) const { return send<id>(*this, "objectAtIndex:"_sel, index); }
    id firstObject() const { return send<id>(*this, "firstObject"_sel); }
    id lastObject() const { return send<id>(*this, "lastObject"_sel); }
    bool containsObject(NSObject object) const {
        return send<BOOL>(*this, "containsObject:"_sel, object) != NO;
    }
    NSUInteger indexOfObject(NSObject object) const {
        return send<NSUInteger>(*this, "indexOfObject:"_sel, object);
    }
    NSUInteger indexOfObjectIdenticalTo(NSObject object) const {
        return send<NSUInteger>(*this, "indexOfObjectIdenticalTo:"_sel, object);
    }
    bool isEqualToArray(NSArray other) const { return send<BOOL>(*this, "isEqualToArray:"_sel, other) != NO; }
    void getObjects_range(NSObject* objects, NSRange range) const {
        send<void>(*this, "getObjects:range:"_sel, objects, range);
    }
    NSArray subarrayWithRange(NSRange range) const {
        return send<NSArray>(*this, "subarrayWithRange:"_sel, range);
    }
    NSArray arrayByAddingObject(NSObject object) const {
        return send<NSArray>(*this, "arrayByAddingObject:"_sel, object);
    }
    NSString componentsJoinedByString(NSString separator) const {
        return send<NSString>(*this, "componentsJoinedByString:"_sel, separator);
    }
    // By a comparison that takes an object and answers NSComparisonResult, which is not checked; the null
    // selector raises NSInvalidArgumentException. The embedded platform sorts stably.
    NSArray sortedArrayUsingSelector(SEL comparison) const {
        return send<NSArray>(*this, "sortedArrayUsingSelector:"_sel, comparison);
    }
    // Stably, by the first descriptor, what is equal by the second, and so on.
    NSArray sortedArrayUsingDescriptors(NSArray descriptors) const {
        return send<NSArray>(*this, "sortedArrayUsingDescriptors:"_sel, descriptors);
    }

    // Calls the block with each object, its index and a flag that it sets to end the walk.
    void enumerateObjectsUsingBlock(Block<void(id, NSUInteger, BOOL*)> block) const {
        send<void>(*this, "enumerateObjectsUsingBlock:"_sel, block);
    }
    void enumerateObjectsWithOptions_usingBlock(NSEnumerationOptions options,
                                                Block<void(id, NSUInteger, BOOL*)> block) const {
        send<void>(*this, "enumerateObjectsWithOptions:usingBlock:"_sel, options, block);
    }
    // The indexes of the objects for which the block answers YES.
    NSIndexSet indexesOfObjectsWithOptions_passingTest(NSEnumerationOptions options,
                                                       Block<BOOL(id, NSUInteger, BOOL*)> test) const;
    // In ascending order of the indexes.
    NSArray objectsAtIndexes(NSIndexSet indexes) const;

    FastEnumerator begin() const { return *this ? FastEnumerator(*this) : FastEnumerator(); }
    std::default_sentinel_t end() const { return {}; }
};

} // namespace tessarin

#include "TessarinPlatform/NSIndexSet.h"
#include "TessarinPlatform/NSString.h"

namespace tessarin {

inline NSIndexSet
NSArray::indexesOfObjectsWithOptions_passingTest(NSEnumerationOptions options,
                                                 Block<BOOL(id, NSUInteger, BOOL*)> test) const {
    return send<NSIndexSet>(*this, "indexesOfObjectsWithOptions:passingTest:"_sel, options, test);
}
inline NSArray NSArray::objectsAtIndexes(NSIndexSet indexes) const {
    return send<NSArray>(*this, "objectsAtIndexes:"_sel, indexes);
}

} // namespace tessarin
