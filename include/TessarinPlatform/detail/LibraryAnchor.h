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

#if defined(__GNUC__)
__attribute__((used)) static const char* const tessarin_libraryReference = &tessarin_libraryAnchor;
#endif
