// Sorting the items of a collection by sort descriptors.
#pragma once

#include "TessarinPlatform/NSArray.h"

#include <vector>

namespace tessarin::embedded {

// Sorts stably by the first descriptor, what is the same to it by the second, and so on; no descriptors leave
// the order as it is. The value for a key is fetched once for each item, when it is first needed, so that a
// single item is asked nothing. Fetching and comparing are the items' own code: it may raise, and it may
// change the collection, which therefore has to be kept from it.
void sortItems(std::vector<NSObject>& items, NSArray descriptors);

} // namespace tessarin::embedded
