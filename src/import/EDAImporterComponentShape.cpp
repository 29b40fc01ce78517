// The shape of a component, and what its location is measured to.
#include "host/Geometry/Transform.h"
#include "import/EDAImporterComponentDetail.h"

#include <algorithm>

namespace EDA {

using namespace EntityModel;

namespace {

bool isSocket(const Type &type) {
    return type == Daughter_Board_Socket_t || type == Cable_Socket_t || type == Chip_Socket_t;
}

// The extents of the point pairs of an entity's outline; false, and the sizes as they were, without a pair.
bool readOutlineSize(const Entity &entity, const std::string &units, double &width, double &depth) {
    const Attribute *const attribute = entity.readAttribute(Outline_t);
    if (!attribute || !attribute->isDoubleListAttribute()) return false;
    const auto &outline = static_cast<const DoubleListAttribute &>(*attribute);
    double low[] = {1e12, 1e12};
    double high[] = {-1e12, -1e12};
    const int numPairs = outline.getSize() / 2;
    for (int i = 0; i < 2 * numPairs; ++i) {
        const double value = outline.getNthStandardValue(i, units);
        low[i % 2] = std::min(low[i % 2], value);
        high[i % 2] = std::max(high[i % 2], value);
    }
    if (numPairs == 0) return false;
    width = high[0] - low[0];
    depth = high[1] - low[1];
    return true;
}

// What a library entity brings as its own size; else the sizes stay.
void readOwnSize(const Entity &entity, const std::string &units, double &width, double &depth) {
    const TypeRef shape = getTypeValue(&entity, Shape_t, TypeRef());
    if (shape == Rectangle_t) {
        const AttributePath label = entity.readAttribute(Depth_t) ? Depth_t : Length_t;
        width = getDoubleValue(&entity, Width_t, units, width);
        depth = getDoubleValue(&entity, label, units, depth);
    } else if (shape == Polygon_t) {
        readOutlineSize(entity, units, width, depth);
    }
}

} // namespace

void EDAImporter::readOutline(Placing &placing) {
    std::shared_ptr<OutlineFacts> &facts = outlineFacts_[&placing.component];
    if (!facts) facts = std::make_shared<OutlineFacts>(readOutlineFacts(placing.component, placing.board));
    placing.facts = facts.get();
    placing.useRect = facts->isRectangle;
    placing.isCylinder = facts->isCylinder;
    placing.width = facts->xHigh - facts->xLow;
    placing.depth = facts->yHigh - facts->yLow;
}

EDAImporter::OutlineFacts EDAImporter::readOutlineFacts(const EDAComponent &component,
                                                        const EDABoard &board) const {
    const EDAOutline &outline = component.getOutline();
    outline.setModelDimension(modelDimension_);
    OutlineFacts facts;
    facts.units = getComponentUnits(component, board);
    facts.isRectangle =
        outline.isRectangle(facts.xLow, facts.yLow, facts.xHigh, facts.yHigh) && options_.simplifyShapes;
    facts.isCylinder = !facts.isRectangle && (options_.simplifyShapes || outline.numPoints() < 3) &&
                       isRound(outline, facts.centreX, facts.centreY, facts.diameter,
                               conversionOptions_.componentMinPoints, conversionOptions_.componentTolerance);
    return facts;
}

// What shapes the type of the entity can take.
void EDAImporter::decideShape(Placing &placing) {
    const Attribute *const attribute = placing.entity->readAttribute(Shape_t);
    if (!attribute || attribute->kind() != AttributeKind::Choice) {
        placing.forceBound = true;
        return;
    }
    const auto &shape = static_cast<const ChoiceAttribute &>(*attribute);
    if (shape.indexOfChoice("Cylinder") < 0) placing.isCylinder = false;
    const bool needsPolygon = !placing.isCylinder && !placing.useRect;
    placing.forceBound = isSocket(placing.entity->getType()) ||
                         (needsPolygon && shape.indexOfChoice("Polygon") < 0) ||
                         (placing.isFromLibrary && shape.isValue(Rectangle_t));
}

// A box is placed by the low-x, high-y corner that it has before it is turned about its centre. So the centre
// is taken to where it comes to lie on the board, and the corner from there. A library entity has a size of
// its own, and lies with its centre on that of the outline.
void EDAImporter::placeAsBox(Placing &placing) {
    double x = placing.facts->xLow + placing.width * 0.5;
    double y = placing.facts->yLow + placing.depth * 0.5;
    double z = 0.0;
    if (placing.isFromLibrary) {
        readOwnSize(*placing.entity, placing.facts->units, placing.width, placing.depth);
    }
    using Geometry::Transform;
    if (!placing.placement.isOnBoardTop())
        Transform::createRotation(180.0, Transform::YAxis).transform(x, y, z);
    Transform::createRotation(placing.placement.getAngle(true), Transform::ZAxis).transform(x, y, z);
    // Intended: numbers in the component's units are added to a place in the board's.
    placing.x += x - placing.width * 0.5;
    placing.y += y + placing.depth * 0.5;
    placing.useRect = true;
}

void EDAImporter::setComponentShape(Placing &placing) {
    Entity *const entity = placing.entity;
    const OutlineFacts &facts = *placing.facts;
    if (placing.useRect) {
        EntityEditor::setValue(entity, Shape_t, placing.isSolid() ? "Cuboid" : "Rectangle", true);
        setNumber(entity, Width_t, placing.width, facts.units);
        setNumber(entity, Depth_t, placing.depth, facts.units);
        if (entity->getType() != Daughter_Board_Socket_t) return;
        setNumber(entity, Length_t, placing.depth, facts.units);
        setNumber(entity, "Socket Depth", placing.component.getHeight() * 0.5, facts.units);
    } else if (placing.isCylinder) {
        EntityEditor::setValue(entity, Shape_t, "Cylinder", true);
        setNumber(entity, Diameter_t, facts.diameter, facts.units);
        // Intended: the centre counts only where the definition asks for it, and is mirrored but never
        // turned.
        if (!placing.component.resetCylinderOriginToCentre()) return;
        // Intended: in the component's units, and added to a place in the board's.
        placing.x += placing.placement.isOnBoardTop() ? facts.centreX : -facts.centreX;
        placing.y += facts.centreY;
    } else {
        setComponentOutline(placing);
    }
}

void EDAImporter::setComponentOutline(const Placing &placing) {
    EntityEditor::setValue(placing.entity, Shape_t, "Polygon", true);
    const EDAOutline &outline = placing.component.getOutline();
    if (outline.getPoints(true).empty()) return;
    std::string &text = placing.facts->text;
    if (text.empty()) text = outlineText(outline, placing.facts->units);
    EntityEditor::setValue(placing.entity, Outline_t, text, true, nullptr, true, true);
}

} // namespace EDA
