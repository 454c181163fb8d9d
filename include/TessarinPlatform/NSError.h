// NSError: what went wrong, as a domain, a code and a dictionary. A function that may fail takes a pointer to
// a handle and stores an autoreleased error through it when it is not null.
#pragma once

#include "TessarinPlatform/NSDictionary.h"

namespace tessarin {

class NSError : public Handle<NSError, "NSError", NSObject> {
public:
    using Handle::Handle;

    static NSError errorWithDomain_code_userInfo(NSString domain, NSInteger code, NSDictionary userInfo) {
        return send<NSError>(classObject(), "errorWithDomain:code:userInfo:"_sel, domain, code, userInfo);
    }

    NSString domain() const { return send<NSString>(*this, "domain"_sel); }
    NSInteger code() const { return send<NSInteger>(*this, "code"_sel); }
    NSDictionary userInfo() const { return send<NSDictionary>(*this, "userInfo"_sel); }
    NSString localizedDescription() const { return send<NSString>(*this, "localizedDescription"_sel); }
};

inline NSString NSCocoaErrorDomain() { return "NSCocoaErrorDomain"_ns; }
// The values that the platform's own constants have.
inline NSString NSLocalizedDescriptionKey() {
#if TESSARIN_PLATFORM_EMBEDDED || defined(__APPLE__)
    return "NSLocalizedDescription"_ns;
#else
    return "NSLocalizedDescriptionKey"_ns;
#endif
}
inline NSString NSDebugDescriptionErrorKey() { return "NSDebugDescription"_ns; }

} // namespace tessarin
