// How a class of the embedded platform is written: a description made on the class's first look-up.
//
// A class keeps its data in a C++ structure that follows the object header. The runtime constructs it with
// the object, all members as their initialisers say, and destroys it after the last dealloc method has run,
// so that a class needs a dealloc method only to release objects.
#pragma once

#include "TessarinPlatform/Definition.h"

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tessarin::embedded {

struct StorageLayout {
    std::size_t size = 0;
    std::size_t alignment = 1;
    void (*construct)(void* storage) = nullptr;
    void (*destroy)(void* storage) = nullptr; // null where there is nothing to do
    bool holdsObjects = false;                // whether destroying it may release objects
};

template <class Storage>
StorageLayout storageLayout(bool holdsObjects = !std::is_trivially_destructible_v<Storage>) {
    static_assert(alignof(Storage) <= alignof(std::max_align_t));
    StorageLayout layout{sizeof(Storage), alignof(Storage), [](void* storage) { new (storage) Storage(); }};
    if constexpr (!std::is_trivially_destructible_v<Storage>)
        layout.destroy = [](void* storage) { static_cast<Storage*>(storage)->~Storage(); };
    layout.holdsObjects = holdsObjects;
    return layout;
}

struct ClassDescription {
    const char* name;
    const char* superclass;
    std::vector<const char*> protocols = {};
    StorageLayout storage = {};
    std::vector<MethodRow> methods = {};
};

// One class that the platform can define when it is first looked up. The table of them all is in
// foundation/BuiltInClasses.cpp.
struct BuiltInClass {
    const char* name;
    ClassDescription (*describe)();
};
extern const BuiltInClass builtInClasses[];
extern const std::size_t builtInClassCount;

// The data of an object whose class, or one it is derived from, is the first below NSObject to keep data and
// keeps it as `Storage`.
template <class Storage>
Storage& storageOf(NSObject object) {
    static_assert(sizeof(Object) % alignof(std::max_align_t) == 0);
    return *std::launder(
        reinterpret_cast<Storage*>(reinterpret_cast<std::byte*>(object.object()) + sizeof(Object)));
}

// A new object that the caller owns, its storage constructed and its instance variables zero, followed by
// `extraBytes` bytes that belong to it.
Object* createInstance(Class classObject, std::size_t extraBytes = 0);
// Where the extra bytes of an object of exactly that class begin.
void* extraBytesOf(Object* object);

// A new object whose storage and extra bytes are at hand.
template <class Storage>
struct Instance {
    Object* object;
    Storage& storage;
    void* extraBytes;
};
// The same as createInstance for a class of the platform's own whose objects hold a `Storage` and nothing
// else. Their layout being known, nothing is looked up; the tests in Instances_test.cpp hold it against the
// classes.
template <class Storage>
Instance<Storage> createInstanceWith(Class classObject, std::size_t extraBytes = 0) {
    static_assert(sizeof(Object) % alignof(std::max_align_t) == 0);
    void* const memory = std::malloc(sizeof(Object) + sizeof(Storage) + extraBytes);
    if (!memory) [[unlikely]]
        throw std::bad_alloc();
    std::byte* const place = static_cast<std::byte*>(memory) + sizeof(Object);
    Object* const object = new (memory) Object{static_cast<ClassRecord*>(classObject.object()), {1}};
    return {object, *new (place) Storage(), place + sizeof(Storage)};
}

// An object that lives as long as the process: retain and release do nothing.
void makeImmortal(NSObject object);

// Whether an object answers a message with this very function, that is, whether no subclass overrides it.
// Then the function's class may use what it knows of its own storage instead of sending the message.
template <class Result, class Self, class... Arguments>
bool answersWith(NSObject object, SEL selector, Result (*function)(Self, SEL, Arguments...)) {
    return runtime::lookUp(object.object(), selector) == reinterpret_cast<Implementation>(function);
}

// Where an object lies, as descriptions show it: 0x5581c0de.
std::string addressText(NSObject object);

// Raises what an unknown message raises where the one that a caller names is null, which cannot be sent.
[[noreturn]] void refuseNullSelector(NSObject receiver);
inline void requireSelector(NSObject receiver, SEL selector) {
    if (!selector) [[unlikely]]
        refuseNullSelector(receiver);
}

// Raises the platform's exception for a class of that name with a reason in the platform's wording, for
// example raiseFrom("NSRangeException"_ns, self, _cmd, "index 9 beyond bounds [0 .. 2]") gives
// *** -[NSArray objectAtIndex:]: index 9 beyond bounds [0 .. 2]
[[noreturn]] void raiseFrom(NSString name, NSObject receiver, SEL selector, std::string_view reason);

// Raises NSInvalidArgumentException where an argument is nil that may not be.
[[noreturn]] void raiseNilArgument(NSObject receiver, SEL selector);
inline void rejectNil(NSObject argument, NSObject receiver, SEL selector) {
    if (!argument) [[unlikely]]
        raiseNilArgument(receiver, selector);
}

} // namespace tessarin::embedded
