// What the embedded platform promises of menus of any depth and width.
#include "PlatformTest.h"

#include "TessarinFoundation/NSMenu+TessarinExtensions.h"

#include <chrono>

namespace tessarin::testing {
namespace {

NSMenuItem itemTitled(NSString title) {
    return adopt(NSMenuItem::alloc().initWithTitle_action_keyEquivalent(title, nullptr, ""_ns)).autorelease();
}

class EmbeddedMenuTest : public PlatformTest {
protected:
    // A menu with an item and a submenu, which is such a menu itself, and so on. The innermost item is
    // answered too.
    static Retained<NSMenu> newDeepMenu(int depth, Retained<NSMenuItem>& innermost) {
        Retained<NSMenu> menu;
        for (int level = 0; level < depth; ++level) {
            const AutoreleasePool pool;
            Retained<NSMenu> outer = adopt(NSMenu::alloc().initWithTitle("menu"_ns));
            const NSMenuItem item = itemTitled("item"_ns);
            if (menu)
                item.setSubmenu(menu);
            else
                innermost = retain(item);
            outer.addItem(item);
            menu = outer;
        }
        return menu;
    }
    static Retained<NSMenu> newWideMenu(int width) {
        Retained<NSMenu> menu = adopt(NSMenu::alloc().initWithTitle("menu"_ns));
        for (int item = 0; item < width; ++item) {
            const AutoreleasePool pool;
            menu.addItem(itemTitled("item"_ns));
        }
        return menu;
    }
};

TEST_F(EmbeddedMenuTest, DeepMenusAreSetAndReleased) {
    Retained<NSMenuItem> innermost;
    Retained<NSMenu> menu = newDeepMenu(100'000, innermost);
    tessarin_setStateOfAllItems(menu, NSOnState);
    EXPECT_EQ(innermost.state(), NSOnState);
    EXPECT_EQ(menu.itemAtIndex(0).state(), NSOffState);
    EXPECT_EQ(innermost.retainCount(), 2u);
    menu.reset();
    EXPECT_EQ(innermost.retainCount(), 1u);
}

TEST_F(EmbeddedMenuTest, DeepMenusAreBuiltFromTheTopAsWell) {
    const Retained<NSMenu> root = adopt(NSMenu::alloc().initWithTitle("menu"_ns));
    NSMenu innermost = root;
    for (int level = 0; level < 100'000; ++level) {
        const AutoreleasePool pool;
        const NSMenuItem item = itemTitled("item"_ns);
        innermost.addItem(item);
        const Retained<NSMenu> submenu = adopt(NSMenu::alloc().initWithTitle("submenu"_ns));
        submenu.addItem(itemTitled("first"_ns));
        item.setSubmenu(submenu);
        innermost = item.submenu();
    }
    tessarin_setStateOfAllItems(root, NSMixedState);
    EXPECT_EQ(innermost.itemAtIndex(0).state(), NSMixedState);
}

// A million items, each looked up, and taken out from the front of the rest: what were quadratic would take
// hours.
TEST_F(EmbeddedMenuTest, WideMenusAreNotQuadratic) {
    constexpr int width = 1'000'000;
    const auto start = std::chrono::steady_clock::now();
    const Retained<NSMenu> menu = newWideMenu(width);
    tessarin_setStateOfAllItems(menu, NSOnState);
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), -1);
    menu.addItem(NSMenuItem::separatorItem());
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), width);
    menu.removeItemAtIndex(0);
    NSInteger expected = 0;
    for (const NSMenuItem item : menu.itemArray()) ASSERT_EQ(menu.indexOfItem(item), expected++);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(1));
}

