// Edits of index sets that tell what they changed, which takes two messages otherwise.
#pragma once

#include "TessarinPlatform/NSMutableIndexSet.h"

namespace tessarin {

enum class IndexEdit {
    notMade,  // messages are to be sent
    needless, // the set was so already
    made,
};

// Adds an index to a set or removes it, when the set is one of the platform's own and can hold the index.
// Otherwise, and for a nil set, nothing is done.
TESSARIN_EXPORT IndexEdit addIndexAtOnce(NSMutableIndexSet set, NSUInteger index);
TESSARIN_EXPORT IndexEdit removeIndexAtOnce(NSMutableIndexSet set, NSUInteger index);

} // namespace tessarin
