// The lock of an object.
#include "PlatformTest.h"

#include <chrono>
#include <future>
#include <optional>
#include <thread>
#include <vector>

namespace tessarin::testing {
namespace {

class SynchronizedTest : public PlatformTest {
protected:
    // Whether another thread gets the object's lock soon. It always gets it in the end.
    class OtherThread {
    public:
        explicit OtherThread(NSObject object)
            : done_(std::async(std::launch::async, [object] {
                  const AutoreleasePool pool;
                  const Synchronized lock{object};
              })) {}
        bool isLockedOut() const {
            return done_.wait_for(std::chrono::milliseconds(50)) == std::future_status::timeout;
        }
        bool getsTheLock() const {
            return done_.wait_for(std::chrono::seconds(30)) == std::future_status::ready;
        }

    private:
        std::future<void> done_;
    };
};

TEST_F(SynchronizedTest, ExcludesOtherThreadsConcurrently) {
    const NSObject object = NSMutableArray::array();
    std::optional<Synchronized> lock(std::in_place, object);
    const OtherThread other(object);
    EXPECT_TRUE(other.isLockedOut());
    lock.reset();
    EXPECT_TRUE(other.getsTheLock());
}

TEST_F(SynchronizedTest, LetsTheSameThreadInAgain) {
    const NSObject object = NSMutableArray::array();
    {
        const Synchronized first{object};
        {
            const Synchronized second{object};
            const Synchronized third{object};
        }
    }
    EXPECT_TRUE(OtherThread(object).getsTheLock());
}

TEST_F(SynchronizedTest, IsReleasedWithTheOutermostScopeConcurrently) {
    const NSObject object = NSMutableArray::array();
    runtime::lock(object.object());
    runtime::lock(object.object());
    const OtherThread other(object);
    runtime::unlock(object.object());
    EXPECT_TRUE(other.isLockedOut());
    runtime::unlock(object.object());
    EXPECT_TRUE(other.getsTheLock());
}

TEST_F(SynchronizedTest, IsReleasedByAnException) {
    const NSObject object = NSMutableArray::array();
    attempt(
        [&] {
            const Synchronized lock{object};
            raise(NSGenericException(), "on purpose"_ns);
        },
        [](NSException) {});
    EXPECT_TRUE(OtherThread(object).getsTheLock());
}

TEST_F(SynchronizedTest, LocksOneObjectAlone) {
    const Synchronized lock{NSMutableArray::array()};
    EXPECT_TRUE(OtherThread(NSMutableArray::array()).getsTheLock());
}

TEST_F(SynchronizedTest, LocksOneClassAlone) {
    const Synchronized lock{"NSArray"_class};
    EXPECT_TRUE(OtherThread("NSMutableArray"_class).getsTheLock());
}

TEST_F(SynchronizedTest, OfNilLocksNothing) {
    const Synchronized lock{NSObject()};
    EXPECT_TRUE(OtherThread(NSObject()).getsTheLock());
    runtime::lock(nullptr);
    runtime::unlock(nullptr);
}

TEST_F(SynchronizedTest, KeepsItsObject) {
    const Retained<NSMutableArray> object = adopt(NSMutableArray::alloc().init());
    {
        const Synchronized lock{object};
        EXPECT_EQ(object.retainCount(), 2u);
    }
    EXPECT_EQ(object.retainCount(), 1u);
}

TEST_F(SynchronizedTest, MakesIncrementsConcurrentlyWhole) {
    const NSObject object = NSMutableArray::array();
    long count = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&] {
            const AutoreleasePool pool;
            for (int times = 0; times < 2000; ++times) {
                const Synchronized lock{object};
                ++count;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(count, 8000);
}

} // namespace
} // namespace tessarin::testing
