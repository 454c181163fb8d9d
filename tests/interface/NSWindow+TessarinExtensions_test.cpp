#include "ExtensionGroups.h"
#include "InterfaceTest.h"
#include "StandInScreen.h"
#include "TestWindow.h"

#include "TessarinFoundation/NSWindow+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class WindowGeometryTest : public InterfaceTest {
protected:
    static NSView newView(NSRect frame) { return adopt(NSView::alloc().initWithFrame(frame)).autorelease(); }
    static NSWindow newWindow(NSRect content, NSWindowStyleMask style) {
        return adopt(NSWindow::alloc().initWithContentRect_styleMask_backing_defer(
                         content, style, NSBackingStoreBuffered, false))
            .autorelease();
    }
};

// ---- tessarin_frameRectForContentView:

class FrameForContentViewTest : public WindowGeometryTest {
protected:
    // Of a window whose content needs a frame of that size.
    static NSRect frameFor(NSRect current, NSSize needed) {
        const TestWindow window(current, {NSZeroPoint, needed});
        return tessarin_frameRectForContentView(window, newView(NSMakeRect(0, 0, 50, 50)));
    }
};

TEST_F(FrameForContentViewTest, KeepsTheTop) {
    ASSERT_EQ(NSScreen::mainScreen().visibleFrame().size.height, 900);
    EXPECT_EQ(frameFor(NSMakeRect(100, 500, 400, 300), NSMakeSize(400, 500)), NSMakeRect(100, 300, 400, 500));
    EXPECT_EQ(frameFor(NSMakeRect(100, 500, 400, 300), NSMakeSize(250, 100)), NSMakeRect(100, 700, 250, 100));
}

TEST_F(FrameForContentViewTest, IsRaisedToTheBottomOfTheScreen) {
    EXPECT_EQ(frameFor(NSMakeRect(100, 100, 400, 300), NSMakeSize(400, 500)), NSMakeRect(100, 0, 400, 500));
}

TEST_F(FrameForContentViewTest, IsLoweredToTheVisibleHeight) {
    const StandInScreen screen(NSMakeRect(0, 0, 1440, 770));
    EXPECT_EQ(frameFor(NSMakeRect(10, 600, 400, 300), NSMakeSize(400, 300)), NSMakeRect(10, 470, 400, 300));
    EXPECT_EQ(frameFor(NSMakeRect(10, 600, 400, 300), NSMakeSize(400, 500)), NSMakeRect(10, 270, 400, 500));
}

TEST_F(FrameForContentViewTest, TallerThanTheVisibleHeightItEndsBelowTheScreen) {
    const StandInScreen screen(NSMakeRect(0, 0, 1440, 770));
    EXPECT_EQ(frameFor(NSMakeRect(10, 600, 400, 300), NSMakeSize(400, 1000)),
              NSMakeRect(10, -230, 400, 1000));
}

TEST_F(FrameForContentViewTest, ReachesToTheVisibleHeightUncorrected) {
    const StandInScreen screen(NSMakeRect(0, 0, 1440, 770));
    EXPECT_EQ(frameFor(NSMakeRect(10, 470, 400, 300), NSMakeSize(400, 300)), NSMakeRect(10, 470, 400, 300));
    EXPECT_EQ(frameFor(NSMakeRect(10, 470.5, 400, 300), NSMakeSize(400, 300)), NSMakeRect(10, 470, 400, 300));
}

TEST_F(FrameForContentViewTest, WhereTheVisibleFrameBeginsDoesNotCount) {
    const StandInScreen screenWithDock(NSMakeRect(0, 100, 1440, 770));
    EXPECT_EQ(frameFor(NSMakeRect(10, 550, 400, 300), NSMakeSize(400, 300)), NSMakeRect(10, 470, 400, 300));
    EXPECT_EQ(frameFor(NSMakeRect(10, 50, 400, 300), NSMakeSize(400, 400)), NSMakeRect(10, 0, 400, 400));
}

TEST_F(FrameForContentViewTest, AMissingMainScreenHasNoHeight) {
    const StandInScreen none(nullptr);
    EXPECT_EQ(frameFor(NSMakeRect(10, 600, 400, 300), NSMakeSize(400, 500)), NSMakeRect(10, -500, 400, 500));
}

TEST_F(FrameForContentViewTest, OfTheNeededFrameTheSizeAloneCounts) {
    const TestWindow window(NSMakeRect(100, 500, 400, 300), NSMakeRect(7, 8, 400, 500));
    EXPECT_EQ(tessarin_frameRectForContentView(window, newView(NSMakeRect(0, 0, 50, 50))),
              NSMakeRect(100, 300, 400, 500));
}

