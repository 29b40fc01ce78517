// Nets from the places where their copper lies.
#include "fabrication/board/NetAssigner.h"

#include <gmock/gmock.h>

#include <cmath>

namespace {

using namespace EDA;
using namespace EDA::Fabrication;

EDATrace box(double x1, double y1, double x2, double y2, std::string const &name = "") {
    EDATrace trace;
    trace.setName(name);
    trace.addPoint(0, x1, y1, 0);
    trace.addPoint(0, x2, y1, 0);
    trace.addPoint(0, x2, y2, 0);
    trace.addPoint(0, x1, y2, 0);
    return trace;
}

void addHole(EDATrace &trace, double x1, double y1, double x2, double y2) {
    EDAOutline hole = box(x1, y1, x2, y2).getOutline();
    hole.setHole(true);
    trace.getOutline().addInternalOutline(hole);
}

struct Bench {
    EDABoardLayer layer;
    NetPoints nets;
    Notes notes;

    void add(EDATrace trace) { layer.addTrace(std::move(trace)); }
    void at(std::uint32_t net, double x, double y) { nets.points.push_back({{x, y}, net}); }
    void assign(double scale = 1.0) { assignNets(layer, nets, scale, notes); }
    std::size_t tracesOf(std::string const &net) {
        EDANet const *const found = layer.findNet(net);
        return found != nullptr ? found->numTraces() : 0;
    }
};

TEST(NetAssigner, TracesGoToTheNetsWhoseCopperLiesOnThem) {
    Bench bench;
    bench.add(box(0, 0, 10, 1, "a"));
    bench.add(box(0, 5, 10, 6, "b"));
    bench.add(box(0, 9, 10, 10, "c"));
    bench.nets.names = {"GND", "VCC"};
    bench.at(1, 5, 5.5);
    bench.at(0, 5, 9.5);
    bench.assign();
    EXPECT_EQ(bench.layer.numNets(), 2u);
    EXPECT_EQ(bench.layer.findNet("VCC")->beginTraces()->getName(), "b");
    EXPECT_EQ(bench.layer.findNet("GND")->beginTraces()->getName(), "c");
    ASSERT_EQ(bench.layer.numTraces(), 1u);
    EXPECT_EQ(bench.layer.beginTraces()->getName(), "a");
    EXPECT_TRUE(bench.notes.list().empty());
}

TEST(NetAssigner, PlacesAreScaled) {
    Bench bench;
    bench.add(box(0, 0, 1, 1));
    bench.nets.names = {"GND"};
    bench.at(0, 20, 20);
    bench.assign(1 / 25.4);
    EXPECT_EQ(bench.tracesOf("GND"), 1u);
}

TEST(NetAssigner, SinglePiecesThatOverlapAllGoToTheNet) {
    Bench bench;
    bench.add(box(0, 0, 10, 1));
    bench.add(box(9, 0, 10, 10));
    bench.nets.names = {"GND"};
    bench.at(0, 9.5, 0.5);
    bench.assign();
    EXPECT_EQ(bench.tracesOf("GND"), 2u);
    EXPECT_EQ(bench.layer.numTraces(), 0u);
}

TEST(NetAssigner, TheNetWithTheMostPlacesHasATraceOfSeveralAndItIsTold) {
    Bench bench;
    bench.add(box(0, 0, 10, 10));
    bench.nets.names = {"A", "B"};
    bench.at(0, 1, 1);
    bench.at(1, 2, 2);
    bench.at(1, 3, 3);
    bench.assign();
    EXPECT_EQ(bench.tracesOf("B"), 1u);
    EXPECT_EQ(bench.tracesOf("A"), 0u);
    ASSERT_EQ(bench.notes.list().size(), 1u);
    EXPECT_EQ(bench.notes.list()[0].kind, NoteKind::Guessed);
    EXPECT_EQ(bench.notes.list()[0].count, 1u);
}

TEST(NetAssigner, APlaceThatIsNamedOftenCountsOnce) {
    Bench bench;
    bench.add(box(0, 0, 10, 10));
    bench.nets.names = {"A", "B"};
    for (int i = 0; i < 5; ++i)
        bench.at(0, 1, 1);
    bench.at(1, 2, 2);
    bench.at(1, 3, 3);
    bench.assign();
    EXPECT_EQ(bench.tracesOf("B"), 1u);
}

TEST(NetAssigner, HolesAreNoCopper) {
    Bench bench;
    EDATrace plane = box(0, 0, 10, 10);
    addHole(plane, 4, 4, 6, 6);
    bench.add(std::move(plane));
    bench.add(box(4.5, 4.5, 5.5, 5.5, "pad"));
    bench.nets.names = {"SIG", "GND"};
    bench.at(0, 5, 5);
    bench.at(1, 1, 1);
    bench.assign();
    EXPECT_EQ(bench.tracesOf("GND"), 1u);
    EXPECT_EQ(bench.layer.findNet("SIG")->beginTraces()->getName(), "pad");
    EXPECT_TRUE(bench.notes.list().empty());
}

TEST(NetAssigner, PlacesOnNoTraceAreTold) {
    Bench bench;
    bench.add(box(0, 0, 10, 10));
    bench.nets.names = {"A"};
    bench.at(0, 50, 50);
    bench.at(0, NAN, 1);
    bench.assign();
    EXPECT_EQ(bench.layer.numNets(), 0u);
    EXPECT_EQ(bench.layer.numTraces(), 1u);
    ASSERT_FALSE(bench.notes.list().empty());
    EXPECT_EQ(bench.notes.list()[0].kind, NoteKind::LeftOut);
}

TEST(NetAssigner, PiecesOfNoNetStayLooseInTheirOrder) {
    Bench bench;
    for (int i = 0; i < 5; ++i)
        bench.add(box(i, 0, i + 0.5, 1, std::to_string(i)));
    bench.nets.names = {"", "N/C", "X"};
    bench.at(0, 0.2, 0.5);
    bench.at(1, 1.2, 0.5);
    bench.at(2, 2.2, 0.5);
    bench.at(7, 3.2, 0.5);
    bench.assign();
    std::string left;
    for (auto trace = bench.layer.beginTraces(); trace != bench.layer.endTraces(); ++trace)
        left += trace->getName();
    EXPECT_EQ(left, "0134");
    EXPECT_EQ(bench.layer.numNets(), 1u);
}

TEST(NetAssigner, AnExistingNetTakesTheTrace) {
    Bench bench;
    EDANet net;
    net.setName("GND");
    net.addTrace(box(50, 50, 51, 51));
    bench.layer.addNet(std::move(net));
    bench.add(box(0, 0, 1, 1));
    bench.nets.names = {"GND"};
    bench.at(0, 0.5, 0.5);
    bench.assign();
    EXPECT_EQ(bench.layer.numNets(), 1u);
    EXPECT_EQ(bench.tracesOf("GND"), 2u);
}

TEST(NetAssigner, RoundCopperIsFoundByItsArcs) {
    Bench bench;
    EDATrace pad;
    pad.addPoint(0, 5, 5, 0);
    pad.addPoint(0, 6, 5, 360);
    bench.add(std::move(pad));
    bench.nets.names = {"IN", "OUT"};
    bench.at(0, 5, 5.9);
    bench.at(1, 5.9, 5.9); // in its box, beside it
    bench.assign();
    EXPECT_EQ(bench.tracesOf("IN"), 1u);
    EXPECT_EQ(bench.tracesOf("OUT"), 0u);
}

TEST(NetAssigner, ARouteIsAsWideAsItsStroke) {
    Bench bench;
    EDATrace route;
    route.setRouteWidth(0.2);
    route.addPoint(0, 0, 0, 0);
    route.addPoint(0, 10, 0, 0);
    bench.add(std::move(route));
    bench.nets.names = {"A", "B"};
    bench.at(0, 10.05, 0.05);
    bench.at(1, 5, 0.2);
    bench.assign();
    EXPECT_EQ(bench.tracesOf("A"), 1u);
    EXPECT_EQ(bench.tracesOf("B"), 0u);
}

TEST(NetAssigner, ATraceWithoutNumbersIsPassedOver) {
    Bench bench;
    EDATrace broken = box(0, 0, 10, 10);
    broken.addPoint(0, NAN, INFINITY, 0);
    bench.add(std::move(broken));
    bench.nets.names = {"A"};
    bench.at(0, 5, 5);
    bench.assign();
    EXPECT_EQ(bench.layer.numTraces(), 1u);
}

TEST(NetAssigner, ManyPlacesInOneLargePlaneTakeTimeInProportion) {
    Bench bench;
    EDATrace plane;
    int const teeth = 20000;
    for (int i = 0; i <= teeth; ++i)
        plane.addPoint(0, i, i % 2, 0);
    plane.addPoint(0, teeth, -500, 0);
    plane.addPoint(0, 0, -500, 0);
    for (int x = 0; x < 100; ++x) {
        for (int y = 0; y < 100; ++y)
            addHole(plane, 200 * x + 1, -4 * y - 4, 200 * x + 2, -4 * y - 3);
    }
    bench.add(std::move(plane));
    bench.nets.names = {"GND", "SIG"};
    for (int i = 0; i < 200000; ++i)
        bench.at(0, 0.1 * i, -450.5);
    for (int x = 0; x < 100; ++x)
        bench.at(1, 200 * x + 1.5, -7.5);
    bench.assign();
    EXPECT_EQ(bench.tracesOf("GND"), 1u);
    ASSERT_EQ(bench.notes.list().size(), 1u);
    EXPECT_EQ(bench.notes.list()[0].count, 100u); // those in the holes
}

TEST(NetAssigner, AHeapOfCopperEndsInBoundedTime) {
    Bench bench;
    for (int i = 0; i < 20000; ++i)
        bench.add(box(0, 0, 1, 1));
    bench.nets.names = {"A"};
    for (int i = 0; i < 20000; ++i)
        bench.at(0, 2 + i * 1e-5, 0.5);
    bench.at(0, 0.5, 0.5);
    bench.assign();
    EXPECT_EQ(bench.tracesOf("A"), 20000u);
}

} // namespace
