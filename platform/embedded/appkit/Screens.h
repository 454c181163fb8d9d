// The screens that the process knows of.
#pragma once

#include "TessarinPlatform/NSScreen.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/runtime/BuiltInClass.h"

namespace tessarin::embedded {

// All of them, the main screen first, as they are at the moment. Any thread may ask.
Retained<NSArray> currentScreens();

} // namespace tessarin::embedded
