// Solids in groups, on substrates, in components.
#include "PartScene.h"

#include <cmath>

namespace {

using Entity = EntityModel::Entity;

class GeometryBuilderSolid : public testing::Test, protected PartScene {
protected:
    // In the group of a component of 10 by 4 by 3 at (20, 2, 30).
    Entity *const component = addComponent();
    Entity *const group = addGroup(component);

    // A solid of 6 by 2 by 1.
    static Entity *addSolid(Entity *parent) {
        Entity *const solid = add("Solid Obstruction", parent, "Obstructions");
        setLengths(solid, {{"Width", 6}, {"Depth", 2}, {"Height", 1}});
        return solid;
    }

    static void setTurn(Entity *solid, char const *order, double first, double second, double third) {
        set(solid, "Rotation Mechanism", "Ordered");
        set(solid, "Rotation Order", order);
        setAngle(solid, "Angle 1", first);
        setAngle(solid, "Angle 2", second);
        setAngle(solid, "Angle 3", third);
    }
};

TEST_F(GeometryBuilderSolid, LowCentreIsTheMiddleOfTheLowFace) {
    Entity *const solid = addSolid(group);
    set(solid, "Origin Point", "Low Centre");
    place(solid, 5, 2);
    setLengths(solid, {{"Y Location", 0.5}});
    expectBox(builder.buildPart(solid), {22, 2.5, 31, 28, 3.5, 33});
}

TEST_F(GeometryBuilderSolid, CentreIsTheMiddleOfTheBody) {
    Entity *const solid = addSolid(group);
    set(solid, "Origin Point", "Centre");
    place(solid, 5, 2);
    expectBox(builder.buildPart(solid), {22, 1.5, 31, 28, 2.5, 33});
}

TEST_F(GeometryBuilderSolid, CornerIsTheLowCorner) {
    Entity *const solid = addSolid(group);
    set(solid, "Origin Point", "Corner");
    place(solid, 2, 1);
    expectBox(builder.buildPart(solid), {22, 2, 31, 28, 3, 33});
}

TEST_F(GeometryBuilderSolid, CornerBoxTurnsAboutItsCentre) {
    Entity *const solid = addSolid(group);
    set(solid, "Origin Point", "Corner");
    place(solid, 2, 1);
    setTurn(solid, "YZX", 90, 0, 0);
    expectBox(builder.buildPart(solid), {24, 2, 29, 26, 3, 35});
    setTurn(solid, "YZX", 0, 180, 0);
    expectBox(builder.buildPart(solid), {22, 2, 31, 28, 3, 33});
}

TEST_F(GeometryBuilderSolid, LowCentreBoxTurnsAboutItsLocation) {
    Entity *const solid = addSolid(group);
    place(solid, 5, 2);
    setTurn(solid, "YZX", 90, 0, 0);
    expectBox(builder.buildPart(solid), {24, 2, 29, 26, 3, 35});
    setTurn(solid, "YZX", 90, 180, 0); // hangs from its location
    expectBox(builder.buildPart(solid), {24, 1, 29, 26, 2, 35});
}

TEST_F(GeometryBuilderSolid, CylinderTakesEachOrigin) {
    Entity *const solid = addSolid(group);
    set(solid, "Shape", "Cylinder");
    setLengths(solid, {{"Diameter", 2}});
    place(solid, 5, 2);
    expectBox(builder.buildPart(solid), {24, 2, 31, 26, 3, 33});
    set(solid, "Origin Point", "Centre");
    expectBox(builder.buildPart(solid), {24, 1.5, 31, 26, 2.5, 33});
    set(solid, "Origin Point", "Corner");
    expectBox(builder.buildPart(solid), {25, 2, 32, 27, 3, 34});
}

TEST_F(GeometryBuilderSolid, OriginOfAPolygonIsThatOfItsOutline) {
    Entity *const solid = addSolid(group);
    setPolygon(solid, "1,1,4,1,4,3,1,3");
    for (char const *origin : {"Low Centre", "Centre", "Corner"}) {
        set(solid, "Origin Point", origin);
        expectBox(builder.buildPart(solid), {21, 2, 31, 24, 3, 33});
    }
}

TEST_F(GeometryBuilderSolid, FirstAngleOfTheOrderIsTheOutermostTurn) {
    Entity *const solid = addSolid(group);
    setTurn(solid, "YZX", 30, 40, 50);
    using Geometry::Transform;
    Transform const expected =
        Transform::multiply(Transform::createRotation(30, Transform::YAxis),
                            Transform::multiply(Transform::createRotation(40, Transform::ZAxis),
                                                Transform::createRotation(50, Transform::XAxis)));
    Transform const &actual = builder.buildPart(solid)->getGeometry()->getTransform();
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            EXPECT_NEAR(actual.orientation(row, column), expected.orientation(row, column), 1e-12);
}

TEST_F(GeometryBuilderSolid, AnglesBelongToTheLettersOfTheOrder) {
    Entity *const solid = addSolid(group);
    setTurn(solid, "XYZ", 0, 90, 0);
    auto const byY = toRoot(builder.buildPart(solid), 6, 0, 1);
    setTurn(solid, "YZX", 90, 0, 0);
    auto const same = toRoot(builder.buildPart(solid), 6, 0, 1);
    expectPoint(same, byY.x, byY.y, byY.z);
}

TEST_F(GeometryBuilderSolid, AngleAndAxisTurnsAboutTheVertical) {
    Entity *const solid = addSolid(group);
    place(solid, 5, 2);
    setTurn(solid, "ZXY", 90, 45, 45);
    set(solid, "Rotation Mechanism", "Angle and Axis");
    expectBox(builder.buildPart(solid), {24, 2, 29, 26, 3, 35});
}

TEST_F(GeometryBuilderSolid, GroupShiftsItsContents) {
    setLengths(group, {{"X Location", 1}, {"Y Location", 2}, {"Z Location", -3}});
    Entity *const solid = addSolid(group);
    place(solid, 5, 2);
    expectBox(builder.buildPart(solid), {23, 4, 28, 29, 5, 30});
}

TEST_F(GeometryBuilderSolid, ContentsTurnWithTheirComponent) {
    setAngle(component, "Angle", 90); // about (25, 32)
    Entity *const solid = addSolid(group);
    place(solid, 5, 2);
    expectBox(builder.buildPart(solid), {24, 2, 29, 26, 3, 35});
    place(solid, 6, 2); // +X of the component is -Z of the board
    expectBox(builder.buildPart(solid), {24, 2, 28, 26, 3, 34});
}

TEST_F(GeometryBuilderSolid, ContentsOfABottomComponentHangWithIt) {
    set(component, "Board Side", "Bottom");
    Entity *const solid = addSolid(group);
    set(solid, "Origin Point", "Corner");
    expectBox(builder.buildPart(solid), {24, -1, 30, 30, 0, 32});
}

TEST_F(GeometryBuilderSolid, ContentsOfAPolygonCountFromTheCornerOfItsBound) {
    setPolygon(component, "-5,-2,5,-2,5,2,-5,2");
    Entity *const solid = addSolid(group);
    set(solid, "Origin Point", "Corner");
    expectBox(builder.buildPart(solid), {15, 2, 28, 21, 3, 30});
}

TEST_F(GeometryBuilderSolid, SubstrateLiesInItsGroup) {
    Entity *const substrate = add("Substrate", group, "Obstructions");
    setLengths(substrate, {{"Width", 9}, {"Depth", 3}, {"Thickness", 0.5}, {"Y Location", 0.25}});
    place(substrate, 0.5, 0.5);
    expectBox(builder.buildPart(substrate), {20.5, 2.25, 30.5, 29.5, 2.75, 33.5});
}

TEST_F(GeometryBuilderSolid, GroupOnASubstrateCountsFromItsLowFace) {
    Entity *const substrate = add("Substrate", group, "Obstructions");
    setLengths(substrate, {{"Width", 9}, {"Depth", 3}, {"Thickness", 0.5}, {"Y Location", 0.25}});
    place(substrate, 0.5, 0.5);
    Entity *const solid = addSolid(addGroup(substrate));
    set(solid, "Origin Point", "Corner");
    setLengths(solid, {{"Y Location", 0.5}});
    expectBox(builder.buildPart(solid), {20.5, 2.75, 30.5, 26.5, 3.75, 32.5});
}

TEST_F(GeometryBuilderSolid, HoleOfASubstrateGoesThroughIt) {
    Entity *const substrate = add("Substrate", group, "Obstructions");
    setLengths(substrate, {{"Width", 9}, {"Depth", 3}, {"Thickness", 0.5}});
    Entity *const hole = add("Substrate Hole", substrate, "Holes");
    setLengths(hole, {{"Width", 1}, {"Depth", 1}});
    place(hole, 4, 1);
    expectBox(builder.buildPart(hole), {24, 2, 31, 25, 2.5, 32});
    EXPECT_FALSE(isInPart(builder.buildPart(substrate), 24.5, 2.25, 31.5));
}

TEST_F(GeometryBuilderSolid, HoleOfASolidCountsInTheCoordinatesOfItsOutline) {
    Entity *const solid = addSolid(group);
    setPolygon(solid, "1,1,4,1,4,3,1,3");
    Entity *const hole = add("Obstruction Hole", solid, "Holes");
    setPolygon(hole, "2,1.5,3,1.5,3,2.5,2,2.5");
    Geometry::Part const *const part = builder.buildPart(solid);
    EXPECT_FALSE(isInPart(part, 22.5, 2.5, 32));
    EXPECT_TRUE(isInPart(part, 21.5, 2.5, 32));
    expectBox(builder.buildPart(hole), {22, 2, 31.5, 23, 3, 32.5});
}

TEST_F(GeometryBuilderSolid, BumpStandsOnItsYLocation) {
    Entity *const substrate = add("Substrate", group, "Obstructions");
    setLengths(substrate, {{"Width", 9}, {"Depth", 3}, {"Thickness", 0.5}});
    Entity *const bump = add("Bump", substrate, "Bumps");
    setLengths(bump, {{"Max Diameter", 0.4}, {"Height", 0.2}, {"Y Location", -0.2}});
    place(bump, 4, 1);
    expectBox(builder.buildPart(bump), {23.8, 1.8, 30.8, 24.2, 2, 31.2});
}

TEST_F(GeometryBuilderSolid, ManyBumpsTakeTheBoxAroundTheirPlacements) {
    Entity *const substrate = add("Substrate", group, "Obstructions");
    setLengths(substrate, {{"Width", 9}, {"Depth", 3}, {"Thickness", 0.5}});
    Entity *const bump = add("Bump", substrate, "Bumps");
    setLengths(bump, {{"Max Diameter", 0.4}, {"Height", 0.2}, {"Y Location", -0.2}});
    place(bump, 4, 1); // the first placement, which the list has too
    set(bump, "Modelling Type", "Multiple Bumps");
    EXPECT_EQ(builder.buildPart(bump), nullptr);
    set(bump, "Instance Placements", "4,1,6,1,6,2 <mm>");
    expectBox(builder.buildPart(bump), {23.8, 1.8, 30.8, 26.2, 2, 32.2});
}

} // namespace