TEST_F(FrameForContentViewTest, TheWindowIsAskedAboutTheFrameOfTheView) {
    const TestWindow window(NSMakeRect(100, 500, 400, 300), NSMakeRect(0, 0, 1, 1));
    tessarin_frameRectForContentView(window, newView(NSMakeRect(3, 4, 50, 60)));
    EXPECT_EQ(window.askedContent(), NSMakeRect(3, 4, 50, 60));
}

TEST_F(FrameForContentViewTest, AViewThatAnswersItsOwnFrameIsAsked) {
    static const ClassDefinition definition{
        {.name = "TessarinTestFramedContent",
         .superclass = "NSView",
         .methods = {instanceMethod(
             "frame", +[](NSView, SEL) { return NSMakeRect(7, 8, 30, 20); })}}};
    const Retained<NSView> view =
        adopt(as<NSView>(definition.classObject().alloc()).initWithFrame(NSMakeRect(1, 2, 50, 40)));
    const TestWindow window(NSMakeRect(100, 500, 400, 300), NSMakeRect(0, 0, 1, 1));
    tessarin_frameRectForContentView(window, view);
    EXPECT_EQ(window.askedContent(), NSMakeRect(7, 8, 30, 20));
}

TEST_F(FrameForContentViewTest, ANilViewIsAnEmptyOne) {
    const TestWindow window(NSMakeRect(100, 500, 400, 300), NSMakeRect(0, 0, 40, 28));
    static_cast<void>(tessarin_frameRectForContentView(window, newView(NSMakeRect(3, 4, 50, 60))));
    EXPECT_EQ(tessarin_frameRectForContentView(window, nil), NSMakeRect(100, 772, 40, 28));
    EXPECT_EQ(window.askedContent(), NSZeroRect);
}

TEST_F(FrameForContentViewTest, ANilWindowGivesZeros) {
    EXPECT_EQ(tessarin_frameRectForContentView(nil, newView(NSMakeRect(0, 0, 50, 50))), NSZeroRect);
}

TEST_F(FrameForContentViewTest, FractionsAreKept) {
    EXPECT_EQ(frameFor(NSMakeRect(0.5, 500.25, 400, 300.5), NSMakeSize(400.75, 500)),
              NSMakeRect(0.5, 300.75, 400.75, 500));
}

TEST_F(FrameForContentViewTest, OfAnOpenWindowWithoutBorder) {
    const NSWindow window = newWindow(NSMakeRect(100, 500, 400, 300), NSBorderlessWindowMask);
    window.orderFront(nil);
    EXPECT_EQ(tessarin_frameRectForContentView(window, newView(NSMakeRect(0, 0, 400, 500))),
              NSMakeRect(100, 300, 400, 500));
    window.orderOut(nil);
}

TEST_F(FrameForContentViewTest, OfAnOpenWindowWithATitle) {
    const NSWindow window = newWindow(NSMakeRect(100, 400, 400, 300), NSTitledWindowMask);
    window.orderFront(nil);
    const NSRect frame = window.frame();
    const NSView view = newView(NSMakeRect(0, 0, 400, 200));
    const NSRect needed = tessarin_frameRectForContentView(window, view);
    EXPECT_EQ(needed.size, window.frameRectForContentRect(view.frame()).size);
    EXPECT_EQ(needed.origin.x, frame.origin.x);
    EXPECT_EQ(needed.origin.y + needed.size.height, frame.origin.y + frame.size.height);
    window.orderOut(nil);
}

TEST_F(FrameForContentViewTest, TheWindowMayTakeIt) {
    const NSWindow window = newWindow(NSMakeRect(100, 400, 400, 300), NSTitledWindowMask);
    window.orderFront(nil);
    const NSPoint corner = tessarin_topLeftPoint(window);
    const NSView view = newView(NSMakeRect(0, 0, 320, 240));
    window.setFrame_display(tessarin_frameRectForContentView(window, view), true);
    window.setContentView(view);
    EXPECT_EQ(view.frame().size, NSMakeSize(320, 240));
    EXPECT_EQ(tessarin_topLeftPoint(window), corner);
    window.orderOut(nil);
}

TEST_F(FrameForContentViewTest, IsOnlyReturned) {
    const NSWindow window = newWindow(NSMakeRect(100, 400, 400, 300), NSTitledWindowMask);
    const NSRect frame = window.frame();
    const NSView content = window.contentView();
    const NSView view = newView(NSMakeRect(0, 0, 320, 240));
    tessarin_frameRectForContentView(window, view);
    EXPECT_EQ(window.frame(), frame);
    EXPECT_EQ(window.contentView(), content);
    EXPECT_EQ(view.frame(), NSMakeRect(0, 0, 320, 240));
    EXPECT_FALSE(view.superview());
}

// ---- tessarin_topLeftPoint

