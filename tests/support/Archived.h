// An object as a keyed archive of either format.
#pragma once

#include "TessarinPlatform/TessarinPlatform.h"

namespace tessarin::testing {

// The archive of an object under the key "root".
inline NSData archived(NSObject root, NSPropertyListFormat format) {
    const NSMutableData data = NSMutableData::data();
    const Retained<NSKeyedArchiver> archiver =
        adopt(NSKeyedArchiver::alloc().initForWritingWithMutableData(data));
    archiver.setOutputFormat(format);
    archiver.encodeObject_forKey(root, "root"_ns);
    archiver.finishEncoding();
    return data;
}

} // namespace tessarin::testing
