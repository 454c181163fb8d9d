// UTF-8 to UTF-16 and back. Units of 8 bits are those of Latin-1: the first 256 UTF-16 units in half the
// space.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tessarin::utf8 {

inline constexpr bool isHighSurrogate(char32_t unit) { return (unit & 0xFFFFFC00) == 0xD800; }
inline constexpr bool isLowSurrogate(char32_t unit) { return (unit & 0xFFFFFC00) == 0xDC00; }
inline constexpr bool isSurrogate(char32_t unit) { return (unit & 0xFFFFF800) == 0xD800; }
inline constexpr char32_t joined(char16_t high, char16_t low) {
    return 0x10000 + ((char32_t{high} & 0x3FF) << 10) + (char32_t{low} & 0x3FF);
}

// What stands for a unit that has no encoding.
inline constexpr char32_t replacementCharacter = 0xFFFD;

// The character that a span of units has at an index, which moves past it. An unpaired surrogate stands for
// itself.
template <class Unit>
inline char32_t nextCharacter(const Unit* units, std::size_t length, std::size_t& index) {
    const Unit unit = units[index++];
    if constexpr (sizeof(Unit) > 1) {
        if (isHighSurrogate(unit) && index < length && isLowSurrogate(units[index]))
            return joined(unit, units[index++]);
    }
    return unit;
}

namespace detail {

// How many of the first units are ASCII.
template <class Unit>
inline std::size_t asciiPrefix(const Unit* units, std::size_t length) {
    constexpr std::size_t block = 8 / sizeof(Unit);
    constexpr std::uint64_t others = sizeof(Unit) == 1 ? 0x8080808080808080 : 0xFF80FF80FF80FF80;
    std::size_t index = 0;
    for (; index + block <= length; index += block) {
        std::uint64_t several;
        std::memcpy(&several, units + index, sizeof several);
        if (several & others) break;
    }
    while (index < length && units[index] < 0x80) ++index;
    return index;
}

// Copies ASCII from units of one width to units of another.
template <class From, class To>
inline void copyAscii(const From* from, std::size_t count, To* to) {
    if constexpr (sizeof(From) == sizeof(To)) {
        if (count > 0) std::memcpy(to, from, count * sizeof(From));
    } else {
        for (std::size_t index = 0; index < count; ++index) to[index] = static_cast<To>(from[index]);
    }
}

inline bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

} // namespace detail

template <class Unit>
inline bool isAscii(const Unit* units, std::size_t length) {
    return detail::asciiPrefix(units, length) == length;
}
inline bool isAscii(std::string_view text) {
    return isAscii(reinterpret_cast<const unsigned char*>(text.data()), text.size());
}

// Whether a span of units has a surrogate that is no half of a pair.
template <class Unit>
inline bool hasUnpairedSurrogate(const Unit* units, std::size_t length) {
    if constexpr (sizeof(Unit) > 1)
        for (std::size_t index = 0; index < length;)
            if (isSurrogate(nextCharacter(units, length, index))) return true;
    return false;
}

// The length of the well-formed sequence of more than one byte at the start of a text, and its character; 0
// when there is none. Overlong forms, surrogates and what lies beyond U+10FFFF are ill-formed.
inline std::size_t multiByte(const unsigned char* bytes, std::size_t length, char32_t& character) {
    const unsigned char lead = bytes[0];
    if (lead >= 0xC2 && lead <= 0xDF && length >= 2 && detail::isContinuation(bytes[1])) {
        character = (char32_t{lead} & 0x1F) << 6 | (bytes[1] & 0x3Fu);
        return 2;
    }
    if ((lead & 0xF0) == 0xE0 && length >= 3 && detail::isContinuation(bytes[1])
        && detail::isContinuation(bytes[2])) {
        character = (char32_t{lead} & 0x0F) << 12 | (bytes[1] & 0x3Fu) << 6 | (bytes[2] & 0x3Fu);
        return character >= 0x800 && !isSurrogate(character) ? 3 : 0;
    }
    if ((lead & 0xF8) == 0xF0 && length >= 4 && detail::isContinuation(bytes[1])
        && detail::isContinuation(bytes[2]) && detail::isContinuation(bytes[3])) {
        character = (char32_t{lead} & 0x07) << 18 | (bytes[1] & 0x3Fu) << 12 | (bytes[2] & 0x3Fu) << 6
                    | (bytes[3] & 0x3Fu);
        return character >= 0x10000 && character <= 0x10FFFF ? 4 : 0;
    }
    return 0;
}

