#include "PlatformTest.h"

#include "../strings/StringSubclass.h"

#include <cmath>

namespace tessarin::testing {
namespace {

class NSScannerTest : public PlatformTest {
protected:
    static NSScanner over(std::string_view contents) {
        return NSScanner::scannerWithString(NSString(contents));
    }
};

// ---- Hexadecimal numbers

constexpr unsigned unchanged = 0xABCD1234;

struct HexadecimalRow {
    const char* contents;
    bool isFound;
    unsigned value;
    NSUInteger location;
};

void expectRow(const HexadecimalRow& row) {
    SCOPED_TRACE(row.contents);
    const NSScanner scanner = NSScanner::scannerWithString(NSString(row.contents));
    unsigned value = unchanged;
    EXPECT_EQ(scanner.scanHexInt(&value), row.isFound);
    EXPECT_EQ(value, row.isFound ? row.value : unchanged);
    EXPECT_EQ(scanner.scanLocation(), row.location);
}

TEST_F(NSScannerTest, HexadecimalNumbers) {
    const HexadecimalRow rows[] = {
        {"FF0000FF", true, 0xFF0000FF, 8},
        {"ff0000ff", true, 0xFF0000FF, 8},
        {"0123456789abcdefg", true, 0xFFFFFFFF, 16},
        {"89ABCDEF", true, 0x89ABCDEF, 8},
        {"0xFF0000FF", true, 0xFF0000FF, 10},
        {"0XFF0000FF", true, 0xFF0000FF, 10},
        {" FF", true, 0xFF, 3},
        {"\n\tFF", true, 0xFF, 4},
        {"FF 00", true, 0xFF, 2},
        {"FFg", true, 0xFF, 2},
        {"0.", true, 0, 1},
        {"000000000000", true, 0, 12},
        {"00000000000000FF", true, 0xFF, 16},
        {"0x00000000000000FF", true, 0xFF, 18},
        {"1FF0000FF", true, 0xFFFFFFFF, 9},
        {"FFFFFFFF", true, 0xFFFFFFFF, 8},
        {"FFFFFFFF1", true, 0xFFFFFFFF, 9},
        {"100000000", true, 0xFFFFFFFF, 9},
        {"0x0x12", true, 0, 3},
        {"0 x12", true, 0, 1},
    };
    for (const HexadecimalRow& row : rows) expectRow(row);
    const std::string large = std::string(100'000, '9') + "x";
    expectRow({large.c_str(), true, 0xFFFFFFFF, 100'000});
}

TEST_F(NSScannerTest, NoHexadecimalNumbers) {
    for (const char* const contents :
         {"#FF", "-1", "+1", "x12", "g", "", " ", " g", "\u00A0\uFF11", "\u0661"})
        expectRow({contents, false, 0, 0});
}

TEST_F(NSScannerTest, APrefixWithoutADigitIsTheNumberZero) {
    for (const char* const contents : {"0x", "0X", "0xg", "0x 1", "0x-1"}) expectRow({contents, true, 0, 1});
}

TEST_F(NSScannerTest, LongHexadecimalNumbers) {
    unsigned long long value = 0;
    const NSScanner scanner = over("0xFEDCBA9876543210 10000000000000000 0 nothing");
    EXPECT_TRUE(scanner.scanHexLongLong(&value));
    EXPECT_EQ(value, 0xFEDCBA9876543210u);
    EXPECT_TRUE(scanner.scanHexLongLong(&value));
    EXPECT_EQ(value, std::numeric_limits<unsigned long long>::max());
    EXPECT_TRUE(scanner.scanHexLongLong(&value));
    EXPECT_EQ(value, 0u);
    EXPECT_FALSE(scanner.scanHexLongLong(&value));
}

TEST_F(NSScannerTest, AResultThatIsNotWantedIsLeftOut) {
    const NSScanner scanner = over("FF 7 8 9 1.5 abc abc def");
    EXPECT_TRUE(scanner.scanHexLongLong(nullptr));
    EXPECT_TRUE(scanner.scanInt(nullptr));
    EXPECT_TRUE(scanner.scanInteger(nullptr));
    EXPECT_TRUE(scanner.scanLongLong(nullptr));
    EXPECT_TRUE(scanner.scanDouble(nullptr));
    EXPECT_TRUE(scanner.scanString_intoString("abc"_ns, nullptr));
    EXPECT_TRUE(scanner.scanUpToString_intoString("def"_ns, nullptr));
    EXPECT_EQ(scanner.scanLocation(), 21u);
}

// ---- Decimal numbers

TEST_F(NSScannerTest, Integers) {
    struct Row {
        const char* contents;
        bool isFound;
        int value;
        NSUInteger location;
    };
    const Row rows[] = {
        {"42", true, 42, 2},
        {" -7x", true, -7, 3},
        {"+5", true, 5, 2},
        {"2147483647", true, 2147483647, 10},
        {"007", true, 7, 3},
        {"-2147483648", true, std::numeric_limits<int>::min(), 11},
        {"99999999999", true, std::numeric_limits<int>::max(), 11},
        {"-99999999999", true, std::numeric_limits<int>::min(), 12},
        {"1.5", true, 1, 1},
        {"- 3", false, 0, 0},
        {"-", false, 0, 0},
        {"x", false, 0, 0},
        {"", false, 0, 0},
        {"--1", false, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.contents);
        const NSScanner scanner = over(row.contents);
        int value = 77;
        EXPECT_EQ(scanner.scanInt(&value), row.isFound);
        EXPECT_EQ(value, row.isFound ? row.value : 77);
        EXPECT_EQ(scanner.scanLocation(), row.location);
    }
}

TEST_F(NSScannerTest, LongIntegers) {
    const NSScanner scanner = over("9223372036854775807 -9223372036854775808 9223372036854775808 -5");
    NSInteger value = 0;
    EXPECT_TRUE(scanner.scanInteger(&value));
    EXPECT_EQ(value, std::numeric_limits<NSInteger>::max());
    EXPECT_TRUE(scanner.scanInteger(&value));
    EXPECT_EQ(value, std::numeric_limits<NSInteger>::min());
    long long longValue = 0;
    EXPECT_TRUE(scanner.scanLongLong(&longValue));
    EXPECT_EQ(longValue, std::numeric_limits<long long>::max());
    EXPECT_TRUE(scanner.scanLongLong(&longValue));
    EXPECT_EQ(longValue, -5);
    EXPECT_TRUE(scanner.isAtEnd());
}

TEST_F(NSScannerTest, Reals) {
    struct Row {
        const char* contents;
        double value;
        NSUInteger location;
    };
    const Row rows[] = {{"1.5", 1.5, 3},  {"-.5", -0.5, 3},  {"5.", 5, 2},          {"1e", 1, 1},
                        {"1e3", 1000, 3}, {"1E-2", 0.01, 4}, {"+2.5e-1z", 0.25, 7}, {"0x10", 0, 1},
                        {"1,5", 1, 1},    {"1e+", 1, 1},     {" 7", 7, 2}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.contents);
        const NSScanner scanner = over(row.contents);
        double value = 77;
        EXPECT_TRUE(scanner.scanDouble(&value));
        EXPECT_EQ(value, row.value);
        EXPECT_EQ(scanner.scanLocation(), row.location);
    }
    for (const char* const contents : {".", "e5", "inf", "nan", "-", "", "x"}) {
        SCOPED_TRACE(contents);
        double value = 77;
        const NSScanner scanner = over(contents);
        EXPECT_FALSE(scanner.scanDouble(&value));
        EXPECT_EQ(value, 77);
        EXPECT_EQ(scanner.scanLocation(), 0u);
    }
}

TEST_F(NSScannerTest, RealsOutsideTheRange) {
    double value = 77;
    EXPECT_TRUE(over("1e999").scanDouble(&value));
    EXPECT_EQ(value, HUGE_VAL);
    EXPECT_TRUE(over("-1e999").scanDouble(&value));
    EXPECT_EQ(value, -HUGE_VAL);
    EXPECT_TRUE(over("1e-999").scanDouble(&value));
    EXPECT_EQ(value, 0);
}

// ---- Text

TEST_F(NSScannerTest, AStringWhateverItsLetterCase) {
    const NSScanner scanner = over("  ABCdef");
    NSString found;
    EXPECT_FALSE(scanner.scanString_intoString("def"_ns, &found));
    EXPECT_EQ(scanner.scanLocation(), 0u);
    EXPECT_TRUE(scanner.scanString_intoString("abc"_ns, &found));
    EXPECT_EQ(text(found), "ABC");
    EXPECT_EQ(scanner.scanLocation(), 5u);
    EXPECT_FALSE(scanner.scanString_intoString(""_ns, &found));
    EXPECT_FALSE(scanner.scanString_intoString("defg"_ns, &found));
}

TEST_F(NSScannerTest, AStringInItsLetterCase) {
    const NSScanner scanner = over("ABCdef");
    EXPECT_FALSE(scanner.caseSensitive());
    scanner.setCaseSensitive(true);
    EXPECT_TRUE(scanner.caseSensitive());
    NSString found;
    EXPECT_FALSE(scanner.scanString_intoString("abc"_ns, &found));
    EXPECT_TRUE(scanner.scanUpToString_intoString("def"_ns, &found));
    EXPECT_EQ(text(found), "ABC");
    EXPECT_TRUE(scanner.scanString_intoString("def"_ns, &found));
    EXPECT_EQ(text(found), "def");
}

TEST_F(NSScannerTest, UpToAString) {
    const NSScanner scanner = over("  one AND two");
    NSString found;
    EXPECT_TRUE(scanner.scanUpToString_intoString("and"_ns, &found));
    EXPECT_EQ(text(found), "one ");
    EXPECT_EQ(scanner.scanLocation(), 6u);
    EXPECT_FALSE(scanner.scanUpToString_intoString("and"_ns, &found));
    EXPECT_TRUE(scanner.scanUpToString_intoString("three"_ns, &found));
    EXPECT_EQ(text(found), "AND two");
    EXPECT_TRUE(scanner.isAtEnd());
    EXPECT_FALSE(scanner.scanUpToString_intoString("three"_ns, &found));
}

TEST_F(NSScannerTest, UpToAStringThatIsFarAway) {
    for (const std::size_t distance : {50u, 63u, 64u, 65u, 66u, 100u, 131u, 5'000u}) {
        const std::string far(distance, 'x');
        const NSScanner scanner = over(far + "STOP");
        NSString found;
        EXPECT_TRUE(scanner.scanUpToString_intoString("stop"_ns, &found));
        EXPECT_EQ(text(found), far);
    }
}

TEST_F(NSScannerTest, AMatchDoesNotTakeALetterFromItsMark) {
    // At every distance, so that the mark is also the first unit that is not looked at at first.
    for (std::size_t distance = 0; distance < 80; ++distance) {
        const std::u16string before(distance, u'x');
        const NSScanner scanner = NSScanner::scannerWithString(NSString(before + u"e\u0301 e."));
        NSString found;
        EXPECT_TRUE(scanner.scanUpToString_intoString("e"_ns, &found));
        EXPECT_EQ(found.length(), distance + 3) << distance;
    }
    EXPECT_FALSE(NSScanner::scannerWithString(u"e\u0301"_ns).scanString_intoString("E"_ns, nullptr));
}

TEST_F(NSScannerTest, ALetterWithItsMarkIsTheSameAsOneCharacter) {
    NSString found;
    EXPECT_TRUE(NSScanner::scannerWithString(u"e\u0301!"_ns).scanString_intoString(u"\u00C9"_ns, &found));
    EXPECT_EQ(found.length(), 2u);
}

TEST_F(NSScannerTest, CharactersOfASet) {
    const NSCharacterSet letters = NSCharacterSet::characterSetWithCharactersInString("abc"_ns);
    const NSScanner scanner = over(" cab123 abc");
    NSString found;
    EXPECT_TRUE(scanner.scanCharactersFromSet_intoString(letters, &found));
    EXPECT_EQ(text(found), "cab");
    EXPECT_FALSE(scanner.scanCharactersFromSet_intoString(letters, &found));
    EXPECT_TRUE(scanner.scanUpToCharactersFromSet_intoString(letters, &found));
    EXPECT_EQ(text(found), "123 ");
    EXPECT_FALSE(scanner.scanUpToCharactersFromSet_intoString(letters, &found));
    EXPECT_EQ(scanner.scanLocation(), 8u);
    EXPECT_TRUE(scanner.scanCharactersFromSet_intoString(letters, &found));
    EXPECT_TRUE(scanner.isAtEnd());
    EXPECT_FALSE(scanner.scanUpToCharactersFromSet_intoString(letters, &found));
}

TEST_F(NSScannerTest, FoundTextIsAutoreleased) {
    const NSScanner scanner = over("one two");
    EXPECT_EQ(ownedReferencesOfNew([&] {
                  NSString found;
                  scanner.scanUpToString_intoString("two"_ns, &found);
                  return found;
              }),
              0);
}

// ---- State

TEST_F(NSScannerTest, SkipsWhiteSpaceUnlessToldOtherwise) {
    EXPECT_TRUE(NSCharacterSet::whitespaceAndNewlineCharacterSet().isEqual(over("").charactersToBeSkipped()));
    const NSScanner scanner = over("--1 2");
    int value = 0;
    scanner.setCharactersToBeSkipped(NSCharacterSet::characterSetWithCharactersInString("-"_ns));
    EXPECT_TRUE(scanner.scanInt(&value));
    EXPECT_EQ(value, 1);
    EXPECT_FALSE(scanner.scanInt(&value));
    scanner.setCharactersToBeSkipped(nil);
    EXPECT_FALSE(scanner.charactersToBeSkipped());
    EXPECT_FALSE(scanner.scanInt(&value));
    scanner.setScanLocation(4);
    EXPECT_TRUE(scanner.scanInt(&value));
    EXPECT_EQ(value, 2);
}

TEST_F(NSScannerTest, IsAtEndBehindWhatIsSkipped) {
    const NSScanner scanner = over("1 \n");
    EXPECT_FALSE(scanner.isAtEnd());
    EXPECT_TRUE(scanner.scanInt(nullptr));
    EXPECT_EQ(scanner.scanLocation(), 1u);
    EXPECT_TRUE(scanner.isAtEnd());
    EXPECT_TRUE(over("").isAtEnd());
}

TEST_F(NSScannerTest, TheLocationIsWithinTheString) {
    const NSScanner scanner = over("abc");
    scanner.setScanLocation(3);
    EXPECT_EQ(scanner.scanLocation(), 3u);
    EXPECT_THROWS_NAMED((scanner.setScanLocation(4), 0), "NSRangeException");
    EXPECT_EQ(scanner.scanLocation(), 3u);
}

TEST_F(NSScannerTest, CopiesTheString) {
    const Retained<NSMutableString> changing = adopt(NSMutableString::alloc().initWithString("12 34"_ns));
    const NSScanner scanner = NSScanner::scannerWithString(changing);
    changing.setString("x"_ns);
    int value = 0;
    EXPECT_TRUE(scanner.scanInt(&value));
    EXPECT_TRUE(scanner.scanInt(&value));
    EXPECT_EQ(value, 34);
    EXPECT_EQ(text(scanner.string()), "12 34");
}

TEST_F(NSScannerTest, ScansAStringOfAnyClass) {
    const NSString own = StringSubclass::make(StringSubclass::classObject(), u" 0xFF \u00E9 rest"_ns);
    const NSScanner scanner = NSScanner::scannerWithString(own);
    unsigned value = 0;
    EXPECT_TRUE(scanner.scanHexInt(&value));
    EXPECT_EQ(value, 0xFFu);
    NSString found;
    EXPECT_TRUE(scanner.scanString_intoString(u"\u00C9"_ns, &found));
    EXPECT_TRUE(scanner.scanUpToString_intoString("!"_ns, &found));
    EXPECT_EQ(text(found), "rest");
}

TEST_F(NSScannerTest, ManyScansCostWhatTheyRead) {
    // Scans that looked at the whole rest each time would take hours.
    constexpr int fields = 200'000;
    std::string contents;
    for (int field = 0; field < fields; ++field) contents += "FF, ";
    const NSString string(contents);
    for (const NSString each : {string, StringSubclass::make(StringSubclass::classObject(), string)}) {
        const NSScanner scanner = NSScanner::scannerWithString(each);
        int count = 0;
        for (unsigned value = 0; scanner.scanHexInt(&value); ++count) {
            scanner.scanUpToString_intoString(","_ns, nullptr);
            scanner.scanString_intoString(","_ns, nullptr);
        }
        EXPECT_EQ(count, fields);
        EXPECT_TRUE(scanner.isAtEnd());
    }
}

TEST_F(NSScannerTest, IsAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew([] { return NSScanner::scannerWithString("FF"_ns); }), 0);
}

} // namespace
} // namespace tessarin::testing
