// Vias that belong to parts: where they are in them, and what stays on the board.
#include "SocketSupport.h"
#include "support/CancelAfter.h"
#include "support/ScriptedLibrary.h"
#include "ViaSupport.h"

using namespace TestSupport;

namespace {

constexpr const char *centredBox = "-2,-4 2,-4 2,4 -2,4";
// Its origin is not its low corner, which is at (-1, 14).
constexpr const char *hook = "-1,-2 9,-2 9,1 2,1 2,14 -1,14";

// U1 is a box of 4 by 8 about (30, 40), which is X = 20, Z = 30 of the board.
struct PartBench : SocketService, ComponentBench {
    explicit PartBench(const char *outline = centredBox) : ComponentBench(outline) {}

    void addVia(const EDA::EDAVia &via) {
        EDA::EDAVia copy = via;
        board().addVia(copy, false);
    }
    void addVia(const std::string &designator, const std::string &name, double x, double y) {
        EDA::EDAVia via = makeVia("VIA", name, x, y);
        via.setAssociatedPart(designator);
        addVia(via);
    }
    // Imports the placement, and gives the part.
    Entity *importPart() { return part_ = importOne(); }
    std::vector<Entity *> viasOf(Entity *owner) const { return children(owner, Via_t); }
    std::vector<Entity *> partVias() const { return viasOf(part_); }
    std::vector<Entity *> boardVias() const { return viasOf(boardEntity); }
    Bound boundOf(Entity *entity) {
        EntityGUI::GeometryBuilder own;
        return own.buildPart(entity)->getBound();
    }

private:
    Entity *part_ = nullptr;
};

} // namespace

// A via at (31, 42), 1 to the right of the middle of the part and 2 above it, worked out by hand.
TEST(ViaParts, AViaIsWhereItsPartHasItWhateverSideAndAngle) {
    struct Row {
        const char *side;
        double angle, x, z;
    };
    const Row rows[] = {{"TOP", 0, 3, 2},      {"TOP", 90, 4, 5},    {"TOP", 180, 1, 6},
                        {"TOP", 270, 0, 3},    {"BOTTOM", 0, 1, 2},  {"BOTTOM", 90, 4, 3},
                        {"BOTTOM", 180, 3, 6}, {"BOTTOM", 270, 0, 5}};
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.side << row.angle);
        PartBench bench;
        bench.placement.setBoardSide(row.side);
        bench.placement.setAngle(row.angle);
        bench.addVia("U1", "A", 31, 42);
        bench.importPart();
        EXPECT_TRUE(bench.boardVias().empty());
        const auto vias = bench.partVias();
        ASSERT_EQ(vias.size(), 1u);
        expectAt(vias[0], row.x, row.z);
        EXPECT_EQ(text(vias[0], Name_t), "A");
        EXPECT_TRUE(isLocked(vias[0], Placement_t));
        const Bound bound = bench.boundOf(vias[0]);
        EXPECT_NEAR((bound.getXLow() + bound.getXHigh()) / 2, 0.021, 1e-9);
        EXPECT_NEAR((bound.getZLow() + bound.getZHigh()) / 2, 0.028, 1e-9);
    }
}

TEST(ViaParts, InAPolygonItCountsFromTheCornerOfTheBound) {
    PartBench bench(hook);
    bench.addVia("U1", "A", 34, 41);
    bench.importPart();
    ASSERT_EQ(bench.partVias().size(), 1u);
    expectAt(bench.partVias()[0], 4 + 1, 14 - 1);
}

TEST(ViaParts, InACylinderItCountsFromTheCornerOfTheBound) {
    PartBench bench(centredCircle);
    bench.addVia("U1", "A", 31, 42);
    bench.importPart();
    ASSERT_EQ(bench.partVias().size(), 1u);
    expectAt(bench.partVias()[0], 3 + 1, 3 - 2);
}

TEST(ViaParts, EveryTypeThatKeepsViasTakesThem) {
    for (const char *type :
         {"Component", "Resistor", "Capacitor", "Inductor", "Cable Socket", "Daughter Board Socket"}) {
        SCOPED_TRACE(type);
        PartBench bench;
        bench.part.setImportToType(type);
        bench.addVia("U1", "A", 31, 42);
        Entity *const part = bench.importPart();
        ASSERT_TRUE(part);
        EXPECT_TRUE(bench.boardVias().empty());
        ASSERT_EQ(bench.partVias().size(), 1u);
        expectAt(bench.partVias()[0], 3, 2);
    }
}

