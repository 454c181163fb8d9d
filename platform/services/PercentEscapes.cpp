#include "TessarinPlatform/PercentEscapes.h"

#include "platform/services/ExactStrings.h"
#include "platform/services/HexadecimalDigits.h"
#include "platform/services/TextEncodings.h"
#include "platform/services/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace tessarin {
namespace {

// ---- Units of a string

constexpr NSUInteger blockLength = 512;

// Hands the units of a string to `take` a block at a time, until that answers false. It gets the units, from
// which it removes what it has dealt with, at least one, and whether they are the last. What it leaves comes
// again with units behind it.
template <class Take>
bool takeBlocks(NSString string, Take&& take) {
    const NSUInteger length = string.length();
    unichar block[blockLength];
    for (NSUInteger location = 0; location < length;) {
        const NSUInteger count = std::min(blockLength, length - location);
        string.getCharacters_range(block, {location, count});
        std::u16string_view units(block, count);
        if (!take(units, location + count == length)) return false;
        location += count - units.size();
    }
    return true;
}

constexpr bool isAscii(unichar unit) { return unit < 0x80; }

class AsciiSet {
public:
    constexpr AsciiSet() = default;
    constexpr explicit AsciiSet(std::string_view members) {
        for (const char member : members) add(static_cast<unichar>(member));
    }

    constexpr void add(unichar unit) {
        const std::uint64_t bit = std::uint64_t{1} << (unit & 63);
        lower_ |= unit < 64 ? bit : 0;
        upper_ |= unit < 64 ? 0 : bit;
    }
    constexpr bool contains(unichar unit) const {
        return ((unit < 64 ? lower_ : upper_) >> (unit & 63) & 1) != 0;
    }
    // The members that the other has too, those that it has not, and those of either.
    constexpr AsciiSet with(AsciiSet other) const { return {lower_ & other.lower_, upper_ & other.upper_}; }
    constexpr AsciiSet without(AsciiSet other) const {
        return {lower_ & ~other.lower_, upper_ & ~other.upper_};
    }
    constexpr AsciiSet orThoseOf(AsciiSet other) const {
        return {lower_ | other.lower_, upper_ | other.upper_};
    }

private:
    constexpr AsciiSet(std::uint64_t lower, std::uint64_t upper) : lower_(lower), upper_(upper) {}

    std::uint64_t lower_ = 0, upper_ = 0;
};

// A list of characters that a caller gives as a string.
struct UnitList {
    explicit UnitList(NSString list) {
        AsciiSet found;
        takeBlocks(list, [&](std::u16string_view& units, bool) {
            for (const unichar unit : units) {
                if (isAscii(unit))
                    found.add(unit);
                else
                    others += unit;
            }
            units = {};
            return true;
        });
        ascii = found;
        std::ranges::sort(others);
    }
    bool contains(unichar unit) const {
        return isAscii(unit) ? ascii.contains(unit) : std::ranges::binary_search(others, unit);
    }

    AsciiSet ascii;
    std::u16string others;
};

// What can stand in a URL as it is. No unit beyond ASCII can.
constexpr AsciiSet legalUnits("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
                              "!$&'()*+,-./:;=?@_~");
constexpr AsciiSet allUnits = [] {
    AsciiSet all;
    for (unichar unit = 0; isAscii(unit); ++unit) all.add(unit);
    return all;
}();

// Room made ahead for a result whose length is not known.
constexpr std::size_t largestReservation = std::size_t{1} << 24;

// ---- Adding

// The most that one unit takes: eight bytes, in ISO-2022-JP or in UTF-32 with its mark.
constexpr std::size_t longestEscape = 8 * 3;

template <class Unit>
Unit* writeEscape(std::uint8_t byte, Unit* place) {
    constexpr char digits[] = "0123456789ABCDEF";
    place[0] = '%';
    place[1] = static_cast<Unit>(digits[byte >> 4]);
    place[2] = static_cast<Unit>(digits[byte & 0xF]);
    return place + 3;
}

// Adds escapes to blocks of units. What it writes is 8 bits wide as long as all of it is ASCII.
template <class Unit>
class Escaper {
public:
    Escaper(AsciiSet escaped, const UnitList& left, CFStringEncoding encoding)
        : escaped_(escaped), left_(left), encoding_(encoding) {}

    // The string with its escapes, nil when it cannot have them.
    Retained<NSString> escapedString(NSString string) {
        Unit block[blockLength * longestEscape];
        const Unit* end = block;
        std::basic_string<Unit> text;
        const NSUInteger blocks = string.length() / blockLength;
        const bool isDone = takeBlocks(string, [&](std::u16string_view& units, bool isLast) {
            const auto length = static_cast<std::size_t>(end - block);
            // What follows will probably grow as much as the first block did.
            if (text.empty() && length > 0)
                text.reserve(std::min<std::size_t>(length * (blocks + 2), largestReservation));
            text.append(block, length);
            end = escape(units, isLast, block);
            return end != nullptr;
        });
        if (!isDone) return nil;
        const std::basic_string_view<Unit> lastBlock(block, end);
        if (text.empty()) return exactString(lastBlock);
        return exactString(text.append(lastBlock));
    }

private:
    bool isEscaped(unichar unit) const {
        return isAscii(unit) ? escaped_.contains(unit) : !left_.contains(unit);
    }

