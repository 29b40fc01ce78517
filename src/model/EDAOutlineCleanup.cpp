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

constexpr std::size_t fewestPointsWithCutIn = 4;

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

bool EDAOutline::pointOnLine(EDAPoint const &point, EDAPoint const &lineStart, EDAPoint const &lineEnd,
                             double scale) {
    return pointOnLine({point.x, point.y}, {lineStart.x, lineStart.y}, {lineEnd.x, lineEnd.y}, scale);
}

void EDAOutline::cleanupPoints(PointList &points, bool hadArcs) {
    auto const same = [](auto const &a, auto const &b) {
        return std::abs(a.first - b.first) < ptTol && std::abs(a.second - b.second) < ptTol;
    };
    if (points.size() > 1 && same(points.front(), points.back())) points.pop_back();
    if (!hadArcs) return;
    Geometry::Bound2D bound;
    getBound(points, bound);
    if (!bound.isValid(ptTol)) return;
    double const scale = bound.getDiagonal().length();
    eraseOnWalk(points, [&](auto const &previous, auto const &current, auto const &next) {
        return same(current, next) || pointOnLine(current, previous, next, scale);
    });
}

void EDAOutline::removeDegeneratePoints() {
    if (!points_.empty() && points_.front().isEqual(points_.back(), ptTol)) points_.pop_back();
    double const scale = getBound().getDiagonal().length();
    eraseOnWalk(points_, [scale](EDAPoint const &previous, EDAPoint const &current, EDAPoint const &next) {
        if (current.isArc() || next.isArc()) return false;
        return next.isEqual(current, ptTol) || pointOnLine(previous, current, next, scale) ||
               pointOnLine(next, previous, current, scale) || pointOnLine(current, previous, next, scale);
    });
    for (EDAOutline &internal : internalOutlines_)
        internal.removeDegeneratePoints();
}

bool EDAOutline::hasCutIns() const {
    if (points_.size() < fewestPointsWithCutIn) return false;
    std::vector<std::size_t> const next = nextCoincidentPoints(points_);
    return std::any_of(next.begin(), next.end(), [](std::size_t index) { return index != noPoint; });
}

bool EDAOutline::removeCutIns(std::vector<EDAOutline> &cutIns) {
    if (points_.size() < fewestPointsWithCutIn) return false;
    std::vector<std::size_t> const next = nextCoincidentPoints(points_);
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
        if (kept != i) points_[kept] = points_[i];
    }
    points_.erase(points_.begin() + static_cast<std::ptrdiff_t>(kept), points_.end());
    // This outline may itself stand in `cutIns`, so it is not touched from here on.
    cutIns.insert(cutIns.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
    return !cutIns.empty();
}

void EDAOutline::moveBy(double dx, double dy) {
    clearCache();
    for (EDAPoint &point : points_) {
        point.x += dx;
        point.y += dy;
        point.centreX += dx;
        point.centreY += dy;
    }
    for (EDAOutline &internal : internalOutlines_)
        internal.moveBy(dx, dy);
}

void EDAOutline::rotate(double angle, double x, double y) {
    clearCache();
    using Geometry::Transform;
    Transform const shift = Transform::createTranslation(x, y, 0.0);
    Transform const back = shift.inverse();
    Transform const turn = Transform::createRotation(angle, Transform::ZAxis);
    for (EDAPoint &point : points_) {
        double z = 0.0;
        back.transform(point.x, point.y, z);
        turn.transform(point.x, point.y, z);
        shift.transform(point.x, point.y, z);
    }
}

void EDAOutline::rotateInternalOutline(int index, double angle, double x, double y) {
    if (index < 0 || index >= numInternalOutlines()) return;
    internalOutlines_[static_cast<std::size_t>(index)].rotate(angle, x, y);
}

} // namespace EDA
