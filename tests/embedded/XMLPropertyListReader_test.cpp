#include "platform/embedded/foundation/DocumentText.h"
#include "platform/embedded/foundation/XMLPropertyListReader.h"

#include "PlatformTest.h"
#include "platform/services/PropertyListError.h"

#include <fstream>
#include <iterator>

namespace tessarin::testing {
namespace {

using namespace tessarin::embedded;

class XMLPropertyListReaderTest : public PlatformTest {};

// What a document holds, (nil) and the problem where it cannot be read.
NSObject read(std::string_view document) {
    std::string converted;
    return readXMLPropertyList(textOfDocument(document, converted), NSPropertyListImmutable).autorelease();
}
std::string stringIn(std::string_view document) { return text(kindOf<NSString>(read(document))); }

std::string problemOf(std::string_view document) {
    try {
        return "no problem with " + text(read(document).description());
    } catch (const PropertyListProblem& problem) {
        return problem.what();
    }
}

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int time = 0; time < times; ++time) result += text;
    return result;
}

template <std::size_t Size>
std::string bytes(const char (&literal)[Size]) {
    return std::string(literal, Size - 1);
}

std::string utf16(std::u16string_view units, bool isBigEndian) {
    std::string result;
    for (const char16_t unit : units) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        result += isBigEndian ? high : low;
        result += isBigEndian ? low : high;
    }
    return result;
}

struct Malformed {
    std::string document;
    std::string problem;
};

