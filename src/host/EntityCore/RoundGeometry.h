// An exact upright cylinder.
#pragma once

#include "host/Geometry/Geometry.h"

namespace EntityGUI {

// A cylinder about the Y axis of its own frame, from Y = 0 up. Vias come in millions, and a polygon of the
// same accuracy would take a hundred times the memory.
class RoundGeometry final : public Geometry::Geometry {
public:
    RoundGeometry(double radius, double height, ::Geometry::Transform const &localToWorld);

private:
    bool containsLocal(::Geometry::Vec3T<double> const &point, bool &onSurface,
                       double tolerance) const override;

    double radius_;
    double height_;
};

} // namespace EntityGUI
