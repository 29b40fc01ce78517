// A host whose entities lack what the export looks for.
#include "export/EDAExporter.h"
#include "host/EntityModel/SchemaLoader.h"
#include "host/EntityModel/Types.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <tuple>

using namespace EntityModel;

namespace {

// Every type lacks something: the board its designator and thickness, the hole and the keepout a Z, the via
// Z and plating, the component its model and depth, the resistor all of its geometry.
const char *const poorSchema = R"({
  "everyType": [{"name": "Name", "kind": "text"}],
  "mixins": {},
  "types": [
    {"name": "PCB", "attributes": [
      {"name": "Shape", "kind": "choice", "choices": ["Polygon"]},
      {"name": "Outline", "kind": "doubleList", "quantity": "Length"},
      {"name": "Holes", "kind": "entityList", "takes": ["PCB Hole"]},
      {"name": "Keepouts", "kind": "entityList", "takes": ["Board Keepout"]},
      {"name": "Vias", "kind": "entityList", "takes": ["Via"]},
      {"name": "Components", "kind": "entityList", "takes": ["Component"]},
      {"name": "Resistors", "kind": "entityList", "takes": ["Resistor"]}]},
    {"name": "PCB Hole", "attributes": [
      {"name": "Shape", "kind": "choice", "choices": ["Cylinder", "Hexagon"]},
      {"name": "Diameter", "kind": "length", "default": "2 mm"},
      {"name": "X Location", "kind": "location", "default": "5 mm"}]},
    {"name": "Board Keepout", "attributes": [
      {"name": "Shape", "kind": "choice", "choices": ["Cylinder"]},
      {"name": "Diameter", "kind": "length", "default": "2 mm"},
      {"name": "X Location", "kind": "location", "default": "5 mm"}]},
    {"name": "Via", "attributes": [
      {"name": "Modelling Type", "kind": "choice", "choices": ["Single Via", "Multiple Vias"]},
      {"name": "Instance Placements", "kind": "doubleList", "quantity": "Length"},
      {"name": "X Location", "kind": "location", "default": "5 mm"}]},
    {"name": "Component", "attributes": [
      {"name": "Manufacturer", "kind": "text"},
      {"name": "Width", "kind": "length", "default": "4 mm"},
      {"name": "Depth", "kind": "text"},
      {"name": "Length", "kind": "length", "default": "6 mm"},
      {"name": "Height", "kind": "text"}]},
    {"name": "Resistor", "attributes": [
      {"name": "Width", "kind": "length", "default": "4 mm"}]}
  ]})";

// What else may lack: the hole and the keepout an X, the resistor its width, the component, which lies on its
// side, its height. A keepout that could be turned, and a socket that could hold vias.
const char *const otherSchema = R"({
  "everyType": [{"name": "Name", "kind": "text"}],
  "mixins": {},
  "types": [
    {"name": "PCB", "attributes": [
      {"name": "Shape", "kind": "choice", "choices": ["Polygon"]},
      {"name": "Outline", "kind": "doubleList", "quantity": "Length"},
      {"name": "Holes", "kind": "entityList", "takes": ["PCB Hole"]},
      {"name": "Keepouts", "kind": "entityList", "takes": ["Board Keepout"]},
      {"name": "Components", "kind": "entityList", "takes": ["Component"]},
      {"name": "Resistors", "kind": "entityList", "takes": ["Resistor"]},
      {"name": "Chip Sockets", "kind": "entityList", "takes": ["Chip Socket"]}]},
    {"name": "PCB Hole", "attributes": [
      {"name": "Shape", "kind": "choice", "choices": ["Cylinder"]},
      {"name": "Diameter", "kind": "length", "default": "2 mm"},
      {"name": "Z Location", "kind": "location", "default": "7 mm"}]},
    {"name": "Board Keepout", "attributes": [
      {"name": "Width", "kind": "length", "default": "4 mm"},
      {"name": "Depth", "kind": "length", "default": "6 mm"},
      {"name": "Orientation", "kind": "number", "quantity": "Angle", "default": "30"},
      {"name": "Z Location", "kind": "location", "default": "7 mm"}]},
    {"name": "Component", "attributes": [
      {"name": "Shape", "kind": "choice", "choices": ["Cylinder"]},
      {"name": "Diameter", "kind": "length", "default": "4 mm"},
      {"name": "Angle To Board", "kind": "number", "quantity": "Angle", "default": "90"}]},
    {"name": "Resistor", "attributes": [
      {"name": "Reference Designator", "kind": "text"},
      {"name": "Depth", "kind": "length", "default": "4 mm"},
      {"name": "Vias", "kind": "entityList", "takes": ["Via"]}]},
    {"name": "Chip Socket", "attributes": [
      {"name": "Reference Designator", "kind": "text"},
      {"name": "Vias", "kind": "entityList", "takes": ["Via"]}]},
    {"name": "Via", "attributes": []}
  ]})";

