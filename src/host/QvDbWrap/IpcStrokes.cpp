// Lines with a width as areas.
#include "host/QvDbWrap/IpcStrokes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace QvDbWrap {

namespace {

// The half turn around the end of a line, from the right of the way out to its left.
void addEnd(Ring &ring, const _mFPOINT &at, const _mFPOINT &out, double half, LineStyle::End end) {
    const _mFPOINT right{out.y * half, -out.x * half};
    if (end == LineStyle::Round) {
        for (int step = 0; step <= IpcGeometry::chordsPerTurn / 2; ++step) {
            const _mFPOINT turn = unitVector(step);
            ring.push_back(
                {at.x + right.x * turn.x - right.y * turn.y, at.y + right.x * turn.y + right.y * turn.x});
        }
        return;
    }
    const double reach = end == LineStyle::Square ? half : 0;
    const _mFPOINT tip{at.x + out.x * reach, at.y + out.y * reach};
    ring.push_back({tip.x + right.x, tip.y + right.y});
    ring.push_back({tip.x - right.x, tip.y - right.y});
}

_mFPOINT reversed(const _mFPOINT &vector) { return {-vector.x, -vector.y}; }

Ring around(const IpcCurve &curve, double radius, bool anticlockwise) {
    Ring ring;
    for (int chord = 0; chord < curve.numChords(); ++chord)
        ring.push_back(curve.point(chord, radius));
    if (curve.isClockwise() == anticlockwise) std::reverse(ring.begin() + 1, ring.end());
    return ring;
}

class Stroker {
public:
    Stroker(const LineStyle &style, Areas &areas) : style_(style), half_(style.width / 2), areas_(areas) {}

    void addPath(const Path &path);

private:
    void addSegment(const _mFPOINT &from, const PathPoint &to, LineStyle::End first, LineStyle::End last);
    void addLine(const _mFPOINT &from, const _mFPOINT &to, LineStyle::End first, LineStyle::End last);
    void addCurve(const IpcCurve &curve, LineStyle::End first, LineStyle::End last);
    void addBand(const IpcCurve &curve, LineStyle::End first, LineStyle::End last);
    void addTightCurve(const IpcCurve &curve, LineStyle::End first, LineStyle::End last);
    void addFullTurn(const IpcCurve &curve);
    void addDot(const _mFPOINT &at);

    const LineStyle style_;
    const double half_;
    Areas &areas_;
};

void Stroker::addPath(const Path &path) {
    const std::size_t before = areas_.size();
    const bool isClosed =
        path.size() > 2 && path.front().at.x == path.back().at.x && path.front().at.y == path.back().at.y;
    for (std::size_t i = 1; i < path.size(); ++i) {
        const bool isFirst = i == 1 && !isClosed, isLast = i + 1 == path.size() && !isClosed;
        addSegment(path[i - 1].at, path[i], isFirst ? style_.end : LineStyle::Round,
                   isLast ? style_.end : LineStyle::Round);
    }
    if (areas_.size() == before && !path.empty()) addDot(path.front().at);
}

void Stroker::addSegment(const _mFPOINT &from, const PathPoint &to, LineStyle::End first,
                         LineStyle::End last) {
    if (!to.isCurve) return addLine(from, to.at, first, last);
    const IpcCurve curve(from, to);
    if (!curve.isRound()) return addLine(from, to.at, first, last);
    if (curve.isFullTurn()) return addFullTurn(curve);
    addCurve(curve, first, last);
}

void Stroker::addLine(const _mFPOINT &from, const _mFPOINT &to, LineStyle::End first, LineStyle::End last) {
    const _mFPOINT way{to.x - from.x, to.y - from.y};
    const double length = std::hypot(way.x, way.y);
    if (length == 0) return;
    const _mFPOINT direction{way.x / length, way.y / length};
    areas_.emplace_back();
    Ring &ring = areas_.back().outer;
    ring.reserve(2 + IpcGeometry::chordsPerTurn);
    addEnd(ring, to, direction, half_, last);
    addEnd(ring, from, reversed(direction), half_, first);
}

// A band of more than half a turn could run into itself, so it is laid in pieces.
void Stroker::addCurve(const IpcCurve &curve, LineStyle::End first, LineStyle::End last) {
    if (curve.radius() <= half_) return addTightCurve(curve, first, last);
    constexpr int most = IpcGeometry::chordsPerTurn / 2;
    const int count = curve.numChords();
    for (int begin = 0; begin < count; begin += most) {
        const int end = std::min(begin + most, count);
        addBand(IpcCurve(curve, begin, end), begin == 0 ? first : LineStyle::None,
                end == count ? last : LineStyle::None);
    }
}

void Stroker::addBand(const IpcCurve &curve, LineStyle::End first, LineStyle::End last) {
    const int count = curve.numChords();
    const double side = curve.isClockwise() ? -half_ : half_;
    areas_.emplace_back();
    Ring &ring = areas_.back().outer;
    addEnd(ring, curve.point(count), curve.direction(count), half_, last);
    for (int chord = count - 1; chord > 0; --chord)
        ring.push_back(curve.point(chord, curve.radius() - side));
    addEnd(ring, curve.point(0), reversed(curve.direction(0)), half_, first);
    for (int chord = 1; chord < count; ++chord)
        ring.push_back(curve.point(chord, curve.radius() + side));
}

// The inner side of the band would turn over: a line along each chord instead.
void Stroker::addTightCurve(const IpcCurve &curve, LineStyle::End first, LineStyle::End last) {
    const int count = curve.numChords();
    for (int chord = 1; chord <= count; ++chord)
        addLine(curve.point(chord - 1), curve.point(chord), chord == 1 ? first : LineStyle::Round,
                chord == count ? last : LineStyle::Round);
}

void Stroker::addFullTurn(const IpcCurve &curve) {
    Area area;
    area.outer = around(curve, curve.radius() + half_, true);
    if (curve.radius() > half_) area.holes.push_back(around(curve, curve.radius() - half_, false));
    areas_.push_back(std::move(area));
}

void Stroker::addDot(const _mFPOINT &at) {
    if (style_.end == LineStyle::None) return;
    areas_.emplace_back();
    Ring &ring = areas_.back().outer;
    addEnd(ring, at, {1, 0}, half_, style_.end);
    addEnd(ring, at, {-1, 0}, half_, style_.end);
    dropRepeated(ring);
}

} // namespace

Areas strokePath(const Path &path, const LineStyle &style) {
    Areas areas;
    if (!(style.width > 0)) return areas;
    areas.reserve(path.size());
    Stroker(style, areas).addPath(path);
    return areas;
}

Areas strokeRing(const Ring &ring, const LineStyle &style) {
    Path path;
    path.reserve(ring.size() + 1);
    for (const _mFPOINT &point : ring)
        path.push_back({point, false, false, {}});
    if (!ring.empty()) path.push_back(path.front());
    return strokePath(path, style);
}

} // namespace QvDbWrap
