#include "TessarinFoundation/TSSRUniqueIndexer.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/IndexSetEditing.h"
#include "TessarinPlatform/NSLock.h"
#include "TessarinPlatform/Retained.h"
#include "values/OwnVariable.h"

#include <utility>

using namespace tessarin;

namespace {

// The instance variables, in the order of the class's table. A runtime lays them out one behind another, as a
// compiler does the members of a structure.
struct Variables {
    NSMutableIndexSet usedIndexes;
    NSMutableIndexSet freedIndexes;
    NSLock lock;
    BOOL shouldLock;
};
Variables& variablesOf(TSSRUniqueIndexer indexer) {
    return values::ownVariable<Variables, "tsrpriv_usedIndexes">(indexer);
}

// Sends the indexer a message of its own, which a subclass may have taken over. Where none has, the method
// stands in place of the call: taking an index and giving one back is seven such messages.
template <auto method>
[[gnu::always_inline]] inline auto sendOwn(TSSRUniqueIndexer self, SEL selector) {
    const Implementation found = runtime::lookUp(self.object(), selector);
    if (found == reinterpret_cast<Implementation>(method)) [[likely]]
        return method(self, selector);
    return tessarin::detail::call<decltype(method(self, selector))>(found, self, selector);
}

// ---- Making

id init(TSSRUniqueIndexer receiver, SEL selector) {
    const auto self = sendSuper<TSSRUniqueIndexer>(receiver, TSSRUniqueIndexer::classObject(), selector);
    if (!self) return nil;
    Variables& variables = variablesOf(self);
    variables.usedIndexes = NSMutableIndexSet::alloc().init();
    variables.freedIndexes = NSMutableIndexSet::alloc().init();
    variables.lock = NSLock::alloc().init();
    variables.shouldLock = YES;
    return self;
}

void dealloc(TSSRUniqueIndexer self, SEL selector) {
    Variables& variables = variablesOf(self);
    adopt(std::exchange(variables.usedIndexes, nil)).reset();
    adopt(std::exchange(variables.freedIndexes, nil)).reset();
    adopt(std::exchange(variables.lock, nil)).reset();
    sendSuper<void>(self, TSSRUniqueIndexer::classObject(), selector);
}

// ---- The lock
//
// No scope object locks: where a set refuses an index, the exception leaves the lock held, which is meant.

[[gnu::always_inline]] inline void lock(TSSRUniqueIndexer self, SEL) {
    const Variables& variables = variablesOf(self);
    if (variables.shouldLock != NO) variables.lock.lock();
}

[[gnu::always_inline]] inline void unlock(TSSRUniqueIndexer self, SEL) {
    const Variables& variables = variablesOf(self);
    if (variables.shouldLock != NO) variables.lock.unlock();
}

BOOL shouldLock(TSSRUniqueIndexer self, SEL) { return variablesOf(self).shouldLock; }
void setShouldLock(TSSRUniqueIndexer self, SEL, BOOL shouldLock) {
    variablesOf(self).shouldLock = shouldLock;
}

// ---- Indexes

// In the sets an index is unsigned; a negative one is beyond all that a set can hold.
NSUInteger unsignedIndex(NSInteger index) { return static_cast<NSUInteger>(index); }

NSInteger firstAvailableIndex(TSSRUniqueIndexer self, SEL) {
    sendOwn<lock>(self, "lock"_sel);
    const Variables& variables = variablesOf(self);
    auto candidate = static_cast<NSInteger>(variables.freedIndexes.firstIndex());
    // With nothing in use the last index is NSNotFound, and one more wraps to the most negative number.
    if (candidate == NSNotFound) candidate = static_cast<NSInteger>(variables.usedIndexes.lastIndex() + 1);
    if (candidate < 0) candidate = NSNotFound;
    sendOwn<unlock>(self, "unlock"_sel);
    return candidate;
}

NSInteger registerIndex(TSSRUniqueIndexer self, SEL, NSInteger index) {
    sendOwn<lock>(self, "lock"_sel);
    Variables& variables = variablesOf(self);
    if (index < 0 || index == NSNotFound || variables.usedIndexes.containsIndex(unsignedIndex(index))) {
        // The lock is not recursive, so the nested call must not take it again. Other threads skip it
        // meanwhile, which is meant.
        const BOOL remembered = variables.shouldLock;
        variables.shouldLock = NO;
        index = sendOwn<firstAvailableIndex>(self, "firstAvailableIndex"_sel);
        variables.shouldLock = remembered;
    }
    if (!moveIndexAtOnce(unsignedIndex(index), variables.freedIndexes, variables.usedIndexes)) {
        variables.usedIndexes.addIndex(unsignedIndex(index)); // raises for NSNotFound
        variables.freedIndexes.removeIndex(unsignedIndex(index));
    }
    sendOwn<unlock>(self, "unlock"_sel);
    return index;
}

BOOL freeIndex(TSSRUniqueIndexer self, SEL, NSInteger index) {
    sendOwn<lock>(self, "lock"_sel);
    const Variables& variables = variablesOf(self);
    bool isUsed = moveIndexAtOnce(unsignedIndex(index), variables.usedIndexes, variables.freedIndexes);
    // Not in use, or in sets that are to be asked.
    if (!isUsed && variables.usedIndexes.containsIndex(unsignedIndex(index))) {
        variables.usedIndexes.removeIndex(unsignedIndex(index));
        variables.freedIndexes.addIndex(unsignedIndex(index));
        isUsed = true;
    }
    sendOwn<unlock>(self, "unlock"_sel);
    return isUsed ? YES : NO;
}

void freeAllIndexes(TSSRUniqueIndexer self, SEL) {
    self.lock();
    const Variables& variables = variablesOf(self);
    variables.usedIndexes.removeAllIndexes();
    variables.freedIndexes.removeAllIndexes();
    self.unlock();
}

id availableIndexesOfCount(TSSRUniqueIndexer self, SEL, NSUInteger count) {
    Variables& variables = variablesOf(self);
    const BOOL remembered = variables.shouldLock;
    self.lock();
    variables.shouldLock = NO;
    const auto restore = [&] {
        variables.shouldLock = remembered;
        self.unlock();
    };
    const Retained<NSMutableIndexSet> available = adopt(NSMutableIndexSet::alloc().init());
    NSInteger previous = NSNotFound;
    for (NSUInteger pass = 0; pass < count; ++pass) {
        const NSInteger index = self.firstAvailableIndex();
        if (index == NSNotFound) {
            restore();
            return nil;
        }
        // Nothing is registered between two passes, so each finds what the one before found, and the others
        // can be left out, however many there are. Only a subclass with another idea of what is available may
        // go on.
        if (index == previous) break;
        available.addIndex(unsignedIndex(index));
        previous = index;
    }
    restore();
    return adopt(NSIndexSet(available.copy())).autorelease();
}

NSInteger firstUsedIndex(TSSRUniqueIndexer self, SEL) {
    return static_cast<NSInteger>(variablesOf(self).usedIndexes.firstIndex());
}
NSInteger lastUsedIndex(TSSRUniqueIndexer self, SEL) {
    return static_cast<NSInteger>(variablesOf(self).usedIndexes.lastIndex());
}
NSMutableIndexSet usedIndexes(TSSRUniqueIndexer self, SEL) { return variablesOf(self).usedIndexes; }
NSMutableIndexSet freedIndexes(TSSRUniqueIndexer self, SEL) { return variablesOf(self).freedIndexes; }

const ClassDefinition definition{
    {.name = "TSSRUniqueIndexer",
     .instanceVariables = {instanceVariable<NSMutableIndexSet>("tsrpriv_usedIndexes"),
                           instanceVariable<NSMutableIndexSet>("tsrpriv_freedIndexes"),
                           instanceVariable<NSLock>("tsrpriv_lock"),
                           instanceVariable<BOOL>("tsrpriv_shouldLock")},
     .methods = {
         instanceMethod("init", init),
         instanceMethod("dealloc", dealloc),
         instanceMethod("registerIndex:", registerIndex),
         instanceMethod("freeIndex:", freeIndex),
         instanceMethod("freeAllIndexes", freeAllIndexes),
         instanceMethod("firstAvailableIndex", firstAvailableIndex),
         instanceMethod("availableIndexesOfCount:", availableIndexesOfCount),
         instanceMethod("firstUsedIndex", firstUsedIndex),
         instanceMethod("lastUsedIndex", lastUsedIndex),
         instanceMethod("usedIndexes", usedIndexes),
         instanceMethod("freedIndexes", freedIndexes),
         instanceMethod("lock", lock),
         instanceMethod("unlock", unlock),
         instanceMethod("shouldLock", shouldLock),
         instanceMethod("setShouldLock:", setShouldLock),
     }}};

} // namespace

Class TSSRUniqueIndexer::classObject() { return "TSSRUniqueIndexer"_class; }
