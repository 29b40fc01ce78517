// Parts of boards, their holes and keepouts.
#include "PartScene.h"

namespace {

using Entity = EntityModel::Entity;

class GeometryBuilderBoard : public testing::Test, protected PartScene {};

TEST_F(GeometryBuilderBoard, RectangleStandsOnItsCorner) {
    place(board, 5, 6);
    expectBox(builder.buildPart(board), {5, 0, 6, 105, 2, 86});
}

TEST_F(GeometryBuilderBoard, LengthsAreInMetres) {
    Geometry::Bound bound;
    builder.buildPart(board)->getRealUntransformedBound(bound);
    EXPECT_DOUBLE_EQ(bound.getXSize(), 0.1);
    EXPECT_DOUBLE_EQ(bound.getYSize(), 0.002);
    EXPECT_DOUBLE_EQ(bound.getZSize(), 0.08);
}

TEST_F(GeometryBuilderBoard, CentredRectangleStandsAroundItsLocation) {
    set(board, "Origin Point", "Centre");
    place(board, 5, 6);
    expectBox(builder.buildPart(board), {-45, 0, -34, 55, 2, 46});
}

TEST_F(GeometryBuilderBoard, YLocationLiftsTheBoard) {
    setLengths(board, {{"Y Location", 7}});
    expectBox(builder.buildPart(board), {0, 7, 0, 100, 9, 80});
}

TEST_F(GeometryBuilderBoard, CentredCylinderStandsAroundItsLocation) {
    set(board, "Shape", "Cylinder");
    set(board, "Origin Point", "Centre");
    setLengths(board, {{"Diameter", 50}});
    place(board, 25, 25);
    expectBox(builder.buildPart(board), {0, 0, 0, 50, 2, 50});
    EXPECT_TRUE(isInPart(builder.getPart(board), 25, 1, 25));
    EXPECT_FALSE(isInPart(builder.getPart(board), 1, 1, 1));
}

TEST_F(GeometryBuilderBoard, CylinderWithCornerOriginStandsInThatCorner) {
    set(board, "Shape", "Cylinder");
    setLengths(board, {{"Diameter", 50}});
    expectBox(builder.buildPart(board), {0, 0, 0, 50, 2, 50});
}

TEST_F(GeometryBuilderBoard, PolygonKeepsTheCoordinatesOfItsOutline) {
    setPolygon(board, "-10,-20,30,-20,30,0,0,0,0,40,-10,40");
    set(board, "Origin Point", "Centre"); // without effect on a polygon
    place(board, 10, 20);
    Geometry::Part const *const part = builder.buildPart(board);
    expectBox(part, {0, 0, 0, 40, 2, 60});
    Geometry::Bound own;
    part->getRealUntransformedBound(own);
    expectBox(own, {-10, 0, -20, 30, 2, 40});
    EXPECT_TRUE(isInPart(part, 5, 1, 50));
    EXPECT_FALSE(isInPart(part, 20, 1, 50));
}

TEST_F(GeometryBuilderBoard, OutlineMayRepeatItsFirstPoint) {
    setPolygon(board, "0,0,30,0,30,20,0,20,0,0");
    expectBox(builder.buildPart(board), {0, 0, 0, 30, 2, 20});
}

TEST_F(GeometryBuilderBoard, OddLastNumberOfAnOutlineIsNoPoint) {
    setPolygon(board, "0,0,30,0,30,20,500");
    expectBox(builder.buildPart(board), {0, 0, 0, 30, 2, 20});
}

TEST_F(GeometryBuilderBoard, ContainsAnswersInsideOutsideAndWithinTolerance) {
    Geometry::Part const *const part = builder.buildPart(board);
    EXPECT_TRUE(isInPart(part, 50, 1, 40));
    EXPECT_FALSE(isInPart(part, 50, 3, 40));
    EXPECT_FALSE(isInPart(part, -0.01, 1, 40));
    EXPECT_TRUE(isInPart(part, -0.01, 1, 40, 1e-4));
    bool onSurface = false;
    EXPECT_TRUE(part->getGeometry()->contains(0.05, 0.002, 0.04, onSurface, 1e-6));
    EXPECT_TRUE(onSurface);
}

TEST_F(GeometryBuilderBoard, HolesAreOpen) {
    Entity *const box = add("PCB Hole", board, "Holes");
    setLengths(box, {{"Width", 10}, {"Depth", 5}});
    place(box, 20, 30);
    Entity *const drill = add("PCB Hole", board, "Holes");
    set(drill, "Shape", "Cylinder");
    setLengths(drill, {{"Diameter", 4}});
    place(drill, 60, 60);
    Geometry::Part const *const part = builder.buildPart(board);
    EXPECT_FALSE(isInPart(part, 25, 1, 32));
    EXPECT_TRUE(isInPart(part, 25, 1, 36));
    EXPECT_FALSE(isInPart(part, 61, 1, 61));
    EXPECT_TRUE(isInPart(part, 61.9, 1, 61.9));
    expectBox(part, {0, 0, 0, 100, 2, 80});
}

TEST_F(GeometryBuilderBoard, HoleGoesThroughTheBoard) {
    Entity *const hole = add("PCB Hole", board, "Holes");
    setLengths(hole, {{"Width", 10}, {"Depth", 5}});
    place(hole, 20, 30);
    expectBox(builder.buildPart(hole), {20, 0, 30, 30, 2, 35});
}

TEST_F(GeometryBuilderBoard, HoleTurnsAboutItsLocation) {
    Entity *const hole = add("PCB Hole", board, "Holes");
    setLengths(hole, {{"Width", 10}, {"Depth", 5}});
    place(hole, 20, 30);
    setAngle(hole, "Orientation", 90); // +X goes to -Z
    expectBox(builder.buildPart(hole), {20, 0, 20, 25, 2, 30});
    EXPECT_FALSE(isInPart(builder.buildPart(board), 22, 1, 22));
}

TEST_F(GeometryBuilderBoard, HolesOfAPolygonBoardCountFromTheCornerOfItsBound) {
    setPolygon(board, "-10,-20,30,-20,30,20,-10,20");
    Entity *const hole = add("PCB Hole", board, "Holes");
    setPolygon(hole, "-2,-2,2,-2,2,2,-2,2");
    place(hole, 5, 6);
    Geometry::Part const *const part = builder.buildPart(board);
    EXPECT_FALSE(isInPart(part, -5, 1, -14));
    EXPECT_TRUE(isInPart(part, 5, 1, 6));
    expectBox(builder.buildPart(hole), {-7, 0, -16, -3, 2, -12});
}

TEST_F(GeometryBuilderBoard, HoleWithoutSizeOpensNothing) {
    add("PCB Hole", board, "Holes");
    EXPECT_TRUE(isInPart(builder.buildPart(board), 0.001, 1, 0.001));
}

TEST_F(GeometryBuilderBoard, CircularBoardWithHoleIsCloseToItsCircle) {
    set(board, "Shape", "Cylinder");
    set(board, "Origin Point", "Centre");
    setLengths(board, {{"Diameter", 50}});
    Entity *const hole = add("PCB Hole", board, "Holes");
    setLengths(hole, {{"Width", 10}, {"Depth", 10}});
    place(hole, 20, 20);
    Geometry::Part const *const part = builder.buildPart(board);
    expectBox(part, {-25, 0, -25, 25, 2, 25});
    EXPECT_FALSE(isInPart(part, 0, 1, 0));
    EXPECT_TRUE(isInPart(part, 24.998 * 0.6, 1, 24.998 * 0.8, 0.0));
    EXPECT_FALSE(isInPart(part, 25.001 * 0.6, 1, 25.001 * 0.8, 0.0));
}

TEST_F(GeometryBuilderBoard, KeepoutStandsOnItsSide) {
    Entity *const keepout = add("Board Keepout", board, "Keepouts");
    setLengths(keepout, {{"Width", 10}, {"Depth", 5}, {"Height", 3}});
    place(keepout, 20, 30);
    expectBox(builder.buildPart(keepout), {20, -3, 30, 30, 5, 35});
    set(keepout, "Board Side", "Top");
    expectBox(builder.buildPart(keepout), {20, 2, 30, 30, 5, 35});
    set(keepout, "Board Side", "Bottom");
    expectBox(builder.buildPart(keepout), {20, -3, 30, 30, 0, 35});
}

TEST_F(GeometryBuilderBoard, KeepoutOfAPolygonWithoutOutlineHasNoPart) {
    Entity *const keepout = add("Board Keepout", board, "Keepouts");
    set(keepout, "Shape", "Polygon");
    EXPECT_EQ(builder.buildPart(keepout), nullptr);
}

TEST_F(GeometryBuilderBoard, FlatBoardHasAPartWithoutHeight) {
    setLengths(board, {{"Thickness", 0}});
    expectBox(builder.buildPart(board), {0, 0, 0, 100, 0, 80});
}

TEST_F(GeometryBuilderBoard, BoardWithoutSizeHasNoPart) {
    setLengths(board, {{"Width", 0}});
    EXPECT_EQ(builder.buildPart(board), nullptr);
    setPolygon(board, "0,0,10,0");
    EXPECT_EQ(builder.buildPart(board), nullptr);
    setPolygon(board, "0,0,10,0,20,0");
    EXPECT_EQ(builder.buildPart(board), nullptr);
}

TEST_F(GeometryBuilderBoard, NumbersTooLargeToComputeWithGiveNoPart) {
    place(board, 1e308, 1e308);
    EXPECT_NE(builder.buildPart(board), nullptr); // 1e305 m, and still a number
    Entity *const hole = add("PCB Hole", board, "Holes");
    set(hole, "Shape", "Cylinder");
    set(hole, "Diameter", "1.7e308 m");
    set(hole, "X Location", "1.7e308 m");
    EXPECT_EQ(builder.buildPart(hole), nullptr);
    setPolygon(board, "-1e308,0,1e308,0,1e308,1");
    EXPECT_NE(builder.buildPart(board), nullptr);
    set(board, "Outline", "-1e308,0,1e308,0,1e308,1 <m>");
    EXPECT_EQ(builder.buildPart(board), nullptr);
}

TEST_F(GeometryBuilderBoard, HugeCircleWithAHoleStaysAPolygonOfBoundedSize) {
    set(board, "Shape", "Cylinder");
    set(board, "Diameter", "1e200 m");
    Entity *const hole = add("PCB Hole", board, "Holes");
    set(hole, "Shape", "Cylinder");
    set(hole, "Diameter", "1e-30 m");
    EXPECT_NE(builder.buildPart(board), nullptr);
}

} // namespace
