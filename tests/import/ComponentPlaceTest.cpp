// Where components come to lie: sides, angles, and the box that is turned about its centre.
#include "ComponentSupport.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/Geometry/Part.h"

#include <cmath>
#include <limits>

using namespace TestSupport;

namespace {

constexpr double toRadians = Geometry::Transform::pi / 180.0;

// The corners of a box in the component's own frame, put on the board by hand: mirrored on the bottom,
// turned, moved, and seen in the frame of the entities.
Geometry::Bound2D onBoard(const EDA::EDAComponentPlacement &placement, double xLow, double yLow, double xHigh,
                          double yHigh) {
    const bool isTop = placement.isOnBoardTop();
    const double angle = placement.getAngle(true) * toRadians;
    Geometry::Bound2D bound;
    for (const double x : {xLow, xHigh}) {
        for (const double y : {yLow, yHigh}) {
            const double side = isTop ? x : -x;
            const double onX = placement.getXLocation() + side * std::cos(angle) - y * std::sin(angle);
            const double onY = placement.getYLocation() + side * std::sin(angle) + y * std::cos(angle);
            bound.unite(onX - 10, 70 - onY);
        }
    }
    return bound;
}

void expectPart(Entity *entity, const Geometry::Bound2D &expected, double yLow, double yHigh) {
    EntityGUI::GeometryBuilder builder;
    const Geometry::Part *const part = builder.buildPart(entity);
    ASSERT_TRUE(part);
    const Geometry::Bound bound = part->getBound();
    EXPECT_NEAR(bound.getXLow() * 1e3, expected.getXLow(), 1e-6);
    EXPECT_NEAR(bound.getXHigh() * 1e3, expected.getXHigh(), 1e-6);
    EXPECT_NEAR(bound.getZLow() * 1e3, expected.getYLow(), 1e-6);
    EXPECT_NEAR(bound.getZHigh() * 1e3, expected.getYHigh(), 1e-6);
    EXPECT_NEAR(bound.getYLow() * 1e3, yLow, 1e-6);
    EXPECT_NEAR(bound.getYHigh() * 1e3, yHigh, 1e-6);
}

struct Case {
    const char *outline;
    const char *type;
    double xLow, yLow, xHigh, yHigh;
};

const Case cases[] = {
    {boxOutline, "Component", 1, 2, 5, 10},    {boxOutline, "Resistor", 1, 2, 5, 10},
    {boxOutline, "Chip Socket", 1, 2, 5, 10},  {boxOutline, "Daughter Board Socket", 1, 2, 5, 10},
    {lOutline, "Component", 1, 2, 7, 9},       {lOutline, "Resistor", 1, 2, 7, 9},
    {lOutline, "Capacitor", 1, 2, 7, 9},       {centredCircle, "Component", -3, -3, 3, 3},
    {centredCircle, "Capacitor", -3, -3, 3, 3}};

const double angles[] = {0, 30, 90, 135, 180, 270, 359};

} // namespace

TEST(ComponentPlace, TheBuiltPartLiesWhereTheFileHasTheOutline) {
    for (const Case &each : cases) {
        for (const double angle : angles) {
            for (const bool isTop : {true, false}) {
                SCOPED_TRACE(testing::Message() << each.type << ' ' << each.outline << " at " << angle
                                                << (isTop ? " top" : " bottom"));
                ComponentBench bench(each.outline);
                bench.part.setImportToType(each.type);
                bench.placement.setAngle(angle);
                bench.placement.setBoardSide(isTop ? "TOP" : "BOTTOM");
                bench.placement.setOffset(0.5);
                Entity *const entity = bench.importOne();
                ASSERT_TRUE(entity);
                expectPart(entity, onBoard(bench.placement, each.xLow, each.yLow, each.xHigh, each.yHigh),
                           isTop ? 2.1 : -3.0, isTop ? 4.6 : -0.5);
            }
        }
    }
}

