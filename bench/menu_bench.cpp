// The states of all items of a menu, against a recursion over structures.
#include "TessarinFoundation/NSMenu+TessarinExtensions.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/Retained.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

using namespace tessarin;

namespace {

// A menu of so many items, in submenus of a thousand each where there are more.
constexpr std::int64_t widest = 1000;

void sizes(benchmark::internal::Benchmark* benchmark) { benchmark->Arg(1000)->Arg(1'000'000); }
void perItem(benchmark::State& state) { state.SetItemsProcessed(state.iterations() * state.range(0)); }

Retained<NSMenu> newMenu(std::int64_t items) {
    const AutoreleasePool pool;
    Retained<NSMenu> menu = adopt(NSMenu::alloc().initWithTitle("menu"_ns));
    const bool hasSubmenus = items > widest;
    for (std::int64_t item = 0; item < (hasSubmenus ? items / widest : items); ++item) {
        const NSMenuItem added = menu.addItemWithTitle_action_keyEquivalent("item"_ns, nullptr, ""_ns);
        if (hasSubmenus) added.setSubmenu(newMenu(widest));
    }
    return menu;
}

void setStates(benchmark::State& state) {
    const Retained<NSMenu> menu = newMenu(state.range(0));
    NSInteger itemState = NSOnState;
    for (auto _ : state) tessarin_setStateOfAllItems(menu, itemState = -itemState);
    perItem(state);
}
BENCHMARK(setStates)->Name("MenuStates/Menu")->Apply(sizes);

void findSeparator(benchmark::State& state) {
    const Retained<NSMenu> menu = newMenu(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(tessarin_indexOfSeparatorItem(menu));
}
BENCHMARK(findSeparator)->Name("MenuSeparator/Menu")->Arg(1000);

struct Menu;
struct Item {
    std::string title;
    std::string keyEquivalent;
    std::unique_ptr<Menu> submenu;
    std::intptr_t state = 0;
    bool isEnabled = true;
    bool isSeparator = false;
};
struct Menu {
    std::string title;
    std::vector<Item> items;
};

std::unique_ptr<Menu> makeStructures(std::int64_t items) {
    auto menu = std::make_unique<Menu>();
    const bool hasSubmenus = items > widest;
    for (std::int64_t item = 0; item < (hasSubmenus ? items / widest : items); ++item)
        menu->items.push_back({"item", "", hasSubmenus ? makeStructures(widest) : nullptr});
    return menu;
}

void setStatesOf(Menu& menu, std::intptr_t itemState) {
    for (Item& item : menu.items) {
        if (item.submenu)
            setStatesOf(*item.submenu, itemState);
        else
            item.state = itemState;
    }
}

void setStatesOfStructures(benchmark::State& state) {
    const std::unique_ptr<Menu> menu = makeStructures(state.range(0));
    std::intptr_t itemState = 1;
    for (auto _ : state) {
        setStatesOf(*menu, itemState = -itemState);
        benchmark::ClobberMemory();
    }
    perItem(state);
}
BENCHMARK(setStatesOfStructures)->Name("MenuStates/Structures")->Apply(sizes);

void findSeparatorInStructures(benchmark::State& state) {
    const std::unique_ptr<Menu> menu = makeStructures(state.range(0));
    for (auto _ : state) {
        std::ptrdiff_t found = -1;
        for (std::size_t index = 0; index < menu->items.size() && found < 0; ++index)
            if (menu->items[index].isSeparator) found = static_cast<std::ptrdiff_t>(index);
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(findSeparatorInStructures)->Name("MenuSeparator/Structures")->Arg(1000);

} // namespace
