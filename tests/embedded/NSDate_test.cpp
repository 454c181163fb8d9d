// What the embedded platform promises of dates beyond the platform's own contract.
#include "PlatformTest.h"

#include <limits>

namespace tessarin::testing {
namespace {

class EmbeddedDateTest : public PlatformTest {};

TEST_F(EmbeddedDateTest, BeyondTheCalendarADateShowsItsSecondsInFull) {
    const auto shown = [](double seconds) {
        return text(NSDate::dateWithTimeIntervalSince1970(seconds).description());
    };
    EXPECT_EQ(shown(1e40), "10000000000000000303786028427003666890752 seconds since 1970-01-01");
    const std::string furthest = shown(std::numeric_limits<double>::lowest());
    EXPECT_EQ(furthest.size(), 310 + std::string(" seconds since 1970-01-01").size());
    EXPECT_TRUE(furthest.ends_with(" seconds since 1970-01-01"));
}

} // namespace
} // namespace tessarin::testing
