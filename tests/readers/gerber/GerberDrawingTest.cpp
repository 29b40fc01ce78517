// Coordinates, strokes, arcs, regions, polarity, step and repeat.
#include "GerberTestSupport.h"
#include "readers/gerber/Aperture.h"
#include "readers/gerber/GerberShapes.h"
#include "readers/gerber/StrokeShape.h"

using namespace TestSupport;
using namespace EDA::test;
using EDA::EDAOutline;

namespace {

// The box of the only conductor that the statements make.
EDAOutline drawnOne(const std::string &statements) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(statements));
    const auto traces = bench.traces();
    EXPECT_EQ(traces.size(), 1U);
    return traces.empty() ? EDAOutline() : traces[0].getOutline();
}

std::size_t numDrawn(const std::string &statements) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(statements));
    return bench.traces().size();
}

// Where a flash goes in a format.
std::pair<double, double> placeOf(const std::string &format, const std::string &coordinates) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("%FS" + format + "*%\n%ADD10R,2X2*%\nD10*\n" + coordinates + "D03*\n"));
    const Box box = boxOf(bench.traces()[0].getOutline());
    return {box.xLow + 1, box.yLow + 1};
}

} // namespace

TEST(GerberCoordinates, WithoutLeadingZerosShortNumbersArePaddedInFront) {
    const auto [x, y] = placeOf("LAX24Y24", "X1000Y2000");
    EXPECT_NEAR(x, 0.1, 1e-12);
    EXPECT_NEAR(y, 0.2, 1e-12);
}

TEST(GerberCoordinates, WithLeadingZerosShortNumbersArePaddedBehind) {
    EXPECT_NEAR(placeOf("TAX24Y24", "X1000Y02").first, 10.0, 1e-12);
    EXPECT_NEAR(placeOf("TAX24Y24", "X1000Y02").second, 2.0, 1e-12);
}

TEST(GerberCoordinates, EachAxisHasItsFormat) {
    const auto [x, y] = placeOf("LAX24Y33", "X1000Y2000");
    EXPECT_NEAR(x, 0.1, 1e-12);
    EXPECT_NEAR(y, 2.0, 1e-12);
}

TEST(GerberCoordinates, AMinusCountsAndAPlusMakesZero) {
    const auto [x, y] = placeOf("LAX24Y24", "X-10000Y+10000");
    EXPECT_NEAR(x, -1.0, 1e-12);
    EXPECT_NEAR(y, 0.0, 1e-12);
}

TEST(GerberCoordinates, APointMakesZero) {
    EXPECT_NEAR(placeOf("LAX24Y24", "X1.5Y10000").first, 0.0, 1e-12);
}

TEST(GerberCoordinates, ANumberOfFourHundredDigitsIsZero) {
    EXPECT_NEAR(placeOf("LAX24Y24", "X" + std::string(400, '9') + "Y0").first, 0.0, 1e-12);
}

TEST(GerberCoordinates, LongNumbersAreRoundedAsDecimalText) {
    EXPECT_EQ(placeOf("LAX66Y66", "X123456789012Y0").first, 123456.789012);
}

TEST(GerberCoordinates, ACoordinateThatIsLeftOutStays) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("D10*\nX10000Y20000D03*\nX50000D03*\nY70000D03*\n"));
    const auto traces = bench.traces();
    ASSERT_EQ(traces.size(), 3U);
    expectBox(traces[1].getOutline(), 4.5, 1.5, 5.5, 2.5, 0.01);
    expectBox(traces[2].getOutline(), 4.5, 6.5, 5.5, 7.5, 0.01);
}

TEST(GerberDrawing, AStrokeOfADiscIsAStadium) {
    const EDAOutline stroke = drawnOne("D10*\nX0Y0D02*\nX30000Y0D01*\n");
    expectBox(stroke, -0.5, -0.5, 3.5, 0.5, 0.01);
    EXPECT_NEAR(stroke.getArea(), 3.0 + 0.25 * 3.14159, 0.01);
    EXPECT_EQ(stroke.numInternalOutlines(), 0);
}

