// Rectangle, cylinder or polygon: what the outline says and what the entity type can take.
#include "ComponentSupport.h"

#include <cmath>
#include <limits>

using namespace TestSupport;

namespace {

std::string shapeOf(const char *outline, const char *type) {
    ComponentBench bench(outline);
    bench.part.setImportToType(type);
    return text(bench.importOne(), Shape_t);
}

} // namespace

TEST(ComponentShape, TheTypeTakesTheOutlineAsFarAsItsChoicesGo) {
    struct Row {
        const char *type, *box, *polygon, *circle;
    };
    const Row rows[] = {{"Component", "Rectangle", "Polygon", "Cylinder"},
                        {"Resistor", "Rectangle", "Polygon", "Polygon"},     // No cylinder to choose.
                        {"Capacitor", "Rectangle", "Rectangle", "Cylinder"}, // No polygon to choose.
                        {"Inductor", "Rectangle", "Polygon", "Cylinder"}};
    for (const Row &row : rows) {
        EXPECT_EQ(shapeOf(boxOutline, row.type), row.box) << row.type;
        EXPECT_EQ(shapeOf(lOutline, row.type), row.polygon) << row.type;
        EXPECT_EQ(shapeOf(centredCircle, row.type), row.circle) << row.type;
    }
}

TEST(ComponentShape, ARectangleHasTheSizesOfItsOutline) {
    ComponentBench bench;
    bench.placement.setAngle(30);
    Entity *const entity = bench.importOne();
    EXPECT_EQ(text(entity, "Width"), "4 mm");
    EXPECT_EQ(text(entity, "Depth"), "8 mm");
}

TEST(ComponentShape, APolygonIsItsOutlineWithYTurnedToZ) {
    ComponentBench bench(lOutline);
    EXPECT_EQ(text(bench.importOne(), Outline_t), "1,-2,7,-2,7,-4,3,-4,3,-9,1,-9 <mm>");
}

TEST(ComponentShape, APolygonIsInTheComponentsUnits) {
    ComponentBench bench(lOutline);
    bench.part.setUnits("THOU");
    EXPECT_EQ(text(bench.importOne(), Outline_t), "1,-2,7,-2,7,-4,3,-4,3,-9,1,-9 <mil>");
}

TEST(ComponentShape, ACylinderHasADiameter) {
    ComponentBench bench(asideCircle);
    Entity *const entity = bench.importOne();
    EXPECT_EQ(text(entity, Shape_t), "Cylinder");
    EXPECT_NEAR(mm(entity, Diameter_t), 6.0, 1e-9);
}

TEST(ComponentShape, AResistorOfACircleKeepsTheCirclesPoints) {
    ComponentBench bench(centredCircle);
    bench.part.setImportToType("Resistor");
    Entity *const entity = bench.importOne();
    const auto *outline = static_cast<const DoubleListAttribute *>(entity->readAttribute(Outline_t));
    EXPECT_GE(outline->getSize(), 24);
    EXPECT_EQ(outline->getNthStandardValue(0, "mm"), 3.0);
}

TEST(ComponentShape, ACapacitorOfAnLIsTheBoundOfTheL) {
    ComponentBench bench(lOutline);
    bench.part.setImportToType("Capacitor");
    Entity *const entity = bench.importOne();
    EXPECT_EQ(text(entity, "Width"), "6 mm");
    EXPECT_EQ(text(entity, "Depth"), "7 mm");
    expectPlace(entity, 30 + 1 - 10, 70 - (40 + 9));
}

TEST(ComponentShape, ASolidIsACuboidACylinderOrAPolygon) {
    for (const auto &[outline, shape] :
         {std::pair{boxOutline, "Cuboid"}, {centredCircle, "Cylinder"}, {lOutline, "Polygon"}}) {
        ComponentBench bench(outline);
        EXPECT_EQ(text(bench.importOneOnSubstrate(), Shape_t), shape);
    }
}

TEST(ComponentShape, WithoutSimplificationABoxAndACircleArePolygons) {
    // The circle too: its two stored points are few enough to be asked, so it stays a cylinder.
    for (const auto &[outline, shape] : {std::pair{boxOutline, "Polygon"},
                                         {centredCircle, "Cylinder"},
                                         {"0,0 2,0 3,1 3,3 2,4 0,4 -1,3 -1,1", "Polygon"}}) {
        ComponentBench bench(outline);
        bench.set(Simplify_Shapes_t, "No");
        EXPECT_EQ(text(bench.importOne(), Shape_t), shape) << outline;
    }
}

TEST(ComponentShape, ReaderOptionsReachTheCircleTest) {
    ComponentBench bench(centredCircle);
    bench.reader.changeOptions = [](EDA::EDAReader::GeometryConversionOptions &options) {
        options.componentMinPoints = 1000;
    };
    EXPECT_EQ(text(bench.importOne(), Shape_t), "Polygon");
}

TEST(ComponentShape, TheSameDefinitionIsReadAnewInTheNextImport) {
    ComponentBench bench(centredCircle);
    EXPECT_EQ(text(bench.importOne(), Shape_t), "Cylinder");
    bench.reader.changeOptions = [](EDA::EDAReader::GeometryConversionOptions &options) {
        options.componentMinPoints = 1000;
    };
    EXPECT_EQ(text(bench.placedOn(bench.import())[0], Shape_t), "Polygon");
}

TEST(ComponentShape, AnOutlineOfOnePointOrALineIsAPolygon) {
    for (const char *outline : {"3,4", "0,0 5,0", "0,0 5,0 5,0 0,0"}) {
        ComponentBench bench(outline);
        EXPECT_EQ(text(bench.importOne(), Shape_t), "Polygon") << outline;
    }
}

TEST(ComponentShape, PointsThatAreNoNumbersDoNoHarm) {
    const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    const double bad[][2] = {{nan, nan}, {inf, 0}, {1e300, -1e300}, {1e-300, 5}};
    for (const char *type : {"Component", "Resistor", "Capacitor", "Chip Socket", "Daughter Board Socket"}) {
        for (const char *outline : {"", boxOutline, lOutline, centredCircle}) {
            for (const auto &[x, y] : bad) {
                ComponentBench bench(outline);
                bench.part.setImportToType(type);
                bench.part.addPoint(0, x, y, 0.0);
                EXPECT_TRUE(bench.importOne()) << type;
                ComponentBench other(outline);
                other.part.addPoint(0, x, y, 0.0);
                EXPECT_TRUE(other.importOneOnSubstrate()) << type;
            }
        }
    }
}
