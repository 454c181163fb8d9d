// A value as a property list: itself, or how it describes itself.
#include "PlatformTest.h"

#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class PropertyListForValueTest : public PlatformTest {};

// ---- Objects that describe themselves. What they answer is set by the tests.

NSObject described;

NSObject asConfiguration(NSObject, SEL) { return "configuration"_ns; }
NSObject asPropertyList(NSObject, SEL) { return "propertyList"_ns; }
NSObject asOurConfiguration(NSObject, SEL) { return "tessarin_configuration"_ns; }
NSObject asSet(NSObject, SEL) { return described; }
NSObject raising(NSObject, SEL) { raise(NSGenericException(), "on purpose"_ns); }
NSObject comingBack(NSObject, SEL) { return tessarin_propertyListForValue(described); }

NSObject newOf(const ClassDefinition& definition) {
    return adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
}

NSObject describingInThreeWays() {
    static const ClassDefinition definition{
        {.name = "PropertyListTestThreeWays",
         .methods = {instanceMethod("tessarin_configuration", asOurConfiguration),
                     instanceMethod("propertyList", asPropertyList),
                     instanceMethod("configuration", asConfiguration)}}};
    return newOf(definition);
}
NSObject describingInTwoWays() {
    static const ClassDefinition definition{
        {.name = "PropertyListTestTwoWays",
         .methods = {instanceMethod("tessarin_configuration", asOurConfiguration),
                     instanceMethod("propertyList", asPropertyList)}}};
    return newOf(definition);
}
NSObject describingInOurWay() {
    static const ClassDefinition definition{
        {.name = "PropertyListTestOurWay",
         .methods = {instanceMethod("tessarin_configuration", asOurConfiguration)}}};
    return newOf(definition);
}
NSObject describedAs(NSObject description) {
    static const ClassDefinition definition{
        {.name = "PropertyListTestDescribed",
         .methods = {instanceMethod("configuration", asSet),
                     instanceMethod("tessarin_configuration", asOurConfiguration)}}};
    described = description;
    return newOf(definition);
}
NSObject undescribed() {
    static const ClassDefinition definition{{.name = "PropertyListTestUndescribed"}};
    return newOf(definition);
}

// ---- Values that are property lists

TEST_F(PropertyListForValueTest, AValueThatIsAPropertyListIsReturnedItself) {
    const NSObject values[] = {
        "text"_ns,
        ""_ns,
        NSMutableString::stringWithString("text"_ns),
        NSNumber::numberWithInt(7),
        NSNumber::numberWithDouble(0.5),
        NSNumber::numberWithBool(true),
        NSDate::date(),
        NSData::dataWithBytes_length("abc", 3),
        NSArray::array(),
        NSArray::arrayOf("a"_ns, NSNumber::numberWithInt(1), NSArray::arrayOf(NSData::data())),
        NSMutableArray::array(),
        NSDictionary::dictionary(),
        NSDictionary::dictionaryWithObject_forKey(NSArray::arrayOf(NSDate::date()), "key"_ns),
        NSMutableDictionary::dictionary(),
    };
    for (const NSObject value : values)
        EXPECT_EQ(static_cast<NSObject>(tessarin_propertyListForValue(value)), value) << value;
}

TEST_F(PropertyListForValueTest, NilGivesNil) { EXPECT_EQ(tessarin_propertyListForValue(nil), nil); }

// ---- Values that describe themselves

TEST_F(PropertyListForValueTest, TheConfigurationComesFirst) {
    EXPECT_EQ(text(tessarin_propertyListForValue(describingInThreeWays())), "configuration");
}

TEST_F(PropertyListForValueTest, ThePropertyListComesSecond) {
    EXPECT_EQ(text(tessarin_propertyListForValue(describingInTwoWays())), "propertyList");
}

TEST_F(PropertyListForValueTest, TheLibrarysOwnConfigurationComesLast) {
    EXPECT_EQ(text(tessarin_propertyListForValue(describingInOurWay())), "tessarin_configuration");
}

BOOL denyConfiguration(NSObject self, SEL selector, SEL operation) {
    if (operation == "configuration"_sel) return NO;
    return sendSuper<BOOL>(self, "PropertyListTestDenying"_class, selector, operation);
}

TEST_F(PropertyListForValueTest, AConfigurationThatTheValueDeniesIsNotAskedFor) {
    static const ClassDefinition definition{
        {.name = "PropertyListTestDenying",
         .methods = {instanceMethod("configuration", raising), instanceMethod("propertyList", asPropertyList),
                     instanceMethod("respondsToSelector:", denyConfiguration)}}};
    EXPECT_EQ(text(tessarin_propertyListForValue(newOf(definition))), "propertyList");
}

TEST_F(PropertyListForValueTest, TheDescriptionItselfIsTheResult) {
    const NSObject description = NSMutableDictionary::dictionary();
    EXPECT_EQ(static_cast<NSObject>(tessarin_propertyListForValue(describedAs(description))), description);
}

TEST_F(PropertyListForValueTest, AnObjectThatDescribesItselfInNoWayGivesNil) {
    EXPECT_EQ(tessarin_propertyListForValue(undescribed()), nil);
    EXPECT_EQ(tessarin_propertyListForValue(NSNull::null()), nil);
    EXPECT_EQ(tessarin_propertyListForValue(NSURL::fileURLWithPath("/a"_ns)), nil);
}

// It answers another operation with a property list, which does not count.
TEST_F(PropertyListForValueTest, AConfigurationThatIsNilGivesNil) {
    EXPECT_EQ(tessarin_propertyListForValue(describedAs(nil)), nil);
}

