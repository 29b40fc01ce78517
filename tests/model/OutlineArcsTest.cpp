// Arcs: steps, circles, angled and centred arcs against the formulas written out.
#include "support/NaiveOutlines.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

using EDA::EDAOutline;
using EDA::test::appendNew;
using EDA::test::naiveCleanup;
using EDA::test::outline;
using EDA::test::Points;
using EDA::test::PointsAre;
using EDA::test::PointsNear;
using EDA::test::Random;

namespace {

double const pi = std::atan(1.0) * 4.0;

Points circlePoints(double x, double y, double radius, double startDegrees, int count) {
    Points points;
    for (int i = 0; i < count; ++i) {
        double const t = startDegrees * pi / 180.0 + i * 2.0 * pi / count;
        points.emplace_back(x + radius * std::cos(t), y + radius * std::sin(t));
    }
    return points;
}

// The angled arc, step by step, for an unknown model dimension; without the end point.
Points angledArc(double x1, double y1, double x2, double y2, double A) {
    double const a = A * pi / 180.0;
    double const d = std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1));
    double const half = d * 0.5;
    bool const circle = std::abs(A - 360.0) < 1e-12;
    double r = std::abs(half / std::sin(a * 0.5));
    double cx = 0.0;
    double cy = 0.0;
    double s = 0.0;
    double e = 0.0;
    auto const measure = [&] {
        s = std::atan2(y1 - cy, x1 - cx);
        e = std::atan2(y2 - cy, x2 - cx);
        if (s >= e && a > 0.0)
            e += 2.0 * pi;
        else if (e >= s && a < 0.0)
            e -= 2.0 * pi;
    };
    Points out;
    double const h = std::sqrt(r * r - half * half);
    double const mx = (x1 + x2) * 0.5;
    double const my = (y1 + y2) * 0.5;
    cx = circle ? x1 : mx + (y1 - y2) * h / d;
    cy = circle ? y1 : my + (x2 - x1) * h / d;
    if (circle) r = d;
    measure();
    if (circle) {
        out.emplace_back(x2, y2);
        s = e - 2.0 * pi;
    } else if (std::abs(e - s - a) > 1e-9) {
        cx = mx - (y1 - y2) * h / d;
        cy = my - (x2 - x1) * h / d;
        measure();
    }
    int n = static_cast<int>(std::abs(A / 10.0));
    double const sweep = e - s;
    double delta = sweep / n;
    if (n < 2) {
        n = 2;
        delta = sweep * 0.5;
    }
    for (int i = 1; i < n; ++i) {
        double const t = i * delta + s;
        out.emplace_back(std::cos(t) * r + cx, std::sin(t) * r + cy);
    }
    return out;
}

// The centred arc, step by step, for an unknown model dimension; with the computed end point.
Points centredArc(EDAOutline::EDAPoint const &from, EDAOutline::EDAPoint const &to) {
    double const cx = to.centreX;
    double const cy = to.centreY;
    double const s = std::atan2(from.y - cy, from.x - cx);
    double e = std::atan2(to.y - cy, to.x - cx);
    if (s >= e && !to.clockwise)
        e += 2.0 * pi;
    else if (e >= s && to.clockwise)
        e -= 2.0 * pi;
    double const r = std::sqrt((to.x - cx) * (to.x - cx) + (to.y - cy) * (to.y - cy));
    double const sweep = e - s;
    int n = static_cast<int>(std::abs(sweep * 180.0 / pi / 10.0));
    double delta = sweep / n;
    if (n < 2) {
        n = 2;
        delta = sweep * 0.5;
    }
    Points out;
    for (int i = 1; i <= n; ++i) {
        double const t = i * delta + s;
        out.emplace_back(std::cos(t) * r + cx, std::sin(t) * r + cy);
    }
    return out;
}

