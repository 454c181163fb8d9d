#include "TessarinPlatform/NSLock.h"
#include "TessarinPlatform/NSLog.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

namespace tessarin::embedded {
namespace {

// A word to wait on, rather than the standard mutex: locking that twice on a thread, or destroying it while
// it is held, is undefined, and both may happen here.
struct LockStorage {
    enum State : int { free, held, heldAndAwaited };

    std::atomic<int> state{free};
    // Compared with the running thread only, which alone writes its own number: it needs no order.
    std::atomic<std::thread::id> owner{std::thread::id()};
    Retained<NSString> name;

    bool isOwn() const { return owner.load(std::memory_order_relaxed) == std::this_thread::get_id(); }
    bool tryAcquire() {
        int expected = free;
        if (!state.compare_exchange_strong(expected, held, std::memory_order_acquire)) return false;
        owner.store(std::this_thread::get_id(), std::memory_order_relaxed);
        return true;
    }
    void acquire() {
        if (tryAcquire()) [[likely]]
            return;
        while (state.exchange(heldAndAwaited, std::memory_order_acquire) != free)
            state.wait(heldAndAwaited, std::memory_order_relaxed);
        owner.store(std::this_thread::get_id(), std::memory_order_relaxed);
    }
    void release() {
        owner.store(std::thread::id(), std::memory_order_relaxed);
        if (state.exchange(free, std::memory_order_release) == heldAndAwaited) state.notify_one();
    }
};

LockStorage& storageOf(NSLock lock) { return embedded::storageOf<LockStorage>(lock); }

// *** -[NSLock unlock]: lock (<NSLock: 0x...> '(null)') unlocked when not locked
void logMistake(NSLock self, SEL selector, std::string_view beginning, std::string_view end) {
    const NSString plain = sendSuper<NSString>(self, NSLock::classObject(), "description"_sel);
    const NSString name = storageOf(self).name;
    std::string line("*** -[");
    line.append(runtime::className(self.class_().object())).append(" ");
    line.append(runtime::selectorName(selector)).append("]: ").append(beginning);
    line.append(" (").append(std::string(plain)).append(" '");
    line.append(name ? std::string(name) : "(null)").append("')").append(end);
    logText(NSString(line));
}

void lock(NSLock self, SEL selector) {
    LockStorage& storage = storageOf(self);
    if (storage.isOwn()) [[unlikely]] {
        logMistake(self, selector, "deadlock", "");
        // Nobody but this thread could let it go on.
        for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
    }
    storage.acquire();
}

void unlock(NSLock self, SEL selector) {
    LockStorage& storage = storageOf(self);
    if (storage.isOwn()) [[likely]]
        return storage.release();
    logMistake(self, selector, "lock", " unlocked when not locked");
    logText("*** Break on _NSLockError() to debug."_ns);
}

BOOL tryLock(NSLock self, SEL) { return storageOf(self).tryAcquire(); }

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
