// Queries: area, rectangle, circle, containment, holes.
#include "support/Outlines.h"

#include <gtest/gtest.h>

using EDA::EDAOutline;
using EDA::test::hole;
using EDA::test::outline;

namespace {

struct Box {
    double xLow = -7.0;
    double yLow = -7.0;
    double xHigh = -7.0;
    double yHigh = -7.0;
};

bool isRectangle(EDAOutline const &item, Box &box) {
    return item.isRectangle(box.xLow, box.yLow, box.xHigh, box.yHigh);
}

bool isRectangle(EDAOutline const &item) {
    Box box;
    return isRectangle(item, box);
}

struct Circle {
    double x = -7.0;
    double y = -7.0;
    double diameter = -7.0;
};

bool isCylinder(EDAOutline const &item, Circle &circle, int minPoints, double tolerance) {
    return item.isCylinder(circle.x, circle.y, circle.diameter, minPoints, tolerance);
}

bool isCylinder(EDAOutline const &item, int minPoints = 12, double tolerance = 1e-6) {
    Circle circle;
    return isCylinder(item, circle, minPoints, tolerance);
}

// An L of area 3.
EDAOutline corner() { return outline("0,0 2,0 2,1 1,1 1,2 0,2"); }

EDAOutline plate() { return outline("0,0 10,0 10,10 0,10", "4,4 8,4 8,8 4,8"); }

} // namespace

TEST(EDAOutlineArea, IsTheShoelaceSumOfEitherDirection) {
    EXPECT_EQ(outline("0,0 2,0 2,1 0,1").getArea(), 2.0);
    EXPECT_EQ(outline("0,1 2,1 2,0 0,0").getArea(), 2.0);
    EXPECT_EQ(outline("0,0 2,0 2,1 0,1 0,0").getArea(), 2.0);
    EXPECT_EQ(corner().getArea(), 3.0);
}

TEST(EDAOutlineArea, NeedsThreePoints) {
    EXPECT_EQ(EDAOutline().getArea(), 0.0);
    EXPECT_EQ(outline("5,5").getArea(), 0.0);
    EXPECT_EQ(outline("5,5 9,7").getArea(), 0.0);
}

TEST(EDAOutlineArea, HolesAreNotSubtracted) { EXPECT_EQ(plate().getArea(), 100.0); }

TEST(EDAOutlineArea, CircleHasThatOfIts36Points) {
    EXPECT_NEAR(outline("3,3 5,3@360").getArea(), 18.0 * 4.0 * std::sin(std::atan(1.0) * 8.0 / 36.0), 1e-12);
}

TEST(EDAOutlineRectangle, BoxOfFourPointsIsOne) {
    Box box;
    EXPECT_TRUE(isRectangle(outline("1,1 3,1 3,2 1,2"), box));
    EXPECT_EQ(box.xLow, 1.0);
    EXPECT_EQ(box.yLow, 1.0);
    EXPECT_EQ(box.xHigh, 3.0);
    EXPECT_EQ(box.yHigh, 2.0);
}

TEST(EDAOutlineRectangle, ThreeStoredPointsAreNoneButGiveTheBound) {
    Box box;
    EXPECT_FALSE(isRectangle(outline("0,0 2,0 2,1"), box));
    EXPECT_EQ(box.xHigh, 2.0);
    EXPECT_EQ(box.yHigh, 1.0);
}

TEST(EDAOutlineRectangle, StoredPointsCountAlsoWhereTheListHoldsMore) {
    EDA::test::ToleranceGuard const guard;
    EDAOutline item = outline("0,0@1 4,0 4,2 0,2@0.0001");
    ASSERT_TRUE(isRectangle(item));
    EDAOutline::lineTol = 1.0; // so that a corner goes, while the list stays
    item.removeDegeneratePoints();
    ASSERT_EQ(item.numPoints(), 3u);
    EXPECT_NEAR(item.getArea(), 8.0, 1e-5) << "the arc bulges a little";
    EXPECT_FALSE(isRectangle(item));
}

