// The characters of file names: the rules, what a name contains, and replacing what is illegal.
#include "FileNameOperations.h"
#include "ManyThreads.h"

#include <array>
#include <cstdlib>
#include <iostream>

namespace tessarin::testing {
namespace {

const std::u16string_view illegal = u"\"*./:<>?\\|";
const std::u16string_view reserved = u" \"#$%&+,/:;<=>?@[\\]^`{|}";

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

class RuledHandle : public Handle<RuledHandle, "TessarinRuledString", NSString> {
public:
    using Handle::Handle;
};

TEST_F(FileNameRulesTest, TheClassMayBeNamed) {
    ASSERT_TRUE(RuledString::classObject());
    expectMembers(tessarin_fileNameIllegalCharacters<RuledHandle>(), u"xy");
    expectMembers(tessarin_fileNameReservedCharacters<RuledHandle>(), u"z");
    EXPECT_EQ(text(tessarin_escapingFileNameCharacter<RuledHandle>()), "__");
    EXPECT_EQ(text(tessarin_escapingFileNameCharacter<NSMutableString>()), "-");
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

// ---- Where the platform makes no string of the rules' text

int stringsRefused = 0;
NSString refuseString(Class, SEL, const char*, NSStringEncoding) {
    ++stringsRefused;
    return nil;
}

// In a process of its own, which has not made the rules yet and keeps what is done to the platform to itself.
class FileNameRulesDeathTest : public FileNameRulesTest {
protected:
    FileNameRulesDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static bool holdsJust(NSCharacterSet set, std::u16string_view characters) {
        for (unsigned unit = 0; unit < 0x10000; ++unit) {
            const bool isExpected = characters.find(static_cast<char16_t>(unit)) != characters.npos;
            if (set.characterIsMember(static_cast<unichar>(unit)) != isExpected) return false;
        }
        return true;
    }
    [[noreturn]] static void askForTheRules() {
        static const ExtensionGroup group{
            "NSString", "TessarinTests", {classMethod("stringWithCString:encoding:", refuseString)}};
        const bool isRight = holdsJust(tessarin_fileNameIllegalCharacters(), illegal)
                             && holdsJust(tessarin_fileNameReservedCharacters(), reserved)
                             && text(tessarin_escapingFileNameCharacter()) == "-"
                             && withoutIllegal("a/b:c.wav"_ns) == "a-b-c-wav";
        std::cerr << (isRight ? "right" : "wrong") << ", refused " << stringsRefused << '\n';
        std::exit(isRight ? 0 : 1);
    }
};

TEST_F(FileNameRulesDeathTest, TheyAreMadeOfConstantStrings) {
    EXPECT_EXIT(askForTheRules(), ::testing::ExitedWithCode(0), "right, refused 2");
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

// ---- On many threads

class ConcurrentFileNamesTest : public PlatformTest {};

// Run by itself this is also the first use of every rule.
TEST_F(ConcurrentFileNamesTest, EveryThreadFindsTheSameRulesAndResults) {
    const Retained<NSString> name = retain(NSString(std::string("a/b caf\u00e9.wav")));
    struct Found {
        NSCharacterSet illegal, reserved;
        NSString hyphen;
        std::string mistakes;
    };
    std::array<Found, threadCount> found;
    onManyThreads([&](int thread) {
        Found& each = found[static_cast<std::size_t>(thread)];
        for (int round = 0; round < 200; ++round) {
            const AutoreleasePool pool;
            each.illegal = tessarin_fileNameIllegalCharacters();
            each.reserved = tessarin_fileNameReservedCharacters();
            each.hyphen = tessarin_escapingFileNameCharacter();
            if (!tessarin_containsFileNameReservedCharacters(name)) each.mistakes += "reserved ";
            if (withoutIllegal(name) != "a-b café-wav") each.mistakes += "replacing ";
            const std::string added = escaped(name);
            if (added != "a%2Fb%20caf%C3%A9.wav") each.mistakes += "adding ";
            if (unescaped(NSString(added)) != text(name)) each.mistakes += "removing ";
        }
    });
    for (const Found& each : found) {
        EXPECT_EQ(each.illegal, found[0].illegal);
        EXPECT_EQ(each.reserved, found[0].reserved);
        EXPECT_EQ(each.hyphen, found[0].hyphen);
        EXPECT_EQ(each.mistakes, "");
    }
}

} // namespace
} // namespace tessarin::testing
