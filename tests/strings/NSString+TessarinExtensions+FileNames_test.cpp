#include "StringSubclass.h"

#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include <functional>
#include <thread>

namespace tessarin::testing {
namespace {

const std::u16string_view illegal = u"\"*./:<>?\\|";
const std::u16string_view reserved = u" \"#$%&+,/:;<=>?@[\\]^`{|}";
constexpr NSStringEncoding unknownEncoding = 99;

std::string withoutIllegal(NSString name) {
    return text(tessarin_fileNameByReplacingIllegalCharacters(name));
}
std::string escaped(NSString name, NSStringEncoding encoding = NSUTF8StringEncoding) {
    return text(tessarin_fileNameByAddingPercentEscapesUsingEncoding(name, encoding));
}
std::string unescaped(NSString name, NSStringEncoding encoding = NSUTF8StringEncoding) {
    return text(tessarin_fileNameByReplacingPercentEscapesUsingEncoding(name, encoding));
}

// A string class with rules of its own: x and y are illegal, z is reserved, and "__" stands for what is not
// allowed.
class RuledString {
public:
    static NSString make(NSString content) { return StringSubclass::make(classObject(), content); }
    static Class classObject() {
        // The class that it is derived from comes first.
        static const Class superclass = StringSubclass::classObject();
        static const ClassDefinition definition{
            {.name = "TessarinRuledString",
             .superclass = superclass ? "TessarinTestString" : "",
             .methods = {classMethod("tessarin_fileNameIllegalCharacters", illegalCharacters),
                         classMethod("tessarin_fileNameReservedCharacters", reservedCharacters),
                         classMethod("tessarin_escapingFileNameCharacter", escapingCharacter)}}};
        return definition.classObject();
    }

private:
    static NSCharacterSet illegalCharacters(Class, SEL) {
        return NSCharacterSet::characterSetWithCharactersInString("xy"_ns);
    }
    static NSCharacterSet reservedCharacters(Class, SEL) {
        return NSCharacterSet::characterSetWithCharactersInString("z"_ns);
    }
    static NSString escapingCharacter(Class, SEL) { return "__"_ns; }
};

// A string class whose instances say themselves what they contain.
class SayingString {
public:
    static NSString make(NSString content) { return StringSubclass::make(classObject(), content); }
    static Class classObject() {
        static const Class superclass = StringSubclass::classObject();
        static const ClassDefinition definition{
            {.name = "TessarinSayingString",
             .superclass = superclass ? "TessarinTestString" : "",
             .methods = {instanceMethod("tesarin_containsFileNameIllegalCharacters", containsNone),
                         instanceMethod("tessarin_containsFileNameReservedCharacters", containsSome)}}};
        return definition.classObject();
    }

private:
    static BOOL containsNone(NSString, SEL) { return NO; }
    static BOOL containsSome(NSString, SEL) { return YES; }
};

// ---- The rules

class FileNameRulesTest : public PlatformTest {
protected:
    static void expectMembers(NSCharacterSet set, std::u16string_view members) {
        for (unsigned unit = 0; unit < 0x10000; ++unit)
            EXPECT_EQ(set.characterIsMember(static_cast<unichar>(unit)),
                      members.find(static_cast<unichar>(unit)) != std::u16string_view::npos)
                << std::hex << unit;
    }
};

TEST_F(FileNameRulesTest, TenCharactersAreIllegalAndTheFullStopIsOne) {
    EXPECT_EQ(illegal.size(), 10u);
    expectMembers(tessarin_fileNameIllegalCharacters(), illegal);
    EXPECT_TRUE(tessarin_fileNameIllegalCharacters().characterIsMember('.'));
}

TEST_F(FileNameRulesTest, TwentyFourCharactersAreReservedAndTheFullStopIsNone) {
    EXPECT_EQ(reserved.size(), 24u);
    expectMembers(tessarin_fileNameReservedCharacters(), reserved);
    EXPECT_FALSE(tessarin_fileNameReservedCharacters().characterIsMember('.'));
}

TEST_F(FileNameRulesTest, AHyphenStandsForIllegalCharacters) {
    EXPECT_EQ(text(tessarin_escapingFileNameCharacter()), "-");
}

TEST_F(FileNameRulesTest, EachIsMadeOnce) {
    EXPECT_EQ(tessarin_fileNameIllegalCharacters(), tessarin_fileNameIllegalCharacters());
    EXPECT_EQ(tessarin_fileNameReservedCharacters(), tessarin_fileNameReservedCharacters());
    EXPECT_EQ(tessarin_escapingFileNameCharacter(), tessarin_escapingFileNameCharacter());
    EXPECT_NE(tessarin_fileNameIllegalCharacters(), tessarin_fileNameReservedCharacters());
}

TEST_F(FileNameRulesTest, TheyOutliveThePoolThatTheyWereMadeIn) {
    NSCharacterSet illegalSet, reservedSet;
    NSString hyphen;
    {
        const AutoreleasePool pool;
        illegalSet = tessarin_fileNameIllegalCharacters();
        reservedSet = tessarin_fileNameReservedCharacters();
        hyphen = tessarin_escapingFileNameCharacter();
    }
    EXPECT_TRUE(illegalSet.characterIsMember('/'));
    EXPECT_TRUE(reservedSet.characterIsMember(' '));
    EXPECT_EQ(text(hyphen), "-");
}

TEST_F(FileNameRulesTest, TheCallerDoesNotOwnThem) {
    EXPECT_EQ(referencesLeftBy([] { return tessarin_fileNameIllegalCharacters(); },
                               tessarin_fileNameIllegalCharacters()),
              0);
    EXPECT_EQ(referencesLeftBy([] { return tessarin_fileNameReservedCharacters(); },
                               tessarin_fileNameReservedCharacters()),
              0);
}

TEST_F(FileNameRulesTest, EveryStringClassAnswersThem) {
    const Class mutableStrings = NSMutableString::classObject();
    EXPECT_EQ(tessarin_fileNameIllegalCharacters(mutableStrings), tessarin_fileNameIllegalCharacters());
    EXPECT_EQ(tessarin_fileNameReservedCharacters(mutableStrings), tessarin_fileNameReservedCharacters());
    EXPECT_EQ(tessarin_escapingFileNameCharacter(mutableStrings), tessarin_escapingFileNameCharacter());
}

TEST_F(FileNameRulesTest, ADerivedClassMayHaveItsOwn) {
    expectMembers(tessarin_fileNameIllegalCharacters(RuledString::classObject()), u"xy");
    expectMembers(tessarin_fileNameReservedCharacters(RuledString::classObject()), u"z");
    EXPECT_EQ(text(tessarin_escapingFileNameCharacter(RuledString::classObject())), "__");
}

TEST_F(FileNameRulesTest, TheOneNameIsOneLetterShort) {
    EXPECT_TRUE(""_ns.respondsToSelector("tesarin_containsFileNameIllegalCharacters"_sel));
    EXPECT_FALSE(""_ns.respondsToSelector("tessarin_containsFileNameIllegalCharacters"_sel));
}

// ---- What a name contains

class FileNameContentsTest : public PlatformTest {};

TEST_F(FileNameContentsTest, EachIllegalCharacterIsFoundWhereverItStands) {
    for (unichar unit = 0; unit < 0x100; ++unit) {
        const bool isIllegal = illegal.find(unit) != std::u16string_view::npos;
        for (const std::u16string& name :
             {std::u16string{unit}, u"a" + std::u16string{unit}, std::u16string{unit} + u"a",
              u"\u3042" + std::u16string{unit} + u"b"})
            EXPECT_EQ(tesarin_containsFileNameIllegalCharacters(NSString(name)), isIllegal) << unsigned{unit};
    }
}

TEST_F(FileNameContentsTest, EachReservedCharacterIsFoundWhereverItStands) {
    for (unichar unit = 0; unit < 0x100; ++unit) {
        const bool isReserved = reserved.find(unit) != std::u16string_view::npos;
        for (const std::u16string& name :
             {std::u16string{unit}, u"a" + std::u16string{unit}, std::u16string{unit} + u"a",
              u"\u3042" + std::u16string{unit} + u"b"})
            EXPECT_EQ(tessarin_containsFileNameReservedCharacters(NSString(name)), isReserved)
                << unsigned{unit};
    }
}

TEST_F(FileNameContentsTest, TheEmptyStringContainsNeither) {
    EXPECT_FALSE(tesarin_containsFileNameIllegalCharacters(""_ns));
    EXPECT_FALSE(tessarin_containsFileNameReservedCharacters(""_ns));
}

TEST_F(FileNameContentsTest, NilContainsNeither) {
    EXPECT_FALSE(tesarin_containsFileNameIllegalCharacters(nil));
    EXPECT_FALSE(tessarin_containsFileNameReservedCharacters(nil));
}

TEST_F(FileNameContentsTest, APercentSignIsReservedAndNotIllegal) {
    EXPECT_TRUE(tessarin_containsFileNameReservedCharacters("100%"_ns));
    EXPECT_FALSE(tesarin_containsFileNameIllegalCharacters("100%"_ns));
}

TEST_F(FileNameContentsTest, TheReceiversClassIsAsked) {
    EXPECT_TRUE(tesarin_containsFileNameIllegalCharacters(RuledString::make("ax"_ns)));
    EXPECT_FALSE(tesarin_containsFileNameIllegalCharacters(RuledString::make("a/b"_ns)));
    EXPECT_TRUE(tessarin_containsFileNameReservedCharacters(RuledString::make("az"_ns)));
    EXPECT_FALSE(tessarin_containsFileNameReservedCharacters(RuledString::make("a b"_ns)));
}

// ---- Replacing illegal characters

class IllegalCharactersTest : public PlatformTest {};

TEST_F(IllegalCharactersTest, EachIsReplacedByOneHyphen) {
    EXPECT_EQ(withoutIllegal("a/b:c.wav"_ns), "a-b-c-wav");
    EXPECT_EQ(withoutIllegal("a/b"_ns), "a-b");
    EXPECT_EQ(withoutIllegal("."_ns), "-");
    EXPECT_EQ(withoutIllegal(NSString(illegal)), "----------");
}

TEST_F(IllegalCharactersTest, TwoInARowGiveTwo) { EXPECT_EQ(withoutIllegal("a//b"_ns), "a--b"); }

TEST_F(IllegalCharactersTest, AtTheStartAndTheEndToo) { EXPECT_EQ(withoutIllegal("/a."_ns), "-a-"); }

TEST_F(IllegalCharactersTest, OtherCharactersStay) {
    EXPECT_EQ(withoutIllegal(u"caf\u00e9 \u3042\U0001F600 #100%.wav"_ns), "café あ😀 #100%-wav");
}

TEST_F(IllegalCharactersTest, ANameWithoutAnyComesBackItself) {
    for (const NSString name : {""_ns, "a-b"_ns, "a b"_ns, u"caf\u00e9"_ns, "100%"_ns})
        EXPECT_EQ(tessarin_fileNameByReplacingIllegalCharacters(name), name) << text(name);
    const NSMutableString changeable = NSMutableString::stringWithString("a-b"_ns);
    EXPECT_EQ(tessarin_fileNameByReplacingIllegalCharacters(changeable), changeable);
}

TEST_F(IllegalCharactersTest, ANameWithoutAnyCostsNoReference) {
    const Retained<NSString> name = retain(NSString(std::string("a name without any")));
    EXPECT_EQ(referencesLeftBy([&] { return tessarin_fileNameByReplacingIllegalCharacters(name); }, name), 0);
}

TEST_F(IllegalCharactersTest, NilAnswersNil) { EXPECT_EQ(withoutIllegal(nil), "(nil)"); }

TEST_F(IllegalCharactersTest, TheReceiversClassIsAskedForCharactersAndReplacement) {
    EXPECT_EQ(withoutIllegal(RuledString::make("axb/yc"_ns)), "a__b/__c");
    const NSString legal = RuledString::make("a/b"_ns);
    EXPECT_EQ(tessarin_fileNameByReplacingIllegalCharacters(legal), legal);
}

TEST_F(IllegalCharactersTest, TheReceiverIsAskedWhetherItContainsAny) {
    const NSString name = SayingString::make("a/b"_ns);
    EXPECT_EQ(tessarin_fileNameByReplacingIllegalCharacters(name), name);
}

TEST_F(IllegalCharactersTest, TheResultIsAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew(
                  [] { return tessarin_fileNameByReplacingIllegalCharacters("a name/of this test"_ns); }),
              0);
}

TEST_F(IllegalCharactersTest, LongNames) {
    std::string name, expected;
    for (int index = 0; index < 100'000; ++index) {
        name += "/a";
        expected += "-a";
    }
    EXPECT_EQ(withoutIllegal(NSString(name)), expected);
}

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

// ---- On many threads

class ConcurrentFileNamesTest : public PlatformTest {};

// Run by itself this is also the first use of every rule.
TEST_F(ConcurrentFileNamesTest, EveryThreadFindsTheSameRulesAndResults) {
    constexpr int threadCount = 8, rounds = 200;
    const Retained<NSString> name = retain(NSString(std::string("a/b caf\u00e9.wav")));
    struct Found {
        NSCharacterSet illegal, reserved;
        NSString hyphen;
        std::string mistakes;
    };
    std::vector<Found> found(threadCount);
    std::vector<std::thread> threads;
    for (Found& each : found)
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                const AutoreleasePool pool;
                each.illegal = tessarin_fileNameIllegalCharacters();
                each.reserved = tessarin_fileNameReservedCharacters();
                each.hyphen = tessarin_escapingFileNameCharacter();
                if (withoutIllegal(name) != "a-b café-wav") each.mistakes += "replacing ";
                const std::string added = escaped(name);
                if (added != "a%2Fb%20caf%C3%A9.wav") each.mistakes += "adding ";
                if (unescaped(NSString(added)) != text(name)) each.mistakes += "removing ";
            }
        });
    for (std::thread& thread : threads) thread.join();
    for (const Found& each : found) {
        EXPECT_EQ(each.illegal, found[0].illegal);
        EXPECT_EQ(each.reserved, found[0].reserved);
        EXPECT_EQ(each.hyphen, found[0].hyphen);
        EXPECT_EQ(each.mistakes, "");
    }
}

} // namespace
} // namespace tessarin::testing
