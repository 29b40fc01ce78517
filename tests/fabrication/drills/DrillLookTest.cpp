#include "DrillBench.h"

#include <gmock/gmock.h>

using namespace EDA::Fabrication;
using testing::ElementsAre;

TEST(DrillLook, AHeaderMakesADrillFile) {
    EXPECT_TRUE(lookAtDrillFile("M48\nINCH,TZ\nT1C0.02\n%\nM30\n").isDrill);
}

TEST(DrillLook, ALonePercentLineMayComeBeforeTheHeader) {
    const DrillFacts facts = lookAtDrillFile("%\nM48\nMETRIC,000.000\nT1C0.5\n%\nT1\nX001000Y002000\nM30\n");
    EXPECT_TRUE(facts.isDrill);
    EXPECT_EQ(facts.numHoles, 1u);
}

TEST(DrillLook, ToolsAndPlacesWithoutAHeaderMakeADrillFile) {
    EXPECT_TRUE(lookAtDrillFile("T01C0.5\nX1000Y1000\nX2000\nM30\n").isDrill);
}

TEST(DrillLook, ALayerIsNoDrillFile) {
    EXPECT_FALSE(lookAtDrillFile("%FSLAX24Y24*%\n%MOIN*%\n%ADD10C,0.01*%\nD10*\nX0Y0D03*\nM02*\n").isDrill);
    EXPECT_FALSE(lookAtDrillFile("G70*\nD10*\nX0Y0D02*\nX100Y0D01*\nM02*\n").isDrill);
}

TEST(DrillLook, ProseAndReportsAreNoDrillFiles) {
    EXPECT_FALSE(lookAtDrillFile("").isDrill);
    EXPECT_FALSE(lookAtDrillFile("Dear maker,\nplease drill these boards.\nThanks\n").isDrill);
    EXPECT_FALSE(lookAtDrillFile("Tool  Hole Size  Count\nT1  12mil (0.3048mm)  106\n").isDrill);
}

TEST(DrillLook, BinaryBytesAreNoDrillFile) {
    std::string bytes;
    for (int i = 0; i < 4000; ++i)
        bytes += static_cast<char>(i * 7 % 31);
    EXPECT_FALSE(lookAtDrillFile(bytes).isDrill);
}

TEST(DrillLook, HeaderNamesTheZerosThatAreKept) {
    EXPECT_EQ(lookAtDrillFile("M48\nINCH,LZ\n%\n").numbers.zeros, Zeros::TrailingOmitted);
    EXPECT_EQ(lookAtDrillFile("M48\nINCH,TZ\n%\n").numbers.zeros, Zeros::LeadingOmitted);
    EXPECT_EQ(lookAtDrillFile("M48\nM71,TZ\n%\n").numbers.zeros, Zeros::LeadingOmitted);
    EXPECT_EQ(lookAtDrillFile("M48\nM71,LZ\n%\n").numbers.zeros, Zeros::TrailingOmitted);
}

TEST(DrillLook, AMaskGivesTheDigits) {
    const DrillNumbers metric = lookAtDrillFile("M48\nMETRIC,0000.00\n%\n").numbers;
    EXPECT_EQ(metric.integerDigits, 4);
    EXPECT_EQ(metric.decimalDigits, 2);
    const DrillNumbers inch = lookAtDrillFile("M48\nINCH,TZ,00.0000\n%\n").numbers;
    EXPECT_EQ(inch.integerDigits, 2);
    EXPECT_EQ(inch.decimalDigits, 4);
}

