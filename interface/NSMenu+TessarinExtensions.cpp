// Menus: the states of all items, and the first separator.
#include "TessarinFoundation/NSMenu+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/RepeatedMessage.h"
#include "TessarinPlatform/Retained.h"

#include <iterator>
#include <utility>
#include <vector>

using namespace tessarin;

namespace {

// A message to the items of a menu, one after the other. An item's own code may take it out of the menu,
// which alone keeps it: where the method is not that of the platform's items, the item is kept until the next
// such item, or the end.
template <class Signature>
class ItemMessage;

template <class Result, class... Arguments>
class ItemMessage<Result(Arguments...)> {
public:
    explicit ItemMessage(SEL selector)
        : message_(selector),
          platformsMethod_(runtime::lookUpInClass(NSMenuItem::classObject().object(), selector)) {}

    Result operator()(NSObject item, Arguments... arguments) {
        const Implementation method = message_.methodOf(item);
        if (method != platformsMethod_) [[unlikely]]
            kept_ = retain(item);
        return message_.call(method, item, arguments...);
    }

private:
    RepeatedMessage<Result(Arguments...)> message_;
    Implementation platformsMethod_;
    Retained<NSObject> kept_;
};

// The walk over one of the menus that are open inside each other. The list is kept, since an item's own code
// may let go of its menu.
struct Level {
    explicit Level(NSMenu menu) : items(retain(menu.itemArray())), place(items.begin()) {}

    Retained<NSArray> items;
    FastEnumerator place;
};

void setStateOfAllItems(NSMenu self, SEL, NSInteger state);

// Whether a submenu would do with the message what the walk does, so that it can do so itself, without a
// frame on the stack for each level.
bool isWalkedLikeThis(NSMenu submenu) {
    return runtime::lookUp(submenu.object(), "tessarin_setStateOfAllItems:"_sel)
           == reinterpret_cast<Implementation>(setStateOfAllItems);
}

void setStateOfAllItems(NSMenu self, SEL, NSInteger state) {
    ItemMessage<NSMenu()> submenuOf("submenu"_sel);
    ItemMessage<void(NSInteger)> setState("setState:"_sel);
    Level level(self);
    std::vector<Level> outerLevels; // that the level is inside of, the outermost first
    for (;;) {
        if (level.place == std::default_sentinel) {
            if (outerLevels.empty()) return;
            level = std::move(outerLevels.back());
            outerLevels.pop_back();
            ++level.place;
            continue;
        }
        level.place.fetchAhead();
        const id item = *level.place;
        const NSMenu submenu = submenuOf(item);
        if (submenu && isWalkedLikeThis(submenu)) {
            outerLevels.push_back(std::move(level));
            level = Level(submenu);
            continue;
        }
        if (submenu)
            tessarin_setStateOfAllItems(retain(submenu), state);
        else
            setState(item, state);
        ++level.place;
    }
}

// -1 is what the menu itself answers for an item that it does not have, which is meant.
NSInteger indexOfSeparatorItem(NSMenu self, SEL) {
    ItemMessage<BOOL()> isSeparatorItem("isSeparatorItem"_sel);
    const Retained<NSMenu> keptMenu = retain(self);
    const Retained<NSArray> items = retain(self.itemArray());
    for (const NSMenuItem item : items)
        if (isSeparatorItem(item) != NO) return self.indexOfItem(item);
    return -1;
}

const ExtensionGroup group{"NSMenu",
                           "TessarinExtensions",
                           {instanceMethod("tessarin_setStateOfAllItems:", setStateOfAllItems),
                            instanceMethod("tessarin_indexOfSeparatorItem", indexOfSeparatorItem)}};

} // namespace

void tessarin_setStateOfAllItems(NSMenu receiver, NSInteger state) {
    send<void>(receiver, "tessarin_setStateOfAllItems:"_sel, state);
}

NSInteger tessarin_indexOfSeparatorItem(NSMenu receiver) {
    return send<NSInteger>(receiver, "tessarin_indexOfSeparatorItem"_sel);
}
