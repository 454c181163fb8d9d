#include "platform/embedded/foundation/KeyComparison.h"
#include "platform/embedded/foundation/KeyedCoding.h"

#include "TessarinPlatform/NSException.h"

#include <string>
#include <utility>

namespace tessarin::embedded {
namespace {

struct SortDescriptorStorage {
    Retained<NSString> key;
    SEL selector = nullptr;
    bool isAscending = false;
};

SortDescriptorStorage& storageOf(NSSortDescriptor descriptor) {
    return embedded::storageOf<SortDescriptorStorage>(descriptor);
}

// ---- Making

NSSortDescriptor initWithKey_ascending_selector(NSSortDescriptor self, SEL, NSString key, BOOL ascending,
                                                SEL selector) {
    Retained<NSSortDescriptor> owned = adopt(self);
    Retained<NSString> copied = adopt(NSString(key.copy()));
    SortDescriptorStorage& storage = storageOf(self);
    std::swap(storage.key, copied);
    storage.selector = selector ? selector : "compare:"_sel;
    storage.isAscending = ascending != NO;
    return owned.leak();
}

NSSortDescriptor initWithKey_ascending(NSSortDescriptor self, SEL, NSString key, BOOL ascending) {
    return self.initWithKey_ascending_selector(key, ascending != NO, nullptr);
}

id sortDescriptorWithKey_ascending_selector(Class self, SEL, NSString key, BOOL ascending, SEL selector) {
    return adopt(as<NSSortDescriptor>(self.alloc())
                     .initWithKey_ascending_selector(key, ascending != NO, selector))
        .autorelease();
}

id sortDescriptorWithKey_ascending(Class self, SEL, NSString key, BOOL ascending) {
    return adopt(as<NSSortDescriptor>(self.alloc()).initWithKey_ascending(key, ascending != NO))
        .autorelease();
}

NSSortDescriptor reversedSortDescriptor(NSSortDescriptor self, SEL) {
    return as<NSSortDescriptor>(send<id>(self.class_(), "sortDescriptorWithKey:ascending:selector:"_sel,
                                         self.key(), static_cast<BOOL>(!self.ascending()), self.selector()));
}

NSSortDescriptor copyWithZone(NSSortDescriptor self, SEL, void*) { return retain(self).leak(); }

// ---- Reading

NSString key(NSSortDescriptor self, SEL) { return storageOf(self).key; }
BOOL ascending(NSSortDescriptor self, SEL) { return storageOf(self).isAscending ? YES : NO; }
SEL selector(NSSortDescriptor self, SEL) { return storageOf(self).selector; }

BOOL isEqual(NSSortDescriptor self, SEL, NSObject other) {
    if (self == other) return YES;
    const auto descriptor = kindOf<NSSortDescriptor>(other);
    // A derived class may compare in a way of its own.
    if (!descriptor || self.class_() != descriptor.class_()) return NO;
    if (self.ascending() != descriptor.ascending() || self.selector() != descriptor.selector()) return NO;
    return self.key() == descriptor.key() || self.key().isEqual(descriptor.key()) ? YES : NO;
}

NSUInteger hash(NSSortDescriptor self, SEL) { return 2 * self.key().hash() + (self.ascending() ? 1 : 0); }

std::string shown(NSString text) { return text ? static_cast<std::string>(text) : "(null)"; }

NSString description(NSSortDescriptor self, SEL) {
    return NSString("(" + shown(self.key()) + ", " + (self.ascending() ? "ascending" : "descending") + ", "
                    + shown(NSStringFromSelector(self.selector())) + ")");
}

// ---- Archiving, in the platform's own form

NSString keyKey() { return "NSKey"_ns; }
NSString ascendingKey() { return "NSAscending"_ns; }
NSString selectorKey() { return "NSSelector"_ns; }

void encodeWithCoder(NSSortDescriptor self, SEL selector, NSCoder coder) {
    requireKeys(coder, self, selector);
    coder.encodeObject_forKey(self.key(), keyKey());
    coder.encodeBool_forKey(self.ascending(), ascendingKey());
    coder.encodeObject_forKey(NSStringFromSelector(self.selector()), selectorKey());
}

// The string under a key, nil for none; what is no string raises.
NSString decodeString(NSSortDescriptor self, SEL selector, NSCoder coder, NSString key) {
    const id decoded = coder.decodeObjectForKey(key);
    if (decoded && !decoded.isKindOfClass(NSString::classObject()))
        raiseFrom(NSInvalidUnarchiveOperationException(), self, selector,
                  "the archive holds no sort descriptor");
    return decoded;
}

NSSortDescriptor initWithCoder(NSSortDescriptor self, SEL selector, NSCoder coder) {
    Retained<NSSortDescriptor> owned = adopt(self);
    requireKeys(coder, self, selector);
    const NSString decodedKey = decodeString(self, selector, coder, keyKey());
    if (decodedKey.isKindOfClass("NSMutableString"_class))
        checkCopyOfDecoded(coder, sizeof(unichar) * decodedKey.length());
    Retained<NSString> key = adopt(NSString(decodedKey.copy()));
    const NSString selectorName = decodeString(self, selector, coder, selectorKey());
    SortDescriptorStorage& storage = storageOf(self);
    std::swap(storage.key, key);
    storage.isAscending = coder.decodeBoolForKey(ascendingKey());
    storage.selector = NSSelectorFromString(selectorName); // none for one that was not initialised
    return owned.leak();
}

} // namespace

ClassDescription describeNSSortDescriptor() {
    return {
        .name = "NSSortDescriptor",
        .superclass = "NSObject",
        .protocols = {"NSCoding", "NSCopying"},
        .storage = storageLayout<SortDescriptorStorage>(),
        .methods = {classMethod("sortDescriptorWithKey:ascending:", sortDescriptorWithKey_ascending),
                    classMethod("sortDescriptorWithKey:ascending:selector:",
                                sortDescriptorWithKey_ascending_selector),
                    instanceMethod("initWithKey:ascending:", initWithKey_ascending),
                    instanceMethod("initWithKey:ascending:selector:", initWithKey_ascending_selector),
                    instanceMethod("copyWithZone:", copyWithZone), instanceMethod("key", key),
                    instanceMethod("ascending", ascending), instanceMethod("selector", selector),
                    instanceMethod("compareObject:toObject:", compareObject_toObject),
                    instanceMethod("reversedSortDescriptor", reversedSortDescriptor),
                    instanceMethod("isEqual:", isEqual), instanceMethod("hash", hash),
                    instanceMethod("description", description),
                    instanceMethod("encodeWithCoder:", encodeWithCoder),
                    instanceMethod("initWithCoder:", initWithCoder)},
    };
}

} // namespace tessarin::embedded
