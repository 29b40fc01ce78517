#include "DrillBench.h"
#include "fabrication/drills/DrillProgram.h"
#include "fabrication/Limits.h"
#include "support/CancelAfter.h"

#include <gmock/gmock.h>

#include <cmath>

using namespace EDA::Fabrication;

namespace {

void expectHole(DrillData const &data, std::size_t index, double x, double y) {
    ASSERT_LT(index, data.holes.size());
    EXPECT_NEAR(data.holes[index].at.x, x, 1e-9) << index;
    EXPECT_NEAR(data.holes[index].at.y, y, 1e-9) << index;
}

} // namespace

TEST(DrillHoles, CoordinatesAreModal) {
    const DrillData data = readBody("X1000Y2000\nX3000\nY4000\n").data;
    ASSERT_EQ(data.holes.size(), 3u);
    expectHole(data, 1, 3.0, 2.0);
    expectHole(data, 2, 3.0, 4.0);
}

TEST(DrillHoles, SignsAndBlanksAndBlockNumbersAreTaken) {
    const DrillData data = readBody("N10 X+1000 Y-2000\nG90G05X5000Y5000\n").data;
    expectHole(data, 0, 1.0, -2.0);
    expectHole(data, 1, 5.0, 5.0);
}

TEST(DrillHoles, TrailingZerosLeftOutAreAddedBehind) {
    const DrillData data =
        readDrills("M48\nMETRIC,LZ,000.000\nT1C0.5\n%\nT1\nX14229Y-081\nX1Y000005\nM30\n").data;
    expectHole(data, 0, 142.29, -81.0);
    expectHole(data, 1, 100.0, 0.005);
}

TEST(DrillHoles, RepeatsGoOnFromTheLastHole) {
    const DrillData data = readBody("X1000Y1000\nR3X1000\nR2Y500\nX0\n").data;
    ASSERT_EQ(data.holes.size(), 7u);
    expectHole(data, 3, 4.0, 1.0);
    expectHole(data, 5, 4.0, 2.0);
    expectHole(data, 6, 0.0, 2.0);
}

TEST(DrillHoles, RepeatsHaveALimit) {
    const ReadDrills read = readBody("X0Y0\nR900000X10\n");
    EXPECT_EQ(read.data.holes.size(), 1 + Limits::drillRepeats);
    Note const *note = read.note("repeats beyond");
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->count, 800'000u);
}

TEST(DrillHoles, ObjectsHaveALimit) {
    std::string body = "X0Y0\n";
    for (int i = 0; i < 101; ++i)
        body += "R100000X0Y0\n";
    const ReadDrills read = readBody(body);
    EXPECT_EQ(read.data.holes.size(), Limits::objects);
    EXPECT_NE(read.note("beyond the most that are read"), nullptr);
}

TEST(DrillHoles, ARepeatOfNothingIsTold) {
    EXPECT_NE(readBody("X0Y0\nR5\n").note("nothing to repeat"), nullptr);
}

TEST(DrillHoles, APatternIsCopiedStepByStep) {
    const DrillData data =
        readBody("M25\nX1000Y1000\nX2000Y1000\nM01\nM02X10000\nM02X10000Y5000\nM08\nX0Y0\n").data;
    ASSERT_EQ(data.holes.size(), 7u);
    expectHole(data, 2, 11.0, 1.0);
    expectHole(data, 3, 12.0, 1.0);
    expectHole(data, 4, 21.0, 6.0);
    expectHole(data, 6, 0.0, 0.0);
}

TEST(DrillHoles, APatternIsMirroredAndSwapped) {
    const std::string pattern = "M25\nX1000Y2000\nM01\n";
    expectHole(readBody(pattern + "M02X10000Y0M80\n").data, 1, 9.0, 2.0);
    expectHole(readBody(pattern + "M02X10000Y0M90\n").data, 1, 11.0, -2.0);
    expectHole(readBody(pattern + "M02X10000Y0M70\n").data, 1, 12.0, 1.0);
}

TEST(DrillHoles, PatternsLieWithinEachOther) {
    const DrillData data = readBody("M25\nM25\nX0Y0\nM01\nM02X1000\nM08\nM01\nM02Y5000\nM08\n").data;
    ASSERT_EQ(data.holes.size(), 4u);
    expectHole(data, 3, 1.0, 5.0);
}

TEST(DrillHoles, APatternIsCopiedOftenByOneStatement) {
    const DrillData data = readBody("M25\nX0Y0\nM01\nR3M02X1000\nM08\n").data;
    ASSERT_EQ(data.holes.size(), 4u);
    expectHole(data, 3, 3.0, 0.0);
}

TEST(DrillHoles, CopiesWithinCopiesEndAtTheLimit) {
    std::string body = "X0Y0\nR1000X1\n";
    for (int i = 0; i < 40; ++i)
        body = "M25\n" + body + "M01\nM02X0\nM08\n";
    const ReadDrills read = readBody(body);
    EXPECT_LE(read.data.holes.size(), Limits::objects);
    EXPECT_NE(read.note("beyond the most"), nullptr);
}

