// Sorting the items of a collection by a message to them.
#pragma once

#include "platform/embedded/foundation/StringStorage.h"

#include <vector>

namespace tessarin::embedded {

// Sorts stably by a message such as compare:, which is the items' own code: it may raise, and it may change
// the collection, which therefore has to be kept from it.
void sortItems(std::vector<NSObject>& items, SEL comparison);

// ASCII text has no equivalent but itself, so that its units decide, and its first bytes as a number decide
// most comparisons.
bool isAscii(StringView text);
std::uint64_t beginningOf(StringView text);

} // namespace tessarin::embedded
