#include "platform/embedded/foundation/DecimalText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace tessarin::embedded {
namespace {

// A decimal number 0.d1d2d3... times 10 to the power `point`. The first digit and the last are not zero; zero
// has no digits.
struct Decimal {
    std::array<char, 24> digits;
    int count = 0;
    int point = 0;

    void dropTrailingZeros() {
        while (count > 0 && digits[static_cast<std::size_t>(count - 1)] == '0') --count;
    }
};

char digitAt(const Decimal& decimal, int index) { return decimal.digits[static_cast<std::size_t>(index)]; }

Decimal decimalOf(std::uint64_t magnitude) {
    Decimal decimal;
    if (magnitude == 0) return decimal;
    char* begin = decimal.digits.data();
    decimal.count =
        static_cast<int>(std::to_chars(begin, begin + decimal.digits.size(), magnitude).ptr - begin);
    decimal.point = decimal.count;
    decimal.dropTrailingZeros();
    return decimal;
}

// The shortest that reads back as the same double.
Decimal decimalOf(double magnitude) {
    Decimal decimal;
    if (magnitude == 0) return decimal;
    char text[32]; // d.ddde-xxx
    const char* end =
        std::to_chars(std::begin(text), std::end(text), magnitude, std::chars_format::scientific).ptr;
    const char* place = text;
    for (; *place != 'e'; ++place)
        if (*place != '.') decimal.digits[static_cast<std::size_t>(decimal.count++)] = *place;
    if (*++place == '+') ++place;
    std::from_chars(place, end, decimal.point);
    ++decimal.point;
    decimal.dropTrailingZeros();
    return decimal;
}

Decimal magnitudeOf(const NumberValue& value) {
    if (value.isReal()) return decimalOf(std::abs(value.real));
    const auto bits = static_cast<std::uint64_t>(value.integer);
    const bool isNegative = value.kind != NumberKind::uint64 && value.integer < 0;
    return decimalOf(isNegative ? 0 - bits : bits);
}

bool isNegative(const NumberValue& value) {
    if (value.isReal()) return std::signbit(value.real);
    return value.kind != NumberKind::uint64 && value.integer < 0;
}

// Rounds half to even to that many digits behind the point.
void round(Decimal& decimal, int fractionDigits) {
    const auto kept = std::int64_t{decimal.point} + fractionDigits;
    if (kept >= decimal.count) return;
    const int last = static_cast<int>(kept) - 1; // the index of the last digit that is kept
    bool isRoundedUp = false;
    if (kept >= 0) {
        const char next = digitAt(decimal, last + 1);
        const bool isHalf = next == '5' && decimal.count == kept + 1;
        isRoundedUp = isHalf ? last >= 0 && (digitAt(decimal, last) - '0') % 2 != 0 : next >= '5';
    }
    decimal.count = std::max(last + 1, 0);
    if (!isRoundedUp) return decimal.dropTrailingZeros();

    while (decimal.count > 0 && digitAt(decimal, decimal.count - 1) == '9') --decimal.count;
    if (decimal.count > 0) {
        ++decimal.digits[static_cast<std::size_t>(decimal.count - 1)];
    } else { // all were nines, or there was none
        decimal.digits[0] = '1';
        decimal.count = 1;
        ++decimal.point;
    }
}

} // namespace

DecimalText::DecimalText(const NumberValue& value, FractionDigits limits)
    : isNegative_(embedded::isNegative(value)) {
    Decimal decimal = magnitudeOf(value);
    round(decimal, std::max(limits.minimum, limits.maximum));

    for (int index = std::max(decimal.point - mostIntegerDigits, 0); index < decimal.point; ++index) {
        const char digit = index < decimal.count ? digitAt(decimal, index) : '0';
        if (digit != '0' || integerLength_ > 0) digits_[integerLength_++] = digit;
    }
    if (integerLength_ == 0) digits_[integerLength_++] = '0';

    if (decimal.count > 0)
        for (int index = std::min(decimal.point, 0); index < 0; ++index) append('0');
    for (int index = std::max(decimal.point, 0); index < decimal.count; ++index)
        append(digitAt(decimal, index));
    const auto minimum =
        static_cast<std::size_t>(std::clamp(limits.minimum, 0, FractionDigits::largestMinimum));
    while (fractionLength_ < minimum) append('0');
}

} // namespace tessarin::embedded
