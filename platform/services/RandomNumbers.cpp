// Random numbers from a ChaCha keystream per thread, seeded by the system: a draw costs no call of the
// kernel, which that of some C libraries does.
#include "TessarinPlatform/RandomNumbers.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <random>

#if !defined(_WIN32)
#    include <pthread.h>
#endif

namespace tessarin {
namespace {

// The ChaCha permutation of eight rounds, on several blocks side by side: words[n][b] is the word n of block
// b.
constexpr std::size_t blockCount = 4;
constexpr std::size_t wordCount = 16;
using Lanes = std::uint32_t __attribute__((vector_size(blockCount * sizeof(std::uint32_t))));
using Blocks = std::array<Lanes, wordCount>;

inline void addRotated(Lanes& sum, Lanes added, Lanes& mixed, int distance) {
    sum += added;
    mixed ^= sum;
    mixed = mixed << distance | mixed >> (32 - distance);
}

inline void mixQuarter(Blocks& words, std::size_t a, std::size_t b, std::size_t c, std::size_t d) {
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
    for (std::size_t word = 0; word < constants.size(); ++word) initial[word] += constants[word];
    for (std::size_t word = 0; word < key.size(); ++word) initial[4 + word] += key[word];
    initial[12] = Lanes{0, 1, 2, 3};
    Blocks words = initial;
    for (int doubleRound = 0; doubleRound < 4; ++doubleRound) {
        mixQuarter(words, 0, 4, 8, 12);
        mixQuarter(words, 1, 5, 9, 13);
        mixQuarter(words, 2, 6, 10, 14);
        mixQuarter(words, 3, 7, 11, 15);
        mixQuarter(words, 0, 5, 10, 15);
        mixQuarter(words, 1, 6, 11, 12);
        mixQuarter(words, 2, 7, 8, 13);
        mixQuarter(words, 3, 4, 9, 14);
    }
    for (std::size_t word = 0; word < wordCount; ++word) words[word] += initial[word];
    return words;
}

// How often this process has been forked. A child has the state of its parent, which must not be drawn twice.
std::atomic<std::uint32_t> forkCount{1};

#if !defined(_WIN32)
[[maybe_unused]] const bool watchesForks = [] {
    return pthread_atfork(nullptr, nullptr, [] { forkCount.fetch_add(1, std::memory_order_relaxed); }) == 0;
}();
#endif

// The random numbers of one thread.
struct Generator {
    detail::NumbersAhead ahead;
    std::array<std::uint32_t, blockCount * wordCount - std::tuple_size_v<Key>> numbers{};
    Key key{};
    std::uint32_t seededAtFork = 0; // not at all

    void refill() {
        if (const std::uint32_t forks = forkCount.load(std::memory_order_relaxed); seededAtFork != forks) {
            std::random_device system;
            for (std::uint32_t& word : key) word = system();
            seededAtFork = forks;
        }
        const auto words = std::bit_cast<std::array<std::uint32_t, blockCount * wordCount>>(keystream(key));
        // What comes first is the next key, so that what has been drawn cannot be found from what is kept.
        std::copy_n(words.begin(), key.size(), key.begin());
        std::copy(words.begin() + key.size(), words.end(), numbers.begin());
        ahead = {numbers.data(), numbers.data() + numbers.size()};
    }
    bool drawsOwnNumbers() const { return ahead.end == numbers.data() + numbers.size(); }
};

thread_local constinit Generator generator;

} // namespace

RandomDraws::RandomDraws() : ahead_(generator.ahead) {
    Generator& own = generator;
    // Numbers that the parent process may have drawn, or may yet draw.
    if (own.seededAtFork != forkCount.load(std::memory_order_relaxed) && own.drawsOwnNumbers()) [[unlikely]]
        own.refill();
}

void RandomDraws::provideNumbers() { generator.refill(); }

std::uint32_t arc4random() { return RandomDraws()(); }

SuppliedRandomNumbers::SuppliedRandomNumbers(std::span<const std::uint32_t> numbers)
    : numbers_(numbers), replaced_(generator.ahead) {
    generator.ahead = {numbers.data(), numbers.data() + numbers.size()};
}

SuppliedRandomNumbers::~SuppliedRandomNumbers() {
    Generator& own = generator;
    // Of random numbers, others may have taken the place of those that were ahead, and have been drawn.
    const bool areRandom = replaced_.end == own.numbers.data() + own.numbers.size();
    own.ahead = areRandom ? detail::NumbersAhead() : replaced_;
}

std::size_t SuppliedRandomNumbers::drawnCount() const {
    const detail::NumbersAhead& ahead = generator.ahead;
    const bool areLeft = ahead.end == numbers_.data() + numbers_.size();
    return areLeft ? numbers_.size() - static_cast<std::size_t>(ahead.end - ahead.next) : numbers_.size();
}

} // namespace tessarin
