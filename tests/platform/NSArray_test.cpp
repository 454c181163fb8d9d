// Immutable arrays.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

class NSArrayTest : public PlatformTest {
protected:
    // A string that is equal to a constant one but another object.
    static NSString madeString(const char* utf8) {
        return adopt(NSMutableString::stringWithString(NSString(utf8)).mutableCopy()).autorelease();
    }
    const NSArray abc_ = NSArray::arrayOf("a"_ns, "b"_ns, "c"_ns);
};

// ---- Making

TEST_F(NSArrayTest, HoldsWhatItIsMadeOf) {
    EXPECT_EQ(texts(NSArray::arrayOf("a"_ns, "b"_ns)), (Texts{"a", "b"}));
    EXPECT_EQ(texts(NSArray::arrayWithObject("a"_ns)), (Texts{"a"}));
    EXPECT_EQ(NSArray::array().count(), 0u);
    const Retained<NSArray> none = adopt(NSArray::alloc().init());
    EXPECT_EQ(none.count(), 0u);
}

TEST_F(NSArrayTest, TakesAListOfArgumentsThatEndsWithNil) {
    EXPECT_EQ(
        texts(sendVariadic<NSArray>(NSArray::classObject(), "arrayWithObjects:"_sel, "a"_ns, "b"_ns, nil)),
        (Texts{"a", "b"}));
    const Retained<NSArray> array =
        adopt(sendVariadic<NSArray>(NSArray::alloc(), "initWithObjects:"_sel, "a"_ns, "b"_ns, "c"_ns, nil));
    EXPECT_EQ(texts(array), (Texts{"a", "b", "c"}));
}

TEST_F(NSArrayTest, KeepsItsObjects) {
    Retained<NSArray> array;
    Retained<NSMutableString> item = adopt(NSMutableString::alloc().init());
    {
        const AutoreleasePool pool;
        array = retain(NSArray::arrayWithObject(item));
    }
    EXPECT_EQ(item.retainCount(), 2u);
    array.reset();
    EXPECT_EQ(item.retainCount(), 1u);
}

TEST_F(NSArrayTest, AnArrayOfAnArrayHoldsTheSameObjects) {
    const NSMutableArray source = NSMutableArray::arrayWithArray(abc_);
    const NSArray array = NSArray::arrayWithArray(source);
    source.removeAllObjects();
    EXPECT_EQ(texts(array), (Texts{"a", "b", "c"}));
}

TEST_F(NSArrayTest, AnArrayOfNilIsEmpty) {
    EXPECT_EQ(NSArray::arrayWithArray(nil).count(), 0u);
    const Retained<NSArray> array = adopt(NSArray::alloc().initWithArray_copyItems(nil, true));
    EXPECT_TRUE(array);
    EXPECT_EQ(array.count(), 0u);
}

TEST_F(NSArrayTest, RefusesNil) {
    EXPECT_THROWS_NAMED(NSArray::arrayOf("a"_ns, NSString()), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(NSArray::arrayWithObject(nil), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(abc_.arrayByAddingObject(nil), "NSInvalidArgumentException");
}

TEST_F(NSArrayTest, CopiesItsItemsOnRequest) {
    const NSMutableString item = NSMutableString::stringWithString("a"_ns);
    const Retained<NSArray> array =
        adopt(NSArray::alloc().initWithArray_copyItems(NSArray::arrayWithObject(item), true));
    item.appendString("b"_ns);
    EXPECT_EQ(texts(array), (Texts{"a"}));
}

TEST_F(NSArrayTest, ItemsThatCannotBeCopiedRaise) {
    const Retained<NSObject> item = adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel));
    const NSArray items = NSArray::arrayOf("a"_ns, item);
    EXPECT_THROWS_NAMED(adopt(NSArray::alloc().initWithArray_copyItems(items, true)),
                        "NSInvalidArgumentException");
}

// ---- Reading

TEST_F(NSArrayTest, AnswersItsObjectsByIndex) {
    EXPECT_EQ(abc_.count(), 3u);
    EXPECT_EQ(abc_.objectAtIndex(1), "b"_ns);
    EXPECT_EQ(abc_.firstObject(), "a"_ns);
    EXPECT_EQ(abc_.lastObject(), "c"_ns);
    EXPECT_EQ(NSArray::array().firstObject(), nil);
    EXPECT_EQ(NSArray::array().lastObject(), nil);
}

