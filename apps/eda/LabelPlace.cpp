// Where a name fits into a shape.
#include "LabelPlace.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace EDATool {

namespace {

constexpr int numLevels = 9;

// The shape as segments; arcs as their chords of about a sixteenth turn.
struct Segment {
    Point from;
    Point to;
};

void addArc(std::vector<Segment> &segments, Point from, const PathStep &arc) {
    const int count = 1 + static_cast<int>(std::fabs(arc.sweep) / 22.5);
    const Similarity back = Similarity::move(arc.centre.x, arc.centre.y);
    const Similarity turn =
        then(then(Similarity::move(-arc.centre.x, -arc.centre.y), Similarity::turn(arc.sweep / count)), back);
    for (int index = 0; index < count; ++index) {
        const Point to = turn.apply(from);
        segments.push_back({from, to});
        from = to;
    }
}

std::vector<Segment> segmentsOf(const Path &path) {
    std::vector<Segment> segments;
    Point from;
    for (const PathStep &step : path) {
        if (step.kind == PathStep::Kind::Arc) {
            addArc(segments, from, step);
        } else if (step.kind != PathStep::Kind::Move) {
            segments.push_back({from, step.to});
        }
        from = step.to;
    }
    return segments;
}

Point swapped(const Point &point) { return {point.y, point.x}; }

struct Span {
    double low = 0.0;
    double high = 0.0;
    double length() const { return high - low; }
};

// What of a level line lies inside, by the even-odd rule.
std::vector<Span> spansAt(const std::vector<Segment> &segments, double y) {
    std::vector<double> crossings;
    for (const Segment &segment : segments) {
        if ((segment.from.y > y) == (segment.to.y > y)) continue;
        const double share = (y - segment.from.y) / (segment.to.y - segment.from.y);
        crossings.push_back(segment.from.x + share * (segment.to.x - segment.from.x));
    }
    std::sort(crossings.begin(), crossings.end());
    std::vector<Span> spans;
    for (std::size_t index = 0; index + 1 < crossings.size(); index += 2) {
        spans.push_back({crossings[index], crossings[index + 1]});
    }
    return spans;
}

Span spanAround(const std::vector<Segment> &segments, const Point &point) {
    for (const Span &span : spansAt(segments, point.y)) {
        if (span.low <= point.x && point.x <= span.high) return span;
    }
    return {point.x, point.x};
}

std::vector<Segment> transposed(std::vector<Segment> segments) {
    for (Segment &segment : segments)
        segment = {swapped(segment.from), swapped(segment.to)};
    return segments;
}

// The box of the level span and of the extent across its middle.
Box roomAt(const std::vector<Segment> &across, const Span &span, double y) {
    const double middle = (span.low + span.high) / 2;
    const Span height = spanAround(across, {y, middle});
    Box box;
    box.add(Point{span.low, height.low});
    box.add(Point{span.high, height.high});
    return box;
}

} // namespace

Box roomForLabel(const Path &shape) {
    constexpr std::size_t mostSteps = 1000; // of a shape worth the search
    const Box whole = boundOf(shape);
    if (whole.isEmpty() || shape.size() > mostSteps) return whole;
    const std::vector<Segment> along = segmentsOf(shape);
    if (spanAround(along, whole.centre()).length() > 0) return whole;
    const std::vector<Segment> across = transposed(along);
    Box best;
    for (int level = 0; level < numLevels; ++level) {
        const double y = whole.low.y + (level + 0.5) / numLevels * whole.height();
        for (const Span &span : spansAt(along, y)) {
            const Box room = roomAt(across, span, y);
            if (room.width() * room.height() > best.width() * best.height()) best = room;
        }
    }
    return best.isEmpty() ? whole : best;
}

} // namespace EDATool