TEST(EDAOutlineRectangle, EmptyOutlineLeavesTheOutputs) {
    Box box;
    EXPECT_FALSE(isRectangle(EDAOutline(), box));
    EXPECT_EQ(box.xLow, -7.0);
    EXPECT_EQ(box.yHigh, -7.0);
}

TEST(EDAOutlineRectangle, ShapeMustFillItsBoundToOnePartIn100000) {
    EXPECT_TRUE(isRectangle(outline("0,0 1,0 1,1 0.00001,1 0,0.99999")));
    EXPECT_TRUE(isRectangle(outline("0,0 1000,0 1000,1000 3,1000 0,997")));
    EXPECT_FALSE(isRectangle(outline("0,0 1000,0 1000,1000 5,1000 0,995")));
    EXPECT_FALSE(isRectangle(corner()));
}

TEST(EDAOutlineRectangle, TurnedOrFlatOneIsNone) {
    EXPECT_FALSE(isRectangle(outline("0,-1 1,0 0,1 -1,0")));
    EXPECT_FALSE(isRectangle(outline("0,0 1,0 2,0 3,0")));
}

TEST(EDAOutlineCylinder, CircleOf36PointsHasItsCentreAndDiameter) {
    Circle circle;
    EXPECT_TRUE(isCylinder(outline("3,4 5,4@360"), circle, 12, 1e-6));
    EXPECT_NEAR(circle.x, 3.0, 1e-12);
    EXPECT_NEAR(circle.y, 4.0, 1e-12);
    EXPECT_NEAR(circle.diameter, 4.0, 1e-12);
}

TEST(EDAOutlineCylinder, FewerThanMinPointsAreNone) {
    EDAOutline const item = outline("0,0 1,0@360");
    EXPECT_TRUE(isCylinder(item, 36));
    EXPECT_FALSE(isCylinder(item, 37));
    item.setModelDimension(10000.0);
    EXPECT_FALSE(isCylinder(item, 12)) << "now of 8 points";
    EXPECT_TRUE(isCylinder(item, 8));
}

TEST(EDAOutlineCylinder, MinPointsBelowThreeActAsThree) {
    EDAOutline const triangle = outline("0,0 1,0 0.5,0.95");
    EXPECT_TRUE(isCylinder(triangle, 2));
    EXPECT_TRUE(isCylinder(triangle, -5));
    EXPECT_FALSE(isCylinder(outline("0,0 1,1"), 2));
}

TEST(EDAOutlineCylinder, CentreIsWrittenOnlyWhenThereAreEnoughPoints) {
    Circle circle;
    EXPECT_FALSE(isCylinder(outline("0,0 1,0@360"), circle, 99, 1e-6));
    EXPECT_EQ(circle.x, -7.0);
    EXPECT_FALSE(isCylinder(outline("0,0 2,0 2,1.1 1,2 0,2"), circle, 3, 1e-6));
    EXPECT_NE(circle.x, -7.0);
    EXPECT_EQ(circle.diameter, -7.0);
}

TEST(EDAOutlineCylinder, AnyInternalOutlineForbidsIt) {
    EDAOutline item = outline("0,0 1,0@360");
    item.addInternalOutline(EDAOutline());
    EXPECT_FALSE(isCylinder(item));
}

TEST(EDAOutlineCylinder, SizesMayDifferByLessThan15PerCentOfTheWidth) {
    EXPECT_FALSE(isCylinder(EDAOutline()));
    EXPECT_FALSE(isCylinder(outline("0,0 10,0 10,8.5 0,8.5"), 3, 1e9));
    EXPECT_TRUE(isCylinder(outline("0,0 10,0 10,8.6 0,8.6"), 3, 1e9));
    EXPECT_TRUE(isCylinder(outline("0,0 10,0 10,11.4 0,11.4"), 3, 1e9));
    EXPECT_FALSE(isCylinder(outline("0,0 8.6,0 8.6,10 0,10"), 3, 1e9))
        << "15 per cent of the width, not the height";
}

