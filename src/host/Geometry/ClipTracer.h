// Joins the bounding edges of a plane graph into contours.
#pragma once

#include "host/Geometry/ClippingEngine.h"
#include "host/Geometry/ClipSweep.h"

#include <vector>

namespace Geometry {
namespace Clip {

// The contours around the regions that the sides tell of, in canonical order.
std::vector<Contour> traceContours(Grid const &grid, std::vector<Edge> const &edges,
                                   std::vector<Side> const &sides);

} // namespace Clip
} // namespace Geometry
