// A string literal as a template argument: what names a selector, class, protocol or constant string at
// compile time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace tessarin::detail {

template <class Character, std::size_t Size>
struct FixedString {
    // Implicit, so that a literal can stand where a FixedString template argument is wanted.
    consteval FixedString(const Character (&literal)[Size]) { std::copy_n(literal, Size, characters); }

    static constexpr std::size_t length = Size - 1;
    constexpr const Character* c_str() const { return characters; }
    constexpr std::basic_string_view<Character> view() const { return {characters, length}; }

    Character characters[Size];
};

} // namespace tessarin::detail
