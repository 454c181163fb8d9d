// retain, release, autorelease and pools.
#include "platform/embedded/runtime/ReferenceCounting.h"

#include "platform/embedded/runtime/ThreadState.h"

namespace tessarin::embedded {

void addReference(Object* object) {
    if (object->references.load(std::memory_order_relaxed) >= 0)
        object->references.fetch_add(1, std::memory_order_relaxed);
}

void removeReference(Object* object) {
    if (object->references.load(std::memory_order_relaxed) < 0) return;
    if (object->references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    if (ThreadState* thread = ThreadState::current())
        thread->deallocate(object);
    else
        send<void>(NSObject(object), "dealloc"_sel);
}

void autoreleaseReference(Object* object) {
    // Where a thread has come to its end there is no pool left, and the object lives on.
    if (ThreadState* thread = ThreadState::current()) thread->autorelease(object);
}

} // namespace tessarin::embedded

namespace tessarin::runtime {

using namespace embedded;

Object* retain(Object* object) {
    if (!object) return nullptr;
    if (object->isa->countsReferencesItself.load(std::memory_order_relaxed)) [[unlikely]]
        return send<NSObject>(NSObject(object), "retain"_sel).object();
    addReference(object);
    return object;
}

void release(Object* object) {
    if (!object) return;
    if (object->isa->countsReferencesItself.load(std::memory_order_relaxed)) [[unlikely]]
        send<void>(NSObject(object), "release"_sel);
    else
        removeReference(object);
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
