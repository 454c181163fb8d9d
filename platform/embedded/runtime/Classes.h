// What the runtime keeps of a class.
#pragma once

#include "platform/embedded/runtime/BuiltInClass.h"

#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace tessarin::embedded {

struct Method {
    Implementation implementation;
    const char* encoding;
};

// One class's C++ data in its instances.
struct StorageSlot {
    std::size_t offset;
    void (*construct)(void* storage);
    void (*destroy)(void* storage); // null where there is nothing to do
};

struct InstanceVariable {
    std::string name;
    std::string encoding;
    std::size_t offset;
};

// A class or a metaclass. Everything but the cache is written under the runtime's lock, and all but methods,
// caches, subclasses and what a group that counts references changes is fixed once the class can be looked
// up.
struct RuntimeClass : ClassRecord {
    std::string name;
    RuntimeClass* superclass = nullptr;
    bool isMetaclass = false;
    std::size_t instanceSize = sizeof(Object);
    std::vector<StorageSlot> storages;               // inherited ones first
    std::vector<InstanceVariable> instanceVariables; // its own
    bool hasInstanceVariables = false;               // inherited ones included
    bool holdsObjects = false;                       // whether destroying the storages may release objects
    std::vector<Object*> protocols;                  // its own, not those of its superclass
    std::unordered_map<SEL, Method> methods;
    std::vector<RuntimeClass*> subclasses;
    std::size_t cachedMethods = 0;
    // An address in the binary that defined the class, which code added by others does not change; null for a
    // class without methods.
    const void* definition = nullptr;
};

inline RuntimeClass* runtimeClass(Object* classObject) { return static_cast<RuntimeClass*>(classObject); }
inline RuntimeClass* classRecordOf(Object* object) { return static_cast<RuntimeClass*>(object->isa); }

// The lock under which classes are made and changed. Recursive: making a class may need its superclass.
std::recursive_mutex& runtimeMutex();

// A new class, and its metaclass, that can be looked up from now on; its pending extension groups are
// attached. Called under the lock. The superclass is null for the root only.
RuntimeClass* makeClass(const std::string& name, RuntimeClass* superclass,
                        const std::vector<const char*>& protocols, StorageLayout storage,
                        const std::vector<InstanceVariableRow>& instanceVariables,
                        const std::vector<MethodRow>& methods);

// Adds a method, or replaces the class's own of that name, and forgets what the caches knew. Called under the
// lock.
void addMethod(RuntimeClass* classRecord, SEL selector, Method method);

// The method that instances of a class have, inherited ones included; nothing where there is none. A copy,
// made under the lock, since another thread may put another method in its place.
std::optional<Method> findMethod(RuntimeClass* classRecord, SEL selector);

// Whether the class or one that it is derived from adopts a protocol.
bool adopts(const RuntimeClass* classRecord, const Object* protocol);

// The protocol of a name, which exists as soon as a class adopts it.
Object* protocolNamed(const char* name);
const char* protocolName(Object* protocol);

// What Definition.cpp does for a class that is looked up or made. Called under the lock.
RuntimeClass* makePendingClass(const std::string& name);
void attachPendingGroups(RuntimeClass* classRecord);

// Forgets the methods cached for a class and for all derived from it. Called under the lock.
void forgetCachedMethods(RuntimeClass* classRecord);
void initializeCache(RuntimeClass* classRecord);

} // namespace tessarin::embedded
