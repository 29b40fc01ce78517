// One placement becomes one entity on the board.
#include "host/EntityCore/InstallationStatus.h"
#include "host/EntityModel/Undo.h"
#include "import/EDAImporterComponentDetail.h"

#include <iterator>

namespace EDA {

using namespace EntityModel;

// The order is load-bearing: the location depends on the shape, the shape on the type; properties change what
// a component of several solids was given; molds copy the place.
void EDAImporter::addComponent(Entity *boardEntity, const EDAComponent &component,
                               const EDAComponentPlacement &placement, const EDABoard &board) {
    if (!boardEntity || !placement.isPlaced() || !hasOutline(component)) return;

    Placing placing{boardEntity, component, placement, board};
    if (libraryInterface_ && !askLibrary(placing)) return;
    readOutline(placing);
    if (!placing.entity) placing.entity = createComponentEntity(placing);
    if (!placing.entity) return;
    // Types that can say so stay in the model as filtered; of others nothing is left.
    if (component.isFiltered() && !Geometry::InstallationStatus::doesItemHaveFilteredStatus(placing.entity)) {
        EntityEditor::deleteEntity(placing.entity, true, true);
        return;
    }
    const UndoStackDisabler noUndoSteps;
    decideShape(placing);
    placing.x = mapX(placement.getXLocation());
    placing.y = mapY(placement.getYLocation());
    if (placing.forceBound || placing.useRect) placeAsBox(placing);
    if (placing.isFromLibrary) {
        noteApproximation(placing);
    } else {
        fillBuiltComponent(placing);
    }
    describeComponent(placing);
    setComponentPlace(placing);
    finishComponent(placing);
}

void EDAImporter::fillBuiltComponent(Placing &placing) const {
    Entity *const entity = placing.entity;
    const EDAComponent &component = placing.component;
    EntityEditor::setValue(entity, Model_t, component.getName(), true);
    EntityEditor::setValue(entity, Part_Number_t, component.getPartNumber(), true);
    EntityEditor::setValue(entity, Manufacturer_t, component.getManufacturer(), true);
    if (placing.isComponent()) {
        EntityEditor::setValue(entity, Type_t, component.isElectrical() ? "Electrical" : "Mechanical", true);
    }
    if (component.getHeight() > 0.0) {
        setNumber(entity, "Height", component.getHeight(), placing.facts->units);
    } else if (placing.isSolid()) {
        EntityEditor::setValue(entity, Height_t, "1.5 mm", true);
    }
    setComponentShape(placing);
    if (component.getOutline().numInternalOutlines() > 0 && placing.isComponent()) {
        addMultiBody(entity, component, placing.board, placing.useRect, placing.x, placing.y);
    }
    lockData(entity, {Geometry_t});
}

void EDAImporter::describeComponent(const Placing &placing) {
    Entity *const entity = placing.entity;
    const EDAComponent &component = placing.component;
    addProperties(entity, component);
    addPowerValues(entity, component);
    const std::string &designator = placing.placement.getReferenceDesignator();
    EntityEditor::setValue(entity, Reference_Designator_t, designator, true);
    // Of several with one designator the last stands.
    placedComponents_[designator] = entity;
}

void EDAImporter::setComponentPlace(const Placing &placing) {
    Entity *const entity = placing.entity;
    const EDAComponentPlacement &placement = placing.placement;
    const double angle = placement.getAngle(true);
    // Angles are given without a unit: they are in that of the attribute, which is degrees in a new entity.
    setLocation(entity, placing.x, mapZCoord(placing.y), placing.board);
    setLength(entity, Y_Location_t, placement.getOffset(), placing.board);
    if (placing.isComponent()) {
        EntityEditor::setValue(entity, Rotation_Mechanism_t, "Angle and Axis", true);
        setNumber(entity, Angle_t, angle, "");
    } else {
        setNumber(entity, Orientation_t, angle, "");
    }
    if (placing.isSolid()) {
        setSolidPlace(placing);
    } else {
        EntityEditor::setValue(entity, Board_Side_t, placement.isOnBoardTop() ? "Top" : "Bottom", true);
    }
}

// A solid has no side of a board: it stands on the middle of its low face, at a height of its own, and one
// of the bottom is turned over.
void EDAImporter::setSolidPlace(const Placing &placing) {
    Entity *const entity = placing.entity;
    const EDAComponentPlacement &placement = placing.placement;
    EntityEditor::setValue(entity, Name_t, placement.getReferenceDesignator(), true);
    EntityEditor::setValue(entity, Origin_Point_t, "Low Centre", true);
    // Intended: sizes in the component's units are added to a location in the board's. The angles have no
    // unit, as in setComponentPlace.
    setLocation(entity, placing.width * 0.5 + placing.x, placing.depth * 0.5 + mapZCoord(placing.y),
                placing.board);
    EntityEditor::setValue(entity, Rotation_Mechanism_t, "Ordered", true);
    EntityEditor::setValue(entity, Rotation_Order_t, "YZX", true);
    setNumber(entity, Angle_1_t, placement.getAngle(true), "");
    if (placement.isOnBoardTop()) {
        setLength(entity, Y_Location_t, placing.board.getThickness() + placement.getOffset(), placing.board);
    } else {
        setNumber(entity, Angle_2_t, 180.0, "");
    }
}

void EDAImporter::finishComponent(const Placing &placing) const {
    Entity *const entity = placing.entity;
    const EDAComponent &component = placing.component;
    const EDAComponentPlacement &placement = placing.placement;
    attachDefaultMaterial(entity, "", component.getOutline().getMaterial(), MaterialLink_t, false);
    if (component.isFiltered()) EntityEditor::setValue(entity, Filtered_t, "Yes", true);
    if (!placing.isFromLibrary && placing.isSolid() && component.isMoldEnabled()) {
        addMold(entity, component, placing.board);
    }
    if (placement.getHeatsink()) addHeatsink(entity, *placement.getHeatsink(), placing.board);
    if (!placement.hasBumps() || !placing.isSolid()) return;
    // All of them: addBump itself leaves out those without geometry.
    for (auto bump = placement.beginBumps(); bump != placement.endBumps(); ++bump) {
        addBump(placing.boardEntity, *bump, placing.board, 0.0, 0.0);
    }
}

void EDAImporter::forgetComponents() {
    for (auto placed = placedComponents_.begin(); placed != placedComponents_.end() && !orphans_.empty();) {
        placed = orphans_.count(placed->second) > 0 ? placedComponents_.erase(placed) : std::next(placed);
    }
    orphans_.clear();
    outlineFacts_.clear();
}

} // namespace EDA
