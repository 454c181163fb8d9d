// The digits that a number formatter shows of a number.
#pragma once

#include "platform/embedded/foundation/NumberValue.h"

#include <array>
#include <string_view>

namespace tessarin::embedded {

// How many digits behind the decimal separator are shown at least and at most.
struct FractionDigits {
    int minimum = 0; // above largestMinimum it counts as that
    int maximum = 0;

    // No number has more.
    static constexpr int largestMinimum = 340;
};

// A number in decimal digits. It is rounded half to even, and what is rounded is the shortest decimal number
// that reads back as the same double, not the binary value: 2.675 to two digits is 2.68. An integer is exact,
// whatever double is near it. Time and space do not depend on the number of digits asked for.
class DecimalText {
public:
    // The value is neither infinite nor NaN.
    DecimalText(const NumberValue& value, FractionDigits limits);

    // Negative zero, and what is rounded to it, is negative.
    bool isNegative() const { return isNegative_; }
    // At least one digit. Of more than 42 only the last 42 are shown, without leading zeros.
    std::string_view integer() const { return {digits_.data(), integerLength_}; }
    // Empty where there are none.
    std::string_view fraction() const { return {digits_.data() + integerLength_, fractionLength_}; }

private:
    static constexpr int mostIntegerDigits = 42;

    void append(char digit) { digits_[integerLength_ + fractionLength_++] = digit; }

    std::array<char, mostIntegerDigits + FractionDigits::largestMinimum + 1> digits_;
    std::size_t integerLength_ = 0;
    std::size_t fractionLength_ = 0;
    bool isNegative_;
};

} // namespace tessarin::embedded
