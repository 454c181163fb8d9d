// What platform objects are asked about may be an application's own, and while it is asked it may edit them.
#include "PlatformTest.h"

#include <functional>
#include <utility>

namespace tessarin::testing {
namespace {

// What the next question to an object of these classes sets off.
std::function<void()> edit;
void makeEdit() {
    if (const std::function<void()> made = std::exchange(edit, nullptr)) made();
}

template <class T>
Retained<T> newObject(const ClassDefinition& definition) {
    return adopt(as<T>(send<NSObject>(definition.classObject().alloc(), "init"_sel)));
}

// "qqq"
NSUInteger lengthOfString(NSString, SEL) {
    makeEdit();
    return 3;
}
unichar unitOfString(NSString, SEL, NSUInteger) { return 'q'; }
Retained<NSString> editingString() {
    static const ClassDefinition definition{{.name = "EditingMeanwhileString",
                                             .superclass = "NSString",
                                             .methods = {instanceMethod("length", lengthOfString),
                                                         instanceMethod("characterAtIndex:", unitOfString)}}};
    return newObject<NSString>(definition);
}

// The letter a.
BOOL isMemberOfSet(NSCharacterSet, SEL, unichar unit) {
    makeEdit();
    return unit == 'a';
}
Retained<NSCharacterSet> editingSet() {
    static const ClassDefinition definition{
        {.name = "EditingMeanwhileCharacterSet",
         .superclass = "NSCharacterSet",
         .methods = {instanceMethod("characterIsMember:", isMemberOfSet)}}};
    return newObject<NSCharacterSet>(definition);
}

NSUInteger nextIndex(NSIndexSet self, SEL selector, NSUInteger index) {
    makeEdit();
    return sendSuper<NSUInteger>(self, "EditingMeanwhileIndexSet"_class, selector, index);
}
Retained<NSIndexSet> editingIndexSet(NSRange range) {
    static const ClassDefinition definition{
        {.name = "EditingMeanwhileIndexSet",
         .superclass = "NSIndexSet",
         .methods = {instanceMethod("indexGreaterThanIndex:", nextIndex)}}};
    return adopt(as<NSIndexSet>(definition.classObject().alloc()).initWithIndexesInRange(range));
}

NSObject copyOfKey(NSObject self, SEL, void*) {
    makeEdit();
    return retain(self).leak();
}
Retained<NSObject> editingKey() {
    static const ClassDefinition definition{{.name = "EditingMeanwhileKey",
                                             .protocols = {"NSCopying"},
                                             .methods = {instanceMethod("copyWithZone:", copyOfKey)}}};
    return newObject<NSObject>(definition);
}

class EditingMeanwhileTest : public PlatformTest {
protected:
    ~EditingMeanwhileTest() override { edit = nullptr; }

