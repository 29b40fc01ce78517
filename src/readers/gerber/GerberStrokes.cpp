// Strokes: the area that an aperture sweeps.
#include "host/Geometry/Transform.h"
#include "readers/gerber/Aperture.h"
#include "readers/gerber/GerberReader.h"
#include "readers/gerber/StrokeShape.h"

#include <algorithm>
#include <cmath>

namespace EDA {

namespace {

constexpr double pi = Geometry::Transform::pi;

struct Extent {
    double low = 1e6;
    double high = -1e6;

    void unite(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
};

// Across a stroke of this direction.
Extent extentAcross(const EDAOutline &aperture, double angle) {
    const Geometry::Transform turn =
        Geometry::Transform::createRotation(-angle * 180.0 / pi, Geometry::Transform::ZAxis);
    Extent extent;
    for (auto [x, y] : aperture.getPoints(true)) {
        double z = 0.0;
        turn.transform(x, y, z);
        extent.unite(y);
    }
    return extent;
}

EDAOutline movedCopy(const EDAOutline &aperture, double x, double y) {
    EDAOutline copy(aperture);
    copy.moveBy(x, y);
    return copy;
}

double positiveAngle(double y, double x) {
    const double angle = std::atan2(y, x);
    return angle < 0.0 ? angle + 2.0 * pi : angle;
}

// From a start angle to an end angle the way round that is asked for; where both are the same, a full turn.
double endAngle(double start, double end, bool clockwise) {
    if (clockwise) return start > end ? end : end - 2.0 * pi;
    return start < end ? end : end + 2.0 * pi;
}

} // namespace

// Without an aperture nothing is drawn and the point stays where it was.
void GerberReader::drawLine(Statement statement) {
    if (!state_.currentAperture) return;
    const double startX = currentX_, startY = currentY_;
    extractCoordinates(statement, currentX_, currentY_);
    const EDAOutline &aperture = *state_.currentAperture;
    if (aperture.empty() || limitReached_) return;
    aperture.setModelDimension(board_.getModelDimension());
    EDAOutline stroke(false);
    if (makeConvexStroke(aperture, startX, startY, currentX_, currentY_, stroke)) {
        addOutline(stroke, true);
        return;
    }
    const double dx = currentX_ - startX, dy = currentY_ - startY;
    const double length = std::sqrt(dx * dx + dy * dy);
    EDAOutline band(false);
    if (length > 0.0) {
        const Extent extent = extentAcross(aperture, std::atan2(dy, dx));
        const double normalX = -dy / length, normalY = dx / length;
        band.addPoint(0, startX + normalX * extent.high, startY + normalY * extent.high, 0.0);
        band.addPoint(0, startX + normalX * extent.low, startY + normalY * extent.low, 0.0);
        band.addPoint(0, currentX_ + normalX * extent.low, currentY_ + normalY * extent.low, 0.0);
        band.addPoint(0, currentX_ + normalX * extent.high, currentY_ + normalY * extent.high, 0.0);
    }
    addStroke(band, startX, startY);
}

// What overlaps of the band and the aperture at both ends is united. A stroke without length has no band.
void GerberReader::addStroke(const EDAOutline &band, double startX, double startY) {
    const EDAOutline &aperture = *state_.currentAperture;
    Aperture pieces;
    if (!band.empty()) pieces.addOutline(band);
    pieces.addOutline(movedCopy(aperture, startX, startY));
    pieces.addOutline(movedCopy(aperture, currentX_, currentY_));
    for (EDAOutline &piece : pieces)
        addOutline(piece, true);
}

// Intended: the band's width is that of the aperture along X, however the arc turns, which is right for round
// apertures; and its radius is what the file says, not the distance of the end point.
void GerberReader::drawCircle(Statement statement, bool clockwise) {
    if (!state_.currentAperture) return;
    const EDAOutline &aperture = *state_.currentAperture;
    const Arc arc = extractArc(statement, clockwise);
    const double startX = currentX_, startY = currentY_;
    currentX_ = arc.endX;
    currentY_ = arc.endY;
    if (aperture.empty() || limitReached_) return;
    aperture.setModelDimension(board_.getModelDimension());

    const double start = positiveAngle(startY - arc.centreY, startX - arc.centreX);
    const double end =
        endAngle(start, positiveAngle(arc.endY - arc.centreY, arc.endX - arc.centreX), clockwise);
    // One in 10 degrees; in this order of operations a whole number of them stays whole.
    const int steps = std::max(1, static_cast<int>(std::abs(end - start) * 18.0 / pi));
    const double radius = std::sqrt(arc.i * arc.i + arc.j * arc.j);
    Extent extent;
    for (const auto &point : aperture.getPoints(true))
        extent.unite(point.first);

    EDAOutline band(false);
    const auto addPoint = [&](int step, double r) {
        const double angle = start + step * (end - start) / steps;
        band.addPoint(0, arc.centreX + r * std::cos(angle), arc.centreY + r * std::sin(angle), 0.0);
    };
    for (int step = 0; step <= steps; ++step)
        addPoint(step, radius + extent.high);
    if (radius + extent.low < 0.0) {
        band.addPoint(0, arc.centreX, arc.centreY, 0.0);
    } else {
        for (int step = steps; step >= 0; --step)
            addPoint(step, radius + extent.low);
    }
    addStroke(band, startX, startY);
}

} // namespace EDA
