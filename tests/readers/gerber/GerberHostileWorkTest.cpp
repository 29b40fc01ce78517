// Shapes that cost far more than their text, each with the word and the result that it has to give.
#include "GerberHostileSupport.h"
#include "model/EDAOutlineMerge.h"
#include "readers/gerber/ConductorIndex.h"
#include "readers/gerber/GerberShapes.h"

using namespace TestSupport;
using EDA::EDAOutline;
using EDA::GerberLimits;

namespace {

const std::string tooLong = ": the macros of this file take too long.\n";

std::string macro(const std::string &name, const std::string &primitives) {
    return "%AM" + name + "*" + primitives + "%\n";
}

std::string define(int code, const std::string &name) {
    return "%ADD" + std::to_string(code) + name + "*%\n";
}

std::string draw(int code, int x = 0) {
    return "D" + std::to_string(code) + "*\nX" + std::to_string(x) + "Y0D03*\n";
}

// Discs in a row, `distance` apart.
std::string circles(int count, double distance) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "1,1,1," + std::to_string(i * distance) + ",0*";
    return text;
}

std::string polygons(int count, int vertices) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "5,1," + std::to_string(vertices) + "," + std::to_string(2 * i) + ",0,1,0*";
    return text;
}

bool has(GerberBench &bench, const std::string &text) {
    return bench.reader.getError().find(text) != std::string::npos;
}

} // namespace

TEST(GerberHostileWork, ACostlyMacroLeavesSomethingToThoseAfterIt) {
    GerberLimits limits;
    limits.macroWork = 20'000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer(macro("BAD", circles(300, 0.1)) + macro("OK", "21,1,1,1,0,0,0*") +
                                define(20, "BAD") + define(21, "OK") + draw(20) + draw(21, 50000)));
    EXPECT_EQ(bench.reader.getError(), "Failed to find aperture macro: BAD\nAperture macro BAD" + tooLong);
    ASSERT_EQ(bench.traces().size(), 1U);
    expectBox(bench.traces()[0].getOutline(), 4.5, -0.5, 5.5, 0.5);
}

TEST(GerberHostileWork, AllPiecesOfAnApertureCountAsPointsOfTheFile) {
    GerberLimits limits;
    limits.points = 5000;
    GerberBench bench(limits);
    std::string text = macro("M", polygons(10, 100));
    for (int code = 20; code < 40; ++code)
        text += define(code, "M");
    EXPECT_TRUE(bench.readLayer(text));
    EXPECT_TRUE(has(bench, "or 5000 points"));
}

TEST(GerberHostileWork, PointsOfPiecesApartCountAsWork) {
    GerberLimits limits;
    limits.macroWork = 16'000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer(macro("A", polygons(40, 100)) + macro("B", polygons(10, 100)) +
                                define(20, "A") + define(21, "B") + draw(20) + draw(21)));
    EXPECT_EQ(bench.reader.getError(), "Failed to find aperture macro: A\nAperture macro A" + tooLong);
    ASSERT_EQ(bench.traces().size(), 1U);
    EXPECT_EQ(bench.traces()[0].getOutline().numInternalOutlines(), 9);
}

TEST(GerberHostileWork, RingsOfAMoireArePaidForBeforeTheyAreMade) {
    GerberLimits limits;
    limits.macroWork = 100'000;
    GerberBench bench(limits);
    const std::string rings = ",0.1,0.1,0*";
    EXPECT_TRUE(bench.readLayer(macro("A", "6,0,0,1000,0.4,0.4,500" + rings) +
                                macro("B", "6,0,0,100,0.4,0.4,20" + rings) + define(20, "A") +
                                define(21, "B") + draw(20) + draw(21)));
    EXPECT_EQ(bench.reader.getError(), "Failed to find aperture macro: A\nAperture macro A" + tooLong);
    EXPECT_EQ(bench.traces().size(), 1U);
}

TEST(GerberHostileWork, DefinitionsOfLongVariablesAreWork) {
    GerberLimits limits;
    limits.macroWork = 10'000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer(macro("M", repeated("$2=" + repeated("1", 1600) + "*", 100) + circles(1, 0)) +
                                "%ADD20M,1*%\n" + draw(20)));
    EXPECT_TRUE(has(bench, "Aperture macro M" + tooLong));
    EXPECT_TRUE(bench.traces().empty());
}

