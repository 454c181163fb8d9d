// Classes and extension groups as tables of rows "selector, function".
//
//   NSUInteger length(NSString self, SEL) { ... }
//
//   const ExtensionGroup group{"NSString", "Extensions", {instanceMethod("ext_length", length)}};
//
//   const ClassDefinition definition{{.name = "Car", .superclass = "NSObject", .methods = {...}}};
#pragma once

#include "TessarinPlatform/Retained.h"
#include "TessarinPlatform/detail/TypeEncoding.h"

#include <atomic>
#include <initializer_list>
#include <string>
#include <vector>

namespace tessarin {

// One method of a class or of its metaclass.
struct MethodRow {
    const char* selector;
    Implementation implementation;
    const char* encoding; // of the result and the arguments, as the Objective-C runtimes write types
    bool isClassMethod;
};

// A method that instances answer. The function's first two parameters are the receiver and the selector.
template <class Result, class Self, class... Arguments>
MethodRow instanceMethod(const char* selector, Result (*function)(Self, SEL, Arguments...)) {
    return {selector, reinterpret_cast<Implementation>(function),
            detail::methodEncoding<Result, Self, Arguments...>.c_str(), false};
}
template <class Result, class Self, class First>
MethodRow instanceMethod(const char* selector, Result (*function)(Self, SEL, First, ...)) {
    return {selector, reinterpret_cast<Implementation>(function),
            detail::methodEncoding<Result, Self, First>.c_str(), false};
}

// A method that the class itself answers; its receiver is a Class.
template <class Result, class... Arguments>
MethodRow classMethod(const char* selector, Result (*function)(Class, SEL, Arguments...)) {
    return {selector, reinterpret_cast<Implementation>(function),
            detail::methodEncoding<Result, Class, Arguments...>.c_str(), true};
}
template <class Result, class First>
MethodRow classMethod(const char* selector, Result (*function)(Class, SEL, First, ...)) {
    return {selector, reinterpret_cast<Implementation>(function),
            detail::methodEncoding<Result, Class, First>.c_str(), true};
}

// One instance variable: a handle or another plain value, zero in a new object. What a handle points to is
// not retained by itself; the class does that.
struct InstanceVariableRow {
    const char* name;
    std::size_t size;
    std::size_t alignment;
    const char* encoding;
};

template <class T>
InstanceVariableRow instanceVariable(const char* name) {
    static_assert(std::is_trivially_copyable_v<T>, "an instance variable is a handle or a plain value");
    return {name, sizeof(T), alignof(T), detail::encodingOf<T>.c_str()};
}

// A named group of operations added to a class that exists. It attaches itself when it is constructed, or
// when the class comes to exist; a group of a class that the platform lacks stays unattached. An object with
// static storage duration, or one that lives as long as the class is used.
//
// An operation that the class has already is replaced. For what the platform's own classes do, such as
// isEqual: of strings, that is no way to change the library's results: it does much of that at once, without
// asking each object. An overriding subclass is asked.
class TESSARIN_EXPORT ExtensionGroup {
public:
    ExtensionGroup(const char* className, const char* groupName, std::initializer_list<MethodRow> methods);
    ~ExtensionGroup() = default;
    ExtensionGroup(const ExtensionGroup&) = delete;
    ExtensionGroup& operator=(const ExtensionGroup&) = delete;

    // Whether the class exists and answers the group's operations.
    bool isAttached() const;

private:
    std::size_t position_; // in the record of groups
};

// The record of one extension group.
struct ExtensionGroupRecord {
    std::string className;
    std::string groupName;
    std::vector<std::string> selectors; // class operations begin with "+", instance operations with "-"
    bool attached;
};

// Every extension group of this library and of the application that went through ExtensionGroup, in order of
// construction.
TESSARIN_EXPORT std::vector<ExtensionGroupRecord> extensionGroups();

// What a new class consists of.
struct ClassTable {
    const char* name;
    const char* superclass = "NSObject";
    std::initializer_list<const char*> protocols = {};
    std::initializer_list<InstanceVariableRow> instanceVariables = {};
    std::initializer_list<MethodRow> methods = {};
};

// Defines a class. It exists from now on, or from the definition of its superclass on where that comes later.
// A name that is taken raises NSInvalidArgumentException. An instance variable has a name of its own, which
// no superclass has given to one of its.
class TESSARIN_EXPORT ClassDefinition {
public:
    explicit ClassDefinition(const ClassTable& table);
    ClassDefinition(const ClassDefinition&) = delete;
    ClassDefinition& operator=(const ClassDefinition&) = delete;

    // The class; nil as long as its superclass does not exist.
    Class classObject() const;

private:
    std::string name_;
};

namespace runtime {

// The place of a named instance variable in an object, null where its class has none of that name.
TESSARIN_EXPORT void* instanceVariableAddress(Object* object, const char* name);

} // namespace runtime

// The instance variable of that name, looked up by name: for tests and generic code.
template <class T>
T& instanceVariableOf(NSObject object, const char* name) {
    return *static_cast<T*>(runtime::instanceVariableAddress(object.object(), name));
}

} // namespace tessarin
