// NSString: numbers read from text. White space is skipped, reading ends at the first character that is of no
// use, and no locale has a say.
#include "TessarinPlatform/NSCharacterSet.h"
#include "platform/embedded/foundation/CharacterSetStorage.h"
#include "platform/embedded/foundation/StringStorage.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace tessarin::embedded {
namespace {

bool isDigit(char16_t unit) { return unit >= '0' && unit <= '9'; }

// Reads a text from its first character that is not white space.
class NumberReader {
public:
    explicit NumberReader(StringView text) : text_(text) {
        const Membership isSpace(NSCharacterSet::whitespaceAndNewlineCharacterSet());
        while (place_ < text.length() && isSpace.unit(text[place_])) ++place_;
    }

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
    std::size_t place_ = 0;
};

// What lies beyond a type's numbers becomes the nearest of them.
template <class Integer>
Integer integerOf(StringView text) {
    using Limits = std::numeric_limits<Integer>;
    NumberReader reader(text);
    const bool isNegative = reader.skipSign();
    Integer value = 0; // below zero, where there is room for one more
    for (; isDigit(reader.unit()); reader.advance()) {
        const auto digit = static_cast<Integer>(reader.unit() - '0');
        if (value < (Limits::min() + digit) / 10) return isNegative ? Limits::min() : Limits::max();
        value = static_cast<Integer>(value * 10 - digit);
    }
    if (isNegative) return value;
    return value == Limits::min() ? Limits::max() : static_cast<Integer>(-value);
}

// Digits, a point, digits, an exponent: the form of a decimal number and of no other, so that neither
// hexadecimal nor the names of what is no number are taken for one.
double doubleOf(StringView text) {
    NumberReader reader(text);
    const bool isNegative = reader.skipSign();
    std::string number;
    const auto readDigits = [&] {
        for (; isDigit(reader.unit()); reader.advance()) number += static_cast<char>(reader.unit());
    };
    readDigits();
    const std::size_t wholeDigits = number.size();
    if (reader.skip('.')) {
        number += '.';
        readDigits();
        if (number.size() == 1) return 0;
    }
    if (number.empty()) return 0;

    // The exponent is held where every number has long become zero or infinity.
    constexpr long long farthest = std::numeric_limits<int>::max();
    long long exponent = 0;
    if (reader.unit() == 'e' || reader.unit() == 'E') {
        const bool hasSign = reader.unit(1) == '+' || reader.unit(1) == '-';
        if (isDigit(reader.unit(hasSign ? 2 : 1))) {
            reader.advance();
            const bool isSmall = reader.skipSign();
            for (; isDigit(reader.unit()); reader.advance())
                exponent = std::min(exponent * 10 + (reader.unit() - '0'), farthest);
            if (isSmall) exponent = -exponent;
            number += 'e' + std::to_string(exponent);
        }
    }

    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // Of which kind, the place of the first digit that counts tells.
        const std::size_t first = number.find_first_of("123456789");
        const long long place =
            static_cast<long long>(wholeDigits) - static_cast<long long>(first) + exponent;
        value = place > 0 ? HUGE_VAL : 0;
    }
    return isNegative ? -value : value;
}

int intValue(NSString self, SEL) { return integerOf<int>(contentsOf(self)); }
NSInteger integerValue(NSString self, SEL) { return integerOf<NSInteger>(contentsOf(self)); }
long long longLongValue(NSString self, SEL) { return integerOf<long long>(contentsOf(self)); }
float floatValue(NSString self, SEL) { return static_cast<float>(doubleOf(contentsOf(self))); }
double doubleValue(NSString self, SEL) { return doubleOf(contentsOf(self)); }

BOOL boolValue(NSString self, SEL) {
    const Contents text = contentsOf(self);
    NumberReader reader(text);
    switch (reader.unit()) {
    case 'T':
    case 't':
    case 'Y':
    case 'y':
        return YES;
    default:
        break;
    }
    reader.skipSign();
    while (reader.skip('0')) {
    }
    return isDigit(reader.unit());
}

} // namespace

std::vector<MethodRow> stringNumberMethods() {
    return {
        instanceMethod("intValue", intValue),           instanceMethod("integerValue", integerValue),
        instanceMethod("longLongValue", longLongValue), instanceMethod("floatValue", floatValue),
        instanceMethod("doubleValue", doubleValue),     instanceMethod("boolValue", boolValue),
    };
}

} // namespace tessarin::embedded
