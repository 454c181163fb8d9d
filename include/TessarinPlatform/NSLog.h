// NSLog: one line on the platform's log.
#pragma once

#include "TessarinPlatform/NSString.h"

namespace tessarin {

// Writes the text as one line: date, time, process name, [process:thread], the text.
TESSARIN_EXPORT void logText(NSString text);

// The platform's format: %@ for a handle, C's conversions for numbers.
//
//   NSLog("Exception: %@, reason: %@"_ns, exception.name(), exception.reason());
template <class... Arguments>
void NSLog(NSString format, const Arguments&... arguments) {
    logText(NSString::stringWithFormat(format, arguments...));
}

} // namespace tessarin
