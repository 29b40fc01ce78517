// The operators new and delete of the benchmarks.
#include "HeapCount.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {

// The benchmarks and what they measure run in one thread.
std::size_t allocated = 0;
std::size_t most = 0;

std::size_t sizeOf([[maybe_unused]] void *block) {
#if defined(__GLIBC__)
    return malloc_usable_size(block) + sizeof(std::size_t);
#else
    return 0;
#endif
}

void release(void *block) {
    if (block) allocated -= sizeOf(block);
    std::free(block);
}

} // namespace

void *operator new(std::size_t size) {
    void *const block = std::malloc(size);
    if (!block) throw std::bad_alloc();
    allocated += sizeOf(block);
    most = std::max(most, allocated);
    return block;
}

void operator delete(void *block) noexcept { release(block); }
void operator delete(void *block, std::size_t) noexcept { release(block); }

namespace EDABench {

std::size_t HeapCount::now() { return allocated; }
std::size_t HeapCount::peak() { return most; }
void HeapCount::restartPeak() { most = allocated; }

} // namespace EDABench
