// Caches, bounds, copying: what empties which cache, and what intendedly does not.
#include "host/Geometry/Polygon2D.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

#include <type_traits>

using EDA::EDAOutline;
using EDA::test::addPoints;
using EDA::test::hole;
using EDA::test::outline;
using EDA::test::PointsAre;
using Geometry::Bound2D;

namespace {

// An outline whose caches show three points while four are stored.
class OutdatedOutline : public EDAOutline {
public:
    OutdatedOutline() : EDAOutline(outline("0,0 4,0 4,2")) {
        getPoints(true);
        getPoints(false);
        getBound();
        makeClosed();
    }
};

// A circle of 8 points that do not reach as far as its bound, taken when there were 36.
class OutdatedBound : public EDAOutline {
public:
    OutdatedBound() : EDAOutline(outline("0,0 0.92387953251128674,0.38268343236508977@360")) {
        getBound();
        setModelDimension(10000.0);
    }
};

} // namespace

TEST(EDAOutlineCaches, SecondReadGivesTheSameList) {
    EDAOutline const item = outline("0,0 1,0@360");
    auto const &first = item.getPoints(true);
    auto const *data = first.data();
    EXPECT_EQ(&item.getPoints(true), &first);
    EXPECT_EQ(item.getPoints(true).data(), data);
}

TEST(EDAOutlineCaches, ClosedSquareHasFiveRawAndFourDiscretisedPoints) {
    EDAOutline const item = outline("0,0 1,0 1,1 0,1 0,0");
    EXPECT_EQ(item.getPoints(true).size(), 4u);
    EXPECT_EQ(item.getPoints(false).size(), 5u);
}

TEST(EDAOutlineCaches, RawListHasNoArcsAndNoNeighboursInOnePlace) {
    EDAOutline const item = outline("0,0 1,0@360 1,0@90 2,0 2,0>9,9 3,3<1,2");
    EXPECT_THAT(item.getPoints(false), PointsAre("0,0 1,0 2,0 3,3"));
}

TEST(EDAOutlineCaches, AddedPointShowsInBothListsAndTheBound) {
    EDAOutline item = outline("0,0 4,0 4,2");
    item.getPoints(true);
    item.getPoints(false);
    item.getBound();
    item.addPoint(0, 0.0, 9.0, 0.0);
    EXPECT_EQ(item.getPoints(true).size(), 4u);
    EXPECT_EQ(item.getPoints(false).size(), 4u);
    EXPECT_EQ(item.getBound().getYHigh(), 9.0);
}

TEST(EDAOutlineCaches, DroppedPointLeavesTheCaches) {
    OutdatedOutline item;
    item.addPoint(0, 0.0, 0.0, 0.0); // repeats the closing point
    EXPECT_EQ(item.getPoints(false).size(), 3u);
}

TEST(EDAOutlineCaches, PointForANewInternalOutlineLeavesThisOutlinesCaches) {
    OutdatedOutline item;
    item.addPoint(1, 9.0, 9.0, 0.0);
    EXPECT_EQ(item.getPoints(false).size(), 3u);
}

TEST(EDAOutlineCaches, PointForAnInternalOutlineClearsThatOnesCachesOnly) {
    OutdatedOutline item;
    item.addInternalOutline(hole("1,1 2,1"));
    EDAOutline &internal = *item.beginInternalOutlines();
    internal.getPoints(true);
    internal.getBound();
    item.addPoint(1, 2.0, 5.0, 0.0);
    EXPECT_EQ(item.getPoints(false).size(), 3u);
    EXPECT_EQ(internal.getPoints(true).size(), 3u);
    EXPECT_EQ(internal.getBound().getYHigh(), 5.0);
}

TEST(EDAOutlineCaches, AddedInternalOutlineLeavesTheCaches) {
    OutdatedOutline item;
    item.addInternalOutline(hole("1,1 2,1 2,2"));
    EXPECT_EQ(item.getPoints(false).size(), 3u);
}

TEST(EDAOutlineCaches, MakeClosedLeavesTheCaches) {
    OutdatedOutline const item;
    EXPECT_EQ(item.numPoints(), 4u);
    EXPECT_THAT(item.getPoints(false), PointsAre("0,0 4,0 4,2"));
    EXPECT_EQ(outline("0,0 4,0 4,2 0,0").getPoints(false).size(), 4u);
}

