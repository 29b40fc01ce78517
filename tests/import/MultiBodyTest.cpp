// Components that are made of several solids.
#include "ComponentSupport.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/Geometry/Part.h"

using namespace TestSupport;

namespace {

// The placement's origin comes to X = 20, Z = 30.
struct BodyBench : ComponentBench {
    explicit BodyBench(const char *outline = lOutline) : ComponentBench(outline) {}

    static EDA::EDAOutline body(const char *points, const char *name, double low, double high,
                                const char *material = "") {
        EDA::EDAOutline outline = EDA::test::outline(points);
        outline.setName(name);
        outline.setMaterial(material);
        outline.setZDimensions(low, high);
        return outline;
    }
    void add(const EDA::EDAOutline &outline) { part.getOutline().addInternalOutline(outline); }
    Entity *importContainer() {
        container = importOne();
        const auto groups = children(container, Subcomponent_Group_t);
        group = groups.size() == 1 ? groups[0] : nullptr;
        solids = children(group, Solid_Obstruction_t);
        return container;
    }
    std::vector<Entity *> holes(size_t solid) const {
        return children(solids.at(solid), TypeRef("Obstruction Hole"));
    }

    using ComponentBench::add;
    Entity *container = nullptr;
    Entity *group = nullptr;
    std::vector<Entity *> solids;
};

std::string material(Entity *entity) { return text(getLinkedEntity(entity, MaterialLink_t), Name_t); }

constexpr const char *die = "2,3 4,3 4,5 2,5";

} // namespace

TEST(MultiBody, TheComponentIsAnInvisibleContainerOfTheBoundOfAllItsOutlines) {
    BodyBench bench;
    bench.add(BodyBench::body("6,3 11,3 11,5 6,5", "lid", 0.5, 4.0));
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.container, Modelling_Level_t), "Detailed");
    EXPECT_EQ(text(bench.container, Render_Style_t), "Invisible");
    EXPECT_EQ(text(bench.container, Name_t), "PART");
    EXPECT_EQ(mm(bench.container, Width_t), 10.0);
    EXPECT_EQ(mm(bench.container, Depth_t), 7.0);
    EXPECT_EQ(mm(bench.container, Height_t), 4.0);
    ASSERT_TRUE(bench.group);
    EXPECT_EQ(text(bench.group, Name_t), "");
    EXPECT_EQ(bench.solids.size(), 2U); // Without the one that a new group has.
}

TEST(MultiBody, TheGroupGoesBackByWhatTheContainerMoves) {
    BodyBench bench;
    bench.add(BodyBench::body(die, "die", 0.0, 1.0));
    ASSERT_TRUE(bench.importContainer());
    expectPlace(bench.container, 20 + 1, 30 + 2);
    expectPlace(bench.group, -1, -2);
}

// A box is placed by its own corner first, and moves by the bound all the same.
TEST(MultiBody, ABoxMovesTwice) {
    BodyBench bench(boxOutline);
    bench.add(BodyBench::body(die, "die", 0.0, 1.0));
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.container, Shape_t), "Rectangle");
    expectPlace(bench.container, 20 + 1 + 1, 30 - 10 + 2);
}

TEST(MultiBody, TheOutlineOfTheComponentIsTheFirstSolid) {
    BodyBench bench;
    bench.part.getOutline().setZDimensions(0.25, 1.75);
    bench.part.getOutline().setMaterial("Ceramic");
    bench.add(BodyBench::body(die, "die", 1.0, 1.5, "Silicon"));
    ASSERT_TRUE(bench.importContainer());
    ASSERT_EQ(bench.solids.size(), 2U);
    Entity *const own = bench.solids[0];
    EXPECT_EQ(text(own, Name_t), "");
    EXPECT_EQ(text(own, Shape_t), "Polygon");
    EXPECT_EQ(text(own, Outline_t), "1,-2,7,-2,7,-4,3,-4,3,-9,1,-9 <mm>");
    EXPECT_EQ(mm(own, Height_t), 1.5);
    EXPECT_EQ(mm(own, Y_Location_t), 0.25);
    EXPECT_EQ(material(own), "Ceramic");
    Entity *const inner = bench.solids[1];
    EXPECT_EQ(text(inner, Name_t), "die");
    EXPECT_EQ(mm(inner, Height_t), 0.5);
    EXPECT_EQ(mm(inner, Y_Location_t), 1.0);
    EXPECT_EQ(material(inner), "Silicon");
    EXPECT_EQ(mm(bench.container, Height_t), 1.75);
}

