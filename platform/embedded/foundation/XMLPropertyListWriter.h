// Writes property lists in XML form.
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <string>

namespace tessarin::embedded {

// The document of an object that is a valid property list, in the platform's own form to the byte: sorted
// keys, tabs, UTF-8. Dates lose their fractions of a second. An unpaired surrogate, which UTF-8 cannot hold,
// is written as U+FFFD, so that any XML reader accepts the document; other control characters stand as they
// are.
//
// Throws PropertyListProblem for a date that has no written form.
std::string writeXMLPropertyList(NSObject propertyList);

} // namespace tessarin::embedded
