// Laws that hold for every outline, tried on seeded random ones; the fast walks against plain ones.
#include "host/Geometry/Polygon2D.h"
#include "model/CoincidentPoints.h"
#include "model/ErasingWalk.h"
#include "support/NaiveOutlines.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

using EDA::EDAOutline;
using EDA::test::outline;
using EDA::test::placesOf;
using EDA::test::Points;
using EDA::test::PointsNear;
using EDA::test::Random;
using EDA::test::randomOutline;
using EDA::test::stored;
using EDA::test::storedPoints;
using EDA::test::StoredPoints;
using EDAPoint = EDA::EDAOutline::EDAPoint;

namespace {

constexpr int cases = 2000;

// Points on a small lattice, so that repetitions, spikes and collinear runs are frequent.
StoredPoints latticePoints(Random &random, int count, double step, bool arcs) {
    StoredPoints points;
    for (int i = 0; i < count; ++i) {
        double const x = random.below(4) * step;
        double const y = random.below(4) * step;
        switch (arcs ? random.below(8) : 7) {
        case 0:
            points.emplace_back(x, y, 45.0);
            break;
        case 1:
            points.emplace_back(x, y, 1.5, 1.5, random.below(2) == 0);
            break;
        default:
            points.emplace_back(x, y, 0.0);
        }
    }
    return points;
}

EDAOutline fromStored(StoredPoints const &points) {
    EDAOutline item;
    for (EDAPoint const &p : points)
        if (p.centered)
            item.addPoint(0, p.x, p.y, p.centreX, p.centreY, p.clockwise);
        else
            item.addPoint(0, p.x, p.y, p.angle);
    return item;
}

std::vector<std::size_t> naiveNext(StoredPoints const &points) {
    std::vector<std::size_t> next(points.size(), EDA::noPoint);
    for (std::size_t i = 1; i < points.size(); ++i)
        for (std::size_t j = i + 1; j < points.size() && next[i] == EDA::noPoint; ++j)
            if (points[i] == points[j]) next[i] = j;
    return next;
}

// The points of both lists with all their fields.
void expectIdentical(StoredPoints const &a, StoredPoints const &b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        ASSERT_EQ(a[i].x, b[i].x) << "point " << i;
        ASSERT_EQ(a[i].y, b[i].y) << "point " << i;
        ASSERT_EQ(a[i].angle, b[i].angle) << "point " << i;
        ASSERT_EQ(a[i].centered, b[i].centered) << "point " << i;
        ASSERT_EQ(a[i].clockwise, b[i].clockwise) << "point " << i;
    }
}

} // namespace

TEST(EDAOutlineLaws, MoveAndItsReverseGiveTheSamePoints) {
    Random random(11);
    for (int i = 0; i < cases; ++i) {
        EDAOutline item = randomOutline(random, 3 + random.below(20), true);
        EDAOutline const before(item);
        double const dx = random.between(-100, 100);
        double const dy = random.between(-100, 100);
        item.moveBy(dx, dy);
        item.moveBy(-dx, -dy);
        ASSERT_EQ(item.numPoints(), before.numPoints());
        for (std::size_t k = 0; k < item.numPoints(); ++k)
            ASSERT_TRUE(item.beginPoints()[k].isEqual(before.beginPoints()[k], 1e-10))
                << "seed 11, case " << i;
    }
}

TEST(EDAOutlineLaws, MoveShiftsTheDiscretisedPoints) {
    Random random(12);
    for (int i = 0; i < cases; ++i) {
        EDAOutline item = randomOutline(random, 3 + random.below(20), true);
        Points expected = item.getPoints(true);
        for (auto &point : expected)
            point = {point.first + 64.0, point.second - 32.0};
        item.moveBy(64.0, -32.0);
        if (item.getPoints(true).size() == expected.size()) { // arcs may take another segment by rounding
            ASSERT_THAT(item.getPoints(true), PointsNear(expected, 1e-6)) << "seed 12, case " << i;
        }
        ASSERT_NEAR(static_cast<double>(item.getPoints(true).size()), static_cast<double>(expected.size()),
                    3.0);
    }
}

TEST(EDAOutlineLaws, RotationAndItsReverseGiveTheSamePoints) {
    Random random(13);
    for (int i = 0; i < cases; ++i) {
        EDAOutline item = randomOutline(random, 3 + random.below(20), true);
        Points const before = storedPoints(item);
        double const angle = random.between(-720, 720);
        double const x = random.between(-100, 100);
        double const y = random.between(-100, 100);
        item.rotate(angle, x, y);
        item.rotate(-angle, x, y);
        ASSERT_THAT(storedPoints(item), PointsNear(before, 1e-10)) << "seed 13, case " << i;
    }
}

