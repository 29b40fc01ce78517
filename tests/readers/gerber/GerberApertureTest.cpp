// Apertures, macros and their primitives, seen in what they flash.
#include "GerberTestSupport.h"
#include "readers/gerber/Aperture.h"
#include "readers/gerber/ApertureMacro.h"
#include "readers/gerber/GerberShapes.h"

using namespace TestSupport;
using namespace EDA::test;
using EDA::EDAOutline;

namespace {

// What an aperture definition flashes at the origin; `macro` stands before it.
std::vector<EDA::EDATrace> flashed(const std::string &aperture, const std::string &macro = "") {
    GerberBench bench;
    EXPECT_TRUE(bench.read("%FSLAX24Y24*%\n%MOMM*%\n" + macro + aperture + "\nD10*\nX0Y0D03*\nM02*\n"));
    EXPECT_EQ(bench.reader.getError(), "");
    return bench.traces();
}

EDAOutline flashedOne(const std::string &aperture, const std::string &macro = "") {
    const auto traces = flashed(aperture, macro);
    EXPECT_EQ(traces.size(), 1U);
    return traces.empty() ? EDAOutline() : traces[0].getOutline();
}

std::unique_ptr<EDAOutline> macroOf(std::initializer_list<EDA::ApertureMacro::Fields> primitives,
                                    std::map<std::string, std::string> parameters = {}) {
    EDA::ApertureMacro macro("M");
    for (const auto &fields : primitives) macro.addPrimitive(fields);
    return macro.createOutline(parameters);
}

double xHigh(const EDAOutline &outline) { return outline.getBound().getXHigh(); }

} // namespace

TEST(GerberApertures, ACircleIsAFullArc) {
    const EDAOutline circle = flashedOne("%ADD10C,2*%");
    EXPECT_EQ(circle.numPoints(), 2U);
    expectBox(circle, -1, -1, 1, 1, 0.01);
    EXPECT_EQ(circle.numInternalOutlines(), 0);
}

TEST(GerberApertures, ACircleOfNoSizeIsAPoint) {
    EDAOutline outline;
    EDA::GerberShapes::setupCircularOutline(&outline, 0.0, 3.0, 4.0);
    EXPECT_THAT(storedPoints(outline), PointsAre("3,4"));
}

TEST(GerberApertures, ASecondNumberIsARoundHole) {
    const EDAOutline ring = flashedOne("%ADD10C,0.5X0.2*%");
    ASSERT_EQ(ring.numInternalOutlines(), 1);
    EXPECT_TRUE(ring.beginInternalOutlines()->isHole());
    expectBox(*ring.beginInternalOutlines(), -0.1, -0.1, 0.1, 0.1, 0.01);
}

TEST(GerberApertures, ThirdAndSecondNumberAreARectangularHole) {
    const EDAOutline ring = flashedOne("%ADD10C,0.5X0.2X0.1*%");
    ASSERT_EQ(ring.numInternalOutlines(), 1);
    EXPECT_THAT(storedPoints(*ring.beginInternalOutlines()), PointsAre("-0.1,0.05 0.1,0.05 0.1,-0.05 -0.1,-0.05"));
}

TEST(GerberApertures, ARectangleGoesClockwiseFromTheTopLeft) {
    EXPECT_THAT(storedPoints(flashedOne("%ADD10R,4X2*%")), PointsAre("-2,1 2,1 2,-1 -2,-1"));
}

TEST(GerberApertures, ARectangleMayHaveAHole) {
    EXPECT_EQ(flashedOne("%ADD10R,4X2X1*%").numInternalOutlines(), 1);
    EXPECT_EQ(flashedOne("%ADD10R,4X2X1X0.5*%").numInternalOutlines(), 1);
    EXPECT_EQ(flashedOne("%ADD10R,4X2X1X0.5X3*%").numInternalOutlines(), 0);
}

TEST(GerberApertures, AnObroundLiesAlongItsLongerSide) {
    const EDAOutline lying = flashedOne("%ADD10O,4X2*%"), standing = flashedOne("%ADD10O,2X4*%");
    expectBox(lying, -2, -1, 2, 1);
    expectBox(standing, -1, -2, 1, 2);
    EXPECT_NEAR(lying.getArea(), standing.getArea(), 1e-9);
}

