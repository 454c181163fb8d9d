#include "platform/services/SingleByteEncodings.h"

#include <algorithm>
#include <span>

namespace tessarin::encodings {

const SingleByteEncoding* findSingleByteEncoding(CFStringEncoding number) {
    const std::span<const SingleByteEncoding> all(singleByteEncodings, singleByteEncodingCount);
    const auto found = std::ranges::lower_bound(all, number, {}, &SingleByteEncoding::number);
    return found != all.end() && found->number == number ? &*found : nullptr;
}

std::optional<std::uint8_t> SingleByteEncoding::byteOf(unichar unit) const {
    if (unit < 0x80) return static_cast<std::uint8_t>(unit);
    const std::span bytes(bytesByUnit, count);
    const auto found = std::ranges::lower_bound(bytes, unit, {}, [this](auto byte) { return unitOf(byte); });
    if (found == bytes.end() || unitOf(*found) != unit) return std::nullopt;
    return *found;
}

bool SingleByteEncoding::decode(std::string_view bytes, std::u16string& units) const {
    for (const char byte : bytes) {
        const unichar unit = unitOf(static_cast<std::uint8_t>(byte));
        if (unit == 0 && byte != 0) return false;
        units += unit;
    }
    return true;
}

bool SingleByteEncoding::encode(std::u16string_view units, std::string& bytes) const {
    for (const unichar unit : units) {
        const std::optional<std::uint8_t> byte = byteOf(unit);
        if (!byte) return false;
        bytes += static_cast<char>(*byte);
    }
    return true;
}

} // namespace tessarin::encodings
