// Autorelease pools, and handlers of exceptions, which pass pools on their way.
//
// An exception object is as a rule autoreleased where it is thrown. Where the destructor of an
// AutoreleasePool closes that pool on the way to the handler, the handler would receive an object that is
// gone. Apple's runtime owns an exception while it is in flight; GCC's does not, so that it is done here.
#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/Retained.h"
#include "platform/native/ObjectiveC.h"

#include <utility>

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

// The exception that was thrown last on a thread; it may still be in flight.
struct ThrownException {
    Retained<NSObject> object;
    // How many of the pools that are open now were so when it was thrown. It may be passing any of these, and
    // none that was opened later.
    unsigned poolsItMayPass = 0;
};

thread_local unsigned openPools = 0;
thread_local ThrownException lastThrown;

objc_exception_matcher platformMatcher;

// The runtime asks whether a handler fits before any frame is unwound, so that no pool has closed yet.
int matchAndKeep(::Class handled, ::id exception) {
    const int matches = platformMatcher(handled, exception);
    if (matches) lastThrown = {retain(NSObject(native::objectOf(exception))), openPools};
    return matches;
}

// When the library is loaded, since the runtime wants it set before there are other threads.
[[maybe_unused]] const bool isKeepingExceptions = [] {
    platformMatcher = objc_setExceptionMatcher(matchAndKeep);
    return true;
}();

} // namespace

void* runtime::openPool() {
    Object* pool = newPool();
    ++openPools;
    return pool;
}

void runtime::closePool(void* pool) {
    const bool mayBePassed = lastThrown.object && lastThrown.poolsItMayPass == openPools;
    --openPools;
    Retained<NSObject> passing;
    if (mayBePassed) {
        --lastThrown.poolsItMayPass;
        passing = lastThrown.object;
    }
    release(static_cast<Object*>(pool));
    // The pool around the closed one keeps the exception for the handler, whatever else is thrown meanwhile.
    if (mayBePassed && send<id>("NSAutoreleasePool"_class, "currentPool"_sel)) passing.autorelease();
}

Object* runtime::catching(void (*body)(void* context), void* context) {
    // This may be called by a destructor that an exception in flight set off; that one is the last again
    // afterwards.
    ThrownException outer = std::exchange(lastThrown, {});
    Object* caught = static_cast<Object*>(tessarin_catching(body, context));
    lastThrown = std::move(outer);
    return caught;
}

#endif

} // namespace tessarin
