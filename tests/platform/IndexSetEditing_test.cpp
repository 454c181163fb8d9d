#include "PlatformTest.h"

#include "TessarinPlatform/IndexSetEditing.h"

namespace tessarin::testing {
namespace {

class IndexSetEditingTest : public PlatformTest {
protected:
    static Retained<NSMutableIndexSet> setOf(std::initializer_list<NSUInteger> indexes) {
        const Retained<NSMutableIndexSet> set = adopt(NSMutableIndexSet::alloc().init());
        for (const NSUInteger index : indexes) set.addIndex(index);
        return set;
    }
    static bool areEqual(NSIndexSet set, std::initializer_list<NSUInteger> indexes) {
        return set.isEqual(setOf(indexes));
    }
};

// Each platform may leave it to messages.
TEST_F(IndexSetEditingTest, AnIndexIsInTheOtherSetOrNothingIsDone) {
    const Retained<NSMutableIndexSet> from = setOf({3, 70'000}), to = setOf({4});
    const bool isMoved = moveIndexAtOnce(70'000, from, to);
    EXPECT_TRUE(isMoved ? areEqual(from, {3}) : areEqual(from, {3, 70'000}));
    EXPECT_TRUE(isMoved ? areEqual(to, {4, 70'000}) : areEqual(to, {4}));
}

TEST_F(IndexSetEditingTest, WhatTheFirstSetLacksIsNotMoved) {
    const Retained<NSMutableIndexSet> from = setOf({3}), to = setOf({4});
    for (const NSUInteger index : {NSUInteger{0}, static_cast<NSUInteger>(NSNotFound), ~NSUInteger{0}})
        EXPECT_FALSE(moveIndexAtOnce(index, from, to));
    EXPECT_TRUE(areEqual(from, {3}));
    EXPECT_TRUE(areEqual(to, {4}));
}

TEST_F(IndexSetEditingTest, WhatTheSecondSetHasIsNotMoved) {
    const Retained<NSMutableIndexSet> from = setOf({3, 4}), to = setOf({4});
    EXPECT_FALSE(moveIndexAtOnce(4, from, to));
    EXPECT_TRUE(areEqual(from, {3, 4}));
    EXPECT_TRUE(areEqual(to, {4}));
}

TEST_F(IndexSetEditingTest, ASetMovesNothingToItself) {
    const Retained<NSMutableIndexSet> set = setOf({3});
    moveIndexAtOnce(3, set, set);
    EXPECT_TRUE(areEqual(set, {3}));
}

TEST_F(IndexSetEditingTest, NilSetsAreLeftToMessages) {
    const Retained<NSMutableIndexSet> set = setOf({3});
    EXPECT_FALSE(moveIndexAtOnce(3, set, nil));
    EXPECT_FALSE(moveIndexAtOnce(3, nil, set));
    EXPECT_TRUE(areEqual(set, {3}));
}

} // namespace
} // namespace tessarin::testing
