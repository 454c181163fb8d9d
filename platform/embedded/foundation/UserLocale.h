// The user's locale, as far as the embedded platform goes by it.
#pragma once

#include "TessarinPlatform/NSString.h"

namespace tessarin::embedded {

// What parts the integer digits from the fraction, one or more units: "." where the user has no locale, or
// one that the system lacks. On POSIX the environment names the locale (LC_ALL, LC_NUMERIC, LANG), whatever
// the process has set for itself. It is asked for once and the same from then on, so that formatting costs no
// look at the environment, which another thread might be changing.
NSString userDecimalSeparator();

} // namespace tessarin::embedded
