// The recursive lock that every object carries: in a table beside the objects, for as long as it is held or
// waited for.
#include "TessarinPlatform/Runtime.h"

#include <array>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace tessarin::embedded {
namespace {

struct ObjectLock {
    std::recursive_mutex mutex;
    std::size_t users = 0; // threads that hold it or wait for it, once for each time
};

// One of several tables, so that threads with different objects seldom meet.
struct LockTable {
    std::mutex mutex;
    std::unordered_map<Object*, std::unique_ptr<ObjectLock>> locks;
};

LockTable& tableFor(Object* object) {
    static auto* tables = new std::array<LockTable, 32>;
    return (*tables)[(reinterpret_cast<std::uintptr_t>(object) >> 4) % tables->size()];
}

} // namespace
} // namespace tessarin::embedded

namespace tessarin::runtime {

using namespace embedded;

void lock(Object* object) {
    if (!object) return;
    LockTable& table = tableFor(object);
    ObjectLock* objectLock = nullptr;
    {
        const std::lock_guard guard(table.mutex);
        auto& slot = table.locks[object];
        if (!slot) slot = std::make_unique<ObjectLock>();
        ++slot->users;
        objectLock = slot.get();
    }
    objectLock->mutex.lock();
}

void unlock(Object* object) {
    if (!object) return;
    LockTable& table = tableFor(object);
    const std::lock_guard guard(table.mutex);
    const auto found = table.locks.find(object);
    if (found == table.locks.end()) return;
    found->second->mutex.unlock();
    if (--found->second->users == 0) table.locks.erase(found);
}

} // namespace tessarin::runtime
