// What takes many messages to colours and scanners, done at once.
#pragma once

#include "TessarinPlatform/NSColor.h"

#include <optional>

namespace tessarin {

struct RGBAComponents {
    CGFloat red, green, blue, alpha;
};

// The components of a colour in the generic RGB space, when it is one of the platform's own that allows it.
// Nothing where it is not, and for nil: messages tell then.
TESSARIN_EXPORT std::optional<RGBAComponents> genericRGBComponents(NSColor color);

// The number that a new NSScanner on a string, which is not nil, scans with scanHexInt:, 0 where it finds
// none.
TESSARIN_EXPORT unsigned scannedHexInt(NSString string);

} // namespace tessarin
