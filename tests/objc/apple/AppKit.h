// Stands in for the system's headers of AppKit: see Foundation.h.
#pragma once

#import "Foundation.h"

@interface NSColor : NSObject
@end
@interface NSMenu : NSObject
@end
@interface NSView : NSObject
@end
@interface NSScrollView : NSView
@end
@interface NSWindow : NSObject
@end
