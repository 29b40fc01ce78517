// Centres and extents of arcs.
#include "fabrication/layers/ArcGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace EDA::Fabrication {

namespace {

constexpr double pi = 3.14159265358979323846;
// Ends and offsets are rounded to the format of the file: sweeps and radii come out a little different.
constexpr double mostOfQuarter = pi / 2.0 + 0.02;
constexpr double mostOfHalf = pi + 1e-9;
constexpr double coarsest = 0.05; // two units of a format of thousandths of inches

double distance(Point const &a, Point const &b) { return std::hypot(a.x - b.x, a.y - b.y); }

double angleOf(Point const &centre, Point const &point) {
    return std::atan2(point.y - centre.y, point.x - centre.x);
}

// By how much the ends of an arc around this centre differ in radius.
double misfit(Point const &start, Point const &end, Point const &centre) {
    return std::abs(distance(start, centre) - distance(end, centre));
}

// How large a misfit may come from rounding alone.
double roundingOf(Point const &start, Point const &centre) {
    return std::max(coarsest, 0.01 * distance(start, centre));
}

Segment around(Point const &start, Point const &end, Point const &offset, Motion motion) {
    const Point centre{start.x + offset.x, start.y + offset.y};
    if (centre == start || centre == end) return {end, {}, Motion::Line};
    return {end, centre, motion};
}

// The centre of the four that is as far from the end as from the start. The arc must not go the long way
// around, but that it is a quarter at most is not asked: on small arcs rounding adds degrees.
Segment ofSingleQuadrant(Point const &start, Point const &end, Point const &offset, Motion motion,
                         ArcFit &fit) {
    if (start == end) return {end, {}, Motion::Line};
    Segment best{end, {}, Motion::Line};
    double least = std::numeric_limits<double>::infinity();
    bool isShort = false;
    for (const double x : {std::abs(offset.x), -std::abs(offset.x)}) {
        for (const double y : {std::abs(offset.y), -std::abs(offset.y)}) {
            const Segment arc = around(start, end, {x, y}, motion);
            if (arc.motion == Motion::Line) continue;
            const bool fits = sweepOf(start, arc) <= mostOfHalf;
            const double error = misfit(start, end, arc.centre);
            if (fits < isShort || (fits == isShort && error >= least)) continue;
            best = arc;
            least = error;
            isShort = fits;
        }
    }
    if (best.motion != Motion::Line && (!isShort || least > roundingOf(start, best.centre)))
        fit = ArcFit::Guessed;
    return best;
}

// Files without a mode are old: theirs was the single quadrant, unless something speaks against it.
Segment ofUnknownQuadrants(Point const &start, Point const &end, Point const &offset, Motion motion) {
    const Segment multi = around(start, end, offset, motion);
    if (multi.motion == Motion::Line || start == end || offset.x < 0.0 || offset.y < 0.0) return multi;
    ArcFit fit = ArcFit::Sure;
    const Segment single = ofSingleQuadrant(start, end, offset, motion, fit);
    if (fit == ArcFit::Guessed) return multi;
    const bool isQuarter = sweepOf(start, single) <= mostOfQuarter;
    return isQuarter || misfit(start, end, multi.centre) > roundingOf(start, multi.centre) ? single : multi;
}

bool isPassed(double angle, double first, double sweep, bool isClockwise) {
    double turned = isClockwise ? first - angle : angle - first;
    while (turned < 0.0)
        turned += 2.0 * pi;
    return turned < sweep;
}

} // namespace

Segment arcTo(Point const &start, Point const &end, Point const &offset, Motion motion, Quadrants quadrants,
              ArcFit &fit) {
    fit = ArcFit::Sure;
    if (quadrants == Quadrants::Single) return ofSingleQuadrant(start, end, offset, motion, fit);
    if (quadrants == Quadrants::Multi) return around(start, end, offset, motion);
    fit = ArcFit::Guessed;
    return ofUnknownQuadrants(start, end, offset, motion);
}

double sweepOf(Point const &from, Segment const &arc) {
    if (from == arc.end) return 2.0 * pi;
    const double first = angleOf(arc.centre, from);
    const double last = angleOf(arc.centre, arc.end);
    const double sweep = arc.motion == Motion::Clockwise ? first - last : last - first;
    return sweep <= 0.0 ? sweep + 2.0 * pi : sweep;
}

void unite(Box &box, Point const &from, Segment const &segment) {
    box.unite(segment.end.x, segment.end.y);
    if (segment.motion == Motion::Line) return;
    const double radius = distance(from, segment.centre);
    const double first = angleOf(segment.centre, from);
    const double sweep = sweepOf(from, segment);
    const bool isClockwise = segment.motion == Motion::Clockwise;
    constexpr Point directions[] = {{1.0, 0.0}, {0.0, 1.0}, {-1.0, 0.0}, {0.0, -1.0}};
    for (int quarter = 0; quarter < 4; ++quarter) {
        if (!isPassed(quarter * pi / 2.0, first, sweep, isClockwise)) continue;
        box.unite(segment.centre.x + radius * directions[quarter].x,
                  segment.centre.y + radius * directions[quarter].y);
    }
}

void addLinesAlong(Point const &from, Segment const &arc, std::vector<Segment> &lines) {
    const double radius = distance(from, arc.centre);
    const double last = distance(arc.end, arc.centre);
    const double sweep = sweepOf(from, arc);
    const double flat = std::min(1.0, chordTolerance / std::max(std::max(radius, last), chordTolerance));
    const double step = std::max(2.0 * std::acos(1.0 - flat), 1e-3);
    const int count = std::max(2, static_cast<int>(std::ceil(sweep / step)));
    const double first = angleOf(arc.centre, from);
    const double sign = arc.motion == Motion::Clockwise ? -1.0 : 1.0;
    for (int i = 1; i < count; ++i) {
        const double part = static_cast<double>(i) / count;
        const double angle = first + sign * sweep * part;
        const double reach = radius + (last - radius) * part;
        const Point point{arc.centre.x + reach * std::cos(angle), arc.centre.y + reach * std::sin(angle)};
        lines.push_back({point, {}, Motion::Line});
    }
    lines.push_back({arc.end, {}, Motion::Line});
}

} // namespace EDA::Fabrication
