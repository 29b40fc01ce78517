// Taking areas away from areas.
#include "host/QvDbWrap/IpcSubtract.h"
#include "IpcShapeSupport.h"

#include <gtest/gtest.h>

#include <chrono>

using namespace QvDbWrap;

namespace {

constexpr double rounding = 1e-9;

bool isSame(const Ring &a, const Ring &b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const _mFPOINT &p, const _mFPOINT &q) { return p.x == q.x && p.y == q.y; });
}

Area discAt(double x, double y, double diameter) {
    IpcPlacement placement;
    placement.x = x * mm;
    placement.y = y * mm;
    return placement.apply(Areas{{IpcGeometry::circle(diameter * mm), {}}}).front();
}

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

TEST(IpcSubtract, AHoleInTheMiddleIsAHole) {
    const Areas rest = subtract({boxArea(0, 0, 10, 10)}, {boxArea(4, 4, 6, 6)});
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_EQ(rest[0].holes.size(), 1u);
    EXPECT_NEAR(areaOf(rest), 96, rounding);
}

TEST(IpcSubtract, ACutThroughTheMiddleLeavesTwo) {
    const Areas rest = subtract({boxArea(0, 0, 10, 10)}, {boxArea(4, -1, 6, 11)});
    EXPECT_EQ(rest.size(), 2u);
    EXPECT_NEAR(areaOf(rest), 80, rounding);
}

TEST(IpcSubtract, WhatIsCoveredIsGone) {
    EXPECT_TRUE(subtract({boxArea(0, 0, 1, 1)}, {boxArea(-1, -1, 2, 2)}).empty());
}

TEST(IpcSubtract, NothingLessNothingIsNothing) {
    EXPECT_TRUE(subtract({}, {boxArea(0, 0, 1, 1)}).empty());
    EXPECT_EQ(subtract({boxArea(0, 0, 1, 1)}, {}).size(), 1u);
}

TEST(IpcSubtract, AreasThatNothingIsTakenFromStayAsTheyAre) {
    const Area far = boxArea(20, 20, 30, 30);
    const Area cut = boxArea(0, 0, 10, 10);
    const Area near = discAt(5, 15, 8); // its box meets that of the next, but not itself
    const Areas rest = subtract({far, cut, near}, {boxArea(-1, -1, 5, 5), boxArea(0, 18.5, 2, 20)});
    ASSERT_EQ(rest.size(), 3u);
    EXPECT_TRUE(isSame(rest[0].outer, far.outer));
    EXPECT_NEAR(areaOf({rest[1]}), 75, rounding);
    EXPECT_TRUE(isSame(rest[2].outer, near.outer));
}

TEST(IpcSubtract, TheOrderOfTheAreasIsKept) {
    Areas areas;
    for (int i = 9; i >= 0; --i)
        areas.push_back(boxArea(i * 2, 0, i * 2 + 1, 1));
    const Areas rest = subtract(areas, {boxArea(-1, 0.5, 30, 3)});
    ASSERT_EQ(rest.size(), 10u);
    for (int i = 0; i < 10; ++i)
        EXPECT_NEAR(boundsOf({rest[static_cast<std::size_t>(i)]}).xLow, (9 - i) * 2, rounding);
}

TEST(IpcSubtract, OthersThatOverlapTakeTheirSharedPartOnce) {
    const Areas rest = subtract({boxArea(0, 0, 10, 10)}, {boxArea(1, 1, 5, 5), boxArea(3, 3, 7, 7)});
    EXPECT_NEAR(areaOf(rest), 100 - 16 - 16 + 4, rounding);
}

TEST(IpcSubtract, HolesOfTheOthersLeaveIslands) {
    Area ring = boxArea(2, 2, 8, 8);
    ring.holes.push_back(boxArea(4, 4, 6, 6).outer);
    const Areas rest = subtract({boxArea(0, 0, 10, 10)}, {ring});
    ASSERT_EQ(rest.size(), 2u);
    EXPECT_NEAR(areaOf(rest), 100 - 36 + 4, rounding);
    EXPECT_TRUE(covers(rest, 5, 5));
    EXPECT_FALSE(covers(rest, 3, 3));
}

