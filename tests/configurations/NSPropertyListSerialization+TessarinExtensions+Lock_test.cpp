// The lock under which a value is asked for its property list.
#include "PlatformTest.h"

#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

namespace tessarin::testing {
namespace {

class PropertyListLockTest : public PlatformTest {
protected:
    // Another thread that asks a class for the property list of a string.
    class OtherThread {
    public:
        explicit OtherThread(Class receiver)
            : done_(std::async(std::launch::async, [receiver] {
                  const AutoreleasePool pool;
                  return tessarin_propertyListForValue(receiver, "text"_ns) == "text"_ns;
              })) {}
        bool isHeldUp() const {
            return done_.wait_for(std::chrono::milliseconds(50)) == std::future_status::timeout;
        }
        bool isAnswered() {
            return done_.wait_for(std::chrono::seconds(30)) == std::future_status::ready && done_.get();
        }

    private:
        std::future<bool> done_;
    };

    static Class base() { return NSPropertyListSerialization::classObject(); }
    static Class derived() {
        static const ClassDefinition definition{
            {.name = "PropertyListLockTestDerived", .superclass = "NSPropertyListSerialization"}};
        return definition.classObject();
    }
};

NSObject newOf(const ClassDefinition& definition) {
    return adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel)).autorelease();
}

// ---- A value that lets the test look around while it is asked

std::function<void()> whileAsked;

NSObject lookAround(NSObject, SEL) {
    whileAsked();
    return "seen"_ns;
}

NSObject lookingAround() {
    static const ClassDefinition definition{
        {.name = "PropertyListLockTestLooking", .methods = {instanceMethod("configuration", lookAround)}}};
    return newOf(definition);
}

TEST_F(PropertyListLockTest, ConcurrentCallersOnTheSameClassWait) {
    std::unique_ptr<OtherThread> other;
    whileAsked = [&] {
        other = std::make_unique<OtherThread>(base());
        EXPECT_TRUE(other->isHeldUp());
    };
    EXPECT_EQ(text(tessarin_propertyListForValue(lookingAround())), "seen");
    EXPECT_TRUE(other->isAnswered());
}

TEST_F(PropertyListLockTest, ConcurrentCallersOnAnotherClassDoNotWait) {
    whileAsked = [] { EXPECT_TRUE(OtherThread(derived()).isAnswered()); };
    EXPECT_EQ(text(tessarin_propertyListForValue(lookingAround())), "seen");
    whileAsked = [] { EXPECT_TRUE(OtherThread(base()).isAnswered()); };
    EXPECT_EQ(text(tessarin_propertyListForValue(derived(), lookingAround())), "seen");
}

TEST_F(PropertyListLockTest, ConcurrentCopiesDoNotWait) {
    whileAsked = [] {
        const bool isCopied = std::async(std::launch::async, [] {
                                  const AutoreleasePool pool;
                                  return bool(tessarin_propertyListWithMutableContainers_error(
                                      NSArray::arrayOf("a"_ns), nullptr));
                              }).get();
        EXPECT_TRUE(isCopied);
    };
    EXPECT_EQ(text(tessarin_propertyListForValue(lookingAround())), "seen");
}

NSObject raiseOnPurpose(NSObject, SEL) { raise(NSGenericException(), "on purpose"_ns); }

TEST_F(PropertyListLockTest, AnExceptionReleasesTheLockForConcurrentCallers) {
    static const ClassDefinition definition{{.name = "PropertyListLockTestRaising",
                                             .methods = {instanceMethod("configuration", raiseOnPurpose)}}};
    EXPECT_THROWS_NAMED(tessarin_propertyListForValue(newOf(definition)), "NSGenericException");
    EXPECT_TRUE(OtherThread(base()).isAnswered());
}

TEST_F(PropertyListLockTest, AConfigurationThatRaisesReleasesTheLockForConcurrentCallers) {
    const Retained<NSSortDescriptor> withoutAKey = adopt(NSSortDescriptor::alloc());
    EXPECT_THROWS_NAMED(tessarin_propertyListForValue(withoutAKey), "NSInvalidArgumentException");
    EXPECT_TRUE(OtherThread(base()).isAnswered());
}

// ---- Many at once

std::atomic<int> inside{0};
std::atomic<int> mostInside{0};

NSObject countInside(NSObject, SEL) {
    const int now = ++inside;
    int most = mostInside;
    while (now > most && !mostInside.compare_exchange_weak(most, now)) {
    }
    std::this_thread::yield();
    --inside;
    return "counted"_ns;
}

TEST_F(PropertyListLockTest, ConcurrentValuesAreAskedOneAtATime) {
    static const ClassDefinition definition{
        {.name = "PropertyListLockTestCounting", .methods = {instanceMethod("configuration", countInside)}}};
    const NSObject value = newOf(definition);
    std::atomic<int> mistakes = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number)
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                const AutoreleasePool pool;
                if (text(tessarin_propertyListForValue(value)) != "counted") ++mistakes;
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(mistakes, 0);
    EXPECT_EQ(mostInside, 1);
}

} // namespace
} // namespace tessarin::testing
