// The descriptions of arrays and dictionaries, without recursion.
#pragma once

#include "TessarinPlatform/NSDictionary.h"

namespace tessarin::embedded {

// NSArray's and NSDictionary's description. Containers that answer description with these functions are
// described in one walk, however deep they nest; any other object is sent the message.
NSString arrayDescription(NSArray self, SEL);
NSString dictionaryDescription(NSDictionary self, SEL);

} // namespace tessarin::embedded
