// send: the only place that calls a method's implementation.
#pragma once

#include "TessarinPlatform/detail/NSObject-class.h"

#include <type_traits>
#include <utility>

namespace tessarin {
namespace detail {

// How an argument travels: a handle, an owning one included, as a plain handle; everything else by value.
template <class Argument>
struct Passed {
    static_assert(std::is_trivially_copyable_v<Argument>, "a message argument is a handle or a plain value");
    using Type = Argument;
};
template <std::derived_from<NSObject> Argument>
struct Passed<Argument> {
    using Type = NSObject;
};
template <>
struct Passed<std::nullptr_t> {
    using Type = NSObject;
};
template <class Argument>
using PassedAs = typename Passed<std::decay_t<Argument>>::Type;

// In a variable-length list a handle travels as its pointer.
template <class Argument>
auto variadicArgument(const Argument& argument) {
    if constexpr (std::derived_from<Argument, NSObject>)
        return argument.object();
    else if constexpr (std::is_same_v<Argument, std::nullptr_t>)
        return static_cast<Object*>(nullptr);
    else
        return argument;
}

// Clang's function-type check compares C++ types, and the whole point of a dispatch is to call through one
// prototype what was defined with handles of more exact classes.
#if defined(__clang__)
#    define TESSARIN_DISPATCHES __attribute__((no_sanitize("function")))
#else
#    define TESSARIN_DISPATCHES
#endif

// Whether the caller provides the place for a result: where that makes a difference to the runtime, which is
// where its header says so, a structure of more than two registers.
template <class Result>
inline constexpr bool isStructure = false;
template <class Result>
requires std::is_class_v<Result>
inline constexpr bool isStructure<Result> = sizeof(Result) > 2 * sizeof(void*);

// The method that a message with such a result is to call.
template <class Result>
inline Implementation lookUp(Object* receiver, SEL selector) {
#if defined(TESSARIN_HAS_STRUCTURE_DISPATCH)
    if constexpr (isStructure<Result>) return runtime::lookUpForStructure(receiver, selector);
#endif
    return runtime::lookUp(receiver, selector);
}
template <class Result>
inline Implementation lookUpInClass(Object* classObject, SEL selector) {
#if defined(TESSARIN_HAS_STRUCTURE_DISPATCH)
    if constexpr (isStructure<Result>) return runtime::lookUpForStructureInClass(classObject, selector);
#endif
    return runtime::lookUpInClass(classObject, selector);
}

template <class Result, class... Arguments>
TESSARIN_DISPATCHES inline Result call(Implementation implementation, NSObject receiver, SEL selector,
                                       Arguments... arguments) {
    using Method = Result (*)(NSObject, SEL, Arguments...);
    return reinterpret_cast<Method>(implementation)(receiver, selector, arguments...);
}

} // namespace detail

// Sends a message and answers its result. A nil receiver answers nil, NO, zero, 0.0 or an all-zero structure,
// whatever the runtime itself would leave in the registers. The arguments must have the exact types of the
// method's prototype (an NSUInteger, not an int literal); the handles' own member functions see to that.
//
//   NSUInteger count = send<NSUInteger>(array, "count"_sel);
template <class Result, class... Arguments>
inline Result send(NSObject receiver, SEL selector, const Arguments&... arguments) {
    if (!receiver) {
        if constexpr (std::is_void_v<Result>)
            return;
        else
            return Result{};
    }
    return detail::call<Result, detail::PassedAs<Arguments>...>(
        detail::lookUp<Result>(receiver.object(), selector), receiver, selector, arguments...);
}

// Sends a message whose method takes a variable-length list after its first argument. What the list holds,
// and how it ends, is the method's own rule.
template <class Result, class First, class... Further>
TESSARIN_DISPATCHES inline Result sendVariadic(NSObject receiver, SEL selector, First first,
                                               const Further&... further) {
    if (!receiver) {
        if constexpr (std::is_void_v<Result>)
            return;
        else
            return Result{};
    }
    using Method = Result (*)(NSObject, SEL, detail::PassedAs<First>, ...);
    return reinterpret_cast<Method>(detail::lookUp<Result>(receiver.object(), selector))(
        receiver, selector, first, detail::variadicArgument(further)...);
}

// Sends a message to the implementation that the superclass of a class has, which is how a method calls the
// one it overrides. `definingClass` is the class whose table holds the calling method.
template <class Result, class... Arguments>
inline Result sendSuper(NSObject receiver, NSObject definingClass, SEL selector,
                        const Arguments&... arguments) {
    return detail::call<Result, detail::PassedAs<Arguments>...>(
        detail::lookUpInClass<Result>(runtime::superclassOf(definingClass.object()), selector), receiver,
        selector, arguments...);
}

} // namespace tessarin
