// NSMutableString: edits, and what does not follow them.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

using NSMutableStringTest = PlatformTest;

TEST_F(NSMutableStringTest, ClassOperationsGiveMutableStrings) {
    const NSMutableString string = NSMutableString::string();
    EXPECT_TRUE(string.isKindOfClass("NSMutableString"_class));
    string.appendString("a"_ns);
    EXPECT_EQ(text(string), "a");
}

TEST_F(NSMutableStringTest, AppendsAndWidens) {
    const NSMutableString string = NSMutableString::stringWithString("a"_ns);
    string.appendString("b"_ns);
    string.appendString(u"\u20ac"_ns);
    string.appendString("c"_ns);
    EXPECT_EQ(text(string), "ab\u20acc");
}

TEST_F(NSMutableStringTest, AppendsItself) {
    const NSMutableString string = NSMutableString::stringWithString("ab"_ns);
    for (int times = 0; times < 5; ++times) string.appendString(string);
    EXPECT_EQ(string.length(), 64u);
    EXPECT_TRUE(string.hasSuffix("abab"_ns));
}

TEST_F(NSMutableStringTest, AppendsManyPieces) {
    const NSMutableString string = NSMutableString::string();
    for (int index = 0; index < 1000; ++index) string.appendFormat("%d,"_ns, index);
    EXPECT_EQ(string.length(), 3890u);
    EXPECT_TRUE(string.hasSuffix("998,999,"_ns));
}

TEST_F(NSMutableStringTest, InsertsDeletesAndReplaces) {
    const NSMutableString string = NSMutableString::stringWithString("abcd"_ns);
    string.insertString_atIndex("X"_ns, 2);
    EXPECT_EQ(text(string), "abXcd");
    string.deleteCharactersInRange({0, 2});
    EXPECT_EQ(text(string), "Xcd");
    string.replaceCharactersInRange_withString({1, 1}, "long"_ns);
    EXPECT_EQ(text(string), "Xlongd");
    string.replaceCharactersInRange_withString({0, 5}, u"\u20ac"_ns);
    EXPECT_EQ(text(string), "\u20acd");
    string.setString("new"_ns);
    EXPECT_EQ(text(string), "new");
}

TEST_F(NSMutableStringTest, EditsBeyondTheEndRaise) {
    const NSMutableString string = NSMutableString::stringWithString("abc"_ns);
    EXPECT_THROWS_NAMED(string.insertString_atIndex("x"_ns, 4), "NSRangeException");
    EXPECT_THROWS_NAMED(string.deleteCharactersInRange({2, 2}), "NSRangeException");
    EXPECT_THROWS_NAMED(string.replaceCharactersInRange_withString({4, 0}, "x"_ns), "NSRangeException");
    EXPECT_EQ(text(string), "abc");
}

TEST_F(NSMutableStringTest, NilArgumentsRaise) {
    const NSMutableString string = NSMutableString::string();
    EXPECT_THROWS_NAMED(string.appendString(nil), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(string.setString(nil), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(string.insertString_atIndex(nil, 0), "NSInvalidArgumentException");
}

TEST_F(NSMutableStringTest, HashFollowsTheEdits) {
    const NSMutableString string = NSMutableString::stringWithString("ab"_ns);
    EXPECT_EQ(string.hash(), "ab"_ns.hash());
    string.appendString("c"_ns);
    EXPECT_EQ(string.hash(), "abc"_ns.hash());
}

TEST_F(NSMutableStringTest, CopyDoesNotFollowTheEdits) {
    const NSMutableString string = NSMutableString::stringWithString("ab"_ns);
    const Retained<NSString> copy = adopt<NSString>(string.copy());
    string.appendString("c"_ns);
    EXPECT_EQ(text(copy), "ab");
    EXPECT_FALSE(copy.isKindOfClass("NSMutableString"_class));
}

TEST_F(NSMutableStringTest, Utf8StringDoesNotFollowTheEdits) {
    const NSMutableString string = NSMutableString::stringWithString("ab"_ns);
    const char* bytes = string.UTF8String();
    string.setString("xyz"_ns);
    EXPECT_STREQ(bytes, "ab");
}

} // namespace
} // namespace tessarin::testing
