#include "InterfaceTest.h"

#include "TessarinFoundation/NSMenu+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

NSMenu menuTitled(NSString title) { return adopt(NSMenu::alloc().initWithTitle(title)).autorelease(); }
NSMenuItem add(NSMenu menu, NSString title) {
    return menu.addItemWithTitle_action_keyEquivalent(title, nullptr, ""_ns);
}
NSMenuItem addSeparator(NSMenu menu) {
    const NSMenuItem separator = NSMenuItem::separatorItem();
    menu.addItem(separator);
    return separator;
}
NSObject make(const ClassDefinition& definition) {
    return adopt(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel)).autorelease();
}

class MenuExtensionsTest : public InterfaceTest {};

TEST_F(MenuExtensionsTest, SetsTheStateOfEveryItemWithoutASubmenu) {
    const NSMenu menu = menuTitled("menu"_ns);
    const NSMenu submenu = menuTitled("submenu"_ns);
    const NSMenuItem a = add(menu, "A"_ns), b = add(menu, "B"_ns), separator = addSeparator(menu);
    const NSMenuItem c = add(submenu, "C"_ns), d = add(submenu, "D"_ns);
    menu.setSubmenu_forItem(submenu, b);
    tessarin_setStateOfAllItems(menu, NSOnState);
    for (const NSMenuItem item : {a, c, d, separator}) EXPECT_EQ(item.state(), NSOnState);
    EXPECT_EQ(b.state(), NSOffState);
    b.setState(NSOnState);
    tessarin_setStateOfAllItems(menu, NSMixedState);
    for (const NSMenuItem item : {a, c, d, separator}) EXPECT_EQ(item.state(), NSMixedState);
    EXPECT_EQ(b.state(), NSOnState);
    tessarin_setStateOfAllItems(menu, NSOffState);
    for (const NSMenuItem item : {a, c, d, separator}) EXPECT_EQ(item.state(), NSOffState);
}

TEST_F(MenuExtensionsTest, AnItemWithAnEmptySubmenuKeepsItsState) {
    const NSMenu menu = menuTitled("menu"_ns);
    const NSMenuItem item = add(menu, "A"_ns);
    item.setSubmenu(menuTitled("submenu"_ns));
    tessarin_setStateOfAllItems(menu, NSOnState);
    EXPECT_EQ(item.state(), NSOffState);
}

TEST_F(MenuExtensionsTest, AnEmptyMenuStaysAsItIs) {
    const NSMenu menu = menuTitled("menu"_ns);
    tessarin_setStateOfAllItems(menu, NSOnState);
    EXPECT_EQ(menu.numberOfItems(), 0);
}

TEST_F(MenuExtensionsTest, NoMenuIsNothing) {
    tessarin_setStateOfAllItems(nil, NSOnState);
    EXPECT_EQ(tessarin_indexOfSeparatorItem(nil), 0); // as every message to nil
}

// Items that note the order in which they are set.
Texts visited;

void noteState(NSMenuItem self, SEL, NSInteger) { visited.push_back(text(self.title())); }

Class notingItemClass() {
    static const ClassDefinition definition{{.name = "MenuExtensionsTestNotingItem",
                                             .superclass = "NSMenuItem",
                                             .methods = {instanceMethod("setState:", noteState)}}};
    return definition.classObject();
}
NSMenuItem addNoting(NSMenu menu, NSString title) {
    const NSMenuItem item = adopt(as<NSMenuItem>(NSObject(notingItemClass().alloc()))
                                      .initWithTitle_action_keyEquivalent(title, nullptr, ""_ns))
                                .autorelease();
    menu.addItem(item);
    return item;
}

