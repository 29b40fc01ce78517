// The text of canonical layer files.
#include "WriterSupport.h"

#include <gtest/gtest.h>

using namespace WriterTests;

namespace {

std::string const disc = "%TA.AperFunction,Conductor*%\n%ADD10C,0.5*%\n";

} // namespace

TEST(LayerWriter, AnEmptyFileHasItsHeadAndEnd) {
    EXPECT_EQ(written([](LayerWriter &) {}), "%FSLAX46Y46*%\n%MOMM*%\nG75*\n%LPD*%\nM02*\n");
}

TEST(LayerWriter, TheFunctionOfTheFileStandsInItsHead) {
    EXPECT_EQ(written([](LayerWriter &) {}, nullptr, "Copper,L1,Top"),
              "%FSLAX46Y46*%\n%MOMM*%\n%TF.FileFunction,Copper,L1,Top*%\nG75*\n%LPD*%\nM02*\n");
}

TEST(LayerWriter, WithoutAnEndNothingIsLost) {
    StringSink sink;
    { LayerWriter(sink, "", nullptr).flash(standard("C", {0.5}), {1, 2}, true); }
    EXPECT_NE(sink.text.find("D03*"), std::string::npos);
}

TEST(LayerWriter, AnApertureIsDefinedWhenItIsFirstUsed) {
    EXPECT_EQ(bodyOf([](LayerWriter &writer) {
                  writer.flash(standard("C", {0.5}), {1, -2.5}, true);
                  writer.flash(standard("C", {0.5}), {0, 0}, true);
              }),
              disc + "D10*\nX1000000Y-2500000D03*\nX0Y0D03*\n");
}

TEST(LayerWriter, RectanglesAndObroundsAreStandardTemplates) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.flash(standard("R", {0.5, 0.25}, 1), {0, 0}, true);
        writer.flash(standard("O", {1, 0.5}, 2), {0, 0}, true);
    });
    EXPECT_NE(text.find("%ADD10R,0.5X0.25*%\n"), std::string::npos);
    EXPECT_NE(text.find("%ADD11O,1X0.5*%\n"), std::string::npos);
}

TEST(LayerWriter, LargeObroundsHaveFineEndsAsOutlines) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.flash(standard("O", {20, 10}), {0, 0}, true);
    });
    EXPECT_EQ(text.find("O,"), std::string::npos);
    EXPECT_EQ(countOf(text, "%AMShape*4,1,"), 1U);
}

TEST(LayerWriter, AnOutlineEndsWhereItStarts) {
    EXPECT_EQ(
        bodyOf([](LayerWriter &writer) {
            writer.flash(macro({"21,1,2,1,0,0,0"}), {3, 4}, true);
        }),
        "%AMM_*4,1,4,-1,-0.5,1,-0.5,1,0.5,-1,0.5,-1,-0.5,0*%\n%TA.AperFunction,Conductor*%\n%ADD10M_*%\n"
        "D10*\nX3000000Y4000000D03*\n");
}

TEST(LayerWriter, HolesOfAnOutlineAreErasedOutlines) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.flash(macro({"21,1,4,4,0,0,0", "21,0,2,2,0,0,0"}), {0, 0}, true);
    });
    EXPECT_EQ(countOf(text, "*4,1,4,"), 1U);
    EXPECT_EQ(countOf(text, "*4,0,4,"), 1U);
}

TEST(LayerWriter, SolidsApartAreFlashedOneAfterTheOther) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.flash(macro({"21,1,1,1,0,0,0", "21,1,1,1,2,0,0"}, "Pair"), {1, 1}, true);
    });
    EXPECT_NE(text.find("%AMPair*"), std::string::npos);
    EXPECT_NE(text.find("%AMPair_2*"), std::string::npos);
    EXPECT_NE(text.find("D10*\nX1000000Y1000000D03*\nD11*\nX1000000Y1000000D03*\n"), std::string::npos);
}

TEST(LayerWriter, NamesOfMacrosAreUniqueAndPlain) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.flash(macro({"21,1,1,1,0,0,0"}, "A*b%c d", 1), {0, 0}, true);
        writer.flash(macro({"21,1,2,1,0,0,0"}, "A_b_c_d", 2), {0, 0}, true);
        writer.flash(macro({"21,1,3,1,0,0,0"}, "12", 3), {0, 0}, true);
        writer.flash(macro({"21,1,4,1,0,0,0"}, "C", 4), {0, 0}, true);
        writer.flash(functional(macro({"21,1,5,1,0,0,0"}, "", 5), "SMDPad,CuDef"), {0, 0}, true);
        writer.flash(macro({"21,1,6,1,0,0,0"}, "", 6), {0, 0}, true);
    });
    for (auto const *name : {"A_b_c_d", "A_b_c_d_2", "M12", "C_", "SMDPad", "Shape"}) {
        EXPECT_EQ(countOf(text, "%AM" + std::string(name) + "*"), 1U) << name;
    }
}

