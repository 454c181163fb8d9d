#include "platform/embedded/appkit/Screens.h"
#include "platform/embedded/foundation/ArrayStorage.h"

#include <mutex>
#include <utility>

namespace tessarin {
namespace embedded {
namespace {

struct ScreenStorage {
    NSRect frame{};
    NSRect visibleFrame{};
};

ScreenStorage& storageOf(NSScreen screen) { return embedded::storageOf<ScreenStorage>(screen); }

// What the process knows of its screens. The array is replaced, never changed.
struct Screens {
    std::mutex mutex;
    Retained<NSArray> array = retain(NSArray::array());
};

// Never destroyed: windows may outlive the static objects.
Screens& screensOfProcess() {
    static Screens& instance = *new Screens;
    return instance;
}

Retained<NSScreen> newScreen(const ScreenDescription& description) {
    Retained<NSScreen> screen = adopt(NSScreen(createInstance(NSScreen::classObject())));
    storageOf(screen) = {description.frame, description.visibleFrame};
    return screen;
}

// Kept for the caller also where another thread replaces the screens meanwhile.
NSScreen mainScreen(Class, SEL) { return retain(NSScreen(currentScreens().firstObject())).autorelease(); }
NSArray screens(Class, SEL) { return currentScreens().autorelease(); }

NSRect frame(NSScreen self, SEL) { return storageOf(self).frame; }
NSRect visibleFrame(NSScreen self, SEL) { return storageOf(self).visibleFrame; }

} // namespace

Retained<NSArray> currentScreens() {
    Screens& known = screensOfProcess();
    const std::lock_guard lock(known.mutex);
    return known.array;
}

ClassDescription describeNSScreen() {
    return {.name = "NSScreen",
            .superclass = "NSObject",
            .storage = storageLayout<ScreenStorage>(),
            .methods = {classMethod("mainScreen", mainScreen), classMethod("screens", screens),
                        instanceMethod("frame", frame), instanceMethod("visibleFrame", visibleFrame)}};
}

} // namespace embedded

void describeScreens(const std::vector<ScreenDescription>& screens) {
    using namespace embedded;
    Retained<NSArray> described =
        newArrayOfNew(screens.size(), [&](NSUInteger index) { return newScreen(screens[index]); });
    Screens& known = screensOfProcess();
    const std::lock_guard lock(known.mutex);
    std::swap(known.array, described);
}

} // namespace tessarin
