// Reference counting as the root class does it, overridden methods left aside.
#pragma once

#include "TessarinPlatform/NSObject.h"

namespace tessarin::embedded {

void addReference(Object* object);
// Retains an object that no other thread can know of yet, so that there is none to agree with.
inline void addUnsharedReference(Object* object) {
    const std::intptr_t references = object->references.load(std::memory_order_relaxed);
    if (references < 0) return;
    if (object->isa->countsReferencesItself.load(std::memory_order_relaxed)) [[unlikely]]
        runtime::retainByMessage(object);
    else
        object->references.store(references + 1, std::memory_order_relaxed);
}
void removeReference(Object* object);
void autoreleaseReference(Object* object);

} // namespace tessarin::embedded
