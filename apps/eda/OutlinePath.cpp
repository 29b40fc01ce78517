// Outlines as paths that keep their arcs.
#include "OutlinePath.h"

#include <cmath>

namespace EDATool {

namespace {

using OutlinePoint = EDA::EDAOutline::EDAPoint;

const double degreesToRadians = std::atan(1.0) / 45.0;

// A flatter arc is not to be told from its chord, and its centre is so far away that digits get lost.
constexpr double leastSweep = 0.01;

bool isFullCircle(const OutlinePoint &point) {
    return !point.centered && std::fabs(point.angle - 360.0) < EDA::EDAOutline::ptTol;
}

bool isFinite(const Point &point) { return std::isfinite(point.x) && std::isfinite(point.y); }

// From a chord and its included angle: the centre lies left of the chord for less than half a turn
// anticlockwise.
PathStep angledStep(const Point &from, const OutlinePoint &to) {
    PathStep step{PathStep::Kind::Line, {to.x, to.y}, {}, 0.0};
    if (!std::isfinite(to.angle) || std::fabs(to.angle) < leastSweep || std::fabs(to.angle) >= 360.0)
        return step;
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double ratio = 0.5 / std::tan(to.angle * degreesToRadians / 2);
    step.centre = {(from.x + to.x) / 2 - dy * ratio, (from.y + to.y) / 2 + dx * ratio};
    if (!isFinite(step.centre) || (dx == 0.0 && dy == 0.0)) return step;
    step.kind = PathStep::Kind::Arc;
    step.sweep = to.angle;
    return step;
}

// Equal ends make a full circle, in either sense.
PathStep centredStep(const Point &from, const OutlinePoint &to) {
    const Point centre{to.centreX, to.centreY};
    PathStep step{PathStep::Kind::Line, {to.x, to.y}, centre, 0.0};
    const double start = std::atan2(from.y - centre.y, from.x - centre.x);
    const double end = std::atan2(to.y - centre.y, to.x - centre.x);
    double sweep = (end - start) / degreesToRadians;
    if (!to.clockwise && sweep <= 0.0) sweep += 360.0;
    if (to.clockwise && sweep >= 0.0) sweep -= 360.0;
    if (!std::isfinite(sweep) || std::fabs(sweep) < leastSweep) return step;
    step.kind = PathStep::Kind::Arc;
    step.sweep = sweep;
    return step;
}

Path polygonPath(const EDA::EDAOutline::PointList &points) {
    Path path;
    for (const auto &[x, y] : points) {
        const Point point{x, y};
        if (!isFinite(point)) continue;
        path.push_back({path.empty() ? PathStep::Kind::Move : PathStep::Kind::Line, point, {}, 0.0});
    }
    if (!path.empty()) path.push_back({PathStep::Kind::Close, path.front().to, {}, 0.0});
    return path;
}

// A circle is a centre followed by a point on it.
bool isCircle(const EDA::EDAOutline &outline) {
    return outline.numPoints() == 2 && isFullCircle(*std::prev(outline.endPoints()));
}

bool hasCircle(const EDA::EDAOutline &outline) {
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point) {
        if (isFullCircle(*point)) return true;
    }
    return false;
}

} // namespace

Path pathOf(const EDA::EDAOutline &outline) {
    if (isCircle(outline)) {
        const OutlinePoint &centre = *outline.beginPoints();
        const OutlinePoint &rim = *std::prev(outline.endPoints());
        const double radius = std::hypot(rim.x - centre.x, rim.y - centre.y);
        return std::isfinite(radius) ? circlePath({centre.x, centre.y}, radius) : Path();
    }
    if (hasCircle(outline)) return polygonPath(outline.getPoints(true));
    Path path;
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point) {
        const Point to{point->x, point->y};
        if (!isFinite(to)) continue;
        if (path.empty()) {
            path.push_back({PathStep::Kind::Move, to, {}, 0.0});
        } else {
            const Point from = path.back().to;
            path.push_back(point->centered ? centredStep(from, *point) : angledStep(from, *point));
        }
    }
    if (!path.empty()) path.push_back({PathStep::Kind::Close, path.front().to, {}, 0.0});
    return path;
}

Path pathWithHoles(const EDA::EDAOutline &outline) {
    Path path = pathOf(outline);
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner) {
        const Path hole = pathOf(*inner);
        path.insert(path.end(), hole.begin(), hole.end());
    }
    return path;
}

} // namespace EDATool
