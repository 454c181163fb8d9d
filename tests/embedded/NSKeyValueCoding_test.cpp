// What key-value coding costs the embedded platform.
#include "PlatformTest.h"

#include "platform/embedded/runtime/Selectors.h"

namespace tessarin::testing {
namespace {

class EmbeddedKeyValueCodingTest : public PlatformTest {
protected:
    const NSObject object = adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel)).autorelease();
};

TEST_F(EmbeddedKeyValueCodingTest, AKeyThatIsNotKnownLeavesNoSelectorBehind) {
    EXPECT_THROWS_NAMED(object.valueForKey("unheardOf"_ns), "NSUnknownKeyException");
    EXPECT_THROWS_NAMED(object.setValue_forKey(object, "unheardOf"_ns), "NSUnknownKeyException");
    for (const char* name : {"unheardOf", "getUnheardOf", "isUnheardOf", "setUnheardOf:"})
        EXPECT_EQ(embedded::findSelector(name), nullptr) << name;
    EXPECT_EQ(embedded::findSelector("valueForKey:"), "valueForKey:"_sel);
}

TEST_F(EmbeddedKeyValueCodingTest, WhatBeginsOrEndsALifeIsNoKey) {
    const NSArray holder = NSArray::arrayOf("literal"_ns);
    for (const NSString key : {"init"_ns, "copy"_ns, "mutableCopy"_ns, "retain"_ns, "release"_ns,
                               "autorelease"_ns, "dealloc"_ns}) {
        EXPECT_THROWS_NAMED(holder.valueForKey(key), "NSUnknownKeyException") << text(key);
        const NSSortDescriptor descriptor = NSSortDescriptor::sortDescriptorWithKey_ascending(key, true);
        EXPECT_THROWS_NAMED(descriptor.compareObject_toObject("literal"_ns, "other"_ns),
                            "NSUnknownKeyException")
            << text(key);
    }
    EXPECT_EQ(text("literal"_ns), "literal");
    const NSObject classObject = NSObject::classObject();
    EXPECT_THROWS_NAMED(classObject.valueForKey("alloc"_ns), "NSUnknownKeyException");
    EXPECT_THROWS_NAMED(classObject.valueForKey("new"_ns), "NSUnknownKeyException");
}

TEST_F(EmbeddedKeyValueCodingTest, AnInitialiserOfAnyNameIsNoKeyAndAnInitialValueIsOne) {
    const auto answer = +[](NSObject, SEL) { return id("answer"_ns); };
    static const ClassDefinition definition{
        {.name = "EmbeddedKeyValueCodingTestInitials",
         .instanceVariables = {instanceVariable<int>("_copy")},
         .methods = {instanceMethod("initWhole", answer), instanceMethod("initial", answer),
                     instanceMethod("copyright", answer)}}};
    const NSObject made =
        adopt(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel)).autorelease();
    EXPECT_THROWS_NAMED(made.valueForKey("initWhole"_ns), "NSUnknownKeyException");
    EXPECT_EQ(made.valueForKey("initial"_ns), "answer"_ns);
    EXPECT_EQ(made.valueForKey("copyright"_ns), "answer"_ns);
    // The instance variable.
    made.setValue_forKey(NSNumber::numberWithInt(3), "copy"_ns);
    EXPECT_EQ(as<NSNumber>(made.valueForKey("copy"_ns)).intValue(), 3);
}

