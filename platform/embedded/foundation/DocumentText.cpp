#include "platform/embedded/foundation/DocumentText.h"

#include "platform/services/PropertyListError.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace tessarin::embedded {
namespace {

unsigned char byteAt(std::string_view bytes, std::size_t position) {
    return static_cast<unsigned char>(bytes[position]);
}

// The length of the well-formed character at a position; 0 where there is none.
std::size_t lengthOfCharacter(std::string_view text, std::size_t position) {
    const unsigned char lead = byteAt(text, position);
    if (lead < 0x80) return 1;
    // The second byte's range is what keeps over-long forms, surrogates and values above U+10FFFF out.
    unsigned char lowest = 0x80;
    unsigned char highest = 0xBF;
    std::size_t length = 0;
    if (lead >= 0xC2 && lead <= 0xDF)
        length = 2;
    else if (lead >= 0xE0 && lead <= 0xEF)
        length = 3;
    else if (lead >= 0xF0 && lead <= 0xF4)
        length = 4;
    else
        return 0;
    if (lead == 0xE0) lowest = 0xA0;
    if (lead == 0xED) highest = 0x9F;
    if (lead == 0xF0) lowest = 0x90;
    if (lead == 0xF4) highest = 0x8F;
    if (text.size() - position < length) return 0;
    if (byteAt(text, position + 1) < lowest || byteAt(text, position + 1) > highest) return 0;
    for (std::size_t index = 2; index < length; ++index)
        if ((byteAt(text, position + index) & 0xC0) != 0x80) return 0;
    return length;
}

// The position of the first byte that is no part of a well-formed character, or the text's size.
std::size_t positionOfIllFormedByte(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::size_t position = 0;
    while (position < text.size()) {
        // Nearly every document is ASCII nearly everywhere.
        std::uint64_t eight = 0;
        while (text.size() - position >= sizeof eight) {
            std::memcpy(&eight, text.data() + position, sizeof eight);
            if (eight & highBits) break;
            position += sizeof eight;
        }
        if (position == text.size()) break;
        const std::size_t length = lengthOfCharacter(text, position);
        if (length == 0) return position;
        position += length;
    }
    return position;
}

std::string utf8FromUTF16(std::string_view bytes, bool isBigEndian) {
    const auto unitAt = [&](std::size_t position) -> char32_t {
        const unsigned first = byteAt(bytes, position);
        const unsigned second = byteAt(bytes, position + 1);
        return isBigEndian ? first << 8 | second : second << 8 | first;
    };
    std::string text;
    text.reserve(bytes.size() / 2);
    const auto fail = [&](const char* problem) {
        throw PropertyListProblem(problem + std::to_string(lineOfPosition(text, text.size())));
    };
    const std::size_t end = bytes.size() - bytes.size() % 2;
    for (std::size_t position = 0; position < end; position += 2) {
        char32_t character = unitAt(position);
        if (character >= 0xD800 && character <= 0xDFFF) {
            const char32_t low = position + 2 < end ? unitAt(position + 2) : 0;
            if (character >= 0xDC00 || low < 0xDC00 || low > 0xDFFF) fail("Ill-formed UTF-16 at line ");
            character = 0x10000 + ((character - 0xD800) << 10) + (low - 0xDC00);
            position += 2;
        }
        appendUTF8(text, character);
    }
    if (end != bytes.size()) fail("UTF-16 text of an odd number of bytes at line ");
    return text;
}

} // namespace

std::string_view textOfDocument(std::string_view bytes, std::string& converted) {
    if (bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE")) {
        converted = utf8FromUTF16(bytes.substr(2), bytes.starts_with("\xFE"));
        return converted;
    }
    using namespace std::string_view_literals;
    if (bytes.starts_with("<\0"sv) || bytes.starts_with("\0<"sv)) {
        converted = utf8FromUTF16(bytes, bytes.front() == '\0');
        return converted;
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    const std::size_t illFormed = positionOfIllFormedByte(bytes);
    if (illFormed != bytes.size())
        throw PropertyListProblem("Ill-formed UTF-8 at line "
                                  + std::to_string(lineOfPosition(bytes, illFormed)));
    return bytes;
}

std::size_t lineOfPosition(std::string_view text, std::size_t position) {
    std::size_t line = 1;
    for (std::size_t index = 0; index < position; ++index) {
        const bool endsLine =
            text[index] == '\n' || (text[index] == '\r' && text.substr(index + 1, 1) != "\n");
        if (endsLine) ++line;
    }
    return line;
}

std::string shortened(std::string_view text) {
    std::size_t length = 40;
    if (text.size() <= length) return std::string(text);
    while ((byteAt(text, length) & 0xC0) == 0x80) --length;
    return std::string(text.substr(0, length)) + "...";
}

std::string shownCharacter(std::string_view text, std::size_t position) {
    const unsigned char lead = byteAt(text, position);
    if (lead >= 0x20 && lead != 0x7F)
        return std::string(text.substr(position, lengthOfCharacter(text, position)));
    char name[8];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(lead));
    return name;
}

void appendUTF8(std::string& text, char32_t character) {
    const auto append = [&](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | character >> 6);
        append(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        append(0xE0 | character >> 12);
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    } else {
        append(0xF0 | character >> 18);
        append(0x80 | (character >> 12 & 0x3F));
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    }
}

} // namespace tessarin::embedded
