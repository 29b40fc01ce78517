#include "DrillBench.h"

#include <gmock/gmock.h>

using namespace EDA::Fabrication;

namespace {

DrillTool tool(std::string const &definition, std::string const &unit = "METRIC,TZ,000.000") {
    const ReadDrills read = readDrills("M48\n" + unit + "\n" + definition + "\n%\nT1\nX1000Y1000\nM30\n");
    return read.data.tools.count(1) != 0 ? read.data.tools.at(1) : DrillTool();
}

} // namespace

TEST(DrillTools, SizesComeInAllSpellings) {
    EXPECT_NEAR(tool("T1C0.3").diameter, 0.3, 1e-12);
    EXPECT_NEAR(tool("T01F00S00C.3").diameter, 0.3, 1e-12);
    EXPECT_NEAR(tool("T1C0.3H500Z-1").diameter, 0.3, 1e-12);
    EXPECT_NEAR(tool("T01C.3").diameter, 0.3, 1e-12);
    EXPECT_NEAR(tool("t1c0.3").diameter, 0.3, 1e-12);
    EXPECT_NEAR(tool("T1C0.012", "INCH,TZ,00.0000").diameter, 0.3048, 1e-12);
}

TEST(DrillTools, ASizeWithoutAPointIsInThousandthsWhereItWouldBeAbsurd) {
    EXPECT_NEAR(tool("T1C0300").diameter, 0.3, 1e-12);
    EXPECT_NEAR(tool("T1C3").diameter, 3.0, 1e-12);
}

TEST(DrillTools, AnAbsurdSizeWithAPointIsWhatTheFileSays) {
    EXPECT_NEAR(tool("T1C139.7").diameter, 139.7, 1e-12);
}

TEST(DrillTools, ANumberMayCarryACompensation) {
    const ReadDrills read =
        readDrills("M48\nMETRIC,TZ,000.000\nT0101C0.3\nT0202C0.5\n%\nT0101\nX1000Y1\nT0202\nX2000Y1\nM30\n");
    EXPECT_EQ(read.numHoles(1), 1u);
    EXPECT_EQ(read.numHoles(2), 1u);
    const ReadDrills mixed = readDrills("M48\nMETRIC,TZ,000.000\nT01C0.3\n%\nT0105\nX1000Y1\nM30\n");
    EXPECT_EQ(mixed.numHoles(1), 1u);
}

TEST(DrillTools, NumbersOfThreeDigitsAreNumbers) {
    const ReadDrills read = readDrills("M48\nMETRIC,TZ,000.000\nT1C0.3\nT100C0.5\n%\nT100\nX1000Y1\nM30\n");
    EXPECT_EQ(read.numHoles(100), 1u);
}

TEST(DrillTools, SizesAreInTheUnitOfTheHeaderWhereThePlacesAreNot) {
    const ReadDrills read = readDrills("M48\nINCH,TZ\nT1C0.02\n%\nM71\nT1\nX1.5Y1.\nM30\n");
    EXPECT_NEAR(read.data.tools.at(1).diameter, 0.508, 1e-12);
    EXPECT_NEAR(read.data.holes.at(0).at.x, 1.5, 1e-12);
}

TEST(DrillTools, AUnitInTheBodyCountsForAHeaderWithoutOne) {
    const ReadDrills read = readDrills(
        "M48\nT01C.864\nR,H\n/\n%\nG90\nM71\nG93X000000Y000000\nG05\nT01\nX40500Y6270\nY3730\nM30\n");
    EXPECT_NEAR(read.data.tools.at(1).diameter, 0.864, 1e-12);
    ASSERT_EQ(read.data.holes.size(), 2u);
    EXPECT_NEAR(read.data.holes[1].at.x, 40.5, 1e-9);
    EXPECT_NEAR(read.data.holes[1].at.y, 3.73, 1e-9);
    EXPECT_FALSE(read.notes.has(NoteKind::LeftOut));
}

TEST(DrillTools, TypesAreForTheToolsAfterThem) {
    const ReadDrills read =
        readDrills("M48\nMETRIC,TZ,000.000\n;TYPE=PLATED\nT1C0.3\n;TYPE=NON_PLATED\nT2C3.0\n%\nM30\n");
    EXPECT_EQ(read.data.tools.at(1).plated, true);
    EXPECT_EQ(read.data.tools.at(2).plated, false);
}

TEST(DrillTools, AttributesAreForTheToolsAfterThem) {
    const ReadDrills read =
        readDrills("M48\nMETRIC,TZ,000.000\n; #@! TA.AperFunction,Plated,PTH,ViaDrill\nT1C0.3\n"
                   "; #@! TA.AperFunction,NonPlated,NPTH,MechanicalDrill\nT2C3.0\n"
                   "; #@! TD\nT3C1.0\n%\nM30\n");
    EXPECT_EQ(read.data.tools.at(1).function, "ViaDrill");
    EXPECT_EQ(read.data.tools.at(1).plated, true);
    EXPECT_EQ(read.data.tools.at(2).function, "MechanicalDrill");
    EXPECT_EQ(read.data.tools.at(2).plated, false);
    EXPECT_EQ(read.data.tools.at(3).plated, std::nullopt);
}

