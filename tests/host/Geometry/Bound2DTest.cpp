// The box of the plane.
#include "host/Geometry/Bound2D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using Geometry::Bound2D;

namespace {

double const nan = std::numeric_limits<double>::quiet_NaN();
double const infinity = std::numeric_limits<double>::infinity();

TEST(Bound2D, StartsInTheResetState) {
    Bound2D const bound;
    EXPECT_FALSE(bound.isValid(1e-9));
    EXPECT_FALSE(bound.isValid(1e300));
}

TEST(Bound2D, ResetStateReadsAsZero) {
    Bound2D bound;
    bound.moveBy(5.0, 7.0);
    EXPECT_EQ(bound.getXLow(), 0.0);
    EXPECT_EQ(bound.getYLow(), 0.0);
    EXPECT_EQ(bound.getXHigh(), 0.0);
    EXPECT_EQ(bound.getYHigh(), 0.0);
    EXPECT_EQ(bound.getXSize(), 0.0);
    EXPECT_EQ(bound.getYSize(), 0.0);
    EXPECT_EQ(bound.getDiagonal().length(), 0.0);
    EXPECT_FALSE(bound.isValid());
}

TEST(Bound2D, ResetStateMeetsAndHoldsNothing) {
    Bound2D const empty;
    Bound2D const box(-1.0, -1.0, 1.0, 1.0);
    EXPECT_FALSE(empty.overlaps(box, 1e-9));
    EXPECT_FALSE(box.overlaps(empty, 1e-9));
    EXPECT_FALSE(empty.overlaps(empty, 1e-9));
    EXPECT_FALSE(empty.contains(box, 1e-9));
    EXPECT_FALSE(box.contains(empty, 1e-9));
    EXPECT_FALSE(empty.contains(0.0, 0.0, 1e-9));
}

TEST(Bound2D, FirstPointSetsAllLimits) {
    Bound2D bound;
    bound.unite(3.0, -4.0);
    EXPECT_TRUE(bound.isValid(1e-9));
    EXPECT_EQ(bound.getXLow(), 3.0);
    EXPECT_EQ(bound.getXHigh(), 3.0);
    EXPECT_EQ(bound.getYLow(), -4.0);
    EXPECT_EQ(bound.getYHigh(), -4.0);
}

TEST(Bound2D, GrowsByPointsAndBoxes) {
    Bound2D bound;
    bound.unite(1.0, 2.0);
    bound.unite(-1.0, 5.0);
    bound.unite(Bound2D(0.0, -7.0, 9.0, 0.0));
    bound.unite(Bound2D());
    EXPECT_EQ(bound.getXLow(), -1.0);
    EXPECT_EQ(bound.getYLow(), -7.0);
    EXPECT_EQ(bound.getXHigh(), 9.0);
    EXPECT_EQ(bound.getYHigh(), 5.0);
    EXPECT_EQ(bound.getXSize(), 10.0);
    EXPECT_EQ(bound.getYSize(), 12.0);
}

TEST(Bound2D, IgnoresPointsThatAreNotFinite) {
    Bound2D bound;
    bound.unite(nan, 1.0);
    bound.unite(1.0, infinity);
    EXPECT_FALSE(bound.isValid());
    bound.unite(1.0, 2.0);
    bound.unite(nan, nan);
    bound.unite(-infinity, 0.0);
    EXPECT_EQ(bound.getXLow(), 1.0);
    EXPECT_EQ(bound.getYLow(), 2.0);
    EXPECT_EQ(bound.getXSize(), 0.0);
}

TEST(Bound2D, IsResetWhenMadeOrMovedByNumbersThatAreNotFinite) {
    EXPECT_FALSE(Bound2D(0.0, nan, 1.0, 1.0).isValid());
    EXPECT_FALSE(Bound2D(0.0, 0.0, infinity, 1.0).isValid());
    Bound2D bound(0.0, 0.0, 1.0, 1.0);
    bound.moveBy(nan, 0.0);
    EXPECT_FALSE(bound.isValid());
}

TEST(Bound2D, AllowsNoWidth) {
    EXPECT_TRUE(Bound2D(1.0, 0.0, 1.0, 5.0).isValid(1e-9));
    EXPECT_TRUE(Bound2D(1.0, 1.0, 1.0, 1.0).isValid(1e-12));
}

TEST(Bound2D, LimitsTheWrongWayRoundAreForgivenBelowTheTolerance) {
    EXPECT_TRUE(Bound2D(1.0, 0.0, 1.0 - 1e-10, 1.0).isValid(1e-9));
    EXPECT_FALSE(Bound2D(1.0, 0.0, 0.5, 1.0).isValid(0.5));
    EXPECT_FALSE(Bound2D(0.0, 1.0, 1.0, 0.0).isValid(1e-9));
}

TEST(Bound2D, MovesAsAWhole) {
    Bound2D bound(0.0, 1.0, 2.0, 3.0);
    bound.moveBy(10.0, -1.0);
    EXPECT_EQ(bound.getXLow(), 10.0);
    EXPECT_EQ(bound.getYLow(), 0.0);
    EXPECT_EQ(bound.getXHigh(), 12.0);
    EXPECT_EQ(bound.getYHigh(), 2.0);
}

TEST(Bound2D, ResetForgetsAll) {
    Bound2D bound(0.0, 1.0, 2.0, 3.0);
    bound.reset();
    EXPECT_FALSE(bound.isValid());
    bound.unite(5.0, 5.0);
    EXPECT_EQ(bound.getXLow(), 5.0);
}

TEST(Bound2D, DiagonalLeadsFromLowToHigh) {
    Bound2D const bound(1.0, 1.0, 4.0, 5.0);
    EXPECT_EQ(bound.getDiagonal().x, 3.0);
    EXPECT_EQ(bound.getDiagonal().y, 4.0);
    EXPECT_EQ(bound.getDiagonal().length(), 5.0);
}

TEST(Bound2D, TouchingBoxesOverlapAtAnyTolerance) {
    Bound2D const left(0.0, 0.0, 1.0, 1.0);
    Bound2D const right(1.0, 0.0, 2.0, 1.0);
    EXPECT_TRUE(left.overlaps(right, 0.0));
    EXPECT_TRUE(right.overlaps(left, 1e-9));
}

TEST(Bound2D, GapBelowTheToleranceOverlaps) {
    Bound2D const left(0.0, 0.0, 1.0, 1.0);
    Bound2D const right(1.25, 0.0, 2.0, 1.0);
    EXPECT_FALSE(left.overlaps(right, 0.0));
    EXPECT_FALSE(left.overlaps(right, 0.25));
    EXPECT_TRUE(left.overlaps(right, 0.3));
    EXPECT_TRUE(right.overlaps(left, 0.3));
}

TEST(Bound2D, HoldsABoxThatSticksOutBelowTheTolerance) {
    Bound2D const bound(0.0, 0.0, 1.0, 1.0);
    EXPECT_TRUE(bound.contains(bound, 0.0));
    EXPECT_TRUE(bound.contains(Bound2D(-1e-10, 0.0, 1.0, 1.0 + 1e-10), 1e-9));
    EXPECT_FALSE(bound.contains(Bound2D(-1e-8, 0.0, 1.0, 1.0), 1e-9));
    EXPECT_FALSE(bound.contains(Bound2D(0.0, 0.0, 1.0, 2.0), 1e-9));
}

TEST(Bound2D, HoldsPointsWidenedByTheTolerance) {
    Bound2D const bound(0.0, 0.0, 1.0, 1.0);
    EXPECT_TRUE(bound.contains(1.0, 0.0, 0.0));
    EXPECT_TRUE(bound.contains(1.0 + 1e-10, 0.5, 1e-9));
    EXPECT_FALSE(bound.contains(1.0 + 1e-8, 0.5, 1e-9));
    EXPECT_FALSE(bound.contains(nan, 0.5, 1e-9));
}

} // namespace
