// Random numbers that need no seeding.
#pragma once

#include "TessarinPlatform/detail/Configuration.h"

#include <cstdint>
#include <span>

namespace tessarin {

namespace detail {

// Numbers that a thread has yet to draw.
struct NumbersAhead {
    const std::uint32_t* next = nullptr;
    const std::uint32_t* end = nullptr;
};

} // namespace detail

// A uniform random number of 32 bits. Any thread may call it; a process that was forked draws numbers of its
// own. C libraries have a function of the same name, so that it is best called by its full one.
//
//   const std::uint32_t draw = tessarin::arc4random();
TESSARIN_EXPORT std::uint32_t arc4random();

// The same for many draws in a row: what belongs to the thread is looked up once. An object of one thread and
// of one operation, in which the process is not forked.
class RandomDraws {
public:
    TESSARIN_EXPORT RandomDraws();

    std::uint32_t operator()() const {
        if (ahead_.next == ahead_.end) [[unlikely]]
            provideNumbers();
        return *ahead_.next++;
    }

private:
    TESSARIN_EXPORT static void provideNumbers();

    detail::NumbersAhead& ahead_;
};

// Numbers supplied in place of random ones, so that a test knows what comes. As long as it exists, they are
// drawn in order on the thread that made it, and random ones once all have been drawn. They are not copied.
class TESSARIN_EXPORT SuppliedRandomNumbers {
public:
    explicit SuppliedRandomNumbers(std::span<const std::uint32_t> numbers);
    ~SuppliedRandomNumbers();
    SuppliedRandomNumbers(const SuppliedRandomNumbers&) = delete;
    SuppliedRandomNumbers& operator=(const SuppliedRandomNumbers&) = delete;

    // How many have been drawn.
    std::size_t drawnCount() const;

private:
    std::span<const std::uint32_t> numbers_;
    detail::NumbersAhead replaced_;
};

} // namespace tessarin
