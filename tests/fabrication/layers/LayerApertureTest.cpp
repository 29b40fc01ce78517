// Apertures that layer files define and select.
#include "LayerScript.h"

#include <gtest/gtest.h>

namespace {

using namespace LayerTests;

TEST(LayerApertures, StandardTemplatesAreFlashed) {
    EXPECT_EQ(readBody("%ADD11R,1X0.5*%%ADD12O,2X1*%D11*X0Y0D03*D12*D03*").lines(),
              (Lines{"flash R1x0.5 at 0,0", "flash O2x1 at 0,0"}));
}

TEST(LayerApertures, BlanksAndSignsInModifiersAreTaken) {
    EXPECT_EQ(readBody("%ADD11R, +1 X .5 *%D11*X0Y0D03*").lines(), Lines{"flash R1x0.5 at 0,0"});
}

TEST(LayerApertures, MacrosTakeTheirModifiers) {
    EXPECT_EQ(readBody("%AMBOX*0 a comment*21,1,$1,$2,0,0,0*%%ADD11BOX,2X1*%D11*X0Y0D03*").lines(),
              Lines{"flash pieces(-1,-0.5..1,0.5) at 0,0"});
}

TEST(LayerApertures, MacrosMayStandOverLinesAndTogether) {
    const std::string macros = "%AMA*\n21,1,\n2,1,0,0,0*\n%\n%AMB*\n$3=$1x2*\n21,1,$3,1,0,0,0*%";
    EXPECT_EQ(readBody(macros + "%ADD11A*%%ADD12B,2*%D11*X0Y0D03*D12*D03*").lines(),
              (Lines{"flash pieces(-1,-0.5..1,0.5) at 0,0", "flash pieces(-2,-0.5..2,0.5) at 0,0"}));
}

TEST(LayerApertures, AMacroWhoseBlockIsNotClosedEndsWithItsPrimitives) {
    EXPECT_EQ(readBody("%AMA*21,1,2,1,0,0,0*ADD11A*%D11*X0Y0D03*").lines(),
              Lines{"flash pieces(-1,-0.5..1,0.5) at 0,0"});
}

TEST(LayerApertures, AMacroDefinedAgainIsThatOfLaterApertures) {
    const std::string first = "%AMA*21,1,2,1,0,0,0*%%ADD11A*%";
    const std::string second = "%AMA*21,1,4,1,0,0,0*%%ADD12A*%";
    EXPECT_EQ(readBody(first + second + "D11*X0Y0D03*D12*D03*").lines(),
              (Lines{"flash pieces(-1,-0.5..1,0.5) at 0,0", "flash pieces(-2,-0.5..2,0.5) at 0,0"}));
}

TEST(LayerApertures, AMacroMayFollowTheApertureThatIsMadeOfIt) {
    EXPECT_EQ(readBody("%ADD11A*%%AMA*21,1,2,1,0,0,0*%D11*X0Y0D03*").lines(),
              Lines{"flash pieces(-1,-0.5..1,0.5) at 0,0"});
}

TEST(LayerApertures, ACodeDefinedAgainStandsForTheNewOneAtOnce) {
    EXPECT_EQ(readBody("X0Y0D03*%ADD10C,0.2*%D03*").lines(),
              (Lines{"flash C0.1 at 0,0", "flash C0.2 at 0,0"}));
}

TEST(LayerApertures, AnUndefinedCodeIsTold) {
    const Reading read = readBody("D99*X0Y0D03*X1000D01*");
    EXPECT_EQ(read.lines(), Lines{"line nothing 0,0 1,0"});
    EXPECT_EQ(read.count(NoteKind::LeftOut, "selections of aperture D99"), 1u);
    EXPECT_EQ(read.count(NoteKind::LeftOut, "objects drawn without a defined aperture"), 2u);
}

TEST(LayerApertures, DrawingWithoutAnySelectionIsTold) {
    const Reading read = readAsItIs("%FSLAX23Y23*%%MOMM*%X0Y0D02*X1000D01*M02*");
    EXPECT_EQ(read.lines(), Lines{"line nothing 0,0 1,0"});
    EXPECT_EQ(read.count(NoteKind::LeftOut, "objects drawn without"), 1u);
}

TEST(LayerApertures, DefinitionsThatAreNotUnderstoodAreTold) {
    EXPECT_EQ(readBody("%ADC,0.1*%%ADD12*%%ADD13R,1Xa*%").count(NoteKind::LeftOut, "commands whose text"),
              3u);
}

TEST(LayerApertures, AShapeKeepsItsIdAndOthersHaveTheirOwn) {
    const Reading read = readBody("%ADD11C,0.1*%X0Y0D03*D11*D03*D10*D03*%LR90*%D03*%LR0*%D03*");
    ASSERT_EQ(read.script.ids.size(), 5u);
    EXPECT_EQ(read.script.ids[0], read.script.ids[2]);
    EXPECT_EQ(read.script.ids[0], read.script.ids[4]);
    EXPECT_NE(read.script.ids[0], read.script.ids[1]);
    EXPECT_NE(read.script.ids[0], read.script.ids[3]);
}

TEST(LayerApertures, TheBoundHoldsTheirWidth) {
    const Reading read = readBody("%ADD11R,1X0.5*%D11*X0Y0D03*X5000D03*");
    EXPECT_NEAR(read.facts.bound.getXLow(), -0.5, 1e-12);
    EXPECT_NEAR(read.facts.bound.getXHigh(), 5.5, 1e-12);
    EXPECT_NEAR(read.facts.bound.getYHigh(), 0.25, 1e-12);
    EXPECT_EQ(read.facts.numApertures, 2u);
}

TEST(LayerApertures, ObjectsAreMirroredTurnedAndSized) {
    const std::string box = "%AMBOX*21,1,2,1,1,0.5,0*%%ADD11BOX*%D11*";
    EXPECT_EQ(readBody(box + "X0Y0D03*").lines(), Lines{"flash pieces(0,0..2,1) at 0,0"});
    EXPECT_EQ(readBody(box + "%LMX*%X0Y0D03*").lines(), Lines{"flash pieces(-2,0..0,1) at 0,0"});
    EXPECT_EQ(readBody(box + "%LMY*%X0Y0D03*").lines(), Lines{"flash pieces(0,-1..2,0) at 0,0"});
    EXPECT_EQ(readBody(box + "%LMXY*%X0Y0D03*").lines(), Lines{"flash pieces(-2,-1..0,0) at 0,0"});
    EXPECT_EQ(readBody(box + "%LR90*%X0Y0D03*").lines(), Lines{"flash pieces(-1,0..0,2) at 0,0"});
    EXPECT_EQ(readBody(box + "%LS0.5*%X0Y0D03*").lines(), Lines{"flash pieces(0,0..1,0.5) at 0,0"});
    // First mirrored, then turned.
    EXPECT_EQ(readBody(box + "%LR90*%%LMX*%X0Y0D03*").lines(), Lines{"flash pieces(-1,-2..0,0) at 0,0"});
}

TEST(LayerApertures, TransformsOfObjectsEnd) {
    EXPECT_EQ(readBody("%LS2*%X0Y0D03*%LS1*%D03*%LMX*%%LMN*%%LR90*%%LR0*%D03*").lines(),
              (Lines{"flash C0.2 at 0,0", "flash C0.1 at 0,0", "flash C0.1 at 0,0"}));
}

TEST(LayerApertures, LinesAreDrawnWithTheTransformedAperture) {
    EXPECT_EQ(readBody("%LS2*%X0Y0D02*X1000D01*").lines(), Lines{"line C0.2 0,0 1,0"});
}

TEST(LayerApertures, HopelessTransformsAreToldAndLeaveTheObjects) {
    const Reading read = readBody("%LS0*%%LS-1*%%LS1e300*%%LRx*%%LS" + std::string(400, '9') + "*%X0Y0D03*");
    EXPECT_EQ(read.lines(), Lines{"flash C0.1 at 0,0"});
    EXPECT_EQ(read.count(NoteKind::LeftOut, "commands whose text"), 5u);
}

TEST(LayerApertures, PolarityIsThatOfEachObject) {
    EXPECT_EQ(readBody("%LPC*%X0Y0D03*%LPD*%D03*").lines(),
              (Lines{"-flash C0.1 at 0,0", "flash C0.1 at 0,0"}));
}

} // namespace
