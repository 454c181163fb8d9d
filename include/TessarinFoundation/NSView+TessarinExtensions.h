// Views placed by their top-left corner.
//
// Points and rectangles are in the coordinates of the superview, whose y is taken to grow upward: whether the
// superview is flipped is not looked at, which is meant. To be used where views are: on the application's
// interface thread.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <AppKit/NSView.h>

@interface NSView (TessarinExtensions)

- (void)tessarin_setFrameWithOriginAtTopLeft:(NSRect)frame;
- (void)tessarin_setFrameTopLeftPoint:(NSPoint)point;

@end

#else

#    include "TessarinPlatform/NSView.h"

// Sets the view's frame from a rectangle whose origin is its top-left corner. Nothing for nil.
//
//   tessarin_setFrameWithOriginAtTopLeft(view, NSMakeRect(0, 100, 50, 40))   // the frame (0, 60, 50, 40)
TESSARIN_EXPORT void tessarin_setFrameWithOriginAtTopLeft(tessarin::NSView view, tessarin::NSRect frame);

// Moves the view's top-left corner to a point; the size stays. Nothing for nil.
//
//   tessarin_setFrameTopLeftPoint(view, NSMakePoint(0, 100))   // 50 by 40: the frame (0, 60, 50, 40)
TESSARIN_EXPORT void tessarin_setFrameTopLeftPoint(tessarin::NSView view, tessarin::NSPoint point);

#endif
