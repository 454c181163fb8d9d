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

TEST_F(EmbeddedScrollViewTest, ADocumentViewThatItDoesNotLearnIsTakenOutStaysAlive) {
    static const ClassDefinition definition{{.name = "EmbeddedScrollViewTestSilent",
                                             .superclass = "NSScrollView",
                                             .methods = {instanceMethod(
                                                 "willRemoveSubview:", +[](NSView, SEL, NSView) {})}}};
    const Retained<NSScrollView> silent =
        adopt(send<NSScrollView>(NSObject(definition.classObject().alloc()), "init"_sel));
    {
        const AutoreleasePool pool;
        const Retained<NSView> document = adopt(NSView::alloc().initWithFrame(NSMakeRect(0, 0, 3, 4)));
        silent.setDocumentView(document);
        document.removeFromSuperview();
    }
    EXPECT_EQ(silent.documentView().frame().size.width, 3);
    EXPECT_EQ(silent.documentView().retainCount(), 1u);
    const Retained<NSView> former = retain(silent.documentView());
    silent.setDocumentView(nil);
    EXPECT_EQ(former.retainCount(), 1u);
}

TEST_F(EmbeddedScrollViewTest, ADocumentViewGoesWithIt) {
    const Retained<NSView> document = newView();
    Retained<NSScrollView> scrolling = adopt(NSScrollView::alloc().initWithFrame(NSZeroRect));
    scrolling.setDocumentView(document);
    scrolling.reset();
    EXPECT_EQ(document.retainCount(), 1u);
    EXPECT_FALSE(document.superview());
}

} // namespace
} // namespace tessarin::testing
