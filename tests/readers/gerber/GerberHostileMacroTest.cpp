// Hostile macros, each with the result that it has to give.
#include "GerberHostileSupport.h"
#include "readers/gerber/Aperture.h"
#include "readers/gerber/GerberShapes.h"

using namespace TestSupport;
using EDA::EDAOutline;
using EDA::GerberLimits;

namespace {

const std::string drawTwenty = "D20*\nX0Y0D03*\n";

struct Moire {
    double x, y, outer, thickness, gap;
    int rings;
    double crossThickness, crossLength;
};

// Part by part, as each other macro is put together.
std::vector<EDAOutline> moirePartByPart(const Moire &m) {
    EDAOutline cross;
    EDA::GerberShapes::setupMoireOutline(&cross, m.x, m.y, m.outer, m.thickness, m.gap, 0, m.crossThickness,
                                         m.crossLength);
    EDA::Aperture aperture;
    aperture.addOutline(cross);
    constexpr double step = 2.0 * 3.14159265358979323846 / 32;
    for (int i = 0; i < m.rings; ++i) {
        const double diameter = m.outer - i * (m.thickness + m.gap);
        EDAOutline ring;
        for (int k = 0; k <= 32; ++k)
            ring.addPoint(0, diameter / 2 * std::cos(k * step) + m.x, diameter / 2 * std::sin(k * step) + m.y,
                          0.0);
        const double inner = (diameter - m.thickness) / 2;
        for (int k = 32; k >= 0; --k)
            ring.addPoint(0, inner * std::cos(k * step) + m.x, inner * std::sin(k * step) + m.y, 0.0);
        aperture.addOutline(ring);
    }
    return {aperture.begin(), aperture.end()};
}

std::vector<double> areas(const EDAOutline &outline) {
    std::vector<double> list{outline.getArea()};
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal)
        list.push_back(internal->isHole() ? -internal->getArea() : internal->getArea());
    return list;
}

// The shape as an aperture keeps it, by the areas of its contours in order.
std::vector<double> areas(const std::vector<EDAOutline> &pieces) {
    std::vector<double> list;
    for (const EDAOutline &piece : pieces) {
        const std::vector<double> each = areas(piece);
        list.insert(list.end(), each.begin(), each.end());
    }
    return list;
}

std::string circles(int count, double distance) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "1,1,1," + std::to_string(i * distance) + ",0*";
    return text;
}

} // namespace

TEST(GerberHostileMacros, RingsDoublesAndBracketsAreRefusedByName) {
    const std::string brackets = repeated("(", 10'000) + "$1" + repeated(")", 10'000);
    const std::string name = "Failed to find aperture macro: M,1\n";
    const std::string deep = name + "Aperture macro M: an expression is too long or nested too deeply.\n";
    const std::string longText = name + "Aperture macro M: a variable has more than 65536 bytes.\n";
    const std::pair<std::string, std::string> macros[] = {
        {"%AMM*$2=$3*$3=$2*1,1,$2,0,0*%\n%ADD20M,1*%\n", deep},
        {"%AMM*" + repeated("$1=$1+$1*", 60) + "1,1,$1,0,0*%\n%ADD20M,1*%\n", longText},
        {"%AMM*1,1," + brackets + ",0,0*%\n%ADD20M,1*%\n", deep},
        {"%ADD20NONE*%\n", "Failed to find aperture macro: NONE\n"},
    };
    for (const auto &[macro, error] : macros) {
        SCOPED_TRACE(macro.substr(0, 60));
        const Clock clock;
        GerberBench bench;
        EXPECT_TRUE(bench.readLayer(macro + drawTwenty));
        EXPECT_EQ(bench.reader.getError(), error);
        EXPECT_TRUE(bench.traces().empty());
    }
}

TEST(GerberHostileMacros, AVariableThatDoublesTheWorkSixtyTimesIsEvaluatedOnce) {
    const Clock clock;
    std::string powers;
    for (int i = 60; i > 1; --i)
        powers += "$" + std::to_string(i) + "=$" + std::to_string(i - 1) + "+$" + std::to_string(i - 1) + "*";
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%AMM*" + powers + "1,1,$60,0,0*%\n%ADD20M,1*%\n" + drawTwenty));
    expectFinite(bench.board());
}

TEST(GerberHostileMacros, AValueThatNamesItselfInAParameterEnds) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%AMM*$1=$1+1*1,1,$1,0,0*%\n%ADD20M,$1*%\n" + drawTwenty));
    EXPECT_EQ(bench.reader.getError(), "Failed to find aperture macro: M,$1\n"
                                       "Aperture macro M: an expression is too long or nested too deeply.\n");
}

TEST(GerberHostileMacros, ShortAndEmptyFieldsDrawNothing) {
    for (const char *macro :
         {"1", "1,1", "1,,,,", "4,1,3", "4,1,3,0,0,1", "5,1,-3,0,0,1,0", "$", "$1", "=", "$=1", "$1=", ",,,",
          "-", "+,+", "x,1", "0 a comment", "20,1,1,0,0,1,1", "7,0,0,0,0,0,0"}) {
        SCOPED_TRACE(macro);
        GerberBench bench;
        EXPECT_TRUE(bench.readLayer(std::string("%AMM*") + macro +
                                    "*%\n%ADD20M,1*%\nD20*\nX0Y0D03*\nX50000Y0D01*\n"));
        expectFinite(bench.board());
    }
}

