#include "TessarinPlatform/NSLock.h"
#include "TessarinPlatform/NSLog.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#if defined(_WIN32)
#    include "platform/embedded/foundation/WindowsHeader.h"
#endif

namespace tessarin::embedded {
namespace {

#if defined(_WIN32)
// The system's own, since the standard library of MinGW can miss the notification of a word.
void waitWhile(std::atomic<int>& word, int value) { WaitOnAddress(&word, &value, sizeof word, INFINITE); }
void wakeOne(std::atomic<int>& word) { WakeByAddressSingle(&word); }
#else
void waitWhile(std::atomic<int>& word, int value) { word.wait(value, std::memory_order_relaxed); }
[[gnu::noinline]] void wakeOne(std::atomic<int>& word) { word.notify_one(); }
#endif

// The running thread, told apart from every other one that runs. Where the system keeps an address of the
// thread's own at hand, asking for that takes no call.
using ThreadIdentity = const void*;
ThreadIdentity runningThread() {
#if defined(__ELF__) && __has_builtin(__builtin_thread_pointer)
    return __builtin_thread_pointer();
#else
    static constinit thread_local char own = 0;
    return &own;
#endif
}

// A word to wait on, rather than the standard mutex: locking that twice on a thread, or destroying it while
// it is held, is undefined, and both may happen here.
struct LockStorage {
    enum State : int { free, held, heldAndAwaited };

    std::atomic<int> state{free};
    // Compared with the running thread only, which alone writes its own identity: it needs no order.
    std::atomic<ThreadIdentity> owner{nullptr};
    Retained<NSString> name;

    bool isHeldBy(ThreadIdentity thread) const { return owner.load(std::memory_order_relaxed) == thread; }
    bool tryAcquire(ThreadIdentity thread) {
        int expected = free;
        if (!state.compare_exchange_strong(expected, held, std::memory_order_acquire)) return false;
        owner.store(thread, std::memory_order_relaxed);
        return true;
    }
    [[gnu::noinline]] void waitAndAcquire(ThreadIdentity thread) {
        while (state.exchange(heldAndAwaited, std::memory_order_acquire) != free)
            waitWhile(state, heldAndAwaited);
        owner.store(thread, std::memory_order_relaxed);
    }
    void release() {
        owner.store(nullptr, std::memory_order_relaxed);
        if (state.exchange(free, std::memory_order_release) == heldAndAwaited) wakeOne(state);
    }
};

LockStorage& storageOf(NSLock lock) { return embedded::storageOf<LockStorage>(lock); }

// *** -[NSLock unlock]: lock (<NSLock: 0x...> '(null)') unlocked when not locked
[[gnu::cold, gnu::noinline]] void logMistake(NSLock self, SEL selector, std::string_view beginning,
                                             std::string_view end) {
    const NSString plain = sendSuper<NSString>(self, NSLock::classObject(), "description"_sel);
    const NSString name = storageOf(self).name;
    std::string line("*** -[");
    line.append(runtime::className(self.class_().object())).append(" ");
    line.append(runtime::selectorName(selector)).append("]: ").append(beginning);
    line.append(" (").append(std::string(plain)).append(" '");
    line.append(name ? std::string(name) : "(null)").append("')").append(end);
    logText(NSString(line));
}

[[gnu::noinline]] void lockHeld(NSLock self, SEL selector) {
    LockStorage& storage = storageOf(self);
    const ThreadIdentity thread = runningThread();
    if (storage.isHeldBy(thread)) {
        logMistake(self, selector, "deadlock", "");
        // Nobody but this thread could let it go on.
        for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
    }
    storage.waitAndAcquire(thread);
}

void lock(NSLock self, SEL selector) {
    if (!storageOf(self).tryAcquire(runningThread())) [[unlikely]]
        lockHeld(self, selector);
}

[[gnu::cold, gnu::noinline]] void unlockNotHeld(NSLock self, SEL selector) {
    logMistake(self, selector, "lock", " unlocked when not locked");
    logText("*** Break on _NSLockError() to debug."_ns);
}

void unlock(NSLock self, SEL selector) {
    LockStorage& storage = storageOf(self);
    if (!storage.isHeldBy(runningThread())) [[unlikely]]
        return unlockNotHeld(self, selector);
    storage.release();
}

BOOL tryLock(NSLock self, SEL) { return storageOf(self).tryAcquire(runningThread()); }

NSString name(NSLock self, SEL) { return storageOf(self).name; }
void setName(NSLock self, SEL, NSString name) { storageOf(self).name = adopt(NSString(name.copy())); }

// <NSLock: 0x...>{name = 'channels'}
NSString description(NSLock self, SEL selector) {
    std::string text(sendSuper<NSString>(self, NSLock::classObject(), selector));
    const NSString name = self.name();
    text.append("{name = ").append(name ? "'" + std::string(name) + "'" : "nil");
    return NSString(text.append("}"));
}

} // namespace

ClassDescription describeNSLock() {
    return {.name = "NSLock",
            .superclass = "NSObject",
            .protocols = {"NSLocking"},
            .storage = storageLayout<LockStorage>(),
            .methods = {instanceMethod("lock", lock), instanceMethod("unlock", unlock),
                        instanceMethod("tryLock", tryLock), instanceMethod("name", name),
                        instanceMethod("setName:", setName), instanceMethod("description", description)}};
}

} // namespace tessarin::embedded
