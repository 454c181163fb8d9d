#include "platform/embedded/appkit/ColorComponents.h"

#include <algorithm>
#include <cmath>

namespace tessarin::embedded {
namespace {

RGB rgbOf(const ColorComponents& components, ColorModel model) {
    switch (model) {
    case ColorModel::gray:
        return {components[0], components[0], components[0]};
    case ColorModel::rgb:
        return {components[0], components[1], components[2]};
    default:
        break;
    }
    // Black covers what ink leaves of white.
    const CGFloat white = 1 - components[3];
    const auto under = [&](CGFloat ink) { return std::max<CGFloat>(white - ink, 0); };
    return {under(components[0]), under(components[1]), under(components[2])};
}

CGFloat whiteOf(RGB color) {
    if (color.red == color.green && color.green == color.blue) return color.red; // to the last bit
    return CGFloat(0.3) * color.red + CGFloat(0.59) * color.green + CGFloat(0.11) * color.blue;
}

} // namespace

HSB hsbOf(RGB color) {
    const CGFloat largest = std::max({color.red, color.green, color.blue});
    const CGFloat smallest = std::min({color.red, color.green, color.blue});
    const CGFloat spread = largest - smallest;
    HSB result{0, 0, largest};
    if (spread == 0 || largest == 0) return result;
    result.saturation = spread / largest;
    CGFloat sextant = 0;
    if (largest == color.red)
        sextant = (color.green - color.blue) / spread;
    else if (largest == color.green)
        sextant = 2 + (color.blue - color.red) / spread;
    else
        sextant = 4 + (color.red - color.green) / spread;
    result.hue = (sextant > 0 ? sextant : sextant + 6) / 6;
    return result;
}

RGB rgbOf(HSB color) {
    const CGFloat sixfold = color.hue * 6;
    const CGFloat sextant = std::floor(sixfold);
    const CGFloat fraction = sixfold - sextant;
    const CGFloat value = color.brightness;
    const CGFloat none = value * (1 - color.saturation);
    const CGFloat falling = value * (1 - color.saturation * fraction);
    const CGFloat rising = value * (1 - color.saturation * (1 - fraction));
    switch (static_cast<int>(sextant)) {
    case 1:
        return {falling, value, none};
    case 2:
        return {none, value, rising};
    case 3:
        return {none, falling, value};
    case 4:
        return {rising, none, value};
    case 5:
        return {value, none, falling};
    default:
        return {value, rising, none};
    }
}

ColorComponents converted(const ColorComponents& components, ColorModel from, ColorModel to) {
    if (from == to) return components;
    const RGB color = rgbOf(components, from);
    switch (to) {
    case ColorModel::gray:
        return {whiteOf(color)};
    case ColorModel::rgb:
        return {color.red, color.green, color.blue};
    default:
        break;
    }
    if (from == ColorModel::gray) return {0, 0, 0, 1 - components[0]};
    return {1 - color.red, 1 - color.green, 1 - color.blue, 0};
}

} // namespace tessarin::embedded
