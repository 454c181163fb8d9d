// NSMenu: an ordered list of items.
#pragma once

#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSMenuItem.h"

namespace tessarin {

// A menu retains its items. An item is in one menu at most: adding one that is in a menu raises
// NSInternalInconsistencyException.
class NSMenu : public Handle<NSMenu, "NSMenu", NSObject> {
public:
    using Handle::Handle;

    [[nodiscard]] NSMenu initWithTitle(NSString title) const {
        return send<NSMenu>(*this, "initWithTitle:"_sel, title);
    }

    NSString title() const { return send<NSString>(*this, "title"_sel); }
    void setTitle(NSString title) const { send<void>(*this, "setTitle:"_sel, title); }

    // The live list of the items: walking it notices that the menu is changed.
    NSArray itemArray() const { return send<NSArray>(*this, "itemArray"_sel); }
    NSInteger numberOfItems() const { return send<NSInteger>(*this, "numberOfItems"_sel); }
    NSMenuItem itemAtIndex(NSInteger index) const {
        return send<NSMenuItem>(*this, "itemAtIndex:"_sel, index);
    }
    // The index of the very object, -1 for none.
    NSInteger indexOfItem(NSMenuItem item) const { return send<NSInteger>(*this, "indexOfItem:"_sel, item); }

    void addItem(NSMenuItem item) const { send<void>(*this, "addItem:"_sel, item); }
    NSMenuItem addItemWithTitle_action_keyEquivalent(NSString title, SEL action,
                                                     NSString keyEquivalent) const {
        return send<NSMenuItem>(*this, "addItemWithTitle:action:keyEquivalent:"_sel, title, action,
                                keyEquivalent);
    }
    void insertItem_atIndex(NSMenuItem item, NSInteger index) const {
        send<void>(*this, "insertItem:atIndex:"_sel, item, index);
    }
    void removeItem(NSMenuItem item) const { send<void>(*this, "removeItem:"_sel, item); }
    void removeItemAtIndex(NSInteger index) const { send<void>(*this, "removeItemAtIndex:"_sel, index); }
    void setSubmenu_forItem(NSMenu submenu, NSMenuItem item) const {
        send<void>(*this, "setSubmenu:forItem:"_sel, submenu, item);
    }
    // The menu whose item opens this one, nil for none.
    NSMenu supermenu() const { return send<NSMenu>(*this, "supermenu"_sel); }
};

inline NSMenu NSMenuItem::submenu() const { return send<NSMenu>(*this, "submenu"_sel); }
inline void NSMenuItem::setSubmenu(NSMenu menu) const { send<void>(*this, "setSubmenu:"_sel, menu); }
inline NSMenu NSMenuItem::menu() const { return send<NSMenu>(*this, "menu"_sel); }

} // namespace tessarin
