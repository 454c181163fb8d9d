// Arrays: merging, removal and filtering into new arrays, safe access, and searches.
#include "PlatformTest.h"

#include "TessarinFoundation/NSArray+TessarinExtensions.h"

#include <stdexcept>

namespace tessarin::testing {
namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

// A string that is equal to a constant one but another object.
NSString madeString(const char* utf8) {
    return adopt(NSMutableString::stringWithString(NSString(utf8)).mutableCopy()).autorelease();
}

NSArray letters(const char* characters) {
    const NSMutableArray array = NSMutableArray::array();
    for (const char* next = characters; *next; ++next) array.addObject(NSString(std::string_view(next, 1)));
    return adopt(NSArray(array.copy())).autorelease();
}

std::string joined(NSArray array) {
    std::string text;
    for (const std::string& each : texts(array)) text += each;
    return text;
}

std::vector<NSUInteger> indexesIn(NSIndexSet set) {
    std::vector<NSUInteger> indexes;
    for (NSUInteger index = set.firstIndex(); index != notFound; index = set.indexGreaterThanIndex(index))
        indexes.push_back(index);
    return indexes;
}

bool isEditable(NSObject object) { return object.isKindOfClass(NSMutableArray::classObject()); }

// Answers, as if it were its own, what any array is asked; a search for the one object it knows gives the
// index that it was told.
class SearchingArray {
public:
    static NSArray make(NSArray items, NSObject known, NSUInteger index) {
        static const ClassDefinition definition{
            {.name = "TessarinTestSearchingArray",
             .superclass = "NSArray",
             .instanceVariables = {instanceVariable<NSArray>("items"), instanceVariable<NSObject>("known"),
                                   instanceVariable<NSUInteger>("index")},
             .methods = {instanceMethod(
                             "init", +[](NSArray self, SEL) { return self; }),
                         instanceMethod(
                             "count", +[](NSArray self, SEL) { return itemsOf(self).count(); }),
                         instanceMethod(
                             "objectAtIndex:",
                             +[](NSArray self, SEL, NSUInteger position) {
                                 return itemsOf(self).objectAtIndex(position);
                             }),
                         instanceMethod("indexOfObject:", indexOf),
                         instanceMethod("indexOfObjectIdenticalTo:", indexOf)}}};
        const NSArray array = adopt(as<NSArray>(definition.classObject().alloc()).init()).autorelease();
        instanceVariableOf<NSArray>(array, "items") = items;
        instanceVariableOf<NSObject>(array, "known") = known;
        instanceVariableOf<NSUInteger>(array, "index") = index;
        return array;
    }

private:
    static NSArray itemsOf(NSArray self) { return instanceVariableOf<NSArray>(self, "items"); }
    static NSUInteger indexOf(NSArray self, SEL, NSObject object) {
        if (object == instanceVariableOf<NSObject>(self, "known"))
            return instanceVariableOf<NSUInteger>(self, "index");
        return itemsOf(self).indexOfObject(object);
    }
};

class ArrayExtensionsTest : public PlatformTest {};

// ---- Copying the items

using CopiedItemsTest = ArrayExtensionsTest;

TEST_F(CopiedItemsTest, AreCopies) {
    const NSMutableString item = NSMutableString::stringWithString("a"_ns);
    const NSArray copied = tessarin_arrayWithArray_copyItems(NSArray::arrayOf(item, "b"_ns), true);
    item.appendString("x"_ns);
    EXPECT_EQ(texts(copied), (Texts{"a", "b"}));
}

TEST_F(CopiedItemsTest, AreCopiesWhateverTheFlagSays) {
    const NSMutableString item = NSMutableString::stringWithString("a"_ns);
    const NSArray copied = tessarin_arrayWithArray_copyItems(NSArray::arrayOf(item), false);
    item.appendString("x"_ns);
    EXPECT_EQ(texts(copied), (Texts{"a"}));
}

TEST_F(CopiedItemsTest, OfNilAreNone) {
    const NSArray copied = tessarin_arrayWithArray_copyItems(nil, true);
    EXPECT_TRUE(copied);
    EXPECT_EQ(copied.count(), 0u);
}

TEST_F(CopiedItemsTest, AreInAnArrayOfTheReceivingClass) {
    EXPECT_FALSE(isEditable(tessarin_arrayWithArray_copyItems(letters("ab"), true)));
    const NSMutableArray editable = tessarin_arrayWithArray_copyItems<NSMutableArray>(letters("ab"), true);
    editable.addObject("c"_ns);
    EXPECT_EQ(joined(editable), "abc");
}

TEST_F(CopiedItemsTest, ThatCannotBeCopiedRaise) {
    const Retained<NSObject> item = adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel));
    const NSArray items = NSArray::arrayOf(item);
    EXPECT_THROWS_NAMED(tessarin_arrayWithArray_copyItems(items, false), "NSInvalidArgumentException");
}

