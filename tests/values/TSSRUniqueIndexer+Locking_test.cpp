// The unique indexer's sets and lock, who owns them, its subclasses, and many threads.
#include "ManyThreads.h"
#include "UniqueIndexerTest.h"

#include <string>
#include <thread>

namespace tessarin::testing {
namespace {

// ---- Sets and lock

TEST_F(TSSRUniqueIndexerTest, TheSetsAreTheIndexersOwn) {
    registerAll({0, 1});
    EXPECT_EQ(indexer_.usedIndexes(), instanceVariableOf<NSObject>(indexer_, "tsrpriv_usedIndexes"));
    EXPECT_EQ(indexer_.freedIndexes(), instanceVariableOf<NSObject>(indexer_, "tsrpriv_freedIndexes"));
    indexer_.usedIndexes().addIndex(20);
    EXPECT_EQ(indexer_.registerIndex(NSNotFound), 21);
    indexer_.freedIndexes().addIndex(15);
    EXPECT_EQ(indexer_.firstAvailableIndex(), 15);
}

TEST_F(TSSRUniqueIndexerTest, LockAndUnlockAreThoseOfItsLock) {
    indexer_.lock();
    EXPECT_TRUE(isLocked());
    indexer_.unlock();
    EXPECT_FALSE(isLocked());
}

TEST_F(TSSRUniqueIndexerTest, WithoutLockingNeitherDoesAnything) {
    indexer_.setShouldLock(false);
    EXPECT_FALSE(indexer_.shouldLock());
    indexer_.lock();
    EXPECT_FALSE(isLocked());
    indexer_.unlock();
}

TEST_F(TSSRUniqueIndexerTest, WithoutLockingItWorksUnderAHeldLock) {
    indexer_.lock();
    indexer_.setShouldLock(false);
    registerAll({0});
    EXPECT_EQ(indexer_.registerIndex(0), 1);
    EXPECT_TRUE(indexer_.freeIndex(0));
    EXPECT_EQ(indexesOf(indexer_.availableIndexesOfCount(2)), (Indexes{0}));
    indexer_.freeAllIndexes();
    indexer_.setShouldLock(true);
    EXPECT_TRUE(isLocked());
    indexer_.unlock();
}

TEST_F(TSSRUniqueIndexerTest, WhatTakesNoLockIsAnsweredUnderAHeldLock) {
    registerAll({3, 4});
    indexer_.lock();
    EXPECT_EQ(indexer_.firstUsedIndex(), 3);
    EXPECT_EQ(indexer_.lastUsedIndex(), 4);
    EXPECT_EQ(indexer_.usedIndexes().count(), 2u);
    EXPECT_EQ(indexer_.freedIndexes().count(), 0u);
    indexer_.unlock();
}

// ---- Ownership

TEST_F(TSSRUniqueIndexerTest, OwnsItsSetsAndItsLock) {
    Retained<TSSRUniqueIndexer> indexer = adopt(TSSRUniqueIndexer::alloc().init());
    std::vector<Retained<NSObject>> owned;
    for (const char* name : {"tsrpriv_usedIndexes", "tsrpriv_freedIndexes", "tsrpriv_lock"})
        owned.push_back(retain(instanceVariableOf<NSObject>(indexer, name)));
    for (const auto& object : owned) EXPECT_EQ(object.retainCount(), 2u);
    indexer.reset();
    for (const auto& object : owned) EXPECT_EQ(object.retainCount(), 1u);
}

// An object that writes down that it goes.
std::vector<int>& departures() {
    static std::vector<int> numbers;
    return numbers;
}
void deallocMarked(NSObject self, SEL selector) {
    departures().push_back(instanceVariableOf<int>(self, "number"));
    sendSuper<void>(self, "UniqueIndexerTestMark"_class, selector);
}

TEST_F(TSSRUniqueIndexerTest, ReleasesUsedSetFreedSetAndLockInThisOrder) {
    static const ClassDefinition mark{{.name = "UniqueIndexerTestMark",
                                       .instanceVariables = {instanceVariable<int>("number")},
                                       .methods = {instanceMethod("dealloc", deallocMarked)}}};
    Retained<TSSRUniqueIndexer> indexer = adopt(TSSRUniqueIndexer::alloc().init());
    int number = 0;
    for (const char* name : {"tsrpriv_usedIndexes", "tsrpriv_freedIndexes", "tsrpriv_lock"}) {
        const NSObject marked = mark.classObject().alloc();
        instanceVariableOf<int>(marked, "number") = ++number;
        adopt(std::exchange(instanceVariableOf<NSObject>(indexer, name), marked)).reset();
    }
    departures().clear();
    indexer.reset();
    EXPECT_EQ(departures(), (std::vector<int>{1, 2, 3}));
}

TEST_F(TSSRUniqueIndexerTest, MayGoWhileItsLockIsHeld) {
    const Retained<TSSRUniqueIndexer> indexer = adopt(TSSRUniqueIndexer::alloc().init());
    EXPECT_THROWS_NAMED(indexer.registerIndex(NSNotFound), "NSInvalidArgumentException");
    EXPECT_EQ(indexer.retainCount(), 1u);
}

// ---- Subclasses: one counts how often it locks, one offers even indexes only

NSUInteger& lockCountOf(TSSRUniqueIndexer indexer) {
    return instanceVariableOf<NSUInteger>(indexer, "lockCount");
}
void countLock(TSSRUniqueIndexer self, SEL selector) {
    ++lockCountOf(self);
    sendSuper<void>(self, "UniqueIndexerTestCounter"_class, selector);
}
void countUnlock(TSSRUniqueIndexer self, SEL selector) {
    ++lockCountOf(self);
    sendSuper<void>(self, "UniqueIndexerTestUnlocker"_class, selector);
}
NSInteger firstEvenIndex(TSSRUniqueIndexer self, SEL selector) {
    const auto index = sendSuper<NSInteger>(self, "UniqueIndexerTestEven"_class, selector);
    return index + index % 2;
}

TEST_F(TSSRUniqueIndexerTest, ASubclassKeepsItsOwnVariablesBehindThose) {
    static const ClassDefinition counter{{.name = "UniqueIndexerTestCounter",
                                          .superclass = "TSSRUniqueIndexer",
                                          .instanceVariables = {instanceVariable<NSUInteger>("lockCount")},
                                          .methods = {instanceMethod("lock", countLock)}}};
    const Retained<TSSRUniqueIndexer> indexer =
        adopt(TSSRUniqueIndexer(counter.classObject().alloc()).init());
    EXPECT_TRUE(indexer.shouldLock());
    EXPECT_EQ(lockCountOf(indexer), 0u);
    EXPECT_EQ(indexer.registerIndex(0), 0);
    EXPECT_EQ(lockCountOf(indexer), 1u);
    EXPECT_EQ(indexer.registerIndex(0), 1);
    EXPECT_EQ(lockCountOf(indexer), 3u) << "the nested call sends lock, which does nothing";
    EXPECT_TRUE(indexer.freeIndex(0));
    EXPECT_EQ(indexer.availableIndexesOfCount(1).count(), 1u);
    EXPECT_EQ(lockCountOf(indexer), 6u);
    indexer.freeAllIndexes();
    EXPECT_EQ(lockCountOf(indexer), 7u);
    EXPECT_EQ(indexer.usedIndexes().count(), 0u);
}

TEST_F(TSSRUniqueIndexerTest, ASubclassMayUnlockInItsOwnWay) {
    static const ClassDefinition counter{{.name = "UniqueIndexerTestUnlocker",
                                          .superclass = "TSSRUniqueIndexer",
                                          .instanceVariables = {instanceVariable<NSUInteger>("lockCount")},
                                          .methods = {instanceMethod("unlock", countUnlock)}}};
    const Retained<TSSRUniqueIndexer> indexer =
        adopt(TSSRUniqueIndexer(counter.classObject().alloc()).init());
    EXPECT_EQ(indexer.registerIndex(0), 0);
    EXPECT_EQ(lockCountOf(indexer), 1u);
    EXPECT_EQ(indexer.registerIndex(0), 1);
    EXPECT_EQ(lockCountOf(indexer), 3u);
    EXPECT_TRUE(indexer.freeIndex(0));
    EXPECT_FALSE(indexer.freeIndex(0));
    EXPECT_EQ(lockCountOf(indexer), 5u);
}

// A set that writes down what it is sent.
std::vector<std::string>& sentToSets() {
    static std::vector<std::string> messages;
    return messages;
}
void noteIndex(NSMutableIndexSet self, SEL selector, NSUInteger index) {
    sentToSets().push_back(runtime::selectorName(selector) + std::to_string(index));
    sendSuper<void>(self, "UniqueIndexerTestSet"_class, selector, index);
}

TEST_F(TSSRUniqueIndexerTest, SetsOfAnotherClassAreSentMessages) {
    static const ClassDefinition noting{
        {.name = "UniqueIndexerTestSet",
         .superclass = "NSMutableIndexSet",
         .methods = {instanceMethod("addIndex:", noteIndex), instanceMethod("removeIndex:", noteIndex)}}};
    for (const char* name : {"tsrpriv_usedIndexes", "tsrpriv_freedIndexes"}) {
        const NSMutableIndexSet set = NSMutableIndexSet(noting.classObject().alloc()).init();
        adopt(std::exchange(instanceVariableOf<NSObject>(indexer_, name), set)).reset();
    }
    sentToSets().clear();
    EXPECT_EQ(indexer_.registerIndex(7), 7);
    EXPECT_TRUE(indexer_.freeIndex(7));
    EXPECT_EQ(indexer_.registerIndex(NSNotFound), 7);
    EXPECT_EQ(sentToSets(), (std::vector<std::string>{"addIndex:7", "removeIndex:7", "removeIndex:7",
                                                      "addIndex:7", "addIndex:7", "removeIndex:7"}));
}

TEST_F(TSSRUniqueIndexerTest, AnIndexThatACallerPutIntoBothSetsGoesWhereItIsSent) {
    registerAll({5});
    indexer_.freedIndexes().addIndex(5);
    EXPECT_EQ(indexer_.registerIndex(5), 5) << "in use, and the first that was given back";
    EXPECT_EQ(used(), (Indexes{5}));
    EXPECT_EQ(freed(), (Indexes{}));
    indexer_.freedIndexes().addIndex(5);
    EXPECT_TRUE(indexer_.freeIndex(5));
    EXPECT_EQ(used(), (Indexes{}));
    EXPECT_EQ(freed(), (Indexes{5}));
}

TEST_F(TSSRUniqueIndexerTest, ASubclassMayHaveAnotherIdeaOfWhatIsAvailable) {
    static const ClassDefinition even{{.name = "UniqueIndexerTestEven",
                                       .superclass = "TSSRUniqueIndexer",
                                       .methods = {instanceMethod("firstAvailableIndex", firstEvenIndex)}}};
    const Retained<TSSRUniqueIndexer> indexer = adopt(TSSRUniqueIndexer(even.classObject().alloc()).init());
    EXPECT_EQ(indexer.registerIndex(0), 0);
    EXPECT_EQ(indexer.registerIndex(NSNotFound), 2);
    EXPECT_EQ(indexesOf(indexer.availableIndexesOfCount(3)), (Indexes{4}));
}

// Asked while the lock is held, lets another thread free an index.
NSInteger firstWhileAnotherFrees(TSSRUniqueIndexer self, SEL selector) {
    EXPECT_FALSE(self.shouldLock());
    std::thread([&] {
        const AutoreleasePool pool;
        EXPECT_FALSE(instanceVariableOf<NSLock>(self, "tsrpriv_lock").tryLock());
        self.freeIndex(0);
    }).join();
    return sendSuper<NSInteger>(self, "UniqueIndexerTestPorous"_class, selector);
}

TEST_F(TSSRUniqueIndexerTest, WhileTheFallbackHoldsTheLockAnotherThreadSkipsIt) {
    static const ClassDefinition porous{
        {.name = "UniqueIndexerTestPorous",
         .superclass = "TSSRUniqueIndexer",
         .methods = {instanceMethod("firstAvailableIndex", firstWhileAnotherFrees)}}};
    const Retained<TSSRUniqueIndexer> indexer = adopt(TSSRUniqueIndexer(porous.classObject().alloc()).init());
    EXPECT_EQ(indexer.registerIndex(0), 0);
    EXPECT_EQ(indexer.registerIndex(1), 1);
    EXPECT_EQ(indexer.registerIndex(1), 0) << "freed meanwhile";
    EXPECT_TRUE(indexer.shouldLock());
    EXPECT_EQ(indexesOf(indexer.availableIndexesOfCount(1)), (Indexes{0}));
    EXPECT_TRUE(indexer.shouldLock());
}

// ---- Many threads

using ConcurrentUniqueIndexerTest = TSSRUniqueIndexerTest;

TEST_F(ConcurrentUniqueIndexerTest, FreeIndexesAreRegisteredAndFreed) {
    constexpr NSInteger perThread = 1'000;
    std::vector<NSInteger> mistakes(threadCount);
    onManyThreads([&](int thread) {
        NSInteger& wrong = mistakes[static_cast<std::size_t>(thread)];
        for (NSInteger number = 0; number < perThread; ++number) {
            const NSInteger index = number * threadCount + thread;
            wrong += indexer_.registerIndex(index) != index;
            if (number % 2 == 0) wrong += !indexer_.freeIndex(index);
            wrong += indexer_.freeIndex(-1);
            indexer_.firstAvailableIndex();
        }
    });
    EXPECT_EQ(mistakes, std::vector<NSInteger>(threadCount));
    EXPECT_EQ(indexer_.usedIndexes().count(), static_cast<NSUInteger>(threadCount * perThread / 2));
    EXPECT_EQ(indexer_.freedIndexes().count(), static_cast<NSUInteger>(threadCount * perThread / 2));
}

TEST_F(ConcurrentUniqueIndexerTest, EachIndexIsFreedByOneThread) {
    constexpr NSInteger count = 2'000;
    for (NSInteger index = 0; index < count; ++index) indexer_.registerIndex(index);
    std::vector<NSInteger> freedBy(threadCount);
    onManyThreads([&](int thread) {
        for (NSInteger index = 0; index < count; ++index)
            freedBy[static_cast<std::size_t>(thread)] += indexer_.freeIndex(index);
    });
    NSInteger sum = 0;
    for (const NSInteger number : freedBy) sum += number;
    EXPECT_EQ(sum, count);
    EXPECT_EQ(indexer_.firstUsedIndex(), NSNotFound);
}

TEST_F(ConcurrentUniqueIndexerTest, AllIndexesAreFreedMeanwhile) {
    constexpr NSInteger perThread = 1'000;
    std::vector<NSInteger> mistakes(threadCount);
    onManyThreads([&](int thread) {
        for (NSInteger number = 0; number < perThread; ++number) {
            const NSInteger index = number * threadCount + thread;
            mistakes[static_cast<std::size_t>(thread)] += indexer_.registerIndex(index) != index;
            if (number % 2 == 0) indexer_.freeIndex(index); // unless it is free already
            if (number % 100 == 50) indexer_.freeAllIndexes();
        }
    });
    EXPECT_EQ(mistakes, std::vector<NSInteger>(threadCount));
    const auto numberOf = [](NSInteger index) { return index / threadCount; };
    for (const NSInteger index : used()) EXPECT_EQ(numberOf(index) % 2, 1) << index;
    for (const NSInteger index : freed()) EXPECT_EQ(numberOf(index) % 2, 0) << index;
    indexer_.freeAllIndexes();
    EXPECT_EQ(used(), Indexes{});
    EXPECT_EQ(freed(), Indexes{});
    EXPECT_EQ(indexer_.firstAvailableIndex(), NSNotFound);
}

TEST_F(ConcurrentUniqueIndexerTest, IndexersWithoutALockAreIndependent) {
    std::vector<NSInteger> last(threadCount);
    onManyThreads([&](int thread) {
        const Retained<TSSRUniqueIndexer> own = adopt(TSSRUniqueIndexer::alloc().init());
        own.setShouldLock(false);
        own.registerIndex(thread);
        for (int number = 0; number < 500; ++number) own.registerIndex(NSNotFound);
        last[static_cast<std::size_t>(thread)] = own.lastUsedIndex();
    });
    for (NSInteger thread = 0; thread < threadCount; ++thread)
        EXPECT_EQ(last[static_cast<std::size_t>(thread)], thread + 500);
}

} // namespace
} // namespace tessarin::testing