TEST(LayerWriter, ANameThatLooksLikeARepeatIsNotTakenTwice) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.flash(macro({"21,1,1,1,0,0,0"}, "Pad_2", 1), {0, 0}, true);
        writer.flash(macro({"21,1,2,1,0,0,0"}, "Pad", 2), {0, 0}, true);
        writer.flash(macro({"21,1,3,1,0,0,0"}, "Pad", 3), {0, 0}, true);
    });
    for (auto const *name : {"Pad", "Pad_2", "Pad_3"}) {
        EXPECT_EQ(countOf(text, "%AM" + std::string(name) + "*"), 1U) << name;
    }
}

TEST(LayerWriter, FunctionsStandBeforeTheAperturesThatChangeThem) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.flash(functional(standard("C", {1}, 1), "ViaPad"), {0, 0}, true);
        writer.flash(functional(standard("C", {2}, 2), "ViaPad"), {0, 0}, true);
        writer.flash(standard("C", {3}, 3), {0, 0}, true);
        writer.flash(functional(standard("C", {4}, 4), "SMDPad,CuDef"), {0, 0}, true);
    });
    EXPECT_NE(text.find("%TA.AperFunction,ViaPad*%\n%ADD10"), std::string::npos);
    EXPECT_NE(text.find("D03*\n%ADD11C,2*%\n"), std::string::npos);
    EXPECT_NE(text.find("%TA.AperFunction,Conductor*%\n%ADD12"), std::string::npos);
    EXPECT_NE(text.find("%TA.AperFunction,SMDPad,CuDef*%\n%ADD13"), std::string::npos);
}

TEST(LayerWriter, StrokesThatGoOnNeedNoMove) {
    EXPECT_EQ(bodyOf([](LayerWriter &writer) {
                  Shape const shape = standard("C", {0.5});
                  writer.stroke(shape, {0, 0}, line(1, 0), true);
                  writer.stroke(shape, {1, 0}, line(1, 1), true);
                  writer.stroke(shape, {0, 0}, line(1, 1), true);
              }),
              disc + "D10*\nX0Y0D02*\nG01X1000000Y0D01*\nG01X1000000Y1000000D01*\nX0Y0D02*\n"
                     "G01X1000000Y1000000D01*\n");
}

TEST(LayerWriter, AStrokeWithoutLengthIsADot) {
    EXPECT_EQ(bodyOf([](LayerWriter &writer) {
                  writer.stroke(standard("C", {0.5}), {1, 0}, line(1, 1e-8), true);
              }),
              disc + "D10*\nX1000000Y0D02*\nG01X1000000Y0D01*\n");
}

TEST(LayerWriter, AnArcThatRoundsToNothingIsADot) {
    EXPECT_EQ(
        bodyOf([](LayerWriter &writer) {
            writer.stroke(standard("C", {0.5}), {1, 0}, arc(Motion::Clockwise, {1, 0}, {1, 1e-8}), true);
        }),
        disc + "D10*\nX1000000Y0D02*\nG01X1000000Y0D01*\n");
}

TEST(LayerWriter, SmallArcsStayWhole) {
    EXPECT_EQ(bodyOf([](LayerWriter &writer) {
                  writer.stroke(standard("C", {0.1}), {0.2, 0},
                                arc(Motion::CounterClockwise, {0, 0.2}, {0, 0}), true);
              }),
              "%TA.AperFunction,Conductor*%\n%ADD10C,0.1*%\nD10*\nX200000Y0D02*\n"
              "G03X0Y200000I-200000J0D01*\n");
}

TEST(LayerWriter, LargeArcsAreCutSoThatAChordOfEachPieceStaysNear) {
    double const radius = 20.5; // of the outer edge
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.stroke(standard("C", {1}), {20, 0}, arc(Motion::Clockwise, {0, -20}, {0, 0}), true);
    });
    double const step = 2 * std::acos(1 - chordTolerance / radius);
    EXPECT_EQ(countOf(text, "G02"), static_cast<std::size_t>(std::ceil(1.5707963267948966 / step)));
    EXPECT_EQ(countOf(text, "G03"), 0U);
}