class PoorHost : public testing::Test {
protected:
    explicit PoorHost(const char *types = poorSchema) : schema(SchemaLoader::load(types)) {
        set(board, "Outline", "10,-20,110,-20,110,-70,10,-70 <mm>");
    }

    static void set(Entity &entity, const char *label, const std::string &text) {
        Attribute *const attribute = entity.findAttribute(label);
        ASSERT_TRUE(attribute && attribute->setFromString(text)) << label;
    }

    Entity &add(const char *type, const char *list) { return add(board, type, list); }
    Entity &add(Entity &parent, const char *type, const char *list) {
        auto child = std::make_unique<Entity>(*schema->find(TypeRef(type)));
        Entity &added = *child;
        dynamic_cast<EntityList &>(*parent.findAttribute(list)).insertChild(-1, std::move(child));
        return added;
    }

    EDA::EDABoard exported() { return exported(board); }
    static EDA::EDABoard exported(Entity &from) {
        EDA::EDABoard result;
        result.setName("kept");
        EDA::EDAExporter().exportBoard(&from, result, "mm");
        return result;
    }

    std::unique_ptr<Schema> schema;
    Entity board{*schema->find(PCB_t)};
};

TEST_F(PoorHost, BoardWithoutDesignatorKeepsTheNameThatIsThere) { EXPECT_EQ(exported().getName(), "kept"); }

TEST_F(PoorHost, BoardWithoutThicknessHasNone) { EXPECT_EQ(exported().getThickness(), 0.0); }

TEST_F(PoorHost, MissingListsAreSkipped) { EXPECT_EQ(exported().numComponentPlacements(), 0u); }

TEST_F(PoorHost, HoleWithoutZIsAtYZeroAndNotAtTheTopEdge) {
    add("PCB Hole", "Holes");
    const EDA::EDABoard result = exported();
    const EDA::EDAOutline &hole = result.getOutline().beginInternalOutlines()[0];
    EXPECT_EQ(hole.beginPoints()->x, 15.0);
    EXPECT_EQ(hole.beginPoints()->y, 0.0);
}

TEST_F(PoorHost, OtherShapesAddNoPoints) {
    set(add("PCB Hole", "Holes"), "Shape", "Hexagon");
    EXPECT_EQ(exported().getOutline().numInternalOutlines(), 0);
}

TEST_F(PoorHost, KeepoutWithoutZIsAtYZero) {
    add("Board Keepout", "Keepouts");
    const EDA::EDABoard result = exported();
    EXPECT_EQ(result.beginKeepouts()->getOutline().beginPoints()->x, 15.0);
    EXPECT_EQ(result.beginKeepouts()->getOutline().beginPoints()->y, 0.0);
    EXPECT_EQ(result.beginKeepouts()->getHeight(), 0.0);
}

TEST_F(PoorHost, SingleViaWithoutWholeLocationKeepsItsDefaults) {
    add("Via", "Vias");
    const EDA::EDABoard result = exported();
    ASSERT_EQ(result.numVias(0), 1u);
    EXPECT_EQ(result.beginVias()->getXCentre(), 0.0);
    EXPECT_EQ(result.beginVias()->getPlatingStyle(), "");
}

TEST_F(PoorHost, ManyViasWithoutWholeLocationAreNone) {
    Entity &via = add("Via", "Vias");
    set(via, "Modelling Type", "Multiple Vias");
    set(via, "Instance Placements", "1,1,2,2 <mm>");
    EXPECT_EQ(exported().numVias(0), 0u);
}

TEST_F(PoorHost, ComponentThatCannotHaveAModelHasNoName) {
    set(add("Component", "Components"), "Manufacturer", "Acme");
    EXPECT_EQ(exported().beginComponents()->getName(), "");
}

