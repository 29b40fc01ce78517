// Polygon clipping: the engine of the library beside Clipper 6, in time and in right areas.
#include "ClipShapes.h"
#include "host/Geometry/PolygonClipper.h"

#ifdef EDA_HAVE_CLIPPER
#include "ClipperPeer.h"
#endif

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <functional>
#include <iterator>
#include <string>
#include <utility>

namespace {

using namespace EDABench;
using Geometry::Clip::Contour;
using Geometry::Clip::Engine;

constexpr unsigned seed = 20240611;
constexpr int shapesPerGrid = 10000;

using Clipping = std::function<Shape(Operation, Fill, Shape const &, Shape const &)>;
struct Peer {
    std::string name;
    Clipping clip;
};

Shape clipByEngine(Operation operation, Fill fill, Shape const &subject, Shape const &clip) {
    Engine engine;
    for (Points const &points : subject)
        engine.addContour(Engine::Subject, points.data(), points.size());
    for (Points const &points : clip)
        engine.addContour(Engine::Clip, points.data(), points.size());
    Shape shape;
    for (Contour &contour : engine.run({operation, fill, fill}))
        shape.push_back(std::move(contour.points));
    return shape;
}

#ifdef EDA_HAVE_CLIPPER
// The first two are timed, all are judged by their areas. The strict and normalised one does what
// `SimplifyPolygons` does before it clips.
ClipperWay const clipperWays[] = {
    {"clipper-64bit", 30, false, false},
    {"clipper-128bit", 50, false, false},
    {"clipper-128bit-strict", 50, true, false},
    {"clipper-64bit-normalised", 30, false, true},
    {"clipper-128bit-normalised", 50, false, true},
    {"clipper-128bit-strict-normalised", 50, true, true},
};
constexpr std::size_t timedWays = 2;
#endif

enum class Purpose { Times, Areas };

std::vector<Peer> peersFor([[maybe_unused]] Purpose purpose) {
    std::vector<Peer> peers{{"own", clipByEngine}};
#ifdef EDA_HAVE_CLIPPER
    std::size_t const ways = purpose == Purpose::Times ? timedWays : std::size(clipperWays);
    for (std::size_t i = 0; i < ways; ++i) {
        ClipperWay const &way = clipperWays[i];
        peers.push_back({way.name, [&way](Operation operation, Fill fill, Shape const &a, Shape const &b) {
                             return clipByClipper(way, operation, fill, a, b);
                         }});
    }
#endif
    return peers;
}

void timeUnion(benchmark::State &state, Clipping const &clip, Shape const &shape) {
    std::size_t contours = 0;
    for (auto _ : state)
        contours = clip(Operation::Union, Fill::NonZero, shape, {}).size();
    state.counters["contours"] = static_cast<double>(contours);
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(shape.size()));
}

// Two polygons by the interface that importers call: apart, touching and overlapping ones.
void timePair(benchmark::State &state, double distance) {
    Shape const circle = overlappingCircles(1, seed);
    Points moved = circle[0];
    for (auto &point : moved)
        point.x += distance;
    Geometry::Polygon2D const a(circle[0]), b(moved);
    std::vector<Geometry::Polygon2D> outers, holes;
    for (auto _ : state) {
        Geometry::PolygonClipper::clipPolygon(a, {}, b, {}, Geometry::PolygonClipper::Union, outers, holes);
    }
    state.counters["contours"] = static_cast<double>(outers.size());
}

struct Verdict {
    double calls = 0.0;
    double wrong = 0.0;
    double largestError = 0.0;
};

void judge(Verdict &verdict, Clipping const &clip, Operation operation, Shape const &a, Shape const &b,
           double expected) {
    double const error = std::abs(areaOf(clip(operation, Fill::EvenOdd, a, b)) - expected);
    verdict.calls += 1.0;
    verdict.wrong += error > 1e-5 ? 1.0 : 0.0; // far above what snapping to any of the grids can do
    verdict.largestError = std::max(verdict.largestError, error);
}

// Counts results whose area is not that of the reference, over all operations.
void judgeAreas(benchmark::State &state, Clipping const &clip, int places, bool steps) {
    Verdict verdict;
    for (auto _ : state) {
        Random random(seed);
        for (int i = 0; i < shapesPerGrid; ++i) {
            Shape const a = degenerateShape(random, places, steps),
                        b = degenerateShape(random, places, steps);
            for (int code = 0; code < 4; ++code) {
                auto const operation = static_cast<Operation>(code);
                judge(verdict, clip, operation, a, b,
                      steps ? areaByCells(operation, a, b, places) : areaBySlabs(operation, a, b));
            }
        }
    }
    state.counters["calls"] = verdict.calls;
    state.counters["wrong"] = verdict.wrong;
    state.counters["wrong_percent"] = 100.0 * verdict.wrong / verdict.calls;
    state.counters["largest_error"] = verdict.largestError;
}

void registerUnions(std::string const &name, int count, Shape const &shape) {
    for (Peer const &peer : peersFor(Purpose::Times)) {
        std::string const label = name + "/" + std::to_string(count) + "/" + peer.name;
        benchmark::RegisterBenchmark(label.c_str(), timeUnion, peer.clip, shape)
            ->Unit(benchmark::kMicrosecond);
    }
}

void registerTimes() {
    for (int count : {2, 8, 64, 1000, 10000})
        registerUnions("circles", count, overlappingCircles(count, seed));
    for (int count : {2, 64, 1000}) {
        registerUnions("separateRectangles", count, separateRectangles(count, seed));
        registerUnions("touchingRectangles", count, touchingRectangles(count));
    }
    for (auto const &[name, distance] :
         {std::pair{"pair/apart", 3.0}, {"pair/touching", 2.0}, {"pair/overlapping", 1.0}}) {
        benchmark::RegisterBenchmark(name, timePair, distance)->Unit(benchmark::kMicrosecond);
    }
}

void registerAreas() {
    for (Peer const &peer : peersFor(Purpose::Areas))
        for (int places : {4, 6, 10})
            for (bool steps : {true, false}) {
                std::string const label = std::string("areas/") + (steps ? "steps/" : "slants/") +
                                          std::to_string(places) + "/" + peer.name;
                benchmark::RegisterBenchmark(label.c_str(), judgeAreas, peer.clip, places, steps)
                    ->Iterations(1)
                    ->Unit(benchmark::kMillisecond);
            }
}

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    registerTimes();
    registerAreas();
    benchmark::RunSpecifiedBenchmarks();
}
