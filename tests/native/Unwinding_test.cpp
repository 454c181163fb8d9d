// Exceptions in flight, which nothing but the library keeps until their handler runs.
#include "PlatformTest.h"

#include <utility>

extern "C" void* tessarin_catching(void (*body)(void* context), void* context);

namespace tessarin::testing {
namespace {

bool isGone = false;

void deallocException(NSException self, SEL selector) {
    isGone = true;
    sendSuper<void>(self, "UnwindingTestException"_class, selector);
}

const ClassDefinition exceptionClass{{.name = "UnwindingTestException",
                                      .superclass = "NSException",
                                      .methods = {instanceMethod("dealloc", deallocException)}}};

// Raises and catches as compiled Objective-C does, without the library's help.
void raiseAndCatchOnTheWay() {
    tessarin_catching([](void*) { raise("OnTheWay"_ns, nil); }, nullptr);
}

void deallocRaising(NSObject self, SEL selector) {
    const AutoreleasePool pool;
    raiseAndCatchOnTheWay();
    sendSuper<void>(self, "UnwindingTestRaiser"_class, selector);
}

const ClassDefinition raiserClass{{.name = "UnwindingTestRaiser",
                                   .superclass = "NSObject",
                                   .methods = {instanceMethod("dealloc", deallocRaising)}}};

class UnwindingTest : public PlatformTest {
protected:
    UnwindingTest() { isGone = false; }

    static NSException newException() {
        return send<NSException>("UnwindingTestException"_class, "exceptionWithName:reason:userInfo:"_sel,
                                 "Watched"_ns, nil, nil);
    }
    static Retained<NSObject> newRaiser() {
        return adopt(send<NSObject>("UnwindingTestRaiser"_class, "new"_sel));
    }

    template <class Body>
    static void expectAliveInHandler(Body body) {
        bool isHandled = false;
        attempt(body, [&](NSException exception) {
            isHandled = true;
            ASSERT_FALSE(isGone);
            EXPECT_EQ(text(exception.name()), "Watched");
        });
        EXPECT_TRUE(isHandled);
    }
};

TEST_F(UnwindingTest, AnExceptionOutlivesAPoolAlsoWhenADeallocCatchesAnotherOnTheWay) {
    expectAliveInHandler([] {
        const AutoreleasePool pool;
        const Retained<NSObject> raiser = newRaiser();
        newException().raise();
    });
}

TEST_F(UnwindingTest, AnExceptionOutlivesPoolsAlsoWhenOneOfThemReleasesWhatCatchesAnother) {
    expectAliveInHandler([] {
        const AutoreleasePool outer;
        const AutoreleasePool inner;
        newRaiser().autorelease();
        newException().raise();
    });
}

TEST_F(UnwindingTest, AnExceptionOutlivesAPoolOnItsWayToAHandlerOfCppThatThrowsItAgain) {
    expectAliveInHandler([] {
        const AutoreleasePool outer;
        try {
            const AutoreleasePool inner;
            newException().raise();
        } catch (...) {
            const AutoreleasePool meanwhile;
            throw;
        }
    });
}

TEST_F(UnwindingTest, AnExceptionOutlivesPoolsAlsoWhenOneOfCppPassesAnAttemptOnTheWay) {
    struct AttemptsInVain {
        ~AttemptsInVain() {
            try {
                attempt([] { throw 1; }, [](NSException) {});
            } catch (int) {
            }
        }
    };
    expectAliveInHandler([] {
        const AutoreleasePool pool;
        const AttemptsInVain onTheWay;
        newException().raise();
    });
}

TEST_F(UnwindingTest, AnExceptionIsGoneWithThePoolsWhenCppHasCaughtIt) {
    {
        const AutoreleasePool pool;
        attempt(
            [] {
                try {
                    const AutoreleasePool inner;
                    newException().raise();
                } catch (...) {
                    EXPECT_FALSE(isGone);
                }
            },
            [](NSException) { FAIL(); });
    }
    EXPECT_TRUE(isGone);
}

} // namespace
} // namespace tessarin::testing
