// Lines, arcs, polylines, polygons and contours of IPC-2581 documents.
#include "IpcShapeSupport.h"

#include <gtest/gtest.h>

using namespace QvDbWrap;

namespace {

constexpr double rounding = 1e-9;

Areas shape(const std::string &element) {
    IpcBench bench;
    Areas areas = bench.shape(element);
    EXPECT_EQ(bench.log.text(), "") << element;
    return areas;
}

std::string lineWith(const std::string &style) {
    return "<Line startX='0' startY='0' endX='10' endY='0'><LineDesc " + style + "/></Line>";
}

std::string arc(const std::string &end, const std::string &clockwise, const std::string &style) {
    return "<Arc startX='5' startY='0' " + end + " centerX='0' centerY='0' clockwise='" + clockwise +
           "'><LineDesc " + style + "/></Arc>";
}

const std::string square =
    "<PolyBegin x='0' y='0'/><PolyStepSegment x='4' y='0'/><PolyStepSegment x='4' y='4'/>"
    "<PolyStepSegment x='0' y='4'/><PolyStepSegment x='0' y='0'/>";

} // namespace

TEST(IpcStrokes, ALineWithRoundEndsIsAStadium) {
    const Areas areas = shape(lineWith("lineEnd='ROUND' lineWidth='2'"));
    ASSERT_EQ(areas.size(), 1u);
    EXPECT_EQ(areas[0].outer.size(), 38u);
    EXPECT_NEAR(areaOf(areas), 20 + pi * chordShare(), rounding);
    EXPECT_NEAR(boundsOf(areas).xLow, -1, rounding);
    EXPECT_NEAR(boundsOf(areas).xHigh, 11, rounding);
}

TEST(IpcStrokes, ALineWithSquareEndsReachesHalfItsWidthBeyond) {
    const Areas areas = shape(lineWith("lineEnd='SQUARE' lineWidth='2'"));
    EXPECT_NEAR(areaOf(areas), 24, rounding);
    EXPECT_EQ(areas[0].outer.size(), 4u);
}

TEST(IpcStrokes, ALineWithoutEndsStopsAtItsPoints) {
    EXPECT_NEAR(areaOf(shape(lineWith("lineEnd='NONE' lineWidth='2'"))), 20, rounding);
}

TEST(IpcStrokes, ALineWithoutWidthDrawsNothing) {
    EXPECT_TRUE(shape(lineWith("lineEnd='ROUND' lineWidth='0'")).empty());
}

TEST(IpcStrokes, ALineOfOnePointIsADot) {
    const std::string line =
        "<Line startX='1' startY='1' endX='1' endY='1'><LineDesc lineWidth='2' lineEnd='";
    EXPECT_NEAR(areaOf(shape(line + "ROUND'/></Line>")), pi * chordShare(), rounding);
    EXPECT_NEAR(areaOf(shape(line + "SQUARE'/></Line>")), 4, rounding);
    EXPECT_TRUE(shape(line + "NONE'/></Line>").empty());
}

TEST(IpcStrokes, ALineMayHaveItsWidthItself) {
    EXPECT_FALSE(shape("<Line startX='0' startY='0' endX='1' endY='0' lineWidth='0.1'/>").empty());
}

TEST(IpcStrokes, ALineThatNowhereHasAWidthIsTold) {
    IpcBench bench;
    EXPECT_TRUE(bench.shape("<Line startX='0' startY='0' endX='1' endY='0'/>").empty());
    EXPECT_EQ(bench.log.count("Line without a width is not drawn"), 1u);
}

TEST(IpcStrokes, AnArcIsABandAroundItsCentre) {
    const Areas areas = shape(arc("endX='0' endY='5'", "false", "lineEnd='NONE' lineWidth='2'"));
    ASSERT_EQ(areas.size(), 1u);
    EXPECT_EQ(areas[0].outer.size(), 20u);
    EXPECT_NEAR(areaOf(areas), (36 - 16) * pi / 4 * chordShare(), rounding);
    for (const _mFPOINT &point : areas[0].outer) {
        const double radius = std::hypot(point.x, point.y) / mm;
        EXPECT_LT(std::min(std::fabs(radius - 4), std::fabs(radius - 6)), rounding);
    }
}

