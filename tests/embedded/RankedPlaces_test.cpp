#include "platform/embedded/foundation/RankedPlaces.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <vector>

namespace tessarin::testing {
namespace {

using embedded::RankedPlace;

void expectSorted(std::size_t count, std::uint64_t bits) {
    std::mt19937_64 random(count);
    std::vector<RankedPlace> places;
    for (std::size_t index = 0; index < count; ++index) places.push_back({random() & bits, index});
    std::vector<RankedPlace> expected = places;
    std::ranges::stable_sort(expected, {}, &RankedPlace::rank);
    embedded::sortByRank(places);
    EXPECT_EQ(places, expected) << count << " places, bits " << std::hex << bits;
}

TEST(RankedPlacesTest, AreSortedStablyWhereverTheRanksDiffer) {
    constexpr auto all = std::numeric_limits<std::uint64_t>::max();
    for (const std::uint64_t bits :
         {all, std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{1} << 63, all << 56, all >> 3,
          std::uint64_t{0xF0000F0000F00}, std::uint64_t{3} << 31})
        for (const std::size_t count : {0u, 1u, 2u, 127u, 128u, 129u, 1000u, 5000u})
            expectSorted(count, bits);
}

TEST(RankedPlacesTest, KeepTheIndexesThatTheyHave) {
    std::vector<RankedPlace> places;
    for (std::size_t index = 0; index < 300; ++index) places.push_back({300 - index, 7 * index});
    embedded::sortByRank(places);
    for (std::size_t place = 0; place < places.size(); ++place)
        ASSERT_EQ(places[place].index, 7 * (299 - place)) << place;
}

} // namespace
} // namespace tessarin::testing
