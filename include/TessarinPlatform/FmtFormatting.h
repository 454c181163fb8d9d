// Handles in {fmt}: an object's description in UTF-8, (null) for nil. A format specification is that of a
// string.
//
//   fmt::format("{:>10}", array)
#pragma once

#include "TessarinPlatform/NSString.h"

#if __has_include(<fmt/format.h>)

#    include <fmt/format.h>

template <std::derived_from<tessarin::NSObject> T>
struct fmt::formatter<T, char> : fmt::formatter<std::string_view, char> {
    template <class Context>
    auto format(const T& handle, Context& context) const {
        const std::string text = handle ? static_cast<std::string>(handle.description()) : "(null)";
        return fmt::formatter<std::string_view, char>::format(text, context);
    }
};

#endif
