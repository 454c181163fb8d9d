// The embedded platform's windows: the heights of its title bars, its screens, and what else is its own.
#include "InterfaceTest.h"

#include <utility>

namespace tessarin::testing {
namespace {

class EmbeddedWindowTest : public PlatformTest {
protected:
    ~EmbeddedWindowTest() override { describeScreens({}); }
    static Retained<NSWindow> newWindow(NSRect content, NSWindowStyleMask style = NSBorderlessWindowMask) {
        return adopt(NSWindow::alloc().initWithContentRect_styleMask_backing_defer(
            content, style, NSBackingStoreBuffered, true));
    }
    static CGFloat titleBarHeight(NSWindowStyleMask style) {
        return newWindow(NSMakeRect(10, 20, 300, 200), style).frame().size.height - 200;
    }
};

TEST_F(EmbeddedWindowTest, ATitleBarIs28PointsHigh) {
    EXPECT_EQ(titleBarHeight(NSTitledWindowMask), 28);
    EXPECT_EQ(titleBarHeight(NSTitledWindowMask | NSClosableWindowMask | NSMiniaturizableWindowMask
                             | NSResizableWindowMask),
              28);
}

TEST_F(EmbeddedWindowTest, TheTitleBarOfAUtilityWindowIs16PointsHigh) {
    EXPECT_EQ(titleBarHeight(NSTitledWindowMask | NSUtilityWindowMask), 16);
}

TEST_F(EmbeddedWindowTest, WithoutATitleThereIsNoTitleBar) {
    EXPECT_EQ(titleBarHeight(NSBorderlessWindowMask), 0);
    EXPECT_EQ(titleBarHeight(NSUtilityWindowMask | NSResizableWindowMask), 0);
}

TEST_F(EmbeddedWindowTest, AFrameWithoutRoomLeavesTheContentEmpty) {
    const Retained<NSWindow> window = newWindow(NSMakeRect(10, 20, 300, 200), NSTitledWindowMask);
    window.setFrame_display(NSMakeRect(10, 20, 300, 5), true);
    EXPECT_EQ(window.frame(), NSMakeRect(10, 20, 300, 5));
    EXPECT_EQ(window.contentView().frame(), NSMakeRect(0, 0, 300, 0));
}

TEST_F(EmbeddedWindowTest, IsMadeWithATitleByInit) {
    const Retained<NSWindow> window = adopt(send<NSWindow>(NSWindow::alloc(), "init"_sel));
    EXPECT_EQ(window.styleMask(), NSTitledWindowMask);
    EXPECT_EQ(window.frame(), NSMakeRect(0, 0, 0, 28));
    EXPECT_TRUE(window.contentView());
}

TEST_F(EmbeddedWindowTest, ThereIsAlwaysATitle) {
    const Retained<NSWindow> window = newWindow(NSMakeRect(10, 20, 300, 200), NSTitledWindowMask);
    EXPECT_EQ(text(window.title()), "");
    window.setTitle("Mixer"_ns);
    EXPECT_THROWS_NAMED((window.setTitle(nil), 0), "NSInternalInconsistencyException");
    EXPECT_EQ(text(window.title()), "Mixer");
}

// ---- The content view

TEST_F(EmbeddedWindowTest, TheContentViewLiesAtTheOrigin) {
    const Retained<NSWindow> window = newWindow(NSMakeRect(10, 20, 300, 200), NSTitledWindowMask);
    EXPECT_EQ(window.contentView().frame(), NSMakeRect(0, 0, 300, 200));
    EXPECT_FALSE(window.contentView().superview());
}

TEST_F(EmbeddedWindowTest, MayDoWithoutAContentView) {
    const Retained<NSWindow> window = newWindow(NSMakeRect(10, 20, 300, 200));
    window.setContentView(nil);
    EXPECT_FALSE(window.contentView());
    window.setFrame_display(NSMakeRect(0, 0, 1, 1), true);
}

TEST_F(EmbeddedWindowTest, LosesAContentViewThatGoesElsewhere) {
    const Retained<NSWindow> first = newWindow(NSMakeRect(10, 20, 300, 200)), second = newWindow(NSZeroRect);
    const Retained<NSView> view = retain(first.contentView());
    second.setContentView(view);
    EXPECT_FALSE(first.contentView());
    EXPECT_EQ(view.window(), second);

    const Retained<NSView> superview = adopt(NSView::alloc().initWithFrame(NSZeroRect));
    superview.addSubview(view);
    EXPECT_FALSE(second.contentView());
    EXPECT_FALSE(view.window());
    EXPECT_EQ(view.superview(), superview);

    first.setContentView(superview);
    superview.removeFromSuperview();
    EXPECT_FALSE(first.contentView());
    EXPECT_FALSE(view.window());
}

TEST_F(EmbeddedWindowTest, TheSameContentViewAgainIsResized) {
    const Retained<NSWindow> window = newWindow(NSMakeRect(10, 20, 300, 200));
    const NSView view = window.contentView();
    view.setFrame(NSMakeRect(5, 5, 5, 5));
    EXPECT_EQ(referencesLeftBy([&] { window.setContentView(view); }, view), 0);
    EXPECT_EQ(window.contentView(), view);
    EXPECT_EQ(view.frame(), NSMakeRect(0, 0, 300, 200));
}

// ---- The screen

TEST_F(EmbeddedWindowTest, IsOnTheScreenThatHoldsMostOfIt) {
    const NSRect left = NSMakeRect(0, 0, 1000, 900), right = NSMakeRect(1000, 0, 1000, 900);
    describeScreens({{left, left}, {right, right}});
    const NSArray screens = NSScreen::screens();
    const Retained<NSWindow> window = newWindow(NSMakeRect(850, 100, 200, 200));
    EXPECT_EQ(window.screen(), screens.objectAtIndex(0));
    window.setFrame_display(NSMakeRect(950, 100, 200, 200), true);
    EXPECT_EQ(window.screen(), screens.objectAtIndex(1));
    window.setFrame_display(NSMakeRect(900, 100, 200, 200), true); // as much on either
    EXPECT_EQ(window.screen(), screens.objectAtIndex(0));
    window.setFrame_display(NSMakeRect(900, 900, 200, 200), true);
    EXPECT_FALSE(window.screen());
}

TEST_F(EmbeddedWindowTest, IsOnNoScreenWhereThereAreNone) {
    EXPECT_FALSE(newWindow(NSMakeRect(10, 20, 300, 200)).screen());
}

TEST_F(EmbeddedWindowTest, AViewThatIsPutIntoAWindowWhileItMovesIsInOnePlace) {
    static NSWindow window;
    static const ClassDefinition definition{{.name = "EmbeddedWindowTestView",
                                             .superclass = "NSView",
                                             .methods = {instanceMethod(
                                                 "willRemoveSubview:", +[](NSView, SEL, NSView view) {
                                                     if (const NSWindow other = std::exchange(window, nil))
                                                         other.setContentView(view);
                                                 })}}};
    const Retained<NSWindow> first = newWindow(NSMakeRect(0, 0, 10, 10));
    const Retained<NSWindow> second = newWindow(NSMakeRect(0, 0, 10, 10));
    const Retained<NSView> view = adopt(NSView::alloc().initWithFrame(NSZeroRect));
    const Retained<NSView> superview =
        adopt(as<NSView>(definition.classObject().alloc()).initWithFrame(NSZeroRect));
    superview.addSubview(view);
    window = second;
    first.setContentView(view);
    EXPECT_EQ(first.contentView(), view);
    EXPECT_EQ(view.window(), first);
    EXPECT_FALSE(second.contentView());
    EXPECT_FALSE(view.superview());
}

} // namespace
} // namespace tessarin::testing
