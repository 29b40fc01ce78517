// The edge of a board from strokes and contours of a profile.
#include "ProfileBench.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

namespace {

using namespace EDA;
using namespace EDA::Fabrication;
using testing::DoubleNear;

double const pi = std::acos(-1.0);

double signedArea(EDAOutline const &outline) {
    auto const &points = outline.getPoints(true);
    double twice = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        auto const &next = points[(i + 1) % points.size()];
        twice += points[i].first * next.second - next.first * points[i].second;
    }
    return twice / 2;
}

std::size_t numArcs(EDAOutline const &outline) {
    std::size_t count = 0;
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point)
        count += point->isArc() ? 1 : 0;
    return count;
}

TEST(BoardEdge, StrokesInAnyOrderAndDirectionMakeACounterClockwiseEdge) {
    ProfileBench bench;
    bench.line(0, 0, 0, 20).line(30, 20, 0, 20).line(0, 0, 30, 0).line(30, 20, 30, 0);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(signedArea(bench.edge), 600.0);
    EXPECT_TRUE(bench.edge.isClosed());
    EXPECT_TRUE(bench.notes.list().empty());
}

TEST(BoardEdge, LengthsAreScaled) {
    ProfileBench bench;
    bench.box(0, 0, 25.4, 50.8);
    ASSERT_TRUE(bench.find(1 / 25.4));
    EXPECT_NEAR(bench.area(), 2.0, 1e-12);
}

TEST(BoardEdge, ARingWithinIsACutOutThatRunsClockwise) {
    ProfileBench bench;
    bench.box(10, 5, 15, 8).box(0, 0, 30, 20);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 600.0);
    ASSERT_EQ(bench.edge.numInternalOutlines(), 1);
    EXPECT_DOUBLE_EQ(signedArea(bench.cutOut(0)), -15.0);
    EXPECT_TRUE(bench.cutOut(0).isHole());
}

TEST(BoardEdge, WhatLiesWithinACutOutIsToldAndLeftOut) {
    ProfileBench bench;
    bench.box(0, 0, 30, 20).box(5, 5, 25, 15).box(8, 8, 12, 12).box(14, 8, 18, 12);
    ASSERT_TRUE(bench.find());
    EXPECT_EQ(bench.edge.numInternalOutlines(), 1);
    EXPECT_EQ(bench.told("within cut-outs"), 2u);
}

TEST(BoardEdge, OfRingsBesideEachOtherTheLargestIsTheEdge) {
    ProfileBench bench;
    bench.box(40, 0, 45, 5).box(0, 0, 30, 20);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 600.0);
    EXPECT_EQ(bench.told("beside"), 1u);
}

TEST(BoardEdge, AFrameAroundTheBoardIsNotItsEdge) {
    ProfileBench bench;
    bench.copper = {4.5, 4.5, 45.5, 25.5};
    bench.box(-20, -40, 80, 40).box(0, 0, 50, 30).box(20, 10, 25, 15);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 1500.0);
    ASSERT_EQ(bench.edge.numInternalOutlines(), 1);
    EXPECT_DOUBLE_EQ(bench.cutOut(0).getArea(), 25.0);
    EXPECT_EQ(bench.told("larger than the board's edge"), 1u);
}

TEST(BoardEdge, OfAnEdgeDrawnTwiceTheOuterOneCounts) {
    for (double const inset : {0.1, 0.5, 1.0}) {
        ProfileBench bench;
        bench.copper = {4.5, 4.5, 45.5, 25.5};
        bench.box(0, 0, 50, 30).box(inset, inset, 50 - inset, 30 - inset).box(20, 10, 25, 15);
        ASSERT_TRUE(bench.find());
        EXPECT_DOUBLE_EQ(bench.area(), 1500.0);
        ASSERT_EQ(bench.edge.numInternalOutlines(), 1);
        EXPECT_DOUBLE_EQ(bench.cutOut(0).getArea(), 25.0);
        EXPECT_EQ(bench.told("around most of the copper"), 1u);
    }
}

TEST(BoardEdge, ALoopAroundMostOfTheCopperIsNoCutOut) {
    ProfileBench bench;
    bench.copper = {1, 1, 49, 29};
    bench.box(0, 0, 50, 30).box(0.5, 0.5, 49.5, 29.5);
    ASSERT_TRUE(bench.find());
    EXPECT_EQ(bench.edge.numInternalOutlines(), 0);
    EXPECT_EQ(bench.told("around most of the copper"), 1u);
}

TEST(BoardEdge, ALargeCutOutOfARingIsOne) {
    ProfileBench bench;
    bench.copper = {-49, -49, 49, 49};
    bench.circle(0, 0, 50).circle(0, 0, 38);
    ASSERT_TRUE(bench.find());
    EXPECT_EQ(bench.edge.numInternalOutlines(), 1);
}

