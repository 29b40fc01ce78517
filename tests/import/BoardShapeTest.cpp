// The board entity's shape, origin and location.
#include "support/ImportBench.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using testing::HasSubstr;

namespace {

const char *const approximate =
    "The outline of this board was not valid in the file so an approximate bound was used instead.\n";

} // namespace

TEST(BoardShape, ARectangularOutlineGivesARectangleAtItsFilePlace) {
    ImportBench bench;
    bench.rectangle(0, 10, 20, 110, 70);
    Entity *board = bench.import();
    EXPECT_EQ(text(board, Shape_t), "Rectangle");
    EXPECT_EQ(text(board, Width_t), "100 mm");
    EXPECT_EQ(text(board, Depth_t), "50 mm");
    EXPECT_EQ(mm(board, X_Location_t), 0.0); // A rectangle keeps no location of its own.
    EXPECT_EQ(mm(board, Z_Location_t), 0.0);
}

TEST(BoardShape, AClosedRectangleOfFivePointsIsARectangle) {
    ImportBench bench;
    bench.loop(0, {{0, 0}, {4, 0}, {4, 2}, {0, 2}, {0, 0}});
    EXPECT_EQ(text(bench.import(), Shape_t), "Rectangle");
}

TEST(BoardShape, ARectangleWithoutResetOfTheOriginComesInAsPolygon) {
    ImportBench bench;
    bench.rectangle(0, 10, 20, 110, 70);
    bench.set(Reset_Board_Origin_t, "No");
    Entity *board = bench.import();
    EXPECT_EQ(text(board, Shape_t), "Polygon");
    EXPECT_EQ(text(board, Outline_t), "10,-20,110,-20,110,-70,10,-70 <mm>");
    EXPECT_EQ(mm(board, X_Location_t), 0.0); // Not placed either.
}

TEST(BoardShape, ARectangleWithoutSimplifiedShapesComesInAsPolygon) {
    ImportBench bench;
    bench.rectangle(0, 10, 20, 110, 70);
    bench.set(Simplify_Shapes_t, "No");
    EXPECT_EQ(text(bench.import(), Shape_t), "Polygon");
}

TEST(BoardShape, ARoundOutlineGivesACylinderPlacedByTheCornerOfItsBound) {
    ImportBench bench;
    bench.circle(0, 50, 40, 30);
    Entity *board = bench.import();
    EXPECT_EQ(text(board, Shape_t), "Cylinder");
    EXPECT_EQ(text(board, Origin_Point_t), "Centre");
    EXPECT_NEAR(mm(board, Diameter_t), 60.0, 1e-9);
    EXPECT_NEAR(mm(board, X_Location_t), -20.0, 1e-9);
    EXPECT_NEAR(mm(board, Z_Location_t), 70.0, 1e-9);
}

TEST(BoardShape, ATwoPointCircleIsACylinderEvenWithoutSimplifiedShapes) {
    ImportBench bench;
    bench.circle(0, 0, 0, 10);
    bench.set(Simplify_Shapes_t, "No");
    EXPECT_EQ(text(bench.import(), Shape_t), "Cylinder");
}

TEST(BoardShape, AnyOtherOutlineGivesAPolygonWithTheSignOfYFlipped) {
    ImportBench bench;
    bench.loop(0, {{0, 0}, {10, 0}, {10, 5}});
    Entity *board = bench.import();
    EXPECT_EQ(text(board, Shape_t), "Polygon");
    EXPECT_EQ(text(board, Outline_t), "0,0,10,0,10,-5 <mm>");
    EXPECT_EQ(mm(board, X_Location_t), 0.0);
    EXPECT_EQ(mm(board, Z_Location_t), 5.0);
}

TEST(BoardShape, APolygonIsPlacedAtMinusItsCorner) {
    ImportBench bench;
    bench.loop(0, {{3, 4}, {13, 4}, {13, 9}});
    Entity *board = bench.import();
    EXPECT_EQ(mm(board, X_Location_t), -3.0);
    EXPECT_EQ(mm(board, Z_Location_t), 9.0);
}

