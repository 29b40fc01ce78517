// Shapes, strokes, regions and polarity where the result is not what one would guess.
#include "GerberTestSupport.h"
#include "readers/gerber/ApertureMacro.h"
#include "readers/gerber/GerberShapes.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace EDA::test;
using EDA::EDAOutline;

namespace {

constexpr double pi = 3.14159265358979323846;

std::vector<EDAOutline> drawn(const std::string &statements, bool merge = false) {
    GerberBench bench;
    bench.reader.setMergeConductors(merge);
    EXPECT_TRUE(bench.readLayer(statements));
    EXPECT_EQ(bench.reader.getError(), "");
    std::vector<EDAOutline> outlines;
    for (const EDA::EDATrace &trace : bench.traces())
        outlines.push_back(trace.getOutline());
    return outlines;
}

EDAOutline drawnOne(const std::string &statements, bool merge = false) {
    const auto outlines = drawn(statements, merge);
    EXPECT_EQ(outlines.size(), 1U);
    return outlines.empty() ? EDAOutline() : outlines[0];
}

// What an aperture, with a macro before it, flashes at the origin.
std::vector<EDAOutline> flashed(const std::string &aperture, const std::string &macro = "") {
    return drawn(macro + aperture + "\nD20*\nX0Y0D03*\n");
}

double solidArea(const EDAOutline &outline) {
    double area = outline.getArea();
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        area -= inner->getArea();
    return area;
}

bool covers(const EDAOutline &outline, double x, double y) {
    const double d = 1e-6;
    EDAOutline spot;
    EDA::GerberShapes::setupRectangularOutline(&spot, d, d, x, y);
    return outline.enclosesOutline(spot);
}

std::string rectangleRegion(int xLow, int yLow, int xHigh, int yHigh) {
    const auto place = [](int x, int y) {
        return "X" + std::to_string(x * 10000) + "Y" + std::to_string(y * 10000);
    };
    return "G36*\n" + place(xLow, yLow) + "D02*\n" + place(xHigh, yLow) + "D01*\n" + place(xHigh, yHigh) +
           "D01*\n" + place(xLow, yHigh) + "D01*\n" + place(xLow, yLow) + "D01*\nG37*\n";
}

} // namespace

TEST(GerberApertureTraps, AnObroundMayHaveAHole) {
    const auto round = flashed("%ADD20O,4X2X1*%"), square = flashed("%ADD20O,2X4X1X0.5*%");
    ASSERT_EQ(round.size(), 1U);
    ASSERT_EQ(round[0].numInternalOutlines(), 1);
    EXPECT_TRUE(round[0].beginInternalOutlines()->isHole());
    expectBox(*round[0].beginInternalOutlines(), -0.5, -0.5, 0.5, 0.5, 0.01);
    ASSERT_EQ(square.size(), 1U);
    ASSERT_EQ(square[0].numInternalOutlines(), 1);
    expectBox(*square[0].beginInternalOutlines(), -0.5, -0.25, 0.5, 0.25);
}

TEST(GerberApertureTraps, FurtherFieldsAreNoHole) {
    for (const char *aperture : {"%ADD20C,2X1X1X1*%", "%ADD20R,2X2X1X1X1*%", "%ADD20O,2X2X1X1X1*%",
                                 "%ADD20P,2X5X0*%", "%ADD20P,2X5X0X1X1X1*%"}) {
        const auto outlines = flashed(aperture);
        ASSERT_EQ(outlines.size(), 1U) << aperture;
        EXPECT_EQ(outlines[0].numInternalOutlines(), 0) << aperture;
    }
}

TEST(GerberApertureTraps, AtLeastOneCharacterIsTheCode) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%ADDC,1*%\n"));
    EXPECT_EQ(bench.reader.getError(), "Failed to find aperture macro: ,1\n");
}

TEST(GerberApertureTraps, ADefinitionWithoutTemplateTakesTheShapeAway) {
    EXPECT_TRUE(drawn("%ADD11*%\nD11*\nX0Y0D03*\n").empty());
}

