// What several threads do at once.
#pragma once

#include "PlatformTest.h"

#include <array>
#include <functional>
#include <latch>
#include <string>
#include <thread>

namespace tessarin::testing {

inline constexpr int threadCount = 8;

// Each thread calls `work` with its number, from 0 on, once all of them are there.
inline void onManyThreads(const std::function<void(int thread)>& work) {
    std::latch start(threadCount);
    std::array<std::thread, threadCount> threads;
    for (int number = 0; number < threadCount; ++number)
        threads[static_cast<std::size_t>(number)] = std::thread([&, number] {
            start.arrive_and_wait();
            const AutoreleasePool pool;
            work(number);
        });
    for (std::thread& thread : threads) thread.join();
}

// Each thread calls `work` so many times, each time in a pool of its own. `work` answers what went wrong, if
// anything, and is then not called again by this thread.
inline void onManyThreads(int rounds, const std::function<std::string()>& work) {
    std::array<std::string, threadCount> mistakes;
    onManyThreads([&](int thread) {
        std::string& mistake = mistakes[static_cast<std::size_t>(thread)];
        for (int round = 0; round < rounds && mistake.empty(); ++round) {
            const AutoreleasePool pool;
            mistake = work();
        }
    });
    for (const std::string& mistake : mistakes) EXPECT_EQ(mistake, "");
}

// What `work` answers of two texts that should be the same.
inline std::string difference(const std::string& found, const std::string& expected) {
    return found == expected ? "" : "found " + found + " instead of " + expected;
}

} // namespace tessarin::testing
