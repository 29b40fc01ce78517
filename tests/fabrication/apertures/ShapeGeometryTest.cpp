// Turned shapes, points inside and rings.
#include "ShapeSupport.h"

using namespace ShapeTests;

namespace {

ApertureTransform turned(double degrees) {
    ApertureTransform transform;
    transform.rotation = degrees;
    return transform;
}

ApertureTransform scaled(double x, double y) {
    ApertureTransform transform;
    transform.scaleX = x;
    transform.scaleY = y;
    return transform;
}

// A right-angled corner whose arms are 4 and 2 long and 1 wide.
Shape corner() { return macro({"22,1,4,1,0,0,0", "22,1,1,2,0,0,0"}); }

} // namespace

TEST(TransformedShape, ATurnedCircleStaysACircle) {
    EXPECT_EQ(transformed(standard("C", {1}), turned(33)).kind, Shape::Kind::Circle);
}

TEST(TransformedShape, AScaledCircleGrows) {
    EXPECT_EQ(transformed(standard("C", {1}), scaled(2, 2)).width, 2.0);
}

TEST(TransformedShape, ACircleScaledUnevenlyIsAnEllipse) {
    Shape const shape = transformed(standard("C", {2}), scaled(2, 1));
    EXPECT_EQ(shape.kind, Shape::Kind::Pieces);
    EXPECT_NEAR(areaOf(shape), 2 * pi, 0.05);
    EXPECT_TRUE(covers(shape, 1.9, 0));
    EXPECT_FALSE(covers(shape, 0, 1.1));
}

TEST(TransformedShape, ARectangleTurnedByAQuarterSwapsItsSides) {
    for (double const angle : {90.0, -90.0, 270.0, 450.0}) {
        Shape const shape = transformed(standard("R", {2, 1}), turned(angle));
        EXPECT_EQ(shape.kind, Shape::Kind::Rectangle) << angle;
        EXPECT_EQ(shape.width, 1.0);
        EXPECT_EQ(shape.height, 2.0);
    }
}

TEST(TransformedShape, ARectangleTurnedByAHalfIsTheSame) {
    Shape const shape = transformed(standard("R", {2, 1}), turned(180));
    EXPECT_EQ(shape.kind, Shape::Kind::Rectangle);
    EXPECT_EQ(shape.width, 2.0);
}

TEST(TransformedShape, AnyOtherTurnMakesPieces) {
    Shape const shape = transformed(standard("R", {4, 1}), turned(45));
    EXPECT_EQ(shape.kind, Shape::Kind::Pieces);
    EXPECT_NEAR(areaOf(shape), 4.0, 1e-9);
    EXPECT_TRUE(covers(shape, 1.3, 1.3));
    EXPECT_FALSE(covers(shape, 1.3, -1.3));
}

TEST(TransformedShape, ScalingComesBeforeTurning) {
    ApertureTransform transform = scaled(4, 1);
    transform.rotation = 90;
    Shape const shape = transformed(standard("R", {1, 1}), transform);
    EXPECT_EQ(shape.width, 1.0);
    EXPECT_EQ(shape.height, 4.0);
}

TEST(TransformedShape, AnObroundScaledUnevenlyHasEllipticEnds) {
    Shape const shape = transformed(standard("O", {2, 1}), scaled(1, 2));
    EXPECT_EQ(shape.kind, Shape::Kind::Pieces);
    EXPECT_NEAR(areaOf(shape), 2 * (1 + pi / 4), 0.03);
}

TEST(TransformedShape, MirroringComesBeforeTurning) {
    ApertureTransform transform = turned(90);
    transform.mirrorX = true;
    Shape const shape = transformed(corner(), transform);
    EXPECT_TRUE(covers(shape, -0.5, -3.5));
    EXPECT_TRUE(covers(shape, -1.5, -0.5));
    EXPECT_NEAR(areaOf(shape), 5.0, 1e-9);
}

