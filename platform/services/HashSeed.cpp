#include "platform/services/HashSeed.h"

#include <chrono>
#include <exception>
#include <random>

namespace tessarin {
namespace {

std::uint64_t drawn(std::random_device& system) { return std::uint64_t{system()} << 32 | system(); }

} // namespace

HashSeed drawHashSeed() {
    try {
        std::random_device system;
        return {drawn(system), drawn(system)};
    } catch (const std::exception&) {
        // A machine without random numbers: what differs from one process to another is better than nothing.
        static const char place = 0;
        const auto time = std::chrono::steady_clock::now().time_since_epoch().count();
        return {static_cast<std::uint64_t>(time), reinterpret_cast<std::uintptr_t>(&place)};
    }
}

} // namespace tessarin