TEST(DrillTools, HoleSizeCommentsGiveSizeAndPlating) {
    const ReadDrills read = readDrills(
        "M48\nINCH,TZ,00.0000\n"
        ";T01 Holesize 1. = 12.000000 Tolerance = +3.000000/-12.000000 PLATED MILS Quantity = 178\n"
        ";T02 Holesize 2. = 0.500000 Tolerance = +0.0/-0.0 NON_PLATED MM Quantity = 2\n"
        ";Holesize 3 = 0.0360 inch\n%\nT1\nX1Y1\nT2\nX1Y1\nT3\nX1Y1\nM30\n");
    EXPECT_NEAR(read.data.tools.at(1).diameter, 0.3048, 1e-9);
    EXPECT_EQ(read.data.tools.at(1).plated, true);
    EXPECT_NEAR(read.data.tools.at(2).diameter, 0.5, 1e-9);
    EXPECT_EQ(read.data.tools.at(2).plated, false);
    EXPECT_NEAR(read.data.tools.at(3).diameter, 0.9144, 1e-9);
    EXPECT_TRUE(read.facts.toolsWithoutSize.empty());
}

TEST(DrillTools, ToolsAreTakenInTurnWhereChangesNameNone) {
    const ReadDrills read =
        readDrills(";Holesize 1 = 0.3 mm\n;Holesize 2 = 0.5 mm\n%\nX1.0Y1.0\nX2.0Y1.0\nM00\nX3.0Y1.0\nM30\n");
    EXPECT_EQ(read.numHoles(1), 2u);
    EXPECT_EQ(read.numHoles(2), 1u);
    EXPECT_NE(read.note("tools taken in turn"), nullptr);
}

TEST(DrillTools, SizesMayStandBesideTheFile) {
    const std::string text = "M48\nINCH,TZ,00.0000\nT1\n%\nT1\nX10000Y10000\nM30\n";
    std::map<int, DrillTool> beside;
    beside[1].diameter = 0.4;
    beside[1].plated = false;
    const ReadDrills read = readDrills(text, {}, {}, beside);
    EXPECT_NEAR(read.data.tools.at(1).diameter, 0.4, 1e-12);
    EXPECT_EQ(read.data.tools.at(1).plated, false);
}

TEST(DrillTools, HolesOfUnknownSizeAreLeftOutAndTold) {
    const ReadDrills read = readDrills("M48\nINCH,TZ,00.0000\nT1C0.02\n%\nT1\nX1Y1\nT5\nX1Y1\nX2Y1\nM30\n");
    EXPECT_EQ(read.data.holes.size(), 1u);
    EXPECT_EQ(read.data.tools.count(5), 0u);
    Note const *note = read.note("tool 5");
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->kind, NoteKind::LeftOut);
    EXPECT_EQ(note->count, 2u);
}

TEST(DrillTools, ToolZeroPutsTheToolAway) {
    const ReadDrills read = readBody("X1000Y1000\nT00\nX2000Y1000\n");
    EXPECT_EQ(read.data.holes.size(), 1u);
    EXPECT_NE(read.note("before any tool"), nullptr);
}

TEST(DrillTools, AToolDefinedInTheBodyIsTaken) {
    const ReadDrills read = readDrills("METRIC,TZ,000.000\nT01C0.5\nX1000Y1000\nT02C0.8\nX2000Y2000\nM30\n");
    EXPECT_EQ(read.numHoles(1), 1u);
    EXPECT_EQ(read.numHoles(2), 1u);
}

TEST(DrillTools, ANewSizeOfAUsedNumberIsAnotherTool) {
    const ReadDrills read =
        readDrills("METRIC,TZ,000.000\nT1C0.5\nX1000Y1000\nT1C0.8\nX2000Y2000\nX3000Y2000\nM30\n");
    EXPECT_EQ(read.data.tools.size(), 2u);
    EXPECT_NEAR(read.data.tools.at(1).diameter, 0.5, 1e-12);
    EXPECT_NEAR(read.data.tools.at(read.data.holes[2].tool).diameter, 0.8, 1e-12);
}

TEST(DrillTools, PlatingIsSetWhereNothingSaysIt) {
    ReadDrills read = readDrills("M48\nMETRIC,TZ,000.000\n;TYPE=PLATED\nT1C0.3\n%\nM30\n");
    read.data.tools[7].diameter = 1.0;
    setPlating(read.data, false);
    EXPECT_EQ(read.data.tools.at(1).plated, true);
    EXPECT_EQ(read.data.tools.at(7).plated, false);
}

TEST(DrillTools, HolesOfUnknownPlatingAreToldOnceWithTheirNumber) {
    ReadDrills read = readBody("X0Y0\nX1000Y0\nX0Y5000G85X1000Y5000\nT2\nX0Y9000\n");
    read.data.tools[2].plated = true;
    tellUnknownPlating(read.data, read.notes);
    Note const *const note = read.note("whether they are plated: taken as not plated");
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->kind, NoteKind::Guessed);
    EXPECT_EQ(note->count, 3u);
    EXPECT_FALSE(read.data.tools[1].plated);
}

TEST(DrillTools, HolesOfKnownPlatingAreNotTold) {
    ReadDrills read = readBody("X0Y0\n");
    setPlating(read.data, false);
    tellUnknownPlating(read.data, read.notes);
    EXPECT_TRUE(read.notes.list().empty());
}
