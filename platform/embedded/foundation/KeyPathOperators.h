// Key paths that gather one value from the objects of an array: @sum.gain.
#pragma once

#include "platform/embedded/foundation/NestedItems.h"

#include <optional>

namespace tessarin::embedded {

// The value of an array at a path whose first component is @sum, @avg, @min or @max and whose further ones
// lead to a value in each object; nothing for any other path. Values that are nil count 0, and are left out
// of @min and @max, which compare by compare:. Without objects @sum and @avg are 0, @min and @max nil.
// Raises NSInvalidArgumentException for a path with more than 64 operators, each of which calls for the next,
// and where they go through the same arrays too often. `entered` counts that for the operators of one path;
// the first has none yet.
std::optional<id> valueOfOperator(NSArray array, NSString path, EnteredItems* entered);

} // namespace tessarin::embedded
