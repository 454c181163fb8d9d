// The recursive lock that any object carries.
#pragma once

#include "TessarinPlatform/Retained.h"

namespace tessarin {

// Holds the object's lock for the length of a scope, exceptions included. The same thread may take it again;
// nil locks nothing; two objects, a class and its subclass included, never share a lock.
//
//   Synchronized lock{array};
class Synchronized {
public:
    explicit Synchronized(NSObject object) : object_(retain(object)) { runtime::lock(object_.object()); }
    ~Synchronized() { runtime::unlock(object_.object()); }
    Synchronized(const Synchronized&) = delete;
    Synchronized& operator=(const Synchronized&) = delete;

private:
    Retained<NSObject> object_;
};

} // namespace tessarin
