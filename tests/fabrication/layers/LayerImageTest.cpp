// Transforms of the whole image, as old files have them.
#include "LayerScript.h"

#include <gtest/gtest.h>

namespace {

using namespace LayerTests;

const std::string line = "X1000Y0D02*X1000Y2000D01*";

TEST(LayerImages, AxesMayBeSwapped) {
    EXPECT_EQ(readBody("%ASAYBX*%" + line).lines(), Lines{"line C0.1 0,1 2,1"});
    EXPECT_EQ(readBody("%ASAXBY*%" + line).lines(), Lines{"line C0.1 1,0 1,2"});
}

TEST(LayerImages, AxesMayBeMirrored) {
    EXPECT_EQ(readBody("%MIA1B0*%" + line).lines(), Lines{"line C0.1 -1,0 -1,2"});
    EXPECT_EQ(readBody("%MIB1*%" + line).lines(), Lines{"line C0.1 1,0 1,-2"});
    EXPECT_EQ(readBody("%MIA0B0*%" + line).lines(), Lines{"line C0.1 1,0 1,2"});
}

TEST(LayerImages, TheImageMayBeMoved) {
    EXPECT_EQ(readBody("%OFA10B-5*%" + line).lines(), Lines{"line C0.1 11,-5 11,-3"});
    EXPECT_EQ(readAsItIs("%FSLAX24Y24*%%MOIN*%%ADD10C,1*%D10*%OFA1B0*%X0Y0D03*M02*").lines(),
              Lines{"flash C25.4 at 25.4,0"});
}

TEST(LayerImages, CoordinatesMayBeScaledButNotApertures) {
    EXPECT_EQ(readBody("%SFA2B3*%" + line).lines(), Lines{"line C0.1 2,0 2,6"});
}

TEST(LayerImages, ArcsThatBecomeEllipsesAreLines) {
    const Reading read = readBody("%SFA2B1*%X1000Y0D02*G03X0Y1000I-1000J0D01*");
    EXPECT_GT(read.lines().size(), 5u);
    EXPECT_EQ(read.facts.numArcs, 0u);
    EXPECT_EQ(read.lines().back().substr(read.lines().back().rfind(' ')), " 0,1");
    EXPECT_NEAR(read.facts.bound.getXHigh(), 2.05, 1e-9);
}

TEST(LayerImages, RegionsFollowTheImage) {
    EXPECT_EQ(readBody("%MIA1*%G36*X1000Y0D02*G03X1000Y0I-1000D01*G37*").lines(),
              Lines{"region -1,0 cw -1,0 around 0,0"});
    EXPECT_GT(readBody("%SFA2*%G36*X1000Y0D02*G03X1000Y0I-1000D01*G37*").lines().front().size(), 100u);
}

TEST(LayerImages, TheImageMayBeTurnedWithItsApertures) {
    const std::string box = "%ADD11R,2X1*%D11*X1000Y0D03*";
    EXPECT_EQ(readBody("%IR90*%" + box).lines(), Lines{"flash R1x2 at 0,1"});
    EXPECT_EQ(readBody("%IR180*%" + box).lines(), Lines{"flash R2x1 at -1,0"});
    EXPECT_EQ(readBody("%IR270*%" + box).lines(), Lines{"flash R1x2 at 0,-1"});
    EXPECT_EQ(readBody("%IR0*%" + box).lines(), Lines{"flash R2x1 at 1,0"});
}

TEST(LayerImages, SwappedAxesSwapApertures) {
    EXPECT_EQ(readBody("%ASAYBX*%%AMBOX*21,1,2,1,1,0.5,0*%%ADD11BOX*%D11*X0Y0D03*").lines(),
              Lines{"flash pieces(0,0..1,2) at 0,0"});
}

TEST(LayerImages, TheOffsetIsNotScaled) {
    const Lines expected{"flash C0.1 at 6,3.5"};
    EXPECT_EQ(readBody("%OFA3B2*%%SFA1.5B1.5*%X2000Y1000D03*").lines(), expected);
    EXPECT_EQ(readBody("%SFA1.5B1.5*%%OFA3B2*%X2000Y1000D03*").lines(), expected);
}

TEST(LayerImages, AxesAreSwappedAfterTheTurn) {
    EXPECT_EQ(readBody("%ASAYBX*%%IR90*%X1000Y2000D03*").lines(), Lines{"flash C0.1 at 1,-2"});
    EXPECT_EQ(readBody("%ASAYBX*%%IR90*%%AMBOX*21,1,2,1,1,0.5,0*%%ADD11BOX*%D11*X0Y0D03*").lines(),
              Lines{"flash pieces(0,-1..2,0) at 0,0"});
}

// Mirroring, scale, offset, rotation and axes, in whatever order they are written.
TEST(LayerImages, TransformsHaveAnOrderOfTheirOwn) {
    const Lines expected{"flash C0.1 at 8,-4"};
    EXPECT_EQ(readBody("%ASAYBX*%%MIA1*%%OFA10B0*%%SFA2B2*%%IR90*%X1000Y2000D03*").lines(), expected);
    EXPECT_EQ(readBody("%IR90*%%SFA2B2*%%OFA10B0*%%MIA1*%%ASAYBX*%X1000Y2000D03*").lines(), expected);
}

TEST(LayerImages, RepeatsAndBlocksFollowTheImage) {
    EXPECT_EQ(readBody("%IR90*%%SRX2I5*%X1000Y0D03*%SR*%").lines(),
              (Lines{"flash C0.1 at 0,1", "flash C0.1 at 0,6"}));
    EXPECT_EQ(readBody("%OFA1B0*%%ABD12*%X1000Y0D03*%AB*%D12*X0Y0D03*").lines(), Lines{"flash C0.1 at 2,0"});
}

TEST(LayerImages, ANegativeImageIsABoxWithDarkAndClearExchanged) {
    const Reading read = readBody("%IPNEG*%%ADD11R,2X2*%D11*X0Y0D03*%LPC*%X1000D03*");
    EXPECT_EQ(read.lines(),
              (Lines{"region -2,-2 3,-2 3,2 -2,2 -2,-2", "-flash R2x2 at 0,0", "flash R2x2 at 1,0"}));
    EXPECT_TRUE(read.facts.isNegative);
    EXPECT_TRUE(readBody("%IPPOS*%X0Y0D03*").lines() == Lines{"flash C0.1 at 0,0"});
}

TEST(LayerImages, ANegativeImageMayBeAskedForInOtherSpellings) {
    EXPECT_EQ(readBody("%IP\nNEG*%X0Y0D03*").lines().size(), 2u);
    EXPECT_EQ(readBody("%ipneg*%X0Y0D03*").lines().size(), 2u);
    EXPECT_EQ(readBody("%IPNEG*%X0Y0D03*%IPPOS*%").lines().size(), 1u);
}

TEST(LayerImages, ANegativeImageOfNothingIsNothing) {
    const Reading read = readBody("%IPNEG*%");
    EXPECT_EQ(read.lines(), Lines{});
    EXPECT_TRUE(read.facts.isNegative);
}

TEST(LayerImages, NotesOfANegativeImageAreToldOnce) {
    EXPECT_EQ(readBody("%IPNEG*%G87*X0Y0D03*").count(NoteKind::LeftOut, "codes that are not"), 1u);
}

TEST(LayerImages, WhatIsNotDrawnIsTold) {
    const Reading read = readBody("%KOCX0Y0I1J1*%%IJALBL*%");
    EXPECT_EQ(read.count(NoteKind::LeftOut, "commands \"KO\""), 1u);
    EXPECT_EQ(read.count(NoteKind::LeftOut, "commands \"IJ\""), 1u);
}

TEST(LayerImages, HopelessTransformsAreTold) {
    const Reading read = readBody("%SFA0B0*%%OFAxB1*%%ASAZBX*%%IRx*%%IPx*%%MIC1*%X1000Y0D03*");
    EXPECT_EQ(read.lines(), Lines{"flash C0.1 at 1,0"});
    EXPECT_EQ(read.count(NoteKind::LeftOut, "commands whose text"), 6u);
}

} // namespace