TEST(EDAOutlineCaches, CopyIsFresh) {
    OutdatedOutline const item;
    EDAOutline const copy(item);
    EXPECT_EQ(copy.getPoints(false).size(), 4u);
    EXPECT_EQ(item.getPoints(false).size(), 3u);
}

TEST(EDAOutlineCaches, AssignmentCopiesTheCaches) {
    EDAOutline item = outline("0,0 2,0 4,0 4,2");
    item.getPoints(false);
    item.removeDegeneratePoints();
    EDAOutline target;
    target = item;
    EXPECT_EQ(target.numPoints(), 3u);
    EXPECT_EQ(target.getPoints(false).size(), 4u);
    EXPECT_EQ(target.getPoints(true).size(), 4u);
}

TEST(EDAOutlineCaches, AssignmentCopiesTheBound) {
    OutdatedBound const item;
    EDAOutline assigned = outline("0,0 9,9");
    assigned.getBound();
    assigned = item;
    EXPECT_GT(assigned.getBound().getXHigh(), 0.99);
    EXPECT_LT(EDAOutline(item).getBound().getXHigh(), 0.93) << "a copy is fresh";
    assigned = outline("0,0 1,1");
    EXPECT_EQ(assigned.getBound().getXHigh(), 1.0) << "the bound of the earlier value has gone";
}

TEST(EDAOutlineCaches, MovedOutlineIsFreshAndItsSourceIsEmpty) {
    OutdatedOutline item;
    item.addInternalOutline(hole("1,1 2,1 2,2"));
    EDAOutline const target(std::move(item));
    EXPECT_EQ(target.getPoints(false).size(), 4u);
    EXPECT_EQ(target.numInternalOutlines(), 1);
    EXPECT_TRUE(item.empty()); // NOLINT(bugprone-use-after-move): its state is part of the contract
    EXPECT_EQ(item.numInternalOutlines(), 0);
    EXPECT_TRUE(item.getPoints(false).empty());
    EXPECT_FALSE(item.getBound().isValid(1e-9));
}

TEST(EDAOutlineCaches, MovingAssignmentGivesWhatTheCopyingOneGives) {
    OutdatedOutline item;
    EDAOutline copied;
    copied = item;
    EDAOutline moved;
    moved = std::move(item);
    EXPECT_TRUE(moved == copied);
    EXPECT_EQ(moved.getPoints(false), copied.getPoints(false));
    EXPECT_TRUE(item.empty()); // NOLINT(bugprone-use-after-move): its state is part of the contract
    EXPECT_TRUE(item.getPoints(false).empty());
}

TEST(EDAOutlineCaches, InternalOutlinesOfAMovedOutlineAreFreshAtAnyDepth) {
    for (bool const isAssigned : {false, true}) {
        EDAOutline item = outline("0,0 9,0 9,9", "1,1 2,1 3,1 3,2");
        item.beginInternalOutlines()->addInternalOutline(outline("5,5 6,5 7,5 7,6"));
        EDAOutline &first = *item.beginInternalOutlines(), &second = *first.beginInternalOutlines();
        first.removeDegeneratePoints();
        second.getPoints(false);
        ASSERT_EQ(first.getPoints(true).size(), 4u) << "the list of before";
        EDAOutline assigned;
        if (isAssigned) assigned = std::move(item);
        EDAOutline const target = isAssigned ? EDAOutline(std::move(assigned)) : EDAOutline(std::move(item));
        EDAOutline const &internal = *target.beginInternalOutlines();
        EXPECT_THAT(internal.getPoints(true), PointsAre("1,1 3,1 3,2"));
        EXPECT_THAT(internal.beginInternalOutlines()->getPoints(true), PointsAre("5,5 7,5 7,6"));
    }
}

TEST(EDAOutlineCaches, InternalOutlinesAreFreshAfterAMovingAssignmentAsAfterACopyingOne) {
    EDAOutline item = outline("0,0 9,0 9,9", "1,1 2,1 3,1 3,2");
    item.beginInternalOutlines()->removeDegeneratePoints();
    EDAOutline copied, moved;
    copied = item;
    moved = std::move(item);
    EXPECT_THAT(copied.beginInternalOutlines()->getPoints(true), PointsAre("1,1 3,1 3,2"));
    EXPECT_THAT(moved.beginInternalOutlines()->getPoints(true), PointsAre("1,1 3,1 3,2"));
}

