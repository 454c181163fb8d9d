// Encodings of text by the two kinds of numbers that the platform has for them: NSStringEncoding, which its
// strings take, and CFStringEncoding, which its plain functions take.
#pragma once

#include "TessarinPlatform/detail/Configuration.h"

#if defined(__APPLE__) && defined(__OBJC__)
#    import <CoreFoundation/CoreFoundation.h>
#else

#    if defined(__OBJC__)
#        import <Foundation/NSString.h>
#        include <stdint.h>
#    else
#        include "TessarinPlatform/NSString.h"
namespace tessarin {
#    endif

typedef uint32_t CFStringEncoding;

#    if defined(__OBJC__)
enum {
#    else
enum : CFStringEncoding {
#    endif
    // No encoding at all.
    kCFStringEncodingInvalidId = 0xFFFFFFFF,

    // The encodings that text can be converted from and to. A character is written only where what is written
    // reads as that very character.
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingUTF16 = 0x0100, // with a byte-order mark
    kCFStringEncodingUTF16BE = 0x10000100,
    kCFStringEncodingUTF16LE = 0x14000100,
    kCFStringEncodingUTF8 = 0x08000100,
    kCFStringEncodingUTF32 = 0x0C000100, // with a byte-order mark
    kCFStringEncodingUTF32BE = 0x18000100,
    kCFStringEncodingUTF32LE = 0x1C000100,
    kCFStringEncodingISOLatin1 = 0x0201, // ISO 8859-2 to -16 follow
    kCFStringEncodingISOLatin2 = 0x0202,
    kCFStringEncodingDOSJapanese = 0x0420, // Windows-932
    kCFStringEncodingWindowsLatin1 = 0x0500,
    kCFStringEncodingWindowsLatin2 = 0x0501,
    kCFStringEncodingWindowsCyrillic = 0x0502,
    kCFStringEncodingWindowsGreek = 0x0503,
    kCFStringEncodingWindowsLatin5 = 0x0504, // Windows 1255 to 1258 follow
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingISO_2022_JP = 0x0820,
    kCFStringEncodingEUC_JP = 0x0920,
    kCFStringEncodingShiftJIS = 0x0A01,
    kCFStringEncodingKOI8_R = 0x0A02,
    kCFStringEncodingNextStepLatin = 0x0B01,

    // Encodings that have a number, and nothing more.
    kCFStringEncodingMacSymbol = 0x0021,
    kCFStringEncodingNonLossyASCII = 0x0BFF,
};

// What makes objects; there is only the one.
typedef const void* CFAllocatorRef;
static const CFAllocatorRef kCFAllocatorDefault = 0;

TESSARIN_SYSTEM_DECLARATIONS_BEGIN

// The encoding that an NSStringEncoding stands for, kCFStringEncodingInvalidId when there is none. With bit
// 31 set the other bits are the number, whether or not there is such an encoding; bits above are ignored.
//
//   CFStringConvertNSStringEncodingToEncoding(NSUTF8StringEncoding)   // kCFStringEncodingUTF8
#    if defined(__OBJC__)
TESSARIN_EXPORT CFStringEncoding CFStringConvertNSStringEncodingToEncoding(unsigned long encoding);
#    else
TESSARIN_EXPORT CFStringEncoding CFStringConvertNSStringEncodingToEncoding(NSUInteger encoding)
    TESSARIN_SYSTEM_SYMBOL("_CFStringConvertNSStringEncodingToEncoding");
#    endif

// The string that bytes, of which the last is followed by a zero, stand for; nil when they are no text in the
// encoding. The caller owns it.
#    if defined(__OBJC__)
TESSARIN_EXPORT NSString* CFStringCreateWithCString(CFAllocatorRef allocator, const char* text,
                                                    CFStringEncoding encoding);
#    else
[[nodiscard]] TESSARIN_EXPORT NSString CFStringCreateWithCString(CFAllocatorRef allocator, const char* text,
                                                                 CFStringEncoding encoding)
    TESSARIN_SYSTEM_SYMBOL("_CFStringCreateWithCString");
#    endif

TESSARIN_SYSTEM_DECLARATIONS_END

#    if !defined(__OBJC__)
} // namespace tessarin
#    endif

#endif
