// Decimal numbers at a place in a text, for strings and scanners. No locale has a say.
#pragma once

#include "platform/embedded/foundation/StringStorage.h"

#include <limits>
#include <optional>

namespace tessarin::embedded {

constexpr bool isDecimalDigit(char16_t unit) { return unit >= '0' && unit <= '9'; }

// Reads a text unit by unit.
class TextReader {
public:
    TextReader(StringView text, std::size_t place) : text_(text), place_(place) {}

    std::size_t place() const { return place_; }
    // The unit at the place, 0 at the end.
    char16_t unit(std::size_t ahead = 0) const {
        return ahead < text_.length() - place_ ? text_[place_ + ahead] : char16_t{0};
    }
    void advance() { ++place_; }
    bool skip(char16_t wanted) {
        if (unit() != wanted) return false;
        advance();
        return true;
    }
    // Whether a minus stood there; a plus is skipped likewise.
    bool skipSign() { return !skip('+') && skip('-'); }

private:
    StringView text_;
    std::size_t place_;
};

// An integer, with a sign or without; the place is then behind all its digits. Nothing, and the place stays,
// where there is none. What lies beyond the type's numbers becomes the nearest of them.
template <class Integer>
std::optional<Integer> readInteger(StringView text, std::size_t& place) {
    using Limits = std::numeric_limits<Integer>;
    TextReader reader(text, place);
    const bool isNegative = reader.skipSign();
    if (!isDecimalDigit(reader.unit())) return {};
    Integer value = 0; // below zero, where there is room for one more
    bool isTooLarge = false;
    for (; isDecimalDigit(reader.unit()); reader.advance()) {
        const auto digit = static_cast<Integer>(reader.unit() - '0');
        isTooLarge = isTooLarge || value < (Limits::min() + digit) / 10;
        if (!isTooLarge) value = static_cast<Integer>(value * 10 - digit);
    }
    place = reader.place();
    if (isNegative) return isTooLarge ? Limits::min() : value;
    return isTooLarge || value == Limits::min() ? Limits::max() : static_cast<Integer>(-value);
}

// A number of digits, a point, digits, an exponent: the form of a decimal number and of no other, so that
// neither hexadecimal nor the names of what is no number are taken for one. Likewise; what is too large
// becomes infinite.
std::optional<double> readReal(StringView text, std::size_t& place);

} // namespace tessarin::embedded
