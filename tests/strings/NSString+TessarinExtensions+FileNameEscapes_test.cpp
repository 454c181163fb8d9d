// The percent escapes of file names.
#include "FileNameOperations.h"

namespace tessarin::testing {
namespace {

const std::u16string_view reserved = u" \"#$%&+,/:;<=>?@[\\]^`{|}";
constexpr NSStringEncoding unknownEncoding = 99;

// ---- Adding percent escapes

class AddingEscapesTest : public PlatformTest {};

TEST_F(AddingEscapesTest, ReservedCharactersAreEscaped) {
    EXPECT_EQ(escaped("a b"_ns), "a%20b");
    EXPECT_EQ(escaped(NSString(reserved)),
              "%20%22%23%24%25%26%2B%2C%2F%3A%3B%3C%3D%3E%3F%40%5B%5C%5D%5E%60%7B%7C%7D");
}

TEST_F(AddingEscapesTest, TheseAloneOfASCIIStayAsTheyAre) {
    std::string all, expected;
    for (char character = 0x20; character < 0x7F; ++character) {
        all += character;
        if (std::string_view("!'()*-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz~")
                .find(character)
            != std::string_view::npos) {
            expected += character;
        } else {
            char escape[4];
            std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned>(character) & 0xFF);
            expected += escape;
        }
    }
    EXPECT_EQ(escaped(NSString(all)), expected);
}

TEST_F(AddingEscapesTest, ANameWithoutReservedCharactersComesBackItself) {
    for (const NSString name : {""_ns, "a_b-c.wav"_ns, u"caf\u00e9.wav"_ns, u"\u0001\u007f"_ns, u"\xD83D"_ns})
        for (const NSStringEncoding encoding :
             {NSUTF8StringEncoding, NSASCIIStringEncoding, NSStringEncoding{0}, unknownEncoding})
            EXPECT_EQ(tessarin_fileNameByAddingPercentEscapesUsingEncoding(name, encoding), name)
                << text(name) << " " << encoding;
}

TEST_F(AddingEscapesTest, WithAReservedCharacterTheOthersAreEscapedToo) {
    EXPECT_EQ(escaped(u"caf\u00e9 x"_ns), "caf%C3%A9%20x");
    EXPECT_EQ(escaped(u"caf\u00e9 x"_ns, NSMacOSRomanStringEncoding), "caf%8E%20x");
    EXPECT_EQ(escaped(u"\u0001\u007f x"_ns), "%01%7F%20x");
    EXPECT_EQ(escaped(u"\U0001F600 x"_ns), "%F0%9F%98%80%20x");
}

TEST_F(AddingEscapesTest, APercentSignIsEscapedItself) {
    EXPECT_EQ(escaped("100%"_ns), "100%25");
    EXPECT_EQ(escaped("a%20b"_ns), "a%2520b");
}

TEST_F(AddingEscapesTest, NilForAnEncodingThatIsNone) {
    for (const NSStringEncoding encoding :
         {NSStringEncoding{0}, unknownEncoding, NSStringEncoding{0x7FFFFFFF}})
        EXPECT_EQ(escaped("a b"_ns, encoding), "(nil)") << encoding;
}

TEST_F(AddingEscapesTest, NilForAnEncodingThatThePlatformDoesNotHave) {
    for (const NSStringEncoding encoding : {NSSymbolStringEncoding, NSNonLossyASCIIStringEncoding,
                                            NSStringEncoding{0x80007777}, static_cast<NSStringEncoding>(-1)})
        EXPECT_EQ(escaped("a b"_ns, encoding), "(nil)") << encoding;
}

TEST_F(AddingEscapesTest, NilForACharacterThatTheEncodingLacks) {
    EXPECT_EQ(escaped(u"caf\u00e9 x"_ns, NSASCIIStringEncoding), "(nil)");
    EXPECT_EQ(escaped(u"\u20ac x"_ns, NSISOLatin1StringEncoding), "(nil)");
    EXPECT_EQ(escaped(u"\xD83D x"_ns), "(nil)");
}

TEST_F(AddingEscapesTest, NothingIsLogged) {
    const CapturedStandardError captured;
    EXPECT_EQ(escaped("a b"_ns, unknownEncoding), "(nil)");
    EXPECT_EQ(unescaped("100%"_ns), "(nil)");
    EXPECT_EQ(unescaped("a"_ns, unknownEncoding), "(nil)");
    EXPECT_TRUE(captured.lines().empty());
}

TEST_F(AddingEscapesTest, NilAnswersNil) { EXPECT_EQ(escaped(nil), "(nil)"); }

TEST_F(AddingEscapesTest, TheReceiversClassDecidesWhetherButNotWhat) {
    EXPECT_EQ(escaped(RuledString::make("a bz"_ns)), "a%20bz");
    EXPECT_EQ(escaped(RuledString::make("a+bz"_ns)), "a%2Bbz"); // a URL could hold it
    const NSString unreserved = RuledString::make("a b"_ns);
    EXPECT_EQ(tessarin_fileNameByAddingPercentEscapesUsingEncoding(unreserved, NSUTF8StringEncoding),
              unreserved);
}

TEST_F(AddingEscapesTest, TheReceiverIsAskedWhetherItContainsAny) {
    EXPECT_EQ(escaped(SayingString::make("a*b"_ns)), "a*b");
    EXPECT_EQ(escaped(SayingString::make("a*b"_ns), unknownEncoding), "(nil)");
}

TEST_F(AddingEscapesTest, TheResultIsAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew([] {
                  return tessarin_fileNameByAddingPercentEscapesUsingEncoding("a name of this test"_ns,
                                                                              NSUTF8StringEncoding);
              }),
              0);
}

