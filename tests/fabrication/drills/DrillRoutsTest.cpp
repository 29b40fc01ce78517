#include "DrillBench.h"
#include "fabrication/drills/DrillProgram.h"

#include <gmock/gmock.h>

#include <cmath>

using namespace EDA::Fabrication;

TEST(DrillRouts, ASlotGoesFromPlaceToPlace) {
    const DrillData data = readBody("X1000Y1000G85X3000Y1000\nG05\nX5000\n").data;
    ASSERT_EQ(data.slotHoles.size(), 1u);
    EXPECT_EQ(data.slotHoles[0].path.start, (Point{1.0, 1.0}));
    EXPECT_EQ(data.slotHoles[0].path.segments.at(0).end, (Point{3.0, 1.0}));
    ASSERT_EQ(data.holes.size(), 1u);
    EXPECT_EQ(data.holes[0].at, (Point{5.0, 1.0}));
}

TEST(DrillRouts, ASlotTakesMissingCoordinatesFromItsStart) {
    const DrillData data = readBody("X1000Y1000G85Y4000\n").data;
    ASSERT_EQ(data.slotHoles.size(), 1u);
    EXPECT_EQ(data.slotHoles[0].path.segments.at(0).end, (Point{1.0, 4.0}));
}

TEST(DrillRouts, ASlotWithoutLengthIsAHole) {
    const DrillData data = readBody("X1000Y1000G85X1000Y1000\n").data;
    EXPECT_TRUE(data.slotHoles.empty());
    EXPECT_EQ(data.holes.size(), 1u);
}

TEST(DrillRouts, APathGoesFromPlungeToRetract) {
    const DrillData data =
        readBody(
            "G00X1000Y1000\nM15\nG01X3000Y1000\nX3000Y4000\nM16\nG00X9000Y9000\nM15\nG01X8000\nM17\nG05\n")
            .data;
    ASSERT_EQ(data.slotHoles.size(), 2u);
    EXPECT_EQ(data.slotHoles[0].path.segments.size(), 2u);
    EXPECT_EQ(data.slotHoles[1].path.start, (Point{9.0, 9.0}));
    EXPECT_TRUE(data.holes.empty());
}

TEST(DrillRouts, APlungeWithoutAMoveIsAHole) {
    const DrillData data = readBody("G00X1000Y1000\nM15\nM16\nG05\nX2000Y2000\n").data;
    EXPECT_EQ(data.holes.size(), 2u);
}

TEST(DrillRouts, MovesWithTheToolUpCutNothing) {
    const DrillData data = readBody("G00X1000Y1000\nM15\nG01X2000\nM16\nG01X9000\nG05\n").data;
    ASSERT_EQ(data.slotHoles.size(), 1u);
    EXPECT_EQ(data.slotHoles[0].path.segments.size(), 1u);
}

TEST(DrillRouts, FilesThatNeverPlungeCutWithEveryMove) {
    const DrillData data = readBody("G00X1000Y1000\nG01X2000\nX3000\nG00X9000\nG01X9500\nG05\n").data;
    ASSERT_EQ(data.slotHoles.size(), 2u);
    EXPECT_EQ(data.slotHoles[0].path.segments.size(), 2u);
}

TEST(DrillRouts, FilesThatOnlyPositionDrillThere) {
    const ReadDrills read = readBody("G00X1000Y1000\nX2000Y1000\n");
    EXPECT_EQ(read.data.holes.size(), 2u);
    EXPECT_NE(read.note("positions of the rout mode"), nullptr);
}

TEST(DrillRouts, ArcsHaveARadiusOrACentre) {
    const DrillData data = readBody("G00X1000Y0\nM15\nG03X0Y1000A1000\nG02X1000Y0I0J-1000\nM16\nG05\n").data;
    ASSERT_EQ(data.slotHoles.size(), 1u);
    Segment const &first = data.slotHoles[0].path.segments.at(0);
    EXPECT_EQ(first.motion, Motion::CounterClockwise);
    EXPECT_NEAR(first.centre.x, 0.0, 1e-9);
    EXPECT_NEAR(first.centre.y, 0.0, 1e-9);
    Segment const &second = data.slotHoles[0].path.segments.at(1);
    EXPECT_EQ(second.motion, Motion::Clockwise);
    EXPECT_NEAR(second.centre.y, 0.0, 1e-9);
}