    // Answers where the block's escapes end, null for a unit that cannot have any.
    Unit* escape(std::u16string_view& units, bool isLast, Unit* place) {
        std::size_t index = 0;
        while (index < units.size()) {
            const unichar unit = units[index];
            if (!isEscaped(unit)) {
                *place++ = static_cast<Unit>(unit);
                ++index;
            } else if (encoding_ == kCFStringEncodingUTF8) {
                const bool isCut = utf8::isHighSurrogate(unit) && index + 1 == units.size();
                if (isCut && !isLast && index > 0) break;
                const char32_t character = utf8::nextCharacter(units.data(), units.size(), index);
                if (utf8::isSurrogate(character)) return nullptr;
                char bytes[4];
                const char* const end = utf8::encodeCharacter(character, bytes);
                for (const char* byte = bytes; byte != end; ++byte)
                    place = writeEscape(static_cast<std::uint8_t>(*byte), place);
            } else {
                // Also in UTF-16 half of a pair has no bytes, which is meant.
                bytes_.clear();
                if (!encodings::encode(encoding_, {&unit, 1}, bytes_)) return nullptr;
                for (const char byte : bytes_) place = writeEscape(static_cast<std::uint8_t>(byte), place);
                ++index;
            }
        }
        units.remove_prefix(index);
        return place;
    }

    const AsciiSet escaped_;
    const UnitList& left_;
    const CFStringEncoding encoding_;
    std::string bytes_; // of one unit; kept for the next
};

// ---- Replacing

// The byte of two digits; more than a byte can hold where either is none.
constexpr unsigned byteOfDigits(unichar high, unichar low) {
    return static_cast<unsigned>(hexadecimalValue(high) << 4 | hexadecimalValue(low));
}

// Four units at a time.
constexpr std::size_t laneCount = 4;
constexpr std::uint64_t lanes(std::uint16_t value) { return value * std::uint64_t{0x0001000100010001}; }
std::uint64_t loadLanes(const unichar* units) {
    std::uint64_t four;
    std::memcpy(&four, units, sizeof four);
    return four;
}
constexpr bool anyIsPercent(std::uint64_t four) {
    const std::uint64_t differences = four ^ lanes(u'%');
    return ((differences - lanes(1)) & ~differences & lanes(0x8000)) != 0;
}
constexpr bool allAreAscii(std::uint64_t four) { return (four & lanes(0xFF80)) == 0; }
void storeNarrow(std::uint64_t ascii, char* place) {
    ascii = (ascii | ascii >> 8) & 0x0000FFFF0000FFFF;
    const auto four = static_cast<std::uint32_t>(ascii | ascii >> 16);
    std::memcpy(place, &four, sizeof four);
}

// How many units come before the first percent sign.
std::size_t lengthWithoutPercent(std::u16string_view units) {
    std::size_t index = 0;
    while (index + laneCount <= units.size() && !anyIsPercent(loadLanes(units.data() + index)))
        index += laneCount;
    while (index < units.size() && units[index] != u'%') ++index;
    return index;
}

// Copies a block of ASCII with its escapes replaced by ASCII. Answers where the copy ends, null for any other
// text and for a malformed escape.
char* replaceInAscii(std::u16string_view& units, bool isLast, char* place) {
    const unichar* next = units.data();
    const unichar* const end = next + units.size();
    for (;;) {
        for (; static_cast<std::size_t>(end - next) >= laneCount; next += laneCount, place += laneCount) {
            const std::uint64_t four = loadLanes(next);
            if (anyIsPercent(four) || !allAreAscii(four)) break;
            storeNarrow(four, place);
        }
        for (; next != end && *next != u'%'; ++next) {
            if (!isAscii(*next)) return nullptr;
            *place++ = static_cast<char>(*next);
        }
        if (end - next < 3) break;
        const unsigned byte = byteOfDigits(next[1], next[2]);
        if (byte > 0x7F) return nullptr;
        *place++ = static_cast<char>(byte);
        next += 3;
    }
    units = {next, end};
    return isLast && next != end ? nullptr : place;
}

// The string with its escapes replaced, where it is ASCII before and after, as most are; nil for any other.
Retained<NSString> replacedInAscii(NSString string) {
    char block[blockLength];
    const char* end = block;
    std::string text;
    const bool isDone = takeBlocks(string, [&](std::u16string_view& units, bool isLast) {
        if (end != block && text.empty())
            text.reserve(std::min<std::size_t>(string.length(), largestReservation));
        text.append(static_cast<const char*>(block), end);
        end = replaceInAscii(units, isLast, block);
        return end != nullptr;
    });
    if (!isDone) return nil;
    const std::string_view lastBlock(block, end);
    return exactString(text.empty() ? lastBlock : text.append(lastBlock));
}

// Replaces escapes in blocks of units.
class Unescaper {
public:
    Unescaper(const UnitList& left, bool leavesAny, CFStringEncoding encoding, NSUInteger length)
        : left_(left), leavesAny_(leavesAny), encoding_(encoding) {
        text_.reserve(std::min<std::size_t>(length, largestReservation));
    }

