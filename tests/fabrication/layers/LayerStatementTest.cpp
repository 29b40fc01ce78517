// Statements of layer files in all their spellings.
#include "LayerScript.h"

#include <gtest/gtest.h>

namespace {

using namespace LayerTests;

const Lines twoLines{"line C0.1 0,0 1,0", "line C0.1 1,0 1,2"};

TEST(LayerStatements, OperationsMoveDrawAndFlash) {
    const Reading read = readBody("X0Y0D02*X1000Y0D01*X1000Y2000D01*X3000Y3000D03*");
    EXPECT_EQ(read.lines(), (Lines{twoLines[0], twoLines[1], "flash C0.1 at 3,3"}));
    EXPECT_TRUE(read.notes.list().empty());
    EXPECT_EQ(read.facts.numStrokes, 2u);
    EXPECT_EQ(read.facts.numFlashes, 1u);
}

TEST(LayerStatements, CoordinatesThatDoNotChangeMayBeLeftOut) {
    EXPECT_EQ(readBody("X0Y0D02*X1000D01*Y2000D01*").lines(), twoLines);
}

TEST(LayerStatements, OperationsWithoutCoordinatesTakeThoseOfTheCurrentPoint) {
    EXPECT_EQ(readBody("X1000Y2000D02*D03*").lines(), Lines{"flash C0.1 at 1,2"});
}

TEST(LayerStatements, AStatementWithoutOperationRepeatsTheLatest) {
    const Reading read = readBody("X0Y0D02*X1000D01*Y2000*");
    EXPECT_EQ(read.lines(), twoLines);
    EXPECT_EQ(read.count(NoteKind::Normalised, "lines, arcs and moves without"), 1u);
}

TEST(LayerStatements, AStatementWithoutOperationFlashesAgainAfterAFlash) {
    const Reading read = readBody("X0Y0D03*X1000*");
    EXPECT_EQ(read.lines(), (Lines{"flash C0.1 at 0,0", "flash C0.1 at 1,0"}));
    EXPECT_EQ(read.count(NoteKind::Normalised, "flashes without an operation"), 1u);
}

TEST(LayerStatements, CoordinatesBeforeAnyOperationMoveAndAreTold) {
    const Reading read = readBody("X1000Y0*Y2000D01*");
    EXPECT_EQ(read.lines(), Lines{twoLines[1]});
    EXPECT_EQ(read.count(NoteKind::Guessed, "coordinates before any operation"), 1u);
}

TEST(LayerStatements, CodesMayHaveAnyNumberOfZerosInFront) {
    EXPECT_EQ(readBody("G1*X0Y0D2*G01X1000D1*G001Y2000D001*").lines(), twoLines);
}

TEST(LayerStatements, ALoneModeDrawsNothing) { EXPECT_EQ(readBody("G02*G03*G01*X0Y0D02*").lines(), Lines{}); }

TEST(LayerStatements, SeveralCodesMayStandInOneStatement) {
    EXPECT_EQ(readBody("G54D10X0Y0D02*G01G01X1000D01*Y2000D01*").lines(), twoLines);
    EXPECT_EQ(readBody("D10X0Y0D02*X1000D01D10*Y2000D01*").lines(), twoLines);
}

TEST(LayerStatements, AMissingEndLosesNothing) {
    EXPECT_EQ(readBody("X0Y0D02\nX1000Y0D01\nX1000Y2000D01*").lines(), twoLines);
}

TEST(LayerStatements, LineEndsAndBlanksMayStandAnywhere) {
    EXPECT_EQ(readBody("X0 Y0\r\nD02*\rX10\n00Y0D01*\n\n  X1000 Y2000 D01 *").lines(), twoLines);
}

TEST(LayerStatements, LowerCaseIsTaken) {
    EXPECT_EQ(readBody("x0y0d02*g01x1000d01*y2000d01*").lines(), twoLines);
}

TEST(LayerStatements, LineNumbersAreSkipped) {
    EXPECT_EQ(readBody("N10X0Y0D02*N0020G01X1000D01*N30Y2000D01*").lines(), twoLines);
}

TEST(LayerStatements, CommentsAreKeptAndNotObeyed) {
    const Reading read = readBody("G04 X0Y0D03, 100% done*G4 second*N5G04 third*");
    EXPECT_EQ(read.lines(), Lines{});
    EXPECT_EQ(read.facts.comments, (Lines{"X0Y0D03, 100% done", "second", "third"}));
}

TEST(LayerStatements, ACommentWithoutEndStopsBeforeTheNextCommand) {
    const Reading read = readBody("G04 forgotten\n%LPC*%\nX0Y0D03*");
    EXPECT_EQ(read.lines(), Lines{"-flash C0.1 at 0,0"});
}

TEST(LayerStatements, OnlyTheFirstFiftyCommentsAreKept) {
    std::string body;
    for (int i = 0; i < 60; ++i)
        body += "G04 c*";
    EXPECT_EQ(readBody(body).facts.comments.size(), 50u);
}

TEST(LayerStatements, ABlockMayHoldSeveralCommandsOverLines) {
    const Reading read = readAsItIs("%FSLAX23Y23*\nMOMM*\nADD10C,0.1*ADD11C,\n0.2*%D11*X0Y0D03*M02*");
    EXPECT_EQ(read.lines(), Lines{"flash C0.2 at 0,0"});
}

TEST(LayerStatements, ForgottenPercentSignsDoNoHarm) {
    EXPECT_EQ(readAsItIs("FSLAX23Y23*MOMM*%ADD10C,0.1*\nADD11C,0.2*D11*X0Y0D03*M02*").lines(),
              Lines{"flash C0.2 at 0,0"});
}

TEST(LayerStatements, AForgottenEndBeforeAPercentSignIsTold) {
    const Reading read = readBody("%LPC%\nX0Y0D03*");
    EXPECT_EQ(read.lines(), Lines{"-flash C0.1 at 0,0"});
    EXPECT_EQ(read.count(NoteKind::Normalised, "statements without an end"), 1u);
}

TEST(LayerStatements, NothingIsObeyedAfterTheEndOfTheProgram) {
    for (const char *end : {"M02*", "M00*", "M30*", "M2*"}) {
        const Reading read = readBody(std::string("X0Y0D03*") + end + "X1000Y0D03*X2000Y0D03*");
        EXPECT_EQ(read.lines(), Lines{"flash C0.1 at 0,0"}) << end;
        EXPECT_EQ(read.count(NoteKind::LeftOut, "statements after the end"), 2u);
    }
}

TEST(LayerStatements, AnOperationMayShareItsStatementWithTheEnd) {
    EXPECT_EQ(readBody("X0Y0D03M02*").lines(), Lines{"flash C0.1 at 0,0"});
    EXPECT_EQ(readBody("X0Y0D03*M01*X1000D03*").lines().size(), 2u);
}

TEST(LayerStatements, AMissingEndOfTheProgramIsTold) {
    const Reading read = readAsItIs("%FSLAX23Y23*%%MOMM*%%ADD10C,0.1*%D10*X0Y0D03*\n");
    EXPECT_EQ(read.lines().size(), 1u);
    EXPECT_EQ(read.count(NoteKind::Guessed, "files without an end"), 1u);
}

TEST(LayerStatements, AStatementCutOffByTheEndOfTheFileIsNotObeyed) {
    const Reading read = readAsItIs("%FSLAX23Y23*%%MOMM*%%ADD10C,0.1*%D10*X0Y0D03*X10");
    EXPECT_EQ(read.lines().size(), 1u);
    EXPECT_EQ(read.count(NoteKind::LeftOut, "statements cut off"), 1u);
}

TEST(LayerStatements, CodesThatAreNotUnderstoodAreCountedWithTheirLine) {
    const Reading read = readBody("G87*\nX0Y0Q5D03*");
    EXPECT_EQ(read.lines(), Lines{"flash C0.1 at 0,0"});
    EXPECT_EQ(read.count(NoteKind::LeftOut, "codes that are not understood"), 2u);
    EXPECT_EQ(read.notes.list().front().line, 6u);
}

TEST(LayerStatements, ScaledLinesArePlainOnes) {
    for (const char *code : {"G10", "G11", "G12", "G60"}) {
        const Reading read = readBody(std::string("X0Y0D02*G02*") + code + "X1000Y0D01*X2000D01*");
        EXPECT_EQ(read.lines(), (Lines{"line C0.1 0,0 1,0", "line C0.1 1,0 2,0"})) << code;
        EXPECT_EQ(read.count(NoteKind::Normalised, "modes of scaled lines"), 1u);
        EXPECT_EQ(read.count(NoteKind::LeftOut, "codes that are not understood"), 0u);
    }
}

TEST(LayerStatements, LinesAreCountedByAnyLineEnd) {
    for (const char *lineEnd : {"\n", "\r\n", "\r"}) {
        const std::string text = std::string("G04 a*") + lineEnd + "G04 b*" + lineEnd + lineEnd + "G87*";
        EXPECT_EQ(readAsItIs(text).notes.list().front().line, 4u);
    }
}

TEST(LayerStatements, TextWithAByteOrderMarkOrInUtf16IsTaken) {
    const std::string text = "%FSLAX23Y23*%%MOMM*%%ADD10C,0.1*%D10*X0Y0D03*M02*";
    std::string wide = "\xFF\xFE";
    for (const char c : text) {
        wide += c;
        wide += '\0';
    }
    EXPECT_EQ(readAsItIs("\xEF\xBB\xBF" + text).lines().size(), 1u);
    EXPECT_EQ(readAsItIs(wide).lines().size(), 1u);
}

TEST(LayerStatements, IncludesAreToldAndNeverOpened) {
    EXPECT_EQ(readBody("%IF/etc/passwd*%").count(NoteKind::LeftOut, "commands \"IF\""), 1u);
}

TEST(LayerStatements, CommandsWithoutEffectAreSilent) {
    EXPECT_TRUE(readBody("%ICAS*%%PFfilm*%%INname*%%LNpart*%").notes.list().empty());
}

TEST(LayerStatements, NamesAreKept) {
    EXPECT_EQ(readBody("%INTop Copper*%%LNLayer one*%").facts.names, (Lines{"Top Copper", "Layer one"}));
}

TEST(LayerStatements, AProbeStopsAtTheFirstObject) {
    LayerRules rules;
    rules.isProbe = true;
    const Reading read =
        readAsItIs("%TF.Part,Single*%%FSLAX23Y23*%%MOMM*%%ADD10C,0.1*%D10*X0Y0D03*%TF.Late*%M02*", rules);
    EXPECT_EQ(read.lines(), Lines{});
    EXPECT_EQ(read.facts.attributes.size(), 1u);
    EXPECT_TRUE(read.notes.list().empty());
}

} // namespace