TEST(GerberApertures, AnObroundHasThirtyFourPoints) {
    EDAOutline outline;
    EDA::GerberShapes::setupObroundOutline(&outline, 2.0, 4.0);
    EXPECT_EQ(outline.numPoints(), 34U);
}

TEST(GerberApertures, APolygonStartsAtItsRotation) {
    EXPECT_THAT(storedPoints(flashedOne("%ADD10P,2X4*%")), PointsAre("1,0 0,1 -1,0 0,-1"));
    const double r = std::sqrt(0.5);
    expectBox(flashedOne("%ADD10P,2X4X45*%"), -r, -r, r, r);
}

TEST(GerberApertures, APolygonsHoleIsItsFourthNumber) {
    EXPECT_EQ(flashedOne("%ADD10P,2X4X0X0.5*%").numInternalOutlines(), 1);
    EXPECT_EQ(flashedOne("%ADD10P,2X4X0X0.5X0.5*%").numInternalOutlines(), 1);
}

TEST(GerberApertures, TooFewNumbersAreNoShapeAndNoError) {
    EXPECT_TRUE(flashed("%ADD10R,4*%").empty());
    EXPECT_TRUE(flashed("%ADD10P,4*%").empty());
    EXPECT_TRUE(flashed("%ADD10*%").empty());
}

TEST(GerberApertures, TooManyVerticesAreNoShapeAndAreTold) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("%ADD10P,1X2000000000*%\nD10*\nX0Y0D03*\n"));
    EXPECT_TRUE(bench.traces().empty());
    EXPECT_EQ(bench.reader.getError(), "Aperture of more than 10000 vertices: P,1X2000000000\n");
}

TEST(GerberApertures, NumbersThatAreNoneAreZero) {
    EXPECT_TRUE(flashed("%ADD10R,aXb*%").empty()); // all points fall together
}

TEST(GerberApertures, TheApertureFunctionNamesTheConductor) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%TA.AperFunction,ViaPad*%\n%ADD20C,1*%\nD20*\nX0Y0D03*\nX50000Y0D03*\n"));
    ASSERT_EQ(bench.traces().size(), 2U);
    EXPECT_EQ(bench.traces()[0].getName(), "ViaPad");
    EXPECT_EQ(bench.traces()[1].getName(), "ViaPad-1");
}

TEST(GerberApertures, WithoutAFunctionConductorsAreCounted) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("D10*\nX0Y0D03*\nX50000Y0D03*\n"));
    EXPECT_EQ(bench.traces()[0].getName(), "Conductor0");
    EXPECT_EQ(bench.traces()[1].getName(), "Conductor1");
}

TEST(GerberApertures, AMacroApertureKeepsTheMacrosName) {
    GerberBench bench;
    EXPECT_TRUE(
        bench.readLayer("%TA.AperFunction,ViaPad*%\n%AMDISC*1,1,$1,0,0*%\n%ADD20DISC,2*%\nD20*\nX0Y0D03*\n"));
    ASSERT_EQ(bench.traces().size(), 1U);
    EXPECT_EQ(bench.traces()[0].getName(), "DISC");
}

TEST(GerberApertures, AMissingMacroIsToldAndDrawsNothing) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%ADD20NONE,1X2*%\nD20*\nX0Y0D03*\n"));
    EXPECT_EQ(bench.reader.getError(), "Failed to find aperture macro: NONE,1X2\n");
    EXPECT_TRUE(bench.traces().empty());
}

TEST(GerberApertures, AnUnknownCodeDrawsNothingAndIsNoError) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("D99*\nX0Y0D03*\nX0Y10000D01*\n"));
    EXPECT_EQ(bench.reader.getError(), "");
    EXPECT_TRUE(bench.traces().empty());
}

TEST(GerberApertures, AnApertureMayBeChosenBehindG54) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("G54D11*\nX0Y0D03*\n"));
    ASSERT_EQ(bench.traces().size(), 1U);
    expectBox(bench.traces()[0].getOutline(), -1, -0.5, 1, 0.5);
}

