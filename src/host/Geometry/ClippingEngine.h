// The one engine behind all polygon clipping.
#pragma once

#include "host/Geometry/Bound2D.h"
#include "host/Geometry/ClipSweep.h"
#include "host/Geometry/Vec2T.h"

#include <cstddef>
#include <vector>

namespace Geometry {
namespace Clip {

// A closed contour, the first point not repeated.
struct Contour {
    std::vector<Vec2T<double>> points;
    bool hole = false;
};

// Clips two sets of contours. The result is as told at `gpc_polygon_clip`: exact input
// vertices, canonical order, regions that touch at vertices apart.
//
// Works in four steps on a fine integer grid: snap the vertices, make a plane graph of
// the edges, count windings on both sides of each edge by a sweep, and walk along the
// edges that have the result on one side. All steps are n log n for input whose crossings
// are not more than its edges. Which contour made an edge does not matter, so contours may
// touch and cross themselves without preparation. A few convex contours apart from each
// other, the everyday case of single shapes, are passed through instead.
class Engine {
public:
    enum Operand { Subject = 0, Clip = 1 };

    // The usual limits are for whole layers; a single outline gets by with less.
    explicit Engine(NodingLimits const &limits = NodingLimits()) : limits_(limits) {}

    // Adds a contour of points with members x and y. Throws std::invalid_argument for a
    // coordinate that is not finite.
    template <typename Point> void addContour(Operand operand, Point const *points, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            addPoint(points[i].x, points[i].y);
        endContour(operand);
    }

    // The result of what was added, which is forgotten. Throws std::length_error for input
    // with more crossings than memory and time allow.
    std::vector<Contour> run(Inside const &inside);

private:
    struct ContourEnd {
        std::size_t end;
        Operand operand;
    };

    void addPoint(double x, double y);
    void endContour(Operand operand);
    bool runShort(Frame const &frame, Inside const &inside, std::vector<Contour> &result) const;
    std::vector<Contour> runWhole(Frame const &frame, Inside const &inside) const;
    void makeEdges(Grid &grid, std::vector<Edge> &edges) const;

    NodingLimits limits_;
    std::vector<Vec2T<double>> points_;
    std::vector<ContourEnd> contours_;
    Bound2D bound_;
};

} // namespace Clip
} // namespace Geometry
