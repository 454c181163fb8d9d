// Ties a program that includes a header of the library to the library itself.
//
// A program in Objective-C that only sends messages refers to none of the library's symbols, so that the
// linker would leave the library out, and with it every operation that is attached when it is loaded. This
// reference keeps it in, without a flag of the linker.
#pragma once

#include "TessarinPlatform/detail/Configuration.h"

#if defined(__cplusplus)
extern "C" {
#endif
TESSARIN_EXPORT extern const char tessarin_libraryAnchor;
#if defined(__cplusplus)
}
#endif

// Before the interface of a class that the library makes when it is loaded: Apple's linker then looks for no
// symbol of it. There such a class can be neither extended nor derived from by compiled Objective-C.
#if defined(__OBJC__) && defined(__APPLE__)
#    define TESSARIN_DEFINED_AT_RUN_TIME __attribute__((objc_runtime_visible))
#else
#    define TESSARIN_DEFINED_AT_RUN_TIME
#endif

#if defined(__GNUC__)
__attribute__((used)) static const char* const tessarin_libraryReference = &tessarin_libraryAnchor;
#endif