TEST(LayerWriter, AFullTurnIsTwoPiecesAtLeast) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.stroke(standard("C", {0.1}), {0.1, 0}, arc(Motion::CounterClockwise, {0.1, 0}, {0, 0}), true);
    });
    EXPECT_EQ(countOf(text, "G03"), 2U);
}

TEST(LayerWriter, AnAlmostFullTurnIsNotTakenForAFullOne) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.stroke(standard("C", {0.1}), {0.1, 0}, arc(Motion::CounterClockwise, {0.1, -1e-9}, {0, 0}),
                      true);
    });
    EXPECT_EQ(countOf(text, "G03"), 2U);
}

TEST(LayerWriter, AShortArcIsALine) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.stroke(standard("C", {0.1}), {100, 0}, arc(Motion::CounterClockwise, {100, 5e-6}, {0, 0}),
                      true);
    });
    EXPECT_EQ(countOf(text, "G03"), 0U);
    EXPECT_EQ(countOf(text, "G01"), 1U);
}

TEST(LayerWriter, AnArcAroundAFarCentreIsStraight) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.stroke(standard("C", {0.1}), {0, 0}, arc(Motion::CounterClockwise, {1, 0}, {0.5, 1e7}), true);
    });
    EXPECT_EQ(countOf(text, "G03"), 0U);
    EXPECT_GE(countOf(text, "G01"), 1U);
}

TEST(LayerWriter, ClearObjectsChangeThePolarityAndSelectAgain) {
    EXPECT_EQ(bodyOf([](LayerWriter &writer) {
                  writer.flash(standard("C", {0.5}), {0, 0}, true);
                  writer.flash(standard("C", {0.5}), {1, 0}, false);
                  writer.flash(standard("C", {0.5}), {2, 0}, true);
              }),
              disc + "D10*\nX0Y0D03*\n%LPC*%\nD10*\nX1000000Y0D03*\n%LPD*%\nD10*\nX2000000Y0D03*\n");
}

TEST(LayerWriter, ClearShapesWithHolesAreRegionsWithCutIns) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.flash(standard("R", {4, 4, 2, 2}), {10, 0}, false);
    });
    EXPECT_EQ(countOf(text, "%AD"), 0U);
    EXPECT_EQ(countOf(text, "G36*"), 1U);
    EXPECT_EQ(countOf(text, "X9000000Y-1000000"), 2U);
    EXPECT_EQ(countOf(text, "X8000000Y-1000000"), 2U);
}

TEST(LayerWriter, TooManyVerticesForAnApertureAreARegion) {
    Shape shape = standard("P", {10, 10000});
    Ring &outer = shape.pieces[0].outer;
    outer.insert(outer.begin() + 1, {5.0 - 1e-6, 1e-3});
    std::string const text = bodyOf([&](LayerWriter &writer) { writer.flash(shape, {0, 0}, true); });
    EXPECT_EQ(countOf(text, "%AM"), 0U);
    EXPECT_EQ(countOf(text, "G36*"), 1U);
}

TEST(LayerWriter, RegionsAreClosed) {
    EXPECT_EQ(bodyOf([](LayerWriter &writer) {
                  writer.region({{0, 0}, {line(1, 0), line(1, 1)}}, true);
              }),
              "G36*\nX0Y0D02*\nG01X1000000Y0D01*\nG01X1000000Y1000000D01*\nG01X0Y0D01*\nG37*\n");
}

TEST(LayerWriter, RegionsThatAreClosedAreNotClosedAgain) {
    EXPECT_EQ(countOf(bodyOf([](LayerWriter &writer) {
                          writer.region({{0, 0}, {line(1, 0), line(1, 1), line(0, 0)}}, true);
                      }),
                      "G01"),
              3U);
}

TEST(LayerWriter, RegionsKeepTheirArcs) {
    EXPECT_EQ(bodyOf([](LayerWriter &writer) {
                  writer.region(
                      {{0.03, 0}, {arc(Motion::CounterClockwise, {-0.03, 0}, {0, 0}), line(0.03, 0)}}, true);
              }),
              "G36*\nX30000Y0D02*\nG03X-30000Y0I-30000J0D01*\nG01X30000Y0D01*\nG37*\n");
}

TEST(LayerWriter, RegionsWithoutAreaAreNotWritten) {
    EXPECT_EQ(bodyOf([](LayerWriter &writer) {
                  writer.region({{0, 0}, {}}, true);
                  writer.region({{0, 0}, {line(1, 0), line(0, 0)}}, true);
                  writer.region({{0, 0}, {line(1e-9, 0), line(1e-9, 1e-9), line(0, 0)}}, true);
              }),
              "");
}