TEST(GerberApertureTraps, AMacroDefinedAnewLeavesTheAperturesMadeBefore) {
    const auto outlines = drawn("%AMM*21,1,2,2,0,0,0*%\n%ADD20M*%\n%AMM*21,1,6,6,0,0,0*%\n%ADD21M*%\n"
                                "D20*\nX0Y0D03*\nD21*\nX100000Y0D03*\n");
    ASSERT_EQ(outlines.size(), 2U);
    EXPECT_NEAR(outlines[0].getArea(), 4.0, 1e-9);
    EXPECT_NEAR(outlines[1].getArea(), 36.0, 1e-9);
}

TEST(GerberApertureTraps, TheGapOfAThermalCountsToEachSide) {
    EDAOutline thermal;
    EDA::GerberShapes::setupThermalOutline(&thermal, 0.0, 0.0, 4.0, 2.0, 0.5);
    ASSERT_EQ(thermal.numPoints(), 18U);
    const double inner = std::atan(0.5 / 2.0), outer = std::atan(0.5 / 4.0);
    EXPECT_NEAR(thermal.beginPoints()->x, std::cos(inner), 1e-12);
    EXPECT_NEAR(thermal.beginPoints()->y, std::sin(inner), 1e-12);
    const auto last = std::prev(thermal.endPoints());
    EXPECT_NEAR(last->x, 2.0 * std::cos(outer), 1e-12);
    EXPECT_NEAR(last->y, 2.0 * std::sin(outer), 1e-12);
}

TEST(GerberApertureTraps, AnExposureIsClearOnlyWhereItReadsZero) {
    EXPECT_EQ(flashed("%ADD20M*%", "%AMM*1,00,2,0,0*%\n").size(), 1U);
    EXPECT_EQ(flashed("%ADD20M*%", "%AMM*1,0.0,2,0,0*%\n").size(), 1U);
    EXPECT_EQ(flashed("%ADD20M*%", "%AMM*1,0,2,0,0*%\n").size(), 0U);
    EXPECT_EQ(flashed("%ADD20M,0.0*%", "%AMM*1,$1,2,0,0*%\n").size(), 0U); // evaluated, and written as "0"
}

TEST(GerberApertureTraps, AKeyLongerThanItsValueIsNotLookedFor) {
    const auto outlines = flashed("%ADD20M,2*%", "%AMM*$100=7*$100=$1*21,1,$100,1,0,0,0*%\n");
    ASSERT_EQ(outlines.size(), 1U);
    EXPECT_NEAR(outlines[0].getArea(), 2.0, 1e-9);
}

TEST(GerberApertureTraps, ADefinitionMakesEvaluationStart) {
    const auto outlines = flashed("%ADD20M*%", "%AMM*$1=3*21,1,$1,$1,0,0,0*%\n");
    ASSERT_EQ(outlines.size(), 1U);
    EXPECT_NEAR(outlines[0].getArea(), 9.0, 1e-9);
}

TEST(GerberApertureTraps, PrimitivesWithAFieldTooManyOrFewDrawNothing) {
    for (const char *primitive :
         {"1,1,2,0", "1,1,2,0,0,0", "20,1,1,0,0,2,0", "21,1,2,2,0,0", "22,1,2,2,0,0,0,0", "4,1,1,0,0",
          "5,1,4,0,0,2", "6,0,0,4,1,1,1,1,4", "7,0,0,4,2,1"}) {
        EXPECT_TRUE(flashed("%ADD20M*%", std::string("%AMM*") + primitive + "*%\n").empty()) << primitive;
    }
}

