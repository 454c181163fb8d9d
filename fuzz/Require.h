// How a fuzzer says that something does not hold: in words, and as a crash, which is what keeps the input.
#pragma once

#include <cstdlib>
#include <iostream>

namespace tessarin::fuzzing {

inline void require(bool condition, const char* requirement) {
    if (condition) return;
    std::cerr << "violated: " << requirement << std::endl;
    std::abort();
}

} // namespace tessarin::fuzzing
