// NSString: compare:, compare:options: and caseInsensitiveCompare:.
#include "PlatformTest.h"

#include <random>

namespace tessarin::testing {
namespace {

using NSStringComparisonTest = PlatformTest;

NSComparisonResult inAnyCase(NSString left, NSString right) {
    const NSComparisonResult result = left.compare_options(right, NSCaseInsensitiveSearch);
    // What holds for one order holds for the other.
    EXPECT_EQ(right.compare_options(left, NSCaseInsensitiveSearch), -result) << left << " " << right;
    return result;
}

TEST_F(NSStringComparisonTest, OrdersByCharacterValue) {
    EXPECT_EQ("a"_ns.compare("b"_ns), NSOrderedAscending);
    EXPECT_EQ("b"_ns.compare("a"_ns), NSOrderedDescending);
    EXPECT_EQ("Z"_ns.compare("a"_ns), NSOrderedAscending);
    EXPECT_EQ("abc"_ns.compare("abc"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, PrefixComesFirst) {
    EXPECT_EQ("ab"_ns.compare("abc"_ns), NSOrderedAscending);
    EXPECT_EQ(""_ns.compare("a"_ns), NSOrderedAscending);
    EXPECT_EQ(""_ns.compare(""_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, NilRaises) {
    EXPECT_THROWS_NAMED("a"_ns.compare(nil), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED("a"_ns.caseInsensitiveCompare(nil), "NSInvalidArgumentException");
}

TEST_F(NSStringComparisonTest, CanonicallyEquivalentTextIsTheSame) {
    EXPECT_EQ(u"\u00e9"_ns.compare(u"e\u0301"_ns), NSOrderedSame);
    EXPECT_EQ(u"x\u00e9y"_ns.compare(u"xe\u0301y"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, MarksInAnyEquivalentOrderAreTheSame) {
    EXPECT_EQ(u"a\u0323\u0301"_ns.compare(u"a\u0301\u0323"_ns), NSOrderedSame);
    EXPECT_EQ(u"a\u0301\u0300"_ns.compare(u"a\u0300\u0301"_ns), NSOrderedDescending);
}

TEST_F(NSStringComparisonTest, HangulSyllablesAreTheirLetters) {
    EXPECT_EQ(u"\uac01"_ns.compare(u"\u1100\u1161\u11a8"_ns), NSOrderedSame);
    EXPECT_EQ(u"\uac00"_ns.compare(u"\u1100\u1161"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, LiteralOrderIsByUnits) {
    EXPECT_EQ(u"e\u0301"_ns.compare_options(u"\u00e9"_ns, NSLiteralSearch), NSOrderedAscending);
    EXPECT_EQ("abc"_ns.compare_options("abc"_ns, NSLiteralSearch), NSOrderedSame);
    EXPECT_EQ("abc"_ns.compare_options(u"ab\u20ac"_ns, NSLiteralSearch), NSOrderedAscending);
}

TEST_F(NSStringComparisonTest, CaseInsensitiveOfAscii) {
    EXPECT_EQ(inAnyCase("a"_ns, "A"_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase("I"_ns, "i"_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase("_"_ns, "A"_ns), NSOrderedAscending);
    EXPECT_EQ(inAnyCase("Z"_ns, "_"_ns), NSOrderedDescending);
    EXPECT_EQ(inAnyCase(""_ns, ""_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase(""_ns, "a"_ns), NSOrderedAscending);
    EXPECT_EQ("HeLLo"_ns.caseInsensitiveCompare("hEllO"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, CaseInsensitiveIsNotNumeric) {
    EXPECT_EQ(inAnyCase("file10"_ns, "file9"_ns), NSOrderedAscending);
}

TEST_F(NSStringComparisonTest, SharpSFoldsToTwoLetters) {
    EXPECT_EQ(inAnyCase(u"\u00df"_ns, "ss"_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase(u"\u00df"_ns, "SS"_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase(u"stra\u00dfe"_ns, "STRASSE"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, CapitalSharpSFoldsToTwoLetters) {
    EXPECT_EQ(inAnyCase(u"\u1e9e"_ns, "ss"_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase(u"\u1e9e"_ns, u"\u00df"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, LigatureFoldsToItsLetters) {
    EXPECT_EQ(inAnyCase(u"\ufb01"_ns, "fi"_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase(u"\ufb01"_ns, "FI"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, SigmasFoldToOne) {
    EXPECT_EQ(inAnyCase(u"\u03c2"_ns, u"\u03c3"_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase(u"\u03a3"_ns, u"\u03c2"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, CapitalSigmaFoldsToSmall) {
    EXPECT_EQ(inAnyCase(u"\u03a3"_ns, u"\u03c3"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, AccentsCount) {
    EXPECT_EQ(inAnyCase(u"\u00e9"_ns, "e"_ns), NSOrderedDescending);
}

TEST_F(NSStringComparisonTest, CaseInsensitiveIsCanonical) {
    EXPECT_EQ(inAnyCase(u"\u00e9"_ns, u"e\u0301"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, CaseAndNormalFormMayDifferAtOnce) {
    EXPECT_EQ(inAnyCase(u"\u00c9"_ns, u"e\u0301"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, DottedCapitalIFoldsToTwo) {
    EXPECT_EQ(inAnyCase(u"\u0130"_ns, "i"_ns), NSOrderedDescending);
    EXPECT_EQ(inAnyCase(u"\u0130"_ns, u"i\u0307"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, DotlessIIsNoI) {
    EXPECT_EQ(inAnyCase(u"\u0131"_ns, "I"_ns), NSOrderedDescending);
    EXPECT_EQ(inAnyCase(u"\u0131"_ns, "i"_ns), NSOrderedDescending);
}

TEST_F(NSStringComparisonTest, SignsThatAreLettersFold) {
    EXPECT_EQ(inAnyCase(u"\u212a"_ns, "k"_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase(u"\u212b"_ns, u"\u00e5"_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase(u"\u017f"_ns, "s"_ns), NSOrderedSame);
}

TEST_F(NSStringComparisonTest, WidthCounts) {
    EXPECT_EQ(inAnyCase(u"\uff21"_ns, u"\uff41"_ns), NSOrderedSame);
    EXPECT_EQ(inAnyCase(u"\uff21"_ns, "A"_ns), NSOrderedDescending);
}

TEST_F(NSStringComparisonTest, BeyondTheBasicPlaneNothingFolds) {
    EXPECT_EQ(inAnyCase(u"\U00010400"_ns, u"\U00010428"_ns), NSOrderedAscending);
}

TEST_F(NSStringComparisonTest, MutableAndWideStringsCompareAlike) {
    const NSMutableString wide = NSMutableString::stringWithString(u"ABC\u20ac"_ns);
    wide.deleteCharactersInRange({3, 1});
    EXPECT_EQ(inAnyCase("abc"_ns, wide), NSOrderedSame);
    EXPECT_EQ("ABC"_ns.compare(wide), NSOrderedSame);
}

// Comparing must be an order, or sorting with it would not end well.
TEST_F(NSStringComparisonTest, OrderIsTransitive) {
    constexpr char16_t alphabet[] = {u'a',      u'A',      u'e',      u's',      u'\u00df', u'\u00e9',
                                     u'\u0301', u'\u0323', u'\u0344', u'\u0345', u'\u1fb4', u'\u4e00',
                                     u'\uac00', u'\ufb01', 0xD801,    0xDC00,    u'\u3099'};
    std::mt19937 random(1);
    std::uniform_int_distribution<std::size_t> letter(0, std::size(alphabet) - 1), length(0, 4);
    for (const NSStringCompareOptions options : {NSStringCompareOptions{0}, NSCaseInsensitiveSearch}) {
        for (int round = 0; round < 3000; ++round) {
            const AutoreleasePool pool;
            NSString strings[3];
            for (NSString& string : strings) {
                std::u16string made(length(random), u'\0');
                for (char16_t& unit : made) unit = alphabet[letter(random)];
                string = NSString(std::u16string_view(made));
            }
            const auto firstSecond = strings[0].compare_options(strings[1], options);
            const auto secondThird = strings[1].compare_options(strings[2], options);
            const auto firstThird = strings[0].compare_options(strings[2], options);
            EXPECT_EQ(strings[1].compare_options(strings[0], options), -firstSecond);
            if (firstSecond <= 0 && secondThird <= 0) {
                ASSERT_LE(firstThird, 0);
            }
            if (firstSecond == 0) {
                ASSERT_EQ(secondThird, firstThird);
            }
        }
    }
}

} // namespace
} // namespace tessarin::testing
