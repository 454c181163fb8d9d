// Number formatters whose methods an application has replaced.
#include "PlatformTest.h"

#include "TessarinFoundation/NSString+TessarinExtensions.h"
#include "TessarinPlatform/NSNumberFormatter.h"

#include <algorithm>

namespace tessarin::testing {
namespace {

Implementation original;

// At most one digit, whatever is asked for.
void setMaximumFractionDigits(NSObject self, SEL selector, NSUInteger digits) {
    detail::call<void>(original, self, selector, std::min<NSUInteger>(digits, 1));
}

TEST(ReplacedNumberFormatterTest, AReplacedSetterIsAsked) {
    const AutoreleasePool pool;
    const auto size = [] {
        return text(tessarin_stringWithFileSize_ofUnit_forPrecision_longUnit_separateSuffix(
            NSNumber::numberWithInt(1280), 65535, 2, false, true));
    };
    EXPECT_EQ(size(), "1.25 kB");
    original = runtime::lookUpInClass("NSNumberFormatter"_class.object(), "setMaximumFractionDigits:"_sel);
    static const ExtensionGroup group{
        "NSNumberFormatter",
        "TessarinTests",
        {instanceMethod("setMaximumFractionDigits:", setMaximumFractionDigits)}};
    EXPECT_EQ(size(), "1.2 kB");
}

} // namespace
} // namespace tessarin::testing