TEST(GerberDrawing, AStrokeWithoutLengthIsTheAperture) {
    const EDAOutline dot = drawnOne("D11*\nX10000Y10000D02*\nX10000Y10000D01*\n");
    expectBox(dot, 0, 0.5, 2, 1.5);
    EXPECT_NEAR(dot.getArea(), 2.0, 1e-9);
}

TEST(GerberDrawing, ARectangleDrawnAtFortyFiveDegreesIsAsWideAsItIsTurned) {
    const EDAOutline stroke = drawnOne("D11*\nX0Y0D02*\nX100000Y100000D01*\n");
    // The band is as wide as the extent of a 2 by 1 rectangle across the diagonal: 3 / sqrt(2).
    const double ends = 2.0, band = std::sqrt(200.0) * 3.0 / std::sqrt(2.0);
    EXPECT_NEAR(stroke.getArea(), band + ends, 1.0);
    EXPECT_GT(stroke.getArea(), band);
}

TEST(GerberDrawing, WithoutApertureADrawMovesNothing) {
    EXPECT_EQ(numDrawn("X0Y0D02*\nX50000Y0D01*\n"), 0U);
    const EDAOutline stroke = drawnOne("X0Y0D02*\nX90000Y0D01*\nD10*\nX10000Y0D01*\n");
    expectBox(stroke, -0.5, -0.5, 1.5, 0.5, 0.01);
}

TEST(GerberDrawing, WithoutApertureAFlashDoesNotReadItsPlace) {
    const EDAOutline stroke = drawnOne("X90000Y90000D03*\nD10*\nX10000Y0D01*\n");
    expectBox(stroke, -0.5, -0.5, 1.5, 0.5, 0.01);
}

TEST(GerberDrawing, AnApertureWithoutPointsMovesThePointAndDrawsNothing) {
    const EDAOutline stroke =
        drawnOne("%AMNIL*1,0,1,0,0*%\n%ADD20NIL*%\nD20*\nX0Y0D02*\nX50000Y0D01*\nD10*\nX60000Y0D01*\n");
    expectBox(stroke, 4.5, -0.5, 6.5, 0.5, 0.01);
}

TEST(GerberDrawing, CoordinatesAloneRepeatTheLastOperation) {
    EXPECT_EQ(numDrawn("D10*\nX0Y0D03*\nX50000Y0*\nX90000Y0*\n"), 3U);
    EXPECT_EQ(numDrawn("D10*\nX0Y0D02*\nX50000Y0*\n"), 0U);
    EXPECT_EQ(numDrawn("D10*\nX0Y0D02*\nX50000Y0D01*\nX50000Y50000*\n"), 2U);
}

TEST(GerberDrawing, AModeAloneRepeatsTheLastOperationToo) { EXPECT_EQ(numDrawn("D10*\nX0Y0D03*\nG01*\n"), 2U); }

TEST(GerberDrawing, AnArcInMultiQuadrantModeGoesRoundItsCentre) {
    // A quarter from (5, 0) to (0, 5) about the origin, anticlockwise.
    const EDAOutline arc = drawnOne("G75*\nD10*\nX50000Y0D02*\nG03X0Y50000I-50000J0D01*\n");
    expectBox(arc, -0.5, -0.5, 5.5, 5.5, 0.02);
    EXPECT_NEAR(arc.getArea(), 0.25 * 3.14159 * (5.5 * 5.5 - 4.5 * 4.5) + 0.25 * 3.14159, 0.1);
}

TEST(GerberDrawing, AnArcInSingleQuadrantModeTakesItsSignsFromItsWay) {
    struct Case {
        const char *code;
        const char *end;
        const char *centre;
    };
    // From (5, 5); the offsets to the centre are 3 and 0 or 0 and 3 without a sign.
    for (const Case &each : {Case{"G03", "X20000Y80000", "I30000J0"}, Case{"G02", "X80000Y80000", "I30000J0"},
                             Case{"G03", "X80000Y80000", "I0J30000"}, Case{"G02", "X20000Y20000", "I30000J0"},
                             Case{"G03", "X20000Y20000", "I0J30000"}, Case{"G02", "X80000Y20000", "I0J30000"},
                             Case{"G03", "X80000Y20000", "I30000J0"}, Case{"G02", "X20000Y80000", "I0J30000"}}) {
        const EDAOutline arc = drawnOne(std::string("G74*\nD10*\nX50000Y50000D02*\n") + each.code + each.end +
                                        each.centre + "D01*\n");
        EXPECT_NEAR(arc.getArea(), 0.25 * 3.14159 * (3.5 * 3.5 - 2.5 * 2.5) + 0.25 * 3.14159, 0.1)
            << each.code << each.end;
    }
}

