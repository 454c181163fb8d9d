#include "PlatformTest.h"

#include <cmath>
#include <limits>

namespace tessarin::testing {
namespace {

class NSPropertyListSerializationTest : public PlatformTest {};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

NSData written(NSObject propertyList, NSError* error = nullptr) {
    return NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        propertyList, NSPropertyListXMLFormat_v1_0, 0, error);
}

id readBack(NSData data, NSPropertyListMutabilityOptions options = NSPropertyListImmutable,
            NSError* error = nullptr) {
    return NSPropertyListSerialization::propertyListWithData_options_format_error(data, options, nullptr,
                                                                                  error);
}

// What is read from a document whose <plist> element has those contents.
id read(std::string_view contents, NSPropertyListMutabilityOptions options = NSPropertyListImmutable,
        NSError* error = nullptr) {
    const std::string document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                 "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                 "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                 "<plist version=\"1.0\">\n"
                                 + std::string(contents) + "\n</plist>\n";
    return readBack(NSData::dataWithBytes_length(document.data(), document.size()), options, error);
}

bool isBoolean(NSObject object) {
    const char kind = as<NSNumber>(object).objCType()[0];
    return kind == 'c' || kind == 'C' || kind == 'B';
}

bool isMutable(NSObject object) {
    return object.isKindOfClass(NSMutableArray::classObject())
           || object.isKindOfClass(NSMutableDictionary::classObject())
           || object.isKindOfClass(NSMutableString::classObject())
           || object.isKindOfClass("NSMutableData"_class);
}

void expectToComeBackEqual(NSObject object) {
    const NSData document = written(object);
    ASSERT_TRUE(bool(document)) << object;
    const NSObject back = readBack(document);
    EXPECT_TRUE(back.isEqual(object)) << back << " for " << object;
}

TEST_F(NSPropertyListSerializationTest, EveryKindComesBackEqual) {
    const NSObject objects[] = {
        ""_ns,
        "a < b > c & d \" ' ]]>"_ns,
        u"gr\u00fc\u00dfe \u20ac"_ns,
        NSNumber::numberWithBool(true),
        NSNumber::numberWithBool(false),
        NSNumber::numberWithInt(0),
        NSNumber::numberWithInt(-1),
        NSNumber::numberWithLongLong(std::numeric_limits<long long>::min()),
        NSNumber::numberWithLongLong(std::numeric_limits<long long>::max()),
        NSNumber::numberWithDouble(0.1),
        NSNumber::numberWithDouble(-1.0 / 3),
        NSDate::dateWithTimeIntervalSinceReferenceDate(0),
        NSDate::dateWithTimeIntervalSinceReferenceDate(-1),
        NSDate::dateWithTimeIntervalSince1970(951782400),
        NSData::data(),
        NSData::dataWithBytes_length("\0\1\xff", 3),
        NSArray::array(),
        NSArray::arrayOf("a"_ns, NSNumber::numberWithInt(1), NSArray::array()),
        NSDictionary::dictionary(),
        NSDictionary::dictionaryWithObject_forKey(NSArray::arrayOf("a"_ns), "key & <key>"_ns),
        NSDictionary::dictionaryWithObject_forKey("value"_ns, ""_ns),
    };
    for (const NSObject object : objects) expectToComeBackEqual(object);
}

TEST_F(NSPropertyListSerializationTest, CharactersBeyondTheBasicPlaneComeBack) {
    expectToComeBackEqual(u"a\U0001D11Eb"_ns);
}

TEST_F(NSPropertyListSerializationTest, TheLargestIntegerComesBack) {
    expectToComeBackEqual(
        NSNumber::numberWithUnsignedLongLong(std::numeric_limits<unsigned long long>::max()));
}

TEST_F(NSPropertyListSerializationTest, RealsComeBackToTheLastBit) {
    expectToComeBackEqual(NSNumber::numberWithDouble(std::numeric_limits<double>::max()));
    expectToComeBackEqual(NSNumber::numberWithDouble(std::numeric_limits<double>::denorm_min()));
    expectToComeBackEqual(NSNumber::numberWithFloat(0.1f));
}

TEST_F(NSPropertyListSerializationTest, BooleansStayBooleansAndNumbersNumbers) {
    const NSArray back = readBack(written(NSArray::arrayOf(
        NSNumber::numberWithBool(true), NSNumber::numberWithInt(1), NSNumber::numberWithDouble(1))));
    ASSERT_EQ(back.count(), 3u);
    EXPECT_EQ(static_cast<NSObject>(back.objectAtIndex(0)), NSNumber::numberWithBool(true));
    EXPECT_FALSE(isBoolean(back.objectAtIndex(1)));
    EXPECT_STREQ(as<NSNumber>(back.objectAtIndex(2)).objCType(), "d");
}

TEST_F(NSPropertyListSerializationTest, RealsThatAreNoNumbersComeBack) {
    const NSArray back = readBack(
        written(NSArray::arrayOf(NSNumber::numberWithDouble(infinity), NSNumber::numberWithDouble(-infinity),
                                 NSNumber::numberWithDouble(notANumber))));
    EXPECT_EQ(as<NSNumber>(back.objectAtIndex(0)).doubleValue(), infinity);
    EXPECT_EQ(as<NSNumber>(back.objectAtIndex(1)).doubleValue(), -infinity);
    EXPECT_TRUE(std::isnan(as<NSNumber>(back.objectAtIndex(2)).doubleValue()));
}

TEST_F(NSPropertyListSerializationTest, DatesLoseTheirFractionsOfASecond) {
    const auto secondsOf = [](double seconds) {
        return as<NSDate>(readBack(written(NSDate::dateWithTimeIntervalSinceReferenceDate(seconds))))
            .timeIntervalSinceReferenceDate();
    };
    EXPECT_EQ(secondsOf(1.75), 1);
    EXPECT_EQ(secondsOf(86399.999), 86399);
}

TEST_F(NSPropertyListSerializationTest, DatesBeforeTheReferenceDateAreRoundedDown) {
    const NSObject back = readBack(written(NSDate::dateWithTimeIntervalSinceReferenceDate(-0.25)));
    EXPECT_EQ(as<NSDate>(back).timeIntervalSinceReferenceDate(), -1);
}

TEST_F(NSPropertyListSerializationTest, ReadsImmutableObjects) {
    const NSArray list = read("<array><dict><key>k</key><string>s</string></dict></array>");
    EXPECT_FALSE(isMutable(list));
    EXPECT_FALSE(isMutable(list.firstObject()));
    EXPECT_FALSE(isMutable(as<NSDictionary>(list.firstObject()).objectForKey("k"_ns)));
}

TEST_F(NSPropertyListSerializationTest, ReadsMutableContainers) {
    const NSMutableArray list =
        read("<array><dict><key>k</key><string>s</string></dict><array/><dict/></array>",
             NSPropertyListMutableContainers);
    const NSMutableDictionary dictionary = list.firstObject();
    EXPECT_FALSE(isMutable(dictionary.objectForKey("k"_ns)));
    dictionary.setObject_forKey("t"_ns, "k"_ns);
    EXPECT_EQ(text(dictionary.objectForKey("k"_ns)), "t");
    as<NSMutableArray>(list.objectAtIndex(1)).addObject("a"_ns);
    as<NSMutableDictionary>(list.objectAtIndex(2)).setObject_forKey("a"_ns, "a"_ns);
    list.removeLastObject();
    EXPECT_EQ(list.count(), 2u);
}

TEST_F(NSPropertyListSerializationTest, ReadsMutableLeaves) {
    const NSArray list =
        read("<array><string>s</string><string/></array>", NSPropertyListMutableContainersAndLeaves);
    as<NSMutableString>(list.firstObject()).appendString("t"_ns);
    as<NSMutableString>(list.lastObject()).appendString("u"_ns);
    EXPECT_EQ(texts(list), (Texts{"st", "u"}));
}

TEST_F(NSPropertyListSerializationTest, ReadsMutableData) {
    const NSObject data = read("<data>AAEC</data>", NSPropertyListMutableContainersAndLeaves);
    EXPECT_TRUE(data.isKindOfClass("NSMutableData"_class));
    EXPECT_EQ(as<NSData>(data).length(), 3u);
}

TEST_F(NSPropertyListSerializationTest, TellsTheFormatFound) {
    auto format = NSPropertyListOpenStepFormat;
    const NSData document = written("a"_ns);
    EXPECT_TRUE(bool(NSPropertyListSerialization::propertyListWithData_options_format_error(
        document, NSPropertyListImmutable, &format, nullptr)));
    EXPECT_EQ(format, NSPropertyListXMLFormat_v1_0);
}

TEST_F(NSPropertyListSerializationTest, DataMayHoldWhiteSpace) {
    const NSData data = as<NSData>(read("<data>\n\t YW\n Jj\t ZA==\n</data>"));
    EXPECT_EQ(std::string(static_cast<const char*>(data.bytes()), data.length()), "abcd");
}

TEST_F(NSPropertyListSerializationTest, NoDataIsAnError) {
    NSError error;
    EXPECT_EQ(readBack(NSData::data(), NSPropertyListImmutable, &error), nil);
    EXPECT_TRUE(bool(error));
}

TEST_F(NSPropertyListSerializationTest, DamagedDataIsAnError) {
    for (const char* contents : {"<array>", "<string>a", "<array><string></array></string>"}) {
        NSError error;
        EXPECT_EQ(read(contents, NSPropertyListImmutable, &error), nil) << contents;
        EXPECT_TRUE(bool(error)) << contents;
    }
}

TEST_F(NSPropertyListSerializationTest, TheErrorOfDamagedDataHasACode) {
    NSError error;
    EXPECT_EQ(read("<array>", NSPropertyListImmutable, &error), nil);
    EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain");
    EXPECT_EQ(error.code(), 3840);
}

TEST_F(NSPropertyListSerializationTest, ContainersMayBeNested512Deep) {
    NSArray nested = NSArray::array();
    for (int level = 1; level < 512; ++level) nested = NSArray::arrayOf(nested);
    expectToComeBackEqual(nested);
}

TEST_F(NSPropertyListSerializationTest, ResultsAreNotOwned) {
    const NSArray list = NSArray::arrayOf("a"_ns);
    const NSData document = written(list);
    EXPECT_EQ(ownedReferencesOfNew([&] { return written(list); }), 0);
    EXPECT_EQ(ownedReferencesOfNew([&] { return readBack(document); }), 0);
}

} // namespace
} // namespace tessarin::testing
