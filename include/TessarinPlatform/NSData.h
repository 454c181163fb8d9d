// NSData: an immutable run of bytes.
#pragma once

#include "TessarinPlatform/detail/NSString-class.h"

namespace tessarin {

class NSData : public Handle<NSData, "NSData", NSObject> {
public:
    using Handle::Handle;

    static NSData data() { return send<NSData>(classObject(), "data"_sel); }
    static NSData dataWithBytes_length(const void* bytes, NSUInteger length) {
        return send<NSData>(classObject(), "dataWithBytes:length:"_sel, bytes, length);
    }
    // The contents of a file; nil when it cannot be read. On the embedded platform a path with half a
    // surrogate pair names no file.
    static NSData dataWithContentsOfFile(NSString path) {
        return send<NSData>(classObject(), "dataWithContentsOfFile:"_sel, path);
    }

    const void* bytes() const { return send<const void*>(*this, "bytes"_sel); }
    NSUInteger length() const { return send<NSUInteger>(*this, "length"_sel); }
    bool isEqualToData(NSData other) const { return send<BOOL>(*this, "isEqualToData:"_sel, other) != NO; }
    // Whether it was written. Atomically: beside the file, then put in its place, so that the file is never
    // half written.
    bool writeToFile_atomically(NSString path, bool atomically) const {
        return send<BOOL>(*this, "writeToFile:atomically:"_sel, path, static_cast<BOOL>(atomically)) != NO;
    }
};

} // namespace tessarin

#include "TessarinPlatform/NSString.h"