TEST_F(PropertyListForValueTest, AConfigurationThatIsNoPropertyListGivesNil) {
    EXPECT_EQ(tessarin_propertyListForValue(describedAs(NSNull::null())), nil);
    EXPECT_EQ(tessarin_propertyListForValue(describedAs(describingInOurWay())), nil);
    EXPECT_EQ(tessarin_propertyListForValue(
                  describedAs(NSDictionary::dictionaryWithObject_forKey(describingInOurWay(), "value"_ns))),
              nil);
}

TEST_F(PropertyListForValueTest, ContainersAreNotConverted) {
    EXPECT_EQ(tessarin_propertyListForValue(NSArray::arrayOf(describingInOurWay())), nil);
    EXPECT_EQ(tessarin_propertyListForValue(
                  NSDictionary::dictionaryWithObject_forKey(describingInOurWay(), "value"_ns)),
              nil);
    EXPECT_EQ(tessarin_propertyListForValue(
                  NSDictionary::dictionaryWithObject_forKey("value"_ns, NSNumber::numberWithInt(1))),
              nil);
}

TEST_F(PropertyListForValueTest, AContainerInsideItselfGivesNil) {
    const Retained<NSMutableArray> circular = adopt(NSMutableArray::alloc().init());
    circular.addObject(NSDictionary::dictionaryWithObject_forKey(circular, "array"_ns));
    EXPECT_EQ(tessarin_propertyListForValue(circular), nil);
    circular.removeAllObjects();
}

// ---- Classes

TEST_F(PropertyListForValueTest, DerivedClassesAnswerTheSame) {
    static const ClassDefinition definition{
        {.name = "PropertyListTestDerived", .superclass = "NSPropertyListSerialization"}};
    const Class derived = definition.classObject();
    EXPECT_EQ(text(tessarin_propertyListForValue(derived, describingInThreeWays())), "configuration");
    EXPECT_EQ(text(tessarin_propertyListForValue(derived, "text"_ns)), "text");
    const NSArray copy =
        tessarin_propertyListWithMutableContainers_error(derived, NSArray::arrayOf("a"_ns), nullptr);
    EXPECT_EQ(texts(copy), Texts{"a"});
}

id answerNothing(Class, SEL, NSObject) { return nil; }
id answerNoCopy(Class, SEL, NSObject, NSError*) { return nil; }

class OverridingSerialization
    : public Handle<OverridingSerialization, "PropertyListTestOverriding", NSPropertyListSerialization> {
public:
    using Handle::Handle;
};

TEST_F(PropertyListForValueTest, ADerivedClassIsAskedForItsOwnWay) {
    static const ClassDefinition definition{
        {.name = "PropertyListTestOverriding",
         .superclass = "NSPropertyListSerialization",
         .methods = {classMethod("tessarin_propertyListForValue:", answerNothing),
                     classMethod("tessarin_propertyListWithMutableContainers:error:", answerNoCopy)}}};
    const NSArray list = NSArray::arrayOf("a"_ns);
    EXPECT_EQ(tessarin_propertyListForValue(definition.classObject(), "text"_ns), nil);
    EXPECT_EQ(tessarin_propertyListForValue<OverridingSerialization>("text"_ns), nil);
    EXPECT_EQ(tessarin_propertyListWithMutableContainers_error(definition.classObject(), list, nullptr), nil);
    EXPECT_EQ(tessarin_propertyListWithMutableContainers_error<OverridingSerialization>(list, nullptr), nil);
}

TEST_F(PropertyListForValueTest, TheClassMayBeNamed) {
    EXPECT_EQ(text(tessarin_propertyListForValue<NSPropertyListSerialization>("text"_ns)), "text");
    const NSArray copy = tessarin_propertyListWithMutableContainers_error<NSPropertyListSerialization>(
        NSArray::arrayOf("a"_ns), nullptr);
    EXPECT_EQ(texts(copy), Texts{"a"});
}

TEST_F(PropertyListForValueTest, ANilClassAnswersNil) {
    NSError error;
    EXPECT_EQ(tessarin_propertyListForValue(nil, "text"_ns), nil);
    EXPECT_EQ(tessarin_propertyListWithMutableContainers_error(nil, "text"_ns, &error), nil);
    EXPECT_FALSE(error);
}

TEST_F(PropertyListForValueTest, TheResultIsNotOwned) {
    const Retained<NSMutableDictionary> description = adopt(NSMutableDictionary::alloc().init());
    const NSObject value = describedAs(description);
    EXPECT_EQ(referencesLeftBy([&] { return tessarin_propertyListForValue(value); }, description), 0);
    EXPECT_EQ(referencesLeftBy([&] { return tessarin_propertyListForValue(value); }, value), 0);
}

// ---- What a value may do while it is asked

TEST_F(PropertyListForValueTest, AValueMayComeBackToTheOperation) {
    static const ClassDefinition definition{
        {.name = "PropertyListTestComingBack", .methods = {instanceMethod("configuration", comingBack)}}};
    described = describingInOurWay();
    EXPECT_EQ(text(tessarin_propertyListForValue(newOf(definition))), "tessarin_configuration");
}

TEST_F(PropertyListForValueTest, WhatAValueRaisesPassesThrough) {
    static const ClassDefinition definition{
        {.name = "PropertyListTestRaising", .methods = {instanceMethod("configuration", raising)}}};
    EXPECT_THROWS_NAMED(tessarin_propertyListForValue(newOf(definition)), "NSGenericException");
}

} // namespace
} // namespace tessarin::testing
