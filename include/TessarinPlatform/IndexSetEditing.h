// Edits of index sets that would take several messages, made at once.
#pragma once

#include "TessarinPlatform/NSMutableIndexSet.h"

namespace tessarin {

// Moves an index from one set to another, when both are the platform's own, the first holds the index and the
// second does not. Otherwise false, and nothing is done: messages do then what is to be done.
TESSARIN_EXPORT bool moveIndexAtOnce(NSUInteger index, NSMutableIndexSet from, NSMutableIndexSet to);

} // namespace tessarin
