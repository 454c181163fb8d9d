#include "TessarinPlatform/StringEncodings.h"

#include "platform/services/ExactStrings.h"
#include "platform/services/TextEncodings.h"

namespace tessarin {
namespace {

// By NSStringEncoding, from 0 on.
constexpr CFStringEncoding encodingsByNumber[] = {
    kCFStringEncodingInvalidId,     kCFStringEncodingASCII,         kCFStringEncodingNextStepLatin,
    kCFStringEncodingEUC_JP,        kCFStringEncodingUTF8,          kCFStringEncodingISOLatin1,
    kCFStringEncodingMacSymbol,     kCFStringEncodingNonLossyASCII, kCFStringEncodingDOSJapanese,
    kCFStringEncodingISOLatin2,     kCFStringEncodingUTF16,         kCFStringEncodingWindowsCyrillic,
    kCFStringEncodingWindowsLatin1, kCFStringEncodingWindowsGreek,  kCFStringEncodingWindowsLatin5,
    kCFStringEncodingWindowsLatin2,
};

constexpr NSUInteger carriedNumber = 0x80000000, carriedBits = 0x7FFFFFFF;

} // namespace

CFStringEncoding CFStringConvertNSStringEncodingToEncoding(NSUInteger encoding) {
    if (encoding & carriedNumber) return static_cast<CFStringEncoding>(encoding & carriedBits);
    if (encoding < std::size(encodingsByNumber)) return encodingsByNumber[encoding];
    switch (encoding) {
    case NSISO2022JPStringEncoding:
        return kCFStringEncodingISO_2022_JP;
    case NSMacOSRomanStringEncoding:
        return kCFStringEncodingMacRoman;
    default:
        return kCFStringEncodingInvalidId;
    }
}

NSString CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding) {
    if (!text) return nil;
    std::u16string units;
    if (!encodings::decode(encoding, text, units)) return nil;
    return exactString(units).leak();
}

} // namespace tessarin
