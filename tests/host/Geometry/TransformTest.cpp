// Conventions and exactness of transforms.
#include "host/Geometry/Transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using Geometry::Transform;
using Geometry::Vec3T;

namespace {

Vec3T<double> image(Transform const &transform, double x, double y, double z) {
    transform.transform(x, y, z);
    return {x, y, z};
}

void expectPoint(Vec3T<double> const &point, double x, double y, double z) {
    EXPECT_EQ(point.x, x);
    EXPECT_EQ(point.y, y);
    EXPECT_EQ(point.z, z);
}

void expectNear(Transform const &a, Transform const &b, double tolerance) {
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            EXPECT_NEAR(a.orientation(row, column), b.orientation(row, column), tolerance);
    EXPECT_NEAR(a.getTranslation().x, b.getTranslation().x, tolerance);
    EXPECT_NEAR(a.getTranslation().y, b.getTranslation().y, tolerance);
    EXPECT_NEAR(a.getTranslation().z, b.getTranslation().z, tolerance);
}

TEST(Transform, DefaultIsTheIdentity) { expectPoint(image(Transform(), 1.5, -2.0, 3.0), 1.5, -2.0, 3.0); }

TEST(Transform, QuarterTurnsAreRightHandedAndExact) {
    expectPoint(image(Transform::createRotation(90.0, Transform::ZAxis), 1.0, 0.0, 0.0), 0.0, 1.0, 0.0);
    expectPoint(image(Transform::createRotation(90.0, Transform::YAxis), 0.0, 0.0, 1.0), 1.0, 0.0, 0.0);
    expectPoint(image(Transform::createRotation(90.0, Transform::XAxis), 0.0, 1.0, 0.0), 0.0, 0.0, 1.0);
}

TEST(Transform, AxesAreNumberedFromZero) {
    EXPECT_EQ(static_cast<int>(Transform::XAxis), 0);
    EXPECT_EQ(static_cast<int>(Transform::YAxis), 1);
    EXPECT_EQ(static_cast<int>(Transform::ZAxis), 2);
}

TEST(Transform, MultiplesOfNinetyGiveWholeNumbersWithoutMinusZero) {
    double const cosines[4] = {1.0, 0.0, -1.0, 0.0};
    for (int axis = 0; axis < 3; ++axis)
        for (int quarter = -9; quarter <= 9; ++quarter) {
            Transform const turn =
                Transform::createRotation(90.0 * quarter, static_cast<Transform::Axis>(axis));
            EXPECT_EQ(turn.orientation((axis + 1) % 3, (axis + 1) % 3), cosines[(quarter + 12) % 4]);
            for (int i = 0; i < 9; ++i) {
                double const entry = turn.orientation(i / 3, i % 3);
                EXPECT_TRUE(entry == 0.0 || entry == 1.0 || entry == -1.0);
                EXPECT_FALSE(entry == 0.0 && std::signbit(entry));
            }
        }
}

TEST(Transform, LargeMultiplesOfNinetyAreExactToo) {
    Transform const turn = Transform::createRotation(360.0 * 1e9 + 90.0, Transform::ZAxis);
    EXPECT_EQ(turn.orientation(0, 0), 0.0);
    EXPECT_EQ(turn.orientation(1, 0), 1.0);
}

TEST(Transform, ThirtyDegreesTurnsAnticlockwise) {
    Transform const turn = Transform::createRotation(30.0, Transform::ZAxis);
    EXPECT_NEAR(turn.orientation(0, 0), std::sqrt(0.75), 1e-15);
    EXPECT_NEAR(turn.orientation(1, 0), 0.5, 1e-15);
    EXPECT_NEAR(turn.orientation(0, 1), -0.5, 1e-15);
}

TEST(Transform, TurnAboutYReadsInTheXZPlane) {
    Transform const turn = Transform::createRotation(-30.0, Transform::YAxis);
    EXPECT_NEAR(turn.orientation(0, 0), std::sqrt(0.75), 1e-15);
    EXPECT_NEAR(turn.orientation(0, 2), -0.5, 1e-15);
    EXPECT_NEAR(turn.orientation(2, 0), 0.5, 1e-15);
    EXPECT_NEAR(turn.orientation(2, 2), std::sqrt(0.75), 1e-15);
}

TEST(Transform, FlipBeforeTurnKeepsTheLeftFactorLast) {
    Transform const flip = Transform::createRotation(180.0, Transform::ZAxis);
    Transform const both = Transform::multiply(flip, Transform::createRotation(-30.0, Transform::YAxis));
    EXPECT_NEAR(both.orientation(0, 0), -std::sqrt(0.75), 1e-15);
    EXPECT_NEAR(both.orientation(0, 2), 0.5, 1e-15);
    EXPECT_NEAR(both.orientation(2, 0), 0.5, 1e-15);
    EXPECT_NEAR(both.orientation(2, 2), std::sqrt(0.75), 1e-15);
}

TEST(Transform, MultiplyAppliesTheRightFactorFirst) {
    Transform const move = Transform::createTranslation(1.0, 0.0, 0.0);
    Transform const turn = Transform::createRotation(90.0, Transform::ZAxis);
    expectPoint(image(Transform::multiply(turn, move), 0.0, 0.0, 0.0), 0.0, 1.0, 0.0);
    expectPoint(image(Transform::multiply(move, turn), 0.0, 0.0, 0.0), 1.0, 0.0, 0.0);
}

TEST(Transform, ProductsHaveNoMinusZero) {
    Transform const flip = Transform::createRotation(180.0, Transform::ZAxis);
    for (double angle : {0.0, 90.0, 180.0, 270.0}) {
        Transform const both = Transform::multiply(flip, Transform::createRotation(angle, Transform::YAxis));
        for (int i = 0; i < 9; ++i) {
            double const entry = both.orientation(i / 3, i % 3);
            EXPECT_FALSE(entry == 0.0 && std::signbit(entry)) << angle << ": " << i;
        }
    }
}

TEST(Transform, PointsHaveNoMinusZero) {
    Vec3T<double> point(0.0, 0.0, -0.0);
    Transform::createRotation(180.0, Transform::ZAxis).transform(point);
    EXPECT_FALSE(std::signbit(point.x));
    EXPECT_FALSE(std::signbit(point.y));
    EXPECT_FALSE(std::signbit(point.z));
}

TEST(Transform, TriplesOfTheMatrixAreImagesOfTheAxes) {
    double const matrix[9] = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 10.0};
    Transform const transform = Transform::createRotation(matrix);
    expectPoint(image(transform, 1.0, 0.0, 0.0), 1.0, 2.0, 3.0);
    expectPoint(image(transform, 0.0, 1.0, 0.0), 4.0, 5.0, 6.0);
    EXPECT_EQ(transform.orientation(2, 0), 3.0);
    EXPECT_EQ(transform.orientation(0, 2), 7.0);
}

