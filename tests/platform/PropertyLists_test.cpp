// What is a property list.
#include "NestedArrays.h"
#include "PlatformTest.h"
#include "PropertyListTrees.h"

namespace tessarin::testing {
namespace {

class PropertyListsTest : public PlatformTest {};

bool isValid(NSObject object, NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0) {
    return isPropertyList(object, format);
}

TEST_F(PropertyListsTest, ValuesAreValid) {
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

TEST_F(PropertyListsTest, OtherObjectsAreNotValid) {
    const NSObject others[] = {nil, NSNull::null(), NSURL::fileURLWithPath("/a"_ns),
                               NSCharacterSet::whitespaceCharacterSet(), NSString::classObject()};
    for (const NSObject other : others) {
        EXPECT_FALSE(isValid(other)) << other;
        if (!other) continue;
        EXPECT_FALSE(isValid(NSArray::arrayOf("a"_ns, other))) << other;
        EXPECT_FALSE(isValid(NSDictionary::dictionaryWithObject_forKey(other, "key"_ns))) << other;
    }
}

TEST_F(PropertyListsTest, KeysThatAreNoStringsAreNotValid) {
    EXPECT_FALSE(isValid(NSDictionary::dictionaryWithObject_forKey("a"_ns, NSNumber::numberWithInt(1))));
}

TEST_F(PropertyListsTest, AContainerThatContainsItselfIsNotValid) {
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

TEST_F(PropertyListsTest, AContainerReachedByManyWaysIsValid) {
    // 2^60 ways, so that each must be looked at once only.
    NSArray doubled = NSArray::arrayOf("a"_ns);
    for (int level = 0; level < 60; ++level) doubled = NSArray::arrayOf(doubled, doubled);
    EXPECT_TRUE(isValid(doubled));
}

TEST_F(PropertyListsTest, ACopyHoldsWhatTheOriginalHolds) {
    for (const interop::PropertyListTree& tree : interop::propertyListTrees()) {
        const AutoreleasePool pool;
        EXPECT_TRUE(isValid(tree.root)) << tree.name;
        const NSObject copy = propertyListWithMutableContainers(tree.root, nullptr);
        EXPECT_EQ(interop::plainForm(copy), interop::plainForm(tree.root)) << tree.name;
        EXPECT_EQ(copy.isKindOfClass(NSMutableArray::classObject()),
                  tree.root.isKindOfClass(NSArray::classObject()))
            << tree.name;
    }
}

TEST_F(PropertyListsTest, AMillionLevelsAreValid) {
    EXPECT_TRUE(isValid(NestedArrays(1'000'000).outermost()));
    EXPECT_FALSE(isValid(NestedArrays(1'000'000, NSNull::null()).outermost()));
}

TEST_F(PropertyListsTest, ACycleFarInsideIsNotValid) {
    const NestedArrays nested(1000);
    nested.innermost().addObject(nested.innermost());
    EXPECT_FALSE(isValid(nested.outermost()));
    nested.innermost().removeAllObjects();
    EXPECT_TRUE(isValid(nested.outermost()));
}

TEST_F(PropertyListsTest, OpenStepKnowsNoNumbersAndDates) {
    EXPECT_TRUE(isValid(NSArray::arrayOf("a"_ns, NSData::data()), NSPropertyListOpenStepFormat));
    EXPECT_FALSE(isValid(NSNumber::numberWithInt(1), NSPropertyListOpenStepFormat));
    EXPECT_FALSE(isValid(NSNumber::numberWithBool(true), NSPropertyListOpenStepFormat));
    EXPECT_FALSE(isValid(NSArray::arrayOf(NSDate::date()), NSPropertyListOpenStepFormat));
}

TEST_F(PropertyListsTest, NothingIsValidForAFormatThatDoesNotExist) {
    EXPECT_FALSE(isValid("a"_ns, static_cast<NSPropertyListFormat>(7)));
}

} // namespace
} // namespace tessarin::testing
