// How the embedded platform's menus and their items keep what belongs to them.
#pragma once

#include "TessarinPlatform/NSMenu.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/runtime/BuiltInClass.h"

namespace tessarin::embedded {

struct MenuItemStorage {
    Retained<NSString> title;
    Retained<NSString> keyEquivalent;
    Retained<NSMenu> submenu;
    SEL action = nullptr;
    NSMenu menu;          // that the item is in: not retained, nil as soon as it goes
    NSUInteger index = 0; // in the menu, as long as no other was put in or taken out before it
    NSInteger state = NSOffState;
    bool isEnabled = true;
    bool isSeparator = false;
};

struct MenuStorage {
    Retained<NSString> title;
    Retained<NSArray> items; // what itemArray answers; nil before it is needed
    NSMenuItem opener;       // the item whose submenu this is: not retained, nil as soon as it goes
    NSUInteger submenus = 0; // the number of items that have one
};

inline MenuItemStorage& storageOf(NSMenuItem item) { return embedded::storageOf<MenuItemStorage>(item); }
inline MenuStorage& storageOf(NSMenu menu) { return embedded::storageOf<MenuStorage>(menu); }

// Whether a menu is another one, or lies somewhere in its submenus.
bool liesIn(NSMenu inner, NSMenu outer);

} // namespace tessarin::embedded
