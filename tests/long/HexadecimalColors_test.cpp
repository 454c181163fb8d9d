// Every colour of three bytes, opaque: what is read is written as it was.
#include "PlatformTest.h"

#include "TessarinFoundation/NSColor+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class AllHexadecimalColorsTest : public PlatformTest {};

TEST_F(AllHexadecimalColorsTest, AreWrittenAsTheyWereRead) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string string = "000000FF";
    for (std::uint32_t triple = 0; triple < 1u << 24; ++triple) {
        const AutoreleasePool pool;
        for (unsigned digit = 0; digit < 6; ++digit) string[5 - digit] = digits[triple >> 4 * digit & 15];
        const NSColor color = tessarin_colorWithHexadecimalRGBAString(NSString(string));
        ASSERT_EQ(text(tessarin_hexadecimalRGBStringWithAlpha(color, true)), string);
    }
}

} // namespace
} // namespace tessarin::testing
