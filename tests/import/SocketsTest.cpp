// Which components move into which sockets.
#include "SocketSupport.h"

using namespace TestSupport;

TEST(Sockets, AComponentInTheMiddleMovesInAndCountsFromTheSocketsCorner) {
    SocketBench bench;
    Entity *const socket = bench.socket(20, 30);
    Entity *const component = bench.component(23, 33);
    bench.move();
    EXPECT_EQ(component->getOwnerEntity(), socket);
    EXPECT_EQ(getLinkedEntity(socket, ComponentLink_t), component);
    expectPlace(component, 3, 3);
}

TEST(Sockets, APolygonAndACylinderCountFromTheSocketsMiddle) {
    for (const char *shape : {"Polygon", "Cylinder"}) {
        SocketBench bench;
        bench.socket(20, 30, 10, 6);
        Entity *const component = bench.component(25, 33);
        EntityEditor::setValue(component, Shape_t, shape);
        EntityEditor::setValue(component, Outline_t, "-1,-1,1,-1,0,1 <mm>");
        SocketBench::setMm(component, Diameter_t, 2);
        bench.move();
        EXPECT_EQ(component->getOwnerEntity(), bench.sockets[0]) << shape;
        expectPlace(component, 25 - 20 - 5, 33 - 30 - 3);
    }
}

TEST(Sockets, TheAngleOfTheSocketIsSubtracted) {
    SocketBench bench;
    SocketBench::turn(bench.socket(20, 30), Orientation_t, 30);
    Entity *const component = bench.component(23, 33);
    SocketBench::turn(component, Angle_t, 100);
    bench.move();
    EXPECT_EQ(component->getOwnerEntity(), bench.sockets[0]);
    EXPECT_NEAR(degrees(component, Angle_t), 70.0, 1e-12);
}

TEST(Sockets, WhatLiesAsideStaysOnTheBoardAsItIs) {
    SocketBench bench;
    bench.socket(20, 30);
    Entity *const component = bench.component(29, 33); // Its middle is 1 mm beyond the edge.
    bench.move();
    EXPECT_EQ(component->getOwnerEntity(), bench.pcb);
    expectPlace(component, 29, 33);
}

TEST(Sockets, TheEdgeCountsAsInside) {
    SocketBench bench;
    bench.socket(20, 30);
    Entity *const onEdge = bench.component(28, 33);
    bench.move();
    EXPECT_EQ(onEdge->getOwnerEntity(), bench.sockets[0]);
}

TEST(Sockets, LessThanAMicrometreOutsideCountsAsInside) {
    for (const auto &[beyond, isIn] : {std::pair{0.9e-3, true}, {1.1e-3, false}}) {
        SocketBench bench;
        bench.socket(20, 30);
        Entity *const component = bench.component(28 + beyond, 33);
        bench.move();
        EXPECT_EQ(component->getOwnerEntity() == bench.sockets[0], isIn) << beyond;
    }
}

TEST(Sockets, TheOtherSideOfTheBoardIsAnotherPlace) {
    SocketBench bench;
    SocketBench::setBottom(bench.socket(20, 30));
    Entity *const top = bench.component(23, 33);
    Entity *const bottom = bench.component(23, 33);
    SocketBench::setBottom(bottom);
    bench.move();
    EXPECT_EQ(top->getOwnerEntity(), bench.pcb);
    EXPECT_EQ(bottom->getOwnerEntity(), bench.sockets[0]);
}

TEST(Sockets, OfTwoSocketsTheFirstInTheListTakesIt) {
    SocketBench bench;
    Entity *const first = bench.socket(18, 28, 20, 15);
    bench.socket(20, 30);
    Entity *const component = bench.component(23, 33);
    bench.move();
    EXPECT_EQ(component->getOwnerEntity(), first);
}

// The second finds the first socket taken, and does not go on to the next.
TEST(Sockets, OfTwoComponentsTheSecondStaysOnTheBoardAsItIs) {
    SocketBench bench;
    bench.socket(20, 30);
    bench.socket(20, 30);
    Entity *const first = bench.component(23, 33);
    Entity *const second = bench.component(24, 34);
    SocketBench::turn(second, Angle_t, 45);
    SocketBench::turn(bench.sockets[0], Orientation_t, 90);
    bench.move();
    EXPECT_EQ(first->getOwnerEntity(), bench.sockets[0]);
    EXPECT_EQ(second->getOwnerEntity(), bench.pcb);
    EXPECT_EQ(getLinkedEntity(bench.sockets[1], ComponentLink_t), nullptr);
    expectPlace(second, 24, 34);
    EXPECT_EQ(degrees(second, Angle_t), 45.0);
}

