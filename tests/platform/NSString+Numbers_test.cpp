// NSString: numbers read from text.
#include "PlatformTest.h"

#include <clocale>
#include <cmath>
#include <limits>

namespace tessarin::testing {
namespace {

using NSStringNumbersTest = PlatformTest;

TEST_F(NSStringNumbersTest, TextWithoutNumberIsZero) {
    for (const char* string : {"", "abc", "x5", "++5", "--5", "inf", "nan", "-", "+", "."}) {
        EXPECT_EQ(NSString(string).intValue(), 0) << string;
        EXPECT_EQ(NSString(string).integerValue(), 0) << string;
        EXPECT_EQ(NSString(string).doubleValue(), 0) << string;
        EXPECT_FALSE(NSString(string).boolValue()) << string;
    }
}

TEST_F(NSStringNumbersTest, ReadsUpToTheFirstOtherCharacter) {
    for (const char* string : {"5abc", "+5", " 5", "\n\t5"}) {
        EXPECT_EQ(NSString(string).intValue(), 5) << string;
        EXPECT_EQ(NSString(string).longLongValue(), 5) << string;
        EXPECT_EQ(NSString(string).floatValue(), 5.0f) << string;
    }
    EXPECT_EQ("-7 8"_ns.intValue(), -7);
    EXPECT_EQ("1,5"_ns.doubleValue(), 1.0);
}

TEST_F(NSStringNumbersTest, KnowsNoHexadecimal) {
    EXPECT_EQ("0x10"_ns.intValue(), 0);
    EXPECT_EQ("0x10"_ns.doubleValue(), 0.0);
}

TEST_F(NSStringNumbersTest, IntegersKnowNoExponent) {
    EXPECT_EQ("1e3"_ns.intValue(), 1);
    EXPECT_EQ("1e3"_ns.integerValue(), 1);
}

TEST_F(NSStringNumbersTest, ReadsFractionsAndExponents) {
    EXPECT_EQ("1e3"_ns.doubleValue(), 1000.0);
    EXPECT_EQ(".5"_ns.doubleValue(), 0.5);
    EXPECT_EQ("5."_ns.doubleValue(), 5.0);
    EXPECT_EQ("-1.5e2"_ns.doubleValue(), -150.0);
    EXPECT_EQ("1e"_ns.doubleValue(), 1.0);
    EXPECT_EQ("1e+"_ns.doubleValue(), 1.0);
    EXPECT_EQ("0.1"_ns.doubleValue(), 0.1);
    EXPECT_EQ("0.1"_ns.floatValue(), 0.1f);
}

TEST_F(NSStringNumbersTest, TooLargeRealsAreInfinite) {
    EXPECT_EQ("1e400"_ns.doubleValue(), HUGE_VAL);
    EXPECT_EQ("-1e400"_ns.doubleValue(), -HUGE_VAL);
    EXPECT_EQ(NSString(std::string(400, '9')).doubleValue(), HUGE_VAL);
    EXPECT_EQ("1e99999999999999999999"_ns.doubleValue(), HUGE_VAL);
}

TEST_F(NSStringNumbersTest, TooSmallRealsAreZero) {
    EXPECT_EQ("1e-400"_ns.doubleValue(), 0.0);
    EXPECT_EQ(NSString("0." + std::string(400, '0') + "1").doubleValue(), 0.0);
    EXPECT_EQ("1e-99999999999999999999"_ns.doubleValue(), 0.0);
}

TEST_F(NSStringNumbersTest, PointIsTheSameInEveryLocale) {
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8")) GTEST_SKIP() << "the system lacks the locale";
    EXPECT_EQ("1.5"_ns.doubleValue(), 1.5);
    EXPECT_EQ("1,5"_ns.doubleValue(), 1.0);
    std::setlocale(LC_NUMERIC, "C");
}

TEST_F(NSStringNumbersTest, IntIsClamped) {
    EXPECT_EQ("99999999999"_ns.intValue(), 2147483647);
    EXPECT_EQ("-99999999999"_ns.intValue(), -2147483647 - 1);
    EXPECT_EQ("2147483648"_ns.intValue(), 2147483647);
    EXPECT_EQ("99999999999999999999"_ns.intValue(), 2147483647);
}

TEST_F(NSStringNumbersTest, LimitsAreRead) {
    EXPECT_EQ("2147483647"_ns.intValue(), 2147483647);
    EXPECT_EQ("-2147483648"_ns.intValue(), -2147483647 - 1);
    EXPECT_EQ("9223372036854775807"_ns.longLongValue(), std::numeric_limits<long long>::max());
    EXPECT_EQ("-9223372036854775808"_ns.longLongValue(), std::numeric_limits<long long>::min());
}

TEST_F(NSStringNumbersTest, IntegerIsClamped) {
    EXPECT_EQ("99999999999"_ns.integerValue(), 99999999999);
    EXPECT_EQ("99999999999999999999"_ns.integerValue(), std::numeric_limits<NSInteger>::max());
    EXPECT_EQ("-99999999999999999999"_ns.integerValue(), std::numeric_limits<NSInteger>::min());
}

TEST_F(NSStringNumbersTest, BoolIsYes) {
    for (const char* string :
         {"YES", "yes", "true", "t", "1", "+000009", "-1", "5abc", " 5", "1e3", "-1.5e2", "1,5"})
        EXPECT_TRUE(NSString(string).boolValue()) << string;
}

TEST_F(NSStringNumbersTest, BoolIsNo) {
    for (const char* string : {"NO", "false", "0", "-00000", "on", "_true", "0x10", ".5", "--1"})
        EXPECT_FALSE(NSString(string).boolValue()) << string;
}

TEST_F(NSStringNumbersTest, BoolIsNoForALetterAfterASignOrZero) {
    EXPECT_FALSE("+t"_ns.boolValue());
    EXPECT_FALSE("+Y"_ns.boolValue());
    EXPECT_FALSE("0t"_ns.boolValue());
    EXPECT_FALSE("0y"_ns.boolValue());
}

} // namespace
} // namespace tessarin::testing
