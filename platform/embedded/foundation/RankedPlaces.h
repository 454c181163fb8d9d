// Places in a list, put in order by a number each.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tessarin::embedded {

struct RankedPlace {
    std::uint64_t rank;
    std::size_t index; // in the list
    friend auto operator<=>(const RankedPlace&, const RankedPlace&) = default;
};

// Sorts stably by rank places that are in the order of their indexes, each of which is there once.
void sortByRank(std::span<RankedPlace> places);

} // namespace tessarin::embedded
