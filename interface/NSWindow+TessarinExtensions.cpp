// Windows placed by their top-left corner.
#include "TessarinFoundation/NSWindow+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"

#include <algorithm>

using namespace tessarin;

namespace {

// What is nil answers zeros: a view, and the main screen where there is none.
NSRect frameRectForContentView(NSWindow self, SEL, NSView view) {
    const NSSize needed = self.frameRectForContentRect(view.frame()).size;
    const NSRect current = self.frame();
    NSRect frame{{current.origin.x, current.origin.y - (needed.height - current.size.height)}, needed};
    frame.origin.y = std::max(frame.origin.y, CGFloat{0});
    // Of the visible frame the height alone, and not corrected once more where y is below 0 now; both are
    // meant.
    const CGFloat visibleHeight = NSScreen::mainScreen().visibleFrame().size.height;
    if (frame.origin.y + needed.height > visibleHeight) frame.origin.y = visibleHeight - needed.height;
    return frame;
}

NSPoint topLeftPoint(NSWindow self, SEL) {
    const NSRect frame = self.frame();
    return {frame.origin.x, frame.origin.y + frame.size.height};
}

NSPoint convertBaseToScreen(NSWindow self, SEL, NSPoint point) {
    return self.convertRectToScreen({point, NSZeroRect.size}).origin;
}

// "Exetensions" is how the group is spelled.
const ExtensionGroup group{"NSWindow",
                           "TessarinExetensions",
                           {instanceMethod("tessarin_frameRectForContentView:", frameRectForContentView),
                            instanceMethod("tessarin_topLeftPoint", topLeftPoint),
                            instanceMethod("tessarin_convertBaseToScreen:", convertBaseToScreen)}};

} // namespace

NSRect tessarin_frameRectForContentView(NSWindow window, NSView view) {
    return send<NSRect>(window, "tessarin_frameRectForContentView:"_sel, view);
}

NSPoint tessarin_topLeftPoint(NSWindow window) { return send<NSPoint>(window, "tessarin_topLeftPoint"_sel); }

NSPoint tessarin_convertBaseToScreen(NSWindow window, NSPoint point) {
    return send<NSPoint>(window, "tessarin_convertBaseToScreen:"_sel, point);
}
