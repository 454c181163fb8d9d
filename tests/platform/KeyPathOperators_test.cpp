// Key paths that gather one value from the objects of an array.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class KeyPathOperatorsTest : public PlatformTest {
protected:
    static NSDictionary track(int gain) {
        return NSDictionary::dictionaryWithObject_forKey(NSNumber::numberWithInt(gain), "gain"_ns);
    }
    static double real(NSNumber number) { return number.doubleValue(); }
    const NSArray tracks_ = NSArray::arrayOf(track(3), track(-1), track(4));
};

TEST_F(KeyPathOperatorsTest, CountTheObjects) {
    EXPECT_EQ(real(tracks_.valueForKeyPath("@count"_ns)), 3);
    EXPECT_EQ(real(NSArray::array().valueForKeyPath("@count"_ns)), 0);
}

TEST_F(KeyPathOperatorsTest, SumAndAverage) {
    EXPECT_EQ(real(tracks_.valueForKeyPath("@sum.gain"_ns)), 6);
    EXPECT_EQ(real(tracks_.valueForKeyPath("@avg.gain"_ns)), 2);
    EXPECT_EQ(real(NSArray::array().valueForKeyPath("@sum.gain"_ns)), 0);
}

TEST_F(KeyPathOperatorsTest, FindTheExtremes) {
    EXPECT_EQ(real(tracks_.valueForKeyPath("@min.gain"_ns)), -1);
    EXPECT_EQ(real(tracks_.valueForKeyPath("@max.gain"_ns)), 4);
    EXPECT_FALSE(NSArray::array().valueForKeyPath("@max.gain"_ns));
}

TEST_F(KeyPathOperatorsTest, WorkAtTheEndOfAPath) {
    const NSDictionary song = NSDictionary::dictionaryWithObject_forKey(tracks_, "tracks"_ns);
    EXPECT_EQ(real(song.valueForKeyPath("tracks.@max.gain"_ns)), 4);
    EXPECT_EQ(real(NSArray::arrayOf("a"_ns, "bcd"_ns).valueForKeyPath("@sum.length"_ns)), 4);
}

TEST_F(KeyPathOperatorsTest, AKeyThatTheObjectsDoNotKnowRaises) {
    EXPECT_THROWS_NAMED(NSArray::arrayOf("a"_ns).valueForKeyPath("@sum.nope"_ns), "NSUnknownKeyException");
}

} // namespace
} // namespace tessarin::testing
