// The platform's formats: stringWithFormat: and appendFormat:.
#include "PlatformTest.h"

#include <clocale>
#include <cstdint>

namespace tessarin::testing {
namespace {

using StringFormatTest = PlatformTest;

template <class... Arguments>
std::string formatted(NSString format, Arguments... arguments) {
    return text(NSString::stringWithFormat(format, arguments...));
}

TEST_F(StringFormatTest, TextStandsForItself) {
    EXPECT_EQ(formatted("plain"_ns), "plain");
    EXPECT_EQ(formatted(""_ns), "");
    EXPECT_EQ(formatted(u"\u20ac\U0001F600"_ns), "\u20ac\U0001F600");
}

TEST_F(StringFormatTest, PercentSigns) { EXPECT_EQ(formatted("100%%"_ns), "100%"); }

TEST_F(StringFormatTest, ShowsObjects) {
    EXPECT_EQ(formatted("%@ and %@"_ns, "a"_ns, u"\u20ac"_ns), "a and \u20ac");
    EXPECT_EQ(formatted("%@"_ns, "NSString"_class), "NSString");
}

TEST_F(StringFormatTest, NilShowsAsNull) { EXPECT_EQ(formatted("<%@>"_ns, nil), "<(null)>"); }

TEST_F(StringFormatTest, NilFormatRaises) {
    EXPECT_THROWS_NAMED(NSString::stringWithFormat(nil), "NSInvalidArgumentException");
}

TEST_F(StringFormatTest, Integers) {
    EXPECT_EQ(formatted("%d %i %u"_ns, -5, 7, 8u), "-5 7 8");
    EXPECT_EQ(formatted("%x %X %o"_ns, 255u, 255u, 8u), "ff FF 10");
    EXPECT_EQ(formatted("%u"_ns, -1), "4294967295");
    EXPECT_EQ(formatted("%d"_ns, -2147483647 - 1), "-2147483648");
}

TEST_F(StringFormatTest, WidthsAndFlagsOfIntegers) {
    EXPECT_EQ(formatted("%02X"_ns, 306u), "132");
    EXPECT_EQ(formatted("%02X"_ns, -25), "FFFFFFE7");
    EXPECT_EQ(formatted("%02X"_ns, 10u), "0A");
    EXPECT_EQ(formatted("%5d|%-5d|%05d"_ns, 42, 42, -42), "   42|42   |-0042");
    EXPECT_EQ(formatted("%+d % d"_ns, 5, 5), "+5  5");
    EXPECT_EQ(formatted("%#x %#o %#x"_ns, 255u, 8u, 0u), "0xff 010 0");
    EXPECT_EQ(formatted("%.3d|%6.3d|%06.3d"_ns, 5, 5, 5), "005|   005|   005");
    EXPECT_EQ(formatted("%.0d"_ns, 0), "");
}

TEST_F(StringFormatTest, LengthModifiers) {
    EXPECT_EQ(formatted("%02lld %02lld %01lld"_ns, -5LL, 5LL, -1LL), "-5 05 -1");
    EXPECT_EQ(formatted("%ld %lu"_ns, -5L, 5UL), "-5 5");
    EXPECT_EQ(formatted("%qd"_ns, 1LL << 40), "1099511627776");
    EXPECT_EQ(formatted("%zu %td %jd"_ns, sizeof(int), std::ptrdiff_t{-3}, std::intmax_t{-4}), "4 -3 -4");
    EXPECT_EQ(formatted("%hhd %hd %hhu"_ns, 257, 65537, 257), "1 1 1");
    EXPECT_EQ(formatted("%lld"_ns, -9223372036854775807LL - 1), "-9223372036854775808");
}

TEST_F(StringFormatTest, WidthAndPrecisionAsArguments) {
    EXPECT_EQ(formatted("%*d|%-*d|%*d"_ns, 4, 1, 4, 2, -4, 3), "   1|2   |3   ");
    EXPECT_EQ(formatted("%.*f"_ns, 2, 1.0), "1.00");
    EXPECT_EQ(formatted("%.*f"_ns, -1, 1.0), "1.000000");
}

TEST_F(StringFormatTest, Reals) {
    EXPECT_EQ(formatted("%f %.2f %.0f"_ns, 1.5, 2.345678, 2.5), "1.500000 2.35 2");
    EXPECT_EQ(formatted("%e %E"_ns, 12345.678, 0.00012), "1.234568e+04 1.200000E-04");
    EXPECT_EQ(formatted("%g %g %g"_ns, 0.1, 1e20, 100000.0), "0.1 1e+20 100000");
    EXPECT_EQ(formatted("%.17g"_ns, 0.1), "0.10000000000000001");
    EXPECT_EQ(formatted("%a"_ns, 1.0), "0x1p+0");
}

TEST_F(StringFormatTest, WidthsAndFlagsOfReals) {
    EXPECT_EQ(formatted("%8.2f|%-8.2f|%08.2f"_ns, -1.5, 1.5, -1.5), "   -1.50|1.50    |-0001.50");
    EXPECT_EQ(formatted("%+.1f"_ns, 1.0), "+1.0");
    EXPECT_EQ(formatted("%#.0f"_ns, 1.0), "1.");
}

TEST_F(StringFormatTest, RealsThatAreNoNumbers) {
    EXPECT_EQ(formatted("%f %05f"_ns, std::numeric_limits<double>::infinity(),
                        -std::numeric_limits<double>::infinity()),
              "inf  -inf");
    EXPECT_EQ(formatted("%F"_ns, std::numeric_limits<double>::quiet_NaN()), "NAN");
}

TEST_F(StringFormatTest, LongDouble) { EXPECT_EQ(formatted("%.1Lf %d"_ns, 2.5L, 3), "2.5 3"); }

TEST_F(StringFormatTest, PointIsTheSameInEveryLocale) {
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8")) GTEST_SKIP() << "the system lacks the locale";
    EXPECT_EQ(formatted("%.1f"_ns, 1.5), "1.5");
    std::setlocale(LC_NUMERIC, "C");
}

TEST_F(StringFormatTest, CharactersAndText) {
    EXPECT_EQ(formatted("%c%c"_ns, 'a', 'b'), "ab");
    EXPECT_EQ(formatted("%C"_ns, u'\u20ac'), "\u20ac");
    EXPECT_EQ(formatted("%s|%5s|%-5s|%.2s"_ns, "abc", "abc", "abc", "abc"), "abc|  abc|abc  |ab");
    EXPECT_EQ(formatted("%S"_ns, u"a\u20ac"), "a\u20ac");
}

TEST_F(StringFormatTest, TextIsUtf8) { EXPECT_EQ(formatted("%s"_ns, "\u00e9"), "\u00e9"); }

TEST_F(StringFormatTest, TextWithPrecisionNeedsNoEnd) {
    const char unended[] = {'a', 'b', 'c'};
    EXPECT_EQ(formatted("%.3s"_ns, static_cast<const char*>(unended)), "abc");
}

TEST_F(StringFormatTest, NullTextShowsAsNull) {
    EXPECT_EQ(formatted("%s"_ns, static_cast<const char*>(nullptr)), "(null)");
}

TEST_F(StringFormatTest, Pointers) {
    EXPECT_EQ(formatted("%p"_ns, reinterpret_cast<const void*>(std::uintptr_t{0xBEEF})), "0xbeef");
}

TEST_F(StringFormatTest, NullPointerIsZero) {
    EXPECT_EQ(formatted("%p"_ns, static_cast<const void*>(nullptr)), "0x0");
}

TEST_F(StringFormatTest, Positions) {
    EXPECT_EQ(formatted("%2$@ %1$@"_ns, "a"_ns, "b"_ns), "b a");
    EXPECT_EQ(formatted("%1$d %1$d %2$.1f"_ns, 7, 0.5), "7 7 0.5");
    EXPECT_EQ(formatted("%2$*1$d"_ns, 4, 9), "   9");
}

TEST_F(StringFormatTest, WhatIsNoConversionStandsForItself) {
    EXPECT_EQ(formatted("50% of %d"_ns, 3).substr(0, 2), "50");
    EXPECT_EQ(formatted("ends in %"_ns), "ends in %");
    EXPECT_EQ(formatted("%k %d"_ns, 3), "%k 3");
}

TEST_F(StringFormatTest, AppendsToAMutableString) {
    const NSMutableString string = NSMutableString::stringWithString("a"_ns);
    string.appendFormat("%@%d"_ns, string, 1);
    EXPECT_EQ(text(string), "aa1");
}

TEST_F(StringFormatTest, GivesAStringOfTheReceivingClass) {
    const auto string =
        sendVariadic<NSMutableString>("NSMutableString"_class, "stringWithFormat:"_sel, "%d"_ns, 1);
    string.appendString("2"_ns);
    EXPECT_EQ(text(string), "12");
}

} // namespace
} // namespace tessarin::testing
