// Arcs of layer files.
#include "LayerScript.h"

#include <gtest/gtest.h>

namespace {

using namespace LayerTests;

TEST(LayerArcs, OffsetsOfMultipleQuadrantsHaveASign) {
    EXPECT_EQ(readBody("X1000Y0D02*G03X0Y1000I-1000J0D01*").lines(), Lines{"ccw C0.1 1,0 0,1 around 0,0"});
    EXPECT_EQ(readBody("X1000Y0D02*G02X0Y1000I-1000J0D01*").lines(), Lines{"cw C0.1 1,0 0,1 around 0,0"});
}

TEST(LayerArcs, OffsetsThatAreLeftOutAreZero) {
    EXPECT_EQ(readBody("X1000Y0D02*G03X0Y1000I-1000D01*X-1000Y0J-1000D01*").lines(),
              (Lines{"ccw C0.1 1,0 0,1 around 0,0", "ccw C0.1 0,1 -1,0 around 0,0"}));
}

TEST(LayerArcs, AnArcToItsStartIsAFullTurn) {
    EXPECT_EQ(readBody("X1000Y0D02*G03X1000Y0I-1000J0D01*").lines(), Lines{"ccw C0.1 1,0 1,0 around 0,0"});
}

TEST(LayerArcs, AnArcWithoutRadiusIsALine) {
    EXPECT_EQ(readBody("X1000Y0D02*G03X0Y1000I0J0D01*").lines(), Lines{"line C0.1 1,0 0,1"});
}

TEST(LayerArcs, TheModeStaysUntilTheNext) {
    EXPECT_EQ(readBody("X1000Y0D02*G03*X0Y1000I-1000D01*G01*X0Y0D01*").lines(),
              (Lines{"ccw C0.1 1,0 0,1 around 0,0", "line C0.1 0,1 0,0"}));
}

// One for each quadrant that the centre may lie in.
TEST(LayerArcs, OffsetsOfASingleQuadrantHaveNone) {
    EXPECT_EQ(readBody("G74*X1000Y0D02*G03X0Y1000I1000J0D01*").lines(), Lines{"ccw C0.1 1,0 0,1 around 0,0"});
    EXPECT_EQ(readBody("G74*X0Y1000D02*G03X-1000Y0I0J1000D01*").lines(),
              Lines{"ccw C0.1 0,1 -1,0 around 0,0"});
    EXPECT_EQ(readBody("G74*X-1000Y0D02*G03X0Y-1000I1000J0D01*").lines(),
              Lines{"ccw C0.1 -1,0 0,-1 around 0,0"});
    EXPECT_EQ(readBody("G74*X0Y-1000D02*G03X1000Y0I0J1000D01*").lines(),
              Lines{"ccw C0.1 0,-1 1,0 around 0,0"});
}

TEST(LayerArcs, ASingleQuadrantGoesClockwiseToo) {
    const Reading read = readBody("G74*X0Y1000D02*G02X1000Y0I0J1000D01*");
    EXPECT_EQ(read.lines(), Lines{"cw C0.1 0,1 1,0 around 0,0"});
    EXPECT_EQ(read.count(NoteKind::Normalised, "arcs of a single quadrant"), 1u);
}

TEST(LayerArcs, ASingleQuadrantWithinAQuarterTakesTheCentreThatFits) {
    EXPECT_EQ(readBody("G74*X4000Y3000D02*G03X3000Y4000I4000J3000D01*").lines(),
              Lines{"ccw C0.1 4,3 3,4 around 0,0"});
}

TEST(LayerArcs, ASingleQuadrantToItsStartIsADot) {
    EXPECT_EQ(readBody("G74*X1000Y0D02*G03X1000Y0I1000J0D01*").lines(), Lines{"line C0.1 1,0 1,0"});
}

// The arc passes through 91.6 degrees; around every other centre the radii differ by more than its half.
TEST(LayerArcs, ASingleQuadrantThatRoundingMadeLargerKeepsItsCentre) {
    const Reading read =
        readAsItIs("%FSLAX23Y23*%%MOIN*%%ADD10C,.01*%D10*G74*X184Y14D02*G03X255Y19I33J37D01*M02*");
    EXPECT_EQ(read.lines(), Lines{"ccw C0.254 4.6736,0.3556 6.477,0.4826 around 5.5118,1.2954"});
    EXPECT_EQ(read.count(NoteKind::Guessed, "arcs of a single quadrant that no centre fits"), 0u);
}

TEST(LayerArcs, ASingleQuadrantNeverGoesTheLongWayAround) {
    EXPECT_EQ(readBody("G74*X0Y0D02*G02X2000Y0I1000J1000D01*").lines(), Lines{"cw C0.1 0,0 2,0 around 1,-1"});
    EXPECT_EQ(readBody("G74*X0Y0D02*G03X2000Y0I1000J1000D01*").lines(), Lines{"ccw C0.1 0,0 2,0 around 1,1"});
}

TEST(LayerArcs, ASingleQuadrantThatIsAHalfTurnIsTaken) {
    const Reading read = readBody("G74*X1000Y0D02*G03X-1000Y0I1000J0D01*");
    EXPECT_EQ(read.lines(), Lines{"ccw C0.1 1,0 -1,0 around 0,0"});
    EXPECT_EQ(read.count(NoteKind::Guessed, "arcs of a single quadrant that no centre fits"), 0u);
}

TEST(LayerArcs, ASingleQuadrantThatNoCentreFitsIsTold) {
    const Reading read = readBody("G74*X1000Y0D02*G03X-1000Y0I300J0D01*");
    EXPECT_EQ(read.facts.numArcs, 1u);
    EXPECT_EQ(read.count(NoteKind::Guessed, "arcs of a single quadrant that no centre fits"), 1u);
}

TEST(LayerArcs, WithoutAModeTheSignsAreTakenWhereTheyFit) {
    const std::string head = "%FSLAX23Y23*%%MOMM*%%ADD10C,0.1*%D10*";
    const Reading read = readAsItIs(head + "X1000Y0D02*G03X0Y1000I-1000J0D01*M02*");
    EXPECT_EQ(read.lines(), Lines{"ccw C0.1 1,0 0,1 around 0,0"});
    EXPECT_EQ(read.count(NoteKind::Guessed, "arcs without a quadrant mode"), 1u);
    EXPECT_EQ(readAsItIs(head + "X1000Y0D02*G03X0Y1000I1000J0D01*M02*").lines(),
              Lines{"ccw C0.1 1,0 0,1 around 0,0"});
}

TEST(LayerArcs, WithoutAModeOrAnySignAQuarterIsTakenWhereOneFits) {
    const std::string head = "%FSLAX23Y23*%%MOMM*%%ADD10C,0.1*%D10*X0Y0D02*G02X2000Y0I1000J1000D01*";
    EXPECT_EQ(readAsItIs(head + "M02*").lines(), Lines{"cw C0.1 0,0 2,0 around 1,-1"});
    EXPECT_EQ(readAsItIs(head + "X0Y0I-1000J0D01*M02*").lines().front(), "cw C0.1 0,0 2,0 around 1,1");
}

TEST(LayerArcs, WithoutAModeOrAnySignAMirroredHalfIsNoQuarter) {
    EXPECT_EQ(readAsItIs("%FSLAX23Y23*%%MOMM*%%ADD10C,0.1*%D10*X0Y0D02*G02X2000Y0I1000J300D01*M02*").lines(),
              Lines{"cw C0.1 0,0 2,0 around 1,0.3"});
}

TEST(LayerArcs, WithoutAModeOrAnySignALargerQuarterIsTakenWhereTheSignsDoNotFit) {
    EXPECT_EQ(readAsItIs("%FSLAX23Y23*%%MOIN*%%ADD10C,.01*%D10*X255Y14D02*G02X184Y19I33J37D01*M02*").lines(),
              Lines{"cw C0.254 6.477,0.3556 4.6736,0.4826 around 5.6388,1.2954"});
}

TEST(LayerArcs, WithoutAModeAnArcToItsStartIsAFullTurn) {
    EXPECT_EQ(readAsItIs("%FSLAX23Y23*%%MOMM*%%ADD10C,0.1*%D10*X0Y0D02*G02X0Y0I1000D01*M02*").lines(),
              Lines{"cw C0.1 0,0 0,0 around 1,0"});
}

TEST(LayerArcs, AnEndOffTheCircleIsKept) {
    EXPECT_EQ(readBody("X1000Y0D02*G03X0Y1010I-1000J0D01*").lines(), Lines{"ccw C0.1 1,0 0,1.01 around 0,0"});
}

TEST(LayerArcs, BoundsHoldWhatArcsPassOver) {
    const Geometry::Bound2D bound = readBody("X1000Y0D02*G03X-1000Y0I-1000J0D01*").facts.bound;
    EXPECT_NEAR(bound.getYHigh(), 1.05, 1e-9);
    EXPECT_NEAR(bound.getYLow(), -0.05, 1e-9);
    EXPECT_NEAR(bound.getXLow(), -1.05, 1e-9);
    EXPECT_NEAR(bound.getXHigh(), 1.05, 1e-9);
}

} // namespace