TEST_F(NSArrayTest, RaisesBeyondItsBounds) {
    EXPECT_THROWS_NAMED(abc_.objectAtIndex(3), "NSRangeException");
    EXPECT_THROWS_NAMED(abc_.objectAtIndex(notFound), "NSRangeException");
    EXPECT_THROWS_NAMED(NSArray::array().objectAtIndex(0), "NSRangeException");
}

TEST_F(NSArrayTest, AnswersARangeOfObjects) {
    NSObject objects[2];
    abc_.getObjects_range(objects, {1, 2});
    EXPECT_EQ(objects[0], "b"_ns);
    EXPECT_EQ(objects[1], "c"_ns);
    EXPECT_THROWS_NAMED(abc_.getObjects_range(objects, {2, 2}), "NSRangeException");
}

TEST_F(NSArrayTest, FindsAnEqualObject) {
    EXPECT_EQ(abc_.indexOfObject(madeString("b")), 1u);
    EXPECT_TRUE(abc_.containsObject(madeString("c")));
    EXPECT_EQ(abc_.indexOfObject("d"_ns), notFound);
    EXPECT_FALSE(abc_.containsObject("d"_ns));
}

TEST_F(NSArrayTest, FindsTheIdenticalObject) {
    const NSString second = madeString("a");
    const NSArray array = NSArray::arrayOf("a"_ns, second);
    EXPECT_EQ(array.indexOfObject(second), 0u);
    EXPECT_EQ(array.indexOfObjectIdenticalTo(second), 1u);
    EXPECT_EQ(array.indexOfObjectIdenticalTo(madeString("a")), notFound);
}

TEST_F(NSArrayTest, FindsNoNil) {
    EXPECT_EQ(abc_.indexOfObject(nil), notFound);
    EXPECT_EQ(abc_.indexOfObjectIdenticalTo(nil), notFound);
    EXPECT_FALSE(abc_.containsObject(nil));
}

// ---- Equality

TEST_F(NSArrayTest, EqualsAnArrayOfEqualObjectsInTheSameOrder) {
    EXPECT_TRUE(abc_.isEqual(NSArray::arrayOf(madeString("a"), madeString("b"), madeString("c"))));
    EXPECT_TRUE(abc_.isEqualToArray(NSMutableArray::arrayWithArray(abc_)));
    EXPECT_FALSE(abc_.isEqual(NSArray::arrayOf("a"_ns, "c"_ns, "b"_ns)));
    EXPECT_FALSE(abc_.isEqual(NSArray::arrayOf("a"_ns, "b"_ns)));
    EXPECT_FALSE(abc_.isEqual("a"_ns));
    EXPECT_FALSE(abc_.isEqual(nil));
    EXPECT_FALSE(abc_.isEqualToArray(nil));
}

TEST_F(NSArrayTest, EqualArraysHaveEqualHashes) {
    EXPECT_EQ(abc_.hash(), NSArray::arrayOf(madeString("a"), madeString("b"), madeString("c")).hash());
    EXPECT_EQ(abc_.hash(), NSMutableArray::arrayWithArray(abc_).hash());
}

TEST_F(NSArrayTest, HashesAsItsCount) { EXPECT_EQ(abc_.hash(), 3u); }

// ---- Copying

TEST_F(NSArrayTest, CopiesAreEqual) {
    const Retained<NSArray> copy = adopt(abc_.copy());
    EXPECT_TRUE(copy.isEqual(abc_));
    const Retained<NSMutableArray> mutableCopy = adopt(abc_.mutableCopy());
    mutableCopy.addObject("d"_ns);
    EXPECT_EQ(mutableCopy.count(), 4u);
    EXPECT_EQ(abc_.count(), 3u);
}

TEST_F(NSArrayTest, AdoptsTheProtocolsOfACollection) {
    EXPECT_TRUE(abc_.conformsToProtocol("NSCopying"_protocol));
    EXPECT_TRUE(abc_.conformsToProtocol("NSMutableCopying"_protocol));
    EXPECT_TRUE(abc_.conformsToProtocol("NSFastEnumeration"_protocol));
}

// ---- Walking

