#include "DrillBench.h"

#include <gmock/gmock.h>

using namespace EDA::Fabrication;

namespace {

struct LayerDrills {
    DrillData data;
    LayerFacts facts;
    Notes notes;
};

LayerDrills read(std::string const &body) {
    LayerDrills result;
    const std::string text = "%FSLAX33Y33*%\n%MOMM*%\n" + body + "M02*\n";
    result.data = readDrillsOfLayerFile(text, {}, result.notes, result.facts);
    return result;
}

} // namespace

TEST(DrillLayerForm, RoundFlashesAreHolesWithAToolForEachSize) {
    const DrillData data =
        read("%ADD10C,0.5*%\n%ADD11C,1*%\n%ADD12C,0.5*%\nD10*\nX1000Y1000D03*\nD11*\nX2000Y0D03*\n"
             "D12*\nX3000Y0D03*\n")
            .data;
    ASSERT_EQ(data.holes.size(), 3u);
    EXPECT_EQ(data.tools.size(), 2u);
    EXPECT_EQ(data.holes[0].tool, data.holes[2].tool);
    EXPECT_NEAR(data.tools.at(data.holes[1].tool).diameter, 1.0, 1e-9);
    EXPECT_NEAR(data.bound.getXHigh(), 3.0, 1e-9);
}

TEST(DrillLayerForm, StrokesAreSlotsThatGoOnWhereTheOneBeforeEnds) {
    const DrillData data =
        read("%ADD10C,0.5*%\nD10*\nX0Y0D02*\nG01X1000Y0D01*\nX1000Y2000D01*\nX5000Y0D02*\nX6000D01*\n").data;
    ASSERT_EQ(data.slotHoles.size(), 2u);
    EXPECT_EQ(data.slotHoles[0].path.segments.size(), 2u);
}

TEST(DrillLayerForm, AStrokeWithoutLengthIsAHole) {
    EXPECT_EQ(read("%ADD10C,0.5*%\nD10*\nX1000Y0D02*\nG01X1000Y0D01*\n").data.holes.size(), 1u);
}

TEST(DrillLayerForm, WhatIsNotRoundIsLeftOutAndTold) {
    const LayerDrills drills = read("%ADD10R,0.5X1*%\nD10*\nX1000Y0D03*\n");
    EXPECT_TRUE(drills.data.holes.empty());
    EXPECT_TRUE(drills.notes.has(NoteKind::LeftOut));
}

TEST(DrillLayerForm, TheFileFunctionTellsThePlating) {
    const DrillData data =
        read("%TF.FileFunction,NonPlated,1,2,NPTH*%\n%ADD10C,0.5*%\nD10*\nX1000Y0D03*\n").data;
    ASSERT_EQ(data.tools.size(), 1u);
    EXPECT_EQ(data.tools.begin()->second.plated, false);
}
