// Outlines inside an outline of many edges.
#include "model/Enclosure.h"

#include <algorithm>
#include <cmath>

namespace EDA {

bool Enclosure::encloses(EDAOutline const &inner) {
    EDAOutline::PointList const &edge = outer_->getPoints(true);
    if (edge.size() < manyEdges) return outer_->enclosesOutline(inner);
    Geometry::Bound2D const &bound = outer_->getBound();
    if (!bound.contains(inner.getBound())) return false;
    if (!edges_) edges_.emplace(edge);
    EDAOutline::PointList const &points = inner.getPoints(true);
    return points.size() >= 3 && std::all_of(points.begin(), points.end(), [&](auto const &point) {
               return bound.contains(point.first, point.second) &&
                      edges_->contains(point.first, point.second);
           });
}

} // namespace EDA
