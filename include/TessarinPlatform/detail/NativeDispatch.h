// Message dispatch of the Objective-C runtime found on the machine, reached through its C interface.
#pragma once

#include "TessarinPlatform/Runtime.h"

namespace tessarin::runtime {

#if !defined(__APPLE__)
// Declared under another name, so that a file may include the runtime's own headers as well.
Implementation objectiveCLookUp(Object* receiver, SEL selector) __asm__("objc_msg_lookup");
#endif

inline Implementation lookUp(Object* receiver, SEL selector) {
#if defined(__APPLE__)
    return lookUpInClass(classOf(receiver), selector);
#else
    return objectiveCLookUp(receiver, selector);
#endif
}

} // namespace tessarin::runtime
