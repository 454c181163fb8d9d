// NSString: prefixes, suffixes, and what is found in it.
#include "PlatformTest.h"

#include <string>

namespace tessarin::testing {
namespace {

using NSStringSearchingTest = PlatformTest;

TEST_F(NSStringSearchingTest, HasPrefix) {
    EXPECT_TRUE("/a/b"_ns.hasPrefix("/a"_ns));
    EXPECT_TRUE("/a"_ns.hasPrefix("/a"_ns));
    EXPECT_FALSE("/A"_ns.hasPrefix("/a"_ns));
    EXPECT_FALSE("/"_ns.hasPrefix("/a"_ns));
}

TEST_F(NSStringSearchingTest, HasSuffix) {
    EXPECT_TRUE("file.txt"_ns.hasSuffix(".txt"_ns));
    EXPECT_FALSE("file.txt"_ns.hasSuffix(".TXT"_ns));
}

TEST_F(NSStringSearchingTest, EmptyPrefixIsNone) {
    EXPECT_FALSE("abc"_ns.hasPrefix(""_ns));
    EXPECT_FALSE(""_ns.hasPrefix(""_ns));
    EXPECT_FALSE("abc"_ns.hasSuffix(""_ns));
}

TEST_F(NSStringSearchingTest, NilPrefixRaises) {
    EXPECT_THROWS_NAMED("abc"_ns.hasPrefix(nil), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED("abc"_ns.hasSuffix(nil), "NSInvalidArgumentException");
}

TEST_F(NSStringSearchingTest, RangeOfString) {
    EXPECT_EQ("abcabc"_ns.rangeOfString("bc"_ns), (NSRange{1, 2}));
    EXPECT_EQ("abc"_ns.rangeOfString("x"_ns), (NSRange{static_cast<NSUInteger>(NSNotFound), 0}));
    EXPECT_EQ("abc"_ns.rangeOfString(""_ns), (NSRange{static_cast<NSUInteger>(NSNotFound), 0}));
    EXPECT_EQ(u"a\u20acb"_ns.rangeOfString("b"_ns), (NSRange{2, 1}));
}

TEST_F(NSStringSearchingTest, RangeOfNilRaises) {
    EXPECT_THROWS_NAMED("abc"_ns.rangeOfString(nil), "NSInvalidArgumentException");
}

TEST_F(NSStringSearchingTest, RangeOfStringBackwards) {
    EXPECT_EQ("abcabc"_ns.rangeOfString_options("bc"_ns, NSBackwardsSearch), (NSRange{4, 2}));
}

TEST_F(NSStringSearchingTest, RangeOfLongStringBackwards) {
    const std::string searched = std::string(100, 'a') + "b";
    const NSString whole(searched + searched + "c");
    EXPECT_EQ(whole.rangeOfString_options(NSString(searched), NSBackwardsSearch), (NSRange{101, 101}));
    EXPECT_EQ(whole.rangeOfString(NSString(searched)), (NSRange{0, 101}));
}

TEST_F(NSStringSearchingTest, RangeOfStringAnchored) {
    const NSRange none{static_cast<NSUInteger>(NSNotFound), 0};
    EXPECT_EQ("abcab"_ns.rangeOfString_options("ab"_ns, NSAnchoredSearch), (NSRange{0, 2}));
    EXPECT_EQ("abcab"_ns.rangeOfString_options("bc"_ns, NSAnchoredSearch), none);
    EXPECT_EQ("abcab"_ns.rangeOfString_options("ab"_ns, NSAnchoredSearch | NSBackwardsSearch),
              (NSRange{3, 2}));
}

TEST_F(NSStringSearchingTest, RangeOfStringInAnyCase) {
    EXPECT_EQ("xABy"_ns.rangeOfString_options("ab"_ns, NSCaseInsensitiveSearch), (NSRange{1, 2}));
    EXPECT_EQ("abAB"_ns.rangeOfString_options("aB"_ns, NSCaseInsensitiveSearch | NSBackwardsSearch),
              (NSRange{2, 2}));
}

TEST_F(NSStringSearchingTest, RangeOfStringInAnyCaseFindsFoldedText) {
    EXPECT_EQ(u"Stra\u00dfe"_ns.rangeOfString_options("SS"_ns, NSCaseInsensitiveSearch), (NSRange{4, 1}));
    EXPECT_EQ(u"Stra\u00dfe"_ns.rangeOfString_options("sE"_ns, NSCaseInsensitiveSearch).length, 0u);
    EXPECT_EQ(u"xe\u0301"_ns.rangeOfString_options(u"\u00c9"_ns, NSCaseInsensitiveSearch), (NSRange{1, 2}));
}

TEST_F(NSStringSearchingTest, RangeOfCharacterFromSet) {
    const NSCharacterSet set = NSCharacterSet::characterSetWithCharactersInString("xy"_ns);
    EXPECT_EQ("abyx"_ns.rangeOfCharacterFromSet(set), (NSRange{2, 1}));
    EXPECT_EQ("ab"_ns.rangeOfCharacterFromSet(set), (NSRange{static_cast<NSUInteger>(NSNotFound), 0}));
}

TEST_F(NSStringSearchingTest, RangeOfCharacterFromSetTakesASurrogatePairAsOne) {
    const NSCharacterSet set = NSCharacterSet::characterSetWithCharactersInString(u"\U0001F600"_ns);
    EXPECT_EQ(u"a\U0001F600"_ns.rangeOfCharacterFromSet(set), (NSRange{1, 2}));
}

} // namespace
} // namespace tessarin::testing