TEST(MultiBody, WithoutAnOutlineOfItsOwnItHasTheInnerSolidsAlone) {
    BodyBench bench("");
    bench.add(BodyBench::body(die, "die", 0.0, 1.0));
    ASSERT_TRUE(bench.importContainer());
    ASSERT_EQ(bench.solids.size(), 1U);
    EXPECT_EQ(text(bench.solids[0], Name_t), "die");
    EXPECT_EQ(mm(bench.container, Width_t), 2.0);
    expectPlace(bench.container, 20 + 2, 30 + 3);
}

TEST(MultiBody, ASolidWithoutMaterialIsOfATypicalComponent) {
    BodyBench bench;
    bench.add(BodyBench::body(die, "die", 0.0, 1.0));
    ASSERT_TRUE(bench.importContainer());
    for (Entity *solid : bench.solids)
        EXPECT_EQ(material(solid), "Typical Component");
}

TEST(MultiBody, ARectangularSolidStaysAPolygon) {
    BodyBench bench;
    bench.add(BodyBench::body(die, "die", 0.0, 1.0));
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.solids.at(1), Shape_t), "Polygon");
    EXPECT_EQ(text(bench.solids.at(1), Outline_t), "2,-3,4,-3,4,-5,2,-5 <mm>");
}

TEST(MultiBody, SizesAreInTheComponentsUnitsButCentresAndShiftsInTheBoards) {
    BodyBench bench;
    bench.part.setUnits("IN");
    bench.add(
        BodyBench::body(asideCircle, "can", 0.5, 2.0)); // Radius 3 about (4, 1): 1..7, -2..9 with the L.
    ASSERT_TRUE(bench.importContainer());
    EXPECT_NEAR(mm(bench.container, Width_t), 6 * 25.4, 1e-9);
    EXPECT_NEAR(mm(bench.container, Depth_t), 11 * 25.4, 1e-9);
    EXPECT_NEAR(mm(bench.container, Height_t), 2 * 25.4, 1e-9);
    Entity *const can = bench.solids.at(1);
    EXPECT_EQ(text(can, Shape_t), "Cylinder");
    EXPECT_NEAR(mm(can, Diameter_t), 6 * 25.4, 1e-6);
    EXPECT_NEAR(mm(can, Height_t), 1.5 * 25.4, 1e-9);
    EXPECT_NEAR(mm(can, Y_Location_t), 0.5 * 25.4, 1e-9);
    EXPECT_NEAR(mm(can, X_Location_t), 4, 1e-6);
    EXPECT_NEAR(mm(can, Z_Location_t), -1, 1e-6);
    expectPlace(bench.container, 20 + 1, 30 - 2);
    expectPlace(bench.group, -1, 2);
}

TEST(MultiBody, ABoxHasNoCylinders) {
    BodyBench bench(boxOutline);
    bench.add(BodyBench::body(centredCircle, "can", 0.0, 1.0));
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.solids.at(1), Shape_t), "Polygon");
}

TEST(MultiBody, WithoutSimplificationOnlyACircleOfTwoPointsIsACylinder) {
    BodyBench bench;
    bench.set(Simplify_Shapes_t, "No");
    bench.add(BodyBench::body(centredCircle, "two points", 0.0, 1.0));
    EDA::EDAOutline many;
    for (int i = 0; i < 36; ++i)
        many.addPoint(0, std::cos(i * 0.17453292519943295), std::sin(i * 0.17453292519943295), 0.0);
    many.setName("many points");
    bench.add(many);
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.solids.at(1), Shape_t), "Cylinder");
    EXPECT_EQ(text(bench.solids.at(2), Shape_t), "Polygon");
}

