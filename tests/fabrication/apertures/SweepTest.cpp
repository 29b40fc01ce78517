// What shapes pass over.
#include "ShapeSupport.h"

#include <algorithm>

using namespace ShapeTests;

namespace {

Shape corner() { return macro({"22,1,4,1,0,0,0", "22,1,1,2,0,0,0"}); }
Shape frame() { return macro({"21,1,4,4,0,0,0", "21,0,2,2,0,0,0"}); }

bool isCovered(std::vector<Piece> const &pieces, std::vector<Point> const &stops, double x, double y) {
    return std::any_of(stops.begin(), stops.end(),
                       [&](Point const &stop) { return timesCovered(pieces, x - stop.x, y - stop.y) > 0; });
}

// Whether the sweep covers, once, what many copies along the way cover, and no more but for what is so near
// that it lies between two of them.
void expectLikeCopies(Shape const &shape, Point const &from, Segment const &segment,
                      std::vector<Point> const &stops) {
    constexpr double near = 0.01;
    std::vector<Piece> const result = swept(shape, from, segment);
    std::vector<Piece> const pieces = piecesOf(shape);
    for (double x = -6.03; x < 14; x += 0.31) {
        for (double y = -6.07; y < 14; y += 0.29) {
            int const times = timesCovered(result, x, y);
            EXPECT_LE(times, 1) << x << " " << y;
            if ((times == 1) == isCovered(pieces, stops, x, y)) continue;
            bool const isEdge =
                isCovered(pieces, stops, x + near, y) != isCovered(pieces, stops, x - near, y) ||
                isCovered(pieces, stops, x, y + near) != isCovered(pieces, stops, x, y - near);
            EXPECT_TRUE(isEdge) << x << " " << y;
        }
    }
}

std::vector<Point> along(Point const &from, Segment const &segment) {
    Ring stops{from};
    if (segment.motion == Motion::Line) {
        for (int i = 1; i <= 2000; ++i) {
            double const t = i / 2000.0;
            stops.push_back({from.x + t * (segment.end.x - from.x), from.y + t * (segment.end.y - from.y)});
        }
    } else {
        Arc const turn = arcOf(from, segment);
        for (int i = 1; i <= 2000; ++i)
            stops.push_back(turn.at(i / 2000.0));
    }
    return stops;
}

} // namespace

TEST(Sweep, ASquareAlongALineIsTheHullOfBothEnds) {
    Segment const segment = line(10 * std::cos(pi / 6), 5);
    std::vector<Piece> const result = swept(standard("R", {1, 1}), {0, 0}, segment);
    ASSERT_EQ(result.size(), 1U);
    EXPECT_EQ(result[0].outer.size(), 6U);
    EXPECT_NEAR(areaOf(result), 1 + 10 * (std::cos(pi / 6) + 0.5), 1e-9);
}

TEST(Sweep, ADiscAlongALineIsAStadium) {
    EXPECT_NEAR(areaOf(swept(standard("C", {2}), {0, 0}, line(3, 4))), pi + 10, 0.05);
}

TEST(Sweep, ADiscAlongAnArcIsABand) {
    Segment const segment = arc(Motion::CounterClockwise, {0, 5}, {0, 0});
    std::vector<Piece> const result = swept(standard("C", {1}), {5, 0}, segment);
    EXPECT_NEAR(areaOf(result), pi / 4 * (5.5 * 5.5 - 4.5 * 4.5) + pi / 4, 0.03);
}

TEST(Sweep, AFullTurnOfADiscIsARing) {
    Segment const segment = arc(Motion::Clockwise, {5, 0}, {0, 0});
    std::vector<Piece> const result = swept(standard("C", {1}), {5, 0}, segment);
    ASSERT_EQ(result.size(), 1U);
    EXPECT_EQ(result[0].holes.size(), 1U);
    EXPECT_NEAR(areaOf(result), pi * (5.5 * 5.5 - 4.5 * 4.5), 0.1);
}

TEST(Sweep, WithoutLengthItIsTheShapeItself) {
    std::vector<Piece> const result = swept(frame(), {3, 4}, line(3, 4));
    EXPECT_NEAR(areaOf(result), 12.0, 1e-9);
    EXPECT_EQ(timesCovered(result, 4.5, 4), 1);
    EXPECT_EQ(timesCovered(result, 3, 4), 0);
}

TEST(Sweep, ARectangleWithoutWidthCoversAnArea) {
    EXPECT_NEAR(areaOf(swept(standard("R", {0, 2}), {0, 0}, line(5, 0))), 10.0, 1e-9);
    EXPECT_TRUE(swept(standard("R", {0, 2}), {0, 0}, line(0, 5)).empty());
}

TEST(Sweep, NothingSweepsNothing) { EXPECT_TRUE(swept(Shape(), {0, 0}, line(5, 0)).empty()); }

TEST(Sweep, ACornerAlongALineCoversWhatItsCopiesDo) {
    expectLikeCopies(corner(), {0, 0}, line(5, 7), along({0, 0}, line(5, 7)));
    expectLikeCopies(corner(), {0, 0}, line(7, -3), along({0, 0}, line(7, -3)));
}

TEST(Sweep, AHoleThatStaysUncoveredRemains) {
    std::vector<Piece> const result = swept(frame(), {0, 0}, line(0.5, 0));
    ASSERT_EQ(result.size(), 1U);
    EXPECT_EQ(result[0].holes.size(), 1U);
    EXPECT_NEAR(areaOf(result), 4.5 * 4 - 1.5 * 2, 1e-9);
}

TEST(Sweep, AHoleThatIsPassedOverIsGone) {
    EXPECT_NEAR(areaOf(swept(frame(), {0, 0}, line(9, 0))), 13.0 * 4 - 0.0, 1e-9);
}

TEST(Sweep, AFrameAlongALineCoversWhatItsCopiesDo) {
    expectLikeCopies(frame(), {0, 0}, line(1.5, 0.7), along({0, 0}, line(1.5, 0.7)));
}

TEST(Sweep, ASquareAlongAnArcKeepsItsDirection) {
    Segment const segment = arc(Motion::CounterClockwise, {4, 8}, {4, 4});
    expectLikeCopies(standard("R", {2, 1}), {8, 4}, segment, along({8, 4}, segment));
}

TEST(Sweep, ACornerAlongAnArcCoversWhatItsCopiesDo) {
    Segment const segment = arc(Motion::Clockwise, {4, 8}, {4, 4});
    expectLikeCopies(corner(), {8, 4}, segment, along({8, 4}, segment));
}

TEST(Sweep, SeveralSolidsAreSweptTogether) {
    Shape const shape = macro({"21,1,1,1,0,0,0", "21,1,1,1,3,0,0"});
    EXPECT_NEAR(areaOf(swept(shape, {0, 0}, line(0, 5))), 12.0, 1e-9);
    EXPECT_NEAR(areaOf(swept(shape, {0, 0}, line(10, 0))), 14.0, 1e-9);
}

TEST(Sweep, ManyEdgesAlongAnArcEndInTime) {
    Shape const shape = standard("P", {1, 10000, 0, 0.5});
    EXPECT_FALSE(swept(shape, {5e5, 0}, arc(Motion::CounterClockwise, {5e5, 0}, {0, 0})).empty());
}
