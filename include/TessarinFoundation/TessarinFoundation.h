// The whole library.
#pragma once

#include "TessarinFoundation/NSArray+TessarinExtensions.h"
#include "TessarinFoundation/NSAttributedString+TessarinExtensions.h"
#include "TessarinFoundation/NSDictionary+TessarinExtensions.h"
#include "TessarinFoundation/NSFileManager+TessarinExtensions.h"
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"
#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"
#include "TessarinFoundation/NSSortDescriptor+TessarinExtensions.h"
#include "TessarinFoundation/NSString+TessarinExtensions.h"
#include "TessarinFoundation/NSURL+TessarinExtensions.h"
#include "TessarinFoundation/TSSRAudio.h"
#include "TessarinFoundation/TSSRTransformedValue.h"
#include "TessarinFoundation/TSSRUniqueIndexer.h"

// What extends the AppKit's classes, where there is one.
#if !defined(__OBJC__) || __has_include(<AppKit/NSWindow.h>)
#    include "TessarinFoundation/NSColor+TessarinExtensions.h"
#    include "TessarinFoundation/NSMenu+TessarinExtensions.h"
#    include "TessarinFoundation/NSScrollView+TessarinExtensions.h"
#    include "TessarinFoundation/NSView+TessarinExtensions.h"
#    include "TessarinFoundation/NSWindow+TessarinExtensions.h"
#endif
