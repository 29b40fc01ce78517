// The box of space.
#include "host/Geometry/Bound.h"

#include <gtest/gtest.h>

#include <limits>

using Geometry::Bound;

namespace {

TEST(Bound, StartsInTheResetStateAndReadsAsZero) {
    Bound const bound;
    EXPECT_FALSE(bound.isValid());
    EXPECT_EQ(bound.getXLow(), 0.0);
    EXPECT_EQ(bound.getZSize(), 0.0);
    EXPECT_FALSE(bound.contains(0.0, 0.0, 0.0, 1.0));
}

TEST(Bound, GrowsByPointsAndBoxes) {
    Bound other;
    other.unite(5.0, 5.0, 5.0);
    Bound bound;
    bound.unite(1.0, 2.0, 3.0);
    bound.unite(-1.0, 2.5, 0.0);
    bound.unite(other);
    bound.unite(Bound());
    EXPECT_EQ(bound.getXLow(), -1.0);
    EXPECT_EQ(bound.getYLow(), 2.0);
    EXPECT_EQ(bound.getZLow(), 0.0);
    EXPECT_EQ(bound.getXSize(), 6.0);
    EXPECT_EQ(bound.getYSize(), 3.0);
    EXPECT_EQ(bound.getZSize(), 5.0);
    EXPECT_EQ(bound.getXHigh(), 5.0);
}

TEST(Bound, IgnoresPointsThatAreNotFinite) {
    Bound bound;
    bound.unite(std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0);
    bound.unite(0.0, std::numeric_limits<double>::infinity(), 0.0);
    EXPECT_FALSE(bound.isValid());
}

TEST(Bound, HoldsPointsWidenedByTheTolerance) {
    Bound bound;
    bound.unite(0.0, 0.0, 0.0);
    bound.unite(1.0, 1.0, 1.0);
    EXPECT_TRUE(bound.contains(1.0, 1.0, 1.0, 0.0));
    EXPECT_TRUE(bound.contains(1.05, 0.5, 0.5, 0.1));
    EXPECT_FALSE(bound.contains(0.5, 0.5, 1.2, 0.1));
}

} // namespace
