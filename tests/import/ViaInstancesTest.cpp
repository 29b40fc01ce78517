// Definitions with several places: as vias of their own, and as one that stands for all.
#include "ViaSupport.h"

#include <cmath>

using namespace TestSupport;
using testing::DoubleNear;
using testing::Pointwise;

namespace {

class ViaInstances : public testing::TestWithParam<const char *> {
protected:
    ViaInstances() {
        bench.set(Import_Type_t, GetParam());
        bench.via.addInstance("B", 25, 50);
        bench.via.addInstance("C", 18, 64);
    }
    void group() { bench.set(Group_Identical_Vias_t, "Yes"); }
    ViaBench bench;
};

INSTANTIATE_TEST_SUITE_P(All, ViaInstances, testing::Values("PCB", "Component"),
                         [](const auto &test) { return std::string(test.param); });

// The placements in mm.
std::vector<double> placements(Entity *via) {
    std::vector<double> values;
    const Attribute *const attribute = via->readAttribute(Instance_Placements_t);
    const auto &list = static_cast<const DoubleListAttribute &>(*attribute);
    for (int i = 0; i < list.getSize(); ++i)
        values.push_back(list.getNthStandardValue(i, "mm"));
    return values;
}

} // namespace

TEST_P(ViaInstances, UngroupedCopiesHoldTheNameOfTheOneBeforeAndTheSourceTheLast) {
    const auto vias = bench.importVia();
    ASSERT_EQ(names(vias), (Names{"C", "A", "B"}));
    expectAt(vias[0], 5, 10);
    expectAt(vias[1], 15, 20);
    expectAt(vias[2], 8, 6);
}

TEST_P(ViaInstances, UngroupedCopiesAreWholeAndLocked) {
    bench.set(Ignore_Fill_Material_t, "No");
    bench.via.setPlated(true);
    bench.via.setPlatingThickness(0.02);
    bench.via.setFillMaterial("Resin");
    bench.via.setLayers("top", "bottom");
    const auto vias = bench.importVia();
    ASSERT_EQ(vias.size(), 3u);
    for (Entity *via : vias) {
        EXPECT_EQ(mm(via, Diameter_t), 0.5);
        EXPECT_EQ(text(via, Plated_t), "Yes");
        EXPECT_EQ(text(via, "Plating Thickness"), "0.02 mm");
        EXPECT_EQ(text(via, To_Layer_t), "bottom");
        EXPECT_EQ(getLinkedEntity(via, Fill_Material_t), getLinkedEntity(vias[0], Fill_Material_t));
        EXPECT_EQ(text(via, Modelling_Type_t), "Single Via");
        for (const TypeRef &attribute : {Geometry_t, Placement_t, Number_Of_Vias_t})
            EXPECT_TRUE(isLocked(via, attribute));
    }
}

TEST_P(ViaInstances, AnUnnamedOneCountsTheCopiesBeforeIt) {
    bench.via.setName("");
    bench.add();
    bench.via = makeVia("PIN", "", 40, 40);
    EXPECT_EQ(names(bench.importVia()), (Names{"C", "Via 1", "B", "Via 4"}));
}

TEST_P(ViaInstances, GroupedThereIsOneEntityThatIsNotDrawn) {
    group();
    Entity *const via = bench.importOne();
    ASSERT_TRUE(via);
    EXPECT_EQ(text(via, Name_t), "A");
    EXPECT_EQ(text(via, Modelling_Type_t), "Multiple Vias");
    EXPECT_EQ(text(via, Render_Style_t), "Invisible");
    EXPECT_EQ(text(via, Number_Of_Vias_t), "3");
    EXPECT_EQ(mm(via, Diameter_t), 0.5);
    EXPECT_EQ(mm(via, "Via Diameter"), 0.5);
    EXPECT_TRUE(isLocked(via, Number_Of_Vias_t));
}

// The squares of 0.5 around (15, 60), (25, 50) and (18, 64) reach from (14.75, 49.75) to (25.25, 64.25).
TEST_P(ViaInstances, GroupedPlacesCountFromTheCornerOfTheBound) {
    group();
    Entity *const via = bench.importOne();
    ASSERT_TRUE(via);
    EXPECT_NEAR(mm(via, Width_t), 10.5, 1e-9);
    EXPECT_NEAR(mm(via, Depth_t), 14.5, 1e-9);
    expectAt(via, 4.75, 5.75);
    EXPECT_EQ(text(via, Instance_Placements_t), "0.25,4.25,10.25,14.25,3.25,0.25 <mm>");
    EXPECT_THAT(placements(via),
                Pointwise(DoubleNear(1e-9), std::vector<double>{0.25, 4.25, 10.25, 14.25, 3.25, 0.25}));
}

