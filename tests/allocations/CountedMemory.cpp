#include "CountedMemory.h"

#include <cstdlib>

namespace {

thread_local std::size_t requests = 0;

} // namespace

// The C library's own, which it lets a program replace.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) {
    ++requests;
    return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    ++requests;
    return __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) {
    ++requests;
    return __libc_realloc(memory, size);
}
}

std::size_t tessarin::testing::memoryRequests() { return requests; }
