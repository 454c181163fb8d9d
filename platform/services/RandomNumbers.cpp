// Random numbers from a ChaCha keystream per thread, seeded by the system: a draw costs no call of the
// kernel, which that of some C libraries does.
#include "TessarinPlatform/RandomNumbers.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <random>

#if !defined(_WIN32)
#    include <pthread.h>
#endif

namespace tessarin {
namespace {

// The ChaCha permutation of eight rounds on several blocks side by side, so that the compiler finds the same
// step for all of them: words[n][b] is the word n of the block b.
constexpr std::size_t blockCount = 8;
constexpr std::size_t wordCount = 16;
using Lanes = std::array<std::uint32_t, blockCount>;
using Blocks = std::array<Lanes, wordCount>;

void addRotated(Lanes& sum, const Lanes& added, Lanes& mixed, int distance) {
    for (std::size_t lane = 0; lane < blockCount; ++lane) {
        sum[lane] += added[lane];
        const std::uint32_t bits = mixed[lane] ^ sum[lane];
        mixed[lane] = bits << distance | bits >> (32 - distance);
    }
}

void mixQuarter(Blocks& words, std::size_t a, std::size_t b, std::size_t c, std::size_t d) {
    addRotated(words[a], words[b], words[d], 16);
    addRotated(words[c], words[d], words[b], 12);
    addRotated(words[a], words[b], words[d], 8);
    addRotated(words[c], words[d], words[b], 7);
}

using Key = std::array<std::uint32_t, 8>;

// The first blocks of the keystream of a key.
Blocks keystream(const Key& key) {
    constexpr std::array<std::uint32_t, 4> constants = {0x61707865, 0x3320646e, 0x79622d32, 0x6b206574};
    Blocks initial{};
    for (std::size_t lane = 0; lane < blockCount; ++lane) {
        for (std::size_t word = 0; word < constants.size(); ++word) initial[word][lane] = constants[word];
        for (std::size_t word = 0; word < key.size(); ++word) initial[4 + word][lane] = key[word];
        initial[12][lane] = static_cast<std::uint32_t>(lane);
    }
    Blocks words = initial;
    for (int doubleRound = 0; doubleRound < 4; ++doubleRound) {
        for (std::size_t column = 0; column < 4; ++column)
            mixQuarter(words, column, 4 + column, 8 + column, 12 + column);
        for (std::size_t column = 0; column < 4; ++column)
            mixQuarter(words, column, 4 + (column + 1) % 4, 8 + (column + 2) % 4, 12 + (column + 3) % 4);
    }
    for (std::size_t word = 0; word < wordCount; ++word)
        for (std::size_t lane = 0; lane < blockCount; ++lane) words[word][lane] += initial[word][lane];
    return words;
}

// How often this process has been forked. A child has the state of its parent, which must not be drawn twice.
std::atomic<std::uint32_t> forkCount{1};

#if !defined(_WIN32)
[[maybe_unused]] const bool watchesForks = [] {
    return pthread_atfork(nullptr, nullptr, [] { forkCount.fetch_add(1, std::memory_order_relaxed); }) == 0;
}();
#endif

class Generator {
public:
    std::uint32_t next() {
        if (position_ == numbers_.size() || seededAtFork_ != forkCount.load(std::memory_order_relaxed))
            [[unlikely]]
            refill();
        return numbers_[position_++];
    }

private:
    void refill() {
        if (const std::uint32_t forks = forkCount.load(std::memory_order_relaxed); seededAtFork_ != forks) {
            std::random_device system;
            for (std::uint32_t& word : key_) word = system();
            seededAtFork_ = forks;
        }
        const Blocks blocks = keystream(key_);
        // What comes first is the next key, so that what has been drawn cannot be found from what is kept.
        std::array<std::uint32_t, blockCount * wordCount> words;
        for (std::size_t word = 0; word < wordCount; ++word)
            std::copy(blocks[word].begin(), blocks[word].end(),
                      words.begin() + static_cast<std::ptrdiff_t>(word * blockCount));
        std::copy_n(words.begin(), key_.size(), key_.begin());
        std::copy(words.begin() + key_.size(), words.end(), numbers_.begin());
        position_ = 0;
    }

    std::array<std::uint32_t, blockCount * wordCount - std::tuple_size_v<Key>> numbers_{};
    std::size_t position_ = numbers_.size();
    Key key_{};
    std::uint32_t seededAtFork_ = 0; // not at all
};

thread_local constinit Generator generator;
thread_local constinit SuppliedRandomNumbers* supplied = nullptr;

} // namespace

std::uint32_t arc4random() {
    if (supplied && supplied->drawnCount_ < supplied->numbers_.size()) [[unlikely]]
        return supplied->numbers_[supplied->drawnCount_++];
    return generator.next();
}

SuppliedRandomNumbers::SuppliedRandomNumbers(std::span<const std::uint32_t> numbers)
    : numbers_(numbers), enclosing_(supplied) {
    supplied = this;
}

SuppliedRandomNumbers::~SuppliedRandomNumbers() { supplied = enclosing_; }

} // namespace tessarin
