#include "DrillBench.h"

#include <gmock/gmock.h>

using namespace EDA::Fabrication;

TEST(ToolTable, AReportWithTwoUnitsIsRead) {
    const auto tools =
        readToolTable("NCDrill File Report For: X  18.04.2005  21:37:32\n"
                      "Tool         Hole Size          Hole Count Plated       Tool Travel\n"
                      "-------------------------------\n"
                      "T1        12mil (0.3048mm)         106              34.32 Inch (871.65 mm)\n"
                      "T10       126mil (3.2004mm)        2     NPTH       2.85 Inch (72.35 mm)\n"
                      "Totals                             108\n");
    ASSERT_EQ(tools.size(), 2u);
    EXPECT_NEAR(tools.at(1).diameter, 0.3048, 1e-9);
    EXPECT_EQ(tools.at(1).plated, std::nullopt);
    EXPECT_NEAR(tools.at(10).diameter, 3.2004, 1e-9);
    EXPECT_EQ(tools.at(10).plated, false);
}

TEST(ToolTable, ColumnsMayNameTheUnit) {
    const auto tools = readToolTable("Tool  Size [mm]  Count\n1  0.30  12\n2  0.90  5  PLATED\n");
    ASSERT_EQ(tools.size(), 2u);
    EXPECT_NEAR(tools.at(1).diameter, 0.3, 1e-9);
    EXPECT_NEAR(tools.at(2).diameter, 0.9, 1e-9);
    EXPECT_EQ(tools.at(2).plated, true);
}

TEST(ToolTable, AUnitMayStandApart) {
    const auto tools = readToolTable("T01 0.0118\" 12\nT02 0.5 mm 3\nT03 20 mil 3\n");
    EXPECT_NEAR(tools.at(1).diameter, 0.29972, 1e-9);
    EXPECT_NEAR(tools.at(2).diameter, 0.5, 1e-9);
    EXPECT_NEAR(tools.at(3).diameter, 0.508, 1e-9);
}

TEST(ToolTable, SizesWithoutAUnitAreInchesWhereDrillsWouldBeTooThin) {
    EXPECT_NEAR(readToolTable("Tool Size\nT1 0.020\nT2 0.125\n").at(1).diameter, 0.508, 1e-9);
    EXPECT_NEAR(readToolTable("Tool Size\nT1 0.3\nT2 1.0\n").at(1).diameter, 0.3, 1e-9);
}

TEST(ToolTable, HoleSizesAndDefinitionsAreTables) {
    const auto sizes = readToolTable("Holesize 1. = 0.330200 Tolerance = +0/-0 PLATED MM Quantity = 668\n");
    EXPECT_NEAR(sizes.at(1).diameter, 0.3302, 1e-9);
    EXPECT_EQ(sizes.at(1).plated, true);
    EXPECT_NEAR(readToolTable("METRIC\nT01F00S00C0.35\n").at(1).diameter, 0.35, 1e-9);
}

TEST(ToolTable, OtherTextHasNone) {
    EXPECT_TRUE(readToolTable("").empty());
    EXPECT_TRUE(readToolTable("%FSLAX24Y24*%\nX0Y0D03*\n").empty());
    EXPECT_TRUE(readToolTable("Dear maker,\n12 boards of 1.6 mm please.\nThanks 2\n").empty());
    EXPECT_TRUE(readToolTable("1 2 3\n4.5 5.5 6.5\n").empty());
}
