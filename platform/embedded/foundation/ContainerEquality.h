// Equality of arrays and dictionaries, without recursion.
#pragma once

#include "TessarinPlatform/NSDictionary.h"

namespace tessarin::embedded {

// NSArray's and NSDictionary's isEqual:. Containers that answer isEqual: with these functions are compared in
// one walk, however deep they nest, whether or not they contain themselves, and shared parts once; any other
// object is sent the message.
BOOL arrayIsEqual(NSArray self, SEL, NSObject other);
BOOL dictionaryIsEqual(NSDictionary self, SEL, NSObject other);

} // namespace tessarin::embedded
