// Numbers for objects, which are told by identity: 0 for the first, 1 for the second, and so on.
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <cstdint>
#include <vector>

namespace tessarin {

class ObjectNumbers {
public:
    std::size_t size() const { return size_; }

    // The number of an object; one that is new gets the next.
    std::size_t numberOf(NSObject object) {
        if (2 * size_ >= places_.size()) grow();
        Place& place = placeOf(object.object());
        if (!place.object) place = {object.object(), size_++};
        return place.number;
    }

private:
    struct Place {
        Object* object = nullptr;
        std::size_t number = 0;
    };

    // Where the object is, or the free place where it would be. At least half of them are free.
    Place& placeOf(const Object* object) {
        const std::size_t mask = places_.size() - 1;
        const std::uint64_t spread = reinterpret_cast<std::uintptr_t>(object) * 0x9E3779B97F4A7C15u;
        std::size_t index = (spread >> 32) & mask;
        while (places_[index].object && places_[index].object != object) index = (index + 1) & mask;
        return places_[index];
    }

    void grow() {
        std::vector<Place> old(places_.empty() ? 64 : 2 * places_.size());
        old.swap(places_);
        for (const Place& place : old)
            if (place.object) placeOf(place.object) = place;
    }

    std::vector<Place> places_; // a power of two
    std::size_t size_ = 0;
};

} // namespace tessarin
