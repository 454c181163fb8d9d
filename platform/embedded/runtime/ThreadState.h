// What the runtime keeps for each thread: its autorelease pools and the deallocations under way.
#pragma once

#include "TessarinPlatform/Runtime.h"

#include <cstddef>
#include <vector>

namespace tessarin::embedded {

class ThreadState {
public:
    // The calling thread's, null once the thread has ended as far as C++ is concerned.
    static ThreadState* current() { return current_ ? current_ : begin(); }

    ThreadState() = default;
    ~ThreadState();
    ThreadState(const ThreadState&) = delete;
    ThreadState& operator=(const ThreadState&) = delete;

    void autorelease(Object* object) {
        if (count_ == autoreleased_.size()) [[unlikely]]
            makeRoom();
        autoreleased_[count_++] = object;
    }
    std::size_t openPool() const { return count_; }
    void closePool(std::size_t begin);

    // Sends dealloc to an object that has no references left. Deallocations nest, since an object releases
    // what it holds; beyond a depth that no ordinary object reaches they are postponed until the outermost
    // has returned, so that a million nested objects do not exhaust the stack.
    void deallocate(Object* object);

private:
    static ThreadState* begin();

    // Needs no construction and no destruction, so that it costs no check and may be read while the thread's
    // other objects are being destroyed.
    static constinit thread_local ThreadState* current_;

    void makeRoom();

    std::vector<Object*> autoreleased_; // of all pools, the innermost last, and room for more
    std::size_t count_ = 0;
    std::vector<Object*> postponed_;
    std::size_t depth_ = 0;
};

} // namespace tessarin::embedded