const Malformed malformedDocuments[] = {
    // The document
    {"b", "Unexpected character b at line 1"},
    {" \n \u20ac", "Unexpected character \u20ac at line 2"},
    {bytes("\0"), "Unexpected character U+0000 at line 1"},
    {" \n", "Unexpected end of the document at line 2"},
    {"\r\n\r\r\nb", "Unexpected character b at line 4"},
    {"<plist>", "Unexpected end of the document at line 1"},
    {"<plist/>", "Property list without an object at line 1"},
    {"<plist>\n</plist>", "Property list without an object at line 2"},
    {"</plist>", "Property list without an object at line 1"},
    {"<plist><true/>\n<true/></plist>", "Property list with a second object at line 2"},
    {"<plist><true/>\n</array>", "Closing tag </array> of an open <plist> at line 2"},
    {"<plist><true/>\n", "Unexpected end of the document at line 2"},
    {"<plist><true/>\ntext</plist>", "Unexpected character t at line 2"},
    {"<plist>\n<plist><true/></plist></plist>", "Unknown tag <plist> at line 2"},
    {"\n<?xml version='1.0' encoding='Shift_JIS'?><true/>",
     "Encoding Shift_JIS, which is not supported, at line 2"},
    {"\n<?xml version='1.0'", "XML declaration that is not closed, begun at line 2"},
    {"\n<!DOCTYPE plist [\n<!ENTITY a 'b'>", "Document type that is not closed, begun at line 2"},
    {"<!DOCTYPE plist\n'abc", "Quotation that is not closed, begun at line 2"},
    {"\n<!-- a -- >\n<true/>", "Comment that is not closed, begun at line 2"},
    {"<array>\n<?a >\n</array>", "Processing instruction that is not closed, begun at line 2"},
    {"<array><!DOCTYPE plist></array>", "Unknown tag <!DOCTYPE> at line 1"},
    {"<string>\n\xff</string>", "Ill-formed UTF-8 at line 2"},
    {"<string>\n\xc0\x80</string>", "Ill-formed UTF-8 at line 2"},
    {"<string>\n\xed\xa0\x80</string>", "Ill-formed UTF-8 at line 2"},
    {"<string>\n\xf4\x90\x80\x80</string>", "Ill-formed UTF-8 at line 2"},
    {"<true/>\n\xe2\x82", "Ill-formed UTF-8 at line 2"},
    {utf16(u"\ufeff<true/>\n\xd800!", true), "Ill-formed UTF-16 at line 2"},
    {utf16(u"\ufeff<true/>\n\xdc00", false), "Ill-formed UTF-16 at line 2"},
    // Tags
    {"<plist>\n<", "Tag that is not closed at line 2"},
    {"<plist>\n<array", "Tag that is not closed at line 2"},
    {"<plist>\n<array ", "Tag that is not closed at line 2"},
    {"<plist>\n<>", "Tag without a name at line 2"},
    {"<plist>\n< array>", "Tag without a name at line 2"},
    {"<plist>\n<array<dict>", "Malformed tag at line 2"},
    {"<plist>\n<array/ >", "Malformed tag at line 2"},
    {"<plist><array>\n</array/>", "Malformed tag at line 2"},
    {"<plist><array>\n</array a>", "Malformed closing tag at line 2"},
    {"<plist\nversion=\"1.0>", "Quotation that is not closed, begun at line 2"},
    {"<plist>\n<Array/></plist>", "Unknown tag <Array> at line 2"},
    {"<plist>\n<set/></plist>", "Unknown tag <set> at line 2"},
    {"<" + std::string(100, 'a') + ">", "Unknown tag <" + std::string(40, 'a') + "...> at line 1"},
    {"<" + repeated("\u20ac", 50) + ">", "Unknown tag <" + repeated("\u20ac", 13) + "...> at line 1"},
    // Containers
    {"<array>\n<true/>", "Unexpected end of the document at line 2"},
    {"<array>\n<true/></dict>", "Closing tag </dict> of an open <array> at line 2"},
    {"<dict>\n</array>", "Closing tag </array> of an open <dict> at line 2"},
    {"<array>\ntext</array>", "Unexpected character t at line 2"},
    {"<array>\n&amp;</array>", "Unexpected character & at line 2"},
    {"<array>\n<![CDATA[]]></array>", "Unknown tag <![CDATA[]]> at line 2"},
    {"<dict>\n<string>a</string></dict>", "Value without a key in a dictionary at line 2"},
    {"<dict><key>a</key>\n</dict>", "Key without a value in a dictionary at line 2"},
    {"<dict><key>a</key>\n<key>b</key></dict>",
     "Key that stands for a value or outside of a dictionary at line 2"},
    {"<array>\n<key>a</key></array>", "Key that stands for a value or outside of a dictionary at line 2"},
    {"<key>a</key>", "Key that stands for a value or outside of a dictionary at line 1"},
    {repeated("<array>", 512) + "\n<array/>", "Containers nested more than 512 deep at line 2"},
    {repeated("<array>", 1'000'000), "Containers nested more than 512 deep at line 1"},
    {repeated("<dict><key>a</key>\n", 1'000'000), "Containers nested more than 512 deep at line 513"},
    // Text
    {"<array>\n<string>a\n", "No closing tag of <string>, begun at line 2"},
    {"<array>\n<string>a</string", "Tag that is not closed at line 2"},
    {"<string>a\n</array>", "Closing tag </array> of an open <string> at line 2"},
    {"<string>a\n<b>", "Unexpected tag inside <string> at line 2"},
    {"<string>a\n<!b>", "Unexpected tag inside <string> at line 2"},
    {"<string>a\n<![CDATA[b]]</string>", "CDATA section that is not closed, begun at line 2"},
    {"<string>a\n&</string>", "Ampersand that begins no reference at line 2"},
    {"<string>a\n& ;</string>", "Reference to an unknown entity at line 2"},
    {"<string>a\n&nbsp;</string>", "Reference to an unknown entity at line 2"},
    {"<!DOCTYPE plist [<!ENTITY e 'a'>]>\n<string>&e;</string>", "Reference to an unknown entity at line 2"},
    {"<string>\n&#;</string>", "Reference to no character at line 2"},
    {"<string>\n&#x;</string>", "Reference to no character at line 2"},
    {"<string>\n&#12a;</string>", "Reference to no character at line 2"},
    {"<string>\n&#-1;</string>", "Reference to no character at line 2"},
    {"<string>\n&#xD800;</string>", "Reference to no character at line 2"},
    {"<string>\n&#x110000;</string>", "Reference to no character at line 2"},
    {"<string>\n&#99999999999999999999;</string>", "Reference to no character at line 2"},
    // Values
    {"<array>\n<integer/></array>", "Empty <integer> at line 2"},
    {"<array>\n<real/></array>", "Empty <real> at line 2"},
    {"<array>\n<date/></array>", "Empty <date> at line 2"},
    {"<true>\nno</true>", "Text inside <true> at line 1"},
    {"<false>a</false>", "Text inside <false> at line 1"},
    {"<array>\n<integer></integer></array>", "Integer that is malformed or out of range at line 2"},
    {"<integer>1.5</integer>", "Integer that is malformed or out of range at line 1"},
    {"<integer>1 2</integer>", "Integer that is malformed or out of range at line 1"},
    {"<integer>0x</integer>", "Integer that is malformed or out of range at line 1"},
    {"<integer>--1</integer>", "Integer that is malformed or out of range at line 1"},
    {"<integer>18446744073709551616</integer>", "Integer that is malformed or out of range at line 1"},
    {"<integer>-9223372036854775809</integer>", "Integer that is malformed or out of range at line 1"},
    {"<real></real>", "Real that is malformed or out of range at line 1"},
    {"<real>1,5</real>", "Real that is malformed or out of range at line 1"},
    {"<real>+-1</real>", "Real that is malformed or out of range at line 1"},
    {"<real>0x10</real>", "Real that is malformed or out of range at line 1"},
    {"<real>1e400</real>", "Real that is malformed or out of range at line 1"},
    {"<real>nan(1)</real>", "Real that is malformed or out of range at line 1"},
    {"<date>2001-01-01</date>", "Date that is malformed or out of range at line 1"},
    {"<date>2001-01-01T00:00:00</date>", "Date that is malformed or out of range at line 1"},
    {"<date>2001-01-01 00:00:00Z</date>", "Date that is malformed or out of range at line 1"},
    {"<date>2001-13-01T00:00:00Z</date>", "Date that is malformed or out of range at line 1"},
    {"<date>2001-00-01T00:00:00Z</date>", "Date that is malformed or out of range at line 1"},
    {"<date>2001-02-29T00:00:00Z</date>", "Date that is malformed or out of range at line 1"},
    {"<date>2001-04-31T00:00:00Z</date>", "Date that is malformed or out of range at line 1"},
    {"<date>2001-01-01T24:00:00Z</date>", "Date that is malformed or out of range at line 1"},
    {"<date>2001-01-01T00:60:00Z</date>", "Date that is malformed or out of range at line 1"},
    {"<date>-01-01T00:00:00Z</date>", "Date that is malformed or out of range at line 1"},
    {"<date>4294967295-01-01T00:00:00Z</date>", "Date that is malformed or out of range at line 1"},
    {"<date>99999999999999999999-01-01T00:00:00Z</date>", "Date that is malformed or out of range at line 1"},
    {"<data>A</data>", "Data that is no base64 at line 1"},
    {"<data>AAA</data>", "Data that is no base64 at line 1"},
    {"<data>AA=</data>", "Data that is no base64 at line 1"},
    {"<data>AAAA=</data>", "Data that is no base64 at line 1"},
    {"<data>AA===</data>", "Data that is no base64 at line 1"},
    {"<data>AA==AAAA</data>", "Data that is no base64 at line 1"},
    {"<data>====</data>", "Data that is no base64 at line 1"},
    {"<data>AA-_</data>", "Data that is no base64 at line 1"},
    {"<data>\u00fc</data>", "Data that is no base64 at line 1"},
};

