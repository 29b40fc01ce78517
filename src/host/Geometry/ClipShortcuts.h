// Clippings whose result can be told without making a plane graph.
#pragma once

#include "host/Geometry/Bound2D.h"
#include "host/Geometry/ClippingEngine.h"

#include <cstddef>
#include <vector>

namespace Geometry {
namespace Clip {

// A contour of the input, in the arrays of an engine.
struct Outline {
    Vec2T<double> const *points;
    std::size_t count;
    Engine::Operand operand;
};

// Whether the contour is a convex polygon so clearly that clipping would not touch it: each
// vertex stands off the edges that it does not end by many cells.
bool isClearlyConvex(Outline const &outline, Frame const &frame);

// Gives the result of an operation, and true, when all that counts are a few clearly convex
// contours apart from each other; they pass unchanged but for direction and first vertex.
// Else gives false, and nothing.
bool clipApart(std::vector<Outline> const &outlines, Inside::Operation operation, Frame const &frame,
               std::vector<Contour> &result);

} // namespace Clip
} // namespace Geometry
