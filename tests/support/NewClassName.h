// Names for classes that come to exist, or are changed, while a test looks on.
#pragma once

#include <string>

namespace tessarin::testing {

// A name that no class has yet, so that the test finds the same each time it runs in a process.
inline std::string newClassName(const std::string& stem) {
    static int count = 0;
    return stem + std::to_string(++count);
}

} // namespace tessarin::testing
