// Paths of many operators, each of which goes through all objects of the arrays that the one before found.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class EmbeddedKeyPathOperatorsTest : public PlatformTest {
protected:
    // Arrays that hold the same one twice, to a depth; the innermost holds a number.
    static NSArray doubled(int depth) {
        NSArray array = NSArray::arrayOf(NSNumber::numberWithInt(1));
        for (int level = 0; level < depth; ++level) array = NSArray::arrayOf(array, array);
        return array;
    }
    static NSString sums(int count) {
        std::string path;
        for (int number = 0; number < count; ++number) path += "@sum.";
        return NSString(path + "intValue");
    }
    static double real(NSNumber number) { return number.doubleValue(); }
};

TEST_F(EmbeddedKeyPathOperatorsTest, GoThroughArraysThatStandInSeveralPlaces) {
    EXPECT_EQ(real(doubled(10).valueForKeyPath(sums(11))), 1024);
    EXPECT_EQ(real(doubled(3).valueForKeyPath("@sum.@max.@avg.@sum.intValue"_ns)), 2);
}

TEST_F(EmbeddedKeyPathOperatorsTest, ArraysThatStandForTooManyItemsRaise) {
    EXPECT_THROWS_NAMED(doubled(40).valueForKeyPath(sums(41)), "NSInvalidArgumentException");
}

TEST_F(EmbeddedKeyPathOperatorsTest, KeysBetweenTheOperatorsAreNoWayAroundIt) {
    NSArray array = NSArray::arrayOf(NSNumber::numberWithInt(1));
    std::string path = "@sum.intValue";
    for (int level = 0; level < 40; ++level) {
        const NSDictionary inner = NSDictionary::dictionaryWithObject_forKey(array, "inner"_ns);
        array = NSArray::arrayOf(inner, inner);
        path = "@sum.inner." + path;
    }
    EXPECT_THROWS_NAMED(array.valueForKeyPath(NSString(path)), "NSInvalidArgumentException");
}

} // namespace
} // namespace tessarin::testing
