// What the library's objects are measured against where C++ has no such thing of its own: an object that
// counts its references, with the memory orders that the library uses, and the pointer that does the
// counting.
#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

namespace bench {

class CountedObject {
public:
    CountedObject() = default;
    virtual ~CountedObject() = default;
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;

    void retain() { references_.fetch_add(1, std::memory_order_relaxed); }
    void release() {
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
    }

private:
    std::atomic<std::intptr_t> references_{1};
};

class IntrusivePointer {
public:
    IntrusivePointer() = default;
    // Takes over the caller's reference.
    explicit IntrusivePointer(CountedObject* object) : object_(object) {}
    IntrusivePointer(const IntrusivePointer& other) : object_(other.object_) {
        if (object_) object_->retain();
    }
    IntrusivePointer(IntrusivePointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ~IntrusivePointer() {
        if (object_) object_->release();
    }
    IntrusivePointer& operator=(IntrusivePointer other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    CountedObject* get() const { return object_; }

private:
    CountedObject* object_ = nullptr;
};

} // namespace bench
