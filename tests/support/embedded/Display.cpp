#include "InterfaceTest.h"

namespace tessarin::testing {

void openDisplay() {
    const NSRect screen = NSMakeRect(0, 0, 1440, 900);
    describeScreens({{screen, screen}});
}

} // namespace tessarin::testing
