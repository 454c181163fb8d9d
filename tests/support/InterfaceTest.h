// What tests of windows, views and menus have in common.
#pragma once

#include "PlatformTest.h"

namespace tessarin::testing {

// Gets the platform ready to show windows, on one screen of 1440 by 900 points without menu bar and Dock.
// Each platform has its own way, in the folder of its name.
void openDisplay();

class InterfaceTest : public PlatformTest {
protected:
    InterfaceTest() { openDisplay(); }
};

} // namespace tessarin::testing

// How a test that fails shows geometry.
namespace tessarin {

inline void PrintTo(NSPoint point, std::ostream* stream) {
    *stream << "(" << point.x << ", " << point.y << ")";
}
inline void PrintTo(NSSize size, std::ostream* stream) { *stream << size.width << " by " << size.height; }
inline void PrintTo(const NSRect& rect, std::ostream* stream) {
    *stream << "(" << rect.origin.x << ", " << rect.origin.y << ", " << rect.size.width << ", "
            << rect.size.height << ")";
}

} // namespace tessarin
