#include "OwnMutableArray.h"

#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"

#include <map>

namespace tessarin::testing {
namespace {

class MutableArrayExtensionsTest : public PlatformTest {
protected:
    static NSMutableArray arrayOf(const Texts& items) {
        const NSMutableArray array = NSMutableArray::array();
        for (const std::string& item : items) array.addObject(NSString(item));
        return array;
    }
    static Texts moved(const Texts& items, NSUInteger from, NSUInteger to) {
        const NSMutableArray array = arrayOf(items);
        tessarin_moveObjectFromIndex_toIndex(array, from, to);
        return texts(array);
    }
    static Texts merged(const Texts& items, const Texts& added) {
        const NSMutableArray array = arrayOf(items);
        tessarin_mergeWithArray(array, arrayOf(added));
        return texts(array);
    }
    // An object whose class decides how it is copied and compared.
    static Retained<NSObject> newObject(Class classObject) {
        return adopt(send<NSObject>(classObject.alloc(), "init"_sel));
    }
};

// ---- tessarin_setArray:copyItems:

TEST_F(MutableArrayExtensionsTest, SettingReplacesTheItems) {
    const NSMutableArray array = arrayOf({"x", "y", "z"});
    tessarin_setArray_copyItems(array, arrayOf({"a", "b"}), true);
    EXPECT_EQ(texts(array), (Texts{"a", "b"}));
}

TEST_F(MutableArrayExtensionsTest, ItemsAreCopiedWhateverTheFlagSays) {
    for (const bool flag : {false, true}) {
        const NSMutableString original = NSMutableString::stringWithString("a"_ns);
        const NSMutableArray array = NSMutableArray::array();
        tessarin_setArray_copyItems(array, NSArray::arrayWithObject(original), flag);
        EXPECT_NE(NSObject(array.objectAtIndex(0)), original);
        original.appendString("b"_ns);
        EXPECT_EQ(texts(array), (Texts{"a"}));
    }
}

TEST_F(MutableArrayExtensionsTest, TheArrayIsTheOnlyOwnerOfTheCopies) {
    const NSMutableArray array = NSMutableArray::array();
    {
        const AutoreleasePool pool;
        const NSMutableString owned = NSMutableString::stringWithString("too long for any tagged pointer"_ns);
        tessarin_setArray_copyItems(array, NSArray::arrayWithObject(owned), true);
    }
    EXPECT_EQ(NSObject(array.objectAtIndex(0)).retainCount(), 1u);
}

TEST_F(MutableArrayExtensionsTest, SettingANilArrayEmptiesTheReceiver) {
    const NSMutableArray array = arrayOf({"a"});
    tessarin_setArray_copyItems(array, nil, true);
    EXPECT_EQ(array.count(), 0u);
}

TEST_F(MutableArrayExtensionsTest, SettingTheReceiverItselfEmptiesIt) {
    const NSMutableArray array = arrayOf({"a"});
    tessarin_setArray_copyItems(array, array, true);
    EXPECT_EQ(array.count(), 0u);
}

TEST_F(MutableArrayExtensionsTest, ItemsThatCannotBeCopiedRaise) {
    const Retained<NSObject> plain = newObject("NSObject"_class);
    EXPECT_THROWS_NAMED(
        tessarin_setArray_copyItems(NSMutableArray::array(), NSArray::arrayWithObject(plain), true),
        "NSInvalidArgumentException");
}

// An item whose copying changes the array that it is in.
Retained<NSMutableArray>& arrayToChange() {
    static Retained<NSMutableArray> array;
    return array;
}

TEST_F(MutableArrayExtensionsTest, ChangingTheArgumentWhileItIsWalkedRaises) {
    static const ClassDefinition definition{{.name = "TessarinMeddlingCopy",
                                             .methods = {instanceMethod(
                                                 "copyWithZone:", +[](NSObject self, SEL, void*) {
                                                     arrayToChange().addObject("more"_ns);
                                                     return retain(self).leak();
                                                 })}}};
    const Retained<NSObject> item = newObject(definition.classObject());
    arrayToChange() = retain(arrayOf({}));
    arrayToChange().addObject(item);
    arrayToChange().addObject(item);
    EXPECT_THROWS_NAMED(tessarin_setArray_copyItems(NSMutableArray::array(), arrayToChange(), true),
                        "NSGenericException");
    arrayToChange() = {};
}

// ---- Removing at the ends

TEST_F(MutableArrayExtensionsTest, RemovesTheFirst) {
    const NSMutableArray array = arrayOf({"a", "b", "c"});
    tessarin_removeFirstObject(array);
    EXPECT_EQ(texts(array), (Texts{"b", "c"}));
}

TEST_F(MutableArrayExtensionsTest, RemovesTheLast) {
    const NSMutableArray array = arrayOf({"a", "b", "c"});
    tessarin_removeLastObject(array);
    EXPECT_EQ(texts(array), (Texts{"a", "b"}));
}

TEST_F(MutableArrayExtensionsTest, AnEmptyArrayStaysEmptyAndNothingIsRaised) {
    const NSMutableArray array = NSMutableArray::array();
    EXPECT_THROWS_NAMED((tessarin_removeFirstObject(array), 0), "(nothing)");
    EXPECT_THROWS_NAMED((tessarin_removeLastObject(array), 0), "(nothing)");
    EXPECT_EQ(array.count(), 0u);
}

// ---- tessarin_moveObjectFromIndex:toIndex:

TEST_F(MutableArrayExtensionsTest, MovesTowardTheEnd) {
    EXPECT_EQ(moved({"a", "b", "c", "d"}, 0, 2), (Texts{"b", "c", "a", "d"}));
    EXPECT_EQ(moved({"a", "b", "c", "d"}, 0, 3), (Texts{"b", "c", "d", "a"}));
}

TEST_F(MutableArrayExtensionsTest, MovesTowardTheStart) {
    EXPECT_EQ(moved({"a", "b", "c", "d"}, 3, 1), (Texts{"a", "d", "b", "c"}));
    EXPECT_EQ(moved({"a", "b", "c", "d"}, 3, 0), (Texts{"d", "a", "b", "c"}));
}

TEST_F(MutableArrayExtensionsTest, MovingToTheSameIndexOrBeyondTheEndDoesNothing) {
    const Texts letters{"a", "b", "c", "d"};
    EXPECT_EQ(moved(letters, 1, 1), letters);
    EXPECT_EQ(moved(letters, 1, 4), letters);
    EXPECT_EQ(moved(letters, 4, 1), letters);
    EXPECT_EQ(moved(letters, static_cast<NSUInteger>(-1), 0), letters);
    EXPECT_EQ(moved(letters, 0, static_cast<NSUInteger>(NSNotFound)), letters);
    EXPECT_EQ(moved({}, 0, 1), Texts{});
}

TEST_F(MutableArrayExtensionsTest, EveryMoveIsThatOfTakingOutAndPuttingIn) {
    const Texts letters{"a", "b", "c", "d", "e"};
    for (std::size_t from = 0; from < letters.size(); ++from)
        for (std::size_t to = 0; to < letters.size(); ++to) {
            Texts expected = letters;
            expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(from));
            expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(to), letters[from]);
            EXPECT_EQ(moved(letters, from, to), expected) << from << " to " << to;
        }
}

