// Strings that hold just the given text, whatever the platform's own initialisers make of it.
#pragma once

#include "TessarinPlatform/NSString.h"
#include "TessarinPlatform/Retained.h"

#include <string_view>

namespace tessarin {

// nil for ill-formed UTF-8. A byte-order mark is text like any other.
Retained<NSString> exactString(std::string_view text);
// Any sequence of 16-bit units, unpaired surrogates and byte-order marks included.
Retained<NSString> exactString(std::u16string_view units);

} // namespace tessarin
