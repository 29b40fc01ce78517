// Points, box and direction of a polygon.
#include "host/Geometry/Polygon2D.h"

#include <gtest/gtest.h>

using Geometry::Polygon2D;

namespace {

Polygon2D square() {
    Polygon2D polygon;
    polygon.addPoint(0.0, 0.0, false);
    polygon.addPoint(2.0, 0.0, false);
    polygon.addPoint(2.0, 2.0, false);
    polygon.addPoint(0.0, 2.0, false);
    return polygon;
}

TEST(Polygon2D, KeepsPointsInOrder) {
    Polygon2D const polygon = square();
    ASSERT_EQ(polygon.numPoints(), 4u);
    EXPECT_EQ(polygon.beginPoints()->x, 0.0);
    EXPECT_EQ((polygon.endPoints() - 1)->y, 2.0);
}

TEST(Polygon2D, DropsAnEqualPointOnlyWhenAsked) {
    Polygon2D polygon;
    polygon.addPoint(1.0, 1.0, true);
    polygon.addPoint(1.0, 1.0, true);
    EXPECT_EQ(polygon.numPoints(), 1u);
    polygon.addPoint(1.0, 1.0, false);
    EXPECT_EQ(polygon.numPoints(), 2u);
}

TEST(Polygon2D, BoxIsThatOfTheLastRequest) {
    Polygon2D polygon = square();
    EXPECT_FALSE(polygon.getBoundingBox().isValid());
    polygon.setBoundingBox();
    polygon.addPoint(9.0, 9.0, false);
    EXPECT_EQ(polygon.getBoundingBox().getXHigh(), 2.0);
    polygon.setBoundingBox();
    EXPECT_EQ(polygon.getBoundingBox().getXHigh(), 9.0);
}

TEST(Polygon2D, OrientationTurnsRoundAndKeepsTheFirstPoint) {
    Polygon2D polygon = square();
    polygon.setOrientation(true);
    EXPECT_EQ(polygon.points()[1].x, 2.0);
    EXPECT_EQ(polygon.getSignedArea(), 4.0);
    polygon.setOrientation(false);
    EXPECT_EQ(polygon.points()[0].x, 0.0);
    EXPECT_EQ(polygon.points()[1].x, 0.0);
    EXPECT_EQ(polygon.getSignedArea(), -4.0);
}

TEST(Polygon2D, OrientationOfNothingIsHarmless) {
    Polygon2D polygon;
    polygon.setOrientation(true);
    polygon.setOrientation(false);
    polygon.addPoint(1.0, 1.0, false);
    polygon.addPoint(2.0, 2.0, false);
    polygon.setOrientation(false);
    EXPECT_EQ(polygon.points()[1].x, 2.0);
    EXPECT_EQ(polygon.getSignedArea(), 0.0);
}

} // namespace
