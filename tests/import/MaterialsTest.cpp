// Materials that an import makes.
#include "ComponentSupport.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

Entity *conductorOf(ImportBench &bench, const std::string &name) {
    bench.board().setConductorMaterial(name);
    return getLinkedEntity(bench.import(), Conductor_Material_t);
}

double value(Entity *material, const TypeRef &quantity) {
    return getStandardDoubleValue(material, quantity / AttributePath(Value_t), -1.0);
}

} // namespace

TEST(Materials, CopperInAnyCaseGetsTheValuesOfCopper) {
    ImportBench bench;
    Entity *copper = conductorOf(bench, "CoPPer");
    ASSERT_TRUE(copper);
    EXPECT_EQ(value(copper, Conductivity_t), 386.0);
    EXPECT_EQ(value(copper, Specific_Heat_t), 380.0);
    EXPECT_EQ(value(copper, Density_t), 8950.0);
    EXPECT_EQ(value(copper, Electrical_Conductivity_t), 5.95e7);
}

TEST(Materials, AnyOtherNameGetsTheValuesOfAPlainDielectric) {
    ImportBench bench;
    Entity *material = conductorOf(bench, "FR4");
    EXPECT_EQ(value(material, Conductivity_t), 0.3);
    EXPECT_EQ(value(material, Specific_Heat_t), 880.0);
    EXPECT_EQ(value(material, Density_t), 1200.0);
    EXPECT_EQ(value(material, Electrical_Conductivity_t), 0.0);
}

TEST(Materials, TheNamesOfTheDefaultsGetTheirValues) {
    ImportBench typical;
    EXPECT_EQ(value(conductorOf(typical, "Typical Component"), Conductivity_t), 10.0);
    ImportBench plastic;
    EXPECT_EQ(value(conductorOf(plastic, "ABS-Plastic"), Density_t), 1010.0);
}

TEST(Materials, AMaterialOfTheModelIsSharedAndKeepsItsValues) {
    ImportBench bench;
    Entity *own = EntityEditor::createEntity(Material_t, bench.model.root(), Materials_t, nullptr, true, true,
                                             false, "Copper");
    EntityEditor::setSIValue(own, Conductivity_t / AttributePath(Value_t), 1.0);
    EXPECT_EQ(conductorOf(bench, "Copper"), own);
    EXPECT_EQ(value(own, Conductivity_t), 1.0);
    std::vector<Entity *> materials;
    getLinkedEntities(bench.model.root(), Materials_t, materials);
    EXPECT_EQ(materials.size(), 1u);
}

TEST(Materials, WithAChassisAtTheRootItHoldsTheMaterials) {
    ImportBench bench;
    Model chassisModel(Chassis_t);
    bench.rectangle(0, 0, 0, 4, 2);
    bench.board().setConductorMaterial("Copper");
    Entity *board = bench.importer.importBoard(&bench.reader, nullptr, chassisModel.root(), nullptr);
    ASSERT_TRUE(board);
    EXPECT_TRUE(getLinkedEntity(board, Conductor_Material_t));
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(Materials, APartThatNamesNoneGetsTheDefaultOfItsClass) {
    for (const char *kind : {"ELECTRICAL", "MECHANICAL"}) {
        ComponentBench bench(boxOutline, kind);
        std::string name;
        EXPECT_EQ(getLinkedEntity(bench.importOne(), MaterialLink_t)->getName(name),
                  std::string(kind) == "MECHANICAL" ? "ABS-Plastic" : "Typical Component");
    }
}

TEST(Materials, ANameThatIsGivenStandsAboveTheDefaultOfTheClass) {
    ComponentBench bench(boxOutline, "MECHANICAL");
    bench.part.getOutline().setMaterial("Typical Component");
    Entity *const material = getLinkedEntity(bench.importOne(), MaterialLink_t);
    ASSERT_TRUE(material);
    EXPECT_EQ(value(material, Conductivity_t), 10.0);
    EXPECT_EQ(value(material, Specific_Heat_t), 500.0);
    EXPECT_EQ(value(material, Density_t), 3000.0);
}

TEST(Materials, TheDefaultsOfPlasticAreThoseOfABS) {
    ComponentBench bench(boxOutline, "MECHANICAL");
    Entity *const material = getLinkedEntity(bench.importOne(), MaterialLink_t);
    ASSERT_TRUE(material);
    EXPECT_EQ(value(material, Conductivity_t), 0.25);
    EXPECT_EQ(value(material, Specific_Heat_t), 1260.0);
    EXPECT_EQ(value(material, Density_t), 1010.0);
    EXPECT_EQ(value(material, Electrical_Conductivity_t), 0.0);
}

TEST(Materials, AModelWithoutPlaceForThemGetsNoneAndNoMessage) {
    Model boardModel(PCB_t);
    ComponentBench bench;
    bench.board().setConductorMaterial("Copper");
    bench.part.addProperty("THERM_COND", "3");
    bench.add();
    bench.define();
    Entity *const board = bench.importOver(boardModel.root());
    const auto parts = bench.placedOn(board);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_FALSE(getLinkedEntity(parts[0], MaterialLink_t));
    EXPECT_FALSE(getLinkedEntity(board, Conductor_Material_t));
    EXPECT_EQ(bench.importer.getErrorString(), "");
}
