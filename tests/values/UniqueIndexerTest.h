// What the tests of the unique indexer have in common.
#pragma once

#include "PlatformTest.h"

#include "TessarinFoundation/TSSRUniqueIndexer.h"

#include <thread>

namespace tessarin::testing {

using Indexes = std::vector<NSInteger>;

inline Indexes indexesOf(NSIndexSet set) {
    Indexes indexes;
    for (auto index = static_cast<NSInteger>(set.firstIndex()); index != NSNotFound;
         index = static_cast<NSInteger>(set.indexGreaterThanIndex(static_cast<NSUInteger>(index))))
        indexes.push_back(index);
    return indexes;
}

class TSSRUniqueIndexerTest : public PlatformTest {
protected:
    void registerAll(std::initializer_list<NSInteger> indexes) {
        for (const NSInteger index : indexes) EXPECT_EQ(indexer_.registerIndex(index), index);
    }
    Indexes used() const { return indexesOf(indexer_.usedIndexes()); }
    Indexes freed() const { return indexesOf(indexer_.freedIndexes()); }
    // Whether another thread could take the indexer's lock.
    bool isLocked() const {
        bool taken = false;
        std::thread([&] {
            const NSLock lock = instanceVariableOf<NSLock>(indexer_, "tsrpriv_lock");
            taken = lock.tryLock();
            if (taken) lock.unlock();
        }).join();
        return !taken;
    }

    const Retained<TSSRUniqueIndexer> indexer_ = adopt(TSSRUniqueIndexer::alloc().init());
};

} // namespace tessarin::testing
