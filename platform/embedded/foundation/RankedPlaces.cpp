#include "platform/embedded/foundation/RankedPlaces.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>
#include <vector>

namespace tessarin::embedded {
namespace {

constexpr int digitBits = 8;
constexpr std::size_t digits = std::size_t{1} << digitBits;
// Fewer are sorted sooner by comparing them.
constexpr std::size_t fewestToDistribute = 128;

std::size_t digitAt(std::uint64_t rank, int shift) { return rank >> shift & (digits - 1); }

// The bits in which the ranks are not all the same.
std::uint64_t differingBits(std::span<const RankedPlace> places) {
    std::uint64_t differing = 0;
    for (const RankedPlace& place : places) differing |= place.rank ^ places[0].rank;
    return differing;
}

// Copies the places in the order of one digit; those of the same stay as they are.
void distribute(std::span<const RankedPlace> places, int shift, std::span<RankedPlace> target) {
    std::array<std::size_t, digits> next{}; // how many there are of each digit, then where they go
    for (const RankedPlace& place : places) ++next[digitAt(place.rank, shift)];
    std::size_t begin = 0;
    for (std::size_t& count : next) begin += std::exchange(count, begin);
    for (const RankedPlace& place : places) target[next[digitAt(place.rank, shift)]++] = place;
}

} // namespace

void sortByRank(std::span<RankedPlace> places) {
    if (places.size() < fewestToDistribute) {
        std::ranges::sort(places);
        return;
    }
    std::vector<RankedPlace> others(places.begin(), places.end());
    std::span<RankedPlace> source(places);
    std::span<RankedPlace> target(others);
    // The lowest digit first. Most ranks agree in many bits, whose digits are left out.
    const std::uint64_t differing = differingBits(places);
    for (int shift = std::countr_zero(differing); shift < 64; shift += digitBits) {
        if (digitAt(differing, shift) == 0) continue;
        distribute(source, shift, target);
        std::swap(source, target);
    }
    if (source.data() != places.data()) std::ranges::copy(source, places.begin());
}

} // namespace tessarin::embedded
