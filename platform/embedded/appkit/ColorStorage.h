// What a colour object keeps.
#pragma once

#include "TessarinPlatform/NSColor.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/appkit/ColorComponents.h"

#include <memory>
#include <optional>
#include <vector>

namespace tessarin::embedded {

// What a colour is that has no components: a name in a list, or a picture.
struct NameOrPicture {
    Retained<NSString> listName;
    Retained<NSString> colorName;
    Retained<NSObject> image;
};

// A colour has components in a space, or is something else. One of a class derived from NSColor may be
// neither and answer for itself.
struct ColorStorage {
    std::optional<ColorSpaceKind> space;
    ColorComponents components; // where there is a space
    CGFloat alpha = 1;
    // What it was made of, which the components of a grey no longer tell.
    std::optional<HSB> hsb;
    std::unique_ptr<const NameOrPicture> other;

    NSString listName() const { return other ? NSString(other->listName) : NSString(); }
    NSString colorName() const { return other ? NSString(other->colorName) : NSString(); }
    NSObject image() const { return other ? NSObject(other->image) : NSObject(); }
};

inline ColorStorage& storageOf(NSColor color) { return embedded::storageOf<ColorStorage>(color); }

// The rows of NSColor's table for archiving.
std::vector<MethodRow> colorCodingMethods();

} // namespace tessarin::embedded
