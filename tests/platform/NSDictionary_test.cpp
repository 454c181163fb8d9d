// Immutable and mutable dictionaries.
#include "PlatformTest.h"

#include "TessarinPlatform/NSMutableDictionary.h"

#include <algorithm>
#include <string>

namespace tessarin::testing {
namespace {

class NSDictionaryTest : public PlatformTest {
protected:
    static NSNumber number(int value) { return NSNumber::numberWithInt(value); }
    static NSString key(int value) { return NSString("key " + std::to_string(value)); }
    static Texts sortedTexts(NSArray array) {
        Texts result = texts(array);
        std::sort(result.begin(), result.end());
        return result;
    }
    static NSMutableDictionary withEntries(int count) {
        const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
        for (int value = 0; value < count; ++value) dictionary.setObject_forKey(number(value), key(value));
        return dictionary;
    }
};

// ---- Making

TEST_F(NSDictionaryTest, HoldsWhatItIsMadeOf) {
    const NSDictionary dictionary = NSDictionary::dictionaryWithObjects_forKeys(
        NSArray::arrayOf("1"_ns, "2"_ns), NSArray::arrayOf("a"_ns, "b"_ns));
    EXPECT_EQ(dictionary.count(), 2u);
    EXPECT_EQ(dictionary.objectForKey("b"_ns), "2"_ns);
    EXPECT_EQ(NSDictionary::dictionaryWithObject_forKey("1"_ns, "a"_ns).objectForKey("a"_ns), "1"_ns);
    EXPECT_EQ(NSDictionary::dictionary().count(), 0u);
}

TEST_F(NSDictionaryTest, TakesAListOfArgumentsThatEndsWithNil) {
    const NSDictionary dictionary =
        sendVariadic<NSDictionary>(NSDictionary::classObject(), "dictionaryWithObjectsAndKeys:"_sel, "1"_ns,
                                   "a"_ns, "2"_ns, "b"_ns, nil);
    EXPECT_EQ(dictionary.count(), 2u);
    EXPECT_EQ(dictionary.objectForKey("a"_ns), "1"_ns);
}

TEST_F(NSDictionaryTest, RefusesListsOfDifferentLengths) {
    EXPECT_THROWS_NAMED(NSDictionary::dictionaryWithObjects_forKeys(NSArray::arrayOf("1"_ns),
                                                                    NSArray::arrayOf("a"_ns, "b"_ns)),
                        "NSInvalidArgumentException");
}

TEST_F(NSDictionaryTest, RefusesNil) {
    EXPECT_THROWS_NAMED(NSDictionary::dictionaryWithObject_forKey(nil, "a"_ns), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(NSDictionary::dictionaryWithObject_forKey("1"_ns, nil), "NSInvalidArgumentException");
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    EXPECT_THROWS_NAMED(dictionary.setObject_forKey(nil, "a"_ns), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(dictionary.setObject_forKey("1"_ns, nil), "NSInvalidArgumentException");
    EXPECT_EQ(dictionary.count(), 0u);
}

TEST_F(NSDictionaryTest, RemovingTheKeyNilRaises) {
    EXPECT_THROWS_NAMED(NSMutableDictionary::dictionary().removeObjectForKey(nil),
                        "NSInvalidArgumentException");
}

TEST_F(NSDictionaryTest, CopiesItsKeys) {
    const NSMutableString mutableKey = NSMutableString::stringWithString("a"_ns);
    const NSDictionary dictionary = NSDictionary::dictionaryWithObject_forKey("1"_ns, mutableKey);
    mutableKey.appendString("b"_ns);
    EXPECT_EQ(dictionary.objectForKey("a"_ns), "1"_ns);
    EXPECT_EQ(dictionary.objectForKey("ab"_ns), nil);
}

TEST_F(NSDictionaryTest, AKeyThatCannotBeCopiedRaises) {
    const Retained<NSObject> object = adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel));
    EXPECT_THROWS_NAMED(NSDictionary::dictionaryWithObject_forKey("1"_ns, object),
                        "NSInvalidArgumentException");
}

// ---- Reading

TEST_F(NSDictionaryTest, AnswersNilForAKeyItDoesNotHold) {
    EXPECT_EQ(withEntries(3).objectForKey("x"_ns), nil);
    EXPECT_EQ(withEntries(30).objectForKey("x"_ns), nil);
    EXPECT_EQ(withEntries(3).objectForKey(nil), nil);
}

TEST_F(NSDictionaryTest, KeysNeedNotBeStrings) {
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    dictionary.setObject_forKey("number"_ns, number(1));
    dictionary.setObject_forKey("array"_ns, NSArray::arrayOf("x"_ns));
    dictionary.setObject_forKey("null"_ns, NSNull::null());
    EXPECT_EQ(dictionary.objectForKey(NSNumber::numberWithDouble(1.0)), "number"_ns);
    EXPECT_EQ(dictionary.objectForKey(NSMutableArray::arrayWithArray(NSArray::arrayOf("x"_ns))), "array"_ns);
    EXPECT_EQ(dictionary.objectForKey(NSNull::null()), "null"_ns);
    EXPECT_EQ(dictionary.objectForKey("1"_ns), nil);
}

TEST_F(NSDictionaryTest, AnswersItsKeysAndItsObjects) {
    const NSDictionary dictionary = withEntries(3);
    EXPECT_EQ(sortedTexts(dictionary.allKeys()), (Texts{"key 0", "key 1", "key 2"}));
    EXPECT_EQ(sortedTexts(dictionary.allValues()), (Texts{"0", "1", "2"}));
    EXPECT_EQ(NSDictionary::dictionary().allKeys().count(), 0u);
}

TEST_F(NSDictionaryTest, EnumeratorsWalkKeysAndObjects) {
    const NSDictionary dictionary = withEntries(20);
    const NSObject keys = send<NSObject>(dictionary, "keyEnumerator"_sel);
    EXPECT_EQ(sortedTexts(send<NSArray>(keys, "allObjects"_sel)), sortedTexts(dictionary.allKeys()));
    const NSObject objects = send<NSObject>(dictionary, "objectEnumerator"_sel);
    EXPECT_EQ(sortedTexts(send<NSArray>(objects, "allObjects"_sel)), sortedTexts(dictionary.allValues()));
}

// ---- Changing

TEST_F(NSDictionaryTest, ReplacesTheObjectOfAnEqualKey) {
    const NSMutableDictionary dictionary = withEntries(3);
    dictionary.setObject_forKey("new"_ns, key(1));
    EXPECT_EQ(dictionary.count(), 3u);
    EXPECT_EQ(dictionary.objectForKey(key(1)), "new"_ns);
}

TEST_F(NSDictionaryTest, SurvivesManyChanges) {
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    constexpr int count = 2000;
    for (int round = 0; round < 3; ++round) {
        for (int value = 0; value < count; ++value) dictionary.setObject_forKey(number(value), key(value));
        for (int value = 0; value < count; ++value)
            if (value % 5 != round) dictionary.removeObjectForKey(key(value));
    }
    EXPECT_EQ(dictionary.count(), static_cast<NSUInteger>(count / 5));
    int walked = 0;
    for (const NSObject each : dictionary) {
        const NSNumber object = dictionary.objectForKey(each);
        EXPECT_EQ(object.intValue() % 5, 2);
        ++walked;
    }
    EXPECT_EQ(walked, count / 5);
    EXPECT_EQ(dictionary.objectForKey(key(3)), nil);
}

TEST_F(NSDictionaryTest, RemovesWhatItHolds) {
    const NSMutableDictionary dictionary = withEntries(3);
    dictionary.removeObjectForKey(key(1));
    dictionary.removeObjectForKey("x"_ns);
    EXPECT_EQ(sortedTexts(dictionary.allKeys()), (Texts{"key 0", "key 2"}));
    dictionary.removeAllObjects();
    EXPECT_EQ(dictionary.count(), 0u);
    EXPECT_EQ(dictionary.objectForKey(key(0)), nil);
}

TEST_F(NSDictionaryTest, ReleasesWhatItGivesUp) {
    const Retained<NSMutableString> object = adopt(NSMutableString::alloc().init());
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    for (int value = 0; value < 4; ++value) dictionary.setObject_forKey(object, key(value));
    EXPECT_EQ(object.retainCount(), 5u);
    dictionary.setObject_forKey("x"_ns, key(0));
    dictionary.removeObjectForKey(key(1));
    EXPECT_EQ(object.retainCount(), 3u);
    dictionary.removeAllObjects();
    EXPECT_EQ(object.retainCount(), 1u);
}

TEST_F(NSDictionaryTest, TakesTheEntriesOfAnother) {
    const NSMutableDictionary dictionary = withEntries(2);
    dictionary.addEntriesFromDictionary(NSDictionary::dictionaryWithObject_forKey("new"_ns, key(1)));
    dictionary.addEntriesFromDictionary(NSDictionary::dictionaryWithObject_forKey("more"_ns, key(9)));
    dictionary.addEntriesFromDictionary(nil);
    EXPECT_EQ(sortedTexts(dictionary.allValues()), (Texts{"0", "more", "new"}));
}

TEST_F(NSDictionaryTest, ChangingItWhileItIsWalkedRaises) {
    const NSMutableDictionary dictionary = withEntries(5);
    const auto walkChanging = [&] {
        for (const NSString each : dictionary) dictionary.removeObjectForKey(each);
    };
    EXPECT_EQ(thrownName(walkChanging), "NSGenericException");
}

// ---- Comparing and copying

TEST_F(NSDictionaryTest, EqualsADictionaryOfEqualEntries) {
    const NSDictionary dictionary = withEntries(20);
    const NSMutableDictionary reversed = NSMutableDictionary::dictionary();
    for (int value = 20; value-- > 0;)
        reversed.setObject_forKey(NSNumber::numberWithDouble(value), key(value));
    EXPECT_TRUE(dictionary.isEqual(reversed));
    EXPECT_TRUE(dictionary.isEqualToDictionary(reversed));
    EXPECT_EQ(dictionary.hash(), reversed.hash());
    reversed.setObject_forKey("x"_ns, key(7));
    EXPECT_FALSE(dictionary.isEqual(reversed));
    EXPECT_FALSE(dictionary.isEqual(withEntries(19)));
    EXPECT_FALSE(dictionary.isEqual(NSArray::array()));
    EXPECT_FALSE(dictionary.isEqual(nil));
}

TEST_F(NSDictionaryTest, HashesAsItsCount) { EXPECT_EQ(withEntries(7).hash(), 7u); }

TEST_F(NSDictionaryTest, CopiesAreApart) {
    const NSMutableDictionary dictionary = withEntries(12);
    const Retained<NSDictionary> copy = adopt(dictionary.copy());
    const Retained<NSMutableDictionary> mutableCopy = adopt(copy.mutableCopy());
    EXPECT_TRUE(copy.isEqual(mutableCopy));
    dictionary.removeAllObjects();
    mutableCopy.removeObjectForKey(key(0));
    EXPECT_EQ(copy.count(), 12u);
    EXPECT_EQ(mutableCopy.count(), 11u);
    EXPECT_FALSE(copy.respondsToSelector("setObject:forKey:"));
}

TEST_F(NSDictionaryTest, AdoptsTheProtocolsOfACollection) {
    const NSDictionary dictionary = NSDictionary::dictionary();
    EXPECT_TRUE(dictionary.conformsToProtocol("NSCopying"_protocol));
    EXPECT_TRUE(dictionary.conformsToProtocol("NSMutableCopying"_protocol));
    EXPECT_TRUE(dictionary.conformsToProtocol("NSFastEnumeration"_protocol));
}

// ---- Keys with an equality of their own

int comparisonsBeforeRaising = 0;

NSUInteger sameHash(NSObject, SEL) { return 1; }
BOOL equalOrRaise(NSObject self, SEL, NSObject other) {
    if (comparisonsBeforeRaising-- == 0) raise(NSGenericException(), "no comparison"_ns);
    return self == other;
}
NSObject copySelf(NSObject self, SEL, void*) { return retain(self).leak(); }

Retained<NSObject> newDifficultKey() {
    static const ClassDefinition definition{
        {.name = "NSDictionaryTestDifficultKey",
         .protocols = {"NSCopying"},
         .methods = {instanceMethod("hash", sameHash), instanceMethod("isEqual:", equalOrRaise),
                     instanceMethod("copyWithZone:", copySelf)}}};
    return adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
}

TEST_F(NSDictionaryTest, KeysOfTheSameHashAreKeptApart) {
    comparisonsBeforeRaising = -1;
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    std::vector<Retained<NSObject>> keys;
    for (int value = 0; value < 40; ++value) {
        keys.push_back(newDifficultKey());
        dictionary.setObject_forKey(number(value), keys.back());
    }
    for (std::size_t index = 0; index < keys.size(); index += 2) dictionary.removeObjectForKey(keys[index]);
    for (std::size_t index = 1; index < keys.size(); index += 2) {
        const NSNumber object = dictionary.objectForKey(keys[index]);
        EXPECT_EQ(object.intValue(), static_cast<int>(index));
    }
    EXPECT_EQ(dictionary.count(), 20u);
}

TEST_F(NSDictionaryTest, AKeyThatRaisesChangesNothing) {
    comparisonsBeforeRaising = -1;
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    dictionary.setObject_forKey("1"_ns, newDifficultKey());
    const Retained<NSMutableString> object = adopt(NSMutableString::alloc().init());
    const Retained<NSObject> second = newDifficultKey();
    comparisonsBeforeRaising = 0;
    EXPECT_THROWS_NAMED(dictionary.setObject_forKey(object, second), "NSGenericException");
    EXPECT_EQ(dictionary.count(), 1u);
    EXPECT_EQ(object.retainCount(), 1u);
    EXPECT_EQ(second.retainCount(), 1u);
}

// ---- Subclasses

NSUInteger countOfSquares(NSDictionary, SEL) { return 3; }
id squareForKey(NSDictionary, SEL, NSObject key) {
    const auto root = kindOf<NSNumber>(key);
    if (!root || root.intValue() < 0 || root.intValue() > 2) return nil;
    return NSNumber::numberWithInt(root.intValue() * root.intValue());
}
NSObject squareKeys(NSDictionary, SEL) {
    const NSArray keys =
        NSArray::arrayOf(NSNumber::numberWithInt(0), NSNumber::numberWithInt(1), NSNumber::numberWithInt(2));
    return send<NSObject>(keys, "objectEnumerator"_sel);
}
NSDictionary initSquares(NSDictionary self, SEL, const NSObject*, const NSObject*, NSUInteger) {
    return self;
}

// The numbers 0 to 2 and their squares, of which it keeps none.
NSDictionary squares() {
    static const ClassDefinition definition{
        {.name = "NSDictionaryTestSquares",
         .superclass = "NSDictionary",
         .methods = {instanceMethod("count", countOfSquares), instanceMethod("objectForKey:", squareForKey),
                     instanceMethod("keyEnumerator", squareKeys),
                     instanceMethod("initWithObjects:forKeys:count:", initSquares)}}};
    return adopt(send<NSDictionary>(definition.classObject().alloc(), "init"_sel)).autorelease();
}

TEST_F(NSDictionaryTest, ASubclassIsReadThroughItsPrimitiveOperations) {
    EXPECT_EQ(sortedTexts(squares().allKeys()), (Texts{"0", "1", "2"}));
    EXPECT_EQ(sortedTexts(squares().allValues()), (Texts{"0", "1", "4"}));
    const NSMutableDictionary plain = NSMutableDictionary::dictionaryWithDictionary(squares());
    EXPECT_EQ(plain.count(), 3u);
    EXPECT_TRUE(plain.isEqual(squares()));
    EXPECT_TRUE(squares().isEqual(plain));
    EXPECT_FALSE(squares().isEqual(withEntries(3)));
}

TEST_F(NSDictionaryTest, ASubclassIsWalked) {
    int sum = 0;
    for (const NSNumber each : squares()) sum += as<NSNumber>(squares().objectForKey(each)).intValue();
    EXPECT_EQ(sum, 5);
}

TEST_F(NSDictionaryTest, ASubclassIsNotAskedForTheKeyNil) {
    static bool wasAskedForNil;
    wasAskedForNil = false;
    static const ClassDefinition definition{
        {.name = "NSDictionaryTestStrict",
         .superclass = "NSDictionary",
         .methods = {instanceMethod("count", countOfSquares),
                     instanceMethod(
                         "objectForKey:",
                         +[](NSDictionary self, SEL selector, NSObject key) {
                             if (!key) wasAskedForNil = true;
                             return squareForKey(self, selector, key);
                         }),
                     instanceMethod("keyEnumerator", squareKeys),
                     instanceMethod("initWithObjects:forKeys:count:", initSquares)}}};
    const NSDictionary strict =
        adopt(send<NSDictionary>(definition.classObject().alloc(), "init"_sel)).autorelease();
    const auto objects = send<NSObject>(strict, "objectEnumerator"_sel);
    for (int object : {0, 1, 4})
        EXPECT_EQ(as<NSNumber>(send<NSObject>(objects, "nextObject"_sel)).intValue(), object);
    EXPECT_FALSE(send<NSObject>(objects, "nextObject"_sel));
    EXPECT_FALSE(wasAskedForNil);
}

} // namespace
} // namespace tessarin::testing
