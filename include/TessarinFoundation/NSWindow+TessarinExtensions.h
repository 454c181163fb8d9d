// Windows placed by their top-left corner.
//
// All points and rectangles are in screen coordinates, whose origin is at the bottom left and whose y grows
// upward, so that the top of a rectangle is at y + height. To be used where windows are: on the application's
// interface thread.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <AppKit/NSWindow.h>

@class NSView;

@interface NSWindow (TessarinExetensions) // spelled so, which is meant

- (NSRect)tessarin_frameRectForContentView:(NSView*)view;
- (NSPoint)tessarin_topLeftPoint;
- (NSPoint)tessarin_convertBaseToScreen:(NSPoint)point;

@end

#else

#    include "TessarinPlatform/NSWindow.h"

// The frame that the window would need to show a view as its content: of the size that
// frameRectForContentRect: answers for the view's frame, at the window's own x, with the window's top where
// it is. Where its bottom would lie below 0 it lies at 0; where its top would then lie above the visible
// height of the main screen, it lies at that height. Only the height of the screen's visible frame counts,
// not where that begins, which is meant: a Dock at the bottom of the screen is not allowed for. A frame that
// is taller than the visible height keeps its top there, and its bottom below 0.
//
// nil counts as a view with an empty frame at (0, 0), a missing main screen as one without height, and the
// embedded platform has none until describeScreens (NSScreen.h) says so; a nil window answers all zeros. The
// window is not changed.
//
//   window.setFrame_display(tessarin_frameRectForContentView(window, view), true);
//   window.setContentView(view);
TESSARIN_EXPORT tessarin::NSRect tessarin_frameRectForContentView(tessarin::NSWindow window,
                                                                  tessarin::NSView view);

// The top-left corner of the window's frame; (0, 0) for nil.
//
//   tessarin_topLeftPoint(window)   // 300 by 200 at (10, 20): (10, 220)
TESSARIN_EXPORT tessarin::NSPoint tessarin_topLeftPoint(tessarin::NSWindow window);

// Where on the screen a point lies that is given in the window's base coordinates, whose origin is the
// bottom-left corner of its frame. By the window's convertRectToScreen:, of an empty rectangle at that point.
// (0, 0) for a nil window.
//
//   tessarin_convertBaseToScreen(window, NSMakePoint(5, 5))   // in a window at (100, 100): (105, 105)
TESSARIN_EXPORT tessarin::NSPoint tessarin_convertBaseToScreen(tessarin::NSWindow window,
                                                               tessarin::NSPoint point);

#endif
