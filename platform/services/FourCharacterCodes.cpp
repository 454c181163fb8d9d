#include "TessarinPlatform/FourCharacterCodes.h"

#include "platform/services/SingleByteEncodings.h"

#include <optional>

namespace tessarin {
namespace {

const encodings::SingleByteEncoding& macRoman() {
    return *encodings::findSingleByteEncoding(kCFStringEncodingMacRoman);
}

constexpr NSUInteger codeLength = sizeof(OSType);

} // namespace

NSString UTCreateStringForOSType(OSType code) {
    const encodings::SingleByteEncoding& encoding = macRoman();
    unichar units[codeLength];
    for (NSUInteger index = codeLength; index-- > 0; code >>= 8)
        units[index] = encoding.unitOf(static_cast<std::uint8_t>(code & 0xFF));
    return NSString::alloc().initWithCharacters_length(units, codeLength);
}

OSType UTGetOSTypeFromString(NSString string) {
    if (string.length() != codeLength) return 0;
    unichar units[codeLength];
    string.getCharacters_range(units, {0, codeLength});
    const encodings::SingleByteEncoding& encoding = macRoman();
    OSType code = 0;
    for (const unichar unit : units) {
        const std::optional<std::uint8_t> byte = encoding.byteOf(unit);
        if (!byte) return 0;
        code = code << 8 | *byte;
    }
    return code;
}

} // namespace tessarin
