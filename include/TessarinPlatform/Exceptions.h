// The platform's exceptions: NSException objects, thrown through C++ frames, whose destructors run.
#pragma once

#include "TessarinPlatform/NSException.h"

#include <memory>
#include <type_traits>

namespace tessarin {

// Throws an exception of the platform.
//
//   raise(NSRangeException(), "index 9 beyond bounds [0 .. 2]"_ns);
[[noreturn]] TESSARIN_EXPORT void raise(NSString name, NSString reason);

namespace runtime {

// Runs body(context). Answers nil when it returned, the exception, autoreleased, when it threw one of the
// platform's. Anything else that is thrown passes through.
TESSARIN_EXPORT Object* catching(void (*body)(void* context), void* context);

} // namespace runtime

// Runs `body` and answers its result. When an exception of the platform is thrown, answers
// onException(exception) instead. Anything else that is thrown passes through. The result is what can be made
// from nothing: a handle, a number, a plain structure, or void.
//
//   NSString shown = attempt([&] { return path.substringFromIndex(9); },
//                            [&](NSException exception) { return exception.reason(); });
template <class Body, class OnException>
auto attempt(Body&& body, OnException&& onException) -> std::invoke_result_t<Body&> {
    using Result = std::invoke_result_t<Body&>;
    if constexpr (std::is_void_v<Result>) {
        using BodyType = std::remove_reference_t<Body>;
        const NSException caught(
            runtime::catching([](void* context) { (*static_cast<BodyType*>(context))(); },
                              const_cast<void*>(static_cast<const void*>(std::addressof(body)))));
        if (caught) onException(caught);
    } else {
        Result result{};
        auto storing = [&] { result = body(); };
        const NSException caught(runtime::catching(
            [](void* context) { (*static_cast<decltype(storing)*>(context))(); }, &storing));
        if (caught) return onException(caught);
        return result;
    }
}

} // namespace tessarin
