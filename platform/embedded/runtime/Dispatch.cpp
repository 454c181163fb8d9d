// Method look-up behind the inline fast path: the rest of the cache, then the class and its superclasses.
#include "platform/embedded/runtime/Classes.h"

#include "TessarinPlatform/NSException.h"

#include <memory>

namespace tessarin::embedded {
namespace {

// A cache and the entries that it points to.
struct OwnedCache {
    explicit OwnedCache(std::uintptr_t capacity)
        : entries(std::make_unique<MethodCacheEntry[]>(capacity)), cache{capacity - 1, entries.get()} {}

    std::unique_ptr<MethodCacheEntry[]> entries;
    MethodCache cache;
};

// Every cache there ever was. A replaced one may still be read by another thread and is never freed. That is
// little: a cache is replaced by one twice as large, or when a class gets a new method.
std::vector<std::unique_ptr<OwnedCache>>& allCaches() {
    static auto* caches = new std::vector<std::unique_ptr<OwnedCache>>;
    return *caches;
}

const MethodCache* newCache(std::uintptr_t capacity) {
    return &allCaches().emplace_back(std::make_unique<OwnedCache>(capacity))->cache;
}

const MethodCache* emptyCache() {
    static const MethodCache* cache = newCache(1);
    return cache;
}

MethodCacheEntry& entryFor(const MethodCache& cache, SEL selector) {
    for (std::uintptr_t position = runtime::selectorHash(selector);; ++position) {
        MethodCacheEntry& entry = cache.entries[position & cache.mask];
        const SEL present = entry.selector.load(std::memory_order_acquire);
        if (present == selector || !present) return entry;
    }
}

void store(const MethodCache& cache, SEL selector, Implementation implementation) {
    MethodCacheEntry& entry = entryFor(cache, selector);
    entry.implementation.store(implementation, std::memory_order_relaxed);
    entry.selector.store(selector, std::memory_order_release);
}

// Under the runtime's lock. At most half of a cache is used, so that most methods stand in their first entry
// and every search ends.
void remember(RuntimeClass* classRecord, SEL selector, Implementation implementation) {
    const MethodCache* cache = classRecord->cache.load(std::memory_order_relaxed);
    if (entryFor(*cache, selector).selector.load(std::memory_order_relaxed) == selector) return;
    if (2 * (classRecord->cachedMethods + 1) > cache->mask) {
        const MethodCache* larger = newCache(cache->mask == 0 ? 16 : 2 * (cache->mask + 1));
        for (std::uintptr_t index = 0; index <= cache->mask; ++index) {
            const MethodCacheEntry& entry = cache->entries[index];
            if (const SEL kept = entry.selector.load(std::memory_order_relaxed))
                store(*larger, kept, entry.implementation.load(std::memory_order_relaxed));
        }
        classRecord->cache.store(larger, std::memory_order_release);
        cache = larger;
    }
    store(*cache, selector, implementation);
    ++classRecord->cachedMethods;
}

const Method* methodInChain(const RuntimeClass* classRecord, SEL selector) {
    for (; classRecord; classRecord = classRecord->superclass)
        if (const auto found = classRecord->methods.find(selector); found != classRecord->methods.end())
            return &found->second;
    return nullptr;
}

// The object's class does not answer the message. doesNotRecognizeSelector: raises, in every class that keeps
// its contract; one that does not is refused here, since there is nothing to call.
[[noreturn]] void refuse(Object* receiver, SEL selector) {
    send<void>(NSObject(receiver), "doesNotRecognizeSelector:"_sel, selector);
    raiseFrom(NSInternalInconsistencyException(), NSObject(receiver), selector,
              "doesNotRecognizeSelector: returned");
}

// The method's code, remembered in the class's cache; null where there is none.
Implementation cachedImplementation(RuntimeClass* classRecord, SEL selector) {
    const MethodCacheEntry& entry = entryFor(*classRecord->cache.load(std::memory_order_acquire), selector);
    if (entry.selector.load(std::memory_order_acquire) == selector)
        return entry.implementation.load(std::memory_order_relaxed);
    const std::lock_guard lock(runtimeMutex());
    const Method* method = methodInChain(classRecord, selector);
    if (!method) return nullptr;
    remember(classRecord, selector, method->implementation);
    return method->implementation;
}

} // namespace

void initializeCache(RuntimeClass* classRecord) {
    classRecord->cache.store(emptyCache(), std::memory_order_release);
    classRecord->cachedMethods = 0;
}

void forgetCachedMethods(RuntimeClass* classRecord) {
    initializeCache(classRecord);
    for (RuntimeClass* subclass : classRecord->subclasses) forgetCachedMethods(subclass);
}

const Method* findMethod(RuntimeClass* classRecord, SEL selector) {
    const std::lock_guard lock(runtimeMutex());
    return methodInChain(classRecord, selector);
}

} // namespace tessarin::embedded

namespace tessarin::runtime {

using namespace embedded;

Implementation lookUpBeyondFirstEntry(Object* receiver, SEL selector) {
    if (const Implementation found = cachedImplementation(classRecordOf(receiver), selector)) return found;
    refuse(receiver, selector);
}

Implementation lookUpInClass(Object* classObject, SEL selector) {
    if (const Implementation found = cachedImplementation(runtimeClass(classObject), selector)) return found;
    raiseFrom(NSInvalidArgumentException(), NSObject(classObject), selector,
              "instances of the class have no such method");
}

bool instancesRespond(Object* classObject, SEL selector) {
    return classObject && cachedImplementation(runtimeClass(classObject), selector) != nullptr;
}

} // namespace tessarin::runtime
