// What the embedded platform's views keep.
#pragma once

#include "TessarinPlatform/NSView.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <vector>

namespace tessarin::embedded {

struct ViewStorage {
    ViewStorage() = default;
    ViewStorage(const ViewStorage&) = delete;
    ViewStorage& operator=(const ViewStorage&) = delete;
    ~ViewStorage();

    NSRect frame{};
    NSView superview;               // not retained
    NSWindow window;                // of a window's content view alone; not retained
    std::vector<NSObject> subviews; // the hindmost first; retained
    bool isHidden = false;
};

inline ViewStorage& storageOf(NSView view) { return embedded::storageOf<ViewStorage>(view); }

// What a class adds whose superclass is NSView itself: it lies behind what every view keeps.
template <class Storage>
Storage& addedStorageOf(NSView view) {
    constexpr std::size_t offset =
        (sizeof(ViewStorage) + alignof(Storage) - 1) / alignof(Storage) * alignof(Storage);
    return *std::launder(reinterpret_cast<Storage*>(reinterpret_cast<std::byte*>(&storageOf(view)) + offset));
}

// Raises where what is to be put into a view or a window is no view. Nil is none, and allowed.
void requireView(NSObject self, SEL selector, NSView view);

// Takes a view out of the view or the window that it is in. The caller keeps it alive.
void takeOut(NSView view);

} // namespace tessarin::embedded
