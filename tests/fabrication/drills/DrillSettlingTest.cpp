#include "DrillBench.h"

#include <gmock/gmock.h>

using namespace EDA::Fabrication;

namespace {

// Holes in the corners of a board of 100 by 80 millimetres.
const Geometry::Bound2D board(0.0, 0.0, 100.0, 80.0);

std::string file(std::string const &header, std::string const &places) {
    return "M48\n" + header + "T1C" + (header.find("INCH") == 0 ? "0.02" : "0.5") + "\n%\nT1\n" + places +
           "M30\n";
}

} // namespace

TEST(DrillSettling, WhatTheFileSaysIsNoGuess) {
    const ReadDrills read = readDrills(file("METRIC,TZ,000.000\n", "X5000Y5000\nX95000Y75000\n"), board);
    EXPECT_FALSE(read.notes.has(NoteKind::Guessed));
    EXPECT_NEAR(read.data.bound.getXHigh(), 95.0, 1e-9);
}

TEST(DrillSettling, AWholeMaskSettlesNumbersThatKeepAllTheirZeros) {
    const ReadDrills read = readDrills(file("METRIC,0000.00\n", "X000500Y000500\nX009500Y007500\n"));
    EXPECT_FALSE(read.notes.has(NoteKind::Guessed));
    EXPECT_NEAR(read.data.bound.getXHigh(), 95.0, 1e-9);
}

TEST(DrillSettling, WithoutLayersMostFilesDecide) {
    const ReadDrills read = readDrills(file("INCH\n", "X005000Y005000\nX035000Y030000\n"));
    EXPECT_EQ(read.numbers.decimalDigits, 4);
    EXPECT_NE(read.note("as in most files"), nullptr);
    EXPECT_NEAR(read.data.bound.getXHigh(), 3.5 * 25.4, 1e-9);
}

TEST(DrillSettling, TheLayersDecideOnDigits) {
    // A tenth of the usual format: 2.5 digits.
    const ReadDrills read = readDrills(file("INCH,TZ\n", "X20000Y20000\nX350000Y300000\n"), board);
    EXPECT_EQ(read.numbers.decimalDigits, 5);
    EXPECT_NE(read.note("as the holes lie on the layers so"), nullptr);
    EXPECT_NEAR(read.data.bound.getXHigh(), 3.5 * 25.4, 1e-9);
}

TEST(DrillSettling, TheLayersDecideOnIntegerDigitsOfCutNumbers) {
    // METRIC,LZ in 4.2: "0095" is 95 mm, where 3.3 would make it 9.5.
    const ReadDrills read = readDrills(file("METRIC,LZ\n", "X0005Y0005\nX0095Y0075\nX005Y00505\n"), board);
    EXPECT_EQ(read.numbers.integerDigits, 4);
    EXPECT_NEAR(read.data.bound.getXHigh(), 95.0, 1e-9);
}

TEST(DrillSettling, TheLayersDecideOnTheUnit) {
    // The tool of unknown unit leaves both open.
    const std::string text = "M48\nT1C0.2\n%\nT1\nX5000Y5000\nX95000Y75000\nM30\n";
    EXPECT_EQ(readDrills(text, board).numbers.unit, Unit::Millimetre);
    const std::string inches = "M48\nT1C0.2\n%\nT1\nX2000Y2000\nX38000Y30000\nM30\n";
    const ReadDrills read = readDrills(inches, board);
    EXPECT_NEAR(read.data.bound.getXHigh(), 38.0, 1e-9) << "the first good reading is that of most files";
}

TEST(DrillSettling, ToolSizesDecideOnTheUnit) {
    const ReadDrills inch =
        readDrills("M48\nT1C0.012\nT2C0.035\n%\nT1\nX10000Y10000\nT2\nX20000Y12345\nM30\n");
    EXPECT_EQ(inch.numbers.unit, Unit::Inch);
    EXPECT_NE(inch.note("by the sizes of the tools"), nullptr);
    const ReadDrills metric = readDrills("M48\nT1C0.3\nT2C0.9\n%\nT1\nX10000Y10000\nT2\nX20000Y12345\nM30\n");
    EXPECT_EQ(metric.numbers.unit, Unit::Millimetre);
}

TEST(DrillSettling, ZerosAtOneEndTellWhichAreLeftOut) {
    const ReadDrills trailing = readDrills(file("METRIC\n", "X005Y0125\nX095Y075\n"));
    EXPECT_EQ(trailing.numbers.zeros, Zeros::TrailingOmitted);
    EXPECT_NEAR(trailing.data.holes[0].at.x, 5.0, 1e-9);
    const ReadDrills leading = readDrills(file("METRIC\n", "X5000Y12500\nX95000Y75000\n"));
    EXPECT_EQ(leading.numbers.zeros, Zeros::LeadingOmitted);
    EXPECT_NEAR(leading.data.holes[0].at.x, 5.0, 1e-9);
}

TEST(DrillSettling, ADecimalPointPrevailsOverAll) {
    const ReadDrills read = readDrills(file("METRIC,TZ,000.000\n", "X5.5Y-0.25\nX+95.Y75\n"));
    EXPECT_NEAR(read.data.holes[0].at.x, 5.5, 1e-12);
    EXPECT_NEAR(read.data.holes[0].at.y, -0.25, 1e-12);
    EXPECT_NEAR(read.data.holes[1].at.x, 95.0, 1e-12);
    EXPECT_NEAR(read.data.holes[1].at.y, 0.075, 1e-12);
    EXPECT_TRUE(read.facts.hasDecimals);
}

TEST(DrillSettling, DecimalsLeaveOnlyTheUnitToGuess) {
    const ReadDrills read = readDrills("M48\nT1C0.5\n%\nT1\nX5.5Y0.25\nM30\n");
    EXPECT_EQ(read.notes.list().size(), 1u);
}

TEST(DrillSettling, TheRestOfTheSetDecidesWhereNothingElseDoes) {
    const ReadDrills read =
        readDrills(file("INCH,TZ\n", "X1000Y1000\n"), {}, {Unit::Inch, 2, 3, Zeros::LeadingOmitted});
    EXPECT_EQ(read.numbers.decimalDigits, 3);
    EXPECT_NE(read.note("as in the rest of the set"), nullptr);
}

TEST(DrillSettling, AFileWithoutPlacesIsSettledToo) {
    const ReadDrills read = readDrills("M48\nINCH,TZ\n%\nM30\n", board);
    EXPECT_EQ(read.numbers.decimalDigits, 4);
    EXPECT_EQ(readDrills("").numbers.unit, Unit::Millimetre);
}

TEST(DrillSettling, AChangeOfUnitWithinTheFileBringsItsUsualDigits) {
    const Geometry::Bound2D layers(4.5, 4.5, 45.5, 25.5);
    const ReadDrills read = readDrills(
        "M48\nINCH,TZ\nT1C0.02\n%\nT1\nX1969Y1969\nM71\nX45000Y25000\nM72\nX1969Y9843\nM30\n", layers);
    ASSERT_EQ(read.data.holes.size(), 3u);
    EXPECT_EQ(read.numbers.decimalDigits, 4);
    EXPECT_NEAR(read.data.holes[0].at.x, 5.0, 0.01);
    EXPECT_NEAR(read.data.holes[1].at.x, 45.0, 0.01);
    EXPECT_NEAR(read.data.holes[1].at.y, 25.0, 0.01);
    EXPECT_NEAR(read.data.holes[2].at.y, 25.0, 0.01);
}
