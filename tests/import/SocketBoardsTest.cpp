// Whole boards whose components move into sockets: where things are afterwards, and after an undo.
#include "SocketSupport.h"

using namespace TestSupport;

TEST(Sockets, TheBuiltPartIsWhereItWasWhateverTheShapeTheSideAndTheAngles) {
    for (const char *shape : {"Rectangle", "Cylinder", "Polygon"}) {
        for (const bool bottom : {false, true}) {
            for (const double socketAngle : {0.0, 90.0, 37.0, 180.0, 270.0}) {
                for (const double angle : {0.0, 90.0, 25.0}) {
                    SCOPED_TRACE(testing::Message()
                                 << shape << ' ' << bottom << ' ' << socketAngle << ' ' << angle);
                    SocketBench bench;
                    Entity *const socket = bench.socket(20, 30, 14, 11);
                    Entity *const component = bench.component(26, 34, 3, 2);
                    EntityEditor::setValue(component, Shape_t, shape);
                    EntityEditor::setValue(component, Outline_t, "-1,-2,3,-1,0,1.5 <mm>");
                    SocketBench::setMm(component, Diameter_t, 2);
                    SocketBench::setMm(component, Y_Location_t, 0.3);
                    SocketBench::turn(socket, Orientation_t, socketAngle);
                    SocketBench::turn(component, Angle_t, angle);
                    if (bottom) SocketBench::setBottom(socket);
                    if (bottom) SocketBench::setBottom(component);
                    EntityGUI::GeometryBuilder builder;
                    const Bound before = builder.buildPart(component)->getBound();
                    bench.move();
                    ASSERT_EQ(component->getOwnerEntity(), socket);
                    const Bound after = builder.buildPart(component)->getBound();
                    expectSameBound(before, after);
                }
            }
        }
    }
}

// Heights count from the board in the file and from the socket in the model: a move leaves the number alone.
TEST(Sockets, TheHeightOfTheSocketIsAddedToThatOfItsComponent) {
    SocketBench bench;
    SocketBench::setMm(bench.socket(20, 30), Y_Location_t, 2);
    Entity *const component = bench.component(23, 33);
    SocketBench::setMm(component, Y_Location_t, 0.5);
    bench.move();
    EXPECT_EQ(mm(component, Y_Location_t), 0.5);
    EntityGUI::GeometryBuilder builder;
    EXPECT_NEAR(builder.buildPart(component)->getBound().getYLow(), 0.0016 + 0.0025, 1e-12);
}

TEST(Sockets, RandomBoardsMoveAsAPlainLoopDoes) {
    EDA::test::Random random(20);
    const double angles[] = {0, 90, 45, 30, 180, 211};
    int moved = 0, stayed = 0;
    for (int round = 0; round < 60; ++round) {
        SocketBench bench;
        const auto scatter = [&](Entity *entity, const TypeRef &angle) {
            SocketBench::turn(entity, angle, angles[random.below(6)]);
            if (random.below(3) == 0) SocketBench::setBottom(entity);
        };
        const int numSockets = random.below(25), numComponents = random.below(40);
        for (int i = 0; i < numSockets; ++i) {
            scatter(
                bench.socket(random.below(50), random.below(40), 1 + random.below(12), 1 + random.below(12)),
                Orientation_t);
        }
        for (int i = 0; i < numComponents; ++i) {
            Entity *const component =
                bench.component(random.below(50), random.below(40), 1 + random.below(6), random.below(6));
            scatter(component, Angle_t);
            const char *const shapes[] = {"Rectangle", "Cylinder", "Polygon"};
            EntityEditor::setValue(component, Shape_t, shapes[random.below(3)]);
            EntityEditor::setValue(component, Outline_t, "-1,-2,3,-1,0,1.5 <mm>");
            SocketBench::setMm(component, Diameter_t, random.below(5));
        }
        const std::vector<Entity *> expected = bench.owners();
        bench.move();
        for (size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(bench.components[i]->getOwnerEntity(), expected[i]) << "board " << round << ", " << i;
            ++(expected[i] == bench.pcb ? stayed : moved);
        }
    }
    EXPECT_GT(moved, 100); // Else the boards say nothing.
    EXPECT_GT(stayed, 100);
}

TEST(Sockets, HugePlacesDoNoHarm) {
    for (const double far : {1e150, 1e300, -1e300}) {
        SocketBench bench;
        bench.socket(far, far);
        bench.socket(20, 30);
        bench.component(far, -far);
        bench.component(far, far);
        Entity *const component = bench.component(23, 33);
        const std::vector<Entity *> expected = bench.owners();
        bench.move();
        EXPECT_EQ(component->getOwnerEntity(), bench.sockets[1]);
        for (size_t i = 0; i < expected.size(); ++i)
            EXPECT_EQ(bench.components[i]->getOwnerEntity(), expected[i]);
    }
}