TEST_F(WindowGeometryTest, TheTopLeftPointIsTheCornerOfTheFrame) {
    EXPECT_EQ(tessarin_topLeftPoint(TestWindow(NSMakeRect(10, 20, 300, 200), NSZeroRect)),
              NSMakePoint(10, 220));
    EXPECT_EQ(tessarin_topLeftPoint(TestWindow(NSMakeRect(-10.5, -300, 300, 200.25), NSZeroRect)),
              NSMakePoint(-10.5, -99.75));
}

TEST_F(WindowGeometryTest, TheTopLeftPointOfAnOpenWindow) {
    const NSWindow window = newWindow(NSMakeRect(10, 20, 300, 200), NSBorderlessWindowMask);
    window.orderFront(nil);
    EXPECT_EQ(tessarin_topLeftPoint(window), NSMakePoint(10, 220));
    window.setFrame_display(NSMakeRect(40, 50, 300, 100), true);
    EXPECT_EQ(tessarin_topLeftPoint(window), NSMakePoint(40, 150));
    window.orderOut(nil);
}

TEST_F(WindowGeometryTest, TheTopLeftPointOfNilIsZero) { EXPECT_EQ(tessarin_topLeftPoint(nil), NSZeroPoint); }

// ---- tessarin_convertBaseToScreen:

TEST_F(WindowGeometryTest, BasePointsLieOnTheScreenWhereTheWindowIs) {
    const NSWindow window = newWindow(NSMakeRect(100, 100, 300, 200), NSBorderlessWindowMask);
    EXPECT_EQ(tessarin_convertBaseToScreen(window, NSMakePoint(5, 5)), NSMakePoint(105, 105));
    EXPECT_EQ(tessarin_convertBaseToScreen(window, NSZeroPoint), NSMakePoint(100, 100));
    EXPECT_EQ(tessarin_convertBaseToScreen(window, NSMakePoint(-200.5, 0.25)), NSMakePoint(-100.5, 100.25));
}

TEST_F(WindowGeometryTest, BasePointsBeginAtTheFrameAndNotAtTheContent) {
    const NSWindow window = newWindow(NSMakeRect(100, 100, 300, 200), NSTitledWindowMask);
    window.orderFront(nil);
    const NSPoint origin = window.frame().origin;
    EXPECT_EQ(tessarin_convertBaseToScreen(window, NSMakePoint(5, 5)),
              NSMakePoint(origin.x + 5, origin.y + 5));
    window.orderOut(nil);
}

TEST_F(WindowGeometryTest, BasePointsAreConvertedAsAnEmptyRectangle) {
    static NSRect converted;
    static const ClassDefinition definition{{.name = "TessarinTestConvertingWindow",
                                             .superclass = "NSWindow",
                                             .methods = {instanceMethod(
                                                 "convertRectToScreen:", +[](NSWindow, SEL, NSRect rect) {
                                                     converted = rect;
                                                     return NSMakeRect(1, 2, 3, 4);
                                                 })}}};
    const Retained<NSWindow> window =
        adopt(as<NSWindow>(definition.classObject().alloc())
                  .initWithContentRect_styleMask_backing_defer(
                      NSMakeRect(0, 0, 10, 10), NSBorderlessWindowMask, NSBackingStoreBuffered, true));
    EXPECT_EQ(tessarin_convertBaseToScreen(window, NSMakePoint(5, 6)), NSMakePoint(1, 2));
    EXPECT_EQ(converted, NSMakeRect(5, 6, 0, 0));
}

TEST_F(WindowGeometryTest, BasePointsOfNilAreZero) {
    EXPECT_EQ(tessarin_convertBaseToScreen(nil, NSMakePoint(5, 5)), NSZeroPoint);
}

// ---- All three

// So it is spelled.
TEST_F(WindowGeometryTest, TheGroupIsNamedTessarinExetensions) {
    const ExtensionGroupRecord group = groupOf("NSWindow", "tessarin_topLeftPoint");
    EXPECT_EQ(group.groupName, "TessarinExetensions");
    EXPECT_EQ(group.selectors,
              (std::vector<std::string>{"-tessarin_frameRectForContentView:", "-tessarin_topLeftPoint",
                                        "-tessarin_convertBaseToScreen:"}));
    EXPECT_TRUE(group.attached);
}

TEST_F(WindowGeometryTest, AClassThatAnswersDifferentlyIsAsked) {
    static const ClassDefinition definition{
        {.name = "TessarinTestCorneredWindow",
         .superclass = "NSWindow",
         .methods = {instanceMethod(
             "tessarin_topLeftPoint", +[](NSWindow, SEL) { return NSMakePoint(1, 2); })}}};
    const Retained<NSWindow> window =
        adopt(as<NSWindow>(definition.classObject().alloc())
                  .initWithContentRect_styleMask_backing_defer(
                      NSMakeRect(0, 0, 10, 10), NSBorderlessWindowMask, NSBackingStoreBuffered, true));
    EXPECT_EQ(tessarin_topLeftPoint(window), NSMakePoint(1, 2));
}

} // namespace
} // namespace tessarin::testing
