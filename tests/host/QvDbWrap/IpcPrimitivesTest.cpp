// The standard primitives of IPC-2581 documents.
#include "IpcShapeSupport.h"

#include <gtest/gtest.h>

using namespace QvDbWrap;

namespace {

constexpr double rounding = 1e-9; // square millimetres and millimetres

Areas shape(const std::string &element) {
    IpcBench bench;
    Areas areas = bench.shape(element);
    EXPECT_EQ(bench.log.text(), "") << element;
    return areas;
}

void expectBounds(const Areas &areas, double xLow, double yLow, double xHigh, double yHigh) {
    const Bounds bounds = boundsOf(areas);
    EXPECT_NEAR(bounds.xLow, xLow, rounding);
    EXPECT_NEAR(bounds.yLow, yLow, rounding);
    EXPECT_NEAR(bounds.xHigh, xHigh, rounding);
    EXPECT_NEAR(bounds.yHigh, yHigh, rounding);
}

} // namespace

TEST(IpcPrimitives, ACircleHasItsVerticesOnTheCircle) {
    const Areas areas = shape("<Circle diameter='2'/>");
    ASSERT_EQ(areas.size(), 1u);
    ASSERT_EQ(areas[0].outer.size(), 36u);
    for (const _mFPOINT &point : areas[0].outer)
        EXPECT_NEAR(std::hypot(point.x, point.y), 1 * mm, 1e-18);
    EXPECT_NEAR(areaOf(areas), pi * chordShare(), rounding);
}

TEST(IpcPrimitives, ARectCenterIsABoxAboutTheOrigin) {
    const Areas areas = shape("<RectCenter width='4' height='2'/>");
    EXPECT_NEAR(areaOf(areas), 8, rounding);
    expectBounds(areas, -2, -1, 2, 1);
}

TEST(IpcPrimitives, ARectCornerStandsWhereItsCornersAre) {
    const Areas areas = shape("<RectCorner lowerLeftX='1' lowerLeftY='-2' upperRightX='4' upperRightY='3'/>");
    EXPECT_NEAR(areaOf(areas), 15, rounding);
    expectBounds(areas, 1, -2, 4, 3);
}

TEST(IpcPrimitives, ARectCornerWithSwappedCornersIsTheSame) {
    EXPECT_NEAR(areaOf(shape("<RectCorner lowerLeftX='4' lowerLeftY='-2' upperRightX='1' upperRightY='3'/>")),
                15, rounding);
}

TEST(IpcPrimitives, ARectChamLosesItsFlaggedCorners) {
    const Areas areas =
        shape("<RectCham width='4' height='2' chamfer='0.5' upperRight='true' lowerLeft='true'/>");
    EXPECT_NEAR(areaOf(areas), 8 - 2 * 0.125, rounding);
    EXPECT_FALSE(covers(areas, 1.9, 0.9));
    EXPECT_FALSE(covers(areas, -1.9, -0.9));
    EXPECT_TRUE(covers(areas, -1.9, 0.9));
    EXPECT_TRUE(covers(areas, 1.9, -0.9));
}

TEST(IpcPrimitives, ARectChamWithoutFlagsLosesAllCorners) {
    EXPECT_NEAR(areaOf(shape("<RectCham width='4' height='2' chamfer='0.5'/>")), 8 - 4 * 0.125, rounding);
}

TEST(IpcPrimitives, AChamferBeyondTheMiddleStopsThere) {
    EXPECT_NEAR(areaOf(shape("<RectCham width='2' height='2' chamfer='5'/>")), 2, rounding);
}

TEST(IpcPrimitives, ARectRoundHasQuarterCirclesAtItsFlaggedCorners) {
    const Areas areas =
        shape("<RectRound width='4' height='2' radius='0.5' upperLeft='1' upperRight='false'/>");
    EXPECT_NEAR(areaOf(areas), 8 - 0.25 * (1 - pi / 4 * chordShare()), rounding);
    EXPECT_FALSE(covers(areas, -1.95, 0.95));
    EXPECT_TRUE(covers(areas, 1.95, 0.95));
    EXPECT_TRUE(covers(areas, 1.95, -0.95));
    for (const _mFPOINT &point : areas[0].outer)
        if (point.x < -1.5 * mm && point.y > 0.5 * mm) {
            EXPECT_NEAR(std::hypot(point.x + 1.5 * mm, point.y - 0.5 * mm), 0.5 * mm, 1e-15);
        }
}

