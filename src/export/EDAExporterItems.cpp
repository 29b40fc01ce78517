// Components with their placements, and keepouts.
#include "export/EDAExporter.h"

#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Units.h"
#include "host/Geometry/Part.h"

#include <cmath>
#include <utility>

namespace EDA {

using namespace EntityModel;

namespace {

constexpr double smallestTilt = 1e-6; // degrees

std::string textOf(const Entity *entity, const AttributePath &path) {
    return getPreciceStringValue(entity, path, std::string());
}

// Manufacturer and model. Intended: an entity that cannot have a model has no name either.
std::string componentName(const Entity *entity) {
    if (!entity->readAttribute(Model_t)) return std::string();
    std::string name = textOf(entity, Manufacturer_t);
    if (!name.empty()) name += ' ';
    return name + textOf(entity, Model_t);
}

bool isDetailed(const Entity *entity) {
    return getTypeValue(entity, Modelling_Level_t, TypeRef()) == Detailed_t;
}

// Is the outline drawn around the middle of the entity's rectangle?
bool isDrawnFromCentre(const Entity *entity) {
    return !isDetailed(entity) && getTypeValue(entity, Shape_t, Rectangle_t) == Rectangle_t;
}

bool isMeasuredFromSocketMiddle(const Entity *entity) {
    const TypeRef shape = getTypeValue(entity, Shape_t, TypeRef());
    return shape == Polygon_t || shape == Cylinder_t;
}

double angleOf(const Entity *entity) {
    if (!entity) return 0.0;
    const TypeRef &attribute = entity->getType() == Component_t ? Angle_t : Orientation_t;
    return getDoubleValue(entity, attribute, "degrees", 0.0);
}

double finiteOrZero(double value) { return std::isfinite(value) ? value : 0.0; }

} // namespace

void EDAExporter::addComponentAndPlacement(Entity *entity, const std::string &type, EDABoard &board,
                                           Entity *socket, double offsetX, double offsetY) const {
    EDAComponent component(type);
    component.setName(componentName(entity));
    component.setPartNumber(textOf(entity, Part_Number_t));
    component.setUnits(units_);
    component.setHeight(partHeight(entity));
    if (isDetailed(entity))
        exportDetailedBody(entity, component);
    else
        exportShape(entity, component.getOutline(), 0, -0.0, 0.0, 0.0, isDrawnFromCentre(entity));
    addProperties(entity, component);
    board.addComponent(component, true);

    EDAComponentPlacement placement;
    placement.setName(component.getName()); // As addComponent left it: a namesake may have got a number.
    placement.setPartNumber(component.getPartNumber());
    const std::string designator = textOf(entity, Reference_Designator_t);
    placement.setReferenceDesignator(designator.empty() ? "?" : designator);
    placement.setBoardSide(textOf(socket ? socket : entity, Board_Side_t));
    place(placement, entity, socket, offsetX, offsetY);
    placement.setStatus("PLACED");
    board.addComponentPlacement(std::move(placement));
}

// A cylinder that is tilted to the board is as high as it is thick.
double EDAExporter::partHeight(const Entity *entity) const {
    const Attribute *const tilt = entity->readAttribute(Angle_To_Board_t);
    const bool isTilted = tilt && !tilt->isDisabled() && tilt->getStandardValue() > smallestTilt;
    return length(entity, isTilted ? Diameter_t : Height_t);
}

// The box that the host built: what a component in detail consists of has no outline of its own.
void EDAExporter::exportDetailedBody(Entity *entity, EDAComponent &component) const {
    const EntityGUI::GeometryBuilder *const builder = EntityGUI::EntityManager::getGeometryBuilder();
    const Geometry::Part *const part = builder ? builder->getPart(entity) : nullptr;
    if (!part) return;
    Geometry::Bound bound;
    part->getRealUntransformedBound(bound);
    const auto inUnits = [unit = TypeRef(units_)](double size) {
        return UnitConverter::instance().convertFromSI(Length_t, size, unit);
    };
    const double halfWidth = inUnits(bound.getXSize()) / 2.0;
    const double halfDepth = inUnits(bound.getZSize()) / 2.0;
    component.setHeight(inUnits(bound.getYSize()));
    component.addPoint(0, -halfWidth, halfDepth, 0.0);
    component.addPoint(0, -halfWidth, -halfDepth, 0.0);
    component.addPoint(0, halfWidth, -halfDepth, 0.0);
    component.addPoint(0, halfWidth, halfDepth, 0.0);
    component.addPoint(0, -halfWidth, halfDepth, 0.0);
}

void EDAExporter::place(EDAComponentPlacement &placement, const Entity *entity, const Entity *socket,
                        double offsetX, double offsetY) const {
    const Entity *const halved = isDrawnFromCentre(entity)                      ? entity
                                 : socket && isMeasuredFromSocketMiddle(entity) ? socket
                                                                                : nullptr;
    offsetX += length(halved, Width_t) / 2.0;
    offsetY += depth(halved, 0.0) / 2.0;
    const double x = length(entity, X_Location_t) + offsetX + length(socket, X_Location_t);
    const double y = -(length(entity, Z_Location_t) + length(socket, Z_Location_t)) - offsetY;
    placement.setLocation(finiteOrZero(x), finiteOrZero(y));
    placement.setOffset(length(socket, Y_Location_t) + length(entity, Y_Location_t));
    const double turn = angleOf(socket) + angleOf(entity);
    placement.setAngle(finiteOrZero(placement.isOnBoardTop() ? turn : 360.0 - turn));
}

void EDAExporter::addKeepout(Entity *entity, const std::string &type, EDABoard &board, double offsetX,
                             double offsetY) const {
    EDAKeepout keepout(type);
    std::string name;
    keepout.setName(entity->getName(name));
    keepout.setHeight(length(entity, Height_t));
    const double x = entity->readAttribute(X_Location_t) ? length(entity, X_Location_t) + offsetX : 0.0;
    const double y =
        entity->readAttribute(Z_Location_t) ? mapZCoord(length(entity, Z_Location_t) + offsetY) : 0.0;
    exportShape(entity, keepout.getOutline(), 0, x, y, 0.0, false);
    keepout.setBoardSide(textOf(entity, Board_Side_t));
    board.addKeepout(keepout);
}

} // namespace EDA
