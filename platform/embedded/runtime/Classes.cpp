#include "platform/embedded/runtime/Classes.h"

#include "TessarinPlatform/NSException.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace tessarin::embedded {
namespace {

// Classes live as long as the process.
struct ClassTable {
    std::unordered_map<std::string, RuntimeClass*> classes;
    std::vector<std::unique_ptr<RuntimeClass>> records;
    RuntimeClass* rootMetaclass = nullptr;
};

ClassTable& classTable() {
    static auto* table = new ClassTable;
    return *table;
}

RuntimeClass* newRecord(const std::string& name, RuntimeClass* superclass) {
    RuntimeClass* record = classTable().records.emplace_back(std::make_unique<RuntimeClass>()).get();
    record->references.store(-1, std::memory_order_relaxed);
    record->name = name;
    record->superclass = superclass;
    if (superclass) {
        record->instanceSize = superclass->instanceSize;
        record->storages = superclass->storages;
        record->hasInstanceVariables = superclass->hasInstanceVariables;
        record->holdsObjects = superclass->holdsObjects;
        superclass->subclasses.push_back(record);
    }
    initializeCache(record);
    return record;
}

std::size_t reserve(RuntimeClass* record, std::size_t size, std::size_t alignment) {
    const std::size_t offset = (record->instanceSize + alignment - 1) / alignment * alignment;
    record->instanceSize = offset + size;
    return offset;
}

RuntimeClass* makeBuiltInClass(const char* name) {
    const BuiltInClass* end = builtInClasses + builtInClassCount;
    const BuiltInClass* found = std::find_if(builtInClasses, end, [&](const BuiltInClass& builtIn) {
        return std::strcmp(builtIn.name, name) == 0;
    });
    if (found == end) return nullptr;
    const ClassDescription description = found->describe();
    RuntimeClass* superclass =
        description.superclass ? runtimeClass(runtime::lookUpClass(description.superclass)) : nullptr;
    return makeClass(description.name, superclass, description.protocols, description.storage, {},
                     description.methods);
}

// Below the root, which does it plainly.
bool concernsReferenceCounting(SEL selector) {
    return selector == "retain"_sel || selector == "release"_sel || selector == "autorelease"_sel;
}

void noteReferenceCounting(RuntimeClass* record) {
    record->countsReferencesItself.store(true, std::memory_order_relaxed);
    for (RuntimeClass* subclass : record->subclasses) noteReferenceCounting(subclass);
}

} // namespace

std::recursive_mutex& runtimeMutex() {
    static auto* mutex = new std::recursive_mutex;
    return *mutex;
}

RuntimeClass* makeClass(const std::string& name, RuntimeClass* superclass,
                        const std::vector<const char*>& protocols, StorageLayout storage,
                        const std::vector<InstanceVariableRow>& instanceVariables,
                        const std::vector<MethodRow>& methods) {
    ClassTable& table = classTable();
    RuntimeClass* record = newRecord(name, superclass);
    RuntimeClass* metaclass = newRecord(name, superclass ? runtimeClass(superclass->isa) : record);
    metaclass->isMetaclass = true;
    if (!superclass) {
        // The root's metaclass is derived from the root, so that class objects answer what every object
        // answers.
        table.rootMetaclass = metaclass;
        metaclass->storages.clear();
    }
    metaclass->isa = table.rootMetaclass;
    record->isa = metaclass;

    if (!methods.empty()) record->definition = reinterpret_cast<const void*>(methods.front().implementation);
    if (storage.holdsObjects) record->holdsObjects = true;
    if (storage.size > 0)
        record->storages.push_back(
            {reserve(record, storage.size, storage.alignment), storage.construct, storage.destroy});
    if (!instanceVariables.empty()) record->hasInstanceVariables = true;
    for (const InstanceVariableRow& row : instanceVariables)
        record->instanceVariables.push_back(
            {row.name, row.encoding, reserve(record, row.size, row.alignment)});
    for (const char* protocol : protocols) record->protocols.push_back(protocolNamed(protocol));
    if (superclass && superclass->countsReferencesItself.load(std::memory_order_relaxed))
        noteReferenceCounting(record);
    for (const MethodRow& row : methods)
        addMethod(row.isClassMethod ? metaclass : record, runtime::registerSelector(row.selector),
                  {row.implementation, row.encoding});
    table.classes.emplace(name, record);
    attachPendingGroups(record);
    return record;
}

void addMethod(RuntimeClass* classRecord, SEL selector, Method method) {
    classRecord->methods.insert_or_assign(selector, method);
    if (classRecord->superclass && !classRecord->isMetaclass && concernsReferenceCounting(selector))
        noteReferenceCounting(classRecord);
    forgetCachedMethods(classRecord);
}

bool adopts(const RuntimeClass* classRecord, const Object* protocol) {
    for (; classRecord; classRecord = classRecord->superclass)
        if (std::ranges::find(classRecord->protocols, protocol) != classRecord->protocols.end()) return true;
    return false;
}

} // namespace tessarin::embedded

namespace tessarin::runtime {

using namespace embedded;

Object* lookUpClass(const char* name) {
    if (!name) return nullptr;
    const std::lock_guard lock(runtimeMutex());
    if (const auto found = classTable().classes.find(name); found != classTable().classes.end())
        return found->second;
    if (RuntimeClass* made = makePendingClass(name)) return made;
    return makeBuiltInClass(name);
}

Object* classOf(Object* object) { return object ? object->isa : nullptr; }

Object* superclassOf(Object* classObject) {
    return classObject ? runtimeClass(classObject)->superclass : nullptr;
}

const char* className(Object* classObject) {
    return classObject ? runtimeClass(classObject)->name.c_str() : nullptr;
}

void* instanceVariableAddress(Object* object, const char* name) {
    if (!object) return nullptr;
    for (const RuntimeClass* record = classRecordOf(object); record; record = record->superclass)
        for (const InstanceVariable& variable : record->instanceVariables)
            if (variable.name == name) return reinterpret_cast<std::byte*>(object) + variable.offset;
    return nullptr;
}

} // namespace tessarin::runtime