TEST(ViaParts, AChipSocketKeepsNoViasAndTheirPlaceStays) {
    PartBench bench;
    bench.part.setImportToType("Chip Socket");
    bench.addVia("U1", "A", 31, 42);
    bench.importPart();
    ASSERT_EQ(bench.boardVias().size(), 1u);
    expectAt(bench.boardVias()[0], 21, 28);
    EXPECT_TRUE(isLocked(bench.boardVias()[0], Placement_t));
}

TEST(ViaParts, AGroupThatCannotMoveStaysWhereItsCornerIs) {
    for (const char *type : {"Chip Socket", "Component"}) {
        SCOPED_TRACE(type);
        PartBench bench;
        if (type == std::string("Component")) EntityGUI::EntityManager::setGeometryBuilder(nullptr);
        bench.set(Group_Identical_Vias_t, "Yes");
        bench.part.setImportToType(type);
        EDA::EDAVia via = makeVia("VIA", "A", 31, 42);
        via.setAssociatedPart("U1");
        via.addInstance("B", 29, 38);
        bench.addVia(via);
        bench.importPart();
        ASSERT_EQ(bench.boardVias().size(), 1u);
        Entity *const group = bench.boardVias()[0];
        expectAt(group, 28.75 - 10, 70 - 42.25);
        EXPECT_NEAR(mm(group, Width_t), 2.5, 1e-9);
        EXPECT_EQ(text(group, Number_Of_Vias_t), "2");
        EXPECT_TRUE(isLocked(group, Placement_t));
    }
}

// What the library gives keeps vias, but the board has no list for it.
TEST(ViaParts, APartThatNoListTookGetsNoVias) {
    ScriptedLibrary library;
    library.items["PART"] = {LibraryInterface::Mapped, [] { return ScriptedLibrary::makeEntity(PCB_t); }};
    const SocketService service;
    ComponentBench bench(centredBox, "ELECTRICAL", &library);
    EDA::EDAVia via = makeVia("VIA", "A", 31, 42);
    via.setAssociatedPart("U1");
    bench.board().addVia(via, false);
    bench.add();
    EXPECT_TRUE(bench.importAll().empty());
    EXPECT_EQ(library.loads.size(), 1u);
    const auto vias = bench.children(bench.boardEntity, Via_t);
    ASSERT_EQ(vias.size(), 1u);
    expectAt(vias[0], 21, 28);
}

TEST(ViaParts, ASolidOfASubstrateKeepsNoVias) {
    PartBench bench;
    bench.addVia("U1", "A", 31, 42);
    ASSERT_TRUE(bench.importOneOnSubstrate());
    ASSERT_EQ(bench.boardVias().size(), 1u);
    expectAt(bench.boardVias()[0], 21, 28);
}

TEST(ViaParts, APartInASocketTakesItsViasAlong) {
    for (const char *side : {"TOP", "BOTTOM"}) {
        SCOPED_TRACE(side);
        PartBench bench;
        bench.placement.setBoardSide(side);
        EDA::EDAComponent socket("MECHANICAL");
        socket.setName("SOCKET");
        socket.setHeight(1);
        socket.setImportToType("Chip Socket");
        EDA::test::addPoints(socket.getOutline(), 0, "-5,-5 5,-5 5,5 -5,5");
        bench.board().addComponent(socket, false);
        bench.add();
        bench.placement.setName("SOCKET");
        bench.addAs("XU1", 30, 40);
        bench.addVia("U1", "A", 31, 42);
        bench.define();
        bench.boardEntity = bench.import();
        EXPECT_TRUE(bench.boardVias().empty());
        const auto sockets = bench.children(bench.boardEntity, Chip_Socket_t);
        ASSERT_EQ(sockets.size(), 1u);
        Entity *const chip = getLinkedEntity(sockets[0], ComponentLink_t);
        ASSERT_TRUE(chip);
        ASSERT_EQ(bench.viasOf(chip).size(), 1u);
        expectAt(bench.viasOf(chip)[0], std::string(side) == "TOP" ? 3 : 1, 2);
    }
}

TEST(ViaParts, AViaOfNoPartOrAnUnknownOneStaysOnTheBoard) {
    for (const char *designator : {"BOARD", "", "U2", "u1"}) {
        PartBench bench;
        bench.addVia(designator, "A", 31, 42);
        bench.importPart();
        EXPECT_TRUE(bench.partVias().empty()) << designator;
        ASSERT_EQ(bench.boardVias().size(), 1u) << designator;
        expectAt(bench.boardVias()[0], 21, 28);
    }
}

// Names that say "no part" are no designators, even where a part has them.
TEST(ViaParts, APartCalledAsTheBoardGetsNoVias) {
    for (const char *designator : {"BOARD", ""}) {
        PartBench bench;
        bench.placement.setReferenceDesignator(designator);
        bench.addVia(designator, "A", 31, 42);
        ASSERT_TRUE(bench.importPart());
        EXPECT_EQ(bench.boardVias().size(), 1u) << designator;
    }
}