TEST(EDAOutlineCaches, GrowingListOfOutlinesMovesThem) {
    EXPECT_TRUE(std::is_nothrow_move_constructible<EDAOutline>::value);
    EXPECT_TRUE(std::has_virtual_destructor<EDAOutline>::value);
    EXPECT_TRUE(std::has_virtual_destructor<EDAOutline::EDAPoint>::value);
}

TEST(EDAOutlineCopies, AllValuesAreCopied) {
    EDAOutline item = hole("0,0 1,0@360");
    item.addInternalOutline(outline("0,0 1,0 1,1"));
    item.setName("n");
    item.setMaterial("m");
    item.setZDimensions(1.0, 2.0);
    item.setModelDimension(10000.0);
    EDAOutline assigned;
    assigned = item;
    EDAOutline moved(EDAOutline{item});
    for (EDAOutline const &copy : {EDAOutline(item), assigned, moved}) {
        double zLow = 0.0;
        double zHigh = 0.0;
        copy.getZDimensions(zLow, zHigh);
        EXPECT_TRUE(copy == item);
        EXPECT_TRUE(copy.isHole());
        EXPECT_EQ(copy.getName(), "n");
        EXPECT_EQ(copy.getMaterial(), "m");
        EXPECT_EQ(zLow, 1.0);
        EXPECT_EQ(zHigh, 2.0);
        EXPECT_EQ(copy.numInternalOutlines(), 1);
        EXPECT_EQ(copy.getPoints(true).size(), 8u) << "the model dimension asks for 45 degree steps";
    }
}

TEST(EDAOutlineCopies, CopyIsDeep) {
    EDAOutline const item = outline("0,0 9,0 9,9", "1,1 2,1 2,2");
    EDAOutline copy(item);
    copy.addPoint(1, 5.0, 5.0, 0.0);
    EXPECT_EQ(copy.beginInternalOutlines()->numPoints(), 4u);
    EXPECT_EQ(item.beginInternalOutlines()->numPoints(), 3u);
}

TEST(EDAOutlineCopies, OutlineCanTakeTheValueOfItsOwnInternalOutline) {
    EDAOutline copied = outline("0,0 9,0 9,9", "1,1 2,1 2,2");
    copied.beginInternalOutlines()->addInternalOutline(outline("5,5 6,5 6,6"));
    EDAOutline moved(copied);
    copied = *copied.beginInternalOutlines();
    moved = std::move(*moved.beginInternalOutlines());
    for (EDAOutline const &item : {copied, moved}) {
        EXPECT_THAT(item.getPoints(false), PointsAre("1,1 2,1 2,2"));
        ASSERT_EQ(item.numInternalOutlines(), 1);
        EXPECT_THAT(item.beginInternalOutlines()->getPoints(false), PointsAre("5,5 6,5 6,6"));
    }
}

TEST(EDAOutlineCopies, AssignmentToItselfKeepsEverything) {
    OutdatedOutline outdated;
    EDAOutline &item = outdated;
    EDAOutline &same = outdated;
    item = same;
    EXPECT_EQ(item.numPoints(), 4u);
    item = std::move(same);
    EXPECT_EQ(item.numPoints(), 4u);
    EXPECT_EQ(item.getPoints(false).size(), 3u);
}

TEST(EDAOutlineReset, TakesPointsAndOnlyThen) {
    EDAOutline item = hole("0,0 4,0 4,2");
    item.addInternalOutline(outline("1,1 2,1 2,2"));
    item.setName("n");
    item.getBound();
    EDAOutline other = outline("7,7 8,7 8,8", "5,5 6,5 6,6");
    other.setName("other");
    item.resetOutline(other, false);
    EXPECT_THAT(item.getPoints(true), PointsAre("7,7 8,7 8,8"));
    EXPECT_EQ(item.getBound().getXLow(), 7.0);
    EXPECT_TRUE(item.isHole());
    EXPECT_EQ(item.getName(), "n");
    EXPECT_THAT(item.beginInternalOutlines()->getPoints(true), PointsAre("1,1 2,1 2,2"));
}

