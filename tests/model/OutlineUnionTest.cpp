// Outlines united with others.
#include "host/Geometry/PolygonPainter.h"
#include "support/CancelAfter.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

#include <limits>

using namespace EDA;
using namespace EDA::test;

namespace {

double netArea(EDAOutline const &outline) {
    double area = outline.getArea();
    for (auto hole = outline.beginInternalOutlines(); hole != outline.endInternalOutlines(); ++hole)
        area -= hole->isHole() ? hole->getArea() : -hole->getArea();
    return area;
}

double netArea(EDAOutline const &outline, std::vector<EDAOutline> const &extra) {
    double area = netArea(outline);
    for (EDAOutline const &piece : extra)
        area += netArea(piece);
    return area;
}

} // namespace

TEST(OutlineUnion, TwoSquaresThatOverlapBecomeOne) {
    EDAOutline square = outline("0,0 2,0 2,2 0,2");
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(square.mergeOutline(outline("1,1 3,1 3,3 1,3"), extra));
    EXPECT_THAT(storedPoints(square), PointsAre("0,0 2,0 2,1 3,1 3,3 1,3 1,2 0,2"));
    EXPECT_TRUE(extra.empty());
}

TEST(OutlineUnion, ASecondPieceGoesToTheExtras) {
    EDAOutline square = outline("0,0 2,0 2,2 0,2");
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(square.mergeOutline(outline("5,1 6,1 6,2 5,2"), extra));
    EXPECT_THAT(storedPoints(square), PointsAre("0,0 2,0 2,2 0,2"));
    ASSERT_EQ(extra.size(), 1U);
    EXPECT_THAT(storedPoints(extra[0]), PointsAre("5,1 6,1 6,2 5,2"));
    EXPECT_FALSE(extra[0].isHole());
}

TEST(OutlineUnion, NameMaterialHoleFlagAndHeightsStay) {
    EDAOutline square = outline("0,0 2,0 2,2 0,2");
    square.setName("PAD");
    square.setMaterial("Copper");
    square.setHole(true);
    square.setZDimensions(1.0, 2.0);
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(square.mergeOutline(outline("5,1 6,1 6,2 5,2"), extra));
    double low = 0.0, high = 0.0;
    square.getZDimensions(low, high);
    EXPECT_EQ(square.getName(), "PAD");
    EXPECT_EQ(square.getMaterial(), "Copper");
    EXPECT_TRUE(square.isHole());
    EXPECT_EQ(low, 1.0);
    EXPECT_EQ(high, 2.0);
    ASSERT_EQ(extra.size(), 1U);
    EXPECT_EQ(extra[0].getName(), "");
    EXPECT_EQ(extra[0].getMaterial(), "");
}

TEST(OutlineUnion, ArcsBecomeStraightSegments) {
    EDAOutline disc = outline("0,0 1,0@360");
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(disc.mergeOutline(outline("0,0 3,0 3,3 0,3"), extra));
    EXPECT_EQ(disc.getPoints(false).size(), disc.getPoints(true).size());
    for (auto point = disc.beginPoints(); point != disc.endPoints(); ++point)
        EXPECT_FALSE(point->isArc());
}

TEST(OutlineUnion, ARingAroundNothingHasAHole) {
    EDAOutline u = outline("0,0 10,0 10,10 8,10 8,2 2,2 2,10 0,10");
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(u.mergeOutline(outline("0,8 10,8 10,10 0,10"), extra));
    ASSERT_EQ(u.numInternalOutlines(), 1);
    EXPECT_TRUE(u.beginInternalOutlines()->isHole());
    EXPECT_DOUBLE_EQ(u.beginInternalOutlines()->getArea(), 36.0);
}

TEST(OutlineUnion, CrumbsAreDroppedButTheFirstPieceIsKeptHoweverSmall) {
    EDAOutline crumb = outline("0,0 1e-5,0 1e-5,1e-5 0,1e-5");
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(crumb.mergeOutline(outline("5,5 5.00001,5 5.00001,5.00001 5,5.00001"), extra));
    EXPECT_EQ(crumb.numPoints(), 4U);
    EXPECT_TRUE(extra.empty());
}

