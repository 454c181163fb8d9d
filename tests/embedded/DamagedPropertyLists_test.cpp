// Property lists of every format, damaged in every way: each gives nil and an error that says where.
#include "PlatformTest.h"

#include <cstdint>
#include <regex>

using namespace std::string_literals;

namespace tessarin::testing {
namespace {

class DamagedPropertyListsTest : public PlatformTest {};

struct Damaged {
    const char* how;
    std::string document;
};

// ---- Binary documents

std::string number(std::uint64_t value, unsigned size) {
    std::string result;
    for (unsigned byte = size; byte-- > 0;)
        result.push_back(static_cast<char>(static_cast<unsigned char>(value >> 8 * byte)));
    return result;
}

constexpr std::uint64_t allBits = ~std::uint64_t{0};
constexpr std::uint64_t negative = std::uint64_t{1} << 63;

// Parts of a document whose numbers a test may change one by one. Where nothing is changed it is sound.
struct Binary {
    std::vector<std::string> objects;
    unsigned offsetSize = 1;
    unsigned referenceSize = 1;
    std::vector<std::uint64_t> offsets = {}; // those of the objects when there are none
    std::uint64_t writtenOffsetSize = 1, writtenReferenceSize = 1, objectCount = 0, topObject = 0;
    std::uint64_t tableStart = 0; // where the table is when it is 0