TEST(BoardEdge, CopperThatStandsOutALittleChangesNothing) {
    ProfileBench bench;
    bench.copper = {-0.2, 1, 49, 29};
    bench.box(-20, -40, 80, 40).box(0, 0, 50, 30);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 1500.0);
}

TEST(BoardEdge, WhereNoPathHoldsTheCopperTheLargestIsTheEdge) {
    ProfileBench bench;
    bench.copper = {0, 0, 100, 30};
    bench.box(60, 0, 100, 30).box(0, 0, 50, 30);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 1500.0);
    EXPECT_EQ(bench.told("beside"), 1u);
}

TEST(BoardEdge, AFrameDoesNotHideAnEdgeWithAWideGap) {
    ProfileBench bench;
    bench.copper = {1, 1, 29, 19};
    bench.box(-20, -20, 80, 40);
    bench.line(0, 0, 30, 0).line(30.08, 0, 30, 20).line(30, 20, 0, 20).line(0, 20, 0, 0);
    ASSERT_TRUE(bench.find());
    EXPECT_NEAR(bench.area(), 600.0, 2.0);
    EXPECT_TRUE(bench.notes.has(NoteKind::Guessed));
}

TEST(BoardEdge, ARingAcrossTheEdgeIsToldAndLeftOut) {
    ProfileBench bench;
    bench.box(0, 0, 30, 20).box(25, 5, 35, 10);
    ASSERT_TRUE(bench.find());
    EXPECT_EQ(bench.edge.numInternalOutlines(), 0);
    EXPECT_EQ(bench.told("across"), 1u);
}

TEST(BoardEdge, ArcsStayArcs) {
    ProfileBench bench;
    bench.line(5, 0, 25, 0).arc({25, 0}, {25, 10}, {25, 5});
    bench.line(5, 10, 25, 10).arc({5, 0}, {5, 10}, {5, 5}, Motion::Clockwise);
    ASSERT_TRUE(bench.find());
    EXPECT_EQ(numArcs(bench.edge), 2u);
    EXPECT_EQ(bench.edge.numPoints(), 5u);
    EXPECT_NEAR(signedArea(bench.edge), 200 + pi * 25, 1.0);
    EXPECT_THAT(bench.edge.getBound().getXHigh(), DoubleNear(30, 1e-9));
    EXPECT_THAT(bench.edge.getBound().getXLow(), DoubleNear(0, 1e-9));
}

TEST(BoardEdge, ARoundedCornerBendsOutwardWhicheverWayItWasDrawn) {
    for (Motion const motion : {Motion::CounterClockwise, Motion::Clockwise}) {
        ProfileBench bench;
        bench.line(0, 0, 10, 0).line(10, 0, 10, 8).line(8, 10, 0, 10).line(0, 10, 0, 0);
        bool const isForward = motion == Motion::CounterClockwise;
        bench.arc(isForward ? Point{10, 8} : Point{8, 10}, isForward ? Point{8, 10} : Point{10, 8}, {8, 8},
                  motion);
        ASSERT_TRUE(bench.find());
        EXPECT_NEAR(signedArea(bench.edge), 100 - 4 + pi, 0.02);
    }
}

TEST(BoardEdge, AFullTurnIsARoundBoardAndARoundCutOut) {
    ProfileBench bench;
    bench.circle(50, 40, 10).circle(50, 40, 2);
    ASSERT_TRUE(bench.find());
    EXPECT_NEAR(bench.area(), 100 * pi, 3.0);
    EXPECT_EQ(bench.edge.numPoints(), 2u); // its centre and a point on it
    ASSERT_EQ(bench.edge.numInternalOutlines(), 1);
    double x = 0, y = 0, diameter = 0;
    ASSERT_TRUE(bench.cutOut(0).isCylinder(x, y, diameter, 8, 1e-6));
    EXPECT_NEAR(x, 50, 1e-9);
    EXPECT_NEAR(y, 40, 1e-9);
    EXPECT_NEAR(diameter, 4, 1e-9);
}

TEST(BoardEdge, TwoHalfCirclesMakeARoundBoard) {
    ProfileBench bench;
    bench.arc({10, 0}, {-10, 0}, {0, 0}).arc({10, 0}, {-10, 0}, {0, 0}, Motion::Clockwise);
    ASSERT_TRUE(bench.find());
    EXPECT_NEAR(signedArea(bench.edge), 100 * pi, 3.0);
}

