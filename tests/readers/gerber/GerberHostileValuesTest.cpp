// Numbers beyond all bounds and floods of statements, each with the result that it has to give.
#include "GerberHostileSupport.h"

using namespace TestSupport;
using EDA::GerberLimits;

namespace {

const std::string beyond = "Objects with coordinates beyond all numbers are left out.\n";

// Reads a layer; what is there besides one disc at the origin counts.
std::size_t numBesides(GerberBench &bench, const std::string &text) {
    EXPECT_TRUE(bench.readLayer("D10*\nX0Y0D03*\n" + text));
    expectFinite(bench.board());
    return bench.traces().size() - 1;
}

} // namespace

TEST(GerberHostileValues, AThermalBeyondAllNumbersIsLeftOut) {
    GerberBench bench;
    EXPECT_EQ(numBesides(bench, "%AMM*7,1.7e308,0,1.7e308,1,0.1,0*%\n%ADD20M*%\nD20*\nX0Y0D03*\n"), 0U);
    EXPECT_EQ(bench.reader.getError(), beyond);
}

TEST(GerberHostileValues, CopiesOfARepeatBeyondAllNumbersAreLeftOut) {
    GerberBench bench;
    EXPECT_EQ(numBesides(bench, "%SRX3Y1I1.7e308J0*%\nX0Y0D03*\n"), 2U);
    EXPECT_EQ(bench.reader.getError(), beyond);
}

TEST(GerberHostileValues, AnArcOfARadiusBeyondAllNumbersIsLeftOut) {
    GerberBench bench;
    const std::string wide = repeated("9", 300);
    EXPECT_LE(numBesides(bench, "G75*\nG02X5Y5I" + wide + "J" + wide + "D01*\n"), 1U);
    EXPECT_EQ(bench.reader.getError(), beyond);
}

TEST(GerberHostileValues, ARegionWithAnArcBeyondAllNumbersIsFinite) {
    GerberBench bench;
    const std::string wide = repeated("9", 300);
    numBesides(bench, "G75*\nG36*\nX0Y0D02*\nG02X" + wide + "Y5I" + wide + "J1D01*\nX1Y1D01*\nG37*\n");
}

TEST(GerberHostileValues, PointsOnALineAreNoViaOfInfiniteDiameter) {
    GerberBench bench;
    std::string text = "%FSLAX24Y24*%\n%MOMM*%\nG36*\nX0Y0D02*\n";
    for (int i = 1; i < 12; ++i)
        text += "X" + std::to_string(10000 * i) + "Y" + std::to_string(10000 * i) + "D01*\n";
    const std::string path = bench.folder.write("drill.gbr", text + "G37*\n");
    bench.reader.setLayerArrangement({}, {QString::fromStdString(path)}, {}, {});
    EXPECT_TRUE(bench.reader.readFiles(nullptr));
    EXPECT_EQ(bench.board().numVias(1), 0U);
}

TEST(GerberHostileValues, HolesBeyondAllNumbersAreLeftOutAndWhatFollowsStays) {
    GerberBench bench;
    EXPECT_TRUE(bench.readDrills("T1C0.7\nT1\nX0Y0\nR99999X" + repeated("9", 308) + "Y0\nX1000Y1000\n"));
    ASSERT_EQ(bench.vias().size(), 1U);
    const EDA::EDAVia via = bench.vias()[0];
    ASSERT_LT(via.numInstances(), 99999U);
    EXPECT_GT(via.getInstanceYCentre(static_cast<int>(via.numInstances()) - 1), 0.0);
    EXPECT_EQ(bench.reader.getError(), beyond);
}

TEST(GerberHostileValues, TheToolAfterTheLastIsTheLast) {
    GerberBench bench;
    EXPECT_TRUE(bench.readDrills("T2147483647C0.7\nT2147483647\nM00\nX1000Y1000\n"));
    ASSERT_EQ(bench.vias().size(), 1U);
    EXPECT_EQ(bench.vias()[0].getDiameter(), 0.7);
}

TEST(GerberHostileValues, ARepeatWithoutColumnsDrawsNothingHoweverManyRowsItHas) {
    GerberBench bench;
    EXPECT_EQ(numBesides(bench, "%SRX0Y2000000I1J1*%\nX0Y0D03*\n"), 0U);
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberHostileValues, ARepeatOfOneColumnAndTooManyRowsIsToldAndNotMade) {
    GerberBench bench;
    EXPECT_EQ(numBesides(bench, "%SRX1Y2000000I1J1*%\nX0Y0D03*\n"), 1U);
    EXPECT_EQ(bench.reader.getError(), "Unhandled statement: %SRX1Y2000000I1J1*%\n");
}

