// A transform of space: turning, mirroring and shifting.
#pragma once

#include "host/Geometry/Vec3T.h"

namespace Geometry {

// An affine transform of space, p' = M p + t with column vectors.
//
// Conventions: right-handed axes, angles in degrees, positive anticlockwise seen from the
// positive end of the axis. So +90 about Z takes (1, 0, 0) to (0, 1, 0), and +90 about Y
// takes (0, 0, 1) to (1, 0, 0). Multiples of 90 degrees give exactly 0, 1 and -1, since
// the numbers are written to files. No result is ever -0.
class Transform {
public:
    enum Axis { XAxis = 0, YAxis = 1, ZAxis = 2 };

    static constexpr double pi = 3.141592653589793238462643383279502884;

    // The identity.
    Transform() = default;

    // Turning about a coordinate axis. An angle that is not finite counts as 0.
    static Transform createRotation(double degrees, Axis axis);

    // Turning by `degrees` about the direction (`x`, `y`, `z`), of any length but 0. A
    // direction that is 0 or not finite, or an angle that is not finite, gives the identity.
    static Transform createRotation(double degrees, double x, double y, double z);

    // Linear part from nine numbers: matrix[3 * i + j] is component j of the image of axis
    // i, so the three triples are the columns of M. Not checked to be a rotation: mirrors
    // and scalings pass as they are.
    static Transform createRotation(double const *matrix);

    static Transform createTranslation(double x, double y, double z);

    // The product a * b: `b` acts first, then `a`.
    static Transform multiply(Transform const &a, Transform const &b);

    // The general inverse, of mirrors and scalings too. A transform that has none (its
    // determinant is 0 or not finite) gives the identity.
    Transform inverse() const;

    // Replaces the shift and leaves the linear part alone.
    void setTranslation(double x, double y, double z);

    // Replaces the point by its image.
    void transform(double &x, double &y, double &z) const;
    void transform(Vec3T<double> &point) const;

    // Entry of M: component `row` of the image of axis `column`. Indices are 0 to 2; any
    // other gives 0.
    double orientation(int row, int column) const;

    // The image of the origin.
    Vec3T<double> getTranslation() const { return {shift_[0], shift_[1], shift_[2]}; }

private:
    double linear_[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
    double shift_[3] = {0.0, 0.0, 0.0};
};

} // namespace Geometry
