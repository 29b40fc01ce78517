// An axis-parallel box of space.
#pragma once

#include <algorithm>
#include <cmath>

namespace Geometry {

// An axis-parallel box in space, in the caller's unit, with the same rules as `Bound2D`:
// the reset state holds nothing and reads as 0, points that are not finite are ignored.
class Bound {
public:
    // The reset state.
    Bound() = default;

    void reset() { *this = Bound(); }

    // Grows the box to hold the point.
    void unite(double x, double y, double z) {
        if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z)) return;
        double const point[3] = {x, y, z};
        for (int axis = 0; axis < 3; ++axis) {
            low_[axis] = empty_ ? point[axis] : std::min(low_[axis], point[axis]);
            high_[axis] = empty_ ? point[axis] : std::max(high_[axis], point[axis]);
        }
        empty_ = false;
    }

    // Grows the box to hold the other one.
    void unite(Bound const &other) {
        if (other.empty_) return;
        unite(other.low_[0], other.low_[1], other.low_[2]);
        unite(other.high_[0], other.high_[1], other.high_[2]);
    }

    // False in the reset state only: a flat box is valid.
    bool isValid() const { return !empty_; }

    // True when the point is inside, on the border, or outside by less than the tolerance.
    bool contains(double x, double y, double z, double tolerance) const {
        double const point[3] = {x, y, z};
        for (int axis = 0; axis < 3; ++axis) {
            double const gap = std::max(low_[axis] - point[axis], point[axis] - high_[axis]);
            if (!(gap <= 0.0 || gap < tolerance)) return false;
        }
        return !empty_;
    }

    double getXLow() const { return low_[0]; }
    double getYLow() const { return low_[1]; }
    double getZLow() const { return low_[2]; }
    double getXHigh() const { return high_[0]; }
    double getYHigh() const { return high_[1]; }
    double getZHigh() const { return high_[2]; }
    double getXSize() const { return high_[0] - low_[0]; }
    double getYSize() const { return high_[1] - low_[1]; }
    double getZSize() const { return high_[2] - low_[2]; }

private:
    bool empty_ = true;
    double low_[3] = {0.0, 0.0, 0.0};
    double high_[3] = {0.0, 0.0, 0.0};
};

} // namespace Geometry
