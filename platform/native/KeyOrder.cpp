#include "TessarinPlatform/KeyOrder.h"

namespace tessarin {

// How the platform's dictionaries keep their entries is their own affair.
std::optional<std::vector<NSObject>> objectsInOrderOfKeys(NSDictionary) { return std::nullopt; }

} // namespace tessarin
