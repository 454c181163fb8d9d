// Percent escapes: a percent sign and two hexadecimal digits for each byte of a character.
#pragma once

#include "TessarinPlatform/StringEncodings.h"

#if !(defined(__APPLE__) && defined(__OBJC__))

#    if defined(__OBJC__)
#        define TESSARIN_STRING NSString*
#        define TESSARIN_NEW_STRING TESSARIN_EXPORT NSString*
#    else
#        define TESSARIN_STRING NSString
#        define TESSARIN_NEW_STRING [[nodiscard]] TESSARIN_EXPORT NSString
namespace tessarin {
#    endif

TESSARIN_SYSTEM_DECLARATIONS_BEGIN

// The string with escapes, in upper-case digits, for every unit that cannot stand in a URL, but for those of
// `left`, and for those of `escaped` that can. Letters, digits and ! $ & ' ( ) * + , - . / : ; = ? @ _ ~ can,
// nothing else. Either list may be nil.
//
// Each unit is converted by itself: in UTF-16 and UTF-32 a byte-order mark comes before each, in ISO-2022-JP
// the sequences that lead to its character set and back stand around each. A surrogate pair is converted in
// UTF-8 alone. nil for a unit to be escaped that the encoding, or the platform, has no bytes for, and for a
// nil string. The caller owns the result.
TESSARIN_NEW_STRING CFURLCreateStringByAddingPercentEscapes(CFAllocatorRef allocator, TESSARIN_STRING string,
                                                            TESSARIN_STRING left, TESSARIN_STRING escaped,
                                                            CFStringEncoding encoding)
    TESSARIN_SYSTEM_SYMBOL("_CFURLCreateStringByAddingPercentEscapes");

// The string with its escapes replaced by the text that their bytes are in the encoding; adjacent escapes are
// read together. Characters of `left` stay escaped; where that is nil nothing is replaced, so the empty
// string has all replaced. All else stays as it is.
//
// nil for a percent sign without two hexadecimal digits, for bytes that are no text in the encoding or whose
// encoding the platform does not have, and for a nil string. The caller owns the result.
TESSARIN_NEW_STRING
CFURLCreateStringByReplacingPercentEscapesUsingEncoding(CFAllocatorRef allocator, TESSARIN_STRING string,
                                                        TESSARIN_STRING left, CFStringEncoding encoding)
    TESSARIN_SYSTEM_SYMBOL("_CFURLCreateStringByReplacingPercentEscapesUsingEncoding");

TESSARIN_SYSTEM_DECLARATIONS_END

#    undef TESSARIN_STRING
#    undef TESSARIN_NEW_STRING
#    if !defined(__OBJC__)
} // namespace tessarin
#    endif

#endif
