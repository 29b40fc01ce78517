// Stored points: what counts as equal, what an addition does, which index means what.
#include "host/Geometry/Polygon2D.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

#include <limits>

using EDA::EDAOutline;
using EDA::test::hole;
using EDA::test::outline;
using EDA::test::PointsAre;
using EDA::test::storedPoints;
using EDA::test::ToleranceGuard;
using EDAPoint = EDA::EDAOutline::EDAPoint;

namespace {

std::size_t pointsOfInternal(EDAOutline const &outline, int index) {
    return (outline.beginInternalOutlines() + index)->numPoints();
}

} // namespace

TEST(EDAPoint, StraightPointHasNoArcFields) {
    EDAPoint const point(1.0, 2.0, 0.0);
    EXPECT_EQ(point.x, 1.0);
    EXPECT_EQ(point.y, 2.0);
    EXPECT_EQ(point.angle, 0.0);
    EXPECT_FALSE(point.centered);
    EXPECT_EQ(point.centreX, 0.0);
    EXPECT_EQ(point.centreY, 0.0);
    EXPECT_TRUE(point.clockwise);
    EXPECT_FALSE(point.isArc());
}

TEST(EDAPoint, CentredPointHasNoAngleAndIsAnArc) {
    EDAPoint const point(1.0, 2.0, 3.0, 4.0, false);
    EXPECT_EQ(point.angle, 0.0);
    EXPECT_TRUE(point.centered);
    EXPECT_EQ(point.centreX, 3.0);
    EXPECT_EQ(point.centreY, 4.0);
    EXPECT_FALSE(point.clockwise);
    EXPECT_TRUE(point.isArc());
}

TEST(EDAPoint, AngleIsAnArcOnlyAboveTheTolerance) {
    EXPECT_FALSE(EDAPoint(0.0, 0.0, 1e-12).isArc());
    EXPECT_TRUE(EDAPoint(0.0, 0.0, 1.1e-12).isArc());
    EXPECT_TRUE(EDAPoint(0.0, 0.0, -1.1e-12).isArc());
}

TEST(EDAPoint, EqualityLooksAtThePlaceOnly) {
    EXPECT_TRUE(EDAPoint(1.0, 2.0, 0.0) == EDAPoint(1.0, 2.0, 7.0, 7.0, false));
    EXPECT_FALSE(EDAPoint(1.0, 2.0, 0.0) != EDAPoint(1.0, 2.0, 90.0));
    EXPECT_TRUE(EDAPoint(1.0, 2.0, 0.0) != EDAPoint(1.0, 2.1, 0.0));
    EXPECT_TRUE(EDAPoint(1.0, 2.0, 0.0) != EDAPoint(1.1, 2.0, 0.0));
}

TEST(EDAPoint, DifferenceOfExactlyTheToleranceIsADifference) {
    EXPECT_FALSE(EDAPoint(0.0, 0.0, 0.0) == EDAPoint(1e-12, 0.0, 0.0));
    EXPECT_TRUE(EDAPoint(0.0, 0.0, 0.0) == EDAPoint(0.0, 0.9e-12, 0.0));
    EXPECT_FALSE(EDAPoint(0.0, 0.0, 0.0).isEqual(EDAPoint(0.5, 0.0, 0.0), 0.5));
    EXPECT_TRUE(EDAPoint(0.0, 0.0, 0.0).isEqual(EDAPoint(0.5, 0.0, 0.0), 0.6));
}

TEST(EDAPoint, IsEqualComparesEverythingButCentered) {
    EDAPoint const point(1.0, 2.0, 3.0, 4.0, true);
    EXPECT_TRUE(point.isEqual(EDAPoint(1.0, 2.0, 3.0, 4.0, true), 1e-12));
    EXPECT_FALSE(point.isEqual(EDAPoint(1.5, 2.0, 3.0, 4.0, true), 1e-12));
    EXPECT_FALSE(point.isEqual(EDAPoint(1.0, 2.5, 3.0, 4.0, true), 1e-12));
    EXPECT_FALSE(point.isEqual(EDAPoint(1.0, 2.0, 3.5, 4.0, true), 1e-12));
    EXPECT_FALSE(point.isEqual(EDAPoint(1.0, 2.0, 3.0, 4.5, true), 1e-12));
    EXPECT_FALSE(point.isEqual(EDAPoint(1.0, 2.0, 3.0, 4.0, false), 1e-12));
    EXPECT_FALSE(EDAPoint(1.0, 2.0, 0.0).isEqual(EDAPoint(1.0, 2.0, 1.0), 1e-12));
    EXPECT_TRUE(EDAPoint(1.0, 2.0, 0.0).isEqual(EDAPoint(1.0, 2.0, 0.0, 0.0, true), 1e-12));
}

