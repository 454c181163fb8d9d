// The object that stands for nothing.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class NSNullTest : public PlatformTest {};

TEST_F(NSNullTest, IsTheOnlyOne) {
    EXPECT_TRUE(NSNull::null());
    EXPECT_EQ(NSNull::null(), NSNull::null());
    const Retained<NSNull> copy = adopt(NSNull::null().copy());
    EXPECT_EQ(static_cast<NSObject>(copy), NSNull::null());
    const Retained<NSNull> made = adopt(send<NSNull>(NSNull::classObject().alloc(), "init"_sel));
    EXPECT_EQ(static_cast<NSObject>(made), NSNull::null());
}

TEST_F(NSNullTest, ShowsAsNull) { EXPECT_EQ(text(NSNull::null().description()), "<null>"); }

} // namespace
} // namespace tessarin::testing
