// The instance variables of the library's classes, without a look-up by name each time.
#pragma once

#include "TessarinPlatform/Definition.h"

#include <atomic>
#include <cstddef>

namespace tessarin::values {

// Where an instance variable lies in an object, 0 as long as nobody has asked.
template <tessarin::detail::FixedString Name>
constinit std::atomic<std::ptrdiff_t> ownVariableOffset{0};

template <tessarin::detail::FixedString Name>
[[gnu::cold, gnu::noinline]] std::ptrdiff_t findOwnVariable(NSObject object) {
    const auto* const place =
        static_cast<std::byte*>(runtime::instanceVariableAddress(object.object(), Name.c_str()));
    const std::ptrdiff_t offset = place - reinterpret_cast<std::byte*>(object.object());
    ownVariableOffset<Name>.store(offset, std::memory_order_relaxed);
    return offset;
}

// What stands at an instance variable. Its place is the same in every instance of the class that defines it,
// those of derived classes included, so that it is looked up once.
template <class T, tessarin::detail::FixedString Name>
T& ownVariable(NSObject object) {
    std::ptrdiff_t offset = ownVariableOffset<Name>.load(std::memory_order_relaxed);
    if (offset == 0) [[unlikely]]
        offset = findOwnVariable<Name>(object);
    return *reinterpret_cast<T*>(reinterpret_cast<std::byte*>(object.object()) + offset);
}

} // namespace tessarin::values