TEST(GerberApertureTraps, AFractionalYOfAMoireIsLostAndItsXIsNot) {
    const auto outlines = flashed("%ADD20M*%", "%AMM*6,10.5,3.5,4,0.5,0.5,1,0.2,6,0*%\n");
    ASSERT_EQ(outlines.size(), 1U);
    ASSERT_GE(outlines[0].numInternalOutlines(), 1);
    const Box ring = boxOf(*outlines[0].beginInternalOutlines());
    EXPECT_NEAR(ring.xHigh, 12.5, 1e-9);
    EXPECT_NEAR(ring.yHigh, 2.0, 1e-9);
}

TEST(GerberApertureTraps, OfAUnionInTwoPiecesTheFirstIsKept) {
    // Squares that meet in a corner count as touching, and their union has two contours.
    const auto outlines = flashed("%ADD20M*%", "%AMM*22,1,1,1,0,0,0*22,1,1,1,1,1,0*%\n");
    ASSERT_EQ(outlines.size(), 1U);
    EXPECT_EQ(outlines[0].numInternalOutlines(), 0);
    EXPECT_NEAR(outlines[0].getArea(), 1.0, 1e-9);
}

TEST(GerberStrokeTraps, AnArcToItsStartIsAFullCircleClockwiseToo) {
    for (const char *mode : {"G75*\n", "G74*\n", ""}) {
        const Box box = boxOf(drawnOne(std::string(mode) + "D10*\nX50000Y0D02*\nG02X50000Y0I50000J0D01*\n"));
        EXPECT_NEAR(box.xHigh - box.xLow, 11.0, 0.1) << mode;
        EXPECT_NEAR(box.yHigh - box.yLow, 11.0, 0.1) << mode;
    }
}

TEST(GerberStrokeTraps, AnArcIsAsWideAsItsApertureIsAlongX) {
    // A bar of 1 by 4: straight up the sweep of its turned shape would be wider than the bar along X.
    const EDAOutline arc = drawnOne("%ADD20R,1X4*%\nG75*\nD20*\nX100000Y0D02*\nG03X0Y100000I-100000J0D01*\n");
    const double c = std::cos(40.0 * pi / 180.0), s = std::sin(40.0 * pi / 180.0);
    EXPECT_TRUE(covers(arc, 10.45 * c, 10.45 * s));
    EXPECT_TRUE(covers(arc, 9.55 * c, 9.55 * s));
    EXPECT_FALSE(covers(arc, 10.6 * c, 10.6 * s));
    EXPECT_FALSE(covers(arc, 9.4 * c, 9.4 * s));
}

TEST(GerberStrokeTraps, AnArcHasAStepInTenDegrees) {
    // A quarter: ten points outside, ten inside; the points of the two ends come to these.
    const EDAOutline half =
        drawnOne("%ADD20R,1X0.001*%\nG75*\nD20*\nX100000Y0D02*\nG03X-100000Y0I-100000J0D01*\n");
    int outside = 0;
    for (auto point = half.beginPoints(); point != half.endPoints(); ++point)
        outside += std::abs(std::hypot(point->x, point->y) - 10.5) < 1e-6 ? 1 : 0;
    EXPECT_GE(outside, 17);
    EXPECT_LE(outside, 19);
}

TEST(GerberStrokeTraps, ADrawWithoutApertureIsTheLastOperationAllTheSame) {
    EXPECT_EQ(drawn("X0Y0D02*\nX10000Y0D01*\nD10*\nX30000Y0*\n").size(), 1U);
    EXPECT_EQ(drawn("X0Y0D02*\nX10000Y0D03*\nD10*\nX30000Y0*\n").size(), 1U);
    expectBox(drawnOne("X10000Y0D03*\nD10*\nX30000Y0*\n"), 2.5, -0.5, 3.5, 0.5, 0.01);
}

TEST(GerberStrokeTraps, AFlashAloneStandsAtTheCurrentPoint) {
    expectBox(drawnOne("D11*\nX30000Y20000D02*\nD03*\n"), 2, 1.5, 4, 2.5);
}

