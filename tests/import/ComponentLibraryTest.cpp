// Components that the host's library gives.
#include "ComponentSupport.h"
#include "support/ScriptedLibrary.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using testing::ElementsAre;

namespace {

using Values = std::vector<std::pair<std::string, std::string>>;

struct LibraryBench : private ScriptedLibrary, ComponentBench {
    explicit LibraryBench(const char *outline = boxOutline)
        : ComponentBench(outline, "ELECTRICAL", static_cast<ScriptedLibrary *>(this)) {}

    ScriptedLibrary &library() { return *this; }

    // Answers a name with new entities of a type, each with these values.
    void offer(const std::string &name, const TypeRef &type, const Values &values = {},
               LibraryInterface::MappingType mapping = LibraryInterface::Mapped) {
        library().items[name] = {mapping,
                                 [type, values] { return ScriptedLibrary::makeEntity(type, values); }};
    }
    void answer(const std::string &name, LibraryInterface::MappingType mapping) {
        library().items[name] = {mapping, nullptr};
    }
    void setPartNumber(const char *number) {
        part.setPartNumber(number);
        placement.setPartNumber(number);
    }
    std::vector<std::string> loadedNames() {
        std::vector<std::string> names;
        for (const auto &load : library().loads)
            names.push_back(load.name);
        return names;
    }
};

} // namespace

TEST(ComponentLibrary, AMappedItemComesToTheListOfItsType) {
    for (const auto &[type, list] : {std::pair{Component_t, Components_t},
                                     {Resistor_t, Resistors_t},
                                     {Inductor_t, Inductors_t},
                                     {Capacitor_t, Capacitors_t},
                                     {Chip_Socket_t, Chip_Sockets_t},
                                     {Cable_Socket_t, Cable_Sockets_t},
                                     {Daughter_Board_Socket_t, Daughter_Board_Sockets_t}}) {
        LibraryBench bench(lOutline);
        bench.offer("PART", type, {{"Model", "library model"}});
        Entity *const entity = bench.importOne();
        ASSERT_TRUE(entity) << type.getLabel();
        EXPECT_EQ(entity->getType(), type);
        std::vector<Entity *> inList;
        getLinkedEntities(bench.boardEntity, list, inList);
        EXPECT_THAT(inList, ElementsAre(entity));
        EXPECT_EQ(text(entity, Model_t), "library model");
        EXPECT_EQ(text(entity, Reference_Designator_t), "U1");
        EXPECT_NE(entity->getID().value(), 0u);
    }
}

TEST(ComponentLibrary, ItIsAskedWithTheNameAnEmptyPathAndTheExactFlag) {
    for (const bool exact : {false, true}) {
        LibraryBench bench;
        bench.importer.setLoadExactLibraryMatches(exact);
        bench.importOne();
        ASSERT_EQ(bench.library().loads.size(), 1u);
        EXPECT_EQ(bench.library().loads[0].name, "PART");
        EXPECT_EQ(bench.library().loads[0].path, "");
        EXPECT_EQ(bench.library().loads[0].exact, exact);
        EXPECT_EQ(bench.library().loads[0].numAttributes, 0u);
    }
}

TEST(ComponentLibrary, ItIsAskedAgainWithThePartNumber) {
    LibraryBench bench;
    bench.setPartNumber("N1");
    bench.offer("PART N1", Component_t, {{"Model", "second"}});
    EXPECT_EQ(text(bench.importOne(), Model_t), "second");
    EXPECT_THAT(bench.loadedNames(), ElementsAre("PART", "PART N1"));
}

TEST(ComponentLibrary, TheFirstAnswerWithAnEntityEndsTheAsking) {
    LibraryBench bench;
    bench.setPartNumber("N1");
    bench.offer("PART", Component_t);
    EXPECT_TRUE(bench.importOne());
    EXPECT_THAT(bench.loadedNames(), ElementsAre("PART"));
}

TEST(ComponentLibrary, WithoutAnEntityItIsBuilt) {
    for (const auto mapping :
         {LibraryInterface::NotMapped, LibraryInterface::Mapped, LibraryInterface::Approximated}) {
        LibraryBench bench;
        bench.answer("PART", mapping);
        Entity *const entity = bench.importOne();
        ASSERT_TRUE(entity) << mapping;
        EXPECT_EQ(text(entity, Model_t), "PART");
        EXPECT_TRUE(bench.library().askedMappings.empty());
    }
}

