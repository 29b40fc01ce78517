// The place of a shape and containment in the root frame.
#include "host/Geometry/Geometry.h"

namespace Geometry {

Geometry::Geometry(Transform const &localToWorld)
    : localToWorld_(localToWorld), worldToLocal_(localToWorld.inverse()) {}

bool Geometry::contains(double x, double y, double z, bool &onSurface, double tolerance) const {
    Vec3T<double> point(x, y, z);
    worldToLocal_.transform(point);
    return containsLocal(point, onSurface, tolerance);
}

} // namespace Geometry