TEST(BoardEdge, ANearlyFullArcKeepsItsCentre) {
    ProfileBench bench;
    double const angle = 1e-3;
    Point const end{10 * std::cos(angle), 10 * std::sin(angle)};
    bench.arc(end, {10, 0}, {0, 0}).line(10, 0, end.x, end.y);
    ASSERT_TRUE(bench.find());
    EXPECT_NEAR(bench.area(), 100 * pi, 5.0);
    EXPECT_NEAR(bench.edge.getBound().getXLow(), -10, 0.05);
}

TEST(BoardEdge, GapsOfRoundingAreClosedAndTold) {
    ProfileBench bench;
    bench.line(0, 0, 30, 0).line(30.004, 0.003, 30, 20).line(30, 20.0004, 0, 20).line(0, 20, 0, 0);
    ASSERT_TRUE(bench.find());
    EXPECT_NEAR(bench.area(), 600.0, 0.2);
    EXPECT_EQ(bench.told("gaps of up to 0.01 mm"), 2u);
    EXPECT_FALSE(bench.notes.has(NoteKind::Guessed));
}

TEST(BoardEdge, WideGapsAreClosedAsAGuessWhereTheEdgeIsOpenOtherwise) {
    ProfileBench bench;
    bench.line(0, 0, 30, 0).line(30.08, 0, 30, 20).line(30, 20, 0, 20).line(0, 20, 0, 0);
    ASSERT_TRUE(bench.find());
    EXPECT_NEAR(bench.area(), 600.0, 2.0);
    EXPECT_EQ(bench.told("gaps of up to 0.1 mm"), 1u);
    EXPECT_TRUE(bench.notes.has(NoteKind::Guessed));
}

TEST(BoardEdge, WideGapsElsewhereStayOpen) {
    ProfileBench bench;
    bench.box(0, 0, 30, 20).line(10, 10, 12, 10).line(12.08, 10, 11, 12).line(11, 12, 10, 10.08);
    ASSERT_TRUE(bench.find());
    EXPECT_EQ(bench.edge.numInternalOutlines(), 0);
    EXPECT_EQ(bench.told("part of no closed path"), 3u);
}

TEST(BoardEdge, AGapBeyondAllToleranceClosesNothing) {
    ProfileBench bench;
    bench.line(0, 0, 30, 0).line(30.2, 0, 30, 20).line(30, 20, 0, 20).line(0, 20, 0, 0);
    EXPECT_FALSE(bench.find());
    EXPECT_TRUE(bench.edge.empty());
    EXPECT_EQ(bench.told("part of no closed path"), 4u);
}

TEST(BoardEdge, StrokesDrawnTwiceCountOnce) {
    ProfileBench bench;
    bench.box(0, 0, 30, 20).box(0, 0, 30, 20).line(30, 0, 0, 0);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 600.0);
    EXPECT_EQ(bench.edge.numInternalOutlines(), 0);
    EXPECT_EQ(bench.told("drawn twice"), 5u);
}

TEST(BoardEdge, ARegionAndItsOutlineAreOnePath) {
    ProfileBench bench;
    bench.region({{0, 0}, {30, 0}, {30, 20}, {0, 20}, {0, 0}}).box(0, 0, 30, 20);
    bench.circle(5, 5, 1).circle(5, 5, 1);
    ASSERT_TRUE(bench.find());
    EXPECT_EQ(bench.edge.numInternalOutlines(), 1);
    EXPECT_EQ(bench.told("beside"), 0u);
}

TEST(BoardEdge, AContourThatDoesNotRepeatItsStartIsClosed) {
    ProfileBench bench;
    bench.region({{0, 0}, {0, 20}, {30, 20}, {30, 0}});
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(signedArea(bench.edge), 600.0);
    EXPECT_TRUE(bench.edge.isClosed());
}

TEST(BoardEdge, ALineAcrossTheBoardLeavesTheOutside) {
    ProfileBench bench;
    bench.line(0, 0, 15, 0).line(15, 0, 30, 0).line(30, 0, 30, 20).line(30, 20, 15, 20).line(15, 20, 0, 20);
    bench.line(0, 20, 0, 0).line(15, 0, 15, 20);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 600.0);
    EXPECT_EQ(bench.edge.numInternalOutlines(), 0);
    EXPECT_EQ(bench.told("part of no closed path"), 1u);
}

TEST(BoardEdge, ABridgeToACutOutDoesNoHarm) {
    ProfileBench bench;
    bench.box(0, 0, 30, 20).box(10, 5, 15, 8).line(0, 0, 10, 5);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 600.0);
    ASSERT_EQ(bench.edge.numInternalOutlines(), 1);
    EXPECT_NEAR(bench.cutOut(0).getArea(), 15.0, 1e-9);
}

TEST(BoardEdge, ABridgeBetweenTwoRingsDoesNoHarm) {
    ProfileBench bench;
    bench.box(0, 0, 30, 20).box(40, 0, 45, 5).line(30, 0, 40, 0);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 600.0);
    EXPECT_EQ(bench.told("beside"), 1u);
}

