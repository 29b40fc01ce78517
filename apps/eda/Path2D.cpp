// Paths of lines and true arcs.
#include "Path2D.h"

#include <algorithm>
#include <cmath>

namespace EDATool {

namespace {

const double degreesToRadians = std::atan(1.0) / 45.0;

// The points where the arc reaches furthest along an axis lie at the multiples of 90 degrees that it passes.
void addArcBound(Box &box, const Point &from, const PathStep &arc) {
    const double radius = std::hypot(arc.to.x - arc.centre.x, arc.to.y - arc.centre.y);
    const double start = std::atan2(from.y - arc.centre.y, from.x - arc.centre.x) / degreesToRadians;
    const double low = arc.sweep < 0 ? start + arc.sweep : start;
    const double high = arc.sweep < 0 ? start : start + arc.sweep;
    for (int quarter = -6; quarter <= 6; ++quarter) {
        const double angle = quarter * 90.0;
        if (angle < low || angle > high) continue;
        box.add(Point{arc.centre.x + radius * std::cos(angle * degreesToRadians),
                      arc.centre.y + radius * std::sin(angle * degreesToRadians)});
    }
}

} // namespace

void Box::add(const Point &point) {
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) return;
    if (isEmpty()) {
        low = high = point;
        return;
    }
    low = {std::min(low.x, point.x), std::min(low.y, point.y)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y)};
}

void Box::add(const Box &other) {
    if (other.isEmpty()) return;
    add(other.low);
    add(other.high);
}

Similarity Similarity::turn(double degrees) {
    const double angle = std::fmod(degrees, 360.0);
    double cosine = std::cos(angle * degreesToRadians);
    double sine = std::sin(angle * degreesToRadians);
    if (std::fmod(angle, 90.0) == 0.0) { // exact, so that edges stay level
        cosine = std::round(cosine);
        sine = std::round(sine);
    }
    return {cosine, -sine, sine, cosine, 0.0, 0.0};
}

Path Similarity::apply(const Path &path) const {
    const double sense = mirrors() ? -1.0 : 1.0;
    Path result = path;
    for (PathStep &step : result) {
        step.to = apply(step.to);
        step.centre = apply(step.centre);
        step.sweep *= sense;
    }
    return result;
}

Similarity then(const Similarity &first, const Similarity &second) {
    const Point origin = second.apply(Point{first.x0, first.y0});
    return {second.xx * first.xx + second.xy * first.yx,
            second.xx * first.xy + second.xy * first.yy,
            second.yx * first.xx + second.yy * first.yx,
            second.yx * first.xy + second.yy * first.yy,
            origin.x,
            origin.y};
}

Path circlePath(const Point &centre, double radius) {
    const Point start{centre.x + radius, centre.y};
    return {{PathStep::Kind::Move, start, {}, 0.0},
            {PathStep::Kind::Arc, start, centre, 360.0},
            {PathStep::Kind::Close, start, {}, 0.0}};
}

Path segmentPath(const Point &from, const Point &to, double width) {
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    if (!std::isfinite(length) || !(width > 0.0) || !std::isfinite(width)) return Path();
    if (length == 0.0) return circlePath(from, width / 2);
    const double acrossX = (from.y - to.y) / length * width / 2;
    const double acrossY = (to.x - from.x) / length * width / 2;
    using Kind = PathStep::Kind;
    const Point start{from.x - acrossX, from.y - acrossY};
    return {{Kind::Move, start, {}, 0.0},
            {Kind::Line, {to.x - acrossX, to.y - acrossY}, {}, 0.0},
            {Kind::Arc, {to.x + acrossX, to.y + acrossY}, to, 180.0},
            {Kind::Line, {from.x + acrossX, from.y + acrossY}, {}, 0.0},
            {Kind::Arc, start, from, 180.0},
            {Kind::Close, start, {}, 0.0}};
}

Path boxPath(const Box &box) {
    const PathStep::Kind line = PathStep::Kind::Line;
    return {{PathStep::Kind::Move, box.low, {}, 0.0},
            {line, {box.high.x, box.low.y}, {}, 0.0},
            {line, box.high, {}, 0.0},
            {line, {box.low.x, box.high.y}, {}, 0.0},
            {PathStep::Kind::Close, box.low, {}, 0.0}};
}

Path crossPath(const Point &centre, double halfSize) {
    return {{PathStep::Kind::Move, {centre.x - halfSize, centre.y}, {}, 0.0},
            {PathStep::Kind::Line, {centre.x + halfSize, centre.y}, {}, 0.0},
            {PathStep::Kind::Move, {centre.x, centre.y - halfSize}, {}, 0.0},
            {PathStep::Kind::Line, {centre.x, centre.y + halfSize}, {}, 0.0}};
}

Box boundOf(const Path &path) {
    Box box;
    Point from;
    for (const PathStep &step : path) {
        box.add(step.to);
        if (step.kind == PathStep::Kind::Arc) addArcBound(box, from, step);
        from = step.to;
    }
    return box;
}

double areaOf(const Path &path) {
    double total = 0.0, area = 0.0;
    std::size_t numDone = 0;
    Point origin, from;
    const auto finish = [&] { total += numDone++ == 0 ? std::fabs(area) : -std::fabs(area); };
    for (const PathStep &step : path) {
        if (step.kind == PathStep::Kind::Move) {
            if (&step != path.data()) finish();
            area = 0.0;
            origin = from = step.to; // Small numbers keep their digits far from the origin of the plane.
            continue;
        }
        area += 0.5 *
                ((from.x - origin.x) * (step.to.y - origin.y) - (step.to.x - origin.x) * (from.y - origin.y));
        if (step.kind == PathStep::Kind::Arc) {
            const double radius = std::hypot(step.to.x - step.centre.x, step.to.y - step.centre.y);
            const double sweep = step.sweep * degreesToRadians;
            area += 0.5 * radius * radius * (sweep - std::sin(sweep));
        }
        from = step.to;
    }
    if (!path.empty()) finish();
    return std::max(total, 0.0);
}

} // namespace EDATool
