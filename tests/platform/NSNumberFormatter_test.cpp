// Numbers as text for the user. The tests set the decimal separator, so that the user's locale does not
// count.
#include "PlatformTest.h"

#include <limits>

namespace tessarin::testing {
namespace {

class NSNumberFormatterTest : public PlatformTest {
protected:
    static Retained<NSNumberFormatter> makeFormatter(NSUInteger maximumFractionDigits = 0) {
        Retained<NSNumberFormatter> formatter = adopt(NSNumberFormatter::alloc().init());
        formatter.setFormatterBehavior(NSNumberFormatterBehavior10_4);
        formatter.setMaximumFractionDigits(maximumFractionDigits);
        formatter.setDecimalSeparator("."_ns);
        return formatter;
    }
    static std::string shown(NSNumber number, NSUInteger maximumFractionDigits = 0) {
        return text(makeFormatter(maximumFractionDigits).stringFromNumber(number));
    }
    static std::string shown(double number, NSUInteger maximumFractionDigits = 0) {
        return shown(NSNumber::numberWithDouble(number), maximumFractionDigits);
    }
    // With each of these numbers of digits in turn.
    static Texts shownWith(double number, const std::vector<NSUInteger>& maximumFractionDigits) {
        Texts result;
        for (const NSUInteger digits : maximumFractionDigits) result.push_back(shown(number, digits));
        return result;
    }
};

TEST_F(NSNumberFormatterTest, ANewOneShowsNoFraction) {
    const Retained<NSNumberFormatter> formatter = adopt(NSNumberFormatter::alloc().init());
    formatter.setFormatterBehavior(NSNumberFormatterBehavior10_4);
    EXPECT_EQ(formatter.formatterBehavior(), NSNumberFormatterBehavior10_4);
    EXPECT_EQ(formatter.minimumFractionDigits(), 0u);
    EXPECT_EQ(formatter.maximumFractionDigits(), 0u);
    EXPECT_EQ(text(formatter.stringFromNumber(NSNumber::numberWithDouble(1234567.25))), "1234567");
}

TEST_F(NSNumberFormatterTest, KeepsTheNumbersOfDigits) {
    const Retained<NSNumberFormatter> formatter = makeFormatter(3);
    EXPECT_EQ(formatter.maximumFractionDigits(), 3u);
    formatter.setMinimumFractionDigits(2);
    EXPECT_EQ(formatter.minimumFractionDigits(), 2u);
}

TEST_F(NSNumberFormatterTest, RoundsTheShortestDecimalHalfToEven) {
    EXPECT_EQ(shownWith(0, {0, 1, 2, 3, 10}), (Texts{"0", "0", "0", "0", "0"}));
    EXPECT_EQ(shownWith(0.25, {0, 1, 2}), (Texts{"0", "0.2", "0.25"}));
    EXPECT_EQ(shownWith(0.5, {0, 1, 2}), (Texts{"0", "0.5", "0.5"}));
    EXPECT_EQ(shownWith(0.75, {0, 1, 2}), (Texts{"1", "0.8", "0.75"}));
    EXPECT_EQ(shownWith(1.5, {0, 1}), (Texts{"2", "1.5"}));
    EXPECT_EQ(shownWith(2.5, {0, 1}), (Texts{"2", "2.5"}));
    EXPECT_EQ(shownWith(3.5, {0}), (Texts{"4"}));
    EXPECT_EQ(shownWith(1.25, {0, 1, 2}), (Texts{"1", "1.2", "1.25"}));
    EXPECT_EQ(shownWith(1.45, {0, 1}), (Texts{"1", "1.4"}));
    EXPECT_EQ(shownWith(0.15, {0, 1, 2}), (Texts{"0", "0.2", "0.15"}));
    EXPECT_EQ(shownWith(2.675, {0, 1, 2, 3}), (Texts{"3", "2.7", "2.68", "2.675"}));
    EXPECT_EQ(shownWith(1.005, {0, 1, 2, 3}), (Texts{"1", "1", "1", "1.005"}));
    EXPECT_EQ(shownWith(9.995, {0, 1, 2, 3}), (Texts{"10", "10", "10", "9.995"}));
    EXPECT_EQ(shownWith(1023.999, {0, 1, 2, 3}), (Texts{"1024", "1024", "1024", "1023.999"}));
    EXPECT_EQ(shownWith(1.0009765625, {0, 1, 2, 3, 10}), (Texts{"1", "1", "1", "1.001", "1.0009765625"}));
    EXPECT_EQ(shownWith(1.0 / 3, {0, 1, 2, 3, 10}), (Texts{"0", "0.3", "0.33", "0.333", "0.3333333333"}));
}

TEST_F(NSNumberFormatterTest, RoundingCarriesThroughNines) {
    EXPECT_EQ(shownWith(0.9999, {0, 3, 4}), (Texts{"1", "1", "0.9999"}));
    EXPECT_EQ(shownWith(99.95, {0, 1, 2}), (Texts{"100", "100", "99.95"}));
    EXPECT_EQ(shownWith(0.07, {0, 1}), (Texts{"0", "0.1"}));
    EXPECT_EQ(shownWith(0.0004, {2, 3, 4}), (Texts{"0", "0", "0.0004"}));
}

TEST_F(NSNumberFormatterTest, LargeNumbersHaveNoExponentAndNoGroups) {
    EXPECT_EQ(shown(1e15), "1000000000000000");
    EXPECT_EQ(shown(1e16), "10000000000000000");
    EXPECT_EQ(shown(1e21), "1000000000000000000000");
    EXPECT_EQ(shown(18446744073709551616.0, 5), "18446744073709552000");
}

TEST_F(NSNumberFormatterTest, FortyTwoIntegerDigitsAreShown) {
    EXPECT_EQ(shown(1e41), "1" + std::string(41, '0'));
    EXPECT_EQ(shown(1e42), "0");
    EXPECT_EQ(shown(1.5e42), "5" + std::string(41, '0'));
    EXPECT_EQ(shown(std::numeric_limits<double>::max()), "0");
}

TEST_F(NSNumberFormatterTest, NegativeNumbersHaveASignEvenWhenNothingElseIsLeft) {
    EXPECT_EQ(shown(-2.5, 1), "-2.5");
    EXPECT_EQ(shown(-0.4), "-0");
    EXPECT_EQ(shown(-0.0), "-0");
}

TEST_F(NSNumberFormatterTest, WhatIsNoNumber) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(shown(std::numeric_limits<double>::quiet_NaN()), "NaN");
    EXPECT_EQ(shown(infinity), "+∞");
    EXPECT_EQ(shown(-infinity), "-∞");
}

TEST_F(NSNumberFormatterTest, NilGivesNil) { EXPECT_EQ(shown(nil), "(nil)"); }

TEST_F(NSNumberFormatterTest, IntegersAreExact) {
    EXPECT_EQ(shown(NSNumber::numberWithInt(-7), 3), "-7");
    EXPECT_EQ(shown(NSNumber::numberWithBool(true)), "1");
    EXPECT_EQ(shown(NSNumber::numberWithLongLong(9007199254740993)), "9007199254740993");
    EXPECT_EQ(shown(NSNumber::numberWithLongLong(std::numeric_limits<long long>::min())),
              "-9223372036854775808");
}

TEST_F(NSNumberFormatterTest, TheLargestUnsignedIntegersAreExact) {
    EXPECT_EQ(shown(NSNumber::numberWithUnsignedLongLong(std::numeric_limits<unsigned long long>::max())),
              "18446744073709551615");
}

TEST_F(NSNumberFormatterTest, AFloatIsShownAsTheDoubleThatItIs) {
    EXPECT_EQ(shown(NSNumber::numberWithFloat(0.1f), 20), "0.10000000149011612");
}

TEST_F(NSNumberFormatterTest, ThereAreNoMoreDigitsThanTheDoubleHas) {
    for (const NSUInteger digits : {NSUInteger{400}, NSUInteger{2147483647}}) {
        EXPECT_EQ(shown(0.1, digits), "0.1");
        EXPECT_EQ(shown(1.0 / 3, digits), "0.3333333333333333");
    }
    EXPECT_EQ(shown(5e-324, 2147483647), "0." + std::string(323, '0') + "5");
    EXPECT_EQ(shown(2.2250738585072014e-308, 2147483647), "0." + std::string(307, '0') + "22250738585072014");
}

TEST_F(NSNumberFormatterTest, ANegativeNumberOfDigitsIsSix) {
    EXPECT_EQ(shown(1.0 / 3, std::numeric_limits<NSUInteger>::max()), "0.333333");
    EXPECT_EQ(shown(1.0 / 3, 4294967295), "0.333333");
}

TEST_F(NSNumberFormatterTest, AsManyFractionDigitsAsAreAskedFor) {
    const Retained<NSNumberFormatter> formatter = makeFormatter(4);
    formatter.setMinimumFractionDigits(2);
    const auto shownBy = [&](double number) {
        return text(formatter.stringFromNumber(NSNumber::numberWithDouble(number)));
    };
    EXPECT_EQ(shownBy(3), "3.00");
    EXPECT_EQ(shownBy(1.5), "1.50");
    EXPECT_EQ(shownBy(1.0 / 3), "0.3333");
    EXPECT_EQ(shownBy(0), "0.00");
}

TEST_F(NSNumberFormatterTest, AnyDecimalSeparator) {
    const Retained<NSNumberFormatter> formatter = makeFormatter(2);
    for (const NSString separator : {","_ns, u"\u066B"_ns, u"\u00B7"_ns, "<>"_ns}) {
        formatter.setDecimalSeparator(separator);
        EXPECT_EQ(text(formatter.decimalSeparator()), text(separator));
        EXPECT_EQ(text(formatter.stringFromNumber(NSNumber::numberWithDouble(-1.25))),
                  "-1" + text(separator) + "25");
        EXPECT_EQ(text(formatter.stringFromNumber(NSNumber::numberWithDouble(2))), "2");
    }
}

TEST_F(NSNumberFormatterTest, CopiesTheSeparator) {
    const Retained<NSMutableString> separator = adopt(NSMutableString::alloc().initWithString(","_ns));
    const Retained<NSNumberFormatter> formatter = makeFormatter(1);
    formatter.setDecimalSeparator(separator);
    separator.setString(";"_ns);
    EXPECT_EQ(text(formatter.stringFromNumber(NSNumber::numberWithDouble(0.5))), "0,5");
}

TEST_F(NSNumberFormatterTest, AnswersAnAutoreleasedString) {
    const Retained<NSNumberFormatter> formatter = makeFormatter(1);
    EXPECT_EQ(ownedReferencesOfNew(
                  [&] { return formatter.stringFromNumber(NSNumber::numberWithDouble(123456.5)); }),
              0);
}

} // namespace
} // namespace tessarin::testing
