// Sorting the items of a collection by a message to them.
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <vector>

namespace tessarin::embedded {

// Sorts stably by a message such as compare:, which is the items' own code: it may raise, and it may change
// the collection, which therefore has to be kept from it.
void sortItems(std::vector<NSObject>& items, SEL comparison);

} // namespace tessarin::embedded
