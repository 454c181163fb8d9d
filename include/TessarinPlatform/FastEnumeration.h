// Walking a collection: for (NSObject item : items).
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace tessarin {

// The platform's structure, field by field.
struct NSFastEnumerationState {
    NSUInteger state;
    NSObject* itemsPtr;
    NSUInteger* mutationsPtr;
    NSUInteger extra[5];
};

namespace runtime {

// Raises NSGenericException for a collection that was changed while it was walked.
[[noreturn]] TESSARIN_EXPORT void raiseMutation(Object* collection);

} // namespace runtime

// The elements of one walk over a collection that answers countByEnumeratingWithState:objects:count:. A
// change of the collection during the walk raises NSGenericException at the next element.
class FastEnumerator {
public:
    using value_type = id;
    using difference_type = std::ptrdiff_t;
    using iterator_concept = std::input_iterator_tag;

    FastEnumerator() = default; // of nothing
    explicit FastEnumerator(NSObject collection) : collection_(collection) { fetch(); }
    FastEnumerator(const FastEnumerator& other) { *this = other; }
    FastEnumerator& operator=(const FastEnumerator& other) {
        if (this == &other) return *this;
        collection_ = other.collection_;
        state_ = other.state_;
        for (NSUInteger index = 0; index < batchSize; ++index) buffer_[index] = other.buffer_[index];
        index_ = other.index_;
        count_ = other.count_;
        mutations_ = other.mutations_;
        // The collection may have answered its elements in the buffer, and keep the count of its changes in
        // the state; then the copy reads its own.
        state_.itemsPtr = counterpart(state_.itemsPtr, other);
        state_.mutationsPtr = counterpart(state_.mutationsPtr, other);
        if (state_.mutationsPtr != other.state_.mutationsPtr) mutations_ = *state_.mutationsPtr;
        return *this;
    }

    id operator*() const { return state_.itemsPtr[index_]; }
    FastEnumerator& operator++() {
        if (++index_ == count_)
            fetch();
        else
            refuseMutation();
        return *this;
    }
    void operator++(int) { ++*this; }
    // Has the memory of an element fetched that the walk will soon come to. For loops that read or write each
    // of many: elements lie anywhere, and waiting for one after the other is what takes the time.
    void fetchAhead() const {
#if defined(__GNUC__)
        constexpr NSUInteger distance = 16;
        if (count_ - index_ > distance) __builtin_prefetch(state_.itemsPtr[index_ + distance].object());
#endif
    }
    friend bool operator==(const FastEnumerator& enumerator, std::default_sentinel_t) {
        return enumerator.count_ == 0;
    }

private:
    static constexpr NSUInteger batchSize = 16;

    void fetch() {
        const bool isFirst = state_.mutationsPtr == nullptr;
        index_ = 0;
        count_ = send<NSUInteger>(collection_, "countByEnumeratingWithState:objects:count:"_sel, &state_,
                                  &buffer_[0], batchSize);
        if (count_ == 0) return;
        if (isFirst)
            mutations_ = *state_.mutationsPtr;
        else
            refuseMutation();
    }
    void refuseMutation() const {
        if (*state_.mutationsPtr != mutations_) [[unlikely]]
            runtime::raiseMutation(collection_.object());
    }

    // A pointer into the other enumerator as one to the same place of this.
    template <class T>
    T* counterpart(T* pointer, const FastEnumerator& other) {
        const auto offset =
            reinterpret_cast<std::uintptr_t>(pointer) - reinterpret_cast<std::uintptr_t>(&other);
        if (offset >= sizeof(FastEnumerator)) return pointer;
        return reinterpret_cast<T*>(reinterpret_cast<std::byte*>(this) + offset);
    }

    NSObject collection_;
    NSFastEnumerationState state_{};
    NSObject buffer_[batchSize];
    NSUInteger index_ = 0;
    NSUInteger count_ = 0;
    NSUInteger mutations_ = 0;
};

} // namespace tessarin
