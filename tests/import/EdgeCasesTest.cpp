// Boards at the edges of what an import is told to do.
#include "support/CancelAfter.h"
#include "support/ImportBench.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using namespace TestSupport;

namespace {

const char *const approximate =
    "The outline of this board was not valid in the file so an approximate bound was used instead.\n";

// A keepout whose place tells the origin of an import's items.
void addSquareKeepout(ImportBench &bench, double x, double y) {
    EDA::EDAKeepout keepout("Via");
    for (const auto &[dx, dy] : {std::pair{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}}) {
        keepout.addPoint(0, x + dx, y + dy, 0.0);
    }
    bench.board().addKeepout(keepout);
}

} // namespace

TEST(BoardShapeEdges, ARoundOutlineWithoutResetOfTheOriginIsAPolygon) {
    for (const char *simplify : {"Yes", "No"}) {
        ImportBench bench;
        bench.circle(0, 0, 0, 10);
        bench.set(Reset_Board_Origin_t, "No");
        bench.set(Simplify_Shapes_t, simplify);
        EXPECT_EQ(text(bench.import(), Shape_t), "Polygon") << simplify;
    }
}

TEST(BoardShapeEdges, AManyPointCircleWithoutSimplifiedShapesIsAPolygon) {
    ImportBench bench;
    for (int i = 0; i < 36; ++i) {
        const double angle = i * std::atan(1.0) / 4.5;
        bench.board().addPoint(0, std::cos(angle), std::sin(angle), 0.0);
    }
    bench.set(Simplify_Shapes_t, "No");
    EXPECT_EQ(text(bench.import(), Shape_t), "Polygon");
}

TEST(BoardShapeEdges, ItemsOfARoundBoardAreMeasuredFromTheCornerOfItsBound) {
    ImportBench bench;
    bench.circle(0, 50, 40, 30);
    addSquareKeepout(bench, 50, 40);
    Entity *board = bench.import();
    ASSERT_EQ(text(board, Shape_t), "Cylinder");
    Entity *keepout = bench.children(board, Board_Keepout_t).at(0);
    EXPECT_NEAR(mm(keepout, X_Location_t), 50.0 - 20.0, 1e-9);
    EXPECT_NEAR(mm(keepout, Z_Location_t), 70.0 - 41.0, 1e-9);
}

TEST(BoardShapeEdges, ARectangleIsTakenEvenWithAHoleApartFromIt) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 10, 5);
    bench.rectangle(1, 100, 100, 101, 101);
    EXPECT_EQ(text(bench.import(), Shape_t), "Rectangle");
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(BoardShapeEdges, AnUprightLineGetsTenThicknessesOfWidth) {
    ImportBench bench;
    bench.loop(0, {{5, 1}, {5, 10}, {5, 21}});
    Entity *board = bench.import();
    EXPECT_EQ(text(board, Outline_t), "0,1,16,1,16,21,0,21 <mm>");
    EXPECT_EQ(mm(board, X_Location_t), 0.0);
    EXPECT_EQ(mm(board, Z_Location_t), 21.0);
    EXPECT_EQ(bench.importer.getErrorString(), approximate);
}

TEST(BoardShapeEdges, TheApproximateBoundHasSixSignificantDigits) {
    ImportBench bench;
    EDA::EDAKeepout keepout("Via");
    keepout.addPoint(0, 0.1234567891, 2.0, 0.0);
    keepout.addPoint(0, 123456.789, 2.0, 0.0);
    keepout.addPoint(0, 123456.789, 1234567.891, 0.0);
    bench.board().addKeepout(keepout);
    EXPECT_EQ(text(bench.import(), Outline_t), "0.123457,2,123457,2,123457,1234570,0.123457,1234570 <mm>");
}

