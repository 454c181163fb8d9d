// NSMenuItem: one line of a menu.
#pragma once

#include "TessarinPlatform/NSString.h"

namespace tessarin {

class NSMenu;

// The states that an item shows by a mark.
using NSCellStateValue = NSInteger;
inline constexpr NSCellStateValue NSMixedState = -1;
inline constexpr NSCellStateValue NSOffState = 0;
inline constexpr NSCellStateValue NSOnState = 1;

class NSMenuItem : public Handle<NSMenuItem, "NSMenuItem", NSObject> {
public:
    using Handle::Handle;

    // A line between other items: an item without title that is disabled. Another one each time,
    // autoreleased.
    static NSMenuItem separatorItem() { return send<NSMenuItem>(classObject(), "separatorItem"_sel); }
    // A nil title or key equivalent raises NSInvalidArgumentException. The action may be the null selector.
    [[nodiscard]] NSMenuItem initWithTitle_action_keyEquivalent(NSString title, SEL action,
                                                                NSString keyEquivalent) const {
        return send<NSMenuItem>(*this, "initWithTitle:action:keyEquivalent:"_sel, title, action,
                                keyEquivalent);
    }

    bool isSeparatorItem() const { return send<BOOL>(*this, "isSeparatorItem"_sel) != NO; }
    NSString title() const { return send<NSString>(*this, "title"_sel); }
    void setTitle(NSString title) const { send<void>(*this, "setTitle:"_sel, title); }
    SEL action() const { return send<SEL>(*this, "action"_sel); }
    NSString keyEquivalent() const { return send<NSString>(*this, "keyEquivalent"_sel); }
    bool isEnabled() const { return send<BOOL>(*this, "isEnabled"_sel) != NO; }
    void setEnabled(bool enabled) const { send<void>(*this, "setEnabled:"_sel, static_cast<BOOL>(enabled)); }

    // Any positive state counts as on, any negative one as mixed; GNUstep keeps the number as it is.
    NSCellStateValue state() const { return send<NSCellStateValue>(*this, "state"_sel); }
    void setState(NSCellStateValue state) const { send<void>(*this, "setState:"_sel, state); }

    // The menu that the item opens, nil for none; retained.
    NSMenu submenu() const;
    void setSubmenu(NSMenu menu) const;
    bool hasSubmenu() const { return send<BOOL>(*this, "hasSubmenu"_sel) != NO; }
    // The menu that the item is in, nil for none; not retained.
    NSMenu menu() const;
};

} // namespace tessarin

#include "TessarinPlatform/NSMenu.h"
