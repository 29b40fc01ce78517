// Outline clean-up: collinear points, spikes, cut-ins; moves and rotation.
#include "model/CoincidentPoints.h"
#include "model/EDAOutline.h"
#include "model/ErasingWalk.h"

#include "host/Geometry/Transform.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace EDA {

namespace {

using Place = OutlinePoints::Place;

constexpr std::size_t fewestPointsWithCutIn = 4;

bool samePlace(Place const &a, Place const &b) {
    return std::abs(a.first - b.first) < EDAOutline::ptTol &&
           std::abs(a.second - b.second) < EDAOutline::ptTol;
}

// Whether none of three points can be on the line through the others: the corner has more than twice the area
// that `pointOnLine` allows for the longest of its sides, which leaves rounding aside. Most corners are such.
bool isClearCorner(Place const &a, Place const &b, Place const &c, double allowance) {
    double const ax = b.first - a.first, ay = b.second - a.second, bx = c.first - b.first,
                 by = c.second - b.second, cx = c.first - a.first, cy = c.second - a.second;
    double const cross = ax * by - ay * bx;
    double const longest = std::max({ax * ax + ay * ay, bx * bx + by * by, cx * cx + cy * cy});
    return cross * cross > 4.0 * allowance * longest && cross * cross > 1e-24 * longest * longest;
}

bool outside(double value, double end1, double end2, double margin) {
    return value < std::min(end1, end2) - margin || value > std::max(end1, end2) + margin;
}

} // namespace

bool EDAOutline::pointOnLine(std::pair<double, double> const &point,
                             std::pair<double, double> const &lineStart,
                             std::pair<double, double> const &lineEnd, double scale) {
    double const margin = scale * ptTol;
    if (outside(point.first, lineStart.first, lineEnd.first, margin)) return false;
    if (outside(point.second, lineStart.second, lineEnd.second, margin)) return false;
    double const dx = lineEnd.first - lineStart.first;
    double const dy = lineEnd.second - lineStart.second;
    double const cross = (point.second - lineStart.second) * dx - (point.first - lineStart.first) * dy;
    // The scale enters unsquared, so the allowed distance grows with its square root only: this is
    // intended. For its size, a small outline loses more points than a large one.
    return (dx * dx + dy * dy) * lineTol * lineTol * scale >= cross * cross;
}

void EDAOutline::cleanupPoints(PointList &points, bool hadArcs) {
    if (points.size() > 1 && samePlace(points.front(), points.back())) points.pop_back();
    if (!hadArcs) return;
    Geometry::Bound2D bound;
    getBound(points, bound);
    if (!bound.isValid(ptTol)) return;
    double const scale = bound.getDiagonal().length();
    eraseOnWalk(points, [&](auto const &previous, auto const &current, auto const &next) {
        return samePlace(current, next) || pointOnLine(current, previous, next, scale);
    });
}

bool EDAOutline::isDegenerate(Place const &previous, Place const &current, Place const &next, double scale) {
    if (isClearCorner(previous, current, next, lineTol * lineTol * scale)) return false;
    return pointOnLine(previous, current, next, scale) || pointOnLine(next, previous, current, scale) ||
           pointOnLine(current, previous, next, scale);
}

void EDAOutline::removeDegeneratePlaces(double scale) {
    PointList places = points_.takePlaces();
    eraseOnWalk(places, [scale](Place const &previous, Place const &current, Place const &next) {
        return samePlace(next, current) || isDegenerate(previous, current, next, scale);
    });
    points_.setPlaces(std::move(places));
}

void EDAOutline::removeDegenerateArcs(double scale) {
    std::vector<EDAPoint> points(points_.begin(), points_.end());
    auto const placeOf = [](EDAPoint const &point) { return Place(point.x, point.y); };
    eraseOnWalk(points, [&](EDAPoint const &previous, EDAPoint const &current, EDAPoint const &next) {
        if (current.isArc() || next.isArc()) return false;
        return next.isEqual(current, ptTol) ||
               isDegenerate(placeOf(previous), placeOf(current), placeOf(next), scale);
    });
    points_.assign(points);
}

void EDAOutline::removeDegeneratePoints() {
    if (!points_.empty() && points_.front().isEqual(points_.back(), ptTol)) points_.pop_back();
    double const scale = getBound().getDiagonal().length();
    points_.areStraight() ? removeDegeneratePlaces(scale) : removeDegenerateArcs(scale);
    for (EDAOutline &internal : internalOutlines_)
        internal.removeDegeneratePoints();
}

bool EDAOutline::hasCutIns() const {
    if (points_.size() < fewestPointsWithCutIn) return false;
    if (surelyHasNoCoincidentPoints(points_.places())) return false;
    std::vector<std::size_t> const next = nextCoincidentPoints(points_.places());
    return std::any_of(next.begin(), next.end(), [](std::size_t index) { return index != noPoint; });
}

bool EDAOutline::removeCutIns(std::vector<EDAOutline> &cutIns) {
    if (points_.size() < fewestPointsWithCutIn) return false;
    std::vector<std::size_t> const next = nextCoincidentPoints(points_.places());
    std::vector<EDAOutline> found;
    std::size_t kept = 1;
    for (std::size_t i = 1; i < points_.size(); ++i, ++kept) {
        // A stretch ends at its second visit, which may at once begin the next stretch.
        for (; next[i] != noPoint; i = next[i]) {
            EDAOutline cutIn(true);
            for (std::size_t inner = i + 1; inner < next[i]; ++inner)
                cutIn.addPoint(0, points_[inner]);
            cutIn.removeDegeneratePoints();
            found.push_back(cutIn);
        }
        if (kept != i) points_.copy(i, kept);
    }
    points_.truncate(kept);
    // This outline may itself stand in `cutIns`, so it is not touched from here on.
    cutIns.insert(cutIns.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
    return !cutIns.empty();
}

void EDAOutline::moveBy(double dx, double dy) {
    clearCache();
    points_.moveBy(dx, dy);
    for (EDAOutline &internal : internalOutlines_)
        internal.moveBy(dx, dy);
}

void EDAOutline::rotate(double angle, double x, double y) {
    clearCache();
    using Geometry::Transform;
    Transform const shift = Transform::createTranslation(x, y, 0.0);
    Transform const back = shift.inverse();
    Transform const turn = Transform::createRotation(angle, Transform::ZAxis);
    for (std::size_t i = 0; i < points_.size(); ++i) {
        auto [px, py] = points_.places()[i];
        double z = 0.0;
        back.transform(px, py, z);
        turn.transform(px, py, z);
        shift.transform(px, py, z);
        points_.setPlace(i, px, py);
    }
}

void EDAOutline::rotateInternalOutline(int index, double angle, double x, double y) {
    if (index < 0 || index >= numInternalOutlines()) return;
    internalOutlines_[static_cast<std::size_t>(index)].rotate(angle, x, y);
}

} // namespace EDA
