// Takes areas away from areas.
#include "host/QvDbWrap/IpcSubtract.h"

#include "host/QvDbWrap/IpcCurves.h"

#include "host/Geometry/Bound2D.h"
#include "host/Geometry/ClippingEngine.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace QvDbWrap {

namespace {

using Geometry::Bound2D;
using Geometry::Clip::Contour;
using Geometry::Clip::Engine;
using Geometry::Clip::Inside;

const Inside cleaning(Inside::Operation::Union, Inside::Fill::EvenOdd, Inside::Fill::EvenOdd);
const Inside punching(Inside::Operation::Difference, Inside::Fill::EvenOdd, Inside::Fill::NonZero);
const Inside cutting(Inside::Operation::Intersection, Inside::Fill::NonZero, Inside::Fill::NonZero);

using Contours = std::vector<Contour>;

// Copper crosses itself seldom: what does so without end is given up long before the engine would.
Geometry::Clip::NodingLimits fewCrossings() {
    Geometry::Clip::NodingLimits limits;
    limits.freeSplits = 1e5;
    limits.freeTests = 1e7;
    limits.testsPerEdge = 100;
    return limits;
}

constexpr std::size_t pointsOfFailure = 1000000; // the cost of finding that there are too many crossings

// A part of what is taken away, its outer contours anticlockwise and its holes clockwise.
struct Cutter {
    Contours contours;
    Bound2D bound;
    std::size_t numPoints = 0;
    std::uint32_t number = 0;
};

Bound2D boundOf(const Area &area) {
    Bound2D bound;
    for (const _mFPOINT &point : area.outer)
        bound.unite(point.x, point.y);
    return bound;
}

bool meet(const Bound2D &a, const Bound2D &b) { return a.overlaps(b, 0); }

void addRing(Engine &engine, Engine::Operand operand, const Ring &ring) {
    engine.addContour(operand, ring.data(), ring.size());
}

void addContours(Engine &engine, Engine::Operand operand, const Contours &contours) {
    for (const Contour &contour : contours)
        engine.addContour(operand, contour.points.data(), contour.points.size());
}

// Adds the holes so that non-zero filling takes away what any of them covers.
void addHoles(Engine &engine, const Area &area) {
    for (const Ring &hole : area.holes) {
        Engine cleaner(fewCrossings());
        addRing(cleaner, Engine::Subject, hole);
        addContours(engine, Engine::Clip, cleaner.run(cleaning));
    }
}

// Rings that cross themselves or each other as contours that don't.
Contours clean(const Area &area) {
    Engine engine(fewCrossings());
    addRing(engine, Engine::Subject, area.outer);
    if (area.holes.empty()) return engine.run(cleaning);
    addHoles(engine, area);
    return engine.run(punching);
}

Cutter cutterOf(Contours contours, std::uint32_t number) {
    Cutter cutter;
    cutter.number = number;
    for (const Contour &contour : contours) {
        cutter.numPoints += contour.points.size();
        for (const auto &point : contour.points)
            cutter.bound.unite(point.x, point.y);
    }
    cutter.contours = std::move(contours);
    return cutter;
}

Ring boxOf(double xLow, double yLow, double xHigh, double yHigh) {
    return {{xLow, yLow}, {xHigh, yLow}, {xHigh, yHigh}, {xLow, yHigh}};
}

Cutter partOf(const Cutter &whole, const Ring &box) {
    Engine engine(fewCrossings());
    addContours(engine, Engine::Subject, whole.contours);
    addRing(engine, Engine::Clip, box);
    return cutterOf(engine.run(cutting), whole.number);
}

constexpr std::size_t fewPoints = 2000;
constexpr int mostHalvings = 20;

struct Halves {
    Cutter low;
    Cutter high;
    std::size_t numPoints() const { return low.numPoints + high.numPoints; }
};

Halves halve(const Cutter &cutter, bool alongX) {
    const Bound2D &bound = cutter.bound;
    const double xLow = bound.getXLow(), yLow = bound.getYLow();
    const double xHigh = bound.getXHigh(), yHigh = bound.getYHigh();
    const double x = alongX ? (xLow + xHigh) / 2 : xHigh, y = alongX ? yHigh : (yLow + yHigh) / 2;
    return {partOf(cutter, boxOf(xLow, yLow, x, y)),
            partOf(cutter, boxOf(alongX ? x : xLow, alongX ? yLow : y, xHigh, yHigh))};
}

// A cutter of very many points is cut in halves until each part has few: else each of many small areas within
// its bound would have to be clipped by all of it. One that only gets more points by that, as a hatch does,
// stays.
void addParts(Cutter cutter, int numHalvings, IpcCutBudget &budget, std::vector<Cutter> &parts) {
    if (cutter.contours.empty()) return;
    if (cutter.numPoints > fewPoints && numHalvings < mostHalvings &&
        budget.halved < IpcCutBudget::maxHalved) {
        budget.halved += cutter.numPoints;
        const bool isWide = cutter.bound.getXSize() > cutter.bound.getYSize();
        for (const bool alongX : {isWide, !isWide}) {
            Halves halves;
            try {
                halves = halve(cutter, alongX);
            } catch (const std::length_error &) { // too many crossings: it stays whole
                budget.points += pointsOfFailure;
                break;
            }
            if (halves.numPoints() > cutter.numPoints + cutter.numPoints / 10) continue;
            cutter.contours.clear();
            addParts(std::move(halves.low), numHalvings + 1, budget, parts);
            addParts(std::move(halves.high), numHalvings + 1, budget, parts);
            return;
        }
    }
    parts.push_back(std::move(cutter));
}

// Finds the cutters of a higher number than given whose bounds meet a bound.
class CutterTree {
public:
    explicit CutterTree(std::vector<Cutter> cutters) : cutters_(std::move(cutters)) {
        for (const Cutter &cutter : cutters_)
            order_.push_back(&cutter);
        if (!order_.empty()) build(0, order_.size());
    }

