// How the embedded platform's menus and their items keep what belongs to them.
#pragma once

#include "TessarinPlatform/NSMenu.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <cstdint>

namespace tessarin::embedded {

// Kept small, since a walk over many items takes as long as their memory.
struct MenuItemStorage {
    Retained<NSMenu> submenu;
    std::uint32_t index = 0; // in the menu, as long as no other was put in or taken out before it
    std::int8_t state = NSOffState;
    bool isEnabled = true;
    bool isSeparator = false;
    NSMenu menu; // that the item is in: not retained, nil as soon as it goes
    SEL action = nullptr;
    Retained<NSString> title;
    Retained<NSString> keyEquivalent;
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
