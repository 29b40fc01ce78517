// A plain triple of coordinates in space.
#pragma once

namespace Geometry {

// A point or a vector of space. The unit is the caller's.
template <typename T> struct Vec3T {
    T x = T();
    T y = T();
    T z = T();

    Vec3T() = default;
    Vec3T(T xValue, T yValue, T zValue) : x(xValue), y(yValue), z(zValue) {}
};

} // namespace Geometry
