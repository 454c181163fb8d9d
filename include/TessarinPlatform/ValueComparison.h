// Which objects are found again by their hash, and where.
#pragma once

#include "TessarinPlatform/NSArray.h"

namespace tessarin {

// Whether an object is compared by the platform's own isEqual: and hash, which agree with each other and
// answer the same at any time and from either side: strings, numbers, dates, data, and objects that equal
// themselves alone. Containers do not count, since they ask their objects; neither does nil, nor an object of
// an application's class derived from one of these.
TESSARIN_EXPORT bool comparesAsValue(NSObject object);

// Whether an array is of the platform's own classes, so that it searches as the platform does: for the first
// object that equals the one searched for. An application's subclass may search otherwise.
TESSARIN_EXPORT bool searchesByEquality(NSArray array);

} // namespace tessarin