TEST_F(CopiedItemsTest, AreAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew(
                  [] { return tessarin_arrayWithArray_copyItems<NSMutableArray>(letters("ab"), true); }),
              0);
}

// ---- Merging

using MergedArrayTest = ArrayExtensionsTest;

TEST_F(MergedArrayTest, HasTheReceiverFirst) {
    EXPECT_EQ(joined(tessarin_arrayByMergingWithArray_receiverFirst(letters("aba"), letters("bccd"), true)),
              "abacd");
}

TEST_F(MergedArrayTest, HasTheArgumentFirst) {
    EXPECT_EQ(joined(tessarin_arrayByMergingWithArray_receiverFirst(letters("aba"), letters("bccd"), false)),
              "bccda");
}

TEST_F(MergedArrayTest, GoesByEquality) {
    const NSArray base = NSArray::arrayOf(NSNumber::numberWithInt(1), "a"_ns);
    const NSArray added = NSArray::arrayOf(NSNumber::numberWithDouble(1.0), madeString("a"),
                                           NSNumber::numberWithBool(true), NSNumber::numberWithDouble(1.5));
    const NSArray merged = tessarin_arrayByMergingWithArray_receiverFirst(base, added, true);
    EXPECT_EQ(texts(merged), (Texts{"1", "a", "1.5"}));
    EXPECT_EQ(merged.objectAtIndex(1), base.objectAtIndex(1));
}

TEST_F(MergedArrayTest, OfNilIsTheReceiver) {
    EXPECT_EQ(joined(tessarin_arrayByMergingWithArray_receiverFirst(letters("aba"), nil, true)), "aba");
}

TEST_F(MergedArrayTest, OfNilFirstIsTheReceiverWithoutItsLaterDuplicates) {
    EXPECT_EQ(joined(tessarin_arrayByMergingWithArray_receiverFirst(letters("abacb"), nil, false)), "abc");
}

TEST_F(MergedArrayTest, OfItselfIsItself) {
    const NSArray array = letters("aba");
    EXPECT_EQ(joined(tessarin_arrayByMergingWithArray_receiverFirst(array, array, true)), "aba");
}

TEST_F(MergedArrayTest, OfNothingIsEmpty) {
    const NSArray merged = tessarin_arrayByMergingWithArray_receiverFirst(NSArray::array(), nil, true);
    EXPECT_TRUE(merged);
    EXPECT_EQ(merged.count(), 0u);
}

TEST_F(MergedArrayTest, IsImmutableNewAndAutoreleased) {
    const NSMutableArray receiver = NSMutableArray::arrayWithArray(letters("ab"));
    EXPECT_FALSE(isEditable(tessarin_arrayByMergingWithArray_receiverFirst(receiver, letters("c"), true)));
    EXPECT_EQ(joined(receiver), "ab");
    EXPECT_EQ(ownedReferencesOfNew([&] {
                  return tessarin_arrayByMergingWithArray_receiverFirst(receiver, letters("c"), true);
              }),
              0);
}

// ---- Removing one object

using RemovedObjectTest = ArrayExtensionsTest;

TEST_F(RemovedObjectTest, IsGoneWhereverItWas) {
    EXPECT_EQ(joined(tessarin_arrayByRemovingObject(letters("xyx"), madeString("x"))), "y");
}

