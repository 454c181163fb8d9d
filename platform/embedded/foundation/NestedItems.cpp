#include "platform/embedded/foundation/NestedItems.h"

#include "TessarinPlatform/NSException.h"

namespace tessarin::embedded {
namespace {

constexpr std::size_t mostItemsEnteredAgain = std::size_t{1} << 24;
constexpr std::size_t itemsOfEmptyArray = 16;

} // namespace

void EnteredItems::add(NSArray array, std::size_t itemCount) {
    itemCount += itemsOfEmptyArray;
    itemsEntered_ += itemCount;
    if (itemsEntered_ <= mostItemsEnteredAgain || entered_.insert(array.object()).second) return;
    itemsEnteredAgain_ += itemCount;
    if (itemsEnteredAgain_ > mostItemsEnteredAgain)
        raiseFrom(NSInvalidArgumentException(), outermost_, selector_,
                  "the arrays inside the array stand for too many items");
}

NSObject NestedItems::next() {
    Level& level = levels_.back();
    return level.next < level.items.count() ? NSObject(level.items.objectAtIndex(level.next++)) : NSObject();
}

void NestedItems::enter(NSArray array) {
    if (!open_.insert(array.object()).second)
        raiseFrom(NSInvalidArgumentException(), outermost_, selector_, "the array contains itself");
    levels_.push_back({array, adopt(as<NSArray>(array.copy()))});
    entered_.add(array, levels_.back().items.count());
}

void NestedItems::leave() {
    open_.erase(levels_.back().array.object());
    levels_.pop_back();
}

} // namespace tessarin::embedded