TEST(Sockets, ASocketThatIsTakenFromBeforeKeepsWhatItHas) {
    SocketBench bench;
    Entity *const socket = bench.socket(20, 30);
    Entity *const holder = EntityEditor::createEntity(Component_t, socket, AttributePath(ComponentLink_t));
    Entity *const component = bench.component(23, 33);
    bench.move();
    EXPECT_EQ(getLinkedEntity(socket, ComponentLink_t), holder);
    EXPECT_EQ(component->getOwnerEntity(), bench.pcb);
    expectPlace(component, 23, 33);
}

TEST(Sockets, OnlyComponentsMoveAndOnlyIntoChipSockets) {
    SocketBench bench;
    bench.socket(20, 30);
    Entity *const resistor = bench.add("Resistor", "Resistors", 23, 33, 4, 4);
    bench.add("Cable Socket", "Cable Sockets", 60, 30, 10, 10);
    Entity *const component = bench.component(63, 33);
    bench.move();
    EXPECT_EQ(resistor->getOwnerEntity(), bench.pcb);
    EXPECT_EQ(component->getOwnerEntity(), bench.pcb);
}

TEST(Sockets, WithoutABuilderAllStays) {
    SocketBench bench;
    EntityGUI::EntityManager::setGeometryBuilder(nullptr);
    bench.socket(20, 30);
    Entity *const component = bench.component(23, 33);
    bench.move();
    EXPECT_EQ(component->getOwnerEntity(), bench.pcb);
}

TEST(Sockets, WhatHasNoSizeNeitherMovesNorHolds) {
    SocketBench bench;
    bench.socket(20, 30, 0, 10);
    Entity *const behind = bench.socket(20, 30);
    Entity *const component = bench.component(23, 33);
    Entity *const flat = bench.component(25, 35, 4, 0);
    bench.move();
    EXPECT_EQ(component->getOwnerEntity(), behind);
    EXPECT_EQ(flat->getOwnerEntity(), bench.pcb);
}

TEST(Sockets, TheOthersKeepTheirOrder) {
    SocketBench bench;
    bench.socket(20, 30);
    for (int i = 0; i < 4; ++i)
        bench.component(i == 1 ? 23 : 70, 33);
    bench.move();
    const std::vector<Entity *> &all = bench.components;
    EXPECT_EQ(bench.children(bench.pcb, Component_t), (std::vector<Entity *>{all[0], all[2], all[3]}));
}

TEST(Sockets, PartsBuiltForTheMovesAreDeletedAndOthersStay) {
    SocketBench bench;
    Entity *const oldSocket = bench.socket(20, 30);
    Entity *const newSocket = bench.socket(40, 30);
    Entity *const oldComponent = bench.component(43, 33);
    Entity *const newComponent = bench.component(23, 33);
    const auto *const socketPart = bench.builder.buildPart(oldSocket, false);
    const auto *const componentPart = bench.builder.buildPart(oldComponent, false);
    bench.builder.built.clear();
    bench.move();
    EXPECT_EQ(newComponent->getOwnerEntity(), oldSocket);
    EXPECT_EQ(oldComponent->getOwnerEntity(), newSocket);
    EXPECT_EQ(bench.builder.built, (std::vector<Entity *>{newSocket, newComponent}));
    EXPECT_EQ(bench.builder.deleted, (std::multiset<Entity *>{newSocket, newComponent}));
    EXPECT_EQ(bench.builder.getPart(oldSocket), socketPart);
    EXPECT_EQ(bench.builder.getPart(oldComponent), componentPart);
    EXPECT_EQ(bench.builder.getPart(newComponent), nullptr);
}

TEST(Sockets, APartThatIsThereIsTakenAsItIs) {
    SocketBench bench;
    bench.socket(20, 30);
    Entity *const component = bench.component(23, 33);
    bench.builder.buildPart(component, false);
    SocketBench::setMm(component, X_Location_t, 70); // After it was built.
    bench.move();
    EXPECT_EQ(component->getOwnerEntity(), bench.sockets[0]);
    expectPlace(component, 50, 3);
}
