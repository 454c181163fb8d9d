// Colours and sort descriptors as property lists.
#include "PlatformTest.h"

#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class ConfigurationsAsPropertyListsTest : public PlatformTest {
protected:
    static NSColor orange() { return NSColor::colorWithCalibratedRed_green_blue_alpha(1, 0.5, 0, 1); }
    static NSSortDescriptor byName() {
        return NSSortDescriptor::sortDescriptorWithKey_ascending("name"_ns, true);
    }
    static void expectToYieldItsConfiguration(NSObject object) {
        const NSObject propertyList = tessarin_propertyListForValue(object);
        ASSERT_TRUE(bool(propertyList));
        EXPECT_TRUE(propertyList.isEqual(send<NSObject>(object, "tessarin_configuration"_sel)));
    }
};

NSObject describeOneself(NSObject, SEL) { return "of its own"_ns; }

NSObject holdAColour(NSObject, SEL) {
    return NSDictionary::dictionaryWithObject_forKey(NSColor::colorWithCalibratedWhite_alpha(0.5, 1),
                                                     "colour"_ns);
}

TEST_F(ConfigurationsAsPropertyListsTest, AColourYieldsItsConfiguration) {
    expectToYieldItsConfiguration(orange());
}

TEST_F(ConfigurationsAsPropertyListsTest, ASortDescriptorYieldsItsConfiguration) {
    expectToYieldItsConfiguration(byName());
}

TEST_F(ConfigurationsAsPropertyListsTest, WhatASortDescriptorWithoutAKeyRaisesPassesThrough) {
    const Retained<NSSortDescriptor> uninitialised = adopt(NSSortDescriptor::alloc());
    EXPECT_THROWS_NAMED(tessarin_propertyListForValue(uninitialised), "NSInvalidArgumentException");
}

TEST_F(ConfigurationsAsPropertyListsTest, AConfigurationOfItsOwnComesBeforeTheLibrarys) {
    static const ClassDefinition definition{{.name = "ConfigurationsTestDescriptor",
                                             .superclass = "NSSortDescriptor",
                                             .methods = {instanceMethod("configuration", describeOneself)}}};
    const NSSortDescriptor descriptor =
        adopt(as<NSSortDescriptor>(definition.classObject().alloc()).initWithKey_ascending("name"_ns, true))
            .autorelease();
    EXPECT_EQ(text(tessarin_propertyListForValue(descriptor)), "of its own");
}

TEST_F(ConfigurationsAsPropertyListsTest, AConfigurationThatHoldsAColourGivesNil) {
    static const ClassDefinition definition{
        {.name = "ConfigurationsTestHolder", .methods = {instanceMethod("configuration", holdAColour)}}};
    const NSObject holder = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
    EXPECT_EQ(tessarin_propertyListForValue(holder), nil);
    EXPECT_EQ(tessarin_propertyListForValue(NSArray::arrayOf(orange())), nil);
}

TEST_F(ConfigurationsAsPropertyListsTest, AColourCannotBeCopied) {
    NSError error;
    EXPECT_EQ(tessarin_propertyListWithMutableContainers_error(orange(), &error), nil);
    EXPECT_EQ(error.code(), 3851);
    NSError errorInside;
    EXPECT_EQ(tessarin_propertyListWithMutableContainers_error(NSArray::arrayOf(byName()), &errorInside),
              nil);
    EXPECT_EQ(errorInside.code(), 3851);
}

} // namespace
} // namespace tessarin::testing
