// What hash tables start from, so that nobody outside the process can choose keys that all fall into one
// place.
#pragma once

#include <cstdint>

namespace tessarin {

// Random numbers of this process, drawn on first use and the same from then on.
struct HashSeed {
    std::uint64_t first;
    std::uint64_t second;
};
HashSeed drawHashSeed();
inline const HashSeed& hashSeed() {
    static const HashSeed seed = drawHashSeed();
    return seed;
}

// A hash with its bits spread over the whole word, of which tables use the topmost. Hashes of integers, and
// of much else, differ in few bits.
inline std::uint64_t spreadHash(std::uint64_t hash) {
    return (hash ^ hashSeed().first) * 0x9E3779B97F4A7C15; // 2^64 divided by the golden ratio
}

} // namespace tessarin
