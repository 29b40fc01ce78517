// The board itself: defaults, plain accessors, layers, counts, copies.
#include "model/EDABoard.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>
#include <utility>

namespace EDA {
namespace {

EDABoardLayer layerNamed(std::string const &name) {
    EDABoardLayer layer;
    layer.setName(name);
    return layer;
}

EDAOutline squareOutline(double low, double high) {
    EDAOutline outline;
    outline.addPoint(0, low, low, 0.0);
    outline.addPoint(0, high, low, 0.0);
    outline.addPoint(0, high, high, 0.0);
    outline.addPoint(0, low, high, 0.0);
    return outline;
}

TEST(EDABoard, HasAVirtualDestructor) { EXPECT_TRUE(std::has_virtual_destructor_v<EDABoard>); }

TEST(EDABoard, StartsEmpty) {
    EDABoard const board;
    EXPECT_EQ(board.getName(), "");
    EXPECT_EQ(board.getUnits(), "");
    EXPECT_EQ(board.getThickness(), 0.0);
    EXPECT_EQ(board.getConductorMaterial(), "");
    EXPECT_EQ(board.getDielectricMaterial(), "");
    EXPECT_TRUE(board.getOutline().empty());
    EXPECT_FALSE(board.getOutline().isHole());
    EXPECT_EQ(board.numComponents(), 0u);
    EXPECT_EQ(board.numComponentPlacements(), 0u);
    EXPECT_EQ(board.numKeepouts(), 0u);
    EXPECT_EQ(board.numVias(0), 0u);
    EXPECT_EQ(board.numVias(1), 0u);
    EXPECT_EQ(board.numBumps(0), 0u);
    EXPECT_EQ(board.numLayers(), 0u);
    EXPECT_EQ(board.numRouteOutlines(), 0u);
    EXPECT_EQ(board.numPlacementOutlines(), 0u);
    EXPECT_EQ(board.numWirebonds(), 0u);
    EXPECT_EQ(board.numLayersAndTraces(), 0u);
    EXPECT_TRUE(board.getGoodEDA());
    EXPECT_TRUE(board.beginComponents() == board.endComponents());
    EXPECT_TRUE(board.beginPlacements() == board.endPlacements());
    EXPECT_TRUE(board.beginKeepouts() == board.endKeepouts());
    EXPECT_TRUE(board.beginVias() == board.endVias());
    EXPECT_TRUE(board.beginBumps() == board.endBumps());
    EXPECT_TRUE(board.beginLayers() == board.endLayers());
    EXPECT_TRUE(board.beginWirebonds() == board.endWirebonds());
}

TEST(EDABoard, KeepsWhatItIsGiven) {
    EDABoard board;
    board.setName("controller");
    board.setUnits("mm");
    board.setThickness(1.6);
    board.setConductorMaterial("Copper");
    board.setDielectricMaterial("FR4");
    board.setGoodEDA(false);
    EXPECT_EQ(board.getName(), "controller");
    EXPECT_EQ(board.getUnits(), "mm");
    EXPECT_EQ(board.getThickness(), 1.6);
    EXPECT_EQ(board.getConductorMaterial(), "Copper");
    EXPECT_EQ(board.getDielectricMaterial(), "FR4");
    EXPECT_FALSE(board.getGoodEDA());
}

TEST(EDABoard, KeepsTheNamesOfItsSourceFiles) {
    EDABoard board;
    std::string boardFile = "old", libraryFile = "old";
    board.getSourceFilename(boardFile, libraryFile);
    EXPECT_EQ(boardFile, "");
    EXPECT_EQ(libraryFile, "");
    board.setSourceBoardFile("a.emn");
    board.setSourceLibraryFile("a.emp");
    board.getSourceFilename(boardFile, libraryFile);
    EXPECT_EQ(boardFile, "a.emn");
    EXPECT_EQ(libraryFile, "a.emp");
}

TEST(EDABoard, WithoutImportTypeIsABaselineImport) { EXPECT_TRUE(EDABoard().isBaselineImport()); }

TEST(EDABoard, OnlyBaselineInCapitalsIsABaselineImport) {
    EDABoard board;
    board.setImportType("BASELINE");
    EXPECT_TRUE(board.isBaselineImport());
    board.setImportType("baseline");
    EXPECT_FALSE(board.isBaselineImport());
    board.setImportType("INCREMENTAL");
    EXPECT_FALSE(board.isBaselineImport());
}

TEST(EDABoard, PointsOfIndexZeroGoToTheEdgeAndOthersToCutOuts) {
    EDABoard board;
    board.addPoint(0, 1.0, 2.0, 0.0);
    board.addPoint(0, 3.0, 2.0, 90.0);
    board.addPoint(1, 5.0, 6.0, 0.0);
    EXPECT_EQ(board.getOutline().numPoints(), 2u);
    EXPECT_EQ((board.getOutline().beginPoints() + 1)->angle, 90.0);
    ASSERT_EQ(board.getOutline().numInternalOutlines(), 1);
    EXPECT_TRUE(board.getOutline().beginInternalOutlines()->isHole());
    EXPECT_EQ(board.getOutline().beginInternalOutlines()->beginPoints()->x, 5.0);
}

TEST(EDABoard, TurnsACutOutByIndex) {
    EDABoard board;
    board.addPoint(1, 1.0, 0.0, 0.0);
    board.addPoint(2, 1.0, 0.0, 0.0);
    board.rotateInternalOutline(1, 90.0, 0.0, 0.0);
    auto const first = board.getOutline().beginInternalOutlines();
    EXPECT_EQ(first->beginPoints()->x, 1.0);
    EXPECT_NEAR((first + 1)->beginPoints()->x, 0.0, 1e-12);
    EXPECT_NEAR((first + 1)->beginPoints()->y, 1.0, 1e-12);
}

TEST(EDABoard, TurnsNothingForAnIndexThatIsNone) {
    EDABoard board;
    board.addPoint(0, 1.0, 0.0, 0.0);
    board.addPoint(1, 1.0, 0.0, 0.0);
    board.rotateInternalOutline(1, 90.0, 0.0, 0.0);
    board.rotateInternalOutline(-1, 90.0, 0.0, 0.0);
    EXPECT_EQ(board.getOutline().beginPoints()->x, 1.0);
    EXPECT_EQ(board.getOutline().beginInternalOutlines()->beginPoints()->x, 1.0);
}

TEST(EDABoard, KeepsRouteAndPlacementOutlinesInOrder) {
    EDABoard board;
    auto small = squareOutline(0.0, 1.0);
    auto large = squareOutline(0.0, 9.0);
    board.addRouteOutline(small);
    board.addRouteOutline(large);
    board.addPlacementOutline(large);
    ASSERT_EQ(board.numRouteOutlines(), 2u);
    EXPECT_TRUE(*board.beginRouteOutlines() == small);
    EXPECT_TRUE(*(board.endRouteOutlines() - 1) == large);
    ASSERT_EQ(board.numPlacementOutlines(), 1u);
    EXPECT_TRUE(*board.beginPlacementOutlines() == large);
    EXPECT_EQ(board.endPlacementOutlines() - board.beginPlacementOutlines(), 1);
}

TEST(EDABoard, KeepsKeepoutsAndWirebondsInOrder) {
    EDABoard board;
    EDAKeepout route("Route"), via("Via");
    board.addKeepout(route);
    board.addKeepout(via);
    ASSERT_EQ(board.numKeepouts(), 2u);
    EXPECT_EQ(board.beginKeepouts()->getType(), "Route");
    EXPECT_EQ((board.endKeepouts() - 1)->getType(), "Via");
    EDAWirebond wire;
    wire.setName("W1");
    board.addWirebond(wire);
    ASSERT_EQ(board.numWirebonds(), 1u);
    EXPECT_EQ(board.beginWirebonds()->getName(), "W1");
    EXPECT_EQ(board.endWirebonds() - board.beginWirebonds(), 1);
}

TEST(EDABoard, GivesLayersByNumber) {
    EDABoard board;
    auto top = layerNamed("TOP");
    board.addLayer(top);
    board.addLayer(layerNamed("GND"));
    EXPECT_EQ(board.numLayers(), 2u);
    EXPECT_EQ(board.getNthLayer(0).getName(), "TOP");
    board.getNthLayer(1).setThickness(0.035);
    EXPECT_EQ((board.beginLayers() + 1)->getThickness(), 0.035);
    EXPECT_EQ(std::as_const(board).getNthLayer(1).getName(), "GND");
    EXPECT_EQ(board.endLayers() - board.beginLayers(), 2);
}

TEST(EDABoard, ThrowsForALayerThatIsNone) {
    EDABoard board;
    board.addLayer(layerNamed("TOP"));
    EXPECT_THROW(board.getNthLayer(1), std::out_of_range);
    EXPECT_THROW(board.getNthLayer(-1), std::out_of_range);
    EXPECT_THROW(std::as_const(board).getNthLayer(1), std::out_of_range);
}

TEST(EDABoard, FindsTheFirstLayerOfExactlyThatNameAsACopy) {
    EDABoard board;
    for (double thickness : {1.0, 2.0}) {
        auto layer = layerNamed("GND");
        layer.setThickness(thickness);
        board.addLayer(layer);
    }
    auto found = board.getLayer("GND");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->getThickness(), 1.0);
    found->setThickness(5.0);
    EXPECT_EQ(board.getNthLayer(0).getThickness(), 1.0);
    EXPECT_FALSE(board.getLayer("gnd").has_value());
    EXPECT_EQ(board.findLayer("GND"), &board.getNthLayer(0));
    EXPECT_EQ(board.findLayer("gnd"), nullptr);
}

TEST(EDABoard, CountsLayersLooseTracesAndTracesOfNets) {
    EDABoard board;
    EDABoardLayer layer;
    EDATrace trace;
    layer.addTrace(trace);
    layer.addTrace(trace);
    EDANet net;
    net.addTrace(trace);
    net.addTrace(trace);
    net.addTrace(trace);
    layer.addNet(net);
    layer.addNet(EDANet());
    board.addLayer(layer);
    board.addLayer(layerNamed("empty"));
    EXPECT_EQ(board.numLayersAndTraces(), 2u + 2u + 3u);
}

TEST(EDABoard, CopiesAreDeep) {
    EDABoard board;
    board.setName("first");
    board.setGoodEDA(false);
    board.addPoint(0, 1.0, 1.0, 0.0);
    board.addLayer(layerNamed("TOP"));
    EDABoard copy(board);
    EDABoard assigned;
    assigned = board;
    board.getNthLayer(0).setName("changed");
    board.addPoint(0, 2.0, 1.0, 0.0);
    for (auto const *each : {&copy, &assigned}) {
        EXPECT_EQ(each->getName(), "first");
        EXPECT_FALSE(each->getGoodEDA());
        EXPECT_EQ(each->getNthLayer(0).getName(), "TOP");
        EXPECT_EQ(each->getOutline().numPoints(), 1u);
    }
}

TEST(EDABoard, AMovedBoardCanBeFilledAgain) {
    EDABoard board;
    EDAComponent part("ELECTRICAL");
    part.setName("A");
    board.addComponent(part, true);
    EDAComponentPlacement placed;
    placed.setName("A");
    ASSERT_NE(board.findComponent(placed), nullptr);
    EDABoard const moved(std::move(board));
    EXPECT_NE(moved.findComponent(placed), nullptr);
    board = EDABoard();
    EXPECT_EQ(board.findComponent(placed), nullptr);
    board.addComponent(part, true);
    EXPECT_EQ(board.findComponent(placed), &*board.beginComponents());
}

} // namespace
} // namespace EDA
