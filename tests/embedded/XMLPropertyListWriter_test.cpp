#include "platform/embedded/foundation/XMLPropertyListWriter.h"

#include "PlatformTest.h"
#include "platform/services/PropertyListError.h"

#include <limits>

namespace tessarin::testing {
namespace {

using namespace tessarin::embedded;

class XMLPropertyListWriterTest : public PlatformTest {};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const std::string documentBegin = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                  "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                  "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                  "<plist version=\"1.0\">\n";

// What a document holds between <plist> and </plist>.
std::string bodyOf(NSObject object) {
    const std::string document = writeXMLPropertyList(object);
    EXPECT_TRUE(document.starts_with(documentBegin)) << document;
    EXPECT_TRUE(document.ends_with("\n</plist>\n")) << document;
    return document.substr(documentBegin.size(), document.size() - documentBegin.size() - 9);
}
std::string realOf(double value) { return bodyOf(NSNumber::numberWithDouble(value)); }
std::string dateOf(double seconds) { return bodyOf(NSDate::dateWithTimeIntervalSinceReferenceDate(seconds)); }
NSData dataOfZeros(std::size_t size) {
    const std::string zeros(size, '\0');
    return NSData::dataWithBytes_length(zeros.data(), zeros.size());
}

TEST_F(XMLPropertyListWriterTest, WritesADocumentToTheByte) {
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    dictionary.setObject_forKey(NSArray::arrayOf(NSNumber::numberWithInt(-1), NSNumber::numberWithBool(true),
                                                 NSArray::array(), NSDictionary::dictionary()),
                                "list"_ns);
    dictionary.setObject_forKey("a < b"_ns, "Name & more"_ns);
    dictionary.setObject_forKey(NSData::dataWithBytes_length("abcd", 4), "data"_ns);
    EXPECT_EQ(writeXMLPropertyList(dictionary), documentBegin
                                                    + "<dict>\n"
                                                      "\t<key>Name &amp; more</key>\n"
                                                      "\t<string>a &lt; b</string>\n"
                                                      "\t<key>data</key>\n"
                                                      "\t<data>\n"
                                                      "\tYWJjZA==\n"
                                                      "\t</data>\n"
                                                      "\t<key>list</key>\n"
                                                      "\t<array>\n"
                                                      "\t\t<integer>-1</integer>\n"
                                                      "\t\t<true/>\n"
                                                      "\t\t<array/>\n"
                                                      "\t\t<dict/>\n"
                                                      "\t</array>\n"
                                                      "</dict>\n"
                                                      "</plist>\n");
}

TEST_F(XMLPropertyListWriterTest, SortsKeysBySixteenBitUnits) {
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    // U+FF5E is less than U+10000 as a character, and greater than its surrogates as a unit.
    for (const NSString key :
         {u"\uff5e"_ns, u"\U00010000"_ns, "b"_ns, "a"_ns, "B"_ns, ""_ns, "aa"_ns, "10"_ns, "9"_ns})
        dictionary.setObject_forKey(NSNumber::numberWithBool(true), key);
    std::string expected = "<dict>\n";
    for (const char* key : {"", "10", "9", "B", "a", "aa", "b", "\U00010000", "\uff5e"})
        expected += "\t<key>" + std::string(key) + "</key>\n\t<true/>\n";
    EXPECT_EQ(bodyOf(dictionary), expected + "</dict>\n");
}

TEST_F(XMLPropertyListWriterTest, EscapesWhatIsMarkupOnly) {
    EXPECT_EQ(bodyOf("<a href=\"b'\">&amp;\r\n\t"_ns),
              "<string>&lt;a href=\"b'\"&gt;&amp;amp;\r\n\t</string>\n");
    EXPECT_EQ(bodyOf(""_ns), "<string></string>\n");
}

TEST_F(XMLPropertyListWriterTest, AnUnpairedSurrogateBecomesTheReplacementCharacter) {
    const unichar units[] = {u'a', 0xD834, u'b', 0xDD1E, 0xD834, 0xDD1E};
    EXPECT_EQ(bodyOf(NSString::stringWithCharacters_length(units, 6)),
              "<string>a\uFFFDb\uFFFD\U0001D11E</string>\n");
}

TEST_F(XMLPropertyListWriterTest, WritesIntegersAndBooleans) {
    EXPECT_EQ(bodyOf(NSNumber::numberWithInt(0)), "<integer>0</integer>\n");
    EXPECT_EQ(bodyOf(NSNumber::numberWithLongLong(std::numeric_limits<long long>::min())),
              "<integer>-9223372036854775808</integer>\n");
    EXPECT_EQ(bodyOf(NSNumber::numberWithUnsignedLongLong(std::numeric_limits<unsigned long long>::max())),
              "<integer>18446744073709551615</integer>\n");
    EXPECT_EQ(bodyOf(NSNumber::numberWithBool(true)), "<true/>\n");
    EXPECT_EQ(bodyOf(NSNumber::numberWithBool(false)), "<false/>\n");
}

TEST_F(XMLPropertyListWriterTest, WritesRealsWithSeventeenDigits) {
    EXPECT_EQ(realOf(1), "<real>1</real>\n");
    EXPECT_EQ(realOf(0), "<real>0.0</real>\n");
    EXPECT_EQ(realOf(-0.0), "<real>0.0</real>\n");
    EXPECT_EQ(realOf(0.1), "<real>0.10000000000000001</real>\n");
    EXPECT_EQ(bodyOf(NSNumber::numberWithFloat(0.1f)), "<real>0.10000000149011612</real>\n");
    EXPECT_EQ(realOf(-1e300), "<real>-1.0000000000000001e+300</real>\n");
    EXPECT_EQ(realOf(1e20), "<real>1e+20</real>\n");
    EXPECT_EQ(realOf(0.00001), "<real>1.0000000000000001e-05</real>\n");
    EXPECT_EQ(realOf(infinity), "<real>+infinity</real>\n");
    EXPECT_EQ(realOf(-infinity), "<real>-infinity</real>\n");
    EXPECT_EQ(realOf(notANumber), "<real>nan</real>\n");
}

TEST_F(XMLPropertyListWriterTest, WritesDatesRoundedDownToASecond) {
    EXPECT_EQ(dateOf(0), "<date>2001-01-01T00:00:00Z</date>\n");
    EXPECT_EQ(dateOf(0.999), "<date>2001-01-01T00:00:00Z</date>\n");
    EXPECT_EQ(dateOf(-0.001), "<date>2000-12-31T23:59:59Z</date>\n");
    EXPECT_EQ(dateOf(-26479504), "<date>2000-02-29T12:34:56Z</date>\n");
    EXPECT_EQ(dateOf(63113904000), "<date>4001-01-01T00:00:00Z</date>\n");
    EXPECT_EQ(dateOf(-63114076800), "<date>0000-12-30T00:00:00Z</date>\n");
    EXPECT_EQ(dateOf(-63145612800), "<date>-001-12-31T00:00:00Z</date>\n");
    EXPECT_EQ(dateOf(315569520000), "<date>12001-01-01T00:00:00Z</date>\n");
}

TEST_F(XMLPropertyListWriterTest, ADateWithoutASecondOfItsOwnIsAProblem) {
    EXPECT_FALSE(dateOf(0x1p53).empty());
    for (const double seconds : {0x1p54, -0x1p54, infinity, -infinity, notANumber})
        EXPECT_THROW(static_cast<void>(dateOf(seconds)), PropertyListProblem) << seconds;
}

TEST_F(XMLPropertyListWriterTest, WritesDataInLinesOfSeventySixColumns) {
    EXPECT_EQ(bodyOf(NSData::data()), "<data>\n</data>\n");
    EXPECT_EQ(bodyOf(dataOfZeros(1)), "<data>\nAA==\n</data>\n");
    EXPECT_EQ(bodyOf(dataOfZeros(57)), "<data>\n" + std::string(76, 'A') + "\n</data>\n");
    EXPECT_EQ(bodyOf(dataOfZeros(59)), "<data>\n" + std::string(76, 'A') + "\nAAA=\n</data>\n");
    // A tab counts as eight columns.
    EXPECT_EQ(bodyOf(NSArray::arrayOf(dataOfZeros(54))),
              "<array>\n\t<data>\n\t" + std::string(68, 'A') + "\n\tAAAA\n\t</data>\n</array>\n");
}

TEST_F(XMLPropertyListWriterTest, DeepDataKeepsLinesOfTwelve) {
    NSObject nested = dataOfZeros(12);
    for (int level = 0; level < 10; ++level) nested = NSArray::arrayOf(nested);
    const std::string eight(8, '\t');
    const std::string ten(10, '\t');
    EXPECT_NE(bodyOf(nested).find("\n" + ten + "<data>\n" + eight + "AAAAAAAAAAAA\n" + eight + "AAAA\n" + ten
                                  + "</data>\n"),
              std::string::npos);
}

TEST_F(XMLPropertyListWriterTest, IndentsNoDeeperThan512Levels) {
    NSObject nested = "a"_ns;
    for (int level = 0; level < 600; ++level) nested = NSArray::arrayOf(nested);
    EXPECT_NE(bodyOf(nested).find("\n" + std::string(512, '\t') + "<string>a</string>\n"), std::string::npos);
}

} // namespace
} // namespace tessarin::testing