TEST(EDAOutlineLaws, FourQuarterTurnsAreExactAboutTheOrigin) {
    Random random(14);
    EDAOutline item = randomOutline(random, 50, false);
    Points const before = storedPoints(item);
    for (int i = 0; i < 4; ++i)
        item.rotate(90.0, 0.0, 0.0);
    EXPECT_THAT(storedPoints(item), PointsNear(before, 0.0));
}

TEST(EDAOutlineLaws, AreaDoesNotChangeByMovesTurnsDirectionOrStart) {
    Random random(15);
    for (int i = 0; i < cases; ++i) {
        EDAOutline item = randomOutline(random, 3 + random.below(20), false);
        double const area = item.getArea();
        double const tolerance = 1e-9 * (1.0 + area);
        StoredPoints reversed = stored(item);
        std::reverse(reversed.begin(), reversed.end());
        ASSERT_NEAR(fromStored(reversed).getArea(), area, tolerance) << "seed 15, case " << i;
        std::rotate(reversed.begin(), reversed.begin() + 1, reversed.end());
        ASSERT_NEAR(fromStored(reversed).getArea(), area, tolerance) << "seed 15, case " << i;
        item.moveBy(33.0, -44.0);
        ASSERT_NEAR(item.getArea(), area, tolerance) << "seed 15, case " << i;
        item.rotate(random.between(-180, 180), 1.0, 2.0);
        ASSERT_NEAR(item.getArea(), area, tolerance) << "seed 15, case " << i;
        item.makeClosed();
        ASSERT_NEAR(EDAOutline(item).getArea(), area, tolerance) << "seed 15, case " << i;
    }
}

TEST(EDAOutlineLaws, AngledArcsTurnAndAreaStays) {
    Random random(16);
    for (int i = 0; i < cases; ++i) {
        EDAOutline item;
        for (EDAPoint const &point : stored(randomOutline(random, 3 + random.below(9), true)))
            item.addPoint(0, point.x, point.y, point.angle);
        double const area = item.getArea();
        item.rotate(random.between(-180, 180), 1.0, 2.0);
        ASSERT_NEAR(item.getArea(), area, 1e-3 * (1.0 + area)) << "seed 16, case " << i;
    }
}

TEST(EDAOutlineLaws, OverlapsIsSymmetricAndImpliesThatBoundsMeet) {
    Random random(17);
    int overlapping = 0;
    for (int i = 0; i < cases; ++i) {
        EDAOutline a = randomOutline(random, 3 + random.below(9), true);
        EDAOutline b = randomOutline(random, 3 + random.below(9), true);
        b.moveBy(a.getBound().getXLow() - b.getBound().getXLow() + random.between(-15, 15),
                 a.getBound().getYLow() - b.getBound().getYLow() + random.between(-15, 15));
        ASSERT_EQ(a.overlaps(b), b.overlaps(a)) << "seed 17, case " << i;
        if (!a.overlaps(b)) continue;
        ++overlapping;
        ASSERT_TRUE(a.getBound().overlaps(b.getBound(), 1e-9)) << "seed 17, case " << i;
    }
    EXPECT_GT(overlapping, cases / 10);
}

TEST(EDAOutlineLaws, EnclosedOutlineIntersectsWhereThereIsNoHole) {
    Random random(18);
    int enclosed = 0;
    for (int i = 0; i < cases; ++i) {
        EDAOutline const a = randomOutline(random, 9, true);
        EDAOutline b;
        for (auto const &point : a.getPoints(true)) // the same shape at a third of its size
            b.addPoint(0, a.getBound().getXLow() + 5.0 + (point.first - a.getBound().getXLow()) / 3.0,
                       a.getBound().getYLow() + 5.0 + (point.second - a.getBound().getYLow()) / 3.0, 0.0);
        if (!a.enclosesOutline(b)) continue;
        ++enclosed;
        ASSERT_TRUE(a.intersectsHole(b)) << "seed 18, case " << i;
    }
    EXPECT_GT(enclosed, cases / 20);
}

TEST(EDAOutlineLaws, SecondCleanUpOfAFreshCopyChangesNothingMore) {
    Random random(19);
    for (int i = 0; i < cases; ++i) {
        EDAOutline item = randomOutline(random, 3 + random.below(20), i % 2 == 0);
        item.removeDegeneratePoints();
        EDAOutline again(item);
        again.removeDegeneratePoints();
        ASSERT_TRUE(again == item) << "seed 19, case " << i;
    }
}

