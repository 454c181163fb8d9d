// NSString: creation, units, encodings, equality, parts, splitting and trimming.
#include "PlatformTest.h"

#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSData.h"

#include <string>

namespace tessarin::testing {
namespace {

using NSStringTest = PlatformTest;

// A string class with nothing but the primitive operations: the letter a, as many times as it is told.
NSUInteger countedLength(NSString self, SEL) { return instanceVariableOf<NSUInteger>(self, "_count"); }
unichar countedCharacter(NSString self, SEL, NSUInteger index) {
    return static_cast<unichar>(u'a' + index % instanceVariableOf<NSUInteger>(self, "_period"));
}
NSString countedString(NSUInteger count, NSUInteger period) {
    static const ClassDefinition definition{
        {.name = "CountedString",
         .superclass = "NSString",
         .instanceVariables = {instanceVariable<NSUInteger>("_count"),
                               instanceVariable<NSUInteger>("_period")},
         .methods = {instanceMethod("length", countedLength),
                     instanceMethod("characterAtIndex:", countedCharacter)}}};
    Retained<NSString> string = adopt<NSString>(send<id>(definition.classObject().alloc(), "init"_sel));
    instanceVariableOf<NSUInteger>(string, "_count") = count;
    instanceVariableOf<NSUInteger>(string, "_period") = period;
    return string.autorelease();
}

std::u16string units(NSString string) { return static_cast<std::u16string>(string); }

// ---- Creation and conversion

TEST_F(NSStringTest, ComesFromUtf8AndGoesBack) {
    const std::string utf8 = "a\u00e9\u20ac\U0001F600z";
    const NSString string(utf8);
    EXPECT_EQ(units(string), u"a\u00e9\u20ac\U0001F600z");
    EXPECT_EQ(static_cast<std::string>(string), utf8);
}

TEST_F(NSStringTest, LongTextComesFromUtf8AndGoesBack) {
    std::string utf8;
    for (int index = 0; index < 1000; ++index) utf8 += "abcdefg\u20ac\U0001F600";
    const NSString string(utf8);
    EXPECT_EQ(string.length(), 10000u);
    EXPECT_EQ(static_cast<std::string>(string), utf8);
}

TEST_F(NSStringTest, IllFormedUtf8GivesNil) {
    for (const char* text : {"\x80", "a\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                             "\xFF", "\xF0\x9F\x98", "\xC3("})
        EXPECT_FALSE(NSString(std::string(text))) << text;
}

TEST_F(NSStringTest, UnpairedSurrogateGoesToUtf8AsReplacementCharacter) {
    const char16_t half[] = {u'a', 0xD83D, u'b'};
    EXPECT_EQ(static_cast<std::string>(NSString(std::u16string_view(half, 3))), "a\uFFFDb");
}

TEST_F(NSStringTest, KeepsZeroUnits) {
    const NSString string(std::string_view("a\0b", 3));
    EXPECT_EQ(string.length(), 3u);
    EXPECT_EQ(static_cast<std::string>(string), std::string("a\0b", 3));
}

TEST_F(NSStringTest, NilIsEmptyText) {
    EXPECT_EQ(static_cast<std::string>(NSString()), "");
    EXPECT_EQ(units(NSString()), u"");
}

TEST_F(NSStringTest, ConstantStringsOfTheSameTextAreTheSameObject) {
    EXPECT_EQ("constant"_ns, "constant"_ns);
    EXPECT_TRUE("\u00e9"_ns.isEqual(u"\u00e9"_ns));
}

TEST_F(NSStringTest, StringIsEmpty) {
    EXPECT_EQ(NSString::string().length(), 0u);
    EXPECT_TRUE(NSString::string().isEqual(""_ns));
}

TEST_F(NSStringTest, StringWithStringIsEqual) {
    EXPECT_EQ(text(NSString::stringWithString("abc"_ns)), "abc");
}

TEST_F(NSStringTest, StringWithStringOfMutableStringDoesNotFollowIt) {
    const Retained<NSMutableString> original = adopt<NSMutableString>("abc"_ns.mutableCopy());
    const NSString string = NSString::stringWithString(original);
    original.appendString("d"_ns);
    EXPECT_EQ(text(string), "abc");
}

TEST_F(NSStringTest, StringWithNilStringRaises) {
    EXPECT_THROWS_NAMED(NSString::stringWithString(nil), "NSInvalidArgumentException");
}

TEST_F(NSStringTest, StringWithCharactersTakesUnits) {
    const unichar characters[] = {u'x', 0x20AC, 0xD83D, 0xDE00};
    EXPECT_EQ(text(NSString::stringWithCharacters_length(characters, 4)), "x\u20ac\U0001F600");
}

TEST_F(NSStringTest, StringWithUtf8String) {
    EXPECT_EQ(units(NSString::stringWithUTF8String("\u00e9")), u"\u00e9");
    EXPECT_FALSE(NSString::stringWithUTF8String("\xFF"));
}

TEST_F(NSStringTest, InitWithBytesRefusesWhatTheEncodingCannotHold) {
    EXPECT_FALSE(adopt(NSString::alloc().initWithBytes_length_encoding("\xE9", 1, NSASCIIStringEncoding)));
    EXPECT_FALSE(adopt(NSString::alloc().initWithBytes_length_encoding("\xE9", 1, NSUTF8StringEncoding)));
}

TEST_F(NSStringTest, InitWithBytesReadsLatin1) {
    constexpr NSStringEncoding latin1 = 5;
    const auto string = adopt(NSString::alloc().initWithBytes_length_encoding("\xE9z", 2, latin1));
    EXPECT_EQ(units(string), u"\u00e9z");
}

TEST_F(NSStringTest, InitWithDataReadsUtf8) {
    const NSData data = NSData::dataWithBytes_length("a\u20ac", 4);
    EXPECT_EQ(text(adopt(NSString::alloc().initWithData_encoding(data, NSUTF8StringEncoding))), "a\u20ac");
}

// ---- Units

TEST_F(NSStringTest, CharacterAtIndexGivesUnits) {
    EXPECT_EQ(u"\u00e9"_ns.characterAtIndex(0), u'\u00e9');
    EXPECT_EQ(u"\U0001F600"_ns.characterAtIndex(1), 0xDE00);
}

TEST_F(NSStringTest, CharacterBeyondTheEndRaises) {
    EXPECT_NE(thrownName([] { "a"_ns.characterAtIndex(1); }), "(nothing)");
}

TEST_F(NSStringTest, GetCharactersCopiesARange) {
    unichar buffer[2] = {};
    "abcd"_ns.getCharacters_range(buffer, {1, 2});
    EXPECT_EQ(buffer[0], u'b');
    EXPECT_EQ(buffer[1], u'c');
    EXPECT_THROWS_NAMED("abcd"_ns.getCharacters_range(buffer, {3, 2}), "NSRangeException");
}

TEST_F(NSStringTest, Utf8StringEndsInZero) {
    EXPECT_STREQ("plain"_ns.UTF8String(), "plain");
    EXPECT_STREQ(u"\u00e9\u20ac"_ns.UTF8String(), "\u00e9\u20ac");
}

TEST_F(NSStringTest, DataUsingEncodingHoldsTheBytes) {
    const NSData data = u"\u00e9"_ns.dataUsingEncoding(NSUTF8StringEncoding);
    EXPECT_EQ(std::string(static_cast<const char*>(data.bytes()), data.length()), "\u00e9");
    EXPECT_EQ("abc"_ns.dataUsingEncoding(NSASCIIStringEncoding).length(), 3u);
}

TEST_F(NSStringTest, DataUsingEncodingIsNilWhereTheTextDoesNotFit) {
    EXPECT_FALSE(u"\u00e9"_ns.dataUsingEncoding(NSASCIIStringEncoding));
}

TEST_F(NSStringTest, DescribesItself) { EXPECT_EQ(text("abc"_ns.description()), "abc"); }

// ---- Equality

TEST_F(NSStringTest, EqualTextIsEqualWhateverTheClass) {
    const Retained<NSMutableString> other = adopt<NSMutableString>("abc"_ns.mutableCopy());
    EXPECT_TRUE("abc"_ns.isEqual(other));
    EXPECT_TRUE("abc"_ns.isEqualToString(other));
    EXPECT_EQ("abc"_ns.hash(), other.hash());
}

TEST_F(NSStringTest, EqualTextIsEqualWhateverItHeldBefore) {
    const NSMutableString narrowed = NSMutableString::stringWithString(u"abc\u20ac"_ns);
    narrowed.deleteCharactersInRange({3, 1});
    EXPECT_TRUE("abc"_ns.isEqual(narrowed));
    EXPECT_TRUE(narrowed.isEqual("abc"_ns));
    EXPECT_EQ("abc"_ns.hash(), narrowed.hash());
}

TEST_F(NSStringTest, EqualLongTextHasEqualHashes) {
    for (const std::size_t length : {7u, 8u, 9u, 12u, 100u, 1001u}) {
        const std::string same(length, 'x');
        const NSMutableString wide = NSMutableString::stringWithString(u"\u20ac"_ns);
        wide.appendString(NSString(same));
        wide.deleteCharactersInRange({0, 1});
        EXPECT_EQ(NSString(same).hash(), wide.hash()) << length;
    }
}

TEST_F(NSStringTest, OtherTextOrClassIsNotEqual) {
    EXPECT_FALSE("abc"_ns.isEqual("abd"_ns));
    EXPECT_FALSE("abc"_ns.isEqual("ab"_ns));
    EXPECT_FALSE("abc"_ns.isEqual(nil));
    EXPECT_FALSE("abc"_ns.isEqual("NSString"_class));
    EXPECT_FALSE("abc"_ns.isEqualToString(nil));
}

TEST_F(NSStringTest, EqualityIsByUnitsNotCanonical) {
    EXPECT_FALSE(u"\u00e9"_ns.isEqualToString(u"e\u0301"_ns));
}

// ---- Parts

TEST_F(NSStringTest, SubstringFromIndex) {
    EXPECT_EQ(text("abcdef"_ns.substringFromIndex(4)), "ef");
    EXPECT_EQ(text("abcdef"_ns.substringFromIndex(6)), "");
    EXPECT_THROWS_NAMED("abcdef"_ns.substringFromIndex(7), "NSRangeException");
}

TEST_F(NSStringTest, SubstringToIndex) {
    EXPECT_EQ(text("abcdef"_ns.substringToIndex(2)), "ab");
    EXPECT_EQ(text("abcdef"_ns.substringToIndex(0)), "");
    EXPECT_THROWS_NAMED("abcdef"_ns.substringToIndex(7), "NSRangeException");
}

TEST_F(NSStringTest, SubstringWithRange) {
    EXPECT_EQ(text(u"ab\u20accd"_ns.substringWithRange({2, 2})), "\u20acc");
    EXPECT_THROWS_NAMED("abc"_ns.substringWithRange({1, 3}), "NSRangeException");
    EXPECT_THROWS_NAMED("abc"_ns.substringWithRange({1, static_cast<NSUInteger>(-1)}), "NSRangeException");
}

TEST_F(NSStringTest, SubstringExceptionNamesIndexAndLength) {
    const NSString reason = attempt([] { return "hello world"_ns.substringFromIndex(100); },
                                    [](NSException exception) { return exception.reason(); });
    EXPECT_NE(text(reason).find("substringFromIndex:]: Index 100 out of bounds; string length 11"),
              std::string::npos)
        << text(reason);
}

TEST_F(NSStringTest, AppendingGivesANewString) {
    EXPECT_EQ(text("ab"_ns.stringByAppendingString("cd"_ns)), "abcd");
    EXPECT_EQ(text("ab"_ns.stringByAppendingString(u"\u20ac"_ns)), "ab\u20ac");
}

TEST_F(NSStringTest, AppendingNilRaises) {
    EXPECT_THROWS_NAMED("ab"_ns.stringByAppendingString(nil), "NSInvalidArgumentException");
}

TEST_F(NSStringTest, SplitsAtEachSeparator) {
    EXPECT_EQ(texts(";"_ns.componentsSeparatedByString(";"_ns)), (Texts{"", ""}));
    EXPECT_EQ(texts(";;"_ns.componentsSeparatedByString(";"_ns)), (Texts{"", "", ""}));
    EXPECT_EQ(texts("a;"_ns.componentsSeparatedByString(";"_ns)), (Texts{"a", ""}));
    EXPECT_EQ(texts("a, b, c"_ns.componentsSeparatedByString(", "_ns)), (Texts{"a", "b", "c"}));
    EXPECT_EQ(texts(u"a\u20acb"_ns.componentsSeparatedByString(u"\u20ac"_ns)), (Texts{"a", "b"}));
}

TEST_F(NSStringTest, SplitWithoutSeparatorIsTheWholeString) {
    EXPECT_EQ(texts(""_ns.componentsSeparatedByString(";"_ns)), (Texts{""}));
    EXPECT_EQ(texts("abc"_ns.componentsSeparatedByString(""_ns)), (Texts{"abc"}));
    EXPECT_EQ(texts("abc"_ns.componentsSeparatedByString(u"\u20ac"_ns)), (Texts{"abc"}));
}

TEST_F(NSStringTest, SeparatorsDoNotOverlap) {
    EXPECT_EQ(texts("aaa"_ns.componentsSeparatedByString("aa"_ns)), (Texts{"", "a"}));
}

TEST_F(NSStringTest, SplitsLiterallyBeforeACombiningMark) {
    const NSArray parts = u"a;\u0301b"_ns.componentsSeparatedByString(";"_ns);
    ASSERT_EQ(parts.count(), 2u);
    EXPECT_EQ(units(parts.objectAtIndex(1)), u"\u0301b");
}

TEST_F(NSStringTest, SplitAtNilRaises) {
    EXPECT_THROWS_NAMED("abc"_ns.componentsSeparatedByString(nil), "NSInvalidArgumentException");
}

TEST_F(NSStringTest, SplitsAtEachCharacterOfASet) {
    const auto split = [](NSString string, NSString separators) {
        return texts(string.componentsSeparatedByCharactersInSet(
            NSCharacterSet::characterSetWithCharactersInString(separators)));
    };
    EXPECT_EQ(split("a/b:c"_ns, "/:"_ns), (Texts{"a", "b", "c"}));
    EXPECT_EQ(split("/a:"_ns, "/:"_ns), (Texts{"", "a", ""}));
    EXPECT_EQ(split("//"_ns, "/"_ns), (Texts{"", "", ""}));
    EXPECT_EQ(split("abc"_ns, "/"_ns), (Texts{"abc"}));
    EXPECT_EQ(split(""_ns, "/"_ns), (Texts{""}));
    EXPECT_EQ(split("abc"_ns, ""_ns), (Texts{"abc"}));
    EXPECT_EQ(split(u"a\u20acb/\u3042"_ns, u"\u20ac/"_ns), (Texts{"a", "b", "\u3042"}));
    EXPECT_EQ(split(u"a/\u0301b"_ns, "/"_ns), (Texts{"a", "\u0301b"}));
}

TEST_F(NSStringTest, SplittingTakesASurrogatePairForOneCharacter) {
    const NSCharacterSet smileys = NSCharacterSet::characterSetWithCharactersInString(u"\U0001F600"_ns);
    const NSString string = u"a\U0001F600b\U0001F601c"_ns;
    EXPECT_EQ(texts(string.componentsSeparatedByCharactersInSet(smileys)), (Texts{"a", "b\U0001F601c"}));
}

TEST_F(NSStringTest, SplittingAtANilSetRaises) {
    EXPECT_THROWS_NAMED("abc"_ns.componentsSeparatedByCharactersInSet(nil), "NSInvalidArgumentException");
}

TEST_F(NSStringTest, TrimsBothEnds) {
    const NSCharacterSet spaces = NSCharacterSet::whitespaceCharacterSet();
    EXPECT_EQ(text(" \t a b \t"_ns.stringByTrimmingCharactersInSet(spaces)), "a b");
    EXPECT_EQ(text(" \t "_ns.stringByTrimmingCharactersInSet(spaces)), "");
    EXPECT_EQ(text("\na\n"_ns.stringByTrimmingCharactersInSet(spaces)), "\na\n");
}

TEST_F(NSStringTest, TrimsUnitByUnit) {
    const NSString smiley = u"\U0001F600"_ns;
    const NSCharacterSet smileys = NSCharacterSet::characterSetWithCharactersInString(smiley);
    EXPECT_EQ(text(smiley.stringByTrimmingCharactersInSet(smileys)), "\U0001F600");
    const NSCharacterSet others = NSCharacterSet::alphanumericCharacterSet().invertedSet();
    EXPECT_EQ(text(u"\U0001F600a"_ns.stringByTrimmingCharactersInSet(others)), "a");
}

TEST_F(NSStringTest, LetterCaseFollowsUnicode) {
    EXPECT_EQ(text(u"ABC \u00c9\u0130"_ns.lowercaseString()), "abc \u00e9i\u0307");
    EXPECT_EQ(text(u"abc stra\u00dfe \u00ff"_ns.uppercaseString()), "ABC STRASSE \u0178");
    EXPECT_EQ(text(u"\u039f\u03a3"_ns.lowercaseString()), "\u03bf\u03c2");
}

// ---- Copies and derived classes

TEST_F(NSStringTest, CopyOfAnImmutableStringIsItself) {
    const NSString string(std::string("copied"));
    EXPECT_EQ(NSObject(adopt(string.copy())), NSObject(string));
}

TEST_F(NSStringTest, MutableCopyCanBeEdited) {
    const Retained<NSMutableString> copy = adopt<NSMutableString>("ab"_ns.mutableCopy());
    copy.appendString("c"_ns);
    EXPECT_EQ(text(copy), "abc");
}

TEST_F(NSStringTest, DerivedClassNeedsOnlyThePrimitives) {
    const NSString string = countedString(5, 3);
    EXPECT_EQ(text(string), "abcab");
    EXPECT_TRUE("abcab"_ns.isEqual(string));
    EXPECT_TRUE(string.isEqual("abcab"_ns));
    EXPECT_EQ(string.hash(), "abcab"_ns.hash());
    EXPECT_STREQ(string.UTF8String(), "abcab");
}

TEST_F(NSStringTest, DerivedClassIsSearchedThroughThePrimitives) {
    const NSString string = countedString(5, 3);
    EXPECT_EQ(text(string.substringFromIndex(2)), "cab");
    EXPECT_EQ(string.rangeOfString("ca"_ns), (NSRange{2, 2}));
    EXPECT_TRUE(string.hasPrefix("ab"_ns));
    EXPECT_EQ(texts(string.componentsSeparatedByString("c"_ns)), (Texts{"ab", "ab"}));
    EXPECT_EQ(string.compare_options("ABCAB"_ns, NSCaseInsensitiveSearch), NSOrderedSame);
    EXPECT_EQ(text(string.uppercaseString()), "ABCAB");
}

TEST_F(NSStringTest, DerivedClassIsAnArgumentThroughThePrimitives) {
    EXPECT_EQ(text("x"_ns.stringByAppendingString(countedString(2, 2))), "xab");
    EXPECT_EQ(text(NSMutableString::stringWithString(countedString(3, 3))), "abc");
}

} // namespace
} // namespace tessarin::testing
