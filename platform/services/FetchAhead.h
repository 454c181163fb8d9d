// Asking for memory that will be read soon, so that the waits for several places pass together.
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <cstddef>
#include <cstdint>

namespace tessarin {

// Any address will do.
inline void fetchAhead(const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

// The beginning of an object: in most cases what its class keeps, and a short text behind it.
inline void fetchAhead(NSObject object) {
    constexpr std::uintptr_t cacheLine = 64;
    const auto address = reinterpret_cast<std::uintptr_t>(object.object());
    fetchAhead(reinterpret_cast<const void*>(address));
    fetchAhead(reinterpret_cast<const void*>(address + cacheLine));
}

// In a loop that counts references: each count waits for the one before it, and would wait for its object
// too.
inline void fetchAheadOf(const NSObject* objects, std::size_t index, std::size_t count) {
    constexpr std::size_t distance = 16;
    if (count - index > distance) fetchAhead(static_cast<const void*>(objects[index + distance].object()));
}

} // namespace tessarin
