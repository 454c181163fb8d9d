// Menus: the states of all items, and the first separator.
//
// For the application's interface thread, as menus are. A menu that is changed while it is walked, by its
// items' own code, is refused as the platform's enumeration refuses it: NSGenericException. A nil menu has
// nothing to set, and answers 0, as every message to nil does.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <AppKit/NSMenu.h>

@interface NSMenu (TessarinExtensions)

- (void)tessarin_setStateOfAllItems:(NSInteger)state;
- (NSInteger)tessarin_indexOfSeparatorItem;

@end

#else

#    include "TessarinPlatform/NSMenu.h"

// Sets the state of every item without a submenu, separators included, in the receiver and in all submenus:
// an item with a submenu keeps its own, and the submenu is sent the same message. Depth first, in the order
// of the items. Menus may nest as deep as they like.
//
//   tessarin_setStateOfAllItems(effects, NSOffState)
TESSARIN_EXPORT void tessarin_setStateOfAllItems(tessarin::NSMenu receiver, tessarin::NSInteger state);

// The index of the first separator, by the receiver's own indexOfItem:; -1, and not NSNotFound, when there is
// none. Submenus are not looked at. A nil menu answers 0, which is an index like any other: ask whether there
// is a menu first.
//
//   tessarin_indexOfSeparatorItem(effects)   // items A, separator, B give 1
TESSARIN_EXPORT tessarin::NSInteger tessarin_indexOfSeparatorItem(tessarin::NSMenu receiver);

#endif
