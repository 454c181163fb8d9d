// NSObject, the root class, and Protocol.
#include "platform/embedded/foundation/NSObject+KeyValueCoding.h"
#include "platform/embedded/runtime/Classes.h"
#include "platform/embedded/runtime/Instances.h"
#include "platform/embedded/runtime/ReferenceCounting.h"

#include "TessarinPlatform/Exceptions.h"

#include <charconv>
#include <iterator>
#include <limits>

namespace tessarin::embedded {
namespace {

// ---- Class methods

id alloc(Class self, SEL) { return send<id>(self, "allocWithZone:"_sel, static_cast<void*>(nullptr)); }
id allocWithZone(Class self, SEL, void*) { return id(NSObject(createInstance(self))); }
id newObject(Class self, SEL) { return send<id>(self.alloc(), "init"_sel); }
Class classOfClass(Class self, SEL) { return self; }
Class superclassOfClass(Class self, SEL) { return Class(NSObject(runtime::superclassOf(self.object()))); }
NSString classDescription(Class self, SEL) { return NSString(runtime::className(self.object())); }

BOOL isSubclassOfClass(Class self, SEL, Class other) {
    for (Object* each = self.object(); each; each = runtime::superclassOf(each))
        if (each == other.object()) return YES;
    return NO;
}

BOOL instancesRespondToSelector(Class self, SEL, SEL selector) {
    return selector && runtime::instancesRespond(self.object(), selector);
}

BOOL classConformsToProtocol(Class self, SEL, Protocol protocol) {
    return adopts(runtimeClass(self.object()), protocol.object());
}

// A class is its own copy, so that it can be a dictionary's key.
id copyClass(Class self, SEL, void*) { return self; }

// ---- Instance methods

id init(NSObject self, SEL) { return self; }
void dealloc(NSObject self, SEL) { disposeInstance(self.object()); }

Class classOfObject(NSObject self, SEL) { return Class(NSObject(runtime::classOf(self.object()))); }
Class superclassOfObject(NSObject self, SEL) {
    return Class(NSObject(runtime::superclassOf(runtime::classOf(self.object()))));
}
NSObject self_(NSObject self, SEL) { return self; }

BOOL isEqual(NSObject self, SEL, NSObject other) { return self == other; }
// Objects lie at multiples of 16.
NSUInteger hash(NSObject self, SEL) { return reinterpret_cast<NSUInteger>(self.object()) >> 4; }

NSString description(NSObject self, SEL) {
    return NSString("<" + std::string(runtime::className(runtime::classOf(self.object()))) + ": "
                    + addressText(self) + ">");
}

BOOL isKindOfClass(NSObject self, SEL, Class other) {
    for (Object* each = runtime::classOf(self.object()); each; each = runtime::superclassOf(each))
        if (each == other.object()) return YES;
    return NO;
}
BOOL isMemberOfClass(NSObject self, SEL, Class other) {
    return runtime::classOf(self.object()) == other.object();
}
BOOL respondsToSelector(NSObject self, SEL, SEL selector) {
    return selector && runtime::instancesRespond(runtime::classOf(self.object()), selector);
}
BOOL conformsToProtocol(NSObject self, SEL, Protocol protocol) {
    return adopts(classRecordOf(self.object()), protocol.object());
}

void doesNotRecognizeSelector(NSObject self, SEL, SEL selector) {
    Object* object = self.object();
    const bool isClass = classRecordOf(object)->isMetaclass;
    std::string reason(isClass ? "+[" : "-[");
    reason += isClass ? runtime::className(object) : runtime::className(runtime::classOf(object));
    reason.append(" ").append(runtime::selectorName(selector)).append("]: unrecognized selector sent to ");
    reason.append(isClass ? "class " : "instance ").append(addressText(NSObject(object)));
    raise(NSInvalidArgumentException(), NSString(reason));
}

id performSelector(NSObject self, SEL, SEL selector) {
    requireSelector(self, selector);
    return send<id>(self, selector);
}
id performSelectorWithObject(NSObject self, SEL, SEL selector, NSObject argument) {
    requireSelector(self, selector);
    return send<id>(self, selector, argument);
}

// An object that cannot be copied has no copyWithZone:, and says so.
id copy(NSObject self, SEL) { return send<id>(self, "copyWithZone:"_sel, static_cast<void*>(nullptr)); }
id mutableCopy(NSObject self, SEL) {
    return send<id>(self, "mutableCopyWithZone:"_sel, static_cast<void*>(nullptr));
}

// What an object is archived as.
Class classForCoder(NSObject self, SEL) { return self.class_(); }
Class classForKeyedArchiver(NSObject self, SEL) { return send<Class>(self, "classForCoder"_sel); }

NSObject retainObject(NSObject self, SEL) {
    addReference(self.object());
    return self;
}
void releaseObject(NSObject self, SEL) { removeReference(self.object()); }
NSObject autoreleaseObject(NSObject self, SEL) {
    autoreleaseReference(self.object());
    return self;
}
NSUInteger retainCount(NSObject self, SEL) {
    // An object that lives as long as the process has no count to speak of.
    const std::intptr_t references = self.object()->references.load(std::memory_order_relaxed);
    return references < 0 ? std::numeric_limits<NSUInteger>::max() : static_cast<NSUInteger>(references);
}

// ---- Protocol

NSString protocolDescription(Protocol self, SEL) { return NSString(protocolName(self.object())); }

} // namespace

std::string addressText(NSObject object) {
    char digits[2 * sizeof(void*)];
    const auto address = reinterpret_cast<std::uintptr_t>(object.object());
    return "0x" + std::string(digits, std::to_chars(digits, std::end(digits), address, 16).ptr);
}

const Implementation rootDealloc = reinterpret_cast<Implementation>(dealloc);

// All but key-value coding.
static ClassDescription describeRoot() {
    return {.name = "NSObject",
            .superclass = nullptr,
            .protocols = {"NSObject"},
            .methods = {
                classMethod("alloc", alloc),
                classMethod("allocWithZone:", allocWithZone),
                classMethod("new", newObject),
                classMethod("class", classOfClass),
                classMethod("superclass", superclassOfClass),
                classMethod("description", classDescription),
                classMethod("isSubclassOfClass:", isSubclassOfClass),
                classMethod("instancesRespondToSelector:", instancesRespondToSelector),
                classMethod("conformsToProtocol:", classConformsToProtocol),
                classMethod("copyWithZone:", copyClass),
                instanceMethod("init", init),
                instanceMethod("dealloc", dealloc),
                instanceMethod("class", classOfObject),
                instanceMethod("superclass", superclassOfObject),
                instanceMethod("self", self_),
                instanceMethod("isEqual:", isEqual),
                instanceMethod("hash", hash),
                instanceMethod("description", description),
                instanceMethod("isKindOfClass:", isKindOfClass),
                instanceMethod("isMemberOfClass:", isMemberOfClass),
                instanceMethod("respondsToSelector:", respondsToSelector),
                instanceMethod("conformsToProtocol:", conformsToProtocol),
                instanceMethod("doesNotRecognizeSelector:", doesNotRecognizeSelector),
                instanceMethod("performSelector:", performSelector),
                instanceMethod("performSelector:withObject:", performSelectorWithObject),
                instanceMethod("copy", copy),
                instanceMethod("mutableCopy", mutableCopy),
                instanceMethod("classForCoder", classForCoder),
                instanceMethod("classForKeyedArchiver", classForKeyedArchiver),
                instanceMethod("retain", retainObject),
                instanceMethod("release", releaseObject),
                instanceMethod("autorelease", autoreleaseObject),
                instanceMethod("retainCount", retainCount),
            }};
}

ClassDescription describeNSObject() {
    ClassDescription description = describeRoot();
    const std::vector<MethodRow> keyValueCoding = keyValueCodingMethods();
    description.methods.insert(description.methods.end(), keyValueCoding.begin(), keyValueCoding.end());
    return description;
}

ClassDescription describeProtocol() {
    return {.name = "Protocol",
            .superclass = "NSObject",
            .methods = {instanceMethod("description", protocolDescription)}};
}

} // namespace tessarin::embedded
