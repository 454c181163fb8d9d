// Equality of arrays, dictionaries and attributed strings, without recursion.
#pragma once

#include "TessarinPlatform/NSAttributedString.h"
#include "TessarinPlatform/NSDictionary.h"

namespace tessarin::embedded {

// NSArray's and NSDictionary's isEqual:. Containers that answer isEqual: with these functions are compared in
// one walk, however deep they nest, whether or not they contain themselves, and shared parts once; any other
// object is sent the message.
BOOL arrayIsEqual(NSArray self, SEL, NSObject other);
BOOL dictionaryIsEqual(NSDictionary self, SEL, NSObject other);

// NSAttributedString's isEqual: and isEqualToAttributedString:. One that answers both with these functions is
// compared in the same walk, by its attributes.
BOOL attributedStringIsEqual(NSAttributedString self, SEL, NSObject other);
BOOL isEqualToAttributedString(NSAttributedString self, SEL, NSAttributedString other);

} // namespace tessarin::embedded
