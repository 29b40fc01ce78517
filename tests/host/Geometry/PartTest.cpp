// Prisms, their containment, and parts with their frames.
#include "host/Geometry/Part.h"
#include "host/Geometry/PolygonPrismGeometryMaker.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

using namespace Geometry;

namespace {

Polygon2D box(double xLow, double zLow, double xHigh, double zHigh) {
    return Polygon2D({{xLow, zLow}, {xHigh, zLow}, {xHigh, zHigh}, {xLow, zHigh}});
}

// 4 by 1 by 2 with a hole of 1 by 1.
std::unique_ptr<::Geometry::Geometry> plate(Transform const &place) {
    return PolygonPrismGeometryMaker::makePrism(box(0, 0, 4, 2), {box(1, 0.5, 2, 1.5)}, 0.0, 1.0, place);
}

TEST(PrismGeometry, BoxOfItsOwnFrameHasHeightAlongY) {
    auto const prism = plate(Transform::createTranslation(100.0, 0.0, 0.0));
    EXPECT_EQ(prism->getBound().getXSize(), 4.0);
    EXPECT_EQ(prism->getBound().getYSize(), 1.0);
    EXPECT_EQ(prism->getBound().getZSize(), 2.0);
    EXPECT_EQ(prism->getBound().getXLow(), 0.0);
}

TEST(PrismGeometry, HeightsMayComeEitherWayRound) {
    auto const prism = PolygonPrismGeometryMaker::makePrism(box(0, 0, 1, 1), {}, 2.0, -1.0, Transform());
    EXPECT_EQ(prism->getBound().getYLow(), -1.0);
    bool onSurface = true;
    EXPECT_TRUE(prism->contains(0.5, 0.0, 0.5, onSurface, 1e-9));
    EXPECT_FALSE(onSurface);
}

TEST(PrismGeometry, HoldsPointsOfTheRootFrame) {
    Transform const place = Transform::multiply(Transform::createTranslation(10.0, 0.0, 0.0),
                                                Transform::createRotation(90.0, Transform::YAxis));
    auto const prism = plate(place); // x of the prism leads along -z of the root, z along x
    bool onSurface = false;
    EXPECT_TRUE(prism->contains(11.0, 0.5, -3.0, onSurface, 1e-9));
    EXPECT_FALSE(prism->contains(3.0, 0.5, 1.0, onSurface, 1e-9));
}

TEST(PrismGeometry, HolesAreEmpty) {
    auto const prism = plate(Transform());
    bool onSurface = true;
    EXPECT_FALSE(prism->contains(1.5, 0.5, 1.0, onSurface, 1e-9));
    EXPECT_FALSE(onSurface);
    EXPECT_TRUE(prism->contains(3.0, 0.5, 1.0, onSurface, 1e-9));
}

TEST(PrismGeometry, SurfaceCountsAsInside) {
    auto const prism = plate(Transform());
    double const points[][3] = {
        {0.0, 0.5, 1.0}, {3.0, 1.0, 1.0}, {3.0, 0.0, 1.0}, {1.0, 0.5, 1.0}, {4.0, 1.0, 2.0}};
    for (auto const &point : points) {
        bool onSurface = false;
        EXPECT_TRUE(prism->contains(point[0], point[1], point[2], onSurface, 1e-9)) << point[0];
        EXPECT_TRUE(onSurface) << point[0];
    }
}

TEST(PrismGeometry, ToleranceWidensTheShape) {
    auto const prism = plate(Transform());
    bool onSurface = false;
    EXPECT_TRUE(prism->contains(-0.05, 0.5, 1.0, onSurface, 0.1));
    EXPECT_TRUE(onSurface);
    EXPECT_FALSE(prism->contains(-0.2, 0.5, 1.0, onSurface, 0.1));
    EXPECT_TRUE(prism->contains(3.0, 1.05, 1.0, onSurface, 0.1));
    EXPECT_FALSE(prism->contains(-0.08, 1.08, 1.0, onSurface, 0.1)) << "the edge is rounded";
    EXPECT_TRUE(prism->contains(1.05, 0.5, 1.0, onSurface, 0.1)) << "just inside the hole";
}

TEST(PrismGeometry, EmptyBaseHoldsNothing) {
    auto const prism = PolygonPrismGeometryMaker::makePrism(Polygon2D(), {}, 0.0, 1.0, Transform());
    bool onSurface = true;
    EXPECT_FALSE(prism->contains(0.0, 0.5, 0.0, onSurface, 1.0));
    EXPECT_FALSE(onSurface);
    EXPECT_FALSE(Part(nullptr, PolygonPrismGeometryMaker::makePrism(Polygon2D(), {}, 0.0, 1.0, Transform()))
                     .getBound()
                     .isValid());
}

TEST(Part, BoundIsInTheRootFrame) {
    Transform const place = Transform::multiply(Transform::createTranslation(10.0, 5.0, 0.0),
                                                Transform::createRotation(90.0, Transform::YAxis));
    Part const part(nullptr, plate(place));
    Bound const bound = part.getBound();
    EXPECT_EQ(bound.getXLow(), 10.0);
    EXPECT_EQ(bound.getXSize(), 2.0);
    EXPECT_EQ(bound.getYLow(), 5.0);
    EXPECT_EQ(bound.getZLow(), -4.0);
    EXPECT_EQ(bound.getZSize(), 4.0);
}

TEST(Part, RealUntransformedBoundIsInItsOwnFrame) {
    Part const part(nullptr, plate(Transform::createRotation(90.0, Transform::YAxis)));
    Bound bound;
    bound.unite(1e9, 1e9, 1e9);
    part.getRealUntransformedBound(bound);
    EXPECT_EQ(bound.getXSize(), 4.0);
    EXPECT_EQ(bound.getZSize(), 2.0);
}

TEST(Part, KnowsItsParentAndGeometry) {
    Part const board(nullptr, plate(Transform()));
    Part const child(nullptr, plate(Transform::createTranslation(1.0, 2.0, 3.0)), &board);
    EXPECT_EQ(child.getParent(), &board);
    EXPECT_EQ(board.getParent(), nullptr);
    EXPECT_EQ(board.getEntity(), nullptr);
    EXPECT_EQ(child.getGeometry()->getTransform().getTranslation().z, 3.0);
}

TEST(Part, TakesPointsOfAnotherPartToItsOwnFrame) {
    Part const board(nullptr, plate(Transform::createTranslation(100.0, 0.0, 0.0)));
    Part const via(nullptr, plate(Transform::createTranslation(103.0, 0.0, 7.0)), &board);
    Vec3T<double> origin;
    board.transformToThisCoordinateSystem(&via).transform(origin);
    EXPECT_EQ(origin.x, 3.0);
    EXPECT_EQ(origin.z, 7.0);
}

TEST(Part, FrameOfATurnedPartTurnsThePoint) {
    Part const turned(nullptr, plate(Transform::createRotation(90.0, Transform::YAxis)));
    Part const other(nullptr, plate(Transform::createTranslation(5.0, 0.0, 0.0)));
    Vec3T<double> point;
    turned.transformToThisCoordinateSystem(&other).transform(point);
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(point.z, 5.0);
}

TEST(Part, NoOtherPartStandsForTheRootFrame) {
    Part const part(nullptr, plate(Transform::createTranslation(1.0, 2.0, 3.0)));
    Vec3T<double> point(1.0, 2.0, 3.0);
    part.transformToThisCoordinateSystem(nullptr).transform(point);
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(point.y, 0.0);
    EXPECT_EQ(point.z, 0.0);
}

} // namespace