TEST(Transform, TurnAboutADirectionAgreesWithTheAxes) {
    expectNear(Transform::createRotation(30.0, 0.0, 0.0, 2.0),
               Transform::createRotation(30.0, Transform::ZAxis), 1e-15);
    expectNear(Transform::createRotation(-75.0, 0.0, 3.0, 0.0),
               Transform::createRotation(-75.0, Transform::YAxis), 1e-15);
    Vec3T<double> const cycled = image(Transform::createRotation(120.0, 1.0, 1.0, 1.0), 1.0, 0.0, 0.0);
    EXPECT_NEAR(cycled.x, 0.0, 1e-15);
    EXPECT_NEAR(cycled.y, 1.0, 1e-15);
}

TEST(Transform, MeaninglessTurnsAreTheIdentity) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    expectNear(Transform::createRotation(nan, Transform::ZAxis), Transform(), 0.0);
    expectNear(Transform::createRotation(30.0, 0.0, 0.0, 0.0), Transform(), 0.0);
    expectNear(Transform::createRotation(30.0, nan, 0.0, 1.0), Transform(), 0.0);
    expectNear(Transform::createRotation(1.0 / 0.0, 0.0, 0.0, 1.0), Transform(), 0.0);
}

TEST(Transform, InverseUndoesTurnAndShift) {
    Transform const both = Transform::multiply(Transform::createTranslation(3.0, -4.0, 5.0),
                                               Transform::createRotation(30.0, Transform::YAxis));
    expectNear(Transform::multiply(both, both.inverse()), Transform(), 1e-15);
    expectNear(Transform::multiply(both.inverse(), both), Transform(), 2e-15);
}

TEST(Transform, InverseOfAMirrorIsTheMirror) {
    double const mirror[9] = {-1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0};
    Transform transform = Transform::createRotation(mirror);
    transform.setTranslation(2.0, 0.0, 0.0);
    expectPoint(image(transform, 5.0, 1.0, 1.0), -3.0, 1.0, 1.0);
    expectPoint(image(transform.inverse(), -3.0, 1.0, 1.0), 5.0, 1.0, 1.0);
}

TEST(Transform, InverseOfAShiftIsExact) {
    Transform const back = Transform::createTranslation(0.1, 1e300, -7.0).inverse();
    expectPoint(back.getTranslation(), -0.1, -1e300, 7.0);
}

TEST(Transform, InverseOfASingularTransformIsTheIdentity) {
    double const flat[9] = {1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0};
    expectNear(Transform::createRotation(flat).inverse(), Transform(), 0.0);
}

TEST(Transform, SetTranslationLeavesTheTurnAlone) {
    Transform turn = Transform::createRotation(90.0, Transform::ZAxis);
    turn.setTranslation(1.0, 2.0, 3.0);
    turn.setTranslation(10.0, 0.0, 0.0);
    expectPoint(image(turn, 1.0, 0.0, 0.0), 10.0, 1.0, 0.0);
}

TEST(Transform, OrientationOutsideTheMatrixIsZero) {
    EXPECT_EQ(Transform().orientation(3, 0), 0.0);
    EXPECT_EQ(Transform().orientation(0, -1), 0.0);
}

TEST(Transform, PiIsThatOfTheArctangent) { EXPECT_EQ(Transform::pi, std::atan(1.0) * 4.0); }

} // namespace
