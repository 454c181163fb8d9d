// How wide the plain types of methods are, against what the platform's compiled code says of its own.
#include "MethodEncodings.h"

namespace tessarin::testing {
namespace {

#if !defined(__APPLE__)

class PlainTypesTest : public PlatformTest {};

TEST_F(PlainTypesTest, EncodingsOfStringsAreTypedAsThePlatformTypesThem) {
    const std::string encoding = encodingOf(NSString::classObject(), "dataUsingEncoding:");
    EXPECT_EQ((ownEncoding<NSData, NSString, NSStringEncoding>()), encoding);
    for (const char* selector : {"tessarin_fileNameByAddingPercentEscapesUsingEncoding:",
                                 "tessarin_fileNameByReplacingPercentEscapesUsingEncoding:"})
        EXPECT_EQ(encodingOf(NSString::classObject(), selector), encoding) << selector;
}

// What stands in the rest of the register where a method answers 32 bits.
std::uint64_t answerFourAndMore(NSColorSpace, SEL) { return 0x7777777700000004; }

TEST_F(PlainTypesTest, TheNumberOfComponentsIsReadInItsWidth) {
    EXPECT_EQ(encodingOf(NSColorSpace::classObject(), "numberOfColorComponents"), "i@:");
    const auto original = native::replaceMethod("NSColorSpace", "numberOfColorComponents", answerFourAndMore);
    ASSERT_NE(original, nullptr);
    EXPECT_EQ(NSColorSpace::genericRGBColorSpace().numberOfColorComponents(), 4);
    native::replaceMethod("NSColorSpace", "numberOfColorComponents", original);
}

#endif

} // namespace
} // namespace tessarin::testing
