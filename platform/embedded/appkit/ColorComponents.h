// What colours are made of, and how the components of one model become those of another. Nothing is cut to
// the range from 0 to 1 here.
#pragma once

#include "TessarinPlatform/Geometry.h"
#include "platform/embedded/appkit/ColorSpaceStorage.h"

#include <array>

namespace tessarin::embedded {

struct RGB {
    CGFloat red = 0, green = 0, blue = 0;
};
struct HSB {
    CGFloat hue = 0, saturation = 0, brightness = 0;
};

// Red, and every other colour whose red is largest and whose green and blue are equal, has the hue 1 and not
// 0, which is meant: it is what the platform answers. A grey has the hue and the saturation 0.
HSB hsbOf(RGB color);
// The hue is from 0 to 1; both are red.
RGB rgbOf(HSB color);

// As many as the model has, alpha apart.
using ColorComponents = std::array<CGFloat, 4>;

// RGB components are the same in every space, and a grey's white is its red, green and blue: there are no
// profiles.
ColorComponents converted(const ColorComponents& components, ColorModel from, ColorModel to);

} // namespace tessarin::embedded
