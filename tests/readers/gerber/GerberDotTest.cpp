// Strokes that go nowhere and arcs, whose shapes are made by shorter ways.
#include "GerberTestSupport.h"
#include "readers/gerber/Aperture.h"
#include "readers/gerber/GerberShapes.h"

#include <random>

using namespace TestSupport;
using EDA::EDAOutline;

namespace {

void expectSamePoints(const EDAOutline &a, const EDAOutline &b, double dx, double dy) {
    ASSERT_EQ(a.numPoints(), b.numPoints());
    for (auto p = a.beginPoints(), q = b.beginPoints(); p != a.endPoints(); ++p, ++q) {
        EXPECT_NEAR(p->x + dx, q->x, 1e-12);
        EXPECT_NEAR(p->y + dy, q->y, 1e-12);
    }
}

double areaWithoutHoles(const EDAOutline &outline) {
    double area = outline.getArea();
    for (auto hole = outline.beginInternalOutlines(); hole != outline.endInternalOutlines(); ++hole)
        area -= hole->getArea();
    return area;
}

std::string units(double millimetres) { return std::to_string(std::lround(millimetres * 1e4)); }

} // namespace

TEST(GerberDot, TwoDotsOfAnApertureHaveTheSameShape) {
    GerberBench bench;
    ASSERT_TRUE(bench.readLayer("G01*\nD11*\nX10000Y20000D02*\nX10000Y20000D01*\nX50000Y-30000D02*\n"
                                "X50000Y-30000D01*\n"));
    const auto traces = bench.traces();
    ASSERT_EQ(traces.size(), 2u);
    expectBox(traces[0].getOutline(), 0.0, 1.5, 2.0, 2.5);
    expectSamePoints(traces[0].getOutline(), traces[1].getOutline(), 4.0, -5.0);
}

TEST(GerberDot, ADotHasTheAreaOfItsAperture) {
    for (const char *code : {"G01", "G02", "G03"}) {
        GerberBench bench;
        ASSERT_TRUE(bench.readLayer(std::string(code) + "X123456Y-98765D02*\nD10*\n" + code +
                                    "X123456Y-98765D01*\n"));
        const auto traces = bench.traces();
        ASSERT_EQ(traces.size(), 1u) << code;
        EXPECT_NEAR(traces[0].getOutline().getArea(), 18.0 * 0.25 * std::sin(std::atan(1.0) / 4.5), 1e-9)
            << code;
        expectBox(traces[0].getOutline(), 11.8456, -10.3765, 12.8456, -9.3765);
    }
}

TEST(GerberDot, EachApertureHasDotsOfItsOwnEvenUnderTheSameCode) {
    GerberBench bench;
    ASSERT_TRUE(bench.readLayer("D10*\nX0Y0D02*\nG01X0Y0D01*\n%ADD10C,3*%\nD10*\nG01X0Y0D01*\n"));
    const auto traces = bench.traces();
    ASSERT_EQ(traces.size(), 2u);
    expectBox(traces[0].getOutline(), -0.5, -0.5, 0.5, 0.5);
    expectBox(traces[1].getOutline(), -1.5, -1.5, 1.5, 1.5);
}

// The parts taken one after the other are the plain way; each arc's outline must cover the same.
TEST(GerberDot, AnArcCoversWhatItsBandAndEndsCover) {
    std::mt19937 random(20260101);
    const auto pick = [&random](double low, double high) {
        return low + (high - low) * static_cast<double>(random()) / 4294967296.0;
    };
    constexpr double tenDegrees = 0.17453292519943295;
    for (int i = 0; i < 200; ++i) {
        const double radius = std::round(pick(0.6, 5.0) * 100.0) / 100.0;
        const int quarters = static_cast<int>(random() % 3) + 1;
        const double endX = quarters == 1 ? 0.0 : quarters == 2 ? -radius : 0.0;
        const double endY = quarters == 1 ? radius : quarters == 2 ? 0.0 : -radius;
        GerberBench bench;
        ASSERT_TRUE(bench.readLayer("D10*\nX" + units(radius) + "Y0D02*\nG03X" + units(endX) + "Y" +
                                    units(endY) + "I" + units(-radius) + "J0D01*\n"));
        const auto traces = bench.traces();
        ASSERT_EQ(traces.size(), 1u);

        EDAOutline band(false), end(false);
        const int steps = 9 * quarters;
        for (int step = 0; step <= steps; ++step)
            band.addPoint(0, (radius + 0.5) * std::cos(step * tenDegrees),
                          (radius + 0.5) * std::sin(step * tenDegrees), 0.0);
        for (int step = steps; step >= 0; --step)
            band.addPoint(0, (radius - 0.5) * std::cos(step * tenDegrees),
                          (radius - 0.5) * std::sin(step * tenDegrees), 0.0);
        EDA::Aperture pieces;
        pieces.addOutline(band);
        for (const auto &[x, y] : {std::pair{radius, 0.0}, {endX, endY}}) {
            EDAOutline disc(false);
            EDA::GerberShapes::setupCircularOutline(&disc, 1.0, x, y);
            pieces.addOutline(disc);
        }
        ASSERT_EQ(pieces.end() - pieces.begin(), 1);
        EXPECT_NEAR(areaWithoutHoles(traces[0].getOutline()), areaWithoutHoles(*pieces.begin()), 1e-9);
        EXPECT_EQ(traces[0].getOutline().numInternalOutlines(), pieces.begin()->numInternalOutlines());
    }
}
