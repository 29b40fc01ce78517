// The board entity: how it comes to exist, what it is given, and what a re-import clears.
#include "host/FileSystem/Path.h"
#include "import/EDAImporterDetail.h"

#include <array>

namespace EDA {

using namespace EntityModel;

namespace {

constexpr double givenThickness = 1e-9; // A thickness counts as given above this, in board units.

// Where a board goes under each kind of parent, tested in this order.
struct BoardPlace {
    const TypeRef &parent;
    const TypeRef &board;
    const TypeRef &list;
};

const std::array<BoardPlace, 4> &boardPlaces() {
    static const std::array<BoardPlace, 4> places{{{Chassis_t, PCB_t, PCBs_t},
                                                   {Test_Chamber_t, PCB_t, PCBLink_t},
                                                   {Daughter_Board_Socket_t, PCB_t, Daughter_Board_t},
                                                   {Subcomponent_Group_t, Substrate_t, Obstructions_t}}};
    return places;
}

Entity *create(const TypeRef &type, Entity *parent, const AttributePath &place) {
    return EntityEditor::createEntity(type, parent, place, nullptr, true, true, false, "", -1);
}

} // namespace

Entity *EDAImporter::createBoardEntity(Entity *parentEntity, const EDABoard &board) const {
    Entity *parent = parentEntity;
    if (parent->getType() == Velkin_Solver_Project_t) parent = EntityFetcher::getBoundingEntity(parent);
    Entity *created = nullptr;
    if (importAs_ == Component_t) {
        created = createComponentBoard(parent, board);
    } else if (parent) {
        for (const BoardPlace &place : boardPlaces()) {
            if (parent->getType() != place.parent) continue;
            created = create(place.board, parent, place.list);
            break;
        }
    }
    tellGeometryEditor(created);
    return created;
}

// A board that is itself a component is a substrate inside it.
EDAImporter::Entity *EDAImporter::createComponentBoard(Entity *parentEntity, const EDABoard &board) const {
    Entity *const component = create(Component_t, parentEntity, Components_t);
    EntityEditor::setValue(component, Modelling_Level_t, "Detailed", true);
    EntityEditor::setValue(component, Reference_Designator_t, board.getName(), true);
    setLength(component, "Height", board.getThickness(), board);
    double xLow = 0.0, yLow = 0.0, xHigh = 0.0, yHigh = 0.0;
    board.getOverallBound(xLow, yLow, xHigh, yHigh);
    setLength(component, "Width", xHigh - xLow, board);
    setLength(component, "Depth", yHigh - yLow, board);

    Entity *const group = create(TypeRef("Subcomponent Group"), component, "SubcomponentGroups");
    clearObstructions(group);
    return create(Substrate_t, group, Obstructions_t);
}

void EDAImporter::fillBoardEntity(Entity *boardEntity, const EDABoard &board) const {
    EntityEditor::setValue(boardEntity, Reference_Designator_t, board.getName(), true);
    if (board.getThickness() > givenThickness)
        setLength(boardEntity, "Thickness", board.getThickness(), board);
    if (!board.getConductorMaterial().empty()) {
        attachDefaultMaterial(boardEntity, "", board.getConductorMaterial(), Conductor_Material_t, true);
    }
    if (!board.getDielectricMaterial().empty()) {
        attachDefaultMaterial(boardEntity, "", board.getDielectricMaterial(), Dielectric_Material_t, true);
    }
}

void EDAImporter::addSourceNote(Entity *boardEntity, const EDABoard &board) const {
    if (!boardEntity) return;
    std::string boardFile, libraryFile;
    board.getSourceFilename(boardFile, libraryFile);
    std::string note = getPreciceStringValue(boardEntity, Description_t, "");
    if (!boardFile.empty() || !libraryFile.empty()) {
        if (!note.empty()) note += '\n';
        note += "Imported from EDA files: " + FileSystem::Path::getLastToken(boardFile) + ", " +
                FileSystem::Path::getLastToken(libraryFile);
    }
    EntityEditor::setValue(boardEntity, Description_t, note, true);
}

// Only kinds that the new data has are replaced; all others stay in the model.
void EDAImporter::deleteFormerImport(Entity *boardEntity, const EDABoard &board) const {
    if (!boardEntity) return;
    std::vector<const char *> types;
    const auto add = [&types](bool condition, std::initializer_list<const char *> more) {
        if (condition) types.insert(types.end(), more);
    };
    add(board.getOutline().numInternalOutlines() > 0, {"PCB Hole", "Substrate Hole"});
    add(board.numComponentPlacements() > 0, {"Component", "Chip Socket", "Daughter Board Socket",
                                             "Cable Socket", "Resistor", "Capacitor", "Inductor"});
    add(board.numKeepouts() > 0, {"Board Keepout"});
    add(board.numVias(0) > 0, {"Via"});
    add(board.numBumps(0) > 0, {"Bump"});

    std::vector<Entity *> former;
    for (const char *type : types) {
        boardEntity->getOwnedChildEntitiesOfType(former, TypeRef(type), false, true);
    }
    EntityEditor::deleteEntities(former, false, true);
}

} // namespace EDA
