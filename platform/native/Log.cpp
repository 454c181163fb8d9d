// Lines on the platform's log.
#include "TessarinPlatform/NSLog.h"

extern "C" void NSLog(tessarin::Object* format, ...);

namespace tessarin {

// The text goes through a format of its own, since its percent signs are text.
void logText(NSString text) { ::NSLog("%@"_ns.object(), text.object()); }

} // namespace tessarin