TEST_F(MenuExtensionsTest, GoesThroughTheTreeDepthFirstInTheOrderOfTheItems) {
    const NSMenu menu = menuTitled("menu"_ns), inner = menuTitled("inner"_ns), innermost = menuTitled("i"_ns);
    addNoting(menu, "1"_ns);
    addNoting(menu, "2"_ns).setSubmenu(inner);
    addNoting(menu, "3"_ns);
    addNoting(inner, "2.1"_ns).setSubmenu(innermost);
    addNoting(inner, "2.2"_ns);
    addNoting(innermost, "2.1.1"_ns);
    visited.clear();
    tessarin_setStateOfAllItems(menu, NSOnState);
    EXPECT_EQ(visited, (Texts{"1", "2.1.1", "2.2", "3"}));
}

NSInteger statesSent = 0;

TEST_F(MenuExtensionsTest, AskASubmenuThatDoesItInItsOwnWay) {
    static const ClassDefinition definition{
        {.name = "MenuExtensionsTestOwnMenu",
         .superclass = "NSMenu",
         .methods = {instanceMethod(
             "tessarin_setStateOfAllItems:", +[](NSMenu, SEL, NSInteger state) { statesSent += state; })}}};
    const NSMenu menu = menuTitled("menu"_ns);
    const NSMenu own = as<NSMenu>(make(definition));
    const NSMenuItem inner = add(own, "inner"_ns);
    add(menu, "item"_ns).setSubmenu(own);
    const NSMenuItem last = add(menu, "last"_ns);
    statesSent = 0;
    tessarin_setStateOfAllItems(menu, NSOnState);
    EXPECT_EQ(statesSent, 1);
    EXPECT_EQ(inner.state(), NSOffState);
    EXPECT_EQ(last.state(), NSOnState);
}

// A menu that answers its items backwards and without the first, while a test wants it to.
bool isBackwards = false;

NSArray answerBackwards(NSMenu self, SEL selector) {
    const NSArray items = sendSuper<NSArray>(self, "MenuExtensionsTestBackwardMenu"_class, selector);
    if (!isBackwards) return items;
    const NSMutableArray backwards = NSMutableArray::array();
    for (NSUInteger index = items.count(); index-- > 1;) backwards.addObject(items.objectAtIndex(index));
    return backwards;
}
NSMenu backwardMenu() {
    static const ClassDefinition definition{{.name = "MenuExtensionsTestBackwardMenu",
                                             .superclass = "NSMenu",
                                             .methods = {instanceMethod("itemArray", answerBackwards)}}};
    return as<NSMenu>(make(definition));
}

TEST_F(MenuExtensionsTest, SetsTheStatesOfTheItemsThatTheMenuAnswers) {
    const NSMenu own = backwardMenu(), menu = menuTitled("menu"_ns);
    addNoting(own, "1"_ns);
    addNoting(own, "2"_ns);
    addNoting(own, "3"_ns);
    isBackwards = true;
    visited.clear();
    tessarin_setStateOfAllItems(own, NSOnState);
    EXPECT_EQ(visited, (Texts{"3", "2"}));
    add(menu, "own"_ns).setSubmenu(own);
    visited.clear();
    tessarin_setStateOfAllItems(menu, NSOnState);
    EXPECT_EQ(visited, (Texts{"3", "2"}));
    isBackwards = false;
}

// An item whose submenu is the menu that it is in, for so many times; so that the walk goes as many levels
// deep.
NSInteger levelsLeft = 0;

TEST_F(MenuExtensionsTest, BearsMenusThatNestDeeperThanTheStack) {
    static const ClassDefinition definition{
        {.name = "MenuExtensionsTestBottomlessItem",
         .superclass = "NSMenuItem",
         .methods = {instanceMethod(
             "submenu", +[](NSMenuItem self, SEL) { return levelsLeft-- > 0 ? self.menu() : NSMenu(); })}}};
    const NSMenu menu = menuTitled("menu"_ns);
    const NSMenuItem bottomless = as<NSMenuItem>(make(definition));
    levelsLeft = 0; // adding it asks for the submenu, natively
    menu.addItem(bottomless);
    const NSMenuItem last = add(menu, "last"_ns);
    levelsLeft = 100'000;
    tessarin_setStateOfAllItems(menu, NSOnState);
    EXPECT_EQ(bottomless.state(), NSOnState);
    EXPECT_EQ(last.state(), NSOnState);
    EXPECT_LT(levelsLeft, 0);
    levelsLeft = 0;
}

