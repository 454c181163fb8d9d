// A string under construction for which there is no memory.
#include "PlatformTest.h"

#include "platform/embedded/foundation/StringStorage.h"

#include <new>

namespace tessarin::embedded {
namespace {

TEST(StringStorageTest, WantOfMemoryLeavesItAsItWas) {
    const std::u16string all(64, u'\u20ac');
    const StringView part(std::u16string_view(all).substr(0, 16));
    StringStorage string;
    string.append(part);
    const StringView endless("", SIZE_MAX / 2, false);
    EXPECT_THROW(string.assign(endless), std::bad_alloc);
    EXPECT_EQ(string.length(), 16u);
    // It has room for no more than before either.
    for (int times = 0; times < 3; ++times) string.append(part);
    EXPECT_TRUE(equalUnits(string.view(), std::u16string_view(all)));
}

} // namespace
} // namespace tessarin::embedded