TEST(BoardShapeEdges, OutlinesHaveSixDigitsBehindThePoint) {
    ImportBench bench;
    bench.loop(0, {{0.12345678, 0}, {10, 0}, {10, 5.00000051}});
    EXPECT_EQ(text(bench.import(), Outline_t), "0.123457,0,10,0,10,-5.000001 <mm>");
}

TEST(BoardShapeEdges, HostileNumbersGiveABoardAndNoCrash) {
    const double hostile[] = {std::nan(""),
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::max(),
                              -std::numeric_limits<double>::max(),
                              std::numeric_limits<double>::denorm_min()};
    for (const double number : hostile) {
        ImportBench bench;
        bench.board().setThickness(number);
        bench.loop(0, {{0, 0}, {number, 0}, {number, number}, {-number, number}});
        bench.loop(1, {{0, 0}, {number, 0}, {number, number}});
        bench.circle(2, number, 1, 2);
        EDA::EDAKeepout keepout("Route");
        keepout.setHeight(number);
        keepout.addPoint(0, number, 0, 0.0);
        keepout.addPoint(0, 0, number, number);
        bench.board().addKeepout(keepout);
        for (const char *type : {"PCB", "Component"}) {
            bench.set(Import_Type_t, type);
            Entity *board = bench.import();
            ASSERT_TRUE(board) << number << type;
            EXPECT_EQ(bench.children(board, Board_Keepout_t).size(), 1u);
            bench.importOver(board);
        }
    }
}

TEST(BoardEntityEdges, AGivenBoardIsUsedAlsoWhereAParentIsGiven) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    Entity *existing = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
    EXPECT_EQ(bench.importer.importBoard(&bench.reader, existing, bench.model.root(), nullptr), existing);
    EXPECT_EQ(bench.children(bench.chassis, PCB_t).size(), 1u);
}

TEST(BoardEntityEdges, AsComponentAParentWithoutComponentsGivesNoBoard) {
    ImportBench bench;
    bench.set(Import_Type_t, "Component");
    bench.importer.setImportOptions(bench.options(), bench.board());
    Model empty(Velkin_Solver_Project_t);
    EXPECT_EQ(bench.importer.importBoard(&bench.reader, nullptr, empty.root(), nullptr), nullptr);
}

TEST(BoardEntityEdges, ATakenDaughterBoardSlotGetsTheNewBoardAndUndoTheOldOne) {
    ImportBench bench;
    Entity *mother = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
    Entity *socket = EntityEditor::createEntity(Daughter_Board_Socket_t, mother, Daughter_Board_Sockets_t);
    Entity *old = EntityEditor::createEntity(PCB_t, socket, Daughter_Board_t);
    bench.rectangle(0, 0, 0, 4, 2);
    Entity *board = bench.importer.importBoard(&bench.reader, nullptr, socket, nullptr);
    EXPECT_EQ(getLinkedEntity(socket, Daughter_Board_t), board);
    UndoStack::instance().undo();
    EXPECT_EQ(getLinkedEntity(socket, Daughter_Board_t), old);
}

TEST(BoardEntityEdges, SeveralHolesWithoutABoardEntityAreToldAsANumber) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 10, 10);
    bench.rectangle(1, 1, 1, 2, 2);
    bench.rectangle(2, 3, 3, 4, 4);
    EXPECT_EQ(bench.importer.importBoard(&bench.reader, nullptr, nullptr, nullptr), nullptr);
    EXPECT_EQ(
        bench.importer.getErrorString(),
        "The outline of 2 holes in the board were not valid in the file so these holes were skipped.\n");
}

TEST(BoardEntityEdges, EveryEntityOfAnImportHasAnIdOfItsOwn) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 10, 10);
    bench.rectangle(1, 1, 1, 2, 2);
    bench.rectangle(2, 3, 3, 4, 4);
    Entity *board = bench.import();
    std::set<std::string> ids{board->getID().toString()};
    for (Entity *hole : bench.children(board, PCB_Hole_t))
        ids.insert(hole->getID().toString());
    EXPECT_EQ(ids.size(), 3u);
    EXPECT_EQ(ids.count("0"), 0u);
}

