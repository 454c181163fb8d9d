// Points, sizes and rectangles as arguments and results of messages.
#include "InterfaceTest.h"

namespace tessarin::testing {
namespace {

NSRect rectAround(NSObject, SEL, NSPoint point, NSSize size, CGFloat margin) {
    return {{point.x - margin, point.y - margin}, {size.width + 2 * margin, size.height + 2 * margin}};
}
NSPoint corner(NSObject, SEL, NSRect rect) {
    return {rect.origin.x + rect.size.width, rect.origin.y + rect.size.height};
}
NSSize turned(NSObject, SEL, NSSize size) { return {size.height, size.width}; }

class GeometryTest : public PlatformTest {
protected:
    static Retained<NSObject> newReceiver() {
        static const ClassDefinition definition{
            {.name = "TessarinTestGeometry",
             .instanceVariables = {instanceVariable<BOOL>("flag"), instanceVariable<NSRect>("rect")},
             .methods = {instanceMethod("rectAroundPoint:size:margin:", rectAround),
                         instanceMethod("cornerOfRect:", corner), instanceMethod("turned:", turned)}}};
        return adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
    }
    const Retained<NSObject> receiver_ = newReceiver();
};

TEST_F(GeometryTest, RectanglesTravelByValue) {
    EXPECT_EQ(send<NSPoint>(receiver_, "cornerOfRect:"_sel, NSMakeRect(1.5, -2, 3, 40)),
              NSMakePoint(4.5, 38));
    EXPECT_EQ(send<NSRect>(receiver_, "rectAroundPoint:size:margin:"_sel, NSMakePoint(10, 20),
                           NSMakeSize(30, 40), CGFloat{0.5}),
              NSMakeRect(9.5, 19.5, 31, 41));
}

TEST_F(GeometryTest, PointsAndSizesTravelByValue) {
    EXPECT_EQ(send<NSSize>(receiver_, "turned:"_sel, NSMakeSize(3, 4)), NSMakeSize(4, 3));
}

TEST_F(GeometryTest, ARectangleMayBeAnInstanceVariable) {
    EXPECT_EQ(instanceVariableOf<NSRect>(receiver_, "rect"), NSZeroRect);
    instanceVariableOf<NSRect>(receiver_, "rect") = NSMakeRect(1, 2, 3, 4);
    EXPECT_EQ(instanceVariableOf<NSRect>(receiver_, "rect"), NSMakeRect(1, 2, 3, 4));
    EXPECT_EQ(instanceVariableOf<BOOL>(receiver_, "flag"), NO);
}

TEST_F(GeometryTest, NilAnswersZeros) {
    const NSObject none;
    EXPECT_EQ(send<NSPoint>(none, "cornerOfRect:"_sel, NSMakeRect(1, 2, 3, 4)), NSZeroPoint);
    EXPECT_EQ(send<NSSize>(none, "turned:"_sel, NSMakeSize(3, 4)), NSZeroSize);
    EXPECT_EQ(send<NSRect>(none, "rectAroundPoint:size:margin:"_sel, NSMakePoint(1, 2), NSMakeSize(3, 4),
                           CGFloat{1}),
              NSZeroRect);
}

// The platform's own code reads and writes what this library's structures hold.
TEST_F(GeometryTest, ThePlatformTakesAndGivesTheSameValues) {
    openDisplay();
    const Retained<NSView> view = adopt(NSView::alloc().initWithFrame(NSMakeRect(1, 2, 3, 4)));
    EXPECT_EQ(view.frame(), NSMakeRect(1, 2, 3, 4));
    view.setFrameOrigin(NSMakePoint(-5.25, 6));
    view.setFrameSize(NSMakeSize(7, 8.125));
    EXPECT_EQ(view.frame(), NSMakeRect(-5.25, 6, 7, 8.125));
}

} // namespace
} // namespace tessarin::testing
