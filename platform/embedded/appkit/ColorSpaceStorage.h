// The colour spaces that the platform has.
#pragma once

#include "TessarinPlatform/NSColorSpace.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <cstdint>
#include <optional>

namespace tessarin::embedded {

enum class ColorModel : std::uint8_t { gray, rgb, cmyk };

// The number of each is the one that keyed archives know it by.
enum class ColorSpaceKind : std::uint8_t {
    genericRGB = 1,
    genericGray,
    genericCMYK,
    deviceRGB,
    deviceGray,
    deviceCMYK
};
inline constexpr ColorSpaceKind lastColorSpaceKind = ColorSpaceKind::deviceCMYK;

constexpr ColorModel modelOf(ColorSpaceKind kind) {
    switch (kind) {
    case ColorSpaceKind::genericGray:
    case ColorSpaceKind::deviceGray:
        return ColorModel::gray;
    case ColorSpaceKind::genericCMYK:
    case ColorSpaceKind::deviceCMYK:
        return ColorModel::cmyk;
    default:
        return ColorModel::rgb;
    }
}

// Without alpha.
constexpr std::size_t componentCountOf(ColorModel model) {
    switch (model) {
    case ColorModel::gray:
        return 1;
    case ColorModel::rgb:
        return 3;
    default:
        return 4;
    }
}

// The object that stands for a space; the same every time.
NSColorSpace colorSpaceOfKind(ColorSpaceKind kind);
// None for an object that stands for no space, such as one that alloc and init have made.
std::optional<ColorSpaceKind> kindOfColorSpace(NSColorSpace space);

} // namespace tessarin::embedded
