// Board holes, holes in solids, and keepouts.
#include "import/EDAImporterDetail.h"

#include <optional>

namespace EDA {

using namespace EntityModel;

namespace {

constexpr double minHoleArea = 1e-12; // A hole with less is not valid, in square board units.

// The entity type of a hole, by the type of the parent itself.
std::optional<TypeRef> holeTypeIn(const Entity &parent) {
    if (parent.getType() == Substrate_t) return Substrate_Hole_t;
    if (parent.getType() == PCB_t) return PCB_Hole_t;
    return std::nullopt;
}

} // namespace

EDAImporter::Shape EDAImporter::recogniseShape(const EDAOutline &outline, int minPoints,
                                               double tolerance) const {
    outline.setModelDimension(modelDimension_);
    Shape shape;
    double xLow = 0.0, yLow = 0.0, xHigh = 0.0, yHigh = 0.0;
    if (options_.simplifyShapes && outline.isRectangle(xLow, yLow, xHigh, yHigh)) {
        shape.kind = Shape::Rectangle;
        shape.width = xHigh - xLow;
        shape.depth = yHigh - yLow;
        shape.x = xLow;
        shape.y = yHigh;
    } else if ((options_.simplifyShapes || outline.numPoints() < 3) &&
               isRound(outline, shape.x, shape.y, shape.diameter, minPoints, tolerance)) {
        shape.kind = Shape::Cylinder;
    }
    return shape;
}

void EDAImporter::setShape(Entity *entity, const Shape &shape, const EDABoard &board) {
    static const char *const names[] = {"Rectangle", "Cylinder", "Polygon"};
    EntityEditor::setValue(entity, Shape_t, names[shape.kind], true);
    if (shape.kind == Shape::Rectangle) {
        setLength(entity, Width_t, shape.width, board);
        setLength(entity, Depth_t, shape.depth, board);
    } else if (shape.kind == Shape::Cylinder) {
        setLength(entity, Diameter_t, shape.diameter, board);
    }
}

bool EDAImporter::addHole(Entity *parent, const EDAOutline &outline, const EDABoard &board, double offsetX,
                          double offsetY, double orientation) const {
    if (outline.getArea() < minHoleArea || !parent) return false;
    const std::optional<TypeRef> type = holeTypeIn(*parent);
    Entity *const hole = !type ? nullptr
                               : EntityEditor::createEntity(*type, parent, AttributePath(Holes_t), nullptr,
                                                            !boardEntityCreated_, true, false, "", -1);
    // Intended: a hole that cannot be made is not a bad outline, and is not counted as one.
    if (!hole) return true;

    const bool onSubstrate = parent->getType() == Substrate_t;
    const Shape shape = recogniseShape(outline, conversionOptions_.holeMinPoints,
                                       onSubstrate ? conversionOptions_.substrateHoleTolerance
                                                   : conversionOptions_.holeTolerance);
    setShape(hole, shape, board);
    double x = offsetX + mapX(shape.x);
    double y = offsetY + mapY(shape.y);
    if (shape.kind == Shape::Polygon) {
        // A polygon is stored around the centre of its own bound.
        const MappedPoints mapped = mapPoints(outline);
        setOutlinePoints(hole, Outline_t, mapped.numbers(mapped.centreX(), mapped.centreY()),
                         board.getUnits());
        x = offsetX + mapped.centreX();
        y = offsetY + mapped.centreY();
    }
    setLocation(hole, x, mapZCoord(y), board);
    setNumber(hole, Orientation_t, orientation, "degrees");
    lockData(hole, {Geometry_t, Placement_t});
    return true;
}

bool EDAImporter::addSolidHole(Entity *parent, const std::string &holeType, const std::string &holeList,
                               const EDAOutline &outline, const EDABoard &board, double refX,
                               double refY) const {
    if (outline.getArea() < minHoleArea) return false;
    Entity *const hole = EntityEditor::createEntity(TypeRef(holeType), parent, AttributePath(holeList),
                                                    nullptr, false, true, false, "", -1);
    if (!hole) return false;
    EntityEditor::setValue(hole, Render_Style_t, "Invisible", true);
    const Shape shape =
        recogniseShape(outline, conversionOptions_.solidHoleMinPoints, conversionOptions_.solidHoleTolerance);
    setShape(hole, shape, board);
    double x = mapX(shape.x) - refX;
    double y = mapY(shape.y) - refY;
    if (shape.kind == Shape::Polygon) {
        const MappedPoints mapped = mapPoints(outline);
        setOutlinePoints(hole, Outline_t, mapped.numbers(refX, refY), board.getUnits());
        x = y = 0.0;
    }
    setLocation(hole, x, mapZCoord(y), board);
    lockData(hole, {Geometry_t, Placement_t});
    return true;
}

void EDAImporter::addKeepout(Entity *boardEntity, const EDAKeepout &keepout, const EDABoard &board) const {
    const bool isLeftOut = (keepout.isComponentKeepout() && !options_.importComponentKeepouts) ||
                           (keepout.isViaKeepout() && !options_.importViaKeepouts) ||
                           (keepout.isRoutingKeepout() && !options_.importRoutingKeepouts);
    if (isLeftOut) return;
    Entity *const entity =
        EntityEditor::createEntity(Board_Keepout_t, boardEntity, AttributePath(Keepouts_t), nullptr,
                                   !boardEntityCreated_, true, false, keepout.getName(), -1);
    if (!entity) return;

    const EDAOutline &outline = keepout.getOutline();
    const Shape shape =
        recogniseShape(outline, conversionOptions_.keepoutMinPoints, conversionOptions_.keepoutTolerance);
    setShape(entity, shape, board);
    double x = mapX(shape.x);
    double y = mapY(shape.y);
    if (shape.kind == Shape::Polygon) {
        const MappedPoints mapped = mapPoints(outline);
        setOutlinePoints(entity, Outline_t, mapped.numbers(0.0, 0.0), board.getUnits());
        x = y = 0.0;
    }
    setLocation(entity, x, mapZCoord(y), board);
    setKeepoutKind(entity, keepout);
    setLength(entity, "Height", keepout.getHeight(), board);
    const char *const side = keepout.isOnBoardTop() ? "Top" : keepout.isOnBoardBottom() ? "Bottom" : "Both";
    EntityEditor::setValue(entity, Board_Side_t, side, true);
    lockData(entity, {Geometry_t, Placement_t});
}

// A keepout of an unknown kind leaves the attribute as a new entity has it.
void EDAImporter::setKeepoutKind(Entity *entity, const EDAKeepout &keepout) {
    const char *const kind = keepout.isComponentKeepout() ? "Components"
                             : keepout.isViaKeepout()     ? "Vias"
                             : keepout.isRoutingKeepout() ? "Routing"
                                                          : nullptr;
    if (kind) EntityEditor::setValue(entity, Keepout_Type_t, kind, true);
}

} // namespace EDA
