// Shapes of conductors that are filled outlines.
#include "ConductorSupport.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace TestSupport;
using EDA::test::outline;

namespace {

const char *const square = "20,40 30,40 30,60 20,60";

EDA::EDAOutline polygonOfCircle(int points, double x, double y, double radius, double bulge = 0.0) {
    EDA::EDAOutline result;
    for (int i = 0; i < points; ++i) {
        const double angle = 2.0 * 3.14159265358979323846 * i / points;
        const double distance = radius + (i == 1 ? bulge : 0.0);
        result.addPoint(0, x + distance * std::cos(angle), y + distance * std::sin(angle), 0.0);
    }
    return result;
}

void expectPlace(Entity *entity, double x, double z) {
    EXPECT_NEAR(mm(entity, X_Location_t), x, 1e-9);
    EXPECT_NEAR(mm(entity, Z_Location_t), z, 1e-9);
}

} // namespace

TEST(ConductorShapes, ASquareIsARectangleAtItsLowXHighYCorner) {
    for (const ConductorFamily &family : {onPcb, onSubstrate}) {
        ConductorBench bench(family);
        Entity *conductor = bench.importOne(outline(square));
        ASSERT_TRUE(conductor);
        EXPECT_EQ(text(conductor, Shape_t), "Rectangle");
        EXPECT_EQ(mm(conductor, Width_t), 10.0);
        EXPECT_EQ(mm(conductor, Depth_t), 20.0);
        EXPECT_EQ(text(conductor, Outline_t), "");
        expectPlace(conductor, 10.0, 10.0);
    }
}

TEST(ConductorShapes, WithoutSimplifiedShapesASquareStaysAPolygonOfMappedPointsAtZero) {
    for (const ConductorFamily &family : {onPcb, onSubstrate}) {
        ConductorBench bench(family);
        bench.set(Simplify_Shapes_t, "No");
        Entity *conductor = bench.importOne(outline(square));
        ASSERT_TRUE(conductor);
        EXPECT_EQ(text(conductor, Shape_t), "Polygon");
        EXPECT_EQ(text(conductor, Outline_t), "10,30,20,30,20,10,10,10 <mm>");
        expectPlace(conductor, 0.0, 0.0);
    }
}

TEST(ConductorShapes, ARectangleTurnedBy45DegreesStaysAPolygon) {
    ConductorBench bench;
    Entity *conductor = bench.importOne(outline("20,40 30,50 28,52 18,42"));
    EXPECT_EQ(text(conductor, Shape_t), "Polygon");
}

TEST(ConductorShapes, ThreePointsAreNoRectangle) {
    ConductorBench bench;
    EXPECT_EQ(text(bench.importOne(outline("20,40 30,40 30,60")), Shape_t), "Polygon");
}

TEST(ConductorShapes, AnAreaOffByTheToleranceItselfIsNoRectangle) {
    // A corner cut from a 10 by 10 square takes the area of the triangle away.
    for (const auto &[cut, shape] : {std::pair{0.04, "Rectangle"}, {0.05, "Polygon"}}) {
        ConductorBench bench;
        EDA::EDAOutline notched = outline("20,40 30,40");
        notched.addPoint(0, 30, 50 - cut, 0.0);
        notched.addPoint(0, 30 - cut, 50, 0.0);
        notched.addPoint(0, 20, 50, 0.0);
        EXPECT_EQ(text(bench.importOne(notched), Shape_t), shape) << cut;
    }
}

TEST(ConductorShapes, ATwoPointCircleIsACylinderAtItsCentreWhateverTheOption) {
    for (const char *simplify : {"Yes", "No"}) {
        for (const ConductorFamily &family : {onPcb, onSubstrate}) {
            ConductorBench bench(family);
            bench.set(Simplify_Shapes_t, simplify);
            Entity *conductor = bench.importOne(circleOutline(60, 45, 2));
            ASSERT_TRUE(conductor);
            EXPECT_EQ(text(conductor, Shape_t), "Cylinder") << simplify;
            EXPECT_NEAR(mm(conductor, Diameter_t), 4.0, 1e-9);
            expectPlace(conductor, 50.0, 25.0);
        }
    }
}