TEST_P(ViaInstances, GroupedPlacesAreThoseOfUngroupedVias) {
    const auto singles = bench.importVia();
    std::vector<std::pair<double, double>> places;
    for (Entity *via : singles)
        places.emplace_back(mm(via, X_Location_t), mm(via, Z_Location_t));
    group();
    bench.importOver(bench.boardEntity);
    ASSERT_EQ(bench.vias().size(), 1u);
    Entity *const via = bench.vias()[0];
    const std::vector<double> values = placements(via);
    ASSERT_EQ(values.size(), 6u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(mm(via, X_Location_t) + values[2 * i], places[i].first, 1e-6);
        EXPECT_NEAR(mm(via, Z_Location_t) + values[2 * i + 1], places[i].second, 1e-6);
    }
}

TEST(GroupedVias, OneWithoutInstancesIsAPlainVia) {
    ViaBench bench;
    bench.set(Group_Identical_Vias_t, "Yes");
    Entity *const via = bench.importOne();
    ASSERT_TRUE(via);
    EXPECT_EQ(text(via, Modelling_Type_t), "Single Via");
    EXPECT_NE(text(via, Render_Style_t), "Invisible");
    EXPECT_EQ(text(via, Number_Of_Vias_t), "1");
    EXPECT_EQ(mm(via, "Via Diameter"), 0.0);
    expectAt(via, 5, 10);
}

TEST(GroupedVias, PlacesAreInTheUnitsOfTheBoard) {
    ViaBench bench;
    bench.set(Group_Identical_Vias_t, "Yes");
    bench.board().setUnits("THOU");
    bench.via.addInstance("B", 25, 50);
    Entity *const via = bench.importOne();
    ASSERT_TRUE(via);
    EXPECT_NEAR(placements(via)[2], 10.25 * 0.0254, 1e-12);
    EXPECT_NEAR(mm(via, Width_t), 10.5 * 0.0254, 1e-12);
}

TEST(GroupedVias, AnInstanceWithoutPlaceLeavesTheOthersWhereTheyAre) {
    ViaBench bench;
    bench.set(Group_Identical_Vias_t, "Yes");
    bench.via.addInstance("B", std::nan(""), 50);
    bench.via.addInstance("C", 25, 50);
    Entity *const via = bench.importOne();
    ASSERT_TRUE(via);
    EXPECT_THAT(placements(via), Pointwise(DoubleNear(1e-9), std::vector<double>{0.25, 0.25, 10.25, 10.25}));
}

TEST(GroupedVias, SlotsAndMountingHolesAreNeverGrouped) {
    ViaBench bench;
    bench.set(Group_Identical_Vias_t, "Yes");
    bench.via.setHoleType("MTG");
    bench.via.addInstance("B", 25, 50);
    EXPECT_TRUE(bench.importVia().empty());
    EXPECT_EQ(bench.holes().size(), 2u);
}

TEST(GroupedVias, WithoutADiameterThatIsANumberPlaceAndSizeStay) {
    ViaBench plain;
    Entity *const single = plain.importOne();
    ASSERT_TRUE(single);
    for (const double diameter : {std::nan(""), HUGE_VAL}) {
        ViaBench bench;
        bench.set(Group_Identical_Vias_t, "Yes");
        bench.via.setDiameter(diameter);
        bench.via.addInstance("B", 25, 50);
        Entity *const via = bench.importOne();
        ASSERT_TRUE(via);
        EXPECT_EQ(text(via, Number_Of_Vias_t), "2");
        expectAt(via, 5, 10);
        EXPECT_EQ(text(via, Width_t), text(single, Width_t));
        EXPECT_EQ(text(via, Depth_t), text(single, Depth_t));
        EXPECT_THAT(placements(via), Pointwise(DoubleNear(1e-9), std::vector<double>{0, 0, 10, 10}));
    }
}

TEST(GroupedVias, WithoutAnyPlaceThereIsAnEntityWithoutPlacements) {
    ViaBench bench;
    bench.set(Group_Identical_Vias_t, "Yes");
    bench.via.setCentre(std::nan(""), 60);
    bench.via.addInstance("B", 25, HUGE_VAL);
    Entity *const via = bench.importOne();
    ASSERT_TRUE(via);
    EXPECT_EQ(text(via, Number_Of_Vias_t), "2");
    EXPECT_TRUE(placements(via).empty());
}
