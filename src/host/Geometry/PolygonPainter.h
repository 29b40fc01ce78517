// Many polygons painted and erased one over the other.
#pragma once

#include "host/Geometry/ClippingEngine.h"

#include <cstddef>
#include <vector>

namespace Geometry {

// What is covered after a series of polygons was painted and others were erased, in order.
//
// Painting alone gives the union: the same contours as `gpc_polygon_clip` with GPC_UNION gives for one
// polygon after the other, but in n log n for all together. Work is done as polygons come, so that a caller
// can ask between them whether to go on.
//
// A polygon is given by its contours: a place is inside that an odd number of them enclose. They may cross
// and touch themselves and each other and run in any direction.
//
// Throws std::invalid_argument for a coordinate that is not finite, and std::length_error for a polygon that
// crosses itself too often (see `gpc_polygon_clip`); such a polygon counts as not given. Painted polygons
// that cross each other too often stay as they are, and the result then has contours that overlap; erased
// ones that do make the operation after them throw std::length_error.
class PolygonPainter {
public:
    using Contour = Clip::Contour;

    void paint(std::vector<Contour> const &polygon);
    void erase(std::vector<Contour> const &polygon);

    // The contours of what is covered, as told at `gpc_polygon_clip`; the painter is empty afterwards.
    std::vector<Contour> finish();

private:
    using Contours = std::vector<Contour>;

    // Clean contours in which outers run anticlockwise and holes clockwise, of one polygon after the other.
    struct Heap {
        Contours contours;
        std::size_t vertices = 0;

        void add(Contours polygon);
    };

    void settlePainted();
    void settleErased();
    void mergeLayers(bool all);

    struct Layer {
        int level;
        Contours contours;
    };
    std::vector<Layer> layers_; // their union is what is covered, but for the heaps
    Heap painted_;              // to be added
    Heap erased_;               // to be taken away, once `painted_` is empty
};

} // namespace Geometry