TEST(GerberHostileMacros, AMacroOfTooManyStatementsIsRefusedWithAWord) {
    GerberLimits limits;
    limits.primitives = 100;
    for (const int count : {100, 101}) {
        GerberBench bench(limits);
        EXPECT_TRUE(bench.readLayer("%AMM*" + circles(count, 0.1) + "%\n%ADD20M*%\n" + drawTwenty));
        EXPECT_EQ(bench.traces().size(), count > 100 ? 0U : 1U);
        EXPECT_EQ(bench.reader.getError(), count > 100
                                               ? "Failed to find aperture macro: M\n"
                                                 "Aperture macro M: it has more than 100 statements.\n"
                                               : "");
    }
}

TEST(GerberHostileMacros, PrimitivesOfTooManyVerticesOrRingsAreLeftOutWithAWord) {
    for (const char *primitive :
         {"4,1,10001,0,0,1,0,1,1,0", "5,1,10001,0,0,1,0", "6,0,0,4,0.1,0.1,1001,0.1,1,0"}) {
        SCOPED_TRACE(primitive);
        GerberBench bench;
        EXPECT_TRUE(
            bench.readLayer(std::string("%AMM*1,1,2,0,0*") + primitive + "*%\n%ADD20M*%\n" + drawTwenty));
        ASSERT_EQ(bench.traces().size(), 1U);
        expectBox(bench.traces()[0].getOutline(), -1, -1, 1, 1, 0.01);
        EXPECT_EQ(bench.reader.getError(),
                  "Aperture macro M: primitives of more than 10000 vertices or 1000 rings are left out.\n");
    }
}

TEST(GerberHostileMacros, ManyPrimitivesThatAllMeetEndWithAWordOrAShape) {
    const Clock clock;
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%AMM*" + circles(10'000, 0.1) + "%\n%ADD20M*%\n" + drawTwenty));
    EXPECT_EQ(bench.reader.getError(), "Failed to find aperture macro: M\n"
                                       "Aperture macro M: the macros of this file take too long.\n");
}

TEST(GerberHostileMacros, ManyPrimitivesApartAreQuick) {
    const Clock clock;
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%AMM*" + circles(10'000, 2.0) + "%\n%ADD20M*%\n" + drawTwenty));
    EXPECT_EQ(bench.reader.getError(), "");
    ASSERT_EQ(bench.traces().size(), 1U);
    EXPECT_EQ(bench.traces()[0].getOutline().numInternalOutlines(), 9'999);
}

TEST(GerberHostileMacros, ManyExpressionsOfLongVariablesEnd) {
    const Clock clock;
    const std::string sum = "1" + repeated("+1", 30'000);
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%AMM*" + repeated("4,1,5000" + repeated(",$1", 10'001) + "*", 10) +
                                "%\n%ADD20M," + sum + "*%\n" + drawTwenty));
    EXPECT_NE(bench.reader.getError().find("the macros of this file take too long"), std::string::npos);
}

TEST(GerberHostileMacros, TheWorkOfAllMacrosOfAFileIsBounded) {
    const Clock clock;
    GerberBench bench;
    EXPECT_TRUE(
        bench.readLayer("%AMM*" + circles(500, 0.1) + "%\n" + repeated("%ADD20M*%\n", 3000) + drawTwenty));
    EXPECT_NE(bench.reader.getError().find("the macros of this file take too long"), std::string::npos);
    EXPECT_TRUE(bench.readLayer("%AMM*" + circles(5, 0.1) + "%\n%ADD20M*%\n" + drawTwenty));
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberHostileMacros, AMoireOfAThousandRingsIsQuick) {
    const Clock clock;
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%AMM*6,0,0,1000,0.4,0.4,1000,0.1,1200,0*%\n%ADD20M*%\n" + drawTwenty));
    EXPECT_EQ(bench.reader.getError(), "");
    ASSERT_EQ(bench.traces().size(), 1U);
    // Four quarters within each ring, but for the innermost, and none outside.
    EXPECT_EQ(bench.traces()[0].getOutline().numInternalOutlines(), 4000);
}

TEST(GerberHostileMacros, AMoireIsWhatItsPartsGiveOneByOne) {
    const Moire moires[] = {
        {0, 0, 10, 0.5, 0.5, 5, 0.2, 12},   // the usual one
        {0, 0, 10, 0.5, 0.5, 5, 0.2, 6},    // the cross ends between the rings
        {0, 0, 10, 0.5, 0.5, 5, 0.2, 0.6},  // and within all of them
        {0, 0, 10, 0.5, 0.5, 5, 0, 0},      // no cross
        {0, 0, 10, 1, -0.25, 5, 0.2, 12},   // rings that overlap
        {0, 0, 10, 1, -0.25, 5, 0, 0},      //
        {0, 0, 4, 0.5, 0.5, 9, 0.1, 6},     // rings that grow again beyond the centre
        {0.3, 0, 10, 0.5, 0.5, 5, 0.2, 12}, // rings beside the cross
        {20, 0, 10, 0.5, 0.5, 5, 0.2, 12},  // and far from it
        {0, 0, 10, 0.5, 0.5, 0, 0.2, 12},   // no rings
    };
    for (const Moire &m : moires) {
        SCOPED_TRACE(&m - moires);
        EDAOutline whole;
        EDA::GerberShapes::setupMoireOutline(&whole, m.x, m.y, m.outer, m.thickness, m.gap, m.rings,
                                             m.crossThickness, m.crossLength);
        const std::vector<double> expected = areas(moirePartByPart(m)), found = areas(whole);
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i)
            EXPECT_NEAR(found[i], expected[i], 1e-9) << i;
    }
}
