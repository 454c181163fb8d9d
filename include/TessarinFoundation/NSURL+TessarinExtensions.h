// File URLs relative to each other. A nil URL, as the receiver or as the base, gives nil.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <Foundation/NSURL.h>

@interface NSURL (TessarinExtensions)

- (NSURL*)tessarin_fileURLRelativeToFileURL:(NSURL*)base;

@end

#else

#    include "TessarinPlatform/NSURL.h"

// A file URL made from the receiver's path relative to the base's path (tessarin_pathRelativeToDirectory,
// whose NSRangeException passes through). That path is mostly relative, and the platform takes a relative
// path against the process's current directory: the result is not a URL relative to `base`, which is meant.
// nil when either is not a file URL or is nil. When both name the same location the path is empty; what the
// platform makes of that is its own matter: nil on the embedded platform and on macOS, the current directory
// on GNUstep. A file URL whose escapes are no UTF-8 has no path: as the base it gives the receiver's own
// path, and for the receiver the platform's refusal of nil passes through, NSInvalidArgumentException.
// Autoreleased.
//
//   NSURL relative = tessarin_fileURLRelativeToFileURL(file, folder);
TESSARIN_EXPORT tessarin::NSURL tessarin_fileURLRelativeToFileURL(tessarin::NSURL file, tessarin::NSURL base);

#endif
