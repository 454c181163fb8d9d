// NSScreen: a display, where it lies and what of it windows may cover.
#pragma once

#include "TessarinPlatform/Geometry.h"
#include "TessarinPlatform/NSArray.h"

#include <vector>

namespace tessarin {

class NSScreen : public Handle<NSScreen, "NSScreen", NSObject> {
public:
    using Handle::Handle;

    // The screen of the window that has the keyboard; on the embedded platform the first. nil without
    // screens.
    static NSScreen mainScreen() { return send<NSScreen>(classObject(), "mainScreen"_sel); }
    static NSArray screens() { return send<NSArray>(classObject(), "screens"_sel); }

    NSRect frame() const { return send<NSRect>(*this, "frame"_sel); }
    // The frame without the menu bar and a dock.
    NSRect visibleFrame() const { return send<NSRect>(*this, "visibleFrame"_sel); }
};

#if TESSARIN_PLATFORM_EMBEDDED

// A screen as an application or a test describes it.
struct ScreenDescription {
    NSRect frame;
    NSRect visibleFrame;
};

// Replaces the screens of the embedded platform, which has none at first. The first becomes the main screen.
// Screens that were answered before stay as they were.
//
//   describeScreens({{NSMakeRect(0, 0, 1440, 900), NSMakeRect(0, 0, 1440, 877)}});
TESSARIN_EXPORT void describeScreens(const std::vector<ScreenDescription>& screens);

#endif

} // namespace tessarin
