// The references of keyed archives. In a property list each is an object of its own kind, which other callers
// of property lists can pass on but not look into.
#pragma once

#include "TessarinPlatform/Retained.h"

#include <cstdint>
#include <optional>

namespace tessarin::embedded {

Retained<NSObject> newKeyedArchiverUID(std::uint32_t value);
void setKeyedArchiverUID(NSObject uid, std::uint32_t value);

// The value of such an object; nothing for any other.
std::optional<std::uint32_t> keyedArchiverUID(NSObject object);

} // namespace tessarin::embedded
