// Outline arcs: from stored points to the discretised list.
#include "model/EDAOutline.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace EDA {

namespace {

constexpr double sweepTolerance = 1e-9;
double const pi = std::atan(1.0) * 4.0;

// The most segments of one arc: a turn and more in steps of 10 degrees needs 36, so only an
// angle of more than 3600 degrees is cut short.
constexpr int maxSegments = 360;

struct StepRule {
    double ratioBelow; // radius / model dimension
    double degrees;
};
constexpr StepRule stepRules[] = {{0.001, 45.0}, {0.01, 30.0}, {0.05, 15.0}};
constexpr double finestStep = 10.0;

struct Angles {
    double start;
    double end;
};

struct Circle {
    double x;
    double y;
    double radius;
};

// Integer part of the ratio of angle and step, at least 2.
int segmentCount(double ratio) {
    if (!std::isfinite(ratio) || ratio < 2.0) return 2;
    return ratio < maxSegments ? static_cast<int>(ratio) : maxSegments;
}

std::pair<double, double> unitPoint(double angle) { return {std::cos(angle), std::sin(angle)}; }

template <int segments> std::array<std::pair<double, double>, segments> makeUnitCircle() {
    std::array<std::pair<double, double>, segments> points;
    double const delta = 2.0 * pi / segments;
    for (int i = 0; i < segments; ++i)
        points[static_cast<std::size_t>(i)] = unitPoint(i * delta);
    return points;
}

// Whole circles from angle 0 are by far the most frequent arcs. Their unit points are kept for
// each of the possible steps; null for any other division.
std::pair<double, double> const *unitCircle(int segments) {
    static auto const step10 = makeUnitCircle<36>();
    static auto const step15 = makeUnitCircle<24>();
    static auto const step30 = makeUnitCircle<12>();
    static auto const step45 = makeUnitCircle<8>();
    switch (segments) {
    case 36:
        return step10.data();
    case 24:
        return step15.data();
    case 12:
        return step30.data();
    case 8:
        return step45.data();
    default:
        return nullptr;
    }
}

// Appends the points after `angles.start` in steps of `delta`, numbers 1 to `last`.
void appendArc(Circle const &circle, double start, double delta, int segments, int last,
               EDAOutline::PointList &out) {
    bool const wholeCircle = start == 0.0 && delta == 2.0 * pi / segments && last < segments;
    std::pair<double, double> const *known = wholeCircle ? unitCircle(segments) : nullptr;
    for (int i = 1; i <= last; ++i) {
        auto const unit = known ? known[i] : unitPoint(i * delta + start);
        out.emplace_back(unit.first * circle.radius + circle.x, unit.second * circle.radius + circle.y);
    }
}

// Directions of both ends from the centre, the end turned on until the sweep has the wanted sense.
Angles arcAngles(Circle const &circle, EDAOutline::EDAPoint const &from, EDAOutline::EDAPoint const &to,
                 bool anticlockwise, bool clockwise) {
    Angles angles{std::atan2(from.y - circle.y, from.x - circle.x),
                  std::atan2(to.y - circle.y, to.x - circle.x)};
    if (angles.start >= angles.end && anticlockwise)
        angles.end += 2.0 * pi;
    else if (angles.end >= angles.start && clockwise)
        angles.end -= 2.0 * pi;
    return angles;
}

double distance(EDAOutline::EDAPoint const &a, EDAOutline::EDAPoint const &b) {
    double const dx = b.x - a.x;
    double const dy = b.y - a.y;
    return std::sqrt(dx * dx + dy * dy);
}

// Circle and angles of an arc over a chord. Of the two possible centres, the one counts from which
// the sweep comes out as the point's angle. A chord without length gives numbers that are not finite.
void findArc(EDAOutline::EDAPoint const &from, EDAOutline::EDAPoint const &to, Circle &circle,
             Angles &angles) {
    double const a = to.angle * pi / 180.0;
    double const d = distance(from, to);
    double const half = d * 0.5;
    circle.radius = std::abs(half / std::sin(a * 0.5));
    double const h = std::sqrt(circle.radius * circle.radius - half * half);
    double const xMiddle = (from.x + to.x) * 0.5;
    double const yMiddle = (from.y + to.y) * 0.5;
    double const xOffset = (from.y - to.y) * h / d;
    double const yOffset = (to.x - from.x) * h / d;

    circle.x = xMiddle + xOffset;
    circle.y = yMiddle + yOffset;
    angles = arcAngles(circle, from, to, a > 0.0, a < 0.0);
    if (!(std::abs(angles.end - angles.start - a) > sweepTolerance)) return;
    circle.x = xMiddle - xOffset;
    circle.y = yMiddle - yOffset;
    angles = arcAngles(circle, from, to, a > 0.0, a < 0.0);
}

// Makes room for `extra` entries: exactly, as most outlines have one arc or few, but at least
// twofold, so that many arcs stay cheap.
void makeRoom(EDAOutline::PointList &points, std::size_t extra) {
    std::size_t const wanted = points.size() + extra;
    if (wanted > points.capacity()) points.reserve(std::max(wanted, 2 * points.capacity()));
}

} // namespace

