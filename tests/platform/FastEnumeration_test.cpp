// Walking collections with range-based for.
#include "PlatformTest.h"

#include <memory>
#include <set>

namespace tessarin::testing {
namespace {

class FastEnumerationTest : public PlatformTest {
protected:
    static NSMutableArray numbered(int count) {
        const NSMutableArray array = NSMutableArray::array();
        for (int number = 0; number < count; ++number) array.addObject(NSNumber::numberWithInt(number));
        return array;
    }
    static std::vector<int> walked(NSArray array) {
        std::vector<int> numbers;
        for (const NSNumber number : array) numbers.push_back(number.intValue());
        return numbers;
    }
    static std::vector<int> firstNumbers(int count) {
        std::vector<int> numbers;
        for (int number = 0; number < count; ++number) numbers.push_back(number);
        return numbers;
    }
};

TEST_F(FastEnumerationTest, WalksAnArrayInOrder) {
    EXPECT_EQ(walked(NSArray::arrayWithArray(numbered(3))), firstNumbers(3));
    EXPECT_EQ(walked(numbered(3)), firstNumbers(3));
}

TEST_F(FastEnumerationTest, WalksNothingInAnEmptyArray) {
    EXPECT_EQ(walked(NSArray::array()), firstNumbers(0));
    EXPECT_EQ(walked(NSMutableArray::array()), firstNumbers(0));
}

TEST_F(FastEnumerationTest, WalksNothingInNil) {
    EXPECT_EQ(walked(NSArray()), firstNumbers(0));
    for (const NSString key : NSDictionary()) FAIL() << text(key);
}

TEST_F(FastEnumerationTest, WalksMoreElementsThanABatchHolds) {
    for (const int count : {15, 16, 17, 32, 33, 1000})
        EXPECT_EQ(walked(numbered(count)), firstNumbers(count));
}

TEST_F(FastEnumerationTest, WalksTheKeysOfADictionary) {
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    std::set<std::string> expected, keys;
    for (int number = 0; number < 50; ++number) {
        const std::string key = "key" + std::to_string(number);
        dictionary.setObject_forKey(NSNumber::numberWithInt(number), NSString(key));
        expected.insert(key);
    }
    std::size_t count = 0;
    for (const NSString key : dictionary) {
        keys.insert(text(key));
        ++count;
    }
    EXPECT_EQ(keys, expected);
    EXPECT_EQ(count, expected.size());
}

TEST_F(FastEnumerationTest, MayBeLeftEarlyAndNested) {
    const NSArray array = numbered(20);
    int pairs = 0;
    for (const NSNumber outer : array) {
        if (outer.intValue() == 10) break;
        for (const NSNumber inner : array) {
            if (inner.intValue() == 5) break;
            ++pairs;
        }
    }
    EXPECT_EQ(pairs, 50);
}

TEST_F(FastEnumerationTest, AddingWhileWalkingRaises) {
    const NSMutableArray array = numbered(3);
    int seen = 0;
    EXPECT_EQ(thrownName([&] {
                  for (const NSNumber number : array) {
                      ++seen;
                      array.addObject(number);
                  }
              }),
              "NSGenericException");
    EXPECT_EQ(seen, 1);
}

TEST_F(FastEnumerationTest, RemovingWhileWalkingRaises) {
    const NSMutableArray array = numbered(40);
    EXPECT_EQ(thrownName([&] {
                  for (const NSNumber number : array)
                      if (number.intValue() == 20) array.removeObjectAtIndex(0);
              }),
              "NSGenericException");
}

TEST_F(FastEnumerationTest, ChangingADictionaryWhileWalkingRaises) {
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    for (int number = 0; number < 3; ++number)
        dictionary.setObject_forKey(NSNumber::numberWithInt(number),
                                    NSString("key" + std::to_string(number)));
    EXPECT_EQ(thrownName([&] {
                  for (const NSString key : dictionary)
                      dictionary.setObject_forKey(key, key.stringByAppendingString("more"_ns));
              }),
              "NSGenericException");
}

TEST_F(FastEnumerationTest, SaysWhichCollectionWasChanged) {
    const NSMutableArray array = numbered(3);
    std::string reason;
    attempt(
        [&] {
            for (const NSNumber number : array) array.addObject(number);
        },
        [&](NSException exception) { reason = text(exception.reason()); });
    EXPECT_TRUE(reason.starts_with("*** Collection <")) << reason;
    EXPECT_TRUE(reason.ends_with("> was mutated while being enumerated.")) << reason;
}

TEST_F(FastEnumerationTest, CopiesOfAnEnumeratorWalkOnTheirOwn) {
    const NSArray array = numbered(40);
    FastEnumerator enumerator = array.begin();
    for (int steps = 0; steps < 5; ++steps) ++enumerator;
    FastEnumerator copy = enumerator;
    ++enumerator;
    EXPECT_EQ(NSNumber(NSObject(*copy)).intValue(), 5);
    EXPECT_EQ(NSNumber(NSObject(*enumerator)).intValue(), 6);
    copy = enumerator;
    FastEnumerator& same = copy;
    copy = same;
    int left = 0;
    for (; copy != array.end(); copy++) ++left;
    EXPECT_EQ(left, 34);
    EXPECT_EQ(NSNumber(NSObject(*enumerator)).intValue(), 6);
}

// ---- A collection of one's own

// Answers the numbers from 0 to 9, three at a time, in the caller's buffer.
NSUInteger enumerateThreeAtATime(NSObject self, SEL, NSFastEnumerationState* state, NSObject* buffer,
                                 NSUInteger) {
    NSUInteger count = 0;
    while (count < 3 && state->state < 10)
        buffer[count++] = NSNumber::numberWithUnsignedInteger(state->state++);
    state->itemsPtr = buffer;
    state->mutationsPtr = &instanceVariableOf<NSUInteger>(self, "mutations");
    return count;
}

TEST_F(FastEnumerationTest, WalksACollectionOfOnesOwn) {
    static const ClassDefinition definition{
        {.name = "FastEnumerationTestCollection",
         .instanceVariables = {instanceVariable<NSUInteger>("mutations")},
         .methods = {instanceMethod("countByEnumeratingWithState:objects:count:", enumerateThreeAtATime)}}};
    const NSObject collection =
        adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
    std::vector<int> numbers;
    for (FastEnumerator walk(collection); walk != std::default_sentinel; ++walk) {
        const FastEnumerator copy = walk;
        numbers.push_back(NSNumber(NSObject(*copy)).intValue());
    }
    EXPECT_EQ(numbers, firstNumbers(10));
}

// Keeps all of a walk in the caller's structure: the elements, and a count of changes that is each walk's
// own.
NSUInteger enumerateWithinTheState(NSObject self, SEL, NSFastEnumerationState* state, NSObject* buffer,
                                   NSUInteger) {
    constexpr NSUInteger allAtOnce = 3;
    if (state->state == 0) state->extra[0] = ++instanceVariableOf<NSUInteger>(self, "walks");
    if (state->state == 2 * allAtOnce) return 0;
    for (NSUInteger index = 0; index < allAtOnce; ++index)
        buffer[1 + index] = NSNumber::numberWithUnsignedInteger(state->state++);
    state->itemsPtr = buffer + 1;
    state->mutationsPtr = &state->extra[0];
    return allAtOnce;
}

TEST_F(FastEnumerationTest, CopiesOfAnEnumeratorLeaveTheOthersStateAlone) {
    static const ClassDefinition definition{
        {.name = "FastEnumerationTestWithinTheState",
         .instanceVariables = {instanceVariable<NSUInteger>("walks")},
         .methods = {instanceMethod("countByEnumeratingWithState:objects:count:", enumerateWithinTheState)}}};
    const NSObject collection =
        adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
    FastEnumerator walk;
    {
        const FastEnumerator gone(collection);
        walk = gone;
    }
    FastEnumerator reused(collection); // another walk, with another count
    std::vector<int> numbers;
    for (; walk != std::default_sentinel; ++walk) numbers.push_back(NSNumber(NSObject(*walk)).intValue());
    EXPECT_EQ(numbers, firstNumbers(6));
    reused = FastEnumerator(collection);
    EXPECT_EQ(NSNumber(NSObject(*reused)).intValue(), 0);
}

// The platform's own walk of an application's array points into the structure natively.
TEST_F(FastEnumerationTest, CopiesOfAWalkOverAnArrayOfOnesOwnWalkOnTheirOwn) {
    static const ClassDefinition definition{
        {.name = "FastEnumerationTestArray",
         .superclass = "NSArray",
         .methods = {instanceMethod(
                         "count", +[](NSArray, SEL) { return NSUInteger{40}; }),
                     instanceMethod(
                         "objectAtIndex:", +[](NSArray, SEL, NSUInteger index) {
                             return NSObject(NSNumber::numberWithUnsignedInteger(index));
                         })}}};
    const NSArray array = adopt(send<NSArray>(definition.classObject().alloc(), "init"_sel)).autorelease();
    std::vector<int> numbers;
    auto walk = std::make_unique<FastEnumerator>(array.begin());
    for (; *walk != array.end(); ++*walk) {
        numbers.push_back(NSNumber(NSObject(**walk)).intValue());
        walk = std::make_unique<FastEnumerator>(*walk); // the former is gone
    }
    EXPECT_EQ(numbers, firstNumbers(40));
}

} // namespace
} // namespace tessarin::testing
