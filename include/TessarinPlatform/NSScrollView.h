// NSScrollView: a view that shows part of another, with scrollers. The embedded platform, which draws
// nothing, leaves the frames of its scrollers alone and never hides one by itself.
#pragma once

#include "TessarinPlatform/NSScroller.h"

namespace tessarin {

class NSScrollView : public Handle<NSScrollView, "NSScrollView", NSView> {
public:
    using Handle::Handle;

    [[nodiscard]] NSScrollView initWithFrame(NSRect frame) const {
        return send<NSScrollView>(*this, "initWithFrame:"_sel, frame);
    }

    // The scroller, shown or not; nil where none was ever made or set.
    NSScroller horizontalScroller() const { return send<NSScroller>(*this, "horizontalScroller"_sel); }
    NSScroller verticalScroller() const { return send<NSScroller>(*this, "verticalScroller"_sel); }
    void setHorizontalScroller(NSScroller scroller) const {
        send<void>(*this, "setHorizontalScroller:"_sel, scroller);
    }
    void setVerticalScroller(NSScroller scroller) const {
        send<void>(*this, "setVerticalScroller:"_sel, scroller);
    }
    // Whether there is to be a scroller. YES makes one where there is none and puts it into the view; NO
    // takes it out of the view, but keeps it.
    bool hasHorizontalScroller() const { return send<BOOL>(*this, "hasHorizontalScroller"_sel) != NO; }
    bool hasVerticalScroller() const { return send<BOOL>(*this, "hasVerticalScroller"_sel) != NO; }
    void setHasHorizontalScroller(bool flag) const {
        send<void>(*this, "setHasHorizontalScroller:"_sel, static_cast<BOOL>(flag));
    }
    void setHasVerticalScroller(bool flag) const {
        send<void>(*this, "setHasVerticalScroller:"_sel, static_cast<BOOL>(flag));
    }
    // The view that is scrolled, nil for none.
    NSView documentView() const { return send<NSView>(*this, "documentView"_sel); }
    void setDocumentView(NSView view) const { send<void>(*this, "setDocumentView:"_sel, view); }
};

} // namespace tessarin