TEST_F(RemovedObjectTest, ThatIsAbsentGivesTheReceiverItself) {
    const NSArray array = letters("ab");
    EXPECT_EQ(tessarin_arrayByRemovingObject(array, "z"_ns), array);
    EXPECT_EQ(tessarin_arrayByRemovingObjectIdenticalTo(array, "z"_ns), array);
    const NSMutableArray editable = NSMutableArray::arrayWithArray(array);
    EXPECT_EQ(tessarin_arrayByRemovingObject(editable, "z"_ns), editable);
    EXPECT_EQ(tessarin_arrayByRemovingObjectIdenticalTo(editable, "z"_ns), editable);
}

TEST_F(RemovedObjectTest, ThatIsAbsentCostsNoReference) {
    const NSMutableArray array = NSMutableArray::arrayWithArray(letters("ab"));
    EXPECT_EQ(referencesLeftBy([&] { return tessarin_arrayByRemovingObject(array, "z"_ns); }, array), 0);
}

TEST_F(RemovedObjectTest, NilGivesTheReceiverItself) {
    const NSArray array = letters("ab");
    EXPECT_EQ(tessarin_arrayByRemovingObject(array, nil), array);
    EXPECT_EQ(tessarin_arrayByRemovingObjectIdenticalTo(array, nil), array);
}

TEST_F(RemovedObjectTest, ByIdentityLeavesEqualObjects) {
    const NSString other = madeString("x");
    const NSArray array = NSArray::arrayOf(other, "y"_ns, "x"_ns, other);
    const NSArray remaining = tessarin_arrayByRemovingObjectIdenticalTo(array, other);
    EXPECT_EQ(joined(remaining), "yx");
    EXPECT_EQ(tessarin_arrayByRemovingObjectIdenticalTo(array, madeString("x")), array);
}

TEST_F(RemovedObjectTest, GivesAnImmutableAutoreleasedArray) {
    const NSMutableArray array = NSMutableArray::arrayWithArray(letters("ab"));
    EXPECT_FALSE(isEditable(tessarin_arrayByRemovingObject(array, "a"_ns)));
    EXPECT_FALSE(isEditable(tessarin_arrayByRemovingObjectIdenticalTo(array, array.objectAtIndex(0))));
    EXPECT_EQ(joined(array), "ab");
    EXPECT_EQ(ownedReferencesOfNew([&] { return tessarin_arrayByRemovingObject(array, "a"_ns); }), 0);
}

TEST_F(RemovedObjectTest, IsSearchedForBySubclasses) {
    const NSArray array = SearchingArray::make(letters("ab"), "a"_ns, notFound);
    EXPECT_EQ(tessarin_arrayByRemovingObject(array, "a"_ns), array);
    EXPECT_EQ(tessarin_arrayByRemovingObjectIdenticalTo(array, "a"_ns), array);
}

// ---- Removing the objects of an array

using RemovedObjectsTest = ArrayExtensionsTest;

TEST_F(RemovedObjectsTest, AreGoneWhereverTheyWere) {
    EXPECT_EQ(joined(tessarin_arrayByRemovingObjectsInArray(letters("abcabd"), letters("bdz"))), "aca");
}

TEST_F(RemovedObjectsTest, GiveANewArrayAlsoWhenThereAreNone) {
    const NSMutableArray array = NSMutableArray::arrayWithArray(letters("ab"));
    const NSArray remaining = tessarin_arrayByRemovingObjectsInArray(array, letters("z"));
    EXPECT_NE(remaining, array);
    EXPECT_FALSE(isEditable(remaining));
    EXPECT_EQ(joined(remaining), "ab");
}

TEST_F(RemovedObjectsTest, OfNilAreNone) {
    EXPECT_EQ(joined(tessarin_arrayByRemovingObjectsInArray(letters("ab"), nil)), "ab");
}

TEST_F(RemovedObjectsTest, OfTheArrayItselfAreAll) {
    const NSArray array = letters("aba");
    const NSArray remaining = tessarin_arrayByRemovingObjectsInArray(array, array);
    EXPECT_TRUE(remaining);
    EXPECT_EQ(remaining.count(), 0u);
}

