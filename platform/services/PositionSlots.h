// A hash table of positions. It does not know what stands there, only with which hash it was put in.
#pragma once

#include "TessarinPlatform/Types.h"
#include "platform/services/FetchAhead.h"
#include "platform/services/HashSeed.h"

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>

namespace tessarin {

class PositionSlots {
public:
    // At most half of the slots will be taken.
    explicit PositionSlots(std::size_t capacity)
        : capacity_(capacity),
          indexBits_(std::countr_zero(std::bit_ceil(2 * checked(capacity)))),
          positionMask_((Slot{1} << std::bit_width(capacity)) - 1),
          slots_(zeros(slotCount())) {}

    std::size_t capacity() const { return capacity_; }

    // Adds a position below the capacity.
    void add(std::uint64_t hash, std::size_t position) {
        const std::uint64_t spread = spreadHash(hash);
        std::size_t index = firstIndex(spread);
        while (slots_[index] != 0) index = nextIndex(index);
        slots_[index] = tagOf(spread) | static_cast<Slot>(position + 1);
    }

    // Of the positions with that hash, and now and then with another, the first added that is the one sought;
    // NSNotFound when there is none.
    template <class IsSought>
    NSUInteger find(std::uint64_t hash, IsSought&& isSought) const {
        const std::uint64_t spread = spreadHash(hash);
        for (std::size_t index = firstIndex(spread); slots_[index] != 0; index = nextIndex(index)) {
            if ((slots_[index] & ~positionMask_) != tagOf(spread)) continue;
            const NSUInteger position = (slots_[index] & positionMask_) - 1;
            if (isSought(position)) return position;
        }
        return static_cast<NSUInteger>(NSNotFound);
    }

    // For a hash that will be added or looked for soon.
    void fetchAhead(std::uint64_t hash) const { tessarin::fetchAhead(&slots_[firstIndex(spreadHash(hash))]); }

private:
    // A position + 1, or 0, and above it as much of the hash as there is room for. Small, since where there
    // are many it is the memory for them that takes the time.
    using Slot = std::uint32_t;

    struct Free {
        void operator()(Slot* memory) const { std::free(memory); }
    };
    using Slots = std::unique_ptr<Slot[], Free>;

    static std::size_t checked(std::size_t capacity) {
        if (capacity >= std::numeric_limits<Slot>::max() / 2) throw std::length_error("too many objects");
        return capacity;
    }
    // Memory that is taken as it is used.
    static Slots zeros(std::size_t count) {
        Slots slots(static_cast<Slot*>(std::calloc(count, sizeof(Slot))));
        if (!slots) throw std::bad_alloc();
        return slots;
    }

    std::size_t slotCount() const { return std::size_t{1} << indexBits_; }
    std::size_t firstIndex(std::uint64_t spread) const {
        return static_cast<std::size_t>(spread >> (64 - indexBits_));
    }
    std::size_t nextIndex(std::size_t index) const { return (index + 1) & (slotCount() - 1); }
    // Of the bits that the index leaves.
    Slot tagOf(std::uint64_t spread) const {
        return static_cast<Slot>(spread << indexBits_ >> 32) & ~positionMask_;
    }

    std::size_t capacity_;
    int indexBits_;
    Slot positionMask_;
    Slots slots_;
};

} // namespace tessarin
