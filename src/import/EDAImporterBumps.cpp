// Solder bumps of a package.
#include "import/EDAImporterDetail.h"

#include <cmath>

namespace EDA {

using namespace EntityModel;

namespace {

// Intended: all bumps that are there count, copies too, so that no two get one number.
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
    setLocation(entity, mapX(bump.getXCentre()) - offsetX, mapZCoord(mapY(bump.getYCentre()) - offsetY),
                board);
    setLength(entity, Y_Location_t, bump.getVerticalOffset(), board);
    if (!bump.getMaterial().empty()) {
        EntityEditor::setValue(entity, Filled_t, "Yes", true);
        attachDefaultMaterial(entity, "", bump.getMaterial(), MaterialLink_t, true);
    }

    std::vector<Entity *> copies;
    if (!options_.groupIdenticalBumps) {
        copies = copyInstances(entity, parent, bump, board, offsetX, offsetY);
    } else if (bump.numInstances() > 0) {
        groupInstances(entity, bump, board, offsetX, offsetY);
    }
    lockData(entity, {Geometry_t, Placement_t});
    for (Entity *copy : copies)
        lockData(copy, {Geometry_t, Placement_t});
}

// The places of all in one text. One that is no number would spoil the text, and with it the places of the
// others: so it is left out.
void EDAImporter::groupInstances(Entity *entity, const EDABump &bump, const EDABoard &board, double offsetX,
                                 double offsetY) const {
    EntityEditor::setValue(entity, Modelling_Type_t, Multiple_Bumps_t.getLabel(), true);
    std::string points;
    const auto append = [&](double centreX, double centreY) {
        const double x = mapX(centreX) - offsetX;
        const double z = mapZCoord(mapY(centreY) - offsetY);
        if (std::isfinite(x) && std::isfinite(z)) appendOutlinePoint(points, x, z);
    };
    append(bump.getXCentre(), bump.getYCentre());
    const int count = static_cast<int>(bump.numInstances());
    for (int i = 0; i < count; ++i)
        append(bump.getInstanceXCentre(i), bump.getInstanceYCentre(i));
    if (points.empty()) return;
    EntityEditor::setValue(entity, Instance_Placements_t, outlineValue(points, board.getUnits()), true);
}

std::vector<EDAImporter::Entity *> EDAImporter::copyInstances(Entity *source, Entity *parent,
                                                              const EDABump &bump, const EDABoard &board,
                                                              double offsetX, double offsetY) const {
    std::vector<Entity *> copies;
    const int count = static_cast<int>(bump.numInstances());
    for (int i = 0; i < count; ++i) {
        Entity *const copy = EntityEditor::copyEntity(source, parent, parent->findAttribute(Bumps_t, false),
                                                      !boardEntityCreated_);
        if (!copy) continue;
        // Intended: the source takes the name of the instance and the copy keeps the one before, so that the
        // names stand in the order of the list from the second bump on, and the source has the last.
        EntityEditor::setValue(source, Name_t, bump.getInstanceName(i), true);
        setLocation(copy, mapX(bump.getInstanceXCentre(i)) - offsetX,
                    mapZCoord(mapY(bump.getInstanceYCentre(i)) - offsetY), board);
        copies.push_back(copy);
    }
    return copies;
}

} // namespace EDA
