// Transforms of coordinates and apertures, and how they join.
#include "fabrication/layers/Placement.h"

#include <cmath>

namespace EDA::Fabrication {

namespace {

constexpr double halfTurn = 180.0;
constexpr double radians = 3.14159265358979323846 / halfTurn;

double withinTurn(double degrees) {
    const double rest = std::fmod(degrees, 2.0 * halfTurn);
    const double positive = rest < 0.0 ? rest + 2.0 * halfTurn : rest;
    return positive < 2.0 * halfTurn ? positive : 0.0;
}

// Quarter turns come out exactly.
void sineAndCosine(double degrees, double &sine, double &cosine) {
    const double turn = withinTurn(degrees);
    const double quarters = turn / 90.0;
    if (quarters == std::floor(quarters)) {
        constexpr double sines[] = {0.0, 1.0, 0.0, -1.0, 0.0};
        const auto quarter = static_cast<std::size_t>(quarters);
        sine = sines[quarter];
        cosine = sines[quarter + 1];
        return;
    }
    sine = std::sin(turn * radians);
    cosine = std::cos(turn * radians);
}

Placement turned(double degrees) {
    double sine = 0.0;
    double cosine = 1.0;
    sineAndCosine(degrees, sine, cosine);
    Placement placement;
    placement.xx = placement.yy = cosine;
    placement.xy = -sine;
    placement.yx = sine;
    placement.turn.rotation = degrees;
    return placement;
}

} // namespace

ApertureTransform composed(ApertureTransform const &outer, ApertureTransform const &inner) {
    // Mirroring one way turns every rotation that it follows the other way around.
    const bool isOdd = outer.mirrorX != outer.mirrorY;
    ApertureTransform both;
    both.mirrorX = outer.mirrorX != inner.mirrorX;
    both.mirrorY = outer.mirrorY != inner.mirrorY;
    both.rotation = outer.rotation + (isOdd ? -inner.rotation : inner.rotation);
    if (both.mirrorX && both.mirrorY) {
        both.mirrorX = both.mirrorY = false;
        both.rotation += halfTurn;
    }
    both.rotation = withinTurn(both.rotation);
    both.scaleX = outer.scaleX * inner.scaleX;
    both.scaleY = outer.scaleY * inner.scaleY;
    return both;
}

bool Placement::isPlain() const {
    return xx == 1.0 && xy == 0.0 && yx == 0.0 && yy == 1.0 && x0 == 0.0 && y0 == 0.0 && turn.isPlain();
}

bool Placement::keepsArcs() const {
    const double near = 1e-9 * (std::abs(xx) + std::abs(xy));
    const bool isTurn = std::abs(xx - yy) <= near && std::abs(xy + yx) <= near;
    const bool isMirror = std::abs(xx + yy) <= near && std::abs(xy - yx) <= near;
    return isTurn || isMirror;
}

Segment Placement::at(Segment const &segment) const {
    Segment placed{at(segment.end), at(segment.centre), segment.motion};
    if (segment.motion != Motion::Line && isMirrored())
        placed.motion = segment.motion == Motion::Clockwise ? Motion::CounterClockwise : Motion::Clockwise;
    return placed;
}

Placement composed(Placement const &outer, Placement const &inner) {
    Placement both;
    both.xx = outer.xx * inner.xx + outer.xy * inner.yx;
    both.xy = outer.xx * inner.xy + outer.xy * inner.yy;
    both.yx = outer.yx * inner.xx + outer.yy * inner.yx;
    both.yy = outer.yx * inner.xy + outer.yy * inner.yy;
    const Point origin = outer.at(Point{inner.x0, inner.y0});
    both.x0 = origin.x;
    both.y0 = origin.y;
    both.turn = composed(outer.turn, inner.turn);
    return both;
}

Placement placedAt(Point const &point, ApertureTransform const &transform) {
    Placement placement = turned(transform.rotation);
    const double x = transform.mirrorX ? -transform.scaleX : transform.scaleX;
    const double y = transform.mirrorY ? -transform.scaleY : transform.scaleY;
    placement.xx *= x;
    placement.yx *= x;
    placement.xy *= y;
    placement.yy *= y;
    placement.x0 = point.x;
    placement.y0 = point.y;
    placement.turn = composed(transform, {});
    return placement;
}

// The order is fixed, whatever the order of the commands: mirroring, scale, offset, rotation, axes. The scale
// leaves the offset as it is.
// Mirroring and scale are defined for coordinate data alone: apertures keep their sense and size, as the
// authors of such files relied on. Axes and rotation are those of the whole image, apertures included.
Placement ImageTransform::placement() const {
    Placement axes;
    if (swapsAxes) {
        axes.xx = axes.yy = 0.0;
        axes.xy = axes.yx = 1.0;
        axes.turn.mirrorX = true;
        axes.turn.rotation = 270.0;
    }
    Placement sized;
    sized.xx = mirrorsA ? -scaleA : scaleA;
    sized.yy = mirrorsB ? -scaleB : scaleB;
    sized.x0 = offsetA;
    sized.y0 = offsetB;
    return composed(axes, composed(turned(rotation), sized));
}

} // namespace EDA::Fabrication
