// How often memory is asked for. The tests that want to know are a program of their own, whose memory
// functions count.
#pragma once

#include <cstddef>

namespace tessarin::testing {

// Requests of this thread alone: others may be at work for the platform.
std::size_t memoryRequests();

// The requests when something is done for the second time: the first may fill caches.
template <class Body>
std::size_t requestsOf(Body&& body) {
    body();
    const std::size_t before = memoryRequests();
    body();
    return memoryRequests() - before;
}

} // namespace tessarin::testing
