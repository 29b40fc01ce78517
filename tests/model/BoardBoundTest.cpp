// How large a board is, and what counts.
#include "model/EDABoard.h"

#include <gtest/gtest.h>

#include <limits>

namespace EDA {
namespace {

template <typename Target> void addSquare(Target &target, int outline, double low, double high) {
    target.addPoint(outline, low, low, 0.0);
    target.addPoint(outline, high, low, 0.0);
    target.addPoint(outline, high, high, 0.0);
    target.addPoint(outline, low, high, 0.0);
}

EDABoard boardWithEdge() {
    EDABoard board;
    addSquare(board, 0, 0.0, 10.0);
    return board;
}

void expectBound(EDABoard const &board, double xLow, double yLow, double xHigh, double yHigh) {
    double got[4] = {-7.0, -7.0, -7.0, -7.0};
    board.getOverallBound(got[0], got[1], got[2], got[3]);
    EXPECT_DOUBLE_EQ(got[0], xLow);
    EXPECT_DOUBLE_EQ(got[1], yLow);
    EXPECT_DOUBLE_EQ(got[2], xHigh);
    EXPECT_DOUBLE_EQ(got[3], yHigh);
}

EDAVia viaAt(double x, double y, double diameter) {
    EDAVia via;
    via.setCentre(x, y);
    via.setDiameter(diameter);
    return via;
}

void place(EDABoard &board, std::string const &name, double x, double y, std::string const &side) {
    EDAComponentPlacement placement;
    placement.setName(name);
    placement.setLocation(x, y);
    placement.setBoardSide(side);
    board.addComponentPlacement(placement);
}

TEST(EDABoardBound, AnEmptyBoardHasNone) {
    EDABoard const board;
    expectBound(board, 0.0, 0.0, 0.0, 0.0);
    EXPECT_EQ(board.getModelDimension(), 0.0);
}

TEST(EDABoardBound, TheModelDimensionIsTheLargerExtentWithCutOuts) {
    EDABoard board;
    board.addPoint(0, 0.0, 0.0, 0.0);
    board.addPoint(0, 4.0, 0.0, 0.0);
    board.addPoint(0, 4.0, 3.0, 0.0);
    EXPECT_DOUBLE_EQ(board.getModelDimension(), 4.0);
    board.addPoint(1, 1.0, -8.0, 0.0);
    EXPECT_DOUBLE_EQ(board.getModelDimension(), 11.0);
}

TEST(EDABoardBound, TheModelDimensionLooksAtTheOutlineAlone) {
    auto board = boardWithEdge();
    EDAKeepout keepout("Route");
    addSquare(keepout, 0, -50.0, 50.0);
    board.addKeepout(keepout);
    EXPECT_DOUBLE_EQ(board.getModelDimension(), 10.0);
}

TEST(EDABoardBound, AnOutlineOfOnePointHasABoundWithoutExtent) {
    EDABoard board;
    board.addPoint(0, 3.0, 4.0, 0.0);
    expectBound(board, 3.0, 4.0, 3.0, 4.0);
    EXPECT_EQ(board.getModelDimension(), 0.0);
}

TEST(EDABoardBound, CutOutsCount) {
    auto board = boardWithEdge();
    board.addPoint(1, -2.0, 5.0, 0.0);
    expectBound(board, -2.0, 0.0, 10.0, 10.0);
}

TEST(EDABoardBound, KeepoutsRouteAndPlacementOutlinesCount) {
    auto board = boardWithEdge();
    EDAKeepout keepout("Via");
    keepout.addPoint(0, -1.0, 5.0, 0.0);
    board.addKeepout(keepout);
    EDAOutline route, placement;
    route.addPoint(0, 5.0, -2.0, 0.0);
    placement.addPoint(0, 13.0, 14.0, 0.0);
    board.addRouteOutline(route);
    board.addPlacementOutline(placement);
    expectBound(board, -1.0, -2.0, 13.0, 14.0);
}

TEST(EDABoardBound, ComponentsOnTopCountShiftedButNotTurned) {
    auto board = boardWithEdge();
    EDAComponent part("ELECTRICAL");
    part.setName("A");
    part.addPoint(0, -1.0, 0.0, 0.0);
    part.addPoint(0, 3.0, 0.0, 0.0);
    part.addPoint(0, 3.0, 1.0, 0.0);
    board.addComponent(part, false);
    EDAComponentPlacement placement;
    placement.setName("A");
    placement.setLocation(9.0, 9.5);
    placement.setAngle(90.0);
    board.addComponentPlacement(placement);
    expectBound(board, 0.0, 0.0, 12.0, 10.5);
    // The second does not shift what the first gave.
    place(board, "A", -4.0, 5.0, "TOP");
    expectBound(board, -5.0, 0.0, 12.0, 10.5);
}

TEST(EDABoardBound, InternalOutlinesOfAllThatCountsCountToo) {
    auto board = boardWithEdge();
    EDAKeepout keepout("Via");
    EDAOutline route, placement;
    EDAComponent part("ELECTRICAL");
    part.setName("A");
    part.addPoint(0, 0.0, 0.0, 0.0);
    keepout.addPoint(1, -20.0, 5.0, 0.0);
    route.addPoint(1, 5.0, -21.0, 0.0);
    placement.addPoint(1, 22.0, 5.0, 0.0);
    part.addPoint(1, 0.0, 20.0, 0.0);
    board.addKeepout(keepout);
    board.addRouteOutline(route);
    board.addPlacementOutline(placement);
    board.addComponent(part, false);
    place(board, "A", 5.0, 3.0, "TOP");
    expectBound(board, -20.0, -21.0, 22.0, 23.0);
    EDATrace trace;
    trace.addPoint(1, 24.0, 5.0, 0.0);
    EDABoardLayer layer;
    layer.addTrace(trace);
    board.addLayer(layer);
    expectBound(board, -20.0, -21.0, 24.0, 23.0);
}

TEST(EDABoardBound, ComponentsOnTopCountAlsoWhereTheyAreUnplaced) {
    auto board = boardWithEdge();
    EDAComponent part("ELECTRICAL");
    part.setName("A");
    addSquare(part, 0, 0.0, 50.0);
    board.addComponent(part, false);
    place(board, "A", 1.0, 1.0, "TOP");
    board.beginPlacements()->setStatus("UNPLACED");
    expectBound(board, 0.0, 0.0, 51.0, 51.0);
}

TEST(EDABoardBound, ComponentsOnTheBottomAndUnknownOnesDoNotCount) {
    auto board = boardWithEdge();
    EDAComponent part("ELECTRICAL");
    part.setName("A");
    addSquare(part, 0, 0.0, 50.0);
    board.addComponent(part, false);
    place(board, "A", 1.0, 1.0, "BOTTOM");
    place(board, "B", 1.0, 1.0, "TOP");
    expectBound(board, 0.0, 0.0, 10.0, 10.0);
}

TEST(EDABoardBound, LooseTracesCountAndTracesOfNetsDoNot) {
    auto board = boardWithEdge();
    EDABoardLayer layer;
    EDATrace loose, inNet;
    loose.addPoint(0, 12.0, 5.0, 0.0);
    inNet.addPoint(0, 99.0, 5.0, 0.0);
    layer.addTrace(loose);
    EDANet net;
    net.addTrace(inNet);
    layer.addNet(net);
    board.addLayer(layer);
    expectBound(board, 0.0, 0.0, 12.0, 10.0);
}

TEST(EDABoardBound, ViasCountWhenNothingElseHasAnExtent) {
    EDABoard board;
    auto via = viaAt(1.0, 2.0, 2.0);
    via.addInstance("", 8.0, 2.0);
    board.addVia(via, false);
    board.addVia(viaAt(1.0, 20.0, 4.0), false);
    expectBound(board, -1.0, 1.0, 9.0, 22.0);
}

TEST(EDABoardBound, AViaBesideTheOutlineDoesNotWidenIt) {
    auto board = boardWithEdge();
    board.addVia(viaAt(100.0, 100.0, 2.0), false);
    expectBound(board, 0.0, 0.0, 10.0, 10.0);
}

TEST(EDABoardBound, ALocationThatIsNoNumberDoesNotCount) {
    auto board = boardWithEdge();
    EDAComponent part("ELECTRICAL");
    part.setName("A");
    addSquare(part, 0, 0.0, 50.0);
    board.addComponent(part, false);
    place(board, "A", std::numeric_limits<double>::quiet_NaN(), 1.0, "TOP");
    expectBound(board, 0.0, 0.0, 10.0, 10.0);
}

} // namespace
} // namespace EDA
