// Imports over a board entity that exists.
#include "support/ImportBench.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

// A chassis with a polygon board that has one child of each kind that a re-import may replace.
struct ExistingBoard : ImportBench {
    ExistingBoard() {
        existing = EntityEditor::createEntity(PCB_t, chassis, PCBs_t);
        const std::pair<TypeRef, TypeRef> kinds[] = {
            {PCB_Hole_t, Holes_t},           {Component_t, Components_t},   {Resistor_t, Resistors_t},
            {Chip_Socket_t, Chip_Sockets_t}, {Board_Keepout_t, Keepouts_t}, {Via_t, Vias_t}};
        for (const auto &[type, list] : kinds)
            EntityEditor::createEntity(type, existing, list);
    }
    size_t count(const TypeRef &type) { return children(existing, type).size(); }

    Entity *existing = nullptr;
};

} // namespace

TEST(Reimport, TheGivenBoardIsUsedAndNothingIsMadeBesideIt) {
    ExistingBoard bench;
    bench.rectangle(0, 10, 20, 110, 70);
    EXPECT_EQ(bench.importOver(bench.existing), bench.existing);
    EXPECT_EQ(bench.children(bench.chassis, PCB_t).size(), 1u);
    EXPECT_EQ(text(bench.existing, Shape_t), "Rectangle");
}

TEST(Reimport, ThicknessDesignatorAndLocationOfAnExistingBoardStay) {
    ExistingBoard bench;
    EntityEditor::setValue(bench.existing, "Thickness", "9 mm");
    EntityEditor::setValue(bench.existing, X_Location_t, "5 mm");
    bench.loop(0, {{3, 4}, {13, 4}, {13, 9}});
    bench.importOver(bench.existing);
    EXPECT_EQ(text(bench.existing, "Thickness"), "9 mm");
    EXPECT_EQ(text(bench.existing, Reference_Designator_t), "");
    EXPECT_EQ(text(bench.existing, X_Location_t), "5 mm");
    EXPECT_FALSE(bench.existing->findAttribute(Geometry_t)->isLocked());
}

TEST(Reimport, KindsThatTheNewDataHasAreReplacedAndOthersStay) {
    ExistingBoard bench;
    bench.rectangle(0, 0, 0, 100, 50);
    EDA::EDAVia via;
    bench.board().addVia(via, false);
    bench.importOver(bench.existing);
    EXPECT_EQ(bench.count(Via_t), 0u);
    EXPECT_EQ(bench.count(Component_t), 1u);
    EXPECT_EQ(bench.count(PCB_Hole_t), 1u);
    EXPECT_EQ(bench.count(Board_Keepout_t), 1u);
}

TEST(Reimport, NewHolesReplaceTheOldOnes) {
    ExistingBoard bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.rectangle(1, 1, 1, 2, 2);
    bench.rectangle(2, 3, 1, 4, 2);
    bench.importOver(bench.existing);
    EXPECT_EQ(bench.count(PCB_Hole_t), 2u);
}

TEST(Reimport, PlacementsReplaceComponentsOfEveryKind) {
    ExistingBoard bench;
    bench.rectangle(0, 0, 0, 100, 50);
    EDA::EDAComponentPlacement placement;
    bench.board().addComponentPlacement(placement);
    bench.importOver(bench.existing);
    EXPECT_EQ(bench.count(Component_t), 0u);
    EXPECT_EQ(bench.count(Resistor_t), 0u);
    EXPECT_EQ(bench.count(Chip_Socket_t), 0u);
}

TEST(Reimport, ProtectedEntitiesAreReplacedToo) {
    ExistingBoard bench;
    bench.children(bench.existing, PCB_Hole_t)[0]->protect("");
    bench.rectangle(0, 0, 0, 100, 50);
    bench.rectangle(1, 1, 1, 2, 2);
    bench.importOver(bench.existing);
    EXPECT_EQ(bench.count(PCB_Hole_t), 1u);
}

