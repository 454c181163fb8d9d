#include "TessarinPlatform/ColorReading.h"

#include "TessarinPlatform/NSScanner.h"

namespace tessarin {

// How the platform's colours keep their components is their own affair.
std::optional<RGBAComponents> genericRGBComponents(NSColor) { return {}; }

unsigned scannedHexInt(NSString string) {
    unsigned value = 0;
    NSScanner::scannerWithString(string).scanHexInt(&value);
    return value;
}

} // namespace tessarin