std::size_t circleSize(double radius, double dimension) {
    EDAOutline item;
    item.addPoint(0, 0.0, 0.0, 0.0);
    item.addPoint(0, radius, 0.0, 360.0);
    item.setModelDimension(dimension);
    return item.getPoints(true).size();
}

} // namespace

TEST(EDAOutlineSteps, FollowTheRatioOfRadiusAndModelDimension) {
    EXPECT_EQ(circleSize(1.0, -1.0), 36u);
    EXPECT_EQ(circleSize(1.0, 0.0), 36u);
    EXPECT_EQ(circleSize(1.0, 1000.1), 8u);
    EXPECT_EQ(circleSize(1.0, 1000.0), 12u) << "a ratio of 0.001 is not below it";
    EXPECT_EQ(circleSize(1.0, 100.1), 12u);
    EXPECT_EQ(circleSize(1.0, 100.0), 24u);
    EXPECT_EQ(circleSize(1.0, 20.1), 24u);
    EXPECT_EQ(circleSize(1.0, 20.0), 36u);
    EXPECT_EQ(circleSize(1.0, 1.0), 36u);
}

TEST(EDAOutlineCircles, CircleHas36PointsFromThePointOnItAndNoCentre) {
    EDAOutline const item = outline("0,0 1,0@360");
    ASSERT_EQ(item.getPoints(true).size(), 36u);
    EXPECT_EQ(item.getPoints(true).front(), std::make_pair(1.0, 0.0));
    EXPECT_THAT(item.getPoints(true), PointsNear(circlePoints(0.0, 0.0, 1.0, 0.0, 36), 1e-12));
}

TEST(EDAOutlineCircles, CircleStartsAtAnyPointOnIt) {
    EXPECT_THAT(outline("5,7 5,4@360").getPoints(true),
                PointsNear(circlePoints(5.0, 7.0, 3.0, -90.0, 36), 1e-12));
    EXPECT_THAT(outline("5,7 5,10@360").getPoints(true),
                PointsNear(circlePoints(5.0, 7.0, 3.0, 90.0, 36), 1e-12));
}

TEST(EDAOutlineCircles, AngleWithinTheToleranceOf360IsACircleWithOneStepLess) {
    EDAOutline item;
    item.addPoint(0, 0.0, 0.0, 0.0);
    item.addPoint(0, 1.0, 0.0, 360.0 - 0.5e-12);
    EXPECT_EQ(item.getPoints(true).size(), 35u);
}

TEST(EDAOutlineCircles, CircleBehindACircleTakesTheLastVertexAway) {
    EDAOutline const item = outline("0,0 1,0@360 9,0@360");
    Points expected = circlePoints(0.0, 0.0, 1.0, 0.0, 36);
    expected.pop_back();
    for (auto const &point : circlePoints(1.0, 0.0, 8.0, 0.0, 36))
        expected.push_back(point);
    // Collinear vertices could go as well; here there are none.
    EXPECT_THAT(item.getPoints(true), PointsNear(expected, 1e-12));
}

TEST(EDAOutlineCircles, Minus360IsNoCircle) {
    EDAOutline const item = outline("0,0 1,0@-360");
    EXPECT_EQ(item.getPoints(true).front(), std::make_pair(0.0, 0.0)) << "the start stays: it is no centre";
    EXPECT_GT(item.getBound().getDiagonal().length(), 1e6) << "the radius is half / sin(pi)";
}

TEST(EDAOutlineArcs, FirstPointsArcNeverExpands) {
    EXPECT_THAT(outline("0,0@90 4,0 4,2").getPoints(true), PointsAre("0,0 4,0 4,2"));
    EXPECT_THAT(outline("0,0<1,1 4,0 4,2").getPoints(true), PointsAre("0,0 4,0 4,2"));
}

TEST(EDAOutlineArcs, FirstPointsArcStillRemovesCollinearPoints) {
    EXPECT_THAT(outline("0,0@90 2,0 4,0 4,2").getPoints(true), PointsAre("0,0 4,0 4,2"));
    EXPECT_THAT(outline("0,0 2,0 4,0 4,2").getPoints(true), PointsAre("0,0 2,0 4,0 4,2"));
}

