// Shapes of entities as paths on their board.
#pragma once

#include "host/EntityCore/PartPlacement.h"
#include "Path2D.h"

namespace EDATool {

// From the own frame of a board's shape, in metres with Z against y, to a picture's millimetres. They count
// from the low-X, low-Z corner of the shape, as the locations of all that is on the board do.
class BoardPlane {
public:
    BoardPlane() = default;
    explicit BoardPlane(const EntityGUI::PartFootprint &board) : xLow_(board.xLow), zLow_(board.zLow) {}

    Point toPicture(const Geometry::Vec3T<double> &point) const {
        return {(point.x - xLow_) * 1000.0, (zLow_ - point.z) * 1000.0};
    }

    // What is seen of an entity at its place in the board's frame; empty where it has no shape or its place
    // is not finite. A circle stays round. Of a part that leans, this is the convex hull of its shadow.
    Path pathOf(const EntityModel::Entity &entity, const EntityGUI::PartPlace &place) const;

    // A circle about a point of the part's own frame; empty where it has no size or no finite place.
    Path circleAt(const EntityGUI::PartPlace &place, double x, double z, double diameter) const;

private:
    double xLow_ = 0.0;
    double zLow_ = 0.0;
};

} // namespace EDATool
