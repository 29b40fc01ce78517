// Which entity a component becomes, and the attributes that it gets.
#include "ComponentSupport.h"

#include <cmath>
#include <set>

using namespace TestSupport;

namespace {

struct TypeRow {
    const char *name;
    const char *asBox;   // The entity of a rectangular outline on a PCB,
    const char *asOther; // and of any other.
};

const TypeRow typeRows[] = {{"Component", "Component", "Component"},
                            {"Daughter Board Socket", "Daughter Board Socket", "Component"},
                            {"Cable Socket", "Cable Socket", "Component"},
                            {"Chip Socket", "Chip Socket", "Component"},
                            {"Resistor", "Resistor", "Resistor"},
                            {"Inductor", "Inductor", "Inductor"},
                            {"Capacitor", "Capacitor", "Capacitor"},
                            {"resistor", "Component", "Component"},
                            {"DO NOT IMPORT", "Component", "Component"},
                            {"Via", "Component", "Component"},
                            {"", "Component", "Component"}};

const char *const outlines[] = {boxOutline, lOutline, centredCircle};

} // namespace

TEST(ComponentEntity, EachTypeBecomesItsEntityByItsOutlineOnABoard) {
    for (const TypeRow &row : typeRows) {
        for (const char *outline : outlines) {
            ComponentBench bench(outline);
            bench.part.setImportToType(row.name);
            Entity *const entity = bench.importOne();
            ASSERT_TRUE(entity) << row.name;
            EXPECT_EQ(entity->getType().getLabel(), outline == boxOutline ? row.asBox : row.asOther)
                << row.name << ' ' << outline;
        }
    }
}

TEST(ComponentEntity, EachTypeBecomesASolidBesideASubstrate) {
    for (const TypeRow &row : typeRows) {
        for (const char *outline : outlines) {
            ComponentBench bench(outline);
            bench.part.setImportToType(row.name);
            Entity *const solid = bench.importOneOnSubstrate();
            ASSERT_TRUE(solid) << row.name;
            EXPECT_EQ(text(solid, Type_t), "Other");
            EXPECT_EQ(text(solid, Name_t), "U1");
            EXPECT_TRUE(bench.placedOn(bench.boardEntity).empty());
        }
    }
}

TEST(ComponentEntity, ABoardThatIsAComponentMakesAllPlainComponents) {
    for (const TypeRow &row : typeRows) {
        ComponentBench bench;
        Entity *const existing = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
        bench.set(Import_Type_t, "Component");
        bench.part.setImportToType(row.name);
        bench.define();
        bench.add();
        const auto found = bench.placedOn(bench.importOver(existing));
        ASSERT_EQ(found.size(), 1u) << row.name;
        EXPECT_EQ(found[0]->getType(), Component_t) << row.name;
    }
}

TEST(ComponentEntity, WithoutSimplificationNoOutlineMakesASocket) {
    ComponentBench bench;
    bench.set(Simplify_Shapes_t, "No");
    bench.part.setImportToType("Chip Socket");
    Entity *const entity = bench.importOne();
    ASSERT_TRUE(entity);
    EXPECT_EQ(entity->getType(), Component_t);
    EXPECT_EQ(text(entity, Shape_t), "Polygon");
}

TEST(ComponentEntity, AnInductorHasNoHole) {
    ComponentBench bench;
    bench.part.setImportToType("Inductor");
    EXPECT_EQ(text(bench.importOne(), Has_Hole_t), "No");
}

TEST(ComponentEntity, ASocketTakesTheTextsAndSizesOfItsComponent) {
    ComponentBench bench;
    bench.part.setImportToType("Daughter Board Socket");
    bench.part.setPartNumber("N-1");
    bench.placement.setPartNumber("N-1");
    bench.part.setManufacturer("Maker");
    Entity *const socket = bench.importOne();
    ASSERT_TRUE(socket);
    EXPECT_EQ(text(socket, Model_t), "PART");
    EXPECT_EQ(text(socket, Part_Number_t), "N-1");
    EXPECT_EQ(text(socket, Manufacturer_t), "Maker");
    EXPECT_EQ(text(socket, Reference_Designator_t), "U1");
    EXPECT_EQ(mm(socket, "Width"), 4.0);
    EXPECT_EQ(mm(socket, "Length"), 8.0);
    EXPECT_EQ(mm(socket, "Height"), 2.5);
    EXPECT_EQ(mm(socket, "Socket Depth"), 1.25);
    EXPECT_TRUE(socket->findAttribute(Geometry_t)->isLocked());
    EXPECT_FALSE(socket->findAttribute(Placement_t)->isLocked());
    EXPECT_TRUE(socket->isProtected());
}

TEST(ComponentEntity, AComponentSaysWhetherItIsElectrical) {
    for (const auto &[kind, type] :
         {std::pair{"electrical", "Electrical"}, {"MECHANICAL", "Mechanical"}, {"", "Mechanical"}}) {
        ComponentBench bench(boxOutline, kind);
        EXPECT_EQ(text(bench.importOne(), Type_t), type);
    }
}

