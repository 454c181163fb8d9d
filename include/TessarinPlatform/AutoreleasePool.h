// A release scope.
#pragma once

#include "TessarinPlatform/Runtime.h"

namespace tessarin {

// What was autoreleased on this thread since the pool was opened is released when it closes. Pools nest, and
// close in reverse order.
class AutoreleasePool {
public:
    AutoreleasePool() : pool_(runtime::openPool()) {}
    ~AutoreleasePool() { runtime::closePool(pool_); }
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;

private:
    void* pool_;
};

} // namespace tessarin
