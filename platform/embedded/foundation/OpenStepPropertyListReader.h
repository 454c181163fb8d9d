// Reads property lists in the old text form, of which files of localised texts are a kind:
//
//   {
//       name = "Plate \U2013 long";   // \U and hexadecimal digits, octal digits, or what C writes
//       sends = (left, right);        // a word of letters, digits and _$/:.- needs no quotation marks
//       state = <0fbd77 1c2735ae>;    // data
//   }
#pragma once

#include "TessarinPlatform/NSPropertyListSerialization.h"
#include "TessarinPlatform/Retained.h"

#include <string_view>

namespace tessarin::embedded {

// The property list that a text of any origin, in well-formed UTF-8, holds; never nil. It consists of
// strings, data, arrays and dictionaries. As on the platform: a dictionary at the outside may lack its
// brackets, and a key its value, which then is the key; white space alone is an empty dictionary; a comma may
// follow an array's last item; an escaped character without a meaning of its own stands for itself; octal
// digits name a character of the NEXTSTEP encoding. Of equal keys in one dictionary the last counts.
//
// Throws PropertyListProblem, naming the line, for everything that is no property list.
Retained<NSObject> readOpenStepPropertyList(std::string_view text,
                                            NSPropertyListMutabilityOptions mutability);

} // namespace tessarin::embedded
