#include "platform/services/PositionSlots.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

namespace tessarin {
namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);

TEST(PositionSlotsTest, FindsNothingInAnEmptyTable) {
    const PositionSlots slots(100);
    EXPECT_EQ(slots.find(1, [](NSUInteger) { return true; }), notFound);
}

TEST(PositionSlotsTest, FindsEveryPositionThatFitsByItsHash) {
    for (const std::size_t capacity : {33u, 63u, 64u, 65u, 4096u, 100'000u}) {
        PositionSlots slots(capacity);
        std::mt19937_64 numbers(capacity);
        std::vector<std::uint64_t> hashes(capacity);
        for (std::size_t position = 0; position < capacity; ++position)
            slots.add(hashes[position] = numbers(), position);
        for (std::size_t position = 0; position < capacity; ++position) {
            const auto hasHash = [&](NSUInteger found) { return hashes[found] == hashes[position]; };
            ASSERT_EQ(slots.find(hashes[position], hasHash), position);
        }
    }
}

TEST(PositionSlotsTest, OffersThePositionsOfOneHashInTheOrderOfAdding) {
    constexpr NSUInteger capacity = 500;
    PositionSlots slots(capacity);
    for (NSUInteger position = 0; position < capacity; ++position) slots.add(7, position);
    std::vector<NSUInteger> offered;
    EXPECT_EQ(slots.find(7,
                         [&](NSUInteger position) {
                             offered.push_back(position);
                             return false;
                         }),
              notFound);
    ASSERT_EQ(offered.size(), capacity);
    for (NSUInteger position = 0; position < capacity; ++position) EXPECT_EQ(offered[position], position);
}

TEST(PositionSlotsTest, HashesOfIntegersRarelyOfferOtherPositions) {
    constexpr NSUInteger capacity = 10'000;
    PositionSlots slots(capacity);
    for (NSUInteger position = 0; position < capacity; ++position) slots.add(position, position);
    NSUInteger others = 0;
    for (NSUInteger hash = 0; hash < capacity; ++hash) {
        EXPECT_EQ(slots.find(hash,
                             [&](NSUInteger position) {
                                 others += position == hash ? 0 : 1;
                                 return position == hash;
                             }),
                  hash);
    }
    EXPECT_LT(others, capacity / 100);
}

TEST(PositionSlotsTest, RefusesMorePositionsThanItsSlotsCanHold) {
    EXPECT_THROW(PositionSlots{std::numeric_limits<std::uint32_t>::max()}, std::length_error);
}

} // namespace
} // namespace tessarin
