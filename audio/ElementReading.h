// Numbers out of the arrays of stream formats and parameter descriptions.
#pragma once

#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSNumber.h"

#include <cstdint>

namespace tessarin::audio {

// What stands in the array is asked, whatever object it is.
inline NSNumber numberAt(NSArray array, NSUInteger index) { return array.objectAtIndex(index); }

// The low 32 bits of what it answers.
inline std::uint32_t unsigned32At(NSArray array, NSUInteger index) {
    return static_cast<std::uint32_t>(numberAt(array, index).unsignedLongValue());
}

} // namespace tessarin::audio
