#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/Ordering.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace tessarin::embedded {
namespace {

constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;

NSComparisonResult reversed(NSComparisonResult result) { return static_cast<NSComparisonResult>(-result); }

bool isLargeUnsigned(const NumberValue& value) { return value.kind == NumberKind::uint64; }

NSComparisonResult compareIntegers(const NumberValue& left, const NumberValue& right) {
    if (isLargeUnsigned(left) != isLargeUnsigned(right))
        return isLargeUnsigned(left) ? NSOrderedDescending : NSOrderedAscending;
    // Two large unsigned values are ordered as their bits are, read as negative numbers.
    return ordering(left.integer, right.integer);
}

NSComparisonResult compareReals(double left, double right) {
    if (std::isnan(left) && std::isnan(right)) return NSOrderedSame;
    if (std::isnan(left)) return right < 0 ? NSOrderedDescending : NSOrderedAscending;
    if (std::isnan(right)) return left < 0 ? NSOrderedAscending : NSOrderedDescending;
    return ordering(left, right);
}

// Converting the integer to a double would round it, so the double is taken apart instead.
NSComparisonResult compareIntegerWithReal(const NumberValue& integer, double real) {
    if (std::isnan(real))
        return !isLargeUnsigned(integer) && integer.integer < 0 ? NSOrderedAscending : NSOrderedDescending;
    if (real >= twoTo64) return NSOrderedAscending;
    if (real < -twoTo63) return NSOrderedDescending;
    const double whole = std::trunc(real);
    const NumberValue wholeValue = whole >= twoTo63
                                       ? NumberValue::ofUnsigned(static_cast<std::uint64_t>(whole))
                                       : NumberValue::ofInt64(static_cast<std::int64_t>(whole));
    const NSComparisonResult result = compareIntegers(integer, wholeValue);
    return result != NSOrderedSame ? result : ordering(whole, real);
}

template <class Real>
std::string textOfReal(Real value, int digits) {
    if (std::isnan(value)) return "nan"; // without the sign that the standard library writes
    char text[32];
    const auto end =
        std::to_chars(std::begin(text), std::end(text), value, std::chars_format::general, digits).ptr;
    return {text, end};
}

} // namespace

std::int64_t NumberValue::cutToInt64() const {
    if (!(real >= -twoTo63 && real < twoTo63)) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(real);
}

float NumberValue::toFloat() const {
    // Not by way of a double for integers: they would be rounded twice.
    if (isReal()) return static_cast<float>(real);
    if (kind == NumberKind::uint64) return static_cast<float>(static_cast<std::uint64_t>(integer));
    return static_cast<float>(integer);
}

const char* NumberValue::encoding() const {
    switch (kind) {
    case NumberKind::boolean:
        return "c";
    case NumberKind::int32:
        return "i";
    case NumberKind::int64:
        return "q";
    case NumberKind::uint64:
        return "Q";
    case NumberKind::float32:
        return "f";
    case NumberKind::float64:
        break;
    }
    return "d";
}

std::string NumberValue::text() const {
    switch (kind) {
    case NumberKind::float32:
        return textOfReal(static_cast<float>(real), 7);
    case NumberKind::float64:
        return textOfReal(real, 16);
    case NumberKind::uint64:
        return std::to_string(static_cast<std::uint64_t>(integer));
    case NumberKind::boolean:
    case NumberKind::int32:
    case NumberKind::int64:
        break;
    }
    return std::to_string(integer);
}

NSUInteger NumberValue::hash() const {
    if (!isReal()) return static_cast<NSUInteger>(integer);
    // A whole number hashes as the integer that it equals, zero of either sign included.
    if (real == std::trunc(real)) {
        if (real >= -twoTo63 && real < twoTo63)
            return static_cast<NSUInteger>(static_cast<std::int64_t>(real));
        if (real >= twoTo63 && real < twoTo64) return static_cast<NSUInteger>(real);
    }
    if (std::isnan(real)) return 0;
    return static_cast<NSUInteger>(std::bit_cast<std::uint64_t>(real) * 0x9E3779B97F4A7C15u);
}

NSComparisonResult compareNumbers(const NumberValue& left, const NumberValue& right) {
    if (left.isReal())
        return right.isReal() ? compareReals(left.real, right.real)
                              : reversed(compareIntegerWithReal(right, left.real));
    return right.isReal() ? compareIntegerWithReal(left, right.real) : compareIntegers(left, right);
}

} // namespace tessarin::embedded
