// The embedded platform's NSColor: a value without a screen. The class operations make objects of NSColor
// itself, whatever class derived from it they are sent to.
#include "TessarinPlatform/ColorReading.h"
#include "TessarinPlatform/Exceptions.h"
#include "platform/embedded/appkit/ColorStorage.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/runtime/StoredKind.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <functional>
#include <iterator>
#include <limits>
#include <string>

namespace tessarin::embedded {
namespace {

using enum ColorSpaceKind;

// ---- Making

Retained<NSColor> newColor() {
    return adopt(NSColor(createInstanceWith<ColorStorage>("NSColor"_class).object));
}

Retained<NSColor> newColor(ColorSpaceKind space, const ColorComponents& components, CGFloat alpha) {
    Retained<NSColor> color = newColor();
    ColorStorage& storage = storageOf(color);
    storage.space = space;
    storage.components = components;
    storage.alpha = alpha;
    return color;
}

// What is no number becomes 0.
CGFloat cut(CGFloat component) { return component > 0 ? component < 1 ? component : 1 : 0; }

// The components are written where they stay: copies of several that were just written one by one make the
// processor wait.
template <ColorSpaceKind space>
NSColor colorWithRGB(Class, SEL, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
    Retained<NSColor> color = newColor();
    ColorStorage& storage = storageOf(color);
    storage.space = space;
    storage.components[0] = cut(red);
    storage.components[1] = cut(green);
    storage.components[2] = cut(blue);
    storage.alpha = cut(alpha);
    return color.autorelease();
}
template <ColorSpaceKind space>
NSColor colorWithHSB(Class, SEL, CGFloat hue, CGFloat saturation, CGFloat brightness, CGFloat alpha) {
    const HSB hsb{cut(hue), cut(saturation), cut(brightness)};
    const RGB rgb = rgbOf(hsb);
    Retained<NSColor> color = newColor(space, {rgb.red, rgb.green, rgb.blue}, cut(alpha));
    storageOf(color).hsb = hsb;
    return color.autorelease();
}
template <ColorSpaceKind space>
NSColor colorWithWhite(Class, SEL, CGFloat white, CGFloat alpha) {
    return newColor(space, {cut(white)}, cut(alpha)).autorelease();
}
NSColor colorWithDeviceCMYK(Class, SEL, CGFloat cyan, CGFloat magenta, CGFloat yellow, CGFloat black,
                            CGFloat alpha) {
    return newColor(deviceCMYK, {cut(cyan), cut(magenta), cut(yellow), cut(black)}, cut(alpha)).autorelease();
}

NSColor colorWithColorSpace(Class, SEL, NSColorSpace space, const CGFloat* components, NSInteger count) {
    const auto kind = kindOfColorSpace(storedKindOf<NSColorSpace>(space));
    if (!kind || !components) return nil;
    const std::size_t own = componentCountOf(modelOf(*kind));
    if (count != static_cast<NSInteger>(own) + 1) return nil;
    ColorComponents copied = {};
    std::copy_n(components, own, copied.begin());
    return newColor(*kind, copied, components[own]).autorelease();
}

NSColor colorWithCatalogName(Class, SEL, NSString listName, NSString colorName) {
    if (!listName || !colorName) return nil;
    Retained<NSColor> color = newColor();
    storageOf(color).other = std::make_unique<NameOrPicture>(
        NameOrPicture{adopt(as<NSString>(listName.copy())), adopt(as<NSString>(colorName.copy())), nil});
    return color.autorelease();
}
NSColor colorWithPatternImage(Class, SEL, NSObject image) {
    if (!image) return nil;
    Retained<NSColor> color = newColor();
    storageOf(color).other = std::make_unique<NameOrPicture>(NameOrPicture{nil, nil, retain(image)});
    return color.autorelease();
}

// ---- Spaces

[[noreturn]] void raiseNotValid(NSColor color, const std::string& operation) {
    raise(NSInvalidArgumentException(),
          NSString("*** -" + operation + " not valid for the NSColor "
                   + static_cast<std::string>(color.description()) + "; need to first convert colorspace."));
}

NSColorSpace colorSpace(NSColor self, SEL selector) {
    const auto space = storageOf(self).space;
    if (!space) raiseNotValid(self, runtime::selectorName(selector));
    return colorSpaceOfKind(*space);
}

NSString nameOf(ColorSpaceKind space) {
    switch (space) {
    case genericRGB:
        return NSCalibratedRGBColorSpace();
    case genericGray:
        return NSCalibratedWhiteColorSpace();
    case deviceRGB:
        return NSDeviceRGBColorSpace();
    case deviceGray:
        return NSDeviceWhiteColorSpace();
    case deviceCMYK:
        return NSDeviceCMYKColorSpace();
    default:
        return "NSCustomColorSpace"_ns; // for the spaces that have no name
    }
}
NSString colorSpaceName(NSColor self, SEL) {
    const ColorStorage& storage = storageOf(self);
    if (storage.space) return nameOf(*storage.space);
    if (storage.colorName()) return NSNamedColorSpace();
    return storage.image() ? NSPatternColorSpace() : NSString();
}

std::optional<ColorSpaceKind> spaceOfName(NSString name) {
    for (const ColorSpaceKind space : {genericRGB, deviceRGB, genericGray, deviceGray, deviceCMYK}) {
        const NSString known = nameOf(space);
        if (name == known || known.isEqual(name)) return space;
    }
    return {};
}

NSColor colorUsingColorSpaceName(NSColor self, SEL, NSString name) {
    if (!name) return nil;
    const ColorStorage& storage = storageOf(self);
    const auto target = spaceOfName(name);
    if (!target || !storage.space) return name.isEqual(self.colorSpaceName()) ? self : NSColor();
    if (*target == *storage.space) return self;
    const ColorModel from = modelOf(*storage.space), to = modelOf(*target);
    Retained<NSColor> color = newColor(*target, converted(storage.components, from, to), storage.alpha);
    if (from == to) storageOf(color).hsb = storage.hsb;
    return color.autorelease();
}

// ---- Components

// The components of a colour of that model; any other raises as the operation that asks for all of them.
const ColorComponents& componentsOf(NSColor color, ColorModel model, const char* operation) {
    const ColorStorage& storage = storageOf(color);
    if (!storage.space || modelOf(*storage.space) != model) raiseNotValid(color, operation);
    return storage.components;
}

template <std::size_t index>
CGFloat rgbComponent(NSColor self, SEL) {
    return componentsOf(self, ColorModel::rgb, "getRed:green:blue:alpha:")[index];
}
template <CGFloat HSB::*component>
CGFloat hsbComponent(NSColor self, SEL) {
    const ColorComponents& rgb = componentsOf(self, ColorModel::rgb, "getHue:saturation:brightness:alpha:");
    const auto& madeOf = storageOf(self).hsb;
    return (madeOf ? *madeOf : hsbOf({rgb[0], rgb[1], rgb[2]})).*component;
}
CGFloat whiteComponent(NSColor self, SEL) {
    return componentsOf(self, ColorModel::gray, "getWhite:alpha:")[0];
}
template <std::size_t index>
CGFloat cmykComponent(NSColor self, SEL) {
    return componentsOf(self, ColorModel::cmyk, "getCyan:magenta:yellow:black:alpha:")[index];
}
CGFloat alphaComponent(NSColor self, SEL) { return storageOf(self).alpha; }

// ---- Comparing and showing

// Of equal components in the same space, or of equal names, or the same picture. How they were made does not
// count.
BOOL isEqual(NSColor self, SEL, NSObject object) {
    if (self == object) return YES;
    const auto other = storedKindOf<NSColor>(object);
    if (!other) return NO;
    const ColorStorage& left = storageOf(self);
    const ColorStorage& right = storageOf(other);
    if (left.space != right.space) return NO;
    if (left.space) return left.components == right.components && left.alpha == right.alpha;
    if (left.colorName())
        return left.colorName().isEqual(right.colorName()) && left.listName().isEqual(right.listName());
    return left.image() && left.image() == right.image();
}

NSUInteger hash(NSColor self, SEL selector) {
    const ColorStorage& storage = storageOf(self);
    if (storage.colorName()) return storage.colorName().hash();
    if (storage.image()) return std::bit_cast<NSUInteger>(storage.image().object());
    if (!storage.space) return sendSuper<NSUInteger>(self, NSColor::classObject(), selector);
    auto result = static_cast<NSUInteger>(*storage.space);
    const auto add = [&](CGFloat component) {
        // Zero of either sign is the same component.
        result = (result ^ std::hash<CGFloat>()(component + 0.0)) * NSUInteger(0x9E3779B97F4A7C15u);
        result ^= result >> (std::numeric_limits<NSUInteger>::digits / 2);
    };
    for (const CGFloat component : storage.components) add(component);
    add(storage.alpha);
    return result;
}

id copyWithZone(NSColor self, SEL, void*) { return retain(self).leak(); }

void appendNumber(std::string& text, CGFloat number) {
    char digits[32];
    const auto end =
        std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::general, 6).ptr;
    text.append(1, ' ').append(digits, end);
}

NSString description(NSColor self, SEL selector) {
    const ColorStorage& storage = storageOf(self);
    if (storage.space) {
        const NSString name = *storage.space == genericCMYK ? colorSpaceOfKind(genericCMYK).description()
                                                            : nameOf(*storage.space);
        auto text = static_cast<std::string>(name);
        const std::size_t count = componentCountOf(modelOf(*storage.space));
        for (std::size_t index = 0; index < count; ++index) appendNumber(text, storage.components[index]);
        appendNumber(text, storage.alpha);
        return makeLatin1(text);
    }
    if (storage.colorName())
        return "Catalog color: "_ns.stringByAppendingString(storage.listName())
            .stringByAppendingString(" "_ns)
            .stringByAppendingString(storage.colorName());
    if (!storage.image()) return sendSuper<NSString>(self, NSColor::classObject(), selector);
    // The picture itself may be a colour, of another picture, and so on.
    return NSString(std::string("NSPatternColorSpace ")
                    + runtime::className(runtime::classOf(storage.image().object())));
}

} // namespace

