// Clear objects worked into the dark ones below them.
#include "WriterSupport.h"

#include "fabrication/layers/ClearResolver.h"
#include "fabrication/layers/LayerFile.h"
#include "readers/gerber/GerberReader.h"
#include "support/CancelAfter.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <cmath>

using namespace WriterTests;

namespace {

// What comes out on the other side.
class Recorder : public LayerSink {
public:
    void flash(Shape const &shape, Point const &, bool dark) override { note("flash", shape.width, dark); }
    void stroke(Shape const &shape, Point const &, Segment const &, bool dark) override {
        note("stroke", shape.width, dark);
    }
    void region(Path const &contour, bool dark) override { note("region", areaOf(contour), dark); }
    void setNet(std::string_view net, std::string_view) override {
        objects.push_back("net " + std::string(net));
    }

    std::vector<std::string> objects;

private:
    static double areaOf(Path const &contour) {
        Ring const ring = toRing(contour);
        double twice = 0.0;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            Point const &a = ring[i], &b = ring[(i + 1) % ring.size()];
            twice += a.x * b.y - a.y * b.x;
        }
        return std::fabs(0.5 * twice);
    }
    void note(std::string const &kind, double value, bool dark) {
        objects.push_back(kind + " " + std::to_string(std::lround(value * 100)) + (dark ? "" : " clear"));
    }
};

Path rectangle(double left, double bottom, double right, double top) {
    Path path;
    path.start = {left, bottom};
    for (Point const &p : {Point{right, bottom}, Point{right, top}, Point{left, top}, Point{left, bottom}})
        path.segments.push_back({p, {}, Motion::Line});
    return path;
}

std::vector<std::string> resolved(std::function<void(LayerSink &)> const &draw) {
    Recorder recorder;
    Notes notes;
    ClearResolver resolver(recorder, notes);
    draw(resolver);
    resolver.finish();
    EXPECT_TRUE(notes.list().empty());
    return recorder.objects;
}

using testing::ElementsAre;
using testing::UnorderedElementsAre;

TEST(ClearResolver, DarkObjectsThatNothingErasesStayAsTheyAre) {
    EXPECT_THAT(resolved([](LayerSink &sink) {
                    sink.flash(standard("C", {1.0}), {0, 0}, true);
                    sink.region(rectangle(5, 5, 7, 7), true);
                    sink.flash(standard("C", {1.0}), {20, 20}, false);
                }),
                ElementsAre("flash 100", "region 400"));
}

TEST(ClearResolver, AClearObjectErasesOnlyWhatStandsBeforeIt) {
    EXPECT_THAT(resolved([](LayerSink &sink) {
                    sink.region(rectangle(0, 0, 10, 10), true);
                    sink.region(rectangle(2, 2, 4, 4), false);
                    sink.flash(standard("C", {0.5}), {3, 3}, true);
                }),
                ElementsAre("region 9600", "flash 50"));
}

TEST(ClearResolver, WhatIsErasedWhollyIsGone) {
    EXPECT_THAT(resolved([](LayerSink &sink) {
                    sink.flash(standard("C", {1.0}), {0, 0}, true);
                    sink.region(rectangle(-2, -2, 2, 2), false);
                }),
                ElementsAre());
}

TEST(ClearResolver, ABoxThatOnlyTouchesTheOtherErasesNothing) {
    EXPECT_THAT(resolved([](LayerSink &sink) {
                    sink.flash(standard("C", {2.0}), {0, 0}, true);
                    sink.region(rectangle(0.9, 0.9, 2, 2), false);
                }),
                ElementsAre("flash 200"));
}

TEST(ClearResolver, AnIslandKeepsHolesOfItsOwn) {
    // A plane of 20 by 20, split by a moat; a hole in the island of 8 by 8, and one in the plane.
    EXPECT_THAT(resolved([](LayerSink &sink) {
                    sink.region(rectangle(0, 0, 20, 20), true);
                    for (Path const &side : {rectangle(5, 5, 15, 6), rectangle(5, 14, 15, 15),
                                             rectangle(5, 5, 6, 15), rectangle(14, 5, 15, 15)})
                        sink.region(side, false);
                    sink.region(rectangle(9, 9, 10, 10), false);
                    sink.region(rectangle(1, 1, 2, 2), false);
                }),
                UnorderedElementsAre("region 29900", "region 6300"));
}

