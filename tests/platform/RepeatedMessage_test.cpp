// One message sent to many objects in a row.
#include "NewClassName.h"
#include "PlatformTest.h"

#include "TessarinPlatform/RepeatedMessage.h"

namespace tessarin::testing {
namespace {

class RepeatedMessageTest : public PlatformTest {
protected:
    static NSObject make(const ClassDefinition& definition) {
        return adopt(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel)).autorelease();
    }
};

NSInteger answerOne(NSObject, SEL) { return 1; }
NSInteger answerTwo(NSObject, SEL) { return 2; }

TEST_F(RepeatedMessageTest, AsksObjectsOfAnyClasses) {
    static const ClassDefinition one{
        {.name = "RepeatedMessageTestOne", .methods = {instanceMethod("answerOfRepeated", answerOne)}}};
    static const ClassDefinition two{{.name = "RepeatedMessageTestTwo",
                                      .superclass = "RepeatedMessageTestOne",
                                      .methods = {instanceMethod("answerOfRepeated", answerTwo)}}};
    static const ClassDefinition inheriting{
        {.name = "RepeatedMessageTestInheriting", .superclass = "RepeatedMessageTestOne"}};
    RepeatedMessage<NSInteger()> answer("answerOfRepeated"_sel);
    // The first time no class has answered a message of that name.
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(answer(make(one)), 1);
        EXPECT_EQ(answer(make(two)), 2);
        EXPECT_EQ(answer(make(two)), 2);
        EXPECT_EQ(answer(make(inheriting)), 1);
        EXPECT_EQ(answer(make(one)), 1);
    }
}

TEST_F(RepeatedMessageTest, TellsTheMethodBeforeItIsCalled) {
    static const ClassDefinition definition{
        {.name = "RepeatedMessageTestTold", .methods = {instanceMethod("answerOfTold", answerTwo)}}};
    const NSObject object = make(definition);
    RepeatedMessage<NSInteger()> answer("answerOfTold"_sel);
    for (int round = 0; round < 2; ++round) {
        const Implementation method = answer.methodOf(object);
        EXPECT_EQ(method, runtime::lookUpInClass(definition.classObject().object(), "answerOfTold"_sel));
        EXPECT_EQ(answer.call(method, object), 2);
        EXPECT_EQ(answer.methodOf(nil), nullptr);
        EXPECT_EQ(answer.call(answer.methodOf(nil), nil), 0);
    }
}

TEST_F(RepeatedMessageTest, HandsOnArguments) {
    RepeatedMessage<NSString(NSString)> append("stringByAppendingString:"_sel);
    EXPECT_EQ(text(append("a"_ns, "b"_ns)), "ab");
    EXPECT_EQ(text(append(NSMutableString::stringWithString("c"_ns), "d"_ns)), "cd");
    RepeatedMessage<void(NSString)> appendInPlace("appendString:"_sel);
    const NSMutableString all = NSMutableString::stringWithString("e"_ns);
    appendInPlace(all, "f"_ns);
    appendInPlace(all, "g"_ns);
    EXPECT_EQ(text(all), "efg");
}

TEST_F(RepeatedMessageTest, NilAnswersZero) {
    RepeatedMessage<NSUInteger()> length("length"_sel);
    RepeatedMessage<double()> value("doubleValue"_sel);
    RepeatedMessage<void(NSString)> append("appendString:"_sel);
    EXPECT_EQ(length(nil), 0u);
    EXPECT_EQ(length("abc"_ns), 3u);
    EXPECT_EQ(length(nil), 0u);
    EXPECT_EQ(value("2.5"_ns), 2.5);
    EXPECT_EQ(value(nil), 0.0);
    append(nil, "a"_ns);
}

TEST_F(RepeatedMessageTest, AsksClassesThatHaveAnsweredNothingYet) {
    // Classes that have answered nothing yet have no methods found before to be told apart by.
    static const ClassDefinition first{
        {.name = "RepeatedMessageTestFirst", .methods = {instanceMethod("answerOfUnasked", answerOne)}}};
    static const ClassDefinition second{
        {.name = "RepeatedMessageTestSecond", .methods = {instanceMethod("answerOfUnasked", answerTwo)}}};
    const Retained<NSObject> one = adopt(NSObject(first.classObject().alloc()));
    const Retained<NSObject> two = adopt(NSObject(second.classObject().alloc()));
    RepeatedMessage<NSInteger()> answer("answerOfUnasked"_sel);
    EXPECT_EQ(answer(one), 1);
    EXPECT_EQ(answer(two), 2);
    EXPECT_EQ(answer(one), 1);
}

TEST_F(RepeatedMessageTest, AMethodThatIsReplacedMeanwhileIsTheOneThatIsCalled) {
    const std::string name = newClassName("RepeatedMessageTestReplaced");
    const ClassDefinition definition{
        {.name = name.c_str(), .methods = {instanceMethod("answerOfReplaced", answerOne)}}};
    const ClassDefinition inheriting{{.name = (name + "Too").c_str(), .superclass = name.c_str()}};
    const NSObject object = make(definition), other = make(inheriting);
    RepeatedMessage<NSInteger()> answer("answerOfReplaced"_sel);
    RepeatedMessage<NSInteger()> inherited("answerOfReplaced"_sel);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(answer(object), 1);
        EXPECT_EQ(inherited(other), 1);
    }
    const ExtensionGroup group{name.c_str(), "Later", {instanceMethod("answerOfReplaced", answerTwo)}};
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(answer(object), 2);
        EXPECT_EQ(inherited(other), 2);
    }
}

TEST_F(RepeatedMessageTest, WhatNobodyAnswersRaises) {
    RepeatedMessage<NSInteger()> answer("answerOfNobody"_sel);
    for (int round = 0; round < 2; ++round)
        EXPECT_THROWS_NAMED(answer("text"_ns), "NSInvalidArgumentException");
    RepeatedMessage<NSUInteger()> length("length"_sel);
    EXPECT_EQ(length("abc"_ns), 3u);
    EXPECT_THROWS_NAMED(length(NSArray::array()), "NSInvalidArgumentException");
    EXPECT_EQ(length("abcd"_ns), 4u);
}

} // namespace
} // namespace tessarin::testing
