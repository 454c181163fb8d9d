// NSMutableData: a run of bytes that can be changed.
#pragma once

#include "TessarinPlatform/NSData.h"

namespace tessarin {

class NSMutableData : public Handle<NSMutableData, "NSMutableData", NSData> {
public:
    using Handle::Handle;

    static NSMutableData data() { return send<NSMutableData>(classObject(), "data"_sel); }
    static NSMutableData dataWithBytes_length(const void* bytes, NSUInteger length) {
        return send<NSMutableData>(classObject(), "dataWithBytes:length:"_sel, bytes, length);
    }
    // That many bytes, all zero.
    static NSMutableData dataWithLength(NSUInteger length) {
        return send<NSMutableData>(classObject(), "dataWithLength:"_sel, length);
    }

    // The bytes, to be changed in place; valid until the length changes.
    void* mutableBytes() const { return send<void*>(*this, "mutableBytes"_sel); }
    // New bytes are zero.
    void setLength(NSUInteger length) const { send<void>(*this, "setLength:"_sel, length); }
    void appendBytes_length(const void* bytes, NSUInteger length) const {
        send<void>(*this, "appendBytes:length:"_sel, bytes, length);
    }
    void appendData(NSData other) const { send<void>(*this, "appendData:"_sel, other); }
};

} // namespace tessarin
