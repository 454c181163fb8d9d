// Constant strings, conversions from and to the strings of the standard library, and streaming.
#include "PlatformTest.h"

#include <sstream>

namespace tessarin::testing {
namespace {

class LiteralTest : public PlatformTest {};
class StringConversionTest : public PlatformTest {};
class StreamingTest : public PlatformTest {};

NSString literalOfAFunction() { return "the same text"_ns; }

// The units of a string, by their numbers.
std::vector<unsigned> unitsOf(NSString string) {
    std::vector<unsigned> units;
    for (NSUInteger index = 0; index < string.length(); ++index)
        units.push_back(string.characterAtIndex(index));
    return units;
}

TEST_F(LiteralTest, IsTheSameObjectEachTime) {
    EXPECT_EQ("the same text"_ns, "the same text"_ns);
    EXPECT_EQ(literalOfAFunction(), "the same text"_ns);
    EXPECT_NE("the same text"_ns, "another text"_ns);
}

TEST_F(LiteralTest, HoldsItsText) {
    EXPECT_EQ(""_ns.length(), 0u);
    EXPECT_EQ(text("plain"_ns), "plain");
    EXPECT_TRUE("plain"_ns.isKindOfClass(NSString::classObject()));
    EXPECT_FALSE("plain"_ns.isKindOfClass(NSMutableString::classObject()));
}

TEST_F(LiteralTest, IsReadAsUTF8) {
    EXPECT_EQ(unitsOf("\xC3\xA9\xE2\x82\xAC"_ns), (std::vector<unsigned>{0xE9, 0x20AC}));
    EXPECT_EQ(unitsOf("\xF0\x9F\x98\x80"_ns), (std::vector<unsigned>{0xD83D, 0xDE00}));
}

TEST_F(LiteralTest, OfIllFormedUTF8IsNil) {
    EXPECT_FALSE("\xC3"_ns);
    EXPECT_FALSE("a\xFFz"_ns);
}

TEST_F(LiteralTest, MayContainTheNullCharacter) {
    EXPECT_EQ(unitsOf("a\0b"_ns), (std::vector<unsigned>{'a', 0, 'b'}));
    EXPECT_EQ(unitsOf(u"\u20ac\0"_ns), (std::vector<unsigned>{0x20AC, 0}));
    EXPECT_NE("a\0b"_ns, "a\0c"_ns);
}

TEST_F(LiteralTest, OfUTF16HoldsItsUnits) {
    EXPECT_EQ(unitsOf(u"caf\u00e9"_ns), (std::vector<unsigned>{'c', 'a', 'f', 0xE9}));
    EXPECT_EQ(unitsOf(u"\U0001F600"_ns), (std::vector<unsigned>{0xD83D, 0xDE00}));
    EXPECT_EQ(u""_ns.length(), 0u);
}

TEST_F(LiteralTest, OfUTF16MayHoldAnUnpairedSurrogate) {
    EXPECT_EQ(unitsOf(u"a\xD83D"_ns), (std::vector<unsigned>{'a', 0xD83D}));
    EXPECT_EQ(unitsOf(u"\xDE00z"_ns), (std::vector<unsigned>{0xDE00, 'z'}));
}

TEST_F(LiteralTest, KeepsAByteOrderMark) {
    EXPECT_EQ(unitsOf("\xEF\xBB\xBFx"_ns), (std::vector<unsigned>{0xFEFF, 'x'}));
    EXPECT_EQ(unitsOf(u"\uFEFFx"_ns), (std::vector<unsigned>{0xFEFF, 'x'}));
    EXPECT_EQ(unitsOf(u"\xFFFEx"_ns), (std::vector<unsigned>{0xFFFE, 'x'}));
}

TEST_F(LiteralTest, LivesAsLongAsTheProcess) {
    const NSString literal = "never released"_ns;
    {
        const AutoreleasePool pool;
        for (int times = 0; times < 3; ++times) {
            const NSString copy = literal.copy();
            adopt(copy).autorelease();
        }
    }
    EXPECT_EQ(text(literal), "never released");
    EXPECT_EQ(literal, "never released"_ns);
}

TEST_F(LiteralTest, EqualsAStringMadeAtRunTime) {
    EXPECT_TRUE("caf\xC3\xA9"_ns.isEqualToString(NSString(std::u16string_view(u"caf\u00e9"))));
    EXPECT_EQ("caf\xC3\xA9"_ns.hash(), NSString(std::u16string_view(u"caf\u00e9")).hash());
}

// ---- Conversions

TEST_F(StringConversionTest, FromUTF8) {
    EXPECT_EQ(unitsOf(NSString("abc")), (std::vector<unsigned>{'a', 'b', 'c'}));
    EXPECT_EQ(unitsOf(NSString(std::string("\xC3\xA9"))), (std::vector<unsigned>{0xE9}));
    EXPECT_EQ(unitsOf(NSString(std::string_view("\xF0\x9F\x98\x80z", 5))),
              (std::vector<unsigned>{0xD83D, 0xDE00, 'z'}));
    EXPECT_EQ(unitsOf(NSString(std::string("a\0b", 3))), (std::vector<unsigned>{'a', 0, 'b'}));
    EXPECT_TRUE(NSString(""));
    EXPECT_EQ(NSString("").length(), 0u);
}

TEST_F(StringConversionTest, FromIllFormedUTF8GivesNil) {
    for (const std::string_view illFormed : {
             std::string_view("\x80"),             // a continuation without a beginning
             std::string_view("a\xC3"),            // cut off
             std::string_view("\xE2\x82"),         // cut off
             std::string_view("\xC3("),            // no continuation
             std::string_view("\xC0\x80"),         // longer than need be
             std::string_view("\xE0\x80\xAF"),     // longer than need be
             std::string_view("\xF0\x80\x80\xAF"), // longer than need be
             std::string_view("\xED\xA0\x80"),     // a surrogate
             std::string_view("\xF4\x90\x80\x80"), // beyond U+10FFFF
             std::string_view("\xF8\x88\x80\x80\x80"),
             std::string_view("\xFF"),
         })
        EXPECT_FALSE(NSString(illFormed)) << illFormed;
}

TEST_F(StringConversionTest, FromUTF16) {
    EXPECT_EQ(unitsOf(NSString(std::u16string_view(u"\u20ac\0z", 3))),
              (std::vector<unsigned>{0x20AC, 0, 'z'}));
    EXPECT_EQ(NSString(std::u16string_view()).length(), 0u);
}

TEST_F(StringConversionTest, FromUTF16AcceptsUnpairedSurrogates) {
    EXPECT_EQ(unitsOf(NSString(std::u16string_view(u"a\xD800z"))), (std::vector<unsigned>{'a', 0xD800, 'z'}));
    EXPECT_EQ(unitsOf(NSString(std::u16string_view(u"\xDE00\xD83D"))),
              (std::vector<unsigned>{0xDE00, 0xD83D}));
}

TEST_F(StringConversionTest, KeepsAByteOrderMark) {
    EXPECT_EQ(unitsOf(NSString("\xEF\xBB\xBFx")), (std::vector<unsigned>{0xFEFF, 'x'}));
    EXPECT_EQ(unitsOf(NSString(std::u16string_view(u"\uFEFFx"))), (std::vector<unsigned>{0xFEFF, 'x'}));
}

TEST_F(StringConversionTest, ToUTF8) {
    EXPECT_EQ(static_cast<std::string>("a\0b"_ns), std::string("a\0b", 3));
    EXPECT_EQ(static_cast<std::string>(u"\u00e9\u20ac\U0001F600"_ns), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(static_cast<std::string>(NSString()), "");
}

TEST_F(StringConversionTest, ToUTF8AnUnpairedSurrogateIsTheReplacementCharacter) {
    EXPECT_EQ(static_cast<std::string>(u"a\xD800z"_ns), "a\xEF\xBF\xBDz");
}

TEST_F(StringConversionTest, ToUTF16) {
    EXPECT_EQ(static_cast<std::u16string>(u"\u00e9\xD800\U0001F600"_ns), u"\u00e9\xD800\U0001F600");
    EXPECT_EQ(static_cast<std::u16string>(NSString()), u"");
}

TEST_F(StringConversionTest, KeepLongTexts) {
    std::string longText;
    for (int times = 0; times < 2000; ++times) longText += "a\xC3\xA9\xF0\x9F\x98\x80";
    EXPECT_EQ(static_cast<std::string>(NSString(longText)), longText);
    EXPECT_EQ(NSString(longText).length(), 8000u);
}

// ---- Streaming

std::string streamed(NSObject object) {
    std::ostringstream stream;
    stream << object;
    return stream.str();
}

TEST_F(StreamingTest, WritesAStringAsItIs) { EXPECT_EQ(streamed(u"caf\u00e9 %@"_ns), "café %@"); }

TEST_F(StreamingTest, WritesAnObjectsDescription) { EXPECT_EQ(streamed(NSNumber::numberWithInt(42)), "42"); }

TEST_F(StreamingTest, WritesNil) { EXPECT_EQ(streamed(nil), "(null)"); }

} // namespace
} // namespace tessarin::testing
