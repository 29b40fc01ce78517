// Statements, attributes and file sets where the reader does what its format's readers always did, and what
// one would not guess.
#include "GerberTestSupport.h"
#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"
#include "support/CancelAfter.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using EDA::EDAOutline;
using ::testing::ElementsAre;

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double quarterStroke =
    0.25 * pi * (5.5 * 5.5 - 4.5 * 4.5) + 0.25 * pi; // of radius 5 by a disc of 1

EDAOutline drawnOne(const std::string &statements) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(statements));
    EXPECT_EQ(bench.reader.getError(), "");
    const auto traces = bench.traces();
    EXPECT_EQ(traces.size(), 1U);
    return traces.empty() ? EDAOutline() : traces[0].getOutline();
}

std::size_t numDrawn(const std::string &statements) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(statements));
    return bench.traces().size();
}

std::string errorOf(const std::string &statements) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(statements));
    return bench.reader.getError();
}

std::vector<std::string> namesOf(const std::vector<EDA::EDATrace> &traces) {
    std::vector<std::string> names;
    for (const EDA::EDATrace &trace : traces)
        names.push_back(trace.getName());
    return names;
}

QString pathIn(const TempFolder &folder, const char *name, const std::string &text) {
    return QString::fromStdString(folder.write(name, text));
}

} // namespace

TEST(GerberStatementTable, AShortArcCodeWithACoordinateIsAnArc) {
    for (const char *arc : {"G3X0Y50000I-50000J0D01*\n", "G3Y50000X0I-50000J0D01*\n",
                            "G03X0Y50000I-50000J0D01*\n", "G3X0Y50000I-50000J0D1*\n"}) {
        EXPECT_NEAR(drawnOne(std::string("G75*\nD10*\nX50000Y0D02*\n") + arc).getArea(), quarterStroke, 0.1)
            << arc;
    }
    for (const char *arc : {"G2X50000Y0I0J-50000D01*\n", "G2Y0X50000I0J-50000D01*\n"}) {
        EXPECT_NEAR(drawnOne(std::string("G75*\nD10*\nX0Y50000D02*\n") + arc).getArea(), quarterStroke, 0.1)
            << arc;
    }
}

TEST(GerberStatementTable, AShortLineCodeWithACoordinateEndsTheArcs) {
    for (const char *line : {"G1X0Y50000I-50000J0D01*\n", "G1Y50000X0I-50000J0D01*\n"}) {
        const EDAOutline stroke = drawnOne(std::string("G03*\nD10*\nX50000Y0D02*\n") + line);
        EXPECT_NEAR(stroke.getArea(), std::sqrt(50.0) + 0.25 * pi, 0.05) << line;
    }
}

TEST(GerberStatementTable, ShortCodesAloneAreUnknownAndDrawNothing) {
    EXPECT_EQ(errorOf("D10*\nX0Y0D03*\nG1*\nG2*\nG3*\nG4 a comment*\n"),
              "Unhandled statement: G1\nUnhandled statement: G2\nUnhandled statement: G3\n"
              "Unhandled statement: G4 a comment\n");
    EXPECT_EQ(numDrawn("D10*\nX0Y0D03*\nG1*\nG2*\nG4*\n"), 1U);
}

TEST(GerberStatementTable, OperationsMayHaveOneDigit) {
    expectBox(drawnOne("D10*\nX0Y0D2*\nX30000Y0D1*\n"), -0.5, -0.5, 3.5, 0.5, 0.01);
    expectBox(drawnOne("D10*\nX30000Y0D3*\n"), 2.5, -0.5, 3.5, 0.5, 0.01);
    expectBox(drawnOne("D10*\nG01X0Y0D2*\nG01X30000Y0D1*\n"), -0.5, -0.5, 3.5, 0.5, 0.01);
    expectBox(drawnOne("D10*\nG01X30000Y0D3*\n"), 2.5, -0.5, 3.5, 0.5, 0.01);
}

TEST(GerberStatementTable, AnApertureThatEndsLikeAnOperationIsStillChosen) {
    expectBox(drawnOne("%ADD31R,4X2*%\nD31*\nX0Y0D03*\n"), -2, -1, 2, 1);
    expectBox(drawnOne("%ADD21R,4X2*%\nG54D21*\nX0Y0D03*\n"), -2, -1, 2, 1);
}