TEST_F(PoorHost, DepthThatIsNoNumberGivesWayToTheLength) {
    add("Component", "Components");
    const EDA::EDABoard result = exported();
    ASSERT_EQ(result.beginComponents()->getOutline().numPoints(), 5u);
    EXPECT_EQ(result.beginComponents()->getOutline().beginPoints()->y, 3.0);
    EXPECT_EQ(result.beginPlacements()->getYLocation(), 70.0 - 3.0);
}

TEST_F(PoorHost, NumberThatIsNoneCountsAsZero) {
    add("Component", "Components");
    EXPECT_EQ(exported().beginComponents()->getHeight(), 0.0);
}

TEST_F(PoorHost, RectangleWithoutDepthHasNoPoints) {
    add("Resistor", "Resistors");
    EXPECT_FALSE(exported().beginComponents()->hasGeometry());
}

class OtherPoorHost : public PoorHost {
protected:
    OtherPoorHost() : PoorHost(otherSchema) {}
};

TEST_F(OtherPoorHost, HoleWithoutXIsAtTheLeftEdge) {
    add("PCB Hole", "Holes");
    const EDA::EDABoard result = exported();
    const EDA::EDAOutline &hole = result.getOutline().beginInternalOutlines()[0];
    EXPECT_EQ(hole.beginPoints()->x, 10.0);
    EXPECT_EQ(hole.beginPoints()->y, 63.0);
}

TEST_F(OtherPoorHost, KeepoutWithoutXIsAtXZeroAndNotAtTheLeftEdge) {
    add("Board Keepout", "Keepouts");
    const EDA::EDABoard result = exported();
    EXPECT_EQ(result.beginKeepouts()->getOutline().beginPoints()->x, 0.0);
    EXPECT_EQ(result.beginKeepouts()->getOutline().beginPoints()->y, 63.0);
}

TEST_F(OtherPoorHost, KeepoutIsNotTurned) {
    add("Board Keepout", "Keepouts");
    const EDA::EDABoard result = exported();
    const EDA::EDAOutline &outline = result.beginKeepouts()->getOutline();
    ASSERT_EQ(outline.numPoints(), 5u);
    EXPECT_EQ(outline.beginPoints()[1].x, 0.0);
    EXPECT_EQ(outline.beginPoints()[1].y, 57.0);
    EXPECT_EQ(outline.beginPoints()[2].x, 4.0);
    EXPECT_EQ(outline.beginPoints()[2].y, 57.0);
}

TEST_F(OtherPoorHost, RectangleWithoutWidthHasNoPoints) {
    add("Resistor", "Resistors");
    EXPECT_FALSE(exported().beginComponents()->hasGeometry());
}

TEST_F(OtherPoorHost, CylinderOnItsSideWithoutHeightCoversALine) {
    add("Component", "Components");
    const EDA::EDABoard result = exported();
    const EDA::EDAOutline &outline = result.beginComponents()->getOutline();
    ASSERT_EQ(outline.numPoints(), 3u); // Corners that fall together are one point.
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point) {
        EXPECT_EQ(std::abs(point->x), 2.0);
        EXPECT_EQ(point->y, -2.0);
    }
    EXPECT_EQ(result.beginComponents()->getHeight(), 4.0);
}

TEST_F(OtherPoorHost, ViasOfAPartAreWalkedAndThoseOfASocketAreNot) {
    add(add("Resistor", "Resistors"), "Via", "Vias");
    EXPECT_EQ(exported().numVias(0), 1u);
    add(add("Chip Socket", "Chip Sockets"), "Via", "Vias");
    EXPECT_EQ(exported().numVias(0), 1u);
    EXPECT_EQ(exported().numComponentPlacements(), 2u);
}

// Vias of sockets come in where a host hands in the socket as the board.
TEST_F(OtherPoorHost, ViaBelongsToAResistorButToNoChipSocket) {
    for (const auto &[type, list, owner] :
         {std::tuple{"Resistor", "Resistors", "X1"}, {"Chip Socket", "Chip Sockets", "BOARD"}}) {
        Entity &part = add(type, list);
        set(part, "Reference Designator", "X1");
        add(part, "Via", "Vias");
        const EDA::EDABoard result = exported(part);
        ASSERT_EQ(result.numVias(0), 1u) << type;
        EXPECT_EQ(result.beginVias()->getAssociatedPart(), owner) << type;
    }
}

} // namespace
