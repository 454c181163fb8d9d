#include "ExtensionGroups.h"
#include "InterfaceTest.h"

#include "TessarinFoundation/NSScrollView+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

// The operations on one of the two scrollers.
struct Direction {
    const char* name;
    const char* operation; // that answers the scroller
    bool (*isVisible)(NSScrollView);
    bool (*isOtherVisible)(NSScrollView);
    NSScroller (NSScrollView::*scroller)() const;
    void (NSScrollView::*setScroller)(NSScroller) const;
    void (NSScrollView::*setHasScroller)(bool) const;
};

const Direction directions[] = {
    {"Horizontal", "horizontalScroller", tessarin_isHorizontalScrollerVisible,
     tessarin_isVerticalScrollerVisible, &NSScrollView::horizontalScroller,
     &NSScrollView::setHorizontalScroller, &NSScrollView::setHasHorizontalScroller},
    {"Vertical", "verticalScroller", tessarin_isVerticalScrollerVisible, tessarin_isHorizontalScrollerVisible,
     &NSScrollView::verticalScroller, &NSScrollView::setVerticalScroller,
     &NSScrollView::setHasVerticalScroller},
};

class ScrollerVisibilityTest : public InterfaceTest, public ::testing::WithParamInterface<Direction> {
protected:
    bool isVisible() const { return GetParam().isVisible(view_); }
    bool isOtherVisible() const { return GetParam().isOtherVisible(view_); }
    NSScroller scroller() const { return (view_.*GetParam().scroller)(); }
    void setScroller(NSScroller scroller) const { (view_.*GetParam().setScroller)(scroller); }
    void setHasScroller(bool flag) const { (view_.*GetParam().setHasScroller)(flag); }
    static NSScroller newScroller() {
        return adopt(NSScroller::alloc().initWithFrame(NSMakeRect(0, 0, 16, 100))).autorelease();
    }

    const Retained<NSScrollView> view_ =
        adopt(NSScrollView::alloc().initWithFrame(NSMakeRect(0, 0, 200, 100)));
};

INSTANTIATE_TEST_SUITE_P(BothDirections, ScrollerVisibilityTest, ::testing::ValuesIn(directions),
                         [](const auto& direction) { return direction.param.name; });

TEST_P(ScrollerVisibilityTest, AViewWithoutScrollersShowsNone) {
    EXPECT_FALSE(scroller());
    EXPECT_FALSE(isVisible());
}

TEST_P(ScrollerVisibilityTest, AScrollerIsVisible) {
    setHasScroller(true);
    EXPECT_TRUE(isVisible());
    EXPECT_FALSE(isOtherVisible());
}

TEST_P(ScrollerVisibilityTest, AHiddenScrollerIsNot) {
    setHasScroller(true);
    scroller().setHidden(true);
    EXPECT_FALSE(isVisible());
    scroller().setHidden(false);
    EXPECT_TRUE(isVisible());
}

TEST_P(ScrollerVisibilityTest, InAHiddenScrollViewNoneIs) {
    setHasScroller(true);
    view_.setHidden(true);
    EXPECT_FALSE(isVisible());
    view_.setHidden(false);
    EXPECT_TRUE(isVisible());
}

TEST_P(ScrollerVisibilityTest, InAHiddenViewNoneIs) {
    const Retained<NSView> outer = adopt(NSView::alloc().initWithFrame(NSMakeRect(0, 0, 300, 300)));
    const Retained<NSView> inner = adopt(NSView::alloc().initWithFrame(NSMakeRect(0, 0, 250, 250)));
    setHasScroller(true);
    outer.addSubview(inner);
    inner.addSubview(view_);
    EXPECT_TRUE(isVisible());
    outer.setHidden(true);
    EXPECT_FALSE(isVisible());
    view_.removeFromSuperview();
    EXPECT_TRUE(isVisible());
}

TEST_P(ScrollerVisibilityTest, WhetherTheViewIsToHaveItDoesNotCount) {
    setScroller(newScroller());
    EXPECT_TRUE(isVisible());
    setHasScroller(true);
    setHasScroller(false);
    EXPECT_TRUE(isVisible());
    scroller().setHidden(true);
    EXPECT_FALSE(isVisible());
}

