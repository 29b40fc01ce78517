// Number formats and units of layer files.
#include "LayerScript.h"

#include <gtest/gtest.h>

namespace {

using namespace LayerTests;

std::string flashAt(std::string const &head, std::string const &statement, LayerRules const &rules = {}) {
    const Reading read = readAsItIs(head + "%ADD10C,0.1*%D10*" + statement + "M02*", rules);
    if (read.lines().empty()) return "nothing";
    return read.lines().back().substr(read.lines().back().find(" at ") + 4);
}

TEST(LayerFormat, LeadingZerosMayBeOmitted) {
    EXPECT_EQ(flashAt("%FSLAX24Y24*%%MOMM*%", "X15000Y-2500D03*"), "1.5,-0.25");
}

TEST(LayerFormat, TrailingZerosMayBeOmitted) {
    EXPECT_EQ(flashAt("%FSTAX24Y24*%%MOMM*%", "X015Y-123D03*"), "1.5,-12.3");
    EXPECT_EQ(flashAt("%FSTAX24Y24*%%MOMM*%", "X1Y00025D03*"), "10,0.025");
}

TEST(LayerFormat, NoZerosMayBeOmitted) {
    EXPECT_EQ(flashAt("%FSDAX24Y24*%%MOMM*%", "X015000Y002500D03*"), "1.5,0.25");
}

TEST(LayerFormat, AxesMayHaveFormatsOfTheirOwn) {
    EXPECT_EQ(flashAt("%FSLAX23Y25*%%MOMM*%", "X1500Y150000D03*"), "1.5,1.5");
}

TEST(LayerFormat, OtherSpellingsOfTheFormatAreTaken) {
    EXPECT_EQ(flashAt("%FSLAN2G2X23Y23D2M2*%%MOMM*%", "X1500Y500D03*"), "1.5,0.5");
    EXPECT_EQ(flashAt("%FSAX2.3Y2.3*%%MOMM*%", "X1500Y500D03*"), "1.5,0.5");
    EXPECT_EQ(flashAt("%FSLAX23*%%MOMM*%", "X1500Y500D03*"), "1.5,0.5");
}

TEST(LayerFormat, PlusSignsAreTaken) {
    EXPECT_EQ(flashAt("%FSLAX23Y23*%%MOMM*%", "X+1500Y+500D03*"), "1.5,0.5");
}

TEST(LayerFormat, DecimalPointsAreTakenAndTold) {
    EXPECT_EQ(flashAt("%FSLAX23Y23*%%MOMM*%", "X1.5Y-.25D03*"), "1.5,-0.25");
    EXPECT_EQ(readBody("X1.5Y2D03*").count(NoteKind::Normalised, "coordinates with a decimal point"), 1u);
}

TEST(LayerFormat, IncrementalCoordinatesAreAdded) {
    const std::string body = "X1000Y1000D03*X500D03*Y-250D03*";
    const Lines expected{"flash C0.1 at 1,1", "flash C0.1 at 1.5,1", "flash C0.1 at 1.5,0.75"};
    EXPECT_EQ(readAsItIs("%FSLIX23Y23*%%MOMM*%%ADD10C,0.1*%D10*" + body + "M02*").lines(), expected);
    EXPECT_EQ(readBody("G91*" + body).lines(), expected);
    EXPECT_EQ(readBody("G91*" + body + "G90*X0Y0D03*").lines().back(), "flash C0.1 at 0,0");
}

TEST(LayerFormat, InchesBecomeMillimetres) {
    EXPECT_EQ(flashAt("%FSLAX24Y24*%%MOIN*%", "X10000Y5000D03*"), "25.4,12.7");
    EXPECT_EQ(flashAt("%FSLAX24Y24*%G70*", "X10000Y5000D03*"), "25.4,12.7");
    EXPECT_EQ(flashAt("%FSLAX24Y24*%G71*", "X10000Y5000D03*"), "1,0.5");
}

TEST(LayerFormat, AUnitMayChangeWithinTheFile) {
    const Reading read = readBody("X1000Y0D03*G70*X1000Y0D03*%ADD11C,0.1*%D11*D03*");
    EXPECT_EQ(read.lines(), (Lines{"flash C0.1 at 1,0", "flash C0.1 at 25.4,0", "flash C2.54 at 25.4,0"}));
    EXPECT_EQ(read.count(NoteKind::Normalised, "changes of the unit"), 1u);
}

TEST(LayerFormat, AUnitThatComesLateIsThatOfTheAperturesBefore) {
    const Reading read = readAsItIs("%FSLAX24Y24*%%ADD10C,0.1*%G70*D10*X0Y0D03*M02*");
    EXPECT_EQ(read.lines(), Lines{"flash C2.54 at 0,0"});
    EXPECT_EQ(read.facts.unit, Unit::Inch);
    EXPECT_FALSE(read.notes.has(NoteKind::Guessed));
}

TEST(LayerFormat, AMissingUnitIsThatOfTheRules) {
    LayerRules rules;
    rules.unit = Unit::Millimetre;
    EXPECT_EQ(flashAt("%FSLAX24Y24*%", "X10000Y5000D03*", rules), "1,0.5");
}

TEST(LayerFormat, AMissingUnitIsGuessedAndTold) {
    const Reading read = readAsItIs("%FSLAX24Y24*%%ADD10C,0.1*%D10*X10000Y0D03*M02*");
    EXPECT_EQ(read.lines(), Lines{"flash C2.54 at 25.4,0"});
    EXPECT_EQ(read.count(NoteKind::Guessed, "files without a unit, taken as inches"), 1u);
    EXPECT_EQ(read.facts.unit, Unit::Unknown);
}

TEST(LayerFormat, AMissingUnitOfAHugeBoardIsTheMillimetre) {
    EXPECT_EQ(flashAt("%FSLAX34Y34*%", "X1000000Y0D03*"), "100,0");
}

TEST(LayerFormat, AMissingFormatIsTwoAndFourAndTold) {
    const Reading read = readAsItIs("%MOIN*%%ADD10C,0.1*%D10*X10000Y5000D03*M02*");
    EXPECT_EQ(read.lines(), Lines{"flash C2.54 at 25.4,12.7"});
    EXPECT_EQ(read.count(NoteKind::Guessed, "files without a number format, taken as 2.4"), 1u);
    EXPECT_FALSE(read.facts.hasFormat);
}

TEST(LayerFormat, AMissingFormatWithManyDigitsIsFiner) {
    EXPECT_EQ(flashAt("%MOIN*%", "X0100000Y0050000D03*"), "25.4,12.7");
}

TEST(LayerFormat, FactsTellTheFormat) {
    const LayerFacts facts = readAsItIs("%FSLAX36Y36*%%MOIN*%M02*").facts;
    EXPECT_TRUE(facts.hasFormat);
    EXPECT_EQ(facts.integerDigits, 3);
    EXPECT_EQ(facts.decimalDigits, 6);
    EXPECT_EQ(facts.unit, Unit::Inch);
}

TEST(LayerFormat, HopelessFormatsAreTold) {
    EXPECT_EQ(readBody("%FSLA*%%MOXX*%").count(NoteKind::LeftOut, "commands whose text"), 2u);
}

TEST(LayerFormat, NumbersWithoutDigitsAreTold) {
    const Reading read = readBody("XY1000D03*");
    EXPECT_EQ(read.lines(), Lines{"flash C0.1 at 0,1"});
    EXPECT_EQ(read.count(NoteKind::LeftOut, "codes that are not understood"), 1u);
}

TEST(LayerFormat, HugeNumbersAreLeftOutAndTold) {
    const Reading read = readBody("X" + std::string(400, '9') + "Y0D03*X0D03*");
    EXPECT_EQ(read.lines(), Lines{"flash C0.1 at 0,0"});
    EXPECT_EQ(read.count(NoteKind::LeftOut, "objects beyond all measure"), 1u);
}

} // namespace
