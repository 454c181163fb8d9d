// Menus and their items.
#include "InterfaceTest.h"

namespace tessarin::testing {
namespace {

NSMenu menuTitled(NSString title) { return adopt(NSMenu::alloc().initWithTitle(title)).autorelease(); }
NSMenuItem itemTitled(NSString title) {
    return adopt(NSMenuItem::alloc().initWithTitle_action_keyEquivalent(title, nullptr, ""_ns)).autorelease();
}
NSMenu menuOf(const std::vector<NSMenuItem>& items) {
    const NSMenu menu = menuTitled("menu"_ns);
    for (const NSMenuItem item : items) menu.addItem(item);
    return menu;
}
Texts titles(NSMenu menu) {
    Texts result;
    for (const NSMenuItem item : menu.itemArray()) result.push_back(text(item.title()));
    return result;
}

class NSMenuItemTest : public InterfaceTest {};
class NSMenuTest : public InterfaceTest {};

// ---- Items

TEST_F(NSMenuItemTest, HoldsTitleActionAndKeyEquivalent) {
    const Retained<NSMenuItem> item =
        adopt(NSMenuItem::alloc().initWithTitle_action_keyEquivalent("Mute"_ns, "toggleMute:"_sel, "m"_ns));
    EXPECT_EQ(text(item.title()), "Mute");
    EXPECT_EQ(item.action(), "toggleMute:"_sel);
    EXPECT_EQ(text(item.keyEquivalent()), "m");
    EXPECT_TRUE(item.isEnabled());
    EXPECT_FALSE(item.isSeparatorItem());
    EXPECT_FALSE(item.hasSubmenu());
    EXPECT_FALSE(item.submenu());
    EXPECT_FALSE(item.menu());
    EXPECT_EQ(item.state(), NSOffState);
}

TEST_F(NSMenuItemTest, CopiesItsTitle) {
    const NSMutableString title = NSMutableString::stringWithString("Mute"_ns);
    const NSMenuItem item = itemTitled(title);
    title.appendString("d"_ns);
    EXPECT_EQ(text(item.title()), "Mute");
    item.setTitle("Solo"_ns);
    EXPECT_EQ(text(item.title()), "Solo");
}

TEST_F(NSMenuItemTest, ANilTitleRaises) {
    EXPECT_THROWS_NAMED(itemTitled(nil), "NSInvalidArgumentException");
    const NSMenuItem item = itemTitled("Mute"_ns);
    EXPECT_THROWS_NAMED(item.setTitle(nil), "NSInvalidArgumentException");
    EXPECT_EQ(text(item.title()), "Mute");
}

TEST_F(NSMenuItemTest, ASeparatorHasNoTitle) { EXPECT_EQ(text(NSMenuItem::separatorItem().title()), ""); }

TEST_F(NSMenuItemTest, ASeparatorIsDisabledAndHasAState) {
    const NSMenuItem separator = NSMenuItem::separatorItem();
    EXPECT_TRUE(separator.isSeparatorItem());
    EXPECT_FALSE(separator.isEnabled());
    separator.setState(NSOnState);
    EXPECT_EQ(separator.state(), NSOnState);
    EXPECT_NE(NSMenuItem::separatorItem(), separator);
}

TEST_F(NSMenuItemTest, HasOneOfThreeStates) {
    const NSMenuItem item = itemTitled("Mute"_ns);
    for (const NSCellStateValue state : {NSOnState, NSMixedState, NSOffState}) {
        item.setState(state);
        EXPECT_EQ(item.state(), state);
    }
}

TEST_F(NSMenuItemTest, AnyPositiveStateIsOnAndAnyNegativeOneMixed) {
    const NSMenuItem item = itemTitled("Mute"_ns);
    for (const NSInteger state : {NSInteger{2}, std::numeric_limits<NSInteger>::max()}) {
        item.setState(state);
        EXPECT_EQ(item.state(), NSOnState);
    }
    for (const NSInteger state : {NSInteger{-2}, std::numeric_limits<NSInteger>::min()}) {
        item.setState(state);
        EXPECT_EQ(item.state(), NSMixedState);
    }
}

TEST_F(NSMenuItemTest, IsEnabledAndDisabled) {
    const NSMenuItem item = itemTitled("Mute"_ns);
    item.setEnabled(false);
    EXPECT_FALSE(item.isEnabled());
    item.setEnabled(true);
    EXPECT_TRUE(item.isEnabled());
}

TEST_F(NSMenuItemTest, OpensItsSubmenu) {
    const NSMenuItem item = itemTitled("Effects"_ns);
    const NSMenu submenu = menuTitled("Effects"_ns);
    item.setSubmenu(submenu);
    EXPECT_EQ(item.submenu(), submenu);
    EXPECT_TRUE(item.hasSubmenu());
    item.setSubmenu(nil);
    EXPECT_FALSE(item.hasSubmenu());
}

// ---- Menus

TEST_F(NSMenuTest, KeepsItsItemsInOrder) {
    const NSMenu menu = menuTitled("Tracks"_ns);
    EXPECT_EQ(text(menu.title()), "Tracks");
    EXPECT_EQ(menu.numberOfItems(), 0);
    const NSMenuItem a = itemTitled("A"_ns), b = itemTitled("B"_ns), c = itemTitled("C"_ns);
    menu.addItem(a);
    menu.addItem(c);
    menu.insertItem_atIndex(b, 1);
    EXPECT_EQ(titles(menu), (Texts{"A", "B", "C"}));
    EXPECT_EQ(menu.numberOfItems(), 3);
    EXPECT_EQ(menu.itemAtIndex(1), b);
    EXPECT_EQ(b.menu(), menu);
}

TEST_F(NSMenuTest, MakesItems) {
    const NSMenu menu = menuTitled("Tracks"_ns);
    const NSMenuItem item = menu.addItemWithTitle_action_keyEquivalent("Mute"_ns, "mute:"_sel, "m"_ns);
    EXPECT_EQ(menu.itemAtIndex(0), item);
    EXPECT_EQ(text(item.title()), "Mute");
    EXPECT_EQ(text(item.keyEquivalent()), "m");
    EXPECT_EQ(item.action(), "mute:"_sel);
}

TEST_F(NSMenuTest, FindsItemsByIdentity) {
    const NSMenuItem a = itemTitled("A"_ns), b = itemTitled("B"_ns);
    const NSMenu menu = menuOf({a, b});
    EXPECT_EQ(menu.indexOfItem(a), 0);
    EXPECT_EQ(menu.indexOfItem(b), 1);
    EXPECT_EQ(menu.indexOfItem(itemTitled("A"_ns)), -1);
    EXPECT_EQ(menu.indexOfItem(nil), -1);
    menu.removeItem(a);
    EXPECT_EQ(menu.indexOfItem(a), -1);
    EXPECT_EQ(menu.indexOfItem(b), 0);
}

TEST_F(NSMenuTest, FindsItemsWhereverTheyMove) {
    std::vector<NSMenuItem> items;
    for (int index = 0; index < 20; ++index) items.push_back(itemTitled("item"_ns));
    const NSMenu menu = menuOf(items);
    const auto check = [&] {
        for (std::size_t index = 0; index < items.size(); ++index)
            ASSERT_EQ(menu.indexOfItem(items[index]), static_cast<NSInteger>(index));
    };
    for (const std::size_t removed : {0u, 5u, 17u, 0u, 9u}) {
        menu.removeItemAtIndex(static_cast<NSInteger>(removed));
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(removed));
        check();
    }
    for (const std::size_t place : {0u, 3u, 17u, 0u}) {
        const NSMenuItem added = itemTitled("added"_ns);
        menu.insertItem_atIndex(added, static_cast<NSInteger>(place));
        items.insert(items.begin() + static_cast<std::ptrdiff_t>(place), added);
        check();
    }
}

TEST_F(NSMenuTest, RetainsItsItems) {
    const Retained<NSMenuItem> item =
        adopt(NSMenuItem::alloc().initWithTitle_action_keyEquivalent("A"_ns, nullptr, ""_ns));
    {
        const AutoreleasePool pool;
        const Retained<NSMenu> menu = adopt(NSMenu::alloc().initWithTitle("menu"_ns));
        menu.addItem(item);
        EXPECT_GT(item.retainCount(), 1u);
        menu.removeItem(item);
        EXPECT_FALSE(item.menu());
    }
    EXPECT_EQ(item.retainCount(), 1u);
}

TEST_F(NSMenuTest, ItsItemsOutliveIt) {
    const Retained<NSMenuItem> item =
        adopt(NSMenuItem::alloc().initWithTitle_action_keyEquivalent("A"_ns, nullptr, ""_ns));
    {
        const AutoreleasePool pool;
        menuOf({item});
    }
    EXPECT_EQ(text(item.title()), "A");
    EXPECT_FALSE(item.menu());
}

TEST_F(NSMenuTest, AnItemIsInOneMenuAtMost) {
    const NSMenuItem item = itemTitled("A"_ns);
    const NSMenu menu = menuOf({item}), other = menuTitled("other"_ns);
    EXPECT_THROWS_NAMED(other.addItem(item), "NSInternalInconsistencyException");
    EXPECT_EQ(menu.numberOfItems(), 1);
    EXPECT_EQ(other.numberOfItems(), 0);
    menu.removeItem(item);
    other.addItem(item);
    EXPECT_EQ(item.menu(), other);
}

TEST_F(NSMenuTest, IndexesBeyondItsItemsRaise) {
    const NSMenu menu = menuOf({itemTitled("A"_ns)});
    EXPECT_THROWS_NAMED(menu.itemAtIndex(1), "NSRangeException");
    EXPECT_THROWS_NAMED(menu.itemAtIndex(-1), "NSRangeException");
    EXPECT_EQ(menu.numberOfItems(), 1);
}

TEST_F(NSMenuTest, RefusesToInsertOrRemoveBeyondItsItems) {
    const NSMenu menu = menuOf({itemTitled("A"_ns)});
    EXPECT_THROWS_NAMED(menu.insertItem_atIndex(itemTitled("B"_ns), 2), "NSRangeException");
    EXPECT_THROWS_NAMED(menu.insertItem_atIndex(itemTitled("B"_ns), -1), "NSRangeException");
    EXPECT_THROWS_NAMED(menu.removeItemAtIndex(1), "NSRangeException");
    EXPECT_EQ(menu.numberOfItems(), 1);
}

TEST_F(NSMenuTest, NilIsNoItem) {
    const NSMenu menu = menuTitled("menu"_ns);
    EXPECT_THROWS_NAMED(menu.addItem(nil), "NSInvalidArgumentException");
    EXPECT_EQ(menu.numberOfItems(), 0);
}

TEST_F(NSMenuTest, KnowsItsSupermenu) {
    const NSMenuItem item = itemTitled("A"_ns);
    const NSMenu menu = menuOf({item}), submenu = menuTitled("submenu"_ns);
    EXPECT_FALSE(submenu.supermenu());
    menu.setSubmenu_forItem(submenu, item);
    EXPECT_EQ(item.submenu(), submenu);
    EXPECT_EQ(submenu.supermenu(), menu);
}

TEST_F(NSMenuTest, HasNoSupermenuWhenItIsASubmenuNoMore) {
    const NSMenuItem item = itemTitled("A"_ns), other = itemTitled("B"_ns);
    const NSMenu menu = menuOf({item, other}), submenu = menuTitled("submenu"_ns);
    item.setSubmenu(submenu);
    EXPECT_EQ(submenu.supermenu(), menu);
    item.setSubmenu(nil);
    EXPECT_FALSE(submenu.supermenu());
    EXPECT_EQ(thrownName([&] { return other.setSubmenu(submenu), 0; }), "(nothing)");
    EXPECT_EQ(other.submenu(), submenu);
}

TEST_F(NSMenuTest, KnowsTheSupermenuThatItsItemIsPutInto) {
    const NSMenuItem item = itemTitled("A"_ns);
    const NSMenu submenu = menuTitled("submenu"_ns);
    item.setSubmenu(submenu);
    const NSMenu menu = menuOf({item});
    EXPECT_EQ(submenu.supermenu(), menu);
}

TEST_F(NSMenuTest, AMenuIsTheSubmenuOfOneItemAtMost) {
    const NSMenuItem a = itemTitled("A"_ns), b = itemTitled("B"_ns);
    const NSMenu menu = menuOf({a, b}), submenu = menuTitled("submenu"_ns);
    a.setSubmenu(submenu);
    EXPECT_EQ(submenu.supermenu(), menu);
    EXPECT_THROWS_NAMED(b.setSubmenu(submenu), "NSInvalidArgumentException");
    EXPECT_FALSE(b.submenu());
    EXPECT_EQ(a.submenu(), submenu);
}

TEST_F(NSMenuTest, TheWalkOverItsItemsNoticesAChange) {
    const NSMenu menu = menuOf({itemTitled("A"_ns), itemTitled("B"_ns), itemTitled("C"_ns)});
    const auto walk = [&](auto&& change) {
        return thrownName([&] {
            for (const NSMenuItem item : menu.itemArray())
                if (item == menu.itemAtIndex(0)) change();
            return 0;
        });
    };
    EXPECT_EQ(walk([&] { menu.addItem(itemTitled("D"_ns)); }), "NSGenericException");
    EXPECT_EQ(walk([&] { menu.removeItemAtIndex(1); }), "NSGenericException");
    EXPECT_EQ(walk([&] { menu.insertItem_atIndex(itemTitled("E"_ns), 1); }), "NSGenericException");
    EXPECT_EQ(walk([&] { menu.itemAtIndex(1).setState(NSOnState); }), "(nothing)");
}

} // namespace
} // namespace tessarin::testing