TEST(DrillHoles, TheZeroPointIsMoved) {
    const DrillData data = readBody("G93X10000Y20000\nX1000Y1000\nG93X0Y0\nX1000Y1000\n").data;
    ASSERT_EQ(data.holes.size(), 2u);
    expectHole(data, 0, 11.0, 21.0);
    expectHole(data, 1, 1.0, 1.0);
}

TEST(DrillHoles, APresetNamesThePlaceOfTheTool) {
    const DrillData data = readBody("X10000Y10000\nG92X0Y0\nX1000Y2000\n").data;
    expectHole(data, 1, 11.0, 12.0);
}

TEST(DrillHoles, IncrementsCountFromTheLastPlace) {
    const DrillData data = readBody("X10000Y10000\nG91\nX1000\nX1000Y1000\nG90\nX0Y0\n").data;
    ASSERT_EQ(data.holes.size(), 4u);
    expectHole(data, 2, 12.0, 11.0);
    expectHole(data, 3, 0.0, 0.0);
    const DrillData header =
        readDrills("M48\nMETRIC,TZ,000.000\nICI,ON\nT1C1.0\n%\nT1\nX1000Y1000\nX1000\nM30\n").data;
    expectHole(header, 1, 2.0, 1.0);
}

TEST(DrillHoles, TheUnitMayChangeOnTheWay) {
    const DrillData data = readBody("X1000Y1000\nM72\nX10000Y10000\nM71\nX2000Y2000\n").data;
    ASSERT_EQ(data.holes.size(), 3u);
    expectHole(data, 1, 25.4, 25.4);
    expectHole(data, 2, 2.0, 2.0);
}

TEST(DrillHoles, NothingComesAfterTheEnd) {
    const ReadDrills read = readBody("X1000Y1000\nM30\nX2000Y2000\n");
    EXPECT_EQ(read.data.holes.size(), 1u);
    EXPECT_NE(read.note("after the end"), nullptr);
}

TEST(DrillHoles, WhatIsNotUnderstoodIsToldWithItsLine) {
    const ReadDrills read = readBody("X1000Y1000\nFROBNICATE,7\nX2000\n");
    Note const *note = read.note("not understood");
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->line, 8u);
    EXPECT_EQ(read.data.holes.size(), 2u);
}

TEST(DrillHoles, CannedCyclesAndTextsAreTold) {
    EXPECT_NE(readBody("X1000Y1000G82X2000Y3000\n").note("canned cycles"), nullptr);
    EXPECT_NE(readBody("M97,ABC\nX0Y0\n").note("canned texts"), nullptr);
    EXPECT_FALSE(readBody("M47,Turn the board over X1Y1\nX0Y0\n").notes.has(NoteKind::LeftOut));
}

TEST(DrillHoles, BadAndFarCoordinatesAreTold) {
    const ReadDrills read =
        readBody("X1e300Y1\nX--5Y1\nX1.2.3\nX" + std::string(400, '9') + "\nX99999999999\nX1000Y1000\n");
    EXPECT_NE(read.note("no numbers"), nullptr);
    EXPECT_NE(read.note("kilometre"), nullptr);
    for (DrillHole const &hole : read.data.holes)
        EXPECT_TRUE(std::isfinite(hole.at.x) && std::isfinite(hole.at.y));
}

TEST(DrillHoles, HeaderlessFilesAreRead) {
    const ReadDrills read = readDrills("T01C0.5\nT01\nX1.5Y1.5\nM30\n");
    EXPECT_EQ(read.data.holes.size(), 1u);
}

TEST(DrillHoles, AHeaderMayEndWithM95OrNotAtAll) {
    EXPECT_EQ(readDrills("M48\nMETRIC,TZ,000.000\nT1C1.0\nM95\nT1\nX1000Y1000\nM30\n").numHoles(1), 1u);
    EXPECT_EQ(readDrills("M48\nMETRIC,TZ,000.000\nT1C1.0\nX1000Y1000\nT1\nX1000Y1000\nM30\n").numHoles(1),
              2u);
}

TEST(DrillHoles, LinesEndInAnyWay) {
    EXPECT_EQ(readDrills("M48\r\nMETRIC,TZ,000.000\r\nT1C1.0\r\n%\r\nT1\r\nX1000Y1000\r\nM30").numHoles(1),
              1u);
    EXPECT_EQ(readDrills("M48\rMETRIC,TZ,000.000\rT1C1.0\r%\rT1\rX1000Y1000\rM30").numHoles(1), 1u);
}

TEST(DrillHoles, ReadingStopsWhenItIsCancelled) {
    std::string text = "M48\nMETRIC,TZ,000.000\nT1C1.0\n%\nT1\n";
    for (int i = 0; i < 20'000; ++i)
        text += "X1000Y1000\n";
    Notes notes;
    TestSupport::CancelAfter progress(1);
    const DrillData data =
        readDrillFile(text, {Unit::Millimetre, 3, 3, Zeros::LeadingOmitted}, {}, notes, &progress);
    EXPECT_LT(data.holes.size(), 20'000u);
}

TEST(DrillHoles, ABoundHoldsAllPlaces) {
    const DrillData data = readBody("X1000Y1000\nX5000Y7000\nX2000Y0G85X9000Y0\n").data;
    EXPECT_NEAR(data.bound.getXHigh(), 9.0, 1e-9);
    EXPECT_NEAR(data.bound.getYHigh(), 7.0, 1e-9);
}
