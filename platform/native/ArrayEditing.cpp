#include "TessarinPlatform/ArrayEditing.h"

namespace tessarin {

// How the platform's arrays keep their items is their own affair.
std::span<NSObject> itemsToReorder(NSMutableArray) { return {}; }

} // namespace tessarin