// Writes a character in units that are wide enough for it, or, where those are of UTF-16, in one or two.
// Answers where the next one goes.
template <class Unit>
inline Unit* writeCharacter(char32_t character, Unit* place) {
    if (sizeof(Unit) > 1 && character > 0xFFFF) {
        *place++ = static_cast<Unit>(0xD7C0 + (character >> 10));
        character = 0xDC00 + (character & 0x3FF);
    }
    *place++ = static_cast<Unit>(character);
    return place;
}

// What a UTF-8 text becomes in UTF-16.
struct Measure {
    bool wellFormed = true;
    std::size_t units = 0;
    char32_t highest = 0; // the highest character, or 0x7F where all are ASCII
};

inline Measure measure(std::string_view text) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    Measure result{true, 0, 0x7F};
    for (std::size_t index = 0; index < text.size();) {
        const std::size_t ascii = detail::asciiPrefix(bytes + index, text.size() - index);
        index += ascii;
        result.units += ascii;
        if (index == text.size()) break;
        char32_t character;
        const std::size_t length = multiByte(bytes + index, text.size() - index, character);
        if (length == 0) return {false, 0, 0};
        index += length;
        result.units += character > 0xFFFF ? 2 : 1;
        if (character > result.highest) result.highest = character;
    }
    return result;
}

// Writes the units of a well-formed text, as many as measure said, into units wide enough for its highest
// character.
template <class Unit>
inline void decode(std::string_view text, Unit* units) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    for (std::size_t index = 0; index < text.size();) {
        const std::size_t ascii = detail::asciiPrefix(bytes + index, text.size() - index);
        detail::copyAscii(bytes + index, ascii, units);
        units += ascii;
        index += ascii;
        if (index == text.size()) break;
        char32_t character = 0;
        index += multiByte(bytes + index, text.size() - index, character);
        units = writeCharacter(character, units);
    }
}

// The number of bytes that units take in UTF-8, an unpaired surrogate as U+FFFD.
template <class Unit>
inline std::size_t encodedLength(const Unit* units, std::size_t length) {
    std::size_t bytes = length;
    for (std::size_t index = detail::asciiPrefix(units, length); index < length; ++index) {
        if constexpr (sizeof(Unit) == 1) {
            bytes += units[index] >> 7;
        } else {
            const char16_t unit = units[index];
            bytes += std::size_t{unit >= 0x80} + std::size_t{unit >= 0x800};
            // A pair takes four bytes: three counted for its first unit, one for its second.
            if (isHighSurrogate(unit) && index + 1 < length && isLowSurrogate(units[index + 1])) ++index;
        }
    }
    return bytes;
}

// Writes one character and answers where the next one goes.
inline char* encodeCharacter(char32_t character, char* bytes) {
    if (isSurrogate(character)) character = replacementCharacter;
    const auto put = [&](char32_t byte) { *bytes++ = static_cast<char>(static_cast<unsigned char>(byte)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        put(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12);
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xF0 | character >> 18);
        put(0x80 | (character >> 12 & 0x3F));
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    }
    return bytes;
}

// Writes the units in UTF-8, as many bytes as encodedLength said, and answers where they end.
template <class Unit>
inline char* encode(const Unit* units, std::size_t length, char* bytes) {
    for (std::size_t index = 0; index < length;) {
        const std::size_t ascii = detail::asciiPrefix(units + index, length - index);
        detail::copyAscii(units + index, ascii, bytes);
        bytes += ascii;
        index += ascii;
        if (index < length) bytes = encodeCharacter(nextCharacter(units, length, index), bytes);
    }
    return bytes;
}

} // namespace tessarin::utf8
