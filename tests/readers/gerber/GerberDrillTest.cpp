// Tools and holes of drill files.
#include "GerberTestSupport.h"

using namespace TestSupport;

namespace {

struct DrillBench : GerberBench {
    DrillBench() { reader.setViaNumberFormat(3, 3); }
};

EDA::EDAVia onlyVia(DrillBench &bench, const std::string &statements) {
    EXPECT_TRUE(bench.readDrills(statements));
    const auto vias = bench.vias();
    EXPECT_EQ(vias.size(), 1U);
    return vias.empty() ? EDA::EDAVia() : vias[0];
}

} // namespace

TEST(GerberDrill, AToolIsDefinedByItsSizeAndChosenByItsNumber) {
    DrillBench bench;
    const EDA::EDAVia via = onlyVia(bench, "T1C0.5\nT2C0.8F200S60\n%\nT2\nX001000Y002000\n");
    EXPECT_EQ(via.getDiameter(), 0.8);
    EXPECT_EQ(via.getXCentre(), 1.0);
    EXPECT_EQ(via.getYCentre(), 2.0);
    EXPECT_EQ(via.getHoleType(), "VIA");
    EXPECT_FALSE(via.isPlated());
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberDrill, ADefinitionDoesNotChooseTheTool) {
    DrillBench bench;
    EXPECT_EQ(onlyVia(bench, "T1C0.5\nX001000Y002000\n").getDiameter(), 0.35);
}

TEST(GerberDrill, WhatFollowsTheNumbersOfAToolDoesNotSpoilThem) {
    DrillBench bench;
    EXPECT_EQ(onlyVia(bench, "T1F00S00C0.3\nT1\nX001000Y002000\n").getDiameter(), 0.3);
    DrillBench other;
    EXPECT_EQ(onlyVia(other, "T1C0.5S60\nT1\nX001000Y002000\n").getDiameter(), 0.5);
}

TEST(GerberDrill, AToolWithoutSizeMakesHolesOfNone) {
    DrillBench bench;
    EXPECT_EQ(onlyVia(bench, "T7\nX001000Y002000\n").getDiameter(), 0.0);
}

TEST(GerberDrill, HolesOfOneToolAreOneDefinition) {
    DrillBench bench;
    const EDA::EDAVia via = onlyVia(bench, "T1C0.5\nT1\nX001000Y002000\nX003000\nY005000\n");
    ASSERT_EQ(via.numInstances(), 2U);
    EXPECT_EQ(via.getInstanceXCentre(0), 3.0);
    EXPECT_EQ(via.getInstanceYCentre(0), 2.0);
    EXPECT_EQ(via.getInstanceYCentre(1), 5.0);
}

TEST(GerberDrill, HolesOfTwoFilesAreOneDefinitionWithNamesOfTheirOwn) {
    DrillBench bench;
    EXPECT_TRUE(bench.readDrills("T1C0.5\nT1\nX001000Y002000\n"));
    const EDA::EDAVia via = onlyVia(bench, "T1C0.5\nT1\nX009000Y002000\n");
    EXPECT_EQ(via.numInstances(), 1U);
    EXPECT_NE(via.getName(), via.getInstanceName(0));
}

TEST(GerberDrill, ARepeatDrillsInARowAndComesBack) {
    DrillBench bench;
    const EDA::EDAVia via = onlyVia(bench, "T1C0.5\nT1\nX001000Y002000\nR3X001000\nX500\n");
    ASSERT_EQ(via.numInstances(), 4U);
    EXPECT_EQ(via.getInstanceXCentre(0), 2.0);
    EXPECT_EQ(via.getInstanceXCentre(2), 4.0);
    EXPECT_EQ(via.getInstanceYCentre(2), 2.0);
    EXPECT_EQ(via.getInstanceXCentre(3), 0.5);
    EXPECT_EQ(via.getInstanceYCentre(3), 2.0);
}

TEST(GerberDrill, ARepeatMayGoAlongY) {
    DrillBench bench;
    EXPECT_EQ(onlyVia(bench, "T1C0.5\nT1\nX001000Y002000\nR2Y001000\n").getInstanceYCentre(1), 4.0);
}

TEST(GerberDrill, ARepeatOfNoneDrillsNothing) {
    DrillBench bench;
    EXPECT_EQ(onlyVia(bench, "T1C0.5\nT1\nX001000Y002000\nR0X001000\nR-3X001000\nR\n").numInstances(), 0U);
}

TEST(GerberDrill, TooManyRepeatsAreToldAndNotDrilled) {
    DrillBench bench;
    EXPECT_EQ(onlyVia(bench, "T1C0.5\nT1\nX001000Y002000\nR2000000000X1\n").numInstances(), 0U);
    EXPECT_EQ(bench.reader.getError(), "Unhandled statement: R2000000000X1\n");
}

