// How the embedded platform's dates keep their point in time.
#pragma once

#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/Retained.h"

namespace tessarin::embedded {

struct DateStorage {
    NSTimeInterval sinceReferenceDate = 0; // 2001-01-01 00:00:00 UTC
};

// A new date.
Retained<NSDate> newDate(NSTimeInterval sinceReferenceDate);

} // namespace tessarin::embedded
