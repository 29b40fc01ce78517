// Solder bumps of a package.
#include "support/CancelAfter.h"
#include "support/ImportBench.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace TestSupport;
using testing::DoubleEq;
using testing::DoubleNear;
using testing::Pointwise;

namespace {

// A package imported as a component, its board's origin at (10, 70).
struct BumpBench : ImportBench {
    BumpBench() {
        rectangle(0, 10, 20, 110, 70);
        set(Import_Type_t, "Component");
        bump.setName("A");
        bump.setBumpType(1);
        bump.setCentre(15, 60);
        bump.setMaxDiameter(0.5);
        bump.setTopDiameter(0.3);
        bump.setBottomDiameter(0.25);
        bump.setHeight(0.4);
        bump.setVerticalOffset(-0.4);
    }

    std::vector<Entity *> importBump() {
        board().addBump(bump, false);
        substrate = import();
        return bumps();
    }
    std::vector<Entity *> bumps() { return children(substrate, Bump_t); }

    Entity *substrate = nullptr;
    EDA::EDABump bump;
};

std::vector<std::string> names(const std::vector<Entity *> &entities) {
    std::vector<std::string> list;
    for (Entity *entity : entities)
        list.push_back(text(entity, Name_t));
    return list;
}

using Names = std::vector<std::string>;

} // namespace

TEST(Bumps, ABumpHasItsDetailedShapeAndItsPlace) {
    BumpBench bench;
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 1U);
    EXPECT_EQ(text(bumps[0], Name_t), "A");
    EXPECT_EQ(text(bumps[0], Definition_t), "Detailed");
    EXPECT_EQ(text(bumps[0], Modelling_Type_t), "Single Bump");
    EXPECT_EQ(mm(bumps[0], "Max Diameter"), 0.5);
    EXPECT_EQ(mm(bumps[0], "Top Diameter"), 0.3);
    EXPECT_EQ(mm(bumps[0], "Bottom Diameter"), 0.25);
    EXPECT_EQ(mm(bumps[0], "Height"), 0.4);
    EXPECT_EQ(mm(bumps[0], X_Location_t), 5.0);
    EXPECT_EQ(mm(bumps[0], Z_Location_t), 10.0);
    EXPECT_EQ(mm(bumps[0], Y_Location_t), -0.4);
}

TEST(Bumps, SizeAndPlaceAreLocked) {
    BumpBench bench;
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 1U);
    EXPECT_TRUE(bumps[0]->findAttribute(Geometry_t)->isLocked());
    EXPECT_TRUE(bumps[0]->findAttribute(Placement_t)->isLocked());
    EXPECT_TRUE(bumps[0]->isProtected());
}

TEST(Bumps, AMaterialFillsTheBump) {
    BumpBench bench;
    bench.bump.setMaterial("SAC305");
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 1U);
    EXPECT_EQ(text(bumps[0], Filled_t), "Yes");
    Entity *const material = getLinkedEntity(bumps[0], MaterialLink_t);
    ASSERT_TRUE(material);
    EXPECT_EQ(text(material, Name_t), "SAC305");
}

TEST(Bumps, TypeZeroLeavesNoEntity) {
    BumpBench bench;
    bench.bump.setBumpType(0);
    EXPECT_TRUE(bench.importBump().empty());
}

TEST(Bumps, WithTheOptionOffThereAreNone) {
    BumpBench bench;
    bench.set(Import_Bumps_t, "No");
    EXPECT_TRUE(bench.importBump().empty());
}

TEST(Bumps, ABoardImportedAsPcbGetsNone) {
    BumpBench bench;
    bench.set(Import_Type_t, "PCB");
    EXPECT_TRUE(bench.importBump().empty());
}

TEST(Bumps, UngroupedCopiesHoldTheNameOfTheOneBeforeAndTheSourceTheLast) {
    BumpBench bench;
    bench.set(Group_Identical_Bumps_t, "No");
    bench.bump.addInstance("B", 25, 60);
    bench.bump.addInstance("C", 35, 50);
    const auto bumps = bench.importBump();
    ASSERT_EQ(names(bumps), (Names{"C", "A", "B"}));
    EXPECT_EQ(mm(bumps[0], X_Location_t), 5.0);
    EXPECT_EQ(mm(bumps[1], X_Location_t), 15.0);
    EXPECT_EQ(mm(bumps[1], Z_Location_t), 10.0);
    EXPECT_EQ(mm(bumps[2], X_Location_t), 25.0);
    EXPECT_EQ(mm(bumps[2], Z_Location_t), 20.0);
}