TEST(EDAOutlineCylinder, ToleranceOfSquaredDistancesScalesWithTheRadius) {
    // One of the eight points lies 0.01 further out: the squared distances differ by 2.01^2 - 2^2 = 0.0401.
    EDAOutline const item = outline("2,0 1.4142135623730951,1.4142135623730951 0,2.01 "
                                    "-1.4142135623730951,1.4142135623730951 -2,0 "
                                    "-1.4142135623730951,-1.4142135623730951 0,-2 "
                                    "1.4142135623730951,-1.4142135623730951");
    // The samples are points 0, 2 and 4, so the circle itself goes through the point further out.
    Circle circle;
    ASSERT_TRUE(isCylinder(item, circle, 8, 1.0));
    double worst = 0.0;
    double const radius = circle.diameter / 2.0;
    for (auto const &point : item.getPoints(true)) {
        double const d = std::hypot(point.first - circle.x, point.second - circle.y);
        worst = std::max(worst, std::abs(d * d - radius * radius));
    }
    EXPECT_TRUE(isCylinder(item, 8, worst / radius * 1.001));
    EXPECT_FALSE(isCylinder(item, 8, worst / radius * 0.999));
}

TEST(EDAOutlineCylinder, CircleGoesThroughTheFirstPointAndThoseOneAndTwoThirdsOn) {
    // Thirds of 8 are cut to 2 and 4; the other points lie on no common circle.
    Circle circle;
    EXPECT_TRUE(
        isCylinder(outline("1,0 0.8,0.8 0,1 -0.8,0.9 -1,0 -0.5,-0.4 0,-0.9 0.5,-0.6"), circle, 8, 1e9));
    EXPECT_NEAR(circle.x, 0.0, 1e-12);
    EXPECT_NEAR(circle.y, 0.0, 1e-12);
    EXPECT_NEAR(circle.diameter, 2.0, 1e-12);
}

TEST(EDAOutlineCylinder, DiagonalRunIsOneOfInfiniteDiameter) {
    Circle circle;
    EXPECT_TRUE(isCylinder(outline("0,0 1,1 2,2 3,3 4,4 5,5 6,6 7,7 8,8"), circle, 9, 1e-6));
    EXPECT_TRUE(std::isinf(circle.diameter));
    EXPECT_FALSE(std::isfinite(circle.x));
}

TEST(EDAOutlineBad, OutlineWithoutPointsIsBad) {
    EXPECT_TRUE(EDAOutline().isBadOutline());
    EXPECT_FALSE(outline("0,0 1,0 1,1").isBadOutline());
}

TEST(EDAOutlineBad, FirstHoleApartIsBadAndLaterOnesAreNotLookedAt) {
    EDAOutline item = outline("0,0 4,0 4,4 0,4");
    item.addInternalOutline(outline("20,20 21,20 21,21")); // apart, but no hole
    EXPECT_FALSE(item.isBadOutline());
    EDAOutline apart = item;
    apart.addInternalOutline(hole("20,20 21,20 21,21"));
    EXPECT_TRUE(apart.isBadOutline());
    item.addInternalOutline(hole("1,1 2,1 2,2"));
    item.addInternalOutline(hole("20,20 21,20 21,21"));
    EXPECT_FALSE(item.isBadOutline());
}

TEST(EDAOutlineBad, HoleWhoseBoundReachesTheOutlinesIsNotApart) {
    EXPECT_FALSE(outline("0,0 4,0 4,4 0,4", "3,3 9,3 9,9").isBadOutline());
    EXPECT_FALSE(outline("0,0 4,0 4,4 0,4", "4.0000000005,1 9,1 9,9").isBadOutline()) << "within 1e-9";
    EXPECT_TRUE(outline("0,0 4,0 4,4 0,4", "4.000000002,1 9,1 9,9").isBadOutline());
}