TEST(OutlineUnion, AHoleGoesToTheExtraThatEnclosesIt) {
    EDAOutline square = outline("0,0 2,0 2,2 0,2");
    EDAOutline const ring = outline("10,0 20,0 20,10 10,10", "12,2 18,2 18,8 12,8");
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(square.mergeOutline(ring, extra));
    EXPECT_EQ(square.numInternalOutlines(), 0);
    ASSERT_EQ(extra.size(), 1U);
    EXPECT_EQ(extra[0].numInternalOutlines(), 1);
}

TEST(OutlineUnion, AHoleOfAPieceInsideAHoleGoesToTheFirstOutlineAroundIt) {
    EDAOutline frame = outline("0,0 100,0 100,100 0,100", "10,10 90,10 90,90 10,90");
    EDAOutline const ring = outline("20,20 80,20 80,80 20,80", "30,30 70,30 70,70 30,70");
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(frame.mergeOutline(ring, extra));
    ASSERT_EQ(extra.size(), 1U);
    EXPECT_EQ(frame.numInternalOutlines(), 2);
    EXPECT_EQ(extra[0].numInternalOutlines(), 0);
}

TEST(OutlineUnion, HolesMayGoToExtrasThatTheCallerHadBefore) {
    EDAOutline square = outline("0,0 2,0 2,2 0,2");
    std::vector<EDAOutline> extra{outline("9,-1 21,-1 21,11 9,11")};
    EXPECT_TRUE(square.mergeOutline(outline("10,0 20,0 20,10 10,10", "12,2 18,2 18,8 12,8"), extra));
    ASSERT_EQ(extra.size(), 2U);
    EXPECT_EQ(extra[0].numInternalOutlines(), 1);
    EXPECT_EQ(extra[1].numInternalOutlines(), 0);
}

TEST(OutlineUnion, AHoleAcrossTheEdgeAddsNothingOutside) {
    EDAOutline pad = outline("0,0 4,0 4,4 0,4", "3,1 6,1 6,3 3,3");
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(pad.mergeOutline(outline("0,0 1,0 1,1 0,1"), extra));
    EXPECT_DOUBLE_EQ(netArea(pad, extra), 14.0);
}

TEST(OutlineUnion, TwoHolesThatOverlapBringNothingBack) {
    EDAOutline pad = outline("0,0 10,0 10,10 0,10", "1,1 5,1 5,5 1,5");
    pad.addInternalOutline(hole("3,3 8,3 8,8 3,8"));
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(pad.mergeOutline(outline("0,0 1,0 1,1 0,1"), extra));
    EXPECT_DOUBLE_EQ(netArea(pad, extra), 100.0 - (16.0 + 25.0 - 4.0));
}

TEST(OutlineUnion, AnInternalSolidAfterAHoleIsAddedInItsPlace) {
    EDAOutline pad = outline("0,0 10,0 10,10 0,10", "1,1 9,1 9,9 1,9");
    pad.addInternalOutline(outline("4,4 6,4 6,6 4,6"));
    std::vector<EDAOutline> extra;
    EXPECT_TRUE(pad.mergeOutline(outline("0,0 1,0 1,1 0,1"), extra));
    EXPECT_DOUBLE_EQ(netArea(pad, extra), 40.0);
}

TEST(OutlineUnion, ACoordinateThatIsNoNumberLeavesBothAsTheyWere) {
    EDAOutline square = outline("0,0 2,0 2,2 0,2");
    EDAOutline bad = outline("1,1 3,1 3,3");
    bad.addPoint(0, std::numeric_limits<double>::quiet_NaN(), 1.0, 0.0);
    std::vector<EDAOutline> extra;
    EXPECT_FALSE(square.mergeOutline(bad, extra));
    EXPECT_THAT(storedPoints(square), PointsAre("0,0 2,0 2,2 0,2"));
}

TEST(OutlineUnion, ACancelLeavesTheRestOut) {
    EDAOutline square = outline("0,0 2,0 2,2 0,2");
    EDAOutline second = outline("1,0 4,0 4,2 1,2"), third = outline("3,0 6,0 6,2 3,2");
    std::vector<EDAOutline> extra;
    std::size_t count = 10;
    TestSupport::CancelAfter progress(0);
    EXPECT_TRUE(square.mergeOutlines({&second, &third}, extra, &progress, count));
    EXPECT_DOUBLE_EQ(square.getArea(), 8.0);
    EXPECT_EQ(count, 11U);
    EXPECT_EQ(progress.values, std::vector<int>{11});
}

