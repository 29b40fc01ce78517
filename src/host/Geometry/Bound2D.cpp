// The box of the plane: making, uniting and moving.
#include "host/Geometry/Bound2D.h"

namespace Geometry {

Bound2D::Bound2D(double xLow, double yLow, double xHigh, double yHigh) {
    if (!std::isfinite(xLow) || !std::isfinite(yLow) || !std::isfinite(xHigh) || !std::isfinite(yHigh))
        return;
    empty_ = false;
    xLow_ = xLow;
    yLow_ = yLow;
    xHigh_ = xHigh;
    yHigh_ = yHigh;
}

void Bound2D::unite(Bound2D const &other) {
    if (other.empty_) return;
    unite(other.xLow_, other.yLow_);
    unite(other.xHigh_, other.yHigh_);
}

void Bound2D::moveBy(double dx, double dy) {
    if (empty_) return;
    *this = Bound2D(xLow_ + dx, yLow_ + dy, xHigh_ + dx, yHigh_ + dy);
}

} // namespace Geometry