TEST(Bumps, UngroupedCopiesAreWholeAndLocked) {
    BumpBench bench;
    bench.set(Group_Identical_Bumps_t, "No");
    bench.bump.setMaterial("SAC305");
    bench.bump.addInstance("B", 25, 60);
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 2U);
    EXPECT_EQ(mm(bumps[1], "Max Diameter"), 0.5);
    EXPECT_EQ(getLinkedEntity(bumps[1], MaterialLink_t), getLinkedEntity(bumps[0], MaterialLink_t));
    EXPECT_TRUE(bumps[1]->findAttribute(Geometry_t)->isLocked());
    EXPECT_TRUE(bumps[1]->findAttribute(Placement_t)->isLocked());
}

TEST(Bumps, AnUnnamedBumpCountsTheCopiesBeforeIt) {
    BumpBench bench;
    bench.set(Group_Identical_Bumps_t, "No");
    bench.bump.setName("");
    bench.bump.addInstance("B", 25, 60);
    bench.bump.addInstance("C", 35, 50);
    bench.board().addBump(bench.bump, false);
    EDA::EDABump next;
    next.setBumpType(2);
    next.setCentre(40, 40);
    bench.board().addBump(next, false);
    bench.substrate = bench.import();
    EXPECT_EQ(names(bench.bumps()), (Names{"C", "Bump 1", "B", "Bump 4"}));
}

TEST(Bumps, GroupedInstancesAreOneVisibleEntityWithPlacesOfTheModel) {
    BumpBench bench;
    bench.bump.addInstance("B", 25, 60);
    bench.bump.addInstance("C", 35, 50);
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 1U);
    EXPECT_EQ(text(bumps[0], Modelling_Type_t), "Multiple Bumps");
    EXPECT_EQ(text(bumps[0], Name_t), "A");
    EXPECT_EQ(mm(bumps[0], X_Location_t), 5.0);
    const auto *places = static_cast<const DoubleListAttribute *>(
        bumps[0]->readAttribute(AttributePath(Instance_Placements_t)));
    ASSERT_EQ(places->getSize(), 6);
    const double expected[] = {5, 10, 15, 10, 25, 20};
    for (int i = 0; i < 6; ++i)
        EXPECT_DOUBLE_EQ(places->getNthStandardValue(i, "mm"), expected[i]) << i;
}

TEST(Bumps, GroupedWithoutInstancesIsAPlainBump) {
    BumpBench bench;
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 1U);
    EXPECT_EQ(text(bumps[0], Modelling_Type_t), "Single Bump");
}

TEST(Bumps, APlaceThatIsNoNumberIsLeftUnset) {
    BumpBench bench;
    bench.bump.setCentre(std::nan(""), 60);
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 1U);
    EXPECT_EQ(mm(bumps[0], X_Location_t), 0.0);
    EXPECT_EQ(mm(bumps[0], Z_Location_t), 10.0);
}

namespace {

std::vector<double> instancePlaces(Entity *bump) {
    const auto *const places =
        static_cast<const DoubleListAttribute *>(bump->readAttribute(AttributePath(Instance_Placements_t)));
    std::vector<double> values;
    for (int i = 0; i < places->getSize(); ++i)
        values.push_back(places->getNthStandardValue(i, "mm"));
    return values;
}

} // namespace

TEST(Bumps, OfGroupedInstancesOnlyOneWithAPlaceThatIsNoNumberIsLeftOut) {
    BumpBench bench;
    bench.bump.addInstance("B", std::nan(""), 60);
    bench.bump.addInstance("C", 35, 50);
    bench.bump.addInstance("D", 45, -HUGE_VAL);
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 1U);
    EXPECT_EQ(text(bumps[0], Modelling_Type_t), "Multiple Bumps");
    EXPECT_THAT(instancePlaces(bumps[0]), Pointwise(DoubleEq(), {5.0, 10.0, 25.0, 20.0}));
}

