// Files, lines and statements of Gerber and drill files.
#include "readers/gerber/GerberLines.h"
#include "readers/gerber/GerberNumbers.h"
#include "GerberTestSupport.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

std::vector<std::string> linesOf(const std::string &text) {
    EDA::GerberLines lines(text);
    std::vector<std::string> list;
    for (std::string_view line; lines.next(line);) list.emplace_back(line);
    return list;
}

std::vector<std::string> statementsOf(const std::string &text) {
    EDA::GerberStatements statements(text);
    std::vector<std::string> list;
    for (std::string_view statement; statements.next(statement);) list.emplace_back(statement);
    return list;
}

} // namespace

TEST(GerberLines, AllKindsOfLineEndsCount) {
    EXPECT_THAT(linesOf("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
}

TEST(GerberLines, EmptyLinesAreLeftOut) { EXPECT_THAT(linesOf("\n\na\n\n\r\nb\n"), ElementsAre("a", "b")); }

TEST(GerberLines, ATextWithoutLineEndsIsOneLine) { EXPECT_THAT(linesOf("a*b*"), ElementsAre("a*b*")); }

TEST(GerberLines, BlanksAreCutAndSingle) {
    EXPECT_THAT(linesOf("  a \t b  \n \t \n"), ElementsAre("a b", ""));
    EXPECT_THAT(linesOf("\xC2\xA0 a\xC2\xA0\xC2\xA0" "b "), ElementsAre("a b"));
}

TEST(GerberStatements, PlainStatementsEndAtStars) {
    EXPECT_THAT(statementsOf("D10*X1Y2D03**G37*"), ElementsAre("D10", "X1Y2D03", "G37"));
}

TEST(GerberStatements, ABlockOfTwoIsTwoBlocks) {
    EXPECT_THAT(statementsOf("%FSLAX24Y24*MOIN*%"), ElementsAre("%FSLAX24Y24*%", "%MOIN*%"));
}

TEST(GerberStatements, AMacroStaysWhole) {
    EXPECT_THAT(statementsOf("%AMCIRC*1,1,$1,0,0*%"), ElementsAre("%AMCIRC*1,1,$1,0,0*%"));
}

TEST(GerberStatements, ABlockOfOneIsTakenAsItStands) { EXPECT_THAT(statementsOf("%LPD*%"), ElementsAre("%LPD*%")); }

TEST(GerberStatements, AWholeFileOnOneLineIsCutAtItsBlocks) {
    EXPECT_THAT(statementsOf("G04 50% done*%FSLAX24Y24*%%MOIN*%%AMA*1,1,$1,0,0*%%ADD10A,1*%D10*X0Y0D03*%LPC*%M02*"),
                ElementsAre("G04 50% done", "%FSLAX24Y24*%", "%MOIN*%", "%AMA*1,1,$1,0,0*%", "%ADD10A,1*%", "D10",
                            "X0Y0D03", "%LPC*%", "M02"));
}

TEST(GerberNumbers, OnlyWholeNumbersCount) {
    EXPECT_EQ(EDA::gerberInt(" 12 "), 12);
    EXPECT_EQ(EDA::gerberInt("+12"), 12);
    EXPECT_EQ(EDA::gerberInt("12a"), 0);
    EXPECT_EQ(EDA::gerberInt("1.5"), 0);
    EXPECT_EQ(EDA::gerberInt("99999999999"), 0);
    EXPECT_EQ(EDA::gerberInt(""), 0);
}

TEST(GerberNumbers, DecimalsHaveNoInfinity) {
    EXPECT_EQ(EDA::gerberDouble("-.5"), -0.5);
    EXPECT_EQ(EDA::gerberDouble("1e3"), 1000.0);
    EXPECT_EQ(EDA::gerberDouble("inf"), 0.0);
    EXPECT_EQ(EDA::gerberDouble("nan"), 0.0);
    EXPECT_EQ(EDA::gerberDouble("1e400"), 0.0);
    EXPECT_EQ(EDA::gerberDouble("0x5"), 0.0);
    EXPECT_EQ(EDA::gerberDouble("1,5"), 0.0);
}

TEST(GerberNumbers, TheStartOfATextMayBeANumber) {
    EXPECT_EQ(EDA::leadingInt("12abc"), 12);
    EXPECT_EQ(EDA::leadingDouble("0.5+1"), 0.5);
    EXPECT_EQ(EDA::leadingDouble("0x5"), 0.0);
    EXPECT_EQ(EDA::leadingDouble("$1"), 0.0);
}

TEST(GerberFile, AFileThatIsNotThereIsFalseWithoutAWord) {
    GerberBench bench;
    EXPECT_FALSE(bench.reader.readFile(bench.folder.path("nothing.gbr")));
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberFile, AFileThatIsTooLargeCountsAsUnreadable) {
    EDA::GerberLimits limits;
    limits.fileSize = 10;
    GerberBench bench(limits);
    EXPECT_FALSE(bench.read("G04 a comment of more than ten bytes*"));
    EXPECT_EQ(bench.reader.getError(), "Failed to open file. " + bench.folder.path("top.gbr") + "\n");
}

TEST(GerberFile, CommentsAloneMakeAnEmptyLayerOfTheFilesName) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("G04 nothing*\n", "inner 1.art.gbr"));
    ASSERT_EQ(bench.board().numLayers(), 1U);
    EXPECT_EQ(bench.board().beginLayers()->getName(), "inner 1.art");
    EXPECT_EQ(bench.board().beginLayers()->numTraces(), 0U);
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberFile, AnUnknownStatementIsToldAndReadingGoesOn) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("QQQ*\nD10*\nX0Y0D03*\n"));
    EXPECT_EQ(bench.reader.getError(), "Unhandled statement: QQQ\n");
    EXPECT_EQ(bench.traces().size(), 1U);
}