TEST(Reimport, AnImportThatIsNoBaselineReplacesNothing) {
    ExistingBoard bench;
    bench.board().setImportType("baseline");
    bench.rectangle(0, 0, 0, 100, 50);
    bench.rectangle(1, 1, 1, 2, 2);
    bench.importOver(bench.existing);
    EXPECT_EQ(bench.count(PCB_Hole_t), 2u);
}

TEST(Reimport, AnOutlineOfNoAreaIsStillTakenWhereTheBoardExists) {
    ExistingBoard bench;
    bench.loop(0, {{0, 5}, {10, 5}, {20, 5}});
    bench.importOver(bench.existing);
    EXPECT_EQ(text(bench.existing, Outline_t), "0,-5,10,-5,20,-5 <mm>");
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(Reimport, WithABadOutlineThePolygonOfTheBoardGivesTheOrigin) {
    ExistingBoard bench;
    EntityEditor::setValue(bench.existing, Shape_t, "Polygon");
    EntityEditor::setValue(bench.existing, Outline_t, "3,-9,13,-9,13,-4 <mm>");
    EDA::EDAKeepout keepout("Via");
    for (const auto &[x, y] : {std::pair{4.0, 8.0}, {5.0, 8.0}, {5.0, 9.0}, {4.0, 9.0}})
        keepout.addPoint(0, x, y, 0.0);
    bench.board().addKeepout(keepout);
    bench.importOver(bench.existing);
    Entity *made = bench.children(bench.existing, Board_Keepout_t)[0];
    EXPECT_NEAR(mm(made, X_Location_t), 1.0, 1e-9);
    EXPECT_NEAR(mm(made, Z_Location_t), 0.0, 1e-9);
    EXPECT_EQ(text(bench.existing, Outline_t), "3,-9,13,-9,13,-4 <mm>");
}

TEST(Reimport, WithABadOutlineARectangularBoardGivesItsDepthAsOrigin) {
    ExistingBoard bench;
    EntityEditor::setValue(bench.existing, Shape_t, "Rectangle");
    EntityEditor::setValue(bench.existing, Depth_t, "50 mm");
    EDA::EDAKeepout keepout("Via");
    for (const auto &[x, y] : {std::pair{4.0, 8.0}, {5.0, 8.0}, {5.0, 9.0}, {4.0, 9.0}})
        keepout.addPoint(0, x, y, 0.0);
    bench.board().addKeepout(keepout);
    bench.importOver(bench.existing);
    Entity *made = bench.children(bench.existing, Board_Keepout_t)[0];
    EXPECT_NEAR(mm(made, X_Location_t), 4.0, 1e-9);
    EXPECT_NEAR(mm(made, Z_Location_t), 41.0, 1e-9);
}

TEST(Reimport, WithABadOutlineARoundBoardGivesItsDiameterAsOrigin) {
    ExistingBoard bench;
    EntityEditor::setValue(bench.existing, Shape_t, "Cylinder");
    EntityEditor::setValue(bench.existing, Diameter_t, "30 mm");
    EDA::EDAKeepout keepout("Via");
    for (const auto &[x, y] : {std::pair{4.0, 8.0}, {5.0, 8.0}, {5.0, 9.0}, {4.0, 9.0}})
        keepout.addPoint(0, x, y, 0.0);
    bench.board().addKeepout(keepout);
    bench.importOver(bench.existing);
    EXPECT_NEAR(mm(bench.children(bench.existing, Board_Keepout_t)[0], Z_Location_t), 21.0, 1e-9);
}

TEST(Reimport, UndoRestoresTheModelAndRedoBringsTheImportBack) {
    ExistingBoard bench;
    bench.rectangle(0, 0, 0, 100, 50);
    bench.rectangle(1, 1, 1, 2, 2);
    EDA::EDAVia via;
    bench.board().addVia(via, false);
    const std::string before = ModelFile::toText(bench.model);
    bench.importOver(bench.existing);
    const std::string after = ModelFile::toText(bench.model);
    EXPECT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
    EXPECT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(ModelFile::toText(bench.model), after);
}