    // A string that becomes another at the next question.
    static NSMutableString stringThatBecomes(NSString later, std::string_view first) {
        const NSMutableString string = NSMutableString::stringWithString(NSString(std::string(first)));
        edit = [=] { string.setString(later); };
        return string;
    }
    static NSMutableString longStringThatBecomes(NSString later) {
        return stringThatBecomes(later, std::string(3000, 'a'));
    }
};

// ---- Strings

TEST_F(EditingMeanwhileTest, ARangeIsCheckedWhenTheReplacementIsKnown) {
    const NSMutableString string = longStringThatBecomes("x"_ns);
    EXPECT_THROWS_NAMED(string.replaceCharactersInRange_withString({1500, 10}, editingString()),
                        "NSRangeException");
    EXPECT_EQ(text(string), "x");
}

TEST_F(EditingMeanwhileTest, AComparedStringIsLookedAtAfterTheOther) {
    EXPECT_TRUE(longStringThatBecomes("qqq"_ns).isEqual(editingString()));
    EXPECT_EQ(longStringThatBecomes("qqq"_ns).compare(editingString()), NSOrderedSame);
    EXPECT_TRUE(editingString().isEqual(longStringThatBecomes("qqq"_ns)));
}

TEST_F(EditingMeanwhileTest, ASearchedStringIsLookedAtAfterTheOther) {
    EXPECT_EQ(longStringThatBecomes("-qqq"_ns).rangeOfString(editingString()), (NSRange{1, 3}));
    EXPECT_TRUE(longStringThatBecomes("qqq-"_ns).hasPrefix(editingString()));
    EXPECT_TRUE(editingString().hasPrefix(longStringThatBecomes("qq"_ns)));
    EXPECT_TRUE(editingString().hasSuffix(longStringThatBecomes("qq"_ns)));
    EXPECT_EQ(texts(longStringThatBecomes("1qqq2"_ns).componentsSeparatedByString(editingString())),
              (Texts{"1", "2"}));
}

TEST_F(EditingMeanwhileTest, AStringIsAppendedToWhatIsThereAfterwards) {
    EXPECT_EQ(text(longStringThatBecomes("x"_ns).stringByAppendingString(editingString())), "xqqq");
}

TEST_F(EditingMeanwhileTest, ASetIsAskedAboutTheStringAsItWas) {
    EXPECT_EQ(stringThatBecomes("aaaa"_ns, "bbba").rangeOfCharacterFromSet(editingSet()), (NSRange{3, 1}));
    EXPECT_EQ(
        texts(stringThatBecomes("aaaaa"_ns, "bbabb").componentsSeparatedByCharactersInSet(editingSet())),
        (Texts{"bb", "bb"}));
    EXPECT_EQ(text(stringThatBecomes("aaaa"_ns, "abba").stringByTrimmingCharactersInSet(editingSet())), "bb");
    EXPECT_EQ(text(stringThatBecomes("x"_ns, "abba").stringByTrimmingCharactersInSet(editingSet())), "bb");
}

TEST_F(EditingMeanwhileTest, AScannerSkipsBeforeItLooksAtWhatIsWanted) {
    for (const bool goesUpToIt : {false, true}) {
        const NSScanner scanner = NSScanner::scannerWithString("qbc"_ns);
        scanner.setCharactersToBeSkipped(editingSet());
        const NSMutableString wanted =
            goesUpToIt ? stringThatBecomes("c"_ns, "abc") : stringThatBecomes("q"_ns, "qbc");
        NSString found;
        EXPECT_TRUE(goesUpToIt ? scanner.scanUpToString_intoString(wanted, &found)
                               : scanner.scanString_intoString(wanted, &found));
        EXPECT_EQ(text(found), goesUpToIt ? "qb" : "q");
    }
}

// ---- Collections

TEST_F(EditingMeanwhileTest, AnArrayEmptiedByAnIndexSetHasNoObjectsLeftForIt) {
    const NSMutableArray array = NSMutableArray::arrayWithArray(NSArray::arrayOf("a"_ns, "b"_ns, "c"_ns));
    edit = [=] { array.removeAllObjects(); };
    EXPECT_THROWS_NAMED(array.objectsAtIndexes(editingIndexSet({0, 3})), "NSRangeException");
}

TEST_F(EditingMeanwhileTest, AKeyMayEmptyTheArraysOfADictionaryThatIsMade) {
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

// An array that has more objects each time it is asked.
NSUInteger askedForCount = 0;
NSUInteger growingCount(NSArray, SEL) { return askedForCount++ == 0 ? 10 : 1000000; }
id anyObject(NSArray, SEL, NSUInteger) { return "a"_ns; }

TEST_F(EditingMeanwhileTest, AnArrayThatGrowsIsTestedAsFarAsItWasCounted) {
    static const ClassDefinition definition{
        {.name = "EditingMeanwhileGrowingArray",
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

TEST_F(EditingMeanwhileTest, TheAnswersOfAnArrayAreKeptUntilAllAreThere) {
    static const ClassDefinition definition{
        {.name = "EditingMeanwhileForgetfulArray",
         .superclass = "NSArray",
         .methods = {instanceMethod("count", countOfAnswers), instanceMethod("objectAtIndex:", nextAnswer)}}};
    const Retained<NSArray> array = newObject<NSArray>(definition);
    EXPECT_EQ(texts(NSArray::arrayWithArray(array)), (Texts{"text 0", "text 1", "text 2"}));
    EXPECT_EQ(texts(adopt(NSMutableArray(array.mutableCopy()))), (Texts{"text 0", "text 1", "text 2"}));
    lastAnswer.reset();
}

} // namespace
} // namespace tessarin::testing