// ---- Filtering

using PassingObjectsTest = ArrayExtensionsTest;

TEST_F(PassingObjectsTest, AreThoseThatPass) {
    const NSArray passing = tessarin_arrayWithObjectsPassingTest_options(
        letters("abcabc"),
        [](NSString letter, NSUInteger index, BOOL*) { return index > 0 && !letter.isEqual("b"_ns); }, 0);
    EXPECT_EQ(joined(passing), "cac");
    EXPECT_FALSE(isEditable(passing));
}

TEST_F(PassingObjectsTest, OfNoPredicateAreNil) {
    EXPECT_EQ(tessarin_arrayWithObjectsPassingTest_options(letters("abc"), nil, 0), nil);
}

TEST_F(PassingObjectsTest, AreAnEmptyArrayWhenNonePasses) {
    const NSArray passing = tessarin_arrayWithObjectsPassingTest_options(
        letters("abc"), [](id, NSUInteger, BOOL*) { return false; }, 0);
    EXPECT_TRUE(passing);
    EXPECT_EQ(passing.count(), 0u);
}

TEST_F(PassingObjectsTest, OfAnEmptyArrayAreNone) {
    const NSArray passing = tessarin_arrayWithObjectsPassingTest_options(
        NSArray::array(), [](id, NSUInteger, BOOL*) { return true; }, 0);
    EXPECT_TRUE(passing);
    EXPECT_EQ(passing.count(), 0u);
}

TEST_F(PassingObjectsTest, AreThoseBeforeTheStop) {
    const NSArray passing = tessarin_arrayWithObjectsPassingTest_options(
        letters("abcd"),
        [](id, NSUInteger index, BOOL* stop) {
            *stop = index == 1 ? YES : NO;
            return true;
        },
        0);
    EXPECT_EQ(joined(passing), "ab");
}

TEST_F(PassingObjectsTest, AreInTheReceiversOrderHoweverTheyAreVisited) {
    std::string visited;
    const NSArray passing = tessarin_arrayWithObjectsPassingTest_options(
        letters("abc"),
        [&](NSString letter, NSUInteger, BOOL*) {
            visited += text(letter);
            return !letter.isEqual("b"_ns);
        },
        NSEnumerationReverse);
    EXPECT_EQ(visited, "cba");
    EXPECT_EQ(joined(passing), "ac");
}

TEST_F(PassingObjectsTest, AreTheSameHoweverTheyAreVisited) {
    const auto isEarly = [](NSString letter, NSUInteger, BOOL*) { return !letter.isEqual("c"_ns); };
    EXPECT_EQ(joined(tessarin_arrayWithObjectsPassingTest_options(letters("abc"), isEarly, 0)), "ab");
    EXPECT_EQ(
        joined(tessarin_arrayWithObjectsPassingTest_options(letters("abc"), isEarly, NSEnumerationReverse)),
        "ab");
}

TEST_F(PassingObjectsTest, AnExceptionOfThePredicatePassesThrough) {
    EXPECT_THROWS_NAMED(
        tessarin_arrayWithObjectsPassingTest_options(
            letters("abc"), [](id, NSUInteger, BOOL*) -> BOOL { raise(NSGenericException(), "x"_ns); }, 0),
        "NSGenericException");
}

// ---- Access

using ArrayAccessTest = ArrayExtensionsTest;

TEST_F(ArrayAccessTest, ThePenultimateObject) {
    EXPECT_EQ(tessarin_penultimeteObject(NSArray::array()), nil);
    EXPECT_EQ(tessarin_penultimeteObject(letters("a")), nil);
    EXPECT_EQ(tessarin_penultimeteObject(NSArray::arrayOf("a"_ns, "b"_ns)), "a"_ns);
    EXPECT_EQ(tessarin_penultimeteObject(NSArray::arrayOf("a"_ns, "b"_ns, "c"_ns)), "b"_ns);
}

