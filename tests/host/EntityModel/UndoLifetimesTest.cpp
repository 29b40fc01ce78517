// What an undo step names must outlive it; what is outside a model belongs to no step.
#include "ModelSupport.h"

#include <memory>
#include <stdexcept>
#include <thread>

using namespace EntityModel;

namespace {

struct UndoLifetimes : testing::Test {
    UndoLifetimes() {
        stack().clear();
        chassis = create(model.root(), "Chassis", "Chassis");
        pcb = create(chassis, "PCBs", "PCB");
        copper = create(model.root(), "Materials", "Material", "Copper");
    }
    ~UndoLifetimes() override { stack().clear(); }

    static UndoStack &stack() { return UndoStack::instance(); }
    std::string text() const { return ModelFile::toText(model); }
    static bool linkConductor(Entity *board, Entity *target) {
        return EntityEditor::addEntity(board, AttributePath(Conductor_Material_t), target);
    }
    Entity *conductor() const { return getLinkedEntity(pcb, Conductor_Material_t); }

    Model model;
    Entity *chassis = nullptr;
    Entity *pcb = nullptr;
    Entity *copper = nullptr;
};

std::unique_ptr<Entity> item(const TypeRef &type) {
    return std::make_unique<Entity>(*Schema::instance().find(type));
}

} // namespace

TEST_F(UndoLifetimes, AnEmptyStepKeepsWhatCanBeRedone) {
    stack().undo();
    { const UndoStackOpener opener("empty"); }
    EXPECT_TRUE(stack().canRedo());
}

TEST_F(UndoLifetimes, UnderADisablerNothingIsRecordedNotEvenByAnOpenerInIt) {
    const size_t before = stack().numSteps();
    {
        const UndoStackDisabler disabler;
        const UndoStackOpener step("step");
        set(pcb, "Name", "A");
        create(pcb, "Holes", "PCB Hole");
    }
    EXPECT_EQ(stack().numSteps(), before);
    set(pcb, "Name", "B");
    EXPECT_EQ(stack().numSteps(), before + 1); // And recording goes on behind it.
}

TEST_F(UndoLifetimes, ChildrenOfANewEntityNeedNoRecordsAndComeBackWithIt) {
    const std::string before = text();
    {
        const UndoStackOpener opener("import");
        Entity *const board = create(chassis, "PCBs", "PCB", "B");
        for (int i = 0; i < 100; ++i)
            set(create(board, "Holes", "PCB Hole"), "Diameter", std::to_string(i));
        EntityEditor::copyEntity(board, chassis);
    }
    EXPECT_EQ(stack().numRecords(), 2u) << "the two boards";
    const std::string after = text();
    stack().undo();
    EXPECT_EQ(text(), before);
    stack().redo();
    EXPECT_EQ(text(), after);
}

// The socket's place is taken again when the first component should come back.
TEST_F(UndoLifetimes, AChildThatLeftANewOwnerGoesWithItsStep) {
    const std::string before = text();
    {
        const UndoStackOpener opener("sockets");
        Entity *const socket = create(pcb, "Chip Sockets", "Chip Socket");
        Entity *const first = create(socket, "ComponentLink", "Component", "1");
        ASSERT_TRUE(EntityEditor::moveEntity(first, chassis));
        create(socket, "ComponentLink", "Component", "2");
        Entity *const board = create(chassis, "PCBs", "PCB");
        Entity *const part = create(board, "Components", "Component", "3");
        create(board, "Components", "Component", "4");
        ASSERT_TRUE(EntityEditor::moveEntity(part, pcb));
        EntityEditor::deleteEntity(create(board, "Components", "Component", "5"));
    }
    const std::string after = text();
    for (int i = 0; i < 2; ++i) {
        stack().undo();
        EXPECT_EQ(text(), before);
        stack().redo();
        EXPECT_EQ(text(), after);
    }
}

TEST_F(UndoLifetimes, AnUnrecordedValueDropsWhatWasUndone) {
    linkConductor(pcb, copper);
    stack().undo();
    {
        const UndoStackDisabler disabler;
        set(pcb, "Name", "A");
    }
    EXPECT_FALSE(stack().redo());
    EXPECT_TRUE(stack().undo());
}

