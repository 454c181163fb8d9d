// Whether an object is a property list: strings, numbers, booleans, dates, data, the references of keyed
// archives, arrays, and dictionaries with string keys, nested to any depth. Written over handles, so it
// serves platforms that lack the question or answer YES to everything.
#pragma once

#include "TessarinPlatform/NSPropertyListSerialization.h"

#include <string>

namespace tessarin {

// Why an object is no property list of a format, in the platform's wording; empty when it is one. A container
// may be reached by several ways, but not from itself. Takes time in proportion to what the list holds, each
// container counted once, and no stack.
std::string propertyListDefect(NSObject object, NSPropertyListFormat format);

} // namespace tessarin
