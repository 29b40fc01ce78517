// Curves cut into chords.
#include "host/QvDbWrap/IpcCurves.h"

#include "host/Geometry/Bound2D.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace QvDbWrap {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double chordAngle = 2 * pi / IpcGeometry::chordsPerTurn;
constexpr int quarter = IpcGeometry::chordsPerTurn / 4;
constexpr double samePoint = 1e-9; // metres

using SineTable = std::array<double, quarter + 1>;

SineTable makeSines() {
    SineTable sines;
    for (int i = 0; i < quarter; ++i)
        sines[static_cast<std::size_t>(i)] = std::sin(i * chordAngle);
    sines[quarter] = 1;
    return sines;
}

// The angle between 0, exclusive, and a full turn, inclusive.
double positive(double angle) { return angle > 0 ? angle : angle + 2 * pi; }

bool isSame(const _mFPOINT &a, const _mFPOINT &b) { return a.x == b.x && a.y == b.y; }

Geometry::Bound2D boundOf(const Ring &ring) {
    Geometry::Bound2D bound;
    for (const _mFPOINT &point : ring)
        bound.unite(point.x, point.y);
    return bound;
}

void orient(Ring &ring, bool anticlockwise) {
    const double area = signedArea(ring);
    if (area != 0 && (area > 0) != anticlockwise) std::reverse(ring.begin() + 1, ring.end());
}

} // namespace

_mFPOINT unitVector(int step) {
    static const SineTable sines = makeSines();
    constexpr int turn = IpcGeometry::chordsPerTurn;
    const int place = ((step % turn) + turn) % turn;
    const auto rest = static_cast<std::size_t>(place % quarter);
    const double near = sines[quarter - rest], far = sines[rest];
    switch (place / quarter) {
    case 0:
        return {near, far};
    case 1:
        return {-far, near};
    case 2:
        return {-near, -far};
    default:
        return {far, -near};
    }
}

IpcCurve::IpcCurve(const _mFPOINT &start, const PathPoint &end) : centre_(end.centre), end_(end.at) {
    const _mFPOINT from{start.x - centre_.x, start.y - centre_.y};
    const _mFPOINT to{end.at.x - centre_.x, end.at.y - centre_.y};
    const double length = std::hypot(from.x, from.y);
    if (!(length > samePoint)) return;
    radius_ = length;
    arm_ = {from.x / length, from.y / length};
    isFullTurn_ = std::hypot(end.at.x - start.x, end.at.y - start.y) <= samePoint;
    const double turn = std::atan2(from.x * to.y - from.y * to.x, from.x * to.x + from.y * to.y);
    const double sweep = isFullTurn_ ? 2 * pi : positive(end.isClockwise ? -turn : turn);
    constexpr double rounding = 1e-6; // chords: a quarter turn that is rounded up has no chord more
    numChords_ = std::max(1, static_cast<int>(std::ceil(sweep / chordAngle - rounding)));
    step_ = (end.isClockwise ? -sweep : sweep) / numChords_;
}

IpcCurve::IpcCurve(const IpcCurve &whole, int first, int last) : IpcCurve(whole) {
    arm_ = whole.radial(first);
    end_ = whole.point(last);
    numChords_ = last - first;
    isFullTurn_ = false;
}

_mFPOINT IpcCurve::radial(int chord) const {
    const double cosine = std::cos(chord * step_), sine = std::sin(chord * step_);
    return {arm_.x * cosine - arm_.y * sine, arm_.x * sine + arm_.y * cosine};
}

_mFPOINT IpcCurve::point(int chord) const { return chord == numChords_ ? end_ : point(chord, radius_); }

_mFPOINT IpcCurve::point(int chord, double radius) const {
    const _mFPOINT arm = radial(chord);
    return {centre_.x + radius * arm.x, centre_.y + radius * arm.y};
}

_mFPOINT IpcCurve::direction(int chord) const {
    const _mFPOINT arm = radial(chord);
    return isClockwise() ? _mFPOINT{arm.y, -arm.x} : _mFPOINT{-arm.y, arm.x};
}

Ring flatten(const Path &path) {
    Ring ring;
    ring.reserve(path.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (i > 0 && path[i].isCurve) {
            const IpcCurve curve(path[i - 1].at, path[i]);
            for (int chord = 1; chord < curve.numChords(); ++chord)
                ring.push_back(curve.point(chord));
        }
        ring.push_back(path[i].at);
    }
    dropRepeated(ring);
    return ring;
}

void dropRepeated(Ring &ring) {
    ring.erase(std::unique(ring.begin(), ring.end(), isSame), ring.end());
    while (ring.size() > 1 && isSame(ring.front(), ring.back()))
        ring.pop_back();
}

double signedArea(const Ring &ring) {
    double twice = 0;
    if (ring.empty()) return 0;
    const _mFPOINT origin = ring.front(); // keeps far shapes exact
    for (std::size_t i = 2; i < ring.size(); ++i)
        twice += (ring[i - 1].x - origin.x) * (ring[i].y - origin.y) -
                 (ring[i].x - origin.x) * (ring[i - 1].y - origin.y);
    return twice / 2;
}

void normalise(Areas &areas) {
    const auto isFlat = [](const Ring &ring) {
        const Geometry::Bound2D bound = boundOf(ring);
        return ring.size() < 3 || bound.getXSize() == 0 || bound.getYSize() == 0;
    };
    areas.erase(
        std::remove_if(areas.begin(), areas.end(), [&](const Area &area) { return isFlat(area.outer); }),
        areas.end());
    for (Area &area : areas) {
        area.holes.erase(std::remove_if(area.holes.begin(), area.holes.end(), isFlat), area.holes.end());
        orient(area.outer, true);
        for (Ring &hole : area.holes)
            orient(hole, false);
    }
}

std::size_t numPoints(const Area &area) {
    std::size_t count = area.outer.size();
    for (const Ring &hole : area.holes)
        count += hole.size();
    return count;
}

std::size_t numPoints(const Areas &areas) {
    std::size_t count = 0;
    for (const Area &area : areas)
        count += numPoints(area);
    return count;
}

} // namespace QvDbWrap