// Items that change their menu when they are looked at.
Class meddlingItemClass() {
    static const ClassDefinition definition{
        {.name = "MenuExtensionsTestMeddlingItem",
         .superclass = "NSMenuItem",
         .methods = {
             instanceMethod(
                 "setState:", +[](NSMenuItem self, SEL, NSInteger) { self.menu().removeItemAtIndex(1); }),
             instanceMethod(
                 "isSeparatorItem", +[](NSMenuItem self, SEL) -> BOOL {
                     // The platform itself asks when an item is put into a menu.
                     if (self.menu().numberOfItems() > 3) self.menu().removeItemAtIndex(1);
                     return NO;
                 })}}};
    return definition.classObject();
}
NSMenu meddledMenu() {
    const NSMenu menu = menuTitled("menu"_ns);
    menu.addItem(adopt(send<NSMenuItem>(NSObject(meddlingItemClass().alloc()), "init"_sel)).autorelease());
    for (int item = 0; item < 3; ++item) add(menu, "item"_ns);
    return menu;
}

TEST_F(MenuExtensionsTest, AMenuThatIsChangedWhileStatesAreSetIsRefused) {
    const NSMenu menu = meddledMenu();
    EXPECT_THROWS_NAMED(tessarin_setStateOfAllItems(menu, NSOnState), "NSGenericException");
    EXPECT_EQ(menu.itemAtIndex(1).state(), NSOffState);
}

TEST_F(MenuExtensionsTest, ASubmenuThatIsChangedWhileStatesAreSetIsRefused) {
    const NSMenu menu = menuTitled("menu"_ns);
    add(menu, "item"_ns).setSubmenu(meddledMenu());
    EXPECT_THROWS_NAMED(tessarin_setStateOfAllItems(menu, NSOnState), "NSGenericException");
}

TEST_F(MenuExtensionsTest, AMenuThatIsChangedWhileASeparatorIsSoughtIsRefused) {
    EXPECT_THROWS_NAMED(tessarin_indexOfSeparatorItem(meddledMenu()), "NSGenericException");
}

// Items that take themselves out of the menu, which alone keeps them, when they are asked; once.
bool leaves = false;
bool isFreed = false;

void leaveOnce(NSMenuItem item) {
    if (std::exchange(leaves, false)) item.menu().removeItemAtIndex(item.menu().indexOfItem(item));
}
Class leavingItemClass() {
    static const ClassDefinition definition{
        {.name = "MenuExtensionsTestLeavingItem",
         .superclass = "NSMenuItem",
         .methods = {instanceMethod(
                         "submenu",
                         +[](NSMenuItem self, SEL) {
                             leaveOnce(self);
                             return NSMenu();
                         }),
                     instanceMethod(
                         "setState:", +[](NSMenuItem, SEL, NSInteger) { EXPECT_FALSE(isFreed); }),
                     instanceMethod(
                         "isSeparatorItem",
                         +[](NSMenuItem self, SEL) -> BOOL {
                             leaveOnce(self);
                             EXPECT_FALSE(isFreed);
                             return YES;
                         }),
                     instanceMethod(
                         "dealloc", +[](NSMenuItem self, SEL selector) {
                             isFreed = true;
                             sendSuper<void>(self, "MenuExtensionsTestLeavingItem"_class, selector);
                         })}}};
    return definition.classObject();
}
Retained<NSMenu> newMenuThatIsLeft() {
    const AutoreleasePool pool;
    leaves = isFreed = false;
    Retained<NSMenu> menu = adopt(NSMenu::alloc().initWithTitle("menu"_ns));
    menu.addItem(adopt(send<NSMenuItem>(NSObject(leavingItemClass().alloc()), "init"_sel)));
    for (int item = 0; item < 3; ++item) add(menu, "item"_ns);
    leaves = true;
    return menu;
}