TEST(MultiBody, ReaderOptionsReachTheCircleTest) {
    BodyBench bench;
    bench.reader.changeOptions = [](auto &options) { options.componentMinPoints = 1000; };
    bench.add(BodyBench::body(centredCircle, "can", 0.0, 1.0));
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.solids.at(1), Shape_t), "Polygon");
}

TEST(MultiBody, ASolidWithoutPointsHasNoOutline) {
    BodyBench bench;
    bench.add(BodyBench::body("", "nothing", 0.0, 1.0));
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.solids.at(1), Shape_t), "Polygon");
    EXPECT_EQ(text(bench.solids.at(1), Outline_t), "");
}

TEST(MultiBody, AHoleOfTheComponentIsNoSolidButMakesItAContainer) {
    BodyBench bench;
    bench.add(EDA::test::hole(die));
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.container, Modelling_Level_t), "Detailed");
    ASSERT_EQ(bench.solids.size(), 1U);
    EXPECT_TRUE(bench.holes(0).empty());
    EXPECT_EQ(mm(bench.container, Height_t), 0.0); // Nothing says how high.
}

TEST(MultiBody, WithoutInnerOutlinesItIsPlain) {
    BodyBench bench;
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.container, Modelling_Level_t), "Simple");
    EXPECT_EQ(bench.group, nullptr);
}

TEST(MultiBody, OnlyAComponentIsAContainer) {
    BodyBench bench;
    bench.part.setImportToType("Resistor");
    bench.add(BodyBench::body(die, "die", 0.0, 1.0));
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(bench.container->getType(), Resistor_t);
    EXPECT_EQ(bench.group, nullptr);
    expectPlace(bench.container, 20, 30);
}

TEST(MultiBody, ThePlacementsOfADefinitionEachHaveTheirSolids) {
    BodyBench bench;
    bench.add(BodyBench::body(die, "die", 0.0, 1.0));
    bench.addAs("U1", 30, 40);
    bench.addAs("U2", 50, 40);
    const auto containers = bench.importAll();
    ASSERT_EQ(containers.size(), 2U);
    for (Entity *container : containers) {
        const auto groups = bench.children(container, Subcomponent_Group_t);
        ASSERT_EQ(groups.size(), 1U);
        EXPECT_EQ(bench.children(groups[0], Solid_Obstruction_t).size(), 2U);
    }
    expectPlace(containers[1], 40 + 1, 30 + 2);
}

TEST(MultiBody, ThermalResistancesMakeItTwoResistors) {
    BodyBench bench;
    bench.add(BodyBench::body(die, "die", 0.0, 1.0));
    bench.part.addProperty("THETA_JB", "5");
    bench.part.addProperty("THETA_JC", "3");
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.container, Modelling_Level_t), "2R");
    EXPECT_EQ(bench.solids.size(), 2U);
}

TEST(MultiBody, TheHighestSolidGivesTheHeight) {
    struct Row {
        double own, first, second, height;
    };
    for (const Row &row : {Row{5, 2, 3, 5}, Row{1, 2, 3, 3}, Row{1, 3, 2, 3}, Row{-2, -1, -3, 2.5}}) {
        BodyBench bench; // 2.5 high by its own word, which stands where the solids give no height.
        bench.part.getOutline().setZDimensions(-9, row.own);
        bench.add(BodyBench::body(die, "a", -9, row.first));
        bench.add(BodyBench::body(die, "b", -9, row.second));
        ASSERT_TRUE(bench.importContainer());
        EXPECT_EQ(mm(bench.container, Height_t), row.height);
    }
}

TEST(MultiBody, NumbersThatAreNoneDoNoHarm) {
    BodyBench bench;
    bench.add(BodyBench::body("nan,0 1,nan inf,2 3,3", "bad", std::nan(""), HUGE_VAL));
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(mm(bench.solids.at(1), Height_t), 1.0); // As a new solid has it.
}

