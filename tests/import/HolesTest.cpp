// Holes of boards.
#include "support/ImportBench.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace TestSupport;

namespace {

Entity *onlyHole(ImportBench &bench, Entity *board, const TypeRef &type = PCB_Hole_t) {
    const auto holes = bench.children(board, type);
    EXPECT_EQ(holes.size(), 1u);
    return holes.empty() ? nullptr : holes[0];
}

const char *const oneSkipped =
    "The outline of a hole in the board was not valid in the file so this hole was skipped.\n";

} // namespace

TEST(BoardHoles, ASquareHoleIsARectangleAtItsLowXHighYCorner) {
    ImportBench bench;
    bench.rectangle(0, 10, 20, 110, 70);
    bench.rectangle(1, 30, 40, 34, 46);
    Entity *hole = onlyHole(bench, bench.import());
    ASSERT_TRUE(hole);
    EXPECT_EQ(text(hole, Shape_t), "Rectangle");
    EXPECT_EQ(mm(hole, Width_t), 4.0);
    EXPECT_EQ(mm(hole, Depth_t), 6.0);
    EXPECT_EQ(mm(hole, X_Location_t), 20.0);
    EXPECT_EQ(mm(hole, Z_Location_t), 24.0);
    EXPECT_EQ(text(hole, Orientation_t), "0 degrees");
}

TEST(BoardHoles, ARoundHoleIsACylinderAtItsCentre) {
    ImportBench bench;
    bench.rectangle(0, 10, 20, 110, 70);
    bench.circle(1, 60, 45, 2);
    Entity *hole = onlyHole(bench, bench.import());
    ASSERT_TRUE(hole);
    EXPECT_EQ(text(hole, Shape_t), "Cylinder");
    EXPECT_NEAR(mm(hole, Diameter_t), 4.0, 1e-9);
    EXPECT_NEAR(mm(hole, X_Location_t), 50.0, 1e-9);
    EXPECT_NEAR(mm(hole, Z_Location_t), 25.0, 1e-9);
}

TEST(BoardHoles, AnyOtherHoleIsAPolygonAroundTheCentreOfItsBound) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.loop(1, {{10, 10}, {14, 10}, {14, 16}});
    Entity *hole = onlyHole(bench, bench.import());
    ASSERT_TRUE(hole);
    EXPECT_EQ(text(hole, Shape_t), "Polygon");
    EXPECT_EQ(text(hole, Outline_t), "-2,3,2,3,2,-3 <mm>");
    EXPECT_EQ(mm(hole, X_Location_t), 12.0);
    EXPECT_EQ(mm(hole, Z_Location_t), 50.0 - 13.0);
}

TEST(BoardHoles, ASquareHoleWithoutSimplifiedShapesIsAPolygonAroundItsCentre) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.rectangle(1, 10, 10, 14, 16);
    bench.set(Simplify_Shapes_t, "No");
    Entity *hole = onlyHole(bench, bench.import());
    ASSERT_TRUE(hole);
    EXPECT_EQ(text(hole, Outline_t), "-2,3,2,3,2,-3,-2,-3 <mm>");
}

TEST(BoardHoles, ATwoPointCircleIsACylinderWithoutSimplifiedShapes) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.circle(1, 60, 45, 2);
    bench.set(Simplify_Shapes_t, "No");
    EXPECT_EQ(text(onlyHole(bench, bench.import()), Shape_t), "Cylinder");
}

TEST(BoardHoles, AHoleOfTheSmallestAreaIsImportedAndASmallerOneSkipped) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.rectangle(1, 0, 0, 1, 1e-12);
    Entity *board = bench.import();
    EXPECT_EQ(bench.children(board, PCB_Hole_t).size(), 1u);
    EXPECT_EQ(bench.importer.getErrorString(), "");

    ImportBench smaller;
    smaller.rectangle(0, 0, 0, 100, 50);
    smaller.rectangle(1, 0, 0, 1, 0.9e-12);
    EXPECT_TRUE(smaller.children(smaller.import(), PCB_Hole_t).empty());
    EXPECT_EQ(smaller.importer.getErrorString(), oneSkipped);
}

TEST(BoardHoles, SeveralInvalidHolesAreToldAsANumber) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.loop(1, {{10, 10}, {14, 10}});
    bench.loop(2, {{20, 10}});
    bench.import();
    EXPECT_EQ(
        bench.importer.getErrorString(),
        "The outline of 2 holes in the board were not valid in the file so these holes were skipped.\n");
}

TEST(BoardHoles, AnInternalOutlineThatIsNoHoleIsPassedOver) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 50);
    EDA::EDAOutline island(false);
    for (const auto &[x, y] : {std::pair{1.0, 1.0}, {2.0, 1.0}, {2.0, 2.0}})
        island.addPoint(0, x, y, 0.0);
    bench.board().getOutline().addInternalOutline(island);
    EXPECT_TRUE(bench.children(bench.import(), PCB_Hole_t).empty());
}

TEST(BoardHoles, OnASubstrateTheyAreSubstrateHoles) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.rectangle(1, 10, 10, 14, 16);
    bench.set(Import_Type_t, "Component");
    EXPECT_TRUE(onlyHole(bench, bench.import(), Substrate_Hole_t));
}

TEST(BoardHoles, ARoughCircleIsRoundInAPcbAndAPolygonInASubstrate) {
    for (const bool isComponent : {false, true}) {
        ImportBench bench;
        bench.rectangle(0, -100, -100, 100, 100);
        // A point that lies off by 3e-5 of the radius: between the two tolerances.
        for (int i = 0; i < 24; ++i) {
            const double radius = i == 5 ? 1.0 + 1.5e-5 : 1.0;
            const double angle = i * std::atan(1.0) / 3.0;
            bench.board().addPoint(1, radius * std::cos(angle), radius * std::sin(angle), 0.0);
        }
        bench.set(Import_Type_t, isComponent ? "Component" : "PCB");
        Entity *hole = onlyHole(bench, bench.import(), isComponent ? Substrate_Hole_t : PCB_Hole_t);
        ASSERT_TRUE(hole);
        EXPECT_EQ(text(hole, Shape_t), isComponent ? "Polygon" : "Cylinder");
    }
}

TEST(BoardHoles, UnderAnEntityThatTakesNoHolesNothingIsMadeAndNothingCounted) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.rectangle(1, 10, 10, 14, 16);
    Entity *component = EntityEditor::createEntity(Component_t, bench.chassis, Components_t);
    bench.importOver(component);
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(BoardHoles, GeometryAndPlacementAreLocked) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.rectangle(1, 10, 10, 14, 16);
    Entity *hole = onlyHole(bench, bench.import());
    EXPECT_TRUE(hole->findAttribute(Geometry_t)->isLocked());
    EXPECT_TRUE(hole->findAttribute(Placement_t)->isLocked());
    EXPECT_TRUE(hole->isProtected());
}

TEST(BoardHoles, PointsThatAreNotFiniteLeaveTheOutlineUnset) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.loop(1, {{10, 10}, {14, 10}, {14, std::nan("")}, {10, 20}});
    Entity *board = bench.import();
    for (Entity *hole : bench.children(board, PCB_Hole_t)) {
        EXPECT_EQ(text(hole, Shape_t), "Polygon");
        EXPECT_EQ(text(hole, Outline_t), "");
    }
}
