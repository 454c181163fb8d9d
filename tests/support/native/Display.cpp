#include "InterfaceTest.h"

namespace tessarin::testing {

// The display that the tests are started on; windows and menus ask the application for it.
void openDisplay() {
    // No window manager runs there, so GNUstep draws the title bars itself.
    const NSObject defaults = send<NSObject>("NSUserDefaults"_class, "standardUserDefaults"_sel);
    send<void>(
        defaults, "registerDefaults:"_sel,
        NSDictionary::dictionaryWithObject_forKey("NO"_ns, NSString("GSX11HandlesWindowDecorations"_ns)));
    send<NSObject>("NSApplication"_class, "sharedApplication"_sel);
}

} // namespace tessarin::testing
