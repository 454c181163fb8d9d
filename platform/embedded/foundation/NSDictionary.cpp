#include "platform/embedded/foundation/ArchivedKeys.h"
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/ContainerDescription.h"
#include "platform/embedded/foundation/ContainerEquality.h"
#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/Enumerators.h"
#include "platform/embedded/foundation/KeyedCoding.h"
#include "platform/embedded/foundation/NSObject+KeyValueCoding.h"

#include "TessarinPlatform/NSException.h"

#include <cstdarg>
#include <string>

namespace tessarin::embedded {
namespace {

DictionaryStorage& storageOf(NSDictionary dictionary) {
    return embedded::storageOf<DictionaryStorage>(dictionary);
}

// ---- The primitive operations

NSUInteger count(NSDictionary self, SEL) { return storageOf(self).count(); }

id objectForKey(NSDictionary self, SEL, NSObject key) {
    const DictionaryStorage& storage = storageOf(self);
    if (!key || storage.count() == 0) return nil;
    const std::size_t index = findEntry(self, key, key.hash());
    return index == DictionaryStorage::notFound ? NSObject() : storage.entry(index).object;
}

NSObject keyEnumerator(NSDictionary self, SEL) { return makeKeyEnumerator(self); }

// ---- Making

// The keys and objects that a dictionary is made of.
struct KeysAndObjects {
    std::vector<NSObject> keys;
    std::vector<NSObject> objects;

