// The store of an outline's vertices against a plain vector of them.
#include "model/OutlinePoints.h"

#include "support/Outlines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using EDA::OutlinePoint;
using EDA::OutlinePoints;
using EDA::test::Random;

namespace {

bool isSame(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

void expectSame(OutlinePoints const &store, std::vector<OutlinePoint> const &points) {
    ASSERT_EQ(store.size(), points.size());
    std::size_t i = 0;
    for (auto point = store.begin(); point != store.end(); ++point, ++i) {
        EXPECT_TRUE(isSame(point->x, points[i].x) && isSame(point->y, points[i].y)) << i;
        EXPECT_TRUE(isSame(point->angle, points[i].angle)) << i;
        EXPECT_TRUE(isSame(point->centreX, points[i].centreX)) << i;
        EXPECT_TRUE(isSame(point->centreY, points[i].centreY)) << i;
        EXPECT_EQ(point->centered, points[i].centered) << i;
        EXPECT_EQ(point->clockwise, points[i].clockwise) << i;
    }
}

OutlinePoint randomPoint(Random &random, int arcsInHundred) {
    double const x = random.between(-9, 9), y = random.between(-9, 9);
    if (random.below(100) >= arcsInHundred) return OutlinePoint(x, y, 0.0);
    if (random.below(2) == 0) return OutlinePoint(x, y, random.between(-360, 360));
    return OutlinePoint(x, y, random.between(-9, 9), random.between(-9, 9), random.below(2) == 0);
}

// One change of either kind of list.
void change(Random &random, int arcsInHundred, OutlinePoints &store, std::vector<OutlinePoint> &points) {
    switch (random.below(12)) {
    case 0:
        if (points.empty()) return;
        store.pop_back();
        points.pop_back();
        return;
    case 1: {
        double const dx = random.between(-1, 1), dy = random.between(-1, 1);
        store.moveBy(dx, dy);
        for (OutlinePoint &point : points) {
            point.x += dx;
            point.y += dy;
            point.centreX += dx;
            point.centreY += dy;
        }
        return;
    }
    case 2: {
        if (points.empty()) return;
        int const count = static_cast<int>(points.size());
        auto const from = static_cast<std::size_t>(random.below(count));
        auto const to = static_cast<std::size_t>(random.below(count));
        store.copy(from, to);
        points[to] = OutlinePoint(points[from]);
        return;
    }
    case 3:
        if (random.below(10) > 0) return;
        store.clear();
        points.clear();
        return;
    case 4:
        store.assign(std::vector<OutlinePoint>(points));
        return;
    case 5:
        if (points.empty()) return;
        // As when an outline is closed: a vertex that may have been moved.
        store.push_back(store.front());
        points.push_back(OutlinePoint(points.front()));
        return;
    default:
        points.push_back(randomPoint(random, arcsInHundred));
        store.push_back(points.back());
    }
}

} // namespace

TEST(OutlinePoints, GiveBackWhatAVectorWould) {
    Random random(71);
    for (int i = 0; i < 600; ++i) {
        SCOPED_TRACE(i);
        OutlinePoints store;
        std::vector<OutlinePoint> points;
        int const arcsInHundred = i % 3 == 0 ? 0 : i % 3 == 1 ? 3 : 40;
        for (int step = 0; step < 60; ++step) {
            change(random, arcsInHundred, store, points);
            ASSERT_NO_FATAL_FAILURE(expectSame(store, points));
        }
    }
}

TEST(OutlinePoints, StraightOnesStoreNoArcs) {
    OutlinePoints store;
    store.push_back({1, 2, 0});
    store.push_back({3, 4, 0});
    EXPECT_TRUE(store.areStraight());
    store.push_back({5, 6, 90});
    EXPECT_FALSE(store.areStraight());
    EXPECT_EQ(store[0].angle, 0.0);
    EXPECT_EQ(store[2].angle, 90.0);
}

TEST(OutlinePoints, AVertexAddedAfterAMoveKeepsItsOwnCentre) {
    OutlinePoints store;
    store.push_back({1, 2, 0});
    store.moveBy(10, 20);
    store.push_back({3, 4, 0});
    EXPECT_EQ(store[0].centreX, 10.0);
    EXPECT_EQ(store[1].centreX, 0.0);
}

TEST(OutlinePoints, ACentreThatIsNoNumberIsKept) {
    OutlinePoint point(1, 2, 0);
    point.centreX = std::numeric_limits<double>::quiet_NaN();
    OutlinePoints store;
    store.push_back(point);
    EXPECT_TRUE(std::isnan(store[0].centreX));
    EXPECT_FALSE(store[0].isEqual(store[0], 1e-12));
}

TEST(OutlinePoints, TheSignOfAnAngleOfZeroIsKept) {
    OutlinePoints store;
    store.push_back({1, 2, 0.0});
    store.push_back({3, 4, -0.0});
    EXPECT_FALSE(std::signbit(store[0].angle));
    EXPECT_TRUE(std::signbit(store[1].angle));
}

TEST(OutlinePoints, TheirIteratorsGoAnywhere) {
    OutlinePoints store;
    for (int i = 0; i < 5; ++i)
        store.push_back({double(i), 0, 0});
    auto const begin = store.begin(), end = store.end();
    EXPECT_EQ(end - begin, 5);
    EXPECT_EQ((begin + 3)->x, 3.0);
    EXPECT_EQ((2 + begin)->x, 2.0);
    EXPECT_EQ((end - 1)->x, 4.0);
    EXPECT_EQ(begin[4].x, 4.0);
    auto at = begin;
    EXPECT_EQ((at++)->x, 0.0);
    EXPECT_EQ((at--)->x, 1.0);
    EXPECT_TRUE(at == begin && at < end && end > at && at <= begin && at >= begin && at != end);
}
