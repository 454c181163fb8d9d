// Method look-up behind the inline fast path: the rest of the cache, then the class and its superclasses.
#include "platform/embedded/runtime/Classes.h"

#include "TessarinPlatform/NSException.h"

#include <memory>

namespace tessarin::embedded {
namespace {

// Every cache there ever was. A replaced one may still be read by another thread and is never freed. That is
// little: a cache is replaced by one twice as large, or when a class gets a new method.
std::vector<MethodCache*>& allCaches() {
    static auto* caches = new std::vector<MethodCache*>;
    return *caches;
}

MethodCache* newCache(std::uintptr_t capacity) {
    void* memory = ::operator new(sizeof(MethodCache) + capacity * sizeof(MethodCacheEntry));
    auto* cache = new (memory) MethodCache{capacity - 1};
    std::uninitialized_value_construct_n(&cache->entryAt(0), capacity);
    return allCaches().emplace_back(cache);
}

MethodCache* emptyCache() {
    static MethodCache* cache = newCache(1);
    return cache;
}

MethodCacheEntry& entryFor(MethodCache& cache, SEL selector) {
    for (std::uintptr_t position = runtime::selectorHash(selector);; ++position) {
        MethodCacheEntry& entry = cache.entryAt(position);
        const SEL present = entry.selector.load(std::memory_order_acquire);
        if (present == selector || !present) return entry;
    }
}

void store(MethodCache& cache, SEL selector, Implementation implementation) {
    MethodCacheEntry& entry = entryFor(cache, selector);
    entry.implementation.store(implementation, std::memory_order_relaxed);
    entry.selector.store(selector, std::memory_order_release);
}

// At most half of a cache is used, so that every search ends. Up to a point it grows further to give a method
// its first entry, where the inline look-up finds it.
bool hasRoomFor(MethodCache& cache, std::size_t cachedMethods, SEL selector) {
    constexpr std::size_t mostEntriesForMethod = 16;
    if (2 * (cachedMethods + 1) > cache.mask) return false;
    const MethodCacheEntry& first = cache.entryAt(runtime::selectorHash(selector));
    return !first.selector.load(std::memory_order_relaxed)
           || cache.mask > mostEntriesForMethod * (cachedMethods + 1);
}

// Under the runtime's lock.
void remember(RuntimeClass* classRecord, SEL selector, Implementation implementation) {
    MethodCache* cache = classRecord->cache.load(std::memory_order_relaxed);
    if (entryFor(*cache, selector).selector.load(std::memory_order_relaxed) == selector) return;
    while (!hasRoomFor(*cache, classRecord->cachedMethods, selector)) {
        MethodCache* larger = newCache(cache->mask == 0 ? 16 : 2 * (cache->mask + 1));
        for (std::uintptr_t index = 0; index <= cache->mask; ++index) {
            const MethodCacheEntry& entry = cache->entryAt(index);
            if (const SEL kept = entry.selector.load(std::memory_order_relaxed))
                store(*larger, kept, entry.implementation.load(std::memory_order_relaxed));
        }
        cache = larger;
    }
    classRecord->cache.store(cache, std::memory_order_release);
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

void refuseNullSelector(NSObject receiver) { refuse(receiver.object(), nullptr); }

std::optional<Method> findMethod(RuntimeClass* classRecord, SEL selector) {
    const std::lock_guard lock(runtimeMutex());
    const Method* const method = methodInChain(classRecord, selector);
    return method ? std::optional(*method) : std::nullopt;
}

} // namespace tessarin::embedded

namespace tessarin::runtime {

using namespace embedded;

Implementation lookUpBeyondFirstEntry(Object* receiver, SEL selector) {
    if (const Implementation found = cachedImplementation(classRecordOf(receiver), selector)) return found;
    refuse(receiver, selector);
}

Implementation lookUpInClass(Object* classObject, SEL selector) {
    const MethodCacheEntry& first =
        runtimeClass(classObject)->cache.load(std::memory_order_acquire)->entryAt(selectorHash(selector));
    if (first.selector.load(std::memory_order_acquire) == selector) [[likely]]
        return first.implementation.load(std::memory_order_relaxed);
    if (const Implementation found = cachedImplementation(runtimeClass(classObject), selector)) return found;
    raiseFrom(NSInvalidArgumentException(), NSObject(classObject), selector,
              "instances of the class have no such method");
}

bool instancesRespond(Object* classObject, SEL selector) {
    return classObject && cachedImplementation(runtimeClass(classObject), selector) != nullptr;
}

} // namespace tessarin::runtime
