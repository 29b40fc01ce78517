// Component definitions: kind, name, height, outline.
#include "ExportScene.h"

using namespace TestSupport;

namespace {

class ExportedComponent : public ExportScene {};

struct ListCase {
    const char *type;
    const char *list;
    const char *kind;
};

const ListCase listCases[] = {{"Component", "Components", "ELECTRICAL"},
                              {"Capacitor", "Capacitors", "ELECTRICAL"},
                              {"Resistor", "Resistors", "ELECTRICAL"},
                              {"Inductor", "Inductors", "ELECTRICAL"},
                              {"Daughter Board Socket", "Daughter Board Sockets", "MECHANICAL"},
                              {"Cable Socket", "Cable Sockets", "MECHANICAL"},
                              {"Chip Socket", "Chip Sockets", "MECHANICAL"}};

TEST_F(ExportedComponent, HasTheKindOfItsList) {
    for (const ListCase &row : listCases) {
        Entity *const entity = add(pcb, row.type, row.list);
        const EDA::EDABoard board = exported();
        EXPECT_EQ(board.numComponents(), 1u) << row.type;
        EXPECT_EQ(component(board).getType(), row.kind) << row.type;
        EXPECT_EQ(board.numComponentPlacements(), 1u) << row.type;
        EntityEditor::deleteEntity(entity);
    }
}

TEST_F(ExportedComponent, ComesInTheOrderOfTheListsAndNotOfCreation) {
    for (auto row = std::rbegin(listCases); row != std::rend(listCases); ++row)
        add(pcb, row->type, row->list, {{"Reference Designator", row->type}});
    const EDA::EDABoard board = exported();
    ASSERT_EQ(board.numComponentPlacements(), std::size(listCases));
    for (std::size_t i = 0; i < std::size(listCases); ++i)
        EXPECT_EQ(placement(board, i).getReferenceDesignator(), listCases[i].type);
}

TEST_F(ExportedComponent, MechanicalTypeIsMechanical) {
    addComponent({{"Type", "Mechanical"}});
    EXPECT_EQ(component(exported()).getType(), "MECHANICAL");
}

struct NameCase {
    const char *manufacturer;
    const char *model;
    const char *name;
};

class ExportedName : public ExportScene, public testing::WithParamInterface<NameCase> {};

TEST_P(ExportedName, IsMadeOfManufacturerAndModel) {
    addComponent({{"Manufacturer", GetParam().manufacturer}, {"Model", GetParam().model}});
    const EDA::EDABoard board = exported();
    EXPECT_EQ(component(board).getName(), GetParam().name);
    EXPECT_EQ(placement(board).getName(), GetParam().name);
}

// A manufacturer alone leaves its blank: an entity that can have a model has one, be it empty.
INSTANTIATE_TEST_SUITE_P(All, ExportedName,
                         testing::Values(NameCase{"", "", ""}, NameCase{"", "QFP64", "QFP64"},
                                         NameCase{"Acme", "QFP64", "Acme QFP64"},
                                         NameCase{"Acme", "", "Acme "}));

TEST_F(ExportedComponent, HasPartNumberAndUnits) {
    addComponent({{"Part Number", "17-4"}});
    const EDA::EDABoard board = exported("THOU");
    EXPECT_EQ(component(board).getPartNumber(), "17-4");
    EXPECT_EQ(component(board).getUnits(), "THOU");
    EXPECT_EQ(placement(board).getPartNumber(), "17-4");
}

TEST_F(ExportedComponent, HasItsHeight) {
    addComponent({{"Height", "2.5 mm"}});
    EXPECT_EQ(component(exported()).getHeight(), 2.5);
}

TEST_F(ExportedComponent, TiltedCylinderIsAsHighAsItIsThick) {
    addComponent({{"Shape", "Cylinder"}, {"Height", "9 mm"}, {"Diameter", "4 mm"}, {"Angle To Board", "90"}});
    EXPECT_EQ(component(exported()).getHeight(), 4.0);
}

TEST_F(ExportedComponent, SmallestTiltIsNone) {
    addComponent(
        {{"Shape", "Cylinder"}, {"Height", "9 mm"}, {"Diameter", "4 mm"}, {"Angle To Board", "1e-6"}});
    const EDA::EDABoard board = exported();
    EXPECT_EQ(component(board).getHeight(), 9.0);
    EXPECT_EQ(component(board).getOutline().numPoints(), 2u);
}

TEST_F(ExportedComponent, DisabledTiltHasNoEffectOnTheHeight) {
    addComponent({{"Height", "9 mm"}, {"Diameter", "4 mm"}, {"Angle To Board", "90"}});
    EXPECT_EQ(component(exported()).getHeight(), 9.0);
}

TEST_F(ExportedComponent, RectangleIsAroundItsMiddle) {
    addComponent({{"Width", "8 mm"}, {"Depth", "4 mm"}});
    expectRows(component(exported()).getOutline(),
               {{-4, 2, 0}, {-4, -2, 0}, {4, -2, 0}, {4, 2, 0}, {-4, 2, 0}});
}

TEST_F(ExportedComponent, SocketWithoutShapeIsARectangle) {
    addSocket({{"Width", "8 mm"}, {"Depth", "4 mm"}});
    expectRows(component(exported()).getOutline(),
               {{-4, 2, 0}, {-4, -2, 0}, {4, -2, 0}, {4, 2, 0}, {-4, 2, 0}});
}

TEST_F(ExportedComponent, LengthStandsInForAMissingDepth) {
    add(pcb, "Daughter Board Socket", "Daughter Board Sockets", {{"Width", "8 mm"}, {"Length", "6 mm"}});
    expectRows(component(exported()).getOutline(),
               {{-4, 3, 0}, {-4, -3, 0}, {4, -3, 0}, {4, 3, 0}, {-4, 3, 0}});
}

TEST_F(ExportedComponent, CircleIsTwoPointsTheSecondAWholeTurn) {
    addComponent({{"Shape", "Cylinder"}, {"Diameter", "5 mm"}});
    expectRows(component(exported()).getOutline(), {{0, 0, 0}, {2.5, 0, 360}});
}

TEST_F(ExportedComponent, CylinderOnItsSideCoversARectangleBelowItsLocation) {
    addComponent({{"Shape", "Cylinder"}, {"Height", "9 mm"}, {"Diameter", "4 mm"}, {"Angle To Board", "90"}});
    expectRows(component(exported()).getOutline(),
               {{-2, -2, 0}, {-2, -11, 0}, {2, -11, 0}, {2, -2, 0}, {-2, -2, 0}});
}

TEST_F(ExportedComponent, PolygonIsAsItIs) {
    addComponent({{"Shape", "Polygon"}, {"Outline", "1,1,7,1,7,-3 <mm>"}});
    expectRows(component(exported()).getOutline(), {{1, -1, 0}, {7, -1, 0}, {7, 3, 0}, {1, -1, 0}});
}

TEST_F(ExportedComponent, OutlineIsNotTurned) {
    addComponent({{"Width", "8 mm"}, {"Depth", "4 mm"}, {"Angle", "45 degrees"}});
    EXPECT_EQ(component(exported()).getOutline().beginPoints()[0].x, -4.0);
}

TEST_F(ExportedComponent, TwoOfOneKindShareADefinition) {
    addComponent({{"Model", "A"}});
    addComponent({{"Model", "A"}});
    const EDA::EDABoard board = exported();
    EXPECT_EQ(board.numComponents(), 1u);
    EXPECT_EQ(board.numComponentPlacements(), 2u);
}

TEST_F(ExportedComponent, NamesakeOfAnotherHeightGetsANumberAndItsPlacementToo) {
    addComponent({{"Model", "A"}});
    addComponent({{"Model", "A"}, {"Height", "7 mm"}});
    const EDA::EDABoard board = exported();
    ASSERT_EQ(board.numComponents(), 2u);
    EXPECT_EQ(component(board, 1).getName(), "A-1");
    EXPECT_EQ(placement(board, 0).getName(), "A");
    EXPECT_EQ(placement(board, 1).getName(), "A-1");
}

class ExportedDetail : public ExportScene {
protected:
    Entity *const part = addComponent({{"Modelling Level", "Detailed"},
                                       {"Width", "8 mm"},
                                       {"Depth", "4 mm"},
                                       {"Height", "3 mm"},
                                       {"X Location", "20 mm"},
                                       {"Z Location", "10 mm"}});
};

TEST_F(ExportedDetail, HasTheBoxOfItsBuiltPart) {
    build({part});
    const EDA::EDABoard board = exported();
    expectRows(component(board).getOutline(), {{-4, 2, 0}, {-4, -2, 0}, {4, -2, 0}, {4, 2, 0}, {-4, 2, 0}});
    EXPECT_NEAR(component(board).getHeight(), 3.0, 1e-12);
}

TEST_F(ExportedDetail, BoxIsOfThePartAsItWasBuilt) {
    build({part});
    set(part, {{"Width", "80 mm"}, {"Height", "30 mm"}});
    const EDA::EDABoard board = exported("cm");
    EXPECT_NEAR(component(board).getOutline().beginPoints()[0].x, -0.4, 1e-12);
    EXPECT_NEAR(component(board).getHeight(), 0.3, 1e-12);
}

TEST_F(ExportedDetail, BoxIsThatBeforeTurning) {
    set(part, {{"Angle", "90 degrees"}});
    build({part});
    EXPECT_NEAR(component(exported()).getOutline().beginPoints()[0].x, -4.0, 1e-12);
}

TEST_F(ExportedDetail, WithoutBuiltPartHasNoOutlineButItsHeight) {
    EntityGUI::EntityManager::setGeometryBuilder(&builder);
    const EDA::EDABoard board = exported();
    EXPECT_FALSE(component(board).hasGeometry());
    EXPECT_EQ(component(board).getHeight(), 3.0);
}

TEST_F(ExportedDetail, WithoutBuilderHasNoOutline) { EXPECT_FALSE(component(exported()).hasGeometry()); }

// Its outline is drawn around the middle all the same: this is what hosts have relied on.
TEST_F(ExportedDetail, IsPlacedAtItsLocationNotAtItsMiddle) {
    build({part});
    expectPlace(placement(exported()), 30, 60);
}

} // namespace
