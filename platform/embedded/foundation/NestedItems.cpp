#include "platform/embedded/foundation/NestedItems.h"

#include "TessarinPlatform/NSException.h"

namespace tessarin::embedded {

NSObject NestedItems::next() {
    Level& level = levels_.back();
    return level.next < level.items.count() ? NSObject(level.items.objectAtIndex(level.next++)) : NSObject();
}

void NestedItems::enter(NSArray array) {
    if (!open_.insert(array.object()).second)
        raiseFrom(NSInvalidArgumentException(), outermost_, selector_, "the array contains itself");
    levels_.push_back({array, adopt(as<NSArray>(array.copy()))});
}

void NestedItems::leave() {
    open_.erase(levels_.back().array.object());
    levels_.pop_back();
}

} // namespace tessarin::embedded