TEST(EDAOutlineReset, WithInternalTakesInternalOutlinesToo) {
    EDAOutline item = outline("0,0 4,0 4,2", "1,1 2,1 2,2");
    item.resetOutline(outline("7,7 8,7 8,8", "5,5 6,5 6,6"), true);
    ASSERT_EQ(item.numInternalOutlines(), 1);
    EXPECT_THAT(item.beginInternalOutlines()->getPoints(true), PointsAre("5,5 6,5 6,6"));
}

TEST(EDAOutlineReset, KeepsMaterialHeightsAndModelDimension) {
    EDAOutline item = outline("0,0 4,0 4,2");
    item.setMaterial("m");
    item.setZDimensions(1.0, 2.0);
    item.setModelDimension(10000.0);
    EDAOutline other = outline("0,0 1,0@360");
    other.setMaterial("other");
    other.setZDimensions(7.0, 8.0);
    item.resetOutline(other, true);
    double zLow = 0.0;
    double zHigh = 0.0;
    item.getZDimensions(zLow, zHigh);
    EXPECT_EQ(item.getMaterial(), "m");
    EXPECT_EQ(zLow, 1.0);
    EXPECT_EQ(zHigh, 2.0);
    EXPECT_EQ(item.getPoints(true).size(), 8u) << "the model dimension asks for 45 degree steps";
}

TEST(EDAOutlineReset, FromItselfEmptiesIt) {
    EDAOutline item = outline("0,0 4,0 4,2", "1,1 2,1 2,2");
    item.getPoints(true);
    item.resetOutline(item, false);
    EXPECT_TRUE(item.empty());
    EXPECT_TRUE(item.getPoints(true).empty());
    EXPECT_EQ(item.numInternalOutlines(), 1);
    item.resetOutline(item, true);
    EXPECT_EQ(item.numInternalOutlines(), 0);
}

TEST(EDAOutlineReset, FromItsOwnInternalOutlineTakesThatOne) {
    EDAOutline item = outline("0,0 4,0 4,2", "1,1 2,1 2,2");
    item.beginInternalOutlines()->addInternalOutline(outline("5,5 6,5 6,6"));
    item.resetOutline(*item.beginInternalOutlines(), true);
    EXPECT_THAT(item.getPoints(true), PointsAre("1,1 2,1 2,2"));
    ASSERT_EQ(item.numInternalOutlines(), 1);
    EXPECT_THAT(item.beginInternalOutlines()->getPoints(true), PointsAre("5,5 6,5 6,6"));
}

TEST(EDAOutlineModelDimension, ChangeWithinTheToleranceKeepsTheDiscretisedList) {
    EDAOutline const item = outline("0,0 1,0@360");
    item.setModelDimension(10000.0);
    auto const *data = item.getPoints(true).data();
    ASSERT_EQ(item.getPoints(true).size(), 8u);
    item.setModelDimension(10000.0 + 0.9e-6);
    EXPECT_EQ(item.getPoints(true).data(), data);
    EXPECT_EQ(item.getPoints(true).size(), 8u);
}

TEST(EDAOutlineModelDimension, ChangeWithinTheToleranceIsNotStoredEither) {
    EDAOutline const item = outline("0,0 1,0@360");
    item.setModelDimension(1000.0);
    item.setModelDimension(1000.0 + 0.9e-6);
    EXPECT_EQ(item.getPoints(true).size(), 12u) << "just above 1000 it would be 8";
    item.setModelDimension(1000.0 + 1.1e-6);
    EXPECT_EQ(item.getPoints(true).size(), 8u);
}

TEST(EDAOutlineModelDimension, ChangeClearsTheDiscretisedListOnly) {
    OutdatedBound item;
    EXPECT_EQ(item.getPoints(true).size(), 8u);
    EXPECT_GT(item.getBound().getXHigh(), 0.99) << "the bound is still that of 36 points";
    OutdatedOutline const closed;
    closed.setModelDimension(1.0);
    EXPECT_EQ(closed.getPoints(false).size(), 3u) << "the raw list is still the earlier one";
}