TEST(IpcStrokes, AClockwiseArcGoesTheOtherWayRound) {
    const Areas areas = shape(arc("endX='0' endY='5'", "true", "lineEnd='NONE' lineWidth='2'"));
    EXPECT_NEAR(areaOf(areas), (36 - 16) * pi * 3 / 4 * chordShare(), rounding);
    EXPECT_TRUE(covers(areas, -3.5, -3.5));
    EXPECT_FALSE(covers(areas, 3.5, 3.5));
    for (const Area &area : areas)
        EXPECT_GT(ringArea(area.outer), 0);
}

TEST(IpcStrokes, AnArcHasRoundEnds) {
    const Areas areas = shape(arc("endX='0' endY='5'", "false", "lineEnd='ROUND' lineWidth='2'"));
    EXPECT_NEAR(areaOf(areas), 5 * pi * chordShare() + pi * chordShare(), rounding);
    EXPECT_TRUE(covers(areas, 5, -0.9));
    EXPECT_TRUE(covers(areas, -0.9, 5));
}

TEST(IpcStrokes, AnArcThatNearlyClosesCoversItsWholeWay) {
    const Areas areas = shape(arc("endX='4.99' endY='-0.3'", "false", "lineEnd='ROUND' lineWidth='2'"));
    for (int degrees = 0; degrees < 360; degrees += 5)
        EXPECT_TRUE(covers(areas, 5 * std::cos(degrees * pi / 180), 5 * std::sin(degrees * pi / 180)))
            << degrees;
}

TEST(IpcStrokes, AnArcThatEndsWhereItStartsIsAFullTurn) {
    for (const char *clockwise : {"true", "false"}) {
        const Areas areas = shape(arc("endX='5' endY='0'", clockwise, "lineEnd='ROUND' lineWidth='2'"));
        ASSERT_EQ(areas.size(), 1u);
        EXPECT_EQ(areas[0].holes.size(), 1u);
        EXPECT_NEAR(areaOf(areas), 20 * pi * chordShare(), rounding);
    }
}

TEST(IpcStrokes, AnArcTighterThanItsWidthIsFilled) {
    const Areas areas = shape(arc("endX='-5' endY='0'", "false", "lineEnd='ROUND' lineWidth='12'"));
    EXPECT_TRUE(covers(areas, 0, 0));
    EXPECT_TRUE(covers(areas, 0, 10.9));
    EXPECT_FALSE(covers(areas, 0, 11.1));
    EXPECT_EQ(shape(arc("endX='5' endY='0'", "false", "lineEnd='ROUND' lineWidth='12'"))[0].holes.size(), 0u);
}

TEST(IpcStrokes, AnArcAroundItsOwnStartIsALine) {
    EXPECT_NEAR(areaOf(shape("<Arc startX='0' startY='0' endX='2' endY='0' centerX='0' centerY='0'>"
                             "<LineDesc lineWidth='1' lineEnd='NONE'/></Arc>")),
                2, rounding);
}

TEST(IpcStrokes, APolylineIsAnAreaForEachSegmentWithRoundJoints) {
    const Areas areas =
        shape("<Polyline><PolyBegin x='0' y='0'/><PolyStepSegment x='10' y='0'/>"
              "<PolyStepSegment x='10' y='10'/><LineDesc lineEnd='NONE' lineWidth='2'/></Polyline>");
    ASSERT_EQ(areas.size(), 2u);
    EXPECT_TRUE(covers(areas, 10.7, -0.5));
    EXPECT_FALSE(covers(areas, -0.1, 0));
    EXPECT_FALSE(covers(areas, 10, 10.1));
}

TEST(IpcStrokes, APolylineMayCurve) {
    const Areas areas = shape("<Polyline><PolyBegin x='0' y='0'/>"
                              "<PolyStepCurve x='2' y='0' centerX='1' centerY='0' clockwise='true'/>"
                              "<LineDesc lineEnd='ROUND' lineWidth='0.2'/></Polyline>");
    EXPECT_TRUE(covers(areas, 1, 1));
    EXPECT_FALSE(covers(areas, 1, -1));
}