TEST(GerberFile, ANewReadClearsTheError) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("QQQ*\n"));
    EXPECT_TRUE(bench.readLayer("D10*\n"));
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberFile, MessagesBeyondTheLimitAreCounted) {
    EDA::GerberLimits limits;
    limits.messages = 2;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer("Q1*\nQ2*\nQ3*\nQ4*\nQ5*\n"));
    EXPECT_EQ(bench.reader.getError(),
              "Unhandled statement: Q1\nUnhandled statement: Q2\nThere were 3 further messages.\n");
}

TEST(GerberFile, WhatFollowsTheEndOfTheProgramIsObeyed) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("D10*\nM02*\nX0Y0D03*\n"));
    EXPECT_EQ(bench.traces().size(), 1U);
}

TEST(GerberFile, ABlockMayGoOverManyLines) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%AMDISC*\n1,1,\n$1,0,0*\n%\n%ADD20DISC,3*%\nD20*\nX0Y0D03*\n"));
    ASSERT_EQ(bench.traces().size(), 1U);
    expectBox(bench.traces()[0].getOutline(), -1.5, -1.5, 1.5, 1.5, 0.01);
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberFile, ABlockThatIsNeverClosedTakesTheRestOfTheFile) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("D10*\nX0Y0D03*\n%LPC*\nX5Y5D03*\n"));
    EXPECT_EQ(bench.traces().size(), 1U);
}

TEST(GerberFile, ALoneSignBeforeTheHeaderIsADrillFileAllTheSame) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("%\nM48\nMETRIC,TZ\nT1C0.5\nT1\nX10000Y20000\nM30\n", "a.drl"));
    ASSERT_EQ(bench.vias().size(), 1U);
    EXPECT_EQ(bench.vias()[0].getDiameter(), 0.5);
}

TEST(GerberFile, AFileThatIsNotOfCopperIsNamedAndLeftOut) {
    GerberBench bench;
    EXPECT_FALSE(bench.read("%FSLAX24Y24*%\nQQQ*\n%TF.FileFunction,Soldermask,Top*%\n%ADD10C,1*%\nD10*\nX0Y0D03*\n"));
    EXPECT_EQ(bench.reader.getError(), "This file does not represent a Copper layer; FileFunction = Soldermask.\n");
    EXPECT_EQ(bench.board().numLayers(), 0U);
}

TEST(GerberFile, CopperWithOrWithoutFurtherValuesIsCopper) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("%TF.FileFunction,Copper,L1,Top*%\n"));
    EXPECT_TRUE(bench.read("%TF.FileFunction,Copper*%\n"));
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberFile, AFileFunctionWithoutValueIsNotCopper) {
    GerberBench bench;
    EXPECT_FALSE(bench.read("%TF.FileFunction*%\n"));
    EXPECT_EQ(bench.reader.getError(), "This file does not represent a Copper layer; FileFunction = .\n");
}

TEST(GerberFile, KnownAttributesAreSilentAndOthersTold) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("%TF.Part,Single*%\n%TF.MD5,6ab9e892830469cdff7e3e346331d404*%\n%TF.SameCoordinates*%\n"
                           "%TF.GenerationSoftware,A,B,1*%\n%TF.FilePolarity,Positive*%\n%TF.GerberVersion,J1*%\n"
                           "%TF.CreationDate,2024*%\n%TA.AperFunction,Conductor*%\n%TA.DrillTolerance,0.1*%\n%TD*%\n"));
    EXPECT_EQ(bench.reader.getError(), "Unhandled file attribute: %TF.CreationDate,2024*%\n"
                                       "Unhandled aperture attribute: %TA.DrillTolerance,0.1*%\n");
}

