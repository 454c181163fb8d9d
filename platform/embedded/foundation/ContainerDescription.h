// The descriptions of arrays and dictionaries, without recursion.
#pragma once

#include "TessarinPlatform/NSDictionary.h"

namespace tessarin::embedded {

// NSArray's and NSDictionary's description. Containers that answer description with these functions are
// described in one walk, however deep they nest; any other object is sent the message. Behind 64 MiB of text
// an object whose own takes more than 64 characters is shown once; where it is met again stands "...".
NSString arrayDescription(NSArray self, SEL);
NSString dictionaryDescription(NSDictionary self, SEL);
// The description of an attributed string's attributes. Of attributed strings in them the text is shown
// alone: each level of theirs would be quoted again, which doubles it. `before` is the length of what has
// been described so far.
NSString attributesDescription(NSDictionary attributes, std::size_t before);

} // namespace tessarin::embedded
