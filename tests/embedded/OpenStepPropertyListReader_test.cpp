// Property lists of the old text form.
#include "platform/embedded/foundation/OpenStepPropertyListReader.h"

#include "PlatformTest.h"
#include "platform/embedded/runtime/ThreadState.h"

using namespace std::string_view_literals;

namespace tessarin::testing {
namespace {

class OpenStepPropertyListTest : public PlatformTest {};

id read(std::string_view document, NSPropertyListMutabilityOptions options = NSPropertyListImmutable) {
    return NSPropertyListSerialization::propertyListWithData_options_format_error(
        NSData::dataWithBytes_length(document.data(), document.size()), options, nullptr, nullptr);
}
std::string stringIn(std::string_view document) { return text(kindOf<NSString>(read(document))); }
Texts textsIn(std::string_view document) { return texts(kindOf<NSArray>(read(document))); }
std::string bytesIn(std::string_view document) {
    const NSData data = kindOf<NSData>(read(document));
    return data ? std::string(static_cast<const char*>(data.bytes()), data.length()) : "(nil)";
}
std::string problemOf(std::string_view document) {
    NSError error;
    EXPECT_EQ(NSPropertyListSerialization::propertyListWithData_options_format_error(
                  NSData::dataWithBytes_length(document.data(), document.size()), 0, nullptr, &error),
              nil);
    return text(error.userInfo().objectForKey(NSDebugDescriptionErrorKey()));
}

NSPropertyListFormat formatOf(std::string_view document) {
    NSPropertyListFormat format{};
    NSPropertyListSerialization::propertyListWithData_options_format_error(
        NSData::dataWithBytes_length(document.data(), document.size()), 0, &format, nullptr);
    return format;
}

// ---- Formats

TEST_F(OpenStepPropertyListTest, IsToldFromTheOthers) {
    for (const auto document : {"{a = b;}"sv, "(a)"sv, "a"sv, " <0fbd77> "sv, "< >"sv, "<fade>"sv,
                                "// <plist>\n\"a\" = \"b\";"sv, "/* */ <00>"sv})
        EXPECT_EQ(formatOf(document), NSPropertyListOpenStepFormat) << document;
    for (const auto document :
         {"<plist><true/></plist>"sv, " \n<dict/>"sv, "<!-- --><data>AAAA</data>"sv,
          "<date>2001-01-01T00:00:00Z</date>"sv, "<\0t\0r\0u\0e\0/\0>\0"sv, "\0<\0t\0r\0u\0e\0/\0>"sv,
          "\xFF\xFE<\0t\0r\0u\0e\0/\0>\0"sv, "\xFE\xFF\0<\0t\0r\0u\0e\0/\0>"sv, "\xEF\xBB\xBF<true/>"sv})
        EXPECT_EQ(formatOf(document), NSPropertyListXMLFormat_v1_0) << document;
}

TEST_F(OpenStepPropertyListTest, MayBeOfSeveralEncodings) {
    EXPECT_EQ(stringIn("\"\u20ac\""), "\u20ac");
    EXPECT_EQ(stringIn("\xEF\xBB\xBF\"\u20ac\""), "\u20ac");
    EXPECT_EQ(stringIn("\xFF\xFE\"\0\xAC\x20\"\0"sv), "\u20ac");
    EXPECT_EQ(stringIn("\xFE\xFF\0\"\x20\xAC\0\""sv), "\u20ac");
}

// ---- Strings

TEST_F(OpenStepPropertyListTest, AWordNeedsNoQuotationMarks) {
    EXPECT_EQ(stringIn("word"), "word");
    EXPECT_EQ(stringIn("/usr/lib:$HOME/a-b_c.d9"), "/usr/lib:$HOME/a-b_c.d9");
    EXPECT_EQ(stringIn("9"), "9");
}

TEST_F(OpenStepPropertyListTest, StringsAreQuotedEitherWay) {
    EXPECT_EQ(stringIn("\"a 'b' c\""), "a 'b' c");
    EXPECT_EQ(stringIn("'a \"b\" c'"), "a \"b\" c");
    EXPECT_EQ(stringIn("\"\""), "");
    EXPECT_EQ(stringIn("\"a\nb\""), "a\nb");
}

TEST_F(OpenStepPropertyListTest, EscapesOfC) {
    EXPECT_EQ(stringIn(R"("\a\b\f\n\r\t\v\"\'\\")"), "\a\b\f\n\r\t\v\"'\\");
    EXPECT_EQ(stringIn("\"a\\\nb\""), "a\nb");
}

TEST_F(OpenStepPropertyListTest, EscapesWithoutAMeaningStandForThemselves) {
    EXPECT_EQ(stringIn(R"("\q\ \/")"), "q /");
    EXPECT_EQ(stringIn("\"\\\u20ac\""), "\u20ac");
}

TEST_F(OpenStepPropertyListTest, HexadecimalEscapesAreUnits) {
    EXPECT_EQ(stringIn(R"("\U20ac\u00e9\U41-\Ud83d\ude00\U00411")"), "\u20ac\u00e9A-\U0001F600A1");
    EXPECT_EQ(static_cast<std::u16string>(as<NSString>(read(R"("\Ud83dx")"))),
              std::u16string({0xD83D, u'x'}));
}

TEST_F(OpenStepPropertyListTest, OctalEscapesAreOfTheNextStepEncoding) {
    EXPECT_EQ(stringIn(R"("\101\60\0601")"), "A001");
    EXPECT_EQ(stringIn(R"("\341\256\200")"), "\u00c6\ufb01\u00a0");
    EXPECT_EQ(stringIn(R"("\377")"), "\ufffd");
}

// ---- Data

TEST_F(OpenStepPropertyListTest, DataIsHexadecimal) {
    EXPECT_EQ(bytesIn("<61 626364\n6 5>"), "abcde");
    EXPECT_EQ(bytesIn("<FFfe>"), "\xFF\xFE");
    EXPECT_EQ(bytesIn("<>"), "");
}

// ---- Containers

TEST_F(OpenStepPropertyListTest, ArraysAreInParentheses) {
    EXPECT_EQ(textsIn("()"), Texts{});
    EXPECT_EQ(textsIn("(a)"), Texts{"a"});
    EXPECT_EQ(textsIn("( a ,\"b\", )"), (Texts{"a", "b"}));
    EXPECT_EQ(NSArray(read("((), ((a)), {})")).count(), 3u);
}

TEST_F(OpenStepPropertyListTest, DictionariesAreInBraces) {
    const NSDictionary read = testing::read("{ a = 1; \"b c\" = (2); d = { e = <00>; }; }");
    EXPECT_EQ(read.count(), 3u);
    EXPECT_EQ(text(read.objectForKey("a"_ns)), "1");
    EXPECT_EQ(texts(read.objectForKey("b c"_ns)), Texts{"2"});
    EXPECT_EQ(as<NSDictionary>(read.objectForKey("d"_ns)).count(), 1u);
    EXPECT_EQ(as<NSDictionary>(testing::read("{}")).count(), 0u);
}

TEST_F(OpenStepPropertyListTest, AKeyMayBeItsOwnValue) {
    EXPECT_EQ(text(as<NSDictionary>(read("{ a; b = c; }")).objectForKey("a"_ns)), "a");
}

TEST_F(OpenStepPropertyListTest, TheLastOfEqualKeysCounts) {
    EXPECT_EQ(text(as<NSDictionary>(read("{ a = 1; a = 2; }")).objectForKey("a"_ns)), "2");
}

TEST_F(OpenStepPropertyListTest, TheOutermostDictionaryNeedsNoBraces) {
    const NSDictionary read = testing::read("/* file */ \"a\" = \"1\";\nb = {c = (d);}; \"own\";");
    EXPECT_EQ(read.count(), 3u);
    EXPECT_EQ(text(read.objectForKey("own"_ns)), "own");
}

TEST_F(OpenStepPropertyListTest, WhiteSpaceIsAnEmptyDictionary) {
    for (const auto document : {" \n"sv, "// nothing"sv, "/* */"sv, "\xEF\xBB\xBF"sv})
        EXPECT_TRUE(as<NSObject>(read(document)).isEqual(NSDictionary::dictionary())) << document;
}

TEST_F(OpenStepPropertyListTest, CommentsAndSeparatorsOfLinesAreSpace) {
    EXPECT_EQ(textsIn("( // one\n a, /* two ** // */ b\u2028,\u2029 c\r)"), (Texts{"a", "b", "c"}));
    EXPECT_EQ(textsIn("(a//\n)"), Texts{"a//"}); // a word may hold slashes
}

TEST_F(OpenStepPropertyListTest, ContainersAndLeavesAreAsMutableAsAsked) {
    const auto isOf = [](NSObject object, Class classObject) { return object.isKindOfClass(classObject); };
    const NSArray immutable = read("({}, a)");
    EXPECT_FALSE(isOf(immutable, NSMutableArray::classObject()));
    const NSArray containers = read("({}, a)", NSPropertyListMutableContainers);
    EXPECT_TRUE(isOf(containers, NSMutableArray::classObject()));
    EXPECT_TRUE(isOf(containers.objectAtIndex(0), NSMutableDictionary::classObject()));
    EXPECT_FALSE(isOf(containers.objectAtIndex(1), NSMutableString::classObject()));
    const NSDictionary leaves = read("{a; \"b\\n\" = <00>;}", NSPropertyListMutableContainersAndLeaves);
    EXPECT_TRUE(isOf(leaves.objectForKey("a"_ns), NSMutableString::classObject()));
    EXPECT_TRUE(isOf(leaves.objectForKey("b\n"_ns), "NSMutableData"_class));
    for (const NSObject key : leaves) EXPECT_FALSE(isOf(key, NSMutableString::classObject()));
}

// ---- Problems

TEST_F(OpenStepPropertyListTest, AProblemIsToldWithItsLine) {
    EXPECT_EQ(problemOf("(a,\n b\n c)"), "Unexpected character c at line 3");
    EXPECT_EQ(problemOf("\n(a,\n"), "Array that is not closed, begun at line 2");
    EXPECT_EQ(problemOf("{a = b;"), "Dictionary that is not closed, begun at line 1");
    EXPECT_EQ(problemOf("{a = b\n}"), "Missing semicolon at line 2");
    EXPECT_EQ(problemOf("{a b;}"), "Key without a value at line 1");
    EXPECT_EQ(problemOf("{a =\n"), "Unexpected end of the document at line 2");
    EXPECT_EQ(problemOf("(\n\"a"), "String that is not closed, begun at line 2");
    EXPECT_EQ(problemOf("\n<0>"), "Data with half a byte, begun at line 2");
    EXPECT_EQ(problemOf("(\n<0g>)"), "Unexpected character g at line 2");
    EXPECT_EQ(problemOf("\n/* a"), "Comment that is not closed, begun at line 2");
    EXPECT_EQ(problemOf("(a,\n\x01)"), "Unexpected character U+0001 at line 2");
    EXPECT_EQ(problemOf("(a) \u20ac"), "Unexpected character \u20ac at line 1");
    EXPECT_EQ(problemOf("\"\\Ux\""), "Escape without digits at line 1");
}

TEST_F(OpenStepPropertyListTest, ContainersMayBeNested512Deep) {
    const auto nested = [](std::size_t levels, char open, char close) {
        std::string document;
        for (std::size_t level = 0; level < levels; ++level)
            document += open == '{' && level > 0 ? "a={" : std::string(1, open);
        for (std::size_t level = 0; level < levels; ++level)
            document += close == '}' && level > 0 ? "};" : std::string(1, close);
        return document;
    };
    EXPECT_TRUE(bool(read(nested(512, '(', ')'))));
    EXPECT_EQ(problemOf(nested(513, '(', ')')), "Containers nested more than 512 deep at line 1");
    EXPECT_EQ(problemOf(std::string(1'000'000, '(')), "Containers nested more than 512 deep at line 1");
}

TEST_F(OpenStepPropertyListTest, TheTimeIsLinear) {
    // Each key without a value is read twice, and each line counted once at most.
    std::string document;
    for (int entry = 0; entry < 200'000; ++entry)
        document += "\"key \\U0041 " + std::to_string(entry) + "\";\n";
    EXPECT_EQ(as<NSDictionary>(read(document)).count(), 200'000u);
    document += "{";
    EXPECT_EQ(problemOf(document), "Unexpected character { at line 200001");
}

TEST_F(OpenStepPropertyListTest, NothingIsLeftToTheAutoreleasePoolOfTheCaller) {
    std::string document = "(\"";
    for (int escape = 0; escape < 1000; ++escape) document += "\\344";
    document += "\", <00>, {a = b;})";
    const std::size_t before = embedded::ThreadState::current()->openPool();
    const Retained<NSObject> list =
        embedded::readOpenStepPropertyList(document, NSPropertyListMutableContainersAndLeaves);
    EXPECT_EQ(embedded::ThreadState::current()->openPool(), before);
    EXPECT_EQ(as<NSArray>(list).count(), 3u);
}

} // namespace
} // namespace tessarin::testing