TEST(GerberRegionTraps, TheEndTwiceIsTheRegionTwice) {
    const auto outlines = drawn(rectangleRegion(0, 0, 2, 1) + "G37*\n");
    ASSERT_EQ(outlines.size(), 2U);
    EXPECT_NEAR(outlines[0].getArea(), 2.0, 1e-9);
    EXPECT_NEAR(outlines[1].getArea(), 2.0, 1e-9);
}

TEST(GerberRegionTraps, AStartWithinARegionForgetsItsContour) {
    expectBox(drawnOne("G36*\nX0Y0D02*\nX10000D01*\nY10000D01*\n" + rectangleRegion(5, 5, 6, 6)), 5, 5, 6, 6);
}

TEST(GerberRegionTraps, AContourInsideAnotherIsNoHole) {
    const auto outlines = drawn("G36*\nX0Y0D02*\nX90000D01*\nY90000D01*\nX0D01*\nY0D01*\n"
                                "X30000Y30000D02*\nX60000D01*\nY60000D01*\nX30000D01*\nY30000D01*\nG37*\n");
    ASSERT_EQ(outlines.size(), 2U);
    for (const EDAOutline &each : outlines) {
        EXPECT_FALSE(each.isHole());
        EXPECT_EQ(each.numInternalOutlines(), 0);
    }
}

TEST(GerberRegionTraps, AFlashWithinARegionIsAFlash) {
    EXPECT_EQ(
        drawn("D10*\nG36*\nX0Y0D02*\nX10000D01*\nX500000D03*\nX10000Y10000D01*\nX0Y0D01*\nG37*\n").size(),
        2U);
}

TEST(GerberRegionTraps, CutInsKeepTheNameOfTheirConductor) {
    const EDAOutline frame =
        drawnOne("%AMFRAME*4,1,10,0,0,9,0,9,9,0,9,0,0,3,3,3,6,6,6,6,3,3,3,0*%\n%ADD20FRAME*%\n"
                 "D20*\nX0Y0D03*\n");
    EXPECT_EQ(frame.getName(), "FRAME");
    ASSERT_EQ(frame.numInternalOutlines(), 1);
    EXPECT_NEAR(solidArea(frame), 72.0, 1e-9);
}

TEST(GerberRegionTraps, ARegionThatEnclosesNothingIsLost) {
    EXPECT_TRUE(
        drawn("G36*\nX0Y0D02*\nX10000D01*\nX20000D01*\nX30000D01*\nX20000D01*\nX10000D01*\nX0D01*\nG37*\n")
            .empty());
}

TEST(GerberPolarityTraps, AClearStrokeIsAHole) {
    const auto outlines =
        drawn("%ADD20R,10X10*%\nD20*\nX0Y0D03*\nX300000Y0D03*\n%LPC*%\nD11*\nX-20000Y0D02*\n"
              "X20000Y0D01*\n");
    ASSERT_EQ(outlines.size(), 2U);
    ASSERT_EQ(outlines[0].numInternalOutlines(), 1);
    EXPECT_TRUE(outlines[0].beginInternalOutlines()->isHole());
    expectBox(*outlines[0].beginInternalOutlines(), -3, -0.5, 3, 0.5);
    EXPECT_EQ(outlines[1].numInternalOutlines(), 0);
}

TEST(GerberPolarityTraps, ARegionIsPunchedAsAFlashIs) {
    const auto outlines = drawn("%ADD20R,10X10*%\nD20*\nX0Y0D03*\n" + rectangleRegion(-4, -4, 4, 4) +
                                "%LPC*%\nD11*\nX0Y0D03*\n");
    ASSERT_EQ(outlines.size(), 2U);
    EXPECT_EQ(outlines[0].numInternalOutlines(), 1);
    EXPECT_EQ(outlines[1].numInternalOutlines(), 1);
}