    template <typename Visit> void forMeeting(const Bound2D &bound, std::uint32_t number, Visit visit) const {
        std::vector<std::size_t> open;
        if (!nodes_.empty()) open.push_back(0);
        while (!open.empty()) {
            const Node &node = nodes_[open.back()];
            open.pop_back();
            if (node.highest <= number || !meet(node.bound, bound)) continue;
            if (node.second != 0) {
                open.push_back(node.second);
                open.push_back(node.first);
                continue;
            }
            for (std::size_t i = node.begin; i < node.end; ++i)
                if (meet(order_[i]->bound, bound)) visit(*order_[i]);
        }
    }

private:
    static constexpr std::size_t leafSize = 4;

    struct Node {
        Bound2D bound;
        std::size_t begin = 0;
        std::size_t end = 0;
        std::size_t first = 0; // children; none is the root
        std::size_t second = 0;
        std::uint32_t highest = 0; // number
    };

    std::size_t build(std::size_t begin, std::size_t end);

    std::vector<Cutter> cutters_;
    std::vector<const Cutter *> order_;
    std::vector<Node> nodes_;
};

std::size_t CutterTree::build(std::size_t begin, std::size_t end) {
    const std::size_t place = nodes_.size();
    nodes_.emplace_back();
    Bound2D bound;
    std::uint32_t highest = 0;
    for (std::size_t i = begin; i < end; ++i) {
        bound.unite(order_[i]->bound);
        highest = std::max(highest, order_[i]->number);
    }
    std::size_t first = 0, second = 0;
    if (end - begin > leafSize) {
        const bool isWide = bound.getXSize() > bound.getYSize();
        const auto middle = [&](const Cutter *cutter) {
            const Bound2D &box = cutter->bound;
            return isWide ? box.getXLow() + box.getXHigh() : box.getYLow() + box.getYHigh();
        };
        const std::size_t half = begin + (end - begin) / 2;
        const auto at = [&](std::size_t i) { return order_.begin() + static_cast<std::ptrdiff_t>(i); };
        std::nth_element(at(begin), at(half), at(end),
                         [&](const Cutter *a, const Cutter *b) { return middle(a) < middle(b); });
        first = build(begin, half);
        second = build(half, end);
    }
    nodes_[place] = {bound, begin, end, first, second, highest};
    return place;
}

double areaOf(const Area &area) {
    double sum = std::fabs(signedArea(area.outer));
    for (const Ring &hole : area.holes)
        sum -= std::fabs(signedArea(hole));
    return sum;
}

// Each outer contour comes right before its holes.
Areas areasOf(const Contours &contours) {
    Areas areas;
    for (const Contour &contour : contours) {
        Ring ring;
        ring.reserve(contour.points.size());
        for (const auto &point : contour.points)
            ring.push_back({point.x, point.y});
        if (!contour.hole) areas.emplace_back();
        (contour.hole ? areas.back().holes.emplace_back() : areas.back().outer) = std::move(ring);
    }
    return areas;
}

// Whether the rest is the whole but for rounding: what was near took nothing away.
bool isWhole(const Areas &rest, const Area &area) {
    constexpr double rounding = 1e-13;
    return rest.size() == 1 && rest.front().holes.size() == area.holes.size() &&
           std::fabs(areaOf(rest.front()) - areaOf(area)) <= rounding * areaOf(area);
}

Areas restOf(const Area &area, const std::vector<const Cutter *> &cutters) {
    Engine engine(fewCrossings());
    addRing(engine, Engine::Subject, area.outer);
    addHoles(engine, area);
    for (const Cutter *cutter : cutters)
        addContours(engine, Engine::Clip, cutter->contours);
    return areasOf(engine.run(punching));
}

} // namespace