TEST_F(NSArrayTest, EnumeratorsWalkBothWays) {
    const NSObject forwards = send<NSObject>(abc_, "objectEnumerator"_sel);
    EXPECT_EQ(send<id>(forwards, "nextObject"_sel), "a"_ns);
    EXPECT_EQ(texts(send<NSArray>(forwards, "allObjects"_sel)), (Texts{"b", "c"}));
    EXPECT_EQ(send<id>(forwards, "nextObject"_sel), nil);
    const NSObject backwards = send<NSObject>(abc_, "reverseObjectEnumerator"_sel);
    EXPECT_EQ(texts(send<NSArray>(backwards, "allObjects"_sel)), (Texts{"c", "b", "a"}));
}

TEST_F(NSArrayTest, EnumeratorsCanBeWalkedFast) {
    Texts walked;
    const NSObject backwards = send<NSObject>(abc_, "reverseObjectEnumerator"_sel);
    for (FastEnumerator each(backwards); each != std::default_sentinel; ++each) walked.push_back(text(*each));
    EXPECT_EQ(walked, (Texts{"c", "b", "a"}));
}

TEST_F(NSArrayTest, SendsAMessageToEveryObject) {
    const NSMutableArray first = NSMutableArray::arrayWithArray(abc_);
    const NSMutableArray second = NSMutableArray::arrayWithArray(abc_);
    const NSArray arrays = NSArray::arrayOf(first, second);
    send<void>(arrays, "makeObjectsPerformSelector:"_sel, "removeLastObject"_sel);
    send<void>(arrays, "makeObjectsPerformSelector:withObject:"_sel, "addObject:"_sel, "z"_ns);
    EXPECT_EQ(texts(first), (Texts{"a", "b", "z"}));
    EXPECT_EQ(texts(second), (Texts{"a", "b", "z"}));
}

// ---- Arrays made of arrays

TEST_F(NSArrayTest, AnswersAPartOfItself) {
    EXPECT_EQ(texts(abc_.subarrayWithRange({1, 2})), (Texts{"b", "c"}));
    EXPECT_EQ(abc_.subarrayWithRange({3, 0}).count(), 0u);
    EXPECT_THROWS_NAMED(abc_.subarrayWithRange({2, 2}), "NSRangeException");
    EXPECT_THROWS_NAMED(abc_.subarrayWithRange({4, 0}), "NSRangeException");
    EXPECT_THROWS_NAMED(abc_.subarrayWithRange({1, notFound}), "NSRangeException");
}

TEST_F(NSArrayTest, AnswersItselfWithMore) {
    EXPECT_EQ(texts(abc_.arrayByAddingObject("d"_ns)), (Texts{"a", "b", "c", "d"}));
    EXPECT_EQ(texts(send<NSArray>(abc_, "arrayByAddingObjectsFromArray:"_sel, abc_)),
              (Texts{"a", "b", "c", "a", "b", "c"}));
    EXPECT_EQ(abc_.count(), 3u);
}

TEST_F(NSArrayTest, JoinsDescriptions) {
    EXPECT_EQ(text(abc_.componentsJoinedByString("/"_ns)), "a/b/c");
    EXPECT_EQ(text(NSArray::arrayOf("a"_ns, NSNumber::numberWithInt(1)).componentsJoinedByString(", "_ns)),
              "a, 1");
    EXPECT_EQ(text(NSArray::array().componentsJoinedByString("/"_ns)), "");
    EXPECT_EQ(text(NSArray::arrayOf("\u00e9"_ns, "\u4e2d"_ns).componentsJoinedByString(""_ns)),
              "\u00e9\u4e2d");
}

TEST_F(NSArrayTest, SortsByASelector) {
    const NSArray sorted = NSArray::arrayOf("b"_ns, "c"_ns, "a"_ns).sortedArrayUsingSelector("compare:"_sel);
    EXPECT_EQ(texts(sorted), (Texts{"a", "b", "c"}));
}

TEST_F(NSArrayTest, ASingleObjectIsNeverCompared) {
    const Retained<NSObject> item = adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel));
    const NSArray sorted = NSArray::arrayWithObject(item).sortedArrayUsingSelector("noSuchComparison:"_sel);
    EXPECT_EQ(sorted.firstObject(), item);
}

TEST_F(NSArrayTest, ANullSelectorRaises) {
    const SEL null = nullptr;
    EXPECT_THROWS_NAMED(send<void>(abc_, "makeObjectsPerformSelector:"_sel, null),
                        "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(send<void>(abc_, "makeObjectsPerformSelector:withObject:"_sel, null, "z"_ns),
                        "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(abc_.sortedArrayUsingSelector(null), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(NSMutableArray::arrayWithArray(abc_).sortUsingSelector(null),
                        "NSInvalidArgumentException");
    EXPECT_EQ(NSArray::array().sortedArrayUsingSelector(null).count(), 0u);
}

