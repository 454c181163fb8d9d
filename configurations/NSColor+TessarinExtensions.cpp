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
    static constexpr char digits[] = "0123456789ABCDEF";
    const auto bits = static_cast<std::uint32_t>(byte);
    if (bits > 0xFF)
        for (int shift = 28; shift >= 8; shift -= 4)
            if (bits >> shift != 0) *place++ = digits[bits >> shift & 0xF];
    *place++ = digits[bits >> 4 & 0xF];
    *place++ = digits[bits & 0xF];
    return place;
}
constexpr std::size_t mostDigits = 8;

// The eight digits of four bytes, worked out together, which takes a fraction of the time that one after the
// other does.
void writeFourBytes(char* place, std::uint32_t bytes) {
    constexpr std::uint64_t ones = 0x0101010101010101;
    std::uint64_t digits = bytes; // spread out, so that each has a byte of its own
    digits = (digits | digits << 16) & 0x0000FFFF0000FFFF;
    digits = (digits | digits << 8) & 0x00FF00FF00FF00FF;
    digits = (digits | digits << 4) & 0x0F0F0F0F0F0F0F0F;
    const std::uint64_t isLetter = (digits + 6 * ones) >> 4 & ones;
    digits += '0' * ones + ('A' - 10 - '0') * isLetter;
    for (int shift = 56; shift >= 0; shift -= 8) *place++ = static_cast<char>(digits >> shift);
}

// Alpha is asked for only where it is wanted.
RGBAComponents componentsOf(NSColor color, bool alpha) {
    if (const auto components = genericRGBComponents(color)) return *components;
    const NSColor read = colorToRead(color);
    const CGFloat red = read.redComponent();
    const CGFloat green = read.greenComponent();
    const CGFloat blue = read.blueComponent();
    return {red, green, blue, alpha ? read.alphaComponent() : 0};
}

// Whether a component lies where those of most colours do.
bool isInRange(CGFloat component) { return component >= 0 && component <= 1; }

NSString hexadecimalRGBStringWithAlpha(NSColor self, SEL, BOOL alpha) {
    const RGBAComponents components = componentsOf(self, alpha != NO);
    char text[4 * mostDigits];
    if (isInRange(components.red) && isInRange(components.green) && isInRange(components.blue)
        && isInRange(components.alpha)) {
        const auto byte = [](CGFloat component) {
            return static_cast<std::uint32_t>(static_cast<std::int32_t>(component * 255));
        };
        writeFourBytes(text, byte(components.red) << 24 | byte(components.green) << 16
                                 | byte(components.blue) << 8 | byte(components.alpha));
        return NSString(std::string_view(text, alpha != NO ? 8 : 6));
    }
    char* end = writeByte(text, byteOf(components.red));
    end = writeByte(end, byteOf(components.green));
    end = writeByte(end, byteOf(components.blue));
    if (alpha != NO) end = writeByte(end, byteOf(components.alpha));
    return NSString(std::string_view(text, end));
}

// The component that each byte stands for.
constexpr auto byteComponents = [] {
    std::array<CGFloat, 256> components{};
    for (std::size_t byte = 0; byte < components.size(); ++byte)
        components[byte] = static_cast<CGFloat>(static_cast<float>(byte) / 255.0F);
    return components;
}();
CGFloat componentOf(unsigned byte) { return byteComponents[byte & 0xFF]; }

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
