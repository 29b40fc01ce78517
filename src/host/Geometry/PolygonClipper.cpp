// Clipping of polygons with lists of holes, by way of the engine.
#include "host/Geometry/PolygonClipper.h"

#include "host/Geometry/ClippingEngine.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Geometry {

namespace {

using Clip::Contour;
using Clip::Engine;
using Clip::Inside;
using Clip::NodingLimits;

// Of one outline that is cleaned. One that was drawn crosses itself a few times for each edge; only what was
// made to do harm does so a million times, and a file may have many of those.
constexpr NodingLimits cleaningLimits{5e5, 16.0, 1.25e8, 1e3};

void addPolygon(Engine &engine, Engine::Operand operand, Polygon2D const &polygon) {
    engine.addContour(operand, polygon.points().data(), polygon.numPoints());
}

void addContours(Engine &engine, Engine::Operand operand, std::vector<Contour> const &contours) {
    for (Contour const &contour : contours)
        engine.addContour(operand, contour.points.data(), contour.points.size());
}

// Adds the holes so that non-zero filling covers what any of them covers: each made clean
// on its own, since even-odd filling of all at once would leave out where two overlap.
void addHoles(Engine &engine, std::vector<Polygon2D> const &holes) {
    Engine cleaner;
    for (Polygon2D const &hole : holes) {
        addPolygon(cleaner, Engine::Subject, hole);
        addContours(engine, Engine::Clip,
                    cleaner.run({Inside::Operation::Union, Inside::Fill::EvenOdd, Inside::Fill::EvenOdd}));
    }
}

// Adds the polygon less its holes as one operand for even-odd filling.
void addSide(Engine &engine, Engine::Operand operand, Polygon2D const &polygon,
             std::vector<Polygon2D> const &holes) {
    if (holes.empty()) {
        addPolygon(engine, operand, polygon);
        return;
    }
    Engine puncher;
    addPolygon(puncher, Engine::Subject, polygon);
    addHoles(puncher, holes);
    addContours(engine, operand,
                puncher.run({Inside::Operation::Difference, Inside::Fill::EvenOdd, Inside::Fill::NonZero}));
}

bool isSamePolygon(Polygon2D const &a, Polygon2D const &b) {
    return std::equal(a.beginPoints(), a.endPoints(), b.beginPoints(), b.endPoints(),
                      [](auto const &p, auto const &q) { return p.x == q.x && p.y == q.y; });
}

bool isSameSide(Polygon2D const &a, std::vector<Polygon2D> const &aHoles, Polygon2D const &b,
                std::vector<Polygon2D> const &bHoles) {
    return isSamePolygon(a, b) &&
           std::equal(aHoles.begin(), aHoles.end(), bHoles.begin(), bHoles.end(), isSamePolygon);
}

bool operationOf(int code, Inside::Operation &operation) {
    switch (code) {
    case PolygonClipper::Difference:
        operation = Inside::Operation::Difference;
        return true;
    case PolygonClipper::Intersection:
        operation = Inside::Operation::Intersection;
        return true;
    case PolygonClipper::Union:
        operation = Inside::Operation::Union;
        return true;
    default:
        return false;
    }
}

void sortOut(std::vector<Contour> contours, std::vector<Polygon2D> &polygons, std::vector<Polygon2D> &holes) {
    for (Contour &contour : contours) {
        std::vector<Polygon2D> &list = contour.hole ? holes : polygons;
        list.emplace_back(std::move(contour.points));
        list.back().setBoundingBox();
    }
}

} // namespace

bool PolygonClipper::clipPolygon(Polygon2D const &subject, std::vector<Polygon2D> const &subjectHoles,
                                 Polygon2D const &clip, std::vector<Polygon2D> const &clipHoles,
                                 int operation, std::vector<Polygon2D> &polygons,
                                 std::vector<Polygon2D> &holes) {
    std::vector<Contour> result;
    Inside::Operation inside = Inside::Operation::Union;
    bool done = operationOf(operation, inside);
    try {
        // With itself, the way to ask for cleaning: one side tells all.
        bool const alone = operation != Difference && isSameSide(subject, subjectHoles, clip, clipHoles);
        Engine engine(alone ? cleaningLimits : NodingLimits());
        addSide(engine, Engine::Subject, subject, subjectHoles);
        if (alone)
            inside = Inside::Operation::Union;
        else
            addSide(engine, Engine::Clip, clip, clipHoles);
        if (done) result = engine.run({inside, Inside::Fill::EvenOdd, Inside::Fill::EvenOdd});
    } catch (std::logic_error const &) { // a coordinate or the input as a whole was refused
        done = false;
    }
    polygons.clear(); // only now: the input may be one of these lists
    holes.clear();
    sortOut(std::move(result), polygons, holes);
    return done;
}

} // namespace Geometry