TEST(BoardEdge, ARingWithinAnArcsBulgeIsNotTakenForTheOutside) {
    ProfileBench bench;
    bench.arc({0, 10}, {0, -10}, {0, 0}).arc({0, -10}, {0, 10}, {0, 0});
    bench.box(-6, -2, -4, 2).line(-6, 2, 0, 10);
    ASSERT_TRUE(bench.find());
    EXPECT_NEAR(bench.area(), 100 * pi, 3.0);
    ASSERT_EQ(bench.edge.numInternalOutlines(), 1);
    EXPECT_NEAR(bench.cutOut(0).getArea(), 8.0, 1e-9);
}

TEST(BoardEdge, TextAndDimensionsThatCloseNothingAreCounted) {
    ProfileBench bench;
    bench.box(0, 0, 30, 20).line(0, -5, 30, -5).line(0, -5, 1, -4).line(40, 0, 41, 3).line(41, 3, 42, 0);
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 600.0);
    EXPECT_EQ(bench.told("part of no closed path"), 4u);
}

TEST(BoardEdge, ClearObjectsAndFlashesAreNoEdge) {
    ProfileBench bench;
    bench.sink.flash(Shape(), {1, 1}, true);
    bench.sink.region({{0, 0}, {{{1, 0}, {}, Motion::Line}, {{1, 1}, {}, Motion::Line}}}, false);
    bench.sink.stroke(Shape(), {0, 0}, {{1, 0}, {}, Motion::Line}, false);
    EXPECT_FALSE(bench.find());
    EXPECT_TRUE(bench.notes.list().empty());
}

TEST(BoardEdge, WhatTheOutlineHeldBeforeIsGone) {
    ProfileBench bench;
    bench.edge.addPoint(0, 1, 1, 0);
    EXPECT_FALSE(bench.find());
    EXPECT_TRUE(bench.edge.empty());
}

TEST(BoardEdge, AThinRingOfTinyStrokesIsNotEatenByTheGapTolerance) {
    ProfileBench bench;
    int const count = 10000;
    auto const at = [count](int i) {
        return Point{5 * std::cos(2 * pi * i / count), 5 * std::sin(2 * pi * i / count)};
    };
    for (int i = 0; i < count; ++i)
        bench.line(at(i).x, at(i).y, at(i + 1).x, at(i + 1).y);
    ASSERT_TRUE(bench.find());
    EXPECT_NEAR(bench.area(), 25 * pi, 0.01);
}

TEST(BoardEdge, ManyStrokesTakeTimeInProportion) {
    ProfileBench bench;
    std::mt19937 random(7);
    int const side = 250; // a lattice: every crossing is a branch
    for (int x = 0; x < side; ++x) {
        for (int y = 0; y < side; ++y)
            bench.line(x, y, x + 1, y).line(x, y, x, y + 1);
    }
    for (int i = 0; i < 50000; ++i) // a heap of ends within one gap
        bench.line(-5 + 1e-6 * (random() % 1000), 1e-6 * (random() % 1000), -100, 1.0 * i);
    ASSERT_TRUE(bench.find());
    EXPECT_NEAR(bench.area(), side * side - 1, 2 * side);
}

TEST(BoardEdge, ManyCutOutsTakeTimeInProportion) {
    ProfileBench bench;
    bench.box(-5, -5, 2005, 2005);
    for (int x = 0; x < 100; ++x) {
        for (int y = 0; y < 100; ++y)
            bench.circle(20 * x, 20 * y, 3);
    }
    ASSERT_TRUE(bench.find());
    EXPECT_EQ(bench.edge.numInternalOutlines(), 10000);
}

TEST(BoardEdge, NumbersFarFromAnyBoardAreLeftOut) {
    ProfileBench bench;
    bench.box(0, 0, 30, 20).line(0, 0, 1e300, 5).arc({1, 1}, {2, 2}, {-1e200, 3});
    ASSERT_TRUE(bench.find());
    EXPECT_DOUBLE_EQ(bench.area(), 600.0);
    EXPECT_EQ(bench.told("part of no closed path"), 2u);
}

TEST(BoardEdge, AnyStrokesEndInAResult) {
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        ProfileBench bench;
        int const count = 1 + static_cast<int>(random() % 60);
        auto const place = [&random] { return Point{1.0 * (random() % 6), 1.0 * (random() % 6)}; };
        for (int i = 0; i < count; ++i)
            bench.arc(place(), place(), place(), static_cast<Motion>(random() % 3));
        bench.find();
        for (auto const &[x, y] : bench.edge.getPoints(true))
            EXPECT_TRUE(std::isfinite(x) && std::isfinite(y));
    }
}

} // namespace
