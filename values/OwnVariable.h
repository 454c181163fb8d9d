// The instance variables of the library's classes, without a look-up by name each time.
#pragma once

#include "TessarinPlatform/Definition.h"

#include <cstddef>

namespace tessarin::values {

// What stands at an instance variable. Its place is the same in every instance of the class that defines it,
// those of derived classes included, so that it is looked up once.
template <class T, tessarin::detail::FixedString Name>
T& ownVariable(NSObject object) {
    auto* const start = reinterpret_cast<std::byte*>(object.object());
    static const std::ptrdiff_t offset =
        static_cast<std::byte*>(runtime::instanceVariableAddress(object.object(), Name.c_str())) - start;
    return *reinterpret_cast<T*>(start + offset);
}

} // namespace tessarin::values