TEST(IpcPrimitives, ARectRoundWithAllFlagsOffIsABox) {
    const Areas areas = shape("<RectRound width='4' height='2' radius='0.5' upperRight='false'/>");
    EXPECT_NEAR(areaOf(areas), 8, rounding);
    EXPECT_EQ(areas[0].outer.size(), 4u);
}

TEST(IpcPrimitives, AnOvalHasHalfCirclesAtItsNarrowEnds) {
    const Areas areas = shape("<Oval width='4' height='2'/>");
    EXPECT_NEAR(areaOf(areas), 4 + pi * chordShare(), rounding);
    expectBounds(areas, -2, -1, 2, 1);
    EXPECT_EQ(areas[0].outer.size(), 38u);
    expectBounds(shape("<Oval width='2' height='4'/>"), -1, -2, 1, 2);
}

TEST(IpcPrimitives, AnOvalAsWideAsHighIsACircle) {
    EXPECT_EQ(shape("<Oval width='2' height='2'/>")[0].outer.size(), 36u);
}

TEST(IpcPrimitives, AnEllipseReachesItsWidthAndHeight) {
    const Areas areas = shape("<Ellipse width='4' height='2'/>");
    EXPECT_NEAR(areaOf(areas), 2 * pi * chordShare(), rounding);
    expectBounds(areas, -2, -1, 2, 1);
}

TEST(IpcPrimitives, ADiamondHasItsCornersOnTheAxes) {
    const Areas areas = shape("<Diamond width='4' height='2'/>");
    EXPECT_NEAR(areaOf(areas), 4, rounding);
    EXPECT_TRUE(covers(areas, 1.9, 0));
    EXPECT_FALSE(covers(areas, 1.2, 0.6));
}

TEST(IpcPrimitives, AHexagonIsMeasuredAcrossItsCorners) {
    const Areas areas = shape("<Hexagon length='2'/>");
    EXPECT_NEAR(areaOf(areas), 1.5 * std::sqrt(3.0), rounding);
    expectBounds(areas, -1, -std::sqrt(0.75), 1, std::sqrt(0.75));
}

TEST(IpcPrimitives, AnOctagonIsMeasuredAcrossItsCorners) {
    const Areas areas = shape("<Octagon length='2'/>");
    EXPECT_NEAR(areaOf(areas), 2 * std::sqrt(2.0), rounding);
    const double side = std::cos(pi / 8);
    expectBounds(areas, -side, -side, side, side);
}

TEST(IpcPrimitives, ATriangleIsCentredByItsBox) {
    const Areas areas = shape("<Triangle base='4' height='2'/>");
    EXPECT_NEAR(areaOf(areas), 4, rounding);
    expectBounds(areas, -2, -1, 2, 1);
    EXPECT_TRUE(covers(areas, 0, 0.9));
}

TEST(IpcPrimitives, ADonutIsACircleLessACircle) {
    const Areas areas = shape("<Donut shape='ROUND' outerDiameter='4' innerDiameter='2'/>");
    ASSERT_EQ(areas.size(), 1u);
    ASSERT_EQ(areas[0].holes.size(), 1u);
    EXPECT_NEAR(areaOf(areas), 3 * pi * chordShare(), rounding);
}

TEST(IpcPrimitives, ADonutComesInFourShapes) {
    const auto donut = [](const std::string &name) {
        return areaOf(shape("<Donut shape='" + name + "' outerDiameter='4' innerDiameter='2'/>"));
    };
    EXPECT_NEAR(donut("SQUARE"), 12, rounding);
    EXPECT_NEAR(donut("HEXAGON"), 3 * 1.5 * std::sqrt(3.0), rounding);
    EXPECT_NEAR(donut("OCTAGON"), 3 * 2 * std::sqrt(2.0), rounding);
}

