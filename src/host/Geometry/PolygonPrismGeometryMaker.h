// Outlines of thick lines, and prisms over polygons.
#pragma once

#include "host/Geometry/Geometry.h"
#include "host/Geometry/Polygon2D.h"

#include <memory>
#include <vector>

namespace Geometry {

class PolygonPrismGeometryMaker {
public:
    // The closed outline of a polyline drawn `width` wide, with flat ends that stop at the
    // end points and mitred corners; a corner whose mitre would reach further than
    // `mitreLimit` half widths is cut flat. The outline runs anticlockwise, the first point
    // not repeated at the end. It starts on the right side of the first point, unless the
    // line comes so near itself that the two sides meet: then it is the outer border of all
    // that the line covers, since one outline cannot tell the holes.
    //
    // Repeated points are passed over. Nothing comes out for fewer than two different
    // points, lists of different length, a width that is not above 0, a number that is not
    // finite, or a line that crosses itself too often to clip (see `gpc_polygon_clip`).
    // The results may not be the lists of the input.
    static void getThickPolylineOutline(std::vector<double> const &xs, std::vector<double> const &ys,
                                        double width, std::vector<double> &outXs, std::vector<double> &outYs);

    // A prism over `base` less `holes`, which lie in the x-z plane (a polygon's y is the
    // prism's z), from `yLow` to `yHigh`. `localToWorld` takes it to the root frame.
    static std::unique_ptr<Geometry> makePrism(Polygon2D base, std::vector<Polygon2D> holes, double yLow,
                                               double yHigh, Transform const &localToWorld);

    static constexpr double mitreLimit = 2.0;
};

} // namespace Geometry
