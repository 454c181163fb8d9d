// Message dispatch of the Objective-C runtime found on the machine, reached through its C interface.
//
// Its functions are declared under other names, so that a file may include the runtime's own headers as well.
#pragma once

#include "TessarinPlatform/Runtime.h"

namespace tessarin::runtime {

#if defined(__APPLE__)

Object* objectiveCClassOf(Object* object) __asm__("_object_getClass");
Implementation objectiveCLookUp(Object* classObject, SEL selector) __asm__("_class_getMethodImplementation");

inline Implementation lookUp(Object* receiver, SEL selector) {
    return objectiveCLookUp(objectiveCClassOf(receiver), selector);
}

#    if defined(__x86_64__)
// For methods whose result is a structure that the caller provides the place for. What the runtime answers
// where there is no such method, its forwarding, finds the receiver behind that place.
#        define TESSARIN_HAS_STRUCTURE_DISPATCH 1
Implementation objectiveCLookUpForStructure(Object* classObject,
                                            SEL selector) __asm__("_class_getMethodImplementation_stret");

inline Implementation lookUpForStructureInClass(Object* classObject, SEL selector) {
    return objectiveCLookUpForStructure(classObject, selector);
}
inline Implementation lookUpForStructure(Object* receiver, SEL selector) {
    return objectiveCLookUpForStructure(objectiveCClassOf(receiver), selector);
}
#    endif

#else

Implementation objectiveCLookUp(Object* receiver, SEL selector) __asm__("objc_msg_lookup");

inline Implementation lookUp(Object* receiver, SEL selector) { return objectiveCLookUp(receiver, selector); }

#endif

} // namespace tessarin::runtime
