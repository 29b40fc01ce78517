// A host whose entities lack what the export looks for.
#include "export/EDAExporter.h"
#include "host/EntityModel/SchemaLoader.h"
#include "host/EntityModel/Types.h"

#include <gtest/gtest.h>

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

class PoorHost : public testing::Test {
protected:
    PoorHost() { set(board, "Outline", "10,-20,110,-20,110,-70,10,-70 <mm>"); }

    static void set(Entity &entity, const char *label, const std::string &text) {
        Attribute *const attribute = entity.findAttribute(label);
        ASSERT_TRUE(attribute && attribute->setFromString(text)) << label;
    }

    Entity &add(const char *type, const char *list) {
        auto child = std::make_unique<Entity>(*schema->find(TypeRef(type)));
        Entity &added = *child;
        dynamic_cast<EntityList &>(*board.findAttribute(list)).insertChild(-1, std::move(child));
        return added;
    }

    EDA::EDABoard exported() {
        EDA::EDABoard result;
        result.setName("kept");
        EDA::EDAExporter().exportBoard(&board, result, "mm");
        return result;
    }

    std::unique_ptr<Schema> schema = SchemaLoader::load(poorSchema);
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

} // namespace