TEST(EDAOutlineArcs, FiveDegreesHaveOnePointHalfWay) {
    EDAOutline arc;
    double const a = 5.0 * pi / 180.0;
    arc.addPoint(0, 1.0, 0.0, 0.0);
    arc.addPoint(0, std::cos(a), std::sin(a), 5.0);
    Points const expected{{1.0, 0.0}, {std::cos(a / 2), std::sin(a / 2)}, {std::cos(a), std::sin(a)}};
    EXPECT_THAT(arc.getPoints(true), PointsNear(expected, 1e-9));
}

TEST(EDAOutlineArcs, QuarterHasEightInteriorPointsAndTheStoredEnd) {
    EDAOutline const item = outline("1,0 0,1@90");
    Points expected;
    for (int i = 0; i <= 9; ++i)
        expected.emplace_back(std::cos(i * pi / 18), std::sin(i * pi / 18));
    EXPECT_THAT(item.getPoints(true), PointsNear(expected, 1e-12));
    EXPECT_EQ(item.getPoints(true).back(), std::make_pair(0.0, 1.0)) << "the end is the stored one";
}

TEST(EDAOutlineArcs, NegativeAngleTurnsClockwise) {
    EDAOutline const item = outline("0,1 1,0@-90");
    Points expected;
    for (int i = 9; i >= 0; --i)
        expected.emplace_back(std::cos(i * pi / 18), std::sin(i * pi / 18));
    EXPECT_THAT(item.getPoints(true), PointsNear(expected, 1e-12));
}

TEST(EDAOutlineArcs, AnglesAbove180TakeTheLongWay) {
    EDAOutline const item = outline("1,0 0,-1@270");
    Points expected;
    for (int i = 0; i <= 27; ++i)
        expected.emplace_back(std::cos(i * pi / 18), std::sin(i * pi / 18));
    EXPECT_THAT(item.getPoints(true), PointsNear(expected, 1e-12));
}

TEST(EDAOutlineArcs, HalfCircleIsFiniteForEveryChord) {
    Random random(1);
    for (int i = 0; i < 2000; ++i) {
        EDAOutline item;
        item.addPoint(0, random.between(-99, 99), random.between(-99, 99), 0.0);
        item.addPoint(0, random.between(-99, 99), random.between(-99, 99), i % 2 ? 180.0 : -180.0);
        ASSERT_EQ(item.getPoints(true).size(), 19u);
        for (auto const &point : item.getPoints(true))
            ASSERT_TRUE(std::isfinite(point.first) && std::isfinite(point.second)) << "seed 1, case " << i;
    }
}

TEST(EDAOutlineArcs, AngledArcsEqualTheFormulas) {
    Random random(2);
    for (int i = 0; i < 5000; ++i) {
        double const x1 = random.between(-9, 9);
        double const y1 = random.between(-9, 9);
        double const x2 = random.between(-9, 9);
        double const y2 = i % 3 == 0 ? y1 : random.between(-9, 9);
        double const nearHalf = (i % 2 ? 180.0 : -180.0) + random.between(-2e-6, 2e-6); // both centres fit
        double const other = i % 7 == 0 ? nearHalf : random.between(-400.0, 400.0);
        double const angle = i % 5 == 0 ? 360.0 : other;
        if (std::abs(angle) > 359.0 && angle != 360.0) continue;
        EDAOutline item;
        item.addPoint(0, x1, y1, 0.0);
        item.addPoint(0, x2, y2, angle);
        Points expected = angledArc(x1, y1, x2, y2, angle);
        if (angle != 360.0) {
            expected.insert(expected.begin(), {x1, y1});
            appendNew(expected, {x2, y2});
        }
        naiveCleanup(expected, true);
        ASSERT_THAT(item.getPoints(true), PointsNear(expected, 0.0))
            << "seed 2, case " << i << ", angle " << angle;
    }
}

