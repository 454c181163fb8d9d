// Takes a format apart.
#pragma once

#include "platform/embedded/foundation/FormatPieces.h"
#include "platform/embedded/foundation/StringStorage.h"

#include <vector>

namespace tessarin::embedded::format {

struct ParsedFormat {
    std::vector<Piece> pieces;
    std::vector<Argument> arguments; // in their order: their kinds, without values
};

ParsedFormat parse(StringView format);

} // namespace tessarin::embedded::format