TEST_F(XMLPropertyListReaderTest, EveryMalformedDocumentHasAProblemAndALine) {
    for (const Malformed& malformed : malformedDocuments)
        EXPECT_EQ(problemOf(malformed.document), malformed.problem) << malformed.document.substr(0, 200);
}

TEST_F(XMLPropertyListReaderTest, ADocumentCutAnywhereIsAProblemAndNoCrash) {
    const std::string path = testFile("../fuzz/corpus/XMLPropertyList/everything.plist");
    std::ifstream file(path, std::ios::binary);
    const std::string document{std::istreambuf_iterator<char>(file), {}};
    const std::size_t end = document.rfind("</plist>") + 8;
    ASSERT_GT(end, 500u);
    EXPECT_TRUE(bool(read(document.substr(0, end))));
    for (std::size_t length = 0; length < end; ++length) {
        // Of a size of its own, so that a read beyond the end does not go unnoticed.
        const std::vector<char> cut(document.begin(), document.begin() + static_cast<std::ptrdiff_t>(length));
        const std::string problem = problemOf(std::string_view(cut.data(), cut.size()));
        EXPECT_NE(problem.find(" at line "), std::string::npos) << length << ": " << problem;
    }
}

TEST_F(XMLPropertyListReaderTest, AByteChangedAnywhereDoesNoHarm) {
    const std::string document =
        "<plist><dict><key>a</key><array><integer>1</integer><real>2</real><data>AA==</data>"
        "<date>2001-01-01T00:00:00Z</date><true/><string>&lt;</string></array></dict></plist>";
    ASSERT_TRUE(bool(read(document)));
    for (std::size_t position = 0; position < document.size(); ++position)
        for (int byte = 0; byte < 256; ++byte) {
            std::string changed = document;
            changed[position] = static_cast<char>(byte);
            EXPECT_FALSE(problemOf(changed).empty());
        }
}

