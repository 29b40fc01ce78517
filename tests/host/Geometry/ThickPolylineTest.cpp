// Outlines of lines with a width.
#include "host/Geometry/PolygonPrismGeometryMaker.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using Geometry::Polygon2D;
using Geometry::PolygonPrismGeometryMaker;

namespace {

using List = std::vector<double>;

Polygon2D outline(List const &xs, List const &ys, double width) {
    List outXs{1.0}, outYs{2.0}; // what was there must go
    PolygonPrismGeometryMaker::getThickPolylineOutline(xs, ys, width, outXs, outYs);
    EXPECT_EQ(outXs.size(), outYs.size());
    Polygon2D polygon;
    for (std::size_t i = 0; i < outXs.size(); ++i)
        polygon.addPoint(outXs[i], outYs[i], false);
    return polygon;
}

void expectPoints(Polygon2D const &polygon, List const &numbers) {
    ASSERT_EQ(polygon.numPoints(), numbers.size() / 2);
    for (std::size_t i = 0; i < polygon.numPoints(); ++i) {
        EXPECT_DOUBLE_EQ(polygon.points()[i].x, numbers[2 * i]) << i;
        EXPECT_DOUBLE_EQ(polygon.points()[i].y, numbers[2 * i + 1]) << i;
    }
}

TEST(ThickPolyline, StraightLineIsARectangleWithFlatEnds) {
    expectPoints(outline({0, 10}, {0, 0}, 2.0), {0, -1, 10, -1, 10, 1, 0, 1});
}

TEST(ThickPolyline, RightAngleHasMitredCorners) {
    expectPoints(outline({0, 10, 10}, {0, 0, 10}, 2.0), {0, -1, 11, -1, 11, 10, 9, 10, 9, 1, 0, 1});
}

TEST(ThickPolyline, RightTurnIsTheMirrorOfALeftTurn) {
    expectPoints(outline({0, 10, 10}, {0, 0, -10}, 2.0), {0, -1, 9, -1, 9, -10, 11, -10, 11, 1, 0, 1});
}

TEST(ThickPolyline, SharpCornerIsCutFlat) {
    Polygon2D const sharp = outline({0, 10, 0}, {0, 0, 4}, 1.0);
    EXPECT_EQ(sharp.numPoints(), 7u);
    for (auto const &point : sharp.points())
        EXPECT_LT(point.x, 10.6);
}

TEST(ThickPolyline, CollinearPointsStayOnTheOutline) {
    Polygon2D const line = outline({0, 5, 10}, {0, 0, 0}, 2.0);
    EXPECT_EQ(line.numPoints(), 6u);
    EXPECT_DOUBLE_EQ(line.getSignedArea(), 20.0);
}

TEST(ThickPolyline, RepeatedPointsAreSkipped) {
    expectPoints(outline({0, 0, 10, 10}, {0, 0, 0, 0}, 2.0), {0, -1, 10, -1, 10, 1, 0, 1});
}

TEST(ThickPolyline, TurningBackGivesWhatIsCovered) {
    Polygon2D const back = outline({0, 10, 4}, {0, 0, 0}, 2.0);
    EXPECT_NEAR(back.getSignedArea(), 20.0, 1e-12);
}

TEST(ThickPolyline, BendTighterThanTheWidthStaysClean) {
    Polygon2D const zigzag = outline({0, 10, 10, 0}, {0, 0, 1, 1}, 4.0);
    EXPECT_NEAR(zigzag.getSignedArea(), 12.0 * 5.0, 1e-9);
}

TEST(ThickPolyline, CrossingLineGivesTheOuterBorder) {
    Polygon2D const loop = outline({0, 10, 10, 5, 5}, {0, 0, 5, 5, -5}, 1.0);
    EXPECT_GT(loop.getSignedArea(), 25.0);
    for (auto const &point : loop.points())
        EXPECT_FALSE(point.x > 5.6 && point.x < 9.4 && point.y > 0.6 && point.y < 4.4);
}

TEST(ThickPolyline, ClosedSquareGivesItsOuterBorder) {
    Polygon2D const ring = outline({0, 10, 10, 0, 0}, {0, 0, 10, 10, 0}, 2.0);
    EXPECT_NEAR(ring.getSignedArea(), 144.0 - 1.0, 1e-9); // the flat ends leave out one corner
}

// A star of a thousand rays: each segment crosses nearly all others.
TEST(ThickPolyline, LineThatCrossesItselfWithoutEndGivesNothing) {
    List xs, ys;
    for (int i = 0; i < 1001; ++i) {
        xs.push_back(std::cos(i * 500 * 2.0 * 3.14159265358979 / 1001));
        ys.push_back(std::sin(i * 500 * 2.0 * 3.14159265358979 / 1001));
    }
    EXPECT_EQ(outline(xs, ys, 1e-4).numPoints(), 0u);
}

TEST(ThickPolyline, MeaninglessInputGivesNothing) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(outline({}, {}, 1.0).numPoints(), 0u);
    EXPECT_EQ(outline({1}, {1}, 1.0).numPoints(), 0u);
    EXPECT_EQ(outline({1, 1}, {1, 1}, 1.0).numPoints(), 0u);
    EXPECT_EQ(outline({1, 2}, {1}, 1.0).numPoints(), 0u);
    EXPECT_EQ(outline({1, 2}, {1, 1}, 0.0).numPoints(), 0u);
    EXPECT_EQ(outline({1, 2}, {1, 1}, -1.0).numPoints(), 0u);
    EXPECT_EQ(outline({1, 2}, {1, 1}, nan).numPoints(), 0u);
    EXPECT_EQ(outline({1, nan}, {1, 1}, 1.0).numPoints(), 0u);
    EXPECT_EQ(outline({1, 2}, {1, 1}, std::numeric_limits<double>::infinity()).numPoints(), 0u);
    EXPECT_EQ(outline({-1e308, 1e308}, {0, 1}, 1e308).numPoints(), 0u);
}

} // namespace