TEST(LayerWriter, StrokesOfOtherShapesAreRegions) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.stroke(standard("R", {1, 1}), {0, 0}, line(2, 1), true);
    });
    EXPECT_EQ(countOf(text, "G36*"), 1U);
    EXPECT_EQ(countOf(text, "G01"), 6U);
    EXPECT_EQ(countOf(text, "%AD"), 0U);
}

TEST(LayerWriter, NothingAndShapesWithoutSizeAreNotWritten) {
    EXPECT_EQ(bodyOf([](LayerWriter &writer) {
                  writer.flash(Shape(), {0, 0}, true);
                  writer.stroke(Shape(), {0, 0}, line(1, 0), true);
                  writer.flash(standard("C", {0}, 1), {0, 0}, true);
                  writer.stroke(standard("C", {0}, 1), {0, 0}, line(1, 0), true);
                  writer.flash(standard("R", {1, 0}, 2), {0, 0}, true);
              }),
              "");
}

TEST(LayerWriter, FarCoordinatesAreCutToAHundredMetres) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.flash(standard("C", {0.5}), {1e300, -1e300}, true);
    });
    EXPECT_NE(text.find("X100000000000Y-100000000000D03*"), std::string::npos);
}

TEST(LayerWriter, NetsStandInComments) {
    std::string const text = bodyOf([](LayerWriter &writer) {
        writer.setNet("", "");
        writer.setNet("GND", "U1,3");
        writer.setNet("GND", "U1,3");
        writer.setNet("GND", "U1,4");
        writer.setNet("VCC", "");
        writer.setNet("", "");
    });
    EXPECT_EQ(text, "G04 #@! TO.N,GND*\nG04 #@! TO.P,U1,3*\nG04 #@! TO.P,U1,4*\nG04 #@! TD*\n"
                    "G04 #@! TO.N,VCC*\nG04 #@! TD*\n");
}

TEST(LayerWriter, NamesOfNetsDoNotEndTheirComment) {
    EXPECT_EQ(bodyOf([](LayerWriter &writer) { writer.setNet("A*%LPC*%\nX\\,B", ""); }),
              "G04 #@! TO.N,A\\u002A\\u0025LPC\\u002A\\u0025\\u000AX\\u005C\\u002CB*\n");
}

TEST(LayerWriter, EachDarkObjectOfANetGivesAPoint) {
    NetPoints nets;
    bodyOf(
        [](LayerWriter &writer) {
            writer.flash(standard("C", {1}, 1), {9, 9}, true);
            writer.setNet("A", "");
            writer.flash(standard("C", {1}, 1), {1, 2}, true);
            writer.flash(standard("C", {1}, 1), {1, 2}, false);
            writer.setNet("B", "");
            writer.stroke(standard("C", {1}, 1), {3, 4}, line(5, 6), true);
            writer.setNet("A", "U1,1");
            writer.region({{0, 0}, {line(4, 0), line(4, 4), line(0, 4)}}, true);
        },
        &nets);
    EXPECT_EQ(nets.names, (std::vector<std::string>{"A", "B"}));
    ASSERT_EQ(nets.points.size(), 3U);
    EXPECT_EQ(nets.points[0].net, 0U);
    EXPECT_EQ(nets.points[0].at, (Point{1, 2}));
    EXPECT_EQ(nets.points[1].net, 1U);
    EXPECT_EQ(nets.points[1].at, (Point{3, 4}));
    EXPECT_EQ(nets.points[2].net, 0U);
    EXPECT_EQ(nets.points[2].at, (Point{2, 2}));
}

TEST(LayerWriter, ThePointOfARingLiesInItsMaterial) {
    NetPoints nets;
    bodyOf(
        [](LayerWriter &writer) {
            writer.setNet("A", "");
            writer.flash(standard("C", {2, 1}), {10, 10}, true);
        },
        &nets);
    ASSERT_EQ(nets.points.size(), 1U);
    double const distance = std::hypot(nets.points[0].at.x - 10, nets.points[0].at.y - 10);
    EXPECT_GT(distance, 0.5);
    EXPECT_LT(distance, 1.0);
}

TEST(LayerWriter, IsFullOnceSweptStrokesCostTooMuch) {
    StringSink sink;
    LayerWriter writer(sink, "", nullptr);
    std::size_t count = 0;
    while (!writer.isFull() && count < 1000) {
        writer.stroke(standard("R", {1, 1}), {1000, 0}, arc(Motion::CounterClockwise, {0, 1000}, {0, 0}),
                      true);
        ++count;
    }
    EXPECT_GT(count, 100U);
    EXPECT_LT(count, 1000U);
}
