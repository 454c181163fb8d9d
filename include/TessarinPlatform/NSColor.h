// NSColor: an immutable colour.
#pragma once

#include "TessarinPlatform/Geometry.h"
#include "TessarinPlatform/NSColorSpace.h"

namespace tessarin {

// The names of colour spaces that colorUsingColorSpaceName knows.
inline NSString NSCalibratedRGBColorSpace() { return "NSCalibratedRGBColorSpace"_ns; }
inline NSString NSDeviceRGBColorSpace() { return "NSDeviceRGBColorSpace"_ns; }
inline NSString NSCalibratedWhiteColorSpace() { return "NSCalibratedWhiteColorSpace"_ns; }
inline NSString NSDeviceWhiteColorSpace() { return "NSDeviceWhiteColorSpace"_ns; }
inline NSString NSDeviceCMYKColorSpace() { return "NSDeviceCMYKColorSpace"_ns; }
inline NSString NSNamedColorSpace() { return "NSNamedColorSpace"_ns; }
inline NSString NSPatternColorSpace() { return "NSPatternColorSpace"_ns; }

// Components are from 0 to 1. The class operations that name a calibrated or device space cut what lies
// outside to 0 or 1; only colorWithColorSpace_components_count keeps it. All of them answer colours of the
// platform's own classes, also where they are sent to a class derived from NSColor.
//
// A colour that was made of hue, saturation and brightness hands out these, also where its red, green and
// blue no longer tell them. Any other red has the hue 1.
//
// Colours conform to NSCopying and to NSCoding. A named or pattern colour equals one of the same names or the
// same picture.
class NSColor : public Handle<NSColor, "NSColor", NSObject> {
public:
    using Handle::Handle;

    static NSColor colorWithCalibratedRed_green_blue_alpha(CGFloat red, CGFloat green, CGFloat blue,
                                                           CGFloat alpha) {
        return send<NSColor>(classObject(), "colorWithCalibratedRed:green:blue:alpha:"_sel, red, green, blue,
                             alpha);
    }
    static NSColor colorWithCalibratedHue_saturation_brightness_alpha(CGFloat hue, CGFloat saturation,
                                                                      CGFloat brightness, CGFloat alpha) {
        return send<NSColor>(classObject(), "colorWithCalibratedHue:saturation:brightness:alpha:"_sel, hue,
                             saturation, brightness, alpha);
    }
    static NSColor colorWithCalibratedWhite_alpha(CGFloat white, CGFloat alpha) {
        return send<NSColor>(classObject(), "colorWithCalibratedWhite:alpha:"_sel, white, alpha);
    }
    static NSColor colorWithDeviceRed_green_blue_alpha(CGFloat red, CGFloat green, CGFloat blue,
                                                       CGFloat alpha) {
        return send<NSColor>(classObject(), "colorWithDeviceRed:green:blue:alpha:"_sel, red, green, blue,
                             alpha);
    }
    static NSColor colorWithDeviceHue_saturation_brightness_alpha(CGFloat hue, CGFloat saturation,
                                                                  CGFloat brightness, CGFloat alpha) {
        return send<NSColor>(classObject(), "colorWithDeviceHue:saturation:brightness:alpha:"_sel, hue,
                             saturation, brightness, alpha);
    }
    static NSColor colorWithDeviceWhite_alpha(CGFloat white, CGFloat alpha) {
        return send<NSColor>(classObject(), "colorWithDeviceWhite:alpha:"_sel, white, alpha);
    }
    static NSColor colorWithDeviceCyan_magenta_yellow_black_alpha(CGFloat cyan, CGFloat magenta,
                                                                  CGFloat yellow, CGFloat black,
                                                                  CGFloat alpha) {
        return send<NSColor>(classObject(), "colorWithDeviceCyan:magenta:yellow:black:alpha:"_sel, cyan,
                             magenta, yellow, black, alpha);
    }
    // The components, alpha last; what lies outside 0 to 1 is kept. nil for a number of components that is
    // not the space's and one for alpha.
    static NSColor colorWithColorSpace_components_count(NSColorSpace space, const CGFloat* components,
                                                        NSInteger count) {
        return send<NSColor>(classObject(), "colorWithColorSpace:components:count:"_sel, space, components,
                             count);
    }
    // A named colour of a list of colours. It has no components of its own. The embedded platform has no
    // lists: it takes every name but nil, which gives nil, and cannot convert the colour.
    static NSColor colorWithCatalogName_colorName(NSString listName, NSString colorName) {
        return send<NSColor>(classObject(), "colorWithCatalogName:colorName:"_sel, listName, colorName);
    }
    // A colour that is a picture: it has no components and cannot be converted. The embedded platform has no
    // pictures; it takes any object for one, and cannot archive it.
    static NSColor colorWithPatternImage(NSObject image) {
        return send<NSColor>(classObject(), "colorWithPatternImage:"_sel, image);
    }

    // Raises NSInvalidArgumentException for named and pattern colours.
    NSColorSpace colorSpace() const { return send<NSColorSpace>(*this, "colorSpace"_sel); }
    NSString colorSpaceName() const { return send<NSString>(*this, "colorSpaceName"_sel); }
    // The colour in another space, itself when it is of that space, nil when it cannot be converted.
    NSColor colorUsingColorSpaceName(NSString name) const {
        return send<NSColor>(*this, "colorUsingColorSpaceName:"_sel, name);
    }

    // Raise NSInvalidArgumentException where the colour's space has no such component.
    CGFloat redComponent() const { return send<CGFloat>(*this, "redComponent"_sel); }
    CGFloat greenComponent() const { return send<CGFloat>(*this, "greenComponent"_sel); }
    CGFloat blueComponent() const { return send<CGFloat>(*this, "blueComponent"_sel); }
    CGFloat hueComponent() const { return send<CGFloat>(*this, "hueComponent"_sel); }
    CGFloat saturationComponent() const { return send<CGFloat>(*this, "saturationComponent"_sel); }
    CGFloat brightnessComponent() const { return send<CGFloat>(*this, "brightnessComponent"_sel); }
    CGFloat whiteComponent() const { return send<CGFloat>(*this, "whiteComponent"_sel); }
    CGFloat cyanComponent() const { return send<CGFloat>(*this, "cyanComponent"_sel); }
    CGFloat magentaComponent() const { return send<CGFloat>(*this, "magentaComponent"_sel); }
    CGFloat yellowComponent() const { return send<CGFloat>(*this, "yellowComponent"_sel); }
    CGFloat blackComponent() const { return send<CGFloat>(*this, "blackComponent"_sel); }
    CGFloat alphaComponent() const { return send<CGFloat>(*this, "alphaComponent"_sel); }
};

} // namespace tessarin
