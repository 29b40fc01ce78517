// Moves, draws and flashes, and the contours of regions.
#include "readers/gerber/GerberReader.h"

namespace EDA {

namespace {

struct Signs {
    double i;
    double j;
};

// In single quadrant mode the offsets to the centre have no signs; they follow from where the arc goes.
Signs quadrantSigns(double dx, double dy, bool clockwise) {
    Signs signs{};
    if (dx < 0.0) {
        signs = dy > 0.0 ? Signs{1.0, 1.0} : Signs{-1.0, 1.0};
    } else {
        signs = dy < 0.0 ? Signs{-1.0, -1.0} : Signs{1.0, -1.0};
    }
    return clockwise ? signs : Signs{-signs.i, -signs.j};
}

} // namespace

// In a region it ends a contour and starts the next, each an outline of its own.
void GerberReader::move(Statement statement) {
    state_.lastOperation = Operation::Move;
    extractCoordinates(statement, currentX_, currentY_);
    if (!state_.inRegion) return;
    if (!state_.regionOutline.empty()) {
        addOutline(state_.regionOutline, false);
        state_.regionOutline.clear();
    }
    state_.regionOutline.setHole(false); // a clear region leaves it set
    state_.regionOutline.addPoint(0, currentX_, currentY_, 0.0);
}

void GerberReader::draw(Statement statement) {
    if (state_.interpolation == Interpolation::Linear) {
        state_.inRegion ? addLineSegmentToRegion(statement) : drawLine(statement);
    } else {
        const bool clockwise = state_.interpolation == Interpolation::Clockwise;
        state_.inRegion ? addCircleSegmentToRegion(statement, clockwise) : drawCircle(statement, clockwise);
    }
    state_.lastOperation = Operation::Draw;
}

// Without an aperture even the point stays where it was.
void GerberReader::flash(Statement statement) {
    state_.lastOperation = Operation::Flash;
    if (!state_.currentAperture) return;
    extractCoordinates(statement, currentX_, currentY_);
    if (limitReached_) return;
    addShape(*state_.currentAperture, state_.flashes[state_.currentAperture]);
}

void GerberReader::addLineSegmentToRegion(Statement statement) {
    extractCoordinates(statement, currentX_, currentY_);
    if (state_.regionOutline.numPoints() > limits_.points) return; // the whole will be left out
    state_.regionOutline.addPoint(0, currentX_, currentY_, 0.0);
}

// A region keeps a true arc.
void GerberReader::addCircleSegmentToRegion(Statement statement, bool clockwise) {
    const Arc arc = extractArc(statement, clockwise);
    if (state_.regionOutline.numPoints() > limits_.points) return;
    state_.regionOutline.addPoint(0, arc.endX, arc.endY, arc.centreX, arc.centreY, clockwise);
    currentX_ = arc.endX;
    currentY_ = arc.endY;
}

GerberReader::Arc GerberReader::extractArc(Statement statement, bool clockwise) const {
    Arc arc{};
    arc.endX = currentX_;
    arc.endY = currentY_;
    extractCoordinates(statement, arc.endX, arc.endY, arc.i, arc.j);
    Signs signs{1.0, 1.0};
    if (state_.quadrants == Quadrants::Single) {
        signs = quadrantSigns(arc.endX - currentX_, arc.endY - currentY_, clockwise);
    }
    arc.centreX = currentX_ + signs.i * arc.i;
    arc.centreY = currentY_ + signs.j * arc.j;
    return arc;
}

} // namespace EDA