TEST(GerberDrawing, AnArcToItsStartIsAFullCircleInBothModes) {
    for (const char *mode : {"G75*\n", "G74*\n"}) {
        const EDAOutline circle =
            drawnOne(std::string(mode) + "D10*\nX50000Y0D02*\nG03X50000Y0I50000J0D01*\n");
        const Box box = boxOf(circle);
        EXPECT_NEAR(box.xHigh - box.xLow, 11.0, 0.1) << mode;
        EXPECT_NEAR(box.yHigh - box.yLow, 11.0, 0.1) << mode;
    }
}

TEST(GerberDrawing, AnApertureWiderThanTheArcMeetsInTheCentre) {
    const EDAOutline arc =
        drawnOne("%ADD20C,6*%\nG75*\nD20*\nX10000Y0D02*\nG03X0Y10000I-10000J0D01*\n");
    EXPECT_EQ(arc.numInternalOutlines(), 0);
    EXPECT_GT(arc.getArea(), 9.0 * 3.14159);
}

TEST(GerberDrawing, TheRadiusIsThatOfTheFileNotOfTheEnd) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("G75*\nD10*\nX50000Y0D02*\nG03X0Y90000I-50000J0D01*\n"));
    const auto pieces = bench.traces(); // the aperture at the end lies apart
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_NEAR(boxOf(pieces[0].getOutline()).yHigh, 5.5, 0.05);
    EXPECT_NEAR(boxOf(pieces[1].getOutline()).yHigh, 9.5, 0.05);
}

TEST(GerberDrawing, AfterAQuadrantModeAPlainDrawIsStraight) {
    const EDAOutline line = drawnOne("G75*\nD10*\nX50000Y0D02*\nG03*\nX0Y50000I-50000J0D01*\n");
    EXPECT_NEAR(line.getArea(), std::sqrt(50.0) + 0.25 * 3.14159, 0.05);
}

TEST(GerberDrawing, WithoutAQuadrantModeTheArcLasts) {
    const EDAOutline arc = drawnOne("D10*\nX50000Y0D02*\nG03*\nX0Y50000I-50000J0D01*\n");
    EXPECT_NEAR(arc.getArea(), 0.25 * 3.14159 * (5.5 * 5.5 - 4.5 * 4.5) + 0.25 * 3.14159, 0.1);
}

TEST(GerberRegions, ContoursAreOutlinesOfTheirOwn) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("G36*\nX0Y0D02*\nX10000D01*\nY10000D01*\nX0Y0D01*\n"
                                "X50000Y0D02*\nX60000D01*\nY10000D01*\nX50000Y0D01*\nG37*\n"));
    const auto traces = bench.traces();
    ASSERT_EQ(traces.size(), 2U);
    EXPECT_NEAR(traces[0].getOutline().getArea(), 0.5, 1e-9);
    expectBox(traces[1].getOutline(), 5, 0, 6, 1);
}

TEST(GerberRegions, ARegionKeepsItsArcs) {
    const EDAOutline quarter =
        drawnOne("G75*\nG36*\nX0Y0D02*\nG01X50000Y0D01*\nG03X0Y50000I-50000J0D01*\nG01X0Y0D01*\nG37*\n");
    EXPECT_NEAR(quarter.getArea(), 0.25 * 3.14159 * 25, 0.1);
    bool hasArc = false;
    for (auto point = quarter.beginPoints(); point != quarter.endPoints(); ++point) hasArc |= point->isArc();
    EXPECT_TRUE(hasArc);
}

