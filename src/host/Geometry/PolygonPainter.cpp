// Unions in batches, merged along their seams.
#include "host/Geometry/PolygonPainter.h"

#include "host/Geometry/Bound2D.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <utility>

namespace Geometry {

namespace {

using Clip::Contour;
using Clip::Engine;
using Clip::Inside;
using Contours = std::vector<Contour>;
using Points = std::vector<Vec2T<double>>;

// Vertices that are united in one go. More would cost memory, fewer would clip the same edges more often.
constexpr std::size_t batchVertices = 1 << 16;

// A turn the wrong way by less than this, as a share of both edges, is the rounding of a straight run.
constexpr double straightness = 1e-12;

double cross(Vec2T<double> const &a, Vec2T<double> const &b) { return a.x * b.y - a.y * b.x; }

int signOf(double value) { return (value > 0.0) - (value < 0.0); }

// Whether the contour is convex and goes round once: all turns go one way, and it runs to the right and back
// to the left a single time. `isLeft` tells which way.
bool isConvex(Points const &points, bool &isLeft) {
    std::size_t const count = points.size();
    if (count < 3) return false;
    int turn = 0, direction = 0, firstDirection = 0, reversals = 0;
    Vec2T<double> before(points[0].x - points[count - 1].x, points[0].y - points[count - 1].y);
    for (std::size_t i = 0; i < count; ++i) {
        Vec2T<double> const &from = points[i], &to = points[i + 1 < count ? i + 1 : 0];
        Vec2T<double> const edge(to.x - from.x, to.y - from.y);
        double const area = cross(before, edge);
        double const size = (std::abs(before.x) + std::abs(before.y)) * (std::abs(edge.x) + std::abs(edge.y));
        if (std::abs(area) > straightness * size) {
            if (turn != 0 && turn != signOf(area)) return false;
            turn = signOf(area);
        } else if (before.x * edge.x + before.y * edge.y < 0.0) {
            return false; // a spike
        }
        int const sign = signOf(edge.x);
        if (sign != 0) {
            if (direction != 0 && sign != direction) ++reversals;
            if (firstDirection == 0) firstDirection = sign;
            direction = sign;
        }
        if (edge.x != 0.0 || edge.y != 0.0) before = edge;
    }
    if (direction != firstDirection) ++reversals;
    isLeft = turn > 0;
    return turn != 0 && reversals == 2;
}

// The engine refuses such numbers, too, but a convex contour meets it only later.
void checkFinite(Contours const &polygon) {
    for (Contour const &contour : polygon) {
        for (Vec2T<double> const &point : contour.points) {
            if (std::isfinite(point.x) && std::isfinite(point.y)) continue;
            throw std::invalid_argument("coordinate is not finite");
        }
    }
}

// The polygon as contours that wind once around what is inside. The everyday shape, one convex contour, is
// taken as it is.
Contours cleaned(Contours const &polygon) {
    checkFinite(polygon);
    bool isLeft = true;
    if (polygon.size() == 1 && isConvex(polygon.front().points, isLeft)) {
        Contours convex(1);
        convex.front().points = polygon.front().points;
        if (!isLeft) std::reverse(convex.front().points.begin(), convex.front().points.end());
        return convex;
    }
    Engine engine;
    for (Contour const &contour : polygon) {
        engine.addContour(Engine::Subject, contour.points.data(), contour.points.size());
    }
    return engine.run({Inside::Operation::Union, Inside::Fill::EvenOdd, Inside::Fill::EvenOdd});
}

void addAll(Engine &engine, Engine::Operand operand, Contours const &contours) {
    for (Contour const &contour : contours) {
        engine.addContour(operand, contour.points.data(), contour.points.size());
    }
}

// Nothing where they cross too often for memory and time.
std::optional<Contours> unitedAtOnce(Contours const &contours) {
    Engine engine;
    addAll(engine, Engine::Subject, contours);
    try {
        return engine.run({Inside::Operation::Union, Inside::Fill::NonZero, Inside::Fill::NonZero});
    } catch (std::length_error const &) {
        return std::nullopt;
    }
}

void append(Contours &to, Contours &&from) {
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

// An outer contour and the holes that follow it.
struct Region {
    std::size_t begin;
    std::size_t end;
    Bound2D bound;
    bool meets = false;
};

Bound2D boundOf(Points const &points) {
    Bound2D bound;
    for (Vec2T<double> const &point : points)
        bound.unite(point.x, point.y);
    return bound;
}

std::vector<Region> regionsOf(Contours const &contours) {
    std::vector<Region> regions;
    for (std::size_t i = 0; i < contours.size(); ++i) {
        if (!contours[i].hole) regions.push_back({i, i, boundOf(contours[i].points), false});
        regions.back().end = i + 1;
    }
    return regions;
}

Contours joined(Contours first, Contours second);

// Few enough that all may cross all.
constexpr std::size_t crowdRegions = 64;

// A few at a time, and then along their seams: what a crowd loses inside itself no longer crosses. What is
// still too much stays as it is: it overlaps, and covers the same.
Contours unitedInHalves(Contours contours) {
    std::vector<Region> const regions = regionsOf(contours);
    if (regions.size() <= crowdRegions) {
        std::optional<Contours> result = unitedAtOnce(contours);
        return result ? std::move(*result) : std::move(contours);
    }
    auto const middle = contours.begin() + static_cast<std::ptrdiff_t>(regions[regions.size() / 2].begin);
    Contours second(std::make_move_iterator(middle), std::make_move_iterator(contours.end()));
    contours.erase(middle, contours.end());
    return joined(unitedInHalves(std::move(contours)), unitedInHalves(std::move(second)));
}

Contours united(Contours contours) {
    std::optional<Contours> result = unitedAtOnce(contours);
    return result ? std::move(*result) : unitedInHalves(std::move(contours));
}

double lowOf(Region const &region, bool alongX) {
    return alongX ? region.bound.getXLow() : region.bound.getYLow();
}

double highOf(Region const &region, bool alongX) {
    return alongX ? region.bound.getXHigh() : region.bound.getYHigh();
}

double totalSize(std::vector<Region> const &regions, bool alongX) {
    double total = 0.0;
    for (Region const &region : regions)
        total += highOf(region, alongX) - lowOf(region, alongX);
    return total;
}

std::vector<Region *> sorted(std::vector<Region> &regions, bool alongX) {
    std::vector<Region *> order;
    for (Region &region : regions)
        order.push_back(&region);
    std::sort(order.begin(), order.end(),
              [alongX](Region const *a, Region const *b) { return lowOf(*a, alongX) < lowOf(*b, alongX); });
    return order;
}

// Marks the pairs whose boxes meet, of which the first begins first. A region is held against those alone
// that begin within it.
void markMeeting(std::vector<Region *> const &first, std::vector<Region *> const &second, bool alongX) {
    std::size_t begin = 0;
    for (Region *region : first) {
        double const low = lowOf(*region, alongX), high = highOf(*region, alongX);
        while (begin < second.size() && lowOf(*second[begin], alongX) < low)
            ++begin;
        for (std::size_t j = begin; j < second.size() && lowOf(*second[j], alongX) <= high; ++j) {
            if (!region->bound.overlaps(second[j]->bound)) continue;
            region->meets = second[j]->meets = true;
        }
    }
}

// Goes along the axis in which the regions are the shorter: long strips side by side are no worse than dots.
void markMeeting(std::vector<Region> &first, std::vector<Region> &second) {
    bool const alongX = totalSize(first, true) + totalSize(second, true) <=
                        totalSize(first, false) + totalSize(second, false);
    std::vector<Region *> const firstOrder = sorted(first, alongX), secondOrder = sorted(second, alongX);
    markMeeting(firstOrder, secondOrder, alongX);
    markMeeting(secondOrder, firstOrder, alongX);
}

Contours takeRegions(Contours &contours, std::vector<Region> const &regions, bool meeting) {
    Contours taken;
    for (Region const &region : regions) {
        if (region.meets != meeting) continue;
        for (std::size_t i = region.begin; i < region.end; ++i)
            taken.push_back(std::move(contours[i]));
    }
    return taken;
}

bool isLower(Vec2T<double> const &a, Vec2T<double> const &b) {
    return a.y < b.y || (a.y == b.y && a.x < b.x);
}

// Outers in the order of their lowest vertices, which they begin with.
Contours inOrder(Contours contours) {
    std::vector<Region> regions = regionsOf(contours);
    std::stable_sort(regions.begin(), regions.end(), [&contours](Region const &a, Region const &b) {
        return isLower(contours[a.begin].points.front(), contours[b.begin].points.front());
    });
    return takeRegions(contours, regions, false);
}

// Where even the seam is too much the sets stay as they are: they overlap, and cover the same.
Contours unitedAtSeam(Contours contours) {
    std::optional<Contours> result = unitedAtOnce(contours);
    return result ? std::move(*result) : std::move(contours);
}

// The union of two clean sets. Only regions whose box meets one of the other set are clipped again.
Contours joined(Contours first, Contours second) {
    std::vector<Region> firstRegions = regionsOf(first), secondRegions = regionsOf(second);
    markMeeting(firstRegions, secondRegions);
    Contours meeting = takeRegions(first, firstRegions, true);
    append(meeting, takeRegions(second, secondRegions, true));
    Contours result = unitedAtSeam(std::move(meeting));
    append(result, takeRegions(first, firstRegions, false));
    append(result, takeRegions(second, secondRegions, false));
    return result;
}

} // namespace

void PolygonPainter::Heap::add(Contours polygon) {
    for (Contour const &contour : polygon)
        vertices += contour.points.size();
    append(contours, std::move(polygon));
}

void PolygonPainter::paint(Contours const &polygon) {
    Contours clean = cleaned(polygon);
    if (!erased_.contours.empty()) settleErased();
    painted_.add(std::move(clean));
    if (painted_.vertices >= batchVertices) settlePainted();
}

void PolygonPainter::erase(Contours const &polygon) {
    Contours clean = cleaned(polygon);
    if (!painted_.contours.empty() || !layers_.empty()) erased_.add(std::move(clean));
}

// A batch becomes a layer, and two layers of one level become one of the next, as when counting in binary: so
// each contour is taken up again but log n times.
void PolygonPainter::settlePainted() {
    if (painted_.contours.empty()) return;
    layers_.push_back({0, united(std::move(painted_.contours))});
    painted_ = Heap();
    mergeLayers(false);
}

void PolygonPainter::mergeLayers(bool all) {
    while (layers_.size() > 1) {
        Layer &below = layers_[layers_.size() - 2], &top = layers_.back();
        if (!all && below.level != top.level) return;
        below.contours = joined(std::move(below.contours), std::move(top.contours));
        ++below.level;
        layers_.pop_back();
    }
}

void PolygonPainter::settleErased() {
    settlePainted();
    mergeLayers(true);
    Contours const erased = std::exchange(erased_, Heap()).contours;
    if (layers_.empty() || erased.empty()) return;
    Engine engine;
    addAll(engine, Engine::Subject, layers_.front().contours);
    addAll(engine, Engine::Clip, erased);
    layers_.front().contours =
        engine.run({Inside::Operation::Difference, Inside::Fill::NonZero, Inside::Fill::NonZero});
}

std::vector<PolygonPainter::Contour> PolygonPainter::finish() {
    settleErased();
    Contours result;
    if (!layers_.empty()) result = inOrder(std::move(layers_.front().contours));
    layers_.clear();
    return result;
}

} // namespace Geometry
