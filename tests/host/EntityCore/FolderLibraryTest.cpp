// A component library in a folder.
#include "LibrarySupport.h"

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct FolderLibraryTest : testing::Test {
    FolderLibraryTest() {
        folder.write("gum.json", gumComponent("Gum part"));
        folder.write("plain.json", modelFile(R"({"type":"Resistor","id":1,"values":{"Name":"R"}})"));
        folder.index(R"({"key":"U1","item":"Gum part","file":"gum.json","mapping":"mapped"},
                        {"key":"U2","file":"gum.json","mapping":"approximated"},
                        {"key":"C1","mapping":"do not import"},
                        {"key":"X1","item":"Gum part","file":"gum.json","mapping":"not mapped"},
                        {"key":"R1","file":"plain.json"})");
        folder.open();
    }
    FolderLibrary &library() { return *folder.library; }

    LibraryFolder folder;
    LibraryInterface::Attributes none;
};

} // namespace

TEST_F(FolderLibraryTest, AllRowsOfAnIndexThatIsRightAreTaken) {
    EXPECT_TRUE(library().isUsable());
    EXPECT_EQ(library().getNumRows(), 5u);
    EXPECT_THAT(library().getMessages(), IsEmpty());
}

TEST_F(FolderLibraryTest, AMappedKeyGivesANewEntityOfTheCaller) {
    const auto entity = folder.load("U1");
    ASSERT_TRUE(entity);
    EXPECT_EQ(folder.type, LibraryInterface::Mapped);
    EXPECT_EQ(entity->getType(), Component_t);
    EXPECT_EQ(nameOf(entity.get()), "Gum part");
    EXPECT_EQ(entity->getOwnerEntity(), nullptr);
    EXPECT_NE(folder.load("U1").get(), entity.get());
}

TEST_F(FolderLibraryTest, AnApproximatedKeyGivesAnEntityAndSaysSo) {
    EXPECT_TRUE(folder.load("U2"));
    EXPECT_EQ(folder.type, LibraryInterface::Approximated);
}

TEST_F(FolderLibraryTest, AKeyThatIsNotImportedGivesNoEntityAndSaysSo) {
    EXPECT_FALSE(folder.load("C1"));
    EXPECT_EQ(folder.type, LibraryInterface::DoNotImport);
}

TEST_F(FolderLibraryTest, AKeyThatIsNotMappedGivesNoEntityEvenWithAnItem) {
    EXPECT_FALSE(folder.load("X1"));
    EXPECT_EQ(folder.type, LibraryInterface::NotMapped);
}

TEST_F(FolderLibraryTest, AnUnknownKeyIsNotMapped) {
    folder.type = LibraryInterface::Mapped;
    EXPECT_FALSE(folder.load("U9"));
    EXPECT_EQ(folder.type, LibraryInterface::NotMapped);
    EXPECT_FALSE(folder.load(""));
}

TEST_F(FolderLibraryTest, TheMappingWordDefaultsToMapped) {
    const auto entity = folder.load("R1");
    ASSERT_TRUE(entity);
    EXPECT_EQ(entity->getType(), Resistor_t);
    EXPECT_EQ(folder.type, LibraryInterface::Mapped);
}

TEST_F(FolderLibraryTest, AnExactMatchRegardsCaseAndBlanks) {
    EXPECT_FALSE(folder.load("u1", true));
    EXPECT_FALSE(folder.load(" U1", true));
}

TEST_F(FolderLibraryTest, ALooseMatchDisregardsCaseAndBlanksAtTheEnds) {
    EXPECT_TRUE(folder.load(" u1 ", false));
    EXPECT_FALSE(folder.load("U 1", false));
}

TEST_F(FolderLibraryTest, ALooseMatchPrefersTheRowThatMatchesExactly) {
    folder.index(R"({"key":"a","mapping":"do not import"},{"key":"A","file":"gum.json"})");
    folder.open();
    EXPECT_TRUE(folder.load("A", false));
    EXPECT_FALSE(folder.load(" A", false));
    EXPECT_EQ(folder.type, LibraryInterface::DoNotImport) << "the first of the rows that match loosely";
}

TEST_F(FolderLibraryTest, TheMappingTellsNameFileAndType) {
    std::string name, path;
    library().getMapping(name, "U1", path, folder.type);
    EXPECT_EQ(name, "Gum part");
    EXPECT_EQ(path, "gum.json");
    EXPECT_EQ(folder.type, LibraryInterface::Mapped);
    library().getMapping(name, "U2", path, folder.type);
    EXPECT_EQ(name, "Gum part") << "the file's only item";
    library().getMapping(name, "X1", path, folder.type);
    EXPECT_EQ(name, "Gum part");
    EXPECT_EQ(folder.type, LibraryInterface::NotMapped);
    library().getMapping(name, "U9", path, folder.type);
    EXPECT_EQ(name + path, "");
}

