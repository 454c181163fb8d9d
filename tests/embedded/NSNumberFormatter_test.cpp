// Numbers of fraction digits that only the embedded platform's formatter promises to stand.
#include "PlatformTest.h"

#include <limits>

namespace tessarin::testing {
namespace {

class EmbeddedNumberFormatterTest : public PlatformTest {
protected:
    const Retained<NSNumberFormatter> formatter = adopt(NSNumberFormatter::alloc().init());

    std::string shown(double number) const {
        return text(formatter.stringFromNumber(NSNumber::numberWithDouble(number)));
    }
};

TEST_F(EmbeddedNumberFormatterTest, ANegativeMaximumIsSix) {
    for (const NSUInteger digits : {NSUInteger{2147483648}, NSUInteger{4294967290}}) {
        formatter.setMaximumFractionDigits(digits);
        EXPECT_EQ(formatter.maximumFractionDigits(), digits);
        EXPECT_EQ(shown(2.0 / 3), "0.666667");
    }
}

TEST_F(EmbeddedNumberFormatterTest, ANegativeMinimumIsNone) {
    formatter.setMinimumFractionDigits(std::numeric_limits<NSUInteger>::max());
    EXPECT_EQ(shown(2), "2");
}

TEST_F(EmbeddedNumberFormatterTest, AHugeMinimumIsNotTakenAtItsWord) {
    formatter.setMinimumFractionDigits(2147483647);
    EXPECT_EQ(shown(2), "2." + std::string(340, '0'));
    EXPECT_EQ(shown(2.2250738585072014e-308),
              "0." + std::string(307, '0') + "22250738585072014" + std::string(16, '0'));
}

TEST_F(EmbeddedNumberFormatterTest, TheSeparatorIsTheUsersAgainOnceItIsNil) {
    const std::string users = text(formatter.decimalSeparator());
    formatter.setDecimalSeparator("!"_ns);
    formatter.setDecimalSeparator(nil);
    EXPECT_EQ(text(formatter.decimalSeparator()), users);
}

} // namespace
} // namespace tessarin::testing
