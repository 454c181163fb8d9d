// The Objective-C runtime's C interface beside the seam's own types. Included instead of <objc/runtime.h>:
// the two use the same names for the same things, the runtime's in the global namespace and some as macros.
#pragma once

#include "TessarinPlatform/Definition.h"

#include <objc/runtime.h>
#if defined(__APPLE__)
// What <objc/objc-sync.h> declares, which not every collection of the runtime's headers has.
extern "C" {
int objc_sync_enter(::id object);
int objc_sync_exit(::id object);
}
#else
#    include <objc/objc-exception.h>
#    include <objc/objc-sync.h>
#endif

#undef YES
#undef NO
#undef nil
#undef Nil

namespace tessarin::native {

// The same pointers under the runtime's types, and back.
inline ::id runtimeObject(Object* object) { return reinterpret_cast<::id>(object); }
inline ::Class runtimeClass(Object* object) { return reinterpret_cast<::Class>(object); }
inline ::SEL runtimeSelector(SEL selector) {
    return reinterpret_cast<::SEL>(const_cast<SelectorRecord*>(selector)); // constant in some runtimes' types
}
inline ::IMP runtimeImplementation(Implementation implementation) {
    return reinterpret_cast<::IMP>(implementation);
}
inline Object* objectOf(::Class classObject) { return reinterpret_cast<Object*>(classObject); }
inline Object* objectOf(::id object) { return reinterpret_cast<Object*>(object); }

// The class of that name. Unlike runtime::lookUpClass it leaves what waits for classes alone.
inline ::Class loadedClass(const char* name) { return reinterpret_cast<::Class>(objc_lookUpClass(name)); }

// Puts a function in the place of a platform class's method, and answers what was there.
template <class Function>
Function* replaceMethod(const char* className, const char* selector, Function* replacement) {
    const ::Method method = class_getInstanceMethod(loadedClass(className), sel_registerName(selector));
    if (!method) return nullptr;
    const auto implementation = runtimeImplementation(reinterpret_cast<Implementation>(replacement));
    return reinterpret_cast<Function*>(
        reinterpret_cast<Implementation>(method_setImplementation(method, implementation)));
}

} // namespace tessarin::native
