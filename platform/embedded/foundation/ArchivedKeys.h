// Keys of dictionaries as they come from archives.
#pragma once

#include "TessarinPlatform/NSCoder.h"

#include <span>

namespace tessarin::embedded {

// To be asked before a dictionary is made of decoded keys, which copies and compares them: a few bytes of an
// archive may ask for any number of copies, and for comparisons without end. Raises when it comes to more
// than any sound archive of the size asks for, and for keys inside keys inside keys.
void checkArchivedKeys(NSCoder coder, std::span<const NSObject> keys);

} // namespace tessarin::embedded
