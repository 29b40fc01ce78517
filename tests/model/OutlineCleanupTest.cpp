// Clean-up and moves: closing points, spikes, collinear points, cut-ins, turning.
#include "support/NaiveOutlines.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

using EDA::EDAOutline;
using EDA::test::hole;
using EDA::test::outline;
using EDA::test::points;
using EDA::test::PointsAre;
using EDA::test::PointsNear;
using EDA::test::storedPoints;

namespace {

EDA::test::Points cleaned(char const *text) {
    EDAOutline item = outline(text);
    item.removeDegeneratePoints();
    return storedPoints(item);
}

} // namespace

TEST(EDAOutlineCleanup, ClosedBoxIsOpened) {
    EXPECT_THAT(cleaned("0,0 2,0 2,1 0,1 0,0"), PointsAre("0,0 2,0 2,1 0,1"));
}

TEST(EDAOutlineCleanup, ClosingPointWithAnArcStays) {
    EXPECT_THAT(cleaned("0,0 2,0 2,1 0,1 0,0@90"), PointsAre("0,0 2,0 2,1 0,1 0,0"));
}

TEST(EDAOutlineCleanup, SlitDisappears) {
    EXPECT_THAT(cleaned("0,0 4,0 4,2 2,2 2,9 2,2 0,2"), PointsAre("0,0 4,0 4,2 0,2"));
}

TEST(EDAOutlineCleanup, SlitThatComesBackShortOrFarDisappears) {
    EXPECT_THAT(cleaned("0,0 4,0 4,2 2,2 2,9 2,5 0,2"), PointsAre("0,0 4,0 4,2 2,2 2,5 0,2"));
    EXPECT_THAT(cleaned("0,0 4,0 4,2 2,2 2,9 2,1 0,2"), PointsAre("0,0 4,0 4,2 2,2 2,1 0,2"));
}

TEST(EDAOutlineCleanup, SlitWithAnArcAtItsTipStays) {
    char const *const text = "0,0 4,0 4,2 2,2 2,9@20 2,2 0,2";
    EXPECT_THAT(cleaned(text), PointsAre("0,0 4,0 4,2 2,2 2,9 2,2 0,2"));
    EXPECT_THAT(cleaned("0,0 4,0 4,2 2,2 2,9 2,2<3,3 0,2"), PointsAre("0,0 4,0 4,2 2,2 2,9 2,2 0,2"));
}

TEST(EDAOutlineCleanup, CollinearPointGoesButTheListStillHoldsIt) {
    EDAOutline item = outline("0,0 2,0 4,0 4,2 0,2");
    item.removeDegeneratePoints();
    EXPECT_EQ(item.numPoints(), 4u);
    EXPECT_THAT(item.getPoints(true), PointsAre("0,0 2,0 4,0 4,2 0,2")) << "filled before the removal";
    EXPECT_THAT(item.getPoints(false), PointsAre("0,0 4,0 4,2 0,2")) << "not filled by the removal";
    EXPECT_THAT(EDAOutline(item).getPoints(true), PointsAre("0,0 4,0 4,2 0,2"));
}

TEST(EDAOutlineCleanup, RawListThatWasReadBeforeStays) {
    EDAOutline item = outline("0,0 2,0 4,0 4,2 0,2");
    item.getPoints(false);
    item.removeDegeneratePoints();
    EXPECT_EQ(item.getPoints(false).size(), 5u);
}

TEST(EDAOutlineCleanup, PointWhereAnArcArrivesOrLeavesStays) {
    EXPECT_EQ(cleaned("0,0 2,0@10 4,0 4,2 0,2").size(), 5u);
    EXPECT_EQ(cleaned("0,0 2,0 4,0@10 4,2 0,2").size(), 5u);
}

TEST(EDAOutlineCleanup, FirstPointCanGoWhenTheWalkStepsBackToIt) {
    EXPECT_THAT(cleaned("2,0 3,0 4,0 4,2 0,2 0,0"), PointsAre("4,0 4,2 0,2 0,0"));
    EXPECT_THAT(cleaned("2,0 4,0 4,2 0,2 0,0"), PointsAre("2,0 4,0 4,2 0,2 0,0"))
        << "the walk never gets there";
}

TEST(EDAOutlineCleanup, NothingRemainsOfShapesWithoutArea) {
    EXPECT_TRUE(cleaned("").empty());
    EXPECT_TRUE(cleaned("3,3").empty());
    EXPECT_TRUE(cleaned("3,3 4,5").empty());
    EXPECT_TRUE(cleaned("0,0 1,1 2,2 3,3").empty());
    EXPECT_TRUE(cleaned("0,0 5,5 2,2 3,3").empty());
}