TEST(EDAOutlineArcs, CircleAboutMinusZeroIsTheSameCircle) {
    for (double y : {0.0, -0.0}) {
        EDAOutline item;
        item.addPoint(0, -0.0, y, 0.0);
        item.addPoint(0, -1.0, 1.0, 360.0);
        EXPECT_THAT(item.getPoints(true), PointsNear(angledArc(-0.0, y, -1.0, 1.0, 360.0), 0.0));
    }
}

TEST(EDAOutlineArcs, CentredQuarterHasNineComputedPoints) {
    EDAOutline const item = outline("1,0 0,1<0,0");
    Points expected;
    for (int i = 0; i <= 9; ++i)
        expected.emplace_back(std::cos(i * pi / 18), std::sin(i * pi / 18));
    EXPECT_THAT(item.getPoints(true), PointsNear(expected, 1e-12));
}

TEST(EDAOutlineArcs, CentredArcsEqualTheFormulas) {
    Random random(3);
    int skippedEnds = 0;
    int keptEnds = 0;
    for (int i = 0; i < 5000; ++i) {
        double const size = i % 2 ? 9.0 : 1e5;
        EDAOutline::EDAPoint const from(random.between(-size, size), random.between(-size, size), 0.0);
        EDAOutline::EDAPoint const to(random.between(-size, size), random.between(-size, size),
                                      random.between(-1, 1), random.between(-1, 1), i % 3 == 0);
        EDAOutline item;
        item.addPoint(0, from.x, from.y, 0.0);
        item.addPoint(0, to.x, to.y, to.centreX, to.centreY, to.clockwise);
        Points expected{{from.x, from.y}};
        for (auto const &point : centredArc(from, to))
            appendNew(expected, point);
        std::size_t const computed = expected.size();
        appendNew(expected, {to.x, to.y});
        ++(expected.size() == computed ? skippedEnds : keptEnds);
        naiveCleanup(expected, true);
        ASSERT_THAT(item.getPoints(true), PointsNear(expected, 0.0)) << "seed 3, case " << i;
    }
    EXPECT_GT(skippedEnds, 0);
    EXPECT_GT(keptEnds, 0);
}

TEST(EDAOutlineArcs, CentredArcKeepsAStoredEndThatRoundingLeavesFurtherAway) {
    EDAOutline item;
    item.addPoint(0, 1e6, 0.0, 0.0);
    item.addPoint(0, 6e5, 8e5, 1.0, 2.0, false);
    Points const arc = centredArc({1e6, 0.0, 0.0}, {6e5, 8e5, 1.0, 2.0, false});
    ASSERT_NE(arc.back(), std::make_pair(6e5, 8e5)) << "rounding moves the computed end";
    // The clean-up takes the computed end for a repetition only below the tolerance.
    EXPECT_EQ(item.getPoints(true).back(), std::make_pair(6e5, 8e5));
}

TEST(EDAOutlineArcs, CentredArcTakesTheRadiusOfItsEnd) {
    EDAOutline const item = outline("5,0 0,1<0,0");
    Points expected{{5.0, 0.0}};
    for (int i = 1; i <= 9; ++i)
        expected.emplace_back(std::cos(i * pi / 18), std::sin(i * pi / 18));
    EXPECT_THAT(item.getPoints(true), PointsNear(expected, 1e-12));
}

TEST(EDAOutlineArcs, CentredArcTurnsInItsSense) {
    EDAOutline const item = outline("1,0 0,1>0,0");
    EXPECT_EQ(item.getPoints(true).size(), 28u);
    EXPECT_LT(item.getPoints(true)[1].second, 0.0);
}

