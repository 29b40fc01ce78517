// Convex contours that pass through the clipping engine, and the limits of what it takes on.
#include "host/Geometry/ClipShortcuts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

using namespace Geometry;
using namespace Geometry::Clip;

namespace {

using Points = std::vector<Vec2T<double>>;
using Operation = Inside::Operation;

constexpr double pi = 3.14159265358979323846;

Points polygon(double x, double y, double radius, int corners, double turn = 0.0, int rounds = 1) {
    Points points;
    for (int i = 0; i < corners; ++i) {
        double const angle = turn + 2.0 * pi * i * rounds / corners;
        points.emplace_back(x + radius * std::cos(angle), y + radius * std::sin(angle));
    }
    return points;
}

bool isConvex(Points const &points) {
    Bound2D bound;
    for (auto const &point : points)
        bound.unite(point.x, point.y);
    return isClearlyConvex({points.data(), points.size(), Engine::Subject}, Frame(bound));
}

std::vector<Contour> run(std::vector<Points> const &subject, std::vector<Points> const &clip,
                         Operation operation) {
    Engine engine;
    for (Points const &points : subject)
        engine.addContour(Engine::Subject, points.data(), points.size());
    for (Points const &points : clip)
        engine.addContour(Engine::Clip, points.data(), points.size());
    return engine.run({operation, Inside::Fill::EvenOdd, Inside::Fill::EvenOdd});
}

// The same without the shortcut: contours without points count, so there are too many for it.
std::vector<Contour> runWhole(std::vector<Points> subject, std::vector<Points> const &clip,
                              Operation operation) {
    subject.resize(subject.size() + 20);
    return run(subject, clip, operation);
}

void expectSame(std::vector<Contour> const &a, std::vector<Contour> const &b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i].hole, b[i].hole);
        ASSERT_EQ(a[i].points.size(), b[i].points.size());
        for (std::size_t k = 0; k < a[i].points.size(); ++k) {
            EXPECT_EQ(a[i].points[k].x, b[i].points[k].x);
            EXPECT_EQ(a[i].points[k].y, b[i].points[k].y);
        }
    }
}

TEST(ClipShortcuts, RegularPolygonsAreClearlyConvexEitherWayRound) {
    for (int corners : {3, 4, 5, 36, 1000}) {
        Points points = polygon(10.0, -3.0, 2.0, corners);
        EXPECT_TRUE(isConvex(points)) << corners;
        std::reverse(points.begin(), points.end());
        EXPECT_TRUE(isConvex(points)) << corners;
    }
}

TEST(ClipShortcuts, StarThatTurnsToOneSideOnlyIsNotConvex) {
    EXPECT_FALSE(isConvex(polygon(0, 0, 1, 5, 0.1, 2)));
}

TEST(ClipShortcuts, ContourWalkedTwiceIsNotConvex) {
    Points points = polygon(0, 0, 1, 8, 0.1);
    points.insert(points.end(), points.begin(), points.begin() + 8);
    EXPECT_FALSE(isConvex(points));
}

TEST(ClipShortcuts, NotchIsNotConvex) { EXPECT_FALSE(isConvex({{0, 0}, {4, 0}, {4, 4}, {2, 3}, {0, 4}})); }

TEST(ClipShortcuts, RepeatedPointsAndStraightRunsAreNotClearlyConvex) {
    EXPECT_FALSE(isConvex({{0, 0}, {4, 0}, {4, 0}, {4, 4}}));
    EXPECT_FALSE(isConvex({{0, 0}, {2, 0}, {4, 0}, {4, 4}}));
    EXPECT_FALSE(isConvex({{0, 0}, {4, 0}, {2, 0}}));
}

TEST(ClipShortcuts, FewerThanThreePointsAreNotConvex) {
    EXPECT_FALSE(isConvex({{0, 0}}));
    EXPECT_FALSE(isConvex({{0, 0}, {1, 1}}));
}

TEST(ClipShortcuts, ThinNeedleIsNotClearlyConvex) {
    EXPECT_FALSE(isConvex({{0, 0}, {1, 0}, {1, 1e-13}}));
    EXPECT_TRUE(isConvex({{0, 0}, {1, 0}, {1, 1e-9}}));
}

