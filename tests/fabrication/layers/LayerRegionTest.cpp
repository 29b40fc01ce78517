// Regions of layer files.
#include "LayerScript.h"

#include <gtest/gtest.h>

namespace {

using namespace LayerTests;

TEST(LayerRegions, AContourIsOneObject) {
    const Reading read = readBody("G36*X0Y0D02*X1000D01*Y1000D01*X0Y0D01*G37*");
    EXPECT_EQ(read.lines(), Lines{"region 0,0 1,0 1,1 0,0"});
    EXPECT_EQ(read.facts.numRegions, 1u);
    EXPECT_EQ(read.facts.numStrokes, 0u);
    EXPECT_TRUE(read.notes.list().empty());
    EXPECT_NEAR(read.facts.bound.getXHigh(), 1.0, 1e-12);
}

TEST(LayerRegions, AMoveStartsTheNextContour) {
    EXPECT_EQ(readBody("G36*X0Y0D02*X1000D01*Y1000D01*X0Y0D01*X5000Y0D02*X6000D01*Y1000D01*X5000Y0D01*G37*")
                  .lines(),
              (Lines{"region 0,0 1,0 1,1 0,0", "region 5,0 6,0 6,1 5,0"}));
}

TEST(LayerRegions, ArcsAreKept) {
    const Reading read = readBody("G36*X1000Y0D02*G03X1000Y0I-1000J0D01*G01*G37*");
    EXPECT_EQ(read.lines(), Lines{"region 1,0 ccw 1,0 around 0,0"});
    EXPECT_EQ(read.facts.numArcs, 1u);
}

TEST(LayerRegions, AContourMayStartWhereTheCurrentPointIs) {
    EXPECT_EQ(readBody("X0Y0D02*G36*X1000D01*Y1000D01*X0Y0D01*G37*").lines(),
              Lines{"region 0,0 1,0 1,1 0,0"});
}

TEST(LayerRegions, OpenContoursAreTold) {
    const Reading read = readBody("G36*X0Y0D02*X1000D01*Y1000D01*G37*");
    EXPECT_EQ(read.lines(), Lines{"region 0,0 1,0 1,1"});
    EXPECT_EQ(read.count(NoteKind::Normalised, "open contours"), 1u);
}

TEST(LayerRegions, ContoursWithoutAreaAreDroppedAndTold) {
    const Reading read = readBody("G36*X0Y0D02*X1000D01*X2000D01*X0D01*X5000Y0D02*D01*G37*");
    EXPECT_EQ(read.lines(), Lines{});
    EXPECT_EQ(read.count(NoteKind::Normalised, "contours of regions without area"), 2u);
}

TEST(LayerRegions, FlashesInsideAreLeftOutAndTold) {
    const Reading read = readBody("G36*X0Y0D02*X1000D01*Y1000D01*X0Y0D01*X3000D03*G37*");
    EXPECT_EQ(read.lines(), Lines{"region 0,0 1,0 1,1 0,0"});
    EXPECT_EQ(read.count(NoteKind::LeftOut, "flashes inside of regions"), 1u);
}

TEST(LayerRegions, LinesFollowAfterTheRegion) {
    EXPECT_EQ(readBody("G36*X0Y0D02*X1000D01*Y1000D01*X0Y0D01*G37*X1000D01*").lines().back(),
              "line C0.1 0,0 1,0");
}

TEST(LayerRegions, ClearRegionsAreClear) {
    EXPECT_EQ(readBody("%LPC*%G36*X0Y0D02*X1000D01*Y1000D01*X0Y0D01*G37*").lines(),
              Lines{"-region 0,0 1,0 1,1 0,0"});
}

TEST(LayerRegions, ARegionThatNeverEndsIsDrawn) {
    EXPECT_EQ(readBody("G36*X0Y0D02*X1000D01*Y1000D01*X0Y0D01*").lines().size(), 1u);
}

TEST(LayerRegions, NoApertureIsNeeded) {
    const Reading read = readAsItIs("%FSLAX23Y23*%%MOMM*%G36*X0Y0D02*X1000D01*Y1000D01*X0Y0D01*G37*M02*");
    EXPECT_EQ(read.lines().size(), 1u);
    EXPECT_TRUE(read.notes.list().empty());
}

} // namespace
