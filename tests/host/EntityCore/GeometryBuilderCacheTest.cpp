// What a builder keeps, builds along, and deletes.
#include "PartScene.h"

namespace {

using Entity = EntityModel::Entity;

class GeometryBuilderCache : public testing::Test, protected PartScene {};

TEST_F(GeometryBuilderCache, NothingIsThereBeforeItIsBuilt) {
    EXPECT_EQ(builder.getPart(board), nullptr);
    Geometry::Part *const part = builder.buildPart(board);
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(builder.getPart(board), part);
    EXPECT_EQ(part->getEntity(), board);
}

TEST_F(GeometryBuilderCache, ChangesShowWhenThePartIsBuiltAnew) {
    Entity *const component = addComponent();
    builder.buildPart(component);
    place(component, 50, 50);
    expectBox(builder.getPart(component), {20, 2, 30, 30, 5, 34});
    expectBox(builder.buildPart(component), {50, 2, 50, 60, 5, 54});
    expectBox(builder.getPart(component), {50, 2, 50, 60, 5, 54});
}

TEST_F(GeometryBuilderCache, PartThatCanNoLongerBeBuiltIsGone) {
    builder.buildPart(board);
    setLengths(board, {{"Width", 0}});
    EXPECT_EQ(builder.buildPart(board), nullptr);
    EXPECT_EQ(builder.getPart(board), nullptr);
}

TEST_F(GeometryBuilderCache, OwnersAndChildrenGetNoPartUnlessAsked) {
    Entity *const component = addComponent();
    Entity *const via = add("Via", component, "Vias");
    builder.buildPart(component);
    EXPECT_EQ(builder.getPart(board), nullptr);
    EXPECT_EQ(builder.getPart(via), nullptr);
}

TEST_F(GeometryBuilderCache, ManyAtOnceAreBuiltAsEachAlone) {
    Entity *const component = addComponent();
    Entity *const socket = addComponent("Chip Socket", "Chip Sockets");
    place(socket, 60, 10);
    Entity *const plugged = add("Component", socket, "ComponentLink");
    Entity *const via = add("Via", component, "Vias");
    std::vector<Entity *> const all{component, plugged, socket, via};
    EntityGUI::GeometryBuilder single;
    for (Entity *entity : all)
        ASSERT_NE(single.buildPart(entity), nullptr);
    builder.buildParts(all);
    for (Entity *entity : all) {
        ASSERT_NE(builder.getPart(entity), nullptr);
        Geometry::Bound const a = builder.getPart(entity)->getBound(), b = single.getPart(entity)->getBound();
        EXPECT_EQ(a.getXLow(), b.getXLow());
        EXPECT_EQ(a.getYHigh(), b.getYHigh());
        EXPECT_EQ(a.getZLow(), b.getZLow());
    }
    EXPECT_EQ(builder.getPart(board), nullptr);
}

TEST_F(GeometryBuilderCache, OfManyAtOnceThoseWithoutShapeHaveNoPart) {
    Entity *const component = addComponent(), *const flat = addComponent();
    builder.buildPart(flat);
    setLengths(flat, {{"Width", 0}});
    builder.buildParts({nullptr, flat, chassis, component, component});
    EXPECT_EQ(builder.getPart(flat), nullptr);
    EXPECT_EQ(builder.getPart(chassis), nullptr);
    EXPECT_NE(builder.getPart(component), nullptr);
}

TEST_F(GeometryBuilderCache, ChildrenAreBuiltThroughGroups) {
    Entity *const component = addComponent();
    Entity *const group = addGroup(component);
    Entity *const solid = add("Solid Obstruction", group, "Obstructions");
    Entity *const resistor = addComponent("Resistor", "Resistors");
    builder.buildPart(model.root(), true);
    for (Entity *entity : {board, component, solid, resistor})
        EXPECT_NE(builder.getPart(entity), nullptr);
    EXPECT_EQ(builder.getPart(group), nullptr);
    EXPECT_EQ(builder.getPart(chassis), nullptr);
}

TEST_F(GeometryBuilderCache, ChildrenHaveTheSamePartsAsWhenBuiltAlone) {
    Entity *const component = addComponent();
    setAngle(component, "Angle", 30);
    Entity *const solid = add("Solid Obstruction", addGroup(component), "Obstructions");
    Geometry::Vec3T<double> const alone = toRoot(builder.buildPart(solid), 1, 2, 3);
    builder.buildPart(board, true);
    Geometry::Vec3T<double> const along = toRoot(builder.getPart(solid), 1, 2, 3);
    expectPoint(along, alone.x, alone.y, alone.z);
}

TEST_F(GeometryBuilderCache, ChildrenOfAnEntityWithoutPartAreBuilt) {
    Entity *const component = addComponent();
    set(board, "Shape", "Polygon");
    EXPECT_EQ(builder.buildPart(board, true), nullptr);
    EXPECT_NE(builder.getPart(component), nullptr);
}

TEST_F(GeometryBuilderCache, TypesWithoutPartsGiveNull) {
    Entity *const layer = add("Conductor Layer", board, "Conductor Layers");
    Entity *const copper = add("PCB Conductor", layer, "Conductors");
    Entity *const material = add("Material", model.root(), "Materials");
    Entity *const heatsink = add("Heatsink", addComponent(), "HeatsinkLink");
    for (Entity *entity : {model.root(), chassis, layer, copper, material, heatsink}) {
        EXPECT_EQ(builder.buildPart(entity), nullptr);
        EXPECT_EQ(builder.getPart(entity), nullptr);
    }
}

TEST_F(GeometryBuilderCache, NullEntityIsHarmless) {
    EXPECT_EQ(builder.buildPart(nullptr, true), nullptr);
    EXPECT_EQ(builder.getPart(nullptr), nullptr);
    builder.deletePart(nullptr, true, false);
}

TEST_F(GeometryBuilderCache, ParentIsThePartOfTheNearestOwnerThatHasOne) {
    Entity *const component = addComponent();
    Entity *const solid = add("Solid Obstruction", addGroup(component), "Obstructions");
    builder.buildPart(board);
    builder.buildPart(solid);
    EXPECT_EQ(builder.getPart(solid)->getParent(), builder.getPart(board));
    builder.buildPart(board, true);
    EXPECT_EQ(builder.getPart(solid)->getParent(), builder.getPart(component));
    EXPECT_EQ(builder.getPart(component)->getParent(), builder.getPart(board));
    EXPECT_EQ(builder.getPart(board)->getParent(), nullptr);
}

TEST_F(GeometryBuilderCache, ParentFollowsWhenItIsBuiltAnewAndGoesWhenItIsDeleted) {
    Entity *const component = addComponent();
    builder.buildPart(board, true);
    Geometry::Part const *const part = builder.getPart(component);
    Geometry::Part const *const anew = builder.buildPart(board);
    EXPECT_EQ(part->getParent(), anew);
    builder.deletePart(board, false, false);
    EXPECT_EQ(builder.getPart(component), part);
    EXPECT_EQ(part->getParent(), nullptr);
    expectBox(part, {20, 2, 30, 30, 5, 34});
}

TEST_F(GeometryBuilderCache, DeletePartTakesThatPartAlone) {
    Entity *const first = addComponent(), *const second = addComponent();
    builder.buildPart(board, true);
    builder.deletePart(first, false, false);
    EXPECT_EQ(builder.getPart(first), nullptr);
    EXPECT_NE(builder.getPart(second), nullptr);
    EXPECT_NE(builder.getPart(board), nullptr);
    builder.deletePart(first, false, false); // no part: nothing to do
}

TEST_F(GeometryBuilderCache, DeletePartTakesTheSubtreeWhenAsked) {
    Entity *const component = addComponent(), *const other = addComponent();
    Entity *const solid = add("Solid Obstruction", addGroup(component), "Obstructions");
    Entity *const via = add("Via", component, "Vias");
    builder.buildPart(board, true);
    builder.deletePart(component, true, false);
    for (Entity *entity : {component, solid, via})
        EXPECT_EQ(builder.getPart(entity), nullptr);
    EXPECT_NE(builder.getPart(other), nullptr);
    EXPECT_NE(builder.getPart(board), nullptr);
}

TEST_F(GeometryBuilderCache, PartsOfATemporaryListSurviveEachOther) {
    // A component that was moved into a socket after both parts were built.
    Entity *const socket = add("Chip Socket", board, "Chip Sockets");
    Entity *const chip = addComponent();
    std::vector<Geometry::Part *> const temporary{builder.buildPart(socket), builder.buildPart(chip)};
    ASSERT_TRUE(Editor::moveEntity(chip, socket));
    for (Geometry::Part *part : temporary)
        builder.deletePart(part->getEntity(), false, false);
    EXPECT_EQ(builder.getPart(socket), nullptr);
    EXPECT_EQ(builder.getPart(chip), nullptr);
}

TEST_F(GeometryBuilderCache, ClearForgetsEverything) {
    Entity *const component = addComponent();
    builder.buildPart(board, true);
    builder.clear();
    EXPECT_EQ(builder.getPart(board), nullptr);
    EXPECT_EQ(builder.getPart(component), nullptr);
}

TEST_F(GeometryBuilderCache, BuilderOutlivesTheModel) {
    EntityGUI::GeometryBuilder keeper;
    {
        EntityModel::Model other;
        Entity *const room = add("Test Chamber", other.root(), "Test Chamber");
        Entity *const tested = add("PCB", room, "PCBLink");
        EXPECT_NE(keeper.buildPart(tested, true), nullptr);
    }
    keeper.clear();
}

TEST_F(GeometryBuilderCache, DeepNestingOfBoardsIsBuiltWithoutRecursion) {
    Entity *deepest = board;
    for (int depth = 0; depth < 200; ++depth) {
        Entity *const socket = add("Daughter Board Socket", deepest, "Daughter Board Sockets");
        setLengths(socket, {{"Height", 1}});
        deepest = add("PCB", socket, "Daughter Board");
        setLengths(deepest, {{"Thickness", 1}});
    }
    builder.buildPart(board, true);
    Geometry::Part const *const part = builder.getPart(deepest);
    ASSERT_NE(part, nullptr);
    // Each stands on the board below: 2 mm, then 199 times 1 mm.
    EXPECT_NEAR(part->getBound().getYLow(), 0.201, 1e-9);
}

} // namespace
