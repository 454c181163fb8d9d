#include "InterfaceTest.h"

#include <utility>

namespace tessarin::testing {
namespace {

class NSWindowTest : public InterfaceTest {
protected:
    static Retained<NSWindow> newWindow(NSRect content, NSWindowStyleMask style = NSBorderlessWindowMask) {
        return adopt(NSWindow::alloc().initWithContentRect_styleMask_backing_defer(
            content, style, NSBackingStoreBuffered, false));
    }
    static Retained<NSView> newView(NSRect frame = NSMakeRect(0, 0, 10, 10)) {
        return adopt(NSView::alloc().initWithFrame(frame));
    }

    const Retained<NSWindow> plain_ = newWindow(NSMakeRect(100, 200, 300, 400));
    const Retained<NSWindow> titled_ =
        newWindow(NSMakeRect(100, 200, 300, 400), NSTitledWindowMask | NSClosableWindowMask);
};

// ---- Frame and content

TEST_F(NSWindowTest, WithoutABorderTheFrameIsTheContent) {
    EXPECT_EQ(plain_.frame(), NSMakeRect(100, 200, 300, 400));
    EXPECT_EQ(plain_.frameRectForContentRect(NSMakeRect(1, 2, 3, 4)), NSMakeRect(1, 2, 3, 4));
    EXPECT_EQ(plain_.contentRectForFrameRect(NSMakeRect(1, 2, 3, 4)), NSMakeRect(1, 2, 3, 4));
}

TEST_F(NSWindowTest, ATitleBarLiesAboveTheContent) {
    const NSRect frame = titled_.frameRectForContentRect(NSMakeRect(1, 2, 300, 400));
    EXPECT_EQ(frame.origin, NSMakePoint(1, 2));
    EXPECT_EQ(frame.size.width, 300);
    EXPECT_GT(frame.size.height, 400);
}

TEST_F(NSWindowTest, TheFrameIsTheOneAroundTheContent) {
    EXPECT_EQ(titled_.frame(), titled_.frameRectForContentRect(NSMakeRect(100, 200, 300, 400)));
}

TEST_F(NSWindowTest, ContentAndFrameAreConvertedBothWays) {
    const NSRect content = NSMakeRect(50, 60, 70, 80);
    EXPECT_EQ(titled_.contentRectForFrameRect(titled_.frameRectForContentRect(content)), content);
}

TEST_F(NSWindowTest, TakesAFrame) {
    plain_.setFrame_display(NSMakeRect(10, 20, 30, 40), true);
    EXPECT_EQ(plain_.frame(), NSMakeRect(10, 20, 30, 40));
    titled_.setFrame_display(NSMakeRect(110, 120, 230, 240), false);
    EXPECT_EQ(titled_.frame(), NSMakeRect(110, 120, 230, 240));
}

TEST_F(NSWindowTest, MovesWhileItIsOpen) {
    titled_.orderFront(nil);
    titled_.setFrame_display(NSMakeRect(110, 120, 230, 240), true);
    EXPECT_EQ(titled_.frame(), NSMakeRect(110, 120, 230, 240));
    titled_.orderOut(nil);
}

TEST_F(NSWindowTest, KnowsItsStyle) {
    EXPECT_EQ(plain_.styleMask(), NSBorderlessWindowMask);
    EXPECT_EQ(titled_.styleMask(), NSTitledWindowMask | NSClosableWindowMask);
}

TEST_F(NSWindowTest, NilHasNoGeometry) {
    const NSWindow none;
    EXPECT_EQ(none.frame(), NSZeroRect);
    EXPECT_EQ(none.frameRectForContentRect(NSMakeRect(1, 2, 3, 4)), NSZeroRect);
    EXPECT_EQ(none.convertRectToScreen(NSMakeRect(1, 2, 3, 4)), NSZeroRect);
    EXPECT_FALSE(none.contentView());
    EXPECT_FALSE(none.screen());
}

// ---- The screen

TEST_F(NSWindowTest, RectanglesLieOnTheScreenWhereTheWindowIs) {
    EXPECT_EQ(plain_.convertRectToScreen(NSMakeRect(5, 6, 7, 8)), NSMakeRect(105, 206, 7, 8));
    EXPECT_EQ(plain_.convertRectFromScreen(NSMakeRect(105, 206, 7, 8)), NSMakeRect(5, 6, 7, 8));
    EXPECT_EQ(plain_.convertRectToScreen(NSMakeRect(-5.5, 0, 0, 0)), NSMakeRect(94.5, 200, 0, 0));
}

TEST_F(NSWindowTest, RectanglesBeginAtTheFrameAndNotAtTheContent) {
    const NSPoint origin = titled_.frame().origin;
    EXPECT_EQ(titled_.convertRectToScreen(NSMakeRect(5, 6, 7, 8)),
              NSMakeRect(origin.x + 5, origin.y + 6, 7, 8));
}

TEST_F(NSWindowTest, IsOnTheScreenThatItLiesOn) { EXPECT_EQ(plain_.screen(), NSScreen::mainScreen()); }

TEST_F(NSWindowTest, IsOnNoScreenWhereThereIsNone) {
    plain_.setFrame_display(NSMakeRect(5000, 200, 300, 400), false);
    EXPECT_FALSE(plain_.screen());
}

// ---- The content view

TEST_F(NSWindowTest, HasAContentViewOfItsSize) {
    ASSERT_TRUE(titled_.contentView());
    EXPECT_EQ(titled_.contentView().frame().size, NSMakeSize(300, 400));
    EXPECT_EQ(titled_.contentView().window(), titled_);
}

TEST_F(NSWindowTest, ANewContentViewFillsTheWindow) {
    const Retained<NSView> view = newView();
    titled_.setContentView(view);
    EXPECT_EQ(titled_.contentView(), view);
    EXPECT_EQ(view.frame().size, NSMakeSize(300, 400));
    EXPECT_EQ(view.window(), titled_);
}

TEST_F(NSWindowTest, AReplacedContentViewIsInNoWindow) {
    const Retained<NSView> replaced = retain(titled_.contentView());
    titled_.setContentView(newView());
    EXPECT_FALSE(replaced.window());
    EXPECT_FALSE(replaced.superview());
}

TEST_F(NSWindowTest, TheContentViewFollowsTheFrame) {
    titled_.setFrame_display(NSMakeRect(10, 20, 500, 600), true);
    EXPECT_EQ(titled_.contentView().frame().size,
              titled_.contentRectForFrameRect(NSMakeRect(10, 20, 500, 600)).size);
}

TEST_F(NSWindowTest, RetainsItsContentView) {
    const Retained<NSView> view = newView();
    EXPECT_GT(referencesLeftBy([&] { plain_.setContentView(view); }, view), 0);
    EXPECT_LT(referencesLeftBy([&] { plain_.setContentView(newView()); }, view), 0);
    EXPECT_EQ(view.retainCount(), 1u);
}

TEST_F(NSWindowTest, AContentViewIsTakenOutOfItsSuperview) {
    const Retained<NSView> outer = newView(), inner = newView();
    outer.addSubview(inner);
    plain_.setContentView(inner);
    EXPECT_EQ(outer.subviews().count(), 0u);
    EXPECT_EQ(inner.window(), plain_);
}

TEST_F(NSWindowTest, AContentViewOutlivesItsWindow) {
    const Retained<NSView> view = newView();
    {
        const AutoreleasePool pool;
        newWindow(NSMakeRect(0, 0, 20, 20)).setContentView(view);
    }
    EXPECT_FALSE(view.window());
    EXPECT_EQ(view.retainCount(), 1u);
}

TEST_F(NSWindowTest, ViewsAtAnyDepthAreInTheWindow) {
    const Retained<NSView> outer = newView(), inner = newView();
    outer.addSubview(inner);
    plain_.contentView().addSubview(outer);
    EXPECT_EQ(inner.window(), plain_);
    outer.removeFromSuperview();
    EXPECT_FALSE(inner.window());
}

// ---- The rest

TEST_F(NSWindowTest, HasTheTitleThatItIsGiven) {
    const Retained<NSMutableString> title = adopt(NSMutableString("Mixer"_ns.mutableCopy()));
    titled_.setTitle(title);
    title.appendString("!"_ns);
    EXPECT_EQ(text(titled_.title()), "Mixer");
}

TEST_F(NSWindowTest, IsVisibleWhileItIsOpen) {
    EXPECT_FALSE(plain_.isVisible());
    plain_.orderFront(nil);
    EXPECT_TRUE(plain_.isVisible());
    plain_.orderOut(nil);
    EXPECT_FALSE(plain_.isVisible());
}

TEST_F(NSWindowTest, AViewThatIsPutInTwiceWhileItMovesIsInTheWindow) {
    static NSWindow window;
    static const ClassDefinition definition{{.name = "TessarinTestHastyView",
                                             .superclass = "NSView",
                                             .methods = {instanceMethod(
                                                 "willRemoveSubview:", +[](NSView, SEL, NSView view) {
                                                     if (const NSWindow target = std::exchange(window, nil))
                                                         target.setContentView(view);
                                                 })}}};
    const Retained<NSView> view = newView();
    const Retained<NSView> superview =
        adopt(as<NSView>(definition.classObject().alloc()).initWithFrame(NSMakeRect(0, 0, 10, 10)));
    superview.addSubview(view);
    window = plain_;
    plain_.setContentView(view);
    EXPECT_EQ(plain_.contentView(), view);
    EXPECT_EQ(view.window(), plain_);
    EXPECT_EQ(superview.subviews().count(), 0u);
}

} // namespace
} // namespace tessarin::testing
