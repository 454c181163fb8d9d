#include "InterfaceTest.h"

namespace tessarin::testing {
namespace {

class NSScreenTest : public InterfaceTest {};

TEST_F(NSScreenTest, TheMainScreenIsTheFirst) {
    ASSERT_EQ(NSScreen::screens().count(), 1u);
    EXPECT_EQ(NSScreen::mainScreen(), NSScreen::screens().firstObject());
    EXPECT_TRUE(NSScreen::mainScreen().isKindOfClass(NSScreen::classObject()));
}

TEST_F(NSScreenTest, HasAFrame) { EXPECT_EQ(NSScreen::mainScreen().frame(), NSMakeRect(0, 0, 1440, 900)); }

TEST_F(NSScreenTest, WithoutMenuBarAndDockItIsAllVisible) {
    EXPECT_EQ(NSScreen::mainScreen().visibleFrame(), NSMakeRect(0, 0, 1440, 900));
}

TEST_F(NSScreenTest, NilHasNoFrame) {
    EXPECT_EQ(NSScreen().frame(), NSZeroRect);
    EXPECT_EQ(NSScreen().visibleFrame(), NSZeroRect);
}

} // namespace
} // namespace tessarin::testing
