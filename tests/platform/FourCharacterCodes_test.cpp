#include "PlatformTest.h"

#include "TessarinPlatform/FourCharacterCodes.h"

#include <algorithm>

namespace tessarin::testing {
namespace {

class FourCharacterCodesTest : public PlatformTest {};

TEST_F(FourCharacterCodesTest, TheFirstCharacterIsTheMostSignificantByte) {
    const Retained<NSString> string = adopt(UTCreateStringForOSType(0x61756678));
    EXPECT_EQ(text(string), "aufx");
    EXPECT_EQ(UTGetOSTypeFromString("aufx"_ns), 0x61756678u);
}

TEST_F(FourCharacterCodesTest, KeepsTrailingSpaces) {
    const Retained<NSString> string = adopt(UTCreateStringForOSType(0x61622020));
    EXPECT_EQ(text(string), "ab  ");
    EXPECT_EQ(UTGetOSTypeFromString("ab  "_ns), 0x61622020u);
}

TEST_F(FourCharacterCodesTest, TheStringBelongsToTheCaller) {
    EXPECT_EQ(ownedReferencesOfNew([] { return UTCreateStringForOSType(0x61756678); }), 1);
}

TEST_F(FourCharacterCodesTest, UsesMacOSRoman) {
    const Retained<NSString> string = adopt(UTCreateStringForOSType(0xA98EDB80));
    EXPECT_EQ(text(string), "©é€Ä");
    EXPECT_EQ(UTGetOSTypeFromString(u"\u00a9\u00e9\u20ac\u00c4"_ns), 0xA98EDB80u);
}

TEST_F(FourCharacterCodesTest, EveryByteIsOneCharacterAndComesBackInEveryPlace) {
    for (unsigned shift = 0; shift < 32; shift += 8)
        for (OSType byte = 1; byte < 256; ++byte) {
            const OSType code = (0x41414141u & ~(0xFFu << shift)) | byte << shift;
            const Retained<NSString> string = adopt(UTCreateStringForOSType(code));
            ASSERT_EQ(string.length(), 4u) << std::hex << code;
            ASSERT_EQ(UTGetOSTypeFromString(string), code) << std::hex << code;
        }
}

TEST_F(FourCharacterCodesTest, DifferentBytesAreDifferentCharacters) {
    std::vector<unichar> characters;
    for (OSType byte = 0x20; byte < 256; ++byte) {
        const Retained<NSString> string = adopt(UTCreateStringForOSType(0x20202000u | byte));
        characters.push_back(string.characterAtIndex(3));
    }
    std::sort(characters.begin(), characters.end());
    EXPECT_EQ(std::unique(characters.begin(), characters.end()), characters.end());
}

TEST_F(FourCharacterCodesTest, AStringOfAnotherLengthIsNoCode) {
    for (const NSString string : {""_ns, "a"_ns, "auf"_ns, "aufxx"_ns, "aufx "_ns})
        EXPECT_EQ(UTGetOSTypeFromString(string), 0u) << text(string);
}

TEST_F(FourCharacterCodesTest, NilIsNoCode) { EXPECT_EQ(UTGetOSTypeFromString(nil), 0u); }

TEST_F(FourCharacterCodesTest, CharactersOutsideMacOSRomanAreNoCode) {
    EXPECT_EQ(UTGetOSTypeFromString(u"auf\u0100"_ns), 0u);
    EXPECT_EQ(UTGetOSTypeFromString(u"\u6642abc"_ns), 0u);
    EXPECT_EQ(UTGetOSTypeFromString(u"\U0001F39Bab"_ns), 0u);
}

TEST_F(FourCharacterCodesTest, ACombinedCharacterCountsByItsUnits) {
    EXPECT_EQ(UTGetOSTypeFromString(u"aufe\u0301"_ns), 0u);
}

} // namespace
} // namespace tessarin::testing