TEST(DrillRouts, AClockwiseArcByRadiusBendsTheOtherWay) {
    const DrillData data = readBody("G00X1000Y0\nM15\nG02X0Y1000A1000\nM16\nG05\n").data;
    Point const centre = data.slotHoles.at(0).path.segments.at(0).centre;
    EXPECT_NEAR(centre.x, 1.0, 1e-9);
    EXPECT_NEAR(centre.y, 1.0, 1e-9);
}

TEST(DrillRouts, ARadiusTooSmallIsTakenAsHalfTheWay) {
    const DrillData data = readBody("G00X0Y0\nM15\nG02X2000Y0A100\nM16\nG05\n").data;
    EXPECT_NEAR(data.slotHoles.at(0).path.segments.at(0).centre.x, 1.0, 1e-9);
}

TEST(DrillRouts, AnArcToItsStartIsAFullTurn) {
    const DrillData data = readBody("G00X1000Y0\nM15\nG03X1000Y0I-1000J0\nM16\nG05\n").data;
    ASSERT_EQ(data.slotHoles.size(), 1u);
    EXPECT_NEAR(data.bound.getXLow(), -1.0, 1e-9);
}

TEST(DrillRouts, AnArcWithoutACentreIsALineAndTold) {
    const ReadDrills read = readBody("G00X0Y0\nM15\nG02X2000Y0\nM16\nG05\n");
    EXPECT_EQ(read.data.slotHoles.at(0).path.segments.at(0).motion, Motion::Line);
    EXPECT_NE(read.note("without a centre"), nullptr);
}

TEST(DrillRouts, ACircleOfItsOwnGoesAroundThePlace) {
    const DrillData data = readBody("G32X5000Y5000A1000\n").data;
    ASSERT_EQ(data.slotHoles.size(), 1u);
    EXPECT_EQ(data.slotHoles[0].path.start, (Point{6.0, 5.0}));
    EXPECT_EQ(data.slotHoles[0].path.segments.at(0).motion, Motion::Clockwise);
}

TEST(DrillRouts, AChangeOfToolEndsThePath) {
    const DrillData data = readBody("G00X0Y0\nM15\nG01X1000\nT2\nG00X5000Y0\nM15\nG01X6000\nM16\n").data;
    ASSERT_EQ(data.slotHoles.size(), 2u);
    EXPECT_EQ(data.slotHoles[0].tool, 1);
    EXPECT_EQ(data.slotHoles[1].tool, 2);
}

TEST(DrillRouts, CompensationIsTold) {
    EXPECT_NE(readBody("G00X0Y0\nM15\nG41\nG01X1000\nG40\nM16\n").note("compensation"), nullptr);
}

TEST(DrillRouts, PatternsTurnArcsOver) {
    const DrillData data =
        readBody("M25\nG00X1000Y0\nM15\nG03X0Y1000A1000\nM16\nG05\nM01\nM02X0Y0M80\nM08\n").data;
    ASSERT_EQ(data.slotHoles.size(), 2u);
    EXPECT_EQ(data.slotHoles[1].path.segments.at(0).motion, Motion::Clockwise);
    EXPECT_NEAR(data.slotHoles[1].path.start.x, -1.0, 1e-9);
}

TEST(DrillRouts, MovesHaveALimit) {
    std::string body = "G00X0Y0\nM15\n";
    for (std::size_t i = 0; i < DrillProgram::mostMovesOfPath + 10; ++i)
        body += i % 2 == 0 ? "G01X1000\n" : "G01X0\n";
    const ReadDrills read = readBody(body + "M16\n");
    EXPECT_EQ(read.data.slotHoles.at(0).path.segments.size(), DrillProgram::mostMovesOfPath);
    Note const *note = read.note("moves of routed paths");
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->count, 10u);
}

TEST(DrillRouts, SlotsHaveALimit) {
    const ReadDrills read =
        readBody("M25\nX0Y0G85X1000Y0\nM01\nR100000M02X1\nR100000M02X1\nR100000M02X1\nM08\n");
    EXPECT_EQ(read.data.slotHoles.size(), DrillProgram::mostMoves);
    EXPECT_NE(read.note("slots beyond"), nullptr);
}