TEST_F(MenuExtensionsTest, AnItemThatLeavesWhenItsSubmenuIsAskedForIsKeptUntilTheRefusal) {
    const Retained<NSMenu> menu = newMenuThatIsLeft();
    EXPECT_THROWS_NAMED(tessarin_setStateOfAllItems(menu, NSOnState), "NSGenericException");
    EXPECT_EQ(menu.numberOfItems(), 3);
}

// ---- The first separator

TEST_F(MenuExtensionsTest, FindsTheFirstSeparator) {
    const NSMenu menu = menuTitled("menu"_ns);
    add(menu, "A"_ns);
    addSeparator(menu);
    add(menu, "B"_ns);
    addSeparator(menu);
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), 1);
}

TEST_F(MenuExtensionsTest, AMenuWithoutSeparatorsAnswersMinusOne) {
    const NSMenu menu = menuTitled("menu"_ns);
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), -1);
    add(menu, "A"_ns);
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), -1);
}

TEST_F(MenuExtensionsTest, SeparatorsOfSubmenusDoNotCount) {
    const NSMenu menu = menuTitled("menu"_ns), submenu = menuTitled("submenu"_ns);
    addSeparator(submenu);
    add(menu, "A"_ns).setSubmenu(submenu);
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), -1);
}

TEST_F(MenuExtensionsTest, TheIndexIsTheMenusOwn) {
    static const ClassDefinition definition{
        {.name = "MenuExtensionsTestIndexingMenu",
         .superclass = "NSMenu",
         .methods = {instanceMethod(
             "indexOfItem:", +[](NSMenu, SEL, NSMenuItem) { return NSInteger{1000}; })}}};
    const NSMenu menu = as<NSMenu>(make(definition));
    addSeparator(menu);
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), 1000);
}

TEST_F(MenuExtensionsTest, TheFirstSeparatorIsThatOfTheItemsThatTheMenuAnswers) {
    const NSMenu menu = backwardMenu();
    addSeparator(menu);
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), 0);
    isBackwards = true;
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), -1);
    addSeparator(menu);
    add(menu, "A"_ns);
    addSeparator(menu);
    add(menu, "B"_ns);
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), 3);
    isBackwards = false;
}

TEST_F(MenuExtensionsTest, ASeparatorThatLeavesTheMenuHasNoIndex) {
    const Retained<NSMenu> menu = newMenuThatIsLeft();
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), -1);
    EXPECT_EQ(menu.numberOfItems(), 3);
}

// A menu whose last owner is an item of it.
Retained<NSMenu> menuLetGo;

TEST_F(MenuExtensionsTest, AMenuThatIsLetGoOfWhileASeparatorIsSoughtIsKept) {
    static const ClassDefinition definition{{.name = "MenuExtensionsTestOwningItem",
                                             .superclass = "NSMenuItem",
                                             .methods = {instanceMethod(
                                                 "isSeparatorItem", +[](NSMenuItem, SEL) -> BOOL {
                                                     menuLetGo.reset();
                                                     return YES;
                                                 })}}};
    {
        const AutoreleasePool pool;
        Retained<NSMenu> menu = adopt(NSMenu::alloc().initWithTitle("menu"_ns));
        add(menu, "item"_ns);
        menu.addItem(as<NSMenuItem>(make(definition)));
        menuLetGo = menu;
    }
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menuLetGo), 1);
}

TEST_F(MenuExtensionsTest, AnItemThatCallsItselfASeparatorIsOne) {
    static const ClassDefinition definition{
        {.name = "MenuExtensionsTestOwnSeparator",
         .superclass = "NSMenuItem",
         .methods = {instanceMethod(
             "isSeparatorItem", +[](NSMenuItem, SEL) -> BOOL { return YES; })}}};
    const NSMenu menu = menuTitled("menu"_ns);
    add(menu, "A"_ns);
    menu.addItem(as<NSMenuItem>(make(definition)));
    EXPECT_EQ(tessarin_indexOfSeparatorItem(menu), 1);
}

} // namespace
} // namespace tessarin::testing
