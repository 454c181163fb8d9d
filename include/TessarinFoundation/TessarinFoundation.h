// The whole library.
#pragma once

#include "TessarinFoundation/NSArray+TessarinExtensions.h"
#include "TessarinFoundation/NSDictionary+TessarinExtensions.h"
#include "TessarinFoundation/NSFileManager+TessarinExtensions.h"
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"
#include "TessarinFoundation/NSString+TessarinExtensions.h"
#include "TessarinFoundation/NSURL+TessarinExtensions.h"
#include "TessarinFoundation/TSSRAudio.h"
#include "TessarinFoundation/TSSRTransformedValue.h"
#include "TessarinFoundation/TSSRUniqueIndexer.h"

// Of the interface, which not every Objective-C Foundation comes with.
#if !defined(__OBJC__) || __has_include(<AppKit/NSColor.h>)
#    include "TessarinFoundation/NSColor+TessarinExtensions.h"
#endif
