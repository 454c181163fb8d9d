// Edits of arrays that would take many messages, made at once.
#pragma once

#include "TessarinPlatform/NSMutableArray.h"

#include <span>

namespace tessarin {

// The items of an array where they are, to be put in another order, when the array is one of the platform's
// own that allows it. Where it is not, and for an empty or nil array, an empty span: messages do the same
// then. The span is valid until the array is sent a message.
TESSARIN_EXPORT std::span<NSObject> itemsToReorder(NSMutableArray array);

} // namespace tessarin
