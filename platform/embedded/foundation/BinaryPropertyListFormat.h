// The binary form of property lists: "bplist00", the objects, a table of their offsets, a trailer. All
// numbers are big-endian.
#pragma once

#include <cstdint>
#include <string_view>

namespace tessarin::embedded::binaryPropertyList {

inline constexpr std::string_view magic = "bplist00";

// The high four bits of an object's first byte; the low four are a length, or say more of the kind.
enum Marker : std::uint8_t {
    simple = 0x0, // false and true
    integer = 0x1,
    real = 0x2,
    date = 0x3,
    data = 0x4,
    asciiString = 0x5,
    utf16String = 0x6,
    uid = 0x8,
    array = 0xA,
    dictionary = 0xD,
};
inline constexpr std::uint8_t falseByte = 0x08;
inline constexpr std::uint8_t trueByte = 0x09;
inline constexpr std::uint8_t floatByte = 0x22;
inline constexpr std::uint8_t doubleByte = 0x23;
inline constexpr std::uint8_t dateByte = 0x33;
// In place of a length: an integer object follows that says it.
inline constexpr std::uint8_t lengthFollows = 0xF;

// The end of the document: five bytes of nothing, a sort version, and then
struct Trailer {
    std::uint8_t offsetSize;        // bytes of an entry of the offset table
    std::uint8_t referenceSize;     // bytes of an object's number inside a container
    std::uint64_t objectCount;      // 8 bytes
    std::uint64_t topObject;        // 8 bytes; the number of the object that is the property list
    std::uint64_t offsetTableStart; // 8 bytes
};
inline constexpr std::size_t trailerSize = 32;

} // namespace tessarin::embedded::binaryPropertyList