TEST(EDAOutlineCleanup, InternalOutlinesAreCleanedAtAnyDepth) {
    EDAOutline item = outline("0,0 9,0 9,9", "1,1 2,1 3,1 3,3 1,3");
    item.beginInternalOutlines()->addInternalOutline(outline("4,4"));
    item.removeDegeneratePoints();
    EXPECT_EQ(item.beginInternalOutlines()->numPoints(), 4u);
    EXPECT_TRUE(item.beginInternalOutlines()->beginInternalOutlines()->empty());
}

TEST(EDAOutlineCutIns, StretchBetweenTwoVisitsIsTakenOutAsAHole) {
    EDAOutline item = outline("0,0 9,0 9,9 5,9 9,0 0,9"); // 0, a, b, c, a, d
    std::vector<EDAOutline> cutIns;
    EXPECT_TRUE(item.hasCutIns());
    EXPECT_TRUE(item.removeCutIns(cutIns));
    EXPECT_THAT(storedPoints(item), PointsAre("0,0 9,0 0,9"));
    ASSERT_EQ(cutIns.size(), 1u);
    EXPECT_TRUE(cutIns[0].isHole());
    EXPECT_TRUE(cutIns[0].empty()) << "two points have no area";
}

TEST(EDAOutlineCutIns, HoleHoldsThePointsBetween) {
    EDAOutline item = outline("0,0 9,0 5,1 6,1 6,2 5,2 5,1 9,0 9,9 0,9");
    std::vector<EDAOutline> cutIns;
    EXPECT_TRUE(item.removeCutIns(cutIns));
    EXPECT_THAT(storedPoints(item), PointsAre("0,0 9,0 9,9 0,9"));
    ASSERT_EQ(cutIns.size(), 1u);
    EXPECT_THAT(cutIns[0].getPoints(true), PointsAre("5,1 6,1 6,2 5,2")) << "the slit to it is gone";
}

TEST(EDAOutlineCutIns, PlaceVisitedThreeTimesGivesTwoCutIns) {
    EDAOutline item = outline("0,0 9,0 1,1 2,1 2,2 9,0 3,3 4,3 4,4 9,0 9,9");
    std::vector<EDAOutline> cutIns;
    EXPECT_TRUE(item.removeCutIns(cutIns));
    EXPECT_THAT(storedPoints(item), PointsAre("0,0 9,0 9,9"));
    ASSERT_EQ(cutIns.size(), 2u);
    EXPECT_THAT(cutIns[0].getPoints(true), PointsAre("1,1 2,1 2,2"));
    EXPECT_THAT(cutIns[1].getPoints(true), PointsAre("3,3 4,3 4,4"));
}

TEST(EDAOutlineCutIns, SecondVisitsArcFieldsStayInTheOutline) {
    EDAOutline item = outline("0,0 9,0 1,1 2,1 2,2 9,0@30 9,9");
    std::vector<EDAOutline> cutIns;
    EXPECT_TRUE(item.removeCutIns(cutIns));
    ASSERT_EQ(item.numPoints(), 3u);
    EXPECT_EQ(item.beginPoints()[1].angle, 30.0);
}

TEST(EDAOutlineCutIns, ClosingPointIsNone) {
    EDAOutline item = outline("0,0 9,0 9,9 0,9 0,0");
    std::vector<EDAOutline> cutIns;
    EXPECT_FALSE(item.hasCutIns());
    EXPECT_FALSE(item.removeCutIns(cutIns));
    EXPECT_EQ(item.numPoints(), 5u);
}

TEST(EDAOutlineCutIns, FewerThanFourStoredPointsHaveNone) {
    EDAOutline item = outline("0,0 1,1 1,1@90");
    std::vector<EDAOutline> cutIns(1);
    EXPECT_FALSE(item.hasCutIns());
    EXPECT_FALSE(item.removeCutIns(cutIns)) << "whatever the list holds";
    EXPECT_EQ(item.numPoints(), 3u);
}

TEST(EDAOutlineCutIns, FilledListGivesTrueWithoutACutIn) {
    EDAOutline item = outline("0,0 9,0 9,9 0,9");
    std::vector<EDAOutline> cutIns(1);
    EXPECT_TRUE(item.removeCutIns(cutIns));
    EXPECT_EQ(cutIns.size(), 1u);
    EXPECT_EQ(item.numPoints(), 4u);
}

