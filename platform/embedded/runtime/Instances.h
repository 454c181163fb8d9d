// The end of an object's memory, for the root class's dealloc.
#pragma once

#include "TessarinPlatform/NSObject.h"

namespace tessarin::embedded {

// Destroys the storages, the most derived first, and frees the memory.
void disposeInstance(Object* object);
// The root class's dealloc, which does no more than that.
extern const Implementation rootDealloc;

} // namespace tessarin::embedded