TEST(GerberHostileWork, EmptyStatementsOfAMacroAreCountedAndNotKept) {
    GerberLimits limits;
    limits.primitives = 100;
    GerberBench bench(limits);
    EXPECT_TRUE(
        bench.readLayer(macro("M", circles(1, 0) + repeated("*", 100'000)) + define(20, "M") + draw(20)));
    EXPECT_EQ(bench.reader.getError(), "Failed to find aperture macro: M\n"
                                       "Aperture macro M: it has more than 100 statements.\n");
    EDA::ApertureMacro kept("M", limits);
    for (int i = 0; i < 100; ++i)
        kept.addPrimitive({});
    EXPECT_FALSE(kept.isTooLong());
    kept.addPrimitive({});
    EXPECT_TRUE(kept.isTooLong());
}

TEST(GerberHostileWork, FieldsOfAMacroAndParametersOfAnApertureAreCounted) {
    GerberLimits limits;
    limits.macroFields = 10;
    limits.parameters = 3;
    const std::string name = "Failed to find aperture macro: M,";
    const std::pair<std::string, std::string> cases[] = {
        {circles(2, 0.1) + "%\n%ADD20M,1X2X3", ""},
        {circles(2, 0.1) + "%\n%ADD20M,1X2X3X4",
         name + "1X2X3X4\nAperture macro M: it is given more than 3 parameters.\n"},
        {circles(3, 0.1) + "%\n%ADD20M,1", name + "1\nAperture macro M: it has more than 10 fields.\n"},
        {"1" + repeated(",", 20) + "*%\n%ADD20M,1",
         name + "1\nAperture macro M: it has more than 10 fields.\n"},
    };
    for (const auto &[text, error] : cases) {
        SCOPED_TRACE(text);
        GerberBench bench(limits);
        EXPECT_TRUE(bench.readLayer("%AMM*" + text + "*%\n" + draw(20)));
        EXPECT_EQ(bench.reader.getError(), error);
        EXPECT_EQ(bench.traces().size(), error.empty() ? 1U : 0U);
    }
}

TEST(GerberHostileWork, ManyParametersDoNoHarmToPrimitivesWithoutVariables) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(macro("M", circles(300, 0.1)) + "%ADD20M," + repeated("1X", 50'000) +
                                "1*%\n" + draw(20)));
    EXPECT_EQ(bench.reader.getError(), "");
    EXPECT_EQ(bench.traces().size(), 1U);
}

TEST(GerberHostileWork, StrokesOfManyPiecesAreLeftOutWithAWordAndSimpleOnesStay) {
    GerberLimits limits;
    limits.strokeWork = 4000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer(macro("M", circles(400, 2.0)) + define(20, "M") + "%ADD21C,1X0.5*%\n" +
                                "D20*\nX0Y0D02*\nX0Y50000D01*\nX0Y90000D01*\n" +
                                "D21*\nX0Y0D02*\nX30000Y0D01*\nX30000Y30000D02*\nX30000Y30000D01*\n"));
    EXPECT_EQ(bench.reader.getError(), "Strokes that take too long to put together are left out.\n");
    ASSERT_EQ(bench.traces().size(), 2U);
    expectBox(bench.traces()[0].getOutline(), -0.5, -0.5, 3.5, 0.5, 0.01);
}

TEST(GerberHostileWork, ManyPointsAgainstManyEdgesAreManyTests) {
    // The object lies in the corner of the other's box that is empty.
    EDAOutline corner;
    for (const auto &[x, y] : {std::pair{0.0, 0.0}, {10.0, 0.0}, {10.0, 0.1}, {0.1, 0.1}, {0.1, 10.0}})
        corner.addPoint(0, x, y, 0.0);
    for (int i = 95; i > 0; --i)
        corner.addPoint(0, 0.001 * (i % 2), 0.1 * i, 0.0);
    EDAOutline object;
    EDA::GerberShapes::setupPolygonOutline(&object, 4.0, 1000, 0.0, 6.0, 6.0);
    EDA::EDAOutlineMerge list;
    list.addOutline(corner);
    EDA::ConductorIndex index;
    index.add(corner);
    EXPECT_TRUE(index.findTouched(list, object).empty());
    EXPECT_GT(index.numTests(), 100U * 1000U / 64U);
    const std::size_t tests = index.numTests();
    EDAOutline small;
    EDA::GerberShapes::setupRectangularOutline(&small, 1.0, 1.0, 6.0, 6.0);
    EXPECT_TRUE(index.findTouched(list, small).empty());
    EXPECT_LT(index.numTests(), tests + 20);
}

TEST(GerberHostileWork, ClearObjectsOfManyPointsEndAtTheLimitOfTests) {
    GerberLimits limits;
    limits.clearTests = 1000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer("%ADD20P,4X1000*%\n%ADD21R,90X90*%\nD21*\n" + repeated("X0Y0D03*\n", 10) +
                                "%LPC*%\nD20*\n" + repeated("X0Y0D03*\n", 10)));
    EXPECT_EQ(bench.reader.getError(), "Clear objects beyond 1000 tests of what they touch are left out.\n");
    EXPECT_EQ(bench.traces().size(), 10U);
}

TEST(GerberHostileWork, ARepeatWithoutRowsDrawsNothingHoweverManyColumnsItHas) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%SRX1000000Y0I0J0*%\nD10*\n" + repeated("X0Y0D03*\n", 1000)));
    EXPECT_TRUE(bench.traces().empty());
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberHostileWork, LettersThatComeAgainJoinTheirNumbers) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("D11*\n" + repeated("X0Y0", 100'000) + "X1Y5X2X3Y6X4D03*\n"));
    ASSERT_EQ(bench.traces().size(), 1U);
    expectBox(bench.traces()[0].getOutline(), 0.1234 - 1, 0.0056 - 0.5, 0.1234 + 1, 0.0056 + 0.5);
}

TEST(GerberHostileWork, ManyRingsSideBySideAreUnitedAsTheyAre) {
    std::string rings;
    for (int i = 0; i < 100; ++i) {
        const std::string at = std::to_string(2 * (i % 10)) + "," + std::to_string(2 * (i / 10)) + "*";
        rings += "1,1,1," + at + "1,0,0.5," + at;
    }
    GerberBench bench;
    bench.reader.setMergeConductors(true);
    EXPECT_TRUE(bench.readLayer(macro("M", rings) + define(20, "M") + "D20*\nX0Y0D03*\nX100Y100D03*\n"));
    const auto traces = bench.traces();
    ASSERT_EQ(traces.size(), 100U);
    for (const EDA::EDATrace &trace : traces)
        EXPECT_EQ(trace.getOutline().numInternalOutlines(), 1);
}