TEST_F(EmbeddedMenuTest, AMenuIsInNoMenuOfItsOwn) {
    const Retained<NSMenu> menu = newWideMenu(1), submenu = newWideMenu(1), innermost = newWideMenu(1);
    EXPECT_THROWS_NAMED(menu.itemAtIndex(0).setSubmenu(menu), "NSInvalidArgumentException");
    menu.itemAtIndex(0).setSubmenu(submenu);
    submenu.itemAtIndex(0).setSubmenu(innermost);
    EXPECT_THROWS_NAMED(innermost.itemAtIndex(0).setSubmenu(menu), "NSInvalidArgumentException");
    // Nor by way of an item that is put into it.
    const Retained<NSMenuItem> item = retain(itemTitled("item"_ns));
    item.setSubmenu(menu);
    EXPECT_THROWS_NAMED(innermost.addItem(item), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(menu.addItem(item), "NSInvalidArgumentException");
    EXPECT_FALSE(item.menu());
}

TEST_F(EmbeddedMenuTest, OnlyMenusAndItemsAreTaken) {
    const Retained<NSMenu> menu = newWideMenu(1);
    EXPECT_THROWS_NAMED(menu.addItem(as<NSMenuItem>("a"_ns)), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(menu.itemAtIndex(0).setSubmenu(as<NSMenu>(NSObject("a"_ns))),
                        "NSInvalidArgumentException");
    EXPECT_EQ(menu.indexOfItem(as<NSMenuItem>("a"_ns)), -1);
}

TEST_F(EmbeddedMenuTest, RemovingAnItemThatItDoesNotHaveRaises) {
    const Retained<NSMenu> menu = newWideMenu(1), other = newWideMenu(1);
    EXPECT_THROWS_NAMED(menu.removeItem(other.itemAtIndex(0)), "NSInternalInconsistencyException");
    EXPECT_EQ(other.numberOfItems(), 1);
}

TEST_F(EmbeddedMenuTest, TheListOfItemsFollowsTheMenuAndItsCopiesDoNot) {
    const Retained<NSMenu> menu = newWideMenu(2);
    const Retained<NSArray> items = retain(menu.itemArray());
    const Retained<NSArray> copy = adopt(NSArray(items.copy()));
    const NSArray made = NSArray::arrayWithArray(items);
    EXPECT_FALSE(items.isKindOfClass(NSMutableArray::classObject()));
    menu.addItem(itemTitled("item"_ns));
    EXPECT_EQ(items.count(), 3u);
    EXPECT_EQ(copy.count(), 2u);
    EXPECT_EQ(made.count(), 2u);
    EXPECT_THROWS_NAMED(as<NSMutableArray>(items).removeLastObject(), "NSInvalidArgumentException");
}

TEST_F(EmbeddedMenuTest, TheListOfItemsOutlivesTheMenu) {
    Retained<NSMenu> menu = newWideMenu(2);
    const Retained<NSArray> items = retain(menu.itemArray());
    menu.reset();
    EXPECT_EQ(items.count(), 2u);
    EXPECT_FALSE(as<NSMenuItem>(NSObject(items.firstObject())).menu());
}

TEST_F(EmbeddedMenuTest, ASubmenuOutlivesItsItem) {
    const Retained<NSMenu> submenu = newWideMenu(1);
    {
        const AutoreleasePool pool;
        const Retained<NSMenu> menu = newWideMenu(1);
        menu.itemAtIndex(0).setSubmenu(submenu);
        EXPECT_EQ(submenu.supermenu(), menu);
    }
    EXPECT_FALSE(submenu.supermenu());
    const Retained<NSMenu> next = newWideMenu(1);
    next.itemAtIndex(0).setSubmenu(submenu);
    EXPECT_EQ(submenu.supermenu(), next);
}

TEST_F(EmbeddedMenuTest, AnUninitialisedMenuIsEmpty) {
    const Retained<NSMenu> menu = adopt(NSMenu::alloc());
    EXPECT_EQ(menu.numberOfItems(), 0);
    EXPECT_EQ(menu.itemArray().count(), 0u);
    EXPECT_FALSE(menu.title());
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), -1);
}

// An item whose own code takes the menu away that is being walked.
NSMenu* menuTakenAway = nullptr;

TEST_F(EmbeddedMenuTest, AMenuMayGoWhileItIsWalked) {
    static const ClassDefinition definition{{.name = "EmbeddedMenuTestTakingItem",
                                             .superclass = "NSMenuItem",
                                             .methods = {instanceMethod(
                                                 "setState:", +[](NSMenuItem, SEL, NSInteger) {
                                                     runtime::release(
                                                         std::exchange(*menuTakenAway, NSMenu()).object());
                                                 })}}};
    NSMenu menu = NSMenu::alloc().initWithTitle("menu"_ns);
    menuTakenAway = &menu;
    menu.addItem(
        adopt(send<NSMenuItem>(NSObject(definition.classObject().alloc()), "init"_sel)).autorelease());
    const Retained<NSMenuItem> last = retain(itemTitled("last"_ns));
    menu.addItem(last);
    tessarin_setStateOfAllItems(menu, NSOnState);
    EXPECT_FALSE(menu);
    EXPECT_EQ(last.state(), NSOnState);
    EXPECT_EQ(last.retainCount(), 2u); // the pool's
}

} // namespace
} // namespace tessarin::testing
