#include "platform/embedded/foundation/IndexSetStorage.h"

#include <gtest/gtest.h>

#include <random>

namespace tessarin::testing {
namespace {

using embedded::Index;
using embedded::IndexRange;
using embedded::IndexSetStorage;

constexpr std::size_t bitmapBytes(Index count) { return count / 8; }

TEST(IndexSetStorageTest, ADenseSetTakesLessThanTwiceABitmap) {
    constexpr Index count = 1'000'000;
    IndexSetStorage set;
    for (Index index = 0; index < count; ++index) set.add(index);
    EXPECT_LT(set.byteCount(), 2 * bitmapBytes(count));
    std::mt19937 random(1);
    for (int round = 0; round < 500'000; ++round) set.remove(random() % count);
    EXPECT_LT(set.byteCount(), 2 * bitmapBytes(count));
}

TEST(IndexSetStorageTest, IndexesFarApartAreSmall) {
    IndexSetStorage set;
    set.add(0);
    set.add(Index{1} << 62);
    EXPECT_LT(set.byteCount(), 200u);
}

TEST(IndexSetStorageTest, ScatteredIndexesTakeNoMoreThanNodesOfATree) {
    constexpr std::size_t count = 100'000;
    IndexSetStorage set;
    std::mt19937_64 random(1);
    for (std::size_t index = 0; index < count; ++index) set.add(random() >> 2);
    EXPECT_LT(set.byteCount(), 80 * count);
}

TEST(IndexSetStorageTest, ARangeIsSmallHoweverLong) {
    IndexSetStorage set;
    set.add(IndexRange{0, (Index{1} << 62) - 1});
    EXPECT_LT(set.byteCount(), 200u);
    set.add(IndexRange{5, (Index{1} << 62) + 5});
    EXPECT_LT(set.byteCount(), 1'000u);
    set.remove(Index{1} << 61);
    EXPECT_LT(set.byteCount(), 2'000u);
    EXPECT_EQ(set.count(), (Index{1} << 62) + 5);
}

TEST(IndexSetStorageTest, ARangeSwallowsWhatItCovers) {
    IndexSetStorage set;
    for (Index index = 0; index < 1'000'000; index += 3) set.add(index);
    set.add(IndexRange{0, 999'999});
    EXPECT_LT(set.byteCount(), 4'000u);
    EXPECT_EQ(set.count(), 1'000'000u);
}

TEST(IndexSetStorageTest, WhatIsRemovedTakesNoMemory) {
    IndexSetStorage set;
    for (Index index = 0; index < 100'000; ++index) set.add(index * 1000);
    for (Index index = 0; index < 100'000; ++index) EXPECT_TRUE(set.remove(index * 1000));
    EXPECT_EQ(set.count(), 0u);
    EXPECT_LT(set.byteCount(), 200u);
}

TEST(IndexSetStorageTest, TellsWhetherItChanged) {
    IndexSetStorage set;
    EXPECT_FALSE(set.remove(5));
    EXPECT_TRUE(set.add(5));
    EXPECT_FALSE(set.add(5));
    EXPECT_FALSE(set.remove(6));
    EXPECT_FALSE(set.remove(6'000));
    EXPECT_TRUE(set.remove(5));
    set.add(IndexRange{0, 1'000'000});
    EXPECT_FALSE(set.add(500'000));
    EXPECT_TRUE(set.remove(500'000));
}

TEST(IndexSetStorageTest, RunsAreTheSameHoweverTheSetWasMade) {
    IndexSetStorage oneByOne;
    for (Index index = 100; index < 300'000; ++index) oneByOne.add(index);
    IndexSetStorage asRange;
    asRange.add(IndexRange{100, 299'999});
    EXPECT_EQ(oneByOne, asRange);
    EXPECT_EQ(oneByOne.runFrom(0), (IndexRange{100, 299'999}));
    EXPECT_EQ(asRange.runFrom(5'000), (IndexRange{5'000, 299'999}));
    EXPECT_EQ(asRange.runFrom(300'000), std::nullopt);
    asRange.remove(4'096);
    EXPECT_FALSE(oneByOne == asRange);
    EXPECT_EQ(asRange.runFrom(0), (IndexRange{100, 4'095}));
}

TEST(IndexSetStorageTest, ACopyHoldsTheSameAndIsApart) {
    IndexSetStorage set;
    std::mt19937_64 random(1);
    for (int index = 0; index < 1'000; ++index) {
        set.add(random() % 10'000);
        set.add(random() >> 2);
    }
    const IndexSetStorage copy = set;
    EXPECT_EQ(copy, set);
    const Index last = set.atOrBefore(~Index{0} >> 1);
    set.remove(last);
    EXPECT_TRUE(copy.contains(last));
    EXPECT_EQ(copy.count(), set.count() + 1);
}

} // namespace
} // namespace tessarin::testing
