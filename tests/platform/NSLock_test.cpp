#include "PlatformTest.h"

#include <atomic>
#include <chrono>
#include <thread>

#if defined(__unix__)
#    include <signal.h>
#    include <sys/wait.h>
#    include <unistd.h>
#endif

namespace tessarin::testing {
namespace {

class NSLockTest : public PlatformTest {
protected:
    // Whether another thread could take the lock; it gives it back.
    bool isFree() const {
        bool taken = false;
        std::thread([&] {
            taken = lock_.tryLock();
            if (taken) lock_.unlock();
        }).join();
        return taken;
    }

    const Retained<NSLock> lock_ = adopt(NSLock::alloc().init());
};

TEST_F(NSLockTest, IsFreeAtFirst) { EXPECT_TRUE(isFree()); }

TEST_F(NSLockTest, IsHeldBetweenLockAndUnlock) {
    lock_.lock();
    EXPECT_FALSE(isFree());
    lock_.unlock();
    EXPECT_TRUE(isFree());
}

TEST_F(NSLockTest, TryLockTakesAFreeLock) {
    EXPECT_TRUE(lock_.tryLock());
    EXPECT_FALSE(isFree());
    lock_.unlock();
    EXPECT_TRUE(isFree());
}

TEST_F(NSLockTest, IsNotRecursive) {
    lock_.lock();
    EXPECT_FALSE(lock_.tryLock());
    lock_.unlock();
    EXPECT_TRUE(isFree());
}

TEST_F(NSLockTest, UnlockingWhatIsNotLockedIsLoggedAndNothing) {
    std::vector<std::string> lines;
    {
        const CapturedStandardError captured;
        lock_.unlock();
        lines = captured.lines();
    }
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_NE(lines[0].find("*** -[NSLock unlock]: lock (<NSLock: 0x"), std::string::npos) << lines[0];
    EXPECT_TRUE(lines[0].ends_with("> '(null)') unlocked when not locked")) << lines[0];
    EXPECT_TRUE(lines[1].ends_with("*** Break on _NSLockError() to debug.")) << lines[1];
    EXPECT_TRUE(isFree());
}

TEST_F(NSLockTest, UnlockingWhatAnotherThreadHoldsIsLoggedAndNothing) {
    lock_.lock();
    std::vector<std::string> lines;
    {
        const CapturedStandardError captured;
        std::thread([&] {
            const AutoreleasePool pool;
            lock_.unlock();
        }).join();
        lines = captured.lines();
    }
    EXPECT_EQ(lines.size(), 2u);
    EXPECT_FALSE(isFree());
    lock_.unlock();
}

TEST_F(NSLockTest, TheLogNamesTheLock) {
    lock_.setName("channels"_ns);
    const CapturedStandardError captured;
    lock_.unlock();
    const std::vector<std::string> lines = captured.lines();
    ASSERT_FALSE(lines.empty());
    EXPECT_NE(lines[0].find("> 'channels') unlocked"), std::string::npos) << lines[0];
}

TEST_F(NSLockTest, HasTheNameThatItIsGiven) {
    EXPECT_EQ(lock_.name(), nil);
    const Retained<NSMutableString> name = adopt(NSMutableString(NSString("channels"_ns).mutableCopy()));
    lock_.setName(name);
    name.appendString("!"_ns);
    EXPECT_EQ(text(lock_.name()), "channels");
    lock_.setName(nil);
    EXPECT_EQ(lock_.name(), nil);
}

TEST_F(NSLockTest, ShowsItsClass) {
    EXPECT_TRUE(text(lock_.description()).starts_with("<NSLock: 0x")) << text(lock_.description());
}

TEST_F(NSLockTest, ConformsToLocking) { EXPECT_TRUE(lock_.conformsToProtocol("NSLocking"_protocol)); }

TEST_F(NSLockTest, MayGoWhileItIsHeld) {
    const Retained<NSLock> other = adopt(NSLock::alloc().init());
    other.lock();
    EXPECT_EQ(other.retainCount(), 1u);
}

// The process that locks twice is a copy of this one, and is ended.
#if defined(__unix__)
TEST_F(NSLockTest, LockingTwiceOnOneThreadIsLoggedAndWaits) {
    const CapturedStandardError captured;
    const pid_t process = fork();
    ASSERT_GE(process, 0);
    if (process == 0) {
        lock_.lock();
        lock_.lock();
        _exit(0);
    }
    std::vector<std::string> lines;
    for (int attempt = 0; attempt < 500 && lines.empty(); ++attempt) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        lines = captured.lines();
    }
    // Time enough to go on, were it to.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, WNOHANG), 0) << "it went on";
    kill(process, SIGKILL);
    waitpid(process, &status, 0);
    ASSERT_FALSE(lines.empty());
    EXPECT_NE(lines[0].find("*** -[NSLock lock]: deadlock (<NSLock: 0x"), std::string::npos) << lines[0];
}
#endif

TEST_F(NSLockTest, ConcurrentThreadsTakeTurns) {
    constexpr int threadCount = 8;
    constexpr int rounds = 5'000;
    long count = 0; // plain: the lock alone guards it
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                lock_.lock();
                ++count;
                lock_.unlock();
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(count, threadCount * rounds);
    EXPECT_TRUE(isFree());
}

TEST_F(NSLockTest, ConcurrentTryLockHasOneWinner) {
    std::atomic<int> winners{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread)
        threads.emplace_back([&] { winners += lock_.tryLock() ? 1 : 0; });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(winners, 1);
}

TEST_F(NSLockTest, ConcurrentWaiterGoesOnWhenTheLockIsFree) {
    lock_.lock();
    std::atomic<bool> hasGoneOn{false};
    std::thread waiter([&] {
        lock_.lock();
        hasGoneOn = true;
        lock_.unlock();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(hasGoneOn);
    lock_.unlock();
    waiter.join();
    EXPECT_TRUE(hasGoneOn);
}

} // namespace
} // namespace tessarin::testing