TEST(GerberStatementTable, TheEndOfTheProgramHasTwoSpellings) {
    EXPECT_EQ(errorOf("M02*\nM2*\nM00*\nM01*\n"), "");
    EXPECT_EQ(numDrawn("D10*\nM2*\nX0Y0D03*\n"), 1U);
}

TEST(GerberStatementTable, WhatBelongsToDrillFilesIsUnknownInLayers) {
    EXPECT_EQ(errorOf("M30*\nINCH,TZ*\nM72*\nMETRIC*\nM71*\nR3X1*\n;words*\n"),
              "Unhandled statement: M30\nUnhandled statement: INCH,TZ\nUnhandled statement: M72\n"
              "Unhandled statement: METRIC\nUnhandled statement: M71\nUnhandled statement: R3X1\n"
              "Unhandled statement: ;words\n");
}

TEST(GerberStatementTable, CaseCounts) {
    EXPECT_EQ(errorOf("g04 words*\nd10*\nx0y0d03*\n%lpc*%\nm02*\n"),
              "Unhandled statement: g04 words\nUnhandled statement: d10\nUnhandled statement: x0y0d03\n"
              "Unhandled statement: %lpc*%\nUnhandled statement: m02\n");
}

TEST(GerberStatementTable, AnUnknownBlockIsToldWithItsSigns) {
    EXPECT_EQ(errorOf("%XX1*%\n"), "Unhandled statement: %XX1*%\n");
}

TEST(GerberStatementTable, APolarityThatIsNotDarkIsClear) {
    EXPECT_EQ(numDrawn("%LPX*%\nD10*\nX0Y0D03*\n"), 0U);
    EXPECT_EQ(numDrawn("%LP*%\nD10*\nX0Y0D03*\n"), 0U);
    EXPECT_EQ(numDrawn("%LPD*%\nD10*\nX0Y0D03*\n"), 1U);
}

TEST(GerberStatementTable, AFormatThatDoesNotLeaveOutLeadingZerosKeepsThem) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("%FSDAX24Y24*%\n%ADD10R,2X2*%\nD10*\nX01Y02D03*\n"));
    ASSERT_EQ(bench.traces().size(), 1U);
    expectBox(bench.traces()[0].getOutline(), 0, 1, 2, 3);
}

TEST(GerberStatementTable, WithoutAFormatSixDecimalsCount) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("%ADD10R,2X2*%\nD10*\nX5000000Y0D03*\n"));
    ASSERT_EQ(bench.traces().size(), 1U);
    expectBox(bench.traces()[0].getOutline(), 4, -1, 6, 1);
}

TEST(GerberStatementTable, AnArcCodeWithoutOperationRepeatsTheLast) {
    const std::string start = "G75*\nD10*\nX60000Y0D02*\nG01X50000Y0D01*\n";
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(start + "G03X0Y50000I-50000J0*\n"));
    ASSERT_EQ(bench.traces().size(), 2U);
    EXPECT_NEAR(bench.traces()[1].getOutline().getArea(), quarterStroke, 0.1);
}

TEST(GerberStatementTable, CoordinatesWithoutOperationKeepTheArcWhereAPlainDrawEndsIt) {
    const std::string arc = "G75*\nD10*\nX50000Y0D02*\nG03X0Y50000I-50000J0D01*\n";
    for (const auto &[next, area] : {std::pair{"X-50000Y0I0J-50000*\n", quarterStroke},
                                     std::pair{"X-50000Y0I0J-50000D01*\n", std::sqrt(50.0) + 0.25 * pi}}) {
        GerberBench bench;
        EXPECT_TRUE(bench.readLayer(arc + next));
        ASSERT_EQ(bench.traces().size(), 2U);
        EXPECT_NEAR(bench.traces()[1].getOutline().getArea(), area, 0.1) << next;
    }
}

TEST(GerberStatementTable, APlainDrawAfterAQuadrantModeEndsTheArcsForWhatFollows) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("G75*\nD10*\nX50000Y0D02*\nG03*\nX0Y50000D01*\nX-50000Y0I0J-50000*\n"));
    ASSERT_EQ(bench.traces().size(), 2U);
    EXPECT_NEAR(bench.traces()[1].getOutline().getArea(), std::sqrt(50.0) + 0.25 * pi, 0.05);
}