TEST_F(UndoLifetimes, AnUnrecordedDeletionForgetsTheSteps) {
    linkConductor(pcb, copper);
    stack().undo();
    {
        const UndoStackDisabler disabler;
        EntityEditor::deleteEntity(copper);
    }
    EXPECT_FALSE(stack().redo());
    EXPECT_FALSE(stack().undo());
    EXPECT_EQ(conductor(), nullptr);
}

TEST_F(UndoLifetimes, AnUnrecordedMoveForgetsTheSteps) {
    Entity *const component = create(pcb, "Components", "Component");
    {
        const UndoStackDisabler disabler;
        ASSERT_TRUE(EntityEditor::moveEntity(component, chassis));
    }
    EXPECT_FALSE(stack().undo());
    EXPECT_EQ(component->getOwnerEntity(), chassis);
}

TEST_F(UndoLifetimes, WhatAStepHoldsTakesNoChildrenAndGivesNone) {
    Entity *const hole = create(pcb, "Holes", "PCB Hole");
    EntityEditor::deleteEntity(pcb);
    const std::string before = text();
    EXPECT_EQ(create(pcb, "Holes", "PCB Hole"), nullptr);
    EXPECT_FALSE(EntityEditor::deleteEntity(hole));
    EXPECT_FALSE(linkConductor(pcb, copper));
    stack().undo();
    EXPECT_EQ(hole->getOwnerEntity(), pcb);
}

TEST_F(UndoLifetimes, AnExceptionClosesTheStepWithWhatWasDone) {
    const std::string before = text();
    try {
        const UndoStackOpener step("thrown");
        create(pcb, "Holes", "PCB Hole");
        EntityEditor::setValueWithUnits(pcb, Width_t, -1.0, "mm");
        FAIL() << "a negative width must be refused";
    } catch (const std::out_of_range &) {
    }
    EXPECT_EQ(stack().undoName(), "thrown");
    EXPECT_TRUE(stack().undo());
    EXPECT_EQ(text(), before);
}

// The board that was undone still links to the material: the deletion must not record a change of what is
// lost.
TEST_F(UndoLifetimes, DeletingTheTargetOfAnEntityThatWasUndoneCanBeUndone) {
    const std::string before = text();
    {
        const UndoStackOpener step("board");
        linkConductor(create(chassis, "PCBs", "PCB"), copper);
    }
    stack().undo();
    EntityEditor::deleteEntity(copper);
    EXPECT_FALSE(stack().canRedo());
    EXPECT_TRUE(stack().undo());
    EXPECT_EQ(text(), before);
}

// The board's deletion is forgotten, and the board with it, while the material's can still be undone.
TEST_F(UndoLifetimes, ADeletionThatWasForgottenIsNamedByNoLaterStep) {
    linkConductor(pcb, copper);
    EntityEditor::deleteEntity(pcb);
    EntityEditor::deleteEntity(copper);
    for (size_t i = 0; i < UndoStack::maxSteps - 1; ++i)
        set(chassis, "Name", std::to_string(i));
    while (stack().undo()) {
    }
    EXPECT_EQ(copper->getOwnerEntity(), model.root());
    std::vector<Entity *> boards;
    getLinkedEntities(chassis, PCBs_t, boards);
    EXPECT_TRUE(boards.empty());
}

TEST_F(UndoLifetimes, LinksAmongDeletedEntitiesComeBackWithThem) {
    Entity *const trace = create(create(pcb, "Conductor Layers", "Conductor Layer"), "Traces", "Trace");
    Entity *const junction = create(trace, "TraceJunctions", "Trace Junction");
    Entity *const segment = create(trace, "TraceSegments", "Trace Segment");
    EntityEditor::addEntity(segment, AttributePath(Start_Junction_t), junction);
    const std::string before = text();
    EntityEditor::deleteEntity(junction);
    EntityEditor::deleteEntity(segment);
    stack().undo();
    EXPECT_EQ(getLinkedEntity(segment, Start_Junction_t), nullptr);
    stack().undo();
    EXPECT_EQ(text(), before);
}

