// Polygons painted and erased one over the other.
#include "host/Geometry/PolygonPainter.h"
#include "host/Geometry/GpcContract.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>
#include <vector>

using namespace Geometry;

namespace {

using Contour = PolygonPainter::Contour;
using Contours = std::vector<Contour>;

Contours box(double xLow, double yLow, double xHigh, double yHigh) {
    return {{{{xLow, yLow}, {xHigh, yLow}, {xHigh, yHigh}, {xLow, yHigh}}, false}};
}

double signedArea(Contour const &contour) {
    double twice = 0.0;
    for (std::size_t i = 0; i < contour.points.size(); ++i) {
        auto const &a = contour.points[i], &b = contour.points[i + 1 < contour.points.size() ? i + 1 : 0];
        twice += a.x * b.y - a.y * b.x;
    }
    return 0.5 * twice;
}

double area(Contours const &contours) {
    double sum = 0.0;
    for (Contour const &contour : contours)
        sum += signedArea(contour);
    return sum;
}

// One polygon after the other, by the plain contract.
class SlowPainter {
public:
    ~SlowPainter() { gpc_free_polygon(&painted_); }
    void paint(Contours const &polygon) { clip(GPC_UNION, polygon); }
    void erase(Contours const &polygon) { clip(GPC_DIFF, polygon); }
    Contours finish() const {
        Contours contours;
        for (int i = 0; i < painted_.num_contours; ++i) {
            contours.push_back({{}, painted_.hole[i] == 1});
            for (int k = 0; k < painted_.contour[i].num_vertices; ++k)
                contours.back().points.emplace_back(painted_.contour[i].vertex[k].x,
                                                    painted_.contour[i].vertex[k].y);
        }
        return contours;
    }

private:
    void clip(gpc_op op, Contours const &contours) {
        gpc_polygon polygon{};
        gpc_allocate_contours(&polygon, static_cast<int>(contours.size()));
        for (std::size_t i = 0; i < contours.size(); ++i) {
            auto *vertex =
                gpc_allocate_vertices(&polygon.contour[i], static_cast<int>(contours[i].points.size()));
            for (auto const &point : contours[i].points)
                *vertex++ = {point.x, point.y};
        }
        gpc_polygon result{};
        gpc_polygon_clip(op, &painted_, &polygon, &result);
        gpc_free_polygon(&polygon);
        gpc_free_polygon(&painted_);
        painted_ = result;
    }

    gpc_polygon painted_{};
};

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }

private:
    std::mt19937 engine_;
};

Contours randomPolygon(Random &random, int places) {
    Contours polygon(1 + static_cast<std::size_t>(random.below(5) == 0));
    for (Contour &contour : polygon) {
        int const count = 3 + random.below(5);
        double const x = random.below(places), y = random.below(places);
        for (int i = 0; i < count; ++i)
            contour.points.emplace_back(x + random.below(7), y + random.below(7));
    }
    return polygon;
}

// A convex polygon of many corners.
Contours disc(double x, double y, double radius, int corners) {
    Contours polygon(1);
    for (int i = 0; i < corners; ++i) {
        double const angle = 2.0 * 3.14159265358979323846 * i / corners;
        polygon.front().points.emplace_back(x + radius * std::cos(angle), y + radius * std::sin(angle));
    }
    return polygon;
}

} // namespace

TEST(PolygonPainter, NothingPaintedIsNothing) {
    PolygonPainter painter;
    EXPECT_TRUE(painter.finish().empty());
}

TEST(PolygonPainter, WhatIsErasedFirstIsPaintedAgain) {
    PolygonPainter painter;
    painter.erase(box(0, 0, 4, 4));
    painter.paint(box(0, 0, 2, 2));
    EXPECT_DOUBLE_EQ(area(painter.finish()), 4.0);
}

TEST(PolygonPainter, ErasedPlacesComeBackOnlyWhenPaintedAgain) {
    PolygonPainter painter;
    painter.paint(box(0, 0, 10, 10));
    painter.erase(box(2, 2, 8, 8));
    painter.erase(box(4, 4, 9, 9));
    painter.paint(box(5, 5, 6, 6));
    EXPECT_DOUBLE_EQ(area(painter.finish()), 100.0 - (36.0 + 25.0 - 16.0) + 1.0);
}

TEST(PolygonPainter, OutersRunAnticlockwiseAndHolesFollowThem) {
    PolygonPainter painter;
    painter.paint(box(0, 0, 10, 10));
    painter.erase(box(2, 2, 8, 8));
    Contours const result = painter.finish();
    ASSERT_EQ(result.size(), 2U);
    EXPECT_FALSE(result[0].hole);
    EXPECT_GT(signedArea(result[0]), 0.0);
    EXPECT_TRUE(result[1].hole);
    EXPECT_LT(signedArea(result[1]), 0.0);
}

