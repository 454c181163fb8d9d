// A window whose frame, and whose need of room, a test decides.
#pragma once

#include "TessarinPlatform/TessarinPlatform.h"

namespace tessarin::testing {

// A window, never shown, that answers `frame`, and `needed` for the frame around any content; it remembers
// what content it was asked about.
class TestWindow {
public:
    TestWindow(NSRect frame, NSRect needed)
        : window_(adopt(as<NSWindow>(definition().classObject().alloc())
                            .initWithContentRect_styleMask_backing_defer(NSMakeRect(0, 0, 10, 10),
                                                                         NSBorderlessWindowMask,
                                                                         NSBackingStoreBuffered, true))) {
        rect("testFrame") = frame;
        rect("neededFrame") = needed;
        instanceVariableOf<BOOL>(window_, "isReady") = YES;
    }

    operator NSWindow() const { return window_; }
    NSRect askedContent() const { return rect("askedContent"); }

private:
    static const ClassDefinition& definition() {
        static const ClassDefinition instance{
            {.name = "TessarinTestWindow",
             .superclass = "NSWindow",
             .instanceVariables = {instanceVariable<NSRect>("testFrame"),
                                   instanceVariable<NSRect>("neededFrame"),
                                   instanceVariable<NSRect>("askedContent"),
                                   instanceVariable<BOOL>("isReady")},
             .methods = {instanceMethod("frame", frame),
                         instanceMethod("frameRectForContentRect:", frameRectForContentRect)}}};
        return instance;
    }
    static NSRect& rectOf(NSWindow window, const char* name) {
        return instanceVariableOf<NSRect>(window, name);
    }
    NSRect& rect(const char* name) const { return rectOf(window_, name); }

    // The platform may ask while it makes the window.
    static bool isReady(NSWindow window) { return instanceVariableOf<BOOL>(window, "isReady") != NO; }
    static NSRect frame(NSWindow self, SEL selector) {
        if (!isReady(self)) return sendSuper<NSRect>(self, definition().classObject(), selector);
        return rectOf(self, "testFrame");
    }
    static NSRect frameRectForContentRect(NSWindow self, SEL selector, NSRect content) {
        if (!isReady(self)) return sendSuper<NSRect>(self, definition().classObject(), selector, content);
        rectOf(self, "askedContent") = content;
        return rectOf(self, "neededFrame");
    }

    Retained<NSWindow> window_;
};

} // namespace tessarin::testing
