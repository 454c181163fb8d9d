// The embedded platform's objects as a message send sees them: a class pointer, and in the class a method
// cache; and as an owner sees them, who counts references.
#pragma once

#include "TessarinPlatform/Runtime.h"

#include <atomic>
#include <cstdint>

namespace tessarin {

// One method found before. The implementation is stored before the selector is published, and neither changes
// afterwards, so that a reader who sees the selector may use the implementation.
struct MethodCacheEntry {
    std::atomic<SEL> selector;
    std::atomic<Implementation> implementation;
};

// An open-addressed table with room to spare. A full one is replaced, never changed in size. The entries
// follow it in memory.
struct alignas(MethodCacheEntry) MethodCache {
    std::uintptr_t mask; // number of entries - 1

    MethodCacheEntry& entryAt(std::uintptr_t position) {
        return reinterpret_cast<MethodCacheEntry*>(this + 1)[position & mask];
    }
};

struct ClassRecord;

struct Object {
    ClassRecord* isa;
    // How many references there are; negative for an object that lives as long as the process.
    std::atomic<std::intptr_t> references;
};

struct ClassRecord : Object {
    std::atomic<MethodCache*> cache;
    // Whether retain, release or autorelease is overridden, so that the message must be sent.
    std::atomic<bool> countsReferencesItself;
};

namespace runtime {

// Selectors lie in 32-byte cells side by side, which makes the cell number as good as a perfect hash.
inline constexpr int selectorCellShift = 5;
inline std::uintptr_t selectorHash(SEL selector) {
    return reinterpret_cast<std::uintptr_t>(selector) >> selectorCellShift;
}

TESSARIN_EXPORT Implementation lookUpBeyondFirstEntry(Object* receiver, SEL selector);

inline Implementation lookUp(Object* receiver, SEL selector) {
    MethodCache* cache = receiver->isa->cache.load(std::memory_order_acquire);
    const MethodCacheEntry& entry = cache->entryAt(selectorHash(selector));
    if (entry.selector.load(std::memory_order_acquire) == selector) [[likely]]
        return entry.implementation.load(std::memory_order_relaxed);
    return lookUpBeyondFirstEntry(receiver, selector);
}

TESSARIN_EXPORT Object* retainByMessage(Object* object);
TESSARIN_EXPORT void releaseByMessage(Object* object);
TESSARIN_EXPORT void deallocate(Object* object);

inline Object* retain(Object* object) {
    if (!object || object->references.load(std::memory_order_relaxed) < 0) return object;
    if (object->isa->countsReferencesItself.load(std::memory_order_relaxed)) [[unlikely]]
        return retainByMessage(object);
    object->references.fetch_add(1, std::memory_order_relaxed);
    return object;
}

inline void release(Object* object) {
    if (!object) return;
    const std::intptr_t references = object->references.load(std::memory_order_acquire);
    if (references < 0) return;
    if (object->isa->countsReferencesItself.load(std::memory_order_relaxed)) [[unlikely]]
        return releaseByMessage(object);
    // Whoever holds the only reference needs to agree with no other thread.
    if (references == 1 || object->references.fetch_sub(1, std::memory_order_acq_rel) == 1)
        deallocate(object);
}

} // namespace runtime
} // namespace tessarin
