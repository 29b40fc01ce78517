// A plain pair of coordinates in the plane.
#pragma once

#include <cmath>

namespace Geometry {

// A point or a vector of the plane. The unit is the caller's.
template <typename T> struct Vec2T {
    T x = T();
    T y = T();

    Vec2T() = default;
    Vec2T(T xValue, T yValue) : x(xValue), y(yValue) {}

    // Length of the vector; never overflows between finite results.
    T length() const { return std::hypot(x, y); }
};

} // namespace Geometry