TEST(ComponentLibrary, DoNotImportLeavesNoTrace) {
    LibraryBench with;
    with.setPartNumber("N1");
    with.answer("PART", LibraryInterface::DoNotImport);
    with.offer("PART N1", Component_t);
    with.add();
    EXPECT_TRUE(with.importAll().empty());
    EXPECT_THAT(with.loadedNames(), ElementsAre("PART"));

    LibraryBench without;
    without.importAll();
    EXPECT_EQ(ModelFile::toText(with.model), ModelFile::toText(without.model));
}

TEST(ComponentLibrary, DoNotImportOfTheSecondAnswerCountsToo) {
    LibraryBench bench;
    bench.setPartNumber("N1");
    bench.answer("PART N1", LibraryInterface::DoNotImport);
    bench.add();
    EXPECT_TRUE(bench.importAll().empty());
}

TEST(ComponentLibrary, AnEntityThatComesWithDoNotImportIsImported) {
    LibraryBench bench;
    bench.offer("PART", Component_t, {}, LibraryInterface::DoNotImport);
    EXPECT_TRUE(bench.importOne());
}

TEST(ComponentLibrary, AnUnplacedPlacementIsNotAskedFor) {
    LibraryBench bench;
    bench.placement.setStatus("UNPLACED");
    bench.add();
    bench.importAll();
    EXPECT_TRUE(bench.library().loads.empty());
}

TEST(ComponentLibrary, AnApproximationIsSaidInTheModelOfEachEntityOnce) {
    LibraryBench bench;
    bench.setPartNumber("N1");
    bench.offer("PART", Component_t, {{"Model", "like it"}});
    bench.library().mappings["PART N1"] = {"item", LibraryInterface::Approximated};
    bench.add();
    bench.addAs("U2", 60, 40);
    const auto found = bench.importAll();
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(text(found[0], Model_t), "like it - approximated");
    EXPECT_EQ(text(found[1], Model_t), "like it - approximated");
    EXPECT_THAT(bench.library().askedMappings, ElementsAre("PART N1", "PART N1"));
}

TEST(ComponentLibrary, OtherMappingsLeaveTheModelAsItIs) {
    for (const auto mapping :
         {LibraryInterface::NotMapped, LibraryInterface::Mapped, LibraryInterface::DoNotImport}) {
        LibraryBench bench;
        bench.offer("PART", Component_t, {{"Model", "exact"}});
        bench.library().mappings["PART"] = {"item", mapping};
        EXPECT_EQ(text(bench.importOne(), Model_t), "exact");
        EXPECT_THAT(bench.library().askedMappings, ElementsAre("PART"));
    }
}

TEST(ComponentLibrary, ItsOwnShapeSizesAndTextsStay) {
    LibraryBench bench;
    bench.part.setManufacturer("file");
    bench.offer("PART", Component_t,
                {{"Width", "3 mm"}, {"Depth", "5 mm"}, {"Height", "7 mm"}, {"Type", "Mechanical"}});
    Entity *const entity = bench.importOne();
    EXPECT_EQ(text(entity, "Width"), "3 mm");
    EXPECT_EQ(text(entity, "Depth"), "5 mm");
    EXPECT_EQ(text(entity, "Height"), "7 mm");
    EXPECT_EQ(text(entity, Type_t), "Mechanical");
    EXPECT_EQ(text(entity, Manufacturer_t), "");
    EXPECT_FALSE(entity->isProtected());
    EXPECT_FALSE(entity->findAttribute(Geometry_t)->isLocked());
}

TEST(ComponentLibrary, AnInductorKeepsItsHole) {
    LibraryBench bench;
    bench.offer("PART", Inductor_t);
    EXPECT_EQ(text(bench.importOne(), Has_Hole_t), "Yes");
}

// The outline's centre is (3, 6) from the placement at (30, 40).
TEST(ComponentLibrary, ARectangleLiesWithItsCentreOnThatOfTheOutline) {
    struct Row {
        const char *side;
        double angle, centreX, centreY;
    };
    for (const Row &row : {Row{"TOP", 0, 33, 46}, Row{"TOP", 90, 24, 43}, Row{"BOTTOM", 0, 27, 46}}) {
        LibraryBench bench;
        bench.offer("PART", Component_t, {{"Width", "3 mm"}, {"Depth", "5 mm"}});
        bench.placement.setBoardSide(row.side);
        bench.placement.setAngle(row.angle);
        expectPlace(bench.importOne(), row.centreX - 1.5 - 10, 70 - (row.centreY + 2.5));
    }
}