TEST(Bumps, AGroupWhoseFirstHasNoPlaceKeepsTheOthers) {
    BumpBench bench;
    bench.bump.setCentre(std::nan(""), 60);
    bench.bump.addInstance("B", 25, 60);
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 1U);
    EXPECT_THAT(instancePlaces(bumps[0]), Pointwise(DoubleEq(), {15.0, 10.0}));
}

TEST(Bumps, AGroupWithoutAnyPlaceKeepsTheInstancesThatANewBumpHas) {
    BumpBench bench;
    bench.bump.setCentre(std::nan(""), 60);
    bench.bump.addInstance("B", 25, HUGE_VAL);
    const auto grouped = bench.importBump();
    ASSERT_EQ(grouped.size(), 1U);
    BumpBench plain;
    const auto single = plain.importBump();
    ASSERT_EQ(single.size(), 1U);
    EXPECT_EQ(instancePlaces(grouped[0]), instancePlaces(single[0]));
}

TEST(Bumps, OfUngroupedInstancesOneWithoutAPlaceIsWhereTheSourceIs) {
    BumpBench bench;
    bench.set(Group_Identical_Bumps_t, "No");
    bench.bump.addInstance("B", std::nan(""), 50);
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 2U);
    EXPECT_EQ(mm(bumps[1], X_Location_t), 5.0);
    EXPECT_EQ(mm(bumps[1], Z_Location_t), 20.0);
}

TEST(Bumps, OnABoardOfAnyOtherShapePlacesCountFromTheCornerOfItsBound) {
    for (const char *grouped : {"Yes", "No"}) {
        BumpBench bench;
        bench.board().addPoint(0, 12, 45, 0.0); // A dent in the left edge.
        bench.set(Group_Identical_Bumps_t, grouped);
        bench.bump.addInstance("B", 25, 50);
        const auto bumps = bench.importBump();
        EXPECT_EQ(text(bench.substrate, Shape_t), "Polygon");
        ASSERT_FALSE(bumps.empty());
        EXPECT_EQ(mm(bumps[0], X_Location_t), 5.0);
        EXPECT_EQ(mm(bumps[0], Z_Location_t), 10.0);
        if (bumps.size() == 1) {
            EXPECT_THAT(instancePlaces(bumps[0]), Pointwise(DoubleEq(), {5.0, 10.0, 15.0, 20.0}));
        } else {
            EXPECT_EQ(mm(bumps[1], X_Location_t), 15.0);
            EXPECT_EQ(mm(bumps[1], Z_Location_t), 20.0);
        }
    }
}

TEST(Bumps, LengthsAndPlacesAreInTheUnitsOfTheBoard) {
    BumpBench bench;
    bench.board().setUnits("THOU");
    bench.bump.addInstance("B", 25, 50);
    const auto bumps = bench.importBump();
    ASSERT_EQ(bumps.size(), 1U);
    EXPECT_NEAR(mm(bumps[0], "Max Diameter"), 0.5 * 0.0254, 1e-12);
    EXPECT_NEAR(mm(bumps[0], "Height"), 0.4 * 0.0254, 1e-12);
    EXPECT_NEAR(mm(bumps[0], X_Location_t), 5 * 0.0254, 1e-12);
    EXPECT_NEAR(mm(bumps[0], Y_Location_t), -0.4 * 0.0254, 1e-12);
    EXPECT_NEAR(mm(bumps[0], Z_Location_t), 10 * 0.0254, 1e-12);
    EXPECT_THAT(instancePlaces(bumps[0]), Pointwise(DoubleNear(1e-9), {0.127, 0.254, 0.381, 0.508}));
}

TEST(Bumps, ACancelBetweenThemKeepsThoseThatWereMade) {
    BumpBench bench;
    for (const char *name : {"A", "B", "C"}) {
        bench.bump.setName(name);
        bench.board().addBump(bench.bump, false);
    }
    CancelAfter progress(1);
    bench.substrate = bench.import(&progress);
    EXPECT_EQ(names(bench.bumps()), (Names{"A", "B"}));
    EXPECT_EQ(progress.finishes, 1);
}
