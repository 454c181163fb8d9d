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

id read(std::string_view document, NSPropertyListMutabilityOptions options = NSPropertyListImmutable,
        NSError* error = nullptr) {
    return readBack(NSData::dataWithBytes_length(document.data(), document.size()), options, error);
}

NSObject inPropertyList(const char* element) {
    return read("<plist version=\"1.0\">" + std::string(element) + "</plist>");
}

bool isValid(NSObject object, NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0) {
    return NSPropertyListSerialization::propertyList_isValidForFormat(object, format);
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

// An array that holds an array that holds ..., that many in all.
Retained<NSArray> nestedArrays(std::size_t levels) {
    Retained<NSArray> nested = adopt(NSArray::alloc().init());
    for (std::size_t level = 1; level < levels; ++level) {
        const NSObject inner = nested;
        nested = adopt(NSArray::alloc().initWithObjects_count(&inner, 1));
    }
    return nested;
}

TEST_F(NSPropertyListSerializationTest, EveryKindComesBackEqual) {
    const NSObject objects[] = {
        ""_ns,
        "a < b > c & d \" ' ]]>"_ns,
        u"gr\u00fc\u00dfe \U0001D11E"_ns,
        NSNumber::numberWithBool(true),
        NSNumber::numberWithBool(false),
        NSNumber::numberWithInt(0),
        NSNumber::numberWithInt(-1),
        NSNumber::numberWithLongLong(std::numeric_limits<long long>::min()),
        NSNumber::numberWithLongLong(std::numeric_limits<long long>::max()),
        NSNumber::numberWithUnsignedLongLong(std::numeric_limits<unsigned long long>::max()),
        NSNumber::numberWithDouble(0.1),
        NSNumber::numberWithDouble(-1.0 / 3),
        NSNumber::numberWithDouble(std::numeric_limits<double>::max()),
        NSNumber::numberWithDouble(std::numeric_limits<double>::denorm_min()),
        NSNumber::numberWithFloat(0.1f),
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
    for (const NSObject object : objects) {
        const NSData document = written(object);
        ASSERT_TRUE(bool(document)) << object;
        const NSObject back = readBack(document);
        ASSERT_TRUE(bool(back)) << object;
        EXPECT_TRUE(back.isEqual(object)) << back << " for " << object;
    }
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
    const NSArray list = read("<plist><array><dict><key>k</key><string>s</string></dict></array></plist>");
    EXPECT_FALSE(isMutable(list));
    EXPECT_FALSE(isMutable(list.firstObject()));
    EXPECT_FALSE(isMutable(as<NSDictionary>(list.firstObject()).objectForKey("k"_ns)));
}

TEST_F(NSPropertyListSerializationTest, ReadsMutableContainers) {
    const NSMutableArray list =
        read("<plist><array><dict><key>k</key><string>s</string></dict><array/><dict/></array></plist>",
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
    const NSArray list = read("<plist><array><string>s</string><string/></array></plist>",
                              NSPropertyListMutableContainersAndLeaves);
    as<NSMutableString>(list.firstObject()).appendString("t"_ns);
    as<NSMutableString>(list.lastObject()).appendString("u"_ns);
    EXPECT_EQ(texts(list), (Texts{"st", "u"}));
}

TEST_F(NSPropertyListSerializationTest, ReadsMutableData) {
    const NSObject data = read("<plist><data>AAEC</data></plist>", NSPropertyListMutableContainersAndLeaves);
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

TEST_F(NSPropertyListSerializationTest, ReadsIntegers) {
    EXPECT_EQ(as<NSNumber>(inPropertyList("<integer>-42</integer>")).longLongValue(), -42);
    EXPECT_EQ(as<NSNumber>(inPropertyList("<integer>18446744073709551615</integer>")).unsignedLongLongValue(),
              18446744073709551615u);
}

TEST_F(NSPropertyListSerializationTest, ReadsHexadecimalIntegers) {
    EXPECT_EQ(as<NSNumber>(inPropertyList("<integer>0x7fff</integer>")).longLongValue(), 0x7fff);
    EXPECT_EQ(as<NSNumber>(inPropertyList("<integer>-0X10</integer>")).longLongValue(), -16);
}

TEST_F(NSPropertyListSerializationTest, DataMayHoldWhiteSpace) {
    const NSData data = as<NSData>(inPropertyList("<data>\n\t YW\n Jj\t ZA==\n</data>"));
    EXPECT_EQ(std::string(static_cast<const char*>(data.bytes()), data.length()), "abcd");
}

TEST_F(NSPropertyListSerializationTest, NoDataIsAnError) {
    NSError error;
    EXPECT_EQ(read("", NSPropertyListImmutable, &error), nil);
    EXPECT_TRUE(bool(error));
}

TEST_F(NSPropertyListSerializationTest, DamagedDataIsAnError) {
    for (const char* document : {"<plist><array>", "<plist><string>a</plist>", "<plist></plist>"}) {
        NSError error;
        EXPECT_EQ(read(document, NSPropertyListImmutable, &error), nil) << document;
        EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain") << document;
        EXPECT_EQ(error.code(), 3840) << document;
    }
}

TEST_F(NSPropertyListSerializationTest, AnErrorTellsTheLine) {
    NSError error;
    EXPECT_EQ(read("<plist>\n<array>\n<what/>\n</array>\n</plist>", NSPropertyListImmutable, &error), nil);
    EXPECT_EQ(text(error.userInfo().objectForKey(NSDebugDescriptionErrorKey())),
              "Unknown tag <what> at line 3");
}

TEST_F(NSPropertyListSerializationTest, AnErrorIsNotAskedFor) {
    EXPECT_EQ(read("<plist><array>"), nil);
    EXPECT_EQ(written(NSNull::null()), nil);
}

TEST_F(NSPropertyListSerializationTest, ContainersMayBeReadTo512Levels) {
    EXPECT_TRUE(bool(readBack(written(nestedArrays(512)))));
    NSError error;
    EXPECT_EQ(readBack(written(nestedArrays(513)), NSPropertyListImmutable, &error), nil);
    EXPECT_EQ(error.code(), 3840);
}

TEST_F(NSPropertyListSerializationTest, AHundredThousandLevelsAreWritten) {
    EXPECT_GT(written(nestedArrays(100'000)).length(), 100'000u * 18);
}

TEST_F(NSPropertyListSerializationTest, NilIsAnError) {
    NSError error;
    EXPECT_EQ(written(nil, &error), nil);
    EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain");
    EXPECT_EQ(error.code(), 3852);
}

TEST_F(NSPropertyListSerializationTest, WhatIsNoPropertyListIsAnErrorThatTellsWhy) {
    const auto reasonAgainst = [](NSObject object) {
        NSError error;
        EXPECT_EQ(written(object, &error), nil);
        EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain");
        EXPECT_EQ(error.code(), 3851);
        return text(error.userInfo().objectForKey(NSDebugDescriptionErrorKey()));
    };
    const std::string beginning = "Property list invalid for format: 100 (";
    EXPECT_EQ(reasonAgainst(NSNull::null()),
              beginning + "property lists cannot contain objects of type 'CFNull')");
    EXPECT_EQ(reasonAgainst(NSArray::arrayOf(NSURL::fileURLWithPath("/a"_ns))),
              beginning + "property lists cannot contain objects of type 'CFURL')");
    EXPECT_EQ(reasonAgainst(NSFileManager::defaultManager()),
              beginning + "property lists cannot contain objects of type 'CFType')");
    EXPECT_EQ(reasonAgainst(NSDictionary::dictionaryWithObject_forKey("a"_ns, NSNumber::numberWithInt(1))),
              beginning
                  + "property list dictionaries may only have keys which are CFStrings, not 'CFNumber')");
    const NSMutableArray own = NSMutableArray::array();
    own.addObject(own);
    EXPECT_EQ(reasonAgainst(own),
              beginning + "property lists cannot contain recursive container references)");
    own.removeAllObjects();
}

TEST_F(NSPropertyListSerializationTest, ValuesAreValid) {
    const NSObject values[] = {"a"_ns,
                               NSMutableString::string(),
                               NSNumber::numberWithBool(true),
                               NSNumber::numberWithDouble(0.5),
                               NSDate::date(),
                               NSData::data(),
                               NSArray::array(),
                               NSMutableArray::array(),
                               NSDictionary::dictionary(),
                               NSMutableDictionary::dictionary()};
    for (const NSObject value : values) {
        EXPECT_TRUE(isValid(value)) << value;
        EXPECT_TRUE(isValid(value, NSPropertyListBinaryFormat_v1_0)) << value;
        EXPECT_TRUE(isValid(NSArray::arrayOf(value, value))) << value;
        EXPECT_TRUE(isValid(NSDictionary::dictionaryWithObject_forKey(value, "key"_ns))) << value;
    }
}

TEST_F(NSPropertyListSerializationTest, OtherObjectsAreNotValid) {
    const NSObject others[] = {nil, NSNull::null(), NSURL::fileURLWithPath("/a"_ns),
                               NSCharacterSet::whitespaceCharacterSet(), NSString::classObject()};
    for (const NSObject other : others) {
        EXPECT_FALSE(isValid(other)) << other;
        if (!other) continue;
        EXPECT_FALSE(isValid(NSArray::arrayOf("a"_ns, other))) << other;
        EXPECT_FALSE(isValid(NSDictionary::dictionaryWithObject_forKey(other, "key"_ns))) << other;
    }
}

TEST_F(NSPropertyListSerializationTest, KeysThatAreNoStringsAreNotValid) {
    EXPECT_FALSE(isValid(NSDictionary::dictionaryWithObject_forKey("a"_ns, NSNumber::numberWithInt(1))));
}

TEST_F(NSPropertyListSerializationTest, AContainerThatContainsItselfIsNotValid) {
    const NSMutableArray array = NSMutableArray::array();
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    array.addObject("a"_ns);
    array.addObject(dictionary);
    EXPECT_TRUE(isValid(array));
    dictionary.setObject_forKey(NSArray::arrayOf(array), "key"_ns);
    EXPECT_FALSE(isValid(array));
    EXPECT_FALSE(isValid(NSArray::arrayOf(dictionary)));
    dictionary.removeAllObjects();
}

TEST_F(NSPropertyListSerializationTest, AContainerReachedByManyWaysIsValid) {
    // 2^60 ways, so that each must be looked at once only.
    NSArray doubled = NSArray::arrayOf("a"_ns);
    for (int level = 0; level < 60; ++level) doubled = NSArray::arrayOf(doubled, doubled);
    EXPECT_TRUE(isValid(doubled));
}

TEST_F(NSPropertyListSerializationTest, AMillionLevelsAreValid) {
    EXPECT_TRUE(isValid(nestedArrays(1'000'000)));
}

TEST_F(NSPropertyListSerializationTest, OpenStepKnowsNoNumbersAndDates) {
    EXPECT_TRUE(isValid(NSArray::arrayOf("a"_ns, NSData::data()), NSPropertyListOpenStepFormat));
    EXPECT_FALSE(isValid(NSNumber::numberWithInt(1), NSPropertyListOpenStepFormat));
    EXPECT_FALSE(isValid(NSNumber::numberWithBool(true), NSPropertyListOpenStepFormat));
    EXPECT_FALSE(isValid(NSArray::arrayOf(NSDate::date()), NSPropertyListOpenStepFormat));
}

TEST_F(NSPropertyListSerializationTest, NothingIsValidForAFormatThatDoesNotExist) {
    EXPECT_FALSE(isValid("a"_ns, static_cast<NSPropertyListFormat>(7)));
}

TEST_F(NSPropertyListSerializationTest, ResultsAreNotOwned) {
    const NSArray list = NSArray::arrayOf("a"_ns);
    const NSData document = written(list);
    EXPECT_EQ(ownedReferencesOfNew([&] { return written(list); }), 0);
    EXPECT_EQ(ownedReferencesOfNew([&] { return readBack(document); }), 0);
}

} // namespace
} // namespace tessarin::testing