TEST_F(MutableArrayExtensionsTest, TheObjectIsHeldWhileItMoves) {
    const NSMutableArray array = arrayOf({"b", "c"});
    {
        const AutoreleasePool pool;
        array.insertObject_atIndex(NSString(std::string("an object that nobody else holds")), 0);
    }
    {
        const AutoreleasePool pool;
        tessarin_moveObjectFromIndex_toIndex(array, 0, 2);
    }
    EXPECT_EQ(texts(array), (Texts{"b", "c", "an object that nobody else holds"}));
    EXPECT_EQ(NSObject(array.objectAtIndex(2)).retainCount(), 1u);
}

TEST_F(MutableArrayExtensionsTest, ASubclassIsAskedToInsertAndThenToRemove) {
    const OwnMutableArray array({"a", "b", "c", "d"});
    tessarin_moveObjectFromIndex_toIndex(array, 0, 2);
    tessarin_moveObjectFromIndex_toIndex(array, 3, 1);
    EXPECT_EQ(array.texts(), (Texts{"b", "d", "c", "a"}));
    EXPECT_EQ(array.changes(), (Texts{"insert 3", "remove 0", "insert 1", "remove 4"}));
}

// ---- tessarin_mergeWithArray:

TEST_F(MutableArrayExtensionsTest, MergingTakesEachNewObjectOnce) {
    EXPECT_EQ(merged({"a", "a"}, {"b", "a", "b"}), (Texts{"a", "a", "b"}));
    EXPECT_EQ(merged({}, {"c", "b", "c", "a"}), (Texts{"c", "b", "a"}));
}

