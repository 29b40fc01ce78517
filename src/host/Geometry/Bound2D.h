// An axis-parallel box of the plane.
#pragma once

#include "host/Geometry/Vec2T.h"

#include <algorithm>

namespace Geometry {

// An axis-parallel box in the plane, in the caller's unit.
//
// A default box is in the reset state: it holds nothing, it is not valid at any
// tolerance, and its limits, sizes and diagonal read as 0, so that no sentinel value
// can leak into a model. The first point united sets all four limits.
//
// Numbers that are not finite never get in: `unite` ignores such a point, and a box made
// from or moved by such numbers is in the reset state.
class Bound2D {
public:
    // Tolerance of a test whose caller states none.
    static constexpr double defaultTolerance = 1e-9;

    // The reset state.
    Bound2D() = default;

    // A box with these limits. They are kept as they are, also when a low one lies above
    // its high one; `isValid` then tells whether the tolerance forgives it.
    Bound2D(double xLow, double yLow, double xHigh, double yHigh);

    // Back to the reset state.
    void reset() { *this = Bound2D(); }

    // Grows the box to hold the point. A point with a coordinate that is not finite is ignored.
    void unite(double x, double y) {
        if (!std::isfinite(x) || !std::isfinite(y)) return;
        if (empty_) {
            *this = Bound2D(x, y, x, y);
            return;
        }
        xLow_ = std::min(xLow_, x);
        yLow_ = std::min(yLow_, y);
        xHigh_ = std::max(xHigh_, x);
        yHigh_ = std::max(yHigh_, y);
    }

    // Grows the box to hold the other one. A box in the reset state adds nothing.
    void unite(Bound2D const &other);

    // Shifts the box. Without effect on the reset state.
    void moveBy(double dx, double dy);

    // True when the box is not in the reset state and high - low > -tolerance in both
    // directions. A box without width is valid: the extent of a flat shape still counts.
    bool isValid(double tolerance = defaultTolerance) const {
        return !empty_ && xHigh_ - xLow_ > -tolerance && yHigh_ - yLow_ > -tolerance;
    }

    // True when the boxes meet or lie less than the tolerance apart in each direction.
    bool overlaps(Bound2D const &other, double tolerance = defaultTolerance) const {
        return !empty_ && !other.empty_ && reaches(xLow_ - other.xHigh_, tolerance) &&
               reaches(other.xLow_ - xHigh_, tolerance) && reaches(yLow_ - other.yHigh_, tolerance) &&
               reaches(other.yLow_ - yHigh_, tolerance);
    }

    // True when the other box sticks out of this one by less than the tolerance.
    bool contains(Bound2D const &other, double tolerance = defaultTolerance) const {
        return !empty_ && !other.empty_ && reaches(xLow_ - other.xLow_, tolerance) &&
               reaches(other.xHigh_ - xHigh_, tolerance) && reaches(yLow_ - other.yLow_, tolerance) &&
               reaches(other.yHigh_ - yHigh_, tolerance);
    }

    // True when the point is inside, on the border, or outside by less than the tolerance.
    bool contains(double x, double y, double tolerance = defaultTolerance) const {
        return !empty_ && reaches(xLow_ - x, tolerance) && reaches(x - xHigh_, tolerance) &&
               reaches(yLow_ - y, tolerance) && reaches(y - yHigh_, tolerance);
    }

    double getXLow() const { return xLow_; }
    double getYLow() const { return yLow_; }
    double getXHigh() const { return xHigh_; }
    double getYHigh() const { return yHigh_; }
    double getXSize() const { return xHigh_ - xLow_; }
    double getYSize() const { return yHigh_ - yLow_; }

    // The vector from the low corner to the high corner; (0, 0) in the reset state.
    Vec2T<double> getDiagonal() const { return {getXSize(), getYSize()}; }

private:
    // A border is no gap even at tolerance 0; a gap as large as the tolerance is one.
    static bool reaches(double gap, double tolerance) { return gap <= 0.0 || gap < tolerance; }

    bool empty_ = true;
    double xLow_ = 0.0;
    double yLow_ = 0.0;
    double xHigh_ = 0.0;
    double yHigh_ = 0.0;
};

} // namespace Geometry
