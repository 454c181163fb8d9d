// Which objects are found again by their hash.
#pragma once

#include "TessarinPlatform/NSObject.h"

namespace tessarin {

// Whether an object is compared by the platform's own isEqual: and hash, which agree with each other and
// answer the same at any time and from either side: strings, numbers, dates, data, and objects that equal
// themselves alone. Containers do not count, since they ask their objects, and neither does an object whose
// class overrides one of the two.
TESSARIN_EXPORT bool comparesAsValue(NSObject object);

} // namespace tessarin