TEST_F(EmbeddedKeyValueCodingTest, APathMayBeOfAnyLength) {
    std::string path = "self";
    for (int step = 0; step < 200'000; ++step) path += ".self";
    EXPECT_EQ(object.valueForKeyPath(NSString(path)), object);
    EXPECT_EQ(as<NSNumber>(object.valueForKeyPath(NSString(path + ".hash"))).unsignedIntegerValue(),
              object.hash());
    EXPECT_THROWS_NAMED(object.valueForKey(NSString(path)), "NSUnknownKeyException");
}

// ---- Arrays in arrays

// Objects of which the innermost array holds one, in so many arrays.
Retained<NSObject> nested(NSObject innermost, int levels) {
    Retained<NSObject> container = retain(innermost);
    for (int level = 0; level < levels; ++level) {
        const AutoreleasePool pool;
        container = retain(NSObject(NSArray::arrayOf(container)));
    }
    return container;
}

TEST_F(EmbeddedKeyValueCodingTest, ArraysMayBeNestedToAnyDepth) {
    constexpr int levels = 500'000;
    const Retained<NSObject> container = nested("four"_ns, levels);
    const Retained<NSObject> values = retain(NSObject(container.valueForKey("length"_ns)));
    NSObject value = values;
    for (int level = 0; level < levels; ++level) {
        ASSERT_EQ(as<NSArray>(value).count(), 1u);
        value = as<NSArray>(value).objectAtIndex(0);
    }
    EXPECT_EQ(as<NSNumber>(value).intValue(), 4);
}

TEST_F(EmbeddedKeyValueCodingTest, ArraysNestedToAnyDepthPassOnWhatIsSet) {
    const NSMutableDictionary innermost = NSMutableDictionary::dictionary();
    const Retained<NSObject> container = nested(innermost, 500'000);
    container.setValue_forKey("v"_ns, "k"_ns);
    EXPECT_EQ(innermost.objectForKey("k"_ns), "v"_ns);
}

TEST_F(EmbeddedKeyValueCodingTest, EachItemOfNestedArraysIsAsked) {
    const NSArray array = NSArray::arrayOf(
        "a"_ns, NSArray::arrayOf("bb"_ns, NSArray::array(), NSArray::arrayOf("ccc"_ns)), "dddd"_ns);
    const NSArray values = as<NSArray>(array.valueForKey("length"_ns));
    const auto number = [](int value) { return NSNumber::numberWithInt(value); };
    EXPECT_TRUE(values.isEqual(NSArray::arrayOf(
        number(1), NSArray::arrayOf(number(2), NSArray::array(), NSArray::arrayOf(number(3))), number(4))));
}

TEST_F(EmbeddedKeyValueCodingTest, AnArrayInItselfRaises) {
    const Retained<NSMutableArray> circular = adopt(NSMutableArray::alloc().init());
    circular.addObject(NSArray::arrayOf(circular));
    EXPECT_THROWS_NAMED(circular.valueForKey("length"_ns), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED((circular.setValue_forKey("v"_ns, "k"_ns), 0), "NSInvalidArgumentException");
    circular.removeAllObjects();
}

TEST_F(EmbeddedKeyValueCodingTest, ArraysThatStandForMoreItemsThanThereIsTimeForRaise) {
    NSArray array = NSArray::arrayOf(NSMutableDictionary::dictionary());
    for (int level = 0; level < 40; ++level) array = NSArray::arrayOf(array, array);
    EXPECT_THROWS_NAMED(array.valueForKey("k"_ns), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED((array.setValue_forKey("v"_ns, "k"_ns), 0), "NSInvalidArgumentException");
}

TEST_F(EmbeddedKeyValueCodingTest, APathWithManyOperatorsRaises) {
    const auto path = [](int operators) {
        std::string text;
        for (int count = 0; count < operators; ++count) text += "@sum.";
        return NSString(text + "self");
    };
    NSArray array = NSArray::arrayOf(NSNumber::numberWithInt(3));
    for (int level = 1; level < 64; ++level) array = NSArray::arrayOf(array);
    EXPECT_EQ(as<NSNumber>(array.valueForKeyPath(path(64))).intValue(), 3);
    EXPECT_THROWS_NAMED(array.valueForKeyPath(path(65)), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(array.valueForKeyPath(path(100'000)), "NSInvalidArgumentException");
}

} // namespace
} // namespace tessarin::testing