TEST(ComponentEntity, WithoutAHeightItKeepsThatOfANewEntity) {
    for (const double height : {0.0, -2.0, std::nan("")}) {
        ComponentBench bench;
        bench.part.setHeight(height);
        EXPECT_EQ(text(bench.importOne(), Height_t), "1 mm") << height;
    }
}

TEST(ComponentEntity, ASolidWithoutAHeightIsOnePointFiveMillimetresHigh) {
    for (const double height : {0.0, -2.0, std::nan("")}) {
        ComponentBench bench;
        bench.part.setHeight(height);
        EXPECT_EQ(text(bench.importOneOnSubstrate(), Height_t), "1.5 mm") << height;
    }
}

TEST(ComponentEntity, SizesAreInTheComponentsUnitsAndPlacesInTheBoards) {
    ComponentBench bench;
    bench.part.setUnits("THOU");
    bench.placement.setOffset(0.5);
    Entity *const entity = bench.importOne();
    ASSERT_TRUE(entity);
    EXPECT_EQ(text(entity, "Width"), "4 mil");
    EXPECT_EQ(text(entity, "Height"), "2.5 mil");
    EXPECT_EQ(text(entity, X_Location_t), "21 mm");
    EXPECT_EQ(text(entity, Y_Location_t), "0.5 mm");
}

TEST(ComponentEntity, AnUnplacedOneMakesNothing) {
    ComponentBench bench;
    bench.placement.setStatus("unplaced");
    bench.add();
    EXPECT_TRUE(bench.importAll().empty());
}

TEST(ComponentEntity, OneWithoutAnyOutlineMakesNothing) {
    ComponentBench bench("");
    bench.add();
    EXPECT_TRUE(bench.importAll().empty());
}

TEST(ComponentEntity, OneWithInternalOutlinesAloneIsMade) {
    ComponentBench bench("");
    bench.part.getOutline().addInternalOutline(EDA::test::outline(boxOutline));
    Entity *const entity = bench.importOne();
    ASSERT_TRUE(entity);
    EXPECT_EQ(entity->getType(), Component_t);
    EXPECT_EQ(text(entity, Shape_t), "Polygon");
}

TEST(ComponentEntity, APlacementWithoutDefinitionIsPassedOver) {
    ComponentBench bench;
    bench.placement.setName("OTHER");
    bench.add();
    EXPECT_TRUE(bench.importAll().empty());
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(ComponentEntity, AFilteredOneStaysWhereItsTypeCanSaySo) {
    ComponentBench bench;
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "10 mm");
    EXPECT_EQ(text(bench.importOne(), Filtered_t), "Yes");

    ComponentBench high;
    high.set(Filter_On_Height_t, "Yes");
    high.set(Min_Height_t, "1 mm");
    EXPECT_EQ(text(high.importOne(), Filtered_t), "No");
}

TEST(ComponentEntity, AFilteredSolidLeavesNothing) {
    ComponentBench bench;
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "10 mm");
    bench.add();
    EXPECT_TRUE(bench.importOnSubstrate().empty());
}

TEST(ComponentEntity, AFilteredSolidLeavesNoMoldHeatsinkOrMaterials) {
    for (const bool isFiltered : {false, true}) {
        ComponentBench bench;
        bench.set(Filter_On_Height_t, isFiltered ? "Yes" : "No");
        bench.set(Min_Height_t, "10 mm");
        bench.part.setMoldEnabled(true);
        bench.part.setMoldMaterialName("Epoxy");
        bench.part.getOutline().setMaterial("Silicon");
        bench.part.addProperty("THERM_COND", "3");
        bench.placement.setHeatsink(EDA::EDAHeatsink());
        bench.add();
        EXPECT_EQ(bench.importOnSubstrate().size(), isFiltered ? 0u : 2u);
        Entity *const around = bench.boardEntity->getAncestor(Component_t);
        ASSERT_TRUE(around);
        EXPECT_EQ(getLinkedEntity(around, HeatsinkLink_t) == nullptr, isFiltered);
        std::set<std::string> names;
        for (Entity *material : bench.children(bench.model.root(), Material_t))
            names.insert(text(material, Name_t));
        for (const char *made : {"Epoxy", "EDA Import: Conductivity=3 W/(m K)", "Typical Component"})
            EXPECT_EQ(names.count(made), isFiltered ? 0u : 1u) << made;
    }
}

TEST(ComponentEntity, TwoOfOneDesignatorBothStay) {
    ComponentBench bench;
    bench.addAs("U1", 30, 40);
    bench.addAs("U1", 50, 40);
    bench.addAs("", 70, 40);
    const auto found = bench.importAll();
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(text(found[1], Reference_Designator_t), "U1");
    EXPECT_EQ(text(found[2], Reference_Designator_t), "");
}

TEST(ComponentEntity, ASubstrateOutsideEveryGroupGetsNothing) {
    ComponentBench bench;
    Model alone(Substrate_t);
    bench.define();
    bench.add();
    EXPECT_EQ(bench.importOver(alone.root()), alone.root());
    std::vector<Entity *> below;
    alone.root()->getChildEntities(below);
    EXPECT_TRUE(below.empty());
}

