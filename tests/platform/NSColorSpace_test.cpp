#include "KeyedCoding.h"
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class NSColorSpaceTest : public PlatformTest {
protected:
    const std::vector<NSColorSpace> all_ = {
        NSColorSpace::genericRGBColorSpace(),  NSColorSpace::genericGrayColorSpace(),
        NSColorSpace::genericCMYKColorSpace(), NSColorSpace::deviceRGBColorSpace(),
        NSColorSpace::deviceGrayColorSpace(),  NSColorSpace::deviceCMYKColorSpace()};
};

TEST_F(NSColorSpaceTest, IsTheSameObjectEveryTime) {
    EXPECT_EQ(NSColorSpace::genericRGBColorSpace(), all_[0]);
    EXPECT_EQ(NSColorSpace::genericGrayColorSpace(), all_[1]);
    EXPECT_EQ(NSColorSpace::genericCMYKColorSpace(), all_[2]);
    EXPECT_EQ(NSColorSpace::deviceRGBColorSpace(), all_[3]);
    EXPECT_EQ(NSColorSpace::deviceGrayColorSpace(), all_[4]);
    EXPECT_EQ(NSColorSpace::deviceCMYKColorSpace(), all_[5]);
}

TEST_F(NSColorSpaceTest, EqualsNoOther) {
    for (const NSColorSpace left : all_) {
        for (const NSColorSpace right : all_) {
            EXPECT_EQ(left.isEqual(right), left == right);
            if (left == right) {
                EXPECT_EQ(left.hash(), right.hash());
            }
        }
        EXPECT_FALSE(left.isEqual(nil));
        EXPECT_FALSE(left.isEqual("Generic RGB"_ns));
    }
}

TEST_F(NSColorSpaceTest, CountsItsComponentsWithoutAlpha) {
    std::vector<NSInteger> counts;
    for (const NSColorSpace space : all_) counts.push_back(space.numberOfColorComponents());
    EXPECT_EQ(counts, (std::vector<NSInteger>{3, 1, 4, 3, 1, 4}));
}

TEST_F(NSColorSpaceTest, ShowsItsName) {
    EXPECT_EQ(text(all_[0].description()), "Generic RGB colorspace");
    EXPECT_EQ(text(all_[4].description()), "Device Gray colorspace");
}

TEST_F(NSColorSpaceTest, ComesBackFromArchives) {
    for (const NSColorSpace space : all_) expectKeyedCoding(space);
}

} // namespace
} // namespace tessarin::testing