TEST(EDAOutlineEncloses, OnlyTheVerticesAreTested) {
    EXPECT_TRUE(plate().enclosesOutline(outline("1,1 2,1 2,2")));
    EXPECT_FALSE(plate().enclosesOutline(outline("1,1 2,1 12,2")));
    EXPECT_FALSE(corner().enclosesOutline(outline("0.5,0.5 1.5,0.5 1.5,1.5"))) << "a vertex in the notch";
    EXPECT_TRUE(corner().enclosesOutline(outline("0.2,1.8 0.2,0.2 1.8,0.2"))) << "an edge across the notch";
}

TEST(EDAOutlineEncloses, OwnHolesPlayNoPart) {
    EXPECT_TRUE(plate().enclosesOutline(outline("5,5 7,5 7,7 5,7")));
}

TEST(EDAOutlineEncloses, NeedsThreePointsInTheOther) {
    EXPECT_FALSE(plate().enclosesOutline(outline("1,1 2,2")));
    EXPECT_FALSE(plate().enclosesOutline(EDAOutline()));
    EXPECT_FALSE(EDAOutline().enclosesOutline(plate()));
}

TEST(EDAOutlineEncloses, PointsOnTheEdgeFollowTheHalfOpenRule) {
    EDAOutline const square = outline("0,0 4,0 4,4 0,4");
    EXPECT_TRUE(square.enclosesOutline(outline("0,0 1,0 1,1"))) << "left and lower edge belong to it";
    EXPECT_FALSE(square.enclosesOutline(outline("4,1 3,1 3,2"))) << "the right edge does not";
    EXPECT_FALSE(square.enclosesOutline(outline("1,4 1,3 2,3"))) << "the upper edge does not";
}

TEST(EDAOutlineIntersects, SquareInAHoleDoesNotAndAcrossItsEdgeDoes) {
    EXPECT_FALSE(plate().intersectsHole(outline("5,5 6,5 6,6 5,6")));
    EXPECT_TRUE(plate().intersectsHole(outline("7,5 9,5 9,6 7,6")));
    EXPECT_TRUE(plate().intersectsHole(outline("1,1 2,1 2,2 1,2")));
    EXPECT_FALSE(plate().intersectsHole(outline("20,1 21,1 21,2")));
}

TEST(EDAOutlineIntersects, InternalOutlineThatIsNoHoleTakesNothingOut) {
    EDAOutline item = plate();
    item.beginInternalOutlines()->setHole(false);
    EXPECT_TRUE(item.intersectsHole(outline("5,5 6,5 6,6 5,6")));
}

TEST(EDAOutlineIntersects, ShapeWithAllVerticesInTwoHolesMeetsTheBarBetweenThem) {
    EDAOutline item = outline("0,0 10,0 10,10 0,10", "1,1 3,1 3,9 1,9");
    item.addInternalOutline(hole("6,1 8,1 8,9 6,9"));
    EXPECT_TRUE(item.intersectsHole(outline("2,2 7,2 7,8 2,8")));
}

TEST(EDAOutlineIntersects, LooksOneWayOnly) {
    EDAOutline const large = outline("0,0 10,0 10,10 0,10");
    EDAOutline const small = outline("4,4 5,4 5,5 4,5");
    EXPECT_TRUE(large.intersectsHole(small));
    EXPECT_FALSE(small.intersectsHole(large));
}

TEST(EDAOutlineIntersects, OtherNeedsThreePoints) {
    EXPECT_FALSE(plate().intersectsHole(outline("1,1 2,2")));
}

TEST(EDAOutlineIntersects, BarsThatCrossAsAPlusDoNotMeet) {
    EDAOutline const across = outline("0,4 10,4 10,6 0,6");
    EDAOutline const upright = outline("4,0 6,0 6,10 4,10");
    EXPECT_FALSE(across.intersectsHole(upright));
    EXPECT_FALSE(across.overlaps(upright));
}

