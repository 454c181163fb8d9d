#include "PlatformTest.h"

#include "TessarinFoundation/NSDictionary+TessarinExtensions.h"

#include <map>
#include <random>

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

// Keys that begin alike for longer or shorter, or are all of others, with one among them, perhaps, that is no
// ASCII.
TEST_F(DictionaryExtensionsTest, ManyStringsAreOrderedByTheirUnits) {
    std::mt19937 random(1);
    for (const std::string beginning : {"", "a", "a name of some length, number "})
        for (const bool isAscii : {true, false}) {
            std::map<std::string, std::string> expected;
            if (!isAscii) expected["\u0436"] = "zhe"; // behind all others, as in UTF-8
            for (int count = 0; count < 300; ++count) {
                std::string key = beginning;
                for (auto length = random() % 20; length > 0; --length) key += "ab/Z\x01\0"[random() % 6];
                expected[key] = std::to_string(count);
            }
            const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
            for (const auto& [key, value] : expected)
                dictionary.setObject_forKey(NSString(value), NSString(key));
            Texts values;
            for (const auto& [key, value] : expected) values.push_back(value);
            EXPECT_EQ(texts(tessarin_allValuesSortedByKeys(dictionary)), values) << beginning;
            EXPECT_EQ(
                texts(tessarin_allValuesSortedByKeys(NSDictionary::dictionaryWithDictionary(dictionary))),
                values)
                << beginning;
        }
}

// Compares by a number, the larger first.
NSObject newBackwardKey(int number) {
    static const ClassDefinition definition{
        {.name = "TessarinTestBackwardKey",
         .protocols = {"NSCopying"},
         .instanceVariables = {instanceVariable<int>("number")},
         .methods = {instanceMethod(
                         "copyWithZone:", +[](NSObject self, SEL, void*) { return retain(self).leak(); }),
                     instanceMethod(
                         "compare:", +[](NSObject self, SEL, NSObject other) -> NSComparisonResult {
                             const int difference = instanceVariableOf<int>(other, "number")
                                                    - instanceVariableOf<int>(self, "number");
                             return difference < 0   ? NSOrderedAscending
                                    : difference > 0 ? NSOrderedDescending
                                                     : NSOrderedSame;
                         })}}};
    const NSObject key = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
    instanceVariableOf<int>(key, "number") = number;
    return key;
}

TEST_F(DictionaryExtensionsTest, KeysWithAnOrderOfTheirOwnAreAsked) {
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    for (const int number : {2, 3, 1})
        dictionary.setObject_forKey(NSNumber::numberWithInt(number), newBackwardKey(number));
    EXPECT_EQ(texts(tessarin_allValuesSortedByKeys(dictionary)), (Texts{"3", "2", "1"}));
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

// A dictionary of an application's own class that makes each object when it is asked for it and keeps the
// last one alone.
Retained<NSMutableString> lastMade;

TEST_F(DictionaryExtensionsTest, ObjectsThatTheDictionaryLetsGoOfAreKept) {
    static const ClassDefinition definition{
        {.name = "TessarinFleetingDictionary",
         .superclass = "NSDictionary",
         .methods = {
             instanceMethod(
                 "init", +[](NSDictionary self, SEL) { return self; }),
             instanceMethod(
                 "count", +[](NSDictionary, SEL) -> NSUInteger { return 3; }),
             instanceMethod(
                 "allKeys", +[](NSDictionary, SEL) { return NSArray::arrayOf("b"_ns, "c"_ns, "a"_ns); }),
             instanceMethod(
                 "objectForKey:", +[](NSDictionary, SEL, NSObject key) -> id {
                     EXPECT_TRUE(!lastMade || lastMade.retainCount() > 1);
                     lastMade = adopt(NSMutableString::alloc().initWithString(as<NSString>(key)));
                     return lastMade;
                 })}}};
    const Retained<NSDictionary> dictionary =
        adopt(as<NSDictionary>(static_cast<NSObject>(definition.classObject().alloc())).init());
    EXPECT_EQ(texts(tessarin_allValuesSortedByKeys(dictionary)), (Texts{"a", "b", "c"}));
    lastMade.reset();
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