TEST(GerberApertures, ARedefinedCodeKeepsItsShapeWhileItIsCurrent) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("D11*\n%ADD11R,8X8*%\nX0Y0D03*\nD11*\nX200000Y0D03*\n"));
    ASSERT_EQ(bench.traces().size(), 2U);
    EXPECT_NEAR(xHigh(bench.traces()[0].getOutline()), 1.0, 1e-9);
    EXPECT_NEAR(xHigh(bench.traces()[1].getOutline()), 24.0, 1e-9);
}

TEST(GerberMacros, TwoPrimitivesThatOverlapAreOne) {
    const EDAOutline plus =
        flashedOne("%ADD10PLUS*%", "%AMPLUS*21,1,4,2,0,0,0*21,1,2,2.5,1.5,0,0*%\n");
    EXPECT_EQ(plus.numInternalOutlines(), 0);
    expectBox(plus, -2, -1.25, 2.5, 1.25);
}

TEST(GerberMacros, TwoPrimitivesApartAreAnOutlineAndASolidInside) {
    const EDAOutline pair = flashedOne("%ADD10TWO*%", "%AMTWO*21,1,1,1,-3,0,0*21,1,1,1,3,0,0*%\n");
    ASSERT_EQ(pair.numInternalOutlines(), 1);
    EXPECT_FALSE(pair.beginInternalOutlines()->isHole());
    expectBox(*pair.beginInternalOutlines(), 2.5, -0.5, 3.5, 0.5);
}

TEST(GerberMacros, AClearPrimitiveCutsWhatWasThere) {
    const EDAOutline frame = flashedOne("%ADD10F*%", "%AMF*21,1,4,4,0,0,0*21,0,2,2,0,0,0*%\n");
    ASSERT_EQ(frame.numInternalOutlines(), 1);
    EXPECT_NEAR(frame.beginInternalOutlines()->getArea(), 4.0, 1e-9);
}

TEST(GerberMacros, AClearPrimitiveMayCutInTwo) {
    const EDAOutline halves = flashedOne("%ADD10H*%", "%AMH*21,1,4,4,0,0,0*21,0,1,8,0,0,0*%\n");
    EXPECT_EQ(halves.numInternalOutlines(), 0); // a clear bar has no vertex inside the square
    const EDAOutline cut = flashedOne("%ADD10H*%", "%AMH*21,1,4,4,0,0,0*4,0,5,-0.5,-3,0.5,-3,0.5,0,0.5,3,-0.5,3,0*%\n");
    ASSERT_EQ(cut.numInternalOutlines(), 1);
    EXPECT_FALSE(cut.beginInternalOutlines()->isHole());
}

TEST(GerberMacros, OnlyClearPrimitivesDrawNothing) {
    EXPECT_TRUE(flashed("%ADD10C0*%", "%AMC0*1,0,1,0,0*%\n").empty());
}

TEST(GerberMacros, TheVectorLineHasSquareEnds) {
    expectBox(flashedOne("%ADD10V*%", "%AMV*20,1,0.5,0,0,3,0,0*%\n"), 0, -0.25, 3, 0.25);
    expectBox(flashedOne("%ADD10V*%", "%AMV*2,1,0.5,0,0,3,0,90*%\n"), -0.25, 0, 0.25, 3);
}

TEST(GerberMacros, ALowerLeftRectangleStartsAtItsCorner) {
    expectBox(flashedOne("%ADD10L*%", "%AML*22,1,2,1,3,4,0*%\n"), 3, 4, 5, 5);
}

TEST(GerberMacros, TheRotationIsAboutTheOriginOfTheMacro) {
    expectBox(flashedOne("%ADD10L*%", "%AML*22,1,2,1,3,4,90*%\n"), -5, 3, -4, 5);
}

TEST(GerberMacros, AnOutlineTakesAsManyPointsAsItSays) {
    EXPECT_THAT(storedPoints(flashedOne("%ADD10T*%", "%AMT*4,1,3,0,0,2,0,1,2,0,0,0*%\n")), PointsAre("0,0 2,0 1,2"));
}

TEST(GerberMacros, AnOutlineTakesNoMorePointsThanThereAre) {
    EXPECT_THAT(storedPoints(flashedOne("%ADD10T*%", "%AMT*4,1,99,0,0,2,0,1,2,0*%\n")), PointsAre("0,0 2,0 1,2"));
}

