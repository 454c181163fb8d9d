#include "TessarinPlatform/NSWindow.h"
#include "platform/embedded/appkit/Screens.h"
#include "platform/embedded/appkit/ViewStorage.h"

#include "TessarinPlatform/Exceptions.h"

#include <algorithm>
#include <utility>

namespace tessarin::embedded {
namespace {

struct WindowStorage {
    WindowStorage() = default;
    WindowStorage(const WindowStorage&) = delete;
    WindowStorage& operator=(const WindowStorage&) = delete;
    // The content view may outlive the window.
    ~WindowStorage() {
        if (contentView) embedded::storageOf(contentView).window = nil;
    }

    NSRect frame{};
    NSWindowStyleMask style = NSBorderlessWindowMask;
    Retained<NSString> title = retain(""_ns);
    Retained<NSView> contentView;
    bool isVisible = false;
};

WindowStorage& storageOf(NSWindow window) { return embedded::storageOf<WindowStorage>(window); }

// ---- Frame and content

// In points. No bar is drawn; a titled window has one so that its frame and its content differ as on a
// screen.
CGFloat titleBarHeight(NSWindowStyleMask style) {
    if (!(style & NSTitledWindowMask)) return 0;
    return style & NSUtilityWindowMask ? 16 : 28;
}

NSRect frameRectForContentRect(NSWindow self, SEL, NSRect rect) {
    rect.size.height += titleBarHeight(storageOf(self).style);
    return rect;
}
NSRect contentRectForFrameRect(NSWindow self, SEL, NSRect rect) {
    rect.size.height -= titleBarHeight(storageOf(self).style);
    return rect;
}

// The place that the content view fills, which is empty where the frame leaves no room for it.
void resizeContentView(NSWindow self) {
    NSSize size = contentRectForFrameRect(self, nullptr, storageOf(self).frame).size;
    size.height = std::max(size.height, CGFloat{0});
    storageOf(self).contentView.setFrame({NSZeroPoint, size});
}

NSRect frame(NSWindow self, SEL) { return storageOf(self).frame; }
void setFrame_display(NSWindow self, SEL, NSRect frame, BOOL) {
    storageOf(self).frame = frame;
    resizeContentView(self);
}

NSRect convertRectToScreen(NSWindow self, SEL, NSRect rect) {
    const NSPoint origin = self.frame().origin;
    return {{rect.origin.x + origin.x, rect.origin.y + origin.y}, rect.size};
}
NSRect convertRectFromScreen(NSWindow self, SEL, NSRect rect) {
    const NSPoint origin = self.frame().origin;
    return {{rect.origin.x - origin.x, rect.origin.y - origin.y}, rect.size};
}

NSView contentView(NSWindow self, SEL) { return storageOf(self).contentView; }

void setContentView(NSWindow self, SEL selector, NSView view) {
    requireView(self, selector, view);
    WindowStorage& storage = storageOf(self);
    if (storage.contentView != view) {
        Retained<NSView> shown = retain(view);
        if (view) {
            takeOut(view);
            embedded::storageOf(view).window = self;
        }
        if (storage.contentView) embedded::storageOf(storage.contentView).window = nil;
        std::swap(storage.contentView, shown);
    }
    resizeContentView(self);
}

// ---- Making

NSWindow initWithContentRect_styleMask_backing_defer(NSWindow self, SEL, NSRect contentRect,
                                                     NSWindowStyleMask style, NSBackingStoreType, BOOL) {
    WindowStorage& storage = storageOf(self);
    storage.style = style;
    storage.frame = frameRectForContentRect(self, nullptr, contentRect);
    setContentView(self, nullptr, adopt(NSView::alloc().initWithFrame(NSZeroRect)));
    return self;
}
NSWindow init(NSWindow self, SEL) {
    return self.initWithContentRect_styleMask_backing_defer(NSZeroRect, NSTitledWindowMask,
                                                            NSBackingStoreBuffered, true);
}

// ---- The rest

NSWindowStyleMask styleMask(NSWindow self, SEL) { return storageOf(self).style; }

NSString title(NSWindow self, SEL) { return storageOf(self).title; }
void setTitle(NSWindow self, SEL, NSString title) {
    if (!title)
        raise(NSInternalInconsistencyException(), "Invalid parameter not satisfying: title != nil"_ns);
    storageOf(self).title = adopt(NSString(title.copy()));
}

CGFloat overlap(CGFloat left, CGFloat leftLength, CGFloat right, CGFloat rightLength) {
    return std::min(left + leftLength, right + rightLength) - std::max(left, right);
}
CGFloat sharedArea(const NSRect& left, const NSRect& right) {
    const CGFloat width = overlap(left.origin.x, left.size.width, right.origin.x, right.size.width);
    const CGFloat height = overlap(left.origin.y, left.size.height, right.origin.y, right.size.height);
    return width > 0 && height > 0 ? width * height : 0;
}

NSScreen screen(NSWindow self, SEL) {
    const NSRect frame = self.frame();
    const Retained<NSArray> screens = currentScreens();
    NSScreen fullest;
    CGFloat largestArea = 0;
    for (const NSScreen screen : screens) {
        const CGFloat area = sharedArea(frame, screen.frame());
        if (area <= largestArea) continue;
        largestArea = area;
        fullest = screen;
    }
    return retain(fullest).autorelease();
}

BOOL isVisible(NSWindow self, SEL) { return storageOf(self).isVisible; }
void orderFront(NSWindow self, SEL, NSObject) { storageOf(self).isVisible = true; }
void orderOut(NSWindow self, SEL, NSObject) { storageOf(self).isVisible = false; }

} // namespace

ClassDescription describeNSWindow() {
    return {
        .name = "NSWindow",
        .superclass = "NSObject",
        .storage = storageLayout<WindowStorage>(),
        .methods = {instanceMethod("initWithContentRect:styleMask:backing:defer:",
                                   initWithContentRect_styleMask_backing_defer),
                    instanceMethod("init", init), instanceMethod("styleMask", styleMask),
                    instanceMethod("title", title), instanceMethod("setTitle:", setTitle),
                    instanceMethod("frame", frame), instanceMethod("setFrame:display:", setFrame_display),
                    instanceMethod("frameRectForContentRect:", frameRectForContentRect),
                    instanceMethod("contentRectForFrameRect:", contentRectForFrameRect),
                    instanceMethod("convertRectToScreen:", convertRectToScreen),
                    instanceMethod("convertRectFromScreen:", convertRectFromScreen),
                    instanceMethod("contentView", contentView),
                    instanceMethod("setContentView:", setContentView), instanceMethod("screen", screen),
                    instanceMethod("isVisible", isVisible), instanceMethod("orderFront:", orderFront),
                    instanceMethod("orderOut:", orderOut)},
    };
}

} // namespace tessarin::embedded