TEST(ReimportEdges, AnExistingDescriptionIsKeptInFrontOfTheNote) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.board().setSourceLibraryFile("lib/b.emp");
    Entity *existing = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
    EntityEditor::setValue(existing, Description_t, "Mine");
    bench.importOver(existing);
    EXPECT_EQ(text(existing, Description_t), "Mine\nImported from EDA files: , b.emp");
}

TEST(ReimportEdges, WithoutSourceFilesAnExistingDescriptionStays) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    Entity *existing = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
    EntityEditor::setValue(existing, Description_t, "Mine\n");
    bench.importOver(existing);
    EXPECT_EQ(text(existing, Description_t), "Mine\n");
}

TEST(ReimportEdges, ReadingARectangleBackLeavesTheXOriginOfTheFormerImport) {
    ImportBench bench;
    bench.rectangle(0, 10, 20, 110, 70);
    Entity *board = bench.import();
    BoardReader second; // Without an outline.
    second.getBoard().setUnits("MM");
    EDA::EDAKeepout keepout("Via");
    for (const auto &[x, y] : {std::pair{14.0, 8.0}, {15.0, 8.0}, {15.0, 9.0}, {14.0, 9.0}}) {
        keepout.addPoint(0, x, y, 0.0);
    }
    second.getBoard().addKeepout(keepout);
    bench.importer.importBoard(&second, board, nullptr, nullptr);
    Entity *made = bench.children(board, Board_Keepout_t).at(0);
    EXPECT_NEAR(mm(made, X_Location_t), 14.0 - 10.0, 1e-9);
    EXPECT_NEAR(mm(made, Z_Location_t), 50.0 - 9.0, 1e-9); // The depth, not the corner of the file.
    EXPECT_EQ(text(board, Width_t), "100 mm");
}

TEST(ReimportEdges, ABadOutlineOverAnEntityWithoutShapeChangesNothing) {
    ImportBench bench;
    Entity *group = EntityEditor::createEntity(
        Subcomponent_Group_t, EntityEditor::createEntity(Component_t, bench.chassis, Components_t),
        SubcomponentGroups_t);
    EXPECT_EQ(bench.importOver(group), group);
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(ReimportEdges, EveryKindOfPartIsReplacedByPlacements) {
    const std::pair<TypeRef, TypeRef> kinds[] = {{Component_t, Components_t},
                                                 {Chip_Socket_t, Chip_Sockets_t},
                                                 {Daughter_Board_Socket_t, Daughter_Board_Sockets_t},
                                                 {Cable_Socket_t, Cable_Sockets_t},
                                                 {Resistor_t, Resistors_t},
                                                 {Capacitor_t, Capacitors_t},
                                                 {Inductor_t, Inductors_t}};
    ImportBench bench;
    Entity *existing = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
    for (const auto &[type, list] : kinds)
        ASSERT_TRUE(EntityEditor::createEntity(type, existing, list));
    bench.rectangle(0, 0, 0, 100, 50);
    EDA::EDAComponentPlacement placement;
    bench.board().addComponentPlacement(placement);
    bench.importOver(existing);
    for (const auto &kind : kinds)
        EXPECT_TRUE(bench.children(existing, kind.first).empty()) << kind.first.getLabel();
}

TEST(ReimportEdges, BumpsAndHolesOfASubstrateAreReplaced) {
    ImportBench bench;
    bench.set(Import_Type_t, "Component");
    bench.rectangle(0, 0, 0, 100, 50);
    Entity *substrate = bench.import();
    EntityEditor::createEntity(Bump_t, substrate, Bumps_t);
    EntityEditor::createEntity(Substrate_Hole_t, substrate, Holes_t);
    bench.rectangle(1, 1, 1, 2, 2);
    EDA::EDABump bump;
    bench.board().addBump(bump, false);
    bench.importOver(substrate);
    EXPECT_TRUE(bench.children(substrate, Bump_t).empty());
    EXPECT_EQ(bench.children(substrate, Substrate_Hole_t).size(), 1u);
}

TEST(ReimportEdges, ViasInsideComponentsSurvive) {
    ImportBench bench;
    Entity *existing = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
    Entity *component = EntityEditor::createEntity(Component_t, existing, Components_t);
    EntityEditor::createEntity(Via_t, component, Vias_t);
    bench.rectangle(0, 0, 0, 100, 50);
    EDA::EDAVia via;
    bench.board().addVia(via, false);
    bench.importOver(existing);
    EXPECT_EQ(bench.children(component, Via_t).size(), 1u);
}

TEST(KeepoutEdges, ASmallCircleIsRoundAsAHoleAndAPolygonAsAKeepout) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 10000, 10000);
    bench.circle(1, 5000, 5000, 1); // Cut into eight: enough for a hole, too few for a keepout.
    EDA::EDAKeepout keepout("Via");
    keepout.addPoint(0, 5000, 5000, 0.0);
    keepout.addPoint(0, 5001, 5000, 360.0);
    bench.board().addKeepout(keepout);
    Entity *board = bench.import();
    EXPECT_EQ(text(bench.children(board, PCB_Hole_t).at(0), Shape_t), "Cylinder");
    EXPECT_EQ(text(bench.children(board, Board_Keepout_t).at(0), Shape_t), "Polygon");
}