TEST(GerberMacros, APolygonIsTurnedTwice) {
    const double r = 1.0;
    expectBox(flashedOne("%ADD10P1*%", "%AMP1*5,1,4,0,0,2,45*%\n"), -r, -r, r, r); // 45 + 45 is a quarter
}

TEST(GerberMacros, AThermalIsFourQuarters) {
    const EDAOutline thermal = flashedOne("%ADD10T*%", "%AMT*7,0,0,4,2,0.5,0*%\n");
    EXPECT_EQ(thermal.numInternalOutlines(), 3);
    for (auto quarter = thermal.beginInternalOutlines(); quarter != thermal.endInternalOutlines(); ++quarter)
        EXPECT_NEAR(quarter->getArea(), thermal.getArea(), 1e-9);
}

TEST(GerberMacros, TheCrossOfAMoireStandsAtTheOrigin) {
    const EDAOutline moire = flashedOne("%ADD10M*%", "%AMM*6,20,0,4,0.5,0.5,2,0.2,6,0*%\n");
    ASSERT_GE(moire.numInternalOutlines(), 2);
    expectBox(moire, -3, -3, 3, 3);
}

TEST(GerberMacros, AFractionalYOfAThermalIsLost) {
    Geometry::Bound2D bound;
    flashedOne("%ADD10T*%", "%AMT*7,0,0.5,4,2,0.5,0*%\n").getOverallBound(bound);
    EXPECT_NEAR(bound.getYLow(), -bound.getYHigh(), 1e-9);
}

TEST(GerberMacros, CommentsAndUnknownPrimitivesDrawNothing) {
    EXPECT_EQ(flashed("%ADD10K*%", "%AMK*0 a comment, with a comma*99,1,1,1*1,1,2,0,0*%\n").size(), 1U);
}

TEST(GerberMacros, ParametersAreEvaluated) {
    expectBox(flashedOne("%ADD10R1,2X1*%", "%AMR1*21,1,$1+$2,$1x$2,0,0,0*%\n"), -1.5, -1, 1.5, 1);
    expectBox(flashedOne("%ADD10R1,2X1*%", "%AMR1*21,1,$1X2,$2,0,0,0*%\n"), -2, -0.5, 2, 0.5);
}

TEST(GerberMacros, ADefinitionIsTextAndMayNameParameters) {
    expectBox(flashedOne("%ADD10D,2*%", "%AMD*$2=$1/2*21,1,$1,$2,0,0,0*%\n"), -1, -0.5, 1, 0.5);
}

TEST(GerberMacros, AVariableDefinedByItselfTakesItsOldValueAndEnds) {
    expectBox(flashedOne("%ADD10D,2*%", "%AMD*$1=$1+1*21,1,$1,$1,0,0,0*%\n"), -1.5, -1.5, 1.5, 1.5);
}

TEST(GerberMacros, WithoutParametersAVariableReadsAsZero) {
    const auto outline = macroOf({{"21", "1", "$1", "2", "0", "0", "0"}});
    ASSERT_TRUE(outline);
    EXPECT_EQ(xHigh(*outline), 0.0);
}

TEST(GerberMacros, AnExpressionWithoutVariableReadsAsItsFirstNumber) {
    const auto outline = macroOf({{"21", "1", "4+9", "2", "0", "0", "0"}}, {{"$1", "1"}});
    ASSERT_TRUE(outline);
    EXPECT_EQ(xHigh(*outline), 2.0);
}

TEST(GerberMacros, ValuesAreRoundedToSixDigits) {
    const auto outline = macroOf({{"21", "1", "$1", "2", "0", "0", "0"}}, {{"$1", "1.23456789"}});
    ASSERT_TRUE(outline);
    EXPECT_EQ(xHigh(*outline), 1.23457 / 2);
}

TEST(GerberMacros, ABigXReplacesVariablesAsText) {
    // "$1" is taken out of "$10", too: 5 and a 0 behind it.
    const auto outline = macroOf({{"21", "1", "$10X2", "2", "0", "0", "0"}}, {{"$1", "5"}, {"$10", "7"}});
    ASSERT_TRUE(outline);
    EXPECT_EQ(xHigh(*outline), 50.0);
}

