// Where components stand: locations, sides, angles, sockets.
#include "ExportScene.h"

using namespace TestSupport;

namespace {

class ExportedPlacement : public ExportScene {
protected:
    Values at(const char *x, const char *z, const Values &more = {}) const {
        Values values = {{"X Location", x}, {"Z Location", z}};
        values.insert(values.end(), more.begin(), more.end());
        return values;
    }
};

TEST_F(ExportedPlacement, RectangleIsPlacedByItsMiddle) {
    addComponent(at("20 mm", "10 mm", {{"Width", "8 mm"}, {"Depth", "4 mm"}}));
    expectPlace(placement(exported()), 10 + 20 + 4, 70 - 10 - 2);
}

TEST_F(ExportedPlacement, DaughterBoardSocketIsPlacedByTheMiddleOfItsLength) {
    add(pcb, "Daughter Board Socket", "Daughter Board Sockets",
        at("20 mm", "10 mm", {{"Width", "8 mm"}, {"Length", "6 mm"}}));
    expectPlace(placement(exported()), 34, 57);
}

TEST_F(ExportedPlacement, CylinderIsPlacedByItsLocation) {
    addComponent(at("20 mm", "10 mm", {{"Shape", "Cylinder"}, {"Diameter", "5 mm"}}));
    expectPlace(placement(exported()), 30, 60);
}

TEST_F(ExportedPlacement, PolygonIsPlacedByItsLocation) {
    addComponent(at("20 mm", "10 mm", {{"Shape", "Polygon"}, {"Outline", "0,0,1,0,1,1 <mm>"}}));
    expectPlace(placement(exported()), 30, 60);
}

TEST_F(ExportedPlacement, IsInTheUnitsOfTheExport) {
    makeBoardRectangular();
    addComponent(at("1 in", "2 in", {{"Shape", "Cylinder"}, {"Y Location", "0.5 in"}}));
    const EDA::EDABoard board = exported("THOU");
    expectPlace(placement(board), 1000, -2000);
    EXPECT_NEAR(placement(board).getOffset(), 500, 1e-9);
}

TEST_F(ExportedPlacement, HeightAboveTheBoardIsTheOffset) {
    addComponent({{"Y Location", "0.5 mm"}});
    EXPECT_EQ(placement(exported()).getOffset(), 0.5);
}

TEST_F(ExportedPlacement, LocationBeyondAllNumbersIsZero) {
    set(pcb, {{"Outline", "1e308,0,1.2e308,0,1.2e308,-1 <mm>"}});
    addComponent(at("1e308 mm", "7 mm", {{"Shape", "Cylinder"}, {"Diameter", "5 mm"}}));
    expectPlace(placement(exported()), 0, -6);
}

TEST_F(ExportedPlacement, LocationBeyondAllNumbersDownTheBoardIsZero) {
    set(pcb, {{"Outline", "0,-1e308,1,-1e308,1,-1.2e308 <mm>"}});
    addComponent(at("7 mm", "-1e308 mm", {{"Shape", "Cylinder"}, {"Diameter", "5 mm"}}));
    expectPlace(placement(exported()), 7, 0);
}

TEST_F(ExportedPlacement, IsPlaced) {
    addComponent();
    EXPECT_EQ(placement(exported()).getStatus(), "PLACED");
}

TEST_F(ExportedPlacement, EmptyDesignatorIsAQuestionMark) {
    addComponent();
    EXPECT_EQ(placement(exported()).getReferenceDesignator(), "?");
}

TEST_F(ExportedPlacement, KeepsItsDesignator) {
    addComponent({{"Reference Designator", "U7"}});
    EXPECT_EQ(placement(exported()).getReferenceDesignator(), "U7");
}

struct AngleCase {
    const char *type;
    const char *list;
    const char *attribute;
    const char *angle;
    const char *side;
    double expected;
};

class ExportedAngle : public ExportScene, public testing::WithParamInterface<AngleCase> {};

TEST_P(ExportedAngle, CountsAnticlockwiseOnTopAndTheOtherWayOnTheBottom) {
    const AngleCase &row = GetParam();
    add(pcb, row.type, row.list, {{row.attribute, row.angle}, {"Board Side", row.side}});
    const EDA::EDABoard board = exported();
    EXPECT_NEAR(placement(board).getAngle(false), row.expected, 1e-9);
    EXPECT_EQ(placement(board).getBoardSide(), row.side);
}

INSTANTIATE_TEST_SUITE_P(
    All, ExportedAngle,
    testing::Values(AngleCase{"Component", "Components", "Angle", "30", "Top", 30},
                    AngleCase{"Component", "Components", "Angle", "30", "Bottom", 330},
                    AngleCase{"Component", "Components", "Angle", "0", "Bottom", 360},
                    AngleCase{"Component", "Components", "Angle", "400", "Top", 400},
                    AngleCase{"Component", "Components", "Angle", "400", "Bottom", 320},
                    AngleCase{"Component", "Components", "Angle", "-30", "Top", 330},
                    AngleCase{"Component", "Components", "Angle", "3.141592653589793 rad", "Top", 180},
                    AngleCase{"Resistor", "Resistors", "Orientation", "30", "Top", 30},
                    AngleCase{"Resistor", "Resistors", "Orientation", "30", "Bottom", 330},
                    AngleCase{"Cable Socket", "Cable Sockets", "Orientation", "45", "Top", 45},
                    AngleCase{"Chip Socket", "Chip Sockets", "Orientation", "45", "Bottom", 315}),
    [](const auto &test) { return "Case" + std::to_string(test.index); });

class ExportedPlug : public ExportedPlacement {
protected:
    Entity *const socket = addSocket({{"Width", "20 mm"},
                                      {"Depth", "12 mm"},
                                      {"X Location", "30 mm"},
                                      {"Y Location", "1 mm"},
                                      {"Z Location", "5 mm"}});

