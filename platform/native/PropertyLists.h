// A property list's way through the bytes and back, on platforms that refuse what is none.
#pragma once

#include "TessarinPlatform/NSPropertyListSerialization.h"

namespace tessarin {

// Writes the property list in binary form and reads it with NSPropertyListMutableContainers. nil and the
// platform's error where one of the two fails.
id writtenAndRead(NSObject propertyList, NSError* error);

} // namespace tessarin
