// Runs a drill file as a machine would: paths that are routed.
#include "fabrication/drills/DrillProgram.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace EDA::Fabrication {

void DrillProgram::plunge() {
    if (isDown_) return;
    isRouting_ = true;
    isDown_ = true;
    path_ = Path();
    path_.start = at_;
}

void DrillProgram::cut(Segment const &segment) {
    if (segment.motion == Motion::Line && segment.end == at_) return;
    if (path_.segments.size() >= mostMovesOfPath) return tally_.add(DrillTrouble::LongPath, line_);
    path_.segments.push_back(segment);
}

void DrillProgram::finishPath() {
    if (!isDown_) return;
    isDown_ = false;
    // Without a plunge of its own the tool was never down here.
    if (path_.segments.empty() && !scan_.hasPlunges) return;
    addSlot(std::exchange(path_, Path()));
}

// The centre of an arc of at most half a turn. A radius too small for its ends is taken as large enough.
Point DrillProgram::centreByRadius(Point const &end, double radius) const {
    const double dx = end.x - at_.x, dy = end.y - at_.y;
    const double chord = std::hypot(dx, dy);
    const Point middle{0.5 * (at_.x + end.x), 0.5 * (at_.y + end.y)};
    if (!(chord > 0.0)) return middle;
    const double height = std::sqrt(std::max(0.0, radius * radius - 0.25 * chord * chord));
    const double side = motion_ == Motion::CounterClockwise ? height / chord : -height / chord;
    return {middle.x - dy * side, middle.y + dx * side};
}

Segment DrillProgram::segmentTo(Point const &end, Block const &block) {
    if (motion_ == Motion::Line) return {end, Point(), Motion::Line};
    if (block.i || block.j)
        return {end, {at_.x + lengthOr(block.i, 0.0), at_.y + lengthOr(block.j, 0.0)}, motion_};
    const double radius = lengthOr(block.radius, 0.0);
    // An arc by its radius that ends where it starts has no length.
    if (radius > 0.0 && end != at_) return {end, centreByRadius(end, radius), motion_};
    if (!block.radius) tally_.add(DrillTrouble::ArcWithoutCentre, line_);
    return {end, Point(), Motion::Line};
}

void DrillProgram::move(Block const &block) {
    const Point end = placeOf(block.x, block.y);
    if (isPositioning_) {
        finishPath();
    } else {
        // Files that never tell the tool to go down rout with every move that is no position.
        if (!isDown_ && !scan_.hasPlunges) plunge();
        if (isDown_) cut(segmentTo(end, block));
    }
    at_ = end;
}

// A circle of its own, around the place.
void DrillProgram::circle(Block const &block) {
    const Point centre = placeOf(block.x, block.y);
    const double radius = std::fabs(lengthOr(block.radius, 0.0));
    Path path;
    path.start = {centre.x + radius, centre.y};
    if (radius > 0.0) path.segments.push_back({path.start, centre, block.circleMotion});
    addSlot(std::move(path));
    at_ = centre;
}

} // namespace EDA::Fabrication
