// Layers and traces: defaults, accessors, holes of traces.
#include "model/EDABoardLayer.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace EDA {
namespace {

EDATrace shapeNamed(std::string const &name) {
    EDATrace trace;
    trace.setName(name);
    return trace;
}

EDATrace routeNamed(std::string const &name) {
    auto trace = shapeNamed(name);
    trace.setRouteWidth(0.2);
    return trace;
}

int holesOf(EDABoardLayer const &layer, int index) {
    return (layer.beginTraces() + index)->getOutline().numInternalOutlines();
}

TEST(EDATrace, StartsAsAnEmptyShape) {
    EDATrace const trace;
    EXPECT_EQ(trace.getName(), "");
    EXPECT_EQ(trace.getThickness(), 0.0);
    EXPECT_EQ(trace.getRouteWidth(), 0.0);
    EXPECT_FALSE(trace.isDefinedAsRoute());
    EXPECT_TRUE(trace.getOutline().empty());
    EXPECT_FALSE(trace.getOutline().isHole());
    EXPECT_FALSE(std::is_polymorphic_v<EDATrace>);
}

TEST(EDATrace, ARouteWidthMakesItARouteEvenWhenZero) {
    EDATrace trace;
    trace.setName("T");
    trace.setThickness(0.035);
    EXPECT_FALSE(trace.isDefinedAsRoute());
    trace.setRouteWidth(0.0);
    EXPECT_TRUE(trace.isDefinedAsRoute());
    trace.setRouteWidth(0.25);
    EXPECT_EQ(trace.getRouteWidth(), 0.25);
    EXPECT_EQ(trace.getName(), "T");
    EXPECT_EQ(trace.getThickness(), 0.035);
}

TEST(EDATrace, PointsGoToItsOutline) {
    EDATrace trace;
    trace.addPoint(0, 1.0, 2.0, 30.0);
    trace.addPoint(1, 3.0, 4.0, 0.0);
    EXPECT_EQ(trace.getOutline().beginPoints()->angle, 30.0);
    EXPECT_EQ(trace.getOutline().numInternalOutlines(), 1);
    trace.getOutline().clear();
    EXPECT_TRUE(trace.getOutline().empty());
}

TEST(EDABoardLayer, StartsAsAConductorWithoutOffset) {
    EDABoardLayer const layer;
    EXPECT_TRUE(layer.isConductor());
    EXPECT_EQ(layer.getName(), "");
    EXPECT_EQ(layer.getThickness(), 0.0);
    EXPECT_EQ(layer.getTopOffset(), -1001.0);
    EXPECT_EQ(layer.getImageFilename(), "");
    int red = 9, green = 9, blue = 9;
    layer.getImageConductorColour(red, green, blue);
    EXPECT_EQ(red, 0);
    EXPECT_EQ(green, 0);
    EXPECT_EQ(blue, 0);
    EXPECT_EQ(layer.getUniformConductivity(), 0.0);
    EXPECT_EQ(layer.getConductorMaterial(), "");
    EXPECT_EQ(layer.getDielectricMaterial(), "");
    EXPECT_EQ(layer.numTraces(), 0u);
    EXPECT_EQ(layer.numNets(), 0u);
    EXPECT_TRUE(layer.beginTraces() == layer.endTraces());
    EXPECT_TRUE(layer.beginNets() == layer.endNets());
    EXPECT_TRUE(std::has_virtual_destructor_v<EDABoardLayer>);
}

TEST(EDABoardLayer, IsADielectricWhenMadeSo) { EXPECT_FALSE(EDABoardLayer(false).isConductor()); }

TEST(EDABoardLayer, KeepsWhatItIsGiven) {
    EDABoardLayer layer(false);
    layer.setName("L2");
    layer.setThickness(0.2);
    layer.setTopOffset(0.4);
    layer.setImageFilename("l2.png");
    layer.setImageConductorColour(1, 2, 3);
    layer.setUniformConductivity(12.5);
    layer.setConductorMaterial("Copper");
    layer.setDielectricMaterial("FR4");
    EDABoardLayer const copy(layer);
    int red = 0, green = 0, blue = 0;
    copy.getImageConductorColour(red, green, blue);
    EXPECT_FALSE(copy.isConductor());
    EXPECT_EQ(copy.getName(), "L2");
    EXPECT_EQ(copy.getThickness(), 0.2);
    EXPECT_EQ(copy.getTopOffset(), 0.4);
    EXPECT_EQ(copy.getImageFilename(), "l2.png");
    EXPECT_EQ(red, 1);
    EXPECT_EQ(green, 2);
    EXPECT_EQ(blue, 3);
    EXPECT_EQ(copy.getUniformConductivity(), 12.5);
    EXPECT_EQ(copy.getConductorMaterial(), "Copper");
    EXPECT_EQ(copy.getDielectricMaterial(), "FR4");
}

TEST(EDABoardLayer, AddTraceReturnsTheStoredCopy) {
    EDABoardLayer layer;
    auto trace = shapeNamed("A");
    auto *stored = layer.addTrace(trace);
    ASSERT_NE(stored, nullptr);
    EXPECT_NE(stored, &trace);
    stored->setName("B");
    EXPECT_EQ(trace.getName(), "A");
    EXPECT_EQ(layer.beginTraces()->getName(), "B");
    EXPECT_EQ(layer.addTrace(shapeNamed("C"))->getName(), "C");
    EXPECT_EQ(layer.numTraces(), 2u);
    EXPECT_EQ(layer.endTraces() - layer.beginTraces(), 2);
}

TEST(EDABoardLayer, AHoleGoesToTheLastShapeBeforeARoute) {
    EDABoardLayer layer;
    layer.addTrace(shapeNamed("first"));
    layer.addTrace(shapeNamed("last shape"));
    layer.addTrace(routeNamed("route"));
    layer.addHoleToLastTrace(EDAOutline(true));
    EXPECT_EQ(holesOf(layer, 0), 0);
    EXPECT_EQ(holesOf(layer, 1), 1);
    EXPECT_EQ(holesOf(layer, 2), 0);
}

TEST(EDABoardLayer, AHoleKeepsItsOwnHoleFlag) {
    EDABoardLayer layer;
    layer.addTrace(shapeNamed("shape"));
    layer.addHoleToLastTrace(EDAOutline(true));
    layer.addHoleToLastTrace(EDAOutline(false));
    auto const hole = layer.beginTraces()->getOutline().beginInternalOutlines();
    EXPECT_TRUE(hole->isHole());
    EXPECT_FALSE((hole + 1)->isHole());
}

TEST(EDABoardLayer, AHoleIsDroppedWithoutAShape) {
    EDABoardLayer layer;
    layer.addHoleToLastTrace(EDAOutline(true));
    EXPECT_EQ(layer.numTraces(), 0u);
    layer.addTrace(routeNamed("route"));
    layer.addHoleToLastTrace(EDAOutline(true));
    EXPECT_EQ(holesOf(layer, 0), 0);
}

} // namespace
} // namespace EDA
