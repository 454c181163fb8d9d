#include "PlatformTest.h"

#include "TessarinFoundation/NSDictionary+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class DictionaryExtensionsTest : public PlatformTest {
protected:
    const NSDictionary letters = NSDictionary::dictionaryWithObjects_forKeys(
        NSArray::arrayOf(NSNumber::numberWithInt(2), NSNumber::numberWithInt(1), NSNumber::numberWithInt(3)),
        NSArray::arrayOf("b"_ns, "a"_ns, "c"_ns));
};

TEST_F(DictionaryExtensionsTest, ValuesComeInTheOrderOfTheirKeys) {
    EXPECT_EQ(texts(tessarin_allValuesSortedByKeys(letters)), (Texts{"1", "2", "3"}));
}

TEST_F(DictionaryExtensionsTest, KeysAreOrderedByTheirOwnComparison) {
    const NSDictionary numbers = NSDictionary::dictionaryWithObjects_forKeys(
        NSArray::arrayOf("ten"_ns, "nine"_ns, "minus one"_ns),
        NSArray::arrayOf(NSNumber::numberWithInt(10), NSNumber::numberWithInt(9),
                         NSNumber::numberWithInt(-1)));
    EXPECT_EQ(texts(tessarin_allValuesSortedByKeys(numbers)), (Texts{"minus one", "nine", "ten"}));
}

TEST_F(DictionaryExtensionsTest, AnEmptyDictionaryGivesAnEmptyArray) {
    const NSArray values = tessarin_allValuesSortedByKeys(NSDictionary::dictionary());
    EXPECT_TRUE(values);
    EXPECT_EQ(values.count(), 0u);
}

TEST_F(DictionaryExtensionsTest, TheValuesAreImmutable) {
    const NSDictionary dictionary = NSMutableDictionary::dictionaryWithDictionary(letters);
    const NSArray values = tessarin_allValuesSortedByKeys(dictionary);
    EXPECT_EQ(NSObject(adopt(NSObject(values.copy()))), values);
}

TEST_F(DictionaryExtensionsTest, KeysThatCannotBeComparedRaise) {
    const NSDictionary mixed = NSDictionary::dictionaryWithObjects_forKeys(
        NSArray::arrayOf("x"_ns, "y"_ns), NSArray::arrayOf("1"_ns, NSNumber::numberWithInt(1)));
    EXPECT_THROWS_NAMED(tessarin_allValuesSortedByKeys(mixed), "NSInvalidArgumentException");
}

TEST_F(DictionaryExtensionsTest, KeysWithoutAComparisonRaise) {
    const NSDictionary incomparable = NSDictionary::dictionaryWithObjects_forKeys(
        NSArray::arrayOf("x"_ns, "y"_ns), NSArray::arrayOf(NSNull::null(), NSArray::array()));
    EXPECT_THROWS_NAMED(tessarin_allValuesSortedByKeys(incomparable), "NSInvalidArgumentException");
}

TEST_F(DictionaryExtensionsTest, ASingleKeyIsNotCompared) {
    const NSDictionary single = NSDictionary::dictionaryWithObject_forKey("x"_ns, NSArray::array());
    EXPECT_EQ(texts(tessarin_allValuesSortedByKeys(single)), (Texts{"x"}));
}

// A dictionary of an application's own class that knows keys without objects.
TEST_F(DictionaryExtensionsTest, KeysWithoutAnObjectAreLeftOut) {
    static const ClassDefinition definition{
        {.name = "TessarinForgetfulDictionary",
         .superclass = "NSDictionary",
         .methods = {instanceMethod(
                         "init", +[](NSDictionary self, SEL) { return self; }),
                     instanceMethod(
                         "count", +[](NSDictionary, SEL) -> NSUInteger { return 2; }),
                     instanceMethod(
                         "allKeys", +[](NSDictionary, SEL) { return NSArray::arrayOf("b"_ns, "a"_ns); }),
                     instanceMethod(
                         "objectForKey:", +[](NSDictionary, SEL, NSObject key) {
                             return key.isEqual("a"_ns) ? id("the object of a"_ns) : id();
                         })}}};
    const Retained<NSDictionary> dictionary =
        adopt(as<NSDictionary>(static_cast<NSObject>(definition.classObject().alloc())).init());
    EXPECT_EQ(texts(tessarin_allValuesSortedByKeys(dictionary)), (Texts{"the object of a"}));
}

TEST_F(DictionaryExtensionsTest, RemovesAKey) {
    const NSDictionary remaining = tessarin_dictionaryByRemovingObjectForKey(letters, "b"_ns);
    EXPECT_EQ(remaining.count(), 2u);
    EXPECT_FALSE(NSObject(remaining.objectForKey("b"_ns)));
    EXPECT_EQ(letters.count(), 3u);
}

TEST_F(DictionaryExtensionsTest, AnAbsentKeyGivesAnEqualButDistinctDictionary) {
    const NSDictionary remaining = tessarin_dictionaryByRemovingObjectForKey(letters, "z"_ns);
    EXPECT_TRUE(remaining.isEqualToDictionary(letters));
    EXPECT_NE(remaining, letters);
}

TEST_F(DictionaryExtensionsTest, TheRemainingDictionaryIsImmutable) {
    const NSDictionary dictionary = NSMutableDictionary::dictionaryWithDictionary(letters);
    const NSDictionary remaining = tessarin_dictionaryByRemovingObjectForKey(dictionary, "b"_ns);
    EXPECT_EQ(NSObject(adopt(NSObject(remaining.copy()))), remaining);
}

TEST_F(DictionaryExtensionsTest, TheKeyNilIsThePlatformsMatter) {
    EXPECT_THROWS_NAMED(tessarin_dictionaryByRemovingObjectForKey(letters, nil),
                        "NSInvalidArgumentException");
}

} // namespace
} // namespace tessarin::testing
