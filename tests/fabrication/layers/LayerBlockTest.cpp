// Blocks and repeats of layer files.
#include "LayerScript.h"

#include <gtest/gtest.h>

namespace {

using namespace LayerTests;

TEST(LayerBlocks, ARepeatIsDrawnColumnByColumn) {
    EXPECT_EQ(readBody("%SRX2Y2I5J7*%X0Y0D03*%SR*%").lines(),
              (Lines{"flash C0.1 at 0,0", "flash C0.1 at 0,7", "flash C0.1 at 5,0", "flash C0.1 at 5,7"}));
}

TEST(LayerBlocks, EachCopyIsDrawnAsAWhole) {
    EXPECT_EQ(readBody("%SRX2Y1I5J0*%X0Y0D03*%LPC*%X1000D03*%SR*%D03*").lines(),
              (Lines{"flash C0.1 at 0,0", "-flash C0.1 at 1,0", "flash C0.1 at 5,0", "-flash C0.1 at 6,0",
                     "-flash C0.1 at 1,0"}));
}

TEST(LayerBlocks, StepsAreInTheUnitOfTheFile) {
    EXPECT_EQ(readAsItIs("%FSLAX24Y24*%%MOIN*%%ADD10C,1*%D10*%SRX2Y1I1J0*%X0Y0D03*%SR*%M02*").lines().back(),
              "flash C25.4 at 25.4,0");
}

TEST(LayerBlocks, LinesArcsAndRegionsAreRepeated) {
    EXPECT_EQ(readBody("%SRX2I5*%X1000Y0D02*G03X0Y1000I-1000D01*G01X0Y0D01*"
                       "G36*X0Y0D02*X1000D01*Y1000D01*X0Y0D01*G37*%SR*%")
                  .lines(),
              (Lines{"ccw C0.1 1,0 0,1 around 0,0", "line C0.1 0,1 0,0", "region 0,0 1,0 1,1 0,0",
                     "ccw C0.1 6,0 5,1 around 5,0", "line C0.1 5,1 5,0", "region 5,0 6,0 6,1 5,0"}));
}

TEST(LayerBlocks, ARepeatEndsWithTheNext) {
    EXPECT_EQ(readBody("%SRX2I5*%X0Y0D03*%SRX1Y2J3*%X1000D03*%SRX1Y1I0J0*%X9000D03*").lines(),
              (Lines{"flash C0.1 at 0,0", "flash C0.1 at 5,0", "flash C0.1 at 1,0", "flash C0.1 at 1,3",
                     "flash C0.1 at 9,0"}));
}

TEST(LayerBlocks, ARepeatThatNeverEndsIsDrawn) {
    EXPECT_EQ(readBody("%SRX3I5*%X0Y0D03*").lines().size(), 3u);
}

TEST(LayerBlocks, FactsCountTheCopies) {
    const Reading read = readBody("%SRX2Y3I5J5*%X0Y0D03*X1000D01*%SR*%");
    EXPECT_EQ(read.facts.numFlashes, 6u);
    EXPECT_EQ(read.facts.numStrokes, 6u);
    EXPECT_NEAR(read.facts.bound.getYHigh(), 10.05, 1e-9);
}

TEST(LayerBlocks, ABlockIsFlashed) {
    const Reading read = readBody("%ABD12*%X0Y0D03*X1000D01*%AB*%D12*X5000Y5000D03*");
    EXPECT_EQ(read.lines(), (Lines{"flash C0.1 at 5,5", "line C0.1 5,5 6,5"}));
    EXPECT_EQ(read.facts.numApertures, 2u);
}

TEST(LayerBlocks, AClearFlashTogglesTheObjects) {
    EXPECT_EQ(readBody("%ABD12*%X0Y0D03*%LPC*%X1000D03*%AB*%D12*X0Y0D03*").lines(),
              (Lines{"-flash C0.1 at 0,0", "flash C0.1 at 1,0"}));
}

TEST(LayerBlocks, ABlockIsMirroredTurnedAndSized) {
    const std::string block = "%ABD12*%X1000Y2000D03*%AB*%D12*";
    EXPECT_EQ(readBody(block + "%LMX*%X0Y0D03*").lines(), Lines{"flash C0.1 at -1,2"});
    EXPECT_EQ(readBody(block + "%LR90*%X0Y0D03*").lines(), Lines{"flash C0.1 at -2,1"});
    EXPECT_EQ(readBody(block + "%LS2*%X0Y0D03*").lines(), Lines{"flash C0.2 at 2,4"});
    EXPECT_EQ(readBody(block + "%LMX*%%LR90*%X0Y0D03*").lines(), Lines{"flash C0.1 at -2,-1"});
}

TEST(LayerBlocks, MirroringTurnsArcsTheOtherWay) {
    EXPECT_EQ(readBody("%ABD12*%X1000Y0D02*G03X0Y1000I-1000D01*G01*%AB*%D12*%LMX*%X0Y0D03*").lines(),
              Lines{"cw C0.1 -1,0 0,1 around 0,0"});
}

TEST(LayerBlocks, AperturesInsideTurnWithTheBlock) {
    const std::string block =
        "%AMBOX*21,1,2,1,1,0.5,0*%%ADD11BOX*%%ABD12*%D11*%LR90*%X0Y0D03*%LR0*%%AB*%D12*";
    EXPECT_EQ(readBody(block + "X0Y0D03*").lines(), Lines{"flash pieces(-1,0..0,2) at 0,0"});
    EXPECT_EQ(readBody(block + "%LR90*%X0Y0D03*").lines(), Lines{"flash pieces(-2,-1..0,0) at 0,0"});
    // Mirrored after it was turned.
    EXPECT_EQ(readBody(block + "%LMX*%X0Y0D03*").lines(), Lines{"flash pieces(0,0..1,2) at 0,0"});
}

TEST(LayerBlocks, BlocksMayHoldBlocks) {
    EXPECT_EQ(readBody("%ABD12*%X1000Y0D03*%AB*%%ABD13*%D12*X0Y0D03*%LPC*%X10000D03*%LPD*%%AB*%"
                       "D13*%LR90*%X0Y0D03*")
                  .lines(),
              (Lines{"flash C0.1 at 0,1", "-flash C0.1 at 0,11"}));
}

TEST(LayerBlocks, BlocksMayBeDefinedWithinBlocks) {
    EXPECT_EQ(readBody("%ABD12*%X0Y0D03*%ABD13*%X1000Y0D03*%AB*%X2000D03*%AB*%D12*X0Y0D03*D13*D03*").lines(),
              (Lines{"flash C0.1 at 0,0", "flash C0.1 at 2,0", "flash C0.1 at 1,0"}));
}

TEST(LayerBlocks, BlocksMayHoldRepeats) {
    EXPECT_EQ(readBody("%ABD12*%%SRX2I5*%X0Y0D03*%SR*%%AB*%D12*%LR90*%X0Y0D03*").lines(),
              (Lines{"flash C0.1 at 0,0", "flash C0.1 at 0,5"}));
}

TEST(LayerBlocks, RepeatsMayHoldFlashesOfBlocks) {
    EXPECT_EQ(readBody("%ABD12*%X1000Y0D03*%AB*%%SRX2I5*%D12*X0Y0D03*%SR*%").lines(),
              (Lines{"flash C0.1 at 1,0", "flash C0.1 at 6,0"}));
}

TEST(LayerBlocks, ABlockDoesNotKnowItself) {
    const Reading read = readBody("%ABD12*%X0Y0D03*D12*X1000D03*%AB*%D12*X0Y0D03*");
    EXPECT_EQ(read.lines(), Lines{"flash C0.1 at 0,0"});
    EXPECT_EQ(read.count(NoteKind::LeftOut, "selections of aperture D12"), 1u);
}

TEST(LayerBlocks, LinesDrawnWithABlockAreLeftOutAndTold) {
    const Reading read = readBody("%ABD12*%X0Y0D03*%AB*%D12*X0Y0D02*X1000D01*");
    EXPECT_EQ(read.lines(), Lines{});
    EXPECT_EQ(read.count(NoteKind::LeftOut, "lines and arcs drawn with a block"), 1u);
}

TEST(LayerBlocks, AnEndWithoutAStartIsTold) {
    EXPECT_EQ(readBody("%AB*%").count(NoteKind::LeftOut, "commands whose text"), 1u);
}

} // namespace
