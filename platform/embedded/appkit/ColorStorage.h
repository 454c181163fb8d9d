// What a colour object keeps.
#pragma once

#include "TessarinPlatform/NSColor.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/appkit/ColorComponents.h"

#include <optional>
#include <vector>

namespace tessarin::embedded {

// A colour has components in a space, or is the name of one, or a picture. One of a class derived from
// NSColor may be none of these and answer for itself.
struct ColorStorage {
    std::optional<ColorSpaceKind> space;
    ColorComponents components = {};
    CGFloat alpha = 1;
    // What it was made of, which the components of a grey no longer tell.
    std::optional<HSB> hsb;

    Retained<NSString> listName;
    Retained<NSString> colorName;
    Retained<NSObject> image;
};

inline ColorStorage& storageOf(NSColor color) { return embedded::storageOf<ColorStorage>(color); }

// The rows of NSColor's table for archiving.
std::vector<MethodRow> colorCodingMethods();

} // namespace tessarin::embedded