TEST(GerberPolarityTraps, ARepeatedClearFlashIsAHoleEach) {
    const EDAOutline bar =
        drawnOne("%ADD20R,30X10*%\nD20*\nX0Y0D03*\n%LPC*%\n%SRX3Y2I5.0J2.0*%\nD11*\nX-50000Y0D03*\n");
    EXPECT_EQ(bar.numInternalOutlines(), 6);
    EXPECT_NEAR(solidArea(bar), 300.0 - 12.0, 1e-9);
}

TEST(GerberPolarityTraps, ARepeatedClearRegionIsAHoleEach) {
    EXPECT_EQ(drawnOne("%ADD20R,30X10*%\nD20*\nX0Y0D03*\n%LPC*%\n%SRX3Y1I5.0J0*%\n" +
                       rectangleRegion(-6, -1, -4, 1))
                  .numInternalOutlines(),
              3);
}

TEST(GerberPolarityTraps, ClearObjectsThatOverlapBringNothingBackWhenMerged) {
    const EDAOutline plate = drawnOne("%ADD20R,10X10*%\n%ADD21R,4X4*%\nD20*\nX0Y0D03*\nX50000Y0D03*\n%LPC*%"
                                      "\nD21*\nX0Y0D03*\nX20000Y0D03*\n",
                                      true);
    EXPECT_NEAR(solidArea(plate), 150.0 - 24.0, 1e-9);
    EXPECT_EQ(plate.numInternalOutlines(), 1);
}

TEST(GerberPolarityTraps, AClearObjectTwiceInOnePlaceIsClearOnce) {
    const EDAOutline plate =
        drawnOne("%ADD20R,10X10*%\n%ADD21R,4X4*%\nD20*\nX0Y0D03*\nX50000Y0D03*\n%LPC*%\nD21*\n"
                 "X0Y0D03*\nX0Y0D03*\n",
                 true);
    EXPECT_NEAR(solidArea(plate), 150.0 - 16.0, 1e-9);
}

TEST(GerberPolarityTraps, WhatIsDrawnOverAClearObjectFillsItWhenMerged) {
    const EDAOutline plate =
        drawnOne("%ADD20R,10X10*%\n%ADD21R,4X4*%\nD20*\nX0Y0D03*\n%LPC*%\nD21*\nX0Y0D03*\n%LPD*%\n"
                 "D11*\nX20000Y0D03*\n",
                 true);
    EXPECT_NEAR(solidArea(plate), 100.0 - 16.0 + 1.0, 1e-9);
}

TEST(GerberRepeatTraps, StrokesAndRegionsAreRepeated) {
    EXPECT_EQ(drawn("%SRX2Y1I20.0J0*%\nD10*\nX0Y0D02*\nX50000D01*\n" + rectangleRegion(0, 9, 2, 11)).size(),
              4U);
}

TEST(GerberRepeatTraps, OneColumnOrNoRowIsNotOneObject) {
    EXPECT_EQ(drawn("%SRX1Y3I0J5.0*%\nD10*\nX0Y0D03*\n").size(), 3U);
    EXPECT_EQ(drawn("%SRX1Y1I5.0J5.0*%\nD10*\nX0Y0D03*\n").size(), 1U);
    EXPECT_EQ(drawn("%SRX3Y0I5.0J5.0*%\nD10*\nX0Y0D03*\n").size(), 0U);
    EXPECT_EQ(drawn("%SRX-3Y-2I5.0J5.0*%\nD10*\nX0Y0D03*\n").size(), 1U); // both below two: once
}

TEST(GerberRepeatTraps, StepsAreDecimalsAndMayBeNegative) {
    const auto outlines = drawn("%SRX2Y1I-5.5J0*%\nD11*\nX0Y0D03*\n");
    ASSERT_EQ(outlines.size(), 2U);
    expectBox(outlines[1], -6.5, -0.5, -4.5, 0.5);
}

TEST(GerberRepeatTraps, ARepeatLastsAcrossAChangeOfPolarity) {
    EXPECT_EQ(drawn("%SRX2Y1I5.0J0*%\n%LPD*%\nD11*\nX0Y0D03*\n").size(), 2U);
}
