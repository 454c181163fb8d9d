#include "platform/embedded/appkit/ViewStorage.h"
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/runtime/StoredKind.h"

#include "TessarinPlatform/NSException.h"

namespace tessarin::embedded {

// A subview may outlive the view that it was in.
ViewStorage::~ViewStorage() {
    for (const NSObject subview : subviews) storageOf(as<NSView>(subview)).superview = nil;
    for (const NSObject subview : subviews) runtime::release(subview.object());
}

namespace {

// ---- Making

NSView initWithFrame(NSView self, SEL, NSRect frame) {
    storageOf(self).frame = frame;
    return self;
}
NSView init(NSView self, SEL) { return self.initWithFrame(NSZeroRect); }

// ---- Geometry

NSRect frame(NSView self, SEL) { return storageOf(self).frame; }
void setFrame(NSView self, SEL, NSRect frame) { storageOf(self).frame = frame; }
NSRect bounds(NSView self, SEL) { return {NSZeroPoint, self.frame().size}; }
void setFrameOrigin(NSView self, SEL, NSPoint origin) { storageOf(self).frame.origin = origin; }
void setFrameSize(NSView self, SEL, NSSize size) { storageOf(self).frame.size = size; }
BOOL isFlipped(NSView, SEL) { return NO; }

// ---- Views in views. A chain of them may be longer than any stack: all walks are loops.

// Whether `view` is `inner` or contains it.
bool contains(NSView view, NSView inner) {
    // Most views that are added hold nothing.
    if (storageOf(view).subviews.empty()) return view == inner;
    for (; inner; inner = storageOf(inner).superview)
        if (inner == view) return true;
    return false;
}

// Where a subview stands that is one. Looked for from both ends, since the first or the last mostly goes.
std::size_t indexOf(const std::vector<NSObject>& subviews, NSView view) {
    for (std::size_t fromStart = 0, fromEnd = subviews.size() - 1;; ++fromStart, --fromEnd) {
        if (subviews[fromStart] == view) return fromStart;
        if (subviews[fromEnd] == view) return fromEnd;
    }
}

NSView superview(NSView self, SEL) { return storageOf(self).superview; }
NSArray subviews(NSView self, SEL) { return makeArray(storageOf(self).subviews); }

NSWindow window(NSView self, SEL) {
    NSView outermost = self;
    while (const NSView superview = storageOf(outermost).superview) outermost = superview;
    return storageOf(outermost).window;
}

void requireOutside(NSView self, SEL selector, NSView view) {
    if (contains(view, self))
        raiseFrom(NSInvalidArgumentException(), self, selector,
                  "a view cannot be put into itself or into a view that it contains");
}

void addSubview(NSView self, SEL selector, NSView view) {
    if (!view) return;
    requireView(self, selector, view);
    requireOutside(self, selector, view);
    Retained<NSView> added = retain(view);
    takeOut(view);
    // Those that the view is taken out of are told, and may have put this one into it.
    requireOutside(self, selector, view);
    storageOf(self).subviews.push_back(added.leak());
    storageOf(view).superview = self;
}

void removeFromSuperview(NSView self, SEL) {
    const Retained<NSView> kept = retain(self);
    takeOut(self);
}

// For classes that want to know.
void willRemoveSubview(NSView, SEL, NSView) {}

// ---- Hiding

BOOL isHidden(NSView self, SEL) { return storageOf(self).isHidden; }
void setHidden(NSView self, SEL, BOOL hidden) { storageOf(self).isHidden = hidden; }

BOOL isHiddenOrHasHiddenAncestor(NSView self, SEL) {
    for (NSView view = self; view; view = storageOf(view).superview)
        if (storageOf(view).isHidden) return YES;
    return NO;
}

} // namespace

void requireView(NSObject self, SEL selector, NSView view) {
    if (view && !storedKindOf<NSView>(view))
        raiseFrom(NSInvalidArgumentException(), self, selector, "what is put in has to be a view");
}

void takeOut(NSView view) {
    ViewStorage& storage = storageOf(view);
    if (storage.superview) send<void>(storage.superview, "willRemoveSubview:"_sel, view);
    // That may have done it already, or put the view elsewhere: into another view, or a window.
    if (storage.superview) {
        std::vector<NSObject>& subviews = storageOf(storage.superview).subviews;
        subviews.erase(subviews.begin() + static_cast<std::ptrdiff_t>(indexOf(subviews, view)));
        storage.superview = nil;
        runtime::release(view.object());
    }
    if (storage.window) storage.window.setContentView(nil);
}

ClassDescription describeNSView() {
    return {
        .name = "NSView",
        .superclass = "NSObject",
        .storage = storageLayout<ViewStorage>(),
        .methods = {instanceMethod("initWithFrame:", initWithFrame), instanceMethod("init", init),
                    instanceMethod("frame", frame), instanceMethod("setFrame:", setFrame),
                    instanceMethod("bounds", bounds), instanceMethod("setFrameOrigin:", setFrameOrigin),
                    instanceMethod("setFrameSize:", setFrameSize), instanceMethod("isFlipped", isFlipped),
                    instanceMethod("superview", superview), instanceMethod("subviews", subviews),
                    instanceMethod("window", window), instanceMethod("addSubview:", addSubview),
                    instanceMethod("removeFromSuperview", removeFromSuperview),
                    instanceMethod("willRemoveSubview:", willRemoveSubview),
                    instanceMethod("isHidden", isHidden), instanceMethod("setHidden:", setHidden),
                    instanceMethod("isHiddenOrHasHiddenAncestor", isHiddenOrHasHiddenAncestor)},
    };
}

} // namespace tessarin::embedded
