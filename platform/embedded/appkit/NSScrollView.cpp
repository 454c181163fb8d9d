#include "TessarinPlatform/NSScrollView.h"
#include "platform/embedded/appkit/ViewStorage.h"

#include <utility>

namespace tessarin::embedded {
namespace {

struct ScrollBar {
    Retained<NSScroller> scroller;
    bool isWanted = false;
};

struct ScrollViewStorage {
    ScrollBar horizontal;
    ScrollBar vertical;
    // A subview, unless a derived class keeps from this one that it was taken out: it must not be gone then.
    Retained<NSView> documentView;
};

ScrollViewStorage& storageOf(NSScrollView view) { return addedStorageOf<ScrollViewStorage>(view); }

// ---- Scrollers

// Only where it is the scroll view's own: it may have been put elsewhere.
void takeOutOf(NSScrollView self, NSView view) {
    if (view.superview() == self) view.removeFromSuperview();
}

void replaceScroller(NSScrollView self, ScrollBar& bar, NSScroller scroller) {
    if (bar.scroller == scroller) return;
    if (bar.isWanted) self.addSubview(scroller);
    const Retained<NSScroller> replaced = std::exchange(bar.scroller, retain(scroller));
    takeOutOf(self, replaced);
}

void wantScroller(NSScrollView self, ScrollBar& bar, BOOL flag) {
    bar.isWanted = flag;
    if (!flag)
        takeOutOf(self, bar.scroller);
    else if (!bar.scroller)
        replaceScroller(self, bar, adopt(NSScroller::alloc().initWithFrame(NSZeroRect)));
    else if (bar.scroller.superview() != self)
        self.addSubview(bar.scroller);
}

NSScroller horizontalScroller(NSScrollView self, SEL) { return storageOf(self).horizontal.scroller; }
NSScroller verticalScroller(NSScrollView self, SEL) { return storageOf(self).vertical.scroller; }
void setHorizontalScroller(NSScrollView self, SEL selector, NSScroller scroller) {
    requireView(self, selector, scroller);
    replaceScroller(self, storageOf(self).horizontal, scroller);
}
void setVerticalScroller(NSScrollView self, SEL selector, NSScroller scroller) {
    requireView(self, selector, scroller);
    replaceScroller(self, storageOf(self).vertical, scroller);
}
BOOL hasHorizontalScroller(NSScrollView self, SEL) { return storageOf(self).horizontal.isWanted; }
BOOL hasVerticalScroller(NSScrollView self, SEL) { return storageOf(self).vertical.isWanted; }
void setHasHorizontalScroller(NSScrollView self, SEL, BOOL flag) {
    wantScroller(self, storageOf(self).horizontal, flag);
}
void setHasVerticalScroller(NSScrollView self, SEL, BOOL flag) {
    wantScroller(self, storageOf(self).vertical, flag);
}

// ---- What is scrolled

NSView documentView(NSScrollView self, SEL) { return storageOf(self).documentView; }

void setDocumentView(NSScrollView self, SEL selector, NSView view) {
    requireView(self, selector, view);
    ScrollViewStorage& storage = storageOf(self);
    if (storage.documentView == view) return;
    self.addSubview(view);
    const Retained<NSView> replaced = std::exchange(storage.documentView, retain(view));
    takeOutOf(self, replaced);
}

void willRemoveSubview(NSScrollView self, SEL selector, NSView view) {
    sendSuper<void>(self, NSScrollView::classObject(), selector, view);
    Retained<NSView>& documentView = storageOf(self).documentView;
    if (documentView == view) documentView.reset();
}

} // namespace

ClassDescription describeNSScrollView() {
    return {
        .name = "NSScrollView",
        .superclass = "NSView",
        .storage = storageLayout<ScrollViewStorage>(),
        .methods = {instanceMethod("horizontalScroller", horizontalScroller),
                    instanceMethod("verticalScroller", verticalScroller),
                    instanceMethod("setHorizontalScroller:", setHorizontalScroller),
                    instanceMethod("setVerticalScroller:", setVerticalScroller),
                    instanceMethod("hasHorizontalScroller", hasHorizontalScroller),
                    instanceMethod("hasVerticalScroller", hasVerticalScroller),
                    instanceMethod("setHasHorizontalScroller:", setHasHorizontalScroller),
                    instanceMethod("setHasVerticalScroller:", setHasVerticalScroller),
                    instanceMethod("documentView", documentView),
                    instanceMethod("setDocumentView:", setDocumentView),
                    instanceMethod("willRemoveSubview:", willRemoveSubview)},
    };
}

} // namespace tessarin::embedded
