// Strips in which outlines lie.
#include "model/OutlineStrip.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

using namespace EDA;
using namespace EDA::test;

TEST(OutlineStrip, ADiagonalBarIsNarrow) {
    EXPECT_TRUE(OutlineStrip(outline("0,0 10,10 9.5,10.5 -0.5,0.5")).isNarrow());
    EXPECT_TRUE(OutlineStrip(outline("0,0 10,-5 10,-4.5 0,0.5")).isNarrow());
}

TEST(OutlineStrip, BarsAlongAnAxisAndSquaresAreNot) {
    EXPECT_FALSE(OutlineStrip(outline("0,0 10,0 10,1 0,1")).isNarrow());
    EXPECT_FALSE(OutlineStrip(outline("0,0 10,0 10,10 0,10")).isNarrow());
    EXPECT_FALSE(OutlineStrip(outline("0,0 5,5 0,10 -5,5")).isNarrow());
}

TEST(OutlineStrip, ABarBesideAnotherIsTold) {
    EDAOutline const bar = outline("0,0 10,10 9.5,10.5 -0.5,0.5");
    OutlineStrip const strip(bar);
    EDAOutline near = bar, below = bar, over = bar;
    near.moveBy(0.7, -0.7);
    below.moveBy(0.4, -0.4);
    over.moveBy(-1.0, 1.0);
    EXPECT_TRUE(strip.isBeside(near));
    EXPECT_TRUE(strip.isBeside(over));
    EXPECT_FALSE(strip.isBeside(below));
    EXPECT_FALSE(strip.isBeside(bar));
    EXPECT_FALSE(strip.isBeside(outline("0,10 10,0 10.1,0.1 0.1,10.1"))) << "it crosses the bar";
}

TEST(OutlineStrip, BarsThatShareAnEdgeAreNotBesideEachOther) {
    EDAOutline const bar = outline("1000,1000 1010,1010 1009,1011 999,1001");
    EXPECT_FALSE(OutlineStrip(bar).isBeside(outline("1000,1000 1010,1010 1011,1009 1001,999")));
}

TEST(OutlineStrip, OfPointsInOnePlaceNothingIsKnown) {
    EXPECT_FALSE(OutlineStrip().isKnown());
    EXPECT_FALSE(OutlineStrip(outline("1,1")).isKnown());
    EXPECT_FALSE(OutlineStrip(outline("")).isKnown());
}
