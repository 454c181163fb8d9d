// Dictionaries: values in the order of their keys, and a dictionary without one of its keys.
#include "TessarinFoundation/NSDictionary+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/KeyOrder.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/Retained.h"

using namespace tessarin;

namespace {

NSArray allValuesSortedByKeys(NSDictionary self, SEL) {
    if (const auto values = objectsInOrderOfKeys(self))
        return NSArray::arrayWithObjects_count(values->data(), values->size());
    const NSArray keys = self.allKeys().sortedArrayUsingSelector("compare:"_sel);
    // The array keeps what a dictionary of a class of its own may let go of when it is asked for the next.
    const Retained<NSMutableArray> values = adopt(NSMutableArray::alloc().initWithCapacity(keys.count()));
    for (const NSObject key : keys)
        if (const NSObject value = self.objectForKey(key)) values.addObject(value);
    return NSArray::arrayWithArray(values);
}

NSDictionary dictionaryByRemovingObjectForKey(NSDictionary self, SEL, NSObject key) {
    const Retained<NSMutableDictionary> remaining = adopt(NSMutableDictionary(self.mutableCopy()));
    remaining.removeObjectForKey(key);
    return adopt(NSDictionary(remaining.copy())).autorelease();
}

const ExtensionGroup group{
    "NSDictionary",
    "TessarinExtensions",
    {instanceMethod("tessarin_allValuesSortedByKeys", allValuesSortedByKeys),
     instanceMethod("tessarin_dictionaryByRemovingObjectForKey:", dictionaryByRemovingObjectForKey)}};

} // namespace

NSArray tessarin_allValuesSortedByKeys(NSDictionary dictionary) {
    return send<NSArray>(dictionary, "tessarin_allValuesSortedByKeys"_sel);
}

NSDictionary tessarin_dictionaryByRemovingObjectForKey(NSDictionary dictionary, NSObject key) {
    return send<NSDictionary>(dictionary, "tessarin_dictionaryByRemovingObjectForKey:"_sel, key);
}
