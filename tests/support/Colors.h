// Colours for tests, and what they hand out.
#pragma once

#include "PlatformTest.h"

namespace tessarin::testing {

using Components = std::vector<CGFloat>;

inline NSColor calibrated(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha = 1) {
    return NSColor::colorWithCalibratedRed_green_blue_alpha(red, green, blue, alpha);
}
inline NSColor ofHSB(CGFloat hue, CGFloat saturation, CGFloat brightness, CGFloat alpha = 1) {
    return NSColor::colorWithCalibratedHue_saturation_brightness_alpha(hue, saturation, brightness, alpha);
}
// A pattern colour; any object serves for its picture where nothing is drawn.
inline NSColor patternColor() {
    return NSColor::colorWithPatternImage(adopt(NSObject::classObject().alloc()).autorelease());
}

inline Components rgbOf(NSColor color) {
    return {color.redComponent(), color.greenComponent(), color.blueComponent(), color.alphaComponent()};
}
inline Components hsbOf(NSColor color) {
    return {color.hueComponent(), color.saturationComponent(), color.brightnessComponent(),
            color.alphaComponent()};
}

} // namespace tessarin::testing