// ---- Replacing percent escapes

class RemovingEscapesTest : public PlatformTest {};

TEST_F(RemovingEscapesTest, EveryEscapeIsDecoded) {
    EXPECT_EQ(unescaped("a%20b"_ns), "a b");
    EXPECT_EQ(unescaped("%2F%2f%25%C3%A9"_ns), "//%é");
    EXPECT_EQ(unescaped("caf%8E"_ns, NSMacOSRomanStringEncoding), "café");
}

TEST_F(RemovingEscapesTest, AnEncodingWithoutConversionCountsForEscapesAlone) {
    constexpr NSStringEncoding withoutConversion = 0x80007777;
    EXPECT_EQ(unescaped("abc"_ns, withoutConversion), "abc");
    EXPECT_EQ(unescaped("%41"_ns, withoutConversion), "(nil)");
}

TEST_F(RemovingEscapesTest, ANameWithoutEscapesGivesAnEqualOne) {
    for (const NSString name : {""_ns, "a+b.wav"_ns, u"caf\u00e9 \U0001F600"_ns})
        EXPECT_TRUE(tessarin_fileNameByReplacingPercentEscapesUsingEncoding(name, NSUTF8StringEncoding)
                        .isEqualToString(name))
            << text(name);
}

TEST_F(RemovingEscapesTest, NilForAnEncodingThatIsNoneWithOrWithoutEscapes) {
    for (const NSString name : {""_ns, "abc"_ns, "a%20b"_ns})
        for (const NSStringEncoding encoding : {NSStringEncoding{0}, unknownEncoding})
            EXPECT_EQ(unescaped(name, encoding), "(nil)") << text(name) << " " << encoding;
}

TEST_F(RemovingEscapesTest, NilForEscapesThatAreNoText) {
    for (const NSString name : {"%"_ns, "100%"_ns, "50% off"_ns, "%4"_ns, "%zz"_ns, "%C3"_ns, "%FF%FE"_ns})
        EXPECT_EQ(unescaped(name), "(nil)") << text(name);
    EXPECT_EQ(unescaped("%81"_ns, NSWindowsCP1252StringEncoding), "(nil)");
}

TEST_F(RemovingEscapesTest, NilAnswersNil) { EXPECT_EQ(unescaped(nil), "(nil)"); }

TEST_F(RemovingEscapesTest, WhatWasAddedIsRemoved) {
    const std::pair<NSString, NSStringEncoding> names[] = {
        {u"caf\u00e9 100%/\u3042\U0001F600"_ns, NSUTF8StringEncoding},
        {u"caf\u00e9 100%/\u20ac"_ns, NSMacOSRomanStringEncoding},
        {u"\u3042\u3044 100%/\uff71"_ns, NSShiftJISStringEncoding},
        {u"\u3042\u3044 100%/\uff71"_ns, NSJapaneseEUCStringEncoding},
        {u"\u3042\u3044 100%/"_ns, NSISO2022JPStringEncoding},
        {u"caf\u00e9 100%/\u3042"_ns, 0x90000100},
    };
    for (const auto& [name, encoding] : names) {
        const NSString added = tessarin_fileNameByAddingPercentEscapesUsingEncoding(name, encoding);
        EXPECT_EQ(unescaped(added, encoding), text(name)) << encoding;
    }
}

TEST_F(RemovingEscapesTest, WorksOnStringsOfAnApplicationsOwn) {
    EXPECT_EQ(unescaped(StringSubclass::make(StringSubclass::classObject(), "a%20b"_ns)), "a b");
    EXPECT_EQ(unescaped(StringSubclass::make(StringSubclass::classObject(), "ab"_ns)), "ab");
}

TEST_F(RemovingEscapesTest, TheResultIsAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew([] {
                  return tessarin_fileNameByReplacingPercentEscapesUsingEncoding(
                      "a%20name%20of%20this%20test"_ns, NSUTF8StringEncoding);
              }),
              0);
}

TEST_F(RemovingEscapesTest, LongNames) {
    std::string name;
    for (int index = 0; index < 100'000; ++index) name += "é /x";
    const NSString added =
        tessarin_fileNameByAddingPercentEscapesUsingEncoding(NSString(name), NSUTF8StringEncoding);
    EXPECT_EQ(added.length(), 100'000u * 13);
    EXPECT_EQ(unescaped(added), name);
}

} // namespace
} // namespace tessarin::testing