TEST(ComponentLibrary, ARectangleOnAPolygonalOutlineLiesOnTheCentreOfItsBound) {
    LibraryBench bench(lOutline); // Its bound goes from (1, 2) to (7, 9).
    bench.offer("PART", Component_t, {{"Width", "3 mm"}, {"Depth", "5 mm"}});
    expectPlace(bench.importOne(), 30 + 4 - 1.5 - 10, 70 - (40 + 5.5 + 2.5));
}

TEST(ComponentLibrary, ARectangleOnACircleLiesOnTheCentreOfItsBound) {
    LibraryBench bench(asideCircle); // Its centre is (4, 1) from the placement.
    bench.offer("PART", Component_t, {{"Width", "3 mm"}, {"Depth", "5 mm"}});
    Entity *const entity = bench.importOne();
    EXPECT_EQ(text(entity, Shape_t), "Rectangle");
    expectPlace(entity, 30 + 4 - 1.5 - 10, 70 - (40 + 1 + 2.5));
}

TEST(ComponentLibrary, ARectangleIsReadInTheComponentsUnits) {
    LibraryBench bench;
    bench.part.setUnits("INCH");
    bench.offer("PART", Component_t, {{"Width", "50.8 mm"}, {"Depth", "15.24 cm"}});
    Entity *const entity = bench.importOne();
    expectPlace(entity, 30 + 3 - 1 - 10, 70 - (40 + 6 + 3));
    EXPECT_EQ(text(entity, Width_t), "50.8 mm");
}

TEST(ComponentLibrary, ASocketWithoutShapeIsPlacedByTheOutline) {
    LibraryBench bench;
    bench.offer("PART", Daughter_Board_Socket_t, {{"Width", "3 mm"}, {"Length", "5 mm"}});
    expectPlace(bench.importOne(), 21, 20);
}

TEST(ComponentLibrary, APolygonOnARectangleIsCentredByItsExtents) {
    LibraryBench bench;
    bench.offer("PART", Component_t, {{"Shape", "Polygon"}, {"Outline", "0,0,2,0,2,6,0,6 <mm>"}});
    expectPlace(bench.importOne(), 30 + 3 - 1 - 10, 70 - (40 + 6 + 3));
}

TEST(ComponentLibrary, APolygonIsReadInTheComponentsUnits) {
    LibraryBench bench;
    bench.part.setUnits("INCH");
    bench.offer("PART", Component_t,
                {{"Shape", "Polygon"}, {"Outline", "0,0,50.8,0,50.8,152.4,0,152.4 <mm>"}});
    expectPlace(bench.importOne(), 30 + 3 - 1 - 10, 70 - (40 + 6 + 3));
}

TEST(ComponentLibrary, APolygonWithoutPointsTakesTheOutlinesSize) {
    for (const char *outline : {"", "5 <mm>"}) {
        LibraryBench bench;
        bench.offer("PART", Component_t, {{"Shape", "Polygon"}, {"Outline", outline}});
        expectPlace(bench.importOne(), 21, 20);
    }
}

TEST(ComponentLibrary, APolygonOnAnOtherOutlineIsPlacedByItsOrigin) {
    LibraryBench bench(lOutline);
    bench.offer("PART", Component_t, {{"Shape", "Polygon"}, {"Outline", "0,0,2,0,2,6 <mm>"}});
    expectPlace(bench.importOne(), 20, 30);
}

TEST(ComponentLibrary, AFilteredOneIsMarked) {
    LibraryBench bench;
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "10 mm");
    bench.offer("PART", Component_t);
    EXPECT_EQ(text(bench.importOne(), Filtered_t), "Yes");
}

