// Seeded shapes for measuring polygon clipping, and areas to judge its results by.
#pragma once

#include "BenchRandom.h"
#include "host/Geometry/ClippingEngine.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace EDABench {

using Points = std::vector<Geometry::Vec2T<double>>;
using Shape = std::vector<Points>;
using Operation = Geometry::Clip::Inside::Operation;
using Fill = Geometry::Clip::Inside::Fill;

// Circles of 36 points and radius 1, spread so that each overlaps a few others.
Shape overlappingCircles(int count, unsigned seed);

// Rectangles in rows and columns, all apart.
Shape separateRectangles(int count, unsigned seed);

// Rectangles of one unit that share their edges with their neighbours.
Shape touchingRectangles(int count);

// One or two contours with vertices on a grid of `places` by `places` whole numbers: edges
// coincide, contours touch and cross themselves. With `steps` all edges are axis-parallel.
Shape degenerateShape(Random &random, int places, bool steps);

// Sum of the signed areas of the contours.
double areaOf(Shape const &shape);

// The area that the operation must leave of even-odd filled shapes with axis-parallel
// edges between whole numbers from 0 to `places`: counts the unit cells that are inside.
double areaByCells(Operation operation, Shape const &subject, Shape const &clip, int places);

// The same for edges of any direction, by adding up trapezia between all heights at which
// edges end or cross. Quadratic and slow, but with nothing in common with any engine.
double areaBySlabs(Operation operation, Shape const &subject, Shape const &clip);

} // namespace EDABench
