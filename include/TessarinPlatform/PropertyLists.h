// What the platform's NSPropertyListSerialization decides about property lists, also where it leaves that
// undone: GNUstep 1.28 calls every object valid and writes what it ought to refuse.
#pragma once

#include "TessarinPlatform/NSPropertyListSerialization.h"

namespace tessarin {

// Whether an object is a property list of a format: what propertyList:isValidForFormat: is for. Strings,
// numbers, booleans, dates, data, arrays and dictionaries with string keys are, nested to any depth; nil, and
// a container that contains itself, are not.
TESSARIN_EXPORT bool isPropertyList(NSObject object, NSPropertyListFormat format);

// A copy of a property list with mutable arrays and dictionaries at every depth and immutable leaves: what
// writing it in binary form and reading that with NSPropertyListMutableContainers gives, which is how a
// platform may go about it. Autoreleased; nil, and an error through `error` unless that is null, for what
// cannot be written or read.
TESSARIN_EXPORT id propertyListWithMutableContainers(NSObject propertyList, NSError* error);

} // namespace tessarin