TEST(DrillLook, CommentsGiveTheFormat) {
    const DrillNumbers plain = lookAtDrillFile("M48\n;FILE_FORMAT=2:4\nINCH\n%\n").numbers;
    EXPECT_EQ(plain.integerDigits, 2);
    EXPECT_EQ(plain.decimalDigits, 4);
    const DrillNumbers braces =
        lookAtDrillFile("M48\n; FORMAT={3:3/ absolute / metric / suppress trailing zeros}\n%\n").numbers;
    EXPECT_EQ(braces.unit, Unit::Millimetre);
    EXPECT_EQ(braces.integerDigits, 3);
    EXPECT_EQ(braces.zeros, Zeros::TrailingOmitted);
    const DrillNumbers words = lookAtDrillFile("; Format  : 3.3 / Absolute / MM / Leading\nM48\n%\n").numbers;
    EXPECT_EQ(words.unit, Unit::Millimetre);
    EXPECT_EQ(words.zeros, Zeros::LeadingOmitted);
    const DrillNumbers kept =
        lookAtDrillFile("; FORMAT={3:3/ absolute / inch / keep zeros}\nM48\n%\n").numbers;
    EXPECT_EQ(kept.zeros, Zeros::AllKept);
    const DrillNumbers point =
        lookAtDrillFile("; FORMAT={-:-/ absolute / metric / decimal}\nM48\n%\n").numbers;
    EXPECT_EQ(point.integerDigits, -1);
    EXPECT_EQ(point.unit, Unit::Millimetre);
}

TEST(DrillLook, TheHeaderPrevailsOverComments) {
    const DrillNumbers numbers =
        lookAtDrillFile(
            "M48\n;FORMAT={2:4/ absolute / inch / suppress leading zeros}\nMETRIC,LZ,000.000\n%\n")
            .numbers;
    EXPECT_EQ(numbers.unit, Unit::Millimetre);
    EXPECT_EQ(numbers.zeros, Zeros::TrailingOmitted);
    EXPECT_EQ(numbers.integerDigits, 3);
}

TEST(DrillLook, PlatingIsTheFilesWhereAllToolsAreAlike) {
    EXPECT_EQ(lookAtDrillFile("M48\n;TYPE=PLATED\nT1C1.\n%\n").plated, true);
    EXPECT_EQ(lookAtDrillFile("M48\n;TYPE=NON_PLATED\nT1C1.\n%\n").plated, false);
    EXPECT_EQ(lookAtDrillFile("M48\n;TYPE=PLATED\nT1C1.\n;TYPE=NON_PLATED\nT2C2.\n%\n").plated, std::nullopt);
    EXPECT_EQ(lookAtDrillFile("; Contents: Thru / Drill / Non-Plated\nM48\n%\n").plated, false);
    EXPECT_EQ(lookAtDrillFile("M48\n;Layer: Drill NPTH\n%\n").plated, false);
}

TEST(DrillLook, AttributesGiveFunctionAndSpan) {
    const DrillFacts facts = lookAtDrillFile("M48\n; #@! TF.FileFunction,Plated,1,4,PTH\n%\n");
    EXPECT_EQ(facts.plated, true);
    EXPECT_EQ(facts.fromLayer, 1);
    EXPECT_EQ(facts.toLayer, 4);
    EXPECT_THAT(facts.fileFunction, ElementsAre("Plated", "1", "4", "PTH"));
    EXPECT_EQ(lookAtDrillFile("M48\n; #@! TF.FileFunction,MixedPlating,1,2\n%\n").plated, std::nullopt);
}

TEST(DrillLook, ToolsWithoutSizeAreNamed) {
    const DrillFacts facts = lookAtDrillFile("M48\nINCH\nT1C0.02\nT2\n%\nT1\nX1Y1\nT2\nX2Y2\nM30\n");
    EXPECT_THAT(facts.toolsWithoutSize, ElementsAre(2));
}

TEST(DrillLook, CommentsAreKeptUpToFifty) {
    std::string text = "M48\n";
    for (int i = 0; i < 80; ++i)
        text += ";remark " + std::to_string(i) + "\n";
    EXPECT_EQ(lookAtDrillFile(text).comments.size(), 50u);
}

TEST(DrillLook, WideTextIsUnderstood) {
    std::string wide("\xff\xfe", 2);
    for (char character : std::string("M48\nMETRIC,TZ\n%\nM30\n"))
        wide += std::string(1, character) + '\0';
    EXPECT_EQ(lookAtDrillFile(wide).numbers.unit, Unit::Millimetre);
}