TEST(IpcSubtract, AnIslandIsGoneWhereAnotherCoversIt) {
    Area ring = boxArea(2, 2, 8, 8);
    ring.holes.push_back(boxArea(4, 4, 6, 6).outer);
    EXPECT_NEAR(areaOf(subtract({boxArea(0, 0, 10, 10)}, {ring, boxArea(3, 3, 7, 7)})), 64, rounding);
}

TEST(IpcSubtract, HolesOfTheAreasStayHoles) {
    Area area = boxArea(0, 0, 10, 10);
    area.holes.push_back(boxArea(1, 1, 3, 3).outer);
    area.holes.push_back(boxArea(2, 2, 4, 4).outer);
    const Areas rest = subtract({area}, {boxArea(8, 8, 12, 12)});
    EXPECT_NEAR(areaOf(rest), 100 - 7 - 4, rounding);
    EXPECT_FALSE(covers(rest, 2.5, 2.5));
}

TEST(IpcSubtract, RingsRunAsThoseOfShapesDo) {
    for (const Area &area : subtract({boxArea(0, 0, 10, 10)}, {boxArea(4, 4, 6, 6), boxArea(8, 8, 12, 12)})) {
        EXPECT_GT(ringArea(area.outer), 0);
        for (const Ring &hole : area.holes)
            EXPECT_LT(ringArea(hole), 0);
    }
}

TEST(IpcSubtract, WhatIsNoNumberTakesNothing) {
    const Area area = boxArea(0, 0, 10, 10);
    const Area bad = boxArea(4, 4, NAN, 6);
    EXPECT_NEAR(areaOf(subtract({area}, {bad})), 100, rounding);
    const Areas kept = subtract({bad}, {area});
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept[0].outer.size(), 4u);
}

TEST(IpcSubtract, APlaneWithManyClearancesTakesNLogN) {
    constexpr int side = 120;
    Areas holes;
    for (int i = 0; i < side * side; ++i)
        holes.push_back(discAt(i % side * 2 + 1, i / side * 2 + 1, 1));
    const auto start = std::chrono::steady_clock::now();
    const Areas rest = subtract({boxArea(0, 0, side * 2, side * 2)}, holes);
    EXPECT_LT(secondsSince(start), 60);
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_EQ(rest[0].holes.size(), static_cast<std::size_t>(side * side));
}

TEST(IpcSubtract, ManyAreasUnderOneOfManyPointsAreClippedByItsParts) {
    constexpr int side = 150;
    Area comb; // goes up and down through the whole board
    for (int i = 0; i < 10000; ++i) {
        const double x = i * 0.03;
        comb.outer.push_back({x * mm, (i % 2 == 0 ? -1 : 150) * mm});
        comb.outer.push_back({(x + 0.015) * mm, (i % 2 == 0 ? -1 : 150) * mm});
    }
    comb.outer.push_back({400 * mm, -2 * mm});
    comb.outer.push_back({0, -2 * mm});
    Areas areas;
    for (int i = 0; i < side * side; ++i)
        areas.push_back(discAt(i % side * 2 + 1, i / side * 2 + 160, 1));
    areas.push_back(boxArea(10, 10, 11, 11));
    const auto start = std::chrono::steady_clock::now();
    const Areas rest = subtract(areas, {comb});
    EXPECT_LT(secondsSince(start), 60);
    EXPECT_GT(rest.size(), static_cast<std::size_t>(side * side));
    double whole = areaOf(areas);
    EXPECT_LT(areaOf(rest), whole);
    EXPECT_GT(areaOf(rest), whole - 1);
}

