// The values of hexadecimal digits.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tessarin {
namespace detail {

// Of every unit of 8 bits; -1 for one that is no digit.
inline constexpr auto hexadecimalValues = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (int value = 0; value < 16; ++value) {
        values[static_cast<std::size_t>("0123456789ABCDEF"[value])] = static_cast<std::int8_t>(value);
        values[static_cast<std::size_t>("0123456789abcdef"[value])] = static_cast<std::int8_t>(value);
    }
    return values;
}();

} // namespace detail

// The value of a digit, of a unit of any width; -1 for a unit that is none.
template <class Unit>
constexpr int hexadecimalValue(Unit unit) {
    if constexpr (sizeof(Unit) == 1)
        return detail::hexadecimalValues[static_cast<std::uint8_t>(unit)];
    else
        return unit < detail::hexadecimalValues.size() ? detail::hexadecimalValues[unit] : -1;
}

} // namespace tessarin