TEST(ClearResolver, NetsStayWithTheirObjects) {
    EXPECT_THAT(resolved([](LayerSink &sink) {
                    sink.setNet("A", "");
                    sink.region(rectangle(0, 0, 10, 10), true);
                    sink.setNet("", "");
                    sink.region(rectangle(2, 2, 4, 4), false);
                    sink.setNet("B", "");
                    sink.flash(standard("C", {0.5}), {3, 3}, true);
                }),
                ElementsAre("net A", "region 9600", "net ", "net B", "flash 50"));
}

TEST(ClearResolver, ManyHolesOfOnePlaneAreAllThere) {
    const std::vector<std::string> objects = resolved([](LayerSink &sink) {
        sink.region(rectangle(0, 0, 100, 100), true);
        for (int i = 0; i < 1000; ++i) {
            const double x = 1.0 + 3.0 * (i % 32), y = 1.0 + 3.0 * (i / 32);
            sink.region(rectangle(x, y, x + 1, y + 1), false);
        }
    });
    EXPECT_THAT(objects, ElementsAre("region 900000"));
}

TEST(ClearResolver, TheReaderUnitesASplitPlaneWithItsPadsAndKeepsTheHolesOfTheIsland) {
    const char layer[] = "%FSLAX24Y24*%%MOMM*%%LPD*%G36*X0Y0D02*X200000D01*Y200000D01*X0D01*Y0D01*G37*%LPC*%"
                         "%ADD10C,1*%D10*X50000Y50000D02*X150000D01*Y150000D01*X50000D01*Y50000D01*"
                         "X100000Y100000D03*%LPD*%X120000Y120000D03*";
    StringSink sink;
    Notes notes;
    LayerWriter writer(sink, "Copper,L1,Top", nullptr);
    ClearResolver resolver(writer, notes);
    readLayerFile(layer, LayerRules(), resolver, notes);
    resolver.finish();
    writer.finish();
    EXPECT_EQ(countOf(sink.text, "LPC"), 0u);
    const TestSupport::TempFolder folder;
    EDA::GerberReader reader;
    reader.setMergeConductors(true);
    ASSERT_TRUE(reader.readFile(folder.write("top.gbr", sink.text)));
    const auto read = reader.getBoard().beginLayers();
    ASSERT_EQ(read->numTraces(), 2u);
    for (auto trace = read->beginTraces(); trace != read->endTraces(); ++trace)
        EXPECT_EQ(trace->getOutline().numInternalOutlines(), 1);
}

TEST(ClearResolver, WhatIsLeftOfAPadKeepsItsFunction) {
    const std::string text = written([](LayerWriter &writer) {
        Notes notes;
        ClearResolver resolver(writer, notes);
        resolver.flash(functional(standard("R", {4, 4}), "SMDPad"), {10, 10}, true);
        resolver.flash(standard("C", {1}, 2), {12, 12}, false);
        resolver.finish();
    });
    EXPECT_EQ(countOf(text, "%TA.AperFunction,SMDPad*%"), 1u);
    EXPECT_EQ(countOf(text, "X10000000Y10000000D03*"), 1u);
}

TEST(ClearResolver, ACancelKeepsWhatWasHandedOn) {
    Recorder recorder;
    Notes notes;
    ClearResolver resolver(recorder, notes);
    for (int i = 0; i < 1000; ++i)
        resolver.flash(standard("C", {0.5}), {2.0 * i, 0}, true);
    TestSupport::CancelAfter progress(2);
    resolver.finish(&progress);
    EXPECT_GT(recorder.objects.size(), 0u);
    EXPECT_LT(recorder.objects.size(), 1000u);
}

TEST(ClearResolver, AFileWithoutClearPolarityNeedsNone) {
    EXPECT_FALSE(mayHoldClear("%FSLAX24Y24*%%LPD*%"));
    EXPECT_TRUE(mayHoldClear("%LPC*%"));
    EXPECT_TRUE(mayHoldClear("%lp C*%"));
    EXPECT_TRUE(mayHoldClear("%LP\nC*%"));
    EXPECT_FALSE(mayHoldClear("C"));
    EXPECT_FALSE(mayHoldClear(""));
    EXPECT_TRUE(mayHoldClear("%IPNEG*%"));
}

} // namespace
