// What the Objective-C face tells automatic reference counting where names and types do not say who owns an
// object.
#pragma once

// After the declaration of an initialiser whose name does not begin with init.
#if defined(__OBJC__) && defined(__clang__)
#    define TESSARIN_INITIALISER __attribute__((objc_method_family(init)))
#else
#    define TESSARIN_INITIALISER
#endif

// Before the star of an out-pointer through which a retained object is stored: the caller's variable owns it
// then. What the variable held before is not released.
#define TESSARIN_STORED_RETAINED
#if defined(__OBJC__) && defined(__has_feature)
#    if __has_feature(objc_arc)
#        undef TESSARIN_STORED_RETAINED
#        define TESSARIN_STORED_RETAINED __strong
#    endif
#endif
