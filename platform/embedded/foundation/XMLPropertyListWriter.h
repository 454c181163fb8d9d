// Writes property lists in XML form.
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <limits>
#include <string>

namespace tessarin::embedded {

// In place of a count, for a list that is known to hold each container in one place.
inline constexpr std::size_t sharesNothing = std::numeric_limits<std::size_t>::max() / 16;

// The document of an object that is a valid property list, in the platform's own form to the byte: sorted
// keys, tabs, UTF-8. Dates lose their fractions of a second. An unpaired surrogate, which UTF-8 cannot hold,
// is written as U+FFFD, so that any XML reader accepts the document; other control characters stand as they
// are.
//
// The form has no way to say that a container stands in several places, each of which gets all of it. Of a
// list that holds `objectCount` objects, each container counted once, more than 16 times as many are written
// up to 64 MiB only.
//
// Throws PropertyListProblem beyond that, and for a date that has no written form.
std::string writeXMLPropertyList(NSObject propertyList, std::size_t objectCount = sharesNothing);

} // namespace tessarin::embedded