TEST(GerberRegions, ACutInBecomesAHole) {
    const EDAOutline frame = drawnOne("G36*\nX0Y0D02*\nX100000D01*\nY100000D01*\nX0D01*\nY0D01*\n"
                                      "X20000Y20000D01*\nY80000D01*\nX80000D01*\nY20000D01*\nX20000D01*\nX0Y0D01*\nG37*\n");
    ASSERT_EQ(frame.numInternalOutlines(), 1);
    EXPECT_TRUE(frame.beginInternalOutlines()->isHole());
    EXPECT_NEAR(frame.beginInternalOutlines()->getArea(), 36.0, 1e-9);
}

TEST(GerberRegions, ADrawBeforeAMoveStartsTheContour) {
    EXPECT_NEAR(drawnOne("G36*\nX0Y0D01*\nX10000D01*\nY10000D01*\nG37*\n").getArea(), 0.5, 1e-9);
}

TEST(GerberRegions, ARegionNeedsNoAperture) {
    EXPECT_EQ(numDrawn("%LPD*%\nG36*\nX0Y0D02*\nX10000D01*\nY10000D01*\nG37*\n"), 1U);
}

TEST(GerberPolarity, AClearFlashIsAHoleInWhatItTouches) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%ADD20R,10X10*%\nD20*\nX0Y0D03*\nX300000Y0D03*\n%LPC*%\nD10*\nX0Y0D03*\n"));
    const auto traces = bench.traces();
    ASSERT_EQ(traces.size(), 2U);
    ASSERT_EQ(traces[0].getOutline().numInternalOutlines(), 1);
    EXPECT_TRUE(traces[0].getOutline().beginInternalOutlines()->isHole());
    EXPECT_EQ(traces[1].getOutline().numInternalOutlines(), 0);
}

TEST(GerberPolarity, AClearFlashOverNothingLeavesNoTrace) {
    EXPECT_EQ(numDrawn("%LPC*%\nD10*\nX0Y0D03*\n"), 0U);
}

TEST(GerberPolarity, WhatIsDrawnAfterTheClearStaysWhole) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%ADD20R,10X10*%\nD20*\n%LPC*%\nD10*\nX0Y0D03*\n%LPD*%\nD20*\nX0Y0D03*\n"));
    ASSERT_EQ(bench.traces().size(), 1U);
    EXPECT_EQ(bench.traces()[0].getOutline().numInternalOutlines(), 0);
}

TEST(GerberPolarity, AChangeOfPolarityDropsTheAperture) {
    EXPECT_EQ(numDrawn("D10*\nX0Y0D03*\n%LPD*%\nX50000Y0D03*\nD10*\nX90000Y0D03*\n"), 2U);
}

TEST(GerberPolarity, AClearRegionIsAHoleAndMarksNothingAfterIt) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%ADD20R,10X10*%\nD20*\nX0Y0D03*\n%LPC*%\nG36*\nX0Y0D02*\nX10000D01*\nY10000D01*\nX0Y0D01*\n"
                                "G37*\n%LPD*%\nG36*\nX200000Y0D02*\nX210000D01*\nY10000D01*\nG37*\n"));
    const auto traces = bench.traces();
    ASSERT_EQ(traces.size(), 2U);
    EXPECT_EQ(traces[0].getOutline().numInternalOutlines(), 1);
    EXPECT_FALSE(traces[1].getOutline().isHole());
}

TEST(GerberPolarity, AHoleThatWasClearedIsMissedByTheNextOneInIt) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%ADD20R,10X10*%\nD20*\nX0Y0D03*\n%LPC*%\nD11*\nX0Y0D03*\n%ADD30R,0.5X0.5*%\nD30*\nX0Y0D03*\n"));
    EXPECT_EQ(bench.traces()[0].getOutline().numInternalOutlines(), 1);
}

TEST(GerberRepeat, TwoByThreeMakesSix) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%SRX2Y3I5.0J4.0*%\nD10*\nX0Y0D03*\n%SR*%\nX500000Y0D03*\n"));
    const auto traces = bench.traces();
    ASSERT_EQ(traces.size(), 7U);
    expectBox(traces[1].getOutline(), -0.5, 3.5, 0.5, 4.5, 0.01);
    expectBox(traces[5].getOutline(), 4.5, 7.5, 5.5, 8.5, 0.01);
}

