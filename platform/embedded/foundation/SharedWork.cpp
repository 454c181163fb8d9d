#include "platform/embedded/foundation/SharedWork.h"

#include "TessarinPlatform/AutoreleasePool.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace tessarin::embedded {
namespace {

class SharedWork {
public:
    SharedWork(NSUInteger portions, const std::function<bool(NSUInteger)>& work)
        : portions_(portions), work_(work) {}

    void takePart() noexcept {
        try {
            for (NSUInteger portion = next_++; portion < portions_; portion = next_++)
                if (!work_(portion)) next_ = portions_;
        } catch (...) {
            next_ = portions_;
            const std::lock_guard lock(mutex_);
            if (!problem_) problem_ = std::current_exception();
        }
    }
    // When no thread takes part any more.
    void throwOn() {
        if (problem_) std::rethrow_exception(std::exchange(problem_, nullptr));
    }

private:
    const NSUInteger portions_;
    const std::function<bool(NSUInteger)>& work_;
    std::atomic<NSUInteger> next_ = 0;
    std::mutex mutex_;
    std::exception_ptr problem_;
};

} // namespace

void shareWork(NSUInteger portions, NSUInteger mostThreads, const std::function<bool(NSUInteger)>& work) {
    SharedWork shared(portions, work);
    const auto help = [&] {
        const AutoreleasePool pool;
        shared.takePart();
    };
    std::vector<std::thread> helpers;
    const NSUInteger threads =
        std::min({portions, mostThreads, NSUInteger{std::thread::hardware_concurrency()}});
    try {
        helpers.reserve(threads);
        for (NSUInteger count = 1; count < threads; ++count) helpers.emplace_back(help);
    } catch (const std::exception&) {
        // The machine has no more threads to give, or no memory for them; those that there are do the work.
    }
    shared.takePart();
    for (std::thread& helper : helpers) helper.join();
    shared.throwOn();
}

} // namespace tessarin::embedded
