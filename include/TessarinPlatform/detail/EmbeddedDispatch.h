// The embedded platform's objects as a message send sees them: a class pointer, and in the class a method
// cache.
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

// An open-addressed table with room to spare. A full one is replaced, never changed in size.
struct MethodCache {
    std::uintptr_t mask; // number of entries - 1
    MethodCacheEntry* entries;
};

struct ClassRecord;

struct Object {
    ClassRecord* isa;
    // How many references there are; negative for an object that lives as long as the process.
    std::atomic<std::intptr_t> references;
};

struct ClassRecord : Object {
    std::atomic<const MethodCache*> cache;
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
    const MethodCache* cache = receiver->isa->cache.load(std::memory_order_acquire);
    const MethodCacheEntry& entry = cache->entries[selectorHash(selector) & cache->mask];
    if (entry.selector.load(std::memory_order_acquire) == selector) [[likely]]
        return entry.implementation.load(std::memory_order_relaxed);
    return lookUpBeyondFirstEntry(receiver, selector);
}

} // namespace runtime
} // namespace tessarin