TEST(IpcPrimitives, ADonutWithoutAHoleIsWhole) {
    const Areas areas = shape("<Donut shape='ROUND' outerDiameter='2' innerDiameter='0'/>");
    EXPECT_TRUE(areas[0].holes.empty());
    EXPECT_TRUE(shape("<Donut shape='ROUND' outerDiameter='2' innerDiameter='2'/>").empty());
}

TEST(IpcPrimitives, AThermalIsCutThroughAtItsSpokes) {
    const Areas areas =
        shape("<Thermal shape='SQUARE' outerDiameter='4' innerDiameter='2' spokeCount='4' gap='0.5' "
              "spokeStartAngle='0'/>");
    EXPECT_EQ(areas.size(), 4u);
    EXPECT_NEAR(areaOf(areas), 12 - 4 * 0.5, rounding);
    EXPECT_FALSE(covers(areas, 1.5, 0));
    EXPECT_FALSE(covers(areas, 0, -1.5));
    EXPECT_TRUE(covers(areas, 1.5, 1.5));
}

TEST(IpcPrimitives, TheFirstSpokeOfAThermalStandsAtItsAngle) {
    const Areas areas =
        shape("<Thermal shape='ROUND' outerDiameter='4' innerDiameter='2' spokeCount='2' gap='0.5' "
              "spokeStartAngle='45'/>");
    EXPECT_EQ(areas.size(), 2u);
    EXPECT_FALSE(covers(areas, 1.06, 1.06));
    EXPECT_FALSE(covers(areas, -1.06, -1.06));
    EXPECT_TRUE(covers(areas, 1.06, -1.06));
    EXPECT_TRUE(covers(areas, 1.5, 0));
}

TEST(IpcPrimitives, AThermalOfAnyFrameIsCutThroughWhateverItsHole) {
    for (const char *frame : {"ROUND", "SQUARE", "HEXAGON", "OCTAGON"})
        for (const char *inner : {"0", "0.4", "1", "3"}) {
            const Areas areas =
                shape(std::string("<Thermal shape='") + frame + "' outerDiameter='4' innerDiameter='" +
                      inner + "' spokeCount='3' gap='0.5' spokeStartAngle='10'/>");
            EXPECT_EQ(areas.size(), 3u) << frame << inner;
            for (const int spoke : {10, 130, 250})
                for (const double radius : {0.1, 0.5, 1.0, 1.6})
                    EXPECT_FALSE(covers(areas, radius * std::cos(spoke * pi / 180),
                                        radius * std::sin(spoke * pi / 180)))
                        << frame << inner << spoke;
        }
}

TEST(IpcPrimitives, AThermalHasUpTo36Spokes) {
    const auto thermal = [](const std::string &count) {
        return "<Thermal shape='ROUND' outerDiameter='4' innerDiameter='3' gap='0.1' spokeCount='" + count +
               "'/>";
    };
    EXPECT_EQ(shape(thermal("36")).size(), 36u);
    IpcBench bench;
    EXPECT_TRUE(bench.shape(thermal("37")).empty());
    EXPECT_NE(bench.log.text().find("is left out"), std::string::npos);
}

TEST(IpcPrimitives, AThermalWithoutSpokesIsADonut) {
    EXPECT_NEAR(
        areaOf(shape("<Thermal shape='SQUARE' outerDiameter='4' innerDiameter='2' spokeCount='0' gap='1'/>")),
        12, rounding);
}

TEST(IpcPrimitives, AButterflyIsTwoQuartersOfACircle) {
    const Areas areas = shape("<Butterfly shape='ROUND' diameter='2'/>");
    EXPECT_NEAR(areaOf(areas), pi / 2 * chordShare(), rounding);
    EXPECT_TRUE(covers(areas, 0.5, 0.5));
    EXPECT_TRUE(covers(areas, -0.5, -0.5));
    EXPECT_FALSE(covers(areas, 0.5, -0.5));
}

TEST(IpcPrimitives, AButterflyIsTwoQuartersOfASquare) {
    const Areas areas = shape("<Butterfly shape='SQUARE' side='2'/>");
    EXPECT_NEAR(areaOf(areas), 2, rounding);
    expectBounds(areas, -1, -1, 1, 1);
}

