// Mutable arrays.
#include "PlatformTest.h"

#include "TessarinPlatform/ArrayEditing.h"
#include "TessarinPlatform/NSMutableArray.h"

namespace tessarin::testing {
namespace {

class NSMutableArrayTest : public PlatformTest {
protected:
    static NSMutableArray arrayOf(const Texts& items) {
        const NSMutableArray array = NSMutableArray::array();
        for (const std::string& item : items) array.addObject(NSString(item));
        return array;
    }
};

TEST_F(NSMutableArrayTest, GrowsByAdding) {
    const NSMutableArray array = NSMutableArray::arrayWithCapacity(1);
    for (int number = 0; number < 1000; ++number) array.addObject(NSNumber::numberWithInt(number));
    EXPECT_EQ(array.count(), 1000u);
    EXPECT_EQ(as<NSNumber>(static_cast<NSObject>(array.objectAtIndex(777))).intValue(), 777);
}

TEST_F(NSMutableArrayTest, InsertsAnywhere) {
    const NSMutableArray array = arrayOf({"b"});
    array.insertObject_atIndex("a"_ns, 0);
    array.insertObject_atIndex("c"_ns, 2);
    EXPECT_EQ(texts(array), (Texts{"a", "b", "c"}));
    EXPECT_THROWS_NAMED(array.insertObject_atIndex("d"_ns, 4), "NSRangeException");
}

TEST_F(NSMutableArrayTest, RefusesNil) {
    const NSMutableArray array = arrayOf({"a"});
    EXPECT_THROWS_NAMED(array.addObject(nil), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(array.insertObject_atIndex(nil, 0), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(array.replaceObjectAtIndex_withObject(0, nil), "NSInvalidArgumentException");
    EXPECT_EQ(texts(array), (Texts{"a"}));
}

TEST_F(NSMutableArrayTest, Replaces) {
    const NSMutableArray array = arrayOf({"a", "b"});
    array.replaceObjectAtIndex_withObject(1, "c"_ns);
    EXPECT_EQ(texts(array), (Texts{"a", "c"}));
    EXPECT_THROWS_NAMED(array.replaceObjectAtIndex_withObject(2, "d"_ns), "NSRangeException");
}

TEST_F(NSMutableArrayTest, ReplacesAnObjectByItself) {
    const NSMutableArray array = NSMutableArray::array();
    {
        const AutoreleasePool pool;
        array.addObject(NSMutableString::stringWithString("a"_ns));
    }
    array.replaceObjectAtIndex_withObject(0, array.objectAtIndex(0));
    EXPECT_EQ(texts(array), (Texts{"a"}));
}

TEST_F(NSMutableArrayTest, Exchanges) {
    const NSMutableArray array = arrayOf({"a", "b", "c"});
    array.exchangeObjectAtIndex_withObjectAtIndex(0, 2);
    EXPECT_EQ(texts(array), (Texts{"c", "b", "a"}));
    EXPECT_THROWS_NAMED(array.exchangeObjectAtIndex_withObjectAtIndex(0, 3), "NSRangeException");
}

TEST_F(NSMutableArrayTest, AddsTheObjectsOfAnotherArray) {
    const NSMutableArray array = arrayOf({"a"});
    array.addObjectsFromArray(arrayOf({"b", "c"}));
    array.addObjectsFromArray(nil);
    EXPECT_EQ(texts(array), (Texts{"a", "b", "c"}));
}

TEST_F(NSMutableArrayTest, AddsItsOwnObjects) {
    const NSMutableArray array = arrayOf({"a", "b", "c", "d", "e"});
    array.addObjectsFromArray(array);
    EXPECT_EQ(texts(array), (Texts{"a", "b", "c", "d", "e", "a", "b", "c", "d", "e"}));
}

TEST_F(NSMutableArrayTest, TakesTheObjectsOfAnotherArray) {
    const NSMutableArray array = arrayOf({"a"});
    array.setArray(arrayOf({"b", "c"}));
    EXPECT_EQ(texts(array), (Texts{"b", "c"}));
    array.setArray(nil);
    EXPECT_EQ(array.count(), 0u);
}

TEST_F(NSMutableArrayTest, TakesItsOwnObjects) {
    const NSMutableArray array = arrayOf({"a", "b"});
    array.setArray(array);
    EXPECT_EQ(texts(array), (Texts{"a", "b"}));
}

TEST_F(NSMutableArrayTest, RemovesByIndex) {
    const NSMutableArray array = arrayOf({"a", "b", "c"});
    array.removeObjectAtIndex(1);
    EXPECT_EQ(texts(array), (Texts{"a", "c"}));
    array.removeLastObject();
    EXPECT_EQ(texts(array), (Texts{"a"}));
    EXPECT_THROWS_NAMED(array.removeObjectAtIndex(1), "NSRangeException");
}

TEST_F(NSMutableArrayTest, RemovingTheLastOfNoneIsNothing) {
    EXPECT_THROWS_NAMED(NSMutableArray::array().removeLastObject(), "(nothing)");
}

TEST_F(NSMutableArrayTest, RemovesARange) {
    const NSMutableArray array = arrayOf({"a", "b", "c", "d"});
    array.removeObjectsInRange({1, 2});
    EXPECT_EQ(texts(array), (Texts{"a", "d"}));
    EXPECT_THROWS_NAMED(array.removeObjectsInRange({1, 2}), "NSRangeException");
    array.removeAllObjects();
    EXPECT_EQ(array.count(), 0u);
}

TEST_F(NSMutableArrayTest, RemovesEveryEqualObject) {
    const NSMutableArray array = arrayOf({"a", "b", "a", "c", "a"});
    array.removeObject("a"_ns);
    array.removeObject("x"_ns);
    array.removeObject(nil);
    EXPECT_EQ(texts(array), (Texts{"b", "c"}));
}

TEST_F(NSMutableArrayTest, RemovesEveryIdenticalObject) {
    const NSString other = NSMutableString::stringWithString("a"_ns);
    const NSMutableArray array = NSMutableArray::array();
    for (const NSString item : {"a"_ns, other, "a"_ns}) array.addObject(item);
    array.removeObjectIdenticalTo("a"_ns);
    EXPECT_EQ(array.count(), 1u);
    EXPECT_EQ(array.objectAtIndex(0), other);
}

TEST_F(NSMutableArrayTest, RemovesTheObjectsOfAnotherArray) {
    const NSMutableArray array = arrayOf({"a", "b", "c", "b"});
    array.removeObjectsInArray(arrayOf({"b", "x"}));
    array.removeObjectsInArray(nil);
    EXPECT_EQ(texts(array), (Texts{"a", "c"}));
    array.removeObjectsInArray(array);
    EXPECT_EQ(array.count(), 0u);
}

TEST_F(NSMutableArrayTest, RemovesManyObjectsOfManyKinds) {
    const NSMutableArray array = NSMutableArray::array();
    const NSMutableArray removed = NSMutableArray::array();
    for (int number = 0; number < 1000; ++number) {
        array.addObject(NSNumber::numberWithInt(number));
        array.addObject(NSNumber::numberWithInt(number).stringValue());
        if (number % 2 == 0) removed.addObject(NSNumber::numberWithDouble(number));
        if (number % 3 == 0) removed.addObject(NSNumber::numberWithInt(number).stringValue());
    }
    array.removeObjectsInArray(removed);
    EXPECT_EQ(array.count(), 500u + 666u);
    EXPECT_FALSE(array.containsObject(NSNumber::numberWithInt(10)));
    EXPECT_TRUE(array.containsObject("10"_ns));
}

TEST_F(NSMutableArrayTest, ReleasesWhatItRemoves) {
    const Retained<NSMutableString> item = adopt(NSMutableString::alloc().init());
    const NSMutableArray array = NSMutableArray::array();
    for (int time = 0; time < 5; ++time) array.addObject(item);
    EXPECT_EQ(item.retainCount(), 6u);
    array.removeObjectAtIndex(0);
    array.removeLastObject();
    array.replaceObjectAtIndex_withObject(0, "x"_ns);
    EXPECT_EQ(item.retainCount(), 3u);
    array.removeObjectsInRange({1, 1});
    array.removeObject(item);
    EXPECT_EQ(item.retainCount(), 1u);
}

TEST_F(NSMutableArrayTest, SortsStably) {
    const NSMutableArray array = arrayOf({"b", "A", "a", "B", "c", "C"});
    array.sortUsingSelector("caseInsensitiveCompare:"_sel);
    EXPECT_EQ(texts(array), (Texts{"A", "a", "b", "B", "c", "C"}));
}

TEST_F(NSMutableArrayTest, SortsManyObjects) {
    const NSMutableArray array = NSMutableArray::array();
    constexpr int count = 997;
    for (int number = 0; number < count; ++number)
        array.addObject(NSNumber::numberWithInt(number * 31 % count));
    array.sortUsingSelector("compare:"_sel);
    for (int number = 0; number < count; ++number) {
        const NSNumber item = array.objectAtIndex(static_cast<NSUInteger>(number));
        EXPECT_EQ(item.intValue(), number);
    }
}

NSComparisonResult alwaysAscending(NSObject, SEL, NSObject) { return NSOrderedAscending; }
NSComparisonResult alwaysDescending(NSObject, SEL, NSObject) { return NSOrderedDescending; }
NSComparisonResult refuseToCompare(NSObject, SEL, NSObject) {
    raise(NSGenericException(), "no comparison"_ns);
}

TEST_F(NSMutableArrayTest, BearsComparisonsThatContradictThemselves) {
    static const ClassDefinition definition{{.name = "NSMutableArrayTestIncomparable",
                                             .methods = {instanceMethod("ascending:", alwaysAscending),
                                                         instanceMethod("descending:", alwaysDescending),
                                                         instanceMethod("refusing:", refuseToCompare)}}};
    const NSMutableArray array = NSMutableArray::array();
    for (int number = 0; number < 100; ++number)
        array.addObject(adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)));
    array.sortUsingSelector("ascending:"_sel);
    array.sortUsingSelector("descending:"_sel);
    EXPECT_EQ(array.count(), 100u);
    EXPECT_THROWS_NAMED(array.sortUsingSelector("refusing:"_sel), "NSGenericException");
    EXPECT_EQ(array.count(), 100u);
    EXPECT_NE(array.objectAtIndex(0), array.objectAtIndex(99));
}

TEST_F(NSMutableArrayTest, NothingToReorderIsNoChange) {
    EXPECT_TRUE(itemsToReorder(nil).empty());
    const NSMutableArray empty = NSMutableArray::array();
    NSFastEnumerationState walk{};
    NSObject buffer[1];
    NSObject* const first = buffer;
    send<NSUInteger>(empty, "countByEnumeratingWithState:objects:count:"_sel, &walk, first, NSUInteger{1});
    const NSUInteger mutations = *walk.mutationsPtr;
    EXPECT_TRUE(itemsToReorder(empty).empty());
    EXPECT_EQ(*walk.mutationsPtr, mutations);
}

TEST_F(NSMutableArrayTest, CopiesAreApart) {
    const NSMutableArray array = arrayOf({"a"});
    const Retained<NSArray> copy = adopt(array.copy());
    const Retained<NSMutableArray> mutableCopy = adopt(array.mutableCopy());
    array.addObject("b"_ns);
    mutableCopy.addObject("c"_ns);
    EXPECT_EQ(texts(copy), (Texts{"a"}));
    EXPECT_EQ(texts(mutableCopy), (Texts{"a", "c"}));
    EXPECT_EQ(texts(array), (Texts{"a", "b"}));
    EXPECT_FALSE(copy.respondsToSelector("addObject:"));
}

TEST_F(NSMutableArrayTest, ChangingItWhileItIsWalkedRaises) {
    const NSMutableArray array = arrayOf({"a", "b", "c"});
    const auto walkChanging = [&] {
        for (const NSString item : array) array.addObject(item);
    };
    EXPECT_EQ(thrownName(walkChanging), "NSGenericException");
}

// ---- A subclass that keeps its objects in an array of its own

NSMutableArray& itemsOf(NSObject self) { return instanceVariableOf<NSMutableArray>(self, "items"); }

NSObject initHolder(NSObject self, SEL) {
    itemsOf(self) = NSMutableArray::alloc().init();
    return self;
}
void deallocHolder(NSObject self, SEL) {
    runtime::release(itemsOf(self).object());
    sendSuper<void>(self, "NSMutableArrayTestHolder"_class, "dealloc"_sel);
}
NSUInteger countOfHolder(NSObject self, SEL) { return itemsOf(self).count(); }
id objectInHolder(NSObject self, SEL, NSUInteger index) { return itemsOf(self).objectAtIndex(index); }
void insertInHolder(NSObject self, SEL, NSObject object, NSUInteger index) {
    itemsOf(self).insertObject_atIndex(object, index);
}
void addToHolder(NSObject self, SEL, NSObject object) { itemsOf(self).addObject(object); }
void removeFromHolder(NSObject self, SEL, NSUInteger index) { itemsOf(self).removeObjectAtIndex(index); }
void removeLastFromHolder(NSObject self, SEL) { itemsOf(self).removeLastObject(); }
void replaceInHolder(NSObject self, SEL, NSUInteger index, NSObject object) {
    itemsOf(self).replaceObjectAtIndex_withObject(index, object);
}

NSMutableArray holder() {
    static const ClassDefinition definition{
        {.name = "NSMutableArrayTestHolder",
         .superclass = "NSMutableArray",
         .instanceVariables = {instanceVariable<NSMutableArray>("items")},
         .methods = {instanceMethod("init", initHolder), instanceMethod("dealloc", deallocHolder),
                     instanceMethod("count", countOfHolder), instanceMethod("objectAtIndex:", objectInHolder),
                     instanceMethod("insertObject:atIndex:", insertInHolder),
                     instanceMethod("addObject:", addToHolder),
                     instanceMethod("removeObjectAtIndex:", removeFromHolder),
                     instanceMethod("removeLastObject", removeLastFromHolder),
                     instanceMethod("replaceObjectAtIndex:withObject:", replaceInHolder)}}};
    return adopt(send<NSMutableArray>(definition.classObject().alloc(), "init"_sel)).autorelease();
}

TEST_F(NSMutableArrayTest, ASubclassIsEditedThroughItsPrimitiveOperations) {
    const NSMutableArray array = holder();
    array.addObjectsFromArray(arrayOf({"c", "a", "b", "a", "d"}));
    array.removeObject("a"_ns);
    EXPECT_EQ(texts(array), (Texts{"c", "b", "d"}));
    array.sortUsingSelector("compare:"_sel);
    EXPECT_EQ(texts(array), (Texts{"b", "c", "d"}));
    array.exchangeObjectAtIndex_withObjectAtIndex(0, 2);
    array.removeObjectsInRange({1, 1});
    EXPECT_EQ(texts(array), (Texts{"d", "b"}));
    array.setArray(arrayOf({"x", "y"}));
    EXPECT_EQ(texts(array), (Texts{"x", "y"}));
    array.removeAllObjects();
    EXPECT_EQ(array.count(), 0u);
}

} // namespace
} // namespace tessarin::testing