TEST(EDAOutlineLaws, CleanUpLeavesWorkForASecondOneAtTheFirstPoint) {
    // The walk begins at the second point and opens a closed outline once, so these take two.
    EDAOutline twice(Geometry::Polygon2D({{1.0, 1.0}, {1.0, 1.0}}), false);
    twice.removeDegeneratePoints();
    EXPECT_EQ(twice.numPoints(), 1u);
    twice.removeDegeneratePoints();
    EXPECT_EQ(twice.numPoints(), 0u);
}

TEST(EDAOutlineLaws, CleanUpEqualsThePlainWalk) {
    Random random(20);
    int removed = 0;
    for (int i = 0; i < 5 * cases; ++i) {
        EDAOutline item = fromStored(latticePoints(random, random.below(25), 1.0, i % 2 == 0));
        StoredPoints expected = stored(item);
        EDAOutline opened(item); // the bound is taken after the outline is opened
        opened.removeDegeneratePoints();
        double const scale = opened.getBound().getDiagonal().length();
        EDA::test::naiveRemoveDegenerate(expected, scale);
        removed += static_cast<int>(item.numPoints() - expected.size());
        item.removeDegeneratePoints();
        ASSERT_NO_FATAL_FAILURE(expectIdentical(stored(item), expected)) << "seed 20, case " << i;
    }
    EXPECT_GT(removed, cases);
}

TEST(EDAOutlineLaws, DiscretisedCleanUpEqualsThePlainWalk) {
    Random random(21);
    for (int i = 0; i < 5 * cases; ++i) {
        StoredPoints points = latticePoints(random, 1 + random.below(25), i % 2 ? 1.0 : 1e-6, false);
        points[0].angle = 90.0; // never expands, but asks for the clean-up
        EDAOutline const item = fromStored(points);
        Points expected = item.getPoints(false);
        EDA::test::naiveCleanup(expected, true);
        ASSERT_THAT(item.getPoints(true), PointsNear(expected, 0.0)) << "seed 21, case " << i;
    }
}

TEST(EDAOutlineLaws, CutInsEqualThePlainSearch) {
    Random random(22);
    int found = 0;
    for (int i = 0; i < 5 * cases; ++i) {
        double const step = i % 4 == 0 ? 0.6e-12 : 1.0; // or closer together than the tolerance
        EDAOutline item = fromStored(latticePoints(random, random.below(25), step, i % 2 == 0));
        StoredPoints expected = stored(item);
        bool const pair = expected.size() > 3 && EDA::test::naiveFirstPair(expected).second > 0;
        ASSERT_EQ(item.hasCutIns(), pair) << "seed 22, case " << i;
        std::vector<EDAOutline> expectedCutIns;
        std::vector<EDAOutline> cutIns;
        bool const expectedResult = EDA::test::naiveRemoveCutIns(expected, expectedCutIns);
        ASSERT_EQ(item.removeCutIns(cutIns), expectedResult) << "seed 22, case " << i;
        ASSERT_NO_FATAL_FAILURE(expectIdentical(stored(item), expected)) << "seed 22, case " << i;
        ASSERT_EQ(cutIns.size(), expectedCutIns.size()) << "seed 22, case " << i;
        for (std::size_t k = 0; k < cutIns.size(); ++k)
            ASSERT_NO_FATAL_FAILURE(expectIdentical(stored(cutIns[k]), stored(expectedCutIns[k])));
        found += static_cast<int>(cutIns.size());
    }
    EXPECT_GT(found, cases);
}

TEST(EDAOutlineLaws, NextCoincidentPointsEqualThePlainSearchAtEveryMagnitude) {
    Random random(23);
    double const offsets[] = {0.0,     1.0,  4500.0, 9007.199254740992, 18014.398509481984, 1e6, -1.0,
                              -9007.0, 1e16, 1e300};
    int found = 0;
    for (double offset : offsets)
        for (int i = 0; i < 300; ++i) {
            StoredPoints points;
            double const step = i % 3 == 0 ? 0.37e-12 : i % 3 == 1 ? 1e-12 : 0.91e-12;
            int const count = 2 + random.below(60);
            for (int k = 0; k < count; ++k)
                points.emplace_back(offset + random.below(12) * step, -offset + random.below(4) * step, 0.0);
            if (i % 10 == 0) points[1].x = std::nan("");
            if (i % 10 == 1) points[1].y = HUGE_VAL;
            auto const expected = naiveNext(points);
            ASSERT_EQ(EDA::nextCoincidentPoints(placesOf(points)), expected)
                << "seed 23, offset " << offset << " case " << i;
            found += static_cast<int>(expected.size() - static_cast<std::size_t>(std::count(
                                                            expected.begin(), expected.end(), EDA::noPoint)));
        }
    EXPECT_GT(found, 1000);
}