    void add(NSObject object, NSObject key) {
        objects.push_back(object);
        keys.push_back(key);
    }
    NSDictionary initialize(NSDictionary dictionary) const {
        return dictionary.initWithObjects_forKeys_count(objects.data(), keys.data(), keys.size());
    }
};

// The objects and keys, in turn, of a list of arguments that ends with nil. One that ends after an object has
// a nil key, which the initialiser refuses.
KeysAndObjects contentsOfList(NSObject firstObject, std::va_list further) {
    KeysAndObjects contents;
    for (NSObject object = firstObject; object; object = NSObject(va_arg(further, Object*))) {
        contents.add(object, NSObject(va_arg(further, Object*)));
        if (!contents.keys.back()) break;
    }
    return contents;
}

id dictionary(Class self, SEL) { return adopt(as<NSDictionary>(self.alloc()).init()).autorelease(); }

id dictionaryWithDictionary(Class self, SEL, NSDictionary other) {
    const Object* immutable = NSDictionary::classObject().object();
    // A dictionary that nobody can change is its own copy.
    if (self.object() == immutable && other && runtime::classOf(other.object()) == immutable)
        return retain(other).autorelease();
    return adopt(as<NSDictionary>(self.alloc()).initWithDictionary(other)).autorelease();
}

id dictionaryWithObjects_forKeys_count(Class self, SEL, const NSObject* objects, const NSObject* keys,
                                       NSUInteger count) {
    return adopt(as<NSDictionary>(self.alloc()).initWithObjects_forKeys_count(objects, keys, count))
        .autorelease();
}

id dictionaryWithObject_forKey(Class self, SEL selector, NSObject object, NSObject key) {
    return dictionaryWithObjects_forKeys_count(self, selector, &object, &key, 1);
}

id dictionaryWithObjects_forKeys(Class self, SEL, NSArray objects, NSArray keys) {
    return adopt(send<NSDictionary>(self.alloc(), "initWithObjects:forKeys:"_sel, objects, keys))
        .autorelease();
}

id dictionaryWithObjectsAndKeys(Class self, SEL, NSObject firstObject, ...) {
    std::va_list further;
    va_start(further, firstObject);
    const KeysAndObjects contents = contentsOfList(firstObject, further);
    va_end(further);
    return adopt(contents.initialize(as<NSDictionary>(self.alloc()))).autorelease();
}

NSDictionary initWithObjects_forKeys_count(NSDictionary self, SEL selector, const NSObject* objects,
                                           const NSObject* keys, NSUInteger count) {
    Retained<NSDictionary> owned = adopt(self);
    storageOf(self).reserve(count);
    for (NSUInteger index = 0; index < count; ++index) {
        const char* missing = !objects[index] ? "object" : !keys[index] ? "key" : nullptr;
        if (missing)
            raiseFrom(NSInvalidArgumentException(), self, selector,
                      std::string("attempt to insert nil ") + missing + " from " + missing + "s["
                          + std::to_string(index) + "]");
        setEntry(self, objects[index], keys[index]);
    }
    return owned.leak();
}

NSDictionary initWithObjects_forKeys(NSDictionary self, SEL selector, NSArray objects, NSArray keys) {
    Retained<NSDictionary> owned = adopt(self);
    // Hashing, comparing and copying are the keys' own code, which might change the arrays.
    const Retained<NSArray> keptObjects = adopt(objects.copy());
    const Retained<NSArray> keptKeys = adopt(keys.copy());
    const ArrayItems objectItems(keptObjects);
    const ArrayItems keyItems(keptKeys);
    if (objectItems.size() != keyItems.size())
        raiseFrom(NSInvalidArgumentException(), self, selector,
                  "count of objects (" + std::to_string(objectItems.size()) + ") differs from count of keys ("
                      + std::to_string(keyItems.size()) + ")");
    return owned.leak().initWithObjects_forKeys_count(objectItems.data(), keyItems.data(), keyItems.size());
}

NSDictionary initWithObjectsAndKeys(NSDictionary self, SEL, NSObject firstObject, ...) {
    std::va_list further;
    va_start(further, firstObject);
    const KeysAndObjects contents = contentsOfList(firstObject, further);
    va_end(further);
    return contents.initialize(self);
}

NSDictionary initWithDictionary_copyItems(NSDictionary self, SEL, NSDictionary other, BOOL copyItems) {
    Retained<NSDictionary> owned = adopt(self);
    const DictionaryEntries entries(other);
    std::vector<Retained<NSObject>> copies;
    KeysAndObjects contents;
    for (const DictionaryEntries::Entry& entry : entries) {
        if (copyItems != NO) copies.push_back(adopt(static_cast<NSObject>(entry.object.copy())));
        contents.add(copyItems != NO ? copies.back() : entry.object, entry.key);
    }
    return contents.initialize(owned.leak());
}

NSDictionary initWithDictionary(NSDictionary self, SEL selector, NSDictionary other) {
    const Object* classObject = runtime::classOf(self.object());
    const bool isPlain = classObject == NSDictionary::classObject().object()
                         || classObject == "NSMutableDictionary"_class.object();
    if (!isPlain || !other || !hasDictionaryStorage(other))
        return initWithDictionary_copyItems(self, selector, other, NO);
    Retained<NSDictionary> owned = adopt(self);
    storageOf(self).copyFrom(other);
    return owned.leak();
}

void dealloc(NSDictionary self, SEL) {
    const DictionaryStorage& storage = storageOf(self);
    for (std::size_t index = 0; index < storage.size(); ++index) {
        runtime::release(storage.entry(index).key.object());
        runtime::release(storage.entry(index).object.object());
    }
    sendSuper<void>(self, NSDictionary::classObject(), "dealloc"_sel);
}

// ---- Copying

// A mutable dictionary answers copyWithZone: itself; every other dictionary cannot change.
NSDictionary copyWithZone(NSDictionary self, SEL, void*) { return retain(self).leak(); }

NSMutableDictionary mutableCopyWithZone(NSDictionary self, SEL, void*) {
    return as<NSMutableDictionary>(NSMutableDictionary::alloc().initWithDictionary(self));
}

// ---- Archiving

Class classForCoder(NSDictionary self, SEL) {
    const Class mutableClass = NSMutableDictionary::classObject();
    return self.isKindOfClass(mutableClass) ? mutableClass : NSDictionary::classObject();
}

void encodeWithCoder(NSDictionary self, SEL, NSCoder coder) {
    const DictionaryEntries entries(self);
    KeysAndObjects contents;
    for (const DictionaryEntries::Entry& entry : entries) contents.add(entry.object, entry.key);
    encodeItems(coder, contents.keys, keysOfContainer());
    encodeItems(coder, contents.objects, objectsOfContainer());
}

NSDictionary initWithCoder(NSDictionary self, SEL selector, NSCoder coder) {
    Retained<NSDictionary> owned = adopt(self);
    const KeysAndObjects contents{decodeItems(coder, keysOfContainer()),
                                  decodeItems(coder, objectsOfContainer())};
    if (contents.keys.size() != contents.objects.size())
        raiseFrom(NSInvalidUnarchiveOperationException(), self, selector,
                  "as many keys as objects are wanted, and they are " + std::to_string(contents.keys.size())
                      + " and " + std::to_string(contents.objects.size()));
    checkArchivedKeys(coder, contents.keys);
    return contents.initialize(owned.leak());
}

// ---- Reading

NSArray allKeys(NSDictionary self, SEL) {
    const DictionaryEntries entries(self);
    std::vector<NSObject> keys;
    for (const DictionaryEntries::Entry& entry : entries) keys.push_back(entry.key);
    return makeArray(keys);
}

NSArray allValues(NSDictionary self, SEL) {
    const DictionaryEntries entries(self);
    std::vector<NSObject> objects;
    for (const DictionaryEntries::Entry& entry : entries) objects.push_back(entry.object);
    return makeArray(objects);
}

NSObject objectEnumerator(NSDictionary self, SEL) { return makeObjectEnumerator(self); }

NSUInteger countByEnumerating(NSDictionary self, SEL, NSFastEnumerationState* state, NSObject* buffer,
                              NSUInteger capacity) {
    DictionaryStorage& storage = storageOf(self);
    state->mutationsPtr = &storage.mutations;
    state->itemsPtr = buffer;
    NSUInteger answered = 0;
    if (hasDictionaryStorage(self)) {
        std::size_t index = storage.nextEntry(state->state);
        while (answered < capacity && index != DictionaryStorage::notFound) {
            buffer[answered++] = storage.entry(index).key;
            state->state = index + 1;
            index = storage.nextEntry(index + 1);
        }
        return answered;
    }
    // The autoreleased enumerator is remembered from one call to the next. It is asked for one key at a time,
    // since only the dictionary knows how long it keeps what it answers, and what goes with a change.
    if (state->state == 0) {
        state->state = 1;
        state->extra[0] = reinterpret_cast<NSUInteger>(send<NSObject>(self, "keyEnumerator"_sel).object());
    }
    const NSObject keys(reinterpret_cast<Object*>(state->extra[0]));
    if (capacity == 0) return 0;
    buffer[0] = retain(send<NSObject>(keys, "nextObject"_sel)).autorelease();
    return buffer[0] ? 1 : 0;
}

BOOL isEqualToDictionary(NSDictionary self, SEL selector, NSDictionary other) {
    return dictionaryIsEqual(self, selector, other);
}

// All that equal dictionaries are sure to have in common without asking every object, and what the platform
// answers.
NSUInteger hash(NSDictionary self, SEL) { return self.count(); }

} // namespace

bool inheritsDictionaryPrimitives(NSObject object) {
    return answersWith(object, "count"_sel, count) && answersWith(object, "objectForKey:"_sel, objectForKey)
           && answersWith(object, "keyEnumerator"_sel, keyEnumerator);
}

ClassDescription describeNSDictionary() {
    return {
        .name = "NSDictionary",
        .superclass = "NSObject",
        .protocols = {"NSCoding", "NSCopying", "NSMutableCopying", "NSFastEnumeration"},
        .storage = storageLayout<DictionaryStorage>(),
        .methods = {classMethod("dictionary", dictionary),
                    classMethod("dictionaryWithDictionary:", dictionaryWithDictionary),
                    classMethod("dictionaryWithObject:forKey:", dictionaryWithObject_forKey),
                    classMethod("dictionaryWithObjects:forKeys:", dictionaryWithObjects_forKeys),
                    classMethod("dictionaryWithObjects:forKeys:count:", dictionaryWithObjects_forKeys_count),
                    classMethod("dictionaryWithObjectsAndKeys:", dictionaryWithObjectsAndKeys),
                    instanceMethod("initWithObjects:forKeys:count:", initWithObjects_forKeys_count),
                    instanceMethod("initWithObjects:forKeys:", initWithObjects_forKeys),
                    instanceMethod("initWithObjectsAndKeys:", initWithObjectsAndKeys),
                    instanceMethod("initWithDictionary:", initWithDictionary),
                    instanceMethod("initWithDictionary:copyItems:", initWithDictionary_copyItems),
                    instanceMethod("dealloc", dealloc),
                    instanceMethod("copyWithZone:", copyWithZone),
                    instanceMethod("mutableCopyWithZone:", mutableCopyWithZone),
                    instanceMethod("classForCoder", classForCoder),
                    instanceMethod("encodeWithCoder:", encodeWithCoder),
                    instanceMethod("initWithCoder:", initWithCoder),
                    instanceMethod("count", count),
                    instanceMethod("objectForKey:", objectForKey),
                    instanceMethod("keyEnumerator", keyEnumerator),
                    instanceMethod("objectEnumerator", objectEnumerator),
                    instanceMethod("valueForKey:", valueForKeyOfDictionary),
                    instanceMethod("allKeys", allKeys),
                    instanceMethod("allValues", allValues),
                    instanceMethod("countByEnumeratingWithState:objects:count:", countByEnumerating),
                    instanceMethod("isEqualToDictionary:", isEqualToDictionary),
                    instanceMethod("isEqual:", dictionaryIsEqual),
                    instanceMethod("hash", hash),
                    instanceMethod("description", dictionaryDescription)},
    };
}

} // namespace tessarin::embedded
