// Random numbers that need no seeding.
#pragma once

#include "TessarinPlatform/detail/Configuration.h"

#include <cstdint>
#include <span>

namespace tessarin {

// A uniform random number of 32 bits. Any thread may call it; a process that was forked draws numbers of its
// own. C libraries have a function of the same name, so that it is best called by its full one.
//
//   const std::uint32_t draw = tessarin::arc4random();
TESSARIN_EXPORT std::uint32_t arc4random();

// Numbers supplied in place of random ones, so that a test knows what comes. As long as it exists, arc4random
// answers them in order on the thread that made it, and random ones again once all have been drawn. They are
// not copied.
class TESSARIN_EXPORT SuppliedRandomNumbers {
public:
    explicit SuppliedRandomNumbers(std::span<const std::uint32_t> numbers);
    ~SuppliedRandomNumbers();
    SuppliedRandomNumbers(const SuppliedRandomNumbers&) = delete;
    SuppliedRandomNumbers& operator=(const SuppliedRandomNumbers&) = delete;

    // How many have been drawn.
    std::size_t drawnCount() const { return drawnCount_; }

private:
    friend std::uint32_t arc4random();

    std::span<const std::uint32_t> numbers_;
    std::size_t drawnCount_ = 0;
    SuppliedRandomNumbers* enclosing_;
};

} // namespace tessarin