TEST(MultiBody, TheBuiltSolidsStandWhereTheFileHasThem) {
    BodyBench bench("");
    bench.add(BodyBench::body("1,2 5,2 3,10", "base", 0.0, 0.5));
    bench.add(BodyBench::body("6,3 11,3 11,5 6,5", "lid", 0.5, 4.0));
    ASSERT_TRUE(bench.importContainer());
    EntityGUI::GeometryBuilder builder;
    const Geometry::Part *const lid = builder.buildPart(bench.solids.at(1));
    ASSERT_TRUE(lid);
    const Geometry::Bound bound = lid->getBound();
    EXPECT_NEAR(bound.getXLow(), 0.026, 1e-12);
    EXPECT_NEAR(bound.getXHigh(), 0.031, 1e-12);
    EXPECT_NEAR(bound.getZLow(), 0.025, 1e-12);
    EXPECT_NEAR(bound.getZHigh(), 0.027, 1e-12);
    EXPECT_NEAR(bound.getYLow(), 0.0016 + 0.0005, 1e-12);
    EXPECT_NEAR(bound.getYHigh(), 0.0016 + 0.004, 1e-12);
}

// The host measures what is inside from the low corner of the container's own outline, here (1, -9), and the
// group's shift does not take that back.
TEST(MultiBody, AnOwnOutlineDisplacesTheBuiltSolidsByItsLowCorner) {
    BodyBench bench;
    bench.add(BodyBench::body("6,3 11,3 11,5 6,5", "lid", 0.5, 4.0));
    ASSERT_TRUE(bench.importContainer());
    EntityGUI::GeometryBuilder builder;
    const Geometry::Part *const lid = builder.buildPart(bench.solids.at(1));
    ASSERT_TRUE(lid);
    const Geometry::Bound bound = lid->getBound();
    EXPECT_NEAR(bound.getXLow(), 0.026 + 0.001, 1e-12);
    EXPECT_NEAR(bound.getZLow(), 0.025 - 0.009, 1e-12);
}

TEST(MultiBody, UndoTakesTheSolidsBack) {
    BodyBench bench;
    EDA::EDAOutline lid = BodyBench::body("0,0 20,0 20,20 0,20", "lid", 0.0, 1.0);
    lid.addInternalOutline(EDA::test::hole(die));
    bench.add(lid);
    UndoStack::instance().clear();
    const std::string before = ModelFile::toText(bench.model);
    ASSERT_TRUE(bench.importContainer());
    const std::string after = ModelFile::toText(bench.model);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(ModelFile::toText(bench.model), before);
    ASSERT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(ModelFile::toText(bench.model), after);
}

namespace {

// A solid of 40 by 40 with one hole.
struct HoleBench : BodyBench {
    Entity *importHole(const EDA::EDAOutline &hole) {
        EDA::EDAOutline plate = body("0,0 40,0 40,40 0,40", "plate", 0.0, 1.0);
        plate.addInternalOutline(hole);
        add(plate);
        if (!importContainer()) return nullptr;
        const auto found = holes(1);
        return found.size() == 1 ? found[0] : nullptr;
    }
};

} // namespace

// Holes of solids count from the board's corner, not from the component's origin.
TEST(SolidHoles, ARectangleLiesAtItsLowXHighYCorner) {
    HoleBench bench;
    Entity *const hole = bench.importHole(EDA::test::hole("12,23 16,23 16,30 12,30"));
    ASSERT_TRUE(hole);
    EXPECT_EQ(text(hole, Shape_t), "Rectangle");
    EXPECT_EQ(mm(hole, Width_t), 4.0);
    EXPECT_EQ(mm(hole, Depth_t), 7.0);
    expectPlace(hole, 12 - 10, 70 - 30);
    EXPECT_EQ(text(hole, Render_Style_t), "Invisible");
    EXPECT_EQ(text(hole, Orientation_t), "(none)");
    EXPECT_TRUE(hole->findAttribute(Geometry_t)->isLocked());
    EXPECT_TRUE(hole->findAttribute(Placement_t)->isLocked());
}

