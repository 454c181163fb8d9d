// retain, release, autorelease and pools.
#include "platform/embedded/runtime/ReferenceCounting.h"

#include "platform/embedded/runtime/Classes.h"
#include "platform/embedded/runtime/Instances.h"
#include "platform/embedded/runtime/ThreadState.h"

namespace tessarin::embedded {

void addReference(Object* object) {
    if (object->references.load(std::memory_order_relaxed) >= 0)
        object->references.fetch_add(1, std::memory_order_relaxed);
}

void removeReference(Object* object) {
    const std::intptr_t references = object->references.load(std::memory_order_acquire);
    if (references == 1
        || (references > 1 && object->references.fetch_sub(1, std::memory_order_acq_rel) == 1))
        runtime::deallocate(object);
}

void autoreleaseReference(Object* object) {
    // Where a thread has come to its end there is no pool left, and the object lives on.
    if (ThreadState* thread = ThreadState::current()) thread->autorelease(object);
}

} // namespace tessarin::embedded

namespace tessarin::runtime {

using namespace embedded;

Object* retainByMessage(Object* object) { return send<NSObject>(NSObject(object), "retain"_sel).object(); }

void releaseByMessage(Object* object) { send<void>(NSObject(object), "release"_sel); }

void deallocate(Object* object) {
    // A reference stays counted, so that a dealloc that retains and releases its object does not begin anew.
    object->references.store(1, std::memory_order_relaxed);
    // What releases nothing when it goes, such as a number, nests nothing.
    if (!classRecordOf(object)->holdsObjects && lookUp(object, "dealloc"_sel) == rootDealloc)
        disposeInstance(object);
    else if (ThreadState* thread = ThreadState::current())
        thread->deallocate(object);
    else
        send<void>(NSObject(object), "dealloc"_sel);
}

Object* autorelease(Object* object) {
    if (!object) return nullptr;
    if (object->isa->countsReferencesItself.load(std::memory_order_relaxed)) [[unlikely]]
        return send<NSObject>(NSObject(object), "autorelease"_sel).object();
    autoreleaseReference(object);
    return object;
}

// A pool is the place in the thread's list where it begins, one up so that the first is not null.
void* openPool() {
    const ThreadState* thread = ThreadState::current();
    return reinterpret_cast<void*>((thread ? thread->openPool() : 0) + 1);
}

void closePool(void* pool) {
    if (ThreadState* thread = ThreadState::current())
        thread->closePool(reinterpret_cast<std::uintptr_t>(pool) - 1);
}

} // namespace tessarin::runtime
