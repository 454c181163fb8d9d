#include "TessarinPlatform/IndexSetEditing.h"
#include "platform/embedded/foundation/IndexSetStorage.h"

namespace tessarin::embedded {
namespace {

// The platform adds and removes one index as a range of one, and says so when it refuses it.
void refuseIfNotFound(NSMutableIndexSet self, SEL rangeSelector, NSUInteger index) {
    if (index >= static_cast<NSUInteger>(NSNotFound)) [[unlikely]]
        checkRange(self, rangeSelector, {index, 1});
}

void addIndex(NSMutableIndexSet self, SEL, NSUInteger index) {
    refuseIfNotFound(self, "addIndexesInRange:"_sel, index);
    storageOf(self).add(index);
}
void removeIndex(NSMutableIndexSet self, SEL, NSUInteger index) {
    refuseIfNotFound(self, "removeIndexesInRange:"_sel, index);
    storageOf(self).remove(index);
}

void addIndexesInRange(NSMutableIndexSet self, SEL selector, NSRange range) {
    checkRange(self, selector, range);
    if (range.length > 0) storageOf(self).add(IndexRange{range.location, range.location + range.length - 1});
}
void removeIndexesInRange(NSMutableIndexSet self, SEL selector, NSRange range) {
    checkRange(self, selector, range);
    if (range.length > 0)
        storageOf(self).remove(IndexRange{range.location, range.location + range.length - 1});
}

// Either may be given the set itself: a walk by runs goes by the numbers, not by places in the tree.
void addIndexes(NSMutableIndexSet self, SEL selector, NSIndexSet other) {
    if (!other) return;
    const IndexSetStorage& added = indexesOf(other, self, selector);
    for (auto run = added.runFrom(0); run; run = added.runFrom(run->last + 1)) storageOf(self).add(*run);
}
void removeIndexes(NSMutableIndexSet self, SEL selector, NSIndexSet other) {
    if (!other) return;
    const IndexSetStorage& removed = indexesOf(other, self, selector);
    for (auto run = removed.runFrom(0); run; run = removed.runFrom(run->last + 1))
        storageOf(self).remove(*run);
}
void removeAllIndexes(NSMutableIndexSet self, SEL) { storageOf(self).removeAll(); }

id copyWithZone(NSMutableIndexSet self, SEL, void*) { return NSIndexSet::alloc().initWithIndexSet(self); }

} // namespace

ClassDescription describeNSMutableIndexSet() {
    return {
        .name = "NSMutableIndexSet",
        .superclass = "NSIndexSet",
        .methods = {instanceMethod("addIndex:", addIndex), instanceMethod("removeIndex:", removeIndex),
                    instanceMethod("addIndexesInRange:", addIndexesInRange),
                    instanceMethod("removeIndexesInRange:", removeIndexesInRange),
                    instanceMethod("addIndexes:", addIndexes),
                    instanceMethod("removeIndexes:", removeIndexes),
                    instanceMethod("removeAllIndexes", removeAllIndexes),
                    instanceMethod("copyWithZone:", copyWithZone)},
    };
}

} // namespace tessarin::embedded

namespace tessarin {

bool moveIndexAtOnce(NSUInteger index, NSMutableIndexSet from, NSMutableIndexSet to) {
    const Object* const plain = NSMutableIndexSet::classObject().object();
    if (!from || !to || from.object()->isa != plain || to.object()->isa != plain) return false;
    embedded::IndexSetStorage& source = embedded::storageOf(from);
    // No set holds an index that another one cannot hold.
    if (!source.remove(index)) return false;
    if (embedded::storageOf(to).add(index)) return true;
    source.add(index);
    return false;
}

} // namespace tessarin
