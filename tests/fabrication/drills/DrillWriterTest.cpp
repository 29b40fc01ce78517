#include "DrillBench.h"

#include <gmock/gmock.h>

using namespace EDA::Fabrication;

namespace {

std::string written(DrillData const &data) {
    StringSink sink;
    writeDrillFile(data, sink);
    return sink.text;
}

} // namespace

TEST(DrillWriter, WritesOneUnitOneFormatAndEveryCoordinateWhole) {
    const std::string text = written(readBody("X1000Y-2000\nT2\nX3500\n").data);
    EXPECT_EQ(text, "M48\nMETRIC,TZ\nT1C0.5\nT2C1\n%\nT1\nX1000000Y-2000000\nT2\nX3500000Y-2000000\nM30\n");
}

TEST(DrillWriter, PlatingStandsInCommentsOfHoleSizes) {
    DrillData data;
    data.tools[1] = {0.3, true, ""};
    data.tools[2] = {3.0, false, ""};
    EXPECT_EQ(written(data),
              "M48\nMETRIC,TZ\n;Holesize 1 = 0.3 PLATED\nT1C0.3\n;Holesize 2 = 3 NON_PLATED\nT2C3\n"
              "%\nM30\n");
}

TEST(DrillWriter, HolesComeToolByToolInTheirOrder) {
    const std::string text = written(readBody("X2000Y0\nT2\nX3000Y0\nT1\nX1000Y0\n").data);
    EXPECT_THAT(text, testing::HasSubstr("T1\nX2000000Y0\nX1000000Y0\nT2\nX3000000Y0\n"));
}

TEST(DrillWriter, NumbersThatCannotBeWrittenAreReplaced) {
    DrillData data;
    data.tools[0].diameter = 0.3;
    data.tools[4].diameter = 0.5;
    data.holes.push_back({{1.0, 1.0}, 4});
    const std::string text = written(data);
    EXPECT_THAT(text, testing::HasSubstr("T1C0.3\nT2C0.5\n%\nT2\nX1000000Y1000000\n"));
}

TEST(DrillWriter, HolesOfUnknownSizeAreNotWritten) {
    DrillData data;
    data.tools[1].diameter = 0.0;
    data.holes.push_back({{1.0, 1.0}, 1});
    data.holes.push_back({{1.0, 1.0}, 9});
    EXPECT_EQ(written(data), "M48\nMETRIC,TZ\n%\nM30\n");
}

TEST(DrillWriter, WhatIsWrittenReadsTheSame) {
    const DrillData data = readBody("X1234Y-5678\nT2\nX99999Y1\n").data;
    const ReadDrills again = readDrills(written(data), {}, {Unit::Millimetre, 4, 6, Zeros::LeadingOmitted});
    ASSERT_EQ(again.data.holes.size(), data.holes.size());
    for (std::size_t i = 0; i < data.holes.size(); ++i) {
        EXPECT_NEAR(again.data.holes[i].at.x, data.holes[i].at.x, 1e-6);
        EXPECT_NEAR(again.data.holes[i].at.y, data.holes[i].at.y, 1e-6);
    }
}