    // The one behind the socket's own.
    static const EDA::EDAComponentPlacement &plugged(const EDA::EDABoard &board) {
        return placement(board, 1);
    }
};

TEST_F(ExportedPlug, IsElectricalWhateverItsType) {
    plug(socket, {{"Type", "Mechanical"}, {"Model", "CPU"}});
    EXPECT_EQ(component(exported(), 1).getType(), "ELECTRICAL");
}

TEST_F(ExportedPlug, EmptySocketIsOneComponent) { EXPECT_EQ(exported().numComponentPlacements(), 1u); }

TEST_F(ExportedPlug, RectangleAddsTheSocketsLocation) {
    plug(socket, at("2 mm", "3 mm", {{"Width", "8 mm"}, {"Depth", "4 mm"}, {"Y Location", "0.5 mm"}}));
    const EDA::EDABoard board = exported();
    expectPlace(plugged(board), 10 + 30 + 2 + 4, 70 - 5 - 3 - 2);
    EXPECT_EQ(plugged(board).getOffset(), 1.5);
}

TEST_F(ExportedPlug, CylinderCountsFromTheMiddleOfTheSocket) {
    plug(socket, at("2 mm", "3 mm", {{"Shape", "Cylinder"}, {"Diameter", "4 mm"}}));
    expectPlace(plugged(exported()), 10 + 30 + 10 + 2, 70 - 5 - 6 - 3);
}

TEST_F(ExportedPlug, PolygonCountsFromTheMiddleOfTheSocket) {
    plug(socket, at("2 mm", "3 mm", {{"Shape", "Polygon"}, {"Outline", "0,0,1,0,1,1 <mm>"}}));
    expectPlace(plugged(exported()), 52, 56);
}

TEST_F(ExportedPlug, DetailedRectangleCountsFromTheCornerOfTheSocket) {
    plug(socket, at("2 mm", "3 mm", {{"Modelling Level", "Detailed"}}));
    expectPlace(plugged(exported()), 42, 62);
}

TEST_F(ExportedPlug, DetailedPolygonCountsFromTheMiddleOfTheSocket) {
    plug(socket, at("2 mm", "3 mm", {{"Modelling Level", "Detailed"}, {"Shape", "Polygon"}}));
    expectPlace(plugged(exported()), 52, 56);
}

TEST_F(ExportedPlug, HasTheSideOfTheSocketAndTheSumOfTheAngles) {
    set(socket, {{"Orientation", "20"}});
    plug(socket, {{"Angle", "30"}, {"Board Side", "Bottom"}});
    const EDA::EDABoard board = exported();
    EXPECT_EQ(plugged(board).getBoardSide(), "Top");
    EXPECT_NEAR(plugged(board).getAngle(false), 50, 1e-9);
}

TEST_F(ExportedPlug, OnTheBottomTheSumIsMirrored) {
    set(socket, {{"Orientation", "20"}, {"Board Side", "Bottom"}});
    plug(socket, {{"Angle", "30"}});
    const EDA::EDABoard board = exported();
    EXPECT_EQ(plugged(board).getBoardSide(), "Bottom");
    EXPECT_NEAR(plugged(board).getAngle(false), 310, 1e-9);
}

TEST_F(ExportedPlug, AnglesBeyondAllNumbersAreZero) {
    set(socket, {{"Orientation", "1e308"}});
    plug(socket, {{"Angle", "1e308"}});
    EXPECT_EQ(plugged(exported()).getAngle(false), 0.0);
}

} // namespace
