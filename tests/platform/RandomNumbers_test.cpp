#include "PlatformTest.h"

#include <set>
#include <thread>

#if defined(__unix__)
#    include <sys/wait.h>
#    include <unistd.h>
#endif

namespace tessarin::testing {
namespace {

using Draws = std::vector<std::uint32_t>;

Draws draw(std::size_t count) {
    Draws draws(count);
    for (std::uint32_t& number : draws) number = tessarin::arc4random();
    return draws;
}

TEST(RandomNumbersTest, EveryBitIsSetHalfOfTheTime) {
    constexpr int rounds = 100'000;
    std::vector<std::uint32_t> counts(32);
    for (const std::uint32_t number : draw(rounds))
        for (std::size_t bit = 0; bit < counts.size(); ++bit) counts[bit] += number >> bit & 1;
    // Six standard deviations.
    for (const std::uint32_t count : counts) EXPECT_NEAR(count, rounds / 2, 950);
}

TEST(RandomNumbersTest, BytesAreEquallyLikely) {
    constexpr int rounds = 256'000;
    std::vector<int> counts(256);
    for (const std::uint32_t number : draw(rounds)) ++counts[number & 0xFF];
    double chiSquared = 0;
    for (const int count : counts) chiSquared += (count - 1000.0) * (count - 1000.0) / 1000.0;
    // Of 255 degrees of freedom; outside by chance less than once in a million runs.
    EXPECT_GT(chiSquared, 155);
    EXPECT_LT(chiSquared, 380);
}

TEST(RandomNumbersTest, DrawsDoNotRepeat) {
    // Pairs of draws, since single ones repeat by chance.
    std::set<std::uint64_t> seen;
    for (int round = 0; round < 100'000; ++round)
        seen.insert(std::uint64_t{tessarin::arc4random()} << 32 | tessarin::arc4random());
    EXPECT_EQ(seen.size(), 100'000u);
}

TEST(RandomNumbersTest, EachThreadDrawsItsOwnConcurrent) {
    constexpr int threadCount = 8;
    std::vector<Draws> draws(threadCount);
    std::vector<std::thread> threads;
    for (Draws& own : draws) threads.emplace_back([&own] { own = draw(1000); });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(std::set<Draws>(draws.begin(), draws.end()).size(), draws.size());
}

#if defined(__unix__)
TEST(RandomNumbersTest, AForkedProcessDrawsItsOwn) {
    static_cast<void>(draw(3));
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const Draws draws = draw(8);
        const auto length = static_cast<ssize_t>(draws.size() * sizeof(std::uint32_t));
        _exit(write(ends[1], draws.data(), static_cast<std::size_t>(length)) == length ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    Draws ofChild(8);
    const std::size_t length = ofChild.size() * sizeof(std::uint32_t);
    EXPECT_EQ(read(ends[0], ofChild.data(), length), static_cast<ssize_t>(length));
    close(ends[0]);
    close(ends[1]);
    EXPECT_NE(ofChild, draw(8));
}
#endif

TEST(RandomNumbersTest, SuppliedNumbersComeFirst) {
    const Draws outerNumbers{1, 2, 3};
    const SuppliedRandomNumbers outer(outerNumbers);
    EXPECT_EQ(draw(1), (Draws{1}));
    {
        const Draws innerNumbers{7};
        const SuppliedRandomNumbers inner(innerNumbers);
        EXPECT_EQ(draw(1), (Draws{7}));
        static_cast<void>(draw(1)); // a random one, since the inner ones are used up
        EXPECT_EQ(inner.drawnCount(), 1u);
    }
    EXPECT_EQ(draw(2), (Draws{2, 3}));
    EXPECT_EQ(outer.drawnCount(), 3u);
}

TEST(RandomNumbersTest, SuppliedNumbersAreForTheirThreadAlone) {
    const Draws numbers(8, 0);
    const SuppliedRandomNumbers supplied(numbers);
    Draws elsewhere;
    std::thread([&] { elsewhere = draw(8); }).join();
    EXPECT_NE(elsewhere, numbers);
    EXPECT_EQ(supplied.drawnCount(), 0u);
}

} // namespace
} // namespace tessarin::testing
