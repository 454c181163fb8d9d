#include "InterfaceTest.h"

namespace tessarin::testing {
namespace {

class NSScrollViewTest : public InterfaceTest {
protected:
    static Retained<NSScroller> newScroller() {
        return adopt(NSScroller::alloc().initWithFrame(NSMakeRect(0, 0, 16, 100)));
    }
    static Retained<NSView> newView() {
        return adopt(NSView::alloc().initWithFrame(NSMakeRect(0, 0, 500, 500)));
    }
    static bool contains(NSView outer, NSView view) {
        while (view && view != outer) view = view.superview();
        return static_cast<bool>(view);
    }

    const Retained<NSScrollView> view_ =
        adopt(NSScrollView::alloc().initWithFrame(NSMakeRect(0, 0, 200, 100)));
};

TEST_F(NSScrollViewTest, IsAView) {
    EXPECT_EQ(view_.frame(), NSMakeRect(0, 0, 200, 100));
    EXPECT_TRUE(view_.isKindOfClass(NSView::classObject()));
}

TEST_F(NSScrollViewTest, HasNoScrollersAtFirst) {
    EXPECT_FALSE(view_.hasHorizontalScroller());
    EXPECT_FALSE(view_.hasVerticalScroller());
    EXPECT_FALSE(view_.horizontalScroller());
    EXPECT_FALSE(view_.verticalScroller());
}

TEST_F(NSScrollViewTest, MakesAScrollerThatItIsToHave) {
    view_.setHasVerticalScroller(true);
    EXPECT_TRUE(view_.hasVerticalScroller());
    ASSERT_TRUE(view_.verticalScroller());
    EXPECT_TRUE(view_.verticalScroller().isKindOfClass(NSScroller::classObject()));
    EXPECT_EQ(view_.verticalScroller().superview(), view_);
    EXPECT_FALSE(view_.hasHorizontalScroller());
    EXPECT_FALSE(view_.horizontalScroller());
    view_.setHasHorizontalScroller(true);
    EXPECT_EQ(view_.horizontalScroller().superview(), view_);
    EXPECT_NE(view_.horizontalScroller(), view_.verticalScroller());
}

TEST_F(NSScrollViewTest, KeepsAScrollerThatItIsNotToHave) {
    view_.setHasVerticalScroller(true);
    const NSScroller scroller = view_.verticalScroller();
    view_.setHasVerticalScroller(false);
    EXPECT_FALSE(view_.hasVerticalScroller());
    EXPECT_EQ(view_.verticalScroller(), scroller);
    EXPECT_FALSE(scroller.superview());
    view_.setHasVerticalScroller(true);
    EXPECT_EQ(view_.verticalScroller(), scroller);
    EXPECT_EQ(scroller.superview(), view_);
}

TEST_F(NSScrollViewTest, TakesAScroller) {
    const Retained<NSScroller> scroller = newScroller();
    view_.setHorizontalScroller(scroller);
    EXPECT_EQ(view_.horizontalScroller(), scroller);
    EXPECT_FALSE(view_.hasHorizontalScroller());
    EXPECT_FALSE(scroller.superview());
    view_.setHasHorizontalScroller(true);
    EXPECT_EQ(view_.horizontalScroller(), scroller);
    EXPECT_EQ(scroller.superview(), view_);
}

TEST_F(NSScrollViewTest, ReplacesAScroller) {
    view_.setHasVerticalScroller(true);
    const Retained<NSScroller> replaced = retain(view_.verticalScroller()), scroller = newScroller();
    view_.setVerticalScroller(scroller);
    EXPECT_EQ(view_.verticalScroller(), scroller);
    EXPECT_FALSE(replaced.superview());
    view_.setVerticalScroller(nil);
    EXPECT_FALSE(view_.verticalScroller());
    EXPECT_FALSE(scroller.superview());
}

TEST_F(NSScrollViewTest, AScrollerThatReplacesAnotherIsInTheViewAtOnce) {
    const Retained<NSScroller> scroller = newScroller();
    view_.setHasVerticalScroller(true);
    view_.setVerticalScroller(scroller);
    EXPECT_EQ(scroller.superview(), view_);
}

TEST_F(NSScrollViewTest, RetainsItsScrollers) {
    const Retained<NSScroller> scroller = newScroller();
    EXPECT_GT(referencesLeftBy([&] { view_.setVerticalScroller(scroller); }, scroller), 0);
    EXPECT_LT(referencesLeftBy([&] { view_.setVerticalScroller(nil); }, scroller), 0);
    EXPECT_EQ(scroller.retainCount(), 1u);
}

TEST_F(NSScrollViewTest, ShowsADocumentView) {
    EXPECT_FALSE(view_.documentView());
    const Retained<NSView> document = newView();
    view_.setDocumentView(document);
    EXPECT_EQ(view_.documentView(), document);
    EXPECT_TRUE(contains(view_, document));
    view_.setHidden(true);
    EXPECT_TRUE(document.isHiddenOrHasHiddenAncestor());
}

TEST_F(NSScrollViewTest, ReplacesADocumentView) {
    const Retained<NSView> first = newView(), second = newView();
    view_.setDocumentView(first);
    view_.setDocumentView(second);
    EXPECT_EQ(view_.documentView(), second);
    EXPECT_FALSE(first.superview());
    view_.setDocumentView(nil);
    EXPECT_FALSE(view_.documentView());
    EXPECT_FALSE(second.superview());
}

TEST_F(NSScrollViewTest, ItsViewsOutliveIt) {
    const Retained<NSView> document = newView();
    const Retained<NSScroller> scroller = newScroller();
    {
        const AutoreleasePool pool;
        const Retained<NSScrollView> view =
            adopt(NSScrollView::alloc().initWithFrame(NSMakeRect(0, 0, 200, 100)));
        view.setVerticalScroller(scroller);
        view.setHasVerticalScroller(true);
        view.setDocumentView(document);
    }
    EXPECT_FALSE(document.superview());
    EXPECT_FALSE(scroller.superview());
    EXPECT_EQ(scroller.retainCount(), 1u);
}

} // namespace
} // namespace tessarin::testing
