// Dictionaries: values in the order of their keys, and a dictionary without one of its keys.
//
// The receiver is never changed. Results are new, immutable and autoreleased. A nil dictionary answers nil.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <Foundation/NSArray.h>
#    import <Foundation/NSDictionary.h>

@interface NSDictionary (TessarinExtensions)

- (NSArray*)tessarin_allValuesSortedByKeys;
- (NSDictionary*)tessarin_dictionaryByRemovingObjectForKey:(id)key;

@end

#else

#    include "TessarinPlatform/NSDictionary.h"

// The values, in the ascending order of their keys by the keys' own compare:. Empty for an empty dictionary.
// What the platform raises for keys that cannot be compared passes through: NSInvalidArgumentException for a
// key that does not respond to compare:. GNUstep gives every object a compare: and raises nothing.
//
//   tessarin_allValuesSortedByKeys(dictionary)   // {b: 2, a: 1} gives 1, 2
TESSARIN_EXPORT tessarin::NSArray tessarin_allValuesSortedByKeys(tessarin::NSDictionary dictionary);

// The dictionary without the key and its value: another one also when the key is not in it. What the platform
// raises for a nil key passes through: NSInvalidArgumentException; GNUstep logs it and removes nothing.
//
//   tessarin_dictionaryByRemovingObjectForKey(settings, "window"_ns)
TESSARIN_EXPORT tessarin::NSDictionary
tessarin_dictionaryByRemovingObjectForKey(tessarin::NSDictionary dictionary, tessarin::NSObject key);

#endif
