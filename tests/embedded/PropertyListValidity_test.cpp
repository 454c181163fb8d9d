#include "platform/services/PropertyListValidity.h"

#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class PropertyListValidityTest : public PlatformTest {};

bool isValid(NSObject object, NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0) {
    return propertyListDefect(object, format).empty();
}

TEST_F(PropertyListValidityTest, TheDefectIsInThePlatformsWords) {
    const auto defectOf = [](NSObject object) {
        return propertyListDefect(object, NSPropertyListXMLFormat_v1_0);
    };
    EXPECT_EQ(defectOf("a"_ns), "");
    EXPECT_EQ(defectOf(nil), "property lists cannot contain NULL");
    EXPECT_EQ(defectOf(NSCharacterSet::whitespaceCharacterSet()),
              "property lists cannot contain objects of type 'CFCharacterSet'");
    EXPECT_EQ(propertyListDefect(NSNumber::numberWithBool(true), NSPropertyListOpenStepFormat),
              "property lists cannot contain objects of type 'CFBoolean'");
    for (const auto& [key, type] : {std::pair<NSObject, std::string>{NSNumber::numberWithInt(1), "CFNumber"},
                                    {NSNumber::numberWithBool(true), "CFBoolean"},
                                    {NSDate::date(), "CFDate"},
                                    {NSData::data(), "CFData"},
                                    {NSArray::array(), "CFArray"},
                                    {NSDictionary::dictionary(), "CFDictionary"},
                                    {NSNull::null(), "CFNull"}})
        EXPECT_EQ(defectOf(NSDictionary::dictionaryWithObject_forKey("a"_ns, key)),
                  "property list dictionaries may only have keys which are CFStrings, not '" + type + "'");
}

TEST_F(PropertyListValidityTest, ValuesAreValid) {
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

TEST_F(PropertyListValidityTest, OtherObjectsAreNotValid) {
    const NSObject others[] = {nil, NSNull::null(), NSURL::fileURLWithPath("/a"_ns),
                               NSCharacterSet::whitespaceCharacterSet(), NSString::classObject()};
    for (const NSObject other : others) {
        EXPECT_FALSE(isValid(other)) << other;
        if (!other) continue;
        EXPECT_FALSE(isValid(NSArray::arrayOf("a"_ns, other))) << other;
        EXPECT_FALSE(isValid(NSDictionary::dictionaryWithObject_forKey(other, "key"_ns))) << other;
    }
}

TEST_F(PropertyListValidityTest, KeysThatAreNoStringsAreNotValid) {
    EXPECT_FALSE(isValid(NSDictionary::dictionaryWithObject_forKey("a"_ns, NSNumber::numberWithInt(1))));
}

TEST_F(PropertyListValidityTest, AContainerThatContainsItselfIsNotValid) {
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

TEST_F(PropertyListValidityTest, AContainerReachedByManyWaysIsValid) {
    // 2^60 ways, so that each must be looked at once only.
    NSArray doubled = NSArray::arrayOf("a"_ns);
    for (int level = 0; level < 60; ++level) doubled = NSArray::arrayOf(doubled, doubled);
    EXPECT_TRUE(isValid(doubled));
}

TEST_F(PropertyListValidityTest, AMillionLevelsAreValid) {
    Retained<NSArray> nested = adopt(NSArray::alloc().init());
    for (int level = 1; level < 1'000'000; ++level) {
        const NSObject inner = nested;
        nested = adopt(NSArray::alloc().initWithObjects_count(&inner, 1));
    }
    EXPECT_TRUE(isValid(nested));
}

TEST_F(PropertyListValidityTest, OpenStepKnowsNoNumbersAndDates) {
    EXPECT_TRUE(isValid(NSArray::arrayOf("a"_ns, NSData::data()), NSPropertyListOpenStepFormat));
    EXPECT_FALSE(isValid(NSNumber::numberWithInt(1), NSPropertyListOpenStepFormat));
    EXPECT_FALSE(isValid(NSNumber::numberWithBool(true), NSPropertyListOpenStepFormat));
    EXPECT_FALSE(isValid(NSArray::arrayOf(NSDate::date()), NSPropertyListOpenStepFormat));
}

TEST_F(PropertyListValidityTest, NothingIsValidForAFormatThatDoesNotExist) {
    EXPECT_FALSE(isValid("a"_ns, static_cast<NSPropertyListFormat>(7)));
}

} // namespace
} // namespace tessarin::testing