TEST(GerberAttributes, TheEndOfAttributesKeepsTheApertureFunction) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%TA.AperFunction,ViaPad*%\n%TD*%\n%TD.AperFunction*%\n%TA.AperFunction*%\n%"
                                "ADD20C,1*%\nD20*\nX0Y0D03*\n"));
    EXPECT_EQ(bench.reader.getError(), "");
    EXPECT_THAT(namesOf(bench.traces()), ElementsAre("ViaPad"));
}

TEST(GerberAttributes, OnlyTheFirstValueOfAnApertureFunctionIsAName) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%TA.AperFunction,SMDPad,CuDef*%\n%ADD20C,1*%\nD20*\nX0Y0D03*\n"));
    EXPECT_THAT(namesOf(bench.traces()), ElementsAre("SMDPad"));
}

TEST(GerberAttributes, StrokesAndRegionsAreNotNamedByTheApertureFunction) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%TA.AperFunction,Conductor*%\n%ADD20C,1*%\nD20*\nX0Y0D02*\nX90000D01*\n"
                                "G36*\nX0Y200000D02*\nX10000D01*\nY210000D01*\nG37*\n"));
    EXPECT_THAT(namesOf(bench.traces()), ElementsAre("Conductor0", "Conductor1"));
}

TEST(GerberAttributes, NamesAreUniqueWithinALayerOnly) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("D10*\nX0Y0D03*\n"));
    EXPECT_TRUE(bench.readLayer("D10*\nX0Y0D03*\n"));
    EXPECT_THAT(namesOf(bench.traces(0)), ElementsAre("Conductor0"));
    EXPECT_THAT(namesOf(bench.traces(1)), ElementsAre("Conductor0"));
}

TEST(GerberAttributes, AFileThatIsNotOfCopperLeavesItsStateToTheNext) {
    // Such a reader is best thrown away; what was drawn before the attribute comes up in the next file.
    GerberBench bench;
    EXPECT_FALSE(bench.readLayer("D11*\nX0Y0D03*\n%TF.FileFunction,Legend,Top*%\n"));
    EXPECT_TRUE(bench.read("X50000Y0D03*\n"));
    EXPECT_EQ(bench.reader.getError(), "");
    ASSERT_EQ(bench.traces().size(), 2U);
    expectBox(bench.traces()[1].getOutline(), 4, -0.5, 6, 0.5);
    EXPECT_TRUE(bench.read("X50000Y0D03*\n"));
    EXPECT_EQ(bench.traces(1).size(), 0U);
}

TEST(GerberFileSet, ALayerOfCommentsCountsAsALayer) {
    TempFolder folder;
    EDA::GerberReader reader;
    reader.initialiseFiles({pathIn(folder, "a.gbr", "G04 nothing*\nG04 to see*\n")});
    EXPECT_TRUE(reader.readFiles(nullptr));
    ASSERT_EQ(reader.getBoard().numLayers(), 1U);
    EXPECT_EQ(reader.getBoard().beginLayers()->numTraces(), 0U);
}

TEST(GerberFileSet, FilesAreAddedToThoseBeforeAndAnArrangementReplacesThem) {
    TempFolder folder;
    const QString layer = pathIn(folder, "a.gbr", "G04*\n"), drill = pathIn(folder, "a.drl", "M48\n");
    EDA::GerberReader reader;
    reader.initialiseFiles({layer});
    reader.initialiseFiles({drill, layer});
    EXPECT_EQ(reader.getLayerFiles(), QStringList({layer, layer}));
    EXPECT_EQ(reader.getViaFiles(), QStringList({drill}));
    reader.setLayerArrangement({}, {}, {}, {});
    EXPECT_TRUE(reader.getLayerFiles().isEmpty());
    EXPECT_TRUE(reader.getViaFiles().isEmpty());
}

TEST(GerberFileSet, UnitsOfADrillFileOverrideThoseOfTheLayers) {
    TempFolder folder;
    EDA::GerberReader reader;
    reader.initialiseFiles({pathIn(folder, "a.gbr", "%MOMM*%\n"), pathIn(folder, "a.drl", "M48\nINCH,TZ\n")});
    EXPECT_TRUE(reader.readFiles(nullptr));
    EXPECT_EQ(reader.getBoard().getUnits(), "in");
}

TEST(GerberFileSet, AnUnknownUnitStandsAsItIs) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("%MOFURLONG*%\n"));
    EXPECT_EQ(bench.board().getUnits(), "FURLONG");
}

