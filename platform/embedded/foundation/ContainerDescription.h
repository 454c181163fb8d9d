// The descriptions of arrays and dictionaries, without recursion.
#pragma once

#include "TessarinPlatform/NSDictionary.h"

namespace tessarin::embedded {

// NSArray's and NSDictionary's description. Containers that answer description with these functions are
// described in one walk, however deep they nest; any other object is sent the message.
NSString arrayDescription(NSArray self, SEL);
NSString dictionaryDescription(NSDictionary self, SEL);
// The description of an attributed string's attributes. Of attributed strings in them the text is shown
// alone: each level of theirs would be quoted again, which doubles it.
NSString attributesDescription(NSDictionary attributes);

} // namespace tessarin::embedded
