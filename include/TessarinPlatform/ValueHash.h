// The hash and the equality of values, without a message where the platform can do so.
#pragma once

#include "TessarinPlatform/ValueComparison.h"

namespace tessarin {

// The hash of an object that compares as a value (comparesAsValue), never 0; 0 for any other.
TESSARIN_EXPORT NSUInteger hashOfValue(NSObject object);
// Whether two objects that compare as values are equal.
TESSARIN_EXPORT bool areEqualValues(NSObject left, NSObject right);

} // namespace tessarin
