// The embedded platform's scroll views: what is in them is what they say.
#include "InterfaceTest.h"

namespace tessarin::testing {
namespace {

class EmbeddedScrollViewTest : public PlatformTest {
protected:
    static Retained<NSView> newView() { return adopt(NSView::alloc().initWithFrame(NSZeroRect)); }
    const Retained<NSScrollView> view_ = adopt(NSScrollView::alloc().initWithFrame(NSZeroRect));
};

TEST_F(EmbeddedScrollViewTest, ADocumentViewThatIsTakenOutIsNoneAnyMore) {
    const Retained<NSView> document = newView(), elsewhere = newView();
    view_.setDocumentView(document);
    document.removeFromSuperview();
    EXPECT_FALSE(view_.documentView());
    view_.setDocumentView(document);
    elsewhere.addSubview(document);
    EXPECT_FALSE(view_.documentView());
}

TEST_F(EmbeddedScrollViewTest, AScrollerThatWentElsewhereIsLeftThere) {
    const Retained<NSView> elsewhere = newView();
    view_.setHasVerticalScroller(true);
    const NSScroller scroller = view_.verticalScroller();
    elsewhere.addSubview(scroller);
    view_.setHasVerticalScroller(false);
    EXPECT_EQ(scroller.superview(), elsewhere);
    view_.setHasVerticalScroller(true);
    EXPECT_EQ(scroller.superview(), view_);
}

TEST_F(EmbeddedScrollViewTest, AViewThatHoldsItIsRefusedAsItsDocument) {
    const Retained<NSView> outer = newView();
    outer.addSubview(view_);
    EXPECT_THROWS_NAMED((view_.setDocumentView(outer), 0), "NSInvalidArgumentException");
    EXPECT_FALSE(view_.documentView());
    EXPECT_EQ(view_.superview(), outer);
}

} // namespace
} // namespace tessarin::testing
