// Reading outlines and sizes of entities.
#include "host/EntityCore/PartFootprint.h"

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"
#include "host/Geometry/Transform.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace EntityGUI {

namespace {

using EntityModel::AttributePath;
using EntityModel::DoubleListAttribute;
using EntityModel::Entity;
using EntityModel::TypeRef;
using Form = PartFootprint::Form;
using Geometry::Bound2D;
using Geometry::Polygon2D;

constexpr double pi = Geometry::Transform::pi;
constexpr double missing = std::numeric_limits<double>::quiet_NaN();

DoubleListAttribute const *readList(Entity const &entity, TypeRef const &label) {
    EntityModel::Attribute const *const attribute = entity.readAttribute(label);
    bool const isList = attribute && attribute->isDoubleListAttribute();
    return isList ? static_cast<DoubleListAttribute const *>(attribute) : nullptr;
}

PartFootprint withExtent(Form form, Bound2D const &bound) {
    PartFootprint result;
    double const width = bound.getXSize(), depth = bound.getYSize();
    if (!(width > 0.0) || !(depth > 0.0) || !std::isfinite(width) || !std::isfinite(depth)) return result;
    result.form = form;
    result.xLow = bound.getXLow();
    result.zLow = bound.getYLow();
    result.xHigh = bound.getXHigh();
    result.zHigh = bound.getYHigh();
    return result;
}

PartFootprint readBox(Entity const &entity) {
    double const width = getStandardDoubleValue(&entity, EntityModel::Width_t, missing);
    double const length = getStandardDoubleValue(&entity, EntityModel::Length_t, missing);
    double const depth = getStandardDoubleValue(&entity, EntityModel::Depth_t, length);
    return withExtent(Form::Box, Bound2D(0.0, 0.0, width, depth));
}

PartFootprint readCircle(Entity const &entity, AttributePath const &diameter) {
    double const radius = 0.5 * getStandardDoubleValue(&entity, diameter, missing);
    return withExtent(Form::Circle, Bound2D(-radius, -radius, radius, radius));
}

template <typename Visit> int forEachPair(DoubleListAttribute const *list, Visit const &visit) {
    int const pairs = list ? list->getSize() / 2 : 0;
    for (int i = 0; i < pairs; ++i)
        visit(list->getNthStandardValue(2 * i), list->getNthStandardValue(2 * i + 1));
    return pairs;
}

PartFootprint readOutline(Entity const &entity) {
    Bound2D bound;
    int const points = forEachPair(readList(entity, EntityModel::Outline_t),
                                   [&bound](double x, double z) { bound.unite(x, z); });
    // A component that only holds bodies has no outline of its own: what counts is the size of what it holds.
    bool const isContainer = points == 0 && getTypeValue(&entity, EntityModel::Modelling_Level_t,
                                                         TypeRef()) == EntityModel::Detailed_t;
    if (isContainer) return readBox(entity);
    return points < 3 ? PartFootprint() : withExtent(Form::Polygon, bound);
}

PartFootprint readShaped(Entity const &entity, PartRule const &rule) {
    TypeRef const shape = getTypeValue(&entity, EntityModel::Shape_t, EntityModel::Rectangle_t);
    if (shape == EntityModel::Polygon_t) return readOutline(entity);
    if (shape == EntityModel::Cylinder_t) return readCircle(entity, rule.diameter);
    return readBox(entity);
}

// A single circle, or the box around many of them.
PartFootprint readRound(Entity const &entity, PartRule const &rule) {
    TypeRef const modelling = getTypeValue(&entity, EntityModel::Modelling_Type_t, TypeRef());
    if (modelling == EntityModel::Multiple_Vias_t) return readBox(entity);
    if (!(modelling == EntityModel::Multiple_Bumps_t)) return readCircle(entity, rule.diameter);

    double const radius = 0.5 * getStandardDoubleValue(&entity, rule.diameter, missing);
    Bound2D bound;
    forEachPair(readList(entity, EntityModel::Instance_Placements_t), [&bound, radius](double x, double z) {
        bound.unite(x - radius, z - radius);
        bound.unite(x + radius, z + radius);
    });
    PartFootprint result = withExtent(Form::Box, bound);
    result.placedByOwner = true;
    return result;
}

Polygon2D makeCircle(PartFootprint const &circle) {
    constexpr double deviation = 1e-6;
    double const radius = circle.radius();
    double const turn = std::acos(std::max(-1.0, 1.0 - deviation / radius));
    // In quarters, so that the extent is that of the circle.
    int const quarter = static_cast<int>(std::clamp(std::ceil(pi / 4.0 / turn), 8.0, 256.0));
    Polygon2D polygon;
    polygon.reserve(static_cast<std::size_t>(4 * quarter));
    for (int i = 0; i < 4 * quarter; ++i) {
        double const angle = pi / 2.0 * i / quarter;
        polygon.addPoint(circle.xMiddle() + radius * std::cos(angle),
                         circle.zMiddle() + radius * std::sin(angle), false);
    }
    return polygon;
}

} // namespace

PartFootprint readFootprint(Entity const &entity, PartRule const &rule) {
    switch (rule.form) {
    case PartForm::None:
        break;
    case PartForm::Shaped:
        return readShaped(entity, rule);
    case PartForm::Round:
        return readRound(entity, rule);
    }
    return PartFootprint();
}

Polygon2D makePolygon(Entity const &entity, PartFootprint const &footprint) {
    if (footprint.form == Form::Circle) return makeCircle(footprint);
    Polygon2D polygon;
    if (footprint.form == Form::Polygon) {
        DoubleListAttribute const *const outline = readList(entity, EntityModel::Outline_t);
        polygon.reserve(static_cast<std::size_t>(outline ? outline->getSize() / 2 : 0));
        forEachPair(outline, [&polygon](double x, double z) { polygon.addPoint(x, z, true); });
    } else if (footprint.form == Form::Box) {
        polygon.addPoint(footprint.xLow, footprint.zLow, false);
        polygon.addPoint(footprint.xHigh, footprint.zLow, false);
        polygon.addPoint(footprint.xHigh, footprint.zHigh, false);
        polygon.addPoint(footprint.xLow, footprint.zHigh, false);
    }
    return polygon;
}

} // namespace EntityGUI
