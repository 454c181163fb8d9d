// Colours in keyed archives, in the platform's own form: the number of a colour space, and the components as
// the text of numbers, alpha last unless it is 1. A space that has no number of its own is written as an
// object, with all components, besides what those who do not know it may read.
#include "TessarinPlatform/NSCoder.h"
#include "platform/embedded/appkit/ColorStorage.h"
#include "platform/embedded/foundation/KeyedCoding.h"
#include "platform/embedded/runtime/StoredKind.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>
#include <string_view>

namespace tessarin::embedded {
namespace {

NSString spaceKey() { return "NSColorSpace"_ns; }
NSString customSpaceKey() { return "NSCustomColorSpace"_ns; }
NSString customComponentsKey() { return "NSComponents"_ns; }
NSString listNameKey() { return "NSCatalogName"_ns; }
NSString colorNameKey() { return "NSColorName"_ns; }

// What stands under NSColorSpace.
enum ArchivedKind : int {
    calibratedRGB = 1,
    deviceRGB = 2,
    calibratedWhite = 3,
    deviceWhite = 4,
    deviceCMYK = 5,
    named = 6
};

ArchivedKind archivedKindOf(ColorSpaceKind space) {
    switch (space) {
    case ColorSpaceKind::genericRGB:
        return calibratedRGB;
    case ColorSpaceKind::deviceRGB:
        return deviceRGB;
    case ColorSpaceKind::genericGray:
        return calibratedWhite;
    case ColorSpaceKind::deviceGray:
        return deviceWhite;
    default:
        return deviceCMYK;
    }
}
std::optional<ColorSpaceKind> spaceOfArchivedKind(int kind) {
    switch (kind) {
    case calibratedRGB:
        return ColorSpaceKind::genericRGB;
    case deviceRGB:
        return ColorSpaceKind::deviceRGB;
    case calibratedWhite:
        return ColorSpaceKind::genericGray;
    case deviceWhite:
        return ColorSpaceKind::deviceGray;
    case deviceCMYK:
        return ColorSpaceKind::deviceCMYK;
    default:
        return {};
    }
}

NSString componentsKey(ColorModel model) {
    switch (model) {
    case ColorModel::gray:
        return "NSWhite"_ns;
    case ColorModel::rgb:
        return "NSRGB"_ns;
    default:
        return "NSCMYK"_ns;
    }
}

// ---- Writing

// With the fewest digits that give the number back.
void appendNumber(std::string& text, CGFloat number) {
    char digits[64];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    if (!text.empty()) text += ' ';
    text.append(digits, end);
}

void encodeComponents(NSCoder coder, const ColorStorage& storage, bool isWhole, NSString key) {
    std::string text;
    const std::size_t count = componentCountOf(modelOf(*storage.space));
    for (std::size_t index = 0; index < count; ++index) appendNumber(text, storage.components[index]);
    if (isWhole || storage.alpha != 1) appendNumber(text, storage.alpha);
    // Those that are not whole end as a string of C does.
    coder.encodeBytes_length_forKey(reinterpret_cast<const std::uint8_t*>(text.c_str()),
                                    text.size() + (isWhole ? 0 : 1), key);
}

void encodeWithCoder(NSColor self, SEL selector, NSCoder coder) {
    requireKeys(coder, self, selector);
    const ColorStorage& storage = storageOf(self);
    if (storage.space) {
        const ColorSpaceKind space = *storage.space;
        coder.encodeInt_forKey(archivedKindOf(space), spaceKey());
        encodeComponents(coder, storage, false, componentsKey(modelOf(space)));
        if (space == ColorSpaceKind::genericCMYK) {
            coder.encodeObject_forKey(colorSpaceOfKind(space), customSpaceKey());
            encodeComponents(coder, storage, true, customComponentsKey());
        }
    } else if (storage.colorName()) {
        coder.encodeInt_forKey(named, spaceKey());
        coder.encodeObject_forKey(storage.listName(), listNameKey());
        coder.encodeObject_forKey(storage.colorName(), colorNameKey());
    } else {
        // The platform has no pictures, and what stands for one may be any object.
        raiseFrom(NSInvalidArchiveOperationException(), self, selector, "the colour has no components");
    }
}

// ---- Reading

// Takes a number and the spaces before it off a text; nothing where there is none.
std::optional<CGFloat> takeNumber(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    CGFloat number = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (problem != std::errc()) return {};
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

bool readComponents(ColorStorage& storage, ColorSpaceKind space, std::string_view text) {
    text = text.substr(0, text.find('\0'));
    ColorComponents components = {};
    const std::size_t count = componentCountOf(modelOf(space));
    for (std::size_t index = 0; index < count; ++index) {
        const auto number = takeNumber(text);
        if (!number) return false;
        components[index] = *number;
    }
    storage.alpha = takeNumber(text).value_or(1);
    storage.components = components;
    storage.space = space;
    return text.find_first_not_of(' ') == text.npos;
}

std::string_view decodeTextOfNumbers(NSCoder coder, NSString key) {
    NSUInteger length = 0;
    const std::uint8_t* const bytes = coder.decodeBytesForKey_returnedLength(key, &length);
    checkCopyOfDecoded(coder, length);
    return {reinterpret_cast<const char*>(bytes), length};
}

// A copy, since the archive may hold a mutable string.
Retained<NSString> decodeName(NSCoder coder, NSString key) {
    const auto name = kindOf<NSString>(coder.decodeObjectForKey(key));
    checkCopyOfDecoded(coder, name.length());
    return adopt(as<NSString>(name.copy()));
}

bool readColor(ColorStorage& storage, NSCoder coder) {
    const int kind = coder.decodeIntForKey(spaceKey());
    if (kind == named) {
        Retained<NSString> listName = decodeName(coder, listNameKey());
        Retained<NSString> colorName = decodeName(coder, colorNameKey());
        if (!listName || !colorName) return false;
        storage.other =
            std::make_unique<NameOrPicture>(NameOrPicture{std::move(listName), std::move(colorName), nil});
        return true;
    }
    const auto custom =
        kindOfColorSpace(storedKindOf<NSColorSpace>(coder.decodeObjectForKey(customSpaceKey())));
    if (custom && coder.containsValueForKey(customComponentsKey()))
        return readComponents(storage, *custom, decodeTextOfNumbers(coder, customComponentsKey()));
    // Of a space that the platform does not have it reads what is meant for those who do not know it.
    const auto space = spaceOfArchivedKind(kind);
    if (!space) return false;
    NSString key = componentsKey(modelOf(*space));
    // GNUstep's spelling.
    if (*space == ColorSpaceKind::deviceCMYK && !coder.containsValueForKey(key)) key = "NSCYMK"_ns;
    return readComponents(storage, *space, decodeTextOfNumbers(coder, key));
}

NSColor initWithCoder(NSColor self, SEL selector, NSCoder coder) {
    Retained<NSColor> color = adopt(self);
    requireKeys(coder, self, selector);
    if (!readColor(storageOf(self), coder))
        raiseFrom(NSInvalidUnarchiveOperationException(), self, selector, "the archive holds no colour");
    return color.leak();
}

} // namespace

std::vector<MethodRow> colorCodingMethods() {
    return {instanceMethod("encodeWithCoder:", encodeWithCoder),
            instanceMethod("initWithCoder:", initWithCoder)};
}

} // namespace tessarin::embedded
