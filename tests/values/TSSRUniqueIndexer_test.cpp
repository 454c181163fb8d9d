// The unique indexer: registering, freeing and asking.
#include "FailingRootInitialiser.h"
#include "UniqueIndexerTest.h"

#include <limits>

namespace tessarin::testing {
namespace {

constexpr NSInteger highestIndex = NSNotFound - 1;

// ---- A new indexer

TEST_F(TSSRUniqueIndexerTest, AFreshIndexerOffersNothing) {
    EXPECT_EQ(indexer_.firstAvailableIndex(), NSNotFound);
    EXPECT_EQ(indexer_.firstUsedIndex(), NSNotFound);
    EXPECT_EQ(indexer_.lastUsedIndex(), NSNotFound);
    EXPECT_EQ(indexer_.availableIndexesOfCount(3), nil);
    EXPECT_EQ(indexer_.availableIndexesOfCount(1), nil);
    const NSIndexSet none = indexer_.availableIndexesOfCount(0);
    ASSERT_TRUE(none);
    EXPECT_EQ(none.count(), 0u);
}

TEST_F(TSSRUniqueIndexerTest, AFreshIndexerLocksAndHasEmptySets) {
    EXPECT_TRUE(indexer_.shouldLock());
    EXPECT_TRUE(used().empty());
    EXPECT_TRUE(freed().empty());
    EXPECT_NE(indexer_.usedIndexes(), indexer_.freedIndexes());
}

TEST_F(TSSRUniqueIndexerTest, IsAnObjectThatIsNeitherCopiedNorArchived) {
    EXPECT_EQ(TSSRUniqueIndexer::classObject().superclass(), NSObject::classObject());
    for (const Protocol protocol : {"NSCopying"_protocol, "NSMutableCopying"_protocol, "NSCoding"_protocol})
        EXPECT_FALSE(indexer_.conformsToProtocol(protocol));
    EXPECT_THROWS_NAMED(indexer_.copy(), "NSInvalidArgumentException");
}

TEST_F(TSSRUniqueIndexerTest, AFailedBaseInitialiserGivesNil) {
    const TSSRUniqueIndexer raw = TSSRUniqueIndexer::alloc();
    {
        const FailingRootInitialiser failing;
        EXPECT_EQ(raw.init(), nil);
    }
    EXPECT_NE(adopt(TSSRUniqueIndexer::alloc().init()), nil);
}

// ---- Registering

TEST_F(TSSRUniqueIndexerTest, AnyIndexIsOnePastTheHighestInUse) {
    registerAll({0, 1, 2});
    EXPECT_EQ(indexer_.registerIndex(NSNotFound), 3);
    EXPECT_EQ(used(), (Indexes{0, 1, 2, 3}));
}

TEST_F(TSSRUniqueIndexerTest, AFreedIndexIsPreferred) {
    registerAll({0, 1, 2, 3});
    EXPECT_TRUE(indexer_.freeIndex(1));
    EXPECT_EQ(indexer_.firstAvailableIndex(), 1);
    EXPECT_EQ(indexer_.registerIndex(NSNotFound), 1);
    EXPECT_TRUE(freed().empty());
}

TEST_F(TSSRUniqueIndexerTest, TheLowestFreedIndexIsPreferred) {
    registerAll({0, 1, 2, 3});
    indexer_.freeIndex(2);
    indexer_.freeIndex(0);
    EXPECT_EQ(indexer_.registerIndex(-1), 0);
    EXPECT_EQ(indexer_.registerIndex(-1), 2);
    EXPECT_EQ(indexer_.registerIndex(-1), 4);
}

TEST_F(TSSRUniqueIndexerTest, ATakenIndexIsReplacedByAnother) {
    registerAll({0, 1, 2});
    EXPECT_EQ(indexer_.registerIndex(1), 3);
    EXPECT_EQ(used(), (Indexes{0, 1, 2, 3}));
}

TEST_F(TSSRUniqueIndexerTest, ANegativeIndexAsksForAny) {
    registerAll({5});
    EXPECT_EQ(indexer_.registerIndex(-1), 6);
    EXPECT_EQ(indexer_.registerIndex(std::numeric_limits<NSInteger>::min()), 7);
}

TEST_F(TSSRUniqueIndexerTest, IndexesBelowTheFirstAreNeverOffered) {
    registerAll({10});
    EXPECT_EQ(used(), (Indexes{10}));
    EXPECT_EQ(indexer_.firstAvailableIndex(), 11);
    for (NSInteger expected = 11; expected < 20; ++expected)
        EXPECT_EQ(indexer_.registerIndex(NSNotFound), expected);
}

TEST_F(TSSRUniqueIndexerTest, AGapIsOfferedOnlyOnceItWasFreed) {
    registerAll({0, 1, 2});
    EXPECT_TRUE(indexer_.freeIndex(2));
    registerAll({5});
    EXPECT_EQ(used(), (Indexes{0, 1, 5}));
    EXPECT_EQ(freed(), (Indexes{2}));
    EXPECT_EQ(indexer_.registerIndex(NSNotFound), 2);
    EXPECT_EQ(indexer_.registerIndex(NSNotFound), 6);
}

TEST_F(TSSRUniqueIndexerTest, RegisteringAFreedIndexTakesItFromTheFreedOnes) {
    registerAll({0, 1, 2});
    indexer_.freeIndex(0);
    indexer_.freeIndex(1);
    registerAll({1});
    EXPECT_EQ(freed(), (Indexes{0}));
    EXPECT_EQ(used(), (Indexes{1, 2}));
}

TEST_F(TSSRUniqueIndexerTest, BehindTheHighestIndexThereIsNone) {
    registerAll({highestIndex});
    EXPECT_EQ(indexer_.firstAvailableIndex(), NSNotFound);
    EXPECT_EQ(indexer_.availableIndexesOfCount(1), nil);
    EXPECT_EQ(indexer_.lastUsedIndex(), highestIndex);
}

TEST_F(TSSRUniqueIndexerTest, RegisteringAnyBehindTheHighestIndexRaisesAndLeavesTheLockHeld) {
    registerAll({highestIndex});
    EXPECT_THROWS_NAMED(indexer_.registerIndex(-1), "NSInvalidArgumentException");
    EXPECT_TRUE(isLocked());
    indexer_.unlock();
}

TEST_F(TSSRUniqueIndexerTest, RegisteringLeavesTheLockFree) {
    registerAll({0});
    EXPECT_EQ(indexer_.registerIndex(0), 1);
    EXPECT_FALSE(isLocked());
    EXPECT_TRUE(indexer_.shouldLock());
}

TEST_F(TSSRUniqueIndexerTest, AFirstRegistrationWithoutAnIndexRaises) {
    indexer_.setShouldLock(false);
    EXPECT_THROWS_NAMED(indexer_.registerIndex(NSNotFound), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(indexer_.registerIndex(-1), "NSInvalidArgumentException");
    EXPECT_TRUE(used().empty());
    EXPECT_FALSE(indexer_.shouldLock());
    EXPECT_FALSE(isLocked());
}

TEST_F(TSSRUniqueIndexerTest, AFirstRegistrationWithoutAnIndexLeavesTheLockHeld) {
    EXPECT_THROWS_NAMED(indexer_.registerIndex(NSNotFound), "NSInvalidArgumentException");
    EXPECT_TRUE(isLocked());
    EXPECT_TRUE(indexer_.shouldLock());
    indexer_.unlock();
    registerAll({4});
}

// ---- Freeing

TEST_F(TSSRUniqueIndexerTest, FreeingTwiceAnswersYesAndThenNo) {
    registerAll({0, 1});
    EXPECT_TRUE(indexer_.freeIndex(1));
    EXPECT_FALSE(indexer_.freeIndex(1));
    EXPECT_EQ(freed(), (Indexes{1}));
}

TEST_F(TSSRUniqueIndexerTest, FreeingWhatIsNotInUseChangesNothing) {
    registerAll({0, 1});
    for (const NSInteger index :
         {NSInteger{2}, NSInteger{-1}, NSNotFound, std::numeric_limits<NSInteger>::min()})
        EXPECT_FALSE(indexer_.freeIndex(index)) << index;
    EXPECT_EQ(used(), (Indexes{0, 1}));
    EXPECT_TRUE(freed().empty());
    EXPECT_FALSE(isLocked());
}

TEST_F(TSSRUniqueIndexerTest, FreeingAllMakesItFresh) {
    registerAll({0, 1, 2});
    indexer_.freeIndex(1);
    indexer_.freeAllIndexes();
    EXPECT_TRUE(used().empty());
    EXPECT_TRUE(freed().empty());
    EXPECT_EQ(indexer_.firstAvailableIndex(), NSNotFound);
    EXPECT_EQ(indexer_.availableIndexesOfCount(2), nil);
    EXPECT_FALSE(isLocked());
    EXPECT_THROWS_NAMED(indexer_.registerIndex(NSNotFound), "NSInvalidArgumentException");
    indexer_.unlock();
    registerAll({3});
    EXPECT_EQ(indexer_.registerIndex(NSNotFound), 4);
}

TEST_F(TSSRUniqueIndexerTest, FreeingTheLastOneKeepsItOnOffer) {
    registerAll({7});
    indexer_.freeIndex(7);
    EXPECT_EQ(indexer_.firstUsedIndex(), NSNotFound);
    EXPECT_EQ(indexer_.registerIndex(NSNotFound), 7);
}

// ---- Asking

TEST_F(TSSRUniqueIndexerTest, AskingRegistersNothing) {
    registerAll({0, 1});
    EXPECT_EQ(indexer_.firstAvailableIndex(), 2);
    EXPECT_EQ(indexer_.firstAvailableIndex(), 2);
    EXPECT_EQ(used(), (Indexes{0, 1}));
}

TEST_F(TSSRUniqueIndexerTest, AvailableIndexesAreTheFirstOneHoweverManyAreWanted) {
    registerAll({0, 1});
    for (const NSUInteger count : {NSUInteger{1}, NSUInteger{5}, std::numeric_limits<NSUInteger>::max()})
        EXPECT_EQ(indexesOf(indexer_.availableIndexesOfCount(count)), (Indexes{2})) << count;
    EXPECT_EQ(indexesOf(indexer_.availableIndexesOfCount(0)), (Indexes{}));
    EXPECT_EQ(used(), (Indexes{0, 1}));
    EXPECT_TRUE(freed().empty());
}

TEST_F(TSSRUniqueIndexerTest, AvailableIndexesAreAnImmutableAutoreleasedSet) {
    registerAll({0});
    EXPECT_FALSE(indexer_.availableIndexesOfCount(1).isKindOfClass(NSMutableIndexSet::classObject()));
    EXPECT_EQ(ownedReferencesOfNew([&] { return indexer_.availableIndexesOfCount(1); }), 0);
}

TEST_F(TSSRUniqueIndexerTest, AvailableIndexesLeaveTheLockFreeAndTheFlagAsItWas) {
    static_cast<void>(indexer_.availableIndexesOfCount(1)); // none
    EXPECT_FALSE(isLocked());
    EXPECT_TRUE(indexer_.shouldLock());
    registerAll({0});
    static_cast<void>(indexer_.availableIndexesOfCount(1));
    EXPECT_FALSE(isLocked());
    EXPECT_TRUE(indexer_.shouldLock());
    indexer_.setShouldLock(false);
    static_cast<void>(indexer_.availableIndexesOfCount(1));
    EXPECT_FALSE(indexer_.shouldLock());
}

TEST_F(TSSRUniqueIndexerTest, TheFirstAndTheLastUsedIndex) {
    registerAll({8, 3, 200});
    EXPECT_EQ(indexer_.firstUsedIndex(), 3);
    EXPECT_EQ(indexer_.lastUsedIndex(), 200);
}

} // namespace
} // namespace tessarin::testing
