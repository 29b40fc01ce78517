// Clipping of polygons with lists of holes.
#include "host/Geometry/PolygonClipper.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using Geometry::Polygon2D;
using Geometry::PolygonClipper;

namespace {

using Polygons = std::vector<Polygon2D>;

Polygon2D box(double xLow, double yLow, double xHigh, double yHigh) {
    return Polygon2D({{xLow, yLow}, {xHigh, yLow}, {xHigh, yHigh}, {xLow, yHigh}});
}

double areaOf(Polygons const &polygons) {
    double area = 0.0;
    for (Polygon2D const &polygon : polygons)
        area += polygon.getSignedArea();
    return area;
}

class PolygonClipperTest : public testing::Test {
protected:
    bool clip(Polygon2D const &a, Polygons const &aHoles, Polygon2D const &b, Polygons const &bHoles,
              int code) {
        return PolygonClipper::clipPolygon(a, aHoles, b, bHoles, code, outers, holes);
    }

    Polygons outers;
    Polygons holes;
};

TEST_F(PolygonClipperTest, CodeZeroSubtracts) {
    ASSERT_TRUE(clip(box(0, 0, 4, 4), {}, box(2, 0, 6, 4), {}, 0));
    EXPECT_EQ(outers.size(), 1u);
    EXPECT_EQ(areaOf(outers), 8.0);
    EXPECT_TRUE(holes.empty());
}

TEST_F(PolygonClipperTest, CodeOneIntersects) {
    ASSERT_TRUE(clip(box(0, 0, 4, 4), {}, box(3, 0, 6, 4), {}, 1));
    EXPECT_EQ(areaOf(outers), 4.0);
}

TEST_F(PolygonClipperTest, CodeTwoUnites) {
    ASSERT_TRUE(clip(box(0, 0, 4, 4), {}, box(3, 0, 6, 4), {}, 2));
    EXPECT_EQ(areaOf(outers), 24.0);
}

TEST_F(PolygonClipperTest, UnknownCodesAreRefused) {
    outers.push_back(box(0, 0, 1, 1));
    EXPECT_FALSE(clip(box(0, 0, 4, 4), {}, box(3, 0, 6, 4), {}, 3));
    EXPECT_TRUE(outers.empty());
    EXPECT_FALSE(clip(box(0, 0, 4, 4), {}, box(3, 0, 6, 4), {}, -1));
}

TEST_F(PolygonClipperTest, NumbersThatAreNotFiniteAreRefused) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(clip(box(0, 0, 4, 4), {}, box(3, 0, 6, nan), {}, 2));
    EXPECT_FALSE(clip(box(0, 0, 4, 4), {box(1, 1, nan, 2)}, box(3, 0, 6, 4), {}, 2));
    EXPECT_TRUE(outers.empty());
}

TEST_F(PolygonClipperTest, CutFromTheMiddleGivesAClockwiseHole) {
    ASSERT_TRUE(clip(box(0, 0, 4, 4), {}, box(1, 1, 2, 2), {}, 0));
    ASSERT_EQ(holes.size(), 1u);
    EXPECT_EQ(holes[0].getSignedArea(), -1.0);
    EXPECT_EQ(outers[0].getSignedArea(), 16.0);
}

TEST_F(PolygonClipperTest, ResultsHaveTheirBoxes) {
    ASSERT_TRUE(clip(box(0, 0, 4, 4), {}, box(1, 1, 2, 3), {}, 0));
    EXPECT_EQ(outers[0].getBoundingBox().getXHigh(), 4.0);
    EXPECT_EQ(holes[0].getBoundingBox().getYHigh(), 3.0);
}

TEST_F(PolygonClipperTest, HolesOfTheSubjectStayOpen) {
    ASSERT_TRUE(clip(box(0, 0, 9, 9), {box(1, 1, 3, 3)}, box(2, 2, 4, 4), {}, 0));
    EXPECT_EQ(areaOf(outers) + areaOf(holes), 81.0 - 7.0);
    ASSERT_EQ(holes.size(), 1u);
}

TEST_F(PolygonClipperTest, HolesOfTheClipAreNotCut) {
    ASSERT_TRUE(clip(box(0, 0, 9, 9), {}, box(1, 1, 8, 8), {box(3, 3, 5, 5)}, 0));
    EXPECT_EQ(outers.size(), 2u);
    EXPECT_EQ(areaOf(outers) + areaOf(holes), 81.0 - 49.0 + 4.0);
}

