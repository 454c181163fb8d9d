// Percent escapes in all encodings: any text gives text or nil, and what is escaped is read back as it was.
//
// The first byte of an input chooses the encoding; the rest is UTF-16, the less significant byte first.
#include "Require.h"

#include "TessarinPlatform/TessarinPlatform.h"

#include <string>

using namespace tessarin;
using fuzzing::require;

namespace {

constexpr CFStringEncoding encodings[] = {kCFStringEncodingUTF8,
                                          kCFStringEncodingASCII,
                                          kCFStringEncodingISOLatin1,
                                          kCFStringEncodingUTF16,
                                          kCFStringEncodingUTF16BE,
                                          kCFStringEncodingUTF16LE,
                                          kCFStringEncodingUTF32,
                                          kCFStringEncodingUTF32BE,
                                          kCFStringEncodingUTF32LE,
                                          kCFStringEncodingEUC_JP,
                                          kCFStringEncodingShiftJIS,
                                          kCFStringEncodingDOSJapanese,
                                          kCFStringEncodingKOI8_R,
                                          kCFStringEncodingISO_2022_JP,
                                          kCFStringEncodingNextStepLatin,
                                          kCFStringEncodingMacRoman,
                                          kCFStringEncodingWindowsLatin1,
                                          0x0502,
                                          0x0507,
                                          0x0206,
                                          0x7777};

Retained<NSString> added(NSString string, NSString escaped, CFStringEncoding encoding) {
    return adopt(
        CFURLCreateStringByAddingPercentEscapes(kCFAllocatorDefault, string, nil, escaped, encoding));
}
Retained<NSString> replaced(NSString string, CFStringEncoding encoding) {
    return adopt(CFURLCreateStringByReplacingPercentEscapesUsingEncoding(kCFAllocatorDefault, string, ""_ns,
                                                                         encoding));
}

// Adjacent escapes are read together, and then a mark that stands before each unit is text in the middle.
bool hasMarks(CFStringEncoding encoding) {
    return encoding == kCFStringEncodingUTF16 || encoding == kCFStringEncodingUTF32;
}

void checkThatEscapesAreReadBack(NSString string, CFStringEncoding encoding) {
    for (const NSString list : {NSString(), " $&+,/:;=?@"_ns}) {
        const Retained<NSString> escaped = added(string, list, encoding);
        if (!escaped) continue;
        for (const char unit : static_cast<std::string>(escaped))
            require(unit > ' ' && unit < 0x7F, "escapes are all of ASCII that can stand in a URL");
        if (hasMarks(encoding)) continue;
        const Retained<NSString> again = replaced(escaped, encoding);
        require(bool(again) && again.isEqualToString(string), "what is escaped is read back as it was");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const AutoreleasePool pool;
    const CFStringEncoding encoding = encodings[data[0] % std::size(encodings)];
    std::u16string units;
    for (std::size_t index = 1; index + 1 < size; index += 2)
        units += static_cast<unichar>(data[index] | data[index + 1] << 8);

    const NSString string(units);
    checkThatEscapesAreReadBack(string, encoding);
    if (const Retained<NSString> text = replaced(string, encoding)) {
        require(text.length() <= string.length(), "escapes are no shorter than what they stand for");
        checkThatEscapesAreReadBack(text, encoding);
    }
    return 0;
}
