// NSCharacterSet.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

using NSCharacterSetTest = PlatformTest;

// The members among the characters of the basic plane, as ranges: "9 20 2000-200B".
std::string membersOf(NSCharacterSet set) {
    std::string result;
    for (std::uint32_t character = 0; character <= 0xFFFF; ++character) {
        if (!set.characterIsMember(static_cast<unichar>(character))) continue;
        const std::uint32_t first = character;
        while (character < 0xFFFF && set.characterIsMember(static_cast<unichar>(character + 1))) ++character;
        char range[32];
        if (first == character)
            std::snprintf(range, sizeof range, "%X", first);
        else
            std::snprintf(range, sizeof range, "%X-%X", first, character);
        result += (result.empty() ? "" : " ") + std::string(range);
    }
    return result;
}

TEST_F(NSCharacterSetTest, Whitespace) {
    EXPECT_EQ(membersOf(NSCharacterSet::whitespaceCharacterSet()), "9 20 A0 1680 2000-200B 202F 205F 3000");
}

TEST_F(NSCharacterSetTest, WhitespaceHasNoLineBreaks) {
    const NSCharacterSet set = NSCharacterSet::whitespaceCharacterSet();
    EXPECT_TRUE(set.characterIsMember(u' '));
    EXPECT_TRUE(set.characterIsMember(u'\t'));
    EXPECT_FALSE(set.characterIsMember(u'\n'));
    EXPECT_FALSE(set.characterIsMember(u'\r'));
}

TEST_F(NSCharacterSetTest, WhitespaceAndNewline) {
    EXPECT_EQ(membersOf(NSCharacterSet::whitespaceAndNewlineCharacterSet()),
              "9-D 20 85 A0 1680 2000-200B 2028-2029 202F 205F 3000");
}

TEST_F(NSCharacterSetTest, AlphanumericHoldsLettersMarksAndNumbers) {
    const NSCharacterSet set = NSCharacterSet::alphanumericCharacterSet();
    for (const unichar unit :
         {u'a', u'Z', u'0', u'\u00e9', u'\u0301', u'\u0663', u'\u00bd', u'\u4e00', u'\u9fa5'})
        EXPECT_TRUE(set.characterIsMember(unit)) << static_cast<unsigned>(unit);
    for (const unichar unit : {u' ', u'-', u'_', u'\u20ac', u'\u2028'})
        EXPECT_FALSE(set.characterIsMember(unit)) << static_cast<unsigned>(unit);
    EXPECT_TRUE(set.longCharacterIsMember(0x10400));
    EXPECT_FALSE(set.longCharacterIsMember(0x1F600));
}

TEST_F(NSCharacterSetTest, CharactersInString) {
    const NSCharacterSet set =
        NSCharacterSet::characterSetWithCharactersInString(u"/:\u20ac\u20ad\u00e9/"_ns);
    EXPECT_EQ(membersOf(set), "2F 3A E9 20AC-20AD");
}

TEST_F(NSCharacterSetTest, CharactersInEmptyString) {
    EXPECT_EQ(membersOf(NSCharacterSet::characterSetWithCharactersInString(""_ns)), "");
}

TEST_F(NSCharacterSetTest, SurrogatesOfAMemberAreNone) {
    const NSCharacterSet set = NSCharacterSet::characterSetWithCharactersInString(u"\U0001F600"_ns);
    EXPECT_TRUE(set.longCharacterIsMember(0x1F600));
    EXPECT_FALSE(set.longCharacterIsMember(0x1F601));
    EXPECT_FALSE(set.characterIsMember(0xD83D));
    EXPECT_FALSE(set.characterIsMember(0xDE00));
}

TEST_F(NSCharacterSetTest, InvertedSetHoldsSurrogateUnits) {
    const NSCharacterSet set = NSCharacterSet::alphanumericCharacterSet().invertedSet();
    EXPECT_TRUE(set.characterIsMember(0xD83D));
    EXPECT_TRUE(set.characterIsMember(0xDE00));
}

TEST_F(NSCharacterSetTest, Range) {
    const NSCharacterSet set = NSCharacterSet::characterSetWithRange({0xFE, 4});
    EXPECT_EQ(membersOf(set), "FE-101");
    EXPECT_EQ(membersOf(NSCharacterSet::characterSetWithRange({0x41, 0})), "");
    EXPECT_TRUE(NSCharacterSet::characterSetWithRange({0x10FFFF, 1}).longCharacterIsMember(0x10FFFF));
}

TEST_F(NSCharacterSetTest, InvertedSet) {
    const NSCharacterSet set = NSCharacterSet::characterSetWithRange({0x20, 0xFFE0 - 0x20}).invertedSet();
    EXPECT_EQ(membersOf(set), "0-1F FFE0-FFFF");
    EXPECT_TRUE(set.longCharacterIsMember(0x1F600));
    EXPECT_EQ(membersOf(set.invertedSet()), "20-FFDF");
}

TEST_F(NSCharacterSetTest, EqualMembersAreEqual) {
    const NSCharacterSet set = NSCharacterSet::characterSetWithCharactersInString("abc"_ns);
    const NSCharacterSet range = NSCharacterSet::characterSetWithRange({0x61, 3});
    EXPECT_TRUE(set.isEqual(range));
    EXPECT_EQ(set.hash(), range.hash());
    EXPECT_FALSE(set.isEqual(set.invertedSet()));
    EXPECT_TRUE(set.isEqual(set.invertedSet().invertedSet()));
}

TEST_F(NSCharacterSetTest, ComplementBuiltOtherwiseIsEqual) {
    const NSCharacterSet high = NSCharacterSet::characterSetWithRange({0x1000, 0x110000 - 0x1000});
    const NSCharacterSet low = NSCharacterSet::characterSetWithRange({0, 0x1000});
    EXPECT_TRUE(low.invertedSet().isEqual(high));
    EXPECT_TRUE(high.isEqual(low.invertedSet()));
    EXPECT_EQ(low.invertedSet().hash(), high.hash());
}

TEST_F(NSCharacterSetTest, CopyIsEqual) {
    const NSCharacterSet set = NSCharacterSet::characterSetWithCharactersInString("abc"_ns);
    EXPECT_TRUE(set.isEqual(adopt(set.copy())));
}

// A set with a test of its own: the vowels.
BOOL isVowel(NSCharacterSet, SEL, unichar unit) {
    return std::u16string_view(u"aeiou").find(unit) != std::u16string_view::npos;
}

TEST_F(NSCharacterSetTest, DerivedClassNeedsOnlyItsTest) {
    static const ClassDefinition definition{{.name = "VowelSet",
                                             .superclass = "NSCharacterSet",
                                             .methods = {instanceMethod("characterIsMember:", isVowel)}}};
    const auto vowels = adopt<NSCharacterSet>(send<id>(definition.classObject().alloc(), "init"_sel));
    EXPECT_EQ(text("eabca"_ns.stringByTrimmingCharactersInSet(vowels)), "bc");
    EXPECT_EQ("xyz u"_ns.rangeOfCharacterFromSet(vowels), (NSRange{4, 1}));
}

} // namespace
} // namespace tessarin::testing