TEST_F(MutableArrayExtensionsTest, MergingNothingChangesNothing) {
    EXPECT_EQ(merged({"a", "a"}, {}), (Texts{"a", "a"}));
    const NSMutableArray array = arrayOf({"a", "a"});
    tessarin_mergeWithArray(array, nil);
    tessarin_mergeWithArray(array, array);
    EXPECT_EQ(texts(array), (Texts{"a", "a"}));
}

TEST_F(MutableArrayExtensionsTest, MergingGoesByEqualityNotIdentity) {
    const NSMutableArray array = NSMutableArray::array();
    array.addObject(NSNumber::numberWithInt(1));
    tessarin_mergeWithArray(array,
                            NSArray::arrayOf(NSNumber::numberWithDouble(1.0), NSNumber::numberWithBool(true),
                                             NSNumber::numberWithInt(2)));
    EXPECT_EQ(texts(array), (Texts{"1", "2"}));
}

TEST_F(MutableArrayExtensionsTest, MergingAppendsTheObjectsThemselves) {
    const NSMutableString added = NSMutableString::stringWithString("b"_ns);
    const NSMutableArray array = arrayOf({"a"});
    tessarin_mergeWithArray(array, NSArray::arrayWithObject(added));
    EXPECT_EQ(NSObject(array.lastObject()), added);
}

TEST_F(MutableArrayExtensionsTest, ASubclassIsAskedToAddWhatIsMerged) {
    const OwnMutableArray array({"a"});
    tessarin_mergeWithArray(array, arrayOf({"b", "a", "c"}));
    EXPECT_EQ(array.texts(), (Texts{"a", "b", "c"}));
    EXPECT_EQ(array.changes(), (Texts{"insert 1", "insert 2"}));
}

TEST_F(MutableArrayExtensionsTest, SettingAnArrayThatTheReceiverAloneHolds) {
    const NSMutableArray array = NSMutableArray::array();
    {
        const AutoreleasePool pool;
        array.addObject(arrayOf({"an item of the inner array"}));
    }
    const auto inner = as<NSArray>(static_cast<NSObject>(array.objectAtIndex(0)));
    tessarin_setArray_copyItems(array, inner, true);
    EXPECT_EQ(texts(array), (Texts{"an item of the inner array"}));
}

// An item that empties the array that it is compared from.
TEST_F(MutableArrayExtensionsTest, AnItemThatIsReleasedWhileItIsComparedIsAliveWhenItIsAdded) {
    static const ClassDefinition definition{{.name = "TessarinEmptyingComparison",
                                             .methods = {instanceMethod(
                                                 "isEqual:", +[](NSObject, SEL, NSObject) {
                                                     arrayToChange().removeAllObjects();
                                                     return NO;
                                                 })}}};
    const NSMutableArray array = arrayOf({"a"});
    arrayToChange() = retain(arrayOf({}));
    {
        const AutoreleasePool pool;
        arrayToChange().addObject(newObject(definition.classObject()));
        arrayToChange().addObject("b"_ns);
    }
    EXPECT_THROWS_NAMED((tessarin_mergeWithArray(array, arrayToChange()), 0), "NSGenericException");
    EXPECT_EQ(array.count(), 2u);
    arrayToChange() = {};
}

