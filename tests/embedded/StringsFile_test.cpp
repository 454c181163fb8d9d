// Files of localised texts.
#include "PlatformTest.h"

#include "platform/embedded/foundation/StringsFile.h"

using namespace std::string_view_literals;

namespace tessarin::testing {
namespace {

class StringsFileTest : public PlatformTest {
protected:
    static std::string textFor(const char* key, std::string_view bytes) {
        const NSDictionary texts = embedded::textsOfStringsFile(bytes);
        return texts ? text(texts.objectForKey(NSString(key))) : "(damaged)";
    }
    static bool isDamaged(std::string_view bytes) { return !embedded::textsOfStringsFile(bytes); }
};

TEST_F(StringsFileTest, HoldsTextsByTheirKeys) {
    const auto file = R"(
        /* a comment with "a" = "b"; in it */
        "a" = "1"; "b"="2";// another
        c.d-e/f = 'three';
        "own";)"sv;
    EXPECT_EQ(textFor("a", file), "1");
    EXPECT_EQ(textFor("b", file), "2");
    EXPECT_EQ(textFor("c.d-e/f", file), "three");
    EXPECT_EQ(textFor("own", file), "own");
    EXPECT_EQ(textFor("other", file), "(nil)");
    EXPECT_EQ(embedded::textsOfStringsFile(file).count(), 4u);
}

TEST_F(StringsFileTest, MayBeEmpty) {
    EXPECT_EQ(textFor("a", ""), "(nil)");
    EXPECT_EQ(textFor("a", " // nothing"), "(nil)");
    EXPECT_EQ(textFor("", R"("" = "";)"), "");
}

TEST_F(StringsFileTest, TheLastOfEqualKeysCounts) { EXPECT_EQ(textFor("a", R"(a = "1"; a = "2";)"), "2"); }

TEST_F(StringsFileTest, KnowsEscapes) {
    EXPECT_EQ(textFor("a", R"(a = "\"\\\n\t\'\a\b\f\r\v\101\U00e9\u20ac\UD83D\UDE00";)"),
              "\"\\\n\t'\a\b\f\r\vA\u00e9\u20ac\U0001F600");
}

TEST_F(StringsFileTest, MayBeOfSeveralEncodings) {
    EXPECT_EQ(textFor("a", "a = \"\u00e9\";"), "\u00e9");
    EXPECT_EQ(textFor("a", "\xEF\xBB\xBF"
                           "a = \"\u00e9\";"),
              "\u00e9");
    EXPECT_EQ(textFor("a", "\xFF\xFE"
                           "a\0=\0\"\0\xE9\0\"\0;\0"sv),
              "\u00e9");
    EXPECT_EQ(textFor("a", "\xFE\xFF"
                           "\0a\0=\0\"\0\xE9\0\"\0;"sv),
              "\u00e9");
}

TEST_F(StringsFileTest, MayBeAPropertyList) {
    EXPECT_EQ(textFor("a", "<plist version=\"1.0\"><dict><key>a</key><string>1</string></dict></plist>"),
              "1");
    const NSData binary = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        NSDictionary::dictionaryWithObject_forKey("1"_ns, "a"_ns), NSPropertyListBinaryFormat_v1_0, 0,
        nullptr);
    EXPECT_EQ(textFor("a", {static_cast<const char*>(binary.bytes()), binary.length()}), "1");
    EXPECT_TRUE(isDamaged("<plist version=\"1.0\"><array/></plist>"));
}

TEST_F(StringsFileTest, IsDamagedByAnythingElse) {
    for (const auto file : {"a = \"1\""sv, "a = ;"sv, "= \"1\";"sv, "a \"1\";"sv, "\"a = 1;"sv, "a = \"1;"sv,
                            "/* a = 1;"sv, "a = \"\\U\";"sv, "a = \"\\"sv, ";"sv, "(a)"sv, "a"sv, "\xFF"sv,
                            "\xFF\xFE"
                            "a"sv,
                            "<plist>"sv, "bplist00"sv})
        EXPECT_TRUE(isDamaged(file)) << file;
}

} // namespace
} // namespace tessarin::testing
