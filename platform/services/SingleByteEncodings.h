// Encodings that have a byte for each of their characters, of which the lower half is ASCII.
#pragma once

#include "TessarinPlatform/StringEncodings.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessarin::encodings {

struct SingleByteEncoding {
    CFStringEncoding number;
    unichar upperHalf[128];        // the units of the bytes from 80 on, 0 where there is none
    std::uint8_t count;            // how many there are
    std::uint8_t bytesByUnit[128]; // their bytes in the order of the units

    // 0 for a byte that stands for nothing, as for the byte 0.
    unichar unitOf(std::uint8_t byte) const { return byte < 0x80 ? unichar{byte} : upperHalf[byte - 0x80]; }
    std::optional<std::uint8_t> byteOf(unichar unit) const;

    bool decode(std::string_view bytes, std::u16string& units) const;
    bool encode(std::u16string_view units, std::string& bytes) const;
};

// In the order of their numbers.
extern const SingleByteEncoding singleByteEncodings[];
extern const std::size_t singleByteEncodingCount;

// Null when none has that number.
const SingleByteEncoding* findSingleByteEncoding(CFStringEncoding number);

} // namespace tessarin::encodings
