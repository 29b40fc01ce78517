// What the reader of layers makes of canonical files.
#include "WriterSupport.h"

#include "readers/gerber/GerberReader.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace WriterTests;

namespace {

constexpr double pi = 3.14159265358979323846;

class RoundTrip {
public:
    explicit RoundTrip(std::function<void(LayerWriter &)> const &draw) {
        read(written(draw, nullptr, "Copper,L1,Top"));
    }

    void read(std::string const &text) {
        EXPECT_TRUE(reader_.readFile(folder_.write("top" + std::to_string(numFiles_++) + ".gbr", text)));
        EXPECT_EQ(reader_.getError(), "");
    }

    std::vector<EDA::EDATrace> traces() const {
        auto const layer = std::prev(reader_.getBoard().endLayers());
        return {layer->beginTraces(), layer->endTraces()};
    }

    double area() const {
        double area = 0.0;
        for (EDA::EDATrace const &trace : traces()) {
            EDA::EDAOutline const &outline = trace.getOutline();
            area += outline.getArea();
            for (auto hole = outline.beginInternalOutlines(); hole != outline.endInternalOutlines(); ++hole)
                area += hole->isHole() ? -hole->getArea() : hole->getArea();
        }
        return area;
    }

private:
    TestSupport::TempFolder folder_;
    EDA::GerberReader reader_;
    int numFiles_ = 0;
};

} // namespace

TEST(LayerRoundTrip, ASquareSweptAslantIsTheHull) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.stroke(standard("R", {1, 1}), {0, 0}, line(10 * std::cos(pi / 6), 5), true);
    });
    EXPECT_NEAR(board.area(), 1 + 10 * (std::cos(pi / 6) + 0.5), 1e-4);
}

TEST(LayerRoundTrip, AStrokeOfADiscIsAStadium) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.stroke(standard("C", {1}), {-3, 0}, line(0, 4), true);
    });
    EXPECT_NEAR(board.area(), 5 + pi / 4, 0.05);
}

TEST(LayerRoundTrip, AnArcIsABandOfItsWidth) {
    for (Motion const motion : {Motion::CounterClockwise, Motion::Clockwise}) {
        RoundTrip const board([motion](LayerWriter &writer) {
            writer.stroke(standard("C", {1}), {15, 0}, arc(motion, {10, 5}, {10, 0}), true);
        });
        double const quarters = motion == Motion::CounterClockwise ? 1 : 3;
        EXPECT_NEAR(board.area(), quarters * pi / 4 * (5.5 * 5.5 - 4.5 * 4.5) + pi / 4, 0.1);
        EXPECT_EQ(board.traces().size(), 1U);
    }
}

TEST(LayerRoundTrip, AFullTurnIsARing) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.stroke(standard("C", {1}), {5, 0}, arc(Motion::Clockwise, {5, 0}, {0, 0}), true);
    });
    EXPECT_NEAR(board.area(), pi * 10, 0.15);
}

TEST(LayerRoundTrip, AnArcOfTwoRadiiEndsWhereItSays) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.stroke(standard("C", {0.2}), {5, 0}, arc(Motion::CounterClockwise, {0, 5.05}, {0, 0}), true);
    });
    EXPECT_NEAR(board.area(), pi / 2 * 5.025 * 0.2 + pi * 0.01, 0.02);
    EXPECT_NEAR(board.traces()[0].getOutline().getBound().getYHigh(), 5.15, 1e-3);
    EXPECT_NEAR(board.traces()[0].getOutline().getBound().getXHigh(), 5.1, 1e-2);
}

TEST(LayerRoundTrip, AMacroKeepsItsHole) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.flash(macro({"21,1,4,4,0,0,0", "1,0,2,0.5,0"}), {100, -50}, true);
    });
    EXPECT_NEAR(board.area(), 16 - pi, 0.03);
}

TEST(LayerRoundTrip, ATurnedMacroIsTurnedOnce) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.flash(macro({"21,1,4,1,0,0,-30"}), {0, 0}, true);
    });
    EXPECT_NEAR(board.area(), 4.0, 1e-4);
    EXPECT_NEAR(board.traces()[0].getOutline().getBound().getXHigh(), 2 * std::cos(pi / 6) + 0.5 * 0.5, 1e-5);
}

