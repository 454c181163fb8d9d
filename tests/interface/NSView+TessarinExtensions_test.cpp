#include "ExtensionGroups.h"
#include "InterfaceTest.h"

#include "TessarinFoundation/NSView+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class ViewPlacementTest : public InterfaceTest {
protected:
    static NSView newView(NSRect frame) { return adopt(NSView::alloc().initWithFrame(frame)).autorelease(); }
};

TEST_F(ViewPlacementTest, ARectangleIsGivenByItsTopLeftCorner) {
    const NSView view = newView(NSMakeRect(1, 2, 3, 4));
    tessarin_setFrameWithOriginAtTopLeft(view, NSMakeRect(0, 100, 50, 40));
    EXPECT_EQ(view.frame(), NSMakeRect(0, 60, 50, 40));
}

TEST_F(ViewPlacementTest, AViewIsMovedByItsTopLeftCorner) {
    const NSView view = newView(NSMakeRect(1, 2, 50, 40));
    tessarin_setFrameTopLeftPoint(view, NSMakePoint(0, 100));
    EXPECT_EQ(view.frame(), NSMakeRect(0, 60, 50, 40));
}

TEST_F(ViewPlacementTest, PlacesBelowTheOriginAndFractionsAreKept) {
    const NSView view = newView(NSMakeRect(0, 0, 50.5, 40.25));
    tessarin_setFrameTopLeftPoint(view, NSMakePoint(-7.5, 20));
    EXPECT_EQ(view.frame(), NSMakeRect(-7.5, -20.25, 50.5, 40.25));
    tessarin_setFrameWithOriginAtTopLeft(view, NSMakeRect(0.25, -1, 10, 10.5));
    EXPECT_EQ(view.frame(), NSMakeRect(0.25, -11.5, 10, 10.5));
}

TEST_F(ViewPlacementTest, AnEmptyViewLiesAtItsCorner) {
    const NSView view = newView(NSZeroRect);
    tessarin_setFrameTopLeftPoint(view, NSMakePoint(3, 100));
    EXPECT_EQ(view.frame(), NSMakeRect(3, 100, 0, 0));
}

TEST_F(ViewPlacementTest, AFlippedSuperviewMakesNoDifference) {
    static const ClassDefinition definition{{.name = "TessarinTestFlippedView",
                                             .superclass = "NSView",
                                             .methods = {instanceMethod(
                                                 "isFlipped", +[](NSView, SEL) { return YES; })}}};
    const Retained<NSView> superview =
        adopt(as<NSView>(definition.classObject().alloc()).initWithFrame(NSMakeRect(0, 0, 200, 200)));
    ASSERT_TRUE(superview.isFlipped());
    const NSView view = newView(NSMakeRect(1, 2, 50, 40));
    superview.addSubview(view);
    tessarin_setFrameTopLeftPoint(view, NSMakePoint(0, 100));
    EXPECT_EQ(view.frame(), NSMakeRect(0, 60, 50, 40));
    tessarin_setFrameWithOriginAtTopLeft(view, NSMakeRect(0, 90, 50, 40));
    EXPECT_EQ(view.frame(), NSMakeRect(0, 50, 50, 40));
}

TEST_F(ViewPlacementTest, TheViewIsSentSetFrame) {
    static std::vector<NSRect> frames;
    static const ClassDefinition definition{
        {.name = "TessarinTestPlacedView",
         .superclass = "NSView",
         .methods = {instanceMethod(
             "setFrame:", +[](NSView, SEL, NSRect frame) { frames.push_back(frame); })}}};
    const Retained<NSView> view =
        adopt(as<NSView>(definition.classObject().alloc()).initWithFrame(NSMakeRect(1, 2, 50, 40)));
    frames.clear();
    tessarin_setFrameWithOriginAtTopLeft(view, NSMakeRect(0, 100, 30, 20));
    tessarin_setFrameTopLeftPoint(view, NSMakePoint(0, 100));
    EXPECT_EQ(frames, (std::vector<NSRect>{NSMakeRect(0, 80, 30, 20), NSMakeRect(0, 60, 50, 40)}));
}

TEST_F(ViewPlacementTest, AViewThatAnswersItsOwnFrameIsAsked) {
    static std::vector<NSRect> frames;
    static const ClassDefinition definition{
        {.name = "TessarinTestFramedView",
         .superclass = "NSView",
         .methods = {instanceMethod(
                         "frame", +[](NSView, SEL) { return NSMakeRect(7, 8, 30, 20); }),
                     instanceMethod(
                         "setFrame:", +[](NSView, SEL, NSRect frame) { frames.push_back(frame); })}}};
    const Retained<NSView> view =
        adopt(as<NSView>(definition.classObject().alloc()).initWithFrame(NSMakeRect(1, 2, 50, 40)));
    frames.clear();
    tessarin_setFrameTopLeftPoint(view, NSMakePoint(0, 100));
    EXPECT_EQ(frames, (std::vector<NSRect>{NSMakeRect(0, 80, 30, 20)}));
}

TEST_F(ViewPlacementTest, TheViewsOfAnOpenWindow) {
    const Retained<NSWindow> window = adopt(NSWindow::alloc().initWithContentRect_styleMask_backing_defer(
        NSMakeRect(100, 100, 300, 200), NSTitledWindowMask, NSBackingStoreBuffered, false));
    const NSView button = newView(NSMakeRect(0, 0, 80, 24));
    window.contentView().addSubview(button);
    window.orderFront(nil);
    tessarin_setFrameTopLeftPoint(button, NSMakePoint(10, 190));
    EXPECT_EQ(button.frame(), NSMakeRect(10, 166, 80, 24));
    tessarin_setFrameWithOriginAtTopLeft(button, NSMakeRect(10, 190, 100, 30));
    EXPECT_EQ(button.frame(), NSMakeRect(10, 160, 100, 30));
    window.orderOut(nil);
}

TEST_F(ViewPlacementTest, NilIsNoView) {
    tessarin_setFrameWithOriginAtTopLeft(nil, NSMakeRect(0, 100, 50, 40));
    tessarin_setFrameTopLeftPoint(nil, NSMakePoint(0, 100));
    EXPECT_EQ(NSView().frame(), NSZeroRect);
}

TEST_F(ViewPlacementTest, TheGroupIsNamedTessarinExtensions) {
    const ExtensionGroupRecord group = groupOf("NSView", "tessarin_setFrameTopLeftPoint:");
    EXPECT_EQ(group.groupName, "TessarinExtensions");
    EXPECT_EQ(group.selectors, (std::vector<std::string>{"-tessarin_setFrameWithOriginAtTopLeft:",
                                                         "-tessarin_setFrameTopLeftPoint:"}));
    EXPECT_TRUE(group.attached);
}

} // namespace
} // namespace tessarin::testing
