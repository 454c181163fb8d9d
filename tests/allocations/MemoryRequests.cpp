#include "MemoryRequests.h"

#include <cerrno>
#include <limits>

namespace {

constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

constinit thread_local std::size_t requests = 0;
constinit thread_local std::size_t refusedRequest = none; // its number

bool isRefused() {
    if (requests++ != refusedRequest) return false;
    errno = ENOMEM;
    return true;
}

} // namespace

// The C library's own, which it lets a program replace.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) { return isRefused() ? nullptr : __libc_malloc(size); }
void* calloc(std::size_t count, std::size_t size) {
    return isRefused() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) { return isRefused() ? nullptr : __libc_realloc(memory, size); }
}

namespace tessarin::testing {

std::size_t memoryRequests() { return requests; }

RefusedMemoryRequest::RefusedMemoryRequest(std::size_t granted) : number_(requests + granted) {
    refusedRequest = number_;
}
RefusedMemoryRequest::~RefusedMemoryRequest() { refusedRequest = none; }
bool RefusedMemoryRequest::wasMade() const { return requests > number_; }

} // namespace tessarin::testing