TEST(IpcSubtract, WhatIsDrawnLaterStays) {
    IpcCutters cutters;
    cutters.add(boxArea(0, 0, 5, 10), 3);
    cutters.add(boxArea(0, 0, 10, 5), 7);
    const Area area = boxArea(0, 0, 10, 10);
    EXPECT_NEAR(areaOf(cutters.cut(area, 1)), 25, rounding);
    EXPECT_NEAR(areaOf(cutters.cut(area, 3)), 50, rounding);
    EXPECT_NEAR(areaOf(cutters.cut(area, 7)), 100, rounding);
}

TEST(IpcSubtract, NothingIsCutOnceTheBudgetIsSpent) {
    IpcCutBudget budget;
    IpcCutters cutters(&budget);
    cutters.add(boxArea(0, 0, 5, 10));
    const Area area = boxArea(0, 0, 10, 10);
    EXPECT_NEAR(areaOf(cutters.cut(area)), 50, rounding);
    EXPECT_EQ(budget.cuts, 1u);
    EXPECT_FALSE(budget.isSpent());
    budget.cuts = IpcCutBudget::maxCuts + 1;
    EXPECT_TRUE(budget.isSpent());
    EXPECT_NEAR(areaOf(cutters.cut(area)), 100, rounding);
}

TEST(IpcSubtract, ACutCostsThePointsOfAllThatIsNear) {
    IpcCutBudget budget;
    IpcCutters cutters(&budget);
    cutters.add(boxArea(0, 0, 5, 10));
    cutters.add(boxArea(90, 0, 95, 10));
    EXPECT_EQ(budget.points, 0u);
    cutters.cut(boxArea(0, 0, 10, 10));
    EXPECT_EQ(budget.points, 8u); // the area and the cutter
    cutters.cut(boxArea(40, 0, 50, 10));
    EXPECT_EQ(budget.points, 8u);
    EXPECT_EQ(budget.cuts, 1u);
}

TEST(IpcSubtract, CuttersAreSharedByAllAreas) {
    IpcCutBudget budget;
    IpcCutters cutters(&budget);
    for (int i = 0; i < 100; ++i)
        cutters.add(discAt(i * 2, 0, 1), 1);
    for (int i = 0; i < 100; ++i)
        cutters.cut(boxArea(i * 2 - 0.1, -0.1, i * 2 + 0.1, 0.1));
    EXPECT_EQ(budget.points, 100u * (4 + 36));
}

TEST(IpcSubtract, WhatCrossesItselfTooOftenTakesNothingAndCostsMuch) {
    Area tangle;
    unsigned random = 1;
    for (int i = 0; i < 4000; ++i) {
        random = random * 1664525 + 1013904223;
        const double x = (random >> 16) * mm / 65.536;
        random = random * 1664525 + 1013904223;
        tangle.outer.push_back({x, (random >> 16) * mm / 65.536});
    }
    IpcCutBudget budget;
    IpcCutters cutters(&budget);
    cutters.add(tangle);
    EXPECT_GE(budget.points, 1000000u);
    EXPECT_NEAR(areaOf(cutters.cut(boxArea(0, 0, 10, 10))), 100, rounding);
}

TEST(IpcSubtract, AHatchOfVeryManyLinesIsTakenAwayAsItIs) {
    Area hatch; // slanted, so that no cut makes it simpler
    for (int i = 0; i < 5000; ++i) {
        const double x = i * 0.1;
        hatch.outer.push_back({x * mm, 0});
        hatch.outer.push_back({(x + 500) * mm, 500 * mm});
        hatch.outer.push_back({(x + 500.05) * mm, 500 * mm});
        hatch.outer.push_back({(x + 0.05) * mm, 0});
    }
    hatch.outer.push_back({500 * mm, -1 * mm});
    hatch.outer.push_back({0, -1 * mm});
    const auto start = std::chrono::steady_clock::now();
    const Areas rest = subtract({boxArea(450, 100, 451, 101), boxArea(450, 200, 451, 201)}, {hatch});
    EXPECT_LT(secondsSince(start), 60);
    EXPECT_NEAR(areaOf(rest), 1, 1e-3);
}
