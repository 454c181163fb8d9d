// Numbers that stand for YES and NO.
#pragma once

#include "TessarinPlatform/NSNumber.h"

namespace tessarin {

// Whether a number is one. Platforms keep a BOOL as a char or as the type of its own that C has.
inline bool isBoolean(NSNumber number) {
    const char type = number.objCType()[0];
    return type == 'c' || type == 'C' || type == 'B';
}

} // namespace tessarin
