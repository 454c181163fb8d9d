#include "InterfaceTest.h"

namespace tessarin::testing {
namespace {

class NSViewTest : public InterfaceTest {
protected:
    static Retained<NSView> newView(NSRect frame = NSMakeRect(0, 0, 100, 100)) {
        return adopt(NSView::alloc().initWithFrame(frame));
    }

    const Retained<NSView> outer_ = newView();
    const Retained<NSView> inner_ = newView();
};

// ---- Geometry

TEST_F(NSViewTest, HasTheFrameThatItIsMadeWith) {
    EXPECT_EQ(newView(NSMakeRect(1, 2.5, 30, 40)).frame(), NSMakeRect(1, 2.5, 30, 40));
}

TEST_F(NSViewTest, HasAnEmptyFrameAtFirst) {
    EXPECT_EQ(adopt(send<NSView>(NSView::alloc(), "init"_sel)).frame(), NSZeroRect);
}

TEST_F(NSViewTest, TakesAFrame) {
    inner_.setFrame(NSMakeRect(-5, 6.25, 7, 8));
    EXPECT_EQ(inner_.frame(), NSMakeRect(-5, 6.25, 7, 8));
}

TEST_F(NSViewTest, TakesAnOriginAndASizeAlone) {
    inner_.setFrameOrigin(NSMakePoint(3, 4));
    EXPECT_EQ(inner_.frame(), NSMakeRect(3, 4, 100, 100));
    inner_.setFrameSize(NSMakeSize(5, 6));
    EXPECT_EQ(inner_.frame(), NSMakeRect(3, 4, 5, 6));
}

TEST_F(NSViewTest, BoundsAreTheSizeAtTheOrigin) {
    inner_.setFrame(NSMakeRect(5, 6, 7, 8));
    EXPECT_EQ(inner_.bounds(), NSMakeRect(0, 0, 7, 8));
}

TEST_F(NSViewTest, IsNotFlipped) { EXPECT_FALSE(inner_.isFlipped()); }

TEST_F(NSViewTest, FramesOfSubviewsStayWhenTheViewMoves) {
    inner_.setFrame(NSMakeRect(1, 2, 3, 4));
    outer_.addSubview(inner_);
    outer_.setFrameOrigin(NSMakePoint(50, 60));
    EXPECT_EQ(inner_.frame(), NSMakeRect(1, 2, 3, 4));
}

TEST_F(NSViewTest, NilHasNoGeometry) {
    const NSView none;
    none.setFrame(NSMakeRect(1, 2, 3, 4));
    EXPECT_EQ(none.frame(), NSZeroRect);
    EXPECT_EQ(none.bounds(), NSZeroRect);
}

// ---- Views in views

TEST_F(NSViewTest, IsInNoViewAtFirst) {
    EXPECT_FALSE(inner_.superview());
    EXPECT_FALSE(inner_.window());
    EXPECT_EQ(inner_.subviews().count(), 0u);
}

TEST_F(NSViewTest, ASubviewIsInItsSuperview) {
    outer_.addSubview(inner_);
    EXPECT_EQ(inner_.superview(), outer_);
    EXPECT_EQ(outer_.subviews().count(), 1u);
    EXPECT_EQ(outer_.subviews().firstObject(), inner_);
}

TEST_F(NSViewTest, SubviewsStandInTheOrderOfAdding) {
    const Retained<NSView> second = newView(), third = newView();
    outer_.addSubview(inner_);
    outer_.addSubview(second);
    outer_.addSubview(third);
    EXPECT_TRUE(outer_.subviews().isEqualToArray(NSArray::arrayOf(inner_, second, third)));
}

TEST_F(NSViewTest, AViewThatIsAddedAgainComesToTheFront) {
    const Retained<NSView> second = newView();
    outer_.addSubview(inner_);
    outer_.addSubview(second);
    outer_.addSubview(inner_);
    EXPECT_TRUE(outer_.subviews().isEqualToArray(NSArray::arrayOf(second, inner_)));
    EXPECT_EQ(inner_.superview(), outer_);
}

TEST_F(NSViewTest, AViewIsInOneSuperviewAtATime) {
    const Retained<NSView> other = newView();
    outer_.addSubview(inner_);
    other.addSubview(inner_);
    EXPECT_EQ(inner_.superview(), other);
    EXPECT_EQ(outer_.subviews().count(), 0u);
    EXPECT_EQ(other.subviews().count(), 1u);
}

TEST_F(NSViewTest, ARemovedViewIsInNone) {
    const Retained<NSView> second = newView(), third = newView();
    outer_.addSubview(inner_);
    outer_.addSubview(second);
    outer_.addSubview(third);
    second.removeFromSuperview();
    EXPECT_FALSE(second.superview());
    EXPECT_TRUE(outer_.subviews().isEqualToArray(NSArray::arrayOf(inner_, third)));
    second.removeFromSuperview();
    EXPECT_FALSE(second.superview());
}

TEST_F(NSViewTest, TheArrayOfSubviewsIsACopy) {
    outer_.addSubview(inner_);
    const NSArray before = outer_.subviews();
    inner_.removeFromSuperview();
    EXPECT_EQ(before.count(), 1u);
    EXPECT_EQ(outer_.subviews().count(), 0u);
}

TEST_F(NSViewTest, ASuperviewRetainsItsSubviews) {
    const Retained<NSView> view = newView();
    EXPECT_EQ(referencesLeftBy([&] { outer_.addSubview(view); }, view), 1);
    EXPECT_EQ(referencesLeftBy([&] { outer_.addSubview(view); }, view), 0);
    EXPECT_EQ(referencesLeftBy([&] { inner_.addSubview(view); }, view), 0);
    EXPECT_EQ(referencesLeftBy([&] { view.removeFromSuperview(); }, view), -1);
}

TEST_F(NSViewTest, SubviewsDoNotRetainTheirSuperview) {
    EXPECT_EQ(referencesLeftBy([&] { outer_.addSubview(inner_); }, outer_), 0);
}

TEST_F(NSViewTest, SubviewsOutliveTheirSuperview) {
    {
        const AutoreleasePool pool;
        const Retained<NSView> shortLived = newView();
        shortLived.addSubview(inner_);
        EXPECT_EQ(inner_.superview(), shortLived);
    }
    EXPECT_FALSE(inner_.superview());
    EXPECT_EQ(inner_.retainCount(), 1u);
}

TEST_F(NSViewTest, NothingIsAddedForNil) {
    outer_.addSubview(nil);
    EXPECT_EQ(outer_.subviews().count(), 0u);
}

TEST_F(NSViewTest, AViewInsideItselfRaises) {
    EXPECT_THROWS_NAMED((outer_.addSubview(outer_), 0), "NSInvalidArgumentException");
    EXPECT_FALSE(outer_.superview());
    EXPECT_EQ(outer_.subviews().count(), 0u);
}

TEST_F(NSViewTest, AViewInsideItsOwnDescendantRaises) {
    const Retained<NSView> innermost = newView(), elsewhere = newView();
    elsewhere.addSubview(outer_);
    outer_.addSubview(inner_);
    inner_.addSubview(innermost);
    EXPECT_THROWS_NAMED((innermost.addSubview(outer_), 0), "NSInvalidArgumentException");
    EXPECT_EQ(outer_.superview(), elsewhere);
    EXPECT_EQ(innermost.subviews().count(), 0u);
}

TEST_F(NSViewTest, ASuperviewIsToldBeforeASubviewGoes) {
    static std::vector<NSObject> told;
    static const ClassDefinition definition{{.name = "TessarinTestToldView",
                                             .superclass = "NSView",
                                             .methods = {instanceMethod(
                                                 "willRemoveSubview:", +[](NSView self, SEL, NSView view) {
                                                     EXPECT_EQ(view.superview(), self);
                                                     told.push_back(view);
                                                 })}}};
    const Retained<NSView> superview =
        adopt(as<NSView>(definition.classObject().alloc()).initWithFrame(NSMakeRect(0, 0, 100, 100)));
    told.clear();
    superview.addSubview(inner_);
    inner_.removeFromSuperview();
    superview.addSubview(outer_);
    inner_.addSubview(outer_);
    EXPECT_EQ(told, (std::vector<NSObject>{inner_, outer_}));
}

// ---- Hiding

TEST_F(NSViewTest, IsShownAtFirst) {
    EXPECT_FALSE(inner_.isHidden());
    EXPECT_FALSE(inner_.isHiddenOrHasHiddenAncestor());
}

TEST_F(NSViewTest, IsHiddenAndShownAgain) {
    inner_.setHidden(true);
    EXPECT_TRUE(inner_.isHidden());
    EXPECT_TRUE(inner_.isHiddenOrHasHiddenAncestor());
    inner_.setHidden(false);
    EXPECT_FALSE(inner_.isHidden());
    EXPECT_FALSE(inner_.isHiddenOrHasHiddenAncestor());
}

TEST_F(NSViewTest, AHiddenAncestorCountsAtAnyDistance) {
    const Retained<NSView> middle = newView();
    outer_.addSubview(middle);
    middle.addSubview(inner_);
    outer_.setHidden(true);
    EXPECT_FALSE(inner_.isHidden());
    EXPECT_TRUE(inner_.isHiddenOrHasHiddenAncestor());
    EXPECT_TRUE(middle.isHiddenOrHasHiddenAncestor());
    middle.removeFromSuperview();
    EXPECT_FALSE(inner_.isHiddenOrHasHiddenAncestor());
}

TEST_F(NSViewTest, AHiddenSubviewDoesNotHideItsSuperview) {
    outer_.addSubview(inner_);
    inner_.setHidden(true);
    EXPECT_FALSE(outer_.isHiddenOrHasHiddenAncestor());
}

TEST_F(NSViewTest, AnEmptyViewIsNotHidden) {
    inner_.setFrame(NSZeroRect);
    EXPECT_FALSE(inner_.isHiddenOrHasHiddenAncestor());
}

// ---- Classes of one's own

TEST_F(NSViewTest, AClassOfOnesOwnMakesItselfThroughItsInitialiser) {
    static const ClassDefinition definition{
        {.name = "TessarinTestOwnView",
         .superclass = "NSView",
         .instanceVariables = {instanceVariable<NSRect>("remembered")},
         .methods = {instanceMethod(
             "initWithFrame:", +[](NSView self, SEL selector, NSRect frame) {
                 const NSView made =
                     sendSuper<NSView>(self, definition.classObject(), selector, NSMakeRect(1, 2, 3, 4));
                 instanceVariableOf<NSRect>(made, "remembered") = frame;
                 return made;
             })}}};
    const Retained<NSView> view =
        adopt(as<NSView>(definition.classObject().alloc()).initWithFrame(NSMakeRect(5, 6, 7, 8)));
    EXPECT_EQ(view.frame(), NSMakeRect(1, 2, 3, 4));
    EXPECT_EQ(instanceVariableOf<NSRect>(view, "remembered"), NSMakeRect(5, 6, 7, 8));
    const Retained<NSView> empty = adopt(send<NSView>(definition.classObject().alloc(), "init"_sel));
    EXPECT_EQ(empty.frame(), NSMakeRect(1, 2, 3, 4));
    EXPECT_EQ(instanceVariableOf<NSRect>(empty, "remembered"), NSZeroRect);
}

} // namespace
} // namespace tessarin::testing
