// What the embedded platform says and does beyond what every platform has in common.
#include "PlatformTest.h"

#include "TessarinPlatform/PropertyLists.h"

#include <limits>
#include <utility>

namespace tessarin::testing {
namespace {

class NSPropertyListSerializationTest : public PlatformTest {};

NSData written(NSObject propertyList, NSError* error = nullptr,
               NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0) {
    return NSPropertyListSerialization::dataWithPropertyList_format_options_error(propertyList, format, 0,
                                                                                  error);
}

id read(std::string_view document, NSError* error = nullptr) {
    return NSPropertyListSerialization::propertyListWithData_options_format_error(
        NSData::dataWithBytes_length(document.data(), document.size()), NSPropertyListImmutable, nullptr,
        error);
}

std::string reasonOf(NSError error) {
    EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain");
    return text(error.userInfo().objectForKey(NSDebugDescriptionErrorKey()));
}

// What is said to the reading of a document, which has to fail.
std::string reasonAgainstReading(std::string_view document) {
    NSError error;
    EXPECT_EQ(read(document, &error), nil);
    EXPECT_EQ(error.code(), 3840);
    return reasonOf(error);
}

// What is said to the writing of an object, which has to fail.
std::string reasonAgainstWriting(NSObject object,
                                 NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0) {
    NSError error;
    EXPECT_EQ(written(object, &error, format), nil);
    EXPECT_EQ(error.code(), 3851);
    return reasonOf(error);
}

TEST_F(NSPropertyListSerializationTest, ACharOfAnApplicationsOwnClassIsABooleanWhereverItIsKept) {
    static const ClassDefinition definition{
        {.name = "NSPropertyListSerializationTestChar",
         .superclass = "NSNumber",
         .methods = {instanceMethod(
                         "objCType", +[](NSNumber, SEL) -> const char* { return "c"; }),
                     instanceMethod(
                         "boolValue", +[](NSNumber, SEL) -> BOOL { return YES; }),
                     instanceMethod(
                         "longLongValue", +[](NSNumber, SEL) -> long long { return 5; })}}};
    const Retained<NSNumber> five = adopt(as<NSNumber>(NSObject(definition.classObject().alloc())));
    EXPECT_TRUE(five.isEqualToNumber(NSNumber::numberWithInt(5)));
    const auto readBack = [&](NSPropertyListFormat format) {
        return NSPropertyListSerialization::propertyListWithData_options_format_error(
            written(five, nullptr, format), NSPropertyListImmutable, nullptr, nullptr);
    };
    const NSNumber yes = NSNumber::numberWithBool(true);
    EXPECT_EQ(readBack(NSPropertyListXMLFormat_v1_0), yes);
    EXPECT_EQ(readBack(NSPropertyListBinaryFormat_v1_0), yes);
    EXPECT_EQ(propertyListWithMutableContainers(five, nullptr), yes);
}

TEST_F(NSPropertyListSerializationTest, AProblemInADocumentIsToldWithItsLine) {
    EXPECT_EQ(reasonAgainstReading("<plist>\n<array>\n<what/>\n</array>\n</plist>"),
              "Unknown tag <what> at line 3");
}

TEST_F(NSPropertyListSerializationTest, NoDataHasAReasonOfItsOwn) {
    EXPECT_EQ(reasonAgainstReading(""), "Cannot parse a NULL or zero-length data");
    NSError error;
    EXPECT_EQ(NSPropertyListSerialization::propertyListWithData_options_format_error(nil, 0, nullptr, &error),
              nil);
    EXPECT_EQ(reasonOf(error), "Cannot parse a NULL or zero-length data");
}

TEST_F(NSPropertyListSerializationTest, AnErrorNeedNotBeAskedFor) {
    EXPECT_EQ(read("<plist><array>"), nil);
    EXPECT_EQ(written(NSNull::null()), nil);
    EXPECT_EQ(written(nil), nil);
}

TEST_F(NSPropertyListSerializationTest, TheFormatIsStoredOfWhatCanBeReadOnly) {
    auto format = NSPropertyListOpenStepFormat;
    const NSData damaged = NSData::dataWithBytes_length("<array>", 7);
    EXPECT_EQ(
        NSPropertyListSerialization::propertyListWithData_options_format_error(damaged, 0, &format, nullptr),
        nil);
    EXPECT_EQ(format, NSPropertyListOpenStepFormat);
}

TEST_F(NSPropertyListSerializationTest, AHundredThousandLevelsAreWritten) {
    Retained<NSArray> nested = adopt(NSArray::alloc().init());
    for (int level = 1; level < 100'000; ++level) {
        const NSObject inner = nested;
        nested = adopt(NSArray::alloc().initWithObjects_count(&inner, 1));
    }
    EXPECT_GT(written(nested).length(), 100'000u * 18);
}

TEST_F(NSPropertyListSerializationTest, ListsThatDoubleAtEachLevelAreNoXML) {
    NSArray doubled = NSArray::arrayOf("x"_ns);
    for (int level = 0; level < 60; ++level) doubled = NSArray::arrayOf(doubled, doubled);
    EXPECT_EQ(reasonAgainstWriting(doubled), "Property list invalid for format: 100 (XML would hold too many "
                                             "copies of shared containers)");
    EXPECT_TRUE(bool(written(doubled, nullptr, NSPropertyListBinaryFormat_v1_0)));
}

TEST_F(NSPropertyListSerializationTest, ModerateSharingIsWrittenInFull) {
    NSArray doubled = NSArray::arrayOf("x"_ns);
    for (int level = 0; level < 12; ++level) doubled = NSArray::arrayOf(doubled, doubled);
    const NSData document = written(doubled);
    EXPECT_TRUE(as<NSObject>(NSPropertyListSerialization::propertyListWithData_options_format_error(
                                 document, 0, nullptr, nullptr))
                    .isEqual(doubled));
}

TEST_F(NSPropertyListSerializationTest, NilCannotBeWritten) {
    NSError error;
    EXPECT_EQ(written(nil, &error), nil);
    EXPECT_EQ(error.code(), 3852);
    EXPECT_EQ(reasonOf(error), "Cannot write nil as a property list");
}

TEST_F(NSPropertyListSerializationTest, ADateWithoutAWrittenFormCannotBeWritten) {
    const NSDate never =
        NSDate::dateWithTimeIntervalSinceReferenceDate(std::numeric_limits<double>::infinity());
    EXPECT_EQ(
        reasonAgainstWriting(NSArray::arrayOf(never)),
        "Property list invalid for format: 100 (dates in XML must be finite and not more than 2^53 seconds "
        "away)");
}

TEST_F(NSPropertyListSerializationTest, OpenStepFormIsNotWritten) {
    EXPECT_EQ(reasonAgainstWriting("a"_ns, NSPropertyListOpenStepFormat),
              "Property list invalid for format: 1 (there is no writer of this format)");
    EXPECT_EQ(reasonAgainstWriting("a"_ns, static_cast<NSPropertyListFormat>(7)),
              "Property list invalid for format: 7 (there is no such format)");
}

TEST_F(NSPropertyListSerializationTest, WhatIsNoPropertyListIsAnErrorThatTellsWhy) {
    const std::string beginning = "Property list invalid for format: 100 (";
    EXPECT_EQ(reasonAgainstWriting(NSNull::null()),
              beginning + "property lists cannot contain objects of type 'CFNull')");
    EXPECT_EQ(reasonAgainstWriting(NSArray::arrayOf(NSURL::fileURLWithPath("/a"_ns))),
              beginning + "property lists cannot contain objects of type 'CFURL')");
    EXPECT_EQ(reasonAgainstWriting(NSFileManager::defaultManager()),
              beginning + "property lists cannot contain objects of type 'CFType')");
    EXPECT_EQ(
        reasonAgainstWriting(NSDictionary::dictionaryWithObject_forKey("a"_ns, NSNumber::numberWithInt(1))),
        beginning + "property list dictionaries may only have keys which are CFStrings, not 'CFNumber')");
    const NSMutableArray own = NSMutableArray::array();
    own.addObject(own);
    EXPECT_EQ(reasonAgainstWriting(own),
              beginning + "property lists cannot contain recursive container references)");
    own.removeAllObjects();
}

// A string that empties the containers it stands in when it is asked for its length.
NSMutableArray emptiedArray;
NSMutableDictionary emptiedDictionary;

NSUInteger emptyAndAnswer(NSString, SEL) {
    if (emptiedArray) std::exchange(emptiedArray, nil).removeAllObjects();
    if (emptiedDictionary) std::exchange(emptiedDictionary, nil).removeAllObjects();
    return 3;
}
unichar characterOfEmptier(NSString, SEL, NSUInteger) { return u'x'; }
id copyOfEmptier(NSString self, SEL, void*) { return retain(self).leak(); }

Retained<NSString> emptier() {
    static const ClassDefinition definition{
        {.name = "NSPropertyListSerializationTestEmptier",
         .superclass = "NSString",
         .methods = {instanceMethod("length", emptyAndAnswer),
                     instanceMethod("characterAtIndex:", characterOfEmptier),
                     instanceMethod("copyWithZone:", copyOfEmptier)}}};
    return adopt(send<NSString>(NSObject(definition.classObject().alloc()), "init"_sel));
}

Retained<NSString> numbered(int number) {
    return adopt(NSString::alloc().initWithString(
        NSString("a text that is nobody else's, number " + std::to_string(number))));
}

TEST_F(NSPropertyListSerializationTest, AStringThatEmptiesItsArrayIsWrittenWithWhatStoodThere) {
    for (const auto format : {NSPropertyListXMLFormat_v1_0, NSPropertyListBinaryFormat_v1_0}) {
        const Retained<NSMutableArray> array = adopt(NSMutableArray::alloc().init());
        Retained<NSArray> expected;
        {
            const AutoreleasePool pool;
            array.addObject(emptier());
            for (int index = 0; index < 50; ++index) array.addObject(NSArray::arrayOf(numbered(index)));
            const NSMutableArray plain = NSMutableArray::arrayWithArray(array);
            plain.replaceObjectAtIndex_withObject(0, "xxx"_ns);
            expected = adopt(NSArray(NSPropertyListSerialization::propertyListWithData_options_format_error(
                                         written(plain), NSPropertyListImmutable, nullptr, nullptr)
                                         .copy()));
        }
        emptiedArray = array;
        const NSData data = written(array, nullptr, format);
        EXPECT_EQ(array.count(), 0u);
        EXPECT_TRUE(as<NSObject>(NSPropertyListSerialization::propertyListWithData_options_format_error(
                                     data, NSPropertyListImmutable, nullptr, nullptr))
                        .isEqual(expected));
    }
}

TEST_F(NSPropertyListSerializationTest, AKeyThatEmptiesItsDictionaryIsWrittenWithWhatStoodThere) {
    for (const auto format : {NSPropertyListXMLFormat_v1_0, NSPropertyListBinaryFormat_v1_0}) {
        const Retained<NSMutableDictionary> dictionary = adopt(NSMutableDictionary::alloc().init());
        {
            const AutoreleasePool pool;
            dictionary.setObject_forKey(numbered(0), emptier());
            for (int index = 1; index < 50; ++index)
                dictionary.setObject_forKey(numbered(-index), numbered(index));
        }
        emptiedDictionary = dictionary;
        const NSData data = written(dictionary, nullptr, format);
        EXPECT_EQ(dictionary.count(), 0u);
        const NSDictionary found = NSPropertyListSerialization::propertyListWithData_options_format_error(
            data, NSPropertyListImmutable, nullptr, nullptr);
        EXPECT_EQ(found.count(), 50u);
        EXPECT_TRUE(as<NSObject>(found.objectForKey("xxx"_ns)).isEqual(numbered(0)));
        EXPECT_TRUE(as<NSObject>(found.objectForKey(numbered(9))).isEqual(numbered(-9)));
    }
}

} // namespace
} // namespace tessarin::testing