TEST_F(XMLPropertyListReaderTest, WhatFollowsThePropertyListIsNotLookedAt) {
    EXPECT_EQ(stringIn("<plist><string>a</string></plist> tail <"), "a");
    EXPECT_EQ(stringIn("<string>a</string> tail <"), "a");
}

TEST_F(XMLPropertyListReaderTest, PassesOverCommentsInstructionsAndTheDocumentType) {
    EXPECT_EQ(
        stringIn("<?xml version=\"1.0\"?>\n<!-- a > ' --><?b ?><!DOCTYPE plist [\n<!-- ]> ' -->\n<?c ]>?>"
                 "<!ENTITY d \"]>\">\n<!ENTITY e SYSTEM \"file:///etc/passwd\">]>"
                 "<!-- f --><plist version='>'><!-- g --><string>a<!-- h -->b<?i j?>c</string></plist>"),
        "abc");
}

TEST_F(XMLPropertyListReaderTest, ReplacesReferences) {
    EXPECT_EQ(stringIn("<string>&lt;&gt;&amp;&apos;&quot;&#65;&#x42;&#x1d11E;&#8364;</string>"),
              "<>&'\"AB\U0001D11E\u20ac");
    EXPECT_EQ(stringIn("<string>&amp;lt;</string>"), "&lt;");
}

TEST_F(XMLPropertyListReaderTest, ACharacterDataSectionIsPlainText) {
    EXPECT_EQ(stringIn("<string>a <![CDATA[<b> &lt; ]] ]]>c<![CDATA[]]></string>"), "a <b> &lt; ]] c");
}

TEST_F(XMLPropertyListReaderTest, KeepsWhiteSpaceAndLineEndsOfStrings) {
    EXPECT_EQ(stringIn("<string>\r\n a\r\t</string >"), "\r\n a\r\t");
    EXPECT_EQ(stringIn(bytes("<string>\0\1\x7f</string>")), bytes("\0\1\x7f"));
}

TEST_F(XMLPropertyListReaderTest, ReadsUTF8WithAMark) {
    EXPECT_EQ(stringIn("\xef\xbb\xbf<string>\u00fc</string>"), "\u00fc");
}

TEST_F(XMLPropertyListReaderTest, ReadsUTF16WithAMark) {
    const std::u16string_view document =
        u"\ufeff<?xml version='1.0' encoding='UTF-16'?><string>\u00fc\U0001D11E</string>";
    EXPECT_EQ(stringIn(utf16(document, true)), "\u00fc\U0001D11E");
    EXPECT_EQ(stringIn(utf16(document, false)), "\u00fc\U0001D11E");
    EXPECT_EQ(problemOf(utf16(document, true) + "a"), "UTF-16 text of an odd number of bytes at line 1");
}