ClassDescription describeNSColor() {
    ClassDescription result{
        .name = "NSColor",
        .superclass = "NSObject",
        .protocols = {"NSCoding", "NSCopying"},
        .storage = storageLayout<ColorStorage>(),
        .methods = {
            classMethod("colorWithCalibratedRed:green:blue:alpha:", colorWithRGB<genericRGB>),
            classMethod("colorWithCalibratedHue:saturation:brightness:alpha:", colorWithHSB<genericRGB>),
            classMethod("colorWithCalibratedWhite:alpha:", colorWithWhite<genericGray>),
            classMethod("colorWithDeviceRed:green:blue:alpha:", colorWithRGB<deviceRGB>),
            classMethod("colorWithDeviceHue:saturation:brightness:alpha:", colorWithHSB<deviceRGB>),
            classMethod("colorWithDeviceWhite:alpha:", colorWithWhite<deviceGray>),
            classMethod("colorWithDeviceCyan:magenta:yellow:black:alpha:", colorWithDeviceCMYK),
            classMethod("colorWithColorSpace:components:count:", colorWithColorSpace),
            classMethod("colorWithCatalogName:colorName:", colorWithCatalogName),
            classMethod("colorWithPatternImage:", colorWithPatternImage),
            instanceMethod("colorSpace", colorSpace),
            instanceMethod("colorSpaceName", colorSpaceName),
            instanceMethod("colorUsingColorSpaceName:", colorUsingColorSpaceName),
            instanceMethod("redComponent", rgbComponent<0>),
            instanceMethod("greenComponent", rgbComponent<1>),
            instanceMethod("blueComponent", rgbComponent<2>),
            instanceMethod("hueComponent", hsbComponent<&HSB::hue>),
            instanceMethod("saturationComponent", hsbComponent<&HSB::saturation>),
            instanceMethod("brightnessComponent", hsbComponent<&HSB::brightness>),
            instanceMethod("whiteComponent", whiteComponent),
            instanceMethod("cyanComponent", cmykComponent<0>),
            instanceMethod("magentaComponent", cmykComponent<1>),
            instanceMethod("yellowComponent", cmykComponent<2>),
            instanceMethod("blackComponent", cmykComponent<3>),
            instanceMethod("alphaComponent", alphaComponent),
            instanceMethod("isEqual:", isEqual),
            instanceMethod("hash", hash),
            instanceMethod("copyWithZone:", copyWithZone),
            instanceMethod("description", description),
        }};
    const std::vector<MethodRow> coding = colorCodingMethods();
    result.methods.insert(result.methods.end(), coding.begin(), coding.end());
    return result;
}

} // namespace tessarin::embedded

namespace tessarin {

std::optional<RGBAComponents> genericRGBComponents(NSColor color) {
    if (!color || color.object()->isa != "NSColor"_class.object()) return {};
    const embedded::ColorStorage& storage = embedded::storageOf(color);
    if (storage.space != embedded::ColorSpaceKind::genericRGB) return {};
    return RGBAComponents{storage.components[0], storage.components[1], storage.components[2], storage.alpha};
}

} // namespace tessarin