TEST(ClipShortcuts, SizesAtTheEndsOfDoubleAreLeftToTheEngine) {
    EXPECT_FALSE(isConvex({{0, 0}, {1e300, 0}, {0, 1e300}}));
    EXPECT_FALSE(isConvex({{0, 0}, {1e-300, 0}, {0, 1e-300}}));
    EXPECT_EQ(run({{{0, 0}, {1e300, 0}, {0, 1e300}}}, {}, Operation::Union).size(), 1u);
}

class ShortcutOperations : public testing::TestWithParam<Operation> {};

TEST_P(ShortcutOperations, GiveTheSameAsTheWholeEngineForShapesApart) {
    for (double turn : {0.0, 0.1, 1.0}) {
        std::vector<Points> const subject{polygon(0, 0, 1, 36, turn), polygon(5, -2, 1, 4, turn)};
        std::vector<Points> clip{polygon(-5, 2, 1, 5, turn), polygon(9, 0, 2, 36)};
        std::reverse(clip[0].begin(), clip[0].end());
        expectSame(run(subject, clip, GetParam()), runWhole(subject, clip, GetParam()));
    }
}

TEST_P(ShortcutOperations, GiveTheSameAsTheWholeEngineForShapesThatTouch) {
    std::vector<Points> const subject{{{0, 0}, {1, 0}, {1, 1}, {0, 1}}},
        clip{{{1, 0}, {2, 0}, {2, 1}, {1, 1}}};
    expectSame(run(subject, clip, GetParam()), runWhole(subject, clip, GetParam()));
}

TEST_P(ShortcutOperations, GiveTheSameAsTheWholeEngineForShapesWithinEachOther) {
    std::vector<Points> const subject{polygon(0, 0, 4, 36)}, clip{polygon(0, 0, 1, 36)};
    expectSame(run(subject, clip, GetParam()), runWhole(subject, clip, GetParam()));
}

TEST_P(ShortcutOperations, GiveTheSameAsTheWholeEngineForACrookedShapeBesideAConvexOne) {
    std::vector<Points> const subject{polygon(0, 0, 1, 5, 0.1, 2)}, clip{polygon(7, 0, 1, 36)};
    expectSame(run(subject, clip, GetParam()), runWhole(subject, clip, GetParam()));
    expectSame(run(clip, subject, GetParam()), runWhole(clip, subject, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, ShortcutOperations,
                         testing::Values(Operation::Difference, Operation::Intersection, Operation::Xor,
                                         Operation::Union));

TEST(ClipShortcuts, CropsACrookedShapeAwayWhereOnlyTheConvexOneCounts) {
    EXPECT_EQ(run({polygon(7, 0, 1, 36)}, {polygon(0, 0, 1, 5, 0.1, 2)}, Operation::Difference).size(), 1u);
    EXPECT_TRUE(run({polygon(7, 0, 1, 36)}, {polygon(0, 0, 1, 5, 0.1, 2)}, Operation::Intersection).empty());
}

TEST(ClippingLimits, InputWithMoreCrossingsThanAllowedIsRefused) {
    NodingLimits few;
    few.freeSplits = 1000.0;
    Points const star = polygon(0, 0, 1, 101, 0.0, 50); // each edge crosses nearly all others
    Engine engine(few);
    engine.addContour(Engine::Subject, star.data(), star.size());
    EXPECT_THROW(engine.run({Operation::Union, Inside::Fill::EvenOdd, Inside::Fill::EvenOdd}),
                 std::length_error);
    EXPECT_FALSE(run({star}, {}, Operation::Union).empty());
}

TEST(ClippingLimits, InputWithMoreTestsThanAllowedIsRefused) {
    NodingLimits few;
    few.freeTests = few.testsPerEdge = 0.0;
    Points const star = polygon(0, 0, 1, 101, 0.0, 50);
    Engine engine(few);
    engine.addContour(Engine::Subject, star.data(), star.size());
    EXPECT_THROW(engine.run({Operation::Union, Inside::Fill::EvenOdd, Inside::Fill::EvenOdd}),
                 std::length_error);
}

} // namespace
