// Whether a scroll view's scrollers are to be seen.
//
// To be used where views are: on the application's interface thread.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <AppKit/NSScrollView.h>

@interface NSScrollView (TessarinExtensions)

- (BOOL)tessarin_isHorizontalScrollerVisible;
- (BOOL)tessarin_isVerticalScrollerVisible;

@end

#else

#    include "TessarinPlatform/NSScrollView.h"

// Whether there is such a scroller and neither it nor any view that contains it is hidden. Whether the scroll
// view is set to have one (hasHorizontalScroller, hasVerticalScroller) is not asked, which is meant: a
// scroller that was taken out of the view, but kept, counts. false for nil.
//
//   const bool shown = tessarin_isVerticalScrollerVisible(scrollView);
TESSARIN_EXPORT bool tessarin_isHorizontalScrollerVisible(tessarin::NSScrollView view);
TESSARIN_EXPORT bool tessarin_isVerticalScrollerVisible(tessarin::NSScrollView view);

#endif
