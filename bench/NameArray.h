// The names that collections are measured with, as an array.
#pragma once

#include "Names.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/Retained.h"

namespace bench {

// Strings of their own for each of the names.
inline tessarin::Retained<tessarin::NSArray> arrayOf(const std::vector<std::string>& names) {
    using namespace tessarin;
    const AutoreleasePool pool;
    const Retained<NSMutableArray> array = adopt(NSMutableArray::alloc().init());
    for (const std::string& name : names) array.addObject(NSString(name));
    return adopt(NSArray(array.copy()));
}

} // namespace bench
