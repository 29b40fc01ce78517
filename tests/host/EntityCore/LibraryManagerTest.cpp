// Registered libraries and loading from them.
#include "LibrarySupport.h"

#include "host/EntityCore/LibraryItemMapRecord.h"

using namespace TestSupport;
using Manager = LibraryManager::LibraryManager;
using LibraryManager::LibraryDefaultLoader;
using LibraryManager::LibraryRecord;

namespace {

std::string material(int id, const std::string &name, double conductivity) {
    return R"({"type":"Material","id":)" + std::to_string(id) + R"(,"values":{"Name":")" + name +
           R"(","Conductivity":{"Value":)" + std::to_string(conductivity) + "}}}";
}

// Two registered libraries: "A" and "A/B".
struct LibraryManagerTest : testing::Test {
    LibraryManagerTest() {
        outer =
            add("A", material(2, "Copper", 1) + "," + material(3, "Copper", 2) + "," + material(4, "x/y", 3));
        inner = add("A/B", material(2, "Copper", 4) + "," + material(3, "y", 5));
    }
    ~LibraryManagerTest() override {
        Manager::removeLibrary(outer);
        Manager::removeLibrary(inner);
    }

    static Manager::Ticket add(const std::string &path, const std::string &materials) {
        std::string error;
        const std::string text = modelFile(
            R"({"type":"Velkin Solver Project","id":1,"children":{"Materials":[)" + materials + "]}}");
        return Manager::addLibrary(
            std::make_unique<LibraryManager::Library>(path, ModelFile::parseTree(text, "test", error)));
    }
    static LibraryRecord *find(const std::string &library, const std::string &name) {
        return Manager::findItemByNameAndType(name, Material_t,
                                              Manager::findLibraryByLibraryPath(library, nullptr), "");
    }
    static double conductivity(const Entity &entity) {
        return getStandardDoubleValue(&entity, Conductivity_t / AttributePath(Value_t), -1.0);
    }

    // A new material of a project, from a selected path.
    Entity *create(const std::string &path, const std::string &name = "new") {
        LibraryDefaultLoader loader;
        loader.setSelectedPath(path, "");
        return EntityEditor::createEntity(Material_t, project.model.root(), Materials_t, &loader, true, true,
                                          false, name, -1);
    }

    Manager::Ticket outer = 0;
    Manager::Ticket inner = 0;
    Project project;
};

} // namespace

TEST_F(LibraryManagerTest, LibrariesAreFoundByPath) {
    ASSERT_TRUE(Manager::findLibraryByLibraryPath("A", nullptr));
    EXPECT_EQ(Manager::findLibraryByLibraryPath("A", nullptr)->getPath(), "A");
    EXPECT_EQ(Manager::findLibraryByLibraryPath("a", nullptr), nullptr);
    EXPECT_EQ(Manager::findLibraryByLibraryPath("", nullptr), nullptr);
}

TEST_F(LibraryManagerTest, APathContinuesThatOfTheLibraryWithin) {
    EXPECT_EQ(Manager::findLibraryByLibraryPath("B", Manager::findLibraryByLibraryPath("A", nullptr)),
              Manager::findLibraryByLibraryPath("A/B", nullptr));
    EXPECT_EQ(Manager::findLibraryByLibraryPath("B", nullptr), nullptr);
}

TEST_F(LibraryManagerTest, ItemsAreFoundByExactNameAndType) {
    ASSERT_TRUE(find("A/B", "y"));
    EXPECT_EQ(find("A/B", "Y"), nullptr);
    EXPECT_EQ(find("A", "y"), nullptr);
    EXPECT_EQ(Manager::findItemByNameAndType("y", Component_t,
                                             Manager::findLibraryByLibraryPath("A/B", nullptr), ""),
              nullptr);
    EXPECT_EQ(Manager::findItemByNameAndType("y", Material_t, nullptr, ""), nullptr);
}

TEST_F(LibraryManagerTest, TheFirstOfSeveralNamesakesCounts) {
    EXPECT_EQ(conductivity(find("A", "Copper")->getEntity()), 1.0);
    EXPECT_EQ(Manager::findLibraryByLibraryPath("A", nullptr)->getSize(), 2u);
}

TEST_F(LibraryManagerTest, AnItemsPathIsThatOfItsLibraryAndItsName) {
    EXPECT_EQ(LibraryRecord::getLibraryPath(find("A/B", "y")), "A/B/y");
    EXPECT_EQ(LibraryRecord::getLibraryPath(nullptr), "");
}

