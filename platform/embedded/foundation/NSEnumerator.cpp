#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/Enumerators.h"

#include <algorithm>

namespace tessarin::embedded {
namespace {

enum class Walk { ofNothing, ofItems, ofItemsReversed, ofKeys, ofObjects };

struct EnumeratorStorage {
    Walk walk = Walk::ofNothing;
    Retained<NSObject> collection;
    Retained<NSObject> keys; // the key enumerator of a dictionary that has its own way of keeping its entries
    NSUInteger position = 0; // of the next item or entry; walking backwards, one more
    NSUInteger mutations = 0;
};

NSObject makeEnumerator(NSObject collection, Walk walk) {
    const NSObject enumerator(createInstance("NSEnumerator"_class));
    auto& storage = storageOf<EnumeratorStorage>(enumerator);
    storage.walk = walk;
    storage.collection = retain(collection);
    return id(runtime::autorelease(enumerator.object()));
}

id nextItem(EnumeratorStorage& storage, NSArray array) {
    if (storage.position >= array.count()) return nil;
    return array.objectAtIndex(storage.position++);
}

// Removing the items already passed is what a walk from the end is for.
id nextItemReversed(EnumeratorStorage& storage, NSArray array) {
    storage.position = std::min(storage.position, array.count());
    if (storage.position == 0) return nil;
    return array.objectAtIndex(--storage.position);
}

id nextEntry(EnumeratorStorage& enumerator, NSDictionary dictionary) {
    if (enumerator.keys) {
        const NSObject key = send<NSObject>(enumerator.keys, "nextObject"_sel);
        return key ? dictionary.objectForKey(key) : nil;
    }
    const auto& storage = storageOf<DictionaryStorage>(dictionary);
    if (storage.mutations != enumerator.mutations) runtime::raiseMutation(dictionary.object());
    const std::size_t index = storage.nextEntry(enumerator.position);
    if (index == DictionaryStorage::notFound) return nil;
    enumerator.position = index + 1;
    return enumerator.walk == Walk::ofKeys ? storage.entry(index).key : storage.entry(index).object;
}

id nextObject(NSObject self, SEL) {
    auto& storage = storageOf<EnumeratorStorage>(self);
    switch (storage.walk) {
    case Walk::ofItems:
        return nextItem(storage, as<NSArray>(storage.collection));
    case Walk::ofItemsReversed:
        return nextItemReversed(storage, as<NSArray>(storage.collection));
    case Walk::ofKeys:
    case Walk::ofObjects:
        return nextEntry(storage, as<NSDictionary>(storage.collection));
    case Walk::ofNothing:
        break;
    }
    return nil;
}

// The objects that have not been answered yet.
NSArray allObjects(NSObject self, SEL) {
    const NSMutableArray objects = NSMutableArray::array();
    while (const NSObject object = send<NSObject>(self, "nextObject"_sel)) objects.addObject(object);
    return objects;
}

NSUInteger countByEnumerating(NSObject self, SEL, NSFastEnumerationState* state, NSObject* buffer,
                              NSUInteger capacity) {
    // An enumerator has no way of telling that its collection changed but to raise in nextObject.
    static NSUInteger neverChanges = 0;
    state->state = 1;
    state->mutationsPtr = &neverChanges;
    state->itemsPtr = buffer;
    if (capacity == 0) return 0;
    // One at a time: the next may go with what the walk does to the collection.
    buffer[0] = send<NSObject>(self, "nextObject"_sel);
    return buffer[0] ? 1 : 0;
}

} // namespace

NSObject makeArrayEnumerator(NSArray array, bool isReversed) {
    const NSObject enumerator = makeEnumerator(array, isReversed ? Walk::ofItemsReversed : Walk::ofItems);
    if (isReversed) storageOf<EnumeratorStorage>(enumerator).position = array.count();
    return enumerator;
}

NSObject makeKeyEnumerator(NSDictionary dictionary) {
    const NSObject enumerator = makeEnumerator(dictionary, Walk::ofKeys);
    storageOf<EnumeratorStorage>(enumerator).mutations = storageOf<DictionaryStorage>(dictionary).mutations;
    return enumerator;
}

NSObject makeObjectEnumerator(NSDictionary dictionary) {
    const NSObject enumerator = makeEnumerator(dictionary, Walk::ofObjects);
    auto& storage = storageOf<EnumeratorStorage>(enumerator);
    if (hasDictionaryStorage(dictionary))
        storage.mutations = storageOf<DictionaryStorage>(dictionary).mutations;
    else
        storage.keys = retain(send<NSObject>(dictionary, "keyEnumerator"_sel));
    return enumerator;
}

ClassDescription describeNSEnumerator() {
    return {
        .name = "NSEnumerator",
        .superclass = "NSObject",
        .protocols = {"NSFastEnumeration"},
        .storage = storageLayout<EnumeratorStorage>(),
        .methods = {instanceMethod("nextObject", nextObject), instanceMethod("allObjects", allObjects),
                    instanceMethod("countByEnumeratingWithState:objects:count:", countByEnumerating)},
    };
}

} // namespace tessarin::embedded
