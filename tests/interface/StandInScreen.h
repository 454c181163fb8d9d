// A main screen as a test wants it.
#pragma once

#include "TessarinPlatform/TessarinPlatform.h"

#include <optional>

namespace tessarin::testing {

// As long as it exists, the main screen answers that visible frame, or there is no main screen. At other
// times the main screen is the first, and visible as a whole, as on the tests' display.
class StandInScreen {
public:
    explicit StandInScreen(NSRect visibleFrame) : visibleFrame_(visibleFrame) { standIn(); }
    explicit StandInScreen(std::nullptr_t) { standIn(); }
    ~StandInScreen() { current_ = nullptr; }
    StandInScreen(const StandInScreen&) = delete;
    StandInScreen& operator=(const StandInScreen&) = delete;

private:
    void standIn() {
        static const ExtensionGroup group{
            "NSScreen",
            "TessarinTests",
            {classMethod("mainScreen", mainScreen), instanceMethod("visibleFrame", visibleFrame)}};
        current_ = this;
    }
    static NSScreen mainScreen(Class, SEL) {
        const bool isMissing = current_ && !current_->visibleFrame_;
        return isMissing ? NSScreen() : NSScreen(NSScreen::screens().firstObject());
    }
    static NSRect visibleFrame(NSScreen self, SEL) {
        return current_ ? current_->visibleFrame_.value_or(NSZeroRect) : self.frame();
    }

    std::optional<NSRect> visibleFrame_; // none of a missing screen
    static inline const StandInScreen* current_ = nullptr;
};

} // namespace tessarin::testing
