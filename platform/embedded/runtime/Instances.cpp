// Objects: their memory, their construction, their end.
#include "platform/embedded/runtime/Instances.h"

#include "platform/embedded/runtime/Classes.h"

#include <cstdlib>
#include <cstring>

namespace tessarin::embedded {

Object* createInstance(Class classObject, std::size_t extraBytes) {
    RuntimeClass* classRecord = runtimeClass(classObject.object());
    void* memory = std::malloc(classRecord->instanceSize + extraBytes);
    if (!memory) throw std::bad_alloc();
    // Instance variables begin as zeros; storages construct themselves, and extra bytes belong to the class
    // that asked for them.
    if (classRecord->hasInstanceVariables) std::memset(memory, 0, classRecord->instanceSize);
    Object* object = new (memory) Object{classRecord, {1}};
    for (const StorageSlot& slot : classRecord->storages)
        slot.construct(static_cast<std::byte*>(memory) + slot.offset);
    return object;
}

void* extraBytesOf(Object* object) {
    return reinterpret_cast<std::byte*>(object) + classRecordOf(object)->instanceSize;
}

void disposeInstance(Object* object) {
    const RuntimeClass* classRecord = classRecordOf(object);
    for (auto slot = classRecord->storages.rbegin(); slot != classRecord->storages.rend(); ++slot)
        if (slot->destroy) slot->destroy(reinterpret_cast<std::byte*>(object) + slot->offset);
    object->~Object();
    std::free(object);
}

void makeImmortal(NSObject object) {
    if (object) object.object()->references.store(-1, std::memory_order_relaxed);
}

} // namespace tessarin::embedded
