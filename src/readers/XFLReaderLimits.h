// What one read of an XFL file takes in at most, far above any real design.
#pragma once

#include <cstddef>

namespace EDA {

// Each counts for one file. What is beyond is left out, with one line of error text for each limit.
struct XFLReaderLimits {
    // Points of outlines, an arc counting as the points that it is cut into, and a point that repeats the one
    // before it as well: a row can place a shape of any size.
    std::size_t points = 50'000'000;

    // Parameters of shapes, which are kept as text.
    std::size_t parameters = 100'000'000;

    // Layers, shapes, kinds of vias, parts, placements, vias, and outlines of copper.
    std::size_t items = 10'000'000;

    // Body outlines that a component gets from the rows of its layers: each edge makes one for each of them.
    std::size_t bodyLayers = 100'000;

    // Bytes of names and materials that many items take from one row, without the first sharedTextStart of
    // each.
    std::size_t sharedText = 256u << 20;
    static constexpr std::size_t sharedTextStart = 64;
};

} // namespace EDA
