// What the importer asks of its host: the library, the geometry editor, undo under exceptions.
#include "ConductorSupport.h"
#include "host/EntityCore/EntityManager.h"
#include "support/CancelAfter.h"
#include "support/ImportBench.h"
#include "ViaSupport.h"

#include <gmock/gmock.h>
#include <stdexcept>

using namespace TestSupport;
using testing::ElementsAre;

namespace {

class TypesOnlyLibrary : public LibraryInterface {
public:
    void setComponentTypes(const std::set<std::string> &types) override { given.push_back(types); }
    void getMapping(std::string &, const std::string &, std::string &, MappingType &) override {}
    Entity *loadItem(const std::string &, const std::string &, bool, Attributes &, MappingType &) override {
        return nullptr;
    }
    LibraryItem *findItem(const std::string &, const std::string &, bool, Attributes &,
                          MappingType &) override {
        return nullptr;
    }
    bool supplyContent(Entity &) override { return false; }

    std::vector<std::set<std::string>> given;
};

// Installed while it lives.
class NotingEditor : public EntityGUI::GeometryEditor {
public:
    NotingEditor() { EntityGUI::EntityManager::setGeometryEditor(this); }
    ~NotingEditor() override { EntityGUI::EntityManager::setGeometryEditor(nullptr); }
    void entityCreated(Entity *entity, bool flag) override { told.emplace_back(entity, flag); }

    std::vector<std::pair<Entity *, bool>> told;
};

class ThrowingProgress : public RecordingProgress {
protected:
    void showValue(int, const AdditionalProgress &) override { throw std::runtime_error("stop"); }
};

} // namespace

TEST(HostServices, TheLibraryIsToldTheComponentTypesOnce) {
    TypesOnlyLibrary library;
    EDA::EDAImporter importer(&library, "", "");
    std::set<std::string> types;
    EDA::EDAImporter::getComponentTypes(types);
    EXPECT_THAT(library.given, ElementsAre(types));
}

TEST(HostServices, TheGeometryEditorIsToldOfANewBoard) {
    NotingEditor editor;
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    Entity *board = bench.import();
    EXPECT_THAT(editor.told, ElementsAre(std::pair(board, true)));
}

TEST(HostServices, TheGeometryEditorIsToldOfTheSubstrateAndNotOfItsComponent) {
    NotingEditor editor;
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.set(Import_Type_t, "Component");
    Entity *board = bench.import();
    EXPECT_THAT(editor.told, ElementsAre(std::pair(board, true)));
}

TEST(HostServices, TheGeometryEditorIsToldOfNetsRoutesAndConductorsButNotOfTheirParts) {
    NotingEditor editor;
    ConductorBench bench;
    EDA::EDANet net;
    net.addTrace(bench.route(0.5, "15,60 20,55"));
    net.addTrace(bench.shape(EDA::test::outline("20,40 30,40 30,60", "28,42 29,42 29,45")));
    bench.layer.addNet(net);
    bench.importLayer();
    Entity *const netEntity = bench.nets().at(0);
    const auto routes = bench.children(netEntity, Trace_t);
    const auto conductors = bench.children(netEntity, PCB_Conductor_t);
    ASSERT_EQ(routes.size(), 1u);
    ASSERT_EQ(conductors.size(), 1u);
    EXPECT_THAT(editor.told, ElementsAre(std::pair(bench.boardEntity, true), std::pair(netEntity, true),
                                         std::pair(routes[0], true), std::pair(conductors[0], true)));
}

TEST(HostServices, TheGeometryEditorIsToldOfBumpsAndWiresButNotOfCopies) {
    NotingEditor editor;
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.set(Import_Type_t, "Component");
    bench.set(Group_Identical_Bumps_t, "No");
    EDA::EDABump bump;
    bump.setBumpType(1);
    bump.addInstance("copy", 1, 1);
    bench.board().addBump(bump, false);
    bench.board().addWirebond(EDA::EDAWirebond());
    Entity *board = bench.import();
    const auto bumps = bench.children(board, Bump_t);
    const auto wires = bench.children(board->getAncestor(Subcomponent_Group_t), Wirebond_t);
    ASSERT_EQ(bumps.size(), 2u);
    ASSERT_EQ(wires.size(), 1u);
    EXPECT_THAT(editor.told,
                ElementsAre(std::pair(board, true), std::pair(bumps[0], true), std::pair(wires[0], true)));
}

