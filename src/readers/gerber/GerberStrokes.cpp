// Strokes: the area that an aperture sweeps.
#include "host/Geometry/Transform.h"
#include "readers/gerber/Aperture.h"
#include "readers/gerber/GerberReader.h"
#include "readers/gerber/StrokeShape.h"

#include <algorithm>
#include <cmath>
#include <iterator>

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

// The everyday case: the band meets the aperture at both ends, and all of it is one piece. It comes out as
// when one is added after the other, in half of the time. Otherwise gives false.
bool uniteAtOnce(EDAOutline &band, EDAOutline first, EDAOutline last) {
    for (const EDAOutline *end : {&first, &last}) {
        if (end->isHole() || end->numInternalOutlines() > 0 || !band.intersectsHole(*end)) return false;
        const EDAOutline::PointList &points = end->getPoints(true);
        const auto isFinite = [](const auto &p) { return std::isfinite(p.first) && std::isfinite(p.second); };
        if (!std::all_of(points.begin(), points.end(), isFinite)) return false;
    }
    std::vector<EDAOutline> others;
    std::size_t count = 0;
    return band.mergeOutlines({&first, &last}, others, nullptr, count) && others.empty();
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
    if (currentX_ == startX && currentY_ == startY) {
        drawDot(Interpolation::Linear);
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
std::vector<EDAOutline> GerberReader::makeStroke(const EDAOutline &band, double startX, double startY,
                                                 double endX, double endY) {
    const EDAOutline &aperture = *state_.currentAperture;
    const EDAOutline first = movedCopy(aperture, startX, startY), last = movedCopy(aperture, endX, endY);
    EDAOutline whole(band);
    if (uniteAtOnce(whole, first, last)) return {whole};
    WorkBudget budget = strokeWork_.share();
    Aperture pieces(&budget);
    if (!band.empty()) pieces.addOutline(band);
    pieces.addOutline(first);
    pieces.addOutline(last);
    strokeWork_.take(budget);
    if (budget.isUsedUp()) {
        tellOnce(strokeLimitTold_, "Strokes that take too long to put together are left out.");
        return {};
    }
    return {std::make_move_iterator(pieces.begin()), std::make_move_iterator(pieces.end())};
}

void GerberReader::addStroke(const EDAOutline &band, double startX, double startY) {
    for (EDAOutline &piece : makeStroke(band, startX, startY, currentX_, currentY_))
        addOutline(piece, true);
}

// A stroke that goes nowhere. Files are full of them, as each "G01" that stands alone repeats a draw. The
// shape depends on the aperture alone, so it is made once, at the origin, and copied from then on.
void GerberReader::drawDot(Interpolation interpolation) {
    const auto [dot, isNew] = state_.dots.try_emplace({state_.currentAperture, interpolation});
    if (isNew) {
        EDAOutline band(false);
        if (interpolation != Interpolation::Linear) {
            band = makeArcBand(*state_.currentAperture, Arc{}, 0.0, 0.0,
                               interpolation == Interpolation::Clockwise);
        }
        for (EDAOutline &piece : makeStroke(band, 0.0, 0.0, 0.0, 0.0))
            dot->second.push_back({std::move(piece), {}});
    }
    for (Dot &each : dot->second)
        addShape(each.outline, each.clean);
}

void GerberReader::drawCircle(Statement statement, bool clockwise) {
    if (!state_.currentAperture) return;
    const EDAOutline &aperture = *state_.currentAperture;
    const Arc arc = extractArc(statement, clockwise);
    const double startX = currentX_, startY = currentY_;
    currentX_ = arc.endX;
    currentY_ = arc.endY;
    if (aperture.empty() || limitReached_) return;
    aperture.setModelDimension(board_.getModelDimension());
    if (arc.i == 0.0 && arc.j == 0.0 && arc.endX == startX && arc.endY == startY) {
        drawDot(clockwise ? Interpolation::Clockwise : Interpolation::Anticlockwise);
        return;
    }
    addStroke(makeArcBand(aperture, arc, startX, startY, clockwise), startX, startY);
}

// Intended: the band's width is that of the aperture along X, however the arc turns, which is right for round
// apertures; and its radius is what the file says, not the distance of the end point.
EDAOutline GerberReader::makeArcBand(const EDAOutline &aperture, const Arc &arc, double startX, double startY,
                                     bool clockwise) {
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
    return band;
}

} // namespace EDA