TEST(EDAPoint, NotANumberEqualsNothing) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EDAPoint const point(nan, 0.0, 0.0);
    EXPECT_FALSE(point == point);
    EXPECT_FALSE(point.isEqual(point, 1.0));
}

TEST(EDAOutlineTolerances, HaveTheirValuesAndCanBeSet) {
    EXPECT_EQ(EDAOutline::ptTol, 1e-12);
    EXPECT_EQ(EDAOutline::lineTol, 1e-5);
    ToleranceGuard const guard;
    EDAOutline::ptTol = 0.1;
    EXPECT_EQ(outline("0,0 0.05,0 1,0").numPoints(), 2u);
}

TEST(EDAOutlinePoints, NewOutlineHasItsDefaults) {
    EDAOutline const fresh;
    double zLow = 1.0;
    double zHigh = 1.0;
    fresh.getZDimensions(zLow, zHigh);
    EXPECT_TRUE(fresh.empty());
    EXPECT_EQ(fresh.numPoints(), 0u);
    EXPECT_EQ(fresh.numInternalOutlines(), 0);
    EXPECT_FALSE(fresh.isHole());
    EXPECT_EQ(fresh.getName(), "");
    EXPECT_EQ(fresh.getMaterial(), "");
    EXPECT_EQ(zLow, 0.0);
    EXPECT_EQ(zHigh, 0.0);
    EXPECT_TRUE(fresh.getPoints(true).empty());
    EXPECT_TRUE(fresh.getPoints(false).empty());
    EXPECT_FALSE(fresh.getBound().isValid(1e-9));
    EXPECT_TRUE(EDAOutline(true).isHole());
}

TEST(EDAOutlinePoints, PlainValuesAreStored) {
    EDAOutline item;
    item.setName("U1");
    item.setMaterial("FR4");
    item.setHole(true);
    item.setZDimensions(5.0, -2.0);
    double zLow = 0.0;
    double zHigh = 0.0;
    item.getZDimensions(zLow, zHigh);
    EXPECT_EQ(item.getName(), "U1");
    EXPECT_EQ(item.getMaterial(), "FR4");
    EXPECT_TRUE(item.isHole());
    EXPECT_EQ(zLow, 5.0);
    EXPECT_EQ(zHigh, -2.0);
}

TEST(EDAOutlinePoints, PolygonVerticesAreTakenWithRepetitions) {
    Geometry::Polygon2D const polygon({{0.0, 0.0}, {0.0, 0.0}, {1.0, 0.0}, {0.0, 0.0}});
    EDAOutline const item(polygon, true);
    EXPECT_TRUE(item.isHole());
    EXPECT_THAT(storedPoints(item), PointsAre("0,0 0,0 1,0 0,0"));
    EXPECT_FALSE(item.beginPoints()->isArc());
}

TEST(EDAOutlinePoints, RepeatedPointIsDropped) {
    EXPECT_EQ(outline("1,1 1,1 1,1").numPoints(), 1u);
    EXPECT_EQ(outline("1,1 2,2 1,1").numPoints(), 3u);
    EXPECT_EQ(outline("1,1 1,1@90").numPoints(), 2u);
}

TEST(EDAOutlinePoints, PointThatDiffersOnlyInCenteredIsDropped) {
    EDAOutline const item = outline("1,1 1,1>0,0");
    ASSERT_EQ(item.numPoints(), 1u);
    EXPECT_FALSE(item.beginPoints()->centered);
}

TEST(EDAOutlinePoints, PointThatDiffersOnlyInSenseIsKept) {
    EXPECT_EQ(outline("1,1 1,1<0,0").numPoints(), 2u);
}

