// Containment in an upright cylinder.
#include "host/EntityCore/RoundGeometry.h"

#include <algorithm>
#include <cmath>

namespace EntityGUI {

RoundGeometry::RoundGeometry(double radius, double height, ::Geometry::Transform const &localToWorld)
    : Geometry(localToWorld), radius_(radius), height_(height) {
    ::Geometry::Bound bound;
    bound.unite(-radius, 0.0, -radius);
    bound.unite(radius, height, radius);
    setBound(bound);
}

bool RoundGeometry::containsLocal(::Geometry::Vec3T<double> const &point, bool &onSurface,
                                  double tolerance) const {
    double const aside = std::hypot(point.x, point.z) - radius_;
    double const above = std::max(-point.y, point.y - height_);
    // Below 0 inside.
    double const nearest = std::max(aside, above);
    double const distance = nearest > 0.0 ? std::hypot(std::max(aside, 0.0), std::max(above, 0.0)) : nearest;
    onSurface = distance == 0.0 || std::abs(distance) < tolerance;
    return distance <= 0.0 || onSurface;
}

} // namespace EntityGUI