TEST(Sockets, UndoPutsAllBackInTheirOrder) {
    SocketBench bench;
    for (int i = 0; i < 20; ++i)
        bench.socket(5 * i, 30, 4, 4);
    for (int i = 0; i < 30; ++i)
        bench.component(5 * ((i * 7) % 30) + 1, 31, 2, 2);
    const std::string before = ModelFile::toText(bench.model);
    UndoStack::instance().clear();
    bench.move();
    const std::string after = ModelFile::toText(bench.model);
    EXPECT_EQ(bench.children(bench.pcb, Component_t).size(), 10U);
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(UndoStack::instance().undo());
        EXPECT_EQ(ModelFile::toText(bench.model), before);
        ASSERT_TRUE(UndoStack::instance().redo());
        EXPECT_EQ(ModelFile::toText(bench.model), after);
    }
}

namespace {

// Placements of a chip and of a socket, which may come after it.
struct PlacedBench : SocketService, ComponentBench {
    explicit PlacedBench(const char *outline = boxOutline)
        : ComponentBench(outline), socketPart("MECHANICAL") {
        socketPart.setName("SOCKET");
        socketPart.setImportToType("Chip Socket");
        socketPart.setHeight(3);
        EDA::test::addPoints(socketPart.getOutline(), 0, "-8,-10 12,-10 12,14 -8,14");
        board().addComponent(socketPart, false);
        UndoStack::instance().clear();
    }
    void placeSocket(double x, double y, double angle, const char *side) {
        EDA::EDAComponentPlacement socket;
        socket.setName("SOCKET");
        socket.setReferenceDesignator("XU1");
        socket.setLocation(x, y);
        socket.setAngle(angle);
        socket.setBoardSide(side);
        board().addComponentPlacement(socket);
    }
    Entity *importSocket() {
        define();
        const auto found = children(boardEntity = import(), Chip_Socket_t);
        return found.size() == 1 ? found[0] : nullptr;
    }

    EDA::EDAComponent socketPart;
};

} // namespace

TEST(Sockets, APlacedComponentGoesIntoASocketThatIsPlacedAfterIt) {
    PlacedBench bench;
    bench.add();
    bench.placeSocket(30, 40, 0, "TOP");
    Entity *const socket = bench.importSocket();
    ASSERT_TRUE(socket);
    Entity *const component = getLinkedEntity(socket, ComponentLink_t);
    ASSERT_TRUE(component);
    EXPECT_EQ(text(component, Reference_Designator_t), "U1");
    expectPlace(socket, 20 - 8, 30 - 14);
    expectPlace(component, (20 + 1) - (20 - 8), (30 - 10) - (30 - 14));
    EXPECT_TRUE(bench.children(bench.boardEntity, Component_t).empty());
}

TEST(Sockets, APlacedComponentLiesInItsSocketWhereItLayOnTheBoard) {
    for (const char *outline : {boxOutline, lOutline, centredCircle}) {
        for (const char *side : {"TOP", "BOTTOM"}) {
            for (const double angle : {0.0, 90.0, 30.0}) {
                SCOPED_TRACE(testing::Message() << outline << ' ' << side << ' ' << angle);
                Bound bounds[2];
                for (const bool withSocket : {false, true}) {
                    PlacedBench bench(outline);
                    bench.placement.setBoardSide(side);
                    bench.placement.setAngle(angle);
                    bench.add();
                    if (withSocket) bench.placeSocket(30, 40, angle, side);
                    Entity *const socket = bench.importSocket();
                    ASSERT_EQ(socket != nullptr, withSocket);
                    const auto found = bench.children(withSocket ? socket : bench.boardEntity, Component_t);
                    ASSERT_EQ(found.size(), 1U);
                    EntityGUI::GeometryBuilder builder;
                    bounds[withSocket] = builder.buildPart(found[0])->getBound();
                }
                expectSameBound(bounds[0], bounds[1]);
            }
        }
    }
}

TEST(Sockets, ANewBoardWithFilledSocketsIsUndoneAndRedoneAsOneStep) {
    PlacedBench bench;
    for (int i = 0; i < 3; ++i)
        bench.addAs("U", 30 + 20 * i, 40);
    bench.placeSocket(30, 40, 0, "TOP");
    bench.placeSocket(70, 40, 90, "TOP");
    const std::string before = ModelFile::toText(bench.model);
    bench.define();
    bench.import();
    const std::string after = ModelFile::toText(bench.model);
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(UndoStack::instance().undo());
        EXPECT_EQ(ModelFile::toText(bench.model), before);
        ASSERT_TRUE(UndoStack::instance().redo());
        EXPECT_EQ(ModelFile::toText(bench.model), after);
    }
}
