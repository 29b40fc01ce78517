// Outlines from bad files: numbers that are huge or not finite, and very long lists.
#include "host/Geometry/Polygon2D.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

#include <ctime>
#include <limits>

using EDA::EDAOutline;
using EDA::test::outline;

namespace {

constexpr int million = 1000000;
double const infinity = std::numeric_limits<double>::infinity();
double const notANumber = std::numeric_limits<double>::quiet_NaN();

// Processor time, as other programs may keep the machine busy.
double secondsSince(std::clock_t start) { return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC; }

// Calls every operation; the values do not matter, only that all of them end.
void useEverything(EDAOutline item) {
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
    double d = 0.0;
    Geometry::Polygon2D polygon;
    Geometry::Bound2D bound;
    std::vector<EDAOutline> cutIns;
    EDAOutline const square = outline("0,0 1,0 1,1 0,1");
    item.addInternalOutline(item);
    for (auto &internal : {item, square})
        item.addInternalOutline(internal);
    item.setModelDimension(5.0);
    item.getPoints(false);
    item.convertToPolygon(polygon);
    item.getOverallBound(1.0, 1.0, bound);
    item.isRectangle(a, b, c, d);
    EDAOutline(*item.beginInternalOutlines()).isCylinder(a, b, c, 3, 1e-6);
    item.isBadOutline();
    item.needsHolesCutting();
    item.overlaps(square);
    item.overlapsHoles(square);
    item.enclosesOutline(square);
    square.enclosesOutline(item);
    item.hasCutIns();
    item.makeClosed();
    item.moveBy(1e300, -1e300);
    item.rotate(1e300, 1e300, 1e300);
    item.rotate(notANumber, notANumber, infinity);
    item.removeDegeneratePoints();
    item.removeCutIns(cutIns);
    item.getArea();
}

} // namespace

TEST(EDAOutlineHostile, HugeAnglesGiveNoMoreThan360Segments) {
    for (double angle : {3600.0, 3610.0, 1e12, -1e12, 1e300, -1e300}) {
        EDAOutline item;
        item.addPoint(0, 0.0, 0.0, 0.0);
        item.addPoint(0, 1.0, 0.0, angle);
        EXPECT_LE(item.getPoints(true).size(), 361u) << angle;
        useEverything(item);
    }
}

TEST(EDAOutlineHostile, AngleThatIsNotFiniteIsCutIntoTwoSegments) {
    for (double angle : {infinity, -infinity}) {
        EDAOutline item;
        item.addPoint(0, 0.0, 0.0, 0.0);
        item.addPoint(0, 1.0, 0.0, angle);
        EXPECT_EQ(item.getPoints(true).size(), 3u) << angle;
        useEverything(item);
    }
    EDAOutline item;
    item.addPoint(0, 0.0, 0.0, 0.0);
    item.addPoint(0, 1.0, 0.0, notANumber);
    EXPECT_EQ(item.getPoints(true).size(), 2u) << "an angle that is no number is no arc";
}

TEST(EDAOutlineHostile, EveryMixOfBadCoordinatesIsSurvived) {
    double const values[] = {0.0, 1.0, -1e300, 1.7e308, infinity, -infinity, notANumber, 5e-324};
    for (double first : values)
        for (double second : values)
            for (double third : values) {
                EDAOutline item;
                item.addPoint(0, first, second, third);
                item.addPoint(0, second, third, 0.0);
                item.addPoint(0, third, first, first, second, true);
                item.addPoint(0, 0.0, first, 360.0);
                item.addPoint(0, second, 1.0, third);
                item.addPoint(0, first, third, second, 1.0, false);
                useEverything(item);
            }
}

TEST(EDAOutlineHostile, PointsThatAreNotFiniteStayOutOfTheBound) {
    EDAOutline item;
    item.addPoint(0, notANumber, 1.0, 0.0);
    EXPECT_FALSE(item.getBound().isValid(1e-9));
    item.addPoint(0, 2.0, infinity, 0.0);
    item.addPoint(0, 3.0, 4.0, 0.0);
    EXPECT_EQ(item.getBound().getXLow(), 3.0);
    EXPECT_EQ(item.getBound().getXHigh(), 3.0);
}

TEST(EDAOutlineHostile, ModelDimensionThatIsNoNumberIsIgnored) {
    EDAOutline const item = outline("0,0 1,0@360");
    item.setModelDimension(notANumber);
    EXPECT_EQ(item.getPoints(true).size(), 36u);
    item.setModelDimension(infinity);
    EXPECT_EQ(item.getPoints(true).size(), 8u);
}

TEST(EDAOutlineHostile, MillionCollinearPointsAreCleanedQuickly) {
    std::clock_t const start = std::clock();
    EDAOutline item;
    item.addPoint(0, 0.0, 0.0, 90.0);
    for (int i = 1; i <= million; ++i)
        item.addPoint(0, i, 0.0, 0.0);
    item.addPoint(0, 5.0, 5.0, 0.0);
    EXPECT_EQ(item.getPoints(true).size(), 3u);
    item.removeDegeneratePoints();
    EXPECT_EQ(item.numPoints(), 3u);
    EXPECT_LT(secondsSince(start), 10.0);
}

TEST(EDAOutlineHostile, CutInsOfManyPointsAreFoundQuickly) {
    std::clock_t const start = std::clock();
    EDAOutline line; // all in one column
    EDAOutline comb; // the same two places again and again, and some in between
    EDAOutline far;  // one column again, where the grid of doubles is wider than the tolerance
    EDAOutline last; // and where a coordinate divided by the tolerance has no number any more
    EDAOutline near; // neighbours closer together than the tolerance
    for (int i = 0; i < 300000; ++i) {
        line.addPoint(0, 0.0, i, 0.0);
        comb.addPoint(0, i % 2, i % 4 < 2 ? 0.0 : i, 0.0);
        far.addPoint(0, 20000.0, 20000.0 + 1e-6 * i, 0.0);
        last.addPoint(0, 1e300, 1e300 + 1e290 * i, 0.0);
        near.addPoint(0, 0.9e-12 * (7 * i % 1000), 2.1e-12 * (i / 1000), 0.0);
    }
    std::vector<EDAOutline> cutIns;
    EXPECT_FALSE(line.hasCutIns());
    EXPECT_FALSE(line.removeCutIns(cutIns));
    EXPECT_FALSE(far.hasCutIns());
    EXPECT_FALSE(last.hasCutIns());
    EXPECT_TRUE(comb.removeCutIns(cutIns));
    EXPECT_TRUE(near.hasCutIns());
    EXPECT_TRUE(near.removeCutIns(cutIns));
    EXPECT_LT(secondsSince(start), 20.0);
}

TEST(EDAOutlineHostile, ManyHolesAreCheckedQuickly) {
    std::clock_t const start = std::clock();
    EDAOutline item = outline("-1,-1 2000,-1 2000,60 -1,60");
    int hole = 0;
    for (int x = 0; x < 1000; ++x)
        for (int y = 0; y < 20; ++y, ++hole)
            for (int corner = 0; corner < 3; ++corner)
                item.addPoint(hole + 1, 2 * x + (corner == 1), 2 * y + (corner == 2), 0.0);
    EXPECT_EQ(item.numInternalOutlines(), 20000);
    EXPECT_FALSE(item.needsHolesCutting());
    EXPECT_LT(secondsSince(start), 10.0);
}