TEST(HostServices, TheGeometryEditorIsToldOfAViaButNotOfItsCopies) {
    for (const char *isGrouped : {"No", "Yes"}) {
        NotingEditor editor;
        ViaBench bench;
        bench.set(Group_Identical_Vias_t, isGrouped);
        bench.via.addInstance("copy", 25, 50);
        const auto vias = bench.importVia();
        ASSERT_FALSE(vias.empty());
        EXPECT_THAT(editor.told, ElementsAre(std::pair(bench.boardEntity, true), std::pair(vias[0], true)));
    }
}

TEST(HostServices, TheGeometryEditorIsNotToldOfABoardThatWasThereOrCouldNotBeMade) {
    NotingEditor editor;
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.importOver(EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t));
    Entity *component = EntityEditor::createEntity(Component_t, bench.chassis, Components_t);
    bench.importer.importBoard(&bench.reader, nullptr, component, nullptr);
    EXPECT_TRUE(editor.told.empty());
}

TEST(HostServices, AnExceptionOfTheHostPassesAndTheStepCanBeUndone) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.rectangle(1, 1, 1, 2, 2);
    const std::string before = ModelFile::toText(bench.model);
    ThrowingProgress progress;
    EXPECT_THROW(bench.import(&progress), std::runtime_error);
    EXPECT_FALSE(UndoStack::instance().isOpen());
    EXPECT_EQ(UndoStack::instance().undoName(), "Import Board");
    EXPECT_NE(ModelFile::toText(bench.model), before);
    EXPECT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
    EXPECT_TRUE(bench.import()); // And the importer is as good as before.
}

TEST(HostServices, ACopyHasTheStateOfItsSource) {
    ImportBench bench;
    bench.importer.importBoard(&bench.reader, nullptr, bench.model.root(), nullptr);
    ASSERT_FALSE(bench.importer.getErrorString().empty());
    EDA::EDAImporter copy(bench.importer);
    EXPECT_EQ(copy.getErrorString(), bench.importer.getErrorString());
    copy.clearErrorMsg();
    EXPECT_FALSE(bench.importer.getErrorString().empty());
    copy = bench.importer;
    EXPECT_EQ(copy.getErrorString(), bench.importer.getErrorString());
}

TEST(HostServices, ImportsOneAfterAnotherAreUndoneAndRedoneOneByOne) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 40, 20);
    bench.rectangle(1, 1, 1, 2, 2);
    bench.board().setConductorMaterial("Copper");
    std::vector<std::string> states{ModelFile::toText(bench.model)};
    Entity *board = bench.import();
    states.push_back(ModelFile::toText(bench.model));
    for (int i = 0; i < 3; ++i) {
        bench.importOver(board);
        states.push_back(ModelFile::toText(bench.model));
    }
    for (int i = 3; i >= 0; --i) {
        ASSERT_TRUE(UndoStack::instance().undo());
        ASSERT_EQ(ModelFile::toText(bench.model), states[static_cast<size_t>(i)]);
    }
    for (size_t i = 1; i < states.size(); ++i) {
        ASSERT_TRUE(UndoStack::instance().redo());
        ASSERT_EQ(ModelFile::toText(bench.model), states[i]);
    }
}

TEST(HostServices, AMaterialThatWasUndoneIsMadeAnew) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.board().setConductorMaterial("Copper");
    bench.import();
    UndoStack::instance().undo();
    Entity *board = bench.import();
    Entity *copper = getLinkedEntity(board, Conductor_Material_t);
    ASSERT_TRUE(copper);
    EXPECT_EQ(copper->getOwnerEntity(), bench.model.root());
}
