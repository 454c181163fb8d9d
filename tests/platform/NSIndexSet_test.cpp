#include "PlatformTest.h"

#include <thread>

namespace tessarin::testing {
namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);
constexpr NSUInteger highestIndex = notFound - 1;
constexpr NSUInteger beyondSigned = notFound + 1; // a negative NSInteger

NSIndexSet rangeSet(NSUInteger location, NSUInteger length) {
    return NSIndexSet::indexSetWithIndexesInRange({location, length});
}

// 3, 10 to 12, 2^62
NSIndexSet mixedSet() {
    const NSMutableIndexSet set = NSMutableIndexSet::indexSet();
    set.addIndex(3);
    set.addIndexesInRange({10, 3});
    set.addIndex(NSUInteger{1} << 62);
    return adopt(NSIndexSet(set.copy())).autorelease();
}

class NSIndexSetTest : public PlatformTest {};

TEST_F(NSIndexSetTest, AnEmptySetHasNoFirstAndNoLastIndex) {
    const NSIndexSet set = NSIndexSet::indexSet();
    EXPECT_EQ(set.count(), 0u);
    EXPECT_EQ(set.firstIndex(), notFound);
    EXPECT_EQ(set.lastIndex(), notFound);
    EXPECT_FALSE(set.containsIndex(0));
}

TEST_F(NSIndexSetTest, HoldsOneIndex) {
    for (const NSUInteger index : {NSUInteger{0}, NSUInteger{64}, highestIndex}) {
        const NSIndexSet set = NSIndexSet::indexSetWithIndex(index);
        EXPECT_EQ(set.count(), 1u);
        EXPECT_EQ(set.firstIndex(), index);
        EXPECT_EQ(set.lastIndex(), index);
        EXPECT_TRUE(set.containsIndex(index));
        EXPECT_FALSE(set.containsIndex(index + 1));
        EXPECT_FALSE(set.containsIndex(index - 1));
    }
}

TEST_F(NSIndexSetTest, HoldsARange) {
    const NSIndexSet set = rangeSet(60, 10);
    EXPECT_EQ(set.count(), 10u);
    EXPECT_EQ(set.firstIndex(), 60u);
    EXPECT_EQ(set.lastIndex(), 69u);
    EXPECT_EQ(rangeSet(5, 0).count(), 0u);
    EXPECT_EQ(rangeSet(notFound, 0).count(), 0u);
}

TEST_F(NSIndexSetTest, HoldsEveryIndexThereIs) {
    const NSIndexSet set = rangeSet(0, notFound);
    EXPECT_EQ(set.count(), notFound);
    EXPECT_EQ(set.lastIndex(), highestIndex);
    EXPECT_TRUE(set.containsIndex(NSUInteger{1} << 61));
    EXPECT_FALSE(set.containsIndex(notFound));
}

