// Arrays that are changed by the objects in them while an operation walks them.
#include "PlatformTest.h"

#include "TessarinFoundation/NSArray+TessarinExtensions.h"
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"

#include <cstdlib>

namespace tessarin::testing {
namespace {

// An object that adds to an array whenever it is compared or asked for its name. It equals nothing else.
class Meddler {
public:
    static NSObject make(NSMutableArray array) {
        static const ClassDefinition definition{
            {.name = "TessarinTestMeddler",
             .instanceVariables = {instanceVariable<NSMutableArray>("array")},
             .methods = {instanceMethod("isEqual:", isEqual), instanceMethod("hash", hash),
                         instanceMethod("name", name)}}};
        const NSObject object =
            adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
        instanceVariableOf<NSMutableArray>(object, "array") = array;
        return object;
    }

private:
    static void meddle(NSObject self) {
        instanceVariableOf<NSMutableArray>(self, "array").addObject("more"_ns);
    }
    static BOOL isEqual(NSObject self, SEL, NSObject other) {
        meddle(self);
        return self == other ? YES : NO;
    }
    static NSUInteger hash(NSObject, SEL) { return 0; }
    static NSString name(NSObject self, SEL) {
        meddle(self);
        return "a meddler"_ns;
    }
};

class ChangedWhileWalkedTest : public PlatformTest {
protected:
    // An array that its first object changes.
    static NSMutableArray restless() {
        const NSMutableArray array = NSMutableArray::array();
        array.addObject(Meddler::make(array));
        array.addObject("b"_ns);
        array.addObject("c"_ns);
        return array;
    }
    static constexpr char mutation[] = "NSGenericException";
};

TEST_F(ChangedWhileWalkedTest, AMergedArgumentRaises) {
    EXPECT_THROWS_NAMED(
        tessarin_arrayByMergingWithArray_receiverFirst(NSArray::arrayOf("a"_ns), restless(), true), mutation);
}

TEST_F(ChangedWhileWalkedTest, AMergedReceiverRaises) {
    EXPECT_THROWS_NAMED(
        tessarin_arrayByMergingWithArray_receiverFirst(restless(), NSArray::arrayOf("a"_ns), false),
        mutation);
}

TEST_F(ChangedWhileWalkedTest, AnArrayMergedInPlaceRaises) {
    const NSMutableArray merged = NSMutableArray::arrayWithArray(NSArray::arrayOf("a"_ns));
    EXPECT_THROWS_NAMED((tessarin_mergeWithArray(merged, restless()), 0), mutation);
}

TEST_F(ChangedWhileWalkedTest, ObjectsWhoseIndexesAreAskedForRaise) {
    const NSMutableArray searched = restless();
    // Whichever of two objects is asked whether they are equal, it is a meddler.
    const NSArray array =
        NSArray::arrayOf(Meddler::make(searched), NSObject(searched.objectAtIndex(0)), "b"_ns, "c"_ns);
    EXPECT_THROWS_NAMED(tessarin_indexesOfObjectsInArray(array, searched), mutation);
}

TEST_F(ChangedWhileWalkedTest, AnArrayThatIsSearchedByAKeyPathRaises) {
    EXPECT_THROWS_NAMED(tessarin_objectWithValue_forKeyPath(restless(), "nobody"_ns, "name"_ns), mutation);
}

// In a process of its own, since a platform may end the process instead.
using ChangedWhileWalkedDeathTest = ChangedWhileWalkedTest;

TEST_F(ChangedWhileWalkedDeathTest, AnArrayThatIsFilteredRaises) {
    const NSMutableArray array = NSMutableArray::arrayWithArray(NSArray::arrayOf("a"_ns, "b"_ns, "c"_ns));
    const auto addAnother = [&](id, NSUInteger, BOOL*) -> BOOL {
        array.addObject("more"_ns);
        return YES;
    };
    const auto filter = [&] { return tessarin_arrayWithObjectsPassingTest_options(array, addAnother, 0); };
    EXPECT_EXIT(std::_Exit(thrownName(filter) == mutation ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

// Removing works on a copy, so that what happens to the array meanwhile does not matter.
TEST_F(ChangedWhileWalkedTest, AnArrayThatObjectsAreRemovedFromIsTakenAsItWas) {
    const NSMutableArray array = restless();
    const NSMutableArray removed = NSMutableArray::array();
    for (int number = 0; number < 100; ++number) removed.addObject(NSNumber::numberWithInt(number));
    removed.addObject(Meddler::make(array));
    removed.addObject("b"_ns);
    const NSArray remaining = tessarin_arrayByRemovingObjectsInArray(array, removed);
    ASSERT_EQ(remaining.count(), 2u);
    EXPECT_EQ(remaining.objectAtIndex(0), array.objectAtIndex(0));
    EXPECT_EQ(text(as<NSString>(remaining.objectAtIndex(1))), "c");
    EXPECT_GT(array.count(), 3u);
}

// A string whose class keeps no characters, and empties an array when it is asked for its length.
NSString emptyingString(NSMutableArray array) {
    static const ClassDefinition definition{
        {.name = "TessarinTestEmptyingString",
         .superclass = "NSString",
         .instanceVariables = {instanceVariable<NSMutableArray>("array")},
         .methods = {instanceMethod(
                         "length",
                         +[](NSString self, SEL) {
                             instanceVariableOf<NSMutableArray>(self, "array").removeAllObjects();
                             return NSUInteger{1};
                         }),
                     instanceMethod(
                         "characterAtIndex:", +[](NSString, SEL, NSUInteger) { return unichar{'x'}; })}}};
    const NSString string = adopt(send<NSString>(definition.classObject().alloc(), "init"_sel)).autorelease();
    instanceVariableOf<NSMutableArray>(string, "array") = array;
    return string;
}

TEST_F(ChangedWhileWalkedTest, WhatIsComparedStaysWhileAStringsOwnCodeEmptiesTheArray) {
    const NSMutableArray receiver = NSMutableArray::array();
    {
        const AutoreleasePool pool;
        for (const char* text : {"made at run time, first", "made at run time, second"})
            receiver.addObject(NSString(std::string(text)));
    }
    const NSArray merged = tessarin_arrayByMergingWithArray_receiverFirst(
        receiver, NSArray::arrayOf(emptyingString(receiver)), true);
    EXPECT_EQ(merged.count(), 3u);
    EXPECT_EQ(text(merged.objectAtIndex(1)), "made at run time, second");
}

// An array of one name, which empties another one when it is asked for it.
NSArray emptyingArray(NSMutableArray array) {
    static const ClassDefinition definition{
        {.name = "TessarinTestEmptyingArray",
         .superclass = "NSArray",
         .instanceVariables = {instanceVariable<NSMutableArray>("array")},
         .methods = {instanceMethod(
                         "count", +[](NSArray, SEL) { return NSUInteger{1}; }),
                     instanceMethod(
                         "objectAtIndex:", +[](NSArray self, SEL, NSUInteger) {
                             instanceVariableOf<NSMutableArray>(self, "array").removeAllObjects();
                             return NSObject("its own"_ns);
                         })}}};
    const NSArray emptying = adopt(send<NSArray>(definition.classObject().alloc(), "init"_sel)).autorelease();
    instanceVariableOf<NSMutableArray>(emptying, "array") = array;
    return emptying;
}

TEST_F(ChangedWhileWalkedTest, WhatIsMergedStaysWhileTheArgumentEmptiesTheReceiver) {
    const NSMutableArray receiver = NSMutableArray::array();
    {
        const AutoreleasePool pool;
        for (const char* text : {"made at run time, first", "made at run time, second"})
            receiver.addObject(NSString(std::string(text)));
    }
    const NSArray merged =
        tessarin_arrayByMergingWithArray_receiverFirst(receiver, emptyingArray(receiver), true);
    EXPECT_EQ(receiver.count(), 0u);
    ASSERT_EQ(merged.count(), 3u);
    EXPECT_EQ(text(merged.objectAtIndex(1)), "made at run time, second");
    EXPECT_EQ(text(merged.objectAtIndex(2)), "its own");
}

// An array that answers nil for its items, which no array may.
TEST_F(ChangedWhileWalkedTest, AnArrayOfNilIsThePlatformsMatter) {
    static const ClassDefinition definition{
        {.name = "TessarinTestArrayOfNil",
         .superclass = "NSArray",
         .methods = {instanceMethod(
                         "count", +[](NSArray, SEL) { return NSUInteger{2}; }),
                     instanceMethod(
                         "objectAtIndex:", +[](NSArray, SEL, NSUInteger) { return NSObject(); })}}};
    const NSArray ofNil = adopt(send<NSArray>(definition.classObject().alloc(), "init"_sel)).autorelease();
    EXPECT_THROWS_NAMED(tessarin_arrayByMergingWithArray_receiverFirst(NSArray::arrayOf("a"_ns), ofNil, true),
                        "NSInvalidArgumentException");
}

} // namespace
} // namespace tessarin::testing