TEST_F(XMLPropertyListReaderTest, TheEncodingDeclaredMayBeSpelledAnyWay) {
    for (const char* encoding : {"UTF-8", "utf-8", "Utf8", "US-ASCII"})
        EXPECT_EQ(
            stringIn("<?xml version='1.0' encoding = \"" + std::string(encoding) + "\"?><string>a</string>"),
            "a");
}

TEST_F(XMLPropertyListReaderTest, OfEqualKeysTheLastCounts) {
    const NSDictionary dictionary(read("<dict><key>a</key><string>1</string><key>b</key><string>2</string>"
                                       "<key>a</key><string>3</string></dict>"));
    EXPECT_EQ(dictionary.count(), 2u);
    EXPECT_EQ(text(dictionary.objectForKey("a"_ns)), "3");
}

TEST_F(XMLPropertyListReaderTest, ReadsIntegersOfEveryForm) {
    const auto integerIn = [](const char* text) {
        return as<NSNumber>(read("<integer>" + std::string(text) + "</integer>"));
    };
    EXPECT_EQ(integerIn(" \n+ 42\t").longLongValue(), 42);
    EXPECT_EQ(integerIn("007").longLongValue(), 7);
    EXPECT_EQ(integerIn("-0").longLongValue(), 0);
    EXPECT_EQ(integerIn("-0xFF").longLongValue(), -255);
    EXPECT_EQ(integerIn("-9223372036854775808").longLongValue(), std::numeric_limits<long long>::min());
    EXPECT_EQ(integerIn("0xFFFFFFFFFFFFFFFF").unsignedLongLongValue(), 0xFFFFFFFFFFFFFFFF);
    EXPECT_STREQ(integerIn("9223372036854775807").objCType(), "q");
    EXPECT_STREQ(integerIn("9223372036854775808").objCType(), "Q");
}