TEST(ViaParts, WithoutABuilderOfPartsEveryViaStaysOnTheBoard) {
    PartBench bench;
    EntityGUI::EntityManager::setGeometryBuilder(nullptr);
    bench.addVia("U1", "A", 31, 42);
    bench.importPart();
    ASSERT_EQ(bench.boardVias().size(), 1u);
    expectAt(bench.boardVias()[0], 21, 28);
    EXPECT_TRUE(isLocked(bench.boardVias()[0], Placement_t));
}

TEST(ViaParts, AViaWithoutSizeStaysOnTheBoard) {
    PartBench bench;
    EDA::EDAVia via = makeVia("VIA", "A", 31, 42);
    via.setAssociatedPart("U1");
    via.setDiameter(0.0);
    bench.addVia(via);
    bench.importPart();
    ASSERT_EQ(bench.boardVias().size(), 1u);
    expectAt(bench.boardVias()[0], 21, 28);
}

TEST(ViaParts, UnnamedViasAreNumberedInTheirPart) {
    PartBench bench;
    for (const char *name : {"", "B", ""})
        bench.addVia("U1", name, 31, 42);
    bench.importPart();
    EXPECT_EQ(names(bench.partVias()), (Names{"Via 1", "B", "Via 3"}));
}

TEST(ViaParts, AViaOfTheBoardIsNumberedWithoutThoseThatWentIntoParts) {
    PartBench bench;
    for (const char *designator : {"BOARD", "U1", "BOARD", "U1", "U1", "BOARD"})
        bench.addVia(designator, "", 31, 42);
    bench.importPart();
    EXPECT_EQ(names(bench.boardVias()), (Names{"Via 1", "Via 2", "Via 3"}));
    EXPECT_EQ(names(bench.partVias()), (Names{"Via 1", "Via 2", "Via 3"}));
}

TEST(ViaParts, AViaThatCouldNotMoveCountsOnTheBoard) {
    PartBench bench;
    bench.addVia("U1", "", 31, 42);
    EDA::EDAVia via = makeVia("VIA", "", 31, 42);
    via.setAssociatedPart("U1");
    via.setDiameter(0.0);
    bench.addVia(via);
    bench.addVia("BOARD", "", 31, 42);
    bench.importPart();
    EXPECT_EQ(names(bench.boardVias()), (Names{"Via 1", "Via 2"}));
    EXPECT_EQ(names(bench.partVias()), (Names{"Via 1"}));
}

TEST(ViaParts, InstancesMoveEachForItselfAndUnnamedOnesLoseTheirNames) {
    PartBench bench;
    EDA::EDAVia via = makeVia("VIA", "", 31, 42);
    via.setAssociatedPart("U1");
    via.addInstance("B", 29, 38);
    bench.addVia(via);
    via.setName("A");
    bench.addVia(via);
    bench.importPart();
    const auto vias = bench.partVias();
    ASSERT_EQ(names(vias), (Names{"Via 1", "Via 2", "B", "A"}));
    expectAt(vias[0], 3, 2);
    expectAt(vias[1], 1, 6);
    expectAt(vias[3], 1, 6);
}

// The group reaches from (28.75, 37.75) to (31.25, 42.25); its middle is that of the part.
TEST(ViaParts, AGroupKeepsItsMiddleWhateverTheSideAndAngleOfThePart) {
    struct Row {
        const char *side;
        double angle;
    };
    for (const Row &row :
         {Row{"TOP", 0}, Row{"TOP", 90}, Row{"TOP", 30}, Row{"BOTTOM", 0}, Row{"BOTTOM", 45}}) {
        SCOPED_TRACE(testing::Message() << row.side << row.angle);
        PartBench bench;
        bench.set(Group_Identical_Vias_t, "Yes");
        bench.placement.setBoardSide(row.side);
        bench.placement.setAngle(row.angle);
        EDA::EDAVia via = makeVia("VIA", "A", 31, 42);
        via.setAssociatedPart("U1");
        via.addInstance("B", 29, 38);
        bench.addVia(via);
        bench.importPart();
        const auto vias = bench.partVias();
        ASSERT_EQ(vias.size(), 1u);
        expectAt(vias[0], 2 - 1.25, 4 - 2.25);
    }
}