TEST_F(MutableArrayExtensionsTest, ChangingTheMergedArrayWhileItIsWalkedRaises) {
    static const ClassDefinition definition{{.name = "TessarinMeddlingComparison",
                                             .methods = {instanceMethod(
                                                 "isEqual:", +[](NSObject, SEL, NSObject) {
                                                     arrayToChange().addObject("more"_ns);
                                                     return NO;
                                                 })}}};
    const Retained<NSObject> item = newObject(definition.classObject());
    arrayToChange() = retain(arrayOf({}));
    arrayToChange().addObject(item);
    arrayToChange().addObject("b"_ns);
    EXPECT_THROWS_NAMED((tessarin_mergeWithArray(arrayOf({"a"}), arrayToChange()), 0), "NSGenericException");
    arrayToChange() = {};
}

// ---- tessarin_shuffle

TEST_F(MutableArrayExtensionsTest, ShufflingNothingOrOneLeavesItAsItIs) {
    const NSMutableArray empty = NSMutableArray::array();
    tessarin_shuffle(empty);
    EXPECT_EQ(empty.count(), 0u);
    const NSMutableArray single = arrayOf({"a"});
    tessarin_shuffle(single);
    EXPECT_EQ(texts(single), (Texts{"a"}));
}

TEST_F(MutableArrayExtensionsTest, EachDrawIsTakenModuloWhatIsLeft) {
    const NSMutableArray array = arrayOf({"a", "b", "c", "d"});
    const std::uint32_t draws[] = {7, 4, 0xFFFFFFFF, 9};
    const SuppliedRandomNumbers supplied(draws);
    tessarin_shuffle(array);
    // 7 % 4 = 3: d b c a; 1 + 4 % 3 = 2: d c b a; 2 + 0xFFFFFFFF % 2 = 3: d c a b; 3 + 9 % 1 = 3.
    EXPECT_EQ(texts(array), (Texts{"d", "c", "a", "b"}));
    EXPECT_EQ(supplied.drawnCount(), 4u);
}

TEST_F(MutableArrayExtensionsTest, ShufflingMakesAsManyExchangesAsThereAreObjects) {
    const OwnMutableArray array({"a", "b", "c"});
    const std::uint32_t draws[] = {1, 0, 0};
    const SuppliedRandomNumbers supplied(draws);
    tessarin_shuffle(array);
    EXPECT_EQ(array.changes(), (Texts{"exchange 0 1", "exchange 1 1", "exchange 2 2"}));
}

TEST_F(MutableArrayExtensionsTest, ShufflingKeepsTheSameElements) {
    const NSMutableArray array = NSMutableArray::array();
    for (int number = 0; number < 1000; ++number) array.addObject(NSString(std::to_string(number)));
    Texts before = texts(array);
    tessarin_shuffle(array);
    Texts after = texts(array);
    EXPECT_NE(after, before); // by chance once in 1000! runs
    std::sort(before.begin(), before.end());
    std::sort(after.begin(), after.end());
    EXPECT_EQ(after, before);
}

TEST_F(MutableArrayExtensionsTest, AllOrdersAreEquallyLikely) {
    constexpr int rounds = 24'000;
    std::map<Texts, int> counts;
    for (int round = 0; round < rounds; ++round) {
        const AutoreleasePool pool;
        const NSMutableArray array = arrayOf({"a", "b", "c", "d"});
        tessarin_shuffle(array);
        ++counts[texts(array)];
    }
    ASSERT_EQ(counts.size(), 24u);
    double chiSquared = 0;
    for (const auto& [order, count] : counts) {
        const double expected = rounds / 24.0;
        chiSquared += (count - expected) * (count - expected) / expected;
    }
    // Exceeded once in some ten million runs with 23 degrees of freedom.
    EXPECT_LT(chiSquared, 80.0);
}

} // namespace
} // namespace tessarin::testing
