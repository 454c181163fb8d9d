// NSLock: a lock that is not recursive.
#pragma once

#include "TessarinPlatform/detail/NSString-class.h"

namespace tessarin {

// Unlocking a lock that the thread does not hold is a mistake: the embedded platform and macOS log it and go
// on, GNUstep raises. A thread that locks twice waits for ever, and it is logged.
class NSLock : public Handle<NSLock, "NSLock", NSObject> {
public:
    using Handle::Handle;

    [[nodiscard]] NSLock init() const { return send<NSLock>(*this, "init"_sel); }

    void lock() const { send<void>(*this, "lock"_sel); }
    void unlock() const { send<void>(*this, "unlock"_sel); }
    // Whether the lock was free and is now held by the caller; it never waits.
    bool tryLock() const { return send<BOOL>(*this, "tryLock"_sel) != NO; }

    // What the log calls it; nil at first. The name is copied.
    NSString name() const { return send<NSString>(*this, "name"_sel); }
    void setName(NSString name) const { send<void>(*this, "setName:"_sel, name); }
};

} // namespace tessarin

#include "TessarinPlatform/NSString.h"