TEST(IpcStrokes, RepeatedPointsOfAPolylineAreOne) {
    EXPECT_EQ(
        shape("<Polyline><PolyBegin x='0' y='0'/><PolyStepSegment x='0' y='0'/><PolyStepSegment x='1' y='0'/>"
              "<PolyStepSegment x='1' y='0'/><LineDesc lineWidth='1'/></Polyline>")
            .size(),
        1u);
}

TEST(IpcStrokes, APolygonIsFilledUnlessItSaysElse) {
    EXPECT_NEAR(areaOf(shape("<Polygon>" + square + "</Polygon>")), 16, rounding);
    EXPECT_NEAR(areaOf(shape("<Polygon>" + square + "<FillDesc fillProperty='FILL'/></Polygon>")), 16,
                rounding);
    EXPECT_TRUE(shape("<Polygon>" + square + "<FillDesc fillProperty='VOID'/></Polygon>").empty());
    EXPECT_TRUE(shape("<Polygon>" + square + "<FillDesc fillProperty='HOLLOW'/></Polygon>").empty());
}

TEST(IpcStrokes, AHollowPolygonIsTheLineAroundIt) {
    const Areas areas =
        shape("<Polygon>" + square +
              "<FillDesc fillProperty='HOLLOW'/><LineDesc lineWidth='1' lineEnd='NONE'/></Polygon>");
    EXPECT_EQ(areas.size(), 4u);
    EXPECT_TRUE(covers(areas, 0, 2));
    EXPECT_TRUE(covers(areas, 0.3, 0.3));
    EXPECT_TRUE(covers(areas, -0.3, -0.3));
    EXPECT_FALSE(covers(areas, 2, 2));
}

TEST(IpcStrokes, AFilledPolygonWithALineIsWiderByIt) {
    const Areas areas = shape("<Polygon>" + square + "<LineDesc lineWidth='1' lineEnd='ROUND'/></Polygon>");
    EXPECT_TRUE(covers(areas, 2, 2));
    EXPECT_TRUE(covers(areas, -0.4, 2));
    EXPECT_NEAR(boundsOf(areas).xHigh, 4.5, rounding);
}

TEST(IpcStrokes, AnOutlineIsTheLineAroundItsPolygon) {
    const std::string outline =
        "<Outline><Polygon>" + square + "</Polygon><LineDesc lineEnd='ROUND' lineWidth='";
    EXPECT_TRUE(shape(outline + "0'/></Outline>").empty());
    EXPECT_EQ(shape(outline + "1'/></Outline>").size(), 4u);
}

TEST(IpcStrokes, AContourHasCutOuts) {
    const std::string hole = "<Cutout><PolyBegin x='1' y='1'/><PolyStepSegment x='1' y='2'/>"
                             "<PolyStepSegment x='2' y='2'/><PolyStepSegment x='2' y='1'/></Cutout>";
    const Areas areas = shape("<Contour><Polygon>" + square + "</Polygon>" + hole + "</Contour>");
    ASSERT_EQ(areas.size(), 1u);
    EXPECT_NEAR(areaOf(areas), 15, rounding);
    EXPECT_FALSE(covers(areas, 1.5, 1.5));
}

TEST(IpcStrokes, ARingDoesNotRepeatItsFirstPoint) {
    IpcBench bench;
    EXPECT_EQ(bench.ring("<Polygon>" + square + "</Polygon>").size(), 4u);
}

TEST(IpcStrokes, ARingKeepsTheDirectionOfTheDocument) {
    IpcBench bench;
    EXPECT_GT(ringArea(bench.ring("<Polygon>" + square + "</Polygon>")), 0);
    EXPECT_LT(ringArea(bench.ring("<Cutout><PolyBegin x='1' y='1'/><PolyStepSegment x='1' y='2'/>"
                                  "<PolyStepSegment x='2' y='1'/></Cutout>")),
              0);
}

TEST(IpcStrokes, ACurveOfARingHasItsVerticesOnTheCircleThroughItsStart) {
    IpcBench bench;
    const Ring ring =
        bench.ring("<Polygon><PolyBegin x='10' y='0'/>"
                   "<PolyStepCurve x='-10.001' y='0' centerX='0' centerY='0' clockwise='false'/></Polygon>");
    ASSERT_EQ(ring.size(), 19u);
    for (std::size_t i = 0; i + 1 < ring.size(); ++i)
        EXPECT_NEAR(std::hypot(ring[i].x, ring[i].y), 10 * mm, 1e-17);
    EXPECT_EQ(ring.back().x, -10.001 * mm);
    EXPECT_EQ(ring.back().y, 0);
    EXPECT_GT(ring[9].y, 0);
}

