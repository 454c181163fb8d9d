#include "TessarinPlatform/NumberFormatting.h"

namespace tessarin {

// How the platform's formatters write is their own affair.
NSString formattedNumber(double, NSUInteger, std::string_view) { return nil; }

} // namespace tessarin