class IpcCutters::Parts {
public:
    explicit Parts(IpcCutBudget *shared) : budget(shared ? *shared : own) {}

    std::vector<const Cutter *> near(const Area &area, std::uint32_t number);

    std::vector<Cutter> added;
    std::unique_ptr<CutterTree> tree;
    IpcCutBudget own;
    IpcCutBudget &budget;
};

std::vector<const Cutter *> IpcCutters::Parts::near(const Area &area, std::uint32_t number) {
    if (!tree) tree = std::make_unique<CutterTree>(std::move(added));
    std::vector<const Cutter *> cutters;
    std::size_t count = numPoints(area);
    tree->forMeeting(boundOf(area), number, [&](const Cutter &cutter) {
        ++budget.tests;
        if (cutter.number <= number) return;
        cutters.push_back(&cutter);
        count += cutter.numPoints;
    });
    if (cutters.empty()) return cutters;
    ++budget.cuts;
    budget.points += count;
    return cutters;
}

IpcCutters::IpcCutters(IpcCutBudget *budget) : parts_(std::make_unique<Parts>(budget)) {}

IpcCutters::~IpcCutters() = default;

void IpcCutters::add(const Area &area, std::uint32_t number) {
    IpcCutBudget &budget = parts_->budget;
    if (budget.isSpent()) return;
    try {
        Cutter cutter = cutterOf(clean(area), number);
        budget.points += cutter.numPoints - std::min(cutter.numPoints, numPoints(area)); // of its crossings
        addParts(std::move(cutter), 0, budget, parts_->added);
    } catch (const std::logic_error &) { // no number, or more crossings than memory and time allow
        budget.points += pointsOfFailure;
        ++budget.failures;
    }
}

Areas IpcCutters::cut(Area area, std::uint32_t number) {
    IpcCutBudget &budget = parts_->budget;
    Areas rest;
    if (!budget.isSpent()) {
        const std::vector<const Cutter *> cutters = parts_->near(area, number);
        if (!cutters.empty() && !budget.isSpent()) {
            try {
                rest = restOf(area, cutters);
                budget.points += numPoints(rest) - std::min(numPoints(rest), numPoints(area));
                if (!isWhole(rest, area)) return rest;
            } catch (const std::logic_error &) { // as above
                budget.points += pointsOfFailure;
                ++budget.failures;
            }
        }
    }
    rest.clear();
    rest.push_back(std::move(area));
    return rest;
}

Areas subtract(const Areas &areas, const Areas &others) {
    IpcCutters cutters;
    for (const Area &other : others)
        cutters.add(other);
    Areas result;
    result.reserve(areas.size());
    for (const Area &area : areas) {
        Areas rest = cutters.cut(area);
        std::move(rest.begin(), rest.end(), std::back_inserter(result));
    }
    return result;
}

} // namespace QvDbWrap
