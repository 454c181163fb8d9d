#include "platform/embedded/foundation/IndexSetStorage.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/runtime/StoredKind.h"

#include "TessarinPlatform/NSException.h"
#include "TessarinPlatform/NSMutableIndexSet.h"

#include <string>

namespace tessarin::embedded {
namespace {

// ---- Making

NSIndexSet initWithIndexesInRange(NSIndexSet self, SEL selector, NSRange range) {
    Retained<NSIndexSet> owned = adopt(self);
    checkRange(self, selector, range);
    if (range.length > 0) storageOf(self).add({range.location, range.location + range.length - 1});
    return owned.leak();
}

NSIndexSet initWithIndex(NSIndexSet self, SEL, NSUInteger index) {
    return self.initWithIndexesInRange({index, 1});
}

NSIndexSet initWithIndexSet(NSIndexSet self, SEL selector, NSIndexSet other) {
    Retained<NSIndexSet> owned = adopt(self);
    if (other) storageOf(self) = indexesOf(other, self, selector);
    return owned.leak();
}

id indexSet(Class self, SEL) { return adopt(send<id>(self.alloc(), "init"_sel)).autorelease(); }

id indexSetWithIndex(Class self, SEL, NSUInteger index) {
    return adopt(send<id>(self.alloc(), "initWithIndex:"_sel, index)).autorelease();
}

id indexSetWithIndexesInRange(Class self, SEL, NSRange range) {
    return adopt(send<id>(self.alloc(), "initWithIndexesInRange:"_sel, range)).autorelease();
}

// A mutable set answers copyWithZone: itself; every other cannot change.
NSIndexSet copyWithZone(NSIndexSet self, SEL, void*) { return retain(self).leak(); }

NSIndexSet mutableCopyWithZone(NSIndexSet self, SEL, void*) {
    return NSMutableIndexSet::alloc().initWithIndexSet(self);
}

// ---- Asking

NSUInteger count(NSIndexSet self, SEL) { return static_cast<NSUInteger>(storageOf(self).count()); }

// NSNotFound and what is above it is no member of any set.
BOOL containsIndex(NSIndexSet self, SEL, NSUInteger index) { return storageOf(self).contains(index); }

// Every set holds all indexes of a range without indexes.
BOOL containsIndexesInRange(NSIndexSet self, SEL selector, NSRange range) {
    checkRange(self, selector, range);
    return range.length == 0 || storageOf(self).contains({range.location, range.location + range.length - 1});
}

BOOL containsIndexes(NSIndexSet self, SEL, NSIndexSet other) {
    if (!other) return YES;
    // Where the operation is named by its selector, any object may come.
    if (!storedKindOf<NSIndexSet>(other)) return NO;
    const IndexSetStorage& members = storageOf(self);
    const IndexSetStorage& asked = storageOf(other);
    for (auto run = asked.runFrom(0); run; run = asked.runFrom(run->last + 1))
        if (!members.contains(*run)) return NO;
    return YES;
}

NSUInteger indexGreaterThanOrEqualToIndex(NSIndexSet self, SEL, NSUInteger index) {
    return static_cast<NSUInteger>(storageOf(self).atOrAfter(index));
}
NSUInteger indexGreaterThanIndex(NSIndexSet self, SEL, NSUInteger index) {
    if (index >= static_cast<NSUInteger>(NSNotFound)) return static_cast<NSUInteger>(NSNotFound);
    return static_cast<NSUInteger>(storageOf(self).atOrAfter(index + 1));
}
NSUInteger indexLessThanOrEqualToIndex(NSIndexSet self, SEL, NSUInteger index) {
    return static_cast<NSUInteger>(storageOf(self).atOrBefore(index));
}
NSUInteger indexLessThanIndex(NSIndexSet self, SEL, NSUInteger index) {
    if (index == 0) return static_cast<NSUInteger>(NSNotFound);
    return static_cast<NSUInteger>(storageOf(self).atOrBefore(index - 1));
}
NSUInteger firstIndex(NSIndexSet self, SEL) { return static_cast<NSUInteger>(storageOf(self).first()); }
NSUInteger lastIndex(NSIndexSet self, SEL) { return static_cast<NSUInteger>(storageOf(self).last()); }

// ---- Comparing and describing

BOOL isEqualToIndexSet(NSIndexSet self, SEL, NSIndexSet other) {
    return self == other || (storedKindOf<NSIndexSet>(other) && storageOf(self) == storageOf(other));
}

BOOL isEqual(NSIndexSet self, SEL selector, NSObject other) {
    return isEqualToIndexSet(self, selector, as<NSIndexSet>(other));
}

// Of what equal sets have in common and is found at once.
NSUInteger hash(NSIndexSet self, SEL selector) {
    const NSUInteger first = firstIndex(self, selector);
    return (first * 31 + lastIndex(self, selector)) * 31 + count(self, selector);
}

// <NSIndexSet: 0x...>[number of indexes: 4 (in 2 ranges), indexes: (1-3 7)]
NSString description(NSIndexSet self, SEL selector) {
    std::string text(sendSuper<NSString>(self, NSIndexSet::classObject(), selector));
    const IndexSetStorage& storage = storageOf(self);
    if (storage.count() == 0) return NSString(text + "(no indexes)");
    std::string runs;
    NSUInteger runCount = 0;
    for (auto run = storage.runFrom(0); run; run = storage.runFrom(run->last + 1), ++runCount) {
        if (runCount > 0) runs += ' ';
        runs += std::to_string(run->first);
        if (run->first != run->last) runs.append("-").append(std::to_string(run->last));
    }
    text.append("[number of indexes: ").append(std::to_string(storage.count()));
    text.append(" (in ").append(std::to_string(runCount)).append(" ranges), indexes: (");
    return NSString(text.append(runs).append(")]"));
}

} // namespace

void checkRange(NSIndexSet receiver, SEL selector, NSRange range) {
    constexpr auto end = static_cast<NSUInteger>(NSNotFound);
    if (range.location <= end && range.length <= end - range.location) [[likely]]
        return;
    raiseFrom(NSInvalidArgumentException(), receiver, selector,
              "Range " + describe(range) + " exceeds maximum index value of NSNotFound - 1");
}

const IndexSetStorage& indexesOf(NSIndexSet set, NSIndexSet receiver, SEL selector) {
    if (!storedKindOf<NSIndexSet>(set))
        raiseFrom(NSInvalidArgumentException(), receiver, selector, "what is given has to be an index set");
    return storageOf(set);
}

ClassDescription describeNSIndexSet() {
    ClassDescription built{
        .name = "NSIndexSet",
        .superclass = "NSObject",
        .protocols = {"NSCoding", "NSCopying", "NSMutableCopying"},
        .storage = storageLayout<IndexSetStorage>(false),
        .methods = {
            classMethod("indexSet", indexSet),
            classMethod("indexSetWithIndex:", indexSetWithIndex),
            classMethod("indexSetWithIndexesInRange:", indexSetWithIndexesInRange),
            instanceMethod("initWithIndex:", initWithIndex),
            instanceMethod("initWithIndexesInRange:", initWithIndexesInRange),
            instanceMethod("initWithIndexSet:", initWithIndexSet),
            instanceMethod("copyWithZone:", copyWithZone),
            instanceMethod("mutableCopyWithZone:", mutableCopyWithZone),
            instanceMethod("count", count),
            instanceMethod("containsIndex:", containsIndex),
            instanceMethod("containsIndexesInRange:", containsIndexesInRange),
            instanceMethod("containsIndexes:", containsIndexes),
            instanceMethod("indexGreaterThanOrEqualToIndex:", indexGreaterThanOrEqualToIndex),
            instanceMethod("indexGreaterThanIndex:", indexGreaterThanIndex),
            instanceMethod("indexLessThanOrEqualToIndex:", indexLessThanOrEqualToIndex),
            instanceMethod("indexLessThanIndex:", indexLessThanIndex),
            instanceMethod("firstIndex", firstIndex),
            instanceMethod("lastIndex", lastIndex),
            instanceMethod("isEqualToIndexSet:", isEqualToIndexSet),
            instanceMethod("isEqual:", isEqual),
            instanceMethod("hash", hash),
            instanceMethod("description", description),
        }};
    for (const MethodRow& row : indexSetCodingMethods()) built.methods.push_back(row);
    return built;
}

} // namespace tessarin::embedded
