// Extension groups and new classes in the Objective-C runtime, and the record of what waits for a class to
// exist.
#include "TessarinPlatform/Definition.h"

#include "TessarinPlatform/Exceptions.h"
#include "platform/native/ObjectiveC.h"
#include "platform/native/Waiting.h"

#include <bit>
#include <iterator>
#include <mutex>
#include <set>
#include <utility>

namespace tessarin {
namespace {

using namespace native;

// The tables are copied, since what waits outlives the lists that its constructor was given.
struct Method {
    ::SEL selector;
    ::IMP implementation;
    const char* encoding;
    bool isClassMethod;
};

struct InstanceVariable {
    std::string name;
    std::size_t size;
    std::size_t alignment;
    const char* encoding;
};

struct NewClass {
    std::string name;
    std::string superclass;
    std::vector<std::string> protocols;
    std::vector<InstanceVariable> instanceVariables;
    std::vector<Method> methods;
};

struct Group {
    std::size_t position; // in the record
    std::string className;
    std::vector<Method> methods;
};

struct Registry {
    std::mutex mutex;
    std::vector<ExtensionGroupRecord> groups;
    std::set<std::string> definedNames;
    std::vector<Group> waitingGroups;
    std::vector<NewClass> waitingClasses;
    std::atomic<bool> isAnyWaiting{false};
};

// Never destroyed: classes are looked up by destructors of other static objects too.
Registry& registry() {
    static Registry& instance = *new Registry;
    return instance;
}

std::vector<Method> methodsOf(std::initializer_list<MethodRow> rows) {
    std::vector<Method> methods;
    methods.reserve(rows.size());
    for (const MethodRow& row : rows)
        methods.push_back({sel_registerName(row.selector), runtimeImplementation(row.implementation),
                           row.encoding, row.isClassMethod});
    return methods;
}

::Class holderOf(const Method& method, ::Class classObject) {
    return method.isClassMethod ? object_getClass(reinterpret_cast<::id>(classObject)) : classObject;
}

bool attachIfPossible(const Group& group) {
    const ::Class extended = loadedClass(group.className.c_str());
    if (!extended) return false;
    for (const Method& method : group.methods) {
        const ::Class holder = holderOf(method, extended);
        // To replace is the second attempt, since that searches the superclasses, to which GCC's runtime may
        // not have linked a class that has just been loaded.
        if (!class_addMethod(holder, method.selector, method.implementation, method.encoding))
            class_replaceMethod(holder, method.selector, method.implementation, method.encoding);
    }
    return true;
}

// Whether the definition is done with.
bool defineIfPossible(const NewClass& description) {
    const ::Class superclass = loadedClass(description.superclass.c_str());
    if (!superclass) return false;
    const ::Class created = objc_allocateClassPair(superclass, description.name.c_str(), 0);
    // A class of that name was loaded while this one waited. It stays what the name means.
    if (!created) return true;
    for (const std::string& name : description.protocols) {
        if (auto* protocol = objc_getProtocol(name.c_str())) class_addProtocol(created, protocol);
    }
    for (const InstanceVariable& variable : description.instanceVariables)
        class_addIvar(created, variable.name.c_str(), variable.size,
                      static_cast<std::uint8_t>(std::countr_zero(variable.alignment)), variable.encoding);
    for (const Method& method : description.methods)
        class_addMethod(holderOf(method, created), method.selector, method.implementation, method.encoding);
    objc_registerClassPair(created);
    return true;
}

template <class Element>
void append(std::vector<Element>& target, std::vector<Element>& source) {
    target.insert(target.end(), std::make_move_iterator(source.begin()),
                  std::make_move_iterator(source.end()));
}

// What waits is taken out while `settle` asks the runtime and leaves the rest: the runtime holds its own lock
// when it reports a loaded class, and two threads that took the two locks in opposite order would wait for
// ever.
template <class Settle>
void settleWaiting(Settle settle) {
    Registry& all = registry();
    if (!all.isAnyWaiting.load(std::memory_order_acquire)) return;
    std::vector<NewClass> classes;
    std::vector<Group> groups;
    {
        const std::lock_guard lock(all.mutex);
        classes.swap(all.waitingClasses);
        groups.swap(all.waitingGroups);
    }
    std::vector<std::size_t> attached;
    const auto attach = [&](const Group& group) {
        const bool isAttached = attachIfPossible(group);
        if (isAttached) attached.push_back(group.position);
        return isAttached;
    };
    settle(classes, groups, attach);

    const std::lock_guard lock(all.mutex);
    for (const std::size_t position : attached) all.groups[position].attached = true;
    append(all.waitingClasses, classes);
    append(all.waitingGroups, groups);
    all.isAnyWaiting.store(!all.waitingClasses.empty() || !all.waitingGroups.empty(),
                           std::memory_order_release);
}

#if !defined(__APPLE__)

// A class may be loaded after the groups that extend it: those of a library of its own that is initialised
// later, or of the application itself. An application that only sends messages never looks a class up through
// this library, so the runtime is asked to tell. While NSBundle loads a bundle it listens there itself; what
// such a bundle brings is attached when a class is looked up next.
void (*nextLoadCallback)(::Class, objc_category*);

void classWasLoaded(::Class loaded, objc_category* category) {
    if (nextLoadCallback) nextLoadCallback(loaded, category);
    if (category) return;
    // Of the other classes that are being loaded some may not be complete yet.
    settleWaiting([&](auto&, std::vector<Group>& groups, auto attach) {
        std::erase_if(groups, [&](const Group& group) {
            return group.className == class_getName(loaded) && attach(group);
        });
    });
}

[[maybe_unused]] const bool isTold = [] {
    nextLoadCallback = std::exchange(_objc_load_callback, classWasLoaded);
    return true;
}();

#endif

} // namespace

void native::attachWaiting() {
    settleWaiting([](std::vector<NewClass>& classes, std::vector<Group>& groups, auto attach) {
        // A class that is defined may be the superclass that another waits for, in any order.
        while (std::erase_if(classes, defineIfPossible) > 0) {
        }
        std::erase_if(groups, attach);
    });
}

ExtensionGroup::ExtensionGroup(const char* className, const char* groupName,
                               std::initializer_list<MethodRow> methods) {
    Registry& all = registry();
    ExtensionGroupRecord record{className, groupName, {}, false};
    for (const MethodRow& row : methods)
        record.selectors.push_back((row.isClassMethod ? "+" : "-") + std::string(row.selector));
    {
        const std::lock_guard lock(all.mutex);
        position_ = all.groups.size();
        all.groups.push_back(std::move(record));
        all.waitingGroups.push_back({position_, className, methodsOf(methods)});
        all.isAnyWaiting.store(true, std::memory_order_release);
    }
    native::attachWaiting();
}

bool ExtensionGroup::isAttached() const {
    native::attachWaiting();
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    return all.groups[position_].attached;
}

std::vector<ExtensionGroupRecord> extensionGroups() {
    native::attachWaiting();
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    return all.groups;
}

ClassDefinition::ClassDefinition(const ClassTable& table) : name_(table.name) {
    Registry& all = registry();
    NewClass description{table.name, table.superclass, {}, {}, methodsOf(table.methods)};
    description.protocols.assign(table.protocols.begin(), table.protocols.end());
    for (const InstanceVariableRow& row : table.instanceVariables)
        description.instanceVariables.push_back({row.name, row.size, row.alignment, row.encoding});

    bool isTaken = runtime::lookUpClass(table.name) != nullptr;
    if (!isTaken) {
        const std::lock_guard lock(all.mutex);
        isTaken = !all.definedNames.insert(name_).second;
        if (!isTaken) {
            all.waitingClasses.push_back(std::move(description));
            all.isAnyWaiting.store(true, std::memory_order_release);
        }
    }
    if (isTaken) raise(NSInvalidArgumentException(), NSString("a class named " + name_ + " exists already"));
    native::attachWaiting();
}

Class ClassDefinition::classObject() const { return Class(runtime::lookUpClass(name_.c_str())); }

void* runtime::instanceVariableAddress(Object* object, const char* name) {
    const ::Ivar variable = class_getInstanceVariable(object_getClass(runtimeObject(object)), name);
    return variable ? reinterpret_cast<std::byte*>(object) + ivar_getOffset(variable) : nullptr;
}

} // namespace tessarin