TEST(PolygonPainter, AClockwisePolygonIsPaintedAllTheSame) {
    PolygonPainter painter;
    Contours clockwise = box(0, 0, 2, 2);
    std::swap(clockwise[0].points[1], clockwise[0].points[3]);
    painter.paint(clockwise);
    painter.paint(box(1, 1, 3, 3));
    EXPECT_DOUBLE_EQ(area(painter.finish()), 7.0);
}

TEST(PolygonPainter, APentagramIsHollowInTheMiddle) {
    Contours star(1);
    for (int i = 0; i < 5; ++i) {
        double const angle = 2.0 * 3.14159265358979323846 * (2 * i) / 5;
        star.front().points.emplace_back(std::cos(angle), std::sin(angle));
    }
    PolygonPainter painter;
    painter.paint(star);
    Contours const result = painter.finish();
    EXPECT_EQ(result.size(), 5U); // five tips that touch in vertices
    for (Contour const &contour : result)
        EXPECT_EQ(contour.points.size(), 3U);
}

TEST(PolygonPainter, ThePainterIsEmptyAfterItsResult) {
    PolygonPainter painter;
    painter.paint(box(0, 0, 1, 1));
    EXPECT_EQ(painter.finish().size(), 1U);
    EXPECT_TRUE(painter.finish().empty());
}

TEST(PolygonPainter, ACoordinateThatIsNoNumberIsRefusedAndTheRestStands) {
    PolygonPainter painter;
    painter.paint(box(0, 0, 1, 1));
    Contours bad = box(0, 0, 9, 9);
    bad[0].points[2].x = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(painter.paint(bad), std::invalid_argument);
    EXPECT_THROW(painter.erase(bad), std::invalid_argument);
    EXPECT_DOUBLE_EQ(area(painter.finish()), 1.0);
}

TEST(PolygonPainter, GivesTheContoursOfOneAfterTheOther) {
    Random random(20261121);
    for (int round = 0; round < 400; ++round) {
        PolygonPainter painter;
        SlowPainter slow;
        int const count = 1 + random.below(20);
        for (int i = 0; i < count; ++i) {
            Contours const polygon = randomPolygon(random, 20);
            bool const erases = random.below(4) == 0;
            erases ? painter.erase(polygon) : painter.paint(polygon);
            erases ? slow.erase(polygon) : slow.paint(polygon);
        }
        Contours const fast = painter.finish(), expected = slow.finish();
        EXPECT_EQ(fast.size(), expected.size()) << "round " << round;
        EXPECT_NEAR(area(fast), area(expected), 1e-9) << "round " << round;
    }
}

TEST(PolygonPainter, ManyBatchesGiveTheSameAsOne) {
    // 5,000 discs of 40 corners are some batches and several levels of them.
    Random random(5);
    PolygonPainter painter;
    Clip::Engine engine;
    for (int i = 0; i < 5000; ++i) {
        Contours const polygon = disc(0.01 * random.below(6000), 0.01 * random.below(6000), 0.5, 40);
        painter.paint(polygon);
        engine.addContour(Clip::Engine::Subject, polygon[0].points.data(), polygon[0].points.size());
    }
    Contours const batched = painter.finish();
    Contours const atOnce = engine.run(
        {Clip::Inside::Operation::Union, Clip::Inside::Fill::NonZero, Clip::Inside::Fill::NonZero});
    ASSERT_EQ(batched.size(), atOnce.size());
    EXPECT_NEAR(area(batched), area(atOnce), 1e-9 * area(atOnce));
    for (std::size_t i = 0; i < batched.size(); ++i) {
        EXPECT_EQ(batched[i].hole, atOnce[i].hole);
        EXPECT_NEAR(batched[i].points.front().y, atOnce[i].points.front().y, 1e-9);
    }
}

TEST(PolygonPainter, AConvexPolygonThatIsNotFiniteIsRefusedAndCountsAsNotGiven) {
    for (double const bad : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()}) {
        PolygonPainter painter;
        painter.paint(box(0, 0, 1, 1));
        EXPECT_THROW(painter.paint(box(0, 0, bad, 1)), std::invalid_argument);
        EXPECT_THROW(painter.erase(box(0, 0, bad, 1)), std::invalid_argument);
        EXPECT_EQ(area(painter.finish()), 1.0);
    }
}
