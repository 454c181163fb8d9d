// Reads property lists in XML form.
#pragma once

#include "TessarinPlatform/NSPropertyListSerialization.h"
#include "TessarinPlatform/Retained.h"

#include <string_view>

namespace tessarin::embedded {

// The property list that a text of any origin, in well-formed UTF-8, holds; never nil. The <plist> element
// may be missing. What follows the property list is not looked at, which is meant: the platform does not
// either, and files with a tail are about.
//
// Stricter than the platform, which passes over some of it: a <key> outside of a dictionary, a <plist> inside
// of the property list, and damaged base64 are refused. Of equal keys in one dictionary the last counts, as
// there.
//
// Throws PropertyListProblem, naming the line, for everything that is no property list.
Retained<NSObject> readXMLPropertyList(std::string_view text, NSPropertyListMutabilityOptions mutability);

} // namespace tessarin::embedded
