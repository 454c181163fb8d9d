// As long as it exists, NSObject's init fails on the thread that made it: it releases the object and answers
// nil.
#pragma once

#include "TessarinPlatform/TessarinPlatform.h"

namespace tessarin::testing {

class FailingRootInitialiser {
public:
    FailingRootInitialiser() {
        // Of all tests of a program there is one such group, which does nothing unless it is told to.
        static const ExtensionGroup group{"NSObject", "TessarinTests", {instanceMethod("init", init)}};
        fails_ = true;
    }
    ~FailingRootInitialiser() { fails_ = false; }
    FailingRootInitialiser(const FailingRootInitialiser&) = delete;
    FailingRootInitialiser& operator=(const FailingRootInitialiser&) = delete;

private:
    static id init(NSObject self, SEL) {
        if (!fails_) return self;
        adopt(self).reset();
        return nil;
    }

    static inline thread_local bool fails_ = false;
};

} // namespace tessarin::testing
