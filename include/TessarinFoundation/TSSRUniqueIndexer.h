// Unique indexes, handed out and taken back.
//
// An indexer keeps the set of indexes in use and the set of indexes that were given back. It prefers the
// lowest that was given back and otherwise goes on one past the highest in use. An index below the lowest
// registered one, or in a gap between two, is offered only after it has been registered and freed.
//
// The indexes are from 0 to NSNotFound - 1. A new indexer offers none until one has been registered by its
// number: the first registration must name its index.
//
//   Retained<TSSRUniqueIndexer> channels = adopt(TSSRUniqueIndexer::alloc().init());
//   channels.registerIndex(0);          // 0
//   channels.registerIndex(NSNotFound); // 1, any index
//   channels.freeIndex(0);              // true
//   channels.registerIndex(NSNotFound); // 0 again
//
// Indexers are neither copied nor archived.
//
// Threads: while shouldLock is YES, as it is at first, registerIndex, freeIndex, freeAllIndexes,
// firstAvailableIndex and availableIndexesOfCount guard the sets with one lock that is not recursive.
// Registering indexes that are free, and freeing, is safe on any number of threads at once. What is not:
//
// - firstUsedIndex, lastUsedIndex and the two sets themselves are read without the lock.
// - shouldLock is a plain flag. While registerIndex falls back to the first available index, and while
//   availableIndexesOfCount runs, it is NO, and a thread that comes in between works unguarded. This is
//   meant. Threads that ask for any index, or for the available ones, at once need a lock around those calls.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <Foundation/NSIndexSet.h>
#    import <Foundation/NSLock.h>
#    import <Foundation/NSObject.h>

TESSARIN_DEFINED_AT_RUN_TIME
@interface TSSRUniqueIndexer : NSObject {
    NSMutableIndexSet* tsrpriv_usedIndexes;
    NSMutableIndexSet* tsrpriv_freedIndexes;
    NSLock* tsrpriv_lock;
    BOOL tsrpriv_shouldLock;
}

@property (readonly, nonatomic) NSMutableIndexSet* usedIndexes;
@property (readonly, nonatomic) NSMutableIndexSet* freedIndexes;
@property (readwrite, nonatomic) BOOL shouldLock;

- (NSInteger)registerIndex:(NSInteger)index;
- (BOOL)freeIndex:(NSInteger)index;
- (void)freeAllIndexes;
- (NSInteger)firstAvailableIndex;
- (NSIndexSet*)availableIndexesOfCount:(NSUInteger)count;
- (NSInteger)firstUsedIndex;
- (NSInteger)lastUsedIndex;
- (void)lock;
- (void)unlock;

@end

#else

#    include "TessarinPlatform/NSMutableIndexSet.h"

class TSSRUniqueIndexer
    : public tessarin::Handle<TSSRUniqueIndexer, "TSSRUniqueIndexer", tessarin::NSObject> {
public:
    using Handle::Handle;

    TESSARIN_EXPORT static tessarin::Class classObject();
    [[nodiscard]] static TSSRUniqueIndexer alloc() { return TSSRUniqueIndexer(classObject().alloc()); }
    // Both sets empty, shouldLock YES.
    [[nodiscard]] TSSRUniqueIndexer init() const {
        using namespace tessarin;
        return send<TSSRUniqueIndexer>(*this, "init"_sel);
    }

    // Registers the index and answers it. An index that is negative, NSNotFound or in use is no mistake:
    // firstAvailableIndex is registered in its place. Where there is none, because nothing is in use or the
    // highest index is, and none was given back, the index set raises NSInvalidArgumentException, and the
    // lock stays held until the same thread sends unlock; this is meant.
    tessarin::NSInteger registerIndex(tessarin::NSInteger index) const {
        using namespace tessarin;
        return send<NSInteger>(*this, "registerIndex:"_sel, index);
    }
    // Whether the index was in use; it is free now. An index that is not in use changes nothing.
    bool freeIndex(tessarin::NSInteger index) const {
        using namespace tessarin;
        return send<BOOL>(*this, "freeIndex:"_sel, index) != NO;
    }
    // As new: nothing is in use, nothing is offered.
    void freeAllIndexes() const {
        using namespace tessarin;
        send<void>(*this, "freeAllIndexes"_sel);
    }

    // The index that would be handed out next, NSNotFound for none. Nothing is registered.
    tessarin::NSInteger firstAvailableIndex() const {
        using namespace tessarin;
        return send<NSInteger>(*this, "firstAvailableIndex"_sel);
    }
    // The set of just firstAvailableIndex for any count but 0, which gives the empty set; nil when no index
    // is available and the count is not 0. It does not reserve a run of indexes; this is meant. Autoreleased.
    tessarin::NSIndexSet availableIndexesOfCount(tessarin::NSUInteger count) const {
        using namespace tessarin;
        return send<NSIndexSet>(*this, "availableIndexesOfCount:"_sel, count);
    }
    // The lowest and the highest index in use, NSNotFound for none. Not locked.
    tessarin::NSInteger firstUsedIndex() const {
        using namespace tessarin;
        return send<NSInteger>(*this, "firstUsedIndex"_sel);
    }
    tessarin::NSInteger lastUsedIndex() const {
        using namespace tessarin;
        return send<NSInteger>(*this, "lastUsedIndex"_sel);
    }

    // The indexer's own sets, not copies: they change with it, and it with them. No index is in both as long
    // as only the indexer changes them.
    tessarin::NSMutableIndexSet usedIndexes() const {
        using namespace tessarin;
        return send<NSMutableIndexSet>(*this, "usedIndexes"_sel);
    }
    tessarin::NSMutableIndexSet freedIndexes() const {
        using namespace tessarin;
        return send<NSMutableIndexSet>(*this, "freedIndexes"_sel);
    }

    // The lock, unless shouldLock is NO: then neither does anything. It is not recursive; between the two the
    // caller must not send what locks.
    void lock() const {
        using namespace tessarin;
        send<void>(*this, "lock"_sel);
    }
    void unlock() const {
        using namespace tessarin;
        send<void>(*this, "unlock"_sel);
    }
    // Whether they do. Not to be changed while the lock is held, since unlock would then do nothing.
    bool shouldLock() const {
        using namespace tessarin;
        return send<BOOL>(*this, "shouldLock"_sel) != NO;
    }
    void setShouldLock(bool shouldLock) const {
        using namespace tessarin;
        send<void>(*this, "setShouldLock:"_sel, static_cast<BOOL>(shouldLock));
    }
};

#endif