TEST(GerberFileSet, OnlyFullCirclesOfAGerberFileBecomeVias) {
    // A ring, a stroke and a square of eight points and more are dropped without a word.
    TempFolder folder;
    EDA::GerberReader reader;
    const QString drills = pathIn(folder, "a.gbr",
                                  "%FSLAX24Y24*%\n%ADD10C,2X1*%\n%ADD11C,1*%\n%ADD12P,1X7*%\n%ADD13P,1X8*%\n"
                                  "D10*\nX0Y0D03*\nD11*\nX100000Y0D02*\nX150000Y0D01*\nD12*\nX200000Y0D03*\n"
                                  "D13*\nX250000Y0D03*\n");
    reader.setLayerArrangement({}, {drills}, {{0, "top"}}, {{0, "bottom"}});
    EXPECT_TRUE(reader.readFiles(nullptr));
    EXPECT_EQ(reader.getError(), "");
    ASSERT_EQ(reader.getBoard().numVias(1), 1U);
    const EDA::EDAVia &via = *reader.getBoard().beginVias();
    EXPECT_NEAR(via.getXCentre(), 25.0, 1e-9);
    EXPECT_NEAR(via.getDiameter(), 1.0, 1e-9);
    std::string start = "x", end = "x";
    via.getLayers(start, end);
    EXPECT_EQ(start + end, ""); // unlike holes of a drill file, these get no layers
}

TEST(GerberFileSet, WithMergingRegionsComeFirstAndWithoutFlashes) {
    const char *const text =
        "%FSLAX24Y24*%\n%ADD11R,2X1*%\nD11*\nX0Y0D03*\nG36*\nX200000Y0D02*\nX210000D01*\n"
        "Y10000D01*\nX200000Y0D01*\nG37*\n";
    for (const bool merge : {false, true}) {
        GerberBench bench;
        bench.reader.setMergeConductors(merge);
        EXPECT_TRUE(bench.read(text));
        ASSERT_EQ(bench.traces().size(), 2U);
        expectBox(bench.traces()[merge ? 1 : 0].getOutline(), -1, -0.5, 1, 0.5);
        expectBox(bench.traces()[merge ? 0 : 1].getOutline(), 20, 0, 21, 1);
    }
}

TEST(GerberFileSet, ACancelledMergeStillMakesItsLayer) {
    // Two pairs that overlap: the cancel comes when the first is united, and the second stays as it was.
    TempFolder folder;
    EDA::GerberReader reader;
    const std::string text =
        "%FSLAX24Y24*%%ADD11R,2X1*%D11*X0Y0D03*X10000Y5000D03*X100000Y0D03*X110000Y5000D03*";
    reader.initialiseFiles({pathIn(folder, "a.gbr", text)});
    reader.getOptions()->findAttribute(EntityModel::Merge_Conductors_t, false)->setFromString("true");
    const int pollsOfOneLine = 1, pollsOfSearch = 4, pollsOfFirstUnion = 1;
    CancelAfter progress(pollsOfOneLine + pollsOfSearch + pollsOfFirstUnion);
    reader.readFiles(&progress);
    ASSERT_EQ(reader.getBoard().numLayers(), 1U);
    ASSERT_EQ(reader.getBoard().beginLayers()->numTraces(), 3U);
    expectBox(reader.getBoard().beginLayers()->beginTraces()->getOutline(), -1, -0.5, 2, 1);
}

TEST(GerberFileLimits, LinesBeyondTheLimitAreLeftOutWithAWord) {
    EDA::GerberLimits limits;
    limits.textSize = 30;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer("D11*\nX0Y0D03*X50000Y0D03*X90000Y0D03*\nX200000Y0D03*\n"));
    ASSERT_EQ(bench.traces().size(), 1U);
    expectBox(bench.traces()[0].getOutline(), 19, -0.5, 21, 0.5);
    EXPECT_EQ(bench.reader.getError(), "Lines of more than 30 bytes are left out: 1\n");
}

TEST(GerberFileLimits, AnOpenBlockEndsAtTheLimitOfText) {
    EDA::GerberLimits limits;
    limits.textSize = 30;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer("D11*\n%AMM*\n1,1,1,0,0*\n1,1,1,0,0*\n1,1,1,0,0*\nX200000Y0D03*\n"));
    EXPECT_EQ(bench.traces().size(), 1U);
}
