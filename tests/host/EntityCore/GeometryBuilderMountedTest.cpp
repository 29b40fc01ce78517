// Parts on boards and in sockets.
#include "PartScene.h"

#include <cmath>

namespace {

using Entity = EntityModel::Entity;

class GeometryBuilderMounted : public testing::Test, protected PartScene {
protected:
    // A chip socket of 20 by 12 by 5 whose low corner is at (40, 30).
    Entity *addSocket() {
        Entity *const socket = add("Chip Socket", board, "Chip Sockets");
        setLengths(socket, {{"Width", 20}, {"Depth", 12}, {"Height", 5}});
        place(socket, 40, 30);
        return socket;
    }
};

TEST_F(GeometryBuilderMounted, TopComponentStandsOnTheBoard) {
    expectBox(builder.buildPart(addComponent()), {20, 2, 30, 30, 5, 34});
}

TEST_F(GeometryBuilderMounted, BottomComponentHangsFromTheBoard) {
    Entity *const component = addComponent();
    set(component, "Board Side", "Bottom");
    Geometry::Part const *const part = builder.buildPart(component);
    expectBox(part, {20, -3, 30, 30, 0, 34});
    expectPoint(toRoot(part, 0, 0, 0), 30, 0, 30); // flipped about Z
    expectPoint(toRoot(part, 0, 3, 4), 30, -3, 34);
}

TEST_F(GeometryBuilderMounted, YLocationIsTheDistanceFromTheFace) {
    Entity *const component = addComponent();
    setLengths(component, {{"Y Location", 0.5}});
    expectBox(builder.buildPart(component), {20, 2.5, 30, 30, 5.5, 34});
    set(component, "Board Side", "Bottom");
    expectBox(builder.buildPart(component), {20, -3.5, 30, 30, -0.5, 34});
}

TEST_F(GeometryBuilderMounted, BoxTurnsAboutItsCentre) {
    Entity *const component = addComponent();
    setAngle(component, "Angle", 90);
    Geometry::Part const *const part = builder.buildPart(component);
    expectBox(part, {23, 2, 27, 27, 5, 37});
    expectPoint(toRoot(part, 10, 0, 2), 25, 2, 27); // +X goes to -Z
    Geometry::Bound own;
    part->getRealUntransformedBound(own);
    expectBox(own, {0, 0, 0, 10, 3, 4});
}

TEST_F(GeometryBuilderMounted, PassivePartsTurnByTheirOrientation) {
    for (auto const &kind :
         {std::pair("Resistor", "Resistors"), std::pair("Capacitor", "Capacitors"),
          std::pair("Inductor", "Inductors"), std::pair("Cable Socket", "Cable Sockets")}) {
        Entity *const entity = addComponent(kind.first, kind.second);
        setAngle(entity, "Orientation", 90);
        expectBox(builder.buildPart(entity), {23, 2, 27, 27, 5, 37});
    }
}

TEST_F(GeometryBuilderMounted, BoxTurnsByThirtyDegrees) {
    Entity *const component = addComponent();
    setAngle(component, "Angle", 30);
    Geometry::Part const *const part = builder.buildPart(component);
    double const c = std::sqrt(3.0) / 2.0, s = 0.5;
    expectPoint(toRoot(part, 10, 0, 2), 25 + 5 * c, 2, 32 - 5 * s);
    expectPoint(toRoot(part, 5, 0, 4), 25 + 2 * s, 2, 32 + 2 * c);
    EXPECT_TRUE(isInPart(part, 25 + 4.9 * c, 3, 32 - 4.9 * s));
    EXPECT_FALSE(isInPart(part, 29.9, 3, 32));
    expectBox(part, {25 - 5 * c - 2 * s, 2, 32 - 5 * s - 2 * c, 25 + 5 * c + 2 * s, 5, 32 + 5 * s + 2 * c});
}

TEST_F(GeometryBuilderMounted, BottomBoxIsFlippedBeforeItIsTurned) {
    Entity *const component = addComponent();
    set(component, "Board Side", "Bottom");
    setAngle(component, "Angle", 330);
    Geometry::Part const *const part = builder.buildPart(component);
    double const c = std::sqrt(3.0) / 2.0, s = 0.5;
    // The end of the X axis goes to -X by the flip, and on to -X and -Z by -30 degrees about Y.
    expectPoint(toRoot(part, 10, 0, 2), 25 - 5 * c, 0, 32 - 5 * s);
    expectPoint(toRoot(part, 5, 3, 4), 25 - 2 * s, -3, 32 + 2 * c);
}

TEST_F(GeometryBuilderMounted, PolygonTurnsAboutTheOriginOfItsOutline) {
    Entity *const component = addComponent();
    setPolygon(component, "0,-4,10,-4,10,0,0,0");
    Geometry::Part const *const flat = builder.buildPart(component);
    expectBox(flat, {20, 2, 26, 30, 5, 30});
    setAngle(component, "Angle", 90);
    expectBox(builder.buildPart(component), {16, 2, 20, 20, 5, 30});
    set(component, "Board Side", "Bottom");
    expectBox(builder.buildPart(component), {16, -3, 30, 20, 0, 40});
}

TEST_F(GeometryBuilderMounted, CylinderStandsAroundItsLocation) {
    Entity *const component = addComponent();
    set(component, "Shape", "Cylinder");
    setLengths(component, {{"Diameter", 6}});
    Geometry::Part const *const part = builder.buildPart(component);
    expectBox(part, {17, 2, 27, 23, 5, 33});
    EXPECT_TRUE(isInPart(part, 22, 3, 32));
    EXPECT_FALSE(isInPart(part, 22.9, 3, 32.9));
    EXPECT_TRUE(isInPart(part, 20 + 3 * 0.6, 3, 30 + 3 * 0.8));
}

TEST_F(GeometryBuilderMounted, CylinderAtRightAngleToTheBoardLiesOnIt) {
    Entity *const component = addComponent();
    set(component, "Shape", "Cylinder");
    setLengths(component, {{"Diameter", 6}, {"Height", 8}});
    setAngle(component, "Angle To Board", 90);
    expectBox(builder.buildPart(component), {17, 2, 33, 23, 8, 41});
}

TEST_F(GeometryBuilderMounted, AngleToBoardOfABoxIsWithoutEffect) {
    Entity *const component = addComponent();
    setAngle(component, "Angle To Board", 90);
    expectBox(builder.buildPart(component), {20, 2, 30, 30, 5, 34});
}

TEST_F(GeometryBuilderMounted, PartsFollowTheBoardAndItsCorner) {
    place(board, 100, 200);
    setLengths(board, {{"Y Location", 50}});
    setPolygon(board, "-10,-20,30,-20,30,40,-10,40");
    expectBox(builder.buildPart(addComponent()), {110, 52, 210, 120, 55, 214});
}

TEST_F(GeometryBuilderMounted, PartsOfARoundBoardCountFromTheCornerOfItsBound) {
    set(board, "Shape", "Cylinder");
    set(board, "Origin Point", "Centre");
    setLengths(board, {{"Diameter", 80}});
    expectBox(builder.buildPart(addComponent()), {-20, 2, -10, -10, 5, -6});
}

TEST_F(GeometryBuilderMounted, PartsOfABoardWithoutShapeStillHaveTheirPlace) {
    set(board, "Shape", "Polygon");
    EXPECT_EQ(builder.buildPart(board), nullptr);
    expectBox(builder.buildPart(addComponent()), {20, 2, 30, 30, 5, 34});
}

TEST_F(GeometryBuilderMounted, DaughterBoardSocketIsAsDeepAsItsLength) {
    Entity *const socket = add("Daughter Board Socket", board, "Daughter Board Sockets");
    setLengths(socket, {{"Width", 20}, {"Length", 12}, {"Height", 5}, {"Socket Depth", 2.5}});
    place(socket, 40, 30);
    expectBox(builder.buildPart(socket), {40, 2, 30, 60, 7, 42});
}

TEST_F(GeometryBuilderMounted, DaughterBoardCountsFromTheCornerOfItsSocket) {
    Entity *const socket = add("Daughter Board Socket", board, "Daughter Board Sockets");
    setLengths(socket, {{"Width", 20}, {"Length", 12}, {"Height", 5}});
    place(socket, 40, 30);
    Entity *const daughter = add("PCB", socket, "Daughter Board");
    setLengths(daughter, {{"Width", 10}, {"Depth", 8}, {"Thickness", 1}, {"Y Location", 4}});
    expectBox(builder.buildPart(daughter), {40, 6, 30, 50, 7, 38});
    Entity *const component = add("Component", daughter, "Components");
    setLengths(component, {{"Width", 2}, {"Depth", 2}, {"Height", 1}});
    expectBox(builder.buildPart(component), {40, 7, 30, 42, 8, 32});
}

TEST_F(GeometryBuilderMounted, BoxInASocketCountsFromTheLowCornerOfTheSocket) {
    Entity *const chip = add("Component", addSocket(), "ComponentLink");
    setLengths(chip, {{"Width", 10}, {"Depth", 4}, {"Height", 3}});
    place(chip, 5, 4);
    expectBox(builder.buildPart(chip), {45, 2, 34, 55, 5, 38});
}

TEST_F(GeometryBuilderMounted, CylinderAndPolygonInASocketCountFromItsMiddle) {
    Entity *const chip = add("Component", addSocket(), "ComponentLink");
    setLengths(chip, {{"Diameter", 4}, {"Height", 3}});
    set(chip, "Shape", "Cylinder");
    expectBox(builder.buildPart(chip), {48, 2, 34, 52, 5, 38});
    setPolygon(chip, "0,0,4,0,4,2,0,2");
    expectBox(builder.buildPart(chip), {50, 2, 36, 54, 5, 38});
}

TEST_F(GeometryBuilderMounted, LocationsAnglesAndOffsetsOfSocketAndComponentAddUp) {
    Entity *const socket = addSocket();
    setAngle(socket, "Orientation", 60);
    setLengths(socket, {{"Y Location", 1}});
    Entity *const chip = add("Component", socket, "ComponentLink");
    setLengths(chip, {{"Width", 10}, {"Depth", 4}, {"Height", 3}, {"Y Location", 0.5}});
    place(chip, 5, 4);
    setAngle(chip, "Angle", 30);
    expectBox(builder.buildPart(chip), {48, 3.5, 31, 52, 6.5, 41});
}

TEST_F(GeometryBuilderMounted, ComponentInASocketIsOnTheSideOfTheSocket) {
    Entity *const socket = addSocket();
    set(socket, "Board Side", "Bottom");
    setLengths(socket, {{"Y Location", 1}});
    Entity *const chip = add("Component", socket, "ComponentLink");
    setLengths(chip, {{"Width", 10}, {"Depth", 4}, {"Height", 3}});
    expectBox(builder.buildPart(chip), {40, -4, 30, 50, -1, 34});
}

// The sums by which an importer moves a component into a socket must leave it where it is.
class GeometryBuilderSocketMove : public GeometryBuilderMounted,
                                  public testing::WithParamInterface<char const *> {};

TEST_P(GeometryBuilderSocketMove, KeepsTheComponentInItsPlace) {
    using EntityModel::getStandardDoubleValue;
    std::string const shape = GetParam();
    for (char const *side : {"Top", "Bottom"}) {
        Entity *const socket = addSocket();
        setAngle(socket, "Orientation", 35);
        set(socket, "Board Side", side);
        Entity *const chip = addComponent();
        place(chip, 44, 33);
        setAngle(chip, "Angle", 125);
        set(chip, "Board Side", side);
        setLengths(chip, {{"Diameter", 6}});
        if (shape == "Polygon")
            setPolygon(chip, "1,1,7,1,7,3,1,4");
        else
            set(chip, "Shape", shape);
        Geometry::Part const *const before = builder.buildPart(chip);
        auto const corner = toRoot(before, 0, 0, 0), inner = toRoot(before, 3, 2, 1);

        bool const fromMiddle = shape != "Rectangle";
        double const dx = fromMiddle ? 10 : 0, dz = fromMiddle ? 6 : 0;
        ASSERT_TRUE(Editor::moveEntity(chip, socket));
        place(chip, 44 - 40 - dx, 33 - 30 - dz);
        setAngle(chip, "Angle", 125 - 35);

        Geometry::Part const *const after = builder.buildPart(chip);
        expectPoint(toRoot(after, 0, 0, 0), corner.x, corner.y, corner.z);
        expectPoint(toRoot(after, 3, 2, 1), inner.x, inner.y, inner.z);
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, GeometryBuilderSocketMove,
                         testing::Values("Rectangle", "Cylinder", "Polygon"));

TEST_F(GeometryBuilderMounted, SocketContainsTheMiddleOfAComponentInIt) {
    Entity *const socket = addSocket();
    setAngle(socket, "Orientation", 90); // over X 44 to 56, Z 26 to 46
    Entity *const inside = addComponent(), *const outside = addComponent();
    place(inside, 47, 25);
    place(outside, 56, 34);
    auto const isInSocket = [&](Entity *component) {
        Geometry::Bound const chip = builder.buildPart(component)->getBound();
        Geometry::Part const *const part = builder.buildPart(socket);
        Geometry::Bound const around = part->getBound();
        bool onSurface = false;
        return part->getGeometry()->contains(0.5 * (chip.getXLow() + chip.getXHigh()),
                                             0.5 * (around.getYLow() + around.getYHigh()),
                                             0.5 * (chip.getZLow() + chip.getZHigh()), onSurface, 1e-6);
    };
    EXPECT_TRUE(isInSocket(inside));
    EXPECT_FALSE(isInSocket(outside));
}

TEST_F(GeometryBuilderMounted, ComponentOutsideABoardStandsInItsOwnersFrame) {
    Entity *const component = add("Component", chassis, "Components");
    setLengths(component, {{"Width", 10}, {"Depth", 4}, {"Height", 3}, {"Y Location", 6}});
    expectBox(builder.buildPart(component), {0, 6, 0, 10, 9, 4});
}

TEST_F(GeometryBuilderMounted, ComponentThatIsTheRootStandsAtItsLocation) {
    EntityModel::Model const alone{EntityModel::Component_t};
    setLengths(alone.root(), {{"Width", 10}, {"Depth", 4}, {"Height", 3}});
    expectBox(builder.buildPart(alone.root()), {0, 0, 0, 10, 3, 4});
}

TEST_F(GeometryBuilderMounted, ComponentOfAPolygonWithoutOutlineHasNoPart) {
    Entity *const component = addComponent();
    set(component, "Shape", "Polygon");
    EXPECT_EQ(builder.buildPart(component), nullptr);
}

TEST_F(GeometryBuilderMounted, ContainerWithoutOutlineHasTheSizeOfItsContents) {
    Entity *const component = addComponent();
    set(component, "Shape", "Polygon");
    set(component, "Modelling Level", "Detailed");
    expectBox(builder.buildPart(component), {20, 2, 30, 30, 5, 34});
}

} // namespace
