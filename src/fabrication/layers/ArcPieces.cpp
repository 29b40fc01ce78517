// Arcs cut into pieces that stay round.
#include "fabrication/layers/ArcPieces.h"

#include "fabrication/apertures/Rings.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

namespace {

constexpr double mostPieces = 2000.0; // of a full turn
// A centre farther out does not fit the files; such arcs are as good as straight.
constexpr double farthestCentre = 9e4;
// Rounding could turn the direction of an arc with a shorter chord, in nanometres.
constexpr double shortestChord = 10.0;
// Radii at both ends that differ by more, in millimetres, are made one.
constexpr double radiusTolerance = 2e-6;

// How much of a circle, in radians, may have one chord.
double chordStep(double radius) {
    if (!(radius > 0.5 * chordTolerance)) return fullTurn;
    return std::max(2.0 * std::acos(1.0 - chordTolerance / radius), fullTurn / mostPieces);
}

bool hasTwoRadii(Arc const &arc) { return std::abs(arc.startRadius - arc.endRadius) > radiusTolerance; }

std::size_t countPieces(Arc const &arc, double margin, double chord) {
    double const sweep = std::abs(arc.sweep);
    double const step = chordStep(std::max(arc.startRadius, arc.endRadius) + margin);
    double pieces = step * 360.0 / fullTurn >= chord ? 1.0 : sweep / step;
    // Halves at most: ends of a longer piece could fall together and mean a full turn.
    pieces = std::max(pieces, sweep / (hasTwoRadii(arc) ? 0.2501 * fullTurn : 0.5001 * fullTurn));
    return static_cast<std::size_t>(std::clamp(std::ceil(pieces - 1e-9), 1.0, mostPieces));
}

// The centre from which both ends are equally far, where the arc's own is not; false where there is none.
bool findCentre(Arc const &arc, double share, double step, bool clockwise, Point &centre) {
    centre = arc.centre;
    if (hasTwoRadii(arc)) {
        Point const a = arc.at(share), b = arc.at(share + step);
        Point const half{0.5 * (b.x - a.x), 0.5 * (b.y - a.y)};
        double const length = std::hypot(half.x, half.y);
        double const radius = arc.startRadius + (share + 0.5 * step) * (arc.endRadius - arc.startRadius);
        if (!(radius > length) || !(length > 0.0)) return false;
        double const height =
            std::sqrt(radius * radius - length * length) / length * (clockwise ? -1.0 : 1.0);
        centre = {a.x + half.x - half.y * height, a.y + half.y + half.x * height};
    }
    return std::abs(centre.x) < farthestCentre && std::abs(centre.y) < farthestCentre;
}

double distance(GridPoint const &a, GridPoint const &b) {
    return std::hypot(static_cast<double>(b.x - a.x), static_cast<double>(b.y - a.y));
}

bool drawArc(CanonicalText &text, Point const &from, Segment const &segment, double margin, double chord) {
    Arc const arc = arcOf(from, segment);
    std::size_t const count = countPieces(arc, margin, chord);
    double const step = 1.0 / static_cast<double>(count);
    bool const isClockwise = segment.motion == Motion::Clockwise;
    bool isDrawn = false;
    for (std::size_t i = 0; i < count; ++i) {
        double const share = step * static_cast<double>(i);
        GridPoint const end = gridPoint(i + 1 == count ? segment.end : arc.at(share + step));
        if (end == text.current()) continue;
        Point centre;
        bool const isRound = findCentre(arc, share, step, isClockwise, centre);
        if (isRound && distance(text.current(), end) >= shortestChord) {
            text.arcTo(end, gridPoint(centre), isClockwise);
        } else {
            text.lineTo(end);
        }
        isDrawn = true;
    }
    return isDrawn;
}

} // namespace

bool drawSegment(CanonicalText &text, Point const &from, Segment const &segment, double margin,
                 double chord) {
    if (segment.motion != Motion::Line) return drawArc(text, from, segment, margin, chord);
    GridPoint const end = gridPoint(segment.end);
    if (end == text.current()) return false;
    text.lineTo(end);
    return true;
}

} // namespace EDA::Fabrication