TEST(EDAOutlineLaws, HoleCuttingEqualsTheSearchOfAllPairs) {
    Random random(25);
    int needed = 0;
    for (int i = 0; i < cases; ++i) {
        EDAOutline item = outline("-70,-70 70,-70 70,70 -70,70");
        int const count = random.below(12);
        for (int k = 0; k < count; ++k) {
            EDAOutline internal = randomOutline(random, 3 + random.below(5), false);
            internal.setHole(random.below(8) > 0);
            item.addInternalOutline(internal);
        }
        bool expected = false;
        for (auto h = item.beginInternalOutlines(); h != item.endInternalOutlines(); ++h) {
            if (!h->isHole()) continue;
            expected = expected || !item.enclosesOutline(*h);
            for (auto g = h + 1; g != item.endInternalOutlines(); ++g)
                expected = expected || (g->isHole() && g->intersectsHole(*h));
        }
        ASSERT_EQ(item.needsHolesCutting(), expected) << "seed 25, case " << i;
        needed += expected ? 1 : 0;
    }
    EXPECT_GT(needed, cases / 10);
    EXPECT_LT(needed, cases * 9 / 10);
}

TEST(EDAOutlineLaws, NextCoincidentPointsFollowTheTolerance) {
    EDA::test::ToleranceGuard const guard;
    StoredPoints const points{{0, 0, 0}, {1, 1, 0}, {1.4, 1.4, 0}, {1, 1, 0}};
    for (double tolerance : {0.5, 0.0, -1.0, HUGE_VAL, std::nan("")}) {
        EDAOutline::ptTol = tolerance;
        EXPECT_EQ(EDA::nextCoincidentPoints(placesOf(points)), naiveNext(points)) << tolerance;
    }
}

TEST(ErasingWalk, EqualsErasingFromTheVector) {
    Random random(24);
    for (int i = 0; i < 5 * cases; ++i) {
        std::vector<int> list(static_cast<std::size_t>(random.below(30)));
        for (int &value : list)
            value = random.below(1000);
        int const share = random.below(101);
        auto const drop = [share](int previous, int current, int next) {
            return (previous * 7919 + current * 104729 + next * 1299709) % 101 < share;
        };
        std::vector<int> expected = list;
        EDA::test::naiveWalk(expected, drop);
        EDA::eraseOnWalk(list, drop);
        ASSERT_EQ(list, expected) << "seed 24, case " << i;
    }
}

TEST(ErasingWalk, TakesAtMostThreeStepsAPoint) {
    std::vector<int> list(100000);
    std::iota(list.begin(), list.end(), 0);
    int steps = 0;
    EDA::eraseOnWalk(list, [&steps](int, int current, int) {
        ++steps;
        return current % 3 != 0;
    });
    EXPECT_LE(steps, 300000);
    EXPECT_EQ(list.size(), 33334u);
}

TEST(EDAOutlineLaws, AQuickLookForRepeatedPlacesNeverMissesOne) {
    Random random(61);
    int clear = 0;
    for (int i = 0; i < 20 * cases; ++i) {
        StoredPoints const points = latticePoints(random, random.below(9), i % 2 == 0 ? 1.0 : 0.4e-12, false);
        if (!EDA::surelyHasNoCoincidentPoints(placesOf(points))) continue;
        ++clear;
        ASSERT_EQ(naiveNext(points), std::vector<std::size_t>(points.size(), EDA::noPoint))
            << "seed 61, case " << i;
    }
    EXPECT_GT(clear, cases);
}

TEST(EDAOutlineLaws, AQuickLookClearsConvexOutlines) {
    for (int count : {3, 4, 36, 127}) {
        StoredPoints points;
        for (int i = 0; i < count; ++i)
            points.emplace_back(std::cos(i * 6.28 / count), std::sin(i * 6.28 / count), 0.0);
        EXPECT_TRUE(EDA::surelyHasNoCoincidentPoints(placesOf(points))) << count;
        points.push_back(points[1]);
        EXPECT_FALSE(EDA::surelyHasNoCoincidentPoints(placesOf(points))) << count;
    }
}