TEST_P(ScrollerVisibilityTest, AScrollerThatIsTakenAwayIsNot) {
    setHasScroller(true);
    setHasScroller(false);
    setScroller(nil);
    EXPECT_FALSE(isVisible());
}

// A scroll view that has scrollers elsewhere; it notes which of them it was asked for.
NSScroller scrollerElsewhere;
std::vector<std::string> askedScrollers;

NSScroller answerScrollerElsewhere(NSScrollView, SEL operation) {
    askedScrollers.push_back(runtime::selectorName(operation));
    return scrollerElsewhere;
}

TEST_P(ScrollerVisibilityTest, AViewThatAnswersItsOwnScrollerIsAsked) {
    static const ClassDefinition definition{
        {.name = "TessarinTestScrollView",
         .superclass = "NSScrollView",
         .methods = {instanceMethod("horizontalScroller", answerScrollerElsewhere),
                     instanceMethod("verticalScroller", answerScrollerElsewhere)}}};
    scrollerElsewhere = nil;
    const Retained<NSScrollView> own =
        adopt(as<NSScrollView>(definition.classObject().alloc()).initWithFrame(NSMakeRect(0, 0, 200, 100)));
    askedScrollers.clear();
    EXPECT_FALSE(GetParam().isVisible(own));
    scrollerElsewhere = newScroller();
    EXPECT_TRUE(GetParam().isVisible(own));
    scrollerElsewhere.setHidden(true);
    EXPECT_FALSE(GetParam().isVisible(own));
    EXPECT_EQ(askedScrollers, std::vector<std::string>(3, GetParam().operation));
    scrollerElsewhere = nil;
}

BOOL isScrollerOutOfSight = NO;

TEST_P(ScrollerVisibilityTest, AScrollerThatSaysItselfWhetherItIsHiddenIsAsked) {
    static const ClassDefinition definition{
        {.name = "TessarinTestScroller",
         .superclass = "NSScroller",
         .methods = {instanceMethod(
             "isHiddenOrHasHiddenAncestor", +[](NSScroller, SEL) { return isScrollerOutOfSight; })}}};
    setScroller(
        adopt(as<NSScroller>(definition.classObject().alloc()).initWithFrame(NSMakeRect(0, 0, 16, 100)))
            .autorelease());
    isScrollerOutOfSight = YES;
    EXPECT_FALSE(isVisible());
    isScrollerOutOfSight = NO;
    scroller().setHidden(true);
    EXPECT_TRUE(isVisible());
}

TEST_P(ScrollerVisibilityTest, InAnOpenWindow) {
    const Retained<NSWindow> window = adopt(NSWindow::alloc().initWithContentRect_styleMask_backing_defer(
        NSMakeRect(100, 100, 300, 200), NSTitledWindowMask, NSBackingStoreBuffered, false));
    setHasScroller(true);
    window.contentView().addSubview(view_);
    EXPECT_TRUE(isVisible()); // the window itself need not be
    window.orderFront(nil);
    EXPECT_TRUE(isVisible());
    window.contentView().setHidden(true);
    EXPECT_FALSE(isVisible());
    window.orderOut(nil);
}

TEST_P(ScrollerVisibilityTest, NilShowsNone) { EXPECT_FALSE(GetParam().isVisible(nil)); }

TEST_F(InterfaceTest, ScrollViewsAreExtendedByTessarinExtensions) {
    const ExtensionGroupRecord group = groupOf("NSScrollView", "tessarin_isHorizontalScrollerVisible");
    EXPECT_EQ(group.groupName, "TessarinExtensions");
    EXPECT_EQ(group.selectors, (std::vector<std::string>{"-tessarin_isHorizontalScrollerVisible",
                                                         "-tessarin_isVerticalScrollerVisible"}));
    EXPECT_TRUE(group.attached);
}

} // namespace
} // namespace tessarin::testing
