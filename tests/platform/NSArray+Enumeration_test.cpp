// Arrays: walks with blocks, and the index sets that they answer.
#include "PlatformTest.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

namespace tessarin::testing {
namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

std::vector<NSUInteger> indexesIn(NSIndexSet set) {
    std::vector<NSUInteger> indexes;
    for (NSUInteger index = set.firstIndex(); index != notFound; index = set.indexGreaterThanIndex(index))
        indexes.push_back(index);
    return indexes;
}

using Indexes = std::vector<NSUInteger>;

class ArrayEnumerationTest : public PlatformTest {
protected:
    const NSArray abc_ = NSArray::arrayOf("a"_ns, "b"_ns, "c"_ns);
};

// ---- In order

TEST_F(ArrayEnumerationTest, CallsTheBlockWithEachObjectAndItsIndex) {
    std::string seen;
    abc_.enumerateObjectsUsingBlock([&](NSString letter, NSUInteger index, BOOL* stop) {
        EXPECT_EQ(*stop, NO);
        seen += text(letter) + std::to_string(index);
    });
    EXPECT_EQ(seen, "a0b1c2");
}

TEST_F(ArrayEnumerationTest, GoesBackwardsOnRequest) {
    std::string seen;
    abc_.enumerateObjectsWithOptions_usingBlock(
        NSEnumerationReverse,
        [&](NSString letter, NSUInteger index, BOOL*) { seen += text(letter) + std::to_string(index); });
    EXPECT_EQ(seen, "c2b1a0");
}

TEST_F(ArrayEnumerationTest, EndsAtTheStop) {
    for (const NSEnumerationOptions options : {NSEnumerationOptions{0}, NSEnumerationReverse}) {
        int calls = 0;
        abc_.enumerateObjectsWithOptions_usingBlock(options, [&](id, NSUInteger index, BOOL* stop) {
            ++calls;
            if (index == 1) *stop = YES;
        });
        EXPECT_EQ(calls, 2);
    }
}

TEST_F(ArrayEnumerationTest, AnswersTheIndexesThatPass) {
    const auto passes = [](NSString letter, NSUInteger, BOOL*) { return !letter.isEqual("b"_ns); };
    EXPECT_EQ(indexesIn(abc_.indexesOfObjectsWithOptions_passingTest(0, passes)), (Indexes{0, 2}));
    EXPECT_EQ(indexesIn(abc_.indexesOfObjectsWithOptions_passingTest(
                  0, [](id, NSUInteger, BOOL*) { return false; })),
              Indexes());
}

TEST_F(ArrayEnumerationTest, TheIndexesAreTheObjectsOwnBackwardsToo) {
    EXPECT_EQ(
        indexesIn(abc_.indexesOfObjectsWithOptions_passingTest(
            NSEnumerationReverse, [](NSString letter, NSUInteger, BOOL*) { return letter.isEqual("a"_ns); })),
        (Indexes{0}));
}

TEST_F(ArrayEnumerationTest, ASetThatClaimsMoreThanItHoldsGivesWhatItHolds) {
    static const ClassDefinition definition{
        {.name = "ArrayEnumerationTestBoastfulSet",
         .superclass = "NSIndexSet",
         .methods = {instanceMethod(
             "count", +[](NSIndexSet, SEL) -> NSUInteger { return 100000000; })}}};
    const Retained<NSIndexSet> set = adopt(as<NSIndexSet>(definition.classObject().alloc()).initWithIndex(1));
    EXPECT_EQ(texts(abc_.objectsAtIndexes(set)), (Texts{"b"}));
}

TEST_F(ArrayEnumerationTest, TheIndexesAreAnImmutableSet) {
    EXPECT_FALSE(abc_.indexesOfObjectsWithOptions_passingTest(0, [](id, NSUInteger, BOOL*) { return true; })
                     .isKindOfClass(NSMutableIndexSet::classObject()));
}

TEST_F(ArrayEnumerationTest, TheObjectThatStopsMayPass) {
    EXPECT_EQ(indexesIn(abc_.indexesOfObjectsWithOptions_passingTest(0,
                                                                     [](id, NSUInteger index, BOOL* stop) {
                                                                         if (index == 1) *stop = YES;
                                                                         return true;
                                                                     })),
              (Indexes{0, 1}));
}

// In a process of its own, since a platform may end the process instead.
using ArrayEnumerationDeathTest = ArrayEnumerationTest;

TEST_F(ArrayEnumerationDeathTest, AChangeDuringTheWalkRaises) {
    const auto changeRaises = [&](NSEnumerationOptions options) {
        const NSMutableArray array = NSMutableArray::arrayWithArray(abc_);
        const auto changing = [&](id, NSUInteger index, BOOL*) {
            if (index == 1) array.addObject("d"_ns);
            return true;
        };
        return thrownName([&] { array.indexesOfObjectsWithOptions_passingTest(options, changing); })
                   == "NSGenericException"
               && thrownName([&] { array.enumerateObjectsWithOptions_usingBlock(options, changing); })
                      == "NSGenericException";
    };
    EXPECT_EXIT(std::_Exit(changeRaises(0) && changeRaises(NSEnumerationReverse) ? 0 : 1),
                ::testing::ExitedWithCode(0), "");
}

TEST_F(ArrayEnumerationDeathTest, AChangeThatEndsTheWalkIsAllowed) {
    const auto lettersLeft = [&] {
        const NSMutableArray array = NSMutableArray::arrayWithArray(abc_);
        array.enumerateObjectsUsingBlock([&](NSString letter, NSUInteger index, BOOL* stop) {
            if (!letter.isEqual("b"_ns)) return;
            *stop = YES;
            array.removeObjectAtIndex(index);
        });
        return texts(array);
    };
    EXPECT_EXIT(std::_Exit(lettersLeft() == Texts{"a", "c"} ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

TEST_F(ArrayEnumerationTest, ASubclassIsReadThroughItsPrimitiveOperations) {
    static const ClassDefinition definition{
        {.name = "TessarinTestCounting",
         .superclass = "NSArray",
         .methods = {instanceMethod(
                         "init", +[](NSArray self, SEL) { return self; }),
                     instanceMethod(
                         "count", +[](NSArray, SEL) { return NSUInteger{5}; }),
                     instanceMethod(
                         "objectAtIndex:", +[](NSArray, SEL, NSUInteger index) {
                             return id(NSNumber::numberWithUnsignedInteger(index * index));
                         })}}};
    const Retained<NSArray> squares = adopt(as<NSArray>(definition.classObject().alloc()).init());
    const NSIndexSet even = squares.indexesOfObjectsWithOptions_passingTest(
        0, [](NSNumber square, NSUInteger, BOOL*) { return square.intValue() % 2 == 0; });
    EXPECT_EQ(indexesIn(even), (Indexes{0, 2, 4}));
    EXPECT_EQ(texts(squares.objectsAtIndexes(even)), (Texts{"0", "4", "16"}));
}

// ---- At indexes

TEST_F(ArrayEnumerationTest, AnswersTheObjectsAtIndexes) {
    const NSMutableIndexSet indexes = NSMutableIndexSet::indexSet();
    indexes.addIndex(2);
    indexes.addIndex(0);
    EXPECT_EQ(texts(abc_.objectsAtIndexes(indexes)), (Texts{"a", "c"}));
    EXPECT_EQ(texts(abc_.objectsAtIndexes(NSIndexSet::indexSet())), Texts());
}

TEST_F(ArrayEnumerationTest, AnIndexBeyondTheBoundsRaises) {
    const NSIndexSet indexes = NSIndexSet::indexSetWithIndexesInRange({2, 2});
    EXPECT_THROWS_NAMED(abc_.objectsAtIndexes(indexes), "NSRangeException");
    EXPECT_THROWS_NAMED(NSArray::array().objectsAtIndexes(indexes), "NSRangeException");
}

// ---- On several threads at once

class ConcurrentArrayEnumerationTest : public PlatformTest {
protected:
    static NSArray numbers(int count) {
        const NSMutableArray array = NSMutableArray::array();
        for (int number = 0; number < count; ++number) array.addObject(NSNumber::numberWithInt(number));
        return adopt(NSArray(array.copy())).autorelease();
    }
    static constexpr int many = 20000;
    const NSArray numbers_ = numbers(many);
};

TEST_F(ConcurrentArrayEnumerationTest, FindsWhatOneThreadFinds) {
    const auto passes = [](NSNumber number, NSUInteger index, BOOL*) {
        return static_cast<NSUInteger>(number.intValue()) == index && index % 7 == 3;
    };
    const NSIndexSet expected = numbers_.indexesOfObjectsWithOptions_passingTest(0, passes);
    EXPECT_EQ(expected.count(), 2857u);
    EXPECT_TRUE(
        numbers_.indexesOfObjectsWithOptions_passingTest(NSEnumerationConcurrent, passes).isEqual(expected));
}

TEST_F(ConcurrentArrayEnumerationTest, VisitsEachObjectOnce) {
    std::vector<std::atomic<int>> visits(many);
    numbers_.enumerateObjectsWithOptions_usingBlock(NSEnumerationConcurrent,
                                                    [&](id, NSUInteger index, BOOL*) { ++visits[index]; });
    EXPECT_TRUE(std::all_of(visits.begin(), visits.end(), [](const auto& count) { return count == 1; }));
}

TEST_F(ConcurrentArrayEnumerationTest, WhatTheBlockAutoreleasesIsReleased) {
    const Retained<NSObject> object = adopt(send<NSObject>(NSObject::classObject().alloc(), "init"_sel));
    {
        const AutoreleasePool pool;
        numbers_.enumerateObjectsWithOptions_usingBlock(
            NSEnumerationConcurrent, [&](id, NSUInteger, BOOL*) { retain(NSObject(object)).autorelease(); });
    }
    EXPECT_EQ(object.retainCount(), 1u);
}

TEST_F(ConcurrentArrayEnumerationTest, EndsAtTheStop) {
    std::atomic<int> calls = 0;
    const NSIndexSet passed = numbers_.indexesOfObjectsWithOptions_passingTest(
        NSEnumerationConcurrent, [&](id, NSUInteger, BOOL* stop) {
            ++calls;
            *stop = YES;
            return true;
        });
    EXPECT_GE(calls, 1);
    EXPECT_LT(calls, many);
    EXPECT_EQ(passed.count(), static_cast<NSUInteger>(calls));
}

TEST_F(ConcurrentArrayEnumerationTest, AnExceptionReachesTheCallerOnceAllAreDone) {
    std::atomic<int> running = 0;
    std::string reason;
    attempt(
        [&] {
            numbers_.enumerateObjectsWithOptions_usingBlock(NSEnumerationConcurrent,
                                                            [&](NSNumber number, NSUInteger index, BOOL*) {
                                                                ++running;
                                                                const NSString text = number.description();
                                                                --running;
                                                                if (index % 1000 == 999)
                                                                    raise(NSGenericException(), text);
                                                            });
        },
        [&](NSException exception) { reason = text(exception.reason()); });
    EXPECT_EQ(running, 0);
    ASSERT_GE(reason.size(), 3u);
    EXPECT_EQ(reason.substr(reason.size() - 3), "999");
}

TEST_F(ConcurrentArrayEnumerationTest, SmallArraysAreWalkedByTheCaller) {
    std::set<std::thread::id> threads;
    numbers(10).enumerateObjectsWithOptions_usingBlock(
        NSEnumerationConcurrent, [&](id, NSUInteger, BOOL*) { threads.insert(std::this_thread::get_id()); });
    EXPECT_EQ(threads, std::set<std::thread::id>{std::this_thread::get_id()});
}

} // namespace
} // namespace tessarin::testing