    std::string document() const {
        std::string result = "bplist00", table;
        for (std::size_t index = 0; index < objects.size(); ++index) {
            const std::uint64_t offset = index < offsets.size() ? offsets[index] : result.size();
            table += number(offset, offsetSize);
            result += objects[index];
        }
        const std::uint64_t start = tableStart ? tableStart : result.size();
        return result + table + std::string(6, '\0') + number(writtenOffsetSize, 1)
               + number(writtenReferenceSize, 1) + number(objectCount ? objectCount : objects.size(), 8)
               + number(topObject, 8) + number(start, 8);
    }
};

const std::string pair = "\xA2\x01\x02",
                  word = "\x51"s
                         "a",
                  one = "\x10\x01", entry = "\xD1\x01\x02";

std::string of(Binary binary) { return binary.document(); }
// A document whose first object is damaged.
std::string first(std::string object) { return of({.objects = {std::move(object), word, one}}); }

const Damaged binaryDocuments[] = {
    // The trailer
    {"offset size 0", of({.objects = {pair, word, one}, .writtenOffsetSize = 0})},
    {"offset size 9", of({.objects = {pair, word, one}, .writtenOffsetSize = 9})},
    {"offset size 255", of({.objects = {pair, word, one}, .writtenOffsetSize = 255})},
    {"offset size beyond the table", of({.objects = {pair, word, one}, .writtenOffsetSize = 2})},
    {"reference size 0", of({.objects = {pair, word, one}, .writtenReferenceSize = 0})},
    {"reference size 9", of({.objects = {pair, word, one}, .writtenReferenceSize = 9})},
    {"reference size beyond the objects", of({.objects = {pair, word, one}, .writtenReferenceSize = 8})},
    {"one object too many", of({.objects = {pair, word, one}, .objectCount = 4})},
    {"as many objects as no memory holds", of({.objects = {pair, word, one}, .objectCount = allBits})},
    {"a negative number of objects", of({.objects = {pair, word, one}, .objectCount = negative})},
    {"a number of objects that overflows", of({.objects = {pair, word, one}, .objectCount = negative >> 2})},
    {"fewer objects than referred to", of({.objects = {pair, word, one}, .objectCount = 2})},
    {"top object beyond the last", of({.objects = {pair, word, one}, .topObject = 3})},
    {"negative top object", of({.objects = {pair, word, one}, .topObject = allBits})},
    {"offset table in the magic", of({.objects = {pair, word, one}, .tableStart = 4})},
    {"offset table without objects before it", of({.objects = {pair, word, one}, .tableStart = 8})},
    {"offset table over an object", of({.objects = {pair, word, one}, .tableStart = 10})},
    {"offset table in the trailer", of({.objects = {pair, word, one}, .tableStart = 20})},
    {"offset table beyond the document", of({.objects = {pair, word, one}, .tableStart = 1 << 20})},
    {"negative offset table", of({.objects = {pair, word, one}, .tableStart = negative})},
    // Offsets
    {"offset in the magic", of({.objects = {pair, word, one}, .offsets = {8, 3}})},
    {"offset of the table", of({.objects = {pair, word, one}, .offsets = {8, 15}})},
    {"offset beyond the document", of({.objects = {pair, word, one}, .offsets = {8, 255}})},
    {"negative offset",
     of({.objects = {pair, word, one}, .offsetSize = 8, .offsets = {8, negative}, .writtenOffsetSize = 8})},
    {"objects that overlap", of({.objects = {"\xA1\xA1"s, one}, .offsets = {8, 9}})},
    // References
    {"reference beyond the last object", first("\xA2\x01\x03")},
    {"negative reference",
     of({.objects = {"\xA1" + number(negative, 8)}, .referenceSize = 8, .writtenReferenceSize = 8})},
    {"an array that holds itself", first("\xA2\x01"s + '\0')},
    {"two arrays that hold each other", of({.objects = {"\xA1\x01", "\xA1"s + '\0'}})},
    {"a dictionary that holds itself", first("\xD1\x01"s + '\0')},
    {"a dictionary that is its own key", first("\xD1"s + '\0' + '\x02')},
    {"a number for a key", first("\xD1\x02\x01")},
    {"data for a key", of({.objects = {entry, "\x40"s, one}})},
    // Counts and widths
    {"array beyond the objects", first("\xAE\x01\x02")},
    {"dictionary whose values are beyond the objects",
     of({.objects = {word, "\xD2"s + '\0'}, .topObject = 1})},
    {"array of as many as no memory holds", first("\xAF\x13" + number(allBits, 8))},
    {"dictionary of so many that doubling overflows", first("\xDF\x13" + number(negative, 8))},
    {"string beyond the objects", first("\x5F\x10\xFF" + "a"s)},
    {"string of so many units that doubling overflows", first("\x6F\x13" + number(negative, 8))},
    {"string with half a unit", of({.objects = {"\x61"s + '\0'}})},
    {"data beyond the objects", first("\x4F\x12" + number(0xFFFFFFFF, 4))},
    {"count that is cut off", of({.objects = {"\x4F\x13"s + '\0'}})},
    {"count that is missing", of({.objects = {"\x4F"s}})},
    {"count of 16 bytes", first("\x4F\x14" + std::string(16, '\0'))},
    {"count that is a string", first("\x5F\x51" + "a"s)},
    {"integer that is cut off", of({.objects = {"\x13"s + '\0'}})},
    {"integer of 32 bytes", first("\x15" + std::string(32, '\0'))},
    {"integer of 16 bytes above 2^64", first("\x14" + number(1, 8) + number(0, 8))},
    {"real of two bytes", first("\x21"s + std::string(2, '\0'))},
    {"real that is cut off", of({.objects = {"\x23"s + '\0'}})},
    {"date of four bytes", first("\x32" + std::string(4, '\0'))},
    {"UID above 32 bits", first("\x84" + number(std::uint64_t{1} << 32, 5))},
    {"ASCII that is none", first("\x51\xFF")},
    {"null", first("\0"s)},
    {"unknown kind", first("\x70"s)},
    {"unknown version", "bplist15" + of({.objects = {one}}).substr(8)},
    {"nothing but the magic", "bplist00"},
    {"nothing but a trailer", "bplist00" + std::string(32, '\0')},
};

// ---- XML documents

std::string plist(const std::string& contents) {
    return "<plist version=\"1.0\">\n" + contents + "</plist>\n";
}

const Damaged xmlDocuments[] = {
    {"element that is not closed", plist("<array>")},
    {"elements that overlap", plist("<array><string></array></string>")},
    {"closing tag of another element", plist("<array></dict>")},
    {"closing tag of nothing", plist("</array>")},
    {"nothing inside", plist("")},
    {"two objects", plist("<true/><true/>")},
    {"unknown element", plist("<set/>")},
    {"text between elements", plist("<array>text</array>")},
    {"value without a key", plist("<dict><true/></dict>")},
    {"key without a value", plist("<dict><key>k</key></dict>")},
    {"two keys", plist("<dict><key>k</key><key>l</key></dict>")},
    {"key that holds an element", plist("<dict><key><true/></key><true/></dict>")},
    {"key in an array", plist("<array><key>k</key></array>")},
    {"integer that is none", plist("<integer>1e5</integer>")},
    {"integer above 2^64", plist("<integer>18446744073709551616</integer>")},
    {"integer below -2^63", plist("<integer>-9223372036854775809</integer>")},
    {"empty integer", plist("<integer/>")},
    {"real that is none", plist("<real>1,5</real>")},
    {"date that is none", plist("<date>yesterday</date>")},
    {"date of a month 13", plist("<date>2001-13-01T00:00:00Z</date>")},
    {"data that is no base64", plist("<data>a*==</data>")},
    {"data with half a byte", plist("<data>a</data>")},
    {"external entity",
     "<!DOCTYPE plist [<!ENTITY file SYSTEM \"file:///etc/passwd\">]>\n" + plist("<string>&file;</string>")},
    {"external entity in place of an object",
     "<!DOCTYPE plist [<!ENTITY file SYSTEM \"file:///etc/passwd\">]>\n" + plist("&file;")},
    {"entities that multiply", "<!DOCTYPE plist [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
                               "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\">]>\n"
                                   + plist("<string>&c;</string>")},
    {"entity that is not closed", plist("<string>&amp</string>")},
    {"reference to a surrogate", plist("<string>&#xD800;</string>")},
    {"reference beyond Unicode", plist("<string>&#x110000;</string>")},
    {"document type that is not closed", "<!DOCTYPE plist [" + plist("<true/>")},
    {"comment that is not closed", "<!-- " + plist("<true/>")},
    {"CDATA that is not closed", plist("<string><![CDATA[a</string>")},
    {"encoding that is not supported", "<?xml version=\"1.0\" encoding=\"EBCDIC\"?>" + plist("<true/>")},
    {"Latin 1", plist("<string>\xE9</string>")},
    {"over-long UTF-8", plist("<string>\xC0\x80</string>")},
    {"surrogates in UTF-8", plist("<string>\xED\xA0\x80</string>")},
    {"half a unit of UTF-16", "\xFF\xFE<\0t"s},
    {"unpaired surrogate in UTF-16", "\xFE\xFF\xDC\0\0a"s},
};

// ---- Documents of the old text form

const Damaged oldDocuments[] = {
    {"array that is not closed", "(a, b"},
    {"array without a comma", "(a b)"},
    {"array with a comma alone", "(,)"},
    {"array that ends as a dictionary", "(a}"},
    {"dictionary that is not closed", "{a = b;"},
    {"dictionary that ends as an array", "{a = b;)"},
    {"entry without a semicolon", "{a = b}"},
    {"entry without a value", "{a = ;}"},
    {"entry without a key", "{= b;}"},
    {"key that is an array", "{(a) = b;}"},
    {"key that is data", "{<00> = b;}"},
    {"key without a value at the end", "{a}"},
    {"string that is not closed", "(\"a)"},
    {"string that ends in a backslash", "\"a\\"},
    {"escape without digits", "\"\\Uxyz\""},
    {"data that is not closed", "<0fbd77"},
    {"data with half a byte", "<0fb>"},
    {"data that is no digits", "(<0g>)"},
    {"number of another form", "(<*I5>)"},
    {"comment that is not closed", "/* a"},
    {"something behind the array", "(a) b"},
    {"something behind the data", "<00> <00>"},
    {"two words", "a b"},
    {"word that is none", "{a = \xC3\xA9;}"},
    {"a control character", "(a,\x01)"},
    {"strings file without a semicolon", "\"a\" = \"b\""},
    {"strings file with a bracket", "\"a\" = \"b\"; }"},
    {"Latin 1", "\"\xE9\""},
    {"an unprintable beginning", "\0"s},
};

void expectToBeRefused(const Damaged& damaged) {
    const AutoreleasePool pool;
    for (const NSPropertyListMutabilityOptions options :
         {NSPropertyListImmutable, NSPropertyListMutableContainersAndLeaves}) {
        NSError error;
        const NSObject read = NSPropertyListSerialization::propertyListWithData_options_format_error(
            NSData::dataWithBytes_length(damaged.document.data(), damaged.document.size()), options, nullptr,
            &error);
        EXPECT_EQ(read, nil) << damaged.how;
        ASSERT_TRUE(bool(error)) << damaged.how;
        EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain") << damaged.how;
        EXPECT_EQ(error.code(), 3840) << damaged.how;
        const std::string problem = text(error.userInfo().objectForKey(NSDebugDescriptionErrorKey()));
        EXPECT_TRUE(std::regex_search(problem, std::regex("at (line|offset) [0-9]+$")))
            << damaged.how << ": " << problem;
    }
}

TEST_F(DamagedPropertyListsTest, BinaryOnesAreRefused) {
    for (const Damaged& damaged : binaryDocuments) expectToBeRefused(damaged);
}

TEST_F(DamagedPropertyListsTest, XMLOnesAreRefused) {
    for (const Damaged& damaged : xmlDocuments) expectToBeRefused(damaged);
}

TEST_F(DamagedPropertyListsTest, OldOnesAreRefused) {
    for (const Damaged& damaged : oldDocuments) expectToBeRefused(damaged);
}

TEST_F(DamagedPropertyListsTest, TheDocumentsAreReadWhereNothingIsDamaged) {
    for (const std::string& sound : {of({.objects = {pair, word, one}}), of({.objects = {entry, word, one}}),
                                     plist("<array><true/></array>"), "{a = (b, <00>, \"c\");}"s})
        EXPECT_TRUE(bool(NSPropertyListSerialization::propertyListWithData_options_format_error(
            NSData::dataWithBytes_length(sound.data(), sound.size()), 0, nullptr, nullptr)))
            << sound;
}

// ---- Documents that are cut off

NSDictionary everything() {
    const NSMutableDictionary list = NSMutableDictionary::dictionary();
    list.setObject_forKey(NSArray::arrayOf("text"_ns, u"\u20ac\U0001F600"_ns, NSNumber::numberWithInt(-1)),
                          "array"_ns);
    list.setObject_forKey(NSData::dataWithBytes_length("abcd", 4), "data"_ns);
    list.setObject_forKey(NSDate::dateWithTimeIntervalSinceReferenceDate(1), "date"_ns);
    list.setObject_forKey(NSNumber::numberWithDouble(0.5), "real"_ns);
    list.setObject_forKey(NSNumber::numberWithUnsignedLongLong(~0ULL), "large"_ns);
    list.setObject_forKey(NSDictionary::dictionary(), "empty"_ns);
    return list;
}

std::string written(NSPropertyListFormat format) {
    const NSData data = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        everything(), format, 0, nullptr);
    return {static_cast<const char*>(data.bytes()), data.length()};
}

TEST_F(DamagedPropertyListsTest, ABinaryOneCutOffAnywhereIsRefused) {
    const std::string whole = written(NSPropertyListBinaryFormat_v1_0);
    // With fewer bytes than the magic it is a word of the old text form.
    for (std::size_t length = 6; length < whole.size(); ++length)
        expectToBeRefused({"cut off", whole.substr(0, length)});
}

TEST_F(DamagedPropertyListsTest, AnXMLOneCutOffAnywhereIsRefused) {
    const std::string whole = written(NSPropertyListXMLFormat_v1_0);
    // All but the line feed at the end is needed.
    for (std::size_t length = 1; length < whole.size() - 1; ++length)
        expectToBeRefused({"cut off", whole.substr(0, length)});
}

TEST_F(DamagedPropertyListsTest, AnOldOneCutOffAnywhereIsRefused) {
    const std::string whole = "{ \"a b\" = (c, 'd\\U20ac', <0fbd 77>); /* e */ f = { g; }; }";
    for (std::size_t length = 1; length < whole.size(); ++length)
        expectToBeRefused({"cut off", whole.substr(0, length)});
}

} // namespace
} // namespace tessarin::testing