// Of the rectangle from (1, 2) to (5, 10) at (30, 40), worked out by hand.
TEST(ComponentPlace, ABoxIsPlacedByTheCornerItHasBeforeItIsTurnedAboutItsCentre) {
    struct Row {
        const char *side;
        double angle, entityAngle, x, z;
    };
    const Row rows[] = {{"TOP", 0, 0, 21, 20},        {"TOP", 90, 90, 12, 23},    {"TOP", 180, 180, 15, 32},
                        {"TOP", 270, 270, 24, 29},    {"BOTTOM", 0, 0, 15, 20},   {"BOTTOM", 90, 270, 24, 23},
                        {"BOTTOM", 180, 180, 21, 32}, {"BOTTOM", 270, 90, 12, 29}};
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.side << row.angle);
        ComponentBench bench;
        bench.placement.setBoardSide(row.side);
        bench.placement.setAngle(row.angle);
        Entity *const entity = bench.importOne();
        expectPlace(entity, row.x, row.z);
        EXPECT_EQ(getDoubleValue(entity, Angle_t, "degrees", -1), row.entityAngle);
        EXPECT_EQ(text(entity, "Width"), "4 mm");
        EXPECT_EQ(text(entity, "Depth"), "8 mm");
    }
}

TEST(ComponentPlace, ComponentsTurnByAnAngleAndOthersByAnOrientation) {
    ComponentBench component;
    component.placement.setAngle(30);
    Entity *entity = component.importOne();
    EXPECT_EQ(text(entity, Rotation_Mechanism_t), "Angle and Axis");
    EXPECT_EQ(text(entity, Angle_t), "30 degrees");

    ComponentBench resistor;
    resistor.part.setImportToType("Resistor");
    resistor.placement.setAngle(30);
    entity = resistor.importOne();
    EXPECT_EQ(text(entity, Orientation_t), "30 degrees");
}

TEST(ComponentPlace, TheSideIsTopOrBottom) {
    for (const auto &[side, expected] :
         {std::pair{"top", "Top"}, {"", "Top"}, {"BOTTOM", "Bottom"}, {"x", "Bottom"}}) {
        ComponentBench bench;
        bench.placement.setBoardSide(side);
        EXPECT_EQ(text(bench.importOne(), Board_Side_t), expected) << side;
    }
}

TEST(ComponentPlace, APolygonIsPlacedByTheOriginOfItsOutline) {
    ComponentBench bench(lOutline);
    bench.placement.setAngle(90);
    expectPlace(bench.importOne(), 20, 30);
}

TEST(ComponentPlace, ACylinderIsPlacedByTheOriginWhereverItsCircleIs) {
    ComponentBench bench(asideCircle);
    expectPlace(bench.importOne(), 20, 30);
}

// The centre is not turned with the component: intended, and right for the parts of files that are placed so.
TEST(ComponentPlace, ACylinderIsPlacedByItsCentreWhereTheDefinitionAsksForIt) {
    for (const double angle : {0.0, 90.0}) {
        ComponentBench top(asideCircle);
        top.part.setCylinderOriginToCentre(true);
        top.placement.setAngle(angle);
        expectPlace(top.importOne(), 20 + 4, 30 - 1);
        ComponentBench bottom(asideCircle);
        bottom.part.setCylinderOriginToCentre(true);
        bottom.placement.setBoardSide("BOTTOM");
        bottom.placement.setAngle(angle);
        expectPlace(bottom.importOne(), 20 - 4, 30 - 1);
    }
}

TEST(ComponentPlace, TheCentreOfABoxIgnoresWhatIsAskedForCylinders) {
    ComponentBench bench;
    bench.part.setCylinderOriginToCentre(true);
    expectPlace(bench.importOne(), 21, 20);
}

TEST(ComponentPlace, ASolidStandsOnTheMiddleOfItsLowFaceOnTheBoard) {
    ComponentBench bench;
    bench.placement.setAngle(90);
    bench.placement.setOffset(0.5);
    Entity *const solid = bench.importOneOnSubstrate();
    EXPECT_EQ(text(solid, Origin_Point_t), "Low Centre");
    expectPlace(solid, 12 + 2, 23 + 4);
    EXPECT_NEAR(mm(solid, Y_Location_t), 2.1, 1e-12);
    EXPECT_EQ(text(solid, Rotation_Mechanism_t), "Ordered");
    EXPECT_EQ(text(solid, Rotation_Order_t), "YZX");
    EXPECT_EQ(text(solid, Angle_1_t), "90 degrees");
    EXPECT_EQ(text(solid, Angle_2_t), "0 degrees");
}

