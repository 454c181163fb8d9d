// The platform as C++ sees it, but for what few programs need:
//
//   Ranges.h          handles as ranges of the standard library: it takes in <ranges>
//   Formatting.h      handles in std::format: it takes in <format>
//   FmtFormatting.h   handles in {fmt}, a library that the application brings along
//
// ArrayEditing.h, ColorReading.h, EqualityIndex.h, IndexSetEditing.h, KeyOrder.h, NumberFormatting.h,
// RepeatedMessage.h, ValueComparison.h and ValueHash.h are left out as well: seams through which the library
// saves what many messages would take, and no part of its interface. ObjectPredicate.h is for Objective-C.
#pragma once

#include "TessarinPlatform/AudioComponent.h"
#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/Block.h"
#include "TessarinPlatform/Comparison.h"
#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/FourCharacterCodes.h"
#include "TessarinPlatform/Geometry.h"
#include "TessarinPlatform/NSAttributedString.h"
#include "TessarinPlatform/NSBundle.h"
#include "TessarinPlatform/NSCharacterSet.h"
#include "TessarinPlatform/NSCoder.h"
#include "TessarinPlatform/NSColor.h"
#include "TessarinPlatform/NSColorSpace.h"
#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/NSFileManager.h"
#include "TessarinPlatform/NSKeyedArchiver.h"
#include "TessarinPlatform/NSKeyedUnarchiver.h"
#include "TessarinPlatform/NSLock.h"
#include "TessarinPlatform/NSLog.h"
#include "TessarinPlatform/NSMenu.h"
#include "TessarinPlatform/NSMenuItem.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableAttributedString.h"
#include "TessarinPlatform/NSMutableData.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSMutableIndexSet.h"
#include "TessarinPlatform/NSMutableString.h"
#include "TessarinPlatform/NSNull.h"
#include "TessarinPlatform/NSNumber.h"
#include "TessarinPlatform/NSNumberFormatter.h"
#include "TessarinPlatform/NSPropertyListSerialization.h"
#include "TessarinPlatform/NSScanner.h"
#include "TessarinPlatform/NSScreen.h"
#include "TessarinPlatform/NSScrollView.h"
#include "TessarinPlatform/NSScroller.h"
#include "TessarinPlatform/NSSortDescriptor.h"
#include "TessarinPlatform/NSURL.h"
#include "TessarinPlatform/NSView.h"
#include "TessarinPlatform/NSWindow.h"
#include "TessarinPlatform/PercentEscapes.h"
#include "TessarinPlatform/PropertyLists.h"
#include "TessarinPlatform/RandomNumbers.h"
#include "TessarinPlatform/Retained.h"
#include "TessarinPlatform/Streaming.h"
#include "TessarinPlatform/StringEncodings.h"
#include "TessarinPlatform/Synchronized.h"
