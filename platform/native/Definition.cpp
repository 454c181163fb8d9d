// Extension groups and new classes in the Objective-C runtime, and the record of what waits for a class to
// exist.
#include "TessarinPlatform/Definition.h"

#include "TessarinPlatform/Exceptions.h"
#include "platform/native/ObjectiveC.h"
#include "platform/native/Waiting.h"

#include <atomic>
#include <bit>
#include <deque>
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

// Stays where it was made, and only `record.attached` changes, under the registry's mutex.
struct Group {
    ExtensionGroupRecord record;
    std::vector<Method> methods;
};

// The mutex is never held while the runtime is asked: that holds its own lock when it reports a loaded class,
// and two threads that took the two locks in opposite order would wait for ever.
struct Registry {
    std::mutex mutex;
    std::deque<Group> groups;
    std::set<std::string> definedNames;
    std::vector<NewClass> waitingClasses;
    // Groups that are not attached, and classes that are not defined.
    std::atomic<std::size_t> waitingCount{0};
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
    const ::Class extended = loadedClass(group.record.className.c_str());
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

// Attaches those groups that are not attached, and that fit, as far as their classes exist. Threads may
// attach the same group at once, which comes to the same; so none has to leave it to another that is not done
// yet.
template <class Fits>
void attachGroups(Fits fits) {
    Registry& all = registry();
    std::vector<Group*> groups;
    {
        const std::lock_guard lock(all.mutex);
        for (Group& group : all.groups) {
            if (!group.record.attached && fits(group)) groups.push_back(&group);
        }
    }
    std::erase_if(groups, [](const Group* group) { return !attachIfPossible(*group); });
    const std::lock_guard lock(all.mutex);
    for (Group* group : groups) {
        if (!std::exchange(group->record.attached, true)) --all.waitingCount;
    }
}

// A class can be made only once: each is taken out while it is attempted.
void defineWaiting() {
    Registry& all = registry();
    std::vector<NewClass> classes;
    {
        const std::lock_guard lock(all.mutex);
        classes.swap(all.waitingClasses);
    }
    // A class that is defined may be the superclass that another waits for, in any order.
    std::size_t definedCount = 0;
    while (const std::size_t count = std::erase_if(classes, defineIfPossible)) definedCount += count;
    const std::lock_guard lock(all.mutex);
    all.waitingCount -= definedCount;
    all.waitingClasses.insert(all.waitingClasses.end(), std::make_move_iterator(classes.begin()),
                              std::make_move_iterator(classes.end()));
}

#if !defined(__APPLE__)

// A class may be loaded after the groups that extend it: those of a library of its own that is initialised
// later, or of the application itself. An application that only sends messages never looks a class up through
// this library, so the runtime is asked to tell.
void (*nextLoadCallback)(::Class, objc_category*);

void classWasLoaded(::Class loaded, objc_category* category) {
    if (nextLoadCallback) nextLoadCallback(loaded, category);
    if (category || registry().waitingCount == 0) return;
    // Of the other classes that are being loaded some may not be complete yet.
    attachGroups([&](const Group& group) { return group.record.className == class_getName(loaded); });
}

// While NSBundle loads a bundle it listens in this place itself, and leaves it empty afterwards.
void listenAgain() {
    decltype(_objc_load_callback) nobody = nullptr;
    std::atomic_ref(_objc_load_callback).compare_exchange_strong(nobody, classWasLoaded);
}

::BOOL (*originalLoad)(::id bundle, ::SEL selector);

::BOOL loadAndAttach(::id bundle, ::SEL selector) {
    const ::BOOL isLoaded = originalLoad(bundle, selector);
    native::attachWaiting();
    return isLoaded;
}

// NSBundle is asked by a method in front of its own and not by its notification: to observe that, messages
// would have to be sent before the program has begun.
[[maybe_unused]] const bool isTold = [] {
    // A group of another file may have been made before, and listen already.
    if (_objc_load_callback != classWasLoaded)
        nextLoadCallback = std::exchange(_objc_load_callback, classWasLoaded);
    originalLoad = replaceMethod("NSBundle", "load", loadAndAttach);
    return true;
}();

#else

void listenAgain() {} // nothing listens there

#endif

} // namespace

void native::attachWaiting() {
    if (registry().waitingCount == 0) return;
    listenAgain();
    defineWaiting();
    attachGroups([](const Group&) { return true; });
}

// Its own entry comes first, and whatever happens on other threads. Only then it is left to them as well, and
// looked for once more: the class may have come in between.
ExtensionGroup::ExtensionGroup(const char* className, const char* groupName,
                               std::initializer_list<MethodRow> methods) {
    Registry& all = registry();
    Group group{{className, groupName, {}, false}, methodsOf(methods)};
    for (const MethodRow& row : methods)
        group.record.selectors.push_back((row.isClassMethod ? "+" : "-") + std::string(row.selector));
    group.record.attached = attachIfPossible(group);
    {
        const std::lock_guard lock(all.mutex);
        if (!group.record.attached) ++all.waitingCount;
        position_ = all.groups.size();
        all.groups.push_back(std::move(group));
    }
    native::attachWaiting();
}

bool ExtensionGroup::isAttached() const {
    native::attachWaiting();
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    return all.groups[position_].record.attached;
}

std::vector<ExtensionGroupRecord> extensionGroups() {
    native::attachWaiting();
    Registry& all = registry();
    std::vector<ExtensionGroupRecord> records;
    const std::lock_guard lock(all.mutex);
    for (const Group& group : all.groups) records.push_back(group.record);
    return records;
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
    }
    if (isTaken) raise(NSInvalidArgumentException(), NSString("a class named " + name_ + " exists already"));
    if (!defineIfPossible(description)) {
        const std::lock_guard lock(all.mutex);
        all.waitingClasses.push_back(std::move(description));
        ++all.waitingCount;
    }
    // For what waits for this class; and the superclass may have come in between.
    native::attachWaiting();
}

Class ClassDefinition::classObject() const { return Class(runtime::lookUpClass(name_.c_str())); }

void* runtime::instanceVariableAddress(Object* object, const char* name) {
    const ::Ivar variable = class_getInstanceVariable(object_getClass(runtimeObject(object)), name);
    return variable ? reinterpret_cast<std::byte*>(object) + ivar_getOffset(variable) : nullptr;
}

} // namespace tessarin
