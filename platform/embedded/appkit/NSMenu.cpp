#include "platform/embedded/appkit/MenuStorage.h"
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/runtime/StoredKind.h"

#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/NSException.h"

#include <algorithm>
#include <string>

namespace tessarin::embedded {
namespace {

// The list of the items, made when it is first needed. The menu alone changes it; to everyone else it is an
// array without operations that would, whose copies stay as they are.
ArrayStorage& itemsOf(NSMenu menu) {
    Retained<NSArray>& items = storageOf(menu).items;
    if (!items) items = adopt(NSArray(createInstance("TessarinMenuItemList"_class)));
    return embedded::storageOf<ArrayStorage>(items);
}

NSArray copyList(NSArray self, SEL, void*) {
    const ArrayItems items(self);
    return newArray(items.data(), items.size()).leak();
}

// ---- Making

void setTitle(NSMenu self, SEL selector, NSString title) {
    rejectNil(title, self, selector);
    storageOf(self).title = adopt(NSString(title.copy()));
}

NSMenu initWithTitle(NSMenu self, SEL selector, NSString title) {
    Retained<NSMenu> owned = adopt(self);
    setTitle(self, selector, title);
    return owned.leak();
}

NSMenu init(NSMenu self, SEL) { return self.initWithTitle(""_ns); }

void dealloc(NSMenu self, SEL selector) {
    // Others may have the items, which must not find a menu that is gone.
    if (storageOf(self).items) {
        const ArrayStorage& items = itemsOf(self);
        for (NSUInteger index = 0; index < items.count; ++index)
            storageOf(as<NSMenuItem>(items.items[index])).menu = nil;
    }
    sendSuper<void>(self, NSMenu::classObject(), selector);
}

// ---- Reading

NSString title(NSMenu self, SEL) { return storageOf(self).title; }
NSMenu supermenu(NSMenu self, SEL) { return storageOf(self).opener.menu(); }

NSArray itemArray(NSMenu self, SEL) {
    itemsOf(self);
    return storageOf(self).items;
}
NSInteger numberOfItems(NSMenu self, SEL) { return static_cast<NSInteger>(itemsOf(self).count); }

// The index as one of `count`.
NSUInteger checkedIndex(NSMenu self, SEL selector, NSInteger index, NSUInteger count) {
    const auto checked = static_cast<NSUInteger>(index);
    if (index < 0 || checked >= count)
        raiseFrom(NSRangeException(), self, selector,
                  "index " + std::to_string(index) + " beyond " + boundsText(count));
    return checked;
}

NSMenuItem itemAtIndex(NSMenu self, SEL selector, NSInteger index) {
    const ArrayStorage& items = itemsOf(self);
    return as<NSMenuItem>(items.items[checkedIndex(self, selector, index, items.count)]);
}

// Where an item of the menu is: where it was when that was last known, or near it, as far away as others were
// put in or taken out before it.
NSUInteger findItem(const ArrayStorage& items, NSMenuItem item) {
    std::uint32_t& known = storageOf(item).index;
    const auto isAt = [&](NSUInteger index) { return index < items.count && items.items[index] == item; };
    const NSUInteger start = std::min<NSUInteger>(known, items.count - 1);
    NSUInteger index = start;
    // Below the start an index wraps round to a very large one.
    for (NSUInteger distance = 0; !isAt(index); ++distance)
        index = isAt(start - distance) ? start - distance : start + distance;
    known = static_cast<std::uint32_t>(index);
    return index;
}

NSInteger indexOfItem(NSMenu self, SEL, NSMenuItem item) {
    if (!storedKindOf<NSMenuItem>(item) || storageOf(item).menu != self) return -1;
    return static_cast<NSInteger>(findItem(itemsOf(self), item));
}

// ---- Editing

void requireFree(NSMenu self, SEL selector, NSMenuItem item) {
    if (!storedKindOf<NSMenuItem>(item))
        raiseFrom(NSInvalidArgumentException(), self, selector, "what is inserted has to be a menu item");
    if (storageOf(item).menu)
        raise(NSInternalInconsistencyException(),
              "Item to be inserted into menu already is in another menu"_ns);
    if (storageOf(item).submenu && liesIn(self, storageOf(item).submenu))
        raiseFrom(NSInvalidArgumentException(), self, selector, "the menu lies in the item's submenu");
}

void insertItem_atIndex(NSMenu self, SEL selector, NSMenuItem item, NSInteger index) {
    requireFree(self, selector, item);
    ArrayStorage& items = itemsOf(self);
    const NSUInteger place = checkedIndex(self, selector, index, items.count + 1);
    items.insert(retain(item).leak(), place);
    MenuItemStorage& itemStorage = storageOf(item);
    itemStorage.menu = self;
    itemStorage.index = static_cast<std::uint32_t>(place);
    if (itemStorage.submenu) ++storageOf(self).submenus;
}

void addItem(NSMenu self, SEL, NSMenuItem item) { self.insertItem_atIndex(item, self.numberOfItems()); }

NSMenuItem addItemWithTitle_action_keyEquivalent(NSMenu self, SEL, NSString title, SEL action,
                                                 NSString keyEquivalent) {
    Retained<NSMenuItem> item =
        adopt(NSMenuItem::alloc().initWithTitle_action_keyEquivalent(title, action, keyEquivalent));
    self.addItem(item);
    return item.autorelease();
}

void removeItemAtIndex(NSMenu self, SEL selector, NSInteger index) {
    ArrayStorage& items = itemsOf(self);
    const NSUInteger place = checkedIndex(self, selector, index, items.count);
    const Retained<NSMenuItem> removed = adopt(as<NSMenuItem>(items.take(place))); // released last
    storageOf(removed).menu = nil;
    if (storageOf(removed).submenu) --storageOf(self).submenus;
}

void removeItem(NSMenu self, SEL selector, NSMenuItem item) {
    const NSInteger index = self.indexOfItem(item);
    if (index < 0)
        raiseFrom(NSInternalInconsistencyException(), self, selector,
                  "Item to be removed is not in the menu in the first place");
    self.removeItemAtIndex(index);
}

void setSubmenu_forItem(NSMenu, SEL, NSMenu submenu, NSMenuItem item) { item.setSubmenu(submenu); }

} // namespace

bool liesIn(NSMenu inner, NSMenu outer) {
    if (inner == outer) return static_cast<bool>(inner);
    if (storageOf(outer).submenus == 0) return false; // as is most often so
    for (NSMenu menu = inner; menu;) {
        if (menu == outer) return true;
        const NSMenuItem opener = storageOf(menu).opener;
        menu = opener ? storageOf(opener).menu : NSMenu();
    }
    return false;
}

ClassDescription describeMenuItemList() {
    return {.name = "TessarinMenuItemList",
            .superclass = "NSArray",
            .methods = {instanceMethod("copyWithZone:", copyList)}};
}

ClassDescription describeNSMenu() {
    return {
        .name = "NSMenu",
        .superclass = "NSObject",
        .storage = storageLayout<MenuStorage>(),
        .methods = {instanceMethod("init", init), instanceMethod("initWithTitle:", initWithTitle),
                    instanceMethod("dealloc", dealloc), instanceMethod("title", title),
                    instanceMethod("setTitle:", setTitle), instanceMethod("supermenu", supermenu),
                    instanceMethod("itemArray", itemArray), instanceMethod("numberOfItems", numberOfItems),
                    instanceMethod("itemAtIndex:", itemAtIndex), instanceMethod("indexOfItem:", indexOfItem),
                    instanceMethod("addItem:", addItem),
                    instanceMethod("addItemWithTitle:action:keyEquivalent:",
                                   addItemWithTitle_action_keyEquivalent),
                    instanceMethod("insertItem:atIndex:", insertItem_atIndex),
                    instanceMethod("removeItem:", removeItem),
                    instanceMethod("removeItemAtIndex:", removeItemAtIndex),
                    instanceMethod("setSubmenu:forItem:", setSubmenu_forItem)},
    };
}

} // namespace tessarin::embedded