TEST(ConductorShapes, APolygonOfACirclesPointsIsACylinderOnlyWithSimplifiedShapes) {
    for (const auto &[simplify, shape] : {std::pair{"Yes", "Cylinder"}, {"No", "Polygon"}}) {
        ConductorBench bench;
        bench.set(Simplify_Shapes_t, simplify);
        EXPECT_EQ(text(bench.importOne(polygonOfCircle(16, 60, 45, 2)), Shape_t), shape);
    }
}

TEST(ConductorShapes, ACircleNeedsEightPointsOrWhatTheReaderAsksFor) {
    for (const auto &[points, shape] : {std::pair{7, "Polygon"}, {8, "Cylinder"}}) {
        ConductorBench bench;
        EXPECT_EQ(text(bench.importOne(polygonOfCircle(points, 60, 45, 2)), Shape_t), shape) << points;
    }
    ConductorBench bench;
    bench.reader.changeOptions = [](EDA::EDAReader::GeometryConversionOptions &options) {
        options.conductorMinPoints = 6;
    };
    EXPECT_EQ(text(bench.importOne(polygonOfCircle(7, 60, 45, 2)), Shape_t), "Cylinder");
}

TEST(ConductorShapes, ACirclesPointsMayBeOffByTheConductorTolerance) {
    // The squared distances differ by about twice the radius times the bulge; the limit is radius * 1e-5.
    for (const auto &[bulge, shape] : {std::pair{4e-6, "Cylinder"}, {6e-6, "Polygon"}}) {
        ConductorBench bench;
        EXPECT_EQ(text(bench.importOne(polygonOfCircle(16, 60, 45, 2, bulge)), Shape_t), shape) << bulge;
    }
    ConductorBench bench;
    bench.reader.changeOptions = [](EDA::EDAReader::GeometryConversionOptions &options) {
        options.conductorTolerance = 1e-4;
    };
    EXPECT_EQ(text(bench.importOne(polygonOfCircle(16, 60, 45, 2, 6e-6)), Shape_t), "Cylinder");
}

TEST(ConductorShapes, AHoleMakesAPolygonOfAnySquare) {
    for (const ConductorFamily &family : {onPcb, onSubstrate}) {
        ConductorBench bench(family);
        Entity *conductor = bench.importOne(outline(square, "22,42 24,42 24,45 22,45"));
        ASSERT_TRUE(conductor);
        EXPECT_EQ(text(conductor, Shape_t), "Polygon");
        EXPECT_EQ(text(conductor, Outline_t), "10,30,20,30,20,10,10,10 <mm>");
    }
}

TEST(ConductorShapes, AHoleThatIsFilteredMakesAPolygonAllTheSame) {
    ConductorBench bench;
    bench.set(Ignore_holes_less_than_a_specified_size_t, "Yes");
    bench.set(Maximum_size_to_be_ignored_t, "100 mm");
    Entity *conductor = bench.importOne(outline(square, "22,42 24,42 24,45 22,45"));
    EXPECT_EQ(text(conductor, Shape_t), "Polygon");
    EXPECT_EQ(numOutlineHoles(conductor), 0);
}

TEST(ConductorShapes, AnIslandAloneLeavesASquareARectangle) {
    ConductorBench bench;
    EDA::EDAOutline shape = outline(square);
    shape.addInternalOutline(outline("22,42 24,42 24,45"));
    bench.add(bench.shape(shape));
    bench.importLayer();
    const auto conductors = bench.conductors();
    ASSERT_EQ(conductors.size(), 2u);
    EXPECT_EQ(text(conductors[0], Shape_t), "Rectangle");
    EXPECT_EQ(text(conductors[1], Shape_t), "Polygon");
}

TEST(ConductorShapes, AConductorIsLockedProtectedAndLeftAloneByTheCollisionCheck) {
    for (const ConductorFamily &family : {onPcb, onSubstrate}) {
        ConductorBench bench(family);
        Entity *conductor = bench.importOne(outline(square));
        ASSERT_TRUE(conductor);
        EXPECT_TRUE(conductor->findAttribute(Geometry_t)->isLocked());
        EXPECT_TRUE(conductor->findAttribute(Placement_t)->isLocked());
        EXPECT_TRUE(conductor->isProtected());
        EXPECT_EQ(text(conductor, Ignore_Collision_Detection_t), "Yes");
    }
}

