// The board itself: units, name, thickness, outline, and what stays untouched.
#include "ExportScene.h"

#include "host/EntityModel/Undo.h"

using namespace TestSupport;

namespace {

class ExportedBoard : public ExportScene {};

TEST_F(ExportedBoard, HasNameUnitsAndThickness) {
    set(pcb, {{"Reference Designator", "CTRL-1"}, {"Thickness", "2.54 mm"}});
    const EDA::EDABoard board = exported("THOU");
    EXPECT_EQ(board.getName(), "CTRL-1");
    EXPECT_EQ(board.getUnits(), "THOU");
    EXPECT_NEAR(board.getThickness(), 100.0, 1e-9);
}

TEST_F(ExportedBoard, KeepsANumberThatIsInTheUnitsAlready) {
    set(pcb, {{"Thickness", "0.1 mm"}});
    EXPECT_EQ(exported("MM").getThickness(), 0.1);
}

TEST_F(ExportedBoard, NullEntityDoesNothing) {
    EDA::EDABoard board;
    board.setName("kept");
    EDA::EDAExporter().exportBoard(nullptr, board, "THOU");
    EXPECT_EQ(board.getName(), "kept");
    EXPECT_EQ(board.getUnits(), "");
}

TEST_F(ExportedBoard, IsAddedToWhatTheBoardHolds) {
    EDA::EDABoard board;
    EDA::EDAKeepout keepout("Via");
    board.addKeepout(keepout);
    EDA::EDAExporter().exportBoard(pcb, board, "mm");
    EXPECT_EQ(board.numKeepouts(), 1u);
}

TEST_F(ExportedBoard, PolygonIsWhereItsOutlineIsAndClosed) {
    expectRows(exported().getOutline(), {{10, 20, 0}, {110, 20, 0}, {110, 70, 0}, {10, 70, 0}, {10, 20, 0}});
}

TEST_F(ExportedBoard, ClosedPolygonGetsNoFurtherPoint) {
    set(pcb, {{"Outline", "0,0,9,0,9,-9,0,0 <mm>"}});
    EXPECT_EQ(exported().getOutline().numPoints(), 4u);
}

TEST_F(ExportedBoard, OddLastNumberOfAPolygonIsNoPoint) {
    set(pcb, {{"Outline", "1,2,9,0,9,-9,5 <mm>"}});
    expectRows(exported().getOutline(), {{1, -2, 0}, {9, 0, 0}, {9, 9, 0}, {1, -2, 0}});
}

TEST_F(ExportedBoard, PolygonIsConvertedToTheUnits) {
    set(pcb, {{"Outline", "0,0,1,0,1,-2 <in>"}});
    expectRows(exported("thou").getOutline(), {{0, 0, 0}, {1000, 0, 0}, {1000, 2000, 0}, {0, 0, 0}});
}

TEST_F(ExportedBoard, RectangleHangsDownFromTheOrigin) {
    makeBoardRectangular();
    expectRows(exported().getOutline(), {{0, 0, 0}, {0, -50, 0}, {100, -50, 0}, {100, 0, 0}, {0, 0, 0}});
}

TEST_F(ExportedBoard, CylinderIsACentreAndAPointAWholeTurnFurther) {
    set(pcb, {{"Shape", "Cylinder"}, {"Diameter", "60 mm"}});
    expectRows(exported().getOutline(), {{0, 0, 0}, {30, 0, 360}});
}

TEST_F(ExportedBoard, ItemsOfARoundBoardCountFromTheCornerOfItsBound) {
    set(pcb, {{"Shape", "Cylinder"}, {"Diameter", "60 mm"}});
    addHole({{"Shape", "Cylinder"}, {"Diameter", "2 mm"}, {"X Location", "30 mm"}, {"Z Location", "30 mm"}});
    expectRows(exported().getOutline().beginInternalOutlines()[0], {{0, 0, 0}, {1, 0, 360}});
}

TEST_F(ExportedBoard, WithoutPointsHasItsItemsAtTheirOwnCoordinates) {
    set(pcb, {{"Outline", ""}});
    addHole({{"Shape", "Cylinder"}, {"Diameter", "2 mm"}, {"X Location", "3 mm"}, {"Z Location", "4 mm"}});
    const EDA::EDABoard board = exported();
    EXPECT_TRUE(board.getOutline().empty());
    expectRows(board.getOutline().beginInternalOutlines()[0], {{3, -4, 0}, {4, -4, 360}});
}

TEST_F(ExportedBoard, SubstrateIsExportedAsWell) {
    Entity *const part = add(chassis, "Component", "Components");
    Entity *const group = add(part, "Subcomponent Group", "SubcomponentGroups");
    Entity *const substrate = add(group, "Substrate", "Obstructions", {{"Thickness", "0.5 mm"}});
    add(substrate, "Substrate Hole", "Holes", {{"Width", "1 mm"}, {"Depth", "1 mm"}});
    add(substrate, "Via", "Vias");
    const EDA::EDABoard board = exported("mm", substrate);
    EXPECT_EQ(board.getThickness(), 0.5);
    EXPECT_EQ(board.getOutline().numInternalOutlines(), 1);
    EXPECT_EQ(board.numVias(0), 1u);
}

TEST_F(ExportedBoard, HasNoLayersBumpsOrWires) {
    add(pcb, "Conductor Layer", "Conductor Layers");
    add(pcb, "Dielectric Layer", "Dielectric Layers");
    const EDA::EDABoard board = exported();
    EXPECT_EQ(board.numLayers() + board.numBumps(1) + board.numWirebonds(), 0u);
}

TEST_F(ExportedBoard, IsTheSameTwice) {
    addComponent({{"Model", "A"}});
    EDA::EDAExporter exporter;
    EDA::EDABoard first, second;
    exporter.exportBoard(pcb, first, "mm");
    exporter.exportBoard(pcb, second, "mm");
    EXPECT_EQ(first.numComponents(), second.numComponents());
    EXPECT_EQ(rowsOf(first.getOutline()), rowsOf(second.getOutline()));
}

// The units of its last call, all that an exporter keeps, never show under this host: its preferences always
// name some. So this tells no more than that a used exporter's copies export as a new one does.
TEST_F(ExportedBoard, CopiedAndAssignedExportersExportAsANewOne) {
    EDA::EDAExporter used;
    EDA::EDABoard before;
    used.exportBoard(pcb, before, "THOU");
    EDA::EDAExporter copy(used);
    EDA::EDAExporter assigned;
    assigned = used;
    for (EDA::EDAExporter *exporter : {&copy, &assigned}) {
        EDA::EDABoard board;
        exporter->exportBoard(pcb, board, "cm");
        EXPECT_EQ(board.getUnits(), "cm");
        EXPECT_EQ(rowsOf(board.getOutline()), rowsOf(exported("cm").getOutline()));
    }
}

// Every kind of entity that the export looks at, with values, defaults and built parts.
class ExportedModel : public ExportScene {
protected:
    ExportedModel() {
        addHole({{"Shape", "Polygon"}, {"Outline", "0,0,2,0,2,2 <in>"}, {"Orientation", "30 degrees"}});
        Entity *const material = add(model.root(), "Material", "Materials");
        Entity *const part =
            addComponent({{"Model", "QFP"}, {"Thermal Design Power", "3 W"}, {"Angle", "1 rad"}});
        EntityEditor::addEntity(part, MaterialLink_t, material);
        Entity *const detailed = addComponent({{"Modelling Level", "Detailed"}});
        add(detailed, "Subcomponent Group", "SubcomponentGroups");
        via = add(part, "Via", "Vias", {{"X Location", "0.1 mm"}, {"Z Location", "0.3 in"}});
        add(part, "Via", "Vias",
            {{"Modelling Type", "Multiple Vias"}, {"Instance Placements", "0.1,0.7,3,4 <mm>"}});
        plug(addSocket());
        for (const auto &[type, list] : {std::pair{"Resistor", "Resistors"},
                                         {"Capacitor", "Capacitors"},
                                         {"Inductor", "Inductors"},
                                         {"Cable Socket", "Cable Sockets"},
                                         {"Daughter Board Socket", "Daughter Board Sockets"},
                                         {"Board Keepout", "Keepouts"},
                                         {"Via", "Vias"}})
            add(pcb, type, list);
        build({pcb, part, detailed, via});
    }
    Entity *via = nullptr;
};

TEST_F(ExportedModel, IsLeftAsItWas) {
    const std::string before = ModelFile::toText(model);
    const EDA::EDABoard board = exported("THOU");
    EXPECT_EQ(board.numComponentPlacements(), 9u);
    EXPECT_EQ(ModelFile::toText(model), before);
}

// The text leaves defaults out, so it cannot tell what was stored for nothing.
TEST_F(ExportedModel, StoresNoAttributeThatWasOnlyRead) {
    const auto count = [](const Entity *entity) {
        int stored = 0;
        entity->forEachStored([&stored](const Attribute &) { ++stored; });
        return stored;
    };
    std::vector<Entity *> entities{pcb}, children;
    std::vector<int> before;
    for (std::size_t i = 0; i < entities.size(); ++i) {
        before.push_back(count(entities[i]));
        entities[i]->getChildEntities(children);
        entities.insert(entities.end(), children.begin(), children.end());
        children.clear();
    }
    exported();
    for (std::size_t i = 0; i < entities.size(); ++i)
        EXPECT_EQ(count(entities[i]), before[i]) << entities[i]->getType().getLabel();
}

TEST_F(ExportedModel, MakesNoUndoStep) {
    UndoStack::instance().clear();
    exported();
    EXPECT_FALSE(UndoStack::instance().undo());
}

} // namespace
