// The enumerators of the embedded platform's collections.
#pragma once

#include "TessarinPlatform/NSDictionary.h"

namespace tessarin::embedded {

// Autoreleased enumerators, which keep their collection. They answer nextObject and allObjects.
NSObject makeArrayEnumerator(NSArray array, bool isReversed);
NSObject makeKeyEnumerator(NSDictionary dictionary);
NSObject makeObjectEnumerator(NSDictionary dictionary);

} // namespace tessarin::embedded
