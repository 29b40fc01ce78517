// Layers: place in the stack, materials, modelling level, conductors.
#include "LayerSupport.h"

#include <gmock/gmock.h>
#include <limits>

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const AttributePath conductorThickness("Conductor Thickness");

// Runs a test for a board of each family.
class LayersOf : public testing::TestWithParam<const char *> {
protected:
    LayerBench bench{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(BothFamilies, LayersOf, testing::Values("PCB", "Component"), familyName);

double height(double offset, double thickness = 1.6) {
    LayerBench bench;
    bench.board().setThickness(thickness);
    bench.layer.setTopOffset(offset);
    return mm(bench.importOne(), Y_Location_t);
}

double thicknessOf(double thickness) {
    LayerBench bench;
    bench.layer.setThickness(thickness);
    return mm(bench.importOne(), conductorThickness);
}

} // namespace

TEST_P(LayersOf, AConductorLayerHasNameThicknessAndHeightAboveTheBottom) {
    bench.layer.setThickness(0.07);
    bench.layer.setTopOffset(0.4);
    Entity *layer = bench.importOne();
    ASSERT_TRUE(layer);
    EXPECT_EQ(text(layer, Name_t), "TOP");
    EXPECT_EQ(mm(layer, conductorThickness), 0.07);
    EXPECT_DOUBLE_EQ(mm(layer, Y_Location_t), 1.2);
    EXPECT_EQ(layer->getOwnerEntity(), bench.boardEntity);
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST_P(LayersOf, ADielectricLayerHasNameThicknessHeightAndMaterial) {
    bench.set(Import_Dielectric_Layers_t, "Yes");
    EDA::EDABoardLayer core(false);
    core.setName("CORE");
    core.setThickness(0.5);
    core.setTopOffset(0.1);
    core.setDielectricMaterial("Ceramic");
    bench.board().addLayer(core);
    bench.boardEntity = bench.import();
    const auto found = bench.dielectrics();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(text(found[0], Name_t), "CORE");
    EXPECT_EQ(mm(found[0], "Thickness"), 0.5);
    EXPECT_DOUBLE_EQ(mm(found[0], Y_Location_t), 1.5);
    EXPECT_EQ(linked(found[0], MaterialLink_t), "Ceramic");
    EXPECT_THAT(bench.layers(), IsEmpty());
}

TEST_P(LayersOf, ADetailedLayerHasItsConductorsAndNets) {
    bench.layer.addTrace(LayerBench::square(20, "a"));
    bench.layer.addTrace(LayerBench::square(30, "b"));
    EDA::EDANet net;
    net.setName("GND");
    net.addTrace(LayerBench::square(40, "c"));
    bench.layer.addNet(net);
    Entity *layer = bench.importOne();
    ASSERT_TRUE(layer);
    EXPECT_EQ(text(layer, Modelling_Level_t), "Detailed");
    EXPECT_THAT(namesOf(bench.conductors(layer)), ElementsAre("a", "b"));
    ASSERT_THAT(namesOf(bench.nets(layer)), ElementsAre("GND"));
    EXPECT_THAT(namesOf(bench.conductors(bench.nets(layer)[0])), ElementsAre("c"));
}

TEST_P(LayersOf, WithoutDetailTheLayerIsUniformAndHasNoConductors) {
    bench.set(Import_Detailed_Layers_t, "No");
    bench.layer.addTrace(LayerBench::square(20));
    Entity *layer = bench.importOne();
    ASSERT_TRUE(layer);
    EXPECT_EQ(text(layer, Modelling_Level_t), "Uniform Conductivity");
    EXPECT_THAT(bench.conductors(layer), IsEmpty());
}

TEST(Layers, AThicknessThatIsNotGivenLeavesTheDefault) {
    const double byDefault = 0.035;
    for (const double thickness :
         {0.0, 1e-9, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(thicknessOf(thickness), byDefault) << thickness;
    EXPECT_EQ(thicknessOf(2e-9), 2e-9);
}

TEST(Layers, ADielectricThicknessThatIsNotGivenLeavesTheDefault) {
    LayerBench bench;
    bench.set(Import_Dielectric_Layers_t, "Yes");
    bench.layer = EDA::EDABoardLayer(false);
    bench.layer.setThickness(1e-9);
    bench.importOne();
    ASSERT_EQ(bench.dielectrics().size(), 1u);
    EXPECT_TRUE(bench.dielectrics()[0]->findAttribute("Thickness")->isDefault());
}

TEST(Layers, HeightIsTheThicknessOfTheBoardLessTheOffset) {
    EXPECT_EQ(height(0.0), 1.6);
    EXPECT_DOUBLE_EQ(height(1.6), 0.0);
    EXPECT_DOUBLE_EQ(height(2.0), -0.4);
    EXPECT_DOUBLE_EQ(height(-0.5), 2.1);
    EXPECT_EQ(height(-999.0, 1.0), 1000.0);
}

TEST(Layers, AnOffsetOfMinusAThousandIsNone) {
    EXPECT_EQ(height(-1000.0), 0.0);
    EXPECT_EQ(height(-1001.0), 0.0);
    EXPECT_EQ(height(std::numeric_limits<double>::quiet_NaN()), 0.0);
}

TEST(Layers, LengthsAreInTheUnitsOfTheBoard) {
    LayerBench bench;
    bench.board().setUnits("IN");
    bench.board().setThickness(0.1);
    bench.layer.setThickness(0.01);
    bench.layer.setTopOffset(0.0);
    Entity *layer = bench.importOne();
    EXPECT_NEAR(mm(layer, conductorThickness), 0.254, 1e-12);
    EXPECT_NEAR(mm(layer, Y_Location_t), 2.54, 1e-12);
}

TEST(Layers, MaterialsThatDifferFromTheBoardsAreLinked) {
    LayerBench bench;
    bench.board().setConductorMaterial("Copper");
    bench.board().setDielectricMaterial("FR-4");
    bench.layer.setConductorMaterial("Silver");
    bench.layer.setDielectricMaterial("Ceramic");
    Entity *layer = bench.importOne();
    EXPECT_EQ(text(layer, Different_Conductor_Material_t), "Yes");
    EXPECT_EQ(linked(layer, MaterialLink_t), "Silver");
    EXPECT_EQ(text(layer, Different_Dielectric_Material_t), "Yes");
    EXPECT_EQ(linked(layer, DielectricMaterialLink_t), "Ceramic");
}

TEST(Layers, MaterialsOfTheBoardAreNotLinkedAgain) {
    LayerBench bench;
    bench.board().setConductorMaterial("Copper");
    bench.board().setDielectricMaterial("FR-4");
    bench.layer.setConductorMaterial("Copper");
    bench.layer.setDielectricMaterial("FR-4");
    Entity *layer = bench.importOne();
    EXPECT_EQ(text(layer, Different_Conductor_Material_t), "No");
    EXPECT_EQ(linked(layer, MaterialLink_t), "(none)");
    EXPECT_EQ(text(layer, Different_Dielectric_Material_t), "No");
    EXPECT_EQ(linked(layer, DielectricMaterialLink_t), "(none)");
}

TEST(Layers, CaseTellsMaterialsApart) {
    LayerBench bench;
    bench.board().setConductorMaterial("Copper");
    bench.layer.setConductorMaterial("COPPER");
    EXPECT_EQ(linked(bench.importOne(), MaterialLink_t), "COPPER");
}

TEST(Layers, ALayerThatNamesNoMaterialHasNone) {
    LayerBench bench;
    bench.board().setConductorMaterial("Copper");
    Entity *layer = bench.importOne();
    EXPECT_EQ(text(layer, Different_Conductor_Material_t), "No");
    EXPECT_EQ(linked(layer, MaterialLink_t), "(none)");
}

TEST(Layers, DielectricLayersAreLeftOutUnlessAskedFor) {
    LayerBench bench;
    bench.layer = EDA::EDABoardLayer(false);
    bench.importOne();
    EXPECT_THAT(bench.dielectrics(), IsEmpty());
    EXPECT_THAT(bench.layers(), IsEmpty());
}

TEST(Layers, ADielectricTakesItsOwnMaterialOrTheBoards) {
    for (const bool isOwn : {true, false}) {
        LayerBench bench;
        bench.set(Import_Dielectric_Layers_t, "Yes");
        bench.board().setDielectricMaterial("FR-4");
        bench.layer = EDA::EDABoardLayer(false);
        if (isOwn) bench.layer.setDielectricMaterial("Ceramic");
        bench.importOne();
        ASSERT_EQ(bench.dielectrics().size(), 1u);
        EXPECT_EQ(linked(bench.dielectrics()[0], MaterialLink_t), isOwn ? "Ceramic" : "FR-4");
    }
}

TEST(Layers, ADielectricTakesTheMaterialThatTheBoardEntityLinks) {
    LayerBench bench;
    Entity *existing = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
    Entity *mica = EntityEditor::createEntity(Material_t, bench.model.root(), Materials_t, nullptr, true,
                                              true, false, "Mica");
    ASSERT_TRUE(EntityEditor::addEntity(existing, Dielectric_Material_t, mica));
    bench.set(Import_Dielectric_Layers_t, "Yes");
    bench.board().addLayer(EDA::EDABoardLayer(false));
    bench.boardEntity = bench.importOver(existing);
    ASSERT_EQ(bench.dielectrics().size(), 1u);
    EXPECT_EQ(getLinkedEntity(bench.dielectrics()[0], MaterialLink_t), mica);
}

TEST(Layers, ADielectricWithoutAnyMaterialNamedTakesTheDefault) {
    LayerBench bench;
    bench.set(Import_Dielectric_Layers_t, "Yes");
    bench.layer = EDA::EDABoardLayer(false);
    bench.importOne();
    ASSERT_EQ(bench.dielectrics().size(), 1u);
    EXPECT_EQ(linked(bench.dielectrics()[0], MaterialLink_t), "Typical Component");
}

TEST(Layers, AUniformConductivityThatIsGivenIsTheShareOfConductor) {
    const auto percentage = [](double conductivity) {
        LayerBench bench;
        bench.layer.setUniformConductivity(conductivity);
        Entity *layer = bench.importOne();
        EXPECT_EQ(text(layer, Modelling_Level_t), "Uniform Conductivity");
        return getStandardDoubleValue(layer, Conductor_Planar_Percentage_t, -1.0);
    };
    EXPECT_EQ(percentage(42.5), 42.5);
    EXPECT_EQ(percentage(0.0), 100.0);
    EXPECT_EQ(percentage(1e-9), 100.0);
    EXPECT_EQ(percentage(-5.0), 100.0);
}

TEST(Layers, ALayerWithoutConductorsIsUniformInDetailToo) {
    LayerBench bench;
    EXPECT_EQ(text(bench.importOne(), Modelling_Level_t), "Uniform Conductivity");
}

TEST(Layers, AnEmptyNetMakesALayerDetailed) {
    LayerBench bench;
    EDA::EDANet net;
    net.setName("N");
    bench.layer.addNet(net);
    Entity *layer = bench.importOne();
    EXPECT_EQ(text(layer, Modelling_Level_t), "Detailed");
    EXPECT_THAT(namesOf(bench.nets(layer)), ElementsAre("N"));
}

TEST(Layers, TracesWithoutPointsMakeALayerDetailedAndAreSkipped) {
    LayerBench bench;
    bench.layer.addTrace(EDA::EDATrace());
    Entity *layer = bench.importOne();
    EXPECT_EQ(text(layer, Modelling_Level_t), "Detailed");
    EXPECT_THAT(bench.conductors(layer), IsEmpty());
}

TEST(Layers, AConductorWhoseFirstHoleLiesApartIsSkipped) {
    LayerBench bench;
    EDA::EDATrace apart = LayerBench::square(20, "apart");
    LayerBench::cut(apart, 90);
    LayerBench::cut(apart, 20.5);
    EDA::EDATrace inside = LayerBench::square(30, "inside");
    LayerBench::cut(inside, 30.5);
    LayerBench::cut(inside, 90); // Later holes are not looked at.
    bench.layer.addTrace(apart);
    bench.layer.addTrace(inside);
    EXPECT_THAT(namesOf(bench.conductors(bench.importOne())), ElementsAre("inside"));
}

TEST(Layers, AnIslandIsNotTheFirstHole) {
    LayerBench bench;
    EDA::EDATrace trace = LayerBench::square(20, "t");
    LayerBench::cut(trace, 90);
    EDA::EDAOutline island;
    island.addPoint(0, 90, 30, 0.0);
    island.addPoint(0, 91, 30, 0.0);
    island.addPoint(0, 91, 31, 0.0);
    EDA::EDATrace other = LayerBench::square(40, "u");
    other.getOutline().addInternalOutline(island);
    LayerBench::cut(other, 40.5);
    bench.layer.addTrace(trace);
    bench.layer.addTrace(other);
    EXPECT_THAT(namesOf(bench.conductors(bench.importOne())), ElementsAre("u", "u"));
}

TEST(Layers, EqualNamesMakeLayersOfTheirOwn) {
    LayerBench bench;
    bench.board().addLayer(bench.layer);
    bench.importOne();
    EXPECT_THAT(namesOf(bench.layers()), ElementsAre("TOP", "TOP"));
}

TEST(Layers, ABoardThatCouldNotBeMadeTakesNoLayers) {
    LayerBench bench;
    EntityEditor::deleteEntity(bench.chassis);
    bench.layer.addTrace(LayerBench::square(20));
    EXPECT_EQ(bench.importOne(), nullptr);
    EXPECT_EQ(bench.boardEntity, nullptr);
}
