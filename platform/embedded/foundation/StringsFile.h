// Files of localised texts: "key" = "text"; with comments, which is a property list without its brackets.
#pragma once

#include "TessarinPlatform/NSDictionary.h"

#include <string_view>

namespace tessarin::embedded {

// The texts of a file by their keys, autoreleased; nil for a file that is damaged anywhere. Any property list
// that is a dictionary is taken, most often one of the old text form:
//
//   /* the title of the window */
//   "title" = "Effects \"A\" \U2013 B";   // \U and four hexadecimal digits, or what C writes
//   Cancel = "Annuler";                   // one word needs no quotation marks
//   "OK";                                 // a text that is its own key
NSDictionary textsOfStringsFile(std::string_view bytes);

} // namespace tessarin::embedded
