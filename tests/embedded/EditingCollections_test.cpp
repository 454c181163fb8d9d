// Collections that are edited by what they hold, or by what they are put together with, in the middle of a
// message.
#include "EditingObjects.h"

#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

#include "platform/embedded/foundation/ArchivedKeys.h"
#include "platform/embedded/foundation/XMLPropertyListWriter.h"

namespace tessarin::testing {
namespace {

NSUInteger nextIndex(NSIndexSet self, SEL selector, NSUInteger index) {
    makeEdit();
    return sendSuper<NSUInteger>(self, "EditingCollectionsIndexSet"_class, selector, index);
}
Retained<NSIndexSet> editingIndexSet(NSRange range) {
    static const ClassDefinition definition{
        {.name = "EditingCollectionsIndexSet",
         .superclass = "NSIndexSet",
         .methods = {instanceMethod("indexGreaterThanIndex:", nextIndex)}}};
    return adopt(as<NSIndexSet>(definition.classObject().alloc()).initWithIndexesInRange(range));
}

NSObject copyOfKey(NSObject self, SEL, void*) {
    makeEdit();
    return retain(self).leak();
}
Retained<NSObject> editingKey() {
    static const ClassDefinition definition{{.name = "EditingCollectionsKey",
                                             .protocols = {"NSCopying"},
                                             .methods = {instanceMethod("copyWithZone:", copyOfKey)}}};
    return newObject<NSObject>(definition);
}

class EditingCollectionsTest : public EditingTest {
protected:
    // An array whose strings nobody else keeps.
    static Retained<NSMutableArray> newArrayOf(const Texts& texts) {
        const Retained<NSMutableArray> array = adopt(NSMutableArray::alloc().init());
        const AutoreleasePool pool;
        for (const std::string& text : texts) array.addObject(NSString(text));
        return array;
    }
};

// One object, "qqq".
NSUInteger countOfOne(NSArray, SEL) { return 1; }
id onlyObject(NSArray, SEL, NSUInteger) {
    makeEdit();
    return "qqq"_ns;
}
Retained<NSArray> editingArray() {
    static const ClassDefinition definition{
        {.name = "EditingCollectionsArray",
         .superclass = "NSArray",
         .methods = {instanceMethod("count", countOfOne), instanceMethod("objectAtIndex:", onlyObject)}}};
    return newObject<NSArray>(definition);
}

TEST_F(EditingCollectionsTest, AnItemIsKeptWhileTheOneToCompareItWithIsAskedFor) {
    const Retained<NSMutableArray> array = newArrayOf({"qqq"});
    edit = [&] { array.removeAllObjects(); };
    EXPECT_TRUE(array.isEqual(editingArray()));
    EXPECT_EQ(array.count(), 0u);
}

TEST_F(EditingCollectionsTest, AnItemIsKeptWhileAnotherIsComparedWithIt) {
    static const ClassDefinition definition{
        {.name = "EditingCollectionsArrayOfOne",
         .superclass = "NSArray",
         .methods = {instanceMethod("count", countOfOne),
                     instanceMethod(
                         "objectAtIndex:", +[](NSArray, SEL, NSUInteger) -> id {
                             return editingString().autorelease();
                         })}}};
    const Retained<NSMutableArray> array = newArrayOf({"qqq"});
    edit = [&] { array.removeAllObjects(); };
    EXPECT_TRUE(newObject<NSArray>(definition).isEqual(array));
    EXPECT_EQ(array.count(), 0u);
}

TEST_F(EditingCollectionsTest, AnObjectIsKeptWhileAnotherIsComparedWithIt) {
    static const ClassDefinition definition{
        {.name = "EditingCollectionsDictionaryOfOne",
         .superclass = "NSDictionary",
         .methods = {instanceMethod(
                         "count", +[](NSDictionary, SEL) -> NSUInteger { return 1; }),
                     instanceMethod(
                         "keyEnumerator",
                         +[](NSDictionary, SEL) {
                             return send<NSObject>(NSArray::arrayOf("key"_ns), "objectEnumerator"_sel);
                         }),
                     instanceMethod(
                         "objectForKey:", +[](NSDictionary, SEL, NSObject) -> id {
                             return editingString().autorelease();
                         })}}};
    const Retained<NSMutableDictionary> dictionary = adopt(NSMutableDictionary::alloc().init());
    {
        const AutoreleasePool pool;
        dictionary.setObject_forKey(NSString(std::string("qqq")), "key"_ns);
    }
    edit = [&] { dictionary.removeAllObjects(); };
    EXPECT_TRUE(newObject<NSDictionary>(definition).isEqual(dictionary));
    EXPECT_EQ(dictionary.count(), 0u);
}

TEST_F(EditingCollectionsTest, AnArrayIsLookedAtAfterTheOtherThatItIsPutTogetherWith) {
    const auto joined = [](NSArray array, NSArray other) {
        return send<NSArray>(array, "arrayByAddingObjectsFromArray:"_sel, other);
    };
    const Texts more(100, "more");
    const auto arrayThatGrows = [&](const Retained<NSMutableArray>& array) {
        edit = [&] { array.addObjectsFromArray(newArrayOf(more)); };
        return NSMutableArray(array);
    };
    Texts all(more);
    all.insert(all.begin(), "first");
    const Retained<NSMutableArray> later = newArrayOf({"first"});
    Texts expected(all);
    expected.insert(expected.begin(), "qqq");
    EXPECT_EQ(texts(joined(editingArray(), arrayThatGrows(later))), expected);

    const Retained<NSMutableArray> earlier = newArrayOf({"first"});
    all.push_back("qqq");
    EXPECT_EQ(texts(joined(arrayThatGrows(earlier), editingArray())), all);
}

// A dictionary that keeps its keys in an order of its own.
NSMutableArray orderedKeys;
NSArray allOrderedKeys(NSMutableDictionary, SEL) { return orderedKeys; }
void removeOrderedKey(NSMutableDictionary self, SEL selector, NSObject key) {
    const Retained<NSObject> kept = retain(key);
    orderedKeys.removeObject(kept);
    sendSuper<void>(self, "EditingCollectionsOrderedDictionary"_class, selector, kept);
}

TEST_F(EditingCollectionsTest, ADictionaryThatEditsTheArrayOfItsKeysIsEmptied) {
    static const ClassDefinition definition{
        {.name = "EditingCollectionsOrderedDictionary",
         .superclass = "NSMutableDictionary",
         .methods = {instanceMethod("allKeys", allOrderedKeys),
                     instanceMethod("removeObjectForKey:", removeOrderedKey)}}};
    const Retained<NSMutableArray> keys = newArrayOf({"one", "two", "three"});
    orderedKeys = keys;
    const Retained<NSMutableDictionary> dictionary = newObject<NSMutableDictionary>(definition);
    for (const NSString key : keys) dictionary.setObject_forKey("object"_ns, key);
    dictionary.removeAllObjects();
    EXPECT_EQ(keys.count(), 0u);
    EXPECT_EQ(dictionary.count(), 0u);
    orderedKeys = nil;
}

// A dictionary that makes its key when it is asked, and keeps it no longer than to the next question.
Retained<NSMutableString> lastKey;
NSObject firstKeyOnly(NSObject, SEL) {
    static bool isAnswered = false;
    isAnswered = !isAnswered;
    if (isAnswered) lastKey = adopt(NSMutableString::alloc().initWithString("the key"_ns));
    return isAnswered ? NSObject(lastKey) : NSObject();
}
NSObject enumeratorOfForgottenKeys(NSDictionary, SEL) {
    static const ClassDefinition definition{{.name = "EditingCollectionsForgetfulEnumerator",
                                             .superclass = "NSEnumerator",
                                             .methods = {instanceMethod("nextObject", firstKeyOnly)}}};
    return newObject<NSObject>(definition).autorelease();
}
id objectOfForgottenKey(NSDictionary, SEL, NSObject) {
    lastKey.reset();
    return "object"_ns;
}

TEST_F(EditingCollectionsTest, AKeyIsKeptWhileItsObjectIsAskedFor) {
    static const ClassDefinition definition{
        {.name = "EditingCollectionsForgetfulDictionary",
         .superclass = "NSDictionary",
         .methods = {instanceMethod(
                         "count", +[](NSDictionary, SEL) -> NSUInteger { return 1; }),
                     instanceMethod("keyEnumerator", enumeratorOfForgottenKeys),
                     instanceMethod("objectForKey:", objectOfForgottenKey)}}};
    const auto copy = NSDictionary::dictionaryWithDictionary(newObject<NSDictionary>(definition));
    EXPECT_EQ(texts(copy.allKeys()), Texts{"the key"});
}

TEST_F(EditingCollectionsTest, AnArrayEmptiedByAnIndexSetHasNoObjectsLeftForIt) {
    const NSMutableArray array = NSMutableArray::arrayWithArray(NSArray::arrayOf("a"_ns, "b"_ns, "c"_ns));
    edit = [=] { array.removeAllObjects(); };
    EXPECT_THROWS_NAMED(array.objectsAtIndexes(editingIndexSet({0, 3})), "NSRangeException");
}

TEST_F(EditingCollectionsTest, AKeyMayEmptyTheArraysOfADictionaryThatIsMade) {
    const Retained<NSMutableArray> objects = adopt(NSMutableArray::alloc().init());
    const Retained<NSMutableArray> keys = adopt(NSMutableArray::alloc().init());
    {
        const AutoreleasePool pool;
        for (int number = 0; number < 20; ++number) {
            objects.addObject(NSString("object " + std::to_string(number)));
            keys.addObject(number == 0 ? NSObject(editingKey().autorelease())
                                       : NSObject(NSString("key " + std::to_string(number))));
        }
    }
    edit = [&] {
        objects.removeAllObjects();
        keys.removeAllObjects();
    };
    const auto dictionary =
        send<NSDictionary>("NSDictionary"_class, "dictionaryWithObjects:forKeys:"_sel, objects, keys);
    EXPECT_EQ(dictionary.count(), 20u);
    EXPECT_EQ(text(dictionary.objectForKey("key 19"_ns)), "object 19");
}

BOOL isKindOfClass(NSObject self, SEL selector, Class asked) {
    makeEdit();
    return sendSuper<BOOL>(self, "EditingCollectionsItemOfKey"_class, selector, asked);
}

TEST_F(EditingCollectionsTest, AKeyOfAnArchiveMayLoseItsItemsWhileTheyAreLookedThrough) {
    static const ClassDefinition definition{{.name = "EditingCollectionsItemOfKey",
                                             .methods = {instanceMethod("isKindOfClass:", isKindOfClass)}}};
    const Retained<NSMutableArray> key = newArrayOf({"a", "b"});
    key.insertObject_atIndex(newObject<NSObject>(definition), 0);
    edit = [&] { key.removeAllObjects(); };
    const NSObject keys[] = {key};
    embedded::checkArchivedKeys(nil, keys);
    EXPECT_EQ(key.count(), 0u);
}

// ---- Property lists

// "qqq", which edits at every question.
std::function<void()> editEachTime;
NSUInteger lengthOfRestlessString(NSString, SEL) {
    editEachTime();
    return 3;
}

TEST_F(EditingCollectionsTest, AMutableKeyIsSortedAsItWasWhenTheOthersAreAskedFor) {
    static const ClassDefinition stringDefinition{
        {.name = "EditingCollectionsRestlessString",
         .superclass = "NSString",
         .methods = {instanceMethod("length", lengthOfRestlessString),
                     instanceMethod(
                         "characterAtIndex:", +[](NSString, SEL, NSUInteger) -> unichar { return 'q'; })}}};
    static NSArray keys; // in the order that they are asked for
    static const ClassDefinition definition{
        {.name = "EditingCollectionsDictionaryOfKeys",
         .superclass = "NSDictionary",
         .methods = {instanceMethod(
                         "count", +[](NSDictionary, SEL) { return keys.count(); }),
                     instanceMethod(
                         "keyEnumerator",
                         +[](NSDictionary, SEL) { return send<NSObject>(keys, "objectEnumerator"_sel); }),
                     instanceMethod(
                         "objectForKey:", +[](NSDictionary, SEL, NSObject) -> id { return "object"_ns; })}}};
    const NSMutableString key = NSMutableString::stringWithString("p"_ns);
    keys = NSArray::arrayOf(key, newObject<NSString>(stringDefinition));
    editEachTime = [=] { key.appendString(NSString(std::string(1000, 'p'))); };
    const std::string document = embedded::writeXMLPropertyList(newObject<NSDictionary>(definition), 2);
    editEachTime = nullptr;
    keys = nil;
    EXPECT_LT(document.find("<key>pppp"), document.find("<key>qqq</key>")) << document;
}

// An array that has more objects each time it is asked.
NSUInteger askedForCount = 0;
NSUInteger growingCount(NSArray, SEL) { return askedForCount++ == 0 ? 10 : 1000000; }
id anyObject(NSArray, SEL, NSUInteger) { return "a"_ns; }

TEST_F(EditingCollectionsTest, AnArrayThatGrowsIsTestedAsFarAsItWasCounted) {
    static const ClassDefinition definition{
        {.name = "EditingCollectionsGrowingArray",
         .superclass = "NSArray",
         .methods = {instanceMethod("count", growingCount), instanceMethod("objectAtIndex:", anyObject)}}};
    const Retained<NSArray> array = newObject<NSArray>(definition);
    askedForCount = 0;
    const NSIndexSet passing =
        array.indexesOfObjectsWithOptions_passingTest(0, [](id, NSUInteger, BOOL*) { return true; });
    EXPECT_EQ(passing.count(), 10u);
}

// An array that makes its objects when it is asked, and keeps the last one alone.
Retained<NSMutableString> lastAnswer;
NSUInteger countOfAnswers(NSArray, SEL) { return 3; }
id nextAnswer(NSArray, SEL, NSUInteger index) {
    lastAnswer = adopt(NSMutableString::alloc().initWithString("text "_ns));
    lastAnswer.appendFormat("%d"_ns, static_cast<int>(index));
    return lastAnswer;
}

TEST_F(EditingCollectionsTest, TheAnswersOfAnArrayAreKeptUntilAllAreThere) {
    static const ClassDefinition definition{
        {.name = "EditingCollectionsForgetfulArray",
         .superclass = "NSArray",
         .methods = {instanceMethod("count", countOfAnswers), instanceMethod("objectAtIndex:", nextAnswer)}}};
    const Retained<NSArray> array = newObject<NSArray>(definition);
    EXPECT_EQ(texts(NSArray::arrayWithArray(array)), (Texts{"text 0", "text 1", "text 2"}));
    EXPECT_EQ(texts(adopt(NSMutableArray(array.mutableCopy()))), (Texts{"text 0", "text 1", "text 2"}));
    lastAnswer.reset();
}

// Such a copy keeps its first entries behind it.
Retained<NSMutableDictionary> newCopyOf(NSDictionary propertyList) {
    const AutoreleasePool pool;
    return retain(
        as<NSMutableDictionary>(tessarin_propertyListWithMutableContainers_error(propertyList, nullptr)));
}

TEST_F(EditingCollectionsTest, ADictionaryMayGoWhileItIsEmptied) {
    static const ClassDefinition definition{
        {.name = "EditingCollectionsPassingObject",
         .methods = {instanceMethod(
             "dealloc", +[](NSObject self, SEL selector) {
                 makeEdit();
                 sendSuper<void>(self, "EditingCollectionsPassingObject"_class, selector);
             })}}};
    Retained<NSMutableDictionary> dictionary = newCopyOf(NSDictionary::dictionaryWithObjects_forKeys(
        NSArray::arrayOf("x"_ns, "y"_ns, "z"_ns), NSArray::arrayOf("a"_ns, "b"_ns, "c"_ns)));
    for (const NSString key : {"a"_ns, "c"_ns})
        dictionary.setObject_forKey(newObject<NSObject>(definition), key);
    bool isLastGone = false;
    edit = [&] { // when the first goes
        dictionary.reset();
        edit = [&] { isLastGone = true; };
    };
    dictionary.removeAllObjects();
    EXPECT_TRUE(isLastGone);
}

TEST_F(EditingCollectionsTest, ACopyThatIsEmptiedAndFilledAgainHoldsWhatWasPutThereLast) {
    const Retained<NSMutableDictionary> dictionary = newCopyOf(NSDictionary::dictionaryWithObjects_forKeys(
        NSArray::arrayOf("x"_ns, "y"_ns), NSArray::arrayOf("a"_ns, "b"_ns)));
    for (int round = 0; round < 3; ++round) {
        dictionary.removeAllObjects();
        EXPECT_EQ(dictionary.count(), 0u);
        for (int number = 0; number < 20; ++number)
            dictionary.setObject_forKey(NSNumber::numberWithInt(number + round),
                                        NSString(std::to_string(number)));
        EXPECT_EQ(dictionary.count(), 20u);
        EXPECT_EQ(as<NSNumber>(dictionary.objectForKey("7"_ns)).intValue(), 7 + round);
    }
}

} // namespace
} // namespace tessarin::testing