TEST(TransformedShape, MirroredSolidsStillRunCounterClockwise) {
    ApertureTransform transform;
    transform.mirrorY = true;
    Shape const shape = transformed(macro({"21,1,4,4,1,1,0", "21,0,2,2,1,1,0"}), transform);
    EXPECT_GT(signedArea(shape.pieces[0].outer), 0.0);
    EXPECT_LT(signedArea(shape.pieces[0].holes[0]), 0.0);
    EXPECT_TRUE(covers(shape, 1, -2.5));
}

TEST(TransformedShape, KeepsItsIdNameAndFunction) {
    Shape shape = corner();
    shape.id = 5;
    shape.function = "SMDPad";
    Shape const result = transformed(shape, turned(30));
    EXPECT_EQ(result.id, 5U);
    EXPECT_EQ(result.function, "SMDPad");
    EXPECT_EQ(result.name, "M");
}

TEST(TransformedShape, AScaleOfZeroOrNoNumberLeavesNothing) {
    EXPECT_TRUE(transformed(standard("C", {1}), scaled(0, 1)).isNothing());
    EXPECT_TRUE(transformed(standard("C", {1}), turned(std::nan(""))).isNothing());
    EXPECT_TRUE(transformed(standard("C", {1e6}), scaled(1e305, 1e305)).isNothing());
    EXPECT_TRUE(transformed(corner(), scaled(1e308, 1e308)).isNothing());
}

TEST(PointInside, OfADiscIsItsCentre) { EXPECT_EQ(pointInside(standard("C", {1})), Point{}); }

TEST(PointInside, LiesInTheMaterialOfARing) {
    Shape const shape = standard("C", {2, 1});
    Point const p = pointInside(shape);
    EXPECT_TRUE(covers(shape, p.x, p.y));
}

TEST(PointInside, LiesInTheLargestOfSeveralSolids) {
    Point const p = pointInside(macro({"1,1,1,0,0", "1,1,3,5,5"}));
    EXPECT_LT(std::hypot(p.x - 5, p.y - 5), 1.5);
}

TEST(PointInside, LiesInTheMaterialOfACorner) {
    Point const p = pointInside(corner());
    EXPECT_TRUE(covers(corner(), p.x, p.y));
}

TEST(PointInside, OfNothingIsTheOrigin) { EXPECT_EQ(pointInside(Shape()), Point{}); }

TEST(FindPointInside, OfAContourLiesInIt) {
    Path const contour{{0, 0}, {line(4, 0), line(4, 1), line(1, 1), line(1, 3), line(0, 3)}};
    Point p;
    ASSERT_TRUE(findPointInside(contour, p));
    EXPECT_TRUE(encloses(toRing(contour), p));
}

TEST(FindPointInside, WithoutAreaThereIsNone) {
    Point p;
    EXPECT_FALSE(findPointInside({{0, 0}, {line(4, 0), line(0, 0)}}, p));
    EXPECT_FALSE(findPointInside({{0, 0}, {}}, p));
}

TEST(ToRing, ArcsBecomeEdgesWithinTheTolerance) {
    Path const contour{{5, 0}, {arc(Motion::CounterClockwise, {-5, 0}, {0, 0}), line(5, 0)}};
    Ring const ring = toRing(contour);
    EXPECT_NEAR(signedArea(ring), pi * 12.5, 5 * pi * chordTolerance);
    for (Point const &p : ring)
        EXPECT_NEAR(std::hypot(p.x, p.y), 5.0, 1e-9);
    EXPECT_GT(toRing(contour, 0.0005).size(), 2 * ring.size());
}

TEST(ToRing, ClockwiseArcsGoTheOtherWay) {
    Path const contour{{5, 0}, {arc(Motion::Clockwise, {-5, 0}, {0, 0}), line(5, 0)}};
    EXPECT_LT(signedArea(toRing(contour)), -39.0);
}

TEST(ToRing, AnArcThatEndsWhereItStartsIsAFullTurn) {
    Path const contour{{5, 0}, {arc(Motion::CounterClockwise, {5, 0}, {0, 0})}};
    EXPECT_NEAR(signedArea(toRing(contour)), pi * 25, 0.2);
}

TEST(ToRing, DoesNotRepeatPoints) {
    EXPECT_EQ(toRing({{0, 0}, {line(1, 0), line(1, 0), line(1, 1), line(0, 0)}}).size(), 3U);
}