TEST(EDAOutlinePoints, IndexPastTheEndMakesOneNewInternalOutline) {
    EDAOutline item = outline("0,0 9,0 9,9", "1,1 2,1 2,2");
    item.addPoint(7, 5.0, 5.0, 0.0);
    EXPECT_EQ(item.numInternalOutlines(), 2);
    EXPECT_EQ(pointsOfInternal(item, 1), 1u);
    EXPECT_TRUE((item.endInternalOutlines() - 1)->isHole());
}

TEST(EDAOutlinePoints, HoleNumberedAheadBeginsAsAChainOfOnePointHoles) {
    EDAOutline item;
    for (int i = 0; i < 4; ++i)
        item.addPoint(3, i, 0.0, 0.0);
    EXPECT_EQ(item.numInternalOutlines(), 3);
    EXPECT_EQ(pointsOfInternal(item, 0), 1u);
    EXPECT_EQ(pointsOfInternal(item, 1), 1u);
    EXPECT_EQ(pointsOfInternal(item, 2), 2u);
}

TEST(EDAOutlinePoints, IndexNChoosesTheNthInternalOutline) {
    EDAOutline item;
    item.addPoint(1, 0.0, 0.0, 0.0);
    item.addPoint(2, 1.0, 0.0, 0.0);
    item.addPoint(1, 2.0, 0.0, 5.0, 5.0, false);
    EXPECT_TRUE(item.empty());
    EXPECT_EQ(item.numInternalOutlines(), 2);
    EXPECT_EQ(pointsOfInternal(item, 0), 2u);
    EXPECT_EQ(pointsOfInternal(item, 1), 1u);
}

TEST(EDAOutlinePoints, RepetitionIsLookedForInTheTargetOnly) {
    EDAOutline item = outline("1,1");
    item.addPoint(1, 1.0, 1.0, 0.0);
    item.addPoint(1, 1.0, 1.0, 0.0);
    EXPECT_EQ(pointsOfInternal(item, 0), 1u);
    item.addPoint(2, 1.0, 1.0, 0.0);
    EXPECT_EQ(item.numInternalOutlines(), 2);
}

TEST(EDAOutlinePoints, NegativeIndexDropsThePoint) {
    EDAOutline item = outline("0,0 9,0 9,9", "1,1 2,1 2,2");
    item.getPoints(true);
    item.addPoint(-1, 5.0, 5.0, 0.0);
    item.addPoint(std::numeric_limits<int>::min(), 5.0, 5.0, 1.0, 1.0, true);
    EXPECT_EQ(item.numPoints(), 3u);
    EXPECT_EQ(item.numInternalOutlines(), 1);
    EXPECT_EQ(pointsOfInternal(item, 0), 3u);
}

TEST(EDAOutlinePoints, GreatestIndexIsAnIndexPastTheEnd) {
    EDAOutline item;
    item.addPoint(std::numeric_limits<int>::max(), 5.0, 5.0, 0.0);
    EXPECT_EQ(item.numInternalOutlines(), 1);
}

TEST(EDAOutlinePoints, AddedInternalOutlineKeepsItsHoleFlag) {
    EDAOutline item = outline("0,0 9,0 9,9");
    item.addInternalOutline(outline("1,1 2,1 2,2"));
    item.addInternalOutline(hole("3,3 4,3 4,4"));
    EXPECT_FALSE(item.beginInternalOutlines()->isHole());
    EXPECT_TRUE((item.beginInternalOutlines() + 1)->isHole());
}

TEST(EDAOutlinePoints, OutlineCanBecomeItsOwnInternalOutline) {
    EDAOutline item = outline("0,0 9,0 9,9", "1,1 2,1 2,2");
    item.addInternalOutline(item);
    ASSERT_EQ(item.numInternalOutlines(), 2);
    EXPECT_EQ((item.beginInternalOutlines() + 1)->numInternalOutlines(), 1);
    item.addInternalOutline(*item.beginInternalOutlines());
    EXPECT_EQ(item.numInternalOutlines(), 3);
}

