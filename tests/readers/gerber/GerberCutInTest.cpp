// Holes of traces after the clean-up, and shapes with cut-ins that are drawn more than once.
#include "GerberHostileSupport.h"

using namespace TestSupport;
using EDA::EDAOutline;
using EDA::EDATrace;
using EDA::GerberLimits;
using EDA::test::Random;

namespace {

struct Place {
    int x, y; // in millimetres
};

std::string region(const std::vector<Place> &corners) {
    std::string text = "G36*\n";
    for (std::size_t i = 0; i <= corners.size(); ++i) {
        const Place &corner = corners[i % corners.size()];
        text += "X" + std::to_string(10000 * corner.x) + "Y" + std::to_string(10000 * corner.y) +
                (i == 0 ? "D02*\n" : "D01*\n");
    }
    return text + "G37*\n";
}

std::string bar(int xLow, int yLow, int xHigh, int yHigh) {
    return region({{xLow, yLow}, {xHigh, yLow}, {xHigh, yHigh}, {xLow, yHigh}});
}

// Each list that an outline gives is that of the points that it stores.
void expectFresh(const EDAOutline &outline) {
    EXPECT_EQ(outline.getPoints(true).size(), outline.numPoints());
    EXPECT_EQ(outline.getPoints(false).size(), outline.numPoints());
    for (auto hole = outline.beginInternalOutlines(); hole != outline.endInternalOutlines(); ++hole)
        expectFresh(*hole);
}

// A square of 4 mm with a square hole of 2 mm, spelled by a cut-in.
const std::string frameMacro = "%AMF*4,1,10,0,0,4,0,4,4,0,4,0,0,1,1,1,3,3,3,3,1,1,1,0*%\n%ADD20F*%\nD20*\n";

// The corners of the macro as a region at a place in units of the file.
std::string frameRegion(int x, int y) {
    const Place corners[] = {{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}, {1, 1}, {1, 3}, {3, 3}, {3, 1}, {1, 1}};
    std::string text = "G36*\n";
    for (const Place &corner : corners)
        text += "X" + std::to_string(x + 10000 * corner.x) + "Y" + std::to_string(y + 10000 * corner.y) +
                (&corner == corners ? "D02*\n" : "D01*\n");
    return text + "G37*\n";
}

std::string flash(int x, int y) { return "X" + std::to_string(x) + "Y" + std::to_string(y) + "D03*\n"; }

void expectSame(const EDAOutline &found, const EDAOutline &expected) {
    ASSERT_EQ(found.numPoints(), expected.numPoints());
    for (auto p = found.beginPoints(), q = expected.beginPoints(); p != found.endPoints(); ++p, ++q) {
        EXPECT_NEAR(p->x, q->x, 1e-12);
        EXPECT_NEAR(p->y, q->y, 1e-12);
        EXPECT_EQ(p->centreX, q->centreX);
        EXPECT_EQ(p->centreY, q->centreY);
    }
    ASSERT_EQ(found.numInternalOutlines(), expected.numInternalOutlines());
    auto other = expected.beginInternalOutlines();
    for (auto hole = found.beginInternalOutlines(); hole != found.endInternalOutlines(); ++hole)
        expectSame(*hole, *other++);
}

void expectSame(const std::vector<EDATrace> &found, const std::vector<EDATrace> &expected) {
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        expectSame(found[i].getOutline(), expected[i].getOutline());
}

// The same layer with flashes of a macro, and with regions.
void expectFlashesAreRegions(const std::string &before, const std::vector<Place> &places) {
    std::string flashes = frameMacro + before, regions = before;
    for (const Place &place : places) {
        flashes += flash(place.x, place.y);
        regions += frameRegion(place.x, place.y);
    }
    GerberBench flashed, drawn;
    EXPECT_TRUE(flashed.readLayer(flashes));
    EXPECT_TRUE(drawn.readLayer(regions));
    expectSame(flashed.traces(), drawn.traces());
}

// An aperture of many corners by dice that comes back to one of them: it falls into many pieces.
std::string scribbleMacro(int count) {
    Random random(7);
    std::string corners, corner;
    for (int i = 0; i < count; ++i) {
        corner = "," + std::to_string(random.below(1000)) + "," + std::to_string(random.below(1000));
        corners += corner + (i == 1 ? "," + std::to_string(random.below(1000)) + ",0" + corner : "");
    }
    return "%AMS*4,1," + std::to_string(count + 2) + corners + ",0*%\n%ADD20S*%\nD20*\n";
}

} // namespace

