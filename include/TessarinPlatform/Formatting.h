// Handles in std::format, where the standard library has it: an object's description in UTF-8, (null) for
// nil. A format specification is that of a string.
//
//   std::format("{:>10}", array)
//
// TessarinPlatform/FmtFormatting.h does the same for {fmt}.
#pragma once

#include "TessarinPlatform/NSString.h"

#if __has_include(<format>)
#    include <format>
#endif

#if defined(__cpp_lib_format)

template <std::derived_from<tessarin::NSObject> T>
struct std::formatter<T, char> : std::formatter<std::string_view, char> {
    template <class Context>
    auto format(const T& handle, Context& context) const {
        const std::string text = handle ? static_cast<std::string>(handle.description()) : "(null)";
        return std::formatter<std::string_view, char>::format(text, context);
    }
};

#endif
