// The record of extension groups, as a test asks for it.
#pragma once

#include "TessarinPlatform/Definition.h"

#include <algorithm>
#include <string>

namespace tessarin::testing {

// The group that extends a class by an instance operation; an empty record where there is none.
inline ExtensionGroupRecord groupOf(const std::string& className, const std::string& selector) {
    for (const ExtensionGroupRecord& record : extensionGroups())
        if (record.className == className
            && std::ranges::find(record.selectors, "-" + selector) != record.selectors.end())
            return record;
    return {};
}

} // namespace tessarin::testing