TEST(EDAOutlineModelDimension, ReachesInternalOutlinesAtAnyDepth) {
    EDAOutline item = outline("0,0 1,0@360", "0,0 1,0@360");
    item.beginInternalOutlines()->addInternalOutline(outline("0,0 1,0@360"));
    item.setModelDimension(10000.0);
    EDAOutline const &first = *item.beginInternalOutlines();
    EXPECT_EQ(first.getPoints(true).size(), 8u);
    EXPECT_EQ(first.beginInternalOutlines()->getPoints(true).size(), 8u);
}

TEST(EDAOutlineModelDimension, NewInternalOutlineStaysWithoutUntilTheNextChange) {
    EDAOutline item = outline("0,0 1,0@360");
    item.setModelDimension(10000.0);
    addPoints(item, 1, "0,0");
    addPoints(item, 1, "1,0@360");
    EDAOutline const &internal = *item.beginInternalOutlines();
    EXPECT_EQ(internal.getPoints(true).size(), 36u);
    item.setModelDimension(10000.0);
    EXPECT_EQ(internal.getPoints(true).size(), 36u);
    item.setModelDimension(10001.0);
    EXPECT_EQ(internal.getPoints(true).size(), 8u);
}

TEST(EDAOutlineBounds, BoundIsThatOfTheDiscretisedPoints) {
    EDAOutline const item = outline("5,5 7,5@360");
    EXPECT_NEAR(item.getBound().getXLow(), 3.0, 1e-12);
    EXPECT_NEAR(item.getBound().getXHigh(), 7.0, 1e-12);
    EXPECT_NEAR(item.getBound().getYLow(), 3.0, 1e-12);
    EXPECT_NEAR(item.getBound().getYHigh(), 7.0, 1e-12);
}

TEST(EDAOutlineBounds, OverallBoundGoesOneLevelDown) {
    EDAOutline item = outline("0,0 4,0 4,2");
    EDAOutline island = outline("-1,0 5,0 5,1"); // no hole, counts all the same
    island.addInternalOutline(hole("0,0 0,100 1,1"));
    item.addInternalOutline(island);
    Bound2D bound;
    item.getOverallBound(bound);
    EXPECT_EQ(bound.getXLow(), -1.0);
    EXPECT_EQ(bound.getXHigh(), 5.0);
    EXPECT_EQ(bound.getYHigh(), 2.0);
}

TEST(EDAOutlineBounds, OverallBoundMovesWhatTheBoundHeldBefore) {
    Bound2D bound(-1.0, -1.0, 0.0, 0.0);
    outline("0,0 4,0 4,2").getOverallBound(10.0, 100.0, bound);
    EXPECT_EQ(bound.getXLow(), 9.0);
    EXPECT_EQ(bound.getXHigh(), 14.0);
    EXPECT_EQ(bound.getYLow(), 99.0);
    EXPECT_EQ(bound.getYHigh(), 102.0);
}

TEST(EDAOutlineBounds, EmptyOutlineAddsNothing) {
    Bound2D bound;
    EDAOutline().getOverallBound(1.0, 1.0, bound);
    EXPECT_FALSE(bound.isValid(1e-9));
}

TEST(EDAOutlinePolygon, MaterialRunsAnticlockwiseAndHolesClockwise) {
    Geometry::Polygon2D outer;
    outline("0,0 0,2 4,2 4,0").convertToPolygon(outer);
    Geometry::Polygon2D inner;
    hole("0,0 4,0 4,2 0,2").convertToPolygon(inner);
    EXPECT_EQ(outer.getSignedArea(), 8.0);
    EXPECT_EQ(inner.getSignedArea(), -8.0);
    EXPECT_EQ(outer.getBoundingBox().getXHigh(), 4.0);
}

TEST(EDAOutlinePolygon, PointsAreAppendedAndInternalOutlinesLeftOut) {
    Geometry::Polygon2D polygon({{9.0, 9.0}});
    outline("0,0 4,0 4,2 0,2 0,0", "1,1 2,1 2,2").convertToPolygon(polygon);
    EXPECT_EQ(polygon.numPoints(), 5u);
    EXPECT_EQ(polygon.beginPoints()->x, 9.0);
}