TEST(ViaParts, SlotsAndMountingHolesOfAPartAreHolesOfTheBoard) {
    PartBench bench;
    EDA::EDAVia slot = makeVia("PIN", "", 31, 42);
    slot.setAssociatedPart("U1");
    EDA::test::addPoints(slot.getOutline(), 0, "-2,-1 2,-1 2,1 -2,1 -2,-1");
    bench.addVia(slot);
    EDA::EDAVia mounting = makeVia("MTG", "", 31, 42);
    mounting.setAssociatedPart("U1");
    bench.addVia(mounting);
    bench.importPart();
    EXPECT_TRUE(bench.partVias().empty());
    EXPECT_EQ(bench.children(bench.boardEntity, PCB_Hole_t).size(), 2u);
}

TEST(ViaParts, EachPartIsBuiltOnceAndNothingBuiltIsLeft) {
    PartBench bench;
    for (int i = 0; i < 50; ++i)
        bench.addVia("U1", "", 31, 42);
    Entity *const part = bench.importPart();
    EXPECT_EQ(std::count(bench.builder.built.begin(), bench.builder.built.end(), part), 1);
    EXPECT_EQ(bench.builder.built.size(), 51u);
    EXPECT_EQ(bench.builder.deleted.size(), 51u);
    EXPECT_FALSE(bench.builder.getPart(part));
}

TEST(ViaParts, ViasOfTheBoardAskForNoParts) {
    PartBench bench;
    bench.addVia("BOARD", "", 31, 42);
    bench.importPart();
    EXPECT_TRUE(bench.builder.built.empty());
}

TEST(ViaParts, ACancelStillMovesTheViasMadeBefore) {
    PartBench bench;
    for (int i = 0; i < 4; ++i)
        bench.addVia("U1", "", 31, 42);
    bench.add();
    bench.define();
    CancelAfter progress(2); // The placement, then the vias.
    bench.boardEntity = bench.import(&progress);
    const auto parts = bench.placedOn(bench.boardEntity);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(bench.viasOf(parts[0]).size(), 2u);
    EXPECT_TRUE(bench.boardVias().empty());
}

TEST(ViaParts, AnUndoTakesBackMovesAndAll) {
    PartBench bench;
    bench.addVia("U1", "", 31, 42);
    bench.addVia("BOARD", "", 31, 42);
    const std::string before = ModelFile::toText(bench.model);
    bench.importPart();
    const std::string after = ModelFile::toText(bench.model);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
    ASSERT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(ModelFile::toText(bench.model), after);
}

TEST(ViaParts, AReimportMakesThePartsAndTheirViasAnew) {
    PartBench bench;
    bench.addVia("U1", "", 31, 42);
    bench.addVia("BOARD", "", 31, 42);
    bench.importPart();
    bench.importOver(bench.boardEntity);
    const auto parts = bench.placedOn(bench.boardEntity);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(names(bench.viasOf(parts[0])), (Names{"Via 1"}));
    EXPECT_EQ(names(bench.boardVias()), (Names{"Via 1"}));
    expectAt(bench.viasOf(parts[0])[0], 3, 2);
}

// Data without components leaves the old ones, and their vias do not find them: they stay on the board.
TEST(ViaParts, AReimportOfViasAloneLeavesThemOnTheBoard) {
    PartBench bench;
    bench.addVia("U1", "A", 31, 42);
    Entity *const part = bench.importPart();
    BoardReader viasAlone;
    EDA::EDABoard &board = viasAlone.getBoard();
    board.setUnits("MM");
    for (const auto &[x, y] : {std::pair{10.0, 20.0}, {110.0, 20.0}, {110.0, 70.0}, {10.0, 70.0}})
        board.addPoint(0, x, y, 0.0);
    EDA::EDAVia via = makeVia("VIA", "N", 31, 42);
    via.setAssociatedPart("U1");
    board.addVia(via, false);
    bench.importer.importBoard(&viasAlone, bench.boardEntity, nullptr, nullptr);
    EXPECT_EQ(names(bench.viasOf(part)), (Names{"A"}));
    EXPECT_EQ(names(bench.boardVias()), (Names{"N"}));
}

TEST(ViaParts, ManyViasOfManyPartsComeToTheirOwn) {
    constexpr int parts = 30, each = 400; // more than are built at a time
    PartBench bench;
    for (int i = 0; i < parts; ++i)
        bench.addAs(("U" + std::to_string(i)).c_str(), 15 + 3 * i, 40);
    for (int i = 0; i < parts * each; ++i)
        bench.addVia("U" + std::to_string(i % parts), "", 15 + 3 * (i % parts), 40);
    bench.define();
    bench.boardEntity = bench.import();
    EXPECT_TRUE(bench.boardVias().empty());
    for (Entity *part : bench.placedOn(bench.boardEntity)) {
        const auto vias = bench.viasOf(part);
        ASSERT_EQ(vias.size(), static_cast<std::size_t>(each));
        expectAt(vias.back(), 2, 4);
        EXPECT_EQ(text(vias.back(), Name_t), "Via 400");
    }
}
