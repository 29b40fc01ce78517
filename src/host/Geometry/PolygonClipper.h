// Difference, intersection and union of two polygons with holes.
#pragma once

#include "host/Geometry/Polygon2D.h"

#include <vector>

namespace Geometry {

// Clipping of one polygon with holes by another.
//
// Each side is the even-odd inside of its polygon less the inside of each of its holes.
// Either may cross or touch itself, run in any direction, repeat points or be empty.
class PolygonClipper {
public:
    // Numbered unlike the `gpc_op` values: 2 is the union here. Given the same polygon on
    // both sides, the union resolves a self-touching one into clean polygons and holes.
    enum Operation { Difference = 0, Intersection = 1, Union = 2 };

    // Clips and replaces `polygons` by the outer contours and `holes` by the holes of the
    // result, which may be lists of the input; both are flat: the caller nests them by containment. Outers
    // run anticlockwise, holes clockwise, and each has its bounding box set. Vertices, order and touching
    // contours are as told at `gpc_polygon_clip`; a hole that touches its outer at a vertex is no hole but
    // part of one outer that touches itself.
    //
    // Gives false with both lists empty when the operation is unknown, a coordinate is not
    // finite, or the input crosses itself too often (see `gpc_polygon_clip`); true else,
    // also when nothing is left.
    static bool clipPolygon(Polygon2D const &subject, std::vector<Polygon2D> const &subjectHoles,
                            Polygon2D const &clip, std::vector<Polygon2D> const &clipHoles, int operation,
                            std::vector<Polygon2D> &polygons, std::vector<Polygon2D> &holes);
};

} // namespace Geometry