TEST_F(FolderLibraryTest, AnItemLoadsByTheNameAndPathOfItsMapping) {
    const std::unique_ptr<Entity> entity(library().loadItem("Gum part", "gum.json", true, none, folder.type));
    EXPECT_EQ(nameOf(entity.get()), "Gum part");
    EXPECT_EQ(folder.type, LibraryInterface::Mapped);
}

TEST_F(FolderLibraryTest, AFoundItemStaysTheSame) {
    LibraryItem *const item = library().findItem("U1", "", true, none, folder.type);
    ASSERT_TRUE(item);
    EXPECT_EQ(nameOf(item->getEntity()), "Gum part");
    EXPECT_EQ(library().findItem("U1", "", true, none, folder.type), item);
}

TEST_F(FolderLibraryTest, TypesThatWereNotAskedForAreRefusedWithOneMessage) {
    library().setComponentTypes({"Component"});
    EXPECT_FALSE(folder.load("R1"));
    EXPECT_EQ(folder.type, LibraryInterface::NotMapped);
    EXPECT_FALSE(folder.load("R1"));
    EXPECT_TRUE(folder.load("U1"));
    EXPECT_THAT(library().getMessages(),
                ElementsAre(folder.path() + "/index.json:6: a Resistor is not among the types asked for"));
    library().setComponentTypes({"Resistor"});
    EXPECT_TRUE(folder.load("R1"));
}

TEST_F(FolderLibraryTest, AFileIsReadOnce) {
    ASSERT_TRUE(folder.load("U1"));
    folder.write("gum.json", "broken");
    EXPECT_TRUE(folder.load("U1"));
    EXPECT_TRUE(folder.load("U2"));
    EXPECT_THAT(library().getMessages(), IsEmpty());
}

TEST_F(FolderLibraryTest, ContentIsSuppliedToAnEntityOfTheSelectedItemsType) {
    Project project;
    const auto create = [&](const TypeRef &type, const TypeRef &list) {
        return EntityEditor::createEntity(type, project.pcb, list, &library(), true, true, false, "mine");
    };
    library().setSelectedKey("U1");
    Entity *const component = create(Component_t, Components_t);
    EXPECT_EQ(nameOf(component), "mine");
    EXPECT_EQ(nameOf(getLinkedEntity(component, MaterialLink_t)), "Gum");
    EXPECT_EQ(getLinkedEntity(component, MaterialLink_t)->model(), &project.model);
    EXPECT_EQ(nameOf(create(Resistor_t, Resistors_t)), "mine") << "of another type: a plain new one";
    library().setSelectedKey("");
    EXPECT_EQ(getLinkedEntity(create(Component_t, Components_t), MaterialLink_t), nullptr);
}

// Links of what was loaded.

TEST_F(FolderLibraryTest, AnItemBringsItsMaterialIntoTheModel) {
    Project project;
    Entity *const part = project.add(folder.load("U1"));
    ASSERT_TRUE(part);
    Entity *const material = getLinkedEntity(part, MaterialLink_t);
    ASSERT_THAT(project.materials(), ElementsAre(material));
    EXPECT_EQ(nameOf(material), "Gum");
    EXPECT_EQ(getStandardDoubleValue(material, Conductivity_t / AttributePath(Value_t), 0.0), 5.0);
    EXPECT_NE(material->getID().value(), 0u);
}

TEST_F(FolderLibraryTest, TheModelsOwnMaterialOfThatNameIsTaken) {
    Project project;
    Entity *const own = EntityEditor::createEntity(Material_t, project.model.root(), Materials_t, nullptr,
                                                   true, true, false, "Gum");
    EXPECT_EQ(getLinkedEntity(project.add(folder.load("U1")), MaterialLink_t), own);
    EXPECT_EQ(project.materials().size(), 1u);
}

TEST_F(FolderLibraryTest, PlacementsShareOneMaterial) {
    Project project;
    const UndoStackOpener step("Import");
    for (int i = 0; i < 10; ++i)
        project.add(folder.load("U1"));
    EXPECT_EQ(project.materials().size(), 1u);
}

TEST_F(FolderLibraryTest, AMaterialRenamedToTheNameBetweenStepsIsFound) {
    Project project;
    project.add(folder.load("U1"));
    Entity *const gum = project.materials().at(0);
    EntityEditor::setValue(gum, Name_t, "Rubber");
    project.add(folder.load("U1"));
    EXPECT_EQ(project.materials().size(), 2u);
    EntityEditor::deleteEntity(project.materials().at(1));
    EntityEditor::setValue(gum, Name_t, "Gum");
    EXPECT_EQ(getLinkedEntity(project.add(folder.load("U1")), MaterialLink_t), gum);
}

TEST_F(FolderLibraryTest, WithoutAPlaceForMaterialsTheLinkIsCleared) {
    Model board(PCB_t);
    auto entity = folder.load("U1");
    ASSERT_TRUE(EntityEditor::addEntity(board.root(), Components_t, entity.get()));
    EXPECT_EQ(getLinkedEntity(entity.release(), MaterialLink_t), nullptr);
}

