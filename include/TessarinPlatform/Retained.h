// Ownership in types.
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <utility>

namespace tessarin {
namespace detail {

struct Adopting {};

} // namespace detail

// A handle that owns one reference and gives it up when it goes. It is a T, so it is used like one.
//
//   Retained<NSMutableArray> remaining = adopt(self.mutableCopy());
template <HandleType T>
class [[nodiscard]] Retained : public T {
public:
    constexpr Retained() = default; // nil
    constexpr Retained(std::nullptr_t) {}
    constexpr Retained(T owned, detail::Adopting) : T(owned) {} // adopt, in words
    Retained(const Retained& other) : T(other.plain()) { runtime::retain(this->object()); }
    Retained(Retained&& other) noexcept : T(other.leak()) {}
    // From a handle of a more exact class, or of one that is not known.
    template <HandleType U>
    requires(std::derived_from<U, T> || std::same_as<U, id>) Retained(Retained<U>&& other)
        : T(static_cast<NSObject>(other.leak())) {}
    ~Retained() { reset(); }

    Retained& operator=(Retained other) noexcept {
        std::swap(plainReference(), other.plainReference());
        return *this;
    }

    // Gives the reference up. The member is nil before the object is released, so that nothing that the
    // release sets off finds an object that is going.
    void reset() {
        const T released = leak();
        runtime::release(released.object());
    }

    // Hands the reference on to the caller.
    [[nodiscard]] T leak() { return std::exchange(plainReference(), T()); }
    // Hands the reference to the innermost autorelease pool.
    T autorelease() {
        const T object = leak();
        runtime::autorelease(object.object());
        return object;
    }

private:
    T& plainReference() { return *this; }
    const T& plain() const { return *this; }
};

// Takes over a reference that the caller owns: the result of alloc/init, new, copy or mutableCopy.
template <HandleType T>
Retained<T> adopt(T owned) {
    return Retained<T>(owned, detail::Adopting());
}

// Adds a reference.
template <HandleType T>
Retained<T> retain(T object) {
    runtime::retain(object.object());
    return adopt(object);
}

} // namespace tessarin
