// NSWindow: a rectangle on the screen with a content view.
#pragma once

#include "TessarinPlatform/NSScreen.h"
#include "TessarinPlatform/NSView.h"

namespace tessarin {

using NSWindowStyleMask = NSUInteger;
inline constexpr NSWindowStyleMask NSBorderlessWindowMask = 0;
inline constexpr NSWindowStyleMask NSTitledWindowMask = 1;
inline constexpr NSWindowStyleMask NSClosableWindowMask = 2;
inline constexpr NSWindowStyleMask NSMiniaturizableWindowMask = 4;
inline constexpr NSWindowStyleMask NSResizableWindowMask = 8;
inline constexpr NSWindowStyleMask NSUtilityWindowMask = 16;

using NSBackingStoreType = NSUInteger;
inline constexpr NSBackingStoreType NSBackingStoreBuffered = 2;

class NSWindow : public Handle<NSWindow, "NSWindow", NSObject> {
public:
    using Handle::Handle;

    // A window around content of that size and place on the screen, not shown yet.
    [[nodiscard]] NSWindow initWithContentRect_styleMask_backing_defer(NSRect contentRect,
                                                                       NSWindowStyleMask style,
                                                                       NSBackingStoreType backing,
                                                                       bool defer) const {
        return send<NSWindow>(*this, "initWithContentRect:styleMask:backing:defer:"_sel, contentRect, style,
                              backing, static_cast<BOOL>(defer));
    }

    NSWindowStyleMask styleMask() const { return send<NSWindowStyleMask>(*this, "styleMask"_sel); }
    NSString title() const { return send<NSString>(*this, "title"_sel); }
    void setTitle(NSString title) const { send<void>(*this, "setTitle:"_sel, title); }

    // On the screen.
    NSRect frame() const { return send<NSRect>(*this, "frame"_sel); }
    void setFrame_display(NSRect frame, bool display) const {
        send<void>(*this, "setFrame:display:"_sel, frame, static_cast<BOOL>(display));
    }
    // The frame around content of that size and place, and the other way round. The embedded platform adds a
    // title bar above the content: 28 points, 16 for a utility window, none without a title.
    NSRect frameRectForContentRect(NSRect contentRect) const {
        return send<NSRect>(*this, "frameRectForContentRect:"_sel, contentRect);
    }
    NSRect contentRectForFrameRect(NSRect frame) const {
        return send<NSRect>(*this, "contentRectForFrameRect:"_sel, frame);
    }
    // From the window's own coordinates, whose origin is its frame's, to the screen's, and back.
    NSRect convertRectToScreen(NSRect rect) const {
        return send<NSRect>(*this, "convertRectToScreen:"_sel, rect);
    }
    NSRect convertRectFromScreen(NSRect rect) const {
        return send<NSRect>(*this, "convertRectFromScreen:"_sel, rect);
    }

    // Retained; it is given the size of the window's content. Taken out of the view or the window that it was
    // in. What contains it is the platform's own affair: on the embedded platform it has no superview.
    NSView contentView() const { return send<NSView>(*this, "contentView"_sel); }
    void setContentView(NSView view) const { send<void>(*this, "setContentView:"_sel, view); }
    // The screen that holds most of the window, nil for none.
    NSScreen screen() const { return send<NSScreen>(*this, "screen"_sel); }

    bool isVisible() const { return send<BOOL>(*this, "isVisible"_sel) != NO; }
    void orderFront(NSObject sender) const { send<void>(*this, "orderFront:"_sel, sender); }
    void orderOut(NSObject sender) const { send<void>(*this, "orderOut:"_sel, sender); }
};

inline NSWindow NSView::window() const { return send<NSWindow>(*this, "window"_sel); }

} // namespace tessarin
