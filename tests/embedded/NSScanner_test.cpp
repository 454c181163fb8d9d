// What scanners do beyond what every platform does.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class NSScannerInsidesTest : public PlatformTest {};

TEST_F(NSScannerInsidesTest, AHexadecimalNumberMayNotBeWanted) {
    const NSScanner scanner = NSScanner::scannerWithString("FF x"_ns);
    EXPECT_TRUE(scanner.scanHexInt(nullptr));
    EXPECT_EQ(scanner.scanLocation(), 2u);
    EXPECT_FALSE(scanner.scanHexInt(nullptr));
}

TEST_F(NSScannerInsidesTest, NilArgumentsRaise) {
    EXPECT_THROWS_NAMED(NSScanner::scannerWithString(nil), "NSInvalidArgumentException");
    const NSScanner scanner = NSScanner::scannerWithString("text"_ns);
    EXPECT_THROWS_NAMED(scanner.scanString_intoString(nil, nullptr), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(scanner.scanUpToString_intoString(nil, nullptr), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(scanner.scanCharactersFromSet_intoString(nil, nullptr), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(scanner.scanUpToCharactersFromSet_intoString(nil, nullptr),
                        "NSInvalidArgumentException");
}

TEST_F(NSScannerInsidesTest, OneWithoutAStringIsAtItsEnd) {
    const Retained<NSScanner> scanner = adopt(NSScanner(send<NSObject>(NSScanner::alloc(), "init"_sel)));
    EXPECT_TRUE(scanner.isAtEnd());
    EXPECT_FALSE(scanner.scanInt(nullptr));
    EXPECT_FALSE(scanner.scanUpToString_intoString("x"_ns, nullptr));
}

} // namespace
} // namespace tessarin::testing
