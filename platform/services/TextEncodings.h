// Text in the encodings that the platform knows, from and to 16-bit units. No conversion puts one character
// in the place of another: what can be written is read back as it was.
#pragma once

#include "TessarinPlatform/StringEncodings.h"

#include <string>
#include <string_view>

namespace tessarin::encodings {

// Appends the units that bytes stand for. False when they are no text in the encoding, or it is not known;
// what was appended then means nothing.
bool decode(CFStringEncoding encoding, std::string_view bytes, std::u16string& units);

// Appends the bytes that stand for units. False when the encoding lacks one of them, or is not known; what
// was appended then means nothing.
bool encode(CFStringEncoding encoding, std::u16string_view units, std::string& bytes);

} // namespace tessarin::encodings