TEST(SolidHoles, ACircleLiesAtItsCentre) {
    HoleBench bench;
    Entity *const hole = bench.importHole(EDA::test::hole("12,23 14,23@360"));
    ASSERT_TRUE(hole);
    EXPECT_EQ(text(hole, Shape_t), "Cylinder");
    EXPECT_NEAR(mm(hole, Diameter_t), 4.0, 1e-9);
    EXPECT_NEAR(mm(hole, X_Location_t), 2.0, 1e-9);
    EXPECT_NEAR(mm(hole, Z_Location_t), 47.0, 1e-9);
}

TEST(SolidHoles, AnyOtherShapeIsAPolygonOfMappedPointsAtZero) {
    HoleBench bench;
    Entity *const hole = bench.importHole(EDA::test::hole("12,23 16,23 16,30"));
    ASSERT_TRUE(hole);
    EXPECT_EQ(text(hole, Shape_t), "Polygon");
    EXPECT_EQ(text(hole, Outline_t), "2,47,6,47,6,40 <mm>");
    expectPlace(hole, 0, 0);
}

TEST(SolidHoles, TheyAreInTheUnitsOfTheBoardWhateverThoseOfTheComponent) {
    for (const char *points : {"12,23 16,23 16,30 12,30", "12,23 16,23 16,30"}) {
        HoleBench bench;
        bench.part.setUnits("IN");
        Entity *const hole = bench.importHole(EDA::test::hole(points));
        ASSERT_TRUE(hole);
        EXPECT_EQ(text(bench.solids.at(1), Outline_t), "0,0,40,0,40,-40,0,-40 <in>");
        if (text(hole, Shape_t) == "Polygon") {
            EXPECT_EQ(text(hole, Outline_t), "2,47,6,47,6,40 <mm>");
        } else {
            EXPECT_EQ(text(hole, Width_t), "4 mm");
            EXPECT_EQ(text(hole, Depth_t), "7 mm");
            expectPlace(hole, 2, 40);
        }
    }
}

TEST(SolidHoles, ReaderOptionsReachTheCircleTest) {
    HoleBench bench;
    bench.reader.changeOptions = [](auto &options) { options.solidHoleMinPoints = 1000; };
    Entity *const hole = bench.importHole(EDA::test::hole("12,23 14,23@360"));
    ASSERT_TRUE(hole);
    EXPECT_EQ(text(hole, Shape_t), "Polygon");
}

TEST(SolidHoles, WithoutSimplificationARectangleIsAPolygon) {
    HoleBench bench;
    bench.set(Simplify_Shapes_t, "No");
    Entity *const hole = bench.importHole(EDA::test::hole("12,23 16,23 16,30 12,30"));
    ASSERT_TRUE(hole);
    EXPECT_EQ(text(hole, Shape_t), "Polygon");
}

TEST(SolidHoles, OneWithoutAreaIsLeftOutInSilence) {
    HoleBench bench;
    EXPECT_EQ(bench.importHole(EDA::test::hole("12,23 16,23")), nullptr);
    ASSERT_EQ(bench.solids.size(), 2U);
    EXPECT_EQ(bench.importer.getErrorString(), "");
}

TEST(SolidHoles, AnOutlineOfMaterialInASolidIsNone) {
    HoleBench bench;
    EXPECT_EQ(bench.importHole(EDA::test::outline("12,23 16,23 16,30 12,30")), nullptr);
    EXPECT_EQ(bench.solids.size(), 2U);
}

TEST(SolidHoles, ACircleWithAHoleIsAPolygon) {
    BodyBench bench;
    EDA::EDAOutline ring = BodyBench::body("0,0 30,0@360", "ring", 0.0, 1.0);
    ring.addInternalOutline(EDA::test::hole("0,0 3,0@360"));
    bench.add(ring);
    ASSERT_TRUE(bench.importContainer());
    EXPECT_EQ(text(bench.solids.at(1), Shape_t), "Polygon");
    EXPECT_EQ(bench.holes(1).size(), 1U);
}