TEST(OutlineUnion, AnOutlineThatIsNotFiniteIsLeftOutOfMany) {
    EDAOutline square = outline("0,0 2,0 2,2 0,2");
    EDAOutline bad = outline("1,1 3,1 3,3"), good = outline("1,0 4,0 4,2 1,2");
    bad.addPoint(0, std::numeric_limits<double>::infinity(), 1.0, 0.0);
    std::vector<EDAOutline> extra;
    std::size_t count = 0;
    EXPECT_TRUE(square.mergeOutlines({&bad, &good}, extra, nullptr, count));
    EXPECT_DOUBLE_EQ(square.getArea(), 8.0);
    EXPECT_TRUE(extra.empty());
}

TEST(OutlineUnion, AHoleGoesToTheFirstOfManyExtrasAroundIt) {
    EDAOutline square = outline("0,0 1,0 1,1 0,1");
    std::vector<EDAOutline> extra;
    for (int i = 0; i < 50; ++i) {
        EDAOutline frame = outline("-1,-1 1,-1 1,1 -1,1");
        frame.moveBy(100.0 + 7.0 * i, 100.0);
        extra.push_back(frame);
        extra.push_back(frame); // only the first of two gets it
    }
    EDAOutline other = outline("1,0 2,0 2,1 1,1");
    for (int i = 0; i < 50; ++i) {
        EDAOutline ring = outline("-0.8,-0.8 0.8,-0.8 0.8,0.8 -0.8,0.8");
        ring.moveBy(100.0 + 7.0 * i, 100.0);
        other.addInternalOutline(ring);
        EDAOutline inside = hole("-0.5,-0.5 0.5,-0.5 0.5,0.5 -0.5,0.5");
        inside.moveBy(100.0 + 7.0 * i, 100.0);
        other.addInternalOutline(inside);
    }
    EXPECT_TRUE(square.mergeOutline(other, extra));
    ASSERT_EQ(extra.size(), 150U);
    for (std::size_t i = 0; i < extra.size(); ++i)
        EXPECT_EQ(extra[i].numInternalOutlines(), i < 100 && i % 2 == 0 ? 1 : 0) << i;
}

// Holes may wait for others, but no solid behind a hole may lose anything to it.
TEST(OutlineUnion, SolidsAndHolesCountInTheirOrder) {
    Random random(20261121);
    for (int times = 0; times < 100; ++times) {
        EDAOutline whole = outline("0,0 40,0 40,40 0,40");
        Geometry::PolygonPainter painter;
        auto const contourOf = [](EDAOutline const &each) {
            std::vector<Geometry::Clip::Contour> contours(1);
            for (auto const &[x, y] : each.getPoints(true))
                contours.front().points.emplace_back(x, y);
            return contours;
        };
        painter.paint(contourOf(whole));
        for (int i = 0; i < 40; ++i) {
            EDAOutline part(random.below(2) == 0);
            int const x = random.below(60), y = random.below(60), w = 1 + random.below(12),
                      h = 1 + random.below(12);
            part.addPoint(0, x, y, 0.0);
            part.addPoint(0, x + w, y, 0.0);
            part.addPoint(0, x + w, y + h, 0.0);
            part.addPoint(0, x, y + h, 0.0);
            whole.addInternalOutline(part);
            part.isHole() ? painter.erase(contourOf(part)) : painter.paint(contourOf(part));
        }
        double expected = 0.0;
        for (auto const &contour : painter.finish()) {
            EDAOutline each;
            for (auto const &point : contour.points)
                each.addPoint(0, point.x, point.y, 0.0);
            expected += contour.hole ? -each.getArea() : each.getArea();
        }
        std::vector<EDAOutline> extra;
        EXPECT_TRUE(whole.mergeOutline(outline("100,100 101,100 101,101 100,101"), extra));
        EXPECT_NEAR(netArea(whole, extra), expected + 1.0, 1e-9) << times;
    }
}