TEST(IpcStrokes, ARingMayBeOneFullTurn) {
    IpcBench bench;
    const Ring ring =
        bench.ring("<Polygon><PolyBegin x='3' y='1'/>"
                   "<PolyStepCurve x='3' y='1' centerX='1' centerY='1' clockwise='true'/></Polygon>");
    ASSERT_EQ(ring.size(), 36u);
    EXPECT_NEAR(ringArea(ring) / (mm * mm), -4 * pi * chordShare(), rounding);
}

TEST(IpcStrokes, ShortCurvesHaveChordsOfAtMostTenDegrees) {
    IpcBench bench;
    const Ring ring =
        bench.ring("<Polygon><PolyBegin x='1' y='0'/><PolyStepCurve x='0.8660254037844387' y='0.5' "
                   "centerX='0' centerY='0' clockwise='false'/><PolyStepSegment x='0' y='0'/></Polygon>");
    EXPECT_EQ(ring.size(), 5u);
}

TEST(IpcStrokes, ARingWithABadNumberIsEmptyAndTold) {
    for (const char *step :
         {"<PolyStepSegment x='nan' y='0'/>", "<PolyStepSegment y='0'/>", "<PolyStepSegment x='1e9' y='0'/>",
          "<PolyStepCurve x='1' y='0'/>", "<PolyStepCurve x='1' y='0' centerX='1e300' centerY='0'/>"}) {
        IpcBench bench;
        EXPECT_TRUE(
            bench.ring(std::string("<Polygon><PolyBegin x='0' y='0'/>") + step + "</Polygon>").empty());
        EXPECT_FALSE(bench.log.isEmpty()) << step;
    }
}

TEST(IpcStrokes, StrokesWithBadNumbersAreLeftOutAndTold) {
    for (const char *element :
         {"<Line startX='0' startY='0' endX='1e300' endY='0'><LineDesc lineWidth='1'/></Line>",
          "<Line><LineDesc lineWidth='1'/></Line>",
          "<Line startX='0' startY='0' endX='1' endY='0'><LineDesc lineWidth='-1'/></Line>",
          "<Line startX='0' startY='0' endX='1' endY='0'><LineDesc lineWidth='1e300'/></Line>",
          "<Arc startX='0' startY='0' endX='1' endY='0'><LineDesc lineWidth='1'/></Arc>",
          "<Polyline><PolyBegin x='0' y='0'/><PolyStepSegment/><LineDesc lineWidth='1'/></Polyline>",
          "<Polygon><PolyBegin x='0' y='0'/><PolyStepSegment/></Polygon>",
          "<Contour><Polygon><PolyBegin x='0' y='0'/></Polygon><Cutout><PolyBegin/></Cutout></Contour>"}) {
        IpcBench bench;
        EXPECT_TRUE(bench.shape(element).empty()) << element;
        EXPECT_FALSE(bench.log.isEmpty()) << element;
    }
}

TEST(IpcStrokes, EmptyShapesDrawNothing) {
    for (const char *element : {"<Polygon/>", "<Polyline><LineDesc lineWidth='1'/></Polyline>", "<Contour/>",
                                "<UserSpecial/>", "<Outline/>"})
        EXPECT_TRUE(shape(element).empty()) << element;
}

TEST(IpcStrokes, WhatDrawsAndIsNotReadIsTold) {
    IpcBench bench;
    bench.shape(
        "<UserSpecial><Text textString='a'/><Text textString='b'/><NonstandardAttribute/></UserSpecial>");
    EXPECT_EQ(bench.log.text(), "Warning: element Text in a shape is not read (2 times)\n");
}

TEST(IpcStrokes, AHatchedFillIsDrawnSolidAndTold) {
    IpcBench bench;
    EXPECT_NEAR(areaOf(bench.shape("<Circle diameter='2'><FillDesc fillProperty='HATCH'/></Circle>")),
                pi * chordShare(), rounding);
    EXPECT_FALSE(bench.log.isEmpty());
}