TEST(GerberRepeat, FewerThanOneColumnDrawsNothing) {
    EXPECT_EQ(numDrawn("%SRX0Y3I5.0J4.0*%\nD10*\nX0Y0D03*\n"), 0U);
}

TEST(GerberRepeat, AMissingLetterEndsNothing) {
    EXPECT_EQ(numDrawn("%SRX2I5.0*%\nD10*\nX0Y0D03*\n"), 0U); // no rows
    EXPECT_EQ(numDrawn("%SRX2Y1I5.0*%\nD10*\nX0Y0D03*\n"), 2U);
}

TEST(GerberRepeat, TooManyCopiesAreToldAndNotMade) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%SRX100000Y100000I1J1*%\nD10*\nX0Y0D03*\n"));
    EXPECT_EQ(bench.reader.getError(), "Unhandled statement: %SRX100000Y100000I1J1*%\n");
    EXPECT_EQ(bench.traces().size(), 1U);
}

TEST(GerberLimits, PointsBeyondTheLimitAreLeftOutWithAWord) {
    EDA::GerberLimits limits;
    limits.points = 13; // 6 of them go to the apertures
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer("D11*\nX0Y0D03*\nX50000Y0D03*\nX90000Y0D03*\n"));
    EXPECT_EQ(bench.traces().size(), 1U);
    EXPECT_EQ(bench.reader.getError(),
              "This file has more than 10000000 objects or 13 points; the rest is left out.\n");
}

// The plain way: the band and the aperture at both ends, united.
TEST(GerberStrokes, TheDirectConstructionIsTheUnionOfItsParts) {
    Random random(20261121);
    int direct = 0;
    for (int round = 0; round < 3000; ++round) {
        EDAOutline aperture;
        const int kind = random.below(3);
        const double size = random.between(0.1, 2.0);
        if (kind == 0) {
            EDA::GerberShapes::setupCircularOutline(&aperture, size, 0.0, 0.0);
        } else if (kind == 1) {
            EDA::GerberShapes::setupRectangularOutline(&aperture, size, random.between(0.1, 2.0), 0.0, 0.0);
        } else {
            EDA::GerberShapes::setupPolygonOutline(&aperture, size, 3 + random.below(9), random.between(0, 90), 0, 0);
        }
        const double angle = random.below(2) ? random.between(-3.2, 3.2) : random.below(8) * 0.78539816339744831;
        const double length = random.between(0.05, 5.0);
        const double x = random.between(-50, 50), y = random.between(-50, 50);
        const double endX = x + length * std::cos(angle), endY = y + length * std::sin(angle);
        EDAOutline stroke;
        if (!EDA::makeConvexStroke(aperture, x, y, endX, endY, stroke)) continue;
        ++direct;

        double low = 1e6, high = -1e6;
        const double nx = -(endY - y) / length, ny = (endX - x) / length;
        for (const auto &[px, py] : aperture.getPoints(true)) {
            low = std::min(low, nx * px + ny * py);
            high = std::max(high, nx * px + ny * py);
        }
        EDAOutline band;
        for (const auto &[at, side] : {std::pair{0, high}, {0, low}, {1, low}, {1, high}})
            band.addPoint(0, (at ? endX : x) + nx * side, (at ? endY : y) + ny * side, 0.0);
        EDAOutline start(aperture), end(aperture);
        start.moveBy(x, y);
        end.moveBy(endX, endY);
        std::vector<EDAOutline> extra;
        std::size_t count = 0;
        EDAOutline united = band;
        ASSERT_TRUE(united.mergeOutlines({&start, &end}, extra, nullptr, count));
        ASSERT_TRUE(extra.empty());
        ASSERT_EQ(united.numInternalOutlines(), 0);
        EXPECT_NEAR(stroke.getArea(), united.getArea(), 1e-9 * united.getArea()) << "round " << round;
        // The same contour: neither has a part that the other lacks.
        EDAOutline both = united;
        ASSERT_TRUE(both.mergeOutlines({&stroke}, extra, nullptr, count));
        EXPECT_NEAR(both.getArea(), united.getArea(), 1e-9 * united.getArea()) << "round " << round;
    }
    EXPECT_GT(direct, 1500);
}
