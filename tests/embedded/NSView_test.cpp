// What the embedded platform promises of views: trees deeper than any stack, and wide ones.
#include "InterfaceTest.h"

#include <functional>
#include <thread>
#include <utility>

namespace tessarin::testing {
namespace {

constexpr int depth = 100'000;

class DeepViewsTest : public PlatformTest {
protected:
    static Retained<NSView> newView() { return adopt(NSView::alloc().initWithFrame(NSZeroRect)); }

    // Views in views, from the outermost to the innermost.
    struct Chain {
        Retained<NSView> outermost, innermost;
    };
    static Chain newChain() {
        Chain chain;
        chain.outermost = chain.innermost = newView();
        for (int level = 1; level < depth; ++level) {
            const Retained<NSView> inner = newView();
            chain.innermost.addSubview(inner);
            chain.innermost = inner;
        }
        return chain;
    }
};

TEST_F(DeepViewsTest, AreReleased) {
    Chain chain = newChain();
    EXPECT_EQ(chain.innermost.retainCount(), 2u);
    chain.outermost.reset();
    EXPECT_EQ(chain.innermost.retainCount(), 1u);
    EXPECT_FALSE(chain.innermost.superview());
}

TEST_F(DeepViewsTest, KnowTheirHiddenAncestors) {
    const Chain chain = newChain();
    EXPECT_FALSE(chain.innermost.isHiddenOrHasHiddenAncestor());
    chain.outermost.setHidden(true);
    EXPECT_TRUE(chain.innermost.isHiddenOrHasHiddenAncestor());
}

TEST_F(DeepViewsTest, AreMoved) {
    const Chain chain = newChain(), other = newChain();
    other.innermost.addSubview(chain.outermost);
    EXPECT_EQ(chain.outermost.superview(), other.innermost);
    other.outermost.setHidden(true);
    EXPECT_TRUE(chain.innermost.isHiddenOrHasHiddenAncestor());
    chain.outermost.removeFromSuperview();
    EXPECT_FALSE(chain.innermost.isHiddenOrHasHiddenAncestor());
}

TEST_F(DeepViewsTest, AreBuiltFromTheInnermostToo) {
    Retained<NSView> view = newView();
    const Retained<NSView> innermost = view;
    for (int level = 1; level < depth; ++level) {
        const Retained<NSView> outer = newView();
        outer.addSubview(view);
        view = outer;
    }
    view.setHidden(true);
    EXPECT_TRUE(innermost.isHiddenOrHasHiddenAncestor());
}

TEST_F(DeepViewsTest, AreRefusedInsideThemselves) {
    const Chain chain = newChain();
    EXPECT_THROWS_NAMED((chain.innermost.addSubview(chain.outermost), 0), "NSInvalidArgumentException");
    EXPECT_FALSE(chain.outermost.superview());
}

TEST_F(DeepViewsTest, KnowTheirWindow) {
    const Chain chain = newChain();
    const Retained<NSWindow> window = adopt(NSWindow::alloc().initWithContentRect_styleMask_backing_defer(
        NSMakeRect(0, 0, 10, 10), NSBorderlessWindowMask, NSBackingStoreBuffered, true));
    window.setContentView(chain.outermost);
    EXPECT_EQ(chain.innermost.window(), window);
    window.setContentView(nil);
    EXPECT_FALSE(chain.innermost.window());
}

TEST_F(DeepViewsTest, ConcurrentTreesAreIndependent) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([] {
            const AutoreleasePool pool;
            const Retained<NSView> outer = newView();
            for (int index = 0; index < 1'000; ++index) outer.addSubview(newView());
            outer.setHidden(true);
            for (const NSView view : outer.subviews()) {
                EXPECT_TRUE(view.isHiddenOrHasHiddenAncestor());
                view.removeFromSuperview();
            }
            EXPECT_EQ(outer.subviews().count(), 0u);
        });
    for (std::thread& thread : threads) thread.join();
}

TEST_F(DeepViewsTest, ManySubviewsAreMovedFromEitherEnd) {
    const Retained<NSView> from = newView(), to = newView();
    for (int index = 0; index < depth; ++index) from.addSubview(newView());
    const Retained<NSArray> views = retain(from.subviews());
    const NSUInteger half = views.count() / 2;
    for (NSUInteger index = 0; index < half; ++index) {
        to.addSubview(views.objectAtIndex(index));
        to.addSubview(views.objectAtIndex(views.count() - 1 - index));
    }
    EXPECT_EQ(from.subviews().count(), 0u);
    EXPECT_EQ(to.subviews().count(), views.count());
    EXPECT_EQ(to.subviews().objectAtIndex(1), views.lastObject());
}

// ---- Views whose own code runs while a view is taken out of them

std::function<void()> onRemoval;

class TellingViewsTest : public PlatformTest {
protected:
    TellingViewsTest() {
        static const ClassDefinition definition{{.name = "TellingViewsTestView",
                                                 .superclass = "NSView",
                                                 .methods = {instanceMethod(
                                                     "willRemoveSubview:", +[](NSView, SEL, NSView) {
                                                         if (const auto act = std::exchange(onRemoval, {}))
                                                             act();
                                                     })}}};
        outer_ = adopt(send<NSView>(NSObject(definition.classObject().alloc()), "init"_sel));
        outer_.addSubview(moved_);
    }
    ~TellingViewsTest() override { onRemoval = {}; }

    static Retained<NSView> newView() { return adopt(NSView::alloc().initWithFrame(NSZeroRect)); }
    Retained<NSView> outer_;
    const Retained<NSView> moved_ = newView(), target_ = newView();
};

TEST_F(TellingViewsTest, AViewThatHasComeToContainItsNewPlaceIsRefused) {
    onRemoval = [&] { moved_.addSubview(target_); };
    EXPECT_THROWS_NAMED((target_.addSubview(moved_), 0), "NSInvalidArgumentException");
    EXPECT_EQ(target_.superview(), moved_);
    EXPECT_FALSE(moved_.superview());
    EXPECT_FALSE(target_.window());
    EXPECT_EQ(moved_.retainCount(), 1u);
}

TEST_F(TellingViewsTest, AViewStaysWhereItIsWhereItsRemovalRaises) {
    onRemoval = [] { raise(NSGenericException(), "no"_ns); };
    EXPECT_THROWS_NAMED((target_.addSubview(moved_), 0), "NSGenericException");
    EXPECT_EQ(moved_.superview(), outer_);
    EXPECT_EQ(moved_.retainCount(), 2u);
}

} // namespace
} // namespace tessarin::testing
