// Autorelease pools, and handlers of exceptions, which pass pools on their way.
//
// An exception object is as a rule autoreleased where it is thrown. Where the destructor of an
// AutoreleasePool closes that pool on the way to the handler, the handler would receive an object that is
// gone. Apple's runtime owns an exception while it is in flight; GCC's does not, so that it is done here.
#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/Retained.h"
#include "platform/native/ObjectiveC.h"

#include <utility>
#include <vector>

extern "C" void* tessarin_catching(void (*body)(void* context), void* context); // Exceptions.m

#if defined(__APPLE__)
// What the platform's compilers make of @autoreleasepool; its headers do not declare them.
extern "C" {
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
}
#endif

namespace tessarin {

#if defined(__APPLE__)

void* runtime::openPool() { return objc_autoreleasePoolPush(); }
void runtime::closePool(void* pool) { objc_autoreleasePoolPop(pool); }

Object* runtime::catching(void (*body)(void* context), void* context) {
    return static_cast<Object*>(tessarin_catching(body, context));
}

#else

namespace {

Object* newPool() { return send<id>(send<id>("NSAutoreleasePool"_class, "alloc"_sel), "init"_sel).object(); }

// An exception that may still be in flight.
struct ThrownException {
    Retained<NSObject> object;
    // How many of the pools that are open now were so when it was thrown. It may be passing any of these, and
    // none that was opened later.
    unsigned poolsItMayPass = 0;
};

thread_local unsigned openPools = 0;

// Those that were thrown last on the thread, oldest first. Nobody tells when one has been caught. More than
// one may be in flight: what an exception passes may raise others and catch them.
constexpr std::size_t keptCount = 8;
thread_local std::vector<ThrownException> thrownExceptions;

void keep(NSObject exception) {
    std::erase_if(thrownExceptions,
                  [&](const ThrownException& thrown) { return thrown.object == exception; });
    if (openPools == 0) return;
    ThrownException oldest; // is released when the list is whole again
    if (thrownExceptions.size() == keptCount) {
        oldest = std::move(thrownExceptions.front());
        thrownExceptions.erase(thrownExceptions.begin());
    }
    thrownExceptions.push_back({retain(exception), openPools});
}

// Most are thrown by -[NSException raise], for which it does not matter who handles them.
void (*originalRaise)(::id exception, ::SEL selector);

void keepAndRaise(::id exception, ::SEL selector) {
    keep(NSObject(native::objectOf(exception)));
    originalRaise(exception, selector);
}

// For the others, thrown by @throw: the runtime asks whether an Objective-C handler fits before any frame is
// unwound, so that no pool has closed yet. It does not ask where C++ catches everything.
objc_exception_matcher platformMatcher;

int matchAndKeep(::Class handled, ::id exception) {
    const int matches = platformMatcher(handled, exception);
    if (matches) keep(NSObject(native::objectOf(exception)));
    return matches;
}

// When the library is loaded, since the runtime wants it set before there are other threads.
[[maybe_unused]] const bool isKeepingExceptions = [] {
    platformMatcher = objc_setExceptionMatcher(matchAndKeep);
    originalRaise = native::replaceMethod("NSException", "raise", keepAndRaise);
    return true;
}();

} // namespace

void* runtime::openPool() {
    Object* pool = newPool();
    ++openPools;
    return pool;
}

void runtime::closePool(void* pool) {
    std::vector<Retained<NSObject>> passing;
    for (ThrownException& thrown : thrownExceptions) {
        if (thrown.poolsItMayPass != openPools) continue;
        passing.push_back(thrown.object);
        --thrown.poolsItMayPass;
    }
    --openPools;
    std::erase_if(thrownExceptions, [](const ThrownException& thrown) { return thrown.poolsItMayPass == 0; });
    release(static_cast<Object*>(pool));
    // The pool around the closed one keeps them for their handlers.
    if (passing.empty() || !send<id>("NSAutoreleasePool"_class, "currentPool"_sel)) return;
    for (Retained<NSObject>& exception : passing) exception.autorelease();
}

Object* runtime::catching(void (*body)(void* context), void* context) {
    // This may be called by a destructor that an exception in flight set off. What is thrown in here is done
    // with afterwards, and what was in flight still is.
    struct Scope {
        std::vector<ThrownException> outer = std::exchange(thrownExceptions, {});
        ~Scope() { thrownExceptions = std::move(outer); }
    };
    const Scope scope;
    return static_cast<Object*>(tessarin_catching(body, context));
}

#endif

} // namespace tessarin
