// Solder bumps of a package.
#include "import/EDAImporterDetail.h"

namespace EDA {

using namespace EntityModel;

namespace {

// Counted from the bumps that are there, copies included, so that no two get one number.
std::string unnamedBump(const Entity *parent) {
    const Attribute *const bumps = parent ? parent->readAttribute(AttributePath(Bumps_t)) : nullptr;
    const bool isList = bumps && bumps->isEntityList();
    const int count = isList ? static_cast<const EntityList *>(bumps)->size() : 0;
    return "Bump " + std::to_string(count + 1);
}

} // namespace

void EDAImporter::addBump(Entity *parent, const EDABump &bump, const EDABoard &board, double offsetX,
                          double offsetY) const {
    if (!options_.importBumps || bump.getBumpType() == 0) return;
    const std::string name = bump.getName().empty() ? unnamedBump(parent) : bump.getName();
    Entity *const entity = EntityEditor::createEntity(Bump_t, parent, AttributePath(Bumps_t), nullptr,
                                                      !boardEntityCreated_, true, false, name, -1);
    if (!entity) return;
    tellGeometryEditor(entity);
    EntityEditor::setValue(entity, Definition_t, Detailed_t.getLabel(), true);
    setLength(entity, "Max Diameter", bump.getMaxDiameter(), board);
    setLength(entity, "Top Diameter", bump.getTopDiameter(), board);
    setLength(entity, "Bottom Diameter", bump.getBottomDiameter(), board);
    setLength(entity, "Height", bump.getHeight(), board);
    const auto mappedX = [&](double x) { return mapX(x) - offsetX; };
    const auto mappedZ = [&](double y) { return mapZCoord(mapY(y) - offsetY); };
    setLocation(entity, mappedX(bump.getXCentre()), mappedZ(bump.getYCentre()), board);
    setLength(entity, Y_Location_t, bump.getVerticalOffset(), board);
    if (!bump.getMaterial().empty()) {
        EntityEditor::setValue(entity, Filled_t, "Yes", true);
        attachDefaultMaterial(entity, "", bump.getMaterial(), MaterialLink_t, true);
    }

    std::vector<Entity *> entities{entity};
    const int count = static_cast<int>(bump.numInstances());
    if (count > 0 && options_.groupIdenticalBumps) {
        EntityEditor::setValue(entity, Modelling_Type_t, Multiple_Bumps_t.getLabel(), true);
        std::string points;
        appendOutlinePoint(points, mappedX(bump.getXCentre()), mappedZ(bump.getYCentre()));
        for (int i = 0; i < count; ++i) {
            appendOutlinePoint(points, mappedX(bump.getInstanceXCentre(i)),
                               mappedZ(bump.getInstanceYCentre(i)));
        }
        EntityEditor::setValue(entity, Instance_Placements_t, outlineValue(points, board.getUnits()), true);
    }
    for (int i = 0; i < count && !options_.groupIdenticalBumps; ++i) {
        Entity *const copy = EntityEditor::copyEntity(entity, parent, parent->findAttribute(Bumps_t, false),
                                                      !boardEntityCreated_);
        if (!copy) continue;
        // Intended: the source takes the name of the instance and the copy keeps the one before, so that the
        // names stand in the order of the list from the second bump on, and the source has the last.
        EntityEditor::setValue(entity, Name_t, bump.getInstanceName(i), true);
        setLocation(copy, mappedX(bump.getInstanceXCentre(i)), mappedZ(bump.getInstanceYCentre(i)), board);
        entities.push_back(copy);
    }
    for (Entity *made : entities)
        lockData(made, {Geometry_t, Placement_t});
}

} // namespace EDA