TEST_F(LibraryManagerTest, ALoaderWithAPathSuppliesTheItemsValuesUnderTheNewName) {
    Entity *const made = create("A/B/Copper");
    EXPECT_EQ(conductivity(*made), 4.0);
    EXPECT_EQ(nameOf(made), "new");
    EXPECT_EQ(nameOf(create("A/B/Copper", "")), "Copper") << "without a name, the item's";
}

TEST_F(LibraryManagerTest, SlashesInNamesAndPathsAreToldApart) {
    EXPECT_EQ(conductivity(*create("A/x/y")), 3.0);
    EXPECT_EQ(conductivity(*create("A/B/y")), 5.0);
}

TEST_F(LibraryManagerTest, OfTwoReadingsOfAPathThatWithTheLongestLibraryCounts) {
    const Manager::Ticket first = add("V", material(2, "M/Copper", 1) + "," + material(3, "M/Tin", 2));
    const Manager::Ticket second = add("V/M", material(2, "Copper", 3));
    EXPECT_EQ(conductivity(*create("V/M/Copper")), 3.0);
    EXPECT_EQ(conductivity(*create("V/M/Tin")), 2.0) << "the only reading";
    EXPECT_TRUE(Manager::removeLibrary(second));
    EXPECT_EQ(conductivity(*create("V/M/Copper")), 1.0);
    EXPECT_TRUE(Manager::removeLibrary(first));
}