TEST(EDAOutlineCutIns, EqualNeighboursPutAnEmptyOutlineInTheList) {
    EDAOutline item = outline("0,0 9,0 9,0@45 9,9 0,9");
    std::vector<EDAOutline> cutIns;
    EXPECT_TRUE(item.removeCutIns(cutIns));
    ASSERT_EQ(cutIns.size(), 1u);
    EXPECT_TRUE(cutIns[0].empty());
    EXPECT_TRUE(cutIns[0].isHole());
    EXPECT_EQ(item.numPoints(), 4u);
}

TEST(EDAOutlineCutIns, RemovalClearsNoCache) {
    EDAOutline item = outline("0,0 9,0 5,1 6,1 6,2 9,0 9,9");
    item.getPoints(true);
    item.getPoints(false);
    std::vector<EDAOutline> cutIns;
    EXPECT_TRUE(item.removeCutIns(cutIns));
    EXPECT_EQ(item.numPoints(), 3u);
    EXPECT_EQ(item.getPoints(true).size(), 7u);
    EXPECT_EQ(item.getPoints(false).size(), 7u);
}

TEST(EDAOutlineCutIns, OutlineMayStandInTheListItself) {
    std::vector<EDAOutline> list{outline("0,0 9,0 5,1 6,1 6,2 9,0 9,9")};
    list.shrink_to_fit();
    EXPECT_TRUE(list[0].removeCutIns(list));
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0].numPoints(), 3u);
}

TEST(EDAOutlineMoves, MoveTakesCentresAndInternalOutlinesAlong) {
    EDAOutline item = outline("1,0 0,1<0,0 5,5", "1,1 2,1>3,3 2,2");
    item.beginInternalOutlines()->addInternalOutline(outline("7,7"));
    item.getPoints(true);
    item.getPoints(false);
    item.getBound();
    item.moveBy(10.0, 20.0);
    EXPECT_EQ(item.beginPoints()[1].centreX, 10.0);
    EXPECT_EQ(item.beginPoints()[1].centreY, 20.0);
    EXPECT_THAT(item.getPoints(false), PointsAre("11,20 10,21 15,25"));
    EXPECT_EQ(item.getPoints(true).front(), std::make_pair(11.0, 20.0));
    EXPECT_EQ(item.getBound().getYHigh(), 25.0);
    EDAOutline const &internal = *item.beginInternalOutlines();
    EXPECT_THAT(internal.getPoints(false), PointsAre("11,21 12,21 12,22"));
    EXPECT_EQ(internal.beginPoints()[1].centreX, 13.0);
    EXPECT_THAT(internal.beginInternalOutlines()->getPoints(false), PointsAre("17,27"));
}

TEST(EDAOutlineMoves, StraightPointsCentreMovesToo) {
    EDAOutline item = outline("1,0");
    item.moveBy(10.0, 20.0);
    EXPECT_EQ(item.beginPoints()->centreX, 10.0);
    EXPECT_EQ(item.beginPoints()->centreY, 20.0);
}

TEST(EDAOutlineMoves, RotationIsAnticlockwiseAboutThePoint) {
    EDAOutline item = outline("1,0 2,0 2,1");
    item.getPoints(true);
    item.getPoints(false);
    item.getBound();
    item.rotate(90.0, 1.0, 0.0);
    EXPECT_THAT(item.getPoints(true), PointsAre("1,0 1,1 0,1"));
    EXPECT_THAT(item.getPoints(false), PointsAre("1,0 1,1 0,1"));
    EXPECT_EQ(item.getBound().getXHigh(), 1.0);
}

TEST(EDAOutlineMoves, RotationLeavesCentresAndInternalOutlines) {
    EDAOutline item = outline("1,0 0,1<5,6", "1,0 2,0 2,1");
    item.rotate(90.0, 0.0, 0.0);
    EXPECT_THAT(item.getPoints(false), PointsAre("0,1 -1,0"));
    EXPECT_EQ(item.beginPoints()[1].centreX, 5.0);
    EXPECT_EQ(item.beginPoints()[1].centreY, 6.0);
    EXPECT_THAT(item.beginInternalOutlines()->getPoints(false), PointsAre("1,0 2,0 2,1"));
}

TEST(EDAOutlineMoves, OneInternalOutlineCanBeRotated) {
    EDAOutline item = outline("1,0 2,0 2,1", "1,0 2,0 2,1");
    item.rotateInternalOutline(0, 90.0, 0.0, 0.0);
    item.rotateInternalOutline(1, 90.0, 0.0, 0.0);
    item.rotateInternalOutline(-1, 90.0, 0.0, 0.0);
    EXPECT_THAT(item.getPoints(true), PointsAre("1,0 2,0 2,1"));
    EXPECT_THAT(item.beginInternalOutlines()->getPoints(true), PointsAre("0,1 0,2 -1,2"));
}