TEST(ComponentPlace, ASolidOfTheBottomIsTurnedOver) {
    ComponentBench bench;
    bench.placement.setBoardSide("BOTTOM");
    bench.placement.setAngle(90);
    bench.placement.setOffset(0.5);
    Entity *const solid = bench.importOneOnSubstrate();
    EXPECT_EQ(text(solid, Angle_1_t), "270 degrees");
    EXPECT_EQ(text(solid, Angle_2_t), "180 degrees");
    EXPECT_EQ(text(solid, Y_Location_t), "0.5 mm");
    expectPlace(solid, 24 + 2, 23 + 4);
}

TEST(ComponentPlace, ABoxOnASubstrateLiesWhereTheFileHasIt) {
    for (const double angle : angles) {
        for (const bool isTop : {true, false}) {
            SCOPED_TRACE(testing::Message() << angle << (isTop ? " top" : " bottom"));
            ComponentBench bench;
            bench.placement.setAngle(angle);
            bench.placement.setBoardSide(isTop ? "TOP" : "BOTTOM");
            Entity *const solid = bench.importOneOnSubstrate();
            expectPart(solid, onBoard(bench.placement, 1, 2, 5, 10), isTop ? 1.6 : -2.5, isTop ? 4.1 : 0.0);
        }
    }
}

// A package without an edge of its own, as files of chip designs have it.
TEST(ComponentPlace, TheSolidsOfAPackageLieWhereTheFileHasThem) {
    ComponentBench bench("");
    bench.part.getOutline().addInternalOutline(EDA::test::outline(boxOutline));
    std::vector<Entity *> groups;
    getLinkedEntities(bench.importOne(), SubcomponentGroups_t, groups);
    ASSERT_EQ(groups.size(), 1u);
    const auto solids = bench.children(groups[0], Solid_Obstruction_t);
    ASSERT_EQ(solids.size(), 1u);
    EXPECT_EQ(text(solids[0], Height_t), "0 mm");
    expectPart(solids[0], onBoard(bench.placement, 1, 2, 5, 10), 1.6, 1.6);
}

TEST(ComponentPlace, WithoutResetBoardOriginLocationsAreMeasuredFromThePolygonsCorner) {
    ComponentBench bench;
    bench.set(Reset_Board_Origin_t, "No");
    expectPlace(bench.importOne(), 21, 20);
}

TEST(ComponentPlace, AnOrientationThatMirrorsTurnsTheOtherWay) {
    ComponentBench bench;
    bench.placement.setOrientation(0, -1, 1, 0);
    const double angle = bench.placement.getAngle(true);
    EXPECT_EQ(getDoubleValue(bench.importOne(), Angle_t, "degrees", -1), angle);
}

TEST(ComponentPlace, LocationsThatAreNoNumbersStayUnset) {
    const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    for (const char *outline : {boxOutline, lOutline, centredCircle}) {
        ComponentBench bench(outline);
        bench.placement.setLocation(nan, nan);
        bench.placement.setOffset(inf);
        bench.placement.setAngle(nan);
        Entity *entity = bench.importOne();
        ASSERT_TRUE(entity);
        expectPlace(entity, 0, 0);
        EXPECT_EQ(mm(entity, Y_Location_t), 0.0);
        EXPECT_EQ(text(entity, Angle_t), "0 degrees");

        ComponentBench solid(outline);
        solid.placement.setLocation(nan, 1e308);
        solid.placement.setAngle(inf);
        ASSERT_TRUE(solid.importOneOnSubstrate());
    }
}

TEST(ComponentPlace, AFarPlaceIsKept) {
    ComponentBench bench;
    bench.placement.setLocation(1e300, 40);
    EXPECT_EQ(mm(bench.importOne(), X_Location_t), 1e300);
}
