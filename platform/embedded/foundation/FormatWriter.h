// Writes the conversions of a format.
#pragma once

#include "platform/embedded/foundation/FormatPieces.h"
#include "platform/embedded/foundation/StringStorage.h"

#include <span>

namespace tessarin::embedded::format {

// Appends a conversion with its arguments, which are among all those of the format.
void write(StringStorage& result, const Piece& conversion, std::span<const Argument> arguments);

} // namespace tessarin::embedded::format
