#include "TessarinPlatform/FourCharacterCodes.h"

#include "platform/services/MacRomanTable.generated.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tessarin {
namespace {

struct UnitAndByte {
    unichar unit;
    std::uint8_t byte;
};

// The table turned round, sorted for searching.
constexpr auto macRomanByUnit = [] {
    std::array<UnitAndByte, std::size(macRomanUpperHalf)> entries{};
    for (std::size_t index = 0; index < entries.size(); ++index)
        entries[index] = {macRomanUpperHalf[index], static_cast<std::uint8_t>(0x80 + index)};
    std::ranges::sort(entries, {}, &UnitAndByte::unit);
    return entries;
}();

constexpr unichar unitOfByte(std::uint8_t byte) {
    return byte < 0x80 ? unichar{byte} : macRomanUpperHalf[byte - 0x80];
}

constexpr std::optional<std::uint8_t> byteOfUnit(unichar unit) {
    if (unit < 0x80) return static_cast<std::uint8_t>(unit);
    const auto* const found = std::ranges::lower_bound(macRomanByUnit, unit, {}, &UnitAndByte::unit);
    if (found == macRomanByUnit.end() || found->unit != unit) return std::nullopt;
    return found->byte;
}

constexpr NSUInteger codeLength = sizeof(OSType);

} // namespace

NSString UTCreateStringForOSType(OSType code) {
    unichar units[codeLength];
    for (NSUInteger index = codeLength; index-- > 0; code >>= 8)
        units[index] = unitOfByte(static_cast<std::uint8_t>(code & 0xFF));
    return NSString::alloc().initWithCharacters_length(units, codeLength);
}

OSType UTGetOSTypeFromString(NSString string) {
    if (string.length() != codeLength) return 0;
    unichar units[codeLength];
    string.getCharacters_range(units, {0, codeLength});
    OSType code = 0;
    for (const unichar unit : units) {
        const std::optional<std::uint8_t> byte = byteOfUnit(unit);
        if (!byte) return 0;
        code = code << 8 | *byte;
    }
    return code;
}

} // namespace tessarin
