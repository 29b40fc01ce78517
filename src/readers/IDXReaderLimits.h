// What one read of an IDX file takes in at most, far above any real design.
#pragma once

#include "readers/XmlLimits.h"

#include <cstddef>

namespace EDA {

struct IDXReaderLimits {
    // A document beyond any of these counts as one that does not parse.
    XmlLimits xml;

    // Composite curves within composite curves. A curve that is nested deeper counts as not found.
    std::size_t curveDepth = 64;

    // Curves that one shape element looks up. The curve beyond counts as not found and ends the element: a
    // few composite curves that name each other twice would otherwise double at each level.
    std::size_t curvesPerElement = 1'000'000;

    // Per file, each with one line of error text, after which the rest is left out.
    std::size_t points = 50'000'000;  // of outlines, an arc counting as the points that it is cut into
    std::size_t outlines = 2'000'000; // traces and inner outlines
    std::size_t lookUps = 20'000'000; // of shapes, shape elements and curves, long ids counting several times

    std::size_t textBytes = 256u << 20; // of names that many parts take from one element

    // Lines and bytes of the error text; lines beyond are counted.
    std::size_t messages = 1'000;
    std::size_t messageBytes = 16u << 20;
};

} // namespace EDA
