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

#endif

} // namespace
} // namespace tessarin::testing
