// How large an outline is.
#pragma once

#include "model/EDAOutline.h"

#include <cstddef>

namespace EDA {

// The points that an outline stores, and those of all outlines within it.
inline std::size_t countPoints(const EDAOutline &outline) {
    std::size_t count = outline.numPoints();
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal)
        count += countPoints(*internal);
    return count;
}

// The same of their edges, with arcs cut into segments.
inline std::size_t countEdges(const EDAOutline &outline) {
    std::size_t count = outline.getPoints(true).size();
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal)
        count += countEdges(*internal);
    return count;
}

} // namespace EDA