TEST_F(PolygonClipperTest, OverlappingHolesStayHoles) {
    ASSERT_TRUE(clip(box(0, 0, 9, 9), {box(1, 1, 4, 4), box(2, 2, 5, 5)}, Polygon2D(), {}, 2));
    EXPECT_EQ(holes.size(), 1u);
    EXPECT_EQ(areaOf(outers) + areaOf(holes), 81.0 - 14.0);
}

TEST_F(PolygonClipperTest, HoleAcrossTheBorderAddsNothingOutside) {
    ASSERT_TRUE(clip(box(0, 0, 4, 4), {box(3, 1, 6, 2)}, Polygon2D(), {}, 2));
    EXPECT_EQ(areaOf(outers), 15.0);
    EXPECT_TRUE(holes.empty());
}

TEST_F(PolygonClipperTest, HoleThatTouchesTheBorderAtAVertexIsPartOfTheOuter) {
    Polygon2D const diamond({{2.0, 0.0}, {3.0, 1.0}, {2.0, 2.0}, {1.0, 1.0}});
    ASSERT_TRUE(clip(box(0, 0, 4, 4), {diamond}, box(0, 0, 4, 4), {diamond}, 2));
    EXPECT_TRUE(holes.empty());
    ASSERT_EQ(outers.size(), 1u);
    EXPECT_EQ(outers[0].numPoints(), 9u);
    EXPECT_EQ(areaOf(outers), 14.0);
}

TEST_F(PolygonClipperTest, UnionWithItselfResolvesACutIn) {
    Polygon2D const slit(
        {{0, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 3}, {3, 3}, {3, 1}, {1, 1}, {1, 3}, {2, 3}, {2, 4}, {0, 4}});
    ASSERT_TRUE(clip(slit, {}, slit, {}, 2));
    ASSERT_EQ(outers.size(), 1u);
    ASSERT_EQ(holes.size(), 1u);
    EXPECT_EQ(areaOf(holes), -4.0);
}

TEST_F(PolygonClipperTest, UnionWithItselfKeepsTheHolesOfBothSides) {
    Polygons const two{box(1, 1, 2, 2), box(5, 5, 6, 6)};
    ASSERT_TRUE(clip(box(0, 0, 9, 9), two, box(0, 0, 9, 9), two, 2));
    EXPECT_EQ(holes.size(), 2u);
}

TEST_F(PolygonClipperTest, IntersectionWithItselfIsItself) {
    ASSERT_TRUE(clip(box(0, 0, 9, 9), {box(1, 1, 2, 2)}, box(0, 0, 9, 9), {box(1, 1, 2, 2)}, 1));
    EXPECT_EQ(areaOf(outers), 81.0);
    EXPECT_EQ(areaOf(holes), -1.0);
}

TEST_F(PolygonClipperTest, DifferenceWithItselfIsNothing) {
    ASSERT_TRUE(clip(box(0, 0, 9, 9), {box(1, 1, 2, 2)}, box(0, 0, 9, 9), {box(1, 1, 2, 2)}, 0));
    EXPECT_TRUE(outers.empty());
}

TEST_F(PolygonClipperTest, SidesThatDifferInAHoleOnlyAreBothClipped) {
    ASSERT_TRUE(clip(box(0, 0, 9, 9), {box(1, 1, 2, 2)}, box(0, 0, 9, 9), {box(5, 5, 6, 6)}, 2));
    EXPECT_TRUE(holes.empty());
    ASSERT_TRUE(clip(box(0, 0, 9, 9), {box(1, 1, 2, 2)}, box(0, 0, 9, 9), {box(5, 5, 6, 6)}, 1));
    EXPECT_EQ(holes.size(), 2u);
}

TEST_F(PolygonClipperTest, UnknownCodesAreRefusedForEqualSidesToo) {
    EXPECT_FALSE(clip(box(0, 0, 4, 4), {}, box(0, 0, 4, 4), {}, 7));
}

TEST_F(PolygonClipperTest, NothingLeftIsSuccess) {
    ASSERT_TRUE(clip(box(0, 0, 1, 1), {}, box(-1, -1, 2, 2), {}, 0));
    EXPECT_TRUE(outers.empty());
    ASSERT_TRUE(clip(Polygon2D(), {}, Polygon2D(), {}, 2));
    EXPECT_TRUE(outers.empty());
}

TEST_F(PolygonClipperTest, ResultMayReplaceAListOfTheInput) {
    holes = {box(1, 1, 2, 2)};
    ASSERT_TRUE(PolygonClipper::clipPolygon(box(0, 0, 9, 9), holes, box(4, 4, 5, 5), {}, 0, outers, holes));
    EXPECT_EQ(holes.size(), 2u);
}

} // namespace