TEST(ComponentEntity, NoBoardEntityIsNoTrouble) {
    ComponentBench bench;
    bench.define();
    bench.add();
    EXPECT_EQ(bench.importOver(nullptr), nullptr);
}

TEST(ComponentEntity, EmptyTextsStayEmpty) {
    ComponentBench bench;
    bench.part.setName("");
    bench.placement.setName("");
    bench.placement.setReferenceDesignator("");
    Entity *const entity = bench.importOne();
    ASSERT_TRUE(entity);
    EXPECT_EQ(text(entity, Model_t), "");
    EXPECT_EQ(text(entity, Name_t), "");
}

TEST(ComponentEntity, AMoldIsForSolidsAlone) {
    ComponentBench onSubstrate;
    onSubstrate.part.setMoldEnabled(true);
    onSubstrate.add();
    const auto solids = onSubstrate.importOnSubstrate();
    ASSERT_EQ(solids.size(), 2u);
    EXPECT_EQ(text(solids[1], Name_t), "Mold");
    // It stands where the solid was placed.
    EXPECT_EQ(text(solids[1], X_Location_t), text(solids[0], X_Location_t));

    ComponentBench onBoard;
    onBoard.part.setMoldEnabled(true);
    EXPECT_TRUE(onBoard.importOne());
}

TEST(ComponentEntity, AHeatsinkOfThePlacementComesToTheComponent) {
    ComponentBench bench;
    bench.add();
    bench.placement.setHeatsink(EDA::EDAHeatsink());
    bench.addAs("U2", 60, 40);
    const auto found = bench.importAll();
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(getLinkedEntity(found[0], HeatsinkLink_t), nullptr);
    EXPECT_TRUE(getLinkedEntity(found[1], HeatsinkLink_t));
}

TEST(ComponentEntity, BumpsOfAPlacementComeToTheSubstrateUnderASolid) {
    ComponentBench bench;
    for (const int type : {0, 1, 2}) {
        EDA::EDABump bump;
        bump.setName("B" + std::to_string(type));
        bump.setBumpType(type);
        bench.placement.addBump(bump, false);
    }
    EXPECT_TRUE(bench.importOneOnSubstrate());
    const auto bumps = bench.children(bench.boardEntity, Bump_t);
    ASSERT_EQ(bumps.size(), 2u); // One without geometry is left out.
    EXPECT_EQ(text(bumps[0], Name_t), "B1");
    EXPECT_EQ(text(bumps[1], Name_t), "B2");
}

TEST(ComponentEntity, BumpsOfNoTypeOrOfAFilteredSolidAreLeftOut) {
    for (const bool isFiltered : {false, true}) {
        ComponentBench bench;
        bench.set(Filter_On_Height_t, isFiltered ? "Yes" : "No");
        bench.set(Min_Height_t, "10 mm");
        EDA::EDABump bump;
        bump.setBumpType(isFiltered ? 1 : 0);
        bench.placement.addBump(bump, false);
        bench.add();
        bench.importOnSubstrate();
        EXPECT_TRUE(bench.children(bench.boardEntity, Bump_t).empty());
    }
}

TEST(ComponentEntity, SolidsInsideMakeAComponentAContainer) {
    ComponentBench bench;
    bench.part.getOutline().addInternalOutline(EDA::test::outline("2,3 3,3 3,4"));
    Entity *const entity = bench.importOne();
    EXPECT_EQ(text(entity, Modelling_Level_t), "Detailed");
    EXPECT_EQ(text(entity, Render_Style_t), "Invisible");
    std::vector<Entity *> groups;
    getLinkedEntities(entity, SubcomponentGroups_t, groups);
    ASSERT_EQ(groups.size(), 1u);
    EXPECT_EQ(bench.children(groups[0], Solid_Obstruction_t).size(), 2u);
    // Moved once by the box and once by the bound that its solids count from.
    expectPlace(entity, 21 + 1, 20 + 2);
}

TEST(ComponentEntity, SolidsInsideAResistorOrAnEntityOfASubstrateAreLeftOut) {
    for (const bool onSubstrate : {false, true}) {
        ComponentBench bench;
        bench.part.setImportToType("Resistor");
        bench.part.getOutline().addInternalOutline(EDA::test::outline("2,3 3,3 3,4"));
        Entity *const entity = onSubstrate ? bench.importOneOnSubstrate() : bench.importOne();
        ASSERT_TRUE(entity);
        std::vector<Entity *> below;
        entity->getChildEntities(below);
        EXPECT_TRUE(below.empty());
    }
}

// The properties are read after the solids are made: intended.
TEST(ComponentEntity, AResistancePropertyOverridesTheLevelOfAContainer) {
    ComponentBench bench;
    bench.part.getOutline().addInternalOutline(EDA::test::outline("2,3 3,3 3,4"));
    bench.part.addProperty("THETA_JB", "3");
    EXPECT_EQ(text(bench.importOne(), Modelling_Level_t), "2R");
}
