// NSNull: the object that stands for nothing where a collection cannot hold nil.
#pragma once

#include "TessarinPlatform/NSObject.h"

namespace tessarin {

class NSNull : public Handle<NSNull, "NSNull", NSObject> {
public:
    using Handle::Handle;

    // The only one there is.
    static NSNull null() { return send<NSNull>(classObject(), "null"_sel); }
};

} // namespace tessarin
