#include "PlatformTest.h"

#include "TessarinPlatform/PercentEscapes.h"

#include <bit>

namespace tessarin::testing {
namespace {

constexpr CFStringEncoding utf8 = kCFStringEncodingUTF8, macRoman = kCFStringEncodingMacRoman,
                           latin1 = kCFStringEncodingISOLatin1, ascii = kCFStringEncodingASCII,
                           windows1252 = kCFStringEncodingWindowsLatin1,
                           shiftJIS = kCFStringEncodingDOSJapanese, unknown = 0x7777;

std::string added(NSString string, CFStringEncoding encoding, NSString left = nil, NSString escaped = nil) {
    return text(
        adopt(CFURLCreateStringByAddingPercentEscapes(kCFAllocatorDefault, string, left, escaped, encoding)));
}
Retained<NSString> newReplaced(NSString string, CFStringEncoding encoding, NSString left = ""_ns) {
    return adopt(
        CFURLCreateStringByReplacingPercentEscapesUsingEncoding(kCFAllocatorDefault, string, left, encoding));
}
std::string replaced(NSString string, CFStringEncoding encoding, NSString left = ""_ns) {
    return text(newReplaced(string, encoding, left));
}

// ---- Adding

class AddingPercentEscapesTest : public PlatformTest {};

TEST_F(AddingPercentEscapesTest, EscapesWhatCannotStandInAURL) {
    for (unichar unit = 0; unit < 0x100; ++unit) {
        const NSString string(std::u16string_view(&unit, 1));
        const bool isLegal =
            unit < 0x80
            && std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
                                "!$&'()*+,-./:;=?@_~")
                       .find(static_cast<char>(unit))
                   != std::string_view::npos;
        char escape[4];
        std::snprintf(escape, sizeof escape, "%%%02X", unsigned{unit} & 0xFF);
        EXPECT_EQ(added(string, latin1), isLegal ? text(string) : escape) << std::hex << unsigned{unit};
    }
}

TEST_F(AddingPercentEscapesTest, EscapesEveryUnitBeyondASCII) {
    EXPECT_EQ(added(u"\u0080\u00e9\u3042\uffff"_ns, utf8), "%C2%80%C3%A9%E3%81%82%EF%BF%BF");
}

TEST_F(AddingPercentEscapesTest, EscapesTheLegalUnitsOfTheList) {
    EXPECT_EQ(added("a/b+c"_ns, utf8, nil, "/"_ns), "a%2Fb+c");
    EXPECT_EQ(added("a/b+c"_ns, utf8, nil, "+/b"_ns), "a%2F%62%2Bc");
    EXPECT_EQ(added("a/b"_ns, utf8, nil, ""_ns), "a/b");
}

TEST_F(AddingPercentEscapesTest, LeavesTheIllegalUnitsOfTheList) {
    EXPECT_EQ(added("a b%"_ns, utf8, " "_ns), "a b%25");
    EXPECT_EQ(added(u"\u3042 \u3044"_ns, utf8, u"\u3042"_ns), "あ%20%E3%81%84");
    EXPECT_EQ(added(u"\u3042 x"_ns, ascii, u"\u3042"_ns), "あ%20x");
}

TEST_F(AddingPercentEscapesTest, TheListsDoNotConcernOneAnother) {
    EXPECT_EQ(added("a b/c"_ns, utf8, " /"_ns, " /"_ns), "a b%2Fc");
}

TEST_F(AddingPercentEscapesTest, APercentSignIsAlwaysEscaped) {
    EXPECT_EQ(added("a%20b"_ns, utf8), "a%2520b");
    EXPECT_EQ(added("100%"_ns, utf8), "100%25");
}

TEST_F(AddingPercentEscapesTest, ASpaceIsTheSameInManyEncodings) {
    for (const CFStringEncoding encoding :
         {utf8, macRoman, latin1, windows1252, CFStringEncoding{kCFStringEncodingISOLatin2}, shiftJIS, ascii,
          CFStringEncoding{kCFStringEncodingEUC_JP}, CFStringEncoding{kCFStringEncodingISO_2022_JP}})
        EXPECT_EQ(added("a b"_ns, encoding), "a%20b") << encoding;
}

TEST_F(AddingPercentEscapesTest, ALetterIsEscapedByItsBytes) {
    const NSString name = u"caf\u00e9 x"_ns;
    EXPECT_EQ(added(name, utf8), "caf%C3%A9%20x");
    EXPECT_EQ(added(name, macRoman), "caf%8E%20x");
    EXPECT_EQ(added(name, latin1), "caf%E9%20x");
    EXPECT_EQ(added(name, ascii), "(nil)");
}

TEST_F(AddingPercentEscapesTest, NothingIsComposedOrDecomposed) {
    EXPECT_EQ(added(u"cafe\u0301 x"_ns, utf8), "cafe%CC%81%20x");
    EXPECT_EQ(added(u"e\u0301 x"_ns, latin1), "(nil)");
}

TEST_F(AddingPercentEscapesTest, ACurrencySign) {
    EXPECT_EQ(added(u"\u20ac x"_ns, windows1252), "%80%20x");
    EXPECT_EQ(added(u"\u20ac x"_ns, macRoman), "%DB%20x");
    EXPECT_EQ(added(u"\u20ac x"_ns, latin1), "(nil)");
}

TEST_F(AddingPercentEscapesTest, ASurrogatePairIsOneCharacterInUTF8Alone) {
    const NSString face = u"\U0001F600 x"_ns;
    EXPECT_EQ(added(face, utf8), "%F0%9F%98%80%20x");
    for (const CFStringEncoding encoding :
         {macRoman, shiftJIS, CFStringEncoding{kCFStringEncodingUTF16},
          CFStringEncoding{kCFStringEncodingUTF16LE}, CFStringEncoding{kCFStringEncodingUTF32}})
        EXPECT_EQ(added(face, encoding), "(nil)") << encoding;
}

TEST_F(AddingPercentEscapesTest, AnUnpairedSurrogateHasNoBytes) {
    EXPECT_EQ(added(u"\xD83D x"_ns, utf8), "(nil)");
    EXPECT_EQ(added(u"x \xDE00"_ns, utf8), "(nil)");
    EXPECT_EQ(added(u"x\xD83D"_ns, utf8), "(nil)");
}

TEST_F(AddingPercentEscapesTest, JapaneseText) {
    const NSString name = u"\u3042 x"_ns;
    EXPECT_EQ(added(name, shiftJIS), "%82%A0%20x");
    EXPECT_EQ(added(name, kCFStringEncodingShiftJIS), "%82%A0%20x");
    EXPECT_EQ(added(name, kCFStringEncodingEUC_JP), "%A4%A2%20x");
    EXPECT_EQ(added(name, kCFStringEncodingISO_2022_JP), "%1B%24%42%24%22%1B%28%42%20x");
}

TEST_F(AddingPercentEscapesTest, ISO2022JPLeadsToItsCharacterSetAroundEachUnit) {
    EXPECT_EQ(added(u"\u3042\u3042"_ns, kCFStringEncodingISO_2022_JP),
              "%1B%24%42%24%22%1B%28%42%1B%24%42%24%22%1B%28%42");
    EXPECT_EQ(added(u"\u00a5"_ns, kCFStringEncodingISO_2022_JP), "%1B%28%4A%5C%1B%28%42");
}

// What leads from one character set to another could not be told from it.
TEST_F(AddingPercentEscapesTest, ISO2022JPHasNoEscapeCharacter) {
    EXPECT_EQ(added("\x1B"_ns, kCFStringEncodingISO_2022_JP), "(nil)");
    EXPECT_EQ(added("\x1B"_ns, kCFStringEncodingEUC_JP), "%1B");
}

TEST_F(AddingPercentEscapesTest, AByteOrderMarkComesBeforeEachEscapedUnit) {
    const bool isLittle = std::endian::native == std::endian::little;
    EXPECT_EQ(added("a b"_ns, kCFStringEncodingUTF16), isLittle ? "a%FF%FE%20%00b" : "a%FE%FF%00%20b");
    EXPECT_EQ(added("a b"_ns, kCFStringEncodingUTF32),
              isLittle ? "a%FF%FE%00%00%20%00%00%00b" : "a%00%00%FE%FF%00%00%00%20b");
    EXPECT_EQ(added("  "_ns, kCFStringEncodingUTF16),
              isLittle ? "%FF%FE%20%00%FF%FE%20%00" : "%FE%FF%00%20%FE%FF%00%20");
}

TEST_F(AddingPercentEscapesTest, NoByteOrderMarkWhereTheOrderIsStated) {
    EXPECT_EQ(added("a b"_ns, kCFStringEncodingUTF16BE), "a%00%20b");
    EXPECT_EQ(added("a b"_ns, kCFStringEncodingUTF16LE), "a%20%00b");
    EXPECT_EQ(added("a b"_ns, kCFStringEncodingUTF32BE), "a%00%00%00%20b");
    EXPECT_EQ(added("a b"_ns, kCFStringEncodingUTF32LE), "a%20%00%00%00b");
}

TEST_F(AddingPercentEscapesTest, NilForAnEncodingThatIsNotThere) {
    for (const CFStringEncoding encoding :
         {CFStringEncoding{kCFStringEncodingNonLossyASCII}, CFStringEncoding{kCFStringEncodingMacSymbol},
          unknown, CFStringEncoding{kCFStringEncodingInvalidId}})
        EXPECT_EQ(added("a b"_ns, encoding), "(nil)") << encoding;
}

TEST_F(AddingPercentEscapesTest, AnEncodingCountsForEscapedUnitsAlone) {
    EXPECT_EQ(added("abc"_ns, unknown), "abc");
}

TEST_F(AddingPercentEscapesTest, ControlCharacters) {
    EXPECT_EQ(added(u"\u0001\u007f x"_ns, utf8), "%01%7F%20x");
    EXPECT_EQ(added(u"a\0b"_ns, utf8), "a%00b");
}

TEST_F(AddingPercentEscapesTest, TheEmptyStringStaysEmpty) {
    for (const CFStringEncoding encoding : {utf8, ascii, unknown})
        EXPECT_EQ(added(""_ns, encoding), "") << encoding;
}

TEST_F(AddingPercentEscapesTest, NilForANilString) { EXPECT_EQ(added(nil, utf8), "(nil)"); }

TEST_F(AddingPercentEscapesTest, TheResultBelongsToTheCaller) {
    EXPECT_EQ(ownedReferencesOfNew([] {
                  return CFURLCreateStringByAddingPercentEscapes(kCFAllocatorDefault,
                                                                 "a string of this test"_ns, nil, nil, utf8);
              }),
              1);
}

// Pairs and escapes lie across whatever pieces a string is worked on in.
TEST_F(AddingPercentEscapesTest, LongStringsAtEveryOffset) {
    for (std::size_t offset = 0; offset < 4; ++offset) {
        std::u16string units(offset, u'x');
        std::string expected(offset, 'x');
        for (int index = 0; index < 2000; ++index) {
            units += u"\U0001F600 ";
            expected += "%F0%9F%98%80%20";
        }
        EXPECT_EQ(added(NSString(units), utf8), expected) << offset;
    }
}

// ---- Replacing

class ReplacingPercentEscapesTest : public PlatformTest {};

TEST_F(ReplacingPercentEscapesTest, TextWithoutEscapesStaysAsItIs) {
    EXPECT_EQ(replaced(""_ns, utf8), "");
    EXPECT_EQ(replaced("abc"_ns, utf8), "abc");
    EXPECT_EQ(replaced("a+b"_ns, utf8), "a+b");
}

TEST_F(ReplacingPercentEscapesTest, EscapesBecomeTheirCharacters) {
    EXPECT_EQ(replaced("a%20b"_ns, utf8), "a b");
    EXPECT_EQ(replaced("a%41b%42"_ns, utf8), "aAbB");
    EXPECT_EQ(replaced("%c3%a9"_ns, utf8), "é");
    EXPECT_EQ(replaced("%C3%A9"_ns, utf8), "é");
    EXPECT_EQ(replaced("%F0%9F%98%80"_ns, utf8), "😀");
}

TEST_F(ReplacingPercentEscapesTest, OneLevelAlone) { EXPECT_EQ(replaced("%2525"_ns, utf8), "%25"); }

TEST_F(ReplacingPercentEscapesTest, AZeroIsACharacter) {
    EXPECT_EQ(static_cast<std::u16string>(newReplaced("%00"_ns, utf8)), std::u16string(1, u'\0'));
    EXPECT_EQ(static_cast<std::u16string>(newReplaced("a%00b"_ns, utf8)), std::u16string(u"a\0b", 3));
}

TEST_F(ReplacingPercentEscapesTest, AMalformedEscapeFailsTheWholeString) {
    for (const NSString string :
         {"%"_ns,    "%4"_ns,   "%zz"_ns,   "%4g"_ns,   "100%"_ns,           "50% off"_ns,
          "% 41"_ns, "%%41"_ns, "%4%31"_ns, "%20 %"_ns, u"%\uff11\uff11"_ns, "%:0"_ns,
          "%@0"_ns,  "%`0"_ns,  "%G0"_ns,   "%/0"_ns,   u"%\u0141\u0141"_ns, "%+1"_ns,
          "%-1"_ns,  "%0x"_ns})
        for (const CFStringEncoding encoding : {utf8, latin1, ascii, shiftJIS})
            EXPECT_EQ(replaced(string, encoding), "(nil)") << text(string) << " " << encoding;
}

TEST_F(ReplacingPercentEscapesTest, BytesThatAreNoUTF8Fail) {
    for (const NSString string : {"%C3"_ns, "%E9"_ns, "%C3%28"_ns, "%C0%80"_ns, "%ED%A0%80"_ns, "%FF%FE"_ns,
                                  "%E4%BD%A0%E5"_ns, "%C3x%A9"_ns, "%F5%80%80%80"_ns, "%80"_ns})
        EXPECT_EQ(replaced(string, utf8), "(nil)") << text(string);
}

TEST_F(ReplacingPercentEscapesTest, SingleByteEncodings) {
    EXPECT_EQ(replaced("%E9"_ns, latin1), "é");
    EXPECT_EQ(replaced("%8E"_ns, macRoman), "é");
    EXPECT_EQ(replaced("%80"_ns, windows1252), "€");
    EXPECT_EQ(replaced("%81"_ns, windows1252), "(nil)");
}

TEST_F(ReplacingPercentEscapesTest, ASCIIReadsItsUpperHalfAsLatin1) {
    EXPECT_EQ(replaced("%E9"_ns, ascii), "é");
}

TEST_F(ReplacingPercentEscapesTest, JapaneseText) {
    EXPECT_EQ(replaced("%82%A0"_ns, shiftJIS), "あ");
    EXPECT_EQ(replaced("%82"_ns, shiftJIS), "(nil)");
    EXPECT_EQ(replaced("%A4%A2"_ns, kCFStringEncodingEUC_JP), "あ");
    EXPECT_EQ(replaced("%A4"_ns, kCFStringEncodingEUC_JP), "(nil)");
    EXPECT_EQ(replaced("%8F%A2"_ns, kCFStringEncodingEUC_JP), "(nil)");
}

TEST_F(ReplacingPercentEscapesTest, ISO2022JPFollowsItsSequences) {
    constexpr CFStringEncoding iso2022 = kCFStringEncodingISO_2022_JP;
    EXPECT_EQ(replaced("%1B%24%42%24%22%1B%28%42"_ns, iso2022), "あ");
    EXPECT_EQ(replaced("%1B%24%40%24%22%1B%28%4A%5C%7E%41%1B%28%42%5C"_ns, iso2022), "あ¥‾A\\");
    EXPECT_EQ(replaced("%1B%24%42%24%22"_ns, iso2022), "あ");
    EXPECT_EQ(replaced("%1B%24%42%0A%20%24%22"_ns, iso2022), "\n あ");
    for (const NSString string : {"%1B"_ns, "%1B%24"_ns, "%1B%28"_ns, "%1B%24%42%24"_ns, "%1B%41"_ns,
                                  "%A4"_ns, "%1B%24%42%24%1B%28%42"_ns, "%1B%24%42%7E%7E"_ns})
        EXPECT_EQ(replaced(string, iso2022), "(nil)") << text(string);
}

TEST_F(ReplacingPercentEscapesTest, UnicodeFollowsItsByteOrderMark) {
    EXPECT_EQ(replaced("%FF%FE%20%00"_ns, kCFStringEncodingUTF16), " ");
    EXPECT_EQ(replaced("%FE%FF%00%20"_ns, kCFStringEncodingUTF16), " ");
    EXPECT_EQ(replaced("%FF%FE%00%00%20%00%00%00"_ns, kCFStringEncodingUTF32), " ");
    EXPECT_EQ(replaced("%00%00%FE%FF%00%00%00%20"_ns, kCFStringEncodingUTF32), " ");
    EXPECT_EQ(replaced("%FF%FE"_ns, kCFStringEncodingUTF16), "");
}

TEST_F(ReplacingPercentEscapesTest, UnicodeWithoutAMarkIsBigEndian) {
    EXPECT_EQ(replaced("%00%20"_ns, kCFStringEncodingUTF16), " ");
    EXPECT_EQ(replaced("%00%01%F6%00"_ns, kCFStringEncodingUTF32), "😀");
}

TEST_F(ReplacingPercentEscapesTest, AMarkIsTextWhereTheOrderIsStated) {
    EXPECT_EQ(static_cast<std::u16string>(newReplaced("%FF%FE%20%00"_ns, kCFStringEncodingUTF16LE)),
              u"\ufeff ");
    EXPECT_EQ(static_cast<std::u16string>(newReplaced("%EF%BB%BFx"_ns, utf8)), u"\ufeffx");
}

TEST_F(ReplacingPercentEscapesTest, UnicodeThatIsCutOrNoTextFails) {
    EXPECT_EQ(replaced("%00"_ns, kCFStringEncodingUTF16BE), "(nil)");
    EXPECT_EQ(replaced("%D8%3D"_ns, kCFStringEncodingUTF16BE), "(nil)");
    EXPECT_EQ(replaced("%D8%3D%DE%00"_ns, kCFStringEncodingUTF16BE), "😀");
    EXPECT_EQ(replaced("%00%00%20"_ns, kCFStringEncodingUTF32BE), "(nil)");
    EXPECT_EQ(replaced("%00%00%D8%3D"_ns, kCFStringEncodingUTF32BE), "(nil)");
    EXPECT_EQ(replaced("%00%11%00%00"_ns, kCFStringEncodingUTF32BE), "(nil)");
}

TEST_F(ReplacingPercentEscapesTest, OtherTextPassesThrough) {
    EXPECT_EQ(replaced(u"\u00e9%20"_ns, utf8), "é ");
    EXPECT_EQ(replaced(u"\u00e9%20"_ns, ascii), "é ");
    EXPECT_EQ(static_cast<std::u16string>(newReplaced(u"\xD83D%20\xDE00"_ns, utf8)), u"\xD83D \xDE00");
}

TEST_F(ReplacingPercentEscapesTest, AnEncodingCountsForEscapesAlone) {
    EXPECT_EQ(replaced("%41"_ns, unknown), "(nil)");
    EXPECT_EQ(replaced("%41"_ns, kCFStringEncodingInvalidId), "(nil)");
    EXPECT_EQ(replaced("%41"_ns, kCFStringEncodingMacSymbol), "(nil)");
    EXPECT_EQ(replaced("abc"_ns, unknown), "abc");
}

TEST_F(ReplacingPercentEscapesTest, NothingIsReplacedWithoutAList) {
    EXPECT_EQ(replaced("a%20b%"_ns, utf8, nil), "a%20b%");
}

TEST_F(ReplacingPercentEscapesTest, TheCharactersOfTheListStayEscaped) {
    EXPECT_EQ(replaced("a%20b%2fc%25"_ns, utf8, "/%"_ns), "a b%2Fc%25");
    EXPECT_EQ(replaced("%C3%A9%20%C3%A8"_ns, utf8, u"\u00e9"_ns), "%C3%A9 è");
}

TEST_F(ReplacingPercentEscapesTest, NilForANilString) { EXPECT_EQ(replaced(nil, utf8), "(nil)"); }

TEST_F(ReplacingPercentEscapesTest, TheResultBelongsToTheCaller) {
    EXPECT_EQ(ownedReferencesOfNew([] {
                  return CFURLCreateStringByReplacingPercentEscapesUsingEncoding(
                      kCFAllocatorDefault, "a%20string%20of%20this%20test"_ns, ""_ns, utf8);
              }),
              1);
}

TEST_F(ReplacingPercentEscapesTest, ACopyDoesNotFollowAMutableString) {
    const NSMutableString string = NSMutableString::stringWithString("abc"_ns);
    const Retained<NSString> result = newReplaced(string, utf8);
    string.setString("changed"_ns);
    EXPECT_EQ(text(result), "abc");
}

TEST_F(ReplacingPercentEscapesTest, LongStringsAtEveryOffset) {
    for (std::size_t offset = 0; offset < 4; ++offset) {
        std::string escaped(offset, 'x'), expected(offset, 'x');
        for (int index = 0; index < 2000; ++index) {
            escaped += "%F0%9F%98%80x";
            expected += "😀x";
        }
        EXPECT_EQ(replaced(NSString(escaped), utf8), expected) << offset;
        EXPECT_EQ(replaced(NSString(escaped + "%4"), utf8), "(nil)") << offset;
    }
}

} // namespace
} // namespace tessarin::testing
