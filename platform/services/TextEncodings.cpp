#include "platform/services/TextEncodings.h"

#include "platform/services/JapaneseEncodings.h"
#include "platform/services/SingleByteEncodings.h"
#include "platform/services/Utf8.h"

#include <bit>

namespace tessarin::encodings {
namespace {

// ---- ASCII

// Bytes above 7F are those of Latin-1 when they are read, which is what the platform makes of them.
void decodeAscii(std::string_view bytes, std::u16string& units) {
    for (const char byte : bytes) units += unichar{static_cast<std::uint8_t>(byte)};
}
bool encodeAscii(std::u16string_view units, std::string& bytes) {
    for (const unichar unit : units) {
        if (unit >= 0x80) return false;
        bytes += static_cast<char>(unit);
    }
    return true;
}

// ---- Unicode

constexpr char32_t byteOrderMark = 0xFEFF, lastCharacter = 0x10FFFF;

bool hasUnpairedSurrogate(std::u16string_view units) {
    return utf8::hasUnpairedSurrogate(units.data(), units.size());
}

// In one go, since the units are never more than the bytes.
bool decodeUtf8(std::string_view bytes, std::u16string& units) {
    const std::size_t before = units.size();
    units.resize(before + bytes.size());
    unichar* place = units.data() + before;
    const auto* next = reinterpret_cast<const unsigned char*>(bytes.data());
    for (const unsigned char* const end = next + bytes.size(); next != end;) {
        if (*next < 0x80) {
            *place++ = *next++;
            continue;
        }
        char32_t character;
        const std::size_t length = utf8::multiByte(next, static_cast<std::size_t>(end - next), character);
        if (length == 0) return false;
        next += length;
        place = utf8::writeCharacter(character, place);
    }
    units.resize(static_cast<std::size_t>(place - units.data()));
    return true;
}
bool encodeUtf8(std::u16string_view units, std::string& bytes) {
    if (hasUnpairedSurrogate(units)) return false;
    const std::size_t before = bytes.size();
    bytes.resize(before + utf8::encodedLength(units.data(), units.size()));
    utf8::encode(units.data(), units.size(), bytes.data() + before);
    return true;
}

char32_t number(const char* bytes, std::size_t width, std::endian order) {
    char32_t result = 0;
    for (std::size_t index = 0; index < width; ++index)
        result = result << 8
                 | static_cast<std::uint8_t>(bytes[order == std::endian::big ? index : width - 1 - index]);
    return result;
}
void appendNumber(std::string& bytes, char32_t value, std::size_t width, std::endian order) {
    for (std::size_t index = 0; index < width; ++index)
        bytes += static_cast<char>(
            static_cast<std::uint8_t>(value >> 8 * (order == std::endian::big ? width - 1 - index : index)));
}

// Characters of a fixed width in bytes. Where the order of the bytes is left open, a mark says which it is,
// and without one it is big-endian; it is written in the machine's own order, behind a mark.
struct FixedWidth {
    std::size_t width;
    bool isMarked;
    std::endian order = std::endian::native;

    bool decode(std::string_view bytes, std::u16string& units) const {
        if (bytes.size() % width != 0) return false;
        std::endian readOrder = order;
        if (isMarked) {
            const bool isLittle =
                !bytes.empty() && number(bytes.data(), width, std::endian::little) == byteOrderMark;
            readOrder = isLittle ? std::endian::little : std::endian::big;
            if (!bytes.empty() && number(bytes.data(), width, readOrder) == byteOrderMark)
                bytes.remove_prefix(width);
        }
        const std::size_t before = units.size();
        for (std::size_t index = 0; index < bytes.size(); index += width) {
            const char32_t character = number(bytes.data() + index, width, readOrder);
            if (character > lastCharacter || (width > 2 && utf8::isSurrogate(character))) return false;
            unichar written[2];
            units.append(written, utf8::writeCharacter(character, written));
        }
        return !hasUnpairedSurrogate(std::u16string_view(units).substr(before));
    }
    bool encode(std::u16string_view units, std::string& bytes) const {
        if (hasUnpairedSurrogate(units)) return false;
        if (isMarked) appendNumber(bytes, byteOrderMark, width, order);
        for (std::size_t index = 0; index < units.size();)
            appendNumber(bytes,
                         width == 2 ? units[index++] : utf8::nextCharacter(units.data(), units.size(), index),
                         width, order);
        return true;
    }
};

struct NumberedFixedWidth {
    CFStringEncoding number;
    FixedWidth encoding;
};
constexpr NumberedFixedWidth fixedWidthEncodings[] = {
    {kCFStringEncodingUTF16, {2, true}},
    {kCFStringEncodingUTF16BE, {2, false, std::endian::big}},
    {kCFStringEncodingUTF16LE, {2, false, std::endian::little}},
    {kCFStringEncodingUTF32, {4, true}},
    {kCFStringEncodingUTF32BE, {4, false, std::endian::big}},
    {kCFStringEncodingUTF32LE, {4, false, std::endian::little}},
};

} // namespace

bool decode(CFStringEncoding encoding, std::string_view bytes, std::u16string& units) {
    switch (encoding) {
    case kCFStringEncodingUTF8:
        return decodeUtf8(bytes, units);
    case kCFStringEncodingASCII:
        decodeAscii(bytes, units);
        return true;
    case kCFStringEncodingDOSJapanese:
        return decodeShiftJIS(ShiftJIS::microsoft, bytes, units);
    case kCFStringEncodingShiftJIS:
        return decodeShiftJIS(ShiftJIS::standard, bytes, units);
    case kCFStringEncodingEUC_JP:
        return decodeEUCJP(bytes, units);
    case kCFStringEncodingISO_2022_JP:
        return decodeISO2022JP(bytes, units);
    default:
        break;
    }
    for (const auto& [number, fixedWidth] : fixedWidthEncodings)
        if (number == encoding) return fixedWidth.decode(bytes, units);
    const SingleByteEncoding* singleByte = findSingleByteEncoding(encoding);
    return singleByte && singleByte->decode(bytes, units);
}

bool encode(CFStringEncoding encoding, std::u16string_view units, std::string& bytes) {
    switch (encoding) {
    case kCFStringEncodingUTF8:
        return encodeUtf8(units, bytes);
    case kCFStringEncodingASCII:
        return encodeAscii(units, bytes);
    case kCFStringEncodingDOSJapanese:
        return encodeShiftJIS(ShiftJIS::microsoft, units, bytes);
    case kCFStringEncodingShiftJIS:
        return encodeShiftJIS(ShiftJIS::standard, units, bytes);
    case kCFStringEncodingEUC_JP:
        return encodeEUCJP(units, bytes);
    case kCFStringEncodingISO_2022_JP:
        return encodeISO2022JP(units, bytes);
    default:
        break;
    }
    for (const auto& [number, fixedWidth] : fixedWidthEncodings)
        if (number == encoding) return fixedWidth.encode(units, bytes);
    const SingleByteEncoding* singleByte = findSingleByteEncoding(encoding);
    return singleByte && singleByte->encode(units, bytes);
}

} // namespace tessarin::encodings
