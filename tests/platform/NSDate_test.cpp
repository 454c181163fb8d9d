// Points in time.
#include "PlatformTest.h"

#include "TessarinPlatform/NSDate.h"

#include <chrono>

namespace tessarin::testing {
namespace {

class NSDateTest : public PlatformTest {
protected:
    static NSDate at(NSTimeInterval seconds) {
        return NSDate::dateWithTimeIntervalSinceReferenceDate(seconds);
    }
};

TEST_F(NSDateTest, CountsFromTheYear2001) {
    EXPECT_EQ(at(1.5).timeIntervalSinceReferenceDate(), 1.5);
    EXPECT_EQ(at(0).timeIntervalSince1970(), 978307200.0);
    EXPECT_EQ(NSDate::dateWithTimeIntervalSince1970(0).timeIntervalSinceReferenceDate(), -978307200.0);
}

TEST_F(NSDateTest, KnowsTheTimeOfDay) {
    const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
    EXPECT_NEAR(NSDate::date().timeIntervalSince1970(), now.count(), 5);
}

TEST_F(NSDateTest, ComparesByTime) {
    EXPECT_EQ(at(1).compare(at(2)), NSOrderedAscending);
    EXPECT_EQ(at(2).compare(at(1)), NSOrderedDescending);
    EXPECT_EQ(at(2).compare(at(2)), NSOrderedSame);
    EXPECT_EQ(send<NSDate>(at(1), "earlierDate:"_sel, at(2)).timeIntervalSinceReferenceDate(), 1);
    EXPECT_EQ(send<NSDate>(at(1), "laterDate:"_sel, at(2)).timeIntervalSinceReferenceDate(), 2);
    EXPECT_EQ(send<double>(at(5), "timeIntervalSinceDate:"_sel, at(2)), 3);
}

TEST_F(NSDateTest, EqualsADateOfTheSameTime) {
    EXPECT_TRUE(at(1.25).isEqual(at(1.25)));
    EXPECT_TRUE(at(1.25).isEqualToDate(at(1.25)));
    EXPECT_EQ(at(1.25).hash(), at(1.25).hash());
    EXPECT_FALSE(at(1).isEqual(at(2)));
    EXPECT_FALSE(at(1).isEqual(NSNumber::numberWithInt(1)));
    EXPECT_FALSE(at(1).isEqual(nil));
}

TEST_F(NSDateTest, IsItsOwnCopy) {
    const Retained<NSDate> copy = adopt(at(7).copy());
    EXPECT_TRUE(copy.isEqual(at(7)));
}

} // namespace
} // namespace tessarin::testing