TEST_F(NSArrayTest, StringsAndNumbersDoNotSortTogether) {
    const NSArray mixed = NSArray::arrayOf(NSNumber::numberWithInt(1), "a"_ns);
    EXPECT_THROWS_NAMED(mixed.sortedArrayUsingSelector("compare:"_sel), "NSInvalidArgumentException");
}

// ---- Objects with an equality of their own

BOOL equalsNothing(NSObject, SEL, NSObject) { return NO; }

TEST_F(NSArrayTest, FindsAnObjectThatDoesNotEqualItself) {
    static const ClassDefinition definition{
        {.name = "NSArrayTestUnequal", .methods = {instanceMethod("isEqual:", equalsNothing)}}};
    const Retained<NSObject> object = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
    const NSArray array = NSArray::arrayOf("a"_ns, object);
    EXPECT_EQ(array.indexOfObject(object), 1u);
    EXPECT_TRUE(array.containsObject(object));
}

// ---- Subclasses

NSUInteger countOfDigits(NSArray, SEL) { return 10; }
id digitAtIndex(NSArray, SEL, NSUInteger index) { return NSNumber::numberWithInt(static_cast<int>(index)); }
NSArray initDigits(NSArray self, SEL, const NSObject*, NSUInteger) { return self; }

// An array of the numbers 0 to 9 that keeps none of them.
NSArray digits() {
    static const ClassDefinition definition{
        {.name = "NSArrayTestDigits",
         .superclass = "NSArray",
         .methods = {instanceMethod("count", countOfDigits), instanceMethod("objectAtIndex:", digitAtIndex),
                     instanceMethod("initWithObjects:count:", initDigits)}}};
    return adopt(send<NSArray>(definition.classObject().alloc(), "init"_sel)).autorelease();
}

TEST_F(NSArrayTest, ASubclassIsReadThroughItsCountAndItsObjects) {
    const NSArray array = digits();
    EXPECT_EQ(text(array.componentsJoinedByString(""_ns)), "0123456789");
    EXPECT_EQ(array.indexOfObject(NSNumber::numberWithInt(7)), 7u);
    EXPECT_EQ(text(static_cast<NSObject>(array.lastObject()).description()), "9");
    EXPECT_EQ(texts(array.subarrayWithRange({3, 2})), (Texts{"3", "4"}));
    EXPECT_EQ(NSMutableArray::arrayWithArray(array).count(), 10u);
}

TEST_F(NSArrayTest, ASubclassIsWalked) {
    int expected = 0;
    for (const NSNumber number : digits()) EXPECT_EQ(number.intValue(), expected++);
    EXPECT_EQ(expected, 10);
}

TEST_F(NSArrayTest, ASubclassEqualsAnArrayOfTheSameObjects) {
    const NSArray plain = NSArray::arrayWithArray(NSMutableArray::arrayWithArray(digits()));
    EXPECT_TRUE(plain.isEqual(digits()));
    EXPECT_TRUE(digits().isEqual(plain));
    EXPECT_FALSE(digits().isEqual(abc_));
}

TEST_F(NSArrayTest, ASubclassThatAnswersNilForAnObjectIsNotCopied) {
    static const ClassDefinition definition{
        {.name = "NSArrayTestOfNil",
         .superclass = "NSArray",
         .methods = {instanceMethod(
                         "count", +[](NSArray, SEL) { return NSUInteger{1}; }),
                     instanceMethod(
                         "objectAtIndex:", +[](NSArray, SEL, NSUInteger) { return NSObject(); }),
                     instanceMethod("initWithObjects:count:", initDigits)}}};
    const NSArray ofNil = adopt(send<NSArray>(definition.classObject().alloc(), "init"_sel)).autorelease();
    EXPECT_THROWS_NAMED(adopt(NSArray(ofNil.mutableCopy())), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(NSArray::arrayWithArray(ofNil), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(ofNil.objectsAtIndexes(NSIndexSet::indexSetWithIndex(0)),
                        "NSInvalidArgumentException");
}

} // namespace
} // namespace tessarin::testing
