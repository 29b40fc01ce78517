// The steps of an import, in their order.
#include "host/Profiling/ProfileSectionProxy.h"
#include "import/EDAImporterDetail.h"
#include "import/ViaMoves.h"

namespace EDA {

using namespace EntityModel;

namespace {

// A section of a trace, named after the step.
class Section : public Profiling::ProfileSectionProxy {
public:
    explicit Section(const char *name)
        : ProfileSectionProxy("EDAImporter", __LINE__, "EDA::EDAImporter::importBoard", name, true, "") {}
};

// Conductor layers of an earlier import stay on a board that was modelled layer by layer, and the new ones
// come beside them; those of a board that was modelled as a whole had no part in its model, and go.
// Dielectric layers always stay. Both are intended.
void makeLayersExplicit(Entity *boardEntity, bool isNew) {
    const TypeRef level = getTypeValue(boardEntity, AttributePath(Modelling_Level_t), TypeRef());
    EntityEditor::setValue(boardEntity, Modelling_Level_t, "Explicit Layers");
    if (!boardEntity || !(isNew || level == Specified_t || level == Simplified_Average_t)) return;
    std::vector<Entity *> layers;
    boardEntity->getOwnedChildEntitiesOfType(layers, Conductor_Layer_t, false, true);
    EntityEditor::deleteEntities(layers, false, true);
}

} // namespace

// The order is load-bearing: the shape before the holes, components before the vias that go into them, layers
// before the vias that span them.
bool EDAImporter::importItems(Run &run) {
    return importBoardHoles(run) && importComponents(run) && importLayers(run) && importKeepouts(run) &&
           importVias(run) && importBumps(run) && importWirebonds(run);
}

bool EDAImporter::importBoardHoles(Run &run) {
    run.setText("Importing Board Holes");
    int skipped = 0;
    bool goOn = true;
    const EDAOutline &outline = run.board.getOutline();
    for (auto hole = outline.beginInternalOutlines(); goOn && hole != outline.endInternalOutlines(); ++hole) {
        if (hole->isHole() && !addHole(run.boardEntity, *hole, run.board, 0.0, 0.0, 0.0)) ++skipped;
        goOn = run.step();
    }
    // Told only when the loop came to its end: a cancelled import adds no message.
    if (goOn) reportSkippedHoles(skipped);
    return goOn;
}

void EDAImporter::reportSkippedHoles(int count) {
    if (count == 0) return;
    errorMessage_ += "The outline of ";
    if (count == 1) {
        errorMessage_ += "a hole in the board was not valid in the file so this hole was skipped.\n";
    } else {
        errorMessage_ += std::to_string(count) +
                         " holes in the board were not valid in the file so these holes were skipped.\n";
    }
}

bool EDAImporter::importComponents(Run &run) {
    const Section section("ImportEDAComponents");
    run.setText("Importing Components...");
    EDABoard &board = run.board;
    for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement) {
        // A placement without definition is passed over in silence, and counts as visited.
        const EDAComponent *const component = board.findComponent(*placement);
        if (component) addComponent(run.boardEntity, *component, *placement, board);
        if (!run.step()) return false;
    }
    // All at once at the end, since a socket may be placed after what sits in it.
    moveComponentsToSockets(run.boardEntity);
    return true;
}

bool EDAImporter::importLayers(Run &run) {
    if (run.board.numLayers() == 0) return true;
    const Section section("ImportEDALayers");
    run.setText("Importing Layers...");
    makeLayersExplicit(run.boardEntity, boardEntityCreated_);
    const EDABoard &board = run.board;
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer) {
        if (hasTopOffset(*layer) && board.getGoodEDA()) {
            EntityEditor::setValue(run.boardEntity, Distribute_Layers_t, "User Specified");
        }
        addLayer(run.boardEntity, *layer, board, run.progress, run.count);
        if (!run.step()) return false;
    }
    return true;
}

bool EDAImporter::importKeepouts(Run &run) {
    // This step alone shows its text before it opens its section.
    run.setText("Importing Keepouts...");
    const Section section("ImportEDAKeepouts");
    for (auto keepout = run.board.beginKeepouts(); keepout != run.board.endKeepouts(); ++keepout) {
        addKeepout(run.boardEntity, *keepout, run.board);
        if (!run.step()) return false;
    }
    return true;
}

bool EDAImporter::importVias(Run &run) {
    const Section section("ImportEDAVias");
    run.setText("Importing Drilled Holes...");
    ViaMoves moves(run.boardEntity);
    bool goOn = true;
    for (auto via = run.board.beginVias(); goOn && via != run.board.endVias(); ++via) {
        addVia(run.boardEntity, *via, run.board, moves);
        goOn = run.step();
    }
    // After a cancel too: the vias that were made are whole.
    moves.make();
    return goOn;
}

bool EDAImporter::importBumps(Run &run) {
    if (importAs_ != Component_t) return true;
    const Section section("ImportEDABumps");
    run.setText("Importing Solder Bumps...");
    for (auto bump = run.board.beginBumps(); bump != run.board.endBumps(); ++bump) {
        addBump(run.boardEntity, *bump, run.board, 0.0, 0.0);
        if (!run.step()) return false;
    }
    return true;
}

bool EDAImporter::importWirebonds(Run &run) {
    if (!options_.importWirebonds || importAs_ != Component_t) return true;
    const Section section("ImportEDAWirebonds");
    run.setText("Importing Wirebonds...");
    std::map<std::string, Entity *> groups;
    groups[""] = run.boardEntity ? run.boardEntity->getAncestor(Subcomponent_Group_t) : nullptr;
    for (auto wirebond = run.board.beginWirebonds(); wirebond != run.board.endWirebonds(); ++wirebond) {
        const std::string &name = wirebond->getGroupName();
        Entity *&group = groups[name];
        if (!group && !name.empty()) group = wirebondGroup(run.boardEntity, name);
        addWirebond(group, *wirebond, run.board);
        if (!run.step()) return false;
    }
    return true;
}

Entity *EDAImporter::wirebondGroup(Entity *boardEntity, const std::string &name) const {
    Entity *const group =
        EntityEditor::createEntity(TypeRef("Subcomponent Group"), boardEntity,
                                   AttributePath("SubcomponentGroups"), nullptr, true, true, false, "", -1);
    if (!group) return nullptr;
    clearObstructions(group);
    EntityEditor::setValue(group, Name_t, name, true);
    return group;
}

void EDAImporter::clearObstructions(Entity *group) {
    Attribute *const obstructions = group ? group->findAttribute("Obstructions", false) : nullptr;
    if (obstructions && obstructions->isEntityList()) static_cast<EntityList *>(obstructions)->clear();
}

} // namespace EDA
