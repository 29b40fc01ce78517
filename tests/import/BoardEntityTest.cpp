// How the board entity comes to exist, and what it is given.
#include "support/ImportBench.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

Entity *importUnder(ImportBench &bench, Entity *parent) {
    bench.rectangle(0, 0, 0, 4, 2);
    return bench.importer.importBoard(&bench.reader, nullptr, parent, nullptr);
}

} // namespace

TEST(BoardEntity, UnderAProjectItIsAPcbInTheChassis) {
    ImportBench bench;
    Entity *board = importUnder(bench, bench.model.root());
    ASSERT_TRUE(board);
    EXPECT_EQ(board->getType(), PCB_t);
    EXPECT_EQ(board->getOwnerEntity(), bench.chassis);
}

TEST(BoardEntity, UnderAProjectWithATestChamberItIsTheChambersBoard) {
    ImportBench bench;
    Model model(Velkin_Solver_Project_t);
    Entity *chamber = EntityEditor::createEntity(Test_Chamber_t, model.root(), AttributePath(Test_Chamber_t));
    Entity *board = importUnder(bench, model.root());
    ASSERT_TRUE(board);
    EXPECT_EQ(board->getOwnerEntity(), chamber);
    EXPECT_EQ(getLinkedEntity(chamber, PCBLink_t), board);
}

TEST(BoardEntity, InADaughterBoardSocketItIsTheDaughterBoard) {
    ImportBench bench;
    Entity *mother = EntityEditor::createEntity(PCB_t, bench.chassis, PCBs_t);
    Entity *socket = EntityEditor::createEntity(Daughter_Board_Socket_t, mother, Daughter_Board_Sockets_t);
    Entity *board = importUnder(bench, socket);
    ASSERT_TRUE(board);
    EXPECT_EQ(getLinkedEntity(socket, Daughter_Board_t), board);
}

TEST(BoardEntity, InASubcomponentGroupItIsASubstrate) {
    ImportBench bench;
    Entity *component = EntityEditor::createEntity(Component_t, bench.chassis, Components_t);
    Entity *group = EntityEditor::createEntity(Subcomponent_Group_t, component, SubcomponentGroups_t);
    Entity *board = importUnder(bench, group);
    ASSERT_TRUE(board);
    EXPECT_EQ(board->getType(), Substrate_t);
    EXPECT_EQ(board->getOwnerEntity(), group);
}

TEST(BoardEntity, UnderAnyOtherParentNothingIsMadeAndTheRunGoesOn) {
    ImportBench bench;
    Entity *component = EntityEditor::createEntity(Component_t, bench.chassis, Components_t);
    bench.rectangle(1, 1, 1, 2, 2);
    EXPECT_EQ(importUnder(bench, component), nullptr);
    EXPECT_EQ(bench.importer.getErrorString(),
              "The outline of a hole in the board was not valid in the file so this hole was skipped.\n");
}

TEST(BoardEntity, AProjectWithoutChassisGivesNoBoard) {
    ImportBench bench;
    Model model(Velkin_Solver_Project_t);
    EXPECT_EQ(importUnder(bench, model.root()), nullptr);
}

TEST(BoardEntity, WithNeitherBoardNorParentNothingIsMade) {
    ImportBench bench;
    EXPECT_EQ(importUnder(bench, nullptr), nullptr);
}

TEST(BoardEntity, ItCarriesTheBoardsNameAndThickness) {
    ImportBench bench;
    bench.board().setName("CTRL-7");
    Entity *board = importUnder(bench, bench.model.root());
    EXPECT_EQ(text(board, Reference_Designator_t), "CTRL-7");
    EXPECT_EQ(text(board, "Thickness"), "1.6 mm");
}

TEST(BoardEntity, AThicknessThatWasNotGivenStaysAtTheDefault) {
    ImportBench bench;
    bench.board().setThickness(1e-9);
    Entity *board = importUnder(bench, bench.model.root());
    EXPECT_TRUE(board->readAttribute("Thickness")->isDefault());
}

TEST(BoardEntity, ABoardWithoutUnitsComesInAsMillimetres) {
    ImportBench bench;
    bench.board().setUnits("");
    EXPECT_EQ(text(importUnder(bench, bench.model.root()), Width_t), "4 mm");
}

TEST(BoardEntity, UnknownUnitsLeaveEveryLengthUnsetWithoutAWord) {
    ImportBench bench;
    bench.board().setUnits("furlong");
    Entity *board = importUnder(bench, bench.model.root());
    EXPECT_TRUE(board->readAttribute(Width_t)->isDefault());
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(BoardEntity, TheDescriptionNamesTheSourceFiles) {
    ImportBench bench;
    bench.board().setSourceBoardFile("some/folder/a.emn");
    bench.board().setSourceLibraryFile("other\\b.emp");
    EXPECT_EQ(text(importUnder(bench, bench.model.root()), Description_t),
              "Imported from EDA files: a.emn, b.emp");
}

TEST(BoardEntity, WithoutSourceFilesTheDescriptionStaysEmpty) {
    ImportBench bench;
    EXPECT_EQ(text(importUnder(bench, bench.model.root()), Description_t), "");
}

TEST(BoardEntity, ASecondImportAddsALineToTheDescription) {
    ImportBench bench;
    bench.board().setSourceBoardFile("a.emn");
    Entity *board = importUnder(bench, bench.model.root());
    bench.importOver(board);
    EXPECT_EQ(text(board, Description_t),
              "Imported from EDA files: a.emn, \nImported from EDA files: a.emn, ");
}

TEST(BoardEntity, AsComponentItIsASubstrateInAGroupOfADetailedComponent) {
    ImportBench bench;
    bench.set(Import_Type_t, "Component");
    bench.rectangle(0, 0, 0, 4, 2);
    Entity *substrate = bench.import();
    ASSERT_TRUE(substrate);
    EXPECT_EQ(substrate->getType(), Substrate_t);
    Entity *group = substrate->getOwnerEntity();
    ASSERT_TRUE(group);
    EXPECT_EQ(group->getType(), Subcomponent_Group_t);
    std::vector<Entity *> obstructions;
    getLinkedEntities(group, Obstructions_t, obstructions);
    EXPECT_EQ(obstructions, std::vector<Entity *>{substrate}); // The group's default contents are gone.
    Entity *component = group->getOwnerEntity();
    EXPECT_EQ(component->getType(), Component_t);
    EXPECT_EQ(text(component, Modelling_Level_t), "Detailed");
    EXPECT_EQ(text(component, Reference_Designator_t), "board");
    EXPECT_EQ(mm(component, Width_t), 4.0);
    EXPECT_EQ(mm(component, Depth_t), 2.0);
    EXPECT_EQ(mm(component, Height_t), 1.6);
}

TEST(BoardEntity, BoardMaterialsAreMadeAndLinked) {
    ImportBench bench;
    bench.board().setConductorMaterial("Copper");
    bench.board().setDielectricMaterial("FR4");
    Entity *board = importUnder(bench, bench.model.root());
    Entity *copper = getLinkedEntity(board, Conductor_Material_t);
    ASSERT_TRUE(copper);
    std::string name;
    EXPECT_EQ(copper->getName(name), "Copper");
    Entity *dielectric = getLinkedEntity(board, Dielectric_Material_t);
    ASSERT_TRUE(dielectric);
    EXPECT_EQ(dielectric->getOwnerEntity(), bench.model.root());
}
