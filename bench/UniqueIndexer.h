// The work of a unique indexer, the same for the library's and for those built on other sets: a run of
// indexes of which a tenth was given back; then one is taken, the lowest that was given back, and one in use,
// chosen at random, is given back.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <mutex>
#include <thread>

namespace bench {

// An indexer on two sets of another kind, under a lock, as the library's is. A set has contains, add, remove,
// isEmpty, first and last.
template <class Set>
class RivalIndexer {
public:
    explicit RivalIndexer(std::int64_t capacity) : used_(capacity), freed_(capacity) {}

    void registerIndex(std::int64_t index) {
        const std::lock_guard lock(mutex_);
        if (!used_.contains(index)) take(index);
    }
    std::int64_t registerAny() {
        const std::lock_guard lock(mutex_);
        const std::int64_t index = freed_.isEmpty() ? used_.last() + 1 : freed_.first();
        take(index);
        return index;
    }
    bool freeIndex(std::int64_t index) {
        const std::lock_guard lock(mutex_);
        if (!used_.contains(index)) return false;
        used_.remove(index);
        freed_.add(index);
        return true;
    }

private:
    void take(std::int64_t index) {
        used_.add(index);
        freed_.remove(index);
    }

    std::mutex mutex_;
    Set used_;
    Set freed_;
};

template <class Indexer>
void registerAndFree(benchmark::State& state) {
    // The C library leaves out what a lock costs as long as a program has never had a second thread.
    std::thread([] {}).join();
    const std::int64_t count = state.range(0);
    Indexer indexer(count);
    for (std::int64_t index = 0; index < count; ++index) indexer.registerIndex(index);

    // A linear congruential generator, whose cost is small beside what is measured.
    std::uint64_t random = 1;
    const auto freeOne = [&] {
        std::int64_t index = 0;
        do {
            random = random * 6364136223846793005u + 1442695040888963407u;
            index = static_cast<std::int64_t>((random >> 32) * static_cast<std::uint64_t>(count) >> 32);
        } while (!indexer.freeIndex(index));
    };
    for (std::int64_t number = 0; number < count / 10; ++number) freeOne();

    for (auto _ : state) {
        benchmark::DoNotOptimize(indexer.registerAny());
        freeOne();
    }
}

} // namespace bench

// From ten indexes to a million.
#define UNIQUE_INDEXER_BENCHMARK(Indexer, name)                                                              \
    BENCHMARK(bench::registerAndFree<Indexer>)                                                               \
        ->Name("UniqueIndexer/" name)                                                                        \
        ->Arg(10)                                                                                            \
        ->Arg(1'000)                                                                                         \
        ->Arg(100'000)                                                                                       \
        ->Arg(1'000'000)