TEST(GerberMacros, AnExpressionBrokenAtACommaIsPutTogether) {
    const auto outline = macroOf({{"21", "1", "$1", "+", "1", "2", "0", "0", "0"}}, {{"$1", "3"}});
    ASSERT_TRUE(outline);
    EXPECT_EQ(xHigh(*outline), 2.0);
    const auto product = macroOf({{"21", "1", "$1", "X", "2", "2", "0", "0", "0"}}, {{"$1", "3"}});
    ASSERT_TRUE(product);
    EXPECT_EQ(xHigh(*product), 3.0);
}

TEST(GerberMacros, AMacroWithoutStatementsIsNoShape) { EXPECT_FALSE(macroOf({})); }

TEST(GerberMacros, TextThatDoublesIsRefused) {
    EDA::ApertureMacro macro("M");
    for (int i = 0; i < 40; ++i) macro.addPrimitive({"$2=$2+$2"});
    macro.addPrimitive({"1", "1", "$2", "0", "0"});
    std::map<std::string, std::string> parameters{{"$2", "1"}};
    EXPECT_FALSE(macro.createOutline(parameters));
}

TEST(GerberMacros, VariablesThatNameEachOtherAreRefusedWithTheMacrosName) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("%AMRR*$3=$4*$4=$3*1,1,$3,0,0*%\n%ADD20RR,1*%\n"));
    EXPECT_EQ(bench.reader.getError(),
              "Failed to find aperture macro: RR,1\n"
              "Aperture macro RR: an expression is too long or nested too deeply.\n");
}

TEST(GerberMacros, VariablesThatDoubleTheWorkDoNotDoubleTheTime) {
    EDA::ApertureMacro macro("M");
    for (int i = 2; i < 60; ++i) {
        const std::string before = "$" + std::to_string(i - 1);
        macro.addPrimitive({"$" + std::to_string(i) + "=" + before + "+" + before});
    }
    macro.addPrimitive({"1", "1", "$59", "0", "0"});
    std::map<std::string, std::string> parameters{{"$1", "1e-17"}};
    const auto outline = macro.createOutline(parameters);
    ASSERT_TRUE(outline);
    EXPECT_GT(xHigh(*outline), 1.0);
}

TEST(GerberMacros, TooManyRingsOrVerticesDrawNothing) {
    EXPECT_TRUE(macroOf({{"6", "0", "0", "4", "0.5", "0.5", "2000000000", "0.2", "6", "0"}})->empty());
    EXPECT_TRUE(macroOf({{"5", "1", "2000000000", "0", "0", "2", "0"}})->empty());
    EXPECT_TRUE(macroOf({{"4", "1", "2000000000", "0", "0", "2", "0", "1"}})->empty());
}

TEST(GerberAperture, PiecesThatANewOneJoinsBecomeOne) {
    EDA::Aperture aperture;
    aperture.addOutline(outline("0,0 2,0 2,2 0,2"));
    aperture.addOutline(outline("5,0 7,0 7,2 5,2"));
    aperture.addOutline(outline("1,0.5 6,0.5 6,1.5 1,1.5"));
    EXPECT_EQ(aperture.end() - aperture.begin(), 1);
    EXPECT_NEAR(aperture.begin()->getArea(), 4 + 4 + 3, 1e-9);
}

TEST(GerberAperture, AHoleInTheMiddleIsAnInternalOutline) {
    EDA::Aperture aperture;
    aperture.addOutline(outline("0,0 4,0 4,4 0,4"));
    aperture.addOutline(hole("1,1 2,1 2,2 1,2"));
    ASSERT_EQ(aperture.end() - aperture.begin(), 1);
    EXPECT_EQ(aperture.begin()->numInternalOutlines(), 1);
}

TEST(GerberAperture, AHoleOverAllOfAPieceLeavesNothing) {
    EDA::Aperture aperture;
    aperture.addOutline(outline("0,0 4,0 4,4 0,4"));
    aperture.cutOutline(hole("0,0 4,0 4,4 0,4"));
    EXPECT_TRUE(aperture.empty());
}

TEST(GerberAperture, NothingCombinesIntoNothing) {
    EDAOutline result = outline("0,0 1,0 1,1");
    EDA::Aperture().combineInto(result);
    EXPECT_EQ(result.numPoints(), 3U);
}
