// Objects whose storage is about to be read.
#pragma once

#include "platform/embedded/runtime/BuiltInClass.h"

namespace tessarin::embedded {

// The object as T where its class is T's or derived from it, and nil otherwise. Not by what it answers to
// isKindOfClass:, as kindOf has it: an object that stands for another one answers for that, and has nothing
// where the other one keeps its data.
template <class T>
T storedKindOf(NSObject object) {
    if (!object) return {};
    Object* const wanted = T::classObject().object();
    for (Object* each = runtime::classOf(object.object()); each; each = runtime::superclassOf(each))
        if (each == wanted) return as<T>(object);
    return {};
}

} // namespace tessarin::embedded