TEST(LayerRoundTrip, AThermalIsFourSolids) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.flash(macro({"7,0.5,0.5,4,2,0.5,0"}), {10, 10}, true);
    });
    EXPECT_NEAR(board.area(), pi * 3 - 2, 0.06);
}

TEST(LayerRoundTrip, AClearRingLeavesItsMiddle) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.flash(standard("R", {10, 10}, 1), {0, 0}, true);
        writer.flash(standard("C", {4, 2}, 2), {0, 0}, false);
    });
    EXPECT_NEAR(board.area(), 100 - pi * 3, 0.06);
}

TEST(LayerRoundTrip, ClearStrokesCutDarkOnes) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.stroke(standard("C", {2}, 1), {0, 0}, line(20, 0), true);
        writer.stroke(standard("R", {0.5, 0.5}, 2), {10, 0}, line(12, 0.5), false);
    });
    EXPECT_NEAR(board.area(), 40 + pi - (0.25 + 0.5 * 2.5), 0.05);
}

TEST(LayerRoundTrip, AHoleOfASweepIsKeptByItsCutIn) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.stroke(macro({"21,1,4,4,0,0,0", "21,0,2,2,0,0,0"}), {0, 0}, line(0.5, 0), true);
    });
    EXPECT_NEAR(board.area(), 4.5 * 4 - 1.5 * 2, 1e-4);
}

TEST(LayerRoundTrip, SeveralHolesAreKeptByTheirCutIns) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.stroke(macro({"21,1,10,10,0,0,0", "21,0,2,2,-3,3,0", "21,0,2,2,3,3,0", "21,0,2,2,-3,-3,0",
                             "21,0,2,2,3,-3,0", "1,0,2,0,0"}),
                      {0, 0}, line(0, 0.5), true);
    });
    EXPECT_NEAR(board.area(), 105 - 4 * 3 - (pi - 2 * 0.5), 0.1);
}

TEST(LayerRoundTrip, RegionsAreAsRoundAsTheirArcs) {
    for (double const radius : {0.05, 0.3, 2.0, 30.0}) {
        RoundTrip const board([radius](LayerWriter &writer) {
            writer.region({{radius, 0}, {arc(Motion::CounterClockwise, {radius, 0}, {0, 0})}}, true);
        });
        EXPECT_NEAR(board.area(), pi * radius * radius, 2 * pi * radius * chordTolerance);
    }
}

TEST(LayerRoundTrip, LargeObroundsAreRound) {
    RoundTrip const board([](LayerWriter &writer) { writer.flash(standard("O", {40, 20}), {0, 0}, true); });
    EXPECT_NEAR(board.area(), 400 + pi * 100, 2 * pi * 10 * chordTolerance);
}

TEST(LayerRoundTrip, TracesAreNamedByMacroOrFunction) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.flash(functional(macro({"21,1,1,1,0,0,0"}, "Thermal", 1), "SMDPad"), {0, 0}, true);
        writer.flash(functional(standard("C", {1}, 2), "ViaPad"), {5, 0}, true);
        writer.flash(functional(macro({"21,1,1,2,0,0,0"}, "", 3), "BGAPad,CuDef"), {10, 0}, true);
        writer.flash(standard("C", {1}, 4), {15, 0}, true);
    });
    std::vector<std::string> names;
    for (EDA::EDATrace const &trace : board.traces())
        names.push_back(trace.getName());
    EXPECT_EQ(names, (std::vector<std::string>{"Thermal", "ViaPad", "BGAPad", "Conductor"}));
}

TEST(LayerRoundTrip, AFunctionDoesNotReachTheNextFile) {
    RoundTrip board([](LayerWriter &writer) {
        writer.flash(functional(standard("C", {1}), "ViaPad"), {0, 0}, true);
    });
    board.read(written([](LayerWriter &writer) { writer.flash(standard("C", {1}), {0, 0}, true); }));
    ASSERT_EQ(board.traces().size(), 1U);
    EXPECT_EQ(board.traces()[0].getName(), "Conductor");
}

TEST(LayerRoundTrip, NetsInCommentsAreNoObjects) {
    RoundTrip const board([](LayerWriter &writer) {
        writer.setNet("A*%LPC*%\nD10*", "U1,1");
        writer.flash(standard("C", {1}), {0, 0}, true);
    });
    EXPECT_EQ(board.traces().size(), 1U);
}
