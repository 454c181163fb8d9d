// What other platforms do not bear: bytes appended from where they are.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class NSMutableDataTest : public PlatformTest {};

TEST_F(NSMutableDataTest, AppendsItself) {
    const Retained<NSData> data = adopt(NSData::dataWithBytes_length("ab", 2).mutableCopy());
    for (int time = 0; time < 10; ++time) send<void>(data, "appendData:"_sel, data);
    EXPECT_EQ(data.length(), 2048u);
    EXPECT_EQ(std::string(static_cast<const char*>(data.bytes()) + 2044, 4), "abab");
}

TEST_F(NSMutableDataTest, AppendsAPartOfItself) {
    const Retained<NSData> data = adopt(NSData::dataWithBytes_length("abcd", 4).mutableCopy());
    const void* part = static_cast<const char*>(data.bytes()) + 1;
    send<void>(data, "appendBytes:length:"_sel, part, NSUInteger{2});
    EXPECT_EQ(std::string(static_cast<const char*>(data.bytes()), data.length()), "abcdbc");
}

} // namespace
} // namespace tessarin::testing
