// Reference counting as the root class does it, overridden methods left aside.
#pragma once

#include "TessarinPlatform/NSObject.h"

namespace tessarin::embedded {

void addReference(Object* object);
void removeReference(Object* object);
void autoreleaseReference(Object* object);

} // namespace tessarin::embedded
