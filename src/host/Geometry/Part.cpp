// Boxes of a built part and the way between the frames of two parts.
#include "host/Geometry/Part.h"

#include <utility>

namespace Geometry {

Part::Part(EntityModel::Entity *entity, std::unique_ptr<Geometry> geometry, Part const *parent)
    : entity_(entity), geometry_(std::move(geometry)), parent_(parent) {}

Part::~Part() = default;

Bound Part::getBound() const {
    Bound const &own = geometry_->getBound();
    Bound result;
    if (!own.isValid()) return result;
    for (int corner = 0; corner < 8; ++corner) {
        Vec3T<double> point((corner & 1) != 0 ? own.getXHigh() : own.getXLow(),
                            (corner & 2) != 0 ? own.getYHigh() : own.getYLow(),
                            (corner & 4) != 0 ? own.getZHigh() : own.getZLow());
        geometry_->getTransform().transform(point);
        result.unite(point.x, point.y, point.z);
    }
    return result;
}

void Part::getRealUntransformedBound(Bound &bound) const { bound = geometry_->getBound(); }

Transform Part::transformToThisCoordinateSystem(Part const *other) const {
    Transform const toThis = geometry_->getTransform().inverse();
    return other == nullptr ? toThis : Transform::multiply(toThis, other->geometry_->getTransform());
}

} // namespace Geometry
