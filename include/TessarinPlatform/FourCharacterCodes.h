// Four-character codes as strings, in Mac OS Roman: every byte is one character, and back.
#pragma once

#include "TessarinPlatform/AudioTypes.h"

#if defined(__APPLE__) && defined(__OBJC__)
#    import <CoreServices/CoreServices.h>
#else

#    if !defined(__OBJC__)
namespace tessarin {
#    endif

TESSARIN_SYSTEM_DECLARATIONS_BEGIN

// The four characters of a code, the most significant byte first; trailing spaces are kept. The caller owns
// the string.
//
//   Retained<NSString> type = adopt(UTCreateStringForOSType(0x61756678)); // aufx
#    if defined(__OBJC__)
TESSARIN_EXPORT NSString* UTCreateStringForOSType(OSType code);
#    else
[[nodiscard]] TESSARIN_EXPORT NSString UTCreateStringForOSType(OSType code)
    TESSARIN_SYSTEM_SYMBOL("_UTCreateStringForOSType");
#    endif

// The code that a string of exactly four Mac OS Roman characters encodes; 0 for any other string and for nil.
#    if defined(__OBJC__)
TESSARIN_EXPORT OSType UTGetOSTypeFromString(NSString* string);
#    else
TESSARIN_EXPORT OSType UTGetOSTypeFromString(NSString string)
    TESSARIN_SYSTEM_SYMBOL("_UTGetOSTypeFromString");
#    endif

TESSARIN_SYSTEM_DECLARATIONS_END

#    if !defined(__OBJC__)
} // namespace tessarin
#    endif

#endif