TEST_F(NSIndexSetTest, RefusesNSNotFound) {
    EXPECT_THROWS_NAMED(NSIndexSet::indexSetWithIndex(notFound), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(rangeSet(notFound, 1), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(rangeSet(highestIndex, 2), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(rangeSet(beyondSigned, 0), "NSInvalidArgumentException");
}

TEST_F(NSIndexSetTest, RefusesWhatOverflows) {
    EXPECT_THROWS_NAMED(NSIndexSet::indexSetWithIndex(NSUInteger{0} - 1), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(rangeSet(5, NSUInteger{0} - 1), "NSInvalidArgumentException");
}

TEST_F(NSIndexSetTest, NoSetContainsNSNotFoundOrANegativeIndex) {
    for (const NSIndexSet set : {NSIndexSet::indexSet(), mixedSet(), rangeSet(0, notFound)})
        for (const NSUInteger index : {notFound, beyondSigned, NSUInteger{0} - 1})
            EXPECT_FALSE(set.containsIndex(index)) << index;
}

TEST_F(NSIndexSetTest, FindsTheNeighboursOfAnIndex) {
    const NSIndexSet set = mixedSet();
    constexpr NSUInteger far = NSUInteger{1} << 62;
    EXPECT_EQ(set.indexGreaterThanIndex(0), 3u);
    EXPECT_EQ(set.indexGreaterThanIndex(3), 10u);
    EXPECT_EQ(set.indexGreaterThanIndex(11), 12u);
    EXPECT_EQ(set.indexGreaterThanIndex(12), far);
    EXPECT_EQ(set.indexGreaterThanIndex(far), notFound);
    EXPECT_EQ(set.indexGreaterThanIndex(notFound), notFound);
    EXPECT_EQ(set.indexGreaterThanOrEqualToIndex(3), 3u);
    EXPECT_EQ(set.indexGreaterThanOrEqualToIndex(4), 10u);
    EXPECT_EQ(set.indexGreaterThanOrEqualToIndex(notFound), notFound);
    EXPECT_EQ(set.indexLessThanIndex(notFound), far);
    EXPECT_EQ(set.indexLessThanIndex(far), 12u);
    EXPECT_EQ(set.indexLessThanIndex(12), 11u);
    EXPECT_EQ(set.indexLessThanIndex(10), 3u);
    EXPECT_EQ(set.indexLessThanIndex(3), notFound);
    EXPECT_EQ(set.indexLessThanIndex(0), notFound);
    EXPECT_EQ(set.indexLessThanOrEqualToIndex(3), 3u);
    EXPECT_EQ(set.indexLessThanOrEqualToIndex(2), notFound);
}

TEST_F(NSIndexSetTest, ContainsARangeWhenItContainsAllOfIt) {
    const NSIndexSet set = mixedSet();
    EXPECT_TRUE(set.containsIndexesInRange({10, 3}));
    EXPECT_TRUE(set.containsIndexesInRange({11, 1}));
    EXPECT_FALSE(set.containsIndexesInRange({9, 2}));
    EXPECT_FALSE(set.containsIndexesInRange({12, 2}));
    EXPECT_FALSE(set.containsIndexesInRange({3, 8}));
    EXPECT_TRUE(set.containsIndexesInRange({5, 0}));
    EXPECT_FALSE(NSIndexSet::indexSet().containsIndexesInRange({0, 1}));
}

TEST_F(NSIndexSetTest, ContainsAnotherSetWhenItContainsAllOfIt) {
    const NSIndexSet set = mixedSet();
    EXPECT_TRUE(set.containsIndexes(set));
    EXPECT_TRUE(set.containsIndexes(rangeSet(11, 2)));
    EXPECT_TRUE(set.containsIndexes(NSIndexSet::indexSet()));
    EXPECT_FALSE(set.containsIndexes(rangeSet(11, 3)));
    EXPECT_FALSE(rangeSet(11, 2).containsIndexes(set));
}

TEST_F(NSIndexSetTest, EqualsASetOfTheSameIndexes) {
    const Retained<NSMutableIndexSet> built = adopt(NSMutableIndexSet::alloc().init());
    for (NSUInteger index = 200; index-- > 0;) built.addIndex(index);
    const NSIndexSet whole = rangeSet(0, 200);
    EXPECT_TRUE(built.isEqual(whole));
    EXPECT_TRUE(whole.isEqual(built));
    EXPECT_TRUE(whole.isEqualToIndexSet(built));
    EXPECT_EQ(built.hash(), whole.hash());
    EXPECT_FALSE(whole.isEqual(rangeSet(0, 201)));
    EXPECT_FALSE(whole.isEqual(rangeSet(1, 200)));
    EXPECT_FALSE(whole.isEqual("0-199"_ns));
    EXPECT_FALSE(whole.isEqual(nil));
    EXPECT_TRUE(NSIndexSet::indexSet().isEqual(rangeSet(7, 0)));
}

TEST_F(NSIndexSetTest, ACopyOfAnImmutableSetIsTheSetItself) {
    const NSIndexSet set = rangeSet(1, 3);
    EXPECT_EQ(referencesLeftBy([&] { return NSIndexSet(set.copy()); }, set), 1);
    EXPECT_EQ(adopt(NSIndexSet(set.copy())), set);
    adopt(set).reset();
}

TEST_F(NSIndexSetTest, AMutableCopyIsApart) {
    const NSIndexSet set = mixedSet();
    const Retained<NSMutableIndexSet> copy = adopt(NSMutableIndexSet(set.mutableCopy()));
    EXPECT_TRUE(copy.isKindOfClass(NSMutableIndexSet::classObject()));
    EXPECT_TRUE(copy.isEqual(set));
    copy.removeIndex(11);
    EXPECT_EQ(set.count(), 5u);
    EXPECT_EQ(copy.count(), 4u);
}

TEST_F(NSIndexSetTest, IsMadeOfAnotherSet) {
    const Retained<NSIndexSet> made = adopt(NSIndexSet::alloc().initWithIndexSet(mixedSet()));
    EXPECT_TRUE(made.isEqual(mixedSet()));
    const Retained<NSMutableIndexSet> changed =
        adopt(NSMutableIndexSet(NSMutableIndexSet::alloc().initWithIndexSet(made)));
    changed.addIndex(4);
    EXPECT_EQ(made.count(), 5u);
    EXPECT_EQ(changed.count(), 6u);
}

TEST_F(NSIndexSetTest, OwnershipIsThatOfTheSelector) {
    EXPECT_EQ(ownedReferencesOfNew([] { return NSIndexSet::indexSetWithIndex(1); }), 0);
    EXPECT_EQ(ownedReferencesOfNew([] { return NSIndexSet::alloc().initWithIndex(1); }), 1);
    EXPECT_EQ(ownedReferencesOfNew([] { return NSIndexSet::alloc().initWithIndexesInRange({1, 2}); }), 1);
}

std::string behindAddress(NSIndexSet set) {
    const std::string description = text(set.description());
    return description.substr(std::min(description.find('>'), description.size() - 1) + 1);
}

TEST_F(NSIndexSetTest, ShowsItsClassAndHowManyIndexesItHas) {
    EXPECT_TRUE(text(NSIndexSet::indexSet().description()).starts_with("<NSIndexSet: 0x"));
    EXPECT_TRUE(text(NSMutableIndexSet::indexSet().description()).starts_with("<NSMutableIndexSet: 0x"));
    EXPECT_EQ(behindAddress(NSIndexSet::indexSet()), "(no indexes)");
    EXPECT_EQ(behindAddress(rangeSet(1, 3)), "[number of indexes: 3 (in 1 ranges), indexes: (1-3)]");
}

TEST_F(NSIndexSetTest, ShowsItsRunsInOnePairOfParentheses) {
    EXPECT_EQ(behindAddress(mixedSet()),
              "[number of indexes: 5 (in 3 ranges), indexes: (3 10-12 4611686018427387904)]");
}

TEST_F(NSIndexSetTest, ConformsToCopyingAndCoding) {
    for (const NSObject set : {NSObject(NSIndexSet::indexSet()), NSObject(NSMutableIndexSet::indexSet())})
        for (const Protocol protocol :
             {"NSCopying"_protocol, "NSMutableCopying"_protocol, "NSCoding"_protocol})
            EXPECT_TRUE(set.conformsToProtocol(protocol));
}

TEST_F(NSIndexSetTest, NilHasNoIndexes) {
    const NSIndexSet none;
    EXPECT_EQ(none.count(), 0u);
    EXPECT_EQ(none.firstIndex(), 0u);
    EXPECT_FALSE(none.containsIndex(0));
}

TEST_F(NSIndexSetTest, ConcurrentReadersFindTheSame) {
    const Retained<NSMutableIndexSet> set = adopt(NSMutableIndexSet::alloc().init());
    for (NSUInteger index = 0; index < 20'000; index += 1 + index % 5) set.addIndex(index * 17);
    const NSUInteger count = set.count();
    std::vector<NSUInteger> counts(4);
    std::vector<std::thread> threads;
    for (NSUInteger& found : counts)
        threads.emplace_back([&] {
            for (NSUInteger index = set.firstIndex(); index != notFound;
                 index = set.indexGreaterThanIndex(index))
                found += set.containsIndex(index) ? 1u : 0u;
        });
    for (std::thread& thread : threads) thread.join();
    for (const NSUInteger found : counts) EXPECT_EQ(found, count);
}

} // namespace
} // namespace tessarin::testing
