// The handle classes that every other is built on: of any object, of a class, of a protocol.
//
// A handle is one pointer wide, owns nothing and may be nil. Calling through a nil handle is defined: the
// answer is nil, NO, zero, 0.0 or all zeros. Member functions are messages; a name is the selector with each
// inner colon written `_` and the last colon dropped (isKindOfClass: -> isKindOfClass). `class`, a word of
// the language, is written class_.
#pragma once

#include "TessarinPlatform/Runtime.h"
#include "TessarinPlatform/Selector.h"

#include <concepts>
#include <type_traits>

namespace tessarin {

class Class;
class id;
class NSString;
class Protocol;

class NSObject {
public:
    constexpr NSObject() = default; // nil
    constexpr NSObject(std::nullptr_t) {}
    explicit constexpr NSObject(Object* object) : object_(object) {}

    // The platform's own pointer to the object.
    constexpr Object* object() const { return object_; }

    constexpr explicit operator bool() const { return object_ != nullptr; }
    // Whether two handles are of the same object; isEqual asks whether the objects are equal.
    friend constexpr bool operator==(NSObject left, NSObject right) { return left.object_ == right.object_; }

    bool isEqual(NSObject other) const;
    NSUInteger hash() const;
    // The text that %@ shows, a container's with what it holds. Behind 64 MiB of text the embedded platform
    // shows a long one only once, then "...".
    NSString description() const;

    Class class_() const;
    bool isKindOfClass(Class other) const;
    bool isMemberOfClass(Class other) const;
    bool respondsToSelector(SEL selector) const;
    bool respondsToSelector(const char* name) const;
    bool conformsToProtocol(Protocol protocol) const;

    // A copy that the caller owns. An immutable object may answer itself, retained. An object that cannot be
    // copied raises the unrecognised-selector exception.
    [[nodiscard]] id copy() const;
    [[nodiscard]] id mutableCopy() const;

    // Key-value coding: the value of the operation or instance variable of that name. A number for a value
    // that is no object. A name that the object knows nothing of raises NSUndefinedKeyException. An array
    // answers its items' values; arrays that stand in each other so often that there would be 2^24 of them
    // raise NSInvalidArgumentException (embedded).
    id valueForKey(NSString key) const;
    // The same along keys that are parted by full stops.
    id valueForKeyPath(NSString keyPath) const;
    // By the operation set<Key>:, or into the instance variable _<key>, _is<Key>, <key> or is<Key>, where an
    // object is retained and the one before released.
    void setValue_forKey(NSObject value, NSString key) const;

    // Reference counting by hand. Retained<T> does it in types and is to be preferred.
    NSUInteger retainCount() const;

    static Class classObject();

private:
    Object* object_ = nullptr;
};

// A plain handle: a class of one pointer that is derived from NSObject.
template <class T>
concept HandleType = std::derived_from<T, NSObject> && std::is_trivially_copyable_v<T> && sizeof(T)
                     == sizeof(void*);

// What an operation answers whose result may be of any class. It becomes a handle of any class without a
// cast, as the platform's own `id` does: NSArray items = dictionary.objectForKey("items"_ns);
class id : public NSObject {
public:
    using NSObject::NSObject;
    constexpr id() = default;
    constexpr id(NSObject object) : NSObject(object) {}

    template <HandleType T>
    requires(!std::same_as<T, id> && !std::same_as<T, NSObject>) constexpr operator T() const {
        return T(static_cast<NSObject>(*this));
    }
};

// A class of the platform as an object, which it is: class operations are messages to it.
class Class : public NSObject {
public:
    using NSObject::NSObject;
    constexpr Class() = default;
    explicit constexpr Class(NSObject object) : NSObject(object) {}

    // A new instance, owned by the caller, to be sent an operation of the init family.
    [[nodiscard]] id alloc() const;
    Class superclass() const;
    bool instancesRespondToSelector(SEL selector) const;
    bool isSubclassOfClass(Class other) const;
};

class Protocol : public NSObject {
public:
    using NSObject::NSObject;
    constexpr Protocol() = default;
    explicit constexpr Protocol(NSObject object) : NSObject(object) {}
};

namespace detail {

template <FixedString Name>
TESSARIN_OF_EACH_BINARY inline constinit std::atomic<Object*> classSlot{nullptr};
template <FixedString Name>
TESSARIN_OF_EACH_BINARY inline constinit std::atomic<Object*> protocolSlot{nullptr};

// A slot that stays empty is looked up again: the class may be defined later.
inline Object* fillSlot(std::atomic<Object*>& slot, Object* (*lookUp)(const char*), const char* name) {
    Object* found = slot.load(std::memory_order_acquire);
    if (!found) [[unlikely]] {
        found = lookUp(name);
        slot.store(found, std::memory_order_release);
    }
    return found;
}

} // namespace detail

// The class or protocol of that name, nil where there is none.
template <detail::FixedString Name>
inline Class operator""_class() {
    return Class(detail::fillSlot(detail::classSlot<Name>, runtime::lookUpClass, Name.c_str()));
}
template <detail::FixedString Name>
inline Protocol operator""_protocol() {
    return Protocol(detail::fillSlot(detail::protocolSlot<Name>, runtime::lookUpProtocol, Name.c_str()));
}

// What the handle class `Self` of the platform class `Name` has in common with every other: construction,
// explicit from a less exact handle; the class object; alloc.
template <class Self, detail::FixedString Name, class Super>
class Handle : public Super {
public:
    constexpr Handle() = default;
    constexpr Handle(std::nullptr_t) {}
    explicit constexpr Handle(Object* object) : Super(NSObject(object)) {}
    explicit constexpr Handle(const NSObject& object) : Super(object) {}
    explicit constexpr Handle(const id& object) : Super(static_cast<const NSObject&>(object)) {}

    static Class classObject() { return operator""_class<Name>(); }
    [[nodiscard]] static Self alloc() { return Self(static_cast<NSObject>(classObject().alloc())); }
};

// A handle of a more exact class, unchecked like a C cast.
template <HandleType T>
constexpr T as(NSObject object) {
    return T(object);
}

// The object as a handle of a class when it is of that class or a class derived from it, nil when it is not.
template <HandleType T>
T kindOf(NSObject object) {
    return object.isKindOfClass(T::classObject()) ? T(object) : T();
}

} // namespace tessarin
