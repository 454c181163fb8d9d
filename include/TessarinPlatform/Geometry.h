// Points, sizes and rectangles in the platform's coordinates: the origin at the bottom left, y upward.
#pragma once

#include "TessarinPlatform/detail/TypeEncoding.h"

#include <type_traits>

namespace tessarin {

using CGFloat = std::conditional_t<sizeof(void*) == 8, double, float>;

namespace detail {

// The platforms' own names of the structures, as their compiled code encodes them.
template <std::size_t Size>
constexpr EncodedText<Size - 1> geometryName(const char (&name)[Size]) {
    EncodedText<Size - 1> text;
    for (std::size_t index = 0; index + 1 < Size; ++index) text.characters[index] = name[index];
    return text;
}
#if defined(__APPLE__) && defined(__LP64__)
inline constexpr auto pointName = geometryName("CGPoint");
inline constexpr auto sizeName = geometryName("CGSize");
inline constexpr auto rectName = geometryName("CGRect");
#else
inline constexpr auto pointName = geometryName("_NSPoint");
inline constexpr auto sizeName = geometryName("_NSSize");
inline constexpr auto rectName = geometryName("_NSRect");
#endif

} // namespace detail

struct NSPoint {
    CGFloat x;
    CGFloat y;

    friend constexpr bool operator==(NSPoint, NSPoint) = default;
    static constexpr auto typeEncoding() {
        return detail::letter('{') + detail::pointName + detail::letter('=') + detail::encode<CGFloat>()
               + detail::encode<CGFloat>() + detail::letter('}');
    }
};

struct NSSize {
    CGFloat width;
    CGFloat height;

    friend constexpr bool operator==(NSSize, NSSize) = default;
    static constexpr auto typeEncoding() {
        return detail::letter('{') + detail::sizeName + detail::letter('=') + detail::encode<CGFloat>()
               + detail::encode<CGFloat>() + detail::letter('}');
    }
};

struct NSRect {
    NSPoint origin;
    NSSize size;

    friend constexpr bool operator==(NSRect, NSRect) = default;
    static constexpr auto typeEncoding() {
        return detail::letter('{') + detail::rectName + detail::letter('=') + NSPoint::typeEncoding()
               + NSSize::typeEncoding() + detail::letter('}');
    }
};

inline constexpr NSPoint NSZeroPoint{0, 0};
inline constexpr NSSize NSZeroSize{0, 0};
inline constexpr NSRect NSZeroRect{{0, 0}, {0, 0}};

constexpr NSPoint NSMakePoint(CGFloat x, CGFloat y) { return {x, y}; }
constexpr NSSize NSMakeSize(CGFloat width, CGFloat height) { return {width, height}; }
constexpr NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return {{x, y}, {width, height}};
}

} // namespace tessarin
