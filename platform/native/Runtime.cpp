// Selectors, classes, methods, reference counts and locks, as the Objective-C runtime on the machine has
// them.
#include "TessarinPlatform/NSObject.h"
#include "platform/native/ObjectiveC.h"
#include "platform/native/Waiting.h"

namespace tessarin::runtime {

using namespace native;

SEL registerSelector(const char* name) { return reinterpret_cast<SEL>(sel_registerName(name)); }
const char* selectorName(SEL selector) { return sel_getName(runtimeSelector(selector)); }

Object* lookUpClass(const char* name) {
    attachWaiting();
    return objectOf(loadedClass(name));
}
Object* lookUpProtocol(const char* name) { return reinterpret_cast<Object*>(objc_getProtocol(name)); }

Object* classOf(Object* object) { return objectOf(object_getClass(runtimeObject(object))); }
Object* superclassOf(Object* classObject) { return objectOf(class_getSuperclass(runtimeClass(classObject))); }
const char* className(Object* classObject) { return class_getName(runtimeClass(classObject)); }

Implementation lookUpInClass(Object* classObject, SEL selector) {
    return reinterpret_cast<Implementation>(
        class_getMethodImplementation(runtimeClass(classObject), runtimeSelector(selector)));
}
bool instancesRespond(Object* classObject, SEL selector) {
    return class_respondsToSelector(runtimeClass(classObject), runtimeSelector(selector));
}

// Messages, since the runtimes' own functions pass by a retain or release that a class overrides.
Object* retain(Object* object) { return send<id>(NSObject(object), "retain"_sel).object(); }
void release(Object* object) { send<void>(NSObject(object), "release"_sel); }
Object* autorelease(Object* object) { return send<id>(NSObject(object), "autorelease"_sel).object(); }

void lock(Object* object) {
    if (object) objc_sync_enter(runtimeObject(object));
}
void unlock(Object* object) {
    if (object) objc_sync_exit(runtimeObject(object));
}

} // namespace tessarin::runtime
