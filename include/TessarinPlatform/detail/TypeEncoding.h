// The Objective-C runtimes' type encodings, derived from C++ types at compile time.
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <array>
#include <string_view>

namespace tessarin::detail {

// A compile-time string of known length.
template <std::size_t Length>
struct EncodedText {
    std::array<char, Length + 1> characters{};
    constexpr const char* c_str() const { return characters.data(); }
    constexpr std::string_view view() const { return {characters.data(), Length}; }
};

template <std::size_t Left, std::size_t Right>
constexpr EncodedText<Left + Right> operator+(const EncodedText<Left>& left,
                                              const EncodedText<Right>& right) {
    EncodedText<Left + Right> both;
    for (std::size_t index = 0; index < Left; ++index) both.characters[index] = left.characters[index];
    for (std::size_t index = 0; index < Right; ++index)
        both.characters[Left + index] = right.characters[index];
    return both;
}

constexpr EncodedText<1> letter(char character) {
    EncodedText<1> text;
    text.characters[0] = character;
    return text;
}

template <class T>
constexpr char integerLetter() {
    constexpr bool isSigned = std::is_signed_v<T>;
    if constexpr (std::is_same_v<T, long>)
        return sizeof(long) == 8 ? 'q' : 'l';
    else if constexpr (std::is_same_v<T, unsigned long>)
        return sizeof(long) == 8 ? 'Q' : 'L';
    else if constexpr (sizeof(T) == 1)
        return isSigned ? 'c' : 'C';
    else if constexpr (sizeof(T) == 2)
        return isSigned ? 's' : 'S';
    else if constexpr (sizeof(T) == 4)
        return isSigned ? 'i' : 'I';
    else
        return isSigned ? 'q' : 'Q';
}

template <class T>
constexpr auto encode() {
    if constexpr (std::is_void_v<T>)
        return letter('v');
    else if constexpr (std::is_same_v<T, Class>)
        return letter('#');
    else if constexpr (std::derived_from<T, NSObject>)
        return letter('@');
    else if constexpr (std::is_same_v<T, SEL>)
        return letter(':');
    else if constexpr (std::is_same_v<T, bool>)
        return letter('B');
    else if constexpr (std::is_same_v<T, char*> || std::is_same_v<T, const char*>)
        return letter('*');
    else if constexpr (std::is_pointer_v<T>) {
        using Target = std::remove_cv_t<std::remove_pointer_t<T>>;
        if constexpr (std::is_function_v<Target>)
            return letter('^') + letter('?');
        else if constexpr (std::derived_from<Target, NSObject>)
            return letter('^') + letter('@');
        else
            return letter('^') + letter('v');
    } else if constexpr (std::is_enum_v<T>)
        return letter(integerLetter<std::underlying_type_t<T>>());
    else if constexpr (std::is_integral_v<T>)
        return letter(integerLetter<T>());
    else if constexpr (std::is_same_v<T, float>)
        return letter('f');
    else if constexpr (std::is_same_v<T, double>)
        return letter('d');
    else
        return T::typeEncoding(); // a structure that says its own encoding
}

template <>
constexpr auto encode<NSRange>() {
    return letter('{') + letter('_') + letter('N') + letter('S') + letter('R') + letter('a') + letter('n')
           + letter('g') + letter('e') + letter('=') + encode<NSUInteger>() + encode<NSUInteger>()
           + letter('}');
}

template <class T>
inline constexpr auto encodingOf = encode<T>();

// Result, receiver, selector, arguments.
template <class Result, class Self, class... Arguments>
inline constexpr auto methodEncoding = ((encode<Result>() + encode<Self>() + letter(':')) + ...
                                        + encode<Arguments>());

} // namespace tessarin::detail
