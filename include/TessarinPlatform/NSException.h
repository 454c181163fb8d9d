// NSException: an exception of the platform. Thrown with raise and caught with attempt (Exceptions.h).
#pragma once

#include "TessarinPlatform/NSDictionary.h"

namespace tessarin {

class NSException : public Handle<NSException, "NSException", NSObject> {
public:
    using Handle::Handle;

    static NSException exceptionWithName_reason_userInfo(NSString name, NSString reason,
                                                         NSDictionary userInfo) {
        return send<NSException>(classObject(), "exceptionWithName:reason:userInfo:"_sel, name, reason,
                                 userInfo);
    }

    NSString name() const { return send<NSString>(*this, "name"_sel); }
    NSString reason() const { return send<NSString>(*this, "reason"_sel); }
    NSDictionary userInfo() const { return send<NSDictionary>(*this, "userInfo"_sel); }
    // Throws the exception: it does not return.
    void raise() const { send<void>(*this, "raise"_sel); }
};

// The names of the platform's exceptions.
inline NSString NSGenericException() { return "NSGenericException"_ns; }
inline NSString NSInternalInconsistencyException() { return "NSInternalInconsistencyException"_ns; }
inline NSString NSInvalidArgumentException() { return "NSInvalidArgumentException"_ns; }
inline NSString NSRangeException() { return "NSRangeException"_ns; }
// Its value differs from its name.
inline NSString NSUndefinedKeyException() { return "NSUnknownKeyException"_ns; }

} // namespace tessarin
