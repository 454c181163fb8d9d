// Formatting a number without a formatter, where that takes no message.
#pragma once

#include "TessarinPlatform/NSString.h"

#include <string_view>

namespace tessarin {

// What a new formatter of the behaviour of 10.4 with at most so many fraction digits writes for a number, and
// a text of ASCII behind it. nil where a formatter has to be asked: on a platform whose formatters are its
// own affair, and where a method of theirs was replaced.
TESSARIN_EXPORT NSString formattedNumber(double number, NSUInteger maximumFractionDigits,
                                         std::string_view suffix);

} // namespace tessarin
