// The objects of a dictionary in the order of its keys, found at once where that takes no message.
#pragma once

#include "TessarinPlatform/NSDictionary.h"

#include <optional>
#include <vector>

namespace tessarin {

// The objects in ascending order of their keys, when the dictionary is one of the platform's own and every
// key a string that answers compare: as the platform does. nullopt where something else would have to be
// asked; messages do the same then. The objects belong to the dictionary.
TESSARIN_EXPORT std::optional<std::vector<NSObject>> objectsInOrderOfKeys(NSDictionary dictionary);

} // namespace tessarin