TEST_F(XMLPropertyListReaderTest, ReadsRealsOfEveryForm) {
    const auto realIn = [](const char* text) {
        const NSNumber number(read("<real>" + std::string(text) + "</real>"));
        EXPECT_STREQ(number.objCType(), "d");
        return number.doubleValue();
    };
    EXPECT_EQ(realIn(" 1.5 "), 1.5);
    EXPECT_EQ(realIn("+.5e-1"), 0.05);
    EXPECT_EQ(realIn("-7"), -7);
    EXPECT_EQ(realIn("4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
    for (const char* text : {"inf", "+infinity", "Infinity", "INF"})
        EXPECT_EQ(realIn(text), std::numeric_limits<double>::infinity()) << text;
    EXPECT_EQ(realIn("-infinity"), -std::numeric_limits<double>::infinity());
    EXPECT_NE(realIn("nan"), realIn("NaN")); // as no NaN equals another
}

TEST_F(XMLPropertyListReaderTest, ReadsDatesNearAndFar) {
    const auto secondsIn = [](const char* text) {
        return as<NSDate>(read("<date>" + std::string(text) + "</date>")).timeIntervalSinceReferenceDate();
    };
    EXPECT_EQ(secondsIn("2001-01-01T00:00:00Z"), 0);
    EXPECT_EQ(secondsIn(" 2000-12-31T23:59:59Z\n"), -1);
    EXPECT_EQ(secondsIn("1970-01-01T00:00:00Z"), -978307200);
    EXPECT_EQ(secondsIn("2000-02-29T12:34:56Z"), -26479504);
    EXPECT_EQ(secondsIn("2016-12-31T23:59:60Z"), 504921600);
    EXPECT_EQ(secondsIn("4001-01-01T00:00:00Z"), 63113904000);
    EXPECT_EQ(secondsIn("0001-01-01T00:00:00Z"), -63113904000);
    EXPECT_EQ(secondsIn("0000-01-01T00:00:00Z"), -63145526400);
    EXPECT_EQ(secondsIn("-001-12-31T00:00:00Z"), -63145612800);
    EXPECT_EQ(secondsIn("12001-01-01T00:00:00Z"), 315569520000);
}

TEST_F(XMLPropertyListReaderTest, ElementsThatMayBeEmpty) {
    EXPECT_EQ(stringIn("<string/>"), "");
    EXPECT_EQ(stringIn("<string></string>"), "");
    EXPECT_EQ(as<NSData>(read("<data/>")).length(), 0u);
    EXPECT_EQ(as<NSData>(read("<data> </data>")).length(), 0u);
    EXPECT_EQ(read("<true> </true>"), NSNumber::numberWithBool(true));
    EXPECT_EQ(as<NSArray>(read("<array />")).count(), 0u);
    EXPECT_EQ(as<NSDictionary>(read("<dict/>")).count(), 0u);
    EXPECT_EQ(as<NSDictionary>(read("<dict><key/><true/></dict>")).count(), 1u);
}

TEST_F(XMLPropertyListReaderTest, LongDocumentsTakeTimeInProportion) {
    // Each would take hours if a part of it were looked at again for every other.
    const int many = 200'000;
    EXPECT_EQ(as<NSArray>(read("<array>" + repeated("<!-- < -->", many) + "</array>")).count(), 0u);
    EXPECT_EQ(as<NSArray>(read("<array>" + repeated("<string>&amp;</string>", many) + "</array>")).count(),
              200'000u);
    EXPECT_EQ(stringIn("<string>" + repeated("<!---->&amp;", many) + "</string>").size(), 200'000u);
    EXPECT_EQ(problemOf("<string>" + repeated("&", many * 10)),
              "No closing tag of <string>, begun at line 1");
    EXPECT_EQ(problemOf(repeated("<!--", many * 10)), "Comment that is not closed, begun at line 1");
    EXPECT_EQ(problemOf("<!DOCTYPE " + repeated("[", many * 10)),
              "Document type that is not closed, begun at line 1");
}

// ---- Keys, which are kept for the dictionaries that follow

TEST_F(XMLPropertyListReaderTest, EqualKeysAreOneObject) {
    const auto list = as<NSArray>(read("<array><dict><key>name</key><true/></dict>"
                                       "<dict><key>name</key><false/></dict></array>"));
    const auto keyAt = [&](NSUInteger index) {
        return NSObject(as<NSDictionary>(list.objectAtIndex(index)).allKeys().objectAtIndex(0));
    };
    EXPECT_TRUE(keyAt(0) == keyAt(1));
}

// They differ where nothing is compared before the whole.
TEST_F(XMLPropertyListReaderTest, KeysThatDifferOnlyInsideAreToldApart) {
    const std::string entries = "<key>axbyc</key><string>1</string><key>aybxc</key><string>2</string>";
    const auto list =
        as<NSArray>(read("<array><dict>" + entries + "</dict><dict>" + entries + "</dict></array>"));
    for (const NSObject each : list) {
        EXPECT_EQ(text(as<NSDictionary>(each).objectForKey("axbyc"_ns)), "1");
        EXPECT_EQ(text(as<NSDictionary>(each).objectForKey("aybxc"_ns)), "2");
    }
}

// The units of the first are the bytes of the second.
TEST_F(XMLPropertyListReaderTest, KeysThatAreNoASCIIAreToldApart) {
    const auto texts = as<NSDictionary>(read("<dict><key>\xC3\x83\xC2\xA9</key><string>1</string>"
                                             "<key>\xC3\xA9</key><string>2</string>"
                                             "<key></key><string>3</string></dict>"));
    EXPECT_EQ(texts.count(), 3u);
    EXPECT_EQ(text(texts.objectForKey(u"\u00C3\u00A9"_ns)), "1");
    EXPECT_EQ(text(texts.objectForKey(u"\u00E9"_ns)), "2");
    EXPECT_EQ(text(texts.objectForKey(""_ns)), "3");
}

TEST_F(XMLPropertyListReaderTest, ALateEqualKeyReplacesTheValue) {
    const auto texts = as<NSDictionary>(read("<dict><key>a</key><string>1</string><key>b</key><true/>"
                                             "<key>a</key><string>2</string></dict>"));
    EXPECT_EQ(texts.count(), 2u);
    EXPECT_EQ(text(texts.objectForKey("a"_ns)), "2");
}

} // namespace
} // namespace tessarin::testing
