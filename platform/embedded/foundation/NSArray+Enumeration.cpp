// NSArray: walks with blocks, and the index sets that they answer.
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/SharedWork.h"

#include "TessarinPlatform/NSException.h"
#include "TessarinPlatform/NSMutableIndexSet.h"

#include <algorithm>
#include <atomic>
#include <functional>

namespace tessarin::embedded {
namespace {

using Visitor = Block<void(id, NSUInteger, BOOL*)>;
using Test = Block<BOOL(id, NSUInteger, BOOL*)>;

// Fewer objects than this are not worth another thread, whatever is done with them.
constexpr NSUInteger objectsPerThread = 1024;
// What a thread takes at a time.
constexpr NSUInteger objectsPerPortion = 128;

NSUInteger mutationsOf(NSArray array) { return storageOf<ArrayStorage>(array).mutations; }

// Calls visit(object, index, &stop) for each object, in order or in reverse.
template <class Visit>
void walk(NSArray self, bool isReversed, Visit&& visit) {
    const bool isDirect = hasArrayStorage(self);
    const ArrayStorage& storage = storageOf<ArrayStorage>(self);
    const NSUInteger mutations = storage.mutations;
    const NSUInteger count = self.count();
    BOOL stop = NO;
    for (NSUInteger step = 0; step < count; ++step) {
        const NSUInteger index = isReversed ? count - 1 - step : step;
        visit(isDirect ? id(storage.items[index]) : self.objectAtIndex(index), index, &stop);
        if (stop != NO) return;
        if (storage.mutations != mutations) [[unlikely]]
            runtime::raiseMutation(self.object());
    }
}

// The same on several threads at once. They walk over a copy, so that a test which edits the array, which is
// found out in the end, does not pull objects away from under the others.
template <class Visit>
void walkConcurrently(NSArray self, bool isReversed, Visit&& visit) {
    const NSUInteger mutations = mutationsOf(self);
    const Retained<NSArray> kept = adopt(NSArray(self.copy()));
    const ArrayItems items(kept);
    const NSUInteger count = items.size();
    const NSUInteger portions = (count + objectsPerPortion - 1) / objectsPerPortion;
    std::atomic<bool> stopped = false;
    const auto walkPortion = [&](NSUInteger portion) {
        const NSUInteger begin = portion * objectsPerPortion;
        const NSUInteger end = std::min(begin + objectsPerPortion, count);
        for (NSUInteger step = begin; step < end; ++step) {
            if (stopped.load(std::memory_order_relaxed)) return false;
            const NSUInteger index = isReversed ? count - 1 - step : step;
            BOOL stop = NO; // each call's own, since a flag is no atomic object
            visit(items[index], index, &stop);
            if (stop != NO) stopped.store(true, std::memory_order_relaxed);
        }
        return true;
    };
    shareWork(portions, count / objectsPerThread, std::ref(walkPortion));
    if (!stopped && mutationsOf(self) != mutations) runtime::raiseMutation(self.object());
}

template <class Visit>
void walkWithOptions(NSArray self, NSEnumerationOptions options, Visit&& visit) {
    const bool isReversed = (options & NSEnumerationReverse) != 0;
    if ((options & NSEnumerationConcurrent) != 0 && self.count() >= 2 * objectsPerThread)
        walkConcurrently(self, isReversed, visit);
    else
        walk(self, isReversed, visit);
}

void enumerateObjectsWithOptions_usingBlock(NSArray self, SEL selector, NSEnumerationOptions options,
                                            Visitor block) {
    if (!block) raiseFrom(NSInvalidArgumentException(), self, selector, "block cannot be nil");
    walkWithOptions(self, options, block);
}

void enumerateObjectsUsingBlock(NSArray self, SEL selector, Visitor block) {
    enumerateObjectsWithOptions_usingBlock(self, selector, 0, block);
}

// The set of the positions that are marked.
NSIndexSet setOfMarked(const std::vector<unsigned char>& marks) {
    const Retained<NSMutableIndexSet> indexes = adopt(NSMutableIndexSet::alloc().init());
    for (auto next = std::find(marks.begin(), marks.end(), 1); next != marks.end();) {
        const auto end = std::find(next, marks.end(), 0);
        indexes.addIndexesInRange(
            {static_cast<NSUInteger>(next - marks.begin()), static_cast<NSUInteger>(end - next)});
        next = std::find(end, marks.end(), 1);
    }
    return adopt(NSIndexSet(indexes.copy())).autorelease();
}

NSIndexSet indexesOfObjectsWithOptions_passingTest(NSArray self, SEL selector, NSEnumerationOptions options,
                                                   Test test) {
    if (!test) raiseFrom(NSInvalidArgumentException(), self, selector, "predicate cannot be nil");
    // A byte for each, so that threads which mark neighbours do not meet.
    std::vector<unsigned char> passed(self.count());
    walkWithOptions(self, options, [&](id object, NSUInteger index, BOOL* stop) {
        // A derived class may have more objects by now than it counted.
        if (index < passed.size() && test(object, index, stop) != NO) passed[index] = 1;
    });
    return setOfMarked(passed);
}

NSArray objectsAtIndexes(NSArray self, SEL selector, NSIndexSet indexes) {
    if (!indexes) raiseFrom(NSInvalidArgumentException(), self, selector, "index set cannot be nil");
    constexpr auto notFound = static_cast<NSUInteger>(NSNotFound);
    const auto checkIndex = [&](NSUInteger index, NSUInteger count) {
        if (index >= count) [[unlikely]]
            raiseFrom(NSRangeException(), self, selector,
                      "index " + std::to_string(index) + " in index set beyond " + boundsText(count));
    };
    const NSUInteger count = self.count();
    const NSUInteger last = indexes.lastIndex();
    if (last != notFound) checkIndex(last, count);
    const bool isDirect = hasArrayStorage(self);
    const ArrayStorage& source = storageOf<ArrayStorage>(self);
    // A set of a derived class may claim to hold more than the array has, and what it answers is code of its
    // own, which may edit the array.
    const NSUInteger most = std::min(indexes.count(), count);
    Retained<NSArray> chosen = newArrayWithRoom(most);
    ArrayStorage& target = storageOf<ArrayStorage>(chosen);
    for (NSUInteger index = indexes.firstIndex(); index != notFound && target.count < most;
         index = indexes.indexGreaterThanIndex(index)) {
        if (isDirect) checkIndex(index, source.count);
        const NSObject object = isDirect ? source.items[index] : NSObject(self.objectAtIndex(index));
        if (!object) [[unlikely]]
            raiseItemIsNil(self, index);
        target.items[target.count++] = retain(object).leak();
    }
    return chosen.autorelease();
}

} // namespace

std::vector<MethodRow> arrayEnumerationMethods() {
    return {
        instanceMethod("enumerateObjectsUsingBlock:", enumerateObjectsUsingBlock),
        instanceMethod("enumerateObjectsWithOptions:usingBlock:", enumerateObjectsWithOptions_usingBlock),
        instanceMethod("indexesOfObjectsWithOptions:passingTest:", indexesOfObjectsWithOptions_passingTest),
        instanceMethod("objectsAtIndexes:", objectsAtIndexes)};
}

} // namespace tessarin::embedded
