#include "PlatformTest.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <random>
#include <set>

namespace tessarin::testing {
namespace {

constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);
constexpr NSUInteger highestIndex = notFound - 1;

class NSMutableIndexSetTest : public PlatformTest {
protected:
    const Retained<NSMutableIndexSet> set_ = adopt(NSMutableIndexSet::alloc().init());

    std::vector<NSUInteger> members() const {
        std::vector<NSUInteger> found;
        for (NSUInteger index = set_.firstIndex(); index != notFound;
             index = set_.indexGreaterThanIndex(index))
            found.push_back(index);
        return found;
    }
};
using Indexes = std::vector<NSUInteger>;

TEST_F(NSMutableIndexSetTest, KeepsIndexesInTheirOrderAndOnce) {
    for (const NSUInteger index : {7u, 3u, 100'000u, 3u, 0u}) set_.addIndex(index);
    EXPECT_EQ(members(), (Indexes{0, 3, 7, 100'000}));
    EXPECT_EQ(set_.count(), 4u);
}

TEST_F(NSMutableIndexSetTest, RemovesIndexes) {
    set_.addIndexesInRange({0, 5});
    set_.removeIndex(2);
    set_.removeIndex(0);
    set_.removeIndex(4);
    EXPECT_EQ(members(), (Indexes{1, 3}));
    set_.removeIndex(1);
    set_.removeIndex(3);
    EXPECT_EQ(set_.count(), 0u);
    EXPECT_EQ(set_.firstIndex(), notFound);
    set_.addIndex(1'000'000);
    EXPECT_EQ(members(), (Indexes{1'000'000}));
}

TEST_F(NSMutableIndexSetTest, RemovingWhatIsNotThereIsNothing) {
    set_.removeIndex(5);
    set_.addIndexesInRange({10, 2});
    set_.removeIndex(9);
    set_.removeIndex(highestIndex);
    set_.removeIndexesInRange({12, 1000});
    EXPECT_EQ(members(), (Indexes{10, 11}));
}

TEST_F(NSMutableIndexSetTest, AddsAndRemovesRanges) {
    set_.addIndexesInRange({1, 4});
    set_.addIndexesInRange({3, 4});
    set_.addIndexesInRange({20, 0});
    EXPECT_EQ(members(), (Indexes{1, 2, 3, 4, 5, 6}));
    set_.removeIndexesInRange({2, 3});
    set_.removeIndexesInRange({5, 0});
    EXPECT_EQ(members(), (Indexes{1, 5, 6}));
}

TEST_F(NSMutableIndexSetTest, AddsAndRemovesSets) {
    const Retained<NSMutableIndexSet> other = adopt(NSMutableIndexSet::alloc().init());
    other.addIndex(2);
    other.addIndexesInRange({70, 2});
    set_.addIndexesInRange({1, 3});
    set_.addIndexes(other);
    EXPECT_EQ(members(), (Indexes{1, 2, 3, 70, 71}));
    set_.removeIndexes(other);
    EXPECT_EQ(members(), (Indexes{1, 3}));
}

TEST_F(NSMutableIndexSetTest, AddsItself) {
    set_.addIndexesInRange({1, 100});
    set_.removeIndex(50);
    set_.addIndexes(set_);
    EXPECT_EQ(set_.count(), 99u);
}

TEST_F(NSMutableIndexSetTest, RemovesItself) {
    set_.addIndexesInRange({1, 100});
    set_.removeIndex(50);
    set_.removeIndexes(set_);
    EXPECT_EQ(set_.count(), 0u);
}

TEST_F(NSMutableIndexSetTest, RemovesAll) {
    set_.addIndexesInRange({0, 5000});
    set_.addIndex(highestIndex);
    set_.removeAllIndexes();
    EXPECT_EQ(set_.count(), 0u);
    EXPECT_EQ(set_.lastIndex(), notFound);
    set_.addIndex(6);
    EXPECT_EQ(members(), (Indexes{6}));
}

TEST_F(NSMutableIndexSetTest, RefusesNSNotFoundAndStaysAsItIs) {
    set_.addIndexesInRange({4, 2});
    EXPECT_THROWS_NAMED(set_.addIndex(notFound), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(set_.addIndexesInRange({notFound, 1}), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(set_.addIndexesInRange({6, highestIndex}), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(set_.removeIndex(notFound), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(set_.removeIndexesInRange({highestIndex, 2}), "NSInvalidArgumentException");
    EXPECT_EQ(members(), (Indexes{4, 5}));
}

TEST_F(NSMutableIndexSetTest, RefusesNegativeIndexesAndStaysAsItIs) {
    set_.addIndexesInRange({4, 2});
    const auto minusOne = static_cast<NSUInteger>(NSInteger{-1});
    EXPECT_THROWS_NAMED(set_.addIndex(minusOne), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(set_.removeIndex(minusOne), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(set_.addIndexesInRange({2, minusOne}), "NSInvalidArgumentException");
    EXPECT_EQ(members(), (Indexes{4, 5}));
}

TEST_F(NSMutableIndexSetTest, TakesTheHighestIndex) {
    set_.addIndex(highestIndex);
    EXPECT_TRUE(set_.containsIndex(highestIndex));
    set_.addIndexesInRange({highestIndex - 1, 2});
    EXPECT_EQ(members(), (Indexes{highestIndex - 1, highestIndex}));
    set_.removeIndex(highestIndex);
    EXPECT_EQ(set_.lastIndex(), highestIndex - 1);
}

TEST_F(NSMutableIndexSetTest, ACopyIsImmutableAndApart) {
    set_.addIndexesInRange({1, 3});
    const Retained<NSIndexSet> copy = adopt(NSIndexSet(set_.copy()));
    EXPECT_FALSE(copy.isKindOfClass(NSMutableIndexSet::classObject()));
    EXPECT_EQ(copy.retainCount(), 1u);
    set_.addIndex(9);
    EXPECT_EQ(copy.count(), 3u);
}

TEST_F(NSMutableIndexSetTest, AClassIsAskedForItsOwnSets) {
    EXPECT_TRUE(NSMutableIndexSet::indexSet().isKindOfClass(NSMutableIndexSet::classObject()));
    const NSObject made =
        send<NSObject>(NSMutableIndexSet::classObject(), "indexSetWithIndex:"_sel, NSUInteger{4});
    EXPECT_TRUE(made.isKindOfClass(NSMutableIndexSet::classObject()));
}

// ---- Random operations, compared with the standard library's set

// How many there are; the environment may ask for more.
long operationCount() {
    const char* asked = std::getenv("TESSARIN_INDEX_SET_OPERATIONS");
    return asked ? std::atol(asked) : 100'000;
}

// An index of one of several neighbourhoods: crowded, thin, at the very end.
class RandomIndexes {
public:
    explicit RandomIndexes(unsigned seed) : engine_(seed) {}

    NSUInteger below(NSUInteger limit) {
        return std::uniform_int_distribution<NSUInteger>(0, limit - 1)(engine_);
    }
    NSUInteger next() {
        switch (below(8)) {
        case 0:
            return below(NSUInteger{1} << 62);
        case 1:
            return (NSUInteger{1} << 62) - 150 + below(300);
        case 2:
            return highestIndex - below(200);
        case 3:
            return below(300'000);
        default:
            return below(9'000);
        }
    }

private:
    std::mt19937_64 engine_;
};

TEST_F(NSMutableIndexSetTest, IsASetUnderRandomOperations) {
    RandomIndexes random(1);
    std::set<NSUInteger> model;
    const auto modelAtOrAfter = [&](NSUInteger index) {
        const auto found = model.lower_bound(index);
        return found == model.end() ? notFound : *found;
    };
    const auto modelBefore = [&](NSUInteger index) {
        const auto found = model.lower_bound(index);
        return found == model.begin() ? notFound : *std::prev(found);
    };
    const long operations = operationCount();
    for (long operation = 0; operation < operations; ++operation) {
        const NSUInteger index = random.next();
        const NSUInteger length = std::min(random.below(200), notFound - index);
        switch (random.below(40)) {
        case 0:
            set_.addIndexesInRange({index, length});
            for (NSUInteger each = index; each < index + length; ++each) model.insert(each);
            break;
        case 1:
            set_.removeIndexesInRange({index, length});
            model.erase(model.lower_bound(index), model.lower_bound(index + length));
            break;
        case 2: {
            const NSUInteger nearest = modelAtOrAfter(index);
            if (nearest == notFound) break;
            set_.removeIndex(nearest);
            model.erase(nearest);
            break;
        }
        default:
            if (operation / 10'000 % 2 == 0 ? random.below(3) > 0 : random.below(3) == 0) {
                set_.addIndex(index);
                model.insert(index);
            } else {
                set_.removeIndex(index);
                model.erase(index);
            }
        }
        const NSUInteger asked = random.next();
        ASSERT_EQ(set_.count(), model.size()) << operation;
        ASSERT_EQ(set_.containsIndex(asked), model.contains(asked)) << operation;
        ASSERT_EQ(set_.indexGreaterThanOrEqualToIndex(asked), modelAtOrAfter(asked)) << operation;
        ASSERT_EQ(set_.indexLessThanIndex(asked), modelBefore(asked)) << operation;
        ASSERT_EQ(set_.firstIndex(), model.empty() ? notFound : *model.begin()) << operation;
        ASSERT_EQ(set_.lastIndex(), model.empty() ? notFound : *model.rbegin()) << operation;
        if (operation % 10'000 == 9'999) {
            const AutoreleasePool pool;
            ASSERT_EQ(members(), (Indexes{model.begin(), model.end()})) << operation;
            const Retained<NSIndexSet> copy = adopt(NSIndexSet(set_.copy()));
            ASSERT_TRUE(copy.isEqual(set_));
            ASSERT_EQ(copy.hash(), set_.hash());
        }
    }
}

// ---- Ranges of any length, in a model that knows the pieces between chosen numbers

std::vector<NSUInteger> cuts() {
    std::set<NSUInteger> numbers{0, notFound};
    for (unsigned power = 0; power < 63; ++power)
        for (const NSUInteger offset : {NSUInteger{0} - 1, NSUInteger{0}, NSUInteger{1}, NSUInteger{65}})
            numbers.insert((NSUInteger{1} << power) + offset);
    return {numbers.begin(), numbers.end()};
}

TEST_F(NSMutableIndexSetTest, RangesOfAnyLengthAreExact) {
    const std::vector<NSUInteger> ends = cuts();
    std::vector<bool> isMember(ends.size() - 1);
    std::mt19937 engine(2);
    for (int round = 0; round < 4000; ++round) {
        std::uniform_int_distribution<std::size_t> anyEnd(0, ends.size() - 1);
        std::size_t from = anyEnd(engine);
        std::size_t to = anyEnd(engine);
        if (round % 3 > 0) to = std::min(from + to % 6, ends.size() - 1);
        if (from > to) std::swap(from, to);
        const bool isAdded = engine() % 2 == 0;
        const NSRange range{ends[from], ends[to] - ends[from]};
        if (isAdded)
            set_.addIndexesInRange(range);
        else
            set_.removeIndexesInRange(range);
        std::fill(isMember.begin() + static_cast<std::ptrdiff_t>(from),
                  isMember.begin() + static_cast<std::ptrdiff_t>(to), isAdded);

        NSUInteger count = 0;
        for (std::size_t piece = 0; piece < isMember.size(); ++piece) {
            if (isMember[piece]) count += ends[piece + 1] - ends[piece];
            ASSERT_EQ(set_.containsIndex(ends[piece]), isMember[piece]) << round;
            ASSERT_EQ(set_.containsIndex(ends[piece + 1] - 1), isMember[piece]) << round;
        }
        ASSERT_EQ(set_.count(), count) << round;
        ASSERT_EQ(set_.containsIndexesInRange(range), isAdded || range.length == 0) << round;
    }
}

} // namespace
} // namespace tessarin::testing
