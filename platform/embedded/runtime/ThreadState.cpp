#include "platform/embedded/runtime/ThreadState.h"

#include "TessarinPlatform/NSObject.h"

#include <algorithm>

namespace tessarin::embedded {
namespace {

constexpr std::size_t deepestDeallocation = 64;

// Read while the thread's other objects are being destroyed, like current_.
constinit thread_local bool threadStateIsGone = false;

} // namespace

constinit thread_local ThreadState* ThreadState::current_ = nullptr;

ThreadState* ThreadState::begin() {
    if (threadStateIsGone) return nullptr;
    static thread_local ThreadState state;
    current_ = &state;
    return current_;
}

ThreadState::~ThreadState() {
    // Objects that were autoreleased outside any pool live until here.
    closePool(0);
    current_ = nullptr;
    threadStateIsGone = true;
}

void ThreadState::closePool(std::size_t begin) {
    // The last first; what dying objects autorelease meanwhile belongs to this pool as well.
    while (count_ > begin) runtime::release(autoreleased_[--count_]);
    if (count_ == 0 && autoreleased_.size() > std::size_t{1} << 16) autoreleased_ = {};
}

void ThreadState::makeRoom() { autoreleased_.resize(std::max<std::size_t>(2 * autoreleased_.size(), 64)); }

void ThreadState::deallocate(Object* object) {
    if (depth_ == deepestDeallocation) {
        postponed_.push_back(object);
        return;
    }
    struct Depth {
        explicit Depth(std::size_t& depth) : depth_(depth) { ++depth_; }
        ~Depth() { --depth_; }
        std::size_t& depth_;
    } const entered(depth_);
    send<void>(NSObject(object), "dealloc"_sel);
    if (depth_ > 1) return;
    while (!postponed_.empty()) {
        Object* next = postponed_.back();
        postponed_.pop_back();
        send<void>(NSObject(next), "dealloc"_sel);
    }
    if (postponed_.capacity() > std::size_t{1} << 16) postponed_ = {};
}

} // namespace tessarin::embedded