TEST(EDAOutlineIntersects, OverlapsIsSymmetric) {
    EDAOutline const large = outline("0,0 10,0 10,10 0,10");
    EDAOutline const small = outline("4,4 5,4 5,5 4,5");
    EXPECT_TRUE(large.overlaps(small));
    EXPECT_TRUE(small.overlaps(large));
    EXPECT_FALSE(small.overlaps(outline("40,4 41,4 41,5")));
}

TEST(EDAOutlineHoles, OnlyFlaggedInternalOutlinesAreHoles) {
    EDAOutline item = outline("0,0 10,0 10,10 0,10");
    EXPECT_FALSE(item.hasHoles());
    item.addInternalOutline(outline("1,1 2,1 2,2"));
    EXPECT_FALSE(item.hasHoles());
    EXPECT_FALSE(item.overlapsHoles(outline("1,1 2,1 2,2")));
    item.addInternalOutline(hole("1,1 2,1 2,2"));
    EXPECT_TRUE(item.hasHoles());
}

TEST(EDAOutlineHoles, OverlapsHolesAsksEachHole) {
    EDAOutline item = plate();
    item.addInternalOutline(hole("1,1 3,1 3,3 1,3"));
    EXPECT_TRUE(item.overlapsHoles(outline("2,2 2.5,2 2.5,2.5")));
    EXPECT_TRUE(item.overlapsHoles(outline("5,5 6,5 6,6")));
    EXPECT_FALSE(item.overlapsHoles(outline("9,9 9.5,9 9.5,9.5")));
}

TEST(EDAOutlineHoles, HolesApartAndInsideNeedNoCutting) {
    EDAOutline item = plate();
    EXPECT_FALSE(EDAOutline().needsHolesCutting());
    EXPECT_FALSE(item.needsHolesCutting());
    item.addInternalOutline(hole("1,1 3,1 3,3 1,3"));
    item.addInternalOutline(outline("20,20 21,20 21,21")); // no hole
    EXPECT_FALSE(item.needsHolesCutting());
}

TEST(EDAOutlineHoles, HoleThatSticksOutNeedsCutting) {
    EXPECT_TRUE(outline("0,0 10,0 10,10 0,10", "9,4 11,4 11,6 9,6").needsHolesCutting());
    EXPECT_TRUE(outline("0,0 10,0 10,10 0,10", "9,4").needsHolesCutting());
}

TEST(EDAOutlineHoles, HolesThatMeetNeedCutting) {
    EDAOutline item = plate();
    item.addInternalOutline(hole("1,1 5,1 5,5 1,5"));
    EXPECT_TRUE(item.needsHolesCutting());
}

TEST(EDAOutlineHoles, OnlyTheLaterHoleIsAskedAboutTheEarlier) {
    char const *const large = "1,1 9,1 9,9 1,9";
    char const *const small = "4,4 5,4 5,5 4,5";
    EDAOutline smallFirst = outline("0,0 10,0 10,10 0,10", small);
    smallFirst.addInternalOutline(hole(large));
    EXPECT_TRUE(smallFirst.needsHolesCutting());
    EDAOutline largeFirst = outline("0,0 10,0 10,10 0,10", large);
    largeFirst.addInternalOutline(hole(small));
    EXPECT_FALSE(largeFirst.needsHolesCutting());
}

TEST(EDAOutlineHoles, HoleInTheHoleOfALaterHoleDoesNotMeetIt) {
    EDAOutline item = outline("0,0 10,0 10,10 0,10", "4,4 5,4 5,5 4,5");
    item.addInternalOutline(outline("1,1 9,1 9,9 1,9", "2,2 8,2 8,8 2,8"));
    (item.beginInternalOutlines() + 1)->setHole(true);
    EXPECT_FALSE(item.needsHolesCutting());
}