TEST_F(LibraryManagerTest, ALoaderWithoutAKnownPathSuppliesNothing) {
    EXPECT_EQ(conductivity(*create("")), 0.0);
    EXPECT_EQ(conductivity(*create("A/none")), 0.0);
    EXPECT_EQ(conductivity(*create("A")), 0.0);
    EXPECT_EQ(conductivity(*create(std::string(100'000, '/'))), 0.0);
    LibraryDefaultLoader loader;
    loader.setSelectedPath("A/Copper", "");
    Entity *const other = EntityEditor::createEntity(Component_t, project.pcb, Components_t, &loader);
    EXPECT_TRUE(other) << "an item of another type";
}

TEST_F(LibraryManagerTest, ALoaderMapsNothing) {
    LibraryDefaultLoader loader;
    LibraryInterface::Attributes none;
    Mapping type = LibraryInterface::Mapped;
    EXPECT_EQ(loader.loadItem("Copper", "A/Copper", true, none, type), nullptr);
    EXPECT_EQ(type, LibraryInterface::NotMapped);
    EXPECT_EQ(loader.findItem("Copper", "A/Copper", true, none, type), nullptr);
    std::string name = "x", path = "x";
    type = LibraryInterface::Mapped;
    loader.getMapping(name, "Copper", path, type);
    EXPECT_EQ(name + path, "");
    EXPECT_EQ(type, LibraryInterface::NotMapped);
}

TEST_F(LibraryManagerTest, ALibraryReplacesThatOfItsPathAndOnlyItsOwnTicketRemovesIt) {
    const Manager::Ticket third = add("A", material(2, "Copper", 7));
    EXPECT_EQ(conductivity(find("A", "Copper")->getEntity()), 7.0);
    EXPECT_FALSE(Manager::removeLibrary(outer));
    EXPECT_TRUE(find("A", "Copper"));
    EXPECT_TRUE(Manager::removeLibrary(third));
    EXPECT_EQ(Manager::findLibraryByLibraryPath("A", nullptr), nullptr);
    EXPECT_FALSE(Manager::removeLibrary(third));
    EXPECT_FALSE(Manager::removeLibrary(0));
}

TEST_F(LibraryManagerTest, AFileThatCannotBeReadLeavesWhatWasRegistered) {
    const TempFolder folder;
    std::string error;
    EXPECT_EQ(Manager::addLibraryFile("A", folder.write("bad.json", "["), error), 0u);
    EXPECT_EQ(error, folder.path("bad.json") + ":1: a model file is one JSON object");
    EXPECT_TRUE(find("A", "Copper"));
}

// Links between models.

TEST_F(LibraryManagerTest, ALinkIntoAnotherModelIsRefused) {
    Project other;
    Entity *const foreign = EntityEditor::createEntity(Material_t, other.model.root(), Materials_t);
    EXPECT_FALSE(EntityEditor::addEntity(project.pcb, Conductor_Material_t, foreign));
    EXPECT_EQ(getLinkedEntity(project.pcb, Conductor_Material_t), nullptr);
}

TEST_F(LibraryManagerTest, ACopyIntoAnotherModelTakesItsMaterialsAlong) {
    Project other;
    Entity *const foreign = EntityEditor::createEntity(Material_t, other.model.root(), Materials_t, nullptr,
                                                       true, true, false, "Foreign");
    Entity *const part = EntityEditor::createEntity(Component_t, other.pcb, Components_t);
    EntityEditor::addEntity(part, MaterialLink_t, foreign);
    Entity *const copy = EntityEditor::copyEntity(part, project.pcb);
    EXPECT_EQ(nameOf(getLinkedEntity(copy, MaterialLink_t)), "Foreign");
    EXPECT_EQ(getLinkedEntity(copy, MaterialLink_t)->model(), &project.model);
    EXPECT_EQ(getLinkedEntity(part, MaterialLink_t), foreign);
    EXPECT_EQ(getLinkedEntity(EntityEditor::copyEntity(part, other.pcb), MaterialLink_t), foreign);
}

TEST_F(LibraryManagerTest, LinksInsideWhatIsClonedLeadToTheClones) {
    Entity *const trace = EntityEditor::createEntity(
        Trace_t, EntityEditor::createEntity(Conductor_Layer_t, project.pcb, Conductor_Layers_t), Traces_t);
    Entity *const junction = EntityEditor::createEntity(Trace_Junction_t, trace, TraceJunctions_t);
    Entity *const segment = EntityEditor::createEntity(Trace_Segment_t, trace, TraceSegments_t);
    EntityEditor::addEntity(segment, Start_Junction_t, junction);
    const std::unique_ptr<Entity> whole = EntityEditor::cloneEntity(*trace);
    std::vector<Entity *> junctions, segments;
    getLinkedEntities(whole.get(), TraceJunctions_t, junctions);
    getLinkedEntities(whole.get(), TraceSegments_t, segments);
    EXPECT_EQ(getLinkedEntity(segments.at(0), Start_Junction_t), junctions.at(0));
    // A segment alone has lost its junction once it is in a model of its own.
    Project other;
    Entity *const place = EntityEditor::createEntity(
        Trace_t, EntityEditor::createEntity(Conductor_Layer_t, other.pcb, Conductor_Layers_t), Traces_t);
    auto alone = EntityEditor::cloneEntity(*segment);
    ASSERT_TRUE(EntityEditor::addEntity(place, TraceSegments_t, alone.get()));
    EXPECT_EQ(getLinkedEntity(alone.release(), Start_Junction_t), nullptr);
}

TEST_F(LibraryManagerTest, ContentIsCopiedOnlyBetweenEntitiesOfOneTypeAndNotIntoAModel) {
    Entity *const part = EntityEditor::createEntity(Component_t, project.pcb, Components_t);
    const std::unique_ptr<Entity> clone = EntityEditor::cloneEntity(*part);
    EXPECT_FALSE(EntityEditor::copyContent(*clone, *part));
    EXPECT_FALSE(EntityEditor::copyContent(*project.pcb, *clone));
    EXPECT_FALSE(EntityEditor::copyContent(*clone, *clone));
    EXPECT_TRUE(EntityEditor::copyContent(*part, *clone));
}

TEST_F(LibraryManagerTest, ContentReplacesDefaultChildren) {
    Entity *const part = EntityEditor::createEntity(Component_t, project.pcb, Components_t);
    Entity *const group = EntityEditor::createEntity(Subcomponent_Group_t, part, SubcomponentGroups_t);
    const std::unique_ptr<Entity> to = EntityEditor::cloneEntity(*group);
    static_cast<EntityList *>(group->findAttribute(Obstructions_t))->clear();
    ASSERT_TRUE(EntityEditor::copyContent(*group, *to));
    std::vector<Entity *> solids;
    getLinkedEntities(to.get(), Obstructions_t, solids);
    EXPECT_TRUE(solids.empty());
}

TEST(LibraryItemMapRecord, KeepsWhatADialogShows) {
    LibraryManager::LibraryItemMapRecord record("item");
    EXPECT_EQ(record.getMappingType(), LibraryInterface::NotMapped);
    record.setPath("file");
    record.setMappingType(LibraryInterface::Approximated);
    record.addAttribute("Part Number", "7", true);
    const LibraryManager::LibraryItemMapRecord copy = record;
    EXPECT_EQ(copy.getName() + copy.getPath(), "itemfile");
    EXPECT_EQ(copy.getMappingType(), LibraryInterface::Approximated);
    ASSERT_EQ(copy.getAttributes().size(), 1u);
    EXPECT_EQ(copy.getAttributes()[0].name + copy.getAttributes()[0].value, "Part Number7");
    EXPECT_TRUE(copy.getAttributes()[0].isShown);
}
