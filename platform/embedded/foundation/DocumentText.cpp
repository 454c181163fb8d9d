#include "platform/embedded/foundation/DocumentText.h"

#include "platform/services/PropertyListError.h"
#include "platform/services/Utf8.h"

#include <cstdio>

namespace tessarin::embedded {
namespace {

unsigned char byteAt(std::string_view bytes, std::size_t position) {
    return static_cast<unsigned char>(bytes[position]);
}

// The length of the well-formed character at a position; 0 where there is none.
std::size_t lengthOfCharacter(std::string_view text, std::size_t position) {
    if (byteAt(text, position) < 0x80) return 1;
    char32_t character;
    return utf8::multiByte(reinterpret_cast<const unsigned char*>(text.data()) + position,
                           text.size() - position, character);
}

// The position of the first byte that is no part of a well-formed character, in a text that has one.
std::size_t positionOfIllFormedByte(std::string_view text) {
    std::size_t position = 0;
    while (const std::size_t length = lengthOfCharacter(text, position)) position += length;
    return position;
}

std::string utf8FromUTF16(std::string_view bytes, bool isBigEndian) {
    const auto unitAt = [&](std::size_t position) {
        const unsigned first = byteAt(bytes, position);
        const unsigned second = byteAt(bytes, position + 1);
        return static_cast<char16_t>(isBigEndian ? first << 8 | second : second << 8 | first);
    };
    std::string text;
    text.reserve(bytes.size() / 2);
    const auto fail = [&](const char* problem) {
        throw PropertyListProblem(problem + std::to_string(lineOfPosition(text, text.size())));
    };
    const std::size_t end = bytes.size() - bytes.size() % 2;
    for (std::size_t position = 0; position < end; position += 2) {
        const char16_t unit = unitAt(position);
        if (!utf8::isSurrogate(unit)) {
            appendUTF8(text, unit);
            continue;
        }
        position += 2;
        const char16_t low = position < end ? unitAt(position) : u'\0';
        if (!utf8::isHighSurrogate(unit) || !utf8::isLowSurrogate(low)) fail("Ill-formed UTF-16 at line ");
        appendUTF8(text, utf8::joined(unit, low));
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
    if (!utf8::measure(bytes).wellFormed)
        throw PropertyListProblem("Ill-formed UTF-8 at line "
                                  + std::to_string(lineOfPosition(bytes, positionOfIllFormedByte(bytes))));
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
    char bytes[4];
    text.append(bytes, utf8::encodeCharacter(character, bytes));
}

} // namespace tessarin::embedded