TEST_F(FolderLibraryTest, UndoTakesTheItemAndItsMaterialBackAndRedoBringsThem) {
    Project project;
    const std::string before = ModelFile::toText(project.model);
    {
        const UndoStackOpener step("Import");
        const UndoStackDisabler notOfItsOwn;
        project.add(folder.load("U1"));
    }
    const std::string after = ModelFile::toText(project.model);
    EXPECT_NE(after, before);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(project.model), before);
    ASSERT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(ModelFile::toText(project.model), after);
}

TEST_F(FolderLibraryTest, ARefusedEntityLeavesTheModelAsItWas) {
    Project project;
    const std::string before = ModelFile::toText(project.model);
    const auto entity = folder.load("U1");
    EXPECT_FALSE(EntityEditor::addEntity(project.pcb, Resistors_t, entity.get()));
    EXPECT_EQ(ModelFile::toText(project.model), before);
}

TEST_F(FolderLibraryTest, WhatWasLoadedOutlivesTheLibrary) {
    Project project;
    auto loose = folder.load("U1");
    Entity *const part = project.add(folder.load("U1"));
    folder.library.reset();
    EXPECT_EQ(nameOf(getLinkedEntity(part, MaterialLink_t)), "Gum");
    EXPECT_EQ(getLinkedEntity(loose.get(), MaterialLink_t), nullptr) << "its material went with the library";
    EXPECT_TRUE(project.add(std::move(loose)));
}

TEST_F(FolderLibraryTest, OpeningAndClosingALibraryLeavesTheUndoStepsAlone) {
    Project project;
    EntityEditor::setValue(project.pcb, Name_t, "board");
    folder.open();
    folder.load("U1");
    folder.library.reset();
    EXPECT_TRUE(UndoStack::instance().undo());
}

// Materials beside the items.

TEST_F(FolderLibraryTest, TheFoldersMaterialsAreTheVendorLibraryWhileTheLibraryLives) {
    folder.write("materials.json", gumComponent("x"));
    const auto find = [] {
        using Manager = LibraryManager::LibraryManager;
        return Manager::findItemByNameAndType(
            "Gum", Material_t, Manager::findLibraryByLibraryPath("Vendor Libraries/Materials", nullptr), "");
    };
    EXPECT_EQ(find(), nullptr);
    EXPECT_TRUE(folder.open().registerMaterials());
    EXPECT_TRUE(find());
    EXPECT_TRUE(library().registerMaterials()) << "again";
    EXPECT_TRUE(find());
    folder.library.reset();
    EXPECT_EQ(find(), nullptr);
}

TEST_F(FolderLibraryTest, MaterialsThatBreakLaterLeaveTheFirstRegistrationForTheLibrarysLife) {
    using Manager = LibraryManager::LibraryManager;
    const auto find = [] { return Manager::findLibraryByLibraryPath(Manager::vendorMaterialsPath, nullptr); };
    folder.write("materials.json", gumComponent("x"));
    EXPECT_TRUE(folder.open().registerMaterials());
    folder.write("materials.json", "{");
    EXPECT_FALSE(library().registerMaterials());
    EXPECT_EQ(library().getMessages().size(), 1u);
    EXPECT_TRUE(find());
    folder.library.reset();
    EXPECT_EQ(find(), nullptr);
}

TEST_F(FolderLibraryTest, WithoutMaterialsNothingIsRegistered) {
    EXPECT_TRUE(library().registerMaterials());
    EXPECT_THAT(library().getMessages(), IsEmpty());
}

TEST(FolderLibraryExample, TheExampleLibraryIsWhole) {
    FolderLibrary library(EDA_EXAMPLES "/library");
    LibraryInterface::Attributes none;
    Mapping type = LibraryInterface::NotMapped;
    Project project;
    Entity *const bga =
        project.add(std::unique_ptr<Entity>(library.loadItem("BGA256_17 MPU-256B", "", true, none, type)));
    ASSERT_TRUE(bga);
    std::vector<Entity *> groups, solids;
    getLinkedEntities(bga, SubcomponentGroups_t, groups);
    ASSERT_EQ(groups.size(), 1u);
    getLinkedEntities(groups.front(), Obstructions_t, solids);
    ASSERT_EQ(solids.size(), 2u);
    EXPECT_EQ(getDoubleValue(solids[0], Heat_Dissipated_t, "W", 0.0), 1.5);
    EXPECT_EQ(nameOf(getLinkedEntity(solids[0], MaterialLink_t)), "Silicon");
    EXPECT_TRUE(std::unique_ptr<Entity>(library.loadItem("QFP100_14", "", true, none, type)));
    EXPECT_EQ(type, LibraryInterface::Approximated);
    EXPECT_TRUE(library.registerMaterials());
    EXPECT_THAT(library.getMessages(), IsEmpty());
}
