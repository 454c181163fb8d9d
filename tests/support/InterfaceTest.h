// What tests of the interface's objects have in common.
#pragma once

#include "PlatformTest.h"

namespace tessarin::testing {

// Makes the shared application first, which a native platform's windows, views and menus want to be there.
class InterfaceTest : public PlatformTest {
protected:
    InterfaceTest() {
        if (const Class application = "NSApplication"_class) send<id>(application, "sharedApplication"_sel);
    }
};

} // namespace tessarin::testing