TEST(BoardShape, LengthsKeepTheUnitsOfTheBoard) {
    ImportBench bench;
    bench.board().setUnits("THOU");
    bench.rectangle(0, 0, 0, 4000, 3000);
    Entity *board = bench.import();
    EXPECT_EQ(getDoubleValue(board, Width_t, "thou", 0.0), 4000.0);
    EXPECT_NEAR(mm(board, Width_t), 101.6, 1e-9);
    EXPECT_EQ(getDoubleValue(board, AttributePath("Thickness"), "THOU", 0.0), 1.6);
}

TEST(BoardShape, AnOutlineWithoutAreaGivesTheApproximateBoundAndOneMessage) {
    ImportBench bench;
    bench.loop(0, {{0, 5}, {10, 5}, {20, 5}});
    Entity *board = bench.import();
    EXPECT_EQ(text(board, Shape_t), "Polygon");
    EXPECT_EQ(text(board, Outline_t), "0,0,20,0,20,16,0,16 <mm>");
    EXPECT_EQ(bench.importer.getErrorString(), approximate);
    EXPECT_EQ(mm(board, Z_Location_t), 16.0);
}

TEST(BoardShape, ABoardWithoutOutlineGetsTheBoundOfWhatItHolds) {
    ImportBench bench;
    EDA::EDAKeepout keepout("Via");
    for (const auto &[x, y] : {std::pair{1.0, 2.0}, {31.0, 2.0}, {31.0, 12.0}})
        keepout.addPoint(0, x, y, 0.0);
    bench.board().addKeepout(keepout);
    Entity *board = bench.import();
    EXPECT_EQ(text(board, Outline_t), "1,2,31,2,31,12,1,12 <mm>");
    EXPECT_EQ(bench.importer.getErrorString(), approximate);
}

TEST(BoardShape, AnEmptyBoardGetsASquareOfTenThicknesses) {
    ImportBench bench;
    Entity *board = bench.import();
    EXPECT_EQ(text(board, Outline_t), "0,0,16,0,16,16,0,16 <mm>");
}

TEST(BoardShape, AHoleApartFromTheOutlineMakesTheOutlineBad) {
    ImportBench bench;
    bench.loop(0, {{0, 0}, {10, 0}, {10, 5}});
    bench.rectangle(1, 100, 100, 101, 101);
    bench.import();
    EXPECT_THAT(bench.importer.getErrorString(), HasSubstr(approximate));
}

TEST(BoardShape, TheGeometryOfANewBoardIsLockedAndProtected) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    Entity *board = bench.import();
    EXPECT_TRUE(board->findAttribute(Geometry_t)->isLocked());
    EXPECT_TRUE(board->isProtected());
}

TEST(BoardShape, OriginsOfOneImportStandForTheNext) {
    ImportBench bench;
    bench.loop(0, {{3, 4}, {13, 4}, {13, 9}});
    bench.import();

    // The rectangle writes its own pair of origins only; the polygon's pair is still added to it.
    BoardReader second;
    second.getBoard().setUnits("MM");
    for (const auto &[x, y] : {std::pair{0.0, 0.0}, {10.0, 0.0}, {10.0, 10.0}, {0.0, 10.0}}) {
        second.getBoard().addPoint(0, x, y, 0.0);
    }
    for (const auto &[x, y] : {std::pair{1.0, 1.0}, {2.0, 1.0}, {2.0, 2.0}, {1.0, 2.0}}) {
        second.getBoard().addPoint(1, x, y, 0.0);
    }
    Entity *board = bench.importer.importBoard(&second, nullptr, bench.model.root(), nullptr);
    ASSERT_EQ(bench.children(board, PCB_Hole_t).size(), 1u);
    EXPECT_EQ(mm(bench.children(board, PCB_Hole_t)[0], X_Location_t), 1.0 - 3.0);
}

TEST(BoardShape, ATextOfHugeNumbersIsWrittenWhole) {
    ImportBench bench;
    bench.loop(0, {{0, 0}, {1e300, 0}, {1e300, 2e300}});
    EXPECT_THAT(text(bench.import(), Outline_t), HasSubstr("1e+300,-2e+300"));
}
