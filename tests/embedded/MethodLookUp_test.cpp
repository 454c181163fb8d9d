// Methods that are found while others take their places.
#include "platform/embedded/runtime/Classes.h"

#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class MethodLookUpTest : public PlatformTest {};

id answerNil(NSObject, SEL) { return nil; }
int answerOne(NSObject, SEL) { return 1; }

TEST_F(MethodLookUpTest, WhatWasFoundStaysAsItWasWhenAnotherMethodTakesItsPlace) {
    static const ClassDefinition definition{
        {.name = "MethodLookUpTestObject", .methods = {instanceMethod("value", answerNil)}}};
    embedded::RuntimeClass* const record = embedded::runtimeClass(definition.classObject().object());
    const auto found = embedded::findMethod(record, "value"_sel);
    const MethodRow another = instanceMethod("value", answerOne);
    {
        const std::lock_guard lock(embedded::runtimeMutex());
        embedded::addMethod(record, "value"_sel, {another.implementation, another.encoding});
    }
    EXPECT_EQ(found->encoding[0], '@');
    EXPECT_EQ(embedded::findMethod(record, "value"_sel)->encoding[0], 'i');
}

TEST_F(MethodLookUpTest, AMethodThatNoClassHasIsNotFound) {
    embedded::RuntimeClass* const record = embedded::runtimeClass(NSObject::classObject().object());
    EXPECT_FALSE(embedded::findMethod(record, "methodLookUpTestNothing"_sel));
}

} // namespace
} // namespace tessarin::testing
