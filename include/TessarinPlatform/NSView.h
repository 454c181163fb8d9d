// NSView: a rectangle in its superview's coordinates, with views inside it.
#pragma once

#include "TessarinPlatform/Geometry.h"
#include "TessarinPlatform/NSArray.h"

namespace tessarin {

class NSWindow;

// A view retains its subviews, not its superview.
class NSView : public Handle<NSView, "NSView", NSObject> {
public:
    using Handle::Handle;

    [[nodiscard]] NSView initWithFrame(NSRect frame) const {
        return send<NSView>(*this, "initWithFrame:"_sel, frame);
    }

    NSRect frame() const { return send<NSRect>(*this, "frame"_sel); }
    void setFrame(NSRect frame) const { send<void>(*this, "setFrame:"_sel, frame); }
    // The view's own coordinates: the frame's size at (0, 0).
    NSRect bounds() const { return send<NSRect>(*this, "bounds"_sel); }
    void setFrameOrigin(NSPoint origin) const { send<void>(*this, "setFrameOrigin:"_sel, origin); }
    void setFrameSize(NSSize size) const { send<void>(*this, "setFrameSize:"_sel, size); }
    // Whether y grows downward inside the view: NO unless a subclass says otherwise.
    bool isFlipped() const { return send<BOOL>(*this, "isFlipped"_sel) != NO; }

    NSView superview() const { return send<NSView>(*this, "superview"_sel); }
    NSArray subviews() const { return send<NSArray>(*this, "subviews"_sel); }
    // The window that shows the view, nil for none.
    NSWindow window() const;
    // Puts the view in front of the others, taken out of the view that it was in. Nothing for nil; a view
    // that is the receiver or contains it raises NSInvalidArgumentException, and so does what is no view.
    void addSubview(NSView view) const { send<void>(*this, "addSubview:"_sel, view); }
    void removeFromSuperview() const { send<void>(*this, "removeFromSuperview"_sel); }

    bool isHidden() const { return send<BOOL>(*this, "isHidden"_sel) != NO; }
    void setHidden(bool hidden) const { send<void>(*this, "setHidden:"_sel, static_cast<BOOL>(hidden)); }
    // Whether the view or any that contains it is hidden.
    bool isHiddenOrHasHiddenAncestor() const {
        return send<BOOL>(*this, "isHiddenOrHasHiddenAncestor"_sel) != NO;
    }
};

} // namespace tessarin

#include "TessarinPlatform/NSWindow.h"
