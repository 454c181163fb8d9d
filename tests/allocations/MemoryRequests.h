// The requests for memory in a program whose memory functions count them, and refuse one on demand.
#pragma once

#include <cstddef>

namespace tessarin::testing {

// How many this thread has made. Others may be at work for the platform.
std::size_t memoryRequests();

// The requests when something is done for the second time: the first may fill caches.
template <class Body>
std::size_t requestsOf(Body&& body) {
    body();
    const std::size_t before = memoryRequests();
    body();
    return memoryRequests() - before;
}

// While it exists, the request of this thread that comes after `granted` others is refused.
class RefusedMemoryRequest {
public:
    explicit RefusedMemoryRequest(std::size_t granted);
    ~RefusedMemoryRequest();
    RefusedMemoryRequest(const RefusedMemoryRequest&) = delete;
    RefusedMemoryRequest& operator=(const RefusedMemoryRequest&) = delete;

    // Whether there was one.
    bool wasMade() const;

private:
    std::size_t number_;
};

} // namespace tessarin::testing
