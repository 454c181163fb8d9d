// NSScroller: the bar that scrolls a view.
#pragma once

#include "TessarinPlatform/NSView.h"

namespace tessarin {

class NSScroller : public Handle<NSScroller, "NSScroller", NSView> {
public:
    using Handle::Handle;

    [[nodiscard]] NSScroller initWithFrame(NSRect frame) const {
        return send<NSScroller>(*this, "initWithFrame:"_sel, frame);
    }
};

} // namespace tessarin