TEST(EDAOutlinePoints, ClearKeepsFlagTextsHeightsAndModelDimension) {
    EDAOutline item = hole("0,0 1,0@360");
    item.addPoint(1, 0.0, 0.0, 0.0);
    item.setName("n");
    item.setMaterial("m");
    item.setZDimensions(1.0, 2.0);
    item.setModelDimension(10000.0);
    item.getPoints(true);
    item.clear();
    EXPECT_TRUE(item.empty());
    EXPECT_EQ(item.numInternalOutlines(), 0);
    EXPECT_TRUE(item.getPoints(true).empty());
    EXPECT_FALSE(item.getBound().isValid(1e-9));
    EXPECT_TRUE(item.isHole());
    EXPECT_EQ(item.getName(), "n");
    EXPECT_EQ(item.getMaterial(), "m");
    double zLow = 0.0;
    double zHigh = 0.0;
    item.getZDimensions(zLow, zHigh);
    EXPECT_EQ(zHigh, 2.0);
    EDA::test::addPoints(item, 0, "0,0 1,0@360");
    EXPECT_EQ(item.getPoints(true).size(), 8u) << "the model dimension asks for 45 degree steps";
}

TEST(EDAOutlinePoints, EmptyOutlinesAreEqual) { EXPECT_TRUE(EDAOutline() == EDAOutline(true)); }

TEST(EDAOutlinePoints, EqualityComparesStoredPointsOnly) {
    EDAOutline a = outline("0,0 1,0@90 2,2", "1,1 2,1 2,2");
    EDAOutline b = hole("0,0 1,0@90 2,2");
    b.setName("other");
    b.setMaterial("other");
    b.setZDimensions(1.0, 2.0);
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
}

TEST(EDAOutlinePoints, EqualitySeesEachComparedField) {
    EDAOutline const item = outline("0,0 1,0<5,5");
    EXPECT_TRUE(item == outline("0,0 1,0<5,5"));
    EXPECT_TRUE(item != outline("0,0 1,0<5,5 2,2"));
    EXPECT_TRUE(item != outline("0,0 1,0>5,5"));
    EXPECT_TRUE(item != outline("0,0 1,0<5,6"));
    EXPECT_TRUE(item != outline("0,0 1,0<6,5"));
    EXPECT_TRUE(item != outline("0,0 1,1<5,5"));
    EXPECT_TRUE(outline("0,0 1,0@1") != outline("0,0 1,0@2"));
}

TEST(EDAOutlinePoints, EqualityDoesNotCompareCentered) {
    EXPECT_TRUE(outline("0,0 1,0>0,0") == outline("0,0 1,0"));
}

TEST(EDAOutlinePoints, ClosedMeansLastPlaceIsFirstPlace) {
    EXPECT_FALSE(EDAOutline().isClosed());
    EXPECT_FALSE(outline("1,1").isClosed());
    EXPECT_FALSE(outline("1,1 2,1 2,2").isClosed());
    EXPECT_TRUE(outline("1,1 2,1 2,2 1,1").isClosed());
    EXPECT_TRUE(outline("1,1 2,1 2,2 1,1@45").isClosed());
    EXPECT_TRUE(outline("1,1 1,1@45").isClosed());
}

TEST(EDAOutlinePoints, MakeClosedRepeatsTheFirstPointWithItsArcFields) {
    EDAOutline item = outline("1,1<3,4 2,1 2,2");
    item.makeClosed();
    ASSERT_EQ(item.numPoints(), 4u);
    EXPECT_TRUE(item.isClosed());
    EDAPoint const &last = *(item.endPoints() - 1);
    EXPECT_TRUE(last.centered);
    EXPECT_EQ(last.centreY, 4.0);
    EXPECT_FALSE(last.clockwise);
}

TEST(EDAOutlinePoints, MakeClosedLeavesClosedAndShortOutlines) {
    for (char const *text : {"", "1,1", "1,1 2,2", "1,1 2,1 2,2 1,1"}) {
        EDAOutline item = outline(text);
        std::size_t const before = item.numPoints();
        item.makeClosed();
        EXPECT_EQ(item.numPoints(), before) << text;
    }
}

TEST(EDAOutlinePoints, MirrorDoesNothing) {
    EDAOutline item = outline("1,1 2,1 2,2");
    item.mirror(1.0, 0.0);
    EXPECT_THAT(storedPoints(item), PointsAre("1,1 2,1 2,2"));
}
