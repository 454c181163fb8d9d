#include "PlatformTest.h"

#include "TessarinPlatform/StringEncodings.h"

namespace tessarin::testing {
namespace {

class StringEncodingsTest : public PlatformTest {
protected:
    static CFStringEncoding converted(NSUInteger encoding) {
        return CFStringConvertNSStringEncodingToEncoding(encoding);
    }
    static std::string created(const char* text, CFStringEncoding encoding) {
        return testing::text(adopt(CFStringCreateWithCString(kCFAllocatorDefault, text, encoding)));
    }
};

TEST_F(StringEncodingsTest, TheEncodingsOfStringsHaveANumberEach) {
    const std::pair<NSUInteger, CFStringEncoding> numbers[] = {
        {1, 0x0600},  {2, 0x0B01},  {3, 0x0920},  {4, 0x08000100}, {5, 0x0201},  {6, 0x0021},
        {7, 0x0BFF},  {8, 0x0420},  {9, 0x0202},  {10, 0x0100},    {11, 0x0502}, {12, 0x0500},
        {13, 0x0503}, {14, 0x0504}, {15, 0x0501}, {21, 0x0820},    {30, 0},
    };
    for (const auto& [encoding, number] : numbers) EXPECT_EQ(converted(encoding), number) << encoding;
}

TEST_F(StringEncodingsTest, TheNamesOfStringEncodingsHaveTheirNumbers) {
    EXPECT_EQ(converted(NSASCIIStringEncoding), kCFStringEncodingASCII);
    EXPECT_EQ(converted(NSNEXTSTEPStringEncoding), kCFStringEncodingNextStepLatin);
    EXPECT_EQ(converted(NSJapaneseEUCStringEncoding), kCFStringEncodingEUC_JP);
    EXPECT_EQ(converted(NSUTF8StringEncoding), kCFStringEncodingUTF8);
    EXPECT_EQ(converted(NSISOLatin1StringEncoding), kCFStringEncodingISOLatin1);
    EXPECT_EQ(converted(NSSymbolStringEncoding), kCFStringEncodingMacSymbol);
    EXPECT_EQ(converted(NSNonLossyASCIIStringEncoding), kCFStringEncodingNonLossyASCII);
    EXPECT_EQ(converted(NSShiftJISStringEncoding), kCFStringEncodingDOSJapanese);
    EXPECT_EQ(converted(NSISOLatin2StringEncoding), kCFStringEncodingISOLatin2);
    EXPECT_EQ(converted(NSUnicodeStringEncoding), kCFStringEncodingUTF16);
    EXPECT_EQ(converted(NSWindowsCP1251StringEncoding), kCFStringEncodingWindowsCyrillic);
    EXPECT_EQ(converted(NSWindowsCP1252StringEncoding), kCFStringEncodingWindowsLatin1);
    EXPECT_EQ(converted(NSWindowsCP1253StringEncoding), kCFStringEncodingWindowsGreek);
    EXPECT_EQ(converted(NSWindowsCP1254StringEncoding), kCFStringEncodingWindowsLatin5);
    EXPECT_EQ(converted(NSWindowsCP1250StringEncoding), kCFStringEncodingWindowsLatin2);
    EXPECT_EQ(converted(NSISO2022JPStringEncoding), kCFStringEncodingISO_2022_JP);
    EXPECT_EQ(converted(NSMacOSRomanStringEncoding), kCFStringEncodingMacRoman);
}

TEST_F(StringEncodingsTest, OtherNumbersAreNoEncoding) {
    EXPECT_EQ(kCFStringEncodingInvalidId, 0xFFFFFFFFu);
    for (const unsigned encoding :
         {0u,  16u, 17u, 18u, 19u, 20u,    22u,    23u,         24u,         25u,    26u,
          27u, 28u, 29u, 31u, 32u, 0x100u, 0x201u, 0x08000100u, 0x7FFFFFFFu, 65536u, 0x10000100u})
        EXPECT_EQ(converted(encoding), kCFStringEncodingInvalidId) << encoding;
}

TEST_F(StringEncodingsTest, ANumberWithBit31CarriesAnyOther) {
    const std::pair<NSUInteger, CFStringEncoding> numbers[] = {
        {0x80000000, 0},          {0x80000205, 0x0205},     {0x80000A01, 0x0A01},
        {0x80000632, 0x0632},     {0x90000100, 0x10000100}, {0x94000100, 0x14000100},
        {0x8C000100, 0x0C000100}, {0x98000100, 0x18000100}, {0x9C000100, 0x1C000100},
        {0x80007777, 0x7777},     {0xFFFFFFFF, 0x7FFFFFFF},
    };
    for (const auto& [encoding, number] : numbers) EXPECT_EQ(converted(encoding), number) << encoding;
}

TEST_F(StringEncodingsTest, OnlyBit31Counts) {
    if constexpr (sizeof(NSUInteger) > 4) {
        EXPECT_EQ(converted(static_cast<NSUInteger>(0x100000004)), kCFStringEncodingInvalidId);
        EXPECT_EQ(converted(static_cast<NSUInteger>(0x180000004)), 4u);
    }
    EXPECT_EQ(converted(std::numeric_limits<NSUInteger>::max()), 0x7FFFFFFFu);
}

TEST_F(StringEncodingsTest, MakesAStringOfBytes) {
    EXPECT_EQ(created("abc", kCFStringEncodingUTF8), "abc");
    EXPECT_EQ(created("", kCFStringEncodingUTF8), "");
    EXPECT_EQ(created("caf\xC3\xA9", kCFStringEncodingUTF8), "café");
    EXPECT_EQ(created("caf\x8E", kCFStringEncodingMacRoman), "café");
    EXPECT_EQ(created("\x82\xA0", kCFStringEncodingDOSJapanese), "あ");
}

TEST_F(StringEncodingsTest, BytesThatAreNoTextMakeNoString) {
    EXPECT_EQ(created("\xC3", kCFStringEncodingUTF8), "(nil)");
    EXPECT_EQ(created("abc", 0x7777), "(nil)");
    EXPECT_EQ(created("abc", kCFStringEncodingInvalidId), "(nil)");
    EXPECT_EQ(created("abc", kCFStringEncodingMacSymbol), "(nil)");
    EXPECT_EQ(created(nullptr, kCFStringEncodingUTF8), "(nil)");
}

TEST_F(StringEncodingsTest, TheStringBelongsToTheCaller) {
    EXPECT_EQ(ownedReferencesOfNew([] {
                  return CFStringCreateWithCString(kCFAllocatorDefault, "a string of this test",
                                                   kCFStringEncodingUTF8);
              }),
              1);
}

// ---- The encodings of NSString

class StringBytesTest : public PlatformTest {
protected:
    static std::string bytes(NSString string, NSStringEncoding encoding) {
        const NSData data = string.dataUsingEncoding(encoding);
        if (!data) return "(nil)";
        return data.length() == 0 ? "" : std::string(static_cast<const char*>(data.bytes()), data.length());
    }
    static std::string string(std::string_view bytes, NSStringEncoding encoding) {
        return text(
            adopt(NSString::alloc().initWithBytes_length_encoding(bytes.data(), bytes.size(), encoding)));
    }
    static void expectBothWays(NSString text, std::string_view bytesOfText, NSStringEncoding encoding) {
        EXPECT_EQ(bytes(text, encoding), bytesOfText) << encoding;
        EXPECT_EQ(string(bytesOfText, encoding), testing::text(text)) << encoding;
    }
};

TEST_F(StringBytesTest, SingleByteEncodings) {
    expectBothWays(u"caf\u00e9 \u20ac"_ns, "caf\x8E \xDB", NSMacOSRomanStringEncoding);
    expectBothWays(u"caf\u00e9"_ns, "caf\xE9", NSISOLatin1StringEncoding);
    expectBothWays(u"\u0159"_ns, "\xF8", NSISOLatin2StringEncoding);
    expectBothWays(u"\u20ac"_ns, "\x80", NSWindowsCP1252StringEncoding);
    expectBothWays(u"\u0416"_ns, "\xC6", NSWindowsCP1251StringEncoding);
    expectBothWays(u"\u03a9"_ns, "\xD9", NSWindowsCP1253StringEncoding);
    expectBothWays(u"\u011f"_ns, "\xF0", NSWindowsCP1254StringEncoding);
    expectBothWays(u"\u0159"_ns, "\xF8", NSWindowsCP1250StringEncoding);
    expectBothWays(u"\u00e9"_ns, "\xDD", NSNEXTSTEPStringEncoding);
}

TEST_F(StringBytesTest, UnicodeInAStatedOrder) {
    expectBothWays(u"a\u20ac"_ns, std::string_view("\0a\x20\xAC", 4), 0x90000100);
    expectBothWays(u"a\u20ac"_ns, std::string_view("a\0\xAC\x20", 4), 0x94000100);
    expectBothWays(u"\U0001F600"_ns, std::string_view("\0\x01\xF6\0", 4), 0x98000100);
    expectBothWays(u"\U0001F600"_ns, std::string_view("\0\xF6\x01\0", 4), 0x9C000100);
}

TEST_F(StringBytesTest, UnicodeBehindAByteOrderMark) {
    EXPECT_EQ(string(std::string_view("\xFF\xFE"
                                      "a\0",
                                      4),
                     NSUnicodeStringEncoding),
              "a");
    EXPECT_EQ(string(std::string_view("\xFE\xFF"
                                      "\0a",
                                      4),
                     NSUnicodeStringEncoding),
              "a");
    const std::string written = bytes("a"_ns, NSUnicodeStringEncoding);
    EXPECT_EQ(written.size(), 4u);
    EXPECT_EQ(string(written, NSUnicodeStringEncoding), "a");
}

TEST_F(StringBytesTest, JapaneseEncodings) {
    expectBothWays(u"a\u3042\uff71"_ns, "a\x82\xA0\xB1", NSShiftJISStringEncoding);
    expectBothWays(u"a\u3042"_ns, "a\xA4\xA2", NSJapaneseEUCStringEncoding);
}

// One pair of sequences for adjacent characters.
TEST_F(StringBytesTest, ISO2022JPChangesItsCharacterSetWhereItMust) {
    expectBothWays(u"a\u3042\u3042b\u3042"_ns, "a\x1B$B$\"$\"\x1B(Bb\x1B$B$\"\x1B(B",
                   NSISO2022JPStringEncoding);
}

TEST_F(StringBytesTest, NoDataForACharacterThatTheEncodingLacks) {
    EXPECT_EQ(bytes(u"\u3042"_ns, NSMacOSRomanStringEncoding), "(nil)");
    EXPECT_EQ(bytes(u"\u20ac"_ns, NSShiftJISStringEncoding), "(nil)");
    EXPECT_EQ(bytes("a"_ns, 0x80007777), "(nil)");
}

TEST_F(StringBytesTest, NoStringForBytesThatAreNoText) {
    EXPECT_EQ(string("\x81", NSWindowsCP1252StringEncoding), "(nil)");
    EXPECT_EQ(string("\x82", NSShiftJISStringEncoding), "(nil)");
    EXPECT_EQ(string("a", 0x80007777), "(nil)");
}

TEST_F(StringBytesTest, BytesThatEndInZero) {
    EXPECT_EQ(text(NSString::stringWithCString_encoding("caf\xC3\xA9", NSUTF8StringEncoding)), "café");
    EXPECT_EQ(text(NSString::stringWithCString_encoding("caf\x8E", NSMacOSRomanStringEncoding)), "café");
    EXPECT_EQ(text(NSString::stringWithCString_encoding("", NSUTF8StringEncoding)), "");
    EXPECT_EQ(text(NSString::stringWithCString_encoding("\xC3", NSUTF8StringEncoding)), "(nil)");
    const Retained<NSString> owned =
        adopt(NSString::alloc().initWithCString_encoding("-", NSUTF8StringEncoding));
    EXPECT_EQ(text(owned), "-");
}

} // namespace
} // namespace tessarin::testing
