// NSMutableIndexSet: a set of indexes that can be edited.
#pragma once

#include "TessarinPlatform/NSIndexSet.h"

namespace tessarin {

class NSMutableIndexSet : public Handle<NSMutableIndexSet, "NSMutableIndexSet", NSIndexSet> {
public:
    using Handle::Handle;

    static NSMutableIndexSet indexSet() { return send<NSMutableIndexSet>(classObject(), "indexSet"_sel); }

    [[nodiscard]] NSMutableIndexSet init() const { return send<NSMutableIndexSet>(*this, "init"_sel); }

    // NSNotFound, anything above it, and a range that reaches it raise NSInvalidArgumentException, and the
    // set stays as it is. A range of no length is nothing.
    void addIndex(NSUInteger index) const { send<void>(*this, "addIndex:"_sel, index); }
    void addIndexes(NSIndexSet other) const { send<void>(*this, "addIndexes:"_sel, other); }
    void addIndexesInRange(NSRange range) const { send<void>(*this, "addIndexesInRange:"_sel, range); }
    // Likewise. Removing an index that is not in the set is nothing.
    void removeIndex(NSUInteger index) const { send<void>(*this, "removeIndex:"_sel, index); }
    void removeIndexes(NSIndexSet other) const { send<void>(*this, "removeIndexes:"_sel, other); }
    void removeIndexesInRange(NSRange range) const { send<void>(*this, "removeIndexesInRange:"_sel, range); }
    void removeAllIndexes() const { send<void>(*this, "removeAllIndexes"_sel); }
};

} // namespace tessarin
