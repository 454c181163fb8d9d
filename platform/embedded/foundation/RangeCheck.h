// Whether a range lies within so many items, however large its numbers are.
#pragma once

#include "TessarinPlatform/Types.h"

namespace tessarin::embedded {

inline bool isWithin(NSRange range, NSUInteger count) {
    return range.location <= count && range.length <= count - range.location;
}

} // namespace tessarin::embedded
