// Arrays, the keys of dictionaries, and index sets as ranges of the standard library.
//
//   for (NSString name : array | std::views::take(3)) ...
//   std::ranges::count_if(set, [](NSUInteger index) { return index % 2 == 0; });
//
// A handle is walked, not owned: keep the object alive for as long as the range is used. A handle's iterators
// do not depend on the handle itself, so a temporary one may be walked.
#pragma once

#include "TessarinPlatform/NSDictionary.h"
#include "TessarinPlatform/NSIndexSet.h"

#include <ranges>

namespace std::ranges {

template <tessarin::HandleType T>
requires std::derived_from<T, tessarin::NSArray> || std::derived_from<
    T, tessarin::NSDictionary> || std::derived_from<T, tessarin::NSIndexSet>
inline constexpr bool enable_borrowed_range<T> = true;

} // namespace std::ranges
