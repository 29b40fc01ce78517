// The shape of an entity seen from above.
#pragma once

#include "host/EntityCore/PartRules.h"
#include "host/Geometry/Polygon2D.h"

namespace EntityModel {
class Entity;
}

namespace EntityGUI {

// What the attributes of an entity say about its shape in the X-Z plane, in metres, in its own frame. The
// points of a polygon are left where they are: only its extent is here.
struct PartFootprint {
    enum class Form { None, Box, Circle, Polygon };

    Form form = Form::None; // None: a size is missing or not above 0, or there are no three points
    double xLow = 0.0;
    double zLow = 0.0;
    double xHigh = 0.0;
    double zHigh = 0.0;

    bool placedByOwner =
        false; // its coordinates are those of the owner's children; the location adds nothing

    double xMiddle() const { return 0.5 * xLow + 0.5 * xHigh; }
    double zMiddle() const { return 0.5 * zLow + 0.5 * zHigh; }
    double radius() const { return 0.5 * (xHigh - xLow); }
};

PartFootprint readFootprint(EntityModel::Entity const &entity, PartRule const &rule);

// The footprint as a polygon whose y is Z. A circle becomes so many edges that none is further than a
// micrometre from it, but no more than 1024.
Geometry::Polygon2D makePolygon(EntityModel::Entity const &entity, PartFootprint const &footprint);

} // namespace EntityGUI