EDAOutline::PointList const &EDAOutline::getPoints(bool discretise) const {
    PointList &cache = discretise ? discretised_ : raw_;
    if (!cache.empty()) return cache;
    PointList points;
    points.reserve(points_.size());
    if (discretise && !points_.areStraight()) {
        bool const hadArcs = expandPoints(points);
        cleanupPoints(points, hadArcs);
    } else {
        for (auto const &place : points_.places())
            addPoint(points, place);
        if (discretise) cleanupPoints(points, false);
    }
    cache = std::move(points);
    return cache;
}

bool EDAOutline::expandPoints(PointList &points) const {
    bool hadArcs = false;
    PointList arc;
    for (std::size_t i = 0; i < points_.size(); ++i) {
        EDAPoint const point = points_[i];
        bool circle = false;
        if (point.isArc()) {
            hadArcs = true; // also for the first point, whose own arc has no start and never expands
            arc.clear();
            circle = i > 0 && discretiseArc(points_[i - 1], point, arc);
            // The centre of a circle is no vertex. Where a circle follows a circle, this takes the
            // last vertex of the one before; that is intended.
            if (circle && !points.empty()) points.pop_back();
            makeRoom(points, arc.size() + 1);
            for (auto const &vertex : arc)
                addPoint(points, vertex);
        }
        if (!circle) addPoint(points, {point.x, point.y});
    }
    return hadArcs;
}

double EDAOutline::getDiscretiseAngle(double radius) const {
    if (!(modelDimension_ > 0.0)) return finestStep;
    for (StepRule const &rule : stepRules)
        if (radius / modelDimension_ < rule.ratioBelow) return rule.degrees;
    return finestStep;
}

bool EDAOutline::discretiseArc(EDAPoint const &from, EDAPoint const &to, PointList &out) const {
    return to.centered ? discretiseCenteredArc(from, to, out) : discretiseAngledArc(from, to, out);
}

bool EDAOutline::discretiseAngledArc(EDAPoint const &from, EDAPoint const &to, PointList &out) const {
    bool const fullCircle = std::abs(to.angle - 360.0) < ptTol;
    Circle circle{};
    Angles angles{};
    if (fullCircle) {
        circle = {from.x, from.y, distance(from, to)};
        angles.end = arcAngles(circle, from, to, true, false).end;
        angles.start = angles.end - 2.0 * pi;
        out.emplace_back(to.x, to.y);
    } else {
        findArc(from, to, circle, angles);
    }
    int const segments = segmentCount(std::abs(to.angle / getDiscretiseAngle(circle.radius)));
    makeRoom(out, static_cast<std::size_t>(segments));
    double const delta = (angles.end - angles.start) / segments;
    appendArc(circle, angles.start, delta, segments, segments - 1, out);
    return fullCircle;
}

bool EDAOutline::discretiseCenteredArc(EDAPoint const &from, EDAPoint const &to, PointList &out) const {
    Circle const circle{to.centreX, to.centreY, distance(EDAPoint(to.centreX, to.centreY, 0.0), to)};
    Angles const angles = arcAngles(circle, from, to, !to.clockwise, to.clockwise);
    double const sweep = angles.end - angles.start;
    int const segments = segmentCount(std::abs(sweep * 180.0 / pi / getDiscretiseAngle(circle.radius)));
    makeRoom(out, static_cast<std::size_t>(segments));
    appendArc(circle, angles.start, sweep / segments, segments, segments, out);
    return false;
}

} // namespace EDA
