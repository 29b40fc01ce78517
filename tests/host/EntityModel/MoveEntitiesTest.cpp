// Moving many entities at once.
#include "ModelSupport.h"

#include <algorithm>
#include <random>

using namespace EntityModel;

namespace {

// A board with components and sockets.
struct Board {
    Board(int numComponents, int numSockets) {
        UndoStack::instance().clear();
        chassis = create(model.root(), "Chassis", "Chassis");
        board = create(chassis, "PCBs", "PCB");
        for (int i = 0; i < numComponents; ++i) {
            components.push_back(create(board, "Components", "Component", "C" + std::to_string(i)));
        }
        for (int i = 0; i < numSockets; ++i)
            sockets.push_back(create(board, "Chip Sockets", "Chip Socket"));
    }
    std::string text() const { return ModelFile::toText(model); }
    std::string names() const {
        std::vector<Entity *> found;
        getLinkedEntities(board, Components_t, found);
        std::string all;
        for (Entity *entity : found)
            all += textOf(entity, Name_t) + ' ';
        return all;
    }

    Model model;
    Entity *chassis = nullptr;
    Entity *board = nullptr;
    std::vector<Entity *> components;
    std::vector<Entity *> sockets;
};

using Move = EntityEditor::Move;

} // namespace

TEST(MoveEntities, EachGoesToItsNewParentAndTheOthersKeepTheirOrder) {
    Board b(5, 2);
    EntityEditor::moveEntities({{b.components[3], b.sockets[0]}, {b.components[0], b.sockets[1]}});
    EXPECT_EQ(getLinkedEntity(b.sockets[0], ComponentLink_t), b.components[3]);
    EXPECT_EQ(getLinkedEntity(b.sockets[1], ComponentLink_t), b.components[0]);
    EXPECT_EQ(b.names(), "C1 C2 C4 ");
}

TEST(MoveEntities, UndoPutsThemBackWhereTheyWereAndRedoMovesThemAgain) {
    Board b(6, 3);
    const std::string before = b.text();
    const size_t steps = UndoStack::instance().numSteps();
    EntityEditor::moveEntities(
        {{b.components[4], b.sockets[0]}, {b.components[1], b.sockets[1]}, {b.components[2], b.sockets[2]}});
    const std::string after = b.text();
    EXPECT_NE(before, after);
    EXPECT_EQ(UndoStack::instance().numSteps(), steps + 1);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(b.text(), before);
    ASSERT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(b.text(), after);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(b.text(), before);
}

TEST(MoveEntities, InAnOpenStepTheyAreUndoneWithIt) {
    Board b(3, 2);
    const std::string before = b.text();
    {
        const UndoStackOpener step("Step");
        Entity *const made = create(b.board, "Components", "Component", "new");
        EntityEditor::moveEntities({{b.components[1], b.sockets[0]}, {made, b.sockets[1]}});
        set(b.components[1], "Model", "moved");
    }
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(b.text(), before);
}

TEST(MoveEntities, ATakenPlaceIsRefused) {
    Board b(3, 2);
    ASSERT_TRUE(EntityEditor::moveEntity(b.components[0], b.sockets[0]));
    EntityEditor::moveEntities(
        {{b.components[1], b.sockets[0]}, {b.components[1], b.sockets[1]}, {b.components[2], b.sockets[1]}});
    EXPECT_EQ(b.components[0]->getOwnerEntity(), b.sockets[0]);
    EXPECT_EQ(b.components[1]->getOwnerEntity(), b.sockets[1]); // Its second chance was the first to fit.
    EXPECT_EQ(b.components[2]->getOwnerEntity(), b.board);
}

TEST(MoveEntities, AnEntityMovesOnce) {
    Board b(1, 2);
    EntityEditor::moveEntities({{b.components[0], b.sockets[0]}, {b.components[0], b.sockets[1]}});
    EXPECT_EQ(b.components[0]->getOwnerEntity(), b.sockets[0]);
    EXPECT_EQ(getLinkedEntity(b.sockets[1], ComponentLink_t), nullptr);
}

TEST(MoveEntities, NoneGoesBelowAnotherOfThem) {
    Board b(1, 1);
    Entity *const group = create(b.components[0], "SubcomponentGroups", "Subcomponent Group");
    Entity *const solid = create(group, "Obstructions", "Solid Obstruction");
    const std::string before = b.text();
    EntityEditor::moveEntities({{b.components[0], b.components[0]}, {solid, group}});
    EXPECT_EQ(b.text(), before);
}

TEST(MoveEntities, NullsRootsForeignModelsAndTypesWithoutPlaceAreRefused) {
    Board b(1, 1), other(1, 1);
    const std::string before = b.text(), otherBefore = other.text();
    EntityEditor::moveEntities({{nullptr, b.sockets[0]},
                                {b.components[0], nullptr},
                                {b.model.root(), b.sockets[0]},
                                {other.components[0], b.sockets[0]},
                                {b.sockets[0], b.components[0]}});
    EXPECT_EQ(b.text(), before);
    EXPECT_EQ(other.text(), otherBefore);
}

TEST(MoveEntities, OutOfALinkAndBetweenListsTheyMoveAndComeBack) {
    Board b(4, 1);
    EntityEditor::moveEntity(b.components[2], b.sockets[0]);
    const std::string before = b.text();
    EntityEditor::moveEntities(
        {{b.components[2], b.board}, {b.components[0], b.chassis}, {b.components[3], b.board}});
    EXPECT_EQ(b.names(), "C1 C2 C3 ");
    EXPECT_EQ(b.components[0]->getOwnerEntity(), b.chassis);
    UndoStack::instance().undo();
    EXPECT_EQ(b.text(), before);
}

TEST(MoveEntities, WithoutRecordingTheyMoveAndNoStepIsLeftThatCountsOnTheOldPlaces) {
    Board b(2, 1);
    const UndoStackDisabler disabler;
    EntityEditor::moveEntities({{b.components[0], b.sockets[0]}});
    EXPECT_EQ(b.components[0]->getOwnerEntity(), b.sockets[0]);
    EXPECT_FALSE(UndoStack::instance().canUndo());
}

TEST(MoveEntities, ManyAtOnceGiveWhatMovesOneByOneGive) {
    std::mt19937 random(7);
    for (int round = 0; round < 30; ++round) {
        Board batch(40, 25), single(40, 25);
        std::vector<Move> moves;
        for (int i = 0; i < 30; ++i) {
            const size_t component = random() % 40, socket = random() % 25;
            const bool isFirst = std::none_of(moves.begin(), moves.end(), [&](const Move &move) {
                return move.entity == batch.components[component];
            });
            if (!isFirst) continue;
            moves.push_back({batch.components[component], batch.sockets[socket]});
            EntityEditor::moveEntity(single.components[component], single.sockets[socket]);
        }
        const std::string before = batch.text();
        EntityEditor::moveEntities(moves);
        EXPECT_EQ(batch.text(), single.text());
        UndoStack::instance().undo();
        EXPECT_EQ(batch.text(), before);
    }
}

TEST(MoveEntities, OutOfALongListTakesTimeInProportion) {
    constexpr int count = 100000;
    Board b(count, count / 2);
    const std::string before = b.text();
    std::vector<Move> moves;
    for (size_t i = 0; i < count / 2; ++i)
        moves.push_back({b.components[i], b.sockets[i]});
    EntityEditor::moveEntities(moves);
    EXPECT_EQ(b.components[0]->getOwnerEntity(), b.sockets[0]);
    UndoStack::instance().undo();
    EXPECT_TRUE(b.text() == before);
}
