#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/NSObject+KeyValueCoding.h"

#include "TessarinPlatform/NSException.h"

#include <algorithm>
#include <string>

namespace tessarin::embedded {
namespace {

DictionaryStorage& storageOf(NSDictionary dictionary) {
    return embedded::storageOf<DictionaryStorage>(dictionary);
}

// ---- The primitive operations. A subclass may take them over; everything below them then goes through them.

void setObject_forKey(NSMutableDictionary self, SEL selector, NSObject object, NSObject key) {
    if (!key) [[unlikely]]
        raiseFrom(NSInvalidArgumentException(), self, selector, "key cannot be nil");
    if (!object) [[unlikely]]
        raiseFrom(NSInvalidArgumentException(), self, selector,
                  "object cannot be nil (key: " + static_cast<std::string>(key.description()) + ")");
    setEntry(self, object, key);
}

void removeObjectForKey(NSMutableDictionary self, SEL selector, NSObject key) {
    if (!key) raiseFrom(NSInvalidArgumentException(), self, selector, "key cannot be nil");
    const std::size_t index = findEntry(self, key, key.hash());
    if (index == DictionaryStorage::notFound) return;
    const DictionaryEntry removed = storageOf(self).take(index);
    runtime::release(removed.key.object());
    runtime::release(removed.object.object());
}

// Whether the storage may be changed directly.
bool editsStorage(NSMutableDictionary dictionary) {
    return dictionary.object()->isa == NSMutableDictionary::classObject().object()
           || (inheritsDictionaryPrimitives(dictionary)
               && answersWith(dictionary, "setObject:forKey:"_sel, setObject_forKey)
               && answersWith(dictionary, "removeObjectForKey:"_sel, removeObjectForKey));
}

// ---- Making

// The capacity is a hint; no more than this is made ready.
NSMutableDictionary initWithCapacity(NSMutableDictionary self, SEL, NSUInteger capacity) {
    constexpr NSUInteger largest = 1u << 20;
    Retained<NSMutableDictionary> owned = adopt(self.init());
    if (editsStorage(owned)) storageOf(owned).reserve(std::min(capacity, largest));
    return owned.leak();
}

id dictionaryWithCapacity(Class self, SEL, NSUInteger capacity) {
    return adopt(as<NSMutableDictionary>(self.alloc()).initWithCapacity(capacity)).autorelease();
}

NSDictionary copyWithZone(NSMutableDictionary self, SEL, void*) {
    return NSDictionary::alloc().initWithDictionary(self);
}

// ---- Changing

void addEntriesFromDictionary(NSMutableDictionary self, SEL, NSDictionary other) {
    if (self == other) return;
    for (const DictionaryEntries::Entry& entry : DictionaryEntries(other))
        self.setObject_forKey(entry.object, entry.key);
}

void setDictionary(NSMutableDictionary self, SEL, NSDictionary other) {
    if (self == other) return;
    const Retained<NSDictionary> entries = adopt(other.copy());
    self.removeAllObjects();
    self.addEntriesFromDictionary(entries);
}

void removeObjectsForKeys(NSMutableDictionary self, SEL, NSArray keys) {
    const Retained<NSArray> items = adopt(keys.copy());
    for (const NSObject key : ArrayItems(items)) self.removeObjectForKey(key);
}

void removeAllObjects(NSMutableDictionary self, SEL) {
    if (!editsStorage(self)) {
        // A copy: what the dictionary answers may be an array of its own, which it edits as the keys go.
        const Retained<NSArray> keys = adopt(self.allKeys().copy());
        for (const NSObject key : ArrayItems(keys)) self.removeObjectForKey(key);
        return;
    }
    // They go when the dictionary is whole again, since a release may set off code that looks at it, or lets
    // go of it.
    DictionaryStorage taken;
    storageOf(self).swapEntries(taken);
    for (std::size_t index = 0; index < taken.size(); ++index) {
        runtime::release(taken.entry(index).key.object());
        runtime::release(taken.entry(index).object.object());
    }
}

} // namespace

ClassDescription describeNSMutableDictionary() {
    return {
        .name = "NSMutableDictionary",
        .superclass = "NSDictionary",
        .methods = {classMethod("dictionaryWithCapacity:", dictionaryWithCapacity),
                    instanceMethod("initWithCapacity:", initWithCapacity),
                    instanceMethod("copyWithZone:", copyWithZone),
                    instanceMethod("setObject:forKey:", setObject_forKey),
                    instanceMethod("removeObjectForKey:", removeObjectForKey),
                    instanceMethod("setValue:forKey:", setValueForKeyOfDictionary),
                    instanceMethod("addEntriesFromDictionary:", addEntriesFromDictionary),
                    instanceMethod("setDictionary:", setDictionary),
                    instanceMethod("removeObjectsForKeys:", removeObjectsForKeys),
                    instanceMethod("removeAllObjects", removeAllObjects)},
    };
}

} // namespace tessarin::embedded
