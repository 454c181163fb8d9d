// Selectors: one record per name, never removed.
#pragma once

#include "TessarinPlatform/Runtime.h"

namespace tessarin {

// Records lie side by side in cells of this size, on which dispatch relies.
struct alignas(1 << runtime::selectorCellShift) SelectorRecord {
    const char* name; // lives as long as the process
};
static_assert(sizeof(SelectorRecord) == 1 << runtime::selectorCellShift);

} // namespace tessarin
