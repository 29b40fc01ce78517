// Shapes of entities as outlines.
#include "export/EDAExporter.h"

#include "host/EntityModel/Types.h"

#include <cmath>
#include <initializer_list>
#include <limits>
#include <utility>

namespace EDA {

using namespace EntityModel;

namespace {

constexpr double smallestTurn = 1e-6; // degrees
constexpr double missing = std::numeric_limits<double>::quiet_NaN();

// Five corners, closed, anticlockwise from the given one as long as the sizes are positive.
void addBox(EDAOutline &outline, int outlineIndex, double x, double y, double width, double depth) {
    const std::initializer_list<std::pair<double, double>> corners = {
        {x, y}, {x, y - depth}, {x + width, y - depth}, {x + width, y}, {x, y}};
    for (const auto &[cornerX, cornerY] : corners)
        outline.addPoint(outlineIndex, cornerX, cornerY, 0.0);
}

void closeOutline(EDAOutline &outline, int outlineIndex) {
    if (outlineIndex == 0) outline.makeClosed();
    if (outlineIndex > 0 && outlineIndex <= outline.numInternalOutlines())
        outline.beginInternalOutlines()[outlineIndex - 1].makeClosed();
}

} // namespace

void EDAExporter::exportShape(Entity *entity, EDAOutline &outline, int outlineIndex, double x, double y,
                              double angle, bool fromCentre) const {
    const TypeRef shape = getTypeValue(entity, Shape_t, Rectangle_t);
    if (shape == Polygon_t) {
        addPolygon(entity, outline, outlineIndex, x, y);
    } else if (shape == Cylinder_t) {
        addCylinder(entity, outline, outlineIndex, x, y);
    } else if (shape == Rectangle_t) {
        const double w = getDoubleValue(entity, Width_t, units_, missing);
        const double d = depth(entity, missing);
        if (std::isnan(w) || std::isnan(d)) return;
        if (fromCentre) {
            x -= w / 2.0;
            y += d / 2.0;
        }
        addBox(outline, outlineIndex, x, y, w, d);
    }
    if (std::abs(angle) > smallestTurn) outline.rotateInternalOutline(outlineIndex - 1, angle, x, y);
}

void EDAExporter::addPolygon(const Entity *entity, EDAOutline &outline, int outlineIndex, double x,
                             double y) const {
    const Attribute *const attribute = entity->readAttribute(Outline_t);
    if (!attribute || !attribute->isDoubleListAttribute()) return;
    const auto &list = static_cast<const DoubleListAttribute &>(*attribute);
    for (int i = 0; i + 1 < list.getSize(); i += 2) {
        const double px = list.getNthStandardValue(i, units_);
        const double pz = list.getNthStandardValue(i + 1, units_);
        outline.addPoint(outlineIndex, x + px, y - pz, 0.0);
    }
    closeOutline(outline, outlineIndex);
}

void EDAExporter::addCylinder(const Entity *entity, EDAOutline &outline, int outlineIndex, double x,
                              double y) const {
    const double d = length(entity, Diameter_t);
    if (getStandardDoubleValue(entity, Angle_To_Board_t, 0.0) > smallestTurn) {
        // On its side it covers a rectangle, from below its location on.
        addBox(outline, outlineIndex, x - d / 2.0, y - d / 2.0, d, length(entity, Height_t));
        return;
    }
    // A centre, and a point to which a whole turn leads: how an outline spells a circle.
    outline.addPoint(outlineIndex, x, y, 0.0);
    outline.addPoint(outlineIndex, x + d / 2.0, y, 360.0);
}

} // namespace EDA
