// Walks over collections that are not the platform's own, which may change under them.
#include "EditingObjects.h"

namespace tessarin::testing {
namespace {

// What the collections below stand for. The strings in them are theirs alone.
Retained<NSMutableArray> wrappedArray;
Retained<NSMutableDictionary> wrappedDictionary;

Retained<NSMutableArray> wrappingArray() {
    static const ClassDefinition definition{
        {.name = "FastEnumerationTestWrapper",
         .superclass = "NSMutableArray",
         .methods = {instanceMethod(
                         "count", +[](NSArray, SEL) { return wrappedArray.count(); }),
                     instanceMethod(
                         "objectAtIndex:",
                         +[](NSArray, SEL, NSUInteger index) { return wrappedArray.objectAtIndex(index); }),
                     instanceMethod(
                         "removeObjectAtIndex:",
                         +[](NSArray, SEL, NSUInteger index) { wrappedArray.removeObjectAtIndex(index); })}}};
    return newObject<NSMutableArray>(definition);
}
Retained<NSMutableDictionary> wrappingDictionary() {
    static const ClassDefinition definition{
        {.name = "FastEnumerationTestDictionaryWrapper",
         .superclass = "NSMutableDictionary",
         .methods = {
             instanceMethod(
                 "count", +[](NSDictionary, SEL) { return wrappedDictionary.count(); }),
             instanceMethod(
                 "objectForKey:",
                 +[](NSDictionary, SEL, NSObject key) { return wrappedDictionary.objectForKey(key); }),
             instanceMethod(
                 "keyEnumerator",
                 +[](NSDictionary, SEL) { return send<NSObject>(wrappedDictionary, "keyEnumerator"_sel); }),
             instanceMethod(
                 "removeObjectForKey:",
                 +[](NSDictionary, SEL, NSObject key) { wrappedDictionary.removeObjectForKey(key); })}}};
    return newObject<NSMutableDictionary>(definition);
}

// Makes each text when it is asked for it, and keeps it no longer than to the next question.
Retained<NSMutableString> lastAnswer;
Retained<NSArray> forgetfulArray() {
    static const ClassDefinition definition{
        {.name = "FastEnumerationTestForgetfulArray",
         .superclass = "NSArray",
         .methods = {instanceMethod(
                         "count", +[](NSArray, SEL) -> NSUInteger { return 3; }),
                     instanceMethod(
                         "objectAtIndex:", +[](NSArray, SEL, NSUInteger index) -> id {
                             lastAnswer = adopt(NSMutableString::alloc().init());
                             lastAnswer.appendFormat("text %d"_ns, static_cast<int>(index));
                             return lastAnswer;
                         })}}};
    return newObject<NSArray>(definition);
}

class EmbeddedFastEnumerationTest : public PlatformTest {
protected:
    EmbeddedFastEnumerationTest() {
        const AutoreleasePool pool;
        wrappedArray = adopt(NSMutableArray::alloc().init());
        wrappedDictionary = adopt(NSMutableDictionary::alloc().init());
        for (int number = 0; number < 5; ++number) {
            wrappedArray.addObject(NSString("text " + std::to_string(number)));
            wrappedDictionary.setObject_forKey("object"_ns, NSString("key " + std::to_string(number)));
        }
    }
    ~EmbeddedFastEnumerationTest() override {
        wrappedArray.reset();
        wrappedDictionary.reset();
        lastAnswer.reset();
    }

    // What a walk comes to that removes the later keys at the first.
    static std::string removingLaterKeys(NSObject walked, NSMutableDictionary dictionary) {
        int seen = 0;
        const std::string thrown = thrownName([&] {
            for (FastEnumerator walk(walked); walk != std::default_sentinel; ++walk) {
                const std::string first = text(NSString(NSObject(*walk)));
                for (int number = 0; number < 5; ++number) {
                    const AutoreleasePool pool;
                    const NSString key("key " + std::to_string(number));
                    if (text(key) != first) dictionary.removeObjectForKey(key);
                }
                ++seen;
            }
        });
        return thrown + " after " + std::to_string(seen);
    }
};

TEST_F(EmbeddedFastEnumerationTest, WalksAnArrayThatWrapsAnother) {
    Texts walked;
    for (const NSString item : wrappingArray()) walked.push_back(text(item));
    EXPECT_EQ(walked, texts(wrappedArray));
}

TEST_F(EmbeddedFastEnumerationTest, RemovingFromAnArrayThatWrapsAnotherRaises) {
    const Retained<NSMutableArray> array = wrappingArray();
    Texts walked;
    EXPECT_EQ(thrownName([&] {
                  for (const NSString item : array) {
                      array.removeObjectAtIndex(0);
                      walked.push_back(text(item));
                  }
              }),
              "NSGenericException");
    EXPECT_EQ(walked, Texts{"text 0"});
}

TEST_F(EmbeddedFastEnumerationTest, RemovingLaterKeysThanAnEnumeratorHasReachedRaises) {
    EXPECT_EQ(removingLaterKeys(send<NSObject>(wrappedDictionary, "keyEnumerator"_sel), wrappedDictionary),
              "NSGenericException after 1");
}

TEST_F(EmbeddedFastEnumerationTest, RemovingLaterKeysOfADictionaryThatWrapsAnotherRaises) {
    const Retained<NSMutableDictionary> dictionary = wrappingDictionary();
    EXPECT_EQ(removingLaterKeys(dictionary, dictionary), "NSGenericException after 1");
}

TEST_F(EmbeddedFastEnumerationTest, AnItemIsKeptWhileItsArrayIsAskedForAnother) {
    const Retained<NSArray> array = forgetfulArray();
    Texts walked;
    for (const NSString item : array) {
        EXPECT_EQ(text(array.objectAtIndex(1)), "text 1");
        walked.push_back(text(item));
    }
    EXPECT_EQ(walked, (Texts{"text 0", "text 1", "text 2"}));
}

TEST_F(EmbeddedFastEnumerationTest, AnEnumeratorIsAskedForTheNextItemWhenItIsDue) {
    const Retained<NSArray> array = forgetfulArray();
    Texts walked;
    for (FastEnumerator walk(send<NSObject>(array, "objectEnumerator"_sel)); walk != std::default_sentinel;
         ++walk)
        walked.push_back(text(NSString(NSObject(*walk))));
    EXPECT_EQ(walked, (Texts{"text 0", "text 1", "text 2"}));
}

} // namespace
} // namespace tessarin::testing
