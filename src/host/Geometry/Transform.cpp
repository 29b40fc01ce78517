// Making, joining, inverting and applying transforms of space.
#include "host/Geometry/Transform.h"

#include <cmath>

namespace Geometry {

namespace {

// Turns -0 into 0 and leaves every other number alone.
double plainZero(double value) { return value + 0.0; }

struct SineCosine {
    double sine;
    double cosine;
};

// Works on the rest within +-45 degrees of a quarter turn, so whole quarter turns are exact.
SineCosine sineCosine(double degrees) {
    if (!std::isfinite(degrees)) return {0.0, 1.0};
    double const turn = std::fmod(degrees, 360.0);
    int const quarter = static_cast<int>(std::lround(turn / 90.0));
    double const rest = (turn - 90.0 * quarter) * (Transform::pi / 180.0);
    double const s = std::sin(rest);
    double const c = std::cos(rest);
    switch (((quarter % 4) + 4) % 4) {
    case 0:
        return {plainZero(s), c};
    case 1:
        return {c, plainZero(-s)};
    case 2:
        return {plainZero(-s), -c};
    default:
        return {-c, plainZero(s)};
    }
}

} // namespace

Transform Transform::createRotation(double degrees, Axis axis) {
    Transform result;
    if (axis != XAxis && axis != YAxis && axis != ZAxis) return result;
    SineCosine const sc = sineCosine(degrees);
    int const first = (axis + 1) % 3; // the turn takes `first` towards `second`
    int const second = (axis + 2) % 3;
    result.linear_[first][first] = sc.cosine;
    result.linear_[second][second] = sc.cosine;
    result.linear_[second][first] = sc.sine;
    result.linear_[first][second] = plainZero(-sc.sine);
    return result;
}

Transform Transform::createRotation(double degrees, double x, double y, double z) {
    double const length = std::hypot(x, y, z);
    if (!(length > 0.0) || !std::isfinite(length)) return Transform();
    double const n[3] = {x / length, y / length, z / length};
    SineCosine const sc = sineCosine(degrees);
    Transform result;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) {
            double const diagonal = row == column ? sc.cosine : 0.0;
            result.linear_[row][column] = n[row] * n[column] * (1.0 - sc.cosine) + diagonal;
        }
    for (int axis = 0; axis < 3; ++axis) {
        int const first = (axis + 1) % 3;
        int const second = (axis + 2) % 3;
        result.linear_[second][first] = plainZero(result.linear_[second][first] + n[axis] * sc.sine);
        result.linear_[first][second] = plainZero(result.linear_[first][second] - n[axis] * sc.sine);
    }
    return result;
}

Transform Transform::createRotation(double const *matrix) {
    Transform result;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            result.linear_[row][column] = plainZero(matrix[3 * column + row]);
    return result;
}

Transform Transform::createTranslation(double x, double y, double z) {
    Transform result;
    result.setTranslation(x, y, z);
    return result;
}

Transform Transform::multiply(Transform const &a, Transform const &b) {
    Transform result;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) {
            double sum = 0.0; // starting from 0 keeps -0 out
            for (int k = 0; k < 3; ++k)
                sum += a.linear_[row][k] * b.linear_[k][column];
            result.linear_[row][column] = sum;
        }
    Vec3T<double> shift = b.getTranslation();
    a.transform(shift);
    result.setTranslation(shift.x, shift.y, shift.z);
    return result;
}

Transform Transform::inverse() const {
    double const(&m)[3][3] = linear_;
    double cofactor[3][3];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            int const r1 = (i + 1) % 3, r2 = (i + 2) % 3, c1 = (j + 1) % 3, c2 = (j + 2) % 3;
            cofactor[i][j] = m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
        }
    double const determinant = m[0][0] * cofactor[0][0] + m[0][1] * cofactor[0][1] + m[0][2] * cofactor[0][2];
    if (determinant == 0.0 || !std::isfinite(determinant)) return Transform();
    Transform result;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            result.linear_[i][j] = plainZero(cofactor[j][i] / determinant);
    Vec3T<double> shift = getTranslation();
    result.transform(shift);
    result.setTranslation(-shift.x, -shift.y, -shift.z);
    return result;
}

void Transform::setTranslation(double x, double y, double z) {
    shift_[0] = plainZero(x);
    shift_[1] = plainZero(y);
    shift_[2] = plainZero(z);
}

void Transform::transform(double &x, double &y, double &z) const {
    double const point[3] = {x, y, z};
    double image[3];
    for (int row = 0; row < 3; ++row)
        image[row] = plainZero(linear_[row][0] * point[0] + linear_[row][1] * point[1] +
                               linear_[row][2] * point[2] + shift_[row]);
    x = image[0];
    y = image[1];
    z = image[2];
}

void Transform::transform(Vec3T<double> &point) const { transform(point.x, point.y, point.z); }

double Transform::orientation(int row, int column) const {
    if (row < 0 || row > 2 || column < 0 || column > 2) return 0.0;
    return linear_[row][column];
}

} // namespace Geometry
