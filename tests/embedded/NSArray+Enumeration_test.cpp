// What only the embedded platform's walks with blocks promise.
#include "PlatformTest.h"

#include <condition_variable>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

namespace tessarin::testing {
namespace {

class EmbeddedArrayEnumerationTest : public PlatformTest {
protected:
    static NSMutableArray numbers(int count) {
        const NSMutableArray array = NSMutableArray::array();
        for (int number = 0; number < count; ++number) array.addObject(NSNumber::numberWithInt(number));
        return array;
    }
};

TEST_F(EmbeddedArrayEnumerationTest, NilIsRefused) {
    EXPECT_THROWS_NAMED(numbers(3).enumerateObjectsUsingBlock(nil), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(numbers(3).indexesOfObjectsWithOptions_passingTest(0, nil),
                        "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(numbers(3).objectsAtIndexes(nil), "NSInvalidArgumentException");
}

TEST_F(EmbeddedArrayEnumerationTest, TheReasonNamesTheIndexBeyondTheBounds) {
    std::string reason;
    attempt([] { static_cast<void>(numbers(2).objectsAtIndexes(NSIndexSet::indexSetWithIndex(100))); },
            [&](NSException exception) { reason = text(exception.reason()); });
    EXPECT_EQ(reason,
              "*** -[NSMutableArray objectsAtIndexes:]: index 100 in index set beyond bounds [0 .. 1]");
}

TEST_F(EmbeddedArrayEnumerationTest, AChangeDuringTheLastCallRaisesToo) {
    const NSMutableArray array = numbers(3);
    EXPECT_THROWS_NAMED(array.enumerateObjectsUsingBlock([&](id, NSUInteger index, BOOL*) {
        if (index == 2) array.removeObjectAtIndex(2);
    }),
                        "NSGenericException");
}

TEST_F(EmbeddedArrayEnumerationTest, ConcurrentWalksBackwardsFindTheSame) {
    const auto passes = [](NSNumber number, NSUInteger index, BOOL*) {
        return static_cast<NSUInteger>(number.intValue()) == index && index % 7 == 3;
    };
    const NSArray array = numbers(10000);
    EXPECT_TRUE(
        array.indexesOfObjectsWithOptions_passingTest(NSEnumerationConcurrent | NSEnumerationReverse, passes)
            .isEqual(array.indexesOfObjectsWithOptions_passingTest(0, passes)));
}

// Two calls wait for each other, which takes two threads.
TEST_F(EmbeddedArrayEnumerationTest, ConcurrentCallsRunAtTheSameTime) {
    if (std::thread::hardware_concurrency() < 2) GTEST_SKIP() << "the machine has one processor";
    std::mutex mutex;
    std::condition_variable changed;
    std::set<std::thread::id> threads;
    bool met = false;
    numbers(10000).enumerateObjectsWithOptions_usingBlock(
        NSEnumerationConcurrent, [&](id, NSUInteger, BOOL*) {
            std::unique_lock lock(mutex);
            if (met) return;
            threads.insert(std::this_thread::get_id());
            changed.notify_all();
            changed.wait_for(lock, std::chrono::seconds(20), [&] { return threads.size() > 1; });
            met = true;
        });
    EXPECT_GT(threads.size(), 1u);
}

TEST_F(EmbeddedArrayEnumerationTest, ConcurrentWalksPassOnWhatIsThrown) {
    EXPECT_THROW(numbers(10000).enumerateObjectsWithOptions_usingBlock(
                     NSEnumerationConcurrent, [](id, NSUInteger, BOOL*) { throw std::runtime_error("x"); }),
                 std::runtime_error);
}

TEST_F(EmbeddedArrayEnumerationTest, AChangeDuringAConcurrentWalkRaises) {
    const NSMutableArray array = numbers(10000);
    EXPECT_THROWS_NAMED(array.enumerateObjectsWithOptions_usingBlock(NSEnumerationConcurrent,
                                                                     [&](id, NSUInteger index, BOOL*) {
                                                                         if (index == 5000)
                                                                             array.removeAllObjects();
                                                                     }),
                        "NSGenericException");
}

} // namespace
} // namespace tessarin::testing