TEST(GerberDrill, UnitsOfTheFileAreThoseOfTheBoard) {
    DrillBench bench;
    EXPECT_TRUE(bench.read("M48\nINCH,TZ\nM30\n", "a.drl"));
    EXPECT_EQ(bench.board().getUnits(), "in");
    EXPECT_TRUE(bench.read("M48\nM71\nM30\n", "a.drl"));
    EXPECT_EQ(bench.board().getUnits(), "mm");
    EXPECT_TRUE(bench.read("M48\nM72\nM30\n", "a.drl"));
    EXPECT_EQ(bench.board().getUnits(), "in");
}

TEST(GerberDrill, ZerosAreLeftOutWhereTheFileSays) {
    for (const auto &[units, expected] : {std::pair{"METRIC,TZ", 0.001}, {"METRIC,LZ", 100.0}, {"METRIC", 0.001}}) {
        DrillBench bench;
        EXPECT_TRUE(bench.read(std::string("M48\n") + units + "\nT1C1\nT1\nX1Y1\n", "a.drl"));
        EXPECT_EQ(bench.vias()[0].getXCentre(), expected) << units;
    }
}

TEST(GerberDrill, ACoordinateWithAPointIsZero) {
    DrillBench bench;
    EXPECT_EQ(onlyVia(bench, "T1C0.5\nT1\nX1.5Y2.5\n").getXCentre(), 0.0);
}

TEST(GerberDrill, AHoleSizeCommentDefinesAToolAndStartsWithTheFirst) {
    DrillBench bench;
    const EDA::EDAVia via = onlyVia(bench, "; Holesize 1. = 0.45 Tolerance = +0 PLATED MM Quantity = 9\nX001000Y002000\n");
    EXPECT_EQ(via.getDiameter(), 0.45);
    EXPECT_TRUE(via.isPlated());
}

TEST(GerberDrill, APlatedWordIsAWordOfItsOwn) {
    DrillBench bench;
    EXPECT_FALSE(onlyVia(bench, "; Holesize 1. = 0.45 NON_PLATED\nX001000Y002000\n").isPlated());
}

TEST(GerberDrill, AHoleSizeCommentThatStartsWithAToolGivesNoSize) {
    DrillBench bench;
    const EDA::EDAVia via = onlyVia(bench, ";T1 Holesize 1. = 0.45 PLATED\nX001000Y002000\n");
    EXPECT_EQ(via.getDiameter(), 0.0);
    EXPECT_TRUE(via.isPlated());
}

TEST(GerberDrill, ShortHoleSizeCommentsDoNoHarm) {
    DrillBench bench;
    EXPECT_TRUE(bench.readDrills(";Holesize\n;Holesize 1e300\n;x Holesize\n;\n;   \n"));
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberDrill, M00TakesTheNextTool) {
    DrillBench bench;
    EXPECT_TRUE(bench.readDrills("T1C0.5\nT2C0.8\nT1\nX001000Y002000\nM00\nX003000\n"));
    ASSERT_EQ(bench.vias().size(), 2U);
    EXPECT_EQ(bench.vias()[1].getDiameter(), 0.8);
}

TEST(GerberDrill, M00BeforeAnyToolTakesToolZero) {
    DrillBench bench;
    EXPECT_EQ(onlyVia(bench, "T0C0.7\nM00\nX001000Y002000\n").getDiameter(), 0.7);
}

TEST(GerberDrill, RoutesAreToldAndDrillNothing) {
    DrillBench bench;
    EXPECT_TRUE(bench.readDrills("T1C0.5\nT1\nG00X001000Y001000\nM15\nM16\nG05\n"));
    EXPECT_TRUE(bench.vias().empty());
    EXPECT_EQ(bench.reader.getError(), "Unhandled statement: G00X001000Y001000\nUnhandled statement: M15\n"
                                       "Unhandled statement: M16\nUnhandled statement: G05\n");
}

TEST(GerberDrill, WhatFollowsTheEndIsDrilled) {
    DrillBench bench;
    EXPECT_EQ(onlyVia(bench, "T1C0.5\nT1\nM30\nX001000Y002000\n").getDiameter(), 0.5);
}

TEST(GerberDrill, TheNumberFormatIsClamped) {
    DrillBench bench;
    bench.reader.setViaNumberFormat(-5, 1000000);
    EXPECT_EQ(onlyVia(bench, "T1C0.5\nT1\nX1000000000000000Y0\n").getXCentre(), 1.0);
}