TEST(IpcPrimitives, AMoireHasRingsFromOutsideInAndACross) {
    const Areas areas = shape("<Moire diameter='10' ringWidth='1' ringGap='1' ringNumber='2' lineWidth='0.5' "
                              "lineLength='12' lineAngle='0'/>");
    ASSERT_EQ(areas.size(), 4u);
    expectBounds(areas, -6, -6, 6, 6);
    const double rings = (25 - 16 + 9 - 4) * pi * chordShare();
    EXPECT_NEAR(areaOf(areas), rings + 2 * 6, rounding);
    EXPECT_FALSE(covers(areas, 2.5, 2.5));
    EXPECT_TRUE(covers(areas, 1.8, 1.8));
}

TEST(IpcPrimitives, TheLastRingOfAMoireMayBeADisc) {
    const Areas areas = shape("<Moire diameter='3' ringWidth='1' ringGap='0' ringNumber='9'/>");
    ASSERT_EQ(areas.size(), 2u);
    EXPECT_TRUE(covers(areas, 0, 0));
}

TEST(IpcPrimitives, OuterRingsRunAnticlockwiseAndHolesClockwise) {
    for (const char *element :
         {"<Donut shape='ROUND' outerDiameter='4' innerDiameter='2'/>", "<Triangle base='1' height='2'/>",
          "<RectCorner lowerLeftX='4' lowerLeftY='0' upperRightX='1' upperRightY='1'/>",
          "<RectCenter width='1' height='2'><Xform mirror='true'/></RectCenter>"})
        for (const Area &area : shape(element)) {
            EXPECT_GT(ringArea(area.outer), 0) << element;
            for (const Ring &hole : area.holes)
                EXPECT_LT(ringArea(hole), 0) << element;
        }
}

TEST(IpcPrimitives, AShapeWithoutExtentDrawsNothing) {
    EXPECT_TRUE(shape("<Circle diameter='0'/>").empty());
    EXPECT_TRUE(shape("<RectCenter width='1' height='0'/>").empty());
}

TEST(IpcPrimitives, AShapeWithABadSizeIsLeftOutAndTold) {
    for (const char *element :
         {"<Circle/>", "<Circle diameter='x'/>", "<Circle diameter='-1'/>", "<Circle diameter='1e300'/>",
          "<Circle diameter='nan'/>", "<RectCenter width='1'/>", "<RectCham width='1' height='1'/>",
          "<Oval width='-1' height='1'/>", "<RectCorner lowerLeftX='0'/>",
          "<Butterfly shape='SQUARE' diameter='1'/>",
          "<Moire diameter='1' ringWidth='0' ringGap='0' ringNumber='1000000000'/>",
          "<Thermal outerDiameter='2' innerDiameter='1' spokeCount='1e9' gap='0.1'/>",
          "<Donut outerDiameter='2'/>", "<Hexagon length='1e400'/>"}) {
        IpcBench bench;
        EXPECT_TRUE(bench.shape(element).empty()) << element;
        EXPECT_NE(bench.log.text().find("is left out"), std::string::npos) << element;
    }
}

TEST(IpcPrimitives, LengthsAreInTheUnitsThatAreSet) {
    IpcBench bench;
    bench.geometry.setMetresPerUnit(bench.geometry.metresPerUnit("INCH"));
    EXPECT_NEAR(areaOf(bench.shape("<RectCenter width='1' height='1'/>")), 25.4 * 25.4, rounding);
}

TEST(IpcPrimitives, UnitsAreKnownInAnyCase) {
    IpcBench bench;
    EXPECT_EQ(bench.geometry.metresPerUnit("Millimeter"), 1e-3);
    EXPECT_EQ(bench.geometry.metresPerUnit("MICRON"), 1e-6);
    EXPECT_EQ(bench.geometry.metresPerUnit("inch"), 0.0254);
    EXPECT_TRUE(bench.log.isEmpty());
    EXPECT_EQ(bench.geometry.metresPerUnit("FURLONG"), 1e-3);
    EXPECT_FALSE(bench.log.isEmpty());
}
