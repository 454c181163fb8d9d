// raise and attempt.
#include "PlatformTest.h"

#include <stdexcept>
#include <vector>

namespace tessarin::testing {
namespace {

class ExceptionTest : public PlatformTest {};

struct Destroyed {
    std::vector<int>& order;
    int number;
    ~Destroyed() { order.push_back(number); }
};

[[noreturn]] void fail() { raise(NSGenericException(), "on purpose"_ns); }

TEST_F(ExceptionTest, WithoutOneTheResultOfTheBodyIsAnswered) {
    EXPECT_EQ(attempt([] { return 7; }, [](NSException) { return 8; }), 7);
    EXPECT_EQ(text(attempt([] { return "a"_ns; }, [](NSException) { return "b"_ns; })), "a");
}

TEST_F(ExceptionTest, WithOneTheResultOfTheHandlerIsAnswered) {
    EXPECT_EQ(attempt([]() -> int { fail(); }, [](NSException) { return 8; }), 8);
}

TEST_F(ExceptionTest, ABodyMayAnswerNothing) {
    bool isDone = false, isHandled = false;
    attempt([&] { isDone = true; }, [&](NSException) { isHandled = true; });
    EXPECT_TRUE(isDone);
    EXPECT_FALSE(isHandled);
    attempt([] { fail(); }, [&](NSException) { isHandled = true; });
    EXPECT_TRUE(isHandled);
}

TEST_F(ExceptionTest, HasItsNameAndReason) {
    attempt([] { raise("SomeException"_ns, u"caf\u00e9 100% %@"_ns); },
            [](NSException exception) {
                EXPECT_TRUE(exception.isKindOfClass(NSException::classObject()));
                EXPECT_EQ(text(exception.name()), "SomeException");
                EXPECT_EQ(text(exception.reason()), "café 100% %@");
                EXPECT_FALSE(exception.userInfo());
            });
}

TEST_F(ExceptionTest, ThrownByThePlatformIsCaught) {
    EXPECT_THROWS_NAMED(NSArray::array().objectAtIndex(5), "NSRangeException");
    EXPECT_THROWS_NAMED("abc"_ns.substringFromIndex(4), "NSRangeException");
    EXPECT_THROWS_NAMED(NSMutableArray::array().addObject(nil), "NSInvalidArgumentException");
}

TEST_F(ExceptionTest, MayBeAnObjectOfOnesOwnWithInformation) {
    const NSDictionary information = NSDictionary::dictionaryWithObject_forKey("value"_ns, "key"_ns);
    const NSException exception =
        NSException::exceptionWithName_reason_userInfo("Own"_ns, "reason"_ns, information);
    attempt([&] { exception.raise(); },
            [&](NSException caught) {
                EXPECT_EQ(caught, exception);
                EXPECT_EQ(text(caught.userInfo().objectForKey("key"_ns)), "value");
            });
}

TEST_F(ExceptionTest, RunsTheDestructorsOnItsWay) {
    std::vector<int> order;
    attempt(
        [&] {
            const Destroyed first{order, 1};
            const auto inner = [&] {
                const Destroyed second{order, 2};
                fail();
            };
            inner();
        },
        [&](NSException) { order.push_back(3); });
    EXPECT_EQ(order, (std::vector{2, 1, 3}));
}

TEST_F(ExceptionTest, RunsTheDestructorsThroughFramesOfThePlatform) {
    std::vector<int> order;
    attempt(
        [&] {
            const Destroyed first{order, 1};
            NSMutableArray::array().insertObject_atIndex("a"_ns, 9);
        },
        [&](NSException) { order.push_back(2); });
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST_F(ExceptionTest, OutlivesThePoolsThatItPasses) {
    attempt(
        [] {
            const AutoreleasePool outer;
            const AutoreleasePool inner;
            raise("SomeException"_ns, NSString::stringWithFormat("%d pools"_ns, 2));
        },
        [](NSException exception) {
            // Objects made meanwhile would take the place of one that is gone.
            for (int times = 0; times < 100; ++times) NSString::stringWithFormat("filling %d"_ns, times);
            EXPECT_EQ(text(exception.name()), "SomeException");
            EXPECT_EQ(text(exception.reason()), "2 pools");
        });
}

TEST_F(ExceptionTest, OutlivesPoolsAlsoWhenAnotherIsCaughtOnTheWay) {
    struct CatchesAnother {
        ~CatchesAnother() {
            const AutoreleasePool pool;
            EXPECT_THROWS_NAMED(raise("Another"_ns, "on the way"_ns), "Another");
        }
    };
    attempt(
        [] {
            const AutoreleasePool outer;
            const CatchesAnother onTheWay;
            const AutoreleasePool inner;
            raise("SomeException"_ns, NSString::stringWithFormat("%d pools"_ns, 2));
        },
        [](NSException exception) {
            for (int times = 0; times < 100; ++times) NSString::stringWithFormat("filling %d"_ns, times);
            EXPECT_EQ(text(exception.reason()), "2 pools");
        });
}

TEST_F(ExceptionTest, IsGoneWithThePoolAroundTheHandler) {
    const Retained<NSMutableArray> kept = adopt(NSMutableArray::alloc().init());
    {
        const AutoreleasePool pool;
        attempt(
            [&] {
                const AutoreleasePool inner;
                NSException::exceptionWithName_reason_userInfo(
                    "SomeException"_ns, nil, NSDictionary::dictionaryWithObject_forKey(kept, "kept"_ns))
                    .raise();
            },
            [&](NSException) { EXPECT_GT(kept.retainCount(), 1u); });
    }
    EXPECT_EQ(kept.retainCount(), 1u);
}

TEST_F(ExceptionTest, OfCppPassesThrough) {
    bool isHandled = false;
    EXPECT_THROW(attempt([] { throw std::runtime_error("C++"); }, [&](NSException) { isHandled = true; }),
                 std::runtime_error);
    EXPECT_THROW(attempt([]() -> int { throw 5; }, [](NSException) { return 1; }), int);
    EXPECT_FALSE(isHandled);
}

TEST_F(ExceptionTest, IsCaughtByTheInnermostAttempt) {
    std::vector<int> order;
    attempt(
        [&] {
            attempt([] { fail(); }, [&](NSException) { order.push_back(1); });
            order.push_back(2);
        },
        [&](NSException) { order.push_back(3); });
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST_F(ExceptionTest, ThrownAgainByTheHandlerReachesTheNextAttempt) {
    NSException first;
    attempt(
        [&] {
            attempt([] { raise("SomeException"_ns, "again"_ns); },
                    [&](NSException exception) {
                        first = exception;
                        exception.raise();
                    });
        },
        [&](NSException exception) {
            EXPECT_EQ(exception, first);
            EXPECT_EQ(text(exception.reason()), "again");
        });
    EXPECT_TRUE(first);
}

TEST_F(ExceptionTest, OfAnotherNameMayBeThrownByTheHandler) {
    EXPECT_THROWS_NAMED(attempt([] { fail(); }, [](NSException) { raise(NSRangeException(), "other"_ns); }),
                        "NSRangeException");
}

TEST_F(ExceptionTest, MayBeThrownManyTimes) {
    int caught = 0;
    for (int times = 0; times < 1000; ++times) {
        const AutoreleasePool pool;
        attempt([] { fail(); }, [&](NSException) { ++caught; });
    }
    EXPECT_EQ(caught, 1000);
}

} // namespace
} // namespace tessarin::testing