TEST(KeepoutEdges, ReaderOptionsForHolesLeaveKeepoutsAlone) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 100, 100);
    bench.circle(1, 50, 50, 10);
    addSquareKeepout(bench, 1, 1);
    bench.reader.changeOptions = [](EDA::EDAReader::GeometryConversionOptions &options) {
        options.holeMinPoints = 1000;
    };
    Entity *board = bench.import();
    EXPECT_EQ(text(bench.children(board, PCB_Hole_t).at(0), Shape_t), "Polygon");
    EXPECT_EQ(text(bench.children(board, Board_Keepout_t).at(0), Shape_t), "Rectangle");
}

TEST(DriverEdges, ProgressCountsDefinitionsOfViasAndNotTheirInstances) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    EDA::EDAVia via;
    via.addInstance("a", 1, 1);
    via.addInstance("b", 2, 1);
    bench.board().addVia(via, false);
    RecordingProgress progress;
    bench.import(&progress);
    EXPECT_THAT(progress.maxima, testing::ElementsAre(1));
}

TEST(DriverEdges, WirebondsCountForComponentsOnly) {
    for (const bool isComponent : {false, true}) {
        ImportBench bench;
        bench.rectangle(0, 0, 0, 4, 2);
        bench.board().addWirebond(EDA::EDAWirebond());
        bench.set(Import_Type_t, isComponent ? "Component" : "PCB");
        RecordingProgress progress;
        bench.import(&progress);
        EXPECT_THAT(progress.maxima, testing::ElementsAre(isComponent ? 1 : 0));
        EXPECT_EQ(progress.values.size(), isComponent ? 1u : 0u);
    }
}

TEST(DriverEdges, ACancelAtTheLastHoleTellsNothingOfSkippedHoles) {
    ImportBench bench;
    bench.loop(0, {{0, 0}, {10, 0}, {10, 5}});
    bench.loop(1, {{1, 1}, {2, 1}});
    CancelAfter progress(0);
    bench.import(&progress);
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(DriverEdges, WirebondGroupsOverAPcbAreNotMadeAndNothingFails) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    EDA::EDAWirebond wirebond;
    wirebond.setGroupName("ring");
    bench.board().addWirebond(wirebond);
    bench.set(Import_Type_t, "Component");
    Entity *pcb = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
    EXPECT_EQ(bench.importOver(pcb), pcb);
    EXPECT_EQ(bench.importer.getErrorString(), "");
}
