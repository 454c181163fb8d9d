#include "platform/embedded/appkit/MenuStorage.h"
#include "platform/embedded/runtime/StoredKind.h"

#include "TessarinPlatform/NSException.h"

#include <utility>

namespace tessarin::embedded {
namespace {

void assignText(Retained<NSString>& kept, NSString text, NSMenuItem self, SEL selector) {
    rejectNil(text, self, selector);
    kept = adopt(NSString(text.copy()));
}

// ---- Making

NSMenuItem initWithTitle_action_keyEquivalent(NSMenuItem self, SEL selector, NSString title, SEL action,
                                              NSString keyEquivalent) {
    Retained<NSMenuItem> owned = adopt(self);
    MenuItemStorage& storage = storageOf(self);
    assignText(storage.title, title, self, selector);
    assignText(storage.keyEquivalent, keyEquivalent, self, selector);
    storage.action = action;
    return owned.leak();
}

NSMenuItem init(NSMenuItem self, SEL) {
    return self.initWithTitle_action_keyEquivalent(""_ns, nullptr, ""_ns);
}

id separatorItem(Class self, SEL) {
    Retained<NSMenuItem> item = adopt(as<NSMenuItem>(send<id>(self.alloc(), "init"_sel)));
    if (item) {
        storageOf(item).isSeparator = true;
        storageOf(item).isEnabled = false;
    }
    return item.autorelease();
}

void dealloc(NSMenuItem self, SEL selector) {
    if (const NSMenu submenu = storageOf(self).submenu) storageOf(submenu).opener = nil;
    sendSuper<void>(self, NSMenuItem::classObject(), selector);
}

// ---- What an item says of itself

BOOL isSeparatorItem(NSMenuItem self, SEL) { return storageOf(self).isSeparator ? YES : NO; }
NSString title(NSMenuItem self, SEL) { return storageOf(self).title; }
void setTitle(NSMenuItem self, SEL selector, NSString title) {
    assignText(storageOf(self).title, title, self, selector);
}
SEL action(NSMenuItem self, SEL) { return storageOf(self).action; }
NSString keyEquivalent(NSMenuItem self, SEL) { return storageOf(self).keyEquivalent; }
BOOL isEnabled(NSMenuItem self, SEL) { return storageOf(self).isEnabled ? YES : NO; }
void setEnabled(NSMenuItem self, SEL, BOOL enabled) { storageOf(self).isEnabled = enabled != NO; }

NSCellStateValue state(NSMenuItem self, SEL) { return storageOf(self).state; }
void setState(NSMenuItem self, SEL, NSCellStateValue state) {
    storageOf(self).state = static_cast<std::int8_t>((state > 0 ? 1 : 0) - (state < 0 ? 1 : 0));
}

NSMenu menu(NSMenuItem self, SEL) { return storageOf(self).menu; }

// ---- The submenu

NSMenu submenu(NSMenuItem self, SEL) { return storageOf(self).submenu; }
BOOL hasSubmenu(NSMenuItem self, SEL) { return self.submenu() ? YES : NO; }

void requireFree(NSMenuItem self, SEL selector, NSMenu menu) {
    if (!storedKindOf<NSMenu>(menu))
        raiseFrom(NSInvalidArgumentException(), self, selector, "a submenu has to be a menu");
    if (storageOf(menu).opener)
        raiseFrom(NSInvalidArgumentException(), self, selector, "the menu is the submenu of another item");
    if (liesIn(storageOf(self).menu, menu))
        raiseFrom(NSInvalidArgumentException(), self, selector, "the item lies in the menu");
}

void setSubmenu(NSMenuItem self, SEL selector, NSMenu menu) {
    MenuItemStorage& storage = storageOf(self);
    if (storage.submenu == menu) return;
    if (menu) requireFree(self, selector, menu);
    const Retained<NSMenu> former = std::exchange(storage.submenu, retain(menu)); // released last
    if (former) storageOf(former).opener = nil;
    if (menu) storageOf(menu).opener = self;
    if (!storage.menu) return;
    NSUInteger& submenus = storageOf(storage.menu).submenus;
    if (former) --submenus;
    if (menu) ++submenus;
}

} // namespace

ClassDescription describeNSMenuItem() {
    return {
        .name = "NSMenuItem",
        .superclass = "NSObject",
        .storage = storageLayout<MenuItemStorage>(),
        .methods = {classMethod("separatorItem", separatorItem), instanceMethod("init", init),
                    instanceMethod("initWithTitle:action:keyEquivalent:", initWithTitle_action_keyEquivalent),
                    instanceMethod("dealloc", dealloc), instanceMethod("isSeparatorItem", isSeparatorItem),
                    instanceMethod("title", title), instanceMethod("setTitle:", setTitle),
                    instanceMethod("action", action), instanceMethod("keyEquivalent", keyEquivalent),
                    instanceMethod("isEnabled", isEnabled), instanceMethod("setEnabled:", setEnabled),
                    instanceMethod("state", state), instanceMethod("setState:", setState),
                    instanceMethod("submenu", submenu), instanceMethod("setSubmenu:", setSubmenu),
                    instanceMethod("hasSubmenu", hasSubmenu), instanceMethod("menu", menu)},
    };
}

} // namespace tessarin::embedded
