// Counts the bytes that are allocated, and the most at once.
#pragma once

#include <cstddef>

namespace EDABench {

// Of `new` in the whole program, where the library of C tells the size of a block; otherwise always 0.
struct HeapCount {
    static std::size_t now();
    static std::size_t peak();
    static void restartPeak(); // at what is allocated now
};

} // namespace EDABench
