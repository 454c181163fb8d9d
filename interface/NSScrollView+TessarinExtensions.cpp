// Whether a scroll view's scrollers are to be seen.
#include "TessarinFoundation/NSScrollView+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"

using namespace tessarin;

namespace {

// Whether the scroll view is set to have a scroller is not asked; that is meant.
BOOL isVisible(NSScroller scroller) { return scroller && !scroller.isHiddenOrHasHiddenAncestor() ? YES : NO; }

BOOL isHorizontalScrollerVisible(NSScrollView self, SEL) { return isVisible(self.horizontalScroller()); }
BOOL isVerticalScrollerVisible(NSScrollView self, SEL) { return isVisible(self.verticalScroller()); }

const ExtensionGroup group{
    "NSScrollView",
    "TessarinExtensions",
    {instanceMethod("tessarin_isHorizontalScrollerVisible", isHorizontalScrollerVisible),
     instanceMethod("tessarin_isVerticalScrollerVisible", isVerticalScrollerVisible)}};

} // namespace

bool tessarin_isHorizontalScrollerVisible(NSScrollView view) {
    return send<BOOL>(view, "tessarin_isHorizontalScrollerVisible"_sel) != NO;
}

bool tessarin_isVerticalScrollerVisible(NSScrollView view) {
    return send<BOOL>(view, "tessarin_isVerticalScrollerVisible"_sel) != NO;
}
