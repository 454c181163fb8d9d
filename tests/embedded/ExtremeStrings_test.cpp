// Extreme strings, which the embedded platform promises to get through in time and without exhausting
// anything.
#include "PlatformTest.h"

#include <limits>
#include <string>

namespace tessarin::testing {
namespace {

class ExtremeStringTest : public PlatformTest {};

TEST_F(ExtremeStringTest, ManyMarksOnOneLetter) {
    std::u16string marks(200000, u'\u0301');
    for (std::size_t index = 0; index < marks.size(); index += 2) marks[index] = u'\u0323';
    std::u16string ordered = u"a" + std::u16string(100000, u'\u0323') + std::u16string(100000, u'\u0301');
    EXPECT_EQ(NSString(std::u16string_view(u"a" + marks)).compare(NSString(std::u16string_view(ordered))),
              NSOrderedSame);
}

TEST_F(ExtremeStringTest, SplitsLongRepetitiveTextAtLongSeparatorInTime) {
    const NSString whole(std::string(400000, 'a'));
    const NSString separator(std::string(200000, 'a') + "b");
    EXPECT_EQ(whole.componentsSeparatedByString(separator).count(), 1u);
    EXPECT_EQ(whole.componentsSeparatedByString(NSString(std::string(100000, 'a'))).count(), 5u);
}

TEST_F(ExtremeStringTest, HugeWidthsAreCut) {
    EXPECT_LT(NSString::stringWithFormat("%2147483647d"_ns, 1).length(), 10000000u);
    EXPECT_LT(NSString::stringWithFormat("%.2147483647d"_ns, 1).length(), 10000000u);
    EXPECT_LT(NSString::stringWithFormat("%99999999999999999999f"_ns, 1.0).length(), 10000000u);
    EXPECT_LT(NSString::stringWithFormat("%*d"_ns, -2147483647 - 1, 1).length(), 10000000u);
}

TEST_F(ExtremeStringTest, TheSmallestIntegerAsAWidthIsTheLargestFieldToTheLeft) {
    const NSString shown =
        NSString::stringWithFormat("%1$lld|%2$*1$d"_ns, std::numeric_limits<long long>::min(), 7);
    EXPECT_EQ(text(shown.substringToIndex(23)), "-9223372036854775808|7 ");
    EXPECT_EQ(shown.length(), NSString::stringWithFormat("%*d"_ns, -2147483647, 7).length() + 21);
}

} // namespace
} // namespace tessarin::testing