TEST(EDAOutlineArcs, CentredArcBackToItsStartIsACircleInEitherSense) {
    EDAOutline const anticlockwise = outline("1,0 1,0<0,0");
    ASSERT_EQ(anticlockwise.getPoints(true).size(), 36u);
    EXPECT_GT(anticlockwise.getPoints(true)[1].second, 0.0);
    EDAOutline clockwise = outline("1,0");
    clockwise.addPoint(0, 1.0, 0.0, 1e-3, 0.0, true);
    ASSERT_EQ(clockwise.getPoints(true).size(), 36u);
    EXPECT_LT(clockwise.getPoints(true)[1].second, 0.0);
}

TEST(EDAOutlineArcs, CentredArcIgnoresItsAngle) {
    EDAOutline const plain = outline("1,0 0,1<0,0");
    EXPECT_EQ(plain.beginPoints()[1].angle, 0.0);
    EXPECT_EQ(plain.getPoints(true).size(), 10u);
}

TEST(EDAOutlineArcs, ZeroChordGivesNumbersThatAreNotFinite) {
    EDAOutline const item = outline("1,1 1,1@90 5,5");
    bool allFinite = true;
    for (auto const &point : item.getPoints(true))
        allFinite = allFinite && std::isfinite(point.first) && std::isfinite(point.second);
    EXPECT_FALSE(allFinite);
    EXPECT_EQ(item.getBound().getXHigh(), 5.0) << "they take no part in the bound";
}

TEST(EDAOutlineArcs, CollinearPointSurvivesOnlyWithoutArcs) {
    EXPECT_THAT(outline("0,0 2,0 4,0 4,2 0,2").getPoints(true), PointsAre("0,0 2,0 4,0 4,2 0,2"));
    EDAOutline const straight = outline("0,0 4,0 4,2@90 0,2");
    EXPECT_EQ(outline("0,0 2,0 4,0 4,2@90 0,2").getPoints(true), straight.getPoints(true));
}

TEST(EDAOutlineArcs, DistanceFromALineIsForgivenByTheSquareRootOfTheDiagonal) {
    for (double size : {1.0, 1e-4}) { // diagonals of 100 and 0.01
        double const limit = 1e-5 * std::sqrt(100.0 * size);
        for (double share : {0.9, -0.9, 1.1, -1.1}) {
            double const off = share * limit;
            EDAOutline item;
            item.addPoint(0, 0.0, 0.0, 90.0); // never expands, but asks for the clean-up
            item.addPoint(0, 30.0 * size + 0.8 * off, 40.0 * size - 0.6 * off, 0.0);
            item.addPoint(0, 60.0 * size, 80.0 * size, 0.0);
            item.addPoint(0, 60.0 * size, 0.0, 0.0);
            EXPECT_EQ(item.getPoints(true).size(), std::abs(share) < 1.0 ? 3u : 4u)
                << "size " << size << ", share " << share;
        }
    }
}

TEST(EDAOutlineArcs, OvershootOfALineIsForgivenByTheDiagonal) {
    for (double beyond : {0.5e-10, 2e-10}) { // the diagonal of 100 allows 1e-10
        EDAOutline item;
        item.addPoint(0, 0.0, 0.0, 90.0);
        item.addPoint(0, 60.0 + beyond, 0.0, 0.0);
        item.addPoint(0, 60.0, 0.0, 0.0);
        item.addPoint(0, 60.0, 80.0, 0.0);
        // Further beyond, it is the corner that lies on the line from there to the next point.
        ASSERT_EQ(item.getPoints(true).size(), 3u);
        EXPECT_EQ(item.getPoints(true)[1].first, beyond < 1e-10 ? 60.0 : 60.0 + beyond);
    }
}

TEST(EDAOutlineArcs, CollinearFirstPointGoesOnlyWhenTheWalkComesBackToIt) {
    EXPECT_THAT(outline("2,0@90 4,0 4,2 0,2 0,0").getPoints(true), PointsAre("2,0 4,0 4,2 0,2 0,0"));
    EXPECT_THAT(outline("2,0@90 3,0 4,0 4,2 0,2 0,0").getPoints(true), PointsAre("4,0 4,2 0,2 0,0"));
}