TEST_F(ArrayAccessTest, TheFirstObject) {
    EXPECT_EQ(tessarin_firstObject(NSArray::array()), nil);
    EXPECT_EQ(tessarin_firstObject(NSArray::arrayOf("a"_ns, "b"_ns)), "a"_ns);
}

TEST_F(ArrayAccessTest, OfNilIsNil) {
    EXPECT_EQ(tessarin_penultimeteObject(nil), nil);
    EXPECT_EQ(tessarin_firstObject(nil), nil);
    EXPECT_FALSE(tessarin_containsObjectIdenticalTo(nil, "a"_ns));
}

TEST_F(ArrayAccessTest, ContainsTheIdenticalObjectOnly) {
    const NSString held = madeString("a");
    const NSArray array = NSArray::arrayOf(held);
    EXPECT_TRUE(tessarin_containsObjectIdenticalTo(array, held));
    EXPECT_FALSE(tessarin_containsObjectIdenticalTo(array, madeString("a")));
    EXPECT_FALSE(tessarin_containsObjectIdenticalTo(array, nil));
}

TEST_F(ArrayAccessTest, ASubclassIsAskedForTheIdenticalObject) {
    EXPECT_TRUE(tessarin_containsObjectIdenticalTo(SearchingArray::make(letters("ab"), "z"_ns, 7), "z"_ns));
}

// ---- Indexes of objects

using IndexesOfObjectsTest = ArrayExtensionsTest;

TEST_F(IndexesOfObjectsTest, AreThoseInTheReceiver) {
    EXPECT_EQ(indexesIn(tessarin_indexesOfObjectsInArray(letters("abc"), letters("ca"))),
              (std::vector<NSUInteger>{0, 2}));
}

TEST_F(IndexesOfObjectsTest, AreTheLowestOnes) {
    EXPECT_EQ(indexesIn(tessarin_indexesOfObjectsInArray(letters("abab"), NSArray::arrayOf(madeString("b")))),
              (std::vector<NSUInteger>{1}));
}

TEST_F(IndexesOfObjectsTest, OfEqualObjectsAreOne) {
    EXPECT_EQ(indexesIn(tessarin_indexesOfObjectsInArray(letters("abc"), letters("bcbb"))),
              (std::vector<NSUInteger>{1, 2}));
}

TEST_F(IndexesOfObjectsTest, OfNoneAreNone) {
    for (const NSArray none : {NSArray::array(), NSArray()}) {
        const NSIndexSet indexes = tessarin_indexesOfObjectsInArray(letters("abc"), none);
        EXPECT_TRUE(indexes);
        EXPECT_EQ(indexes.count(), 0u);
    }
}

TEST_F(IndexesOfObjectsTest, AreAnImmutableAutoreleasedSet) {
    EXPECT_FALSE(tessarin_indexesOfObjectsInArray(letters("abc"), letters("b"))
                     .isKindOfClass(NSMutableIndexSet::classObject()));
    EXPECT_EQ(
        ownedReferencesOfNew([] { return tessarin_indexesOfObjectsInArray(letters("abc"), letters("b")); }),
        0);
}

TEST_F(IndexesOfObjectsTest, OfAnObjectThatIsNotThereRaiseWithItsReason) {
    std::string reason;
    std::string name;
    attempt([] { static_cast<void>(tessarin_indexesOfObjectsInArray(letters("abc"), letters("az"))); },
            [&](NSException exception) {
                name = text(exception.name());
                reason = text(exception.reason());
            });
    EXPECT_EQ(name, "NSInternalInconsistencyException");
    EXPECT_EQ(reason, "One or more of passed objects is not contained in receiver.");
}

TEST_F(IndexesOfObjectsTest, ASubclassIsAskedForThem) {
    NSArray wanted = letters("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"); // many, so that an index would pay
    EXPECT_EQ(indexesIn(tessarin_indexesOfObjectsInArray(
                  SearchingArray::make(wanted, wanted.objectAtIndex(0), 1),
                  NSArray::arrayOf(static_cast<NSObject>(wanted.objectAtIndex(0))))),
              (std::vector<NSUInteger>{1}));
}

} // namespace
} // namespace tessarin::testing
