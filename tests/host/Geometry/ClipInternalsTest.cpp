// Predicates, vertex table and sweep list of the clipping engine.
#include "host/Geometry/ClipGrid.h"
#include "host/Geometry/ClipPredicates.h"
#include "host/Geometry/ClipStatus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace Geometry;
using namespace Geometry::Clip;

namespace {

TEST(ClipPredicates, CrossSignSeesBelowRounding) {
    double const big = 562949953421311.0; // 2^49 - 1
    EXPECT_EQ(crossSign(big, big - 1.0, big - 1.0, big - 2.0), -1);
    EXPECT_EQ(crossSign(big - 1.0, big - 2.0, big, big - 1.0), 1);
    EXPECT_EQ(crossSign(big, big - 1.0, big, big - 1.0), 0);
    EXPECT_EQ(crossSign(0.0, big, 0.0, big), 0);
}

TEST(ClipPredicates, ParallelLinesDoNotCross) {
    WidePoint const a{{0.0, 0.0}, {0.0, 0.0}}, b{{2.0, 0.0}, {1.0, 0.0}};
    WidePoint const c{{0.0, 0.0}, {1.0, 0.0}}, d{{4.0, 0.0}, {3.0, 0.0}};
    WidePoint crossing;
    EXPECT_FALSE(lineCrossing(a, b, c, d, crossing));
}

TEST(ClipGrid, GivesBackTheDoublesOfManyVertices) {
    std::mt19937 random(7);
    std::vector<Vec2T<double>> points;
    Bound2D bound;
    for (int i = 0; i < 5000; ++i) {
        points.emplace_back(random() * 1e-7, random() * 1e-8 + 100.0);
        bound.unite(points.back().x, points.back().y);
    }
    Grid grid(Frame(bound), 4); // far too few, so that the table grows
    std::vector<Index> vertices;
    for (Vec2T<double> const &point : points)
        vertices.push_back(grid.addPoint(point.x, point.y));
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(grid.addPoint(points[i].x, points[i].y), vertices[i]);
        EXPECT_EQ(grid.point(vertices[i]).x, points[i].x);
        EXPECT_EQ(grid.point(vertices[i]).y, points[i].y);
    }
}

TEST(ClipGrid, FirstPointOfACellKeepsIt) {
    Grid grid(Frame(Bound2D(0.0, 0.0, 1.0, 1.0)), 4);
    Index const first = grid.addPoint(0.5 + 1e-17, 0.25);
    EXPECT_EQ(grid.addPoint(0.5, 0.25), first);
    EXPECT_EQ(grid.size(), 1u);
}

TEST(ClipGrid, CrossingInATakenCellIsThatVertex) {
    Grid grid(Frame(Bound2D(0.0, 0.0, 1.0, 1.0)), 4);
    Index const vertex = grid.addPoint(0.1, 0.7);
    EXPECT_EQ(grid.addCrossing(grid.widePoint(vertex)), vertex);
}

TEST(ClipStatus, KeepsOrderThroughManyInsertsAndErases) {
    Status status;
    std::vector<Index> mirror;
    std::mt19937 random(11);
    for (int round = 0; round < 20000; ++round) {
        Index const value = random() % 5000;
        Status::Position position = status.find([value](Index edge) { return edge < value; });
        auto const place = std::lower_bound(mirror.begin(), mirror.end(), value);
        ASSERT_EQ(status.before(position), place == mirror.begin() ? none : *(place - 1));
        ASSERT_EQ(status.atEnd(position), place == mirror.end());
        if (place != mirror.end() && *place == value) {
            ASSERT_EQ(status.at(position), value);
            status.erase(position);
            mirror.erase(place);
        } else {
            status.insert(position, value);
            mirror.insert(place, value);
        }
    }
    for (Index value : mirror)
        status.eraseAnywhere(value);
    EXPECT_TRUE(status.atEnd(status.find([](Index) { return false; })));
}

TEST(ClipStatus, PositionStaysBehindWhatWasInserted) {
    Status status;
    Status::Position position = status.find([](Index) { return true; });
    for (Index value = 0; value < 2000; ++value) {
        status.insert(position, value);
        ASSERT_EQ(status.before(position), value);
    }
}

} // namespace
