// Objects that only answer for another class have none of its data.
#include "PlatformTest.h"

#include <cstdint>

namespace tessarin::testing {
namespace {

class StandInTest : public PlatformTest {
protected:
    // Its data would be taken for those of a colour space, if they were read.
    static Retained<NSObject> newStandIn() {
        static const ClassDefinition definition{
            {.name = "StandInTestObject",
             .instanceVariables = {instanceVariable<std::uint64_t>("data")},
             .methods = {instanceMethod(
                 "isKindOfClass:", +[](NSObject, SEL, Class) -> BOOL { return YES; })}}};
        Retained<NSObject> standIn =
            adopt(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel));
        instanceVariableOf<std::uint64_t>(standIn, "data") = 0x0101'0101'0101'0101;
        return standIn;
    }
    const Retained<NSObject> standIn_ = newStandIn();
};

TEST_F(StandInTest, IsNoItemAndNoSubmenu) {
    const Retained<NSMenu> menu = adopt(NSMenu::alloc().initWithTitle("menu"_ns));
    menu.addItem(NSMenuItem::separatorItem());
    EXPECT_THROWS_NAMED(menu.addItem(as<NSMenuItem>(standIn_)), "NSInvalidArgumentException");
    EXPECT_EQ(menu.indexOfItem(as<NSMenuItem>(standIn_)), -1);
    EXPECT_THROWS_NAMED(menu.itemAtIndex(0).setSubmenu(as<NSMenu>(standIn_)), "NSInvalidArgumentException");
}

TEST_F(StandInTest, IsNoView) {
    const NSView view = as<NSView>(standIn_);
    const Retained<NSScrollView> outer = adopt(NSScrollView::alloc().initWithFrame(NSZeroRect));
    EXPECT_THROWS_NAMED(outer.addSubview(view), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(outer.setDocumentView(view), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(outer.setHorizontalScroller(as<NSScroller>(standIn_)), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(outer.setVerticalScroller(as<NSScroller>(standIn_)), "NSInvalidArgumentException");
    const Retained<NSWindow> window = adopt(NSWindow::alloc().initWithContentRect_styleMask_backing_defer(
        NSZeroRect, NSTitledWindowMask, NSBackingStoreBuffered, true));
    EXPECT_THROWS_NAMED(window.setContentView(view), "NSInvalidArgumentException");
}

TEST_F(StandInTest, IsNoColourSpaceToMakeAColourIn) {
    const CGFloat components[] = {1, 0, 0, 1};
    EXPECT_FALSE(NSColor::colorWithColorSpace_components_count(as<NSColorSpace>(standIn_), components, 4));
}

TEST_F(StandInTest, EqualsNoColourNoColourSpaceAndNoIndexSet) {
    EXPECT_FALSE(NSColor::colorWithCalibratedRed_green_blue_alpha(1, 0, 0, 1).isEqual(standIn_));
    EXPECT_FALSE(NSColorSpace::genericRGBColorSpace().isEqual(standIn_));
    EXPECT_FALSE(NSIndexSet::indexSetWithIndex(3).isEqual(standIn_));
}

TEST_F(StandInTest, GivesAnIndexSetNoIndexes) {
    const auto set = as<NSIndexSet>(standIn_);
    EXPECT_THROWS_NAMED(adopt(NSIndexSet::alloc().initWithIndexSet(set)), "NSInvalidArgumentException");
    const NSMutableIndexSet indexes = NSMutableIndexSet::indexSet();
    EXPECT_THROWS_NAMED((indexes.addIndexes(set), 0), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED((indexes.removeIndexes(set), 0), "NSInvalidArgumentException");
}

TEST_F(StandInTest, IsAKeyOfAnArchivedDictionaryLikeAnyOther) {
    static const ClassDefinition definition{
        {.name = "StandInTestKey",
         .protocols = {"NSCoding", "NSCopying"},
         .methods = {instanceMethod(
                         "isKindOfClass:",
                         +[](NSObject, SEL, Class asked) -> BOOL {
                             return asked == NSMutableIndexSet::classObject();
                         }),
                     instanceMethod(
                         "copyWithZone:", +[](NSObject self, SEL, void*) { return retain(self).leak(); }),
                     instanceMethod(
                         "encodeWithCoder:", +[](NSObject, SEL, NSCoder) {}),
                     instanceMethod(
                         "initWithCoder:", +[](NSObject self, SEL, NSCoder) { return self; })}}};
    const Retained<NSObject> key = adopt(NSObject(definition.classObject().alloc()));
    const NSData archive =
        NSKeyedArchiver::archivedDataWithRootObject(NSDictionary::dictionaryWithObject_forKey("v"_ns, key));
    const NSDictionary back = NSKeyedUnarchiver::unarchiveObjectWithData(archive);
    ASSERT_EQ(back.count(), 1u);
    EXPECT_EQ(NSObject(back.allKeys().objectAtIndex(0)).class_(), definition.classObject());
}

} // namespace
} // namespace tessarin::testing
