// What one read of an IDF file takes in at most, far above any real design.
#pragma once

#include <cstddef>

namespace EDA {

struct IDFReaderLimits {
    // Outline points of one file, an arc counting as the points that it is cut into. Those beyond are left
    // out, with one line of error text.
    std::size_t points = 50'000'000;

    // Points of the board outline that its clean-ups visit. A file may come back to the board outline any
    // number of times, and each time the whole of it is cleaned up. Beyond this it is cleaned up once more,
    // at the end.
    std::size_t boardCleanUpWork = 50'000'000;
};

} // namespace EDA
