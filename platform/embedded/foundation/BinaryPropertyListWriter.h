// Writes property lists in binary form.
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <string>

namespace tessarin::embedded {

// The document of an object that is a valid property list. An object that is reached by several ways is
// written once.
std::string writeBinaryPropertyList(NSObject propertyList);

} // namespace tessarin::embedded