TEST_F(UndoLifetimes, AMoveIntoAnotherModelIsRefused) {
    Model other;
    EXPECT_FALSE(EntityEditor::moveEntity(pcb, create(other.root(), "Chassis", "Chassis")));
}

TEST_F(UndoLifetimes, ReplacingAnOwnedChildIsOneStep) {
    Entity *const socket = create(pcb, "Daughter Board Sockets", "Daughter Board Socket");
    Entity *const first = create(socket, "Daughter Board", "PCB", "first");
    const size_t steps = stack().numSteps();
    create(socket, "Daughter Board", "PCB", "second");
    EXPECT_EQ(stack().numSteps(), steps + 1);
    stack().undo();
    EXPECT_EQ(getLinkedEntity(socket, Daughter_Board_t), first);
}

TEST_F(UndoLifetimes, EditsOfAnItemOutsideEveryModelAreNotRecorded) {
    const size_t steps = stack().numSteps();
    {
        const auto component = item(Component_t);
        set(component.get(), "Model", "X");
        create(component.get(), "SubcomponentGroups", "Subcomponent Group");
        EntityEditor::deleteEntity(create(component.get(), "Vias", "Via"));
    }
    EXPECT_EQ(stack().numSteps(), steps);
    EXPECT_TRUE(stack().undo());
}

TEST_F(UndoLifetimes, AnItemThatIsAddedGetsIdsAndGoesWithItsStep) {
    const std::string before = text();
    auto component = item(Component_t);
    Entity *const group = create(component.get(), "SubcomponentGroups", "Subcomponent Group");
    {
        const UndoStackOpener step("item");
        ASSERT_TRUE(EntityEditor::addEntity(pcb, AttributePath(Components_t), component.get()));
        set(component.release(), "Model", "X");
    }
    EXPECT_NE(group->getID().value(), 0u);
    const std::string after = text();
    stack().undo();
    EXPECT_EQ(text(), before);
    stack().redo();
    EXPECT_EQ(text(), after);
}

TEST_F(UndoLifetimes, AnEntityThatAStepHoldsIsNotAddedAgain) {
    Entity *const hole = create(pcb, "Holes", "PCB Hole");
    EntityEditor::deleteEntity(hole);
    EXPECT_FALSE(EntityEditor::addEntity(pcb, AttributePath(Holes_t), hole));
}

TEST_F(UndoLifetimes, AMoveOutOfAnItemIsUndoneWithoutTheItem) {
    Entity *const socket = create(pcb, "Chip Sockets", "Chip Socket");
    const std::string before = text();
    {
        const auto source = item(Chip_Socket_t);
        Entity *const component = create(source.get(), "ComponentLink", "Component");
        ASSERT_TRUE(EntityEditor::moveEntity(component, socket));
        EXPECT_NE(component->getID().value(), 0u);
    }
    EXPECT_TRUE(stack().undo());
    EXPECT_EQ(text(), before);
}

TEST_F(UndoLifetimes, AnUnrecordedReplacementOfAnOwnedChildLeavesOlderStepsSafe) {
    Entity *const socket = create(pcb, "Daughter Board Sockets", "Daughter Board Socket");
    Entity *const first = create(socket, "Daughter Board", "PCB", "first");
    set(first, "Description", "text");
    EntityEditor::deleteEntity(first);
    Entity *second = nullptr;
    {
        const UndoStackDisabler disabler;
        second = create(socket, "Daughter Board", "PCB", "second");
    }
    set(second, "Description", "text");
    while (stack().undo()) {
    }
    while (stack().redo()) {
    }
    EXPECT_EQ(textOf(second, Description_t), "text");
}

TEST_F(UndoLifetimes, DestroyingAModelForgetsTheStepsThatHoldItsEntities) {
    {
        Model other;
        EntityEditor::deleteEntity(create(other.root(), "Chassis", "Chassis"));
    }
    EXPECT_FALSE(stack().canUndo());
}

TEST_F(UndoLifetimes, EachThreadHasStepsOfItsOwn) {
    const size_t steps = stack().numSteps();
    std::thread([] {
        Model other;
        create(other.root(), "Chassis", "Chassis");
        EXPECT_EQ(UndoStack::instance().numSteps(), 1u);
    }).join();
    EXPECT_EQ(stack().numSteps(), steps);
}
