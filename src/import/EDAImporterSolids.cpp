// Components that are made of several solids, and the molds of packages.
#include "import/EDAImporterDetail.h"

#include <algorithm>

namespace EDA {

using namespace EntityModel;

namespace {

// Anything less was not given. Today no definition ever has a height: its setter sets the width.
constexpr double minMoldHeight = 1e-9;

double highZ(const EDAOutline &outline) {
    double low = 0.0, high = 0.0;
    outline.getZDimensions(low, high);
    return high;
}

} // namespace

void EDAImporter::addMultiBody(Entity *entity, const EDAComponent &component, const EDABoard &board,
                               bool useRect, double &x, double &y) const {
    const EDAOutline &outline = component.getOutline();
    const std::string units = getComponentUnits(component, board);
    EntityEditor::setValue(entity, Modelling_Level_t, "Detailed", true);
    EntityEditor::setValue(entity, Render_Style_t, "Invisible", true);
    Geometry::Bound2D bound;
    outline.getOverallBound(bound);
    setNumber(entity, Width_t, bound.getXSize(), units);
    setNumber(entity, Depth_t, bound.getYSize(), units);
    Entity *const group = bodyGroup(entity);
    if (!group) return;
    EntityEditor::setValue(entity, Name_t, component.getName(), true);
    clearObstructions(group);

    double top = 0.0;
    if (component.hasGeometry()) {
        Entity *const body = addBody(group, "", outline, units, board, useRect);
        attachDefaultMaterial(body, "", outline.getMaterial(), MaterialLink_t, false);
        top = highZ(outline);
    }
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner) {
        if (inner->isHole()) continue;
        inner->setModelDimension(modelDimension_);
        Entity *const body = addBody(group, inner->getName(), *inner, units, board, useRect);
        cutBody(body, *inner, board);
        attachDefaultMaterial(body, "", inner->getMaterial(), MaterialLink_t, false);
        top = std::max(top, highZ(*inner));
    }
    setNumber(entity, "Height", top, units);

    // The group goes back by what the container moves, so that the solids of a container without an outline
    // of its own stay where they are. Intended: those of one that has its own outline are displaced by its
    // low corner, from which this host measures what is inside. The shift of the group is fixed, and its
    // numbers are what users of the format expect. Intended too: the bound, which is in the component's
    // units, counts here as in the board's.
    x += bound.getXLow();
    y -= bound.getYLow();
    setLocation(group, -bound.getXLow(), -bound.getYLow(), board);
}

// The group that holds the solids of a component; null where there can be none.
EDAImporter::Entity *EDAImporter::bodyGroup(Entity *component) const {
    const Attribute *const groups = component->readAttribute(AttributePath(SubcomponentGroups_t));
    if (!groups || !groups->isEntityList()) return nullptr;
    Entity *const first = static_cast<const EntityList *>(groups)->at(0);
    if (first) return first;
    return EntityEditor::createEntity(Subcomponent_Group_t, component, AttributePath(SubcomponentGroups_t),
                                      nullptr, !boardEntityCreated_, true, false, "", -1);
}

EDAImporter::Entity *EDAImporter::addBody(Entity *group, const std::string &name, const EDAOutline &outline,
                                          const std::string &units, const EDABoard &board,
                                          bool useRect) const {
    Entity *const body = EntityEditor::createEntity(Solid_Obstruction_t, group, AttributePath(Obstructions_t),
                                                    nullptr, !boardEntityCreated_, true, false, name, -1);
    setSolidShape(body, outline, units, board, useRect);
    double low = 0.0, high = 0.0;
    outline.getZDimensions(low, high);
    setNumber(body, "Height", high - low, units);
    setNumber(body, "Y Location", low, units);
    return body;
}

// Intended: holes are measured from the board's origin and in the board's units, though the solid itself is
// measured from the component's origin and in its units.
void EDAImporter::cutBody(Entity *body, const EDAOutline &outline, const EDABoard &board) const {
    for (auto hole = outline.beginInternalOutlines(); hole != outline.endInternalOutlines(); ++hole) {
        if (hole->isHole()) addSolidHole(body, "Obstruction Hole", "Holes", *hole, board, 0.0, 0.0);
    }
}

// A rectangle stays a polygon: only circles are simplified here, and not in a component that is a box itself.
void EDAImporter::setSolidShape(Entity *solid, const EDAOutline &outline, const std::string &units,
                                const EDABoard &board, bool useRect) const {
    double x = 0.0, y = 0.0, diameter = 0.0;
    const bool isCylinder = !useRect && (options_.simplifyShapes || outline.numPoints() < 3) &&
                            isRound(outline, x, y, diameter, conversionOptions_.componentMinPoints,
                                    conversionOptions_.componentTolerance);
    if (isCylinder) {
        EntityEditor::setValue(solid, Shape_t, "Cylinder", true);
        // Intended: the diameter is in the component's units, and the centre counts as in the board's.
        setNumber(solid, Diameter_t, diameter, units);
        setLocation(solid, x, mapZCoord(y), board);
        return;
    }
    EntityEditor::setValue(solid, Shape_t, "Polygon", true);
    if (outline.getPoints(true).empty()) return;
    EntityEditor::setValue(solid, Outline_t, outlineText(outline, units), true, nullptr, true, true);
}

void EDAImporter::addMold(Entity *entity, const EDAComponent &component, const EDABoard &board) const {
    Entity *const mold = EntityEditor::createEntity(
        Solid_Obstruction_t, entity->getAncestor(Subcomponent_Group_t), AttributePath(Obstructions_t),
        nullptr, !boardEntityCreated_, true, false, "Mold", -1);
    if (!mold) return;
    EntityEditor::setValue(mold, Shape_t, "Cuboid", true);
    EntityEditor::setValue(mold, Type_t, "Encapsulant", true);
    setLength(mold, Width_t, component.getMoldWidth(), board);
    setLength(mold, Depth_t, component.getMoldLength(), board);
    const std::string units = getComponentUnits(component, board);
    const double height = component.getMoldHeight() > minMoldHeight
                              ? component.getMoldHeight()
                              : getDoubleValue(entity, Height_t, units, 0.0);
    setNumber(mold, "Height", height, units);
    EntityEditor::setValue(mold, Origin_Point_t, "Low Centre", true);
    // It stands around the die, turned like it.
    for (const TypeRef &attribute : {Y_Location_t, X_Location_t, Z_Location_t, Rotation_Mechanism_t,
                                     Rotation_Order_t, Angle_1_t, Angle_2_t}) {
        EntityEditor::setValue(mold, attribute, getPreciceStringValue(entity, attribute, ""), true);
    }
    attachDefaultMaterial(mold, "", component.getMoldMaterialName(), MaterialLink_t, false);
}

} // namespace EDA
