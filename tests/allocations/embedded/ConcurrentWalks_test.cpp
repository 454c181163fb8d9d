// A walk on several threads needs memory for them alone, and goes on without.
#include "../MemoryRequests.h"
#include "PlatformTest.h"

#include <atomic>
#include <thread>

namespace tessarin::testing {
namespace {

class ConcurrentWalkTest : public PlatformTest {
protected:
    static constexpr NSUInteger count = 10000;

    static NSArray manyStrings() {
        const std::vector<NSObject> strings(count, "a"_ns);
        return NSArray::arrayWithObjects_count(strings.data(), strings.size());
    }
    // How many objects the walk comes to.
    static NSUInteger walked(NSArray array) {
        std::atomic<NSUInteger> calls = 0;
        array.enumerateObjectsWithOptions_usingBlock(NSEnumerationConcurrent,
                                                     [&](id, NSUInteger, BOOL*) { ++calls; });
        return calls;
    }
};

TEST_F(ConcurrentWalkTest, GoesOnWithoutMemoryForMoreThreads) {
    if (std::thread::hardware_concurrency() < 2) GTEST_SKIP() << "the machine has one processor";
    const NSArray array = manyStrings();
    EXPECT_EQ(walked(array), count); // the first may fill caches
    std::size_t granted = 0;
    for (bool wasMade = true; wasMade; ++granted) {
        NSUInteger calls = 0;
        {
            const RefusedMemoryRequest refused(granted);
            calls = walked(array);
            wasMade = refused.wasMade();
        }
        EXPECT_EQ(calls, count) << "without the memory asked for after " << granted << " other requests";
    }
    EXPECT_GT(granted, 1u);
}

} // namespace
} // namespace tessarin::testing
