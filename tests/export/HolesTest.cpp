// Holes of boards.
#include "ExportScene.h"

#include <cmath>

using namespace TestSupport;

namespace {

class ExportedHoles : public ExportScene {
protected:
    EDA::EDAOutline hole(std::size_t index = 0) const {
        const EDA::EDABoard board = exported();
        EXPECT_LT(static_cast<int>(index), board.getOutline().numInternalOutlines());
        return board.getOutline().beginInternalOutlines()[static_cast<std::ptrdiff_t>(index)];
    }
};

TEST_F(ExportedHoles, RectangleHangsFromItsLocation) {
    addHole({{"Width", "4 mm"}, {"Depth", "6 mm"}, {"X Location", "20 mm"}, {"Z Location", "10 mm"}});
    expectRows(hole(), {{30, 60, 0}, {30, 54, 0}, {34, 54, 0}, {34, 60, 0}, {30, 60, 0}});
    EXPECT_TRUE(hole().isHole());
}

TEST_F(ExportedHoles, CircleIsAroundItsLocation) {
    addHole({{"Shape", "Cylinder"}, {"Diameter", "3 mm"}, {"X Location", "20 mm"}, {"Z Location", "10 mm"}});
    expectRows(hole(), {{30, 60, 0}, {31.5, 60, 360}});
}

TEST_F(ExportedHoles, PolygonIsAroundItsLocationAndClosed) {
    addHole({{"Shape", "Polygon"},
             {"Outline", "-1,1,1,1,1,-1 <mm>"},
             {"X Location", "20 mm"},
             {"Z Location", "10 mm"}});
    expectRows(hole(), {{29, 59, 0}, {31, 59, 0}, {31, 61, 0}, {29, 59, 0}});
}

TEST_F(ExportedHoles, ClosingAHoleLeavesTheBoardAlone) {
    set(pcb, {{"Outline", "0,0,9,0 <mm>"}});
    addHole({{"Shape", "Polygon"}, {"Outline", "1,1,2,1,2,2 <mm>"}});
    EXPECT_EQ(exported().getOutline().numPoints(), 2u);
    EXPECT_EQ(hole().numPoints(), 4u);
}

TEST_F(ExportedHoles, KeepTheOrderOfTheList) {
    addHole({{"Shape", "Cylinder"}, {"Diameter", "2 mm"}});
    addHole({{"Shape", "Cylinder"}, {"Diameter", "4 mm"}});
    EXPECT_EQ(hole(0).beginPoints()[1].x - hole(0).beginPoints()[0].x, 1.0);
    EXPECT_EQ(hole(1).beginPoints()[1].x - hole(1).beginPoints()[0].x, 2.0);
}

TEST_F(ExportedHoles, OrientationTurnsAHoleAnticlockwiseAboutItsOwnLocation) {
    addHole({{"Width", "4 mm"},
             {"Depth", "6 mm"},
             {"X Location", "20 mm"},
             {"Z Location", "10 mm"},
             {"Orientation", "90 degrees"}});
    expectRows(hole(), {{30, 60, 0}, {36, 60, 0}, {36, 64, 0}, {30, 64, 0}, {30, 60, 0}});
}

TEST_F(ExportedHoles, OrientationMayBeInRadians) {
    addHole({{"Width", "4 mm"}, {"Depth", "6 mm"}, {"Orientation", "1.5707963267948966 rad"}});
    EXPECT_NEAR(hole().beginPoints()[1].x, 16.0, 1e-9);
}

TEST_F(ExportedHoles, OrientationOf45DegreesTurnsThatHoleAlone) {
    const ExportScene::Values place = {{"Width", "2 mm"}, {"Depth", "2 mm"}, {"X Location", "5 mm"}};
    addHole(place);
    Entity *const turned = addHole(place);
    set(turned, {{"Orientation", "45 degrees"}});
    EXPECT_NEAR(hole(0).beginPoints()[1].x, 15.0, 1e-9);
    EXPECT_NEAR(hole(1).beginPoints()[1].x, 15.0 + std::sqrt(2.0), 1e-9);
}

TEST_F(ExportedHoles, SmallestOrientationTurnsNothing) {
    addHole({{"Width", "4 mm"}, {"Depth", "6 mm"}, {"Orientation", "1e-6 degrees"}});
    EXPECT_EQ(hole().beginPoints()[1].x, 10.0);
}

TEST_F(ExportedHoles, HoleWithoutPointsAddsNoOutlineAndTakesNoPlace) {
    addHole({{"Shape", "Polygon"}, {"Orientation", "30 degrees"}});
    addHole({{"Width", "4 mm"}, {"Depth", "6 mm"}, {"Orientation", "90 degrees"}});
    EXPECT_EQ(exported().getOutline().numInternalOutlines(), 1);
    EXPECT_NEAR(hole().beginPoints()[1].x, 16.0, 1e-9);
}

TEST_F(ExportedHoles, HoleWithoutPointsDoesNotTurnTheOneBefore) {
    addHole({{"Width", "4 mm"}, {"Depth", "6 mm"}});
    addHole({{"Shape", "Polygon"}, {"Orientation", "90 degrees"}});
    EXPECT_EQ(hole().beginPoints()[1].x, 10.0);
}

TEST_F(ExportedHoles, AreMeasuredFromTheBoardAloneNotFromEarlierHoles) {
    addHole({{"Width", "4 mm"}, {"Depth", "6 mm"}, {"X Location", "-500 mm"}, {"Z Location", "-500 mm"}});
    addHole({{"Shape", "Cylinder"}, {"Diameter", "2 mm"}});
    expectRows(hole(1), {{10, 70, 0}, {11, 70, 360}});
}

} // namespace
