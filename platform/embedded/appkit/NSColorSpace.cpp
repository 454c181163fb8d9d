#include "platform/embedded/appkit/ColorSpaceStorage.h"
#include "platform/embedded/foundation/KeyedCoding.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/runtime/StoredKind.h"

#include <array>
#include <string>

namespace tessarin::embedded {
namespace {

struct ColorSpaceStorage {
    std::optional<ColorSpaceKind> kind;
};

constexpr std::size_t spaceCount = static_cast<std::size_t>(lastColorSpaceKind);
constexpr std::array<const char*, spaceCount> names = {"Generic RGB", "Generic Gray", "Generic CMYK",
                                                       "Device RGB",  "Device Gray",  "Device CMYK"};

std::size_t placeOf(ColorSpaceKind kind) { return static_cast<std::size_t>(kind) - 1; }

template <ColorSpaceKind kind>
NSColorSpace shared(Class, SEL) {
    return colorSpaceOfKind(kind);
}

NSInteger numberOfColorComponents(NSColorSpace self, SEL) {
    const auto kind = kindOfColorSpace(self);
    return kind ? static_cast<NSInteger>(componentCountOf(modelOf(*kind))) : 0;
}

NSString localizedName(NSColorSpace self, SEL) {
    const auto kind = kindOfColorSpace(self);
    return kind ? makeLatin1(names[placeOf(*kind)]) : NSString();
}
NSString description(NSColorSpace self, SEL selector) {
    const auto kind = kindOfColorSpace(self);
    if (!kind) return sendSuper<NSString>(self, NSColorSpace::classObject(), selector);
    return makeLatin1(std::string(names[placeOf(*kind)]) + " colorspace");
}

BOOL isEqual(NSColorSpace self, SEL, NSObject other) {
    if (self == other) return YES;
    const auto space = storedKindOf<NSColorSpace>(other);
    const auto kind = kindOfColorSpace(self);
    return space && kind && kind == kindOfColorSpace(space);
}
NSUInteger hash(NSColorSpace self, SEL selector) {
    const auto kind = kindOfColorSpace(self);
    return kind ? static_cast<NSUInteger>(*kind)
                : sendSuper<NSUInteger>(self, NSColorSpace::classObject(), selector);
}

NSColorSpace copyWithZone(NSColorSpace self, SEL, void*) { return retain(self).leak(); }

// ---- Archiving

NSString numberKey() { return "NSID"_ns; }

void encodeWithCoder(NSColorSpace self, SEL selector, NSCoder coder) {
    requireKeys(coder, self, selector);
    const auto kind = kindOfColorSpace(self);
    if (kind) coder.encodeInt_forKey(static_cast<int>(*kind), numberKey());
}
// nil for a space that the platform does not have.
NSColorSpace initWithCoder(NSColorSpace self, SEL selector, NSCoder coder) {
    const Retained<NSColorSpace> replaced = adopt(self);
    requireKeys(coder, self, selector);
    const int number = coder.decodeIntForKey(numberKey());
    if (number < 1 || number > static_cast<int>(lastColorSpaceKind)) return nil;
    return retain(colorSpaceOfKind(static_cast<ColorSpaceKind>(number))).leak();
}

} // namespace

NSColorSpace colorSpaceOfKind(ColorSpaceKind kind) {
    static const auto spaces = [] {
        std::array<NSColorSpace, spaceCount> made;
        for (std::size_t place = 0; place < spaceCount; ++place) {
            made[place] = NSColorSpace(createInstance(NSColorSpace::classObject()));
            storageOf<ColorSpaceStorage>(made[place]).kind = static_cast<ColorSpaceKind>(place + 1);
            makeImmortal(made[place]);
        }
        return made;
    }();
    return spaces[placeOf(kind)];
}

std::optional<ColorSpaceKind> kindOfColorSpace(NSColorSpace space) {
    return space ? storageOf<ColorSpaceStorage>(space).kind : std::nullopt;
}

ClassDescription describeNSColorSpace() {
    using enum ColorSpaceKind;
    return {
        .name = "NSColorSpace",
        .superclass = "NSObject",
        .protocols = {"NSCoding", "NSCopying"},
        .storage = storageLayout<ColorSpaceStorage>(),
        .methods = {classMethod("genericRGBColorSpace", shared<genericRGB>),
                    classMethod("genericGrayColorSpace", shared<genericGray>),
                    classMethod("genericCMYKColorSpace", shared<genericCMYK>),
                    classMethod("deviceRGBColorSpace", shared<deviceRGB>),
                    classMethod("deviceGrayColorSpace", shared<deviceGray>),
                    classMethod("deviceCMYKColorSpace", shared<deviceCMYK>),
                    instanceMethod("numberOfColorComponents", numberOfColorComponents),
                    instanceMethod("localizedName", localizedName),
                    instanceMethod("description", description), instanceMethod("isEqual:", isEqual),
                    instanceMethod("hash", hash), instanceMethod("copyWithZone:", copyWithZone),
                    instanceMethod("encodeWithCoder:", encodeWithCoder),
                    instanceMethod("initWithCoder:", initWithCoder)},
    };
}

} // namespace tessarin::embedded
