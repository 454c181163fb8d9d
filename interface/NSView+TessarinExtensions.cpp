// Views placed by their top-left corner.
#include "TessarinFoundation/NSView+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"

using namespace tessarin;

namespace {

// The same for flipped superviews, which is meant.
void setFrameWithOriginAtTopLeft(NSView self, SEL, NSRect frame) {
    frame.origin.y -= frame.size.height;
    self.setFrame(frame);
}

void setFrameTopLeftPoint(NSView self, SEL, NSPoint point) {
    const NSSize size = self.frame().size;
    self.setFrame({{point.x, point.y - size.height}, size});
}

const ExtensionGroup group{
    "NSView",
    "TessarinExtensions",
    {instanceMethod("tessarin_setFrameWithOriginAtTopLeft:", setFrameWithOriginAtTopLeft),
     instanceMethod("tessarin_setFrameTopLeftPoint:", setFrameTopLeftPoint)}};

} // namespace

void tessarin_setFrameWithOriginAtTopLeft(NSView view, NSRect frame) {
    send<void>(view, "tessarin_setFrameWithOriginAtTopLeft:"_sel, frame);
}

void tessarin_setFrameTopLeftPoint(NSView view, NSPoint point) {
    send<void>(view, "tessarin_setFrameTopLeftPoint:"_sel, point);
}
