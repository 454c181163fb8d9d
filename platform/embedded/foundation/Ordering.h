// Comparing what has an order of its own, in the platform's terms.
#pragma once

#include "TessarinPlatform/Types.h"

namespace tessarin::embedded {

template <class Left, class Right>
NSComparisonResult ordering(const Left& left, const Right& right) {
    if (left < right) return NSOrderedAscending;
    return right < left ? NSOrderedDescending : NSOrderedSame;
}

} // namespace tessarin::embedded
