// The runtime seam: what the library asks of an object runtime, whichever it is. The two platforms define
// these functions; everything above them is the same on both.
#pragma once

#include "TessarinPlatform/Types.h"

#include <string_view>

namespace tessarin {

struct Object;         // an object of the platform; only ever pointed to
struct SelectorRecord; // a registered selector; only ever pointed to

// A selector: the name of a message. Equal names give the same pointer.
using SEL = const SelectorRecord*;

// A method's code. It is cast to its exact prototype, (receiver, selector, arguments...), before it is
// called.
using Implementation = void (*)();

namespace runtime {

// The selector of that name; it is registered when it is new, so every name, even an empty one, gives a
// selector.
TESSARIN_EXPORT SEL registerSelector(const char* name);
// The name of a selector that is not null; valid for the life of the process.
TESSARIN_EXPORT const char* selectorName(SEL selector);

// The class of that name, or null.
TESSARIN_EXPORT Object* lookUpClass(const char* name);
// The protocol of that name, or null where the platform has none.
TESSARIN_EXPORT Object* lookUpProtocol(const char* name);

// The class whose instance an object is (a metaclass for a class); null for null.
TESSARIN_EXPORT Object* classOf(Object* object);
TESSARIN_EXPORT Object* superclassOf(Object* classObject);
TESSARIN_EXPORT const char* className(Object* classObject);

// The method that instances of a class have; where there is none, code that raises the unrecognised-selector
// exception, or the raising itself.
TESSARIN_EXPORT Implementation lookUpInClass(Object* classObject, SEL selector);
// Whether instances of a class have the method, inherited ones included.
TESSARIN_EXPORT bool instancesRespond(Object* classObject, SEL selector);

// Reference counting as the platform does it, overridden methods honoured. Null is allowed.
TESSARIN_EXPORT Object* retain(Object* object);
TESSARIN_EXPORT void release(Object* object);
TESSARIN_EXPORT Object* autorelease(Object* object);

// A release scope. Pools are closed in reverse order of opening, on the thread that opened them.
TESSARIN_EXPORT void* openPool();
TESSARIN_EXPORT void closePool(void* pool);

// The recursive lock that every object carries. Null is allowed and locks nothing.
TESSARIN_EXPORT void lock(Object* object);
TESSARIN_EXPORT void unlock(Object* object);

// A string of the platform that lives as long as the process. Ill-formed text gives null.
TESSARIN_EXPORT Object* makeConstantString(std::string_view utf8);
TESSARIN_EXPORT Object* makeConstantString(std::u16string_view units);
// Takes back one that nobody has seen yet. Null is allowed.
TESSARIN_EXPORT void discardConstantString(Object* string);

} // namespace runtime
} // namespace tessarin

// Dispatch itself is inline, since every call on a handle goes through it:
//   namespace runtime { Implementation lookUp(Object* receiver, SEL selector); }   receiver is not null
#if TESSARIN_PLATFORM_EMBEDDED
#    include "TessarinPlatform/detail/EmbeddedDispatch.h"
#else
#    include "TessarinPlatform/detail/NativeDispatch.h"
#endif
