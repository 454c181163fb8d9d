// Handles on C++ streams.
#pragma once

#include "TessarinPlatform/NSString.h"

#include <ostream>

namespace tessarin {

// Writes an object's description in UTF-8, (null) for nil.
inline std::ostream& operator<<(std::ostream& stream, NSObject object) {
    if (!object) return stream << "(null)";
    return stream << static_cast<std::string>(object.description());
}

} // namespace tessarin