TEST(GerberHostileValues, CountsOfMacrosAreTheNumbersThatTheyStartWith) {
    GerberBench bench;
    EXPECT_TRUE(
        bench.readLayer("%AMM*4,1,3.9,0,0,2,0,2,2,0,2,0*%\n%ADD20M*%\n%AMN*5,1,6x2,0,0,1,0*%\n%ADD21N*%\n"
                        "D20*\nX0Y0D03*\nD21*\nX90000Y0D03*\n"));
    ASSERT_EQ(bench.traces().size(), 2U);
    EXPECT_EQ(bench.traces()[0].getOutline().numPoints(), 3U);
    EXPECT_EQ(bench.traces()[1].getOutline().numPoints(), 6U);
}

TEST(GerberHostileFloods, ARegionEndedAgainAndAgainEndsAtTheLimitOfPoints) {
    const Clock clock;
    GerberLimits limits;
    limits.points = 100'000;
    std::string text = "G36*\nX0Y0D02*\n";
    for (int i = 1; i < 1000; ++i)
        text += "X" + std::to_string(i) + "Y" + std::to_string(i % 2) + "D01*\n";
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer(text + repeated("G37*\n", 200'000)));
    EXPECT_LE(bench.traces().size(), 100U);
    EXPECT_NE(bench.reader.getError().find("or 100000 points"), std::string::npos);
}

TEST(GerberHostileFloods, RegionContoursEndAtTheLimitOfPoints) {
    const Clock clock;
    GerberLimits limits;
    limits.points = 1000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer("G36*\nX0Y0D02*\n" + repeated("X1Y1D01*\nX2Y5D01*\n", 100'000) + "G37*\n"));
    EXPECT_TRUE(bench.traces().empty());
    EXPECT_NE(bench.reader.getError().find("or 1000 points"), std::string::npos);
}

TEST(GerberHostileFloods, ApertureDefinitionsEndAtTheLimitOfPoints) {
    const Clock clock;
    GerberLimits limits;
    limits.points = 50'000;
    std::string text;
    for (int code = 20; code < 1000; ++code)
        text += "%ADD" + std::to_string(code) + "P,1X1000*%\n";
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer(text + "D999*\nX0Y0D03*\n"));
    EXPECT_TRUE(bench.traces().empty());
    EXPECT_NE(bench.reader.getError().find("or 50000 points"), std::string::npos);
}

TEST(GerberHostileFloods, RepeatsOfHolesOverManyFilesEndAtTheLimitOfTheReader) {
    GerberLimits limits;
    limits.objects = 100;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readDrills("X0Y0\nR60X100\n"));
    EXPECT_TRUE(bench.readDrills("X0Y0\nR60X100\n"));
    EXPECT_EQ(bench.board().numVias(1), 100U);
}

TEST(GerberHostileText, SignsInACommentOpenNoBlock) {
    for (const char *text : {"G04 50%% done*\nD10*\nX0Y0D03*\n", "G04 50%% done*D10*X0Y0D03*",
                             "G04 100%*\nD10*\nX0Y0D03*\n", "G04 50%% done*%LPD*%D10*X0Y0D03*"}) {
        SCOPED_TRACE(text);
        GerberBench bench;
        EXPECT_TRUE(bench.readLayer(text));
        EXPECT_EQ(bench.traces().size(), 1U);
        EXPECT_EQ(bench.reader.getError(), "");
    }
}

TEST(GerberHostileText, ADrillFileIsKnownByItsLinesAsTheyStand) {
    GerberBench bench;
    EXPECT_FALSE(bench.reader.isDrillFile(bench.folder.write("a", " M48\n")));
    EXPECT_FALSE(bench.reader.isDrillFile(bench.folder.write("b", "\tT01C1\n")));
    EXPECT_TRUE(bench.reader.isDrillFile(bench.folder.write("c", " G04 no comment\nM48\n")));
    EXPECT_TRUE(bench.reader.isDrillFile(bench.folder.write("d", "G0 4\nM48 \n")));
}

TEST(GerberHostileText, AFileThatIsNotOfCopperIsNamedBehindAThousandMessages) {
    GerberBench bench;
    EXPECT_FALSE(bench.readLayer(repeated("Q*\n", 2000) + "%TF.FileFunction,Profile*%\n"));
    EXPECT_EQ(bench.reader.getError(),
              "This file does not represent a Copper layer; FileFunction = Profile.\n");
}
