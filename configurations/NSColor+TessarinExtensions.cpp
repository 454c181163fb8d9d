// Colours: configurations and hexadecimal strings.
#include "TessarinFoundation/NSColor+TessarinExtensions.h"

#include "TessarinPlatform/ColorReading.h"
#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/NSNumber.h"

#include <array>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string_view>

using namespace tessarin;

namespace {

// The colour whose components describe the receiver. nil for one that cannot be converted, and every
// component of nil is 0.
NSColor colorToRead(NSColor color) {
    if (color.colorSpace().isEqual(NSColorSpace::genericRGBColorSpace())) return color;
    return color.colorUsingColorSpaceName(NSCalibratedRGBColorSpace());
}

// ---- Configurations

NSString hueKey() { return "Hue"_ns; }
NSString saturationKey() { return "Saturation"_ns; }
NSString brightnessKey() { return "Brightness"_ns; }
NSString alphaKey() { return "Alpha"_ns; }

constexpr CGFloat fullHue = 359; // not 360, which is meant
constexpr CGFloat full = 100;

NSNumber onScale(CGFloat component, CGFloat scale) {
    return NSNumber::numberWithFloat(static_cast<float>(component * scale));
}
CGFloat offScale(NSDictionary configuration, NSString key, CGFloat scale) {
    const NSNumber value = configuration.objectForKey(key); // or a string, which answers floatValue too
    return static_cast<CGFloat>(value.floatValue()) / scale;
}

NSDictionary configuration(NSColor self, SEL) {
    const NSColor color = colorToRead(self);
    const NSNumber hue = onScale(color.hueComponent(), fullHue);
    const NSNumber saturation = onScale(color.saturationComponent(), full);
    const NSNumber brightness = onScale(color.brightnessComponent(), full);
    const NSNumber alpha = onScale(color.alphaComponent(), full);
    const NSObject values[] = {hue, saturation, brightness, alpha};
    const NSObject keys[] = {hueKey(), saturationKey(), brightnessKey(), alphaKey()};
    return NSDictionary::dictionaryWithObjects_forKeys_count(values, keys, std::size(keys));
}

NSColor colorWithConfiguration(Class self, SEL, NSDictionary configuration) {
    const CGFloat hue = offScale(configuration, hueKey(), fullHue);
    const CGFloat saturation = offScale(configuration, saturationKey(), full);
    const CGFloat brightness = offScale(configuration, brightnessKey(), full);
    const CGFloat alpha = offScale(configuration, alphaKey(), full);
    return send<NSColor>(self, "colorWithCalibratedHue:saturation:brightness:alpha:"_sel, hue, saturation,
                         brightness, alpha);
}

// ---- Hexadecimal strings

// Cut toward zero, where a cast would leave it undefined too.
std::int32_t byteOf(CGFloat component) {
    using Limits = std::numeric_limits<std::int32_t>;
    const double scaled = component * CGFloat{255};
    if (!(scaled > Limits::min())) return scaled <= Limits::min() ? Limits::min() : 0;
    return scaled < Limits::max() ? static_cast<std::int32_t>(scaled) : Limits::max();
}

// What the format "%02X" writes: a byte that is none, since it is less than 0 or more than 255, has as many
// digits as it needs.
char* writeByte(char* place, std::int32_t byte) {
    const auto bits = static_cast<std::uint32_t>(byte);
    constexpr char digits[] = "0123456789ABCDEF";
    if (bits > 0xFF) [[unlikely]]
        for (int shift = 28; shift >= 8; shift -= 4)
            if (bits >> shift != 0) *place++ = digits[bits >> shift & 0xF];
    *place++ = digits[bits >> 4 & 0xF];
    *place++ = digits[bits & 0xF];
    return place;
}
constexpr std::size_t mostDigits = 8;

// Alpha is asked for only where it is wanted.
RGBAComponents componentsOf(NSColor color, bool alpha) {
    if (const auto components = genericRGBComponents(color)) return *components;
    const NSColor read = colorToRead(color);
    const CGFloat red = read.redComponent();
    const CGFloat green = read.greenComponent();
    const CGFloat blue = read.blueComponent();
    return {red, green, blue, alpha ? read.alphaComponent() : 0};
}

NSString hexadecimalRGBStringWithAlpha(NSColor self, SEL, BOOL alpha) {
    const RGBAComponents components = componentsOf(self, alpha != NO);
    char text[4 * mostDigits];
    char* end = writeByte(text, byteOf(components.red));
    end = writeByte(end, byteOf(components.green));
    end = writeByte(end, byteOf(components.blue));
    if (alpha != NO) end = writeByte(end, byteOf(components.alpha));
    return NSString(std::string_view(text, end));
}

// The component that each byte stands for.
constexpr auto byteComponents = [] {
    std::array<float, 256> components{};
    for (std::size_t byte = 0; byte < components.size(); ++byte)
        components[byte] = static_cast<float>(byte) / 255.0F;
    return components;
}();
CGFloat componentOf(unsigned byte) { return static_cast<CGFloat>(byteComponents[byte & 0xFF]); }

NSColor colorWithHexadecimalRGBAString(Class self, SEL, NSString string) {
    if (!string) return nil;
    const unsigned value = scannedHexInt(string);
    return send<NSColor>(self, "colorWithCalibratedRed:green:blue:alpha:"_sel, componentOf(value >> 24),
                         componentOf(value >> 16), componentOf(value >> 8), componentOf(value));
}

const ExtensionGroup group{
    "NSColor",
    "TessarinExtensions",
    {instanceMethod("tessarin_configuration", configuration),
     classMethod("tessarin_colorWithConfiguration:", colorWithConfiguration),
     instanceMethod("tessarin_hexadecimalRGBStringWithAlpha:", hexadecimalRGBStringWithAlpha),
     classMethod("tessarin_colorWithHexadecimalRGBAString:", colorWithHexadecimalRGBAString)}};

} // namespace

NSDictionary tessarin_configuration(NSColor color) {
    return send<NSDictionary>(color, "tessarin_configuration"_sel);
}

NSColor tessarin_colorWithConfiguration(NSDictionary configuration) {
    return tessarin_colorWithConfiguration(NSColor::classObject(), configuration);
}

NSColor tessarin_colorWithConfiguration(Class receiver, NSDictionary configuration) {
    return send<NSColor>(receiver, "tessarin_colorWithConfiguration:"_sel, configuration);
}

NSString tessarin_hexadecimalRGBStringWithAlpha(NSColor color, bool alpha) {
    return send<NSString>(color, "tessarin_hexadecimalRGBStringWithAlpha:"_sel, static_cast<BOOL>(alpha));
}

NSColor tessarin_colorWithHexadecimalRGBAString(NSString string) {
    return tessarin_colorWithHexadecimalRGBAString(NSColor::classObject(), string);
}

NSColor tessarin_colorWithHexadecimalRGBAString(Class receiver, NSString string) {
    return send<NSColor>(receiver, "tessarin_colorWithHexadecimalRGBAString:"_sel, string);
}