TEST(ComponentLibrary, WhatTheBoardHasNoListForLeavesNothing) {
    for (const TypeRef &type : {Solid_Obstruction_t, Via_t, PCB_t, Material_t}) {
        for (const bool isFiltered : {false, true}) {
            LibraryBench bench;
            bench.set(Filter_On_Height_t, isFiltered ? "Yes" : "No");
            bench.set(Min_Height_t, "10 mm");
            bench.offer("PART", type);
            bench.placement.setHeatsink(EDA::EDAHeatsink());
            bench.add();
            bench.addAs("U2", 50, 40);
            EXPECT_TRUE(bench.importAll().empty()) << type.getLabel();
            EXPECT_EQ(bench.library().loads.size(), 2u);
        }
    }
}

TEST(ComponentLibrary, AComponentForASubstrateLeavesNothing) {
    LibraryBench bench;
    bench.offer("PART", Component_t);
    bench.add();
    EXPECT_TRUE(bench.importOnSubstrate().empty());
    EXPECT_TRUE(bench.placedOn(bench.boardEntity).empty());
}

TEST(ComponentLibrary, AnEntityWithoutAPlaceOnTheBoardIsFreedAfterTheImport) {
    LibraryBench bench;
    Entity *const material = EntityEditor::createEntity(Material_t, bench.model.root(), Materials_t);
    bench.library().items["PART"] = {
        LibraryInterface::Mapped, [material] {
            Entity *const entity = ScriptedLibrary::makeEntity(Solid_Obstruction_t);
            EXPECT_TRUE(EntityEditor::addEntity(entity, MaterialLink_t, material));
            return entity;
        }};
    bench.importOne();
    EXPECT_EQ(bench.library().loads.size(), 1u);
    EXPECT_TRUE(material->referrers().empty());
}

TEST(ComponentLibrary, AnOrphanMayBeFollowedByAPartOfTheSameDesignator) {
    LibraryBench bench;
    bool isFirst = true;
    bench.library().items["PART"] = {LibraryInterface::Mapped, [&isFirst] {
                                         const TypeRef type = isFirst ? Via_t : Component_t;
                                         isFirst = false;
                                         return ScriptedLibrary::makeEntity(type);
                                     }};
    bench.add();
    bench.add();
    EXPECT_EQ(bench.importAll().size(), 1u);
}

TEST(ComponentLibrary, ALibraryThatGivesOneEntityTwiceAddsItOnce) {
    LibraryBench bench;
    Entity *const only = ScriptedLibrary::makeEntity(Component_t);
    bench.library().items["PART"] = {LibraryInterface::Mapped, [only] { return only; }};
    bench.add();
    bench.addAs("U2", 50, 40);
    const auto found = bench.importAll();
    ASSERT_THAT(found, ElementsAre(only));
    EXPECT_EQ(text(only, Reference_Designator_t), "U2");
}

TEST(ComponentLibrary, ALibraryThatGivesOneEntityWithoutAPlaceTwiceHasItFreedOnce) {
    LibraryBench bench;
    Entity *const material = EntityEditor::createEntity(Material_t, bench.model.root(), Materials_t);
    Entity *const only = ScriptedLibrary::makeEntity(Solid_Obstruction_t);
    EXPECT_TRUE(EntityEditor::addEntity(only, MaterialLink_t, material));
    bench.library().items["PART"] = {LibraryInterface::Mapped, [only] { return only; }};
    bench.add();
    bench.addAs("U2", 50, 40);
    EXPECT_TRUE(bench.importAll().empty());
    EXPECT_EQ(bench.library().loads.size(), 2u);
    EXPECT_TRUE(material->referrers().empty());
}

TEST(ComponentLibrary, AMaterialOfTheItemGivesWayToAConductivityButNotToThatOfTheOutline) {
    for (const bool hasConductivity : {false, true}) {
        LibraryBench bench;
        Entity *const own = EntityEditor::createEntity(Material_t, bench.model.root(), Materials_t, nullptr,
                                                       true, true, false, "Own");
        bench.library().items["PART"] = {LibraryInterface::Mapped, [own] {
                                             Entity *const entity = ScriptedLibrary::makeEntity(Component_t);
                                             EXPECT_TRUE(
                                                 EntityEditor::addEntity(entity, MaterialLink_t, own));
                                             return entity;
                                         }};
        bench.part.getOutline().setMaterial("Silicon");
        if (hasConductivity) bench.part.addProperty("THERM_COND", "3");
        EXPECT_EQ(text(getLinkedEntity(bench.importOne(), MaterialLink_t), Name_t),
                  hasConductivity ? "EDA Import: Conductivity=3 W/(m K)" : "Own");
    }
}