    bool take(std::u16string_view& units, bool isLast) {
        while (!units.empty()) {
            if (units[0] == u'%') {
                if (!takeEscapes(units)) return false;
                // What is left of an escape is cut off by the block, or malformed.
                if (!units.empty() && units[0] == u'%') return !isLast;
            } else {
                if (!replaceRun()) return false;
                const std::size_t length = lengthWithoutPercent(units);
                text_.append(units, 0, length);
                units.remove_prefix(length);
            }
        }
        return true;
    }
    bool finish() { return replaceRun(); }
    std::u16string_view text() const { return text_; }

private:
    // Takes the whole escapes that come first; false for a malformed one.
    bool takeEscapes(std::u16string_view& units) {
        char bytes[blockLength / 3];
        std::size_t count = 0;
        const unichar* next = units.data();
        for (std::size_t left = units.size(); left >= 3 && *next == u'%'; left -= 3, next += 3) {
            const unsigned byte = byteOfDigits(next[1], next[2]);
            if (byte > 0xFF) return false;
            bytes[count++] = static_cast<char>(static_cast<std::uint8_t>(byte));
        }
        run_.append(bytes, count);
        units.remove_prefix(count * 3);
        return true;
    }
    // Adjacent escapes are read together.
    bool replaceRun() {
        if (run_.empty()) return true;
        // Most escapes stand alone for a character of ASCII.
        const auto first = static_cast<std::uint8_t>(run_[0]);
        if (run_.size() == 1 && isAscii(first) && encoding_ == kCFStringEncodingUTF8 && !leavesAny_) {
            text_ += unichar{first};
            run_.clear();
            return true;
        }
        const std::size_t start = text_.size();
        if (!encodings::decode(encoding_, run_, text_)) return false;
        run_.clear();
        return !leavesAny_ || leaveEscaped(start);
    }
    // Puts escapes back for the characters that stay escaped.
    bool leaveEscaped(std::size_t start) {
        const std::u16string decoded = text_.substr(start);
        text_.resize(start);
        for (const unichar unit : decoded) {
            if (!left_.contains(unit)) {
                text_ += unit;
                continue;
            }
            std::string bytes;
            if (!encodings::encode(encoding_, {&unit, 1}, bytes)) return false;
            for (const char byte : bytes) {
                unichar escape[3];
                text_.append(escape, writeEscape(static_cast<std::uint8_t>(byte), escape));
            }
        }
        return true;
    }

    const UnitList& left_;
    const bool leavesAny_;
    const CFStringEncoding encoding_;
    std::string run_; // the bytes of escapes not yet replaced
    std::u16string text_;
};

} // namespace

NSString CFURLCreateStringByAddingPercentEscapes(CFAllocatorRef, NSString string, NSString left,
                                                 NSString escaped, CFStringEncoding encoding) {
    if (!string) return nil;
    if (string.length() == 0) return as<NSString>(string.copy());
    const UnitList leftUnits(left);
    const AsciiSet escapedUnits = allUnits.without(legalUnits)
                                      .without(leftUnits.ascii)
                                      .orThoseOf(legalUnits.with(UnitList(escaped).ascii));
    if (leftUnits.others.empty())
        return Escaper<char>(escapedUnits, leftUnits, encoding).escapedString(string).leak();
    return Escaper<unichar>(escapedUnits, leftUnits, encoding).escapedString(string).leak();
}

NSString CFURLCreateStringByReplacingPercentEscapesUsingEncoding(CFAllocatorRef, NSString string,
                                                                 NSString left, CFStringEncoding encoding) {
    if (!string) return nil;
    const bool hasEscapes = string.rangeOfString_options("%"_ns, NSLiteralSearch).length > 0;
    if (!left || !hasEscapes) return as<NSString>(string.copy());
    if (encoding == kCFStringEncodingUTF8 && left.length() == 0)
        if (Retained<NSString> replaced = replacedInAscii(string)) return replaced.leak();
    const UnitList leftUnits(left);
    Unescaper unescaper(leftUnits, left.length() > 0, encoding, string.length());
    const bool isDone = takeBlocks(
        string, [&](std::u16string_view& units, bool isLast) { return unescaper.take(units, isLast); });
    return isDone && unescaper.finish() ? exactString(unescaper.text()).leak() : NSString();
}

} // namespace tessarin