TEST(ConductorShapes, TheMaterialIsTheOutlinesOrThatOfATypicalComponent) {
    for (const auto &[material, linked] : {std::pair{"Gold", "Gold"}, {"", "Typical Component"}}) {
        ConductorBench bench;
        EDA::EDAOutline shape = outline(square);
        shape.setMaterial(material);
        Entity *conductor = bench.importOne(shape);
        EXPECT_EQ(text(getLinkedEntity(conductor, MaterialLink_t), Name_t), linked);
    }
}

TEST(ConductorShapes, AnArcIsCutIntoTheStepsOfTheModelsSize) {
    ConductorBench bench;
    EDA::EDAOutline shape = outline("20,40 22,40@180 21,45");
    bench.add(bench.shape(shape));
    bench.importLayer();
    const size_t unknownSize = shape.getPoints(true).size();
    shape.setModelDimension(bench.board().getModelDimension());
    const size_t ofModel = shape.getPoints(true).size();
    ASSERT_NE(unknownSize, ofModel);
    Attribute *written = bench.conductors().at(0)->findAttribute(Outline_t);
    EXPECT_EQ(static_cast<DoubleListAttribute *>(written)->values().size(), 2 * ofModel);
}

TEST(ConductorShapes, AnOutlineIsInTheBoardsUnitsWithSixDecimals) {
    ConductorBench bench;
    bench.board().setUnits("INCH");
    EDA::EDAOutline shape = outline("20,40 30,40");
    shape.addPoint(0, 10.12345678, 69.9999999, 0.0);
    Entity *conductor = bench.importOne(shape);
    EXPECT_EQ(text(conductor, Outline_t), "10,30,20,30,0.123457,0 <in>");
}

TEST(ConductorShapes, PointsOnALineAndOutlinesWithoutAreaArePolygons) {
    for (const char *points : {"20,40", "20,40 30,40", "20,40 30,40 40,40", "20,40 30,40 40,40 35,40"}) {
        ConductorBench bench;
        Entity *conductor = bench.importOne(outline(points));
        ASSERT_TRUE(conductor) << points;
        EXPECT_EQ(text(conductor, Shape_t), "Polygon") << points;
    }
}

TEST(ConductorShapes, APointThatIsNoNumberLeavesTheOutlineUnset) {
    ConductorBench bench;
    EDA::EDAOutline shape = outline("20,40 30,40");
    shape.addPoint(0, std::nan(""), 60, 0.0);
    shape.addPoint(0, 20, 60, 0.0);
    Entity *conductor = bench.importOne(shape);
    ASSERT_TRUE(conductor);
    EXPECT_EQ(text(conductor, Shape_t), "Polygon");
    EXPECT_EQ(text(conductor, Outline_t), "");
}

TEST(ConductorShapes, AnUnknownUnitOfTheBoardLeavesLengthsUnset) {
    ConductorBench bench;
    bench.board().setUnits("FURLONG");
    Entity *conductor = bench.importOne(outline("20,40 30,40 30,60"));
    ASSERT_TRUE(conductor);
    EXPECT_EQ(text(conductor, Outline_t), "");
}

TEST(ConductorShapes, SeededPolygonsHaveThePointsOfTheirPlainText) {
    EDA::test::Random random(20240611);
    ConductorBench bench;
    std::vector<EDA::EDAOutline> shapes;
    for (int i = 0; i < 300; ++i) {
        shapes.push_back(EDA::test::randomOutline(random, 3 + random.below(40), i % 3 == 0));
        bench.add(bench.shape(shapes.back()));
    }
    bench.set(Simplify_Shapes_t, "No");
    bench.importLayer();
    const auto conductors = bench.conductors();
    ASSERT_EQ(conductors.size(), shapes.size());
    for (size_t i = 0; i < shapes.size(); ++i) {
        shapes[i].setModelDimension(bench.board().getModelDimension());
        std::vector<double> mapped;
        for (const auto &[x, y] : shapes[i].getPoints(true)) {
            mapped.push_back(x - 10.0);
            mapped.push_back(-(y - 70.0));
        }
        Attribute *written = conductors[i]->findAttribute(Outline_t);
        EXPECT_EQ(static_cast<DoubleListAttribute *>(written)->values(), throughPlainText(mapped)) << i;
    }
}