TEST(GerberFile, StatementsOfTheImageHaveNoEffectAndAreSilent) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%IPPOS*%\n%ASAXBY*%\n%INname*%\n%IR90*%\n%MIA1B1*%\n%OFA1B1*%\n%SFA2B2*%\n%LNtop*%\n"
                                "%ICAS*%\n%DR*%\n%AV*%\nG55*\nG70*\nG71*\nG90*\nG91*\nM01*\nM00*\nG81*\nG80*\nVER,1*\n"
                                "FMAT,2*\nICI,OFF*\nATC,ON*\nG04 nothing*\nD10*\nX10000Y0D03*\n"));
    EXPECT_EQ(bench.reader.getError(), "");
    ASSERT_EQ(bench.traces().size(), 1U);
    expectBox(bench.traces()[0].getOutline(), 0.5, -0.5, 1.5, 0.5, 0.01);
}

TEST(GerberFile, UnitsAreTakenAsTheyStand) {
    GerberBench bench;
    EXPECT_EQ(bench.board().getUnits(), "mm");
    EXPECT_TRUE(bench.read("%MOIN*%\n"));
    EXPECT_EQ(bench.board().getUnits(), "IN");
}

TEST(GerberFile, TooShortBlocksDoNoHarm) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("%FS*%\n%AD*%\n%MO%\n%F\n"));
    EXPECT_TRUE(bench.read("%FS\n"));
    EXPECT_TRUE(bench.read("%AD\n"));
    EXPECT_TRUE(bench.read("%SR\n"));
    EXPECT_TRUE(bench.read("%AM\n"));
    EXPECT_TRUE(bench.read("%TF\n"));
    EXPECT_TRUE(bench.read("%\n"));
    EXPECT_TRUE(bench.read(""));
}

TEST(GerberFile, BytesThatAreNoUtf8AreLatin1) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("Q\xB5*\n"));
    EXPECT_EQ(bench.reader.getError(), "Unhandled statement: Q\xC2\xB5\n");
}

TEST(GerberFile, AStatementThatStartsWithTMakesTheRestADrillFile) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("T5*\nX10000Y20000\n"));
    EXPECT_EQ(bench.vias().size(), 1U);
}

TEST(GerberFile, StateStartsAnewWithEachFileButForThePointAndTheApertureFunction) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%TA.AperFunction,SMDPad*%\n%LPC*%\nG36*\nX30000Y40000D02*\n"));
    EXPECT_TRUE(bench.readLayer("%ADD30C,1*%\nD30*\nD03*\n"));
    ASSERT_EQ(bench.traces(1).size(), 1U);
    EXPECT_EQ(bench.traces(1)[0].getName(), "SMDPad");
    expectBox(bench.traces(1)[0].getOutline(), 2.5, 3.5, 3.5, 4.5, 0.01);
}

TEST(GerberFile, ADrillFileIsKnownByItsFirstWords) {
    GerberBench bench;
    EXPECT_TRUE(bench.reader.isDrillFile(bench.folder.write("a", ";comment\nM48\n")));
    EXPECT_TRUE(bench.reader.isDrillFile(bench.folder.write("b", "%\nT01C1\n")));
    EXPECT_FALSE(bench.reader.isDrillFile(bench.folder.write("c", "G04 M48 stands here*\nM48\n")));
    EXPECT_FALSE(bench.reader.isDrillFile(bench.folder.write("d", "%M48\n")));
    EXPECT_FALSE(bench.reader.isDrillFile(bench.folder.write("e", "")));
    EXPECT_FALSE(bench.reader.isDrillFile(bench.folder.path("missing")));
}

TEST(GerberFile, TheNumberFormatIsThatOfTheFirstFormatLine) {
    GerberBench bench;
    int integers = 9, decimals = 9;
    EXPECT_TRUE(bench.reader.extractNumberFormat(
        QString::fromStdString(bench.folder.write("a", "G04 x*\n%FSLAX35Y46*%\n%FSLAX11Y11*%\n")), integers, decimals));
    EXPECT_EQ(integers, 3);
    EXPECT_EQ(decimals, 5);
    EXPECT_FALSE(bench.reader.extractNumberFormat(QString::fromStdString(bench.folder.write("b", "D10*\n")), integers,
                                                  decimals));
    EXPECT_EQ(integers, 3);
}
