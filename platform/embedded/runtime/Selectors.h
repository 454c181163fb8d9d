// Selectors: one record per name, never removed.
#pragma once

#include "TessarinPlatform/Runtime.h"

#include <string_view>

namespace tessarin {

// Records lie side by side in cells of this size, on which dispatch relies.
struct alignas(1 << runtime::selectorCellShift) SelectorRecord {
    const char* name; // lives as long as the process
};
static_assert(sizeof(SelectorRecord) == 1 << runtime::selectorCellShift);

namespace embedded {

// The selector of that name where there is one, null otherwise: for names that come from outside, which would
// fill the table of selectors for good.
SEL findSelector(std::string_view name);

} // namespace embedded
} // namespace tessarin
