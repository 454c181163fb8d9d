// Extension groups and class definitions. What is constructed before its class, or before its superclass,
// waits here.
#include "platform/embedded/runtime/Classes.h"

#include "TessarinPlatform/Exceptions.h"

#include <algorithm>
#include <deque>
#include <memory>

namespace tessarin {
namespace embedded {
namespace {

struct Group {
    std::string className;
    std::string groupName;
    std::vector<MethodRow> methods;
    std::vector<SEL> selectors; // of the methods
    bool attached = false;
};

// A definition that waits for its superclass. The names are copied, since the table may be gone by then.
struct PendingClass {
    std::string name;
    std::string superclass;
    std::vector<std::string> protocols;
    std::deque<std::string> names; // of the rows
    std::vector<InstanceVariableRow> instanceVariables;
    std::vector<MethodRow> methods;
};

std::vector<std::unique_ptr<Group>>& groups() {
    static auto* list = new std::vector<std::unique_ptr<Group>>;
    return *list;
}

std::vector<std::unique_ptr<PendingClass>>& pendingClasses() {
    static auto* list = new std::vector<std::unique_ptr<PendingClass>>;
    return *list;
}

bool isPending(const std::string& name) {
    return std::ranges::any_of(pendingClasses(), [&](const auto& each) { return each->name == name; });
}

void attach(Group& group, RuntimeClass* classRecord) {
    for (std::size_t index = 0; index < group.methods.size(); ++index) {
        const MethodRow& row = group.methods[index];
        addMethod(row.isClassMethod ? runtimeClass(classRecord->isa) : classRecord, group.selectors[index],
                  {row.implementation, row.encoding});
    }
    group.attached = true;
}

} // namespace

void attachPendingGroups(RuntimeClass* classRecord) {
    for (const auto& group : groups())
        if (!group->attached && group->className == classRecord->name) attach(*group, classRecord);
}

RuntimeClass* makePendingClass(const std::string& name) {
    auto& pending = pendingClasses();
    const auto found = std::ranges::find_if(pending, [&](const auto& each) { return each->name == name; });
    if (found == pending.end()) return nullptr;
    // Taken off the list first, so that a class that is said to be derived from itself ends the search.
    std::unique_ptr<PendingClass> definition = std::move(*found);
    pending.erase(found);
    Object* superclass = runtime::lookUpClass(definition->superclass.c_str());
    if (!superclass) {
        pending.push_back(std::move(definition));
        return nullptr;
    }
    std::vector<const char*> protocols;
    for (const std::string& protocol : definition->protocols) protocols.push_back(protocol.c_str());
    return makeClass(definition->name, runtimeClass(superclass), protocols, {}, definition->instanceVariables,
                     definition->methods);
}

} // namespace embedded

using namespace embedded;

ExtensionGroup::ExtensionGroup(const char* className, const char* groupName,
                               std::initializer_list<MethodRow> methods) {
    const std::lock_guard lock(runtimeMutex());
    auto group = std::make_unique<Group>(Group{className, groupName, methods, {}, false});
    for (const MethodRow& row : methods) group->selectors.push_back(runtime::registerSelector(row.selector));
    position_ = groups().size();
    Group& added = *groups().emplace_back(std::move(group));
    // Making the class attaches the group with it.
    if (Object* classObject = runtime::lookUpClass(className); classObject && !added.attached)
        attach(added, runtimeClass(classObject));
}

bool ExtensionGroup::isAttached() const {
    const std::lock_guard lock(runtimeMutex());
    return groups()[position_]->attached;
}

std::vector<ExtensionGroupRecord> extensionGroups() {
    const std::lock_guard lock(runtimeMutex());
    std::vector<ExtensionGroupRecord> records;
    for (const auto& group : groups()) {
        ExtensionGroupRecord& record = records.emplace_back(
            ExtensionGroupRecord{group->className, group->groupName, {}, group->attached});
        for (std::size_t index = 0; index < group->methods.size(); ++index)
            record.selectors.push_back((group->methods[index].isClassMethod ? "+" : "-")
                                       + std::string(runtime::selectorName(group->selectors[index])));
    }
    return records;
}

ClassDefinition::ClassDefinition(const ClassTable& table) : name_(table.name) {
    const std::lock_guard lock(runtimeMutex());
    if (runtime::lookUpClass(table.name) || isPending(name_))
        raise(NSInvalidArgumentException(), NSString("a class named " + name_ + " exists already"));
    auto definition = std::make_unique<PendingClass>();
    definition->name = table.name;
    definition->superclass = table.superclass;
    definition->protocols.assign(table.protocols.begin(), table.protocols.end());
    const auto kept = [&](const char* name) { return definition->names.emplace_back(name).c_str(); };
    for (InstanceVariableRow row : table.instanceVariables) {
        row.name = kept(row.name);
        definition->instanceVariables.push_back(row);
    }
    for (MethodRow row : table.methods) {
        row.selector = kept(row.selector);
        definition->methods.push_back(row);
    }
    pendingClasses().push_back(std::move(definition));
    runtime::lookUpClass(table.name);
}

Class ClassDefinition::classObject() const { return Class(NSObject(runtime::lookUpClass(name_.c_str()))); }

} // namespace tessarin