TEST(GerberTraceHoles, AHoleOfMergedBarsHasNoPointsFromBeforeTheCleanUp) {
    GerberBench bench;
    bench.reader.setMergeConductors(true);
    EXPECT_TRUE(bench.readLayer(bar(0, 0, 10, 2) + bar(0, 1, 2, 9) + bar(8, 1, 10, 9) + bar(0, 8, 6, 10) +
                                bar(5, 8, 10, 10)));
    ASSERT_EQ(bench.traces().size(), 1U);
    const auto traces = bench.traces();
    const EDAOutline &outline = traces[0].getOutline();
    ASSERT_EQ(outline.numInternalOutlines(), 1);
    EXPECT_EQ(outline.beginInternalOutlines()->getPoints(true).size(), 4U);
    auto layer = bench.board().beginLayers();
    expectFresh(layer->beginTraces()->getOutline());
}

TEST(GerberTraceHoles, AClearRegionLosesItsSpikeInAllLists) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(bar(0, 0, 10, 10) + "%LPC*%\n" +
                                region({{2, 2}, {3, 2}, {4, 2}, {6, 2}, {4, 2}, {4, 4}, {2, 4}})));
    auto layer = bench.board().beginLayers();
    ASSERT_EQ(layer->numTraces(), 1U);
    const EDAOutline &outline = layer->beginTraces()->getOutline();
    expectFresh(outline);
    ASSERT_EQ(outline.numInternalOutlines(), 1);
    EXPECT_EQ(outline.beginInternalOutlines()->numPoints(), 4U);
    expectBox(*outline.beginInternalOutlines(), 2, 2, 4, 4);
}

TEST(GerberCutIns, AFlashBecomesWhatARegionInItsPlaceBecomes) {
    expectFlashesAreRegions("", {{0, 0}, {1234567, -7654321}, {100, 3}, {0, 0}, {333333, 77777}});
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(frameMacro + flash(0, 0)));
    ASSERT_EQ(bench.traces().size(), 1U);
    const auto traces = bench.traces();
    EXPECT_NEAR(traces[0].getOutline().getArea(), 16.0, 1e-9);
    ASSERT_EQ(traces[0].getOutline().numInternalOutlines(), 1);
    EXPECT_EQ(traces[0].getName(), "F");
}

TEST(GerberCutIns, SoDoCopiesOfAStepAndRepeat) {
    expectFlashesAreRegions("%SRX3Y2I7.25J10.125*%\n", {{0, 0}, {1234567, -7654321}});
}

TEST(GerberCutIns, AnApertureUnderTheSameCodeHasAShapeOfItsOwn) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(frameMacro + flash(0, 0) +
                                "%AMF*4,1,10,0,0,8,0,8,8,0,8,0,0,1,1,1,3,3,3,3,1,1,1,0*%\n%ADD20F*%\n" +
                                flash(100000, 0) + "D20*\n" + flash(200000, 0)));
    const auto traces = bench.traces();
    ASSERT_EQ(traces.size(), 3U);
    expectBox(traces[0].getOutline(), 0, 0, 4, 4);
    expectBox(traces[1].getOutline(), 10, 0, 14, 4);
    expectBox(traces[2].getOutline(), 20, 0, 28, 8);
}

TEST(GerberCutIns, AClearFlashPunchesWithItsOwnPointsEvenAfterADarkOne) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(frameMacro + flash(0, 0) + bar(20, 20, 40, 40) + "%LPC*%\nD20*\n" +
                                flash(250000, 250000) + "%LPD*%\nD20*\n" + flash(500000, 0)));
    const auto traces = bench.traces();
    ASSERT_EQ(traces.size(), 3U);
    const EDAOutline &square = traces[2].getOutline(); // regions come behind
    ASSERT_EQ(square.numInternalOutlines(), 1);
    EXPECT_EQ(square.beginInternalOutlines()->numPoints(), 10U);
    EXPECT_EQ(traces[1].getOutline().numInternalOutlines(), 1);
}

TEST(GerberCutIns, PiecesOfAnApertureCountAsObjects) {
    GerberLimits limits;
    limits.objects = 50;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer(scribbleMacro(40) + flash(0, 0) + flash(10, 10)));
    EXPECT_EQ(bench.traces().size(), 50U);
    EXPECT_NE(bench.reader.getError().find("more than 50 objects"), std::string::npos);
}

TEST(GerberCutIns, PointsOfPiecesCountAsPointsOfTheFile) {
    GerberLimits limits;
    limits.points = 1000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer(scribbleMacro(40) + repeated(flash(0, 0), 20)));
    std::size_t points = 0;
    for (const EDATrace &trace : bench.traces())
        points += trace.getOutline().numPoints();
    EXPECT_LE(points, 1000U);
    EXPECT_NE(bench.reader.getError().find("or 1000 points"), std::string::npos);
}
